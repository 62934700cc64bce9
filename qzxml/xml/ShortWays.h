#pragma once

#include <string>

#include "qzxml/values/ItemType.h"
#include "qzxml/xml/WrittenName.h"

namespace QzXmlLib16 {
struct QzVariant;
}  // namespace QzXmlLib16

namespace QzXmlLib16::detail {

// What a writer offers beside the calls of CXmlWriter: each does in one go what those do one after
// the other, or answers false and has changed nothing that could be seen, in any but the ordinary
// case. Then those calls are the way.
//
// A name with an id comes with the same namespace each time.
class CShortWays {
 public:
  // WriteStartElement, WriteText and WriteEndElement of an element with nothing but a text.
  virtual bool PutTextElement(const ElementTags& name, const std::string& uri,
                              const std::string& text, ItemType type) = 0;
  // The same for the text of a value, which is not nil, under a format.
  virtual bool PutValueElement(const ElementTags& name, const std::string& uri,
                               const QzVariant& value, const std::string& format) = 0;
  // WriteAttribute of an attribute in no namespace, likewise.
  virtual bool PutValueAttribute(const AttributeTag& name, const QzVariant& value,
                                 const std::string& format) = 0;

 protected:
  ~CShortWays() = default;
};

}  // namespace QzXmlLib16::detail
