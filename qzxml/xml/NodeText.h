#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace QzXmlLib16::detail {

// A text in the memory of a document: its size, and behind it the bytes and a zero byte. It never
// changes. Only CBlocks makes one.
struct StoredText {
  std::uint32_t size;

  const char* GetBytes() const { return reinterpret_cast<const char*>(this + 1); }
  std::string_view View() const { return {GetBytes(), size}; }
};

// The text of an element or the value of an attribute, in the size of one pointer: nothing, a
// stored text, or a string. A load stores, which costs no allocation; a string is made when
// somebody asks for one, or appends. Owns nothing: CXmlNodes makes and destroys the strings.
class CNodeText {
 public:
  CNodeText() = default;
  explicit CNodeText(const StoredText* stored) : m_bits(reinterpret_cast<std::uintptr_t>(stored)) {}
  explicit CNodeText(std::string* string)
      : m_bits(reinterpret_cast<std::uintptr_t>(string) | kIsString) {}

  bool IsNone() const { return m_bits == 0; }
  // Whether both are the same stored text or string, or none.
  bool IsSameAs(const CNodeText& other) const { return m_bits == other.m_bits; }
  // The string, or null while there is none.
  std::string* GetString() const {
    return (m_bits & kIsString) != 0 ? reinterpret_cast<std::string*>(m_bits & ~kIsString)
                                     : nullptr;
  }
  // The stored text, or null when there is none or a string.
  const StoredText* GetStored() const {
    return (m_bits & kIsString) == 0 ? reinterpret_cast<const StoredText*>(m_bits) : nullptr;
  }
  std::string_view View() const {
    if (m_bits == 0) return std::string_view();
    const StoredText* const stored = GetStored();
    return stored != nullptr ? stored->View() : std::string_view(*GetString());
  }

 private:
  // The lowest bit of the address, which is zero in every address.
  static constexpr std::uintptr_t kIsString = 1;

  std::uintptr_t m_bits = 0;
};

}  // namespace QzXmlLib16::detail
