#include "qzxml/runtime/StringBuffer.h"

#include <algorithm>
#include <array>
#include <limits>
#include <utility>

#include "qzxml/platform/Memory.h"
#include "qzxml/runtime/QzException.h"

namespace QzXmlLib16 {

namespace {

constexpr std::uint32_t kDefaultBlockSize = 4096;
constexpr std::uint32_t kMaxLength = std::numeric_limits<std::uint32_t>::max();

CInstanceClass s_class("CStringBuffer");

// A block that has just been filled is near, and copied in pieces: for more at once the C library
// takes a way that begins slowly.
constexpr std::uint32_t kCopiedPiece = 2048;

// What comes behind much text.
constexpr std::uint32_t kMuchText = std::uint32_t{4} << 20;
constexpr std::uint32_t kLargestBlock = std::uint32_t{16} << 20;

// Blocks of the size that whole documents are written into, which their thread keeps for the next
// document: memory that the system has to give anew costs more than to write into it. At most 1 MB.
class BlockPool {
 public:
  static constexpr std::uint32_t kSize = 65535;

  // Null for none.
  static std::unique_ptr<char[]> Take() {
    if (s_isGone || s_kept.count == 0) return nullptr;
    return std::move(s_kept.blocks[--s_kept.count]);
  }
  static void Give(std::unique_ptr<char[]> block) {
    if (s_isGone || s_kept.count == s_kept.blocks.size()) return;
    s_kept.blocks[s_kept.count++] = std::move(block);
  }

 private:
  struct Kept {
    ~Kept() { s_isGone = true; }  // buffers of static lifetime go later

    std::array<std::unique_ptr<char[]>, 16> blocks;
    std::size_t count = 0;
  };
  static thread_local bool s_isGone;
  static thread_local Kept s_kept;
};

thread_local bool BlockPool::s_isGone = false;
thread_local BlockPool::Kept BlockPool::s_kept;

// One byte more than the text, for the terminator; not filled.
std::unique_ptr<char[]> AllocateBlock(std::uint32_t size) {
  if (size == BlockPool::kSize) {
    if (std::unique_ptr<char[]> kept = BlockPool::Take()) return kept;
  }
  std::unique_ptr<char[]> block(new char[std::size_t{size} + 1]);
  detail::ExpectToFill(block.get(), size);
  return block;
}

[[noreturn]] void ThrowTooLong() {
  throw CQzException("The text buffer can not hold more than 4294967295 bytes");
}

}  // namespace

CStringBuffer::CStringBuffer() : CStringBuffer(kDefaultBlockSize) {}

CStringBuffer::CStringBuffer(std::uint32_t dwBlockSize)
    : CInstanceMonitor(s_class), m_dwBlockSize(std::max(dwBlockSize, 2U) - 1) {}

CStringBuffer::~CStringBuffer() { Clear(); }

const char* CStringBuffer::GetBuffer() {
  if (m_blocks.empty()) return "";
  if (m_blocks.size() > 1) Consolidate();
  m_pLastBlock[m_LastBlock_DataIn] = '\0';
  return m_pLastBlock;
}

void CStringBuffer::Set(const char* text) {
  const Blocks held = TakeBlocks();  // the text may be a piece of them
  Append(text);
}

void CStringBuffer::AppendTo(std::string& out) const {
  out.reserve(out.size() + m_dwTotalBufferLen);
  detail::ExpectToFill(out.data() + out.size(), m_dwTotalBufferLen);
  for (const Block& block : m_blocks) {
    const char* text = block.data.get();
    std::uint32_t rest = GetDataIn(block);
    for (; rest > kCopiedPiece && block.size <= BlockPool::kSize; rest -= kCopiedPiece) {
      out.append(text, kCopiedPiece);
      text += kCopiedPiece;
    }
    out.append(text, rest);
  }
}

void CStringBuffer::CopyTo(char* out) const {
  for (const Block& block : m_blocks) {
    const std::uint32_t length = GetDataIn(block);
    std::memcpy(out, block.data.get(), length);
    out += length;
  }
}

void CStringBuffer::Reset() {
  if (m_blocks.size() != 1) {
    Clear();
    return;
  }
  m_LastBlock_DataIn = 0;
  m_dwTotalBufferLen = 0;
}

void CStringBuffer::Clear() {
  for (Block& block : TakeBlocks()) {
    if (block.size == BlockPool::kSize) BlockPool::Give(std::move(block.data));
  }
}

CStringBuffer::Blocks CStringBuffer::TakeBlocks() {
  m_LastBlock_DataIn = 0;
  m_LastBlock_SizeOf = 0;
  m_pLastBlock = nullptr;
  m_dwTotalBufferLen = 0;
  return std::exchange(m_blocks, Blocks());
}

// Blocks never reach past the greatest length, so that filling one needs no test of the total.
void CStringBuffer::AddBlock() {
  QZ_ASSERT(m_LastBlock_SizeOf == m_LastBlock_DataIn);
  std::uint32_t size = m_dwBlockSize;
  if (size >= BlockPool::kSize && m_dwTotalBufferLen >= kMuchText) {
    size = std::max(size, std::min(m_dwTotalBufferLen, kLargestBlock));
  }
  size = std::min(size, kMaxLength - m_dwTotalBufferLen);
  if (size == 0) ThrowTooLong();
  m_blocks.push_back(Block{AllocateBlock(size), size});
  m_pLastBlock = m_blocks.back().data.get();
  m_LastBlock_SizeOf = size;
  m_LastBlock_DataIn = 0;
}

void CStringBuffer::AppendInPieces(const char* text, std::size_t length) {
  if (length > kMaxLength - m_dwTotalBufferLen) ThrowTooLong();
  auto rest = static_cast<std::uint32_t>(length);
  while (rest > 0) {
    if (GetFree() == 0) AddBlock();
    const std::uint32_t piece = std::min(rest, GetFree());
    std::memcpy(m_pLastBlock + m_LastBlock_DataIn, text, piece);
    Commit(piece);
    text += piece;
    rest -= piece;
  }
}

void CStringBuffer::Consolidate() {
  std::unique_ptr<char[]> joined = AllocateBlock(m_dwTotalBufferLen);
  std::uint32_t dwOutputPos = 0;
  for (const Block& block : m_blocks) {
    const std::uint32_t size = GetDataIn(block);
    std::memcpy(joined.get() + dwOutputPos, block.data.get(), size);
    dwOutputPos += size;
  }
  QZ_ASSERT(dwOutputPos == m_dwTotalBufferLen);
  m_blocks.resize(1);
  m_blocks.front() = Block{std::move(joined), m_dwTotalBufferLen};
  m_pLastBlock = m_blocks.front().data.get();
  m_LastBlock_SizeOf = m_dwTotalBufferLen;
  m_LastBlock_DataIn = m_dwTotalBufferLen;
}

}  // namespace QzXmlLib16
