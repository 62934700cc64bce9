#include "qzxml/serialization/ElementInfoValues.h"

#include <utility>

#include "qzxml/collections/Element.h"
#include "qzxml/collections/ElementCol.h"
#include "qzxml/runtime/Functions.h"
#include "qzxml/runtime/QzException.h"
#include "qzxml/serialization/Messages.h"
#include "qzxml/values/Conversions.h"
#include "qzxml/xml/XmlAttribute.h"
#include "qzxml/xml/XmlWriter.h"

namespace QzXmlLib16Data {

using namespace QzXmlLib16;

namespace {

constexpr char kAnyElement[] = "AnyElement";

// Whether a text is the given one, which is in small letters.
bool EqualsIgnoringCase(std::string_view text, const char* small) {
  for (const char c : text) {
    const char folded = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    if (folded != *small) return false;
    ++small;
  }
  return *small == '\0';
}

}  // namespace

NilValue ReadNil(const CXmlAttribute& attribute) {
  const std::string_view value = attribute.GetValueView();
  if (EqualsIgnoringCase(value, "true") || value == "1") return NilValue_True;
  if (EqualsIgnoringCase(value, "false") || value == "0") return NilValue_False;
  return NilValue_Unknown;
}

const std::string& TextOf(const QzVariant& value, const std::string& format, std::string& scratch) {
  if (value.GetTypeAsEnum() == ItemType_string && !value.IsNil()) return value.GetStringReference();
  scratch.clear();
  detail::AppendText(value, format, scratch);
  return scratch;
}

const std::string& TextOf(const char* text, std::string& scratch) {
  scratch.assign(text != nullptr ? text : "");
  return scratch;
}

void ReadValue(QzVariant& value, std::string_view text, ItemType type,
               CWhitespaceUtils::WhitespaceRule rule, std::string& scratch) {
  scratch = std::string(text);
  if (type != ItemType_string) return value.FromString(scratch, type, rule);
  if (rule != CWhitespaceUtils::WhitespaceRule_None) {
    scratch = CConversions::stringFromString(scratch, rule);
  }
  value.GiveString(scratch);
}

bool PassesEveryValue(ItemType type, const CPrimitiveRestrictions& restrictions) {
  const bool isNumber = type >= ItemType_i1 && type <= ItemType_r8;
  const bool isOctets = type == ItemType_hexBinary || type == ItemType_base64Binary;
  if (type == ItemType_boolean) return true;
  if (!isNumber && !isOctets && type != ItemType_string) return false;
  return restrictions.GetPattern().empty() && restrictions.GetMinLength() < 0 &&
         restrictions.GetMaxLength() < 0 && restrictions.GetLength() < 0 &&
         restrictions.GetMinInclusive().empty() && restrictions.GetMaxInclusive().empty() &&
         restrictions.GetMinExclusive().empty() && restrictions.GetMaxExclusive().empty() &&
         restrictions.GetTotalDigits() < 0;
}

// --- Writing

bool CElementInfoValues::RequireWritten(const CElementInfo& info, bool written) {
  if (!written) ThrowMandatoryProperty(info);
  return true;
}

bool CElementInfoValues::NilToXml(const CElementInfo& info, CXmlWriter* writer) {
  writer->WriteStartElement(info.m_strElementName, info.m_strElementNamespace);
  writer->WriteXsiNil();
  writer->WriteEndElement();
  return true;
}

bool CElementInfoValues::CollectionToXml(const CElementInfo& info,
                                         const CSerializationContext& context,
                                         CXmlCollectionBase* collection, CXmlWriter* writer) {
  if (collection->GetCount() < 1) return false;
  writer->SetCollectionState(1);
  CElementInfo::ToXml_Int(collection->GetBase(), writer, info.m_strElementNamespace.c_str(),
                          context, false);
  writer->SetCollectionState(3);
  return true;
}

bool CElementInfoValues::CountedCollectionToXml(const CElementInfo& info,
                                                const CSerializationContext& context,
                                                const CXmlGeneratedClass* object,
                                                CXmlWriter* writer) {
  QzVariant value;
  info.ReadProperty(object, value);
  const Collection collection = value.GetXmlCollection();
  RequireCollection(info, collection);
  if (!context.GetIgnoreInvalidCollectionCounts()) collection->ValidateCount(context);
  return CollectionToXml(info, context, collection, writer);
}

void CElementInfoValues::ObjectAttributesToXml(const CElementInfo& info, XmlElementType elementType,
                                               const CSerializationContext& context,
                                               const CXmlGeneratedClass* object,
                                               CXmlWriter* writer) {
  if (elementType != XmlElementType_PseudoElement) return;
  QzVariant value;
  info.ReadProperty(object, value);
  const Object child = value.GetXmlObject();
  if (child != nullptr) CElementInfo::AttributesToXml_Int(child, writer, context);
}

void CElementInfoValues::CollectionAttributesToXml(const CElementInfo& info,
                                                   XmlElementType elementType,
                                                   const CSerializationContext& context,
                                                   const CXmlGeneratedClass* object,
                                                   CXmlWriter* writer) {
  if (elementType != XmlElementType_PseudoElement) return;
  QzVariant value;
  info.ReadProperty(object, value);
  const Collection collection = value.GetXmlCollection();
  RequireCollection(info, collection);
  CElementInfo::AttributesToXml_Int(collection->GetBase(), writer, context);
}

// --- Reading

bool CElementInfoValues::IsNil(const CElementInfo& info, const CSerializationContext& context,
                               const CXmlElement& element) {
  bool isNil = false;
  for (const CXmlAttribute* attribute : element.GetAttributeRange()) {
    if (attribute->IsNilAttribute()) {
      const NilValue nil = ReadNil(*attribute);
      isNil = nil != NilValue_False;
      if (isNil && !info.m_bNillable) ThrowNilNotAllowed(element);
      if (nil == NilValue_Unknown) ThrowUnexpectedNil(*attribute);
    } else if (info.m_pRules == nullptr && !context.GetIgnoreUnknownAttributes()) {
      ThrowUnexpectedAttribute(*attribute);
    }
  }
  return isNil;
}

CElementInfoValues::Object CElementInfoValues::HeldObject(const CElementInfo& info,
                                                          CXmlGeneratedClass* object) {
  QzVariant value;
  info.InvokePropertyGet(object, value);
  Object held = value.GetXmlObject();
  RequireObject(info, held);
  return held;
}

CElementInfoValues::Collection CElementInfoValues::HeldCollection(const CElementInfo& info,
                                                                  CXmlGeneratedClass* object) {
  QzVariant value;
  info.InvokePropertyGet(object, value);
  Collection held = value.GetXmlCollection();
  RequireCollection(info, held);
  return held;
}

CElementInfoValues::Object CElementInfoValues::Make(const CElementInfo& info, ClassFactory factory,
                                                    int classId) {
  Object made = factory(classId, info.m_strElementName.c_str());
  RequireObject(info, made);
  return made;
}

void CElementInfoValues::ReadOwnElement(CXmlObjectBase* child, CXmlElement** cursor,
                                        const CSerializationContext& context, bool optionalChoice) {
  CXmlElement* const element = *cursor;
  CElementInfo::FromXml_Int(child, element, element->GetFirstElement(), context, optionalChoice);
  *cursor = element->GetNextSiblingElement();
}

bool CElementInfoValues::ReadInParent(CXmlObjectBase* child, CXmlElement* parent,
                                      CXmlElement** cursor, const CSerializationContext& context) {
  CXmlElement* const before = *cursor;
  *cursor = CElementInfo::FromXml_Int(child, parent, before, context, false);
  return *cursor != before;
}

bool CElementInfoValues::ReadOpenElement(const CElementInfo& info, CXmlObjectBase* child,
                                         CXmlElement* parent, CXmlElement** cursor,
                                         const CSerializationContext& context) {
  const bool suits = info.m_bNeedsNamespace
                         ? IsAt(info, context, *cursor)
                         : info.m_strElementName == kAnyElement ||
                               info.m_strElementName == (*cursor)->GetLocalName();
  return suits && ReadInParent(child, parent, cursor, context);
}

CXmlElement* CElementInfoValues::ReadCollection(CXmlCollectionBase* collection, CXmlElement* parent,
                                                CXmlElement* cursor,
                                                const CSerializationContext& context) {
  return CElementInfo::FromXml_Int(collection->GetBase(), parent, cursor, context, false);
}

CXmlElement* CElementInfoValues::ReadOpenCollection(const CElementInfo& info,
                                                    CXmlCollectionBase* collection,
                                                    CXmlElement* parent, CXmlElement* cursor,
                                                    const CSerializationContext& context) {
  if (info.m_bNeedsNamespace && !IsAt(info, context, cursor)) return cursor;
  CElementCol* const elements = dynamic_cast<CElementCol*>(collection);
  if (elements == nullptr || info.m_strElementName == kAnyElement) {
    return ReadCollection(collection, parent, cursor, context);
  }
  return CElementInfo::FromXmlLockElementName_Int(
      elements, info.m_strElementName, cursor != nullptr ? cursor->GetNamespaceURI() : "", parent,
      cursor, context);
}

void CElementInfoValues::Store(const CElementInfo& info, CXmlGeneratedClass* object,
                               CXmlObjectBase* child, const CXmlElement& parent) {
  QzVariant value;
  value.SetXmlObject(child);
  info.InvokePropertySet(object, value, parent);
}

// --- Whole members

bool CElementInfoValues::TakeOptionalClass(const CElementInfo& info, XmlElementType elementType,
                                           ClassFactory factory, int classId,
                                           const CSerializationContext& context,
                                           CXmlGeneratedClass* object, CXmlElement* parent,
                                           CXmlElement** cursor) {
  const bool hasTag = elementType == XmlElementType_Element;
  if (hasTag ? !IsAt(info, context, *cursor) : *cursor == nullptr) return false;
  const Object child = Make(info, factory, classId);
  if (hasTag) {
    ReadOwnElement(child, cursor, context);
  } else if (!ReadInParent(child, parent, cursor, context)) {
    return false;
  }
  Store(info, object, child, *parent);
  return true;
}

bool CElementInfoValues::TakeSubstitution(const CElementInfo& info,
                                          const CSerializationContext& context,
                                          CXmlGeneratedClass* object, CXmlElement* parent,
                                          CXmlElement** cursor, CXmlObjectBase* child) {
  ReadOwnElement(child, cursor, context);
  Store(info, object, child, *parent);
  return true;
}

bool CElementInfoValues::TakeOptionalOpenElement(
    const CElementInfo& info, const std::string& restrictions, const std::string& targetNamespace,
    const CSerializationContext& context, CXmlGeneratedClass* object, CXmlElement* parent,
    CXmlElement** cursor, const char* parentNamespace) {
  if (*cursor == nullptr) return false;
  const std::string itsNamespace = CElementInfo::GetAnyDefaultNamespace(
      restrictions.c_str(), parentNamespace, targetNamespace.c_str());
  const Object child(new CElement(info.m_strElementName.c_str(), itsNamespace.c_str(),
                                  restrictions.c_str(), targetNamespace.c_str()));
  if (!ReadOpenElement(info, child, parent, cursor, context)) return false;
  Store(info, object, child, *parent);
  return true;
}

// --- Failures

void CElementInfoValues::ThrowMissingChild(const CElementInfo& info, const CXmlElement& parent) {
  throw CQzValidationException(FormatString("Failed to find the required child element [%s].",
                                            info.m_strElementName.c_str()),
                               parent.GetXPath());
}

void CElementInfoValues::ThrowMissingSubstitution(const CElementInfo& info,
                                                  const CXmlElement& parent) {
  throw CQzValidationException(
      FormatString(Messages::kNoSubstitution, info.m_strElementName.c_str()), parent.GetXPath());
}

void CElementInfoValues::ThrowMissingNamespace(const CElementInfo& info,
                                               const CXmlElement& parent) {
  throw CQzValidationException(
      FormatString("Failed to find the required element from namespace [%s].",
                   info.m_strElementNamespace.c_str()),
      parent.GetXPath());
}

void CElementInfoValues::ThrowNotFound(const CElementInfo& info) {
  throw CQzValidationException(
      FormatString("Failed to find the mandatory element [%s].", info.m_strElementName.c_str()),
      "");
}

void CElementInfoValues::ThrowMandatoryProperty(const CElementInfo& info) {
  throw CQzInvalidParamException(FormatString("The Property [%s] is mandatory, it may not be NULL",
                                              info.m_strElementName.c_str()));
}

void CElementInfoValues::RequireObject(const CElementInfo& info, const CXmlObjectBase* object) {
  QZ_ASSERT_TEXT(object != nullptr, "p != 0");
  if (object == nullptr) ThrowMandatoryProperty(info);
}

void CElementInfoValues::RequireCollection(const CElementInfo& info,
                                           const CXmlCollectionBase* spCol) {
  QZ_ASSERT(spCol != 0);
  if (spCol == nullptr) ThrowMandatoryProperty(info);
}

void ThrowUnexpectedAttribute(const CXmlAttribute& attribute) {
  throw CQzValidationException("Unexpected Attribute found.", attribute.GetXPath());
}

void ThrowNilNotAllowed(const CXmlElement& element) {
  throw CQzValidationException("Invalid use of 'nil' attribute in non-nillable element.",
                               element.GetXPath());
}

void ThrowUnexpectedNil(const CXmlAttribute& attribute) {
  throw CQzValidationException(FormatString("Unexpected Value [%s] for 'nil' Attribute found.",
                                            attribute.GetValue().c_str()),
                               attribute.GetXPath());
}

}  // namespace QzXmlLib16Data
