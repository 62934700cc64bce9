// Any text as a value of any built-in type: the first octet chooses the type; behind it stand two
// texts with a zero byte between them. A value is in an enumeration of itself alone, and what keeps
// a bound or is in an enumeration is a value; no bound leaves a value below and above it.
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "qzxml/binding/TextRules.h"

using namespace QzXmlLib16;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size < 1) return 0;
  const std::string input(reinterpret_cast<const char*>(data) + 1, size - 1);
  const std::string value = input.substr(0, input.find('\0'));
  const std::string other = input.substr(std::min(value.size() + 1, input.size()));
  const char* const itself[] = {value.c_str()};
  const char* const others[] = {other.c_str()};
  const CTextRules rules(static_cast<XsdType>(data[0] % (XsdType_base64Binary + 1)));

  const bool isValue = rules.Accepts(value);
  const bool isEqual = rules.Enumeration(others).Accepts(value);
  const bool isLess = rules.MaxExclusive(other.c_str()).Accepts(value);
  const bool isGreater = rules.MinExclusive(other.c_str()).Accepts(value);
  const bool holds = rules.Enumeration(itself).Accepts(value) == isValue &&
                     isEqual + isLess + isGreater <= (isValue ? 1 : 0) &&
                     CTextRules::ListOf(rules).Accepts("") &&
                     (!rules.MinLength(1).MaxLength(3).Accepts(value) || isValue) &&
                     (!rules.TotalDigits(2).FractionDigits(1).Accepts(value) || isValue);
  if (!holds) {
    std::fprintf(stderr, "[%s] and [%s] of type %d\n", value.c_str(), other.c_str(),
                 static_cast<int>(data[0]));
    std::abort();
  }
  return 0;
}
