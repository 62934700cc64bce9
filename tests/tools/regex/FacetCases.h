#pragma once

#include <deque>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "qzxml/binding/TextRules.h"

// Values of simple types with the verdict of a test suite.
namespace qztest {

using Facets = std::vector<std::pair<std::string, std::string>>;  // in the order of the schema

struct FacetCase {
  std::string set;
  std::string name;
  std::string type;  // a built-in one, "list(decimal)" or "union(duration,decimal)"
  Facets facets;     // of one step of restriction
  std::string value;
  bool isValid;
};

// Without any where the file is not there.
std::vector<FacetCase> ReadFacetCases(const std::string& path);

// A field of a table as it was before make_cases.py escaped it.
std::string Unescape(const std::string& field);

// The rules of a restriction of a built-in type, as a generator makes them, with the texts that
// they point to.
class CRulesOfCase {
 public:
  // Throws qzxml::generator::CPatternError.
  explicit CRulesOfCase(const FacetCase& c);
  CRulesOfCase(const CRulesOfCase&) = delete;
  CRulesOfCase& operator=(const CRulesOfCase&) = delete;

  const QzXmlLib16::CTextRules& Get() const { return m_rules; }

 private:
  QzXmlLib16::CTextRules MakeType(const std::string& name);
  const char* Keep(std::string text) { return m_texts.emplace_back(std::move(text)).c_str(); }

  std::deque<std::string> m_texts;
  std::deque<QzXmlLib16::CTextRules> m_parts;  // of a list or a union
  std::vector<const QzXmlLib16::CTextRules*> m_members;
  std::unique_ptr<QzXmlLib16::CPatternStep> m_pattern;
  std::vector<const char*> m_enumeration;
  QzXmlLib16::CTextRules m_rules;
};

}  // namespace qztest
