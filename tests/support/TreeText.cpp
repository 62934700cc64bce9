#include "tests/support/TreeText.h"

#include <algorithm>
#include <vector>

#include "qzxml/xml/XmlAttribute.h"

using QzXmlLib16::CXmlAttribute;
using QzXmlLib16::CXmlElement;

namespace qztest {
namespace {

// The lines of a text without the white space at their ends and without empty lines.
std::string WithoutIndentation(const std::string& text) {
  std::string result;
  std::size_t begin = 0;
  while (begin <= text.size()) {
    const std::size_t end = std::min(text.find('\n', begin), text.size());
    const std::size_t first = text.find_first_not_of(" \t", begin);
    if (first < end) {
      const std::size_t last = text.find_last_not_of(" \t", end - 1);
      result += text.substr(first, last - first + 1) + "\n";
    }
    begin = end + 1;
  }
  return result;
}

void AppendElement(const CXmlElement* element, int depth, const ValueForm& form, std::string& out) {
  const std::string indent(static_cast<std::size_t>(depth), ' ');
  const std::string& name = element->GetLocalName();
  out += indent + "{" + element->GetNamespaceURI() + "}" + name + "\n";

  std::vector<std::string> attributes;
  for (const CXmlAttribute* attribute : element->GetAttributes()) {
    const std::string& key = attribute->GetLocalName();
    const std::string value =
        form ? form(*element, key, attribute->GetValue()) : attribute->GetValue();
    attributes.push_back(indent + " @{" + attribute->GetNamespaceURI() + "}" + key + "=" + value +
                         "\n");
  }
  std::sort(attributes.begin(), attributes.end());
  for (const std::string& line : attributes) out += line;

  std::string text = element->GetText();
  if (element->GetFirstElement() != nullptr) text = WithoutIndentation(text);
  if (form) text = form(*element, "", text);
  if (!text.empty()) out += indent + " \"" + text + "\"\n";
  for (const CXmlElement* child = element->GetFirstElement(); child != nullptr;
       child = child->GetNextSiblingElement()) {
    AppendElement(child, depth + 1, form, out);
  }
}

}  // namespace

std::string TreeText(const CXmlElement* element, const ValueForm& form) {
  std::string out;
  if (element != nullptr) AppendElement(element, 0, form, out);
  return out;
}

}  // namespace qztest
