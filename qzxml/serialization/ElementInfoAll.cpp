// The members of an xs:all. Each says whether it found itself; the verdict on what was not found
// comes at the end, from Validate.
#include "qzxml/serialization/ElementInfoAll.h"

#include "qzxml/collections/XmlCollectionBase.h"
#include "qzxml/serialization/ElementInfoValues.h"
#include "qzxml/serialization/TextOrEmpty.h"

namespace QzXmlLib16Data {

using QzXmlLib16::detail::TextOrEmpty;
using Values = CElementInfoValues;

namespace {

// The verdict on a mandatory member: a missing one fails where the class is a real element, and
// else sends the walk back.
bool Verdict(const CElementInfo& info, bool found, bool enforce) {
  if (!found && enforce) Values::ThrowNotFound(info);
  return found;
}

// A class that is known only from its element, with or without a tag. A factory that finds no class
// has found no element.
bool TakeAbstractClass(const CElementInfo& info, XmlElementType elementType,
                       AbstractClassFactory factory, const CSerializationContext& context,
                       CXmlGeneratedClass* object, CXmlElement* parent, CXmlElement** cursor) {
  const bool hasTag = elementType == XmlElementType_Element;
  if (hasTag && !Values::IsAt(info, context, *cursor)) return false;
  const Values::Object child = factory(*cursor);
  if (child == nullptr) return false;
  if (hasTag) return Values::TakeSubstitution(info, context, object, parent, cursor, child);
  if (!Values::ReadInParent(child, parent, cursor, context)) return false;
  Values::Store(info, object, child, *parent);
  return true;
}

}  // namespace

// --- Classes

bool CElementInfoAllClsMnd::ElementToXml(const CSerializationContext& context,
                                         const CXmlGeneratedClass* object,
                                         CXmlWriter* writer) const {
  return Values::RequireWritten(*this, ElementToXmlCls(context, object, writer, false));
}

bool CElementInfoAllClsMnd::ElementFromXml(const CSerializationContext& context,
                                           CXmlGeneratedClass* object, CXmlElement* parent,
                                           CXmlElement** current, const char*, XmlElementType) {
  const bool hasTag = m_elementType == XmlElementType_Element;
  if (hasTag && !Values::IsAt(*this, context, *current)) return false;
  const Values::Object child = Values::HeldObject(*this, object);
  if (!hasTag) return Values::ReadInParent(child, parent, current, context);
  Values::ReadOwnElement(child, current, context);
  return true;
}

bool CElementInfoAllClsMnd::Validate(const CSerializationContext&, const CXmlGeneratedClass*,
                                     bool found, bool enforce) const {
  // Meant: a child with a tag may be missing unless it requires content.
  const bool mayBeMissing = m_elementType != XmlElementType_PseudoElement && !m_bRequiresContent;
  if (!found && enforce && mayBeMissing) return true;
  return Verdict(*this, found, enforce);
}

void CElementInfoAllClsMnd::PseudoChildAttributeToXml(const CSerializationContext& context,
                                                      const CXmlGeneratedClass* object,
                                                      CXmlWriter* writer) const {
  Values::ObjectAttributesToXml(*this, m_elementType, context, object, writer);
}

bool CElementInfoAllClsOpt::ElementToXml(const CSerializationContext& context,
                                         const CXmlGeneratedClass* object,
                                         CXmlWriter* writer) const {
  return ElementToXmlCls(context, object, writer, false);
}

bool CElementInfoAllClsOpt::ElementFromXml(const CSerializationContext& context,
                                           CXmlGeneratedClass* object, CXmlElement* parent,
                                           CXmlElement** current, const char*, XmlElementType) {
  return Values::TakeOptionalClass(*this, m_elementType, m_classFactory, m_lClassId, context,
                                   object, parent, current);
}

bool CElementInfoAllClsOpt::Validate(const CSerializationContext&, const CXmlGeneratedClass*, bool,
                                     bool) const {
  return true;
}

void CElementInfoAllClsOpt::PseudoChildAttributeToXml(const CSerializationContext& context,
                                                      const CXmlGeneratedClass* object,
                                                      CXmlWriter* writer) const {
  Values::ObjectAttributesToXml(*this, m_elementType, context, object, writer);
}

// --- Classes known only from their element

bool CElementInfoAllAbsClsMnd::ElementToXml(const CSerializationContext& context,
                                            const CXmlGeneratedClass* object,
                                            CXmlWriter* writer) const {
  return Values::RequireWritten(*this, ElementToXmlCls(context, object, writer, false));
}

bool CElementInfoAllAbsClsMnd::ElementFromXml(const CSerializationContext& context,
                                              CXmlGeneratedClass* object, CXmlElement* parent,
                                              CXmlElement** current, const char*, XmlElementType) {
  return TakeAbstractClass(*this, m_elementType, m_classFactory, context, object, parent, current);
}

bool CElementInfoAllAbsClsMnd::Validate(const CSerializationContext&, const CXmlGeneratedClass*,
                                        bool found, bool enforce) const {
  return Verdict(*this, found, enforce);
}

void CElementInfoAllAbsClsMnd::PseudoChildAttributeToXml(const CSerializationContext& context,
                                                         const CXmlGeneratedClass* object,
                                                         CXmlWriter* writer) const {
  Values::ObjectAttributesToXml(*this, m_elementType, context, object, writer);
}

bool CElementInfoAllAbsClsOpt::ElementToXml(const CSerializationContext& context,
                                            const CXmlGeneratedClass* object,
                                            CXmlWriter* writer) const {
  return ElementToXmlCls(context, object, writer, false);
}

bool CElementInfoAllAbsClsOpt::ElementFromXml(const CSerializationContext& context,
                                              CXmlGeneratedClass* object, CXmlElement* parent,
                                              CXmlElement** current, const char*, XmlElementType) {
  return *current != nullptr &&
         TakeAbstractClass(*this, m_elementType, m_classFactory, context, object, parent, current);
}

bool CElementInfoAllAbsClsOpt::Validate(const CSerializationContext&, const CXmlGeneratedClass*,
                                        bool, bool) const {
  return true;
}

void CElementInfoAllAbsClsOpt::PseudoChildAttributeToXml(const CSerializationContext& context,
                                                         const CXmlGeneratedClass* object,
                                                         CXmlWriter* writer) const {
  Values::ObjectAttributesToXml(*this, m_elementType, context, object, writer);
}

// --- Primitives and enumerations

bool CElementInfoAllPrimMnd::ElementToXml(const CSerializationContext& context,
                                          const CXmlGeneratedClass* object,
                                          CXmlWriter* writer) const {
  return Values::RequireWritten(*this, ElementToXmlPrim(context, object, writer));
}

bool CElementInfoAllPrimMnd::ElementFromXml(const CSerializationContext& context,
                                            CXmlGeneratedClass* object, CXmlElement*,
                                            CXmlElement** current, const char*, XmlElementType) {
  if (!Values::IsAt(*this, context, *current)) return false;
  ElementFromXmlPrim(context, object, current);
  return true;
}

bool CElementInfoAllPrimMnd::Validate(const CSerializationContext&, const CXmlGeneratedClass*,
                                      bool found, bool enforce) const {
  return Verdict(*this, found, enforce);
}

bool CElementInfoAllPrimOpt::ElementToXml(const CSerializationContext& context,
                                          const CXmlGeneratedClass* object,
                                          CXmlWriter* writer) const {
  return ElementToXmlPrim(context, object, writer);
}

bool CElementInfoAllPrimOpt::ElementFromXml(const CSerializationContext& context,
                                            CXmlGeneratedClass* object, CXmlElement*,
                                            CXmlElement** current, const char*, XmlElementType) {
  if (!Values::IsAt(*this, context, *current)) return false;
  ElementFromXmlPrim(context, object, current);
  return true;
}

bool CElementInfoAllPrimOpt::Validate(const CSerializationContext&, const CXmlGeneratedClass*, bool,
                                      bool) const {
  return true;
}

bool CElementInfoAllEnumMnd::ElementToXml(const CSerializationContext& context,
                                          const CXmlGeneratedClass* object,
                                          CXmlWriter* writer) const {
  return Values::RequireWritten(*this,
                                ElementToXmlEnum(context, object, writer, GetEnumToString()));
}

bool CElementInfoAllEnumMnd::ElementFromXml(const CSerializationContext& context,
                                            CXmlGeneratedClass* object, CXmlElement*,
                                            CXmlElement** current, const char*, XmlElementType) {
  if (!Values::IsAt(*this, context, *current)) return false;
  ElementFromXmlEnum(context, object, current);
  return true;
}

bool CElementInfoAllEnumMnd::Validate(const CSerializationContext&, const CXmlGeneratedClass*,
                                      bool found, bool enforce) const {
  return Verdict(*this, found, enforce);
}

bool CElementInfoAllEnumOpt::ElementToXml(const CSerializationContext& context,
                                          const CXmlGeneratedClass* object,
                                          CXmlWriter* writer) const {
  return ElementToXmlEnum(context, object, writer, GetEnumToString());
}

bool CElementInfoAllEnumOpt::ElementFromXml(const CSerializationContext& context,
                                            CXmlGeneratedClass* object, CXmlElement*,
                                            CXmlElement** current, const char*, XmlElementType) {
  if (!Values::IsAt(*this, context, *current)) return false;
  ElementFromXmlEnum(context, object, current);
  return true;
}

bool CElementInfoAllEnumOpt::Validate(const CSerializationContext&, const CXmlGeneratedClass*, bool,
                                      bool) const {
  return true;
}

// --- Open content

CElementInfoAllUntpdMnd::CElementInfoAllUntpdMnd(const char* elementName,
                                                 const char* elementNamespace, int propertyIndex,
                                                 const char* namespaceRestrictions,
                                                 const char* targetNamespace)
    : CElementInfo(elementName, elementNamespace, propertyIndex),
      m_strNamespaceRestrictions(TextOrEmpty(namespaceRestrictions)),
      m_strTargetNamespace(TextOrEmpty(targetNamespace)) {}

bool CElementInfoAllUntpdMnd::ElementToXml(const CSerializationContext& context,
                                           const CXmlGeneratedClass* object,
                                           CXmlWriter* writer) const {
  return Values::RequireWritten(*this, ElementToXmlCls(context, object, writer, false));
}

bool CElementInfoAllUntpdMnd::ElementFromXml(const CSerializationContext& context,
                                             CXmlGeneratedClass* object, CXmlElement* parent,
                                             CXmlElement** current, const char*, XmlElementType) {
  return *current != nullptr && Values::ReadOpenElement(*this, Values::HeldObject(*this, object),
                                                        parent, current, context);
}

bool CElementInfoAllUntpdMnd::Validate(const CSerializationContext&, const CXmlGeneratedClass*,
                                       bool found, bool enforce) const {
  return Verdict(*this, found, enforce);
}

CElementInfoAllUntpdOpt::CElementInfoAllUntpdOpt(const char* elementName,
                                                 const char* elementNamespace, int propertyIndex,
                                                 const char* namespaceRestrictions,
                                                 const char* targetNamespace)
    : CElementInfo(elementName, elementNamespace, propertyIndex),
      m_strNamespaceRestrictions(TextOrEmpty(namespaceRestrictions)),
      m_strTargetNamespace(TextOrEmpty(targetNamespace)) {}

bool CElementInfoAllUntpdOpt::ElementToXml(const CSerializationContext& context,
                                           const CXmlGeneratedClass* object,
                                           CXmlWriter* writer) const {
  return ElementToXmlCls(context, object, writer, false);
}

bool CElementInfoAllUntpdOpt::ElementFromXml(const CSerializationContext& context,
                                             CXmlGeneratedClass* object, CXmlElement* parent,
                                             CXmlElement** current, const char* parentNamespace,
                                             XmlElementType) {
  return Values::TakeOptionalOpenElement(*this, m_strNamespaceRestrictions, m_strTargetNamespace,
                                         context, object, parent, current, parentNamespace);
}

bool CElementInfoAllUntpdOpt::Validate(const CSerializationContext&, const CXmlGeneratedClass*,
                                       bool, bool) const {
  return true;
}

// --- Collections

bool CElementInfoAllCol::ElementToXml(const CSerializationContext& context,
                                      const CXmlGeneratedClass* object, CXmlWriter* writer) const {
  return Values::CountedCollectionToXml(*this, context, object, writer);
}

bool CElementInfoAllCol::ElementFromXml(const CSerializationContext& context,
                                        CXmlGeneratedClass* object, CXmlElement* parent,
                                        CXmlElement** current, const char*, XmlElementType) {
  const Values::Collection collection = Values::HeldCollection(*this, object);
  *current = Values::ReadCollection(collection, parent, *current, context);
  return false;
}

void CElementInfoAllClsCol::PseudoChildAttributeToXml(const CSerializationContext& context,
                                                      const CXmlGeneratedClass* object,
                                                      CXmlWriter* writer) const {
  Values::CollectionAttributesToXml(*this, m_elementType, context, object, writer);
}

void CElementInfoAllAbsClsCol::PseudoChildAttributeToXml(const CSerializationContext& context,
                                                         const CXmlGeneratedClass* object,
                                                         CXmlWriter* writer) const {
  Values::CollectionAttributesToXml(*this, m_elementType, context, object, writer);
}

}  // namespace QzXmlLib16Data
