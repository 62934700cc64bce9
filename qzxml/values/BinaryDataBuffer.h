#pragma once

#include <atomic>
#include <cstdint>
#include <cstring>
#include <memory>

#include "qzxml/platform/Assert.h"
#include "qzxml/platform/Export.h"

namespace QzXmlLib16 {

// The store that copies of a CBinaryData share. The count is atomic, and whoever writes has a store
// of his own first, so that copies may live in different threads without a lock.
class QZXML_API CBinaryDataBuffer {
 public:
  // Adopts an array made by array new, or copies the bytes into a store with room for as many again
  // and for 8192 at least. The count is 1.
  CBinaryDataBuffer(unsigned char* data, std::uint32_t length, bool takeOwnership);
  CBinaryDataBuffer(const unsigned char* data, std::uint32_t length);
  CBinaryDataBuffer(const CBinaryDataBuffer&) = delete;
  CBinaryDataBuffer& operator=(const CBinaryDataBuffer&) = delete;

  void AddRef() { m_refCount.fetch_add(1, std::memory_order_relaxed); }

  // Takes one reference away; the last one destroys the store. With keepData the bytes are left to
  // the caller, and the reference must have been the last: asserts "m_refCount == 0", and throws
  // CQzException "Failed to release data. [RefCount=%d]".
  void Release(bool keepData);

  // This store when it has one reference; else a copy of it with one reference, which the caller
  // owns, and this store has one reference less.
  CBinaryDataBuffer* MakePrivate();

  // Adds bytes at the end; they may be bytes of this store. Asserts "m_refCount == 1", and throws
  // CQzException "Failed to append. [RefCount=%d]".
  void Append(const unsigned char* data, std::uint32_t length);

  // Append where neither a copy nor a larger store is needed; false, and nothing done, elsewhere.
  bool AppendInPlace(const unsigned char* data, std::uint32_t length) {
    if (GetRefCount() != 1 || length > m_dwAllocated - m_dwLen) return false;
    std::memmove(m_lpData.get() + m_dwLen, data, length);
    m_dwLen += length;
    return true;
  }

  // Both assert "m_lpData != 0" and "m_dwLen > 0".
  unsigned char* GetData() const;
  std::uint32_t GetLength() const;

  bool IsEmpty() const { return m_dwLen == 0; }  // asserts nothing

  // The byte behind the last, set to zero.
  unsigned char& GetPastEnd() {
    m_pastEnd = 0;
    return m_pastEnd;
  }

  std::int32_t GetRefCount() const { return m_refCount.load(std::memory_order_acquire); }

 private:
  ~CBinaryDataBuffer() = default;
  void Grow(std::uint32_t newLength, const unsigned char* data, std::uint32_t length);

  std::unique_ptr<unsigned char[]> m_lpData;
  std::uint32_t m_dwLen;
  std::uint32_t m_dwAllocated;
  std::atomic<std::int32_t> m_refCount{1};
  unsigned char m_pastEnd = 0;
};

}  // namespace QzXmlLib16
