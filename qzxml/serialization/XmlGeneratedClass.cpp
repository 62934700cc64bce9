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
#include "qzxml/serialization/XmlGeneratedClass.h"

#include <cstddef>
#include <cstring>
#include <memory>
#include <typeinfo>
#include <vector>

#include "qzxml/collections/AttributeCol.h"
#include "qzxml/collections/XmlCollectionBase.h"
#include "qzxml/platform/InitOrder.h"
#include "qzxml/runtime/Functions.h"
#include "qzxml/runtime/QzException.h"
#include "qzxml/serialization/ElementInfoChoice.h"
#include "qzxml/serialization/ElementInfoValues.h"
#include "qzxml/serialization/ElementTable.h"
#include "qzxml/serialization/SoughtMembers.h"
#include "qzxml/serialization/TextOrEmpty.h"
#include "qzxml/xml/XmlAttribute.h"
#include "qzxml/xml/XmlWriter.h"

namespace QzXmlLib16 {

using namespace QzXmlLib16Data;

namespace {

// Whether a member is one of these classes or derived from it.
template <typename... Members>
bool IsOneOf(const CElementInfo* info) {
  return ((dynamic_cast<const Members*>(info) != nullptr) || ...);
}

// Whether all members of a table are known to be so; what is found for a table is kept.
bool AreAll(CElementInfo** table, bool (*isSo)(const CElementInfo&),
            CFoundFor<CElementInfo*>& foundFor) {
  if (foundFor.Is(table)) return true;
  for (CElementInfo** entry = table; *entry != nullptr; ++entry) {
    if (!isSo(**entry)) return false;
  }
  foundFor.Keep(table);
  return true;
}

// Which entries of a table were found. The first 64 need no memory of their own.
class FoundFlags {
 public:
  bool Test(int index) const {
    if (index < kInline) return (m_first >> index & 1U) != 0;
    const std::size_t behind = static_cast<std::size_t>(index - kInline);
    return behind < m_more.size() && m_more[behind];
  }
  void Set(int index, bool found) {
    if (index < kInline) {
      const std::uint64_t bit = std::uint64_t{1} << index;
      m_first = found ? m_first | bit : m_first & ~bit;
      return;
    }
    const std::size_t behind = static_cast<std::size_t>(index - kInline);
    if (behind >= m_more.size()) m_more.resize(behind + 1);
    m_more[behind] = found;
  }

 private:
  static constexpr int kInline = 64;
  std::uint64_t m_first = 0;
  std::vector<bool> m_more;
};

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

// --- What goes around a failure, and the failures of the walks. Out of line: the walks recurse,
// and their frames hold nothing of this.

[[noreturn, gnu::noinline]] void ThrowWritingFailed(const std::string& elementName,
                                                    const CQzException& inner) {
  throw CQzValidationException(
      FormatString("Failed to convert the element [%s] to XML", elementName.c_str()), "", inner);
}

// Meant: from the second level on only the message, the path and the inner exceptions go up, as a
// plain CQzException; callers look at the innermost one for the kind of a failure.
[[noreturn, gnu::noinline]] void ThrowReadingFailed(const CXmlElement& parent,
                                                    const CQzException& inner) {
  if (inner.GetPath().empty()) {
    throw CQzValidationException("Failed to process the element.", parent.GetXPath(), inner);
  }
  if (typeid(inner) == typeid(CQzException)) throw;
  throw CQzException(inner);
}

[[noreturn, gnu::noinline]] void ThrowLeftOver(const CXmlElement& parent,
                                               const CXmlElement& cursor) {
  throw CQzValidationException(
      FormatString("Failed read all the elements held within the element [%s]. The unexpected "
                   "element [%s] remains un processed",
                   parent.GetLocalName().c_str(), cursor.GetLocalName().c_str()),
      parent.GetXPath());
}

[[noreturn, gnu::noinline]] void ThrowNothingChosen(const CXmlElement& parent) {
  throw CQzValidationException(
      FormatString("No child elements within the element [%s] were populated. The element "
                   "represents a choice, so one and only one element should be populated. The "
                   "element contained no sutable child elements",
                   parent.GetLocalName().c_str()),
      parent.GetXPath());
}

}  // namespace

// One walk over the members of an object: hands the same things to each.
class CXmlGeneratedClass::CReadingWalk {
 public:
  CReadingWalk(CXmlGeneratedClass& object, const CSerializationContext& itsContext,
               CXmlElement* itsParent, const CXmlElement* cursor, XmlElementType elementType)
      : context(itsContext),
        parent(*itsParent),
        table(object.GetClassElementInfo()),
        isElement(elementType == XmlElementType_Element),
        isPseudoElement(elementType == XmlElementType_PseudoElement),
        skipsUnknown(itsContext.GetIgnoreUnknownElements()),
        m_object(object),
        m_elementType(elementType) {
    const CParentElementInfo& info = *object.GetClassInfo();
    if (!AreAll(table, &ReadsNoNamespace, info.m_readsNoNamespace)) {
      m_strNamespace = object.GetNamespace();
    }
    if (skipsUnknown) KeepSearches(info, cursor);
  }
  CReadingWalk(const CReadingWalk&) = delete;
  CReadingWalk& operator=(const CReadingWalk&) = delete;
  ~CReadingWalk() {
    if (m_pSought != nullptr) m_pSought->Leave(m_searches);
  }

  bool Offer(CElementInfo* member, CXmlElement** cursor) const {
    return member->ElementFromXml(context, &m_object, &parent, cursor, m_strNamespace.c_str(),
                                  m_elementType);
  }

  // Offers the cursor and, while unknown elements are skipped, those behind it. False when the
  // member did not match; the walk is to go back then.
  bool OfferInTurn(CElementInfo* member, CXmlElement** cursor) const {
    if (m_pSought != nullptr) return SeekInTurn(member, cursor);
    while (!Offer(member, cursor)) {
      if (!skipsUnknown || *cursor == nullptr) return false;
      Skip(cursor);
    }
    return true;
  }

  // Offers the cursor to a member of a choice.
  bool OfferChoice(CElementInfo* member, CXmlElement** cursor) const {
    if (m_pSought == nullptr || !IsChoiceCollectionOfElements(*member)) {
      return Offer(member, cursor);
    }
    return OfferFewItems(member, cursor);
  }

  // The walk steps over an element.
  static void Skip(CXmlElement** cursor) { *cursor = (*cursor)->GetNextSiblingElement(); }

  // Throws when a real element has a child left that may not be skipped.
  void RequireAllRead(const CXmlElement* cursor) const {
    if (isElement && cursor != nullptr && !skipsUnknown) ThrowLeftOver(parent, *cursor);
  }

  const CSerializationContext& context;
  CXmlElement& parent;
  CElementInfo** const table;
  const bool isElement;
  const bool isPseudoElement;
  const bool skipsUnknown;
  bool isInVain = false;  // an item that cannot save its collection: it is to take nothing

 private:
  void KeepSearches(const CParentElementInfo& info, const CXmlElement* cursor);
  bool SeekInTurn(CElementInfo* member, CXmlElement** cursor) const;
  bool OfferFewItems(CElementInfo* member, CXmlElement** cursor) const;
  bool Note(CElementInfo* member, bool isContent, const CXmlElement* asked,
            const CXmlElement* behind) const;
  void PassOthers(const CElementInfo& member, CXmlElement** cursor) const;

  CXmlGeneratedClass& m_object;
  const XmlElementType m_elementType;
  std::string m_strNamespace;              // empty when no member reads it
  std::unique_ptr<CSoughtMembers> m_pOwn;  // of a real element with groups
  CSoughtMembers* m_pSought = nullptr;     // of the element around a group; null when of no use
  std::size_t m_searches = 0;              // where those of this walk begin
};

// Only groups ask for the same member more than once.
[[gnu::noinline]] void CXmlGeneratedClass::CReadingWalk::KeepSearches(
    const CParentElementInfo& info, const CXmlElement* cursor) {
  if (!isElement) {
    m_pSought = CSoughtMembers::Of(parent);
    if (m_pSought == nullptr) return;
    m_searches = m_pSought->Enter(cursor);
    isInVain = m_pSought->IsItemInVain();
  } else if (!AreAll(table, &WritesNoAttributes, info.m_writesNoAttributes)) {
    m_pOwn = std::make_unique<CSoughtMembers>(parent);
  }
}

// OfferInTurn in a group, with a memory of what was sought before. What comes of it is the same.
[[gnu::noinline]] bool CXmlGeneratedClass::CReadingWalk::SeekInTurn(CElementInfo* member,
                                                                    CXmlElement** cursor) const {
  if (!m_pSought->Begin(*member, cursor)) {
    m_pSought->Fail(m_searches);
    return false;
  }
  const CXmlElement* quiet = *cursor;  // nothing was taken from here on
  for (;;) {
    if (LooksToTheEnd(*member)) PassOthers(*member, cursor);
    CXmlElement* const asked = *cursor;
    m_pSought->Ask();
    const bool isContent = Offer(member, cursor);
    bool goesOn = true;
    if (isContent || *cursor != asked) goesOn = Note(member, isContent, asked, *cursor);
    if (!goesOn) {
      m_pSought->Fail(m_searches);
      return false;
    }
    if (isContent) return true;
    if (*cursor != asked) quiet = *cursor != nullptr ? (*cursor)->GetNextSiblingElement() : nullptr;
    if (*cursor == nullptr) break;
    Skip(cursor);
    if (m_pSought->IsAbsentFrom(*cursor)) break;
  }
  m_pSought->FailAtEnd(m_searches, quiet);
  return false;
}

// A member that was asked at one element has come to another, or is content. False when the walk is
// known to fail.
bool CXmlGeneratedClass::CReadingWalk::Note(CElementInfo* member, bool isContent,
                                            const CXmlElement* asked,
                                            const CXmlElement* behind) const {
  if (!IsSequenceCollection(*member)) {
    m_pSought->Find(asked, behind);
    return true;
  }
  if (m_pSought->IsInVain()) {
    m_pSought->Find(asked, behind);
    return false;
  }
  const auto collection = CElementInfoValues::HeldCollection(*member, &m_object);
  const auto count = static_cast<std::size_t>(collection->GetCount());
  const std::int32_t least = collection->GetMinOccurs();
  const std::int32_t most = collection->GetMaxOccurs();
  constexpr std::size_t kUnbounded = ~std::size_t{0};
  const std::size_t high = most < 0 ? kUnbounded : static_cast<std::size_t>(most);
  if (isContent) {
    const std::size_t low = least < 0 ? 0 : static_cast<std::size_t>(least);
    m_pSought->FindItems(asked, behind, count, low, high);
    return true;
  }
  if (count <= high) {
    m_pSought->Find(asked, behind);
    return true;
  }
  // Too many: whatever it takes further on, it only adds to that.
  m_pSought->FindItems(asked, behind, count, high + 1, kUnbounded);
  return !m_pSought->WasReadThrough();
}

// A collection that finds too many items takes none of them. One element further on there is one
// less, and still too many for as long as there were too many.
[[gnu::noinline]] bool CXmlGeneratedClass::CReadingWalk::OfferFewItems(CElementInfo* member,
                                                                       CXmlElement** cursor) const {
  if (m_pSought->IsInVainAt(*member, *cursor)) return false;
  if (Offer(member, cursor)) return true;
  const auto collection = CElementInfoValues::HeldCollection(*member, &m_object);
  const std::int32_t most = collection->GetMaxOccurs();
  const std::int32_t surplus = collection->GetCount() - most;
  if (most >= 0 && surplus > 0) {
    m_pSought->KeepInVain(*member, *cursor, static_cast<std::size_t>(surplus) - 1);
  }
  return false;
}

void CXmlGeneratedClass::CReadingWalk::PassOthers(const CElementInfo& member,
                                                  CXmlElement** cursor) const {
  while (*cursor != nullptr && !CElementInfoValues::IsAt(member, context, *cursor)) Skip(cursor);
}

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
    ProcessAttributesToXml(context, GetClassElementInfo(), GetClassAttributeInfo(), writer);
  } catch (const CQzException& e) {
    throw CQzException("Failed to convert attributes to XML", e);
  }
}

void CXmlGeneratedClass::ProcessAttributesToXml(const CSerializationContext& context,
                                                CElementInfo** elements,
                                                CAttributeInfo** attributes,
                                                CXmlWriter* writer) const {
  for (; *attributes != nullptr; ++attributes) (*attributes)->AttributeToXml(context, this, writer);
  if (AreAll(elements, &WritesNoAttributes, GetClassInfo()->m_writesNoAttributes)) return;
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
  if (DoesElementContainOptionalElements() || optionalChoice || context.GetIgnoreMissingChoice()) {
    return;
  }
  throw CQzValidationException(
      "This element is a choice, and as such must have at one (and only one) valid item, currently "
      "there are none set",
      "");
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

// --- Reading

CXmlElement* CXmlGeneratedClass::FromXml_Int(CXmlElement* parent, CXmlElement* cursor,
                                             const CSerializationContext& context,
                                             bool optionalChoice) {
  try {
    Init();
    const CParentElementInfo& info = *GetClassInfo();
    if (info.GetElementType() == XmlElementType_Element) TakeElementName(*parent);
    ProcessAttributesFromXml(context, parent, info.GetFromXmlFailIfAttributeUnknown());
    if (IsNil(info)) return cursor;
    cursor = ContentFromXml(info, parent, cursor, context, optionalChoice);
    if (info.HasText()) TextFromXml(info, *parent);
    return cursor;
  } catch (const CQzException& e) {
    ThrowReadingFailed(*parent, e);
  }
}

// Most objects are made under the name that they are read from.
void CXmlGeneratedClass::TakeElementName(const CXmlElement& parent) {
  const std::string& name = parent.GetLocalName();
  if (ElementName() != name) SetElementName(name.c_str());
}

void CXmlGeneratedClass::ProcessAttributesFromXml(const CSerializationContext& context,
                                                  CXmlElement* parent, bool failIfUnknown) {
  CAttributeInfo** const table = GetClassAttributeInfo();
  FoundFlags found;
  for (CXmlAttribute* attribute : parent->GetAttributeRange()) {
    if (attribute->IsNamespaceAttribute()) continue;
    if (attribute->IsNilAttribute()) {
      NilFromXml(*attribute, *parent);
      continue;
    }
    int taken = 0;
    while (table[taken] != nullptr && !table[taken]->AttributeFromXml(context, this, attribute)) {
      ++taken;
    }
    if (table[taken] != nullptr) {
      found.Set(taken, true);
    } else if (failIfUnknown && !context.GetIgnoreUnknownAttributes()) {
      ThrowUnexpectedAttribute(*attribute);
    }
  }
  for (int i = 0; table[i] != nullptr; ++i) table[i]->Validate(context, found.Test(i));
}

void CXmlGeneratedClass::NilFromXml(const CXmlAttribute& attribute, const CXmlElement& parent) {
  INillable* const nillable = AsNillable(*GetClassInfo());
  if (nillable == nullptr) ThrowNilNotAllowed(parent);
  const NilValue nil = ReadNil(attribute);
  if (nil == NilValue_Unknown) ThrowUnexpectedNil(attribute);
  nillable->SetIsNil(nil == NilValue_True);
}

CXmlElement* CXmlGeneratedClass::ContentFromXml(const CParentElementInfo& info, CXmlElement* parent,
                                                CXmlElement* cursor,
                                                const CSerializationContext& context,
                                                bool optionalChoice) {
  const XmlElementType elementType = info.GetElementType();
  switch (info.GetElementGroupType()) {
    case XmlElementGroupType_Sequence:
      return ProcessElementSeqFromXml(context, parent, cursor, elementType);
    case XmlElementGroupType_Choice:
      return ProcessElementChoiceFromXml(context, parent, cursor, elementType, optionalChoice);
    case XmlElementGroupType_All:
      return ProcessElementAllFromXml(context, parent, cursor, elementType);
  }
  throw CQzException("Unknown Group Type");
}

// Each round behind the first begins one element further on, and a member never moves the cursor
// back: the walk ends on every input.
CXmlElement* CXmlGeneratedClass::ProcessElementSeqFromXml(const CSerializationContext& context,
                                                          CXmlElement* parent, CXmlElement* cursor,
                                                          XmlElementType elementType) {
  CXmlElement* const saved = cursor;
  const CReadingWalk walk(*this, context, parent, cursor, elementType);
  if (walk.isInVain) return cursor;
  CElementInfo** last = walk.table;  // the last member handled
  for (;;) {
    for (CElementInfo** entry = last; *entry != nullptr; ++entry) {
      last = entry;
      if (!walk.OfferInTurn(*entry, &cursor)) return saved;
    }
    if (!walk.isElement || cursor == nullptr) return cursor;
    walk.RequireAllRead(cursor);
    walk.Skip(&cursor);
    if (cursor == nullptr) return nullptr;
    // Meant: the last member is asked again, so that a collection goes on behind unknown elements.
  }
}

CXmlElement* CXmlGeneratedClass::ProcessElementAllFromXml(const CSerializationContext& context,
                                                          CXmlElement* parent, CXmlElement* cursor,
                                                          XmlElementType elementType) {
  CXmlElement* const saved = cursor;
  const CReadingWalk walk(*this, context, parent, cursor, elementType);
  if (walk.isInVain) return cursor;
  FoundFlags found;
  for (const CXmlElement* before = nullptr; cursor != nullptr && cursor != before;) {
    before = cursor;
    for (int i = 0; walk.table[i] != nullptr; ++i) {
      if (!found.Test(i)) found.Set(i, walk.Offer(walk.table[i], &cursor));
    }
  }
  for (int i = 0; walk.table[i] != nullptr; ++i) {
    if (!walk.table[i]->Validate(context, this, found.Test(i), walk.isElement)) return saved;
  }
  walk.RequireAllRead(cursor);
  return cursor;
}

CXmlElement* CXmlGeneratedClass::ProcessElementChoiceFromXml(const CSerializationContext& context,
                                                             CXmlElement* parent,
                                                             CXmlElement* cursor,
                                                             XmlElementType elementType,
                                                             bool optionalChoice) {
  CXmlElement* const saved = cursor;
  const CReadingWalk walk(*this, context, parent, cursor, elementType);
  if (walk.isInVain) return cursor;
  bool matched = false;
  for (;;) {
    for (CElementInfo** entry = walk.table; *entry != nullptr && !matched; ++entry) {
      matched = walk.OfferChoice(*entry, &cursor);
    }
    if (matched || cursor == nullptr || !walk.skipsUnknown || !walk.isElement) break;
    walk.Skip(&cursor);
    if (cursor == nullptr) break;
  }
  if (!matched && !optionalChoice) {
    if (walk.isPseudoElement && walk.skipsUnknown) cursor = saved;
    if (walk.isElement && !DoesElementContainOptionalElements() &&
        !context.GetIgnoreMissingChoice()) {
      ThrowNothingChosen(*parent);
    }
  }
  walk.RequireAllRead(cursor);
  return cursor;
}

[[gnu::noinline]] void CXmlGeneratedClass::TextFromXml(const CParentElementInfo& info,
                                                       const CXmlElement& parent) {
  std::string scratch;
  QzVariant value;
  if (info.m_bPrimitiveAsText) {
    value.SetString(std::string(parent.GetTextView()));
  } else {
    ReadValue(value, parent.GetTextView(), info.m_primitiveDataType,
              CWhitespaceUtils::WhitespaceRule_None, scratch);
  }
  AccessProperty(info.m_lPrimitiveValuePropertyIndex, false, value);
}

}  // namespace QzXmlLib16
