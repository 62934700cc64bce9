// The members of an xs:sequence. Those that must be there share one search, FindMandatory; what
// differs is what they read and, in an enumeration, how far they look in a class without a tag.
#include "qzxml/serialization/ElementInfoSeq.h"

#include "qzxml/collections/XmlCollectionBase.h"
#include "qzxml/serialization/ElementInfoValues.h"
#include "qzxml/serialization/TextOrEmpty.h"

namespace QzXmlLib16Data {

using QzXmlLib16::detail::TextOrEmpty;
using Values = CElementInfoValues;

namespace {

// Where a mandatory element was found: at the cursor; nowhere, which the context lets pass; or not
// at the cursor, which the walk of a class without a tag decides about.
enum Place { Place_Here, Place_Nowhere, Place_Elsewhere };

// How far a member of a class without a tag looks when unknown elements are ignored.
enum Reach { Reach_Cursor, Reach_End };

// What a mandatory element that is not at the cursor means. The cursor moves over unknown elements
// where these are ignored.
Place SearchMandatory(const CElementInfo& info, const CSerializationContext& context,
                      const CXmlElement& parent, CXmlElement** cursor, XmlElementType parentType,
                      Reach reach) {
  const bool decides = parentType == XmlElementType_Element;
  do {
    if (decides && context.GetIgnoreMissingMandatoryElements()) return Place_Nowhere;
    const bool goesOn =
        context.GetIgnoreUnknownElements() && *cursor != nullptr && (decides || reach == Reach_End);
    if (!goesOn) {
      if (decides) Values::ThrowMissingChild(info, parent);
      return Place_Elsewhere;
    }
    *cursor = (*cursor)->GetNextSiblingElement();
  } while (!Values::IsAt(info, context, *cursor));
  return Place_Here;
}

// Looks for a mandatory element from the cursor on.
inline Place FindMandatory(const CElementInfo& info, const CSerializationContext& context,
                           const CXmlElement& parent, CXmlElement** cursor,
                           XmlElementType parentType, Reach reach) {
  if (Values::IsAt(info, context, *cursor)) return Place_Here;
  return SearchMandatory(info, context, parent, cursor, parentType, reach);
}

// What a class that is known only from its element says when nothing suits it.
bool MissSubstitution(const CElementInfo& info, const CXmlElement& parent,
                      XmlElementType parentType) {
  if (parentType == XmlElementType_Element) Values::ThrowMissingSubstitution(info, parent);
  return false;
}

// The verdict on a collection once it is read.
bool IsCountRight(const CSerializationContext& context, const CXmlCollectionBase& collection,
                  XmlElementType parentType) {
  if (parentType != XmlElementType_Element) return collection.IsValidCount(context);
  collection.ValidateCount(context);
  return true;
}

}  // namespace

// --- Classes

bool CElementInfoSeqClsMnd::ElementToXml(const CSerializationContext& context,
                                         const CXmlGeneratedClass* object,
                                         CXmlWriter* writer) const {
  return Values::RequireWritten(*this, ElementToXmlCls(context, object, writer, false));
}

bool CElementInfoSeqClsMnd::ElementFromXml(const CSerializationContext& context,
                                           CXmlGeneratedClass* object, CXmlElement* parent,
                                           CXmlElement** current, const char*,
                                           XmlElementType parentType) {
  if (m_elementType != XmlElementType_Element) {
    return PseudoFromXml(context, object, parent, current, parentType);
  }
  const Place place = FindMandatory(*this, context, *parent, current, parentType, Reach_Cursor);
  if (place == Place_Here) {
    Values::ReadOwnElement(Values::HeldObject(*this, object), current, context);
  }
  return place != Place_Elsewhere;
}

bool CElementInfoSeqClsMnd::PseudoFromXml(const CSerializationContext& context,
                                          CXmlGeneratedClass* object, CXmlElement* parent,
                                          CXmlElement** current, XmlElementType parentType) {
  const bool decides = parentType == XmlElementType_Element;
  const bool atEnd = *current == nullptr;
  const bool moved =
      !(m_bRequiresContent && atEnd) &&
      Values::ReadInParent(Values::HeldObject(*this, object), parent, current, context);
  if (moved) return true;
  if (m_bRequiresContent) {
    if (decides) Values::ThrowMissingChild(*this, *parent);
    return false;
  }
  // The child may have nothing to do; an element that is unknown is for the walk to skip.
  return atEnd || !context.GetIgnoreUnknownElements() || !decides;
}

void CElementInfoSeqClsMnd::PseudoChildAttributeToXml(const CSerializationContext& context,
                                                      const CXmlGeneratedClass* object,
                                                      CXmlWriter* writer) const {
  Values::ObjectAttributesToXml(*this, m_elementType, context, object, writer);
}

bool CElementInfoSeqClsOpt::ElementToXml(const CSerializationContext& context,
                                         const CXmlGeneratedClass* object,
                                         CXmlWriter* writer) const {
  return ElementToXmlCls(context, object, writer, false);
}

bool CElementInfoSeqClsOpt::ElementFromXml(const CSerializationContext& context,
                                           CXmlGeneratedClass* object, CXmlElement* parent,
                                           CXmlElement** current, const char*, XmlElementType) {
  Values::TakeOptionalClass(*this, m_elementType, m_classFactory, m_lClassId, context, object,
                            parent, current);
  return true;
}

void CElementInfoSeqClsOpt::PseudoChildAttributeToXml(const CSerializationContext& context,
                                                      const CXmlGeneratedClass* object,
                                                      CXmlWriter* writer) const {
  Values::ObjectAttributesToXml(*this, m_elementType, context, object, writer);
}

// --- Classes known only from their element

bool CElementInfoSeqAbsClsMnd::ElementToXml(const CSerializationContext& context,
                                            const CXmlGeneratedClass* object,
                                            CXmlWriter* writer) const {
  return Values::RequireWritten(*this, ElementToXmlCls(context, object, writer, false));
}

bool CElementInfoSeqAbsClsMnd::ElementFromXml(const CSerializationContext& context,
                                              CXmlGeneratedClass* object, CXmlElement* parent,
                                              CXmlElement** current, const char*,
                                              XmlElementType parentType) {
  if (!Values::IsAt(*this, context, *current)) return MissSubstitution(*this, *parent, parentType);
  const Values::Object child = m_classFactory(*current);
  if (child == nullptr) return MissSubstitution(*this, *parent, parentType);
  return Values::TakeSubstitution(*this, context, object, parent, current, child);
}

void CElementInfoSeqAbsClsMnd::PseudoChildAttributeToXml(const CSerializationContext& context,
                                                         const CXmlGeneratedClass* object,
                                                         CXmlWriter* writer) const {
  Values::ObjectAttributesToXml(*this, m_elementType, context, object, writer);
}

bool CElementInfoSeqAbsClsOpt::ElementToXml(const CSerializationContext& context,
                                            const CXmlGeneratedClass* object,
                                            CXmlWriter* writer) const {
  return ElementToXmlCls(context, object, writer, false);
}

bool CElementInfoSeqAbsClsOpt::ElementFromXml(const CSerializationContext& context,
                                              CXmlGeneratedClass* object, CXmlElement* parent,
                                              CXmlElement** current, const char*, XmlElementType) {
  if (!Values::IsAt(*this, context, *current)) return true;
  const Values::Object child = m_classFactory(*current);
  return child == nullptr ||
         Values::TakeSubstitution(*this, context, object, parent, current, child);
}

void CElementInfoSeqAbsClsOpt::PseudoChildAttributeToXml(const CSerializationContext& context,
                                                         const CXmlGeneratedClass* object,
                                                         CXmlWriter* writer) const {
  Values::ObjectAttributesToXml(*this, m_elementType, context, object, writer);
}

// --- Primitives and enumerations

bool CElementInfoSeqPrimMnd::ElementToXml(const CSerializationContext& context,
                                          const CXmlGeneratedClass* object,
                                          CXmlWriter* writer) const {
  return Values::RequireWritten(*this, ElementToXmlPrim(context, object, writer));
}

bool CElementInfoSeqPrimMnd::ElementFromXml(const CSerializationContext& context,
                                            CXmlGeneratedClass* object, CXmlElement* parent,
                                            CXmlElement** current, const char*,
                                            XmlElementType parentType) {
  const Place place = FindMandatory(*this, context, *parent, current, parentType, Reach_End);
  if (place == Place_Here) ElementFromXmlPrim(context, object, current);
  return place != Place_Elsewhere;
}

bool CElementInfoSeqPrimOpt::ElementToXml(const CSerializationContext& context,
                                          const CXmlGeneratedClass* object,
                                          CXmlWriter* writer) const {
  return ElementToXmlPrim(context, object, writer);
}

bool CElementInfoSeqPrimOpt::ElementFromXml(const CSerializationContext& context,
                                            CXmlGeneratedClass* object, CXmlElement*,
                                            CXmlElement** current, const char*, XmlElementType) {
  if (Values::IsAt(*this, context, *current)) ElementFromXmlPrim(context, object, current);
  return true;
}

bool CElementInfoSeqEnumMnd::ElementToXml(const CSerializationContext& context,
                                          const CXmlGeneratedClass* object,
                                          CXmlWriter* writer) const {
  return Values::RequireWritten(*this,
                                ElementToXmlEnum(context, object, writer, GetEnumToString()));
}

bool CElementInfoSeqEnumMnd::ElementFromXml(const CSerializationContext& context,
                                            CXmlGeneratedClass* object, CXmlElement* parent,
                                            CXmlElement** current, const char*,
                                            XmlElementType parentType) {
  const Place place = FindMandatory(*this, context, *parent, current, parentType, Reach_Cursor);
  if (place == Place_Here) ElementFromXmlEnum(context, object, current);
  return place != Place_Elsewhere;
}

bool CElementInfoSeqEnumOpt::ElementToXml(const CSerializationContext& context,
                                          const CXmlGeneratedClass* object,
                                          CXmlWriter* writer) const {
  return ElementToXmlEnum(context, object, writer, GetEnumToString());
}

bool CElementInfoSeqEnumOpt::ElementFromXml(const CSerializationContext& context,
                                            CXmlGeneratedClass* object, CXmlElement*,
                                            CXmlElement** current, const char*, XmlElementType) {
  if (Values::IsAt(*this, context, *current)) ElementFromXmlEnum(context, object, current);
  return true;
}

// --- Open content

CElementInfoSeqUntpdMnd::CElementInfoSeqUntpdMnd(const char* elementName,
                                                 const char* elementNamespace, int propertyIndex,
                                                 const char* namespaceRestrictions,
                                                 const char* targetNamespace)
    : CElementInfo(elementName, elementNamespace, propertyIndex),
      m_strNamespaceRestrictions(TextOrEmpty(namespaceRestrictions)),
      m_strTargetNamespace(TextOrEmpty(targetNamespace)) {}

bool CElementInfoSeqUntpdMnd::ElementToXml(const CSerializationContext& context,
                                           const CXmlGeneratedClass* object,
                                           CXmlWriter* writer) const {
  return Values::RequireWritten(*this, ElementToXmlCls(context, object, writer, false));
}

bool CElementInfoSeqUntpdMnd::ElementFromXml(const CSerializationContext& context,
                                             CXmlGeneratedClass* object, CXmlElement* parent,
                                             CXmlElement** current, const char*,
                                             XmlElementType parentType) {
  if (*current == nullptr) Values::ThrowMissingChild(*this, *parent);
  const Values::Object child = Values::HeldObject(*this, object);
  if (Values::ReadOpenElement(*this, child, parent, current, context)) return true;
  if (parentType == XmlElementType_Element) Values::ThrowMissingNamespace(*this, *parent);
  return false;
}

CElementInfoSeqUntpdOpt::CElementInfoSeqUntpdOpt(const char* elementName,
                                                 const char* elementNamespace, int propertyIndex,
                                                 const char* namespaceRestrictions,
                                                 const char* targetNamespace)
    : CElementInfo(elementName, elementNamespace, propertyIndex),
      m_strNamespaceRestrictions(TextOrEmpty(namespaceRestrictions)),
      m_strTargetNamespace(TextOrEmpty(targetNamespace)) {}

bool CElementInfoSeqUntpdOpt::ElementToXml(const CSerializationContext& context,
                                           const CXmlGeneratedClass* object,
                                           CXmlWriter* writer) const {
  return ElementToXmlCls(context, object, writer, false);
}

bool CElementInfoSeqUntpdOpt::ElementFromXml(const CSerializationContext& context,
                                             CXmlGeneratedClass* object, CXmlElement* parent,
                                             CXmlElement** current, const char* parentNamespace,
                                             XmlElementType) {
  Values::TakeOptionalOpenElement(*this, m_strNamespaceRestrictions, m_strTargetNamespace, context,
                                  object, parent, current, parentNamespace);
  return true;
}

// --- Collections

bool CElementInfoSeqCol::ElementToXml(const CSerializationContext& context,
                                      const CXmlGeneratedClass* object, CXmlWriter* writer) const {
  return Values::CountedCollectionToXml(*this, context, object, writer);
}

bool CElementInfoSeqCol::ElementFromXml(const CSerializationContext& context,
                                        CXmlGeneratedClass* object, CXmlElement* parent,
                                        CXmlElement** current, const char*,
                                        XmlElementType parentType) {
  const Values::Collection collection = Values::HeldCollection(*this, object);
  *current = Values::ReadCollection(collection, parent, *current, context);
  return IsCountRight(context, *collection, parentType);
}

void CElementInfoSeqClsCol::PseudoChildAttributeToXml(const CSerializationContext& context,
                                                      const CXmlGeneratedClass* object,
                                                      CXmlWriter* writer) const {
  Values::CollectionAttributesToXml(*this, m_elementType, context, object, writer);
}

void CElementInfoSeqAbsClsCol::PseudoChildAttributeToXml(const CSerializationContext& context,
                                                         const CXmlGeneratedClass* object,
                                                         CXmlWriter* writer) const {
  Values::CollectionAttributesToXml(*this, m_elementType, context, object, writer);
}

bool CElementInfoSeqUntpdCol::ElementFromXml(const CSerializationContext& context,
                                             CXmlGeneratedClass* object, CXmlElement* parent,
                                             CXmlElement** current, const char*,
                                             XmlElementType parentType) {
  const Values::Collection collection = Values::HeldCollection(*this, object);
  *current = Values::ReadOpenCollection(*this, collection, parent, *current, context);
  return IsCountRight(context, *collection, parentType);
}

}  // namespace QzXmlLib16Data
