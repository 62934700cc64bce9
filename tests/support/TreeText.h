#pragma once

#include <functional>
#include <string>

#include "qzxml/xml/XmlElement.h"

namespace qztest {

// Says how a value is to be shown: its element, its attribute's name ("" for the element's text)
// and the value as it stands.
using ValueForm =
    std::function<std::string(const QzXmlLib16::CXmlElement& element, const std::string& attribute,
                              const std::string& value)>;

// An element with all that is below it as lines of text that are equal exactly when two trees hold
// the same names, attributes and values: attributes in the order of their names, and the text of an
// element that has children without the white space around its lines (indentation).
std::string TreeText(const QzXmlLib16::CXmlElement* element, const ValueForm& form = nullptr);

}  // namespace qztest
