#include "qzxml/collections/XmlCollectionBase.h"
#include "qzxml/runtime/Functions.h"
#include "qzxml/runtime/QzException.h"
#include "qzxml/serialization/Messages.h"
#include "qzxml/serialization/XmlObjectBase.h"

// What generated setters call to keep the rules of their class. A choice class holds one string,
// the name of the member that is set, or "". A setter of a class member offers its value, a
// listener on a collection its count, a getter of a primitive asks whether the member is the one;
// each may change the string, and refuses what would set a second member.

namespace QzXmlLib16 {

void CXmlObjectBase::Choice_SetElementValid(bool valid, const char* propertyName,
                                            std::string& selected) {
  if (!valid) {
    selected.clear();
    return;
  }
  // Meant: with nothing selected this throws too, with an empty name in the text.
  if (selected != propertyName) {
    throw CQzInvalidStateException(FormatString(
        "The Property %s is already set. Only one element within this class bay be set at a time",
        selected.c_str()));
  }
}

void CXmlObjectBase::Choice_SelectElement(const char* propertyName, CXmlObjectBase* value,
                                          std::string& selected) {
  if (selected == propertyName) {
    if (value == nullptr) selected.clear();
  } else if (selected.empty()) {
    selected = propertyName;  // meant: for null too, the setter goes on from there
  } else if (value != nullptr) {
    throw CQzInvalidStateException(FormatString(Messages::kChoiceAlreadySet, selected.c_str()));
  }
}

void CXmlObjectBase::Choice_CollectionChanged(const char* propertyName, std::int32_t count,
                                              std::string& selected) {
  if (selected == propertyName) {
    if (count == 0) selected.clear();
  } else if (selected.empty()) {
    if (count > 0) selected = propertyName;
  } else if (count != 0) {
    throw CQzInvalidStateException(FormatString(Messages::kChoiceAlreadySet, selected.c_str()));
  }
}

void CXmlObjectBase::Choice_Read_Collection(CXmlCollectionBase* collection, CXmlElement* parent,
                                            CXmlElement*& cursor, std::int32_t& count,
                                            const CSerializationContext& context) {
  if (count > 0) return;
  CXmlElement* const next = FromXml_Int(collection->GetBase(), parent, cursor, context);
  if (next == cursor) return;
  cursor = next;
  collection->ValidateCount(context);
  ++count;
}

void CXmlObjectBase::Throw_IfPropertyIsNull(CXmlObjectBase* value, const char* propertyName) {
  if (value != nullptr) return;
  throw CQzInvalidParamException(
      FormatString("The Property [%s] is mandatory, it may node be NULL", propertyName));
}

void CXmlObjectBase::Throw_IfElementNameDiffers(CXmlObjectBase* value, const char* expectedName) {
  if (value == nullptr) return;
  const std::string& actual = value->GetBase()->ElementName();
  if (actual == expectedName) return;
  throw CQzInvalidParamException(
      FormatString("This property requires an element with the name %s the element being set has "
                   "the element name %s",
                   expectedName, actual.c_str()));
}

}  // namespace QzXmlLib16
