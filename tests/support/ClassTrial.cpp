#include "tests/support/ClassTrial.h"

#include <gtest/gtest.h>

#include "qzxml/collections/Element.h"
#include "qzxml/serialization/AttributeInfo.h"
#include "qzxml/xml/XmlDocument.h"
#include "qzxml/xml/XmlElement.h"
#include "tests/support/MemberTrial.h"

namespace qztest {

using namespace QzXmlLib16;
using namespace QzXmlLib16Data;

// --- The trial

std::string CClassTrial::Read(const std::string& children, const CSerializationContext& context,
                              bool optionalChoice) {
  const std::string text = "<r xmlns:xsi='" + std::string(kXsi) + "' xmlns:o='urn:o'" +
                           rootAttributes + ">" + children + "</r>";
  CXmlDocument document(context);
  document.LoadXml(text.c_str());
  CXmlElement* const root = document.GetDocumentElement();
  Renew();
  return Outcome([&] {
    const CXmlElement* const cursor =
        m_object->FromXml_Int(root, root->GetFirstElement(), context, optionalChoice);
    const std::string path = cursor != nullptr ? cursor->GetXPath() : "/end";
    return "at " + path.substr(path.rfind('/') + 1) + ", " + Write(context);
  });
}

std::string CClassTrial::Write(const CSerializationContext& context) const {
  return Outcome([&] { return Text(*m_object, context); });
}

void CClassTrial::Expect(const std::vector<Reading>& readings) {
  for (const Reading& reading : readings) {
    EXPECT_EQ(reading.outcome, Read(reading.children, reading.context))
        << "of " << reading.children;
  }
}

std::string LeftOver(const char* element) {
  return std::string(
             "CQzException: Failed read all the elements held within the element [r]. The "
             "unexpected element [") +
         element + "] remains un processed\nPath: /r";
}

std::string MandatoryIsMissing(const char* element) {
  return std::string(
             "CQzValidationException: Failed to process the element.\nPath: /r\n"
             "Failed to find the mandatory element [") +
         element + "].";
}

std::string NothingChosen(const char* parent, const char* path) {
  return std::string("CQzException: No child elements within the element [") + parent +
         "] were populated. The element represents a choice, so one and only one element should be "
         "populated. The element contained no sutable child elements\nPath: " +
         path;
}

CAttributeInfo* TextAttribute(const char* name, int index, bool optional) {
  return new CAttributeInfoPrimitive(name, "", index, optional, ItemType_string, nullptr,
                                     CWhitespaceUtils::WhitespaceRule_None,
                                     CPrimitiveRestrictions(), nullptr);
}

// --- The collection of groups

CTableObject* CGroupCol::Add() {
  const CSmartPtr<CTableObject> item(new CTableObject(m_tables, "g"));
  AppendItem(item);
  return item;
}

void CGroupCol::ToXml_Int(CXmlWriter* writer, bool, const char* uri,
                          const CSerializationContext& context, bool) const {
  for (const CNode* node = GetFirstNode(); node != nullptr; node = node->next) {
    CXmlObjectBase::ToXml_Int(node->item, writer, false, uri, context, false);
  }
}

CXmlElement* CGroupCol::FromXml_Int(CXmlElement* parent, CXmlElement* cursor,
                                    const CSerializationContext& context, bool) {
  while (cursor != nullptr) {
    const CSmartPtr<CTableObject> item(new CTableObject(m_tables, "g"));
    CXmlElement* const behind = CXmlObjectBase::FromXml_Int(item, parent, cursor, context);
    if (behind == cursor) break;
    AppendItem(item);
    cursor = behind;
  }
  return cursor;
}

// --- Properties

Unset::Make Texts(const char* name, int minOccurs, int maxOccurs, const char* uri) {
  return Unset::Collection(
      [=]() -> CXmlCollectionBase* { return new CTextCol(name, uri, minOccurs, maxOccurs); });
}

Unset::Make Objects(const CTables& tables, const char* name, int minOccurs, int maxOccurs) {
  return Unset::Collection([=, &tables]() -> CXmlCollectionBase* {
    return new CTableCol(tables, name, "", minOccurs, maxOccurs);
  });
}

Unset::Make Groups(const CTables& tables, int minOccurs, int maxOccurs) {
  return Unset::Collection([=, &tables]() -> CXmlCollectionBase* {
    return new CGroupCol(tables, minOccurs, maxOccurs);
  });
}

Unset::Make Elements(const char* restriction, int minOccurs, int maxOccurs) {
  return Unset::Collection([=]() -> CXmlCollectionBase* {
    return new CElementCol("", restriction, "", minOccurs, maxOccurs);
  });
}

Unset::Make HeldObject(const CTables& tables, const char* name) {
  return Unset::Held([=, &tables] { return new CTableObject(tables, name); });
}

Unset::Make HeldElement(const char* name, const char* restriction) {
  return Unset::Held([=] { return new CElement(name, "", restriction, ""); });
}

}  // namespace qztest
