// The short way through ordinary documents; ReadPlan.h says what it is. A value's text is converted
// by kind. Where a conversion is short, it stands here; the others are those of CConversions, whose
// failures end the short way: the walk will meet them once more and tell of them.
#include "qzxml/binding/ReadPlan.h"

#include <algorithm>
#include <atomic>

#include "qzxml/binding/BindingTables.h"
#include "qzxml/binding/BoundClass.h"
#include "qzxml/binding/ReadValues.h"
#include "qzxml/binding/WritePlan.h"
#include "qzxml/collections/XmlCollectionBase.h"
#include "qzxml/runtime/QzException.h"
#include "qzxml/serialization/SerializationContext.h"

namespace QzXmlLib16 {
namespace detail {

using namespace QzXmlLib16Data;

namespace {

std::atomic<bool> g_readsByPlans{true};

constexpr std::size_t kMostAttributes = 64;  // that the plan keeps track of

// A tree lies in memory in the order of its document, so what is read some elements later is some
// octets further on; a tree that is not in the nearest memory any more is asked for in time.
inline void ReadAheadInTree([[maybe_unused]] const CXmlElement* element) {
#if defined(__GNUC__)
  constexpr std::size_t kAhead = 512;
  constexpr std::size_t kLine = 64;
  const char* const place = reinterpret_cast<const char*>(element) + kAhead;
  __builtin_prefetch(place);
  __builtin_prefetch(place + kLine);
#endif
}

}  // namespace

void ReadByPlans(bool reads) { g_readsByPlans.store(reads, std::memory_order_relaxed); }

ReadMember::ReadMember(const CMember& itsMember, std::int32_t itsIndex)
    : name(itsMember.name, itsMember.namespaceUri), member(itsMember), index(itsIndex) {}

// --- Making

std::unique_ptr<CReadPlan> CReadPlan::Make(const CClassBinding& binding,
                                           const CTabledClass::CTables& tables) {
  const CClassTraits& traits = binding.GetTraits();
  if (traits.elementType != XmlElementType_Element) return nullptr;
  std::unique_ptr<CReadPlan> plan(new CReadPlan);
  plan->m_isMixed = traits.isMixed;
  plan->m_isSequence = traits.group == XmlElementGroupType_Sequence;
  plan->m_resets = CReadValues::ListResets(binding);
  plan->AddAttributes(binding);
  if (plan->m_isSequence) plan->AddElements(binding, tables);
  plan->ListObjects();
  const std::int32_t text = tables.GetInfo()->GetPrimitiveValuePropertyIndex();
  if (text != -1) {
    plan->m_text = std::make_unique<ReadMember>(binding.GetMember(text), text);
    CReadValues::Prepare(binding.GetDeclaredMember(text), *plan->m_text);
  }
  return plan;
}

void CReadPlan::AddAttributes(const CClassBinding& binding) {
  for (std::int32_t i = 0; i < binding.GetMemberCount(); ++i) {
    const CMember& member = binding.GetMember(i);
    if (member.form != MemberForm::Attribute || member.occurs.max == 0) continue;
    ReadMember added(member, i);
    added.isMandatory = member.occurs.min > 0;
    CReadValues::Prepare(binding.GetDeclaredMember(i), added);
    const auto isSame = [&added](const ReadMember& other) { return other.name == added.name; };
    if (m_attributes.size() == kMostAttributes ||
        std::any_of(m_attributes.begin(), m_attributes.end(), isSame)) {
      m_attributes.clear();
      return;
    }
    if (added.isMandatory) m_required |= std::uint64_t{1} << m_attributes.size();
    m_attributes.push_back(added);
  }
  m_knowsAttributes = true;
}

void CReadPlan::AddElements(const CClassBinding& binding, const CTabledClass::CTables& tables) {
  CElementInfo** info = tables.GetElements();
  for (std::int32_t i = 0; i < binding.GetMemberCount(); ++i) {
    const CMember& member = binding.GetMember(i);
    if (!member.IsElement() || member.occurs.max == 0) continue;
    ReadMember added(member, i);
    added.isMandatory = member.occurs.min > 0;
    added.isNamed = member.form == MemberForm::Value || member.form == MemberForm::Object;
    added.info = *info++;
    if (member.IsValue()) {
      CReadValues::Prepare(binding.GetDeclaredMember(i), added);
    } else if (added.isNamed) {
      CReadValues::PrepareObject(binding.GetDeclaredMember(i), added);
    }
    m_elements.push_back(added);
  }
}

// Of two members of one name it depends on what stands before which of them an element is.
void CReadPlan::ListObjects() {
  for (std::size_t i = 0; i < m_elements.size(); ++i) {
    const ReadMember& member = m_elements[i];
    const CMember& itself = member.member;
    const bool isMade = itself.newObject != nullptr || itself.newObjectByType != nullptr;
    if (itself.form != MemberForm::Object || !isMade || member.way == ReadMember::Way::kWalk) {
      continue;
    }
    const auto isSame = [&member](const ReadMember& other) { return other.name == member.name; };
    if (std::count_if(m_elements.begin(), m_elements.end(), isSame) == 1) m_objects.push_back(i);
  }
}

const CReadPlan* CReadPlan::For(const CBoundClass& object) {
  return CWritePlan::For(object) != nullptr ? object.m_binding->m_readPlan : nullptr;
}

const ReadMember* CReadPlan::FindObject(const XmlName& name) const {
  for (const std::size_t i : m_objects) {
    if (m_elements[i].name.Is(name)) return &m_elements[i];
  }
  return nullptr;
}

// --- Reading

bool CReadPlan::Serves(const CSerializationContext& context) {
  return !context.GetIgnoreUnknownElements() && !context.GetIgnoreMissingMandatoryElements() &&
         !context.GetIgnoreNamespaces() && g_readsByPlans.load(std::memory_order_relaxed);
}

CXmlElement* CReadPlan::Read(CBoundClass& object, CXmlElement* parent, CXmlElement* cursor,
                             const CSerializationContext& context, bool optionalChoice) const {
  try {
    object.Init();
    const CParentElementInfo& info = *object.GetClassInfo();
    object.CXmlGeneratedClass::TakeElementName(*parent);
    if (m_knowsAttributes) {
      ReadAttributes(object, parent, context);
    } else {
      object.ProcessAttributesFromXml(context, parent, info.GetFromXmlFailIfAttributeUnknown());
    }
    if (object.IsNil(info)) return cursor;
    cursor = m_isSequence ? ReadSequence(object, parent, cursor, context)
                          : object.ContentFromXml(info, parent, cursor, context, optionalChoice);
    if (m_text != nullptr) ReadText(object, *parent);
    return cursor;
  } catch (const CQzException& e) {
    CBoundClass::ThrowReadingFailed(*parent, e);
  }
}

// Documents mostly have attributes in the order of the class.
void CReadPlan::ReadAttributes(CBoundClass& object, CXmlElement* parent,
                               const CSerializationContext& context) const {
  std::uint64_t found = 0;
  std::size_t next = 0;
  for (CXmlAttribute* attribute : parent->GetAttributeRange()) {
    int at = FindAttribute(*attribute, next);
    if (at < 0 || !CReadValues::Take(object, m_attributes[static_cast<std::size_t>(at)],
                                     attribute->GetValueView())) {
      at = object.AttributeFromXml(context, parent, attribute, true);
    }
    // The wildcard is behind them all.
    if (at < 0 || static_cast<std::size_t>(at) >= m_attributes.size()) continue;
    found |= std::uint64_t{1} << at;
    next = static_cast<std::size_t>(at) + 1;
  }
  if ((m_required & ~found) == 0) return;
  CAttributeInfo** const table = object.GetClassAttributeInfo();
  for (std::size_t i = 0; i < m_attributes.size(); ++i) {
    table[i]->Validate(context, (found >> i & 1U) != 0);
  }
}

// -1 for one that is none of them, and for what only serves the schema machinery.
int CReadPlan::FindAttribute(const CXmlAttribute& attribute, std::size_t first) const {
  if (attribute.IsNamespaceAttribute() || attribute.IsNilAttribute()) return -1;
  const std::size_t count = m_attributes.size();
  for (std::size_t i = first; i < count; ++i) {
    if (m_attributes[i].name.Is(attribute)) return static_cast<int>(i);
  }
  for (std::size_t i = 0; i < first && i < count; ++i) {
    if (m_attributes[i].name.Is(attribute)) return static_cast<int>(i);
  }
  return -1;
}

CXmlElement* CReadPlan::ReadSequence(CBoundClass& object, CXmlElement* parent, CXmlElement* cursor,
                                     const CSerializationContext& context) const {
  CXmlElement* const saved = cursor;
  for (const ReadMember& member : m_elements) {
    const bool isHere = member.isNamed && cursor != nullptr && member.name.Is(*cursor);
    if (isHere) {
      if (ReadElement(object, member, parent, cursor, context)) continue;
    } else if (!member.isMandatory && (member.isNamed || cursor == nullptr)) {
      continue;
    }
    if (!object.MemberFromXml(member.info, parent, &cursor, context)) return saved;
  }
  if (cursor != nullptr) CBoundClass::ThrowLeftOver(*parent, *cursor);
  return cursor;
}

// The member whose name the element at the cursor has. False when it is the walk's.
bool CReadPlan::ReadElement(CBoundClass& object, const ReadMember& member, CXmlElement* parent,
                            CXmlElement*& cursor, const CSerializationContext& context) {
  CXmlElement* const element = cursor;
  ReadAheadInTree(element);
  switch (member.way) {
    case ReadMember::Way::kValue: {
      const std::string_view text = element->GetTextView();
      const bool isPlain = element->GetAttributeRange().empty() &&
                           element->GetFirstElement() == nullptr &&
                           (!text.empty() || member.member.defaultValue == nullptr);
      if (!isPlain || !CReadValues::Take(object, member, text)) return false;
      break;
    }
    case ReadMember::Way::kHeldObject: {
      const CObjectHandle held = CReadValues::HeldObject(object, member);
      if (held == nullptr) return false;
      object.CXmlObjectBase::FromXml_Int(held, element, element->GetFirstElement(), context);
      break;
    }
    case ReadMember::Way::kNewObject: {
      const CObjectHandle made = member.member.newObject(0, member.member.name);
      if (made == nullptr) return false;
      object.CXmlObjectBase::FromXml_Int(made, element, element->GetFirstElement(), context);
      CBoundClass::TakeAsMember(member.member, made);
      CReadValues::Object(object, member) = made;
      break;
    }
    case ReadMember::Way::kCollection:
      return ReadCollection(object, member, parent, cursor, context);
    case ReadMember::Way::kWalk:
      return false;
  }
  cursor = element->GetNextSiblingElement();
  return true;
}

bool CReadPlan::ReadCollection(CBoundClass& object, const ReadMember& member, CXmlElement* parent,
                               CXmlElement*& cursor, const CSerializationContext& context) {
  CXmlCollectionBase& collection =
      object.GetCollection(member.index, CReadValues::Collection(object, member));
  const CCollectionHandle held(&collection);
  cursor = object.CXmlObjectBase::FromXml_Int(collection.GetBase(), parent, cursor, context);
  collection.ValidateCount(context);
  return true;
}

void CReadPlan::ReadText(CBoundClass& object, const CXmlElement& parent) const {
  const std::string_view text = parent.GetTextView();
  if (m_isMixed && HasOnlyWhitespace(text)) return;
  const bool isPlain = !text.empty() || m_text->member.defaultValue == nullptr;
  if (isPlain && CReadValues::Take(object, *m_text, text)) return;
  object.TextFromXml(*object.GetClassInfo(), parent);
}

}  // namespace detail
}  // namespace QzXmlLib16
