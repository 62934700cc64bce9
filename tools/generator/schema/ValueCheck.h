#pragma once

#include <deque>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "tools/generator/schema/SimpleType.h"

namespace qzxml::generator {

// Whether the text, without white space at its ends, has the form of the built-in type.
bool IsValueOf(BuiltIn type, const std::string& text);

// Checks of texts against simple types: of default values, enumerations and bounds. Rules of a type
// are made once, when it is first asked for; types have to be resolved then, and whoever asks keeps
// them alive.
class CValueCheck {
 public:
  CValueCheck();
  CValueCheck(const CValueCheck&) = delete;
  CValueCheck& operator=(const CValueCheck&) = delete;
  ~CValueCheck();

  // Whether the text is a value of the type, with the white space rule and all facets of its chain.
  // Prefixes of QName and NOTATION have to be among the bindings.
  bool IsValid(const SimpleType& type, const std::string& text, const NamespaceBindings& bindings);

  // Whether two texts stand for the same value, and whether the first is below or the same; false
  // for what can not be compared, and for texts that are no values. Both by the primitive type.
  bool AreEqual(const SimpleType& type, const std::string& a, const std::string& b);
  bool IsAtMost(const SimpleType& type, const std::string& a, const std::string& b);

  // What is wrong with a regular expression of XML Schema; empty for nothing.
  static std::string FindPatternFault(const std::string& pattern);

 private:
  struct Rules;

  const Rules& GetRules(const SimpleType& type);

  std::map<const SimpleType*, std::unique_ptr<Rules>> m_rules;
};

// What a type's white space rule makes of a text.
std::string ApplyWhiteSpace(WhiteSpace rule, const std::string& text);

}  // namespace qzxml::generator
