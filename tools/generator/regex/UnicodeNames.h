#pragma once

#include <optional>
#include <string_view>

#include "tools/generator/regex/CharacterSet.h"

namespace qzxml::generator {

// Whether there is a general category of that name, "L" or "Lu". Surrogates have none here, since
// they are no characters of XML.
bool IsCategory(std::string_view name);

// The characters of a block by its name, "BasicLatin"; nothing for a name that is none. A name can
// stand for several ranges. The names are those of XML Schema, and "GreekandCoptic" and
// "CombiningDiacriticalMarksforSymbols", as Unicode calls two of them today.
// Source: XML Schema 1.0 part 2, first and second edition, appendix F.1.1.
std::optional<CCharacterSet> FindBlock(std::string_view name);

}  // namespace qzxml::generator
