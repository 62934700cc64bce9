#include "qzxml/binding/EarlyItems.h"

#include <atomic>
#include <limits>
#include <utility>

#include "qzxml/binding/BoundClass.h"
#include "qzxml/binding/ObjectCol.h"
#include "qzxml/binding/ReadValues.h"
#include "qzxml/collections/XmlCollectionBase.h"
#include "qzxml/platform/DebugChannel.h"
#include "qzxml/runtime/ObjectMemory.h"
#include "qzxml/xml/XmlDocument.h"

namespace QzXmlLib16::detail {
namespace {

constexpr std::size_t kNever = std::numeric_limits<std::size_t>::max();

std::atomic<std::size_t> g_readItemsFrom{kReadItemsFrom};

// Whether the collection of a member takes items that were read ahead.
bool IsObjectCol(const CMember& member) {
  const CCollectionHandle sample(member.newCollection(member));
  const CXmlCollectionBase* const collection = sample;
  return dynamic_cast<const CBoundObjectCol*>(collection) != nullptr;
}

}  // namespace

void ReadItemsEarly(std::size_t octets) {
  g_readItemsFrom.store(octets, std::memory_order_relaxed);
}

CEarlyItems::CEarlyItems(const CReadPlan& plan, const CSerializationContext& context)
    : m_context(context), m_root{{false}, nullptr, &plan} {}

CEarlyItems::~CEarlyItems() = default;

// --- The whole

bool CEarlyItems::Read(CBoundClass& object, const CSerializationContext& context, Source source,
                       const Load& load) {
  const std::size_t octets = g_readItemsFrom.load(std::memory_order_relaxed);
  if (octets == kNever || !IsFor(object, context, source)) return false;
  const CObjectsTogether together;
  CXmlDocument document(context);
  CEarlyItems items(*CReadPlan::For(object), context);
  const CItemWatch watch(document, items, items.m_root, octets);
  try {
    load(document);
  } catch (...) {
    if (watch.HasFailed()) return false;
    throw;
  }
  const auto read = [&] {
    object.CXmlObjectBase::FromXmlElement(document.GetDocumentElement(), context);
  };
  if (!watch.HasRead()) {
    read();
    return true;
  }
  items.m_next = 0;
  try {
    read();
  } catch (...) {
    return false;  // to be met again
  }
  return items.IsEmpty();
}

// Who listens, be it to the library or to a collection, is not to hear things twice.
// And bytes that are read may be those of a value that the object has, which goes when reading
// begins: they would not be there to be loaded again.
bool CEarlyItems::IsFor(CBoundClass& object, const CSerializationContext& context, Source source) {
  if (GetDebugChannel() != nullptr || !CReadPlan::Serves(context)) return false;
  const CReadPlan* const plan = CReadPlan::For(object);
  if (plan == nullptr || !plan->HasObjects() || CReadValues::HasListeners(object)) return false;
  return source == Source::File || CReadValues::IsEmpty(object);
}

// --- Roles

const IItemReader::Role* CEarlyItems::FindRole(const Role& parent, const XmlName& name) {
  if (m_lastParent == &parent && m_lastName == &name) return m_lastRole;
  const CReadPlan* const plan = static_cast<const CRole&>(parent).plan;
  const ReadMember* const member = plan != nullptr ? plan->FindObject(name) : nullptr;
  const CRole* const role = member != nullptr ? RoleOf(*member) : nullptr;
  m_lastParent = &parent;
  m_lastName = &name;
  m_lastRole = role != nullptr && (role->isItem || role->plan != nullptr) ? role : nullptr;
  return m_lastRole;
}

const CEarlyItems::CRole* CEarlyItems::RoleOf(const ReadMember& member) {
  for (const std::unique_ptr<const CRole>& role : m_roles) {
    if (role->member == &member) return role.get();
  }
  return m_roles.emplace_back(MakeRole(member)).get();
}

// A sample tells the class of the objects, unless the document does: then what is in them is not
// looked into.
std::unique_ptr<const CEarlyItems::CRole> CEarlyItems::MakeRole(const ReadMember& member) const {
  auto role = std::make_unique<CRole>();
  role->member = &member;
  const bool isItem = member.way == ReadMember::Way::kCollection && IsObjectCol(member.member);
  if (member.member.newObjectByType != nullptr) {
    role->isItem = isItem;
    return role;
  }
  const CObjectHandle sample = member.member.newObject(0, member.member.name);
  const auto* const bound =
      dynamic_cast<const CBoundClass*>(static_cast<const CXmlObjectBase*>(sample));
  const CReadPlan* const plan = bound != nullptr ? CReadPlan::For(*bound) : nullptr;
  if (plan != nullptr) {
    role->plan = plan->HasObjects() ? plan : nullptr;
    role->isItem = isItem;
  }
  return role;
}

// --- Items

bool CEarlyItems::ReadItems(const Role& role, CXmlElement* first, CXmlElement* last,
                            std::size_t firstRun, bool continuesRun) {
  const CMember& member = static_cast<const CRole&>(role).member->member;
  auto* const parent = const_cast<CXmlElement*>(first->GetParentElm());
  m_next = firstRun;
  m_batch.clear();
  for (CXmlElement* element = first;; element = element->GetNextSiblingElement()) {
    m_batch.push_back(CBoundObjectCol::ReadItem(member, parent, element, m_context));
    if (element == last) break;
  }
  if (!IsEmpty()) return false;
  if (firstRun < m_runs.size()) {
    m_items.resize(m_runs[firstRun].first);
    m_runs.resize(firstRun);
  }
  if (!continuesRun) m_runs.push_back({first, &member, m_items.size()});
  for (CObjectHandle& item : m_batch) m_items.push_back(std::move(item));
  return true;
}

}  // namespace QzXmlLib16::detail
