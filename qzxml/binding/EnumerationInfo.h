#pragma once

#include <atomic>
#include <cstddef>
#include <string_view>

#include "qzxml/platform/Export.h"
#include "qzxml/values/WhitespaceUtils.h"

namespace QzXmlLib16 {

// The StringToEnum of a metadata table, of a function that answers an enumerator.
template <auto stringToEnum>
int EnumNumber(const char* text) {
  return stringToEnum(text);
}

// The texts of a C++ enumeration whose enumerators are 0, 1, 2 and so on. To be held in a static
// variable, which needs no initialisation at run time; generated code makes the two functions of a
// metadata table of it:
//
//   static const char* const kFixTexts[] = {"none", "2d", "3d", "dgps", "pps"};
//   static const CEnumerationInfo kFix(kFixTexts, CWhitespaceUtils::WhitespaceRule_Collapse);
//   const char* FixToString(int value) { return kFix.ToText(value); }
//   int StringToFix(const char* text) { return kFix.FromText(text); }
//
// Texts are not owned and in the local encoding. Threads may share one.
class QZXML_API CEnumerationInfo {
 public:
  using WhitespaceRule = CWhitespaceUtils::WhitespaceRule;

  constexpr CEnumerationInfo(const char* const* texts, std::size_t count, WhitespaceRule whitespace)
      : m_texts(texts), m_count(count), m_whitespace(whitespace) {}
  template <std::size_t Count>
  constexpr CEnumerationInfo(const char* const (&texts)[Count], WhitespaceRule whitespace)
      : CEnumerationInfo(texts, Count, whitespace) {}
  CEnumerationInfo(const CEnumerationInfo&) = delete;
  CEnumerationInfo& operator=(const CEnumerationInfo&) = delete;

  std::size_t GetCount() const { return m_count; }

  // Throws CQzInvalidValueException "The value [%s] is not one of %s" with the number, for one that
  // is no enumerator's.
  const char* ToText(int value) const;

  // The number of the text behind the white space rule; of equal texts the first. A null text is an
  // empty one. Throws CQzInvalidValueException "The value [%s] is not one of %s" with that text and
  // all texts, of many the first 20 and "...".
  int FromText(const char* text) const;

 private:
  [[noreturn]] void Refuse(std::string_view value) const;
  int Find(std::string_view text) const;  // -1 for none
  const int* FindSorted() const;

  const char* const* m_texts;
  std::size_t m_count;
  WhitespaceRule m_whitespace;
  // The numbers of the texts in the order of the texts, where there are many; made when first
  // needed, and lives as long as the process.
  mutable std::atomic<const int*> m_sorted{nullptr};
};

}  // namespace QzXmlLib16
