#pragma once

#include <optional>

#include "qzxml/values/BigInteger.h"
#include "tools/generator/model/Model.h"

namespace qzxml::generator {

// Fills what follows from the type alone: kind, C++ type, white space, facets, whether rules are
// needed. An enumeration is text here.
void DecideKind(const SimpleType& type, BoundSimpleType& bound);

// "WhitespaceRule_Collapse". Texts that are to stay as they are have None; a union whose members
// differ has None too, and its rules look at the text as each member wants it.
std::string GetWhitespaceRule(const SimpleType& type);

// The texts that an enumeration allows, with what restricts it by length; in their order, without
// duplicates. Null texts stand for none: the type is no enumeration of texts that C++ could have.
std::vector<const Enumeration*> GetEnumeratedTexts(const SimpleType& type);

// The range of a type derived from xs:integer, as its bounds and digits say; none is unbounded.
struct IntegerRange {
  std::optional<QzXmlLib16::CBigInteger> lowest;
  std::optional<QzXmlLib16::CBigInteger> highest;
};
IntegerRange GetIntegerRange(const SimpleType& type);

}  // namespace qzxml::generator
