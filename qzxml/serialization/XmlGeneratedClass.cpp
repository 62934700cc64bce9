// The two walks over the tables of a class.
//
// Writing. A class with a tag of its own writes its start tag, its attributes, its content and its
// end tag; one without (a group) writes only its content, and its attributes when the class around
// it asks for them. The content is every member in the order of the table, or the first member of a
// choice that has something to write, and then the class's own text. The root writes beside this
// what the context adds to a document. Nothing of the object changes.
//
// Reading. The parent is the element whose attributes and text are the object's, the cursor its
// first child that nobody has taken yet. Each member is offered the cursor and moves it behind what
// it takes; the model group decides about the order, and about what is left over. A class without a
// tag reads in the middle of the walk of the class around it: it gives the cursor back as it came
// when it does not match, and leaves to that walk what follows.
//
// Failures are wrapped on their way up: while writing with the name of each element, while reading
// with the path of the innermost element whose object is known.
//
// Here is what both need, and writing; reading is in XmlGeneratedClassReading.cpp.
#include "qzxml/serialization/XmlGeneratedClass.h"

#include <cstring>
#include <typeinfo>

#include "qzxml/collections/AttributeCol.h"
#include "qzxml/collections/XmlCollectionBase.h"
#include "qzxml/platform/InitOrder.h"
#include "qzxml/runtime/Functions.h"
#include "qzxml/runtime/QzException.h"
#include "qzxml/serialization/ElementInfoChoice.h"
#include "qzxml/serialization/ElementInfoValues.h"
#include "qzxml/serialization/ElementTable.h"
#include "qzxml/serialization/Messages.h"
#include "qzxml/serialization/TextOrEmpty.h"
#include "qzxml/xml/XmlWriter.h"

namespace QzXmlLib16 {

using namespace QzXmlLib16Data;

namespace {

// Whether a member is one of these classes or derived from it.
template <typename... Members>
bool IsOneOf(const CElementInfo* info) {
  return ((dynamic_cast<const Members*>(info) != nullptr) || ...);
}

// Deletes a table with its entries.
template <typename Entry>
void DeleteTable(Entry**& table) {
  for (Entry** entry = table; entry != nullptr && *entry != nullptr; ++entry) {
    delete *entry;
    *entry = nullptr;
  }
  delete[] table;
  table = nullptr;
}

}  // namespace

QZXML_INIT_ORDER(detail::InitOrder_MetaDataLock) CQZCriticalSection CXmlGeneratedClass::m_csInit;

CXmlGeneratedClass::~CXmlGeneratedClass() = default;

// --- Tables

void CXmlGeneratedClass::CleanMetaData(CParentElementInfo*& parent, CElementInfo**& elements,
                                       CAttributeInfo**& attributes) {
  delete parent;
  parent = nullptr;
  DeleteTable(elements);
  DeleteTable(attributes);
}

void CXmlGeneratedClass::ReadProperty(int propertyIndex, QzVariant& value) const {
  AccessProperty(propertyIndex, true, value);
}

bool CXmlGeneratedClass::IsElementInList(const CSerializationContext& context,
                                         CXmlElement* element) const {
  for (CElementInfo** entry = GetClassElementInfo(); *entry != nullptr; ++entry) {
    if ((*entry)->IsThisElement(context, element)) return true;
  }
  return false;
}

[[gnu::noinline]] bool CXmlGeneratedClass::DoesElementContainOptionalElements() const {
  if (GetClassInfo()->m_bMayBeEmpty) return true;
  for (CElementInfo** entry = GetClassElementInfo(); *entry != nullptr; ++entry) {
    const CElementInfo* const member = *entry;
    if (IsOneOf<CElementInfoChoicePrimCol, CElementInfoChoiceClsCol, CElementInfoChoiceAbsClsCol,
                CElementInfoChoiceEnumCol, CElementInfoChoiceUntpdCol>(member)) {
      QzVariant value;
      ReadProperty(member->GetPropertyIndex(), value);
      const CSmartPtr<CXmlCollectionBase> collection = value.GetXmlCollection();
      if (collection != nullptr && collection->GetMinOccurs() == 0) return true;
    } else if (IsOneOf<CElementInfoChoicePrimOpt, CElementInfoChoiceClsOpt,
                       CElementInfoChoiceAbsClsOpt, CElementInfoChoiceEnumOpt,
                       CElementInfoChoiceUntpdOpt>(member)) {
      return true;
    }
  }
  return false;
}

// --- Nil

INillable* CXmlGeneratedClass::AsNillable(const CParentElementInfo& info) const {
  const std::type_info* const its = &typeid(*this);
  if (info.m_notNillable.Is(its)) return nullptr;
  INillable* const nillable = dynamic_cast<INillable*>(const_cast<CXmlGeneratedClass*>(this));
  if (nillable == nullptr) info.m_notNillable.Keep(its);
  return nillable;
}

bool CXmlGeneratedClass::IsNil(const CParentElementInfo& info) const {
  INillable* const nillable = AsNillable(info);
  return nillable != nullptr && nillable->GetIsNil();
}

// --- Writing

// Out of line: the walk recurses, and its frames hold nothing of this.
[[gnu::noinline]] void CXmlGeneratedClass::ThrowWritingFailed(const std::string& elementName,
                                                              const CQzException& inner) {
  throw CQzValidationException(FormatString(Messages::kWritingFailed, elementName.c_str()), "",
                               inner);
}

[[gnu::noinline]] void CXmlGeneratedClass::ThrowAttributesFailed(const CQzException& inner) {
  throw CQzException("Failed to convert attributes to XML", inner);
}

void CXmlGeneratedClass::ToXml_Int(CXmlWriter* writer, bool root, const char* namespaceUri,
                                   const CSerializationContext& context,
                                   bool optionalChoice) const {
  try {
    const CParentElementInfo& info = *GetClassInfo();
    const bool hasTag = info.GetElementType() == XmlElementType_Element;
    if (hasTag) StartTagToXml(writer, root, namespaceUri, context, optionalChoice);
    if (IsNil(info)) {
      writer->WriteXsiNil();
    } else {
      ContentToXml(info, writer, context, optionalChoice);
      if (info.HasText()) TextToXml(info, writer);
    }
    if (hasTag) writer->WriteEndElement();
  } catch (const CQzException& e) {
    ThrowWritingFailed(ElementName(), e);
  }
}

void CXmlGeneratedClass::StartTagToXml(CXmlWriter* writer, bool root, const char* namespaceUri,
                                       const CSerializationContext& context,
                                       bool optionalChoice) const {
  if (root) PrologueToXml(writer, context);
  std::string& uri = writer->GetScratch().namespaceUri;
  const char* const given = detail::TextOrEmpty(namespaceUri);
  if (std::strcmp(uri.c_str(), given) != 0) uri = given;  // most are that of the element before
  writer->WriteStartElement(ElementName(), uri);
  if (root) {
    const CSmartPtr<CAttributeCol> attributes = context.GetAdditionalRootAttributes();
    CXmlObjectBase::ToXml_Int(attributes, writer, false, namespaceUri, context, optionalChoice);
  }
  AttributesToXml_Int(writer, context);
  if (root && !context.GetInLineSchema().empty()) {
    writer->WriteInlineSchema(context.GetInLineSchema());
  }
}

[[gnu::noinline]] void CXmlGeneratedClass::PrologueToXml(CXmlWriter* writer,
                                                         const CSerializationContext& context) {
  for (const std::string& instruction : context.GetProcessingInstructions()) {
    writer->WriteProcessingInstruction(instruction);
  }
  const CNamespaceAliasMap& aliases = context.GetNamespaceAliases();
  for (int i = 0; i < aliases.GetNamespaceCount(); ++i) {
    const std::string uri = aliases.GetNamespaceAt(i);
    writer->AddNamespaceMapping(aliases.GetAliasFromNamespace(uri.c_str()), uri);
  }
  if (!context.GetDefaultNamespaceURI().empty()) {
    writer->SetDefaultNamespace(context.GetDefaultNamespaceURI());
  }
}

void CXmlGeneratedClass::AttributesToXml_Int(CXmlWriter* writer,
                                             const CSerializationContext& context) const {
  try {
    const CParentElementInfo& info = *GetClassInfo();
    if (info.m_bHasBaseClasses && context.GetWriteTypeAttribute() &&
        ElementName() != info.m_strElementName) {
      writer->WriteXsiType(info.m_strElementNamespace, info.m_strElementName, ItemType_string);
    }
    ProcessAttributesToXml(info, context, writer);
  } catch (const CQzException& e) {
    ThrowAttributesFailed(e);
  }
}

void CXmlGeneratedClass::ProcessAttributesToXml(const CParentElementInfo& info,
                                                const CSerializationContext& context,
                                                CXmlWriter* writer) const {
  CElementInfo** elements = GetClassElementInfo();
  CAttributeInfo** attributes = GetClassAttributeInfo();
  for (; *attributes != nullptr; ++attributes) (*attributes)->AttributeToXml(context, this, writer);
  if (AreAll(elements, &WritesNoAttributes, info.m_writesNoAttributes)) return;
  for (; *elements != nullptr; ++elements) {
    (*elements)->PseudoChildAttributeToXml(context, this, writer);
  }
}

void CXmlGeneratedClass::ContentToXml(const CParentElementInfo& info, CXmlWriter* writer,
                                      const CSerializationContext& context,
                                      bool optionalChoice) const {
  CElementInfo** const table = GetClassElementInfo();
  switch (info.GetElementGroupType()) {
    case XmlElementGroupType_Sequence:
      return ProcessElementSeqToXml(context, table, writer);
    case XmlElementGroupType_Choice:
      return ProcessElementChoiceToXml(context, table, writer, optionalChoice);
    case XmlElementGroupType_All:
      return ProcessElementAllToXml(context, table, writer);
  }
  throw CQzException("Unknown XML Group Type");
}

void CXmlGeneratedClass::ProcessElementSeqToXml(const CSerializationContext& context,
                                                CElementInfo** elements, CXmlWriter* writer) const {
  for (; *elements != nullptr; ++elements) (*elements)->ElementToXml(context, this, writer);
}

void CXmlGeneratedClass::ProcessElementAllToXml(const CSerializationContext& context,
                                                CElementInfo** elements, CXmlWriter* writer) const {
  ProcessElementSeqToXml(context, elements, writer);
}

void CXmlGeneratedClass::ProcessElementChoiceToXml(const CSerializationContext& context,
                                                   CElementInfo** elements, CXmlWriter* writer,
                                                   bool optionalChoice) const {
  for (; *elements != nullptr; ++elements) {
    if ((*elements)->ElementToXml(context, this, writer)) return;
  }
  EmptyChoiceToXml(context, optionalChoice);
}

void CXmlGeneratedClass::EmptyChoiceToXml(const CSerializationContext& context,
                                          bool optionalChoice) const {
  if (DoesElementContainOptionalElements() || optionalChoice || context.GetIgnoreMissingChoice()) {
    return;
  }
  throw CQzValidationException(Messages::kNothingSelected, "");
}

void CXmlGeneratedClass::TextToXml(const CParentElementInfo& info, CXmlWriter* writer) const {
  QzVariant value;
  ReadProperty(info.m_lPrimitiveValuePropertyIndex, value);
  if (value.IsNil()) {
    writer->WriteXsiNil();
    return;
  }
  const std::string& text =
      TextOf(value, info.m_strPrimitiveFormatOverride, writer->GetScratch().text);
  writer->WriteText(text, value.GetTypeAsEnum(), false);
}

}  // namespace QzXmlLib16
