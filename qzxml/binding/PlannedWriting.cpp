#include "qzxml/binding/PlannedWriting.h"

#include <cstdint>
#include <optional>

#include "qzxml/binding/BoundClass.h"
#include "qzxml/binding/ObjectCol.h"
#include "qzxml/platform/Unreachable.h"
#include "qzxml/serialization/SerializationContext.h"

namespace QzXmlLib16::detail {

using Way = CWritePlan::Way;

// --- The walk

template <typename Sink>
template <typename Step>
inline void CPlannedWriting<Sink>::Walk(Step step) {
  m_sink.Interrupt();
  step();
  m_sink.Resume();
}

template <typename Sink>
[[gnu::noinline]] bool CPlannedWriting<Sink>::WalkChild(const CChild& child,
                                                        const CBoundClass& object) {
  bool written = false;
  Walk([&] { written = child.entry->ElementToXml(m_context, &object, &m_sink.GetWriter()); });
  return written;
}

// --- Attributes

template <typename Sink>
[[gnu::always_inline]] inline void CPlannedWriting<Sink>::Attributes(const CWritePlan& plan,
                                                                     const CBoundClass& object) {
  try {
    for (const CWritePlan::CAttribute& attribute : plan.GetAttributes()) {
      Attribute(attribute, object);
    }
  } catch (const CQzException& e) {
    CBoundClass::ThrowAttributesFailed(e);
  }
}

template <typename Sink>
[[gnu::always_inline]] inline void CPlannedWriting<Sink>::Attribute(
    const CWritePlan::CAttribute& attribute, const CBoundClass& object) {
  switch (attribute.way) {
    case Way::Text: {
      const std::optional<std::string>& text = object.*attribute.property.m_string;
      if (text ? m_sink.PutAttribute(attribute, *text) : attribute.isOptional) return;
      break;
    }
    case Way::Int: {
      const std::optional<std::int32_t>& value = object.*attribute.property.m_i4;
      if (value ? m_sink.PutAttributeAs(attribute, *value) : attribute.isOptional) return;
      break;
    }
    case Way::Value:
    case Way::Real:
    case Way::Date: {
      const void* const value = attribute.value.Find(object);
      if (value == nullptr ? attribute.isOptional : m_sink.PutAttribute(attribute, value)) return;
      break;
    }
    case Way::WalkCollection: {
      const CXmlCollectionBase* const collection = object.*attribute.property.m_collection;
      if (collection == nullptr || collection->GetCount() == 0) return;
      break;
    }
    case Way::Walk:
      break;
    default:  // none of an attribute
      Unreachable();
  }
  Walk([&] { attribute.entry->AttributeToXml(m_context, &object, &m_sink.GetWriter()); });
}

// --- Children

template <typename Sink>
void CPlannedWriting<Sink>::Content(const CWritePlan& plan, const CBoundClass& object,
                                    bool optionalChoice) {
  Children(plan, object, optionalChoice);
  m_sink.Finish();
}

template <typename Sink>
[[gnu::noinline]] void CPlannedWriting<Sink>::Children(const CWritePlan& plan,
                                                       const CBoundClass& object,
                                                       bool optionalChoice) {
  const bool isChoice = plan.IsChoice();
  const CChild* child = plan.GetChildren().data();
  for (std::size_t left = plan.GetChildren().size(); left != 0; --left, ++child) {
    if (Child(*child, object) && isChoice) return;
  }
  if (isChoice) object.EmptyChoiceToXml(m_context, optionalChoice);
}

template <typename Sink>
[[gnu::always_inline]] inline bool CPlannedWriting<Sink>::Child(const CChild& child,
                                                                const CBoundClass& object) {
  switch (child.way) {
    case Way::Text: {
      const std::optional<std::string>& text = object.*child.property.m_string;
      if (!text && !child.isNeeded) return false;
      if (text && m_sink.PutText(child, *text)) return true;
      break;
    }
    case Way::Value: {
      const void* const value = child.value.Find(object);
      if (value == nullptr && !child.isNeeded) return false;
      if (value != nullptr && m_sink.PutValue(child, value)) return true;
      break;
    }
    case Way::Int: {
      const std::optional<std::int32_t>& value = object.*child.property.m_i4;
      if (!value && !child.isNeeded) return false;
      if (value && m_sink.PutValueAs(child, *value)) return true;
      break;
    }
    case Way::Real: {
      const std::optional<double>& value = object.*child.property.m_r8;
      if (!value && !child.isNeeded) return false;
      if (value && m_sink.PutValueAs(child, *value)) return true;
      break;
    }
    case Way::Date: {
      const std::optional<CDateTime>& value = object.*child.property.m_dateTime;
      if (!value && !child.isNeeded) return false;
      if (value && m_sink.PutValueAs(child, *value)) return true;
      break;
    }
    case Way::Object:
    case Way::WalkObject: {
      const CXmlObjectBase* const held = object.*child.property.m_object;
      if (held == nullptr && !child.isNeeded) return false;
      if (held != nullptr && PutObject(child, *held, child.optionalChoice)) return true;
      break;
    }
    case Way::Collection:
      return Collection(child, object);
    case Way::WalkCollection: {
      const CXmlCollectionBase* const held = object.*child.property.m_collection;
      if ((held == nullptr || held->GetCount() == 0) && !child.isNeeded) return false;
      break;
    }
    case Way::Walk:
      break;
    default:
      Unreachable();
  }
  return WalkChild(child, object);
}

namespace {

// Asks for the memory some items behind one of a collection, whatever is there. Objects that were
// read from a document lie in its order, and so do most that a program makes: with their nodes,
// texts and what they hold that is the memory of the items to come.
void FetchBehind([[maybe_unused]] const void* item) {
#if defined(__GNUC__)
  constexpr std::uintptr_t kAhead = 640;
  constexpr std::uintptr_t kLine = 64;
  constexpr std::uintptr_t kLines = 6;
  const std::uintptr_t first = reinterpret_cast<std::uintptr_t>(item) + kAhead;
  for (std::uintptr_t i = 0; i < kLines; ++i) {
    __builtin_prefetch(reinterpret_cast<const void*>(first + i * kLine));
  }
#endif
}

}  // namespace

template <typename Sink>
[[gnu::noinline]] void CPlannedWriting<Sink>::WalkItem(const CChild& child,
                                                       const CXmlObjectBase& item) {
  m_sink.Interrupt();
  CXmlObjectBase::ToXml_Int(&item, &m_sink.GetWriter(), false, child.name.GetUri().c_str(),
                            m_context, false);
  m_sink.Resume();
}

template <typename Sink>
bool CPlannedWriting<Sink>::Collection(const CChild& child, const CBoundClass& object) {
  const CXmlCollectionBase* const held = object.*child.property.m_collection;
  if (held == nullptr) return child.isNeeded && WalkChild(child, object);
  const auto& collection = static_cast<const CBoundObjectCol&>(*held);
  const CXmlCollection::CNode* node = collection.GetFirstNode();
  if (node == nullptr) return child.isNeeded && WalkChild(child, object);
  collection.ValidateCount(m_context);
  for (; node != nullptr; node = node->next) {
    const CXmlObjectBase& item = *node->item;
    // All of little text is near yet.
    if (m_sink.IsLong()) FetchBehind(&item);
    if (!PutObject(child, item, false)) WalkItem(child, item);
  }
  return true;
}

// --- Objects

template <typename Sink>
[[gnu::noinline]] bool CPlannedWriting<Sink>::IsEmpty(const CWritePlan& plan,
                                                      const CBoundClass& object) {
  return (plan.RequiresContent() && object.MissesContent()) ||
         (plan.IsNillable() && object.IsNilObject());
}

// False when the walk has to do it.
template <typename Sink>
bool CPlannedWriting<Sink>::PutObject(const CChild& child, const CXmlObjectBase& held,
                                      bool optionalChoice) {
  if (&typeid(held) != child.itemClass) return false;
  const auto& object = static_cast<const CBoundClass&>(held);
  const CWritePlan* const plan = CWritePlan::For(object);
  if (plan == nullptr || !plan->HasTag() || object.m_writesType ||
      (plan->MayBeEmpty() && IsEmpty(*plan, object)) ||
      !detail::AreEqual(object.ElementName(), child.name.GetName())) {
    return false;
  }
  typename Sink::Element element;
  try {
    if (!m_sink.BeginElement(element, child)) return false;
    if (!plan->GetAttributes().empty()) Attributes(*plan, object);
    Children(*plan, object, optionalChoice);
    if (plan->GetText() != nullptr) Text(*plan->GetText(), object);
    m_sink.EndElement(element);
  } catch (const CQzException& e) {
    CBoundClass::ThrowWritingFailed(object.ElementName(), e);
  }
  return true;
}

template <typename Sink>
void CPlannedWriting<Sink>::Text(const CPlannedValue& text, const CBoundClass& object) {
  const void* const value = text.IsPlanned() ? text.Find(object) : nullptr;
  if (value == nullptr ? text.IsString() : m_sink.PutOwnText(text, value)) return;
  Walk([&] { object.TextToXml(*object.GetClassInfo(), &m_sink.GetWriter()); });
}

template class CPlannedWriting<CXmlSink>;
template class CPlannedWriting<CFastInfosetSink>;

}  // namespace QzXmlLib16::detail
