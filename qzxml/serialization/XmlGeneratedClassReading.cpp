// The walk that reads an object over the tables of its class; XmlGeneratedClass.cpp says how.
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <typeinfo>
#include <vector>

#include "qzxml/collections/AttributeCol.h"
#include "qzxml/collections/XmlCollectionBase.h"
#include "qzxml/runtime/Functions.h"
#include "qzxml/runtime/QzException.h"
#include "qzxml/serialization/ElementInfoValues.h"
#include "qzxml/serialization/ElementTable.h"
#include "qzxml/serialization/Messages.h"
#include "qzxml/serialization/SoughtMembers.h"
#include "qzxml/serialization/TextOrEmpty.h"
#include "qzxml/serialization/XmlGeneratedClass.h"
#include "qzxml/xml/XmlAttribute.h"
#include "qzxml/xml/XmlElement.h"

namespace QzXmlLib16 {

using namespace QzXmlLib16Data;

namespace {

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

// --- What goes around a failure, and the failures of the walk. Out of line: the walk recurses, and
// its frames hold nothing of this.

}  // namespace

// Meant: from the second level on only the message, the path and the inner exceptions go up, as a
// plain CQzException; callers look at the innermost one for the kind of a failure.
[[gnu::noinline]] void CXmlGeneratedClass::ThrowReadingFailed(const CXmlElement& parent,
                                                              const CQzException& inner) {
  if (inner.GetPath().empty()) {
    throw CQzValidationException("Failed to process the element.", parent.GetXPath(), inner);
  }
  if (typeid(inner) == typeid(CQzException)) throw;
  throw CQzException(inner);
}

[[gnu::noinline]] void CXmlGeneratedClass::ThrowLeftOver(const CXmlElement& parent,
                                                         const CXmlElement& cursor) {
  throw CQzValidationException(FormatString(Messages::kLeftOver, parent.GetLocalName().c_str(),
                                            cursor.GetLocalName().c_str()),
                               parent.GetXPath());
}

namespace {

[[noreturn, gnu::noinline]] void ThrowNothingChosen(const CXmlElement& parent) {
  throw CQzValidationException(
      FormatString(Messages::kNothingPopulated, parent.GetLocalName().c_str()), parent.GetXPath());
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
  bool NeedsNothing(const CElementInfo& member) const;
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

// OfferInTurn in a group, with a memory of what was sought before. What is found is the same.
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
  m_pSought->FailAtEnd(m_searches, quiet, NeedsNothing(*member));
  return false;
}

// Whether the member is a collection that may be empty.
bool CXmlGeneratedClass::CReadingWalk::NeedsNothing(const CElementInfo& member) const {
  if (!IsSequenceCollection(member)) return false;
  return CElementInfoValues::HeldCollection(member, &m_object)->GetMinOccurs() <= 0;
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

// --- Reading

CXmlElement* CXmlGeneratedClass::FromXml_Int(CXmlElement* parent, CXmlElement* cursor,
                                             const CSerializationContext& context,
                                             bool optionalChoice) {
  try {
    Init();
    const CParentElementInfo& info = *GetClassInfo();
    if (info.GetElementType() == XmlElementType_Element) TakeElementName(*parent);
    if (!info.m_bReadsNoAttributes) {
      ProcessAttributesFromXml(context, parent, info.GetFromXmlFailIfAttributeUnknown());
    }
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
    const int taken = AttributeFromXml(context, parent, attribute, failIfUnknown);
    if (taken >= 0) found.Set(taken, true);
  }
  for (int i = 0; table[i] != nullptr; ++i) table[i]->Validate(context, found.Test(i));
}

int CXmlGeneratedClass::AttributeFromXml(const CSerializationContext& context, CXmlElement* parent,
                                         CXmlAttribute* attribute, bool failIfUnknown) {
  if (attribute->IsNamespaceAttribute()) return -1;
  if (attribute->IsNilAttribute()) {
    NilFromXml(*attribute, *parent);
    return -1;
  }
  CAttributeInfo** const table = GetClassAttributeInfo();
  int taken = 0;
  while (table[taken] != nullptr && !table[taken]->AttributeFromXml(context, this, attribute)) {
    ++taken;
  }
  if (table[taken] != nullptr) return taken;
  if (failIfUnknown && !context.GetIgnoreUnknownAttributes()) ThrowUnexpectedAttribute(*attribute);
  return -1;
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

bool CXmlGeneratedClass::MemberFromXml(CElementInfo* member, CXmlElement* parent,
                                       CXmlElement** cursor, const CSerializationContext& context) {
  const CReadingWalk walk(*this, context, parent, *cursor, XmlElementType::XmlElementType_Element);
  return walk.OfferInTurn(member, cursor);
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
