#pragma once

#include <cstdint>
#include <string>

#include "qzxml/platform/Export.h"

namespace QzXmlLib16 {

class CBinaryDataBuffer;

// A string of bytes: the value of xs:hexBinary and xs:base64Binary, and the form in which whole
// documents go in and out. Copies share one store until one of them is written to.
//
// A plain value; copies may live in different threads. Bytes read through GetData are not guarded
// against writes through another pointer into the same store.
//
// Lengths are 32 bits: what would pass them is refused with CQzException "Binary data can not hold
// more than 4294967295 bytes", and the value stays as it was.
// Source: XML Schema 1.0 part 2, sections 3.2.15 and 3.2.16.
class QZXML_API CBinaryData {
 public:
  CBinaryData() = default;
  // With takeOwnership the array, made by array new, belongs to the value from now on; otherwise
  // it is copied. A length of 0 gives an empty value and leaves the array to the caller.
  CBinaryData(unsigned char* data, std::uint32_t length, bool takeOwnership);
  CBinaryData(const unsigned char* data, std::uint32_t length);
  // The text's bytes without its terminator.
  explicit CBinaryData(const char* text);

  CBinaryData(const CBinaryData& other);
  CBinaryData(CBinaryData&& other) noexcept;
  // Meant: clears first, so a value assigned to itself becomes empty, as callers know it.
  CBinaryData& operator=(const CBinaryData& other);
  CBinaryData& operator=(CBinaryData&& other) noexcept;
  virtual ~CBinaryData();

  bool operator==(const CBinaryData& other) const;
  bool operator!=(const CBinaryData& other) const { return !(*this == other); }

  // ---- Bytes ----

  // Both throw CQzException "Index Out of range [%d]" for an empty value and an index above the
  // length. Meant: the index that equals the length is allowed and answers a zero byte that belongs
  // to the value; what is written there is not kept. The second form makes the store private.
  const unsigned char& operator[](std::uint32_t index) const;
  unsigned char& operator[](std::uint32_t index);

  // The bytes, shared with other copies; null when empty.
  unsigned char* GetData() const;
  std::uint32_t GetLength() const;

  // ---- Changing ----

  void Append(const unsigned char* data, std::uint32_t length);
  void Append(const CBinaryData& other);
  void Append(const char* text);
  // Meant: up to the first zero byte, as a text.
  void Append(const std::string& text);
  void Append(char c);
  void Append(unsigned char c);

  // Replace the value by a copy of the bytes.
  void SetBuffer(const unsigned char* data, std::uint32_t length);
  void SetBuffer(const char* text);

  // The bytes, to be freed by the caller with array delete, null when empty; the value is empty
  // afterwards. A store that is shared is copied first.
  unsigned char* ReleaseData();

  void Clear();

  // ---- Text forms ----

  // Two upper-case digits for each byte.
  std::string GetAsHexString() const;
  static std::string GetAsHexString(const unsigned char* data, std::uint32_t length);

  // Digits of either case, no white space. Throws CQzException "Invalid length in hex string" or
  // "Invalid char in hex string [%c]", and the value is empty then.
  void SetAsHexString(const char* text);

  // The same into an array of its own, which the caller frees with array delete. The result is the
  // number of bytes.
  static std::uint32_t ConvertToHexData(const char* text, unsigned char** out);

  std::string GetAsBase64() const;

  // Takes what CBase64::Decode takes. Meant: text with a character that is not of the alphabet
  // gives no failure but a store of length 0, whose next access asserts "m_dwLen > 0"; without
  // assertions it answers as an empty value does.
  void SetAsBase64(const char* text);
  // Whether such a text left it so. Asserts nothing.
  bool IsRefusedBase64() const;

 private:
  void MakePrivate();

  CBinaryDataBuffer* m_pBuffer = nullptr;  // counted; null for an empty value
};

}  // namespace QzXmlLib16
