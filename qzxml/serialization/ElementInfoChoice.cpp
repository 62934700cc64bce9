// The members of an xs:choice. "Selected" is the member whose property the generated setters have
// recorded as set. A class member is stored before its content is read, so that its setter has
// selected it by then; when it turns out to take nothing, null is stored, which gives it up again.
#include "qzxml/serialization/ElementInfoChoice.h"

#include "qzxml/collections/XmlCollectionBase.h"
#include "qzxml/serialization/ElementInfoValues.h"
#include "qzxml/serialization/TextOrEmpty.h"

namespace QzXmlLib16Data {

using QzXmlLib16::detail::TextOrEmpty;
using Values = CElementInfoValues;

namespace {

// The verdict on a collection that read on to next. What it took counts only when its number is
// right; a real element fails otherwise.
bool TakeCollection(const CXmlCollectionBase& collection, const CSerializationContext& context,
                    CXmlElement* next, CXmlElement** cursor, XmlElementType parentType) {
  if (next == *cursor) return false;
  if (parentType != XmlElementType_Element && !collection.IsValidCount(context)) return false;
  *cursor = next;
  if (parentType == XmlElementType_Element) collection.ValidateCount(context);
  return true;
}

}  // namespace

// --- Classes

bool CElementInfoChoiceClsOpt::ElementToXml(const CSerializationContext& context,
                                            const CXmlGeneratedClass* object,
                                            CXmlWriter* writer) const {
  return ElementToXmlCls(context, object, writer, true);
}

bool CElementInfoChoiceClsOpt::ElementFromXml(const CSerializationContext& context,
                                              CXmlGeneratedClass* object, CXmlElement* parent,
                                              CXmlElement** current, const char*, XmlElementType) {
  const bool hasTag = m_elementType == XmlElementType_Element;
  if (hasTag ? !Values::IsAt(*this, context, *current) : *current == nullptr) return false;
  const Values::Object child = Values::Make(*this, m_classFactory, m_lClassId);
  Values::Store(*this, object, child, *parent);
  if (hasTag) {
    Values::ReadOwnElement(child, current, context, true);
    return true;
  }
  if (Values::ReadInParent(child, parent, current, context)) return true;
  Values::Store(*this, object, nullptr, *parent);
  return false;
}

void CElementInfoChoiceClsOpt::PseudoChildAttributeToXml(const CSerializationContext& context,
                                                         const CXmlGeneratedClass* object,
                                                         CXmlWriter* writer) const {
  Values::ObjectAttributesToXml(*this, m_elementType, context, object, writer);
}

bool CElementInfoChoiceAbsClsOpt::ElementToXml(const CSerializationContext& context,
                                               const CXmlGeneratedClass* object,
                                               CXmlWriter* writer) const {
  return ElementToXmlCls(context, object, writer, false);
}

bool CElementInfoChoiceAbsClsOpt::ElementFromXml(const CSerializationContext& context,
                                                 CXmlGeneratedClass* object, CXmlElement* parent,
                                                 CXmlElement** current, const char*,
                                                 XmlElementType) {
  if (!Values::IsAt(*this, context, *current)) return false;
  const Values::Object child = m_classFactory(*current);
  Values::Store(*this, object, child, *parent);
  if (child == nullptr) return false;
  Values::ReadOwnElement(child, current, context);
  return true;
}

void CElementInfoChoiceAbsClsOpt::PseudoChildAttributeToXml(const CSerializationContext& context,
                                                            const CXmlGeneratedClass* object,
                                                            CXmlWriter* writer) const {
  Values::ObjectAttributesToXml(*this, m_elementType, context, object, writer);
}

// --- Primitives and enumerations

bool CElementInfoChoicePrimOpt::ElementToXml(const CSerializationContext& context,
                                             const CXmlGeneratedClass* object,
                                             CXmlWriter* writer) const {
  return ElementToXmlPrim(context, object, writer);
}

bool CElementInfoChoicePrimOpt::ElementFromXml(const CSerializationContext& context,
                                               CXmlGeneratedClass* object, CXmlElement*,
                                               CXmlElement** current, const char*, XmlElementType) {
  if (!Values::IsAt(*this, context, *current)) return false;
  ElementFromXmlPrim(context, object, current);
  return true;
}

bool CElementInfoChoiceEnumOpt::ElementToXml(const CSerializationContext& context,
                                             const CXmlGeneratedClass* object,
                                             CXmlWriter* writer) const {
  return ElementToXmlEnum(context, object, writer, GetEnumToString());
}

bool CElementInfoChoiceEnumOpt::ElementFromXml(const CSerializationContext& context,
                                               CXmlGeneratedClass* object, CXmlElement*,
                                               CXmlElement** current, const char*, XmlElementType) {
  if (!Values::IsAt(*this, context, *current)) return false;
  ElementFromXmlEnum(context, object, current);
  return true;
}

// --- Open content

CElementInfoChoiceUntpdOpt::CElementInfoChoiceUntpdOpt(const char* elementName,
                                                       const char* elementNamespace,
                                                       int propertyIndex,
                                                       const char* namespaceRestrictions,
                                                       const char* targetNamespace)
    : CElementInfo(elementName, elementNamespace, propertyIndex),
      m_strNamespaceRestrictions(TextOrEmpty(namespaceRestrictions)),
      m_strTargetNamespace(TextOrEmpty(targetNamespace)) {}

bool CElementInfoChoiceUntpdOpt::ElementToXml(const CSerializationContext& context,
                                              const CXmlGeneratedClass* object,
                                              CXmlWriter* writer) const {
  return ElementToXmlCls(context, object, writer, false);
}

bool CElementInfoChoiceUntpdOpt::ElementFromXml(const CSerializationContext& context,
                                                CXmlGeneratedClass* object, CXmlElement* parent,
                                                CXmlElement** current, const char* parentNamespace,
                                                XmlElementType) {
  if (*current == nullptr) return false;
  if (Values::TakeOptionalOpenElement(*this, m_strNamespaceRestrictions, m_strTargetNamespace,
                                      context, object, parent, current, parentNamespace)) {
    return true;
  }
  Values::Store(*this, object, nullptr, *parent);
  return false;
}

// --- Collections

bool CElementInfoChoiceCol::ElementToXml(const CSerializationContext& context,
                                         const CXmlGeneratedClass* object,
                                         CXmlWriter* writer) const {
  return ElementToXmlCol(context, object, writer);
}

bool CElementInfoChoiceCol::ElementFromXml(const CSerializationContext& context,
                                           CXmlGeneratedClass* object, CXmlElement* parent,
                                           CXmlElement** current, const char*,
                                           XmlElementType parentType) {
  const Values::Collection collection = Values::HeldCollection(*this, object);
  CXmlElement* const next = Values::ReadCollection(collection, parent, *current, context);
  return TakeCollection(*collection, context, next, current, parentType);
}

void CElementInfoChoiceClsCol::PseudoChildAttributeToXml(const CSerializationContext& context,
                                                         const CXmlGeneratedClass* object,
                                                         CXmlWriter* writer) const {
  Values::CollectionAttributesToXml(*this, m_elementType, context, object, writer);
}

void CElementInfoChoiceAbsClsCol::PseudoChildAttributeToXml(const CSerializationContext& context,
                                                            const CXmlGeneratedClass* object,
                                                            CXmlWriter* writer) const {
  Values::CollectionAttributesToXml(*this, m_elementType, context, object, writer);
}

bool CElementInfoChoiceUntpdCol::ElementFromXml(const CSerializationContext& context,
                                                CXmlGeneratedClass* object, CXmlElement* parent,
                                                CXmlElement** current, const char*,
                                                XmlElementType parentType) {
  const Values::Collection collection = Values::HeldCollection(*this, object);
  CXmlElement* const next =
      Values::ReadOpenCollection(*this, collection, parent, *current, context);
  return TakeCollection(*collection, context, next, current, parentType);
}

}  // namespace QzXmlLib16Data
