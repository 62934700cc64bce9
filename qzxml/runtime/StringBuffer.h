#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "qzxml/platform/Export.h"
#include "qzxml/runtime/MemoryLeakHelp.h"

namespace QzXmlLib16 {

// Text that grows in a chain of blocks, so that appending never moves what is there. A new block
// is opened only when the last one is full. GetBuffer joins the blocks into one.
//
// Each block has room for one byte more than it holds, where GetBuffer puts the terminator; bytes
// behind the text have no meaning.
//
// The length is kept in 32 bits: text that would pass 4294967295 bytes is refused with
// CQzException "The text buffer can not hold more than 4294967295 bytes", and nothing of it is
// appended. An object belongs to one thread.
class QZXML_API CStringBuffer : public ::CInstanceMonitor {
 public:
  CStringBuffer();  // blocks of 4095 bytes of text
  // Blocks of dwBlockSize - 1 bytes of text; sizes below 2 count as 2. From 65536 on they grow with
  // the text, once that has 4 MB, up to 16 MB.
  explicit CStringBuffer(std::uint32_t dwBlockSize);
  CStringBuffer(const CStringBuffer&) = delete;
  CStringBuffer& operator=(const CStringBuffer&) = delete;
  ~CStringBuffer() override;

  std::uint32_t GetLength() const { return m_dwTotalBufferLen; }

  // All the text as one zero-terminated array, owned by the buffer and good until its next change;
  // "" when there is none. More than one block becomes one, whose capacity is the text's length.
  const char* GetBuffer();

  // As Clear and Append. The text may be a piece of what the buffer holds.
  void Set(const char* text);

  void Append(const char* text) { Append(text, std::strlen(text)); }
  void Append(const std::string& text) { Append(text.data(), text.size()); }
  void Append(const char* text, std::size_t length) {
    if (length <= GetFree()) {
      if (length == 0) return;
      std::memcpy(m_pLastBlock + m_LastBlock_DataIn, text, length);
      Commit(static_cast<std::uint32_t>(length));
    } else {
      AppendInPieces(text, length);
    }
  }
  void Append(char c) {
    if (GetFree() == 0) AddBlock();
    m_pLastBlock[m_LastBlock_DataIn] = c;
    Commit(1);
  }

  // Writing in place: the position of the next byte when `length` bytes have room there, a new
  // block being opened only where the last is full; null when they have not, and then Append is the
  // way. What was written is counted by Commit before anything else is asked of the buffer. GetFree
  // tells how many bytes have room in the last block.
  char* Reserve(std::uint32_t length) {
    if (GetFree() == 0) AddBlock();
    return length <= GetFree() ? m_pLastBlock + m_LastBlock_DataIn : nullptr;
  }
  std::uint32_t GetFree() const { return m_LastBlock_SizeOf - m_LastBlock_DataIn; }
  void Commit(std::uint32_t length) {
    m_LastBlock_DataIn += length;
    m_dwTotalBufferLen += length;
  }

  // Adds all the text to a string, each byte copied once; the buffer stays as it is.
  void AppendTo(std::string& out) const;
  // Puts all the text at a place with room for GetLength() bytes.
  void CopyTo(char* out) const;

  // Forgets the text. A single block is kept with the capacity that it has.
  void Reset();

  // Forgets the text and frees every block.
  void Clear();

 private:
  struct Block {
    std::unique_ptr<char[]> data;
    std::uint32_t size;  // bytes of text that it can hold
  };
  using Blocks = std::vector<Block>;

  // Leaves the buffer without a block and hands over those that it had.
  Blocks TakeBlocks();
  // The bytes of text in a block.
  std::uint32_t GetDataIn(const Block& block) const {
    return block.data.get() == m_pLastBlock ? m_LastBlock_DataIn : block.size;
  }

  void AddBlock();
  void AppendInPieces(const char* text, std::size_t length);
  void Consolidate();

  Blocks m_blocks;              // in the order of filling
  std::uint32_t m_dwBlockSize;  // capacity of the next new block
  std::uint32_t m_LastBlock_DataIn = 0;
  std::uint32_t m_LastBlock_SizeOf = 0;
  char* m_pLastBlock = nullptr;
  std::uint32_t m_dwTotalBufferLen = 0;
};

}  // namespace QzXmlLib16
