#include "tests/tools/model/ModelText.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

namespace qzxml::generator::tests {

namespace {

std::string After(const std::string& text, const std::string& mark) {
  const std::size_t at = text.find(mark);
  return at == std::string::npos ? text : text.substr(at + mark.size());
}

std::string GetFormName(const BoundMember& member) {
  switch (member.form) {
    case BoundForm::Attribute:
      return "attribute " + member.xmlName + " ";
    case BoundForm::AnyAttribute:
      return "anyAttribute \"" + member.wildcard + "\" ";
    case BoundForm::Text:
      return "text ";
    case BoundForm::Value:
      return "value " + member.xmlName + " ";
    case BoundForm::Object:
      return "object " + member.xmlName + " ";
    case BoundForm::Group:
      return "group " + member.xmlName + " ";
    case BoundForm::Untyped:
      return "untyped " + member.xmlName + " ";
    case BoundForm::Wildcard:
      return "any \"" + member.wildcard + "\" ";
  }
  return "?";
}

std::string DescribeOccurrence(const BoundMember& member) {
  const std::int32_t min = member.minOccurs, max = member.maxOccurs;
  std::string text = std::to_string(min) + "-" + (max < 0 ? "n" : std::to_string(max));
  if (min == 1 && max == 1) text = "1";
  if (min == 0 && max == 1) text = "?";
  if (min == 0 && max == 0) text = "0";
  if (min == 0 && max == -1) text = "*";
  if (min == 1 && max == -1) text = "+";
  const bool isSeen = member.IsCollection() == (max != 1) && max != 0;
  return "[" + text + "]" + (isSeen ? "" : member.IsCollection() ? " col" : " single");
}

std::string DescribeSimple(const BoundSimpleType& type) {
  if (type.where == nullptr) return type.constant;
  return type.enumeration != nullptr ? type.enumeration->name : type.constant;
}

std::string DescribeMember(const BoundMember& member, const std::string& uri) {
  std::string text = member.name + ": " + GetFormName(member);
  const bool isChild = member.form == BoundForm::Value || member.form == BoundForm::Object ||
                       member.form == BoundForm::Untyped;
  if ((isChild && member.xmlNamespace != uri) ||
      (member.form == BoundForm::Attribute && !member.xmlNamespace.empty())) {
    text += "<" + member.xmlNamespace + "> ";
  }
  if (member.simple != nullptr) text += DescribeSimple(*member.simple) + " ";
  if (member.objectClass != nullptr) {
    text += After(member.objectClass->GetQualifiedName(), "::") + " ";
  }
  text += DescribeOccurrence(member);
  if (member.isByType) text += " byType";
  if (member.isNillable) text += " nillable";
  if (member.form == BoundForm::Group && member.requiresContent) text += " requiresContent";
  if (member.defaultValue) {
    text += (member.isFixed ? " fixed \"" : " default \"") + *member.defaultValue + "\"";
  }
  return text;
}

std::string DescribeOne(const BoundClass& bound) {
  std::string text = "class " + After(bound.GetQualifiedName(), "::");
  if (!bound.typeName.empty()) text += " <" + bound.typeName + ">";
  text += " " + bound.elementName + ":";
  if (bound.isGroup) text += " group";
  text += bound.groupType == BoundGroupType::Choice ? " choice"
          : bound.groupType == BoundGroupType::All  ? " all"
                                                    : " sequence";
  if (bound.groupType == BoundGroupType::Choice && !bound.requiresContent) text += " optional";
  if (bound.isAbstract) text += " abstract";
  if (bound.isMixed) text += " mixed";
  if (bound.isNillable) text += " nillable";
  if (bound.base != nullptr) {
    text += " base " + bound.base->name + " " + std::to_string(bound.basePropertyCount);
  }
  for (const BoundClass* derived : bound.derived) text += " > " + derived->name;
  text += "\n";
  for (const BoundMember& member : bound.members) {
    text += "  " + DescribeMember(member, bound.where->uri) + "\n";
  }
  for (const BoundRestriction& restriction : bound.restricted) {
    text += "  #" + std::to_string(restriction.propertyIndex) + " " +
            DescribeMember(restriction.member, bound.where->uri) + "\n";
  }
  return text;
}

}  // namespace

const BoundClass* FindClass(const Model& model, const std::string& name) {
  for (const auto& where : model.namespaces) {
    for (const auto& bound : where->classes) {
      if (After(bound->GetQualifiedName(), "::") == name) return bound.get();
    }
  }
  return nullptr;
}

std::string Describe(const Model& model) {
  std::string text;
  for (const auto& where : model.namespaces) {
    text += "== " + where->cppName + " <" + where->uri + "> " + where->fileStem + "\n";
    for (const auto& bound : where->enums) {
      text += "enum " + bound->name + " " + After(bound->whitespace, "_") + ":";
      for (const BoundEnum::Enumerator& enumerator : bound->enumerators) {
        text += (&enumerator == &bound->enumerators[0] ? " " : ", ") + enumerator.name + "=" +
                enumerator.text;
      }
      text += "\n";
    }
    for (const auto& type : where->simpleTypes) {
      text += "simple " + type->constant + ": " + After(type->kind, "_") + " " +
              After(type->whitespace, "_");
      if (type->enumeration != nullptr) text += " enum";
      for (const auto& [function, argument] : type->facets)
        text += " " + function + "(" + argument + ")";
      if (type->needsRules) text += " rules";
      text += "\n";
    }
    for (const auto& bound : where->classes) text += DescribeOne(*bound);
    for (const BoundRoot& root : where->roots) {
      text += "root " + root.name + ": " + root.objectClass->name +
              (root.isByType ? " byType\n" : "\n");
    }
  }
  return text + DescribeDiagnostics(model);
}

std::string DescribeClass(const Model& model, const std::string& name) {
  const BoundClass* const bound = FindClass(model, name);
  return bound == nullptr ? std::string() : DescribeOne(*bound);
}

std::string DescribeDiagnostics(const Model& model) {
  std::string text;
  for (const Diagnostic& diagnostic : model.diagnostics) {
    text += diagnostic.severity == Severity_Error ? "error: " : "warning: ";
    text += diagnostic.path + ": " + diagnostic.message + "\n";
  }
  return text;
}

CSchemaTrial::CSchemaTrial() {
  std::string folder = (std::filesystem::temp_directory_path() / "qzxml-model-XXXXXX").string();
  m_folder = mkdtemp(folder.data()) != nullptr ? folder : std::string();
}

CSchemaTrial::~CSchemaTrial() { std::filesystem::remove_all(m_folder); }

void CSchemaTrial::Add(const std::string& name, const std::string& text) {
  const std::string file = m_folder + "/" + name;
  std::ofstream(file, std::ios::binary) << text;
  m_files.push_back(file);
}

void CSchemaTrial::AddSchema(const std::string& content) {
  Add("t.xsd",
      "<xs:schema xmlns:xs='http://www.w3.org/2001/XMLSchema' xmlns:t='urn:t' "
      "targetNamespace='urn:t' elementFormDefault='qualified'>" +
          content + "</xs:schema>");
}

const Model& CSchemaTrial::Bind(const ModelOptions& options) {
  m_schemas = ReadSchemas({m_files[0]});
  for (const Diagnostic& diagnostic : m_schemas->GetDiagnostics()) {
    EXPECT_EQ(Severity_Warning, diagnostic.severity) << diagnostic.ToString();
  }
  if (m_schemas->HasErrors()) {
    m_model = std::make_unique<Model>();
  } else {
    m_model = BindSchemas(*m_schemas, options);
  }
  return *m_model;
}

std::string DescribeSchema(const std::string& content) {
  CSchemaTrial trial;
  trial.AddSchema(content);
  return Describe(trial.Bind());
}

std::string DescribeClassOf(const std::string& content, const std::string& name) {
  CSchemaTrial trial;
  trial.AddSchema(content);
  return DescribeClass(trial.Bind(), name);
}

}  // namespace qzxml::generator::tests
