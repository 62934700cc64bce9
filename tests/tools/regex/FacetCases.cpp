#include "tests/tools/regex/FacetCases.h"

#include <cstdint>
#include <fstream>
#include <iterator>
#include <sstream>

#include "tools/generator/regex/XsdPattern.h"

namespace qztest {

using QzXmlLib16::CTextRules;
using QzXmlLib16::CWhitespaceUtils;
using QzXmlLib16::XsdType;

namespace {

// In the order of XsdType.
constexpr const char* kTypeNames[] = {"anySimpleType",
                                      "string",
                                      "normalizedString",
                                      "token",
                                      "language",
                                      "Name",
                                      "NCName",
                                      "NMTOKEN",
                                      "NMTOKENS",
                                      "ID",
                                      "IDREF",
                                      "IDREFS",
                                      "ENTITY",
                                      "ENTITIES",
                                      "QName",
                                      "NOTATION",
                                      "anyURI",
                                      "boolean",
                                      "decimal",
                                      "integer",
                                      "nonPositiveInteger",
                                      "negativeInteger",
                                      "long",
                                      "int",
                                      "short",
                                      "byte",
                                      "nonNegativeInteger",
                                      "unsignedLong",
                                      "unsignedInt",
                                      "unsignedShort",
                                      "unsignedByte",
                                      "positiveInteger",
                                      "float",
                                      "double",
                                      "duration",
                                      "dateTime",
                                      "time",
                                      "date",
                                      "gYearMonth",
                                      "gYear",
                                      "gMonthDay",
                                      "gDay",
                                      "gMonth",
                                      "hexBinary",
                                      "base64Binary"};

XsdType FindType(const std::string& name) {
  int type = 0;
  for (const char* candidate : kTypeNames) {
    if (name == candidate) return static_cast<XsdType>(type);
    ++type;
  }
  return QzXmlLib16::XsdType_anySimpleType;
}

std::vector<std::string> Split(const std::string& line, char separator) {
  std::vector<std::string> fields;
  std::istringstream stream(line + separator);
  for (std::string field; std::getline(stream, field, separator);) fields.push_back(field);
  return fields;
}

CWhitespaceUtils::WhitespaceRule FindWhitespace(const std::string& name) {
  if (name == "preserve") return CWhitespaceUtils::WhitespaceRule_Preserve;
  return name == "replace" ? CWhitespaceUtils::WhitespaceRule_Replace
                           : CWhitespaceUtils::WhitespaceRule_Collapse;
}

}  // namespace

std::string Unescape(const std::string& field) {
  std::string plain;
  for (std::size_t i = 0; i < field.size(); ++i) {
    if (field[i] != '\\' || i + 1 == field.size()) {
      plain += field[i];
      continue;
    }
    const char escaped = field[++i];
    plain += escaped == 't'   ? '\t'
             : escaped == 'n' ? '\n'
             : escaped == 'r' ? '\r'
             : escaped == 's' ? ';'
                              : escaped;
  }
  return plain;
}

std::vector<FacetCase> ReadFacetCases(const std::string& path) {
  std::vector<FacetCase> cases;
  std::ifstream stream(path, std::ios::binary);
  std::string line;
  std::getline(stream, line);  // the heading
  while (std::getline(stream, line)) {
    const std::vector<std::string> fields = Split(line, '\t');
    FacetCase c{fields[0], fields[1], fields[2], {}, Unescape(fields[4]), fields[5] == "valid"};
    for (const std::string& facet : Split(fields[3], ';')) {
      const std::size_t equals = facet.find('=');
      if (equals == std::string::npos) continue;
      c.facets.emplace_back(facet.substr(0, equals), Unescape(facet.substr(equals + 1)));
    }
    cases.push_back(c);
  }
  return cases;
}

// A built-in type, "list(decimal)" or "union(duration,decimal)".
CTextRules CRulesOfCase::MakeType(const std::string& name) {
  const std::size_t open = name.find('(');
  if (open == std::string::npos) return CTextRules(FindType(name));
  for (const std::string& member : Split(name.substr(open + 1, name.size() - open - 2), ',')) {
    m_parts.emplace_back(FindType(member));
    m_members.push_back(&m_parts.back());
  }
  if (name.compare(0, open, "list") == 0) return CTextRules::ListOf(m_parts.back());
  return CTextRules::UnionOf(m_members.data(), m_members.size());
}

CRulesOfCase::CRulesOfCase(const FacetCase& c) : m_rules(MakeType(c.type)) {
  std::vector<std::string> patterns;
  for (const auto& [name, value] : c.facets) {
    const char* const text = Keep(value);
    const auto number = [&] { return static_cast<std::uint32_t>(std::stoul(value)); };
    if (name == "pattern") patterns.push_back(qzxml::generator::TranslateXsdPattern(value));
    if (name == "enumeration") m_enumeration.push_back(text);
    if (name == "length") m_rules = m_rules.Length(number());
    if (name == "minLength") m_rules = m_rules.MinLength(number());
    if (name == "maxLength") m_rules = m_rules.MaxLength(number());
    if (name == "minInclusive") m_rules = m_rules.MinInclusive(text);
    if (name == "maxInclusive") m_rules = m_rules.MaxInclusive(text);
    if (name == "minExclusive") m_rules = m_rules.MinExclusive(text);
    if (name == "maxExclusive") m_rules = m_rules.MaxExclusive(text);
    if (name == "totalDigits") m_rules = m_rules.TotalDigits(number());
    if (name == "fractionDigits") m_rules = m_rules.FractionDigits(number());
    if (name == "whiteSpace") m_rules = m_rules.Whitespace(FindWhitespace(value));
  }
  if (!m_enumeration.empty()) {
    m_rules = m_rules.Enumeration(m_enumeration.data(), m_enumeration.size());
  }
  if (!patterns.empty()) {
    const char* const joined = Keep(qzxml::generator::JoinAlternatives(patterns));
    m_pattern = std::make_unique<QzXmlLib16::CPatternStep>(joined);
    m_rules = m_rules.Patterns(m_pattern.get(), 1);
  }
}

}  // namespace qztest
