#include "qzxml/collections/AttributeCol.h"

#include <string_view>
#include <utility>

#include "qzxml/runtime/Functions.h"
#include "qzxml/runtime/QzException.h"
#include "qzxml/serialization/NamespaceRules.h"
#include "qzxml/serialization/TextOrEmpty.h"
#include "qzxml/xml/XmlAttribute.h"
#include "qzxml/xml/XmlElement.h"

namespace QzXmlLib16 {

using detail::TextOrEmpty;

namespace {

CInstanceClass s_class("CAttributeCol");

// The namespace of new attributes: the one that is given, or the URI that a restriction begins
// with.
std::string_view NewNamespace(std::string_view namespaceUri, std::string_view restriction) {
  if (!namespaceUri.empty()) return namespaceUri;
  const std::string_view token = restriction.substr(0, restriction.find(' '));
  const bool isUri = token.size() >= 2 && token[0] != '#' && token[1] != '#';
  return isUri ? token : std::string_view();
}

}  // namespace

CAttributeCol::CAttributeCol(const char* namespaceUri, const char* restriction,
                             const char* targetNamespace)
    : CAttributeCol(
          detail::CSharedText(NewNamespace(TextOrEmpty(namespaceUri), TextOrEmpty(restriction))),
          detail::CSharedText(TextOrEmpty(restriction)),
          detail::CSharedText(TextOrEmpty(targetNamespace))) {}

CAttributeCol::CAttributeCol(detail::CSharedText namespaceUri, detail::CSharedText restriction,
                             detail::CSharedText targetNamespace)
    : CXmlCollection(std::move(namespaceUri), 0, -1),
      CInstanceMonitor(s_class),
      m_strRestriction(std::move(restriction)),
      m_strTargetNamespace(std::move(targetNamespace)) {}

CAttributeCol::~CAttributeCol() = default;

CSmartPtr<CAttributeCol> CAttributeCol::Clone() const {
  const CSmartPtr<CAttributeCol> clone(
      new CAttributeCol(Namespace(), m_strRestriction, m_strTargetNamespace));
  for (const CSmartPtr<CAttribute>& attribute : *this) clone->AppendItem(attribute->Clone());
  return clone;
}

// Adding

bool CAttributeCol::IsAllowed(const std::string& namespaceUri) const {
  return m_strRestriction.IsAny() ||
         detail::NamespaceMeetsRestrictions(namespaceUri, m_strRestriction.str(),
                                            m_strTargetNamespace.str());
}

void CAttributeCol::CheckNamespace(const std::string& namespaceUri) const {
  CheckNamespaceAgainstRestrictions(namespaceUri, m_strRestriction.str(),
                                    m_strTargetNamespace.str());
}

CSmartPtr<CAttribute> CAttributeCol::Add(const char* name, const char* value,
                                         const char* namespaceUri) {
  const detail::CSharedText space =
      detail::CSharedText::Like(Namespace(), TextOrEmpty(namespaceUri));
  CheckNamespace(space.str());
  const CSmartPtr<CAttribute> attribute(
      new CAttribute(TextOrEmpty(name), TextOrEmpty(value), space, false));
  AppendItem(attribute);
  return attribute;
}

CSmartPtr<CAttribute> CAttributeCol::Add(const char* name, const char* value) {
  return Add(name, value, Namespace().str().c_str());
}

CSmartPtr<CAttribute> CAttributeCol::Add(const char* name) { return Add(name, ""); }

CSmartPtr<CAttribute> CAttributeCol::Add(CAttribute* attribute) {
  const CHeldItem held(attribute);
  AppendItem(attribute);
  return CSmartPtr<CAttribute>(attribute);
}

CSmartPtr<CAttribute> CAttributeCol::AddFromDocument(const CXmlAttribute& attribute) {
  CheckNamespace(attribute.GetNamespaceURI());
  return AppendRead(attribute);
}

CSmartPtr<CAttribute> CAttributeCol::AppendRead(const CXmlAttribute& attribute) {
  const CSmartPtr<CAttribute> added(
      new CAttribute(attribute.GetLocalName(), std::string(attribute.GetValueView()),
                     detail::CSharedText::Like(Namespace(), attribute.GetNamespaceURI()), true));
  AppendItem(added);
  return added;
}

CSmartPtr<CAttribute> CAttributeCol::AddAfter(const CAttribute* existing, CAttribute* attribute) {
  const CHeldItem held(attribute);
  AddAfterItem(existing, attribute);
  return CSmartPtr<CAttribute>(attribute);
}

CSmartPtr<CAttribute> CAttributeCol::AddBefore(const CAttribute* existing, CAttribute* attribute) {
  const CHeldItem held(attribute);
  AddBeforeItem(existing, attribute);
  return CSmartPtr<CAttribute>(attribute);
}

CSmartPtr<CAttribute> CAttributeCol::Item(int index) const {
  return *CQzIterator<CAttribute>(GetNodeAtIndex(index));
}

// Writing and reading

void CAttributeCol::ToXml_Int(CXmlWriter* writer, bool, const char* namespaceUri,
                              const CSerializationContext& context, bool optionalChoice) const {
  for (const CNode* node = GetFirstNode(); node != nullptr; node = node->next) {
    CXmlObjectBase::ToXml_Int(node->item, writer, false, namespaceUri, context, optionalChoice);
  }
}

CXmlElement* CAttributeCol::FromXml_Int(CXmlElement* element, CXmlElement* cursor,
                                        const CSerializationContext&, bool) {
  if (element == nullptr) return cursor;
  for (const CXmlAttribute* attribute : element->GetAttributeRange()) {
    if (!IsAllowed(attribute->GetNamespaceURI())) {
      throw CQzInvalidNamespaceException(
          FormatString("Invalid Attribute [%s]. The attributes namespace is Inappropriate.",
                       attribute->GetLocalName().c_str()),
          element->GetXPath());
    }
    AppendRead(*attribute);
  }
  return cursor;
}

}  // namespace QzXmlLib16
