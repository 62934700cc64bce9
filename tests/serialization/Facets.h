#pragma once

#include <string>

#include "qzxml/runtime/QzException.h"
#include "qzxml/serialization/PrimitiveRestrictions.h"
#include "qzxml/values/QzVariant.h"

namespace qztest {

// The facets of one type, the absent ones left out.
struct Facets {
  const char* pattern = "";
  int minLength = -1;
  int maxLength = -1;
  const char* minInclusive = "";
  const char* maxInclusive = "";
  const char* minExclusive = "";
  const char* maxExclusive = "";
  int length = -1;
  int totalDigits = -1;
  int fractionDigits = -1;

  QzXmlLib16::CPrimitiveRestrictions Make() const {
    return QzXmlLib16::CPrimitiveRestrictions(pattern, minLength, maxLength, minInclusive,
                                              maxInclusive, minExclusive, maxExclusive, length,
                                              totalDigits, fractionDigits);
  }
};

inline Facets Pattern(const char* pattern) {
  Facets facets;
  facets.pattern = pattern;
  return facets;
}

inline Facets MinLength(int value) {
  Facets facets;
  facets.minLength = value;
  return facets;
}

inline Facets MaxLength(int value) {
  Facets facets;
  facets.maxLength = value;
  return facets;
}

inline Facets Length(int value) {
  Facets facets;
  facets.length = value;
  return facets;
}

inline Facets MinInclusive(const char* value) {
  Facets facets;
  facets.minInclusive = value;
  return facets;
}

inline Facets MaxInclusive(const char* value) {
  Facets facets;
  facets.maxInclusive = value;
  return facets;
}

inline Facets MinExclusive(const char* value) {
  Facets facets;
  facets.minExclusive = value;
  return facets;
}

inline Facets MaxExclusive(const char* value) {
  Facets facets;
  facets.maxExclusive = value;
  return facets;
}

inline Facets TotalDigits(int value) {
  Facets facets;
  facets.totalDigits = value;
  return facets;
}

inline Facets FractionDigits(int value) {
  Facets facets;
  facets.fractionDigits = value;
  return facets;
}

inline QzXmlLib16::QzVariant MakeValue(QzXmlLib16::ItemType type, const std::string& text) {
  QzXmlLib16::QzVariant value;
  value.FromString(text, type, QzXmlLib16::CWhitespaceUtils::WhitespaceRule_None);
  return value;
}

// The failure of the check, or "" when the value passes.
inline std::string Check(QzXmlLib16::ItemType type, const std::string& text, const Facets& facets) {
  try {
    QzXmlLib16::CheckPrimitiveRestriction("name", MakeValue(type, text), type, facets.Make());
  } catch (const QzXmlLib16::CQzException& e) {
    return e.GetMessage();
  }
  return "";
}

}  // namespace qztest
