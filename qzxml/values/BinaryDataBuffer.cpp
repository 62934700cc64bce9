#include "qzxml/values/BinaryDataBuffer.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <utility>

#include "qzxml/runtime/Functions.h"
#include "qzxml/runtime/QzException.h"
#include "qzxml/values/Messages.h"

namespace QzXmlLib16 {

namespace {

constexpr std::uint64_t kMaxLength = std::numeric_limits<std::uint32_t>::max();
constexpr std::uint64_t kLeastCapacity = 8192;

std::uint32_t Doubled(std::uint32_t length) {
  return static_cast<std::uint32_t>(std::min(2 * std::uint64_t{length}, kMaxLength));
}

std::uint32_t CapacityOfCopy(std::uint32_t length) {
  return std::max(Doubled(length), static_cast<std::uint32_t>(kLeastCapacity));
}

}  // namespace

CBinaryDataBuffer::CBinaryDataBuffer(unsigned char* data, std::uint32_t length, bool takeOwnership)
    : m_lpData(takeOwnership ? data : new unsigned char[CapacityOfCopy(length)]),
      m_dwLen(data == nullptr ? 0 : length),
      m_dwAllocated(takeOwnership ? m_dwLen : CapacityOfCopy(length)) {
  if (!takeOwnership && m_dwLen > 0) std::memcpy(m_lpData.get(), data, m_dwLen);
}

CBinaryDataBuffer::CBinaryDataBuffer(const unsigned char* data, std::uint32_t length)
    : m_lpData(new unsigned char[CapacityOfCopy(length)]),
      m_dwLen(data == nullptr ? 0 : length),
      m_dwAllocated(CapacityOfCopy(length)) {
  if (m_dwLen > 0) std::memcpy(m_lpData.get(), data, m_dwLen);
}

void CBinaryDataBuffer::Release(bool keepData) {
  const std::int32_t left = m_refCount.fetch_sub(1, std::memory_order_acq_rel) - 1;
  if (keepData) {
    QZ_ASSERT_TEXT(left == 0, "m_refCount == 0");
    if (left > 0) throw CQzException(FormatString("Failed to release data. [RefCount=%d]", left));
    static_cast<void>(m_lpData.release());
  }
  if (left == 0) delete this;
}

CBinaryDataBuffer* CBinaryDataBuffer::MakePrivate() {
  if (GetRefCount() < 2) return this;
  auto* const copy = new CBinaryDataBuffer(m_lpData.get(), m_dwLen);
  Release(false);
  return copy;
}

void CBinaryDataBuffer::Append(const unsigned char* data, std::uint32_t length) {
  const std::int32_t refCount = GetRefCount();
  QZ_ASSERT_TEXT(refCount == 1, "m_refCount == 1");
  if (refCount > 1) throw CQzException(FormatString("Failed to append. [RefCount=%d]", refCount));
  const std::uint64_t newLength = std::uint64_t{m_dwLen} + length;
  if (newLength > kMaxLength) {
    throw CQzException(Messages::kBinaryDataTooLong);
  }
  if (!AppendInPlace(data, length)) Grow(static_cast<std::uint32_t>(newLength), data, length);
}

// The old bytes go last: the new ones may be among them.
void CBinaryDataBuffer::Grow(std::uint32_t newLength, const unsigned char* data,
                             std::uint32_t length) {
  const std::uint32_t capacity = Doubled(newLength);
  std::unique_ptr<unsigned char[]> grown(new unsigned char[capacity]);
  if (m_dwLen > 0) std::memcpy(grown.get(), m_lpData.get(), m_dwLen);
  std::memcpy(grown.get() + m_dwLen, data, length);
  m_lpData = std::move(grown);
  m_dwAllocated = capacity;
  m_dwLen = newLength;
}

unsigned char* CBinaryDataBuffer::GetData() const {
  QZ_ASSERT_TEXT(m_lpData != nullptr, "m_lpData != 0");
  QZ_ASSERT(m_dwLen > 0);
  return m_lpData.get();
}

std::uint32_t CBinaryDataBuffer::GetLength() const {
  QZ_ASSERT_TEXT(m_lpData != nullptr, "m_lpData != 0");
  QZ_ASSERT(m_dwLen > 0);
  return m_dwLen;
}

}  // namespace QzXmlLib16
