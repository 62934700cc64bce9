#include "tools/generator/schema/SchemaNames.h"

#include "qzxml/xml/XmlAttribute.h"
#include "qzxml/xml/XmlElement.h"
#include "tools/generator/schema/SchemaSet.h"

namespace qzxml::generator {

using QzXmlLib16::CXmlAttribute;
using QzXmlLib16::CXmlElement;

namespace {

// The value of an attribute without namespace, or null.
const std::string* FindAttributeValue(const CXmlElement* element, const char* name) {
  for (const CXmlAttribute* attribute : element->GetAttributeRange()) {
    if (attribute->GetLocalName() == name) return &attribute->GetValue();
  }
  return nullptr;
}

std::string GetNumberPredicate(const CXmlElement* element) {
  const CXmlElement* const parent = element->GetParentElm();
  if (parent == nullptr) return {};
  std::size_t count = 0;
  std::size_t number = 0;
  for (const CXmlElement* e = parent->GetFirstElement(); e; e = e->GetNextSiblingElement()) {
    if (e->GetLocalName() != element->GetLocalName()) continue;
    ++count;
    if (e == element) number = count;
  }
  return count > 1 ? "[" + std::to_string(number) + "]" : std::string();
}

std::string GetStep(const CXmlElement* element) {
  std::string step = "/" + element->GetLocalName();
  for (const char* name : {"name", "ref"}) {
    const std::string* const value = FindAttributeValue(element, name);
    if (value != nullptr) return step + "[@" + name + "='" + *value + "']";
  }
  return step + GetNumberPredicate(element);
}

}  // namespace

std::string QName::ToString() const {
  return namespaceUri.empty() ? localName : "{" + namespaceUri + "}" + localName;
}

const std::string& Location::GetFile() const {
  static const std::string none;
  return document != nullptr ? document->file : none;
}

std::string Location::GetPath() const {
  std::string path;
  for (const CXmlElement* e = element; e != nullptr; e = e->GetParentElm()) {
    path.insert(0, GetStep(e));
  }
  return path;
}

std::string Diagnostic::ToString() const {
  std::string text;
  if (!file.empty()) text += file + ": ";
  if (!path.empty()) text += path + ": ";
  return text + message;
}

}  // namespace qzxml::generator
