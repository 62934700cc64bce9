#include "tools/generator/emit/SimpleTypeWriter.h"

#include "tools/generator/regex/XsdPattern.h"

namespace qzxml::generator {
namespace {

// --- Rules

// Writes the CTextRules of a simple type: a constant for itself, ahead of it those of its item and
// member types, and the arrays that it points at.
class CRulesWriter {
 public:
  CRulesWriter(CScope& scope, CCodeWriter& writer) : m_scope(scope), m_writer(writer) {}

  // name: "kSku_Rules"; what it takes begins with that name. No name of the model has the line.
  void Write(const SimpleType& type, const std::string& name) {
    CallText call;
    switch (type.variety) {
      case Variety_List:
        if (type.GetNearestBuiltIn() != BuiltIn_anySimpleType) {
          call = BuiltInRules(type);
          break;
        }
        Write(*type.itemType, name + "Item");
        call = {m_scope.Library("CTextRules") + "::ListOf(", {name + "Item"}, ")", {}};
        break;
      case Variety_Union:
        call = UnionRules(type, name);
        break;
      case Variety_Atomic:
      case Variety_Absent:
        call = BuiltInRules(type);
        break;
    }
    AddFacets(type, name, call.links);
    WriteConstant(name, call);
  }

 private:
  CallText BuiltInRules(const SimpleType& type) const {
    const std::string builtIn = std::string("XsdType_") + GetBuiltInName(type.GetNearestBuiltIn());
    return {m_scope.Library("CTextRules") + "(", {m_scope.Library(builtIn)}, ")", {}};
  }

  CallText UnionRules(const SimpleType& type, const std::string& name) {
    std::vector<std::string> members;
    for (std::size_t i = 0; i < type.memberTypes.size(); ++i) {
      const std::string member = name + "Member" + std::to_string(i + 1);
      Write(*type.memberTypes[i], member);
      members.push_back("&" + member);
    }
    m_writer.Call({"const " + m_scope.Library("CTextRules") + "* const " + name + "Members[] = {",
                   members,
                   "};",
                   {}});
    return {m_scope.Library("CTextRules") + "::UnionOf(", {name + "Members"}, ")", {}};
  }

  // Those of the steps above the built-in type, whose own are known to the library.
  void AddFacets(const SimpleType& type, const std::string& name, std::vector<std::string>& links) {
    AddWhitespace(type, links);
    AddPatterns(type, name, links);
    AddEnumeration(type, name, links);
    AddNumber(type, FacetKind_length, "Length", links);
    AddNumber(type, FacetKind_minLength, "MinLength", links);
    AddNumber(type, FacetKind_maxLength, "MaxLength", links);
    AddBound(type, FacetKind_minInclusive, FacetKind_minExclusive, links);
    AddBound(type, FacetKind_maxInclusive, FacetKind_maxExclusive, links);
    AddNumber(type, FacetKind_totalDigits, "TotalDigits", links);
    AddNumber(type, FacetKind_fractionDigits, "FractionDigits", links);
  }

  template <typename Visit>
  static void VisitSteps(const SimpleType& type, Visit visit) {
    for (const SimpleType* step = &type; step != nullptr && step->builtIn == BuiltIn_None;
         step = step->base) {
      if (!visit(step->facets)) return;
    }
  }

  static const Facet* Find(const SimpleType& type, FacetKind kind) {
    const Facet* found = nullptr;
    VisitSteps(type, [&](const FacetStep& step) {
      found = step.Find(kind);
      return found == nullptr;
    });
    return found;
  }

  void AddWhitespace(const SimpleType& type, std::vector<std::string>& links) const {
    const Facet* const facet = Find(type, FacetKind_whiteSpace);
    if (facet == nullptr || type.variety != Variety_Atomic) return;
    const char* const rule = facet->value == "preserve"  ? "WhitespaceRule_Preserve"
                             : facet->value == "replace" ? "WhitespaceRule_Replace"
                                                         : "WhitespaceRule_Collapse";
    links.push_back(".Whitespace(" + m_scope.Library("CWhitespaceUtils") + "::" + rule + ")");
  }

  void AddPatterns(const SimpleType& type, const std::string& name,
                   std::vector<std::string>& links) const {
    std::vector<std::string> steps;
    VisitSteps(type, [&](const FacetStep& step) {
      std::vector<std::string> alternatives;
      for (const Pattern& pattern : step.patterns) {
        alternatives.push_back(TranslateXsdPattern(pattern.text));
      }
      if (!alternatives.empty()) {
        steps.insert(steps.begin(), Literal(JoinAlternatives(alternatives)));
      }
      return true;
    });
    if (steps.empty()) return;
    m_writer.Literals("const " + m_scope.Library("CPatternStep") + " " + name + "Patterns[] = ",
                      steps);
    links.push_back(".Patterns(" + name + "Patterns)");
  }

  void AddEnumeration(const SimpleType& type, const std::string& name,
                      std::vector<std::string>& links) const {
    std::vector<std::string> texts;
    VisitSteps(type, [&](const FacetStep& step) {
      for (const Enumeration& enumeration : step.enumerations) {
        texts.push_back(Literal(enumeration.text));
      }
      return texts.empty();
    });
    if (texts.empty()) return;
    m_writer.Literals("constexpr const char* " + name + "Texts[] = ", texts);
    links.push_back(".Enumeration(" + name + "Texts)");
  }

  static void AddNumber(const SimpleType& type, FacetKind kind, const char* function,
                        std::vector<std::string>& links) {
    if (const Facet* const facet = Find(type, kind)) {
      links.push_back("." + std::string(function) + "(" + NumberText(facet->value) + ")");
    }
  }

  // A number of 32 bits without sign; what is greater never limits. Leading zeros would make it an
  // octal one.
  static std::string NumberText(const std::string& value) {
    std::size_t first = value.find_first_not_of("+0");
    if (first == value.npos) return "0";
    const std::string digits = value.substr(first);
    constexpr char kGreatest[] = "4294967294";
    const bool isGreater =
        digits.size() > 10 || (digits.size() == 10 && digits.compare(kGreatest) > 0);
    const std::string number = isGreater ? kGreatest : digits;
    const bool isSmall = number.size() < 10;
    return isSmall ? number : number + "u";
  }

  // The nearest step that has one of the two counts.
  static void AddBound(const SimpleType& type, FacetKind inclusive, FacetKind exclusive,
                       std::vector<std::string>& links) {
    VisitSteps(type, [&](const FacetStep& step) {
      for (const FacetKind kind : {inclusive, exclusive}) {
        const Facet* const facet = step.Find(kind);
        if (facet == nullptr) continue;
        std::string function = GetFacetName(kind);
        function[0] = static_cast<char>(function[0] - 'a' + 'A');
        links.push_back("." + function + "(" + Literal(facet->value) + ")");
        return false;
      }
      return true;
    });
  }

  void WriteConstant(const std::string& name, const CallText& call) {
    const std::string head = "const " + m_scope.Library("CTextRules") + " " + name + " =";
    std::string text = call.head + call.arguments[0] + call.tail;
    for (const std::string& link : call.links) text += link;
    if (m_writer.Fits(head + " " + text + ";")) return m_writer.Line(head + " " + text + ";");
    m_writer.Line(head);
    m_writer.Indent(2);
    m_writer.Call({call.head, call.arguments, call.tail + ";", call.links});
    m_writer.Outdent(2);
  }

  CScope& m_scope;
  CCodeWriter& m_writer;
};

std::string Whitespace(const CScope& scope, const std::string& rule) {
  return scope.Library("CWhitespaceUtils") + "::" + rule;
}

}  // namespace

// --- Enumerations

void WriteEnumDeclaration(const BoundEnum& boundEnum, CCodeWriter& writer) {
  writer.Comment(boundEnum.documentation);
  writer.Line("enum " + boundEnum.name + " : int {");
  writer.Indent();
  for (const BoundEnum::Enumerator& enumerator : boundEnum.enumerators) {
    writer.Comment(enumerator.documentation);
    writer.Line(enumerator.name + ",");
  }
  writer.Outdent();
  writer.Line("};");
  writer.Declaration("const char* " + boundEnum.name + "ToString(int value)");
  writer.Declaration(boundEnum.name + " StringTo" + boundEnum.name + "(const char* text)");
}

void WriteEnumSource(CScope& scope, const BoundEnum& boundEnum, CCodeWriter& writer) {
  const std::string texts = "k" + boundEnum.name + "_Texts";
  const std::string info = "k" + boundEnum.name + "_Info";
  scope.Include(CNames::Header(*boundEnum.where, kEnumerationsStem));
  scope.Include("qzxml/binding/EnumerationInfo.h");
  writer.Line("// --- " + boundEnum.name);
  writer.Gap();
  writer.Line("namespace {");
  std::vector<std::string> literals;
  for (const BoundEnum::Enumerator& enumerator : boundEnum.enumerators) {
    literals.push_back(Literal(enumerator.text));
  }
  writer.Literals("constexpr const char* " + texts + "[] = ", literals);
  writer.Call({"const " + scope.Library("CEnumerationInfo") + " " + info + "(",
               {texts, Whitespace(scope, boundEnum.whitespace)},
               ");",
               {},
               4,
               true});
  writer.Line("}  // namespace");
  writer.Gap();
  writer.Function("const char* " + boundEnum.name + "ToString(int value)",
                  {"return " + info + ".ToText(value);", {}, {}, {}});
  writer.Function(
      boundEnum.name + " StringTo" + boundEnum.name + "(const char* text)",
      {"return static_cast<" + boundEnum.name + ">(", {info + ".FromText(text)"}, ");", {}});
}

// --- Simple types

void WriteSimpleTypeSource(CScope& scope, const BoundSimpleType& type, CCodeWriter& writer) {
  scope.Include(CNames::Header(*type.where, kSimpleTypesStem));
  const std::string head = "const " + scope.Library("CSimpleTypeInfo") + " " + type.constant + "(";
  if (type.enumeration != nullptr) {
    const BoundEnum& boundEnum = *type.enumeration;
    scope.Include(CNames::Header(*boundEnum.where, kEnumerationsStem));
    scope.Include("qzxml/binding/EnumerationInfo.h");
    const std::string name = scope.Enum(boundEnum);
    const std::string prefix = name.substr(0, name.size() - boundEnum.name.size());
    writer.Call({head,
                 {"&" + name + "ToString", "&" + scope.Library("EnumNumber") + "<&" + prefix +
                                               "StringTo" + boundEnum.name + ">"},
                 ");",
                 {},
                 4,
                 true});
    return;
  }
  std::vector<std::string> arguments = {scope.Library(type.kind),
                                        Whitespace(scope, type.whitespace)};
  if (!type.facets.empty()) {
    std::string facets = scope.Library("CSimpleTypeInfo") + "::CFacets()";
    for (const auto& [function, argument] : type.facets) {
      facets += "." + function + "(" + argument + ")";
    }
    arguments.push_back(facets);
  }
  if (type.needsRules) {
    writer.Line("namespace {");
    CRulesWriter(scope, writer).Write(*type.type, type.constant + "_Rules");
    writer.Line("}  // namespace");
    arguments.push_back(type.constant + "_Rules");
  }
  writer.Call({head, arguments, ");", {}, 4, true});
}

// --- Families

void WriteFamilyDeclaration(const CScope& scope, const BoundSimpleFamily& family,
                            CCodeWriter& writer) {
  writer.Line("extern const " + scope.Library("CNamedSimpleType") + " " + family.named + "[];");
  writer.Call({"inline constexpr " + scope.Library("CSimpleTypeFamily") + " " + family.types + "{",
               {scope.Constant(*family.declared), family.named},
               "};",
               {},
               4,
               true});
}

void WriteFamilySource(const CScope& scope, const BoundSimpleFamily& family, CCodeWriter& writer) {
  scope.Include(CNames::Header(*family.where, kSimpleTypesStem));
  writer.Line("const " + scope.Library("CNamedSimpleType") + " " + family.named + "[] = {");
  writer.Indent(2);
  for (const BoundSimpleFamily::Named& named : family.names) {
    writer.Call({"{",
                 {scope.Uri(named.name.namespaceUri), Literal(named.name.localName),
                  "&" + scope.Constant(*named.type)},
                 "},",
                 {}});
  }
  writer.Line("{},");
  writer.Outdent(2);
  writer.Line("};");
}

}  // namespace qzxml::generator
