#include "qzxml/values/BinaryData.h"

#include <cstring>
#include <limits>
#include <memory>
#include <utility>

#include "qzxml/runtime/Functions.h"
#include "qzxml/runtime/QzException.h"
#include "qzxml/values/Base64.h"
#include "qzxml/values/BinaryDataBuffer.h"
#include "qzxml/values/Messages.h"

namespace QzXmlLib16 {

namespace {

constexpr unsigned char kZeroByte = 0;

const unsigned char* BytesOf(const char* text) {
  return reinterpret_cast<const unsigned char*>(text);
}

std::uint32_t LengthOf(const char* text) {
  const std::size_t length = text == nullptr ? 0 : std::strlen(text);
  if (length > std::numeric_limits<std::uint32_t>::max()) {
    throw CQzException(Messages::kBinaryDataTooLong);
  }
  return static_cast<std::uint32_t>(length);
}

[[noreturn]] void ThrowIndexOutOfRange(std::uint32_t index) {
  // Meant: the index shows as a signed number, as the text has always had it.
  throw CQzException(FormatString("Index Out of range [%d]", static_cast<std::int32_t>(index)));
}

// 0 to 15, or -1 for what is no digit.
int HexValue(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  return -1;
}

unsigned int ReadHexDigit(char c) {
  const int value = HexValue(c);
  if (value < 0) throw CQzException(FormatString("Invalid char in hex string [%c]", c));
  return static_cast<unsigned int>(value);
}

}  // namespace

CBinaryData::CBinaryData(unsigned char* data, std::uint32_t length, bool takeOwnership)
    : m_pBuffer(length == 0 ? nullptr : new CBinaryDataBuffer(data, length, takeOwnership)) {}

CBinaryData::CBinaryData(const unsigned char* data, std::uint32_t length)
    : m_pBuffer(length == 0 ? nullptr : new CBinaryDataBuffer(data, length)) {}

CBinaryData::CBinaryData(const char* text) : CBinaryData(BytesOf(text), LengthOf(text)) {}

CBinaryData::CBinaryData(const CBinaryData& other) : m_pBuffer(other.m_pBuffer) {
  if (m_pBuffer != nullptr) m_pBuffer->AddRef();
}

CBinaryData::CBinaryData(CBinaryData&& other) noexcept
    : m_pBuffer(std::exchange(other.m_pBuffer, nullptr)) {}

CBinaryData& CBinaryData::operator=(const CBinaryData& other) {
  Clear();
  m_pBuffer = other.m_pBuffer;
  if (m_pBuffer != nullptr) m_pBuffer->AddRef();
  return *this;
}

CBinaryData& CBinaryData::operator=(CBinaryData&& other) noexcept {
  CBinaryDataBuffer* const taken = std::exchange(other.m_pBuffer, nullptr);
  Clear();
  m_pBuffer = taken;
  return *this;
}

CBinaryData::~CBinaryData() { Clear(); }

bool CBinaryData::operator==(const CBinaryData& other) const {
  if (m_pBuffer == nullptr || other.m_pBuffer == nullptr) return m_pBuffer == other.m_pBuffer;
  const std::uint32_t length = GetLength();
  if (length != other.GetLength()) return false;
  return length == 0 || std::memcmp(GetData(), other.GetData(), length) == 0;
}

// ---- Bytes ----

const unsigned char& CBinaryData::operator[](std::uint32_t index) const {
  if (m_pBuffer == nullptr || index > m_pBuffer->GetLength()) ThrowIndexOutOfRange(index);
  return index == m_pBuffer->GetLength() ? kZeroByte : m_pBuffer->GetData()[index];
}

unsigned char& CBinaryData::operator[](std::uint32_t index) {
  if (m_pBuffer == nullptr || index > m_pBuffer->GetLength()) ThrowIndexOutOfRange(index);
  MakePrivate();
  return index == m_pBuffer->GetLength() ? m_pBuffer->GetPastEnd() : m_pBuffer->GetData()[index];
}

unsigned char* CBinaryData::GetData() const {
  return m_pBuffer == nullptr ? nullptr : m_pBuffer->GetData();
}

std::uint32_t CBinaryData::GetLength() const {
  return m_pBuffer == nullptr ? 0 : m_pBuffer->GetLength();
}

// ---- Changing ----

void CBinaryData::MakePrivate() { m_pBuffer = m_pBuffer->MakePrivate(); }

void CBinaryData::Append(const unsigned char* data, std::uint32_t length) {
  if (length == 0) return;
  if (m_pBuffer == nullptr) {
    m_pBuffer = new CBinaryDataBuffer(data, length);
    return;
  }
  MakePrivate();
  m_pBuffer->Append(data, length);
}

void CBinaryData::Append(const CBinaryData& other) {
  // Held, so that the bytes stay when it is their store that this value parts from.
  const CBinaryData held(other);
  Append(held.GetData(), held.GetLength());
}

void CBinaryData::Append(const char* text) { Append(BytesOf(text), LengthOf(text)); }

void CBinaryData::Append(const std::string& text) { Append(text.c_str()); }

void CBinaryData::Append(char c) { Append(static_cast<unsigned char>(c)); }

void CBinaryData::Append(unsigned char c) {
  if (m_pBuffer == nullptr || !m_pBuffer->AppendInPlace(&c, 1)) Append(&c, 1);
}

void CBinaryData::SetBuffer(const unsigned char* data, std::uint32_t length) {
  // Made before the old store goes: the bytes may be its own.
  *this = CBinaryData(data, length);
}

void CBinaryData::SetBuffer(const char* text) { SetBuffer(BytesOf(text), LengthOf(text)); }

unsigned char* CBinaryData::ReleaseData() {
  if (m_pBuffer == nullptr) return nullptr;
  MakePrivate();
  unsigned char* const data = m_pBuffer->GetData();
  m_pBuffer->Release(true);
  m_pBuffer = nullptr;
  return data;
}

void CBinaryData::Clear() {
  if (CBinaryDataBuffer* const buffer = std::exchange(m_pBuffer, nullptr)) buffer->Release(false);
}

// ---- Text forms ----

std::string CBinaryData::GetAsHexString() const { return GetAsHexString(GetData(), GetLength()); }

std::string CBinaryData::GetAsHexString(const unsigned char* data, std::uint32_t length) {
  static const char kDigits[] = "0123456789ABCDEF";
  if (data == nullptr || length == 0) return std::string();
  std::string text(std::size_t{length} * 2, '\0');
  char* out = text.data();
  for (std::uint32_t i = 0; i < length; ++i) {
    *out++ = kDigits[data[i] >> 4];
    *out++ = kDigits[data[i] & 0xF];
  }
  return text;
}

void CBinaryData::SetAsHexString(const char* text) {
  const CBinaryData held(std::move(*this));  // empty from here on; the text may be its bytes
  unsigned char* data = nullptr;
  const std::uint32_t length = ConvertToHexData(text, &data);
  std::unique_ptr<unsigned char[]> bytes(data);
  if (length > 0) m_pBuffer = new CBinaryDataBuffer(bytes.release(), length, true);
}

std::uint32_t CBinaryData::ConvertToHexData(const char* text, unsigned char** out) {
  const std::uint32_t digits = LengthOf(text);
  if (digits % 2 != 0) throw CQzException("Invalid length in hex string");
  const std::uint32_t length = digits / 2;
  std::unique_ptr<unsigned char[]> bytes(new unsigned char[length]);
  for (std::uint32_t i = 0; i < length; ++i, text += 2) {
    const unsigned int high = ReadHexDigit(text[0]);
    bytes[i] = static_cast<unsigned char>(high << 4 | ReadHexDigit(text[1]));
  }
  *out = bytes.release();
  return length;
}

std::string CBinaryData::GetAsBase64() const {
  std::string text;
  if (m_pBuffer != nullptr) CBase64().Encode(text, GetData(), GetLength());
  return text;
}

void CBinaryData::SetAsBase64(const char* text) {
  const CBinaryData held(std::move(*this));  // empty from here on; the text may be its bytes
  const std::uint32_t textLength = LengthOf(text);
  if (textLength == 0) return;
  std::unique_ptr<unsigned char[]> bytes(new unsigned char[std::size_t{textLength} + 1]);
  const auto length = static_cast<std::uint32_t>(CBase64().Decode(text, bytes.get()));
  m_pBuffer = new CBinaryDataBuffer(bytes.release(), length, true);
}

bool CBinaryData::IsRefusedBase64() const { return m_pBuffer != nullptr && m_pBuffer->IsEmpty(); }

}  // namespace QzXmlLib16
