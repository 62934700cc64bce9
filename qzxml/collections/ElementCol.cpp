#include "qzxml/collections/ElementCol.h"

#include <string_view>
#include <utility>

#include "qzxml/collections/Element.h"
#include "qzxml/collections/ElementReader.h"
#include "qzxml/runtime/QzException.h"
#include "qzxml/serialization/NamespaceRules.h"
#include "qzxml/serialization/TextOrEmpty.h"
#include "qzxml/xml/XmlElement.h"

namespace QzXmlLib16 {

using detail::TextOrEmpty;

namespace {

CInstanceClass s_class("CElementCol");

// The namespace of new elements: the one that is given, or a wildcard.
// Meant: a wildcard becomes a namespace name as it stands, and new elements get it.
std::string_view NewNamespace(std::string_view namespaceUri, std::string_view restriction) {
  if (namespaceUri.empty() && restriction.substr(0, 2) == "##") return restriction;
  return namespaceUri;
}

}  // namespace

CElementCol::CElementCol(const char* namespaceUri, const char* restriction,
                         const char* targetNamespace, int minOccurs, int maxOccurs)
    : CElementCol(
          detail::CSharedText(NewNamespace(TextOrEmpty(namespaceUri), TextOrEmpty(restriction))),
          detail::CSharedText(TextOrEmpty(targetNamespace)), minOccurs, maxOccurs) {
  CheckNamespaceAgainstRestrictions(TextOrEmpty(namespaceUri), TextOrEmpty(restriction),
                                    m_strTargetNamespace.str());
}

CElementCol::CElementCol(detail::CSharedText newNamespace, detail::CSharedText targetNamespace,
                         int minOccurs, int maxOccurs)
    : CXmlCollection(detail::CSharedText(), minOccurs, maxOccurs),
      CInstanceMonitor(s_class),
      m_strRestriction(detail::CSharedText::Any()),
      m_strNewNamespace(std::move(newNamespace)),
      m_strTargetNamespace(std::move(targetNamespace)) {}

CSmartPtr<CElementCol> CElementCol::ForChildren(const detail::CSharedText& namespaceUri,
                                                const detail::CSharedText& targetNamespace) {
  return CSmartPtr<CElementCol>(new CElementCol(
      namespaceUri.empty() ? detail::CSharedText::Any() : namespaceUri, targetNamespace, 0, -1));
}

CElementCol::~CElementCol() = default;

CSmartPtr<CElementCol> CElementCol::CloneEmpty() const {
  return CSmartPtr<CElementCol>(
      new CElementCol(m_strNewNamespace, m_strTargetNamespace, GetMinOccurs(), GetMaxOccurs()));
}

CSmartPtr<CElementCol> CElementCol::Clone() const {
  const CSmartPtr<CElementCol> clone = CloneEmpty();
  for (const CNode* node = GetFirstNode(); node != nullptr; node = node->next) {
    clone->AppendItem(At(node)->Clone());
  }
  return clone;
}

std::string CElementCol::GetNamespace() const { return m_strTargetNamespace.str(); }

// Adding

bool CElementCol::IsAllowed(const std::string& namespaceUri) const {
  return m_strRestriction.IsAny() ||
         detail::NamespaceMeetsRestrictions(namespaceUri, m_strRestriction.str(),
                                            m_strTargetNamespace.str());
}

void CElementCol::CheckNamespace(const std::string& namespaceUri) const {
  if (IsAllowed(namespaceUri)) return;
  CheckNamespaceAgainstRestrictions(namespaceUri, m_strRestriction.str(),
                                    m_strTargetNamespace.str());
}

CSmartPtr<CElement> CElementCol::Add(const char* name, const char* namespaceUri) {
  CheckNamespace(TextOrEmpty(namespaceUri));
  const CSmartPtr<CElement> element(new CElement(name, namespaceUri, m_strRestriction.str().c_str(),
                                                 m_strTargetNamespace.str().c_str()));
  AppendItem(element);
  return element;
}

CSmartPtr<CElement> CElementCol::Add(const char* name) {
  if (m_strNewNamespace.empty()) {
    throw CQzInvalidStateException("A Namespace has not been set for this Collection");
  }
  return Add(name, m_strNewNamespace.str().c_str());
}

CSmartPtr<CElement> CElementCol::Add(CElement* element) {
  if (element != nullptr) CheckNamespace(element->m_strNamespace.str());
  const CHeldItem held(element);
  AppendItem(element);
  return CSmartPtr<CElement>(element);
}

CSmartPtr<CElement> CElementCol::AddAfter(const CElement* existing, CElement* element) {
  const CHeldItem held(element);
  AddAfterItem(existing, element);
  return CSmartPtr<CElement>(element);
}

CSmartPtr<CElement> CElementCol::AddBefore(const CElement* existing, CElement* element) {
  const CHeldItem held(element);
  AddBeforeItem(existing, element);
  return CSmartPtr<CElement>(element);
}

CSmartPtr<CElement> CElementCol::Item(int index) const {
  return *CQzIterator<CElement>(GetNodeAtIndex(index));
}

const CElement* CElementCol::At(const CNode* node) const {
  return static_cast<const CElement*>(static_cast<const CXmlObjectBase*>(node->item));
}

// Writing and reading

void CElementCol::ToXml_Int(CXmlWriter* writer, bool, const char* namespaceUri,
                            const CSerializationContext& context, bool optionalChoice) const {
  ValidateCount(context);
  for (const CNode* node = GetFirstNode(); node != nullptr; node = node->next) {
    CXmlObjectBase::ToXml_Int(node->item, writer, false, namespaceUri, context, optionalChoice);
  }
}

CXmlElement* CElementCol::FromXml_Int(CXmlElement*, CXmlElement* cursor,
                                      const CSerializationContext&, bool) {
  auto reader = detail::CElementReader::ForReading(m_strTargetNamespace);
  while (cursor != nullptr && IsAllowed(cursor->GetNamespaceURI())) {
    AppendItem(reader.Read(cursor));
    cursor = cursor->GetNextSiblingElement();
  }
  return cursor;
}

CXmlElement* CElementCol::FromXmlLockElementName_Int(const std::string& name,
                                                     const std::string& namespaceUri, CXmlElement*,
                                                     CXmlElement* cursor,
                                                     const CSerializationContext&) {
  auto reader = detail::CElementReader::ForReading(m_strTargetNamespace);
  while (cursor != nullptr && cursor->GetLocalName() == name &&
         cursor->GetNamespaceURI() == namespaceUri) {
    AppendItem(reader.Read(cursor));
    cursor = cursor->GetNextSiblingElement();
  }
  return cursor;
}

}  // namespace QzXmlLib16
