#include "tools/generator/schema/SchemaTree.h"

#include <algorithm>
#include <utility>

#include "qzxml/xml/XmlAttribute.h"
#include "qzxml/xml/XmlElement.h"
#include "qzxml/xml/XmlNamespaces.h"
#include "tools/generator/schema/Components.h"
#include "tools/generator/schema/Diagnostics.h"

namespace qzxml::generator {

using QzXmlLib16::CXmlAttribute;
using QzXmlLib16::CXmlElement;

namespace {

constexpr char kWhiteSpace[] = " \t\n\r";

struct SplitName {
  std::string prefix;
  std::string localName;
};

SplitName Split(const std::string& name) {
  const std::size_t colon = name.find(':');
  if (colon == std::string::npos) return {{}, name};
  return {name.substr(0, colon), name.substr(colon + 1)};
}

bool IsDeclaration(const std::string& name) {
  return name == "xmlns" || name.compare(0, 6, "xmlns:") == 0;
}

class CTreeMaker {
 public:
  CTreeMaker(SchemaSource* source, CDiagnostics& diagnostics)
      : m_source(source), m_diagnostics(diagnostics) {}

  // As deep as the document, whose depth CXmlDocument bounds.
  std::unique_ptr<SchemaNode> Make(const CXmlElement* element, const SchemaNode* parent) {
    auto node = std::make_unique<SchemaNode>();
    node->element = element;
    node->parent = parent;
    node->source = m_source;
    node->text = element->GetText();
    OpenScope(*node);
    node->name = Resolve(*node, element->GetLocalName(), true);
    AddAttributes(*node);
    for (const CXmlElement* e = element->GetFirstElement(); e; e = e->GetNextSiblingElement()) {
      node->children.push_back(Make(e, node.get()));
    }
    return node;
  }

 private:
  void OpenScope(SchemaNode& node) {
    static const auto outermost = std::make_shared<const NamespaceBindings>(
        NamespaceBindings{{"xml", QzXmlLib16::kXmlNamespace}});
    node.scope = node.parent != nullptr ? node.parent->scope : outermost;
    std::shared_ptr<NamespaceBindings> own;
    for (const CXmlAttribute* attribute : node.element->GetAttributeRange()) {
      const std::string& name = attribute->GetLocalName();
      if (!IsDeclaration(name)) continue;
      if (!own) own = std::make_shared<NamespaceBindings>(*node.scope);
      const std::string prefix = name.size() > 6 ? name.substr(6) : std::string();
      if (!prefix.empty() && attribute->GetValue().empty()) {
        m_diagnostics.Error(node, "The prefix '" + prefix + "' is bound to no namespace.");
      }
      (*own)[prefix] = attribute->GetValue();
    }
    if (own) node.scope = own;
  }

  QName Resolve(const SchemaNode& node, const std::string& written, bool isElement) {
    const SplitName name = Split(written);
    if (name.prefix.empty() && !isElement) return {{}, name.localName};
    const auto found = node.scope->find(name.prefix);
    if (found != node.scope->end()) return {found->second, name.localName};
    if (!name.prefix.empty()) {
      m_diagnostics.Error(node, "The prefix '" + name.prefix + "' is not declared.");
    }
    return {{}, name.localName};
  }

  void AddAttributes(SchemaNode& node) {
    for (const CXmlAttribute* attribute : node.element->GetAttributeRange()) {
      if (IsDeclaration(attribute->GetLocalName())) continue;
      QName name = Resolve(node, attribute->GetLocalName(), false);
      const auto isSame = [&](const SchemaNode::Attribute& a) { return a.name == name; };
      if (std::any_of(node.attributes.begin(), node.attributes.end(), isSame)) {
        m_diagnostics.Error(node, "The attribute '" + name.ToString() + "' is there twice.");
      }
      node.attributes.push_back({std::move(name), attribute->GetValue()});
    }
  }

  SchemaSource* const m_source;
  CDiagnostics& m_diagnostics;
};

std::vector<std::string> SplitLines(const std::string& text) {
  std::vector<std::string> lines;
  for (std::size_t begin = 0; begin <= text.size();) {
    const std::size_t end = std::min(text.find('\n', begin), text.size());
    std::string line = text.substr(begin, end - begin);
    line.erase(line.find_last_not_of(kWhiteSpace) + 1);
    lines.push_back(std::move(line));
    begin = end + 1;
  }
  return lines;
}

// Lines that stand indented in the schema begin at its edge; empty lines at either end go.
std::string Unindent(const std::string& text) {
  std::vector<std::string> lines = SplitLines(text);
  while (!lines.empty() && lines.back().empty()) lines.pop_back();
  while (!lines.empty() && lines.front().empty()) lines.erase(lines.begin());
  if (lines.empty()) return {};
  lines[0] = Trim(lines[0]);  // it mostly follows the tag, and tells nothing of the others
  std::size_t least = std::string::npos;
  for (std::size_t i = 1; i < lines.size(); ++i) {
    if (!lines[i].empty()) least = std::min(least, lines[i].find_first_not_of(kWhiteSpace));
  }
  std::string result = lines[0];
  for (std::size_t i = 1; i < lines.size(); ++i) {
    result += '\n';
    if (!lines[i].empty()) result += lines[i].substr(least);
  }
  return result;
}

// The element's text and that of what it holds; where each stood among the others is not known.
void GatherText(const SchemaNode& node, std::string& text) {
  text += node.text;
  for (const auto& child : node.children) {
    std::string inner;
    GatherText(*child, inner);
    if (Trim(inner).empty()) continue;
    if (!text.empty() && text.back() != '\n') text += '\n';
    text += inner;
  }
}

}  // namespace

const std::string* SchemaNode::Find(std::string_view attribute) const {
  for (const Attribute& a : attributes) {
    if (a.name.namespaceUri.empty() && a.name.localName == attribute) return &a.value;
  }
  return nullptr;
}

std::string SchemaNode::Get(std::string_view attribute) const {
  const std::string* const value = Find(attribute);
  return value != nullptr ? Trim(*value) : std::string();
}

bool SchemaNode::IsTrue(std::string_view attribute) const {
  const std::string value = Get(attribute);
  return value == "true" || value == "1";
}

SchemaNode* SchemaNode::FindChild(std::string_view localName) const {
  for (const auto& child : children) {
    if (child->Is(localName)) return child.get();
  }
  return nullptr;
}

Location SchemaNode::GetLocation() const { return {source->document, element}; }

std::unique_ptr<SchemaNode> MakeSchemaTree(SchemaSource* source, CDiagnostics& diagnostics) {
  return CTreeMaker(source, diagnostics).Make(source->xml->GetDocumentElement(), nullptr);
}

std::string GetDocumentation(const SchemaNode& node) {
  std::string all;
  for (const auto& child : node.children) {
    if (!child->Is("annotation")) continue;
    for (const auto& part : child->children) {
      if (!part->Is("documentation")) continue;
      std::string text;
      GatherText(*part, text);
      text = Unindent(text);
      if (text.empty()) continue;
      if (!all.empty()) all += "\n\n";
      all += text;
    }
  }
  return all;
}

std::string Trim(std::string_view text) {
  const std::size_t begin = text.find_first_not_of(kWhiteSpace);
  if (begin == std::string_view::npos) return {};
  return std::string(text.substr(begin, text.find_last_not_of(kWhiteSpace) - begin + 1));
}

std::vector<std::string> SplitWords(std::string_view text) {
  std::vector<std::string> words;
  for (std::size_t begin = text.find_first_not_of(kWhiteSpace); begin != std::string_view::npos;) {
    const std::size_t end = std::min(text.find_first_of(kWhiteSpace, begin), text.size());
    words.emplace_back(text.substr(begin, end - begin));
    begin = text.find_first_not_of(kWhiteSpace, end);
  }
  return words;
}

}  // namespace qzxml::generator
