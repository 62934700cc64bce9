#include "qzxml/binding/PlannedOctets.h"

#include "qzxml/serialization/SerializationContext.h"
#include "qzxml/values/QzVariant.h"

namespace QzXmlLib16::detail {

namespace {

// The octets of a number or a boolean; none for any other kind.
class OctetsOfScalar {
 public:
  OctetsOfScalar(ItemType kind, const void* value) : m_kind(kind), m_value(value) {}

  FIValueOctets operator()(std::uint32_t algorithm) const {
    switch (m_kind) {
      case ItemType_boolean:
        return algorithm == 6 ? FIValueOctets{As<bool>() ? 0x38u : 0x30u, 1} : kNoFIOctets;
      case ItemType_r8:
        return OctetsOf(As<double>(), algorithm);
      case ItemType_i1:
        return OctetsOf(std::int64_t{static_cast<signed char>(As<char>())}, algorithm);
      case ItemType_i2:
        return OctetsOf(std::int64_t{As<std::int16_t>()}, algorithm);
      case ItemType_i4:
        return OctetsOf(As<std::int32_t>(), algorithm);
      case ItemType_i8:
        return OctetsOf(As<std::int64_t>(), algorithm);
      case ItemType_ui1:
        return OctetsOf(std::int64_t{As<std::uint8_t>()}, algorithm);
      case ItemType_ui2:
        return OctetsOf(std::int64_t{As<std::uint16_t>()}, algorithm);
      case ItemType_ui4:
        return OctetsOf(std::int64_t{As<std::uint32_t>()}, algorithm);
      case ItemType_ui8: {
        const auto number = static_cast<std::int64_t>(As<std::uint64_t>());
        return number >= 0 ? OctetsOf(number, algorithm) : kNoFIOctets;
      }
      default:
        return kNoFIOctets;
    }
  }

 private:
  template <typename T>
  const T& As() const {
    return *static_cast<const T*>(m_value);
  }

  ItemType m_kind;
  const void* m_value;
};

}  // namespace

bool CFastInfosetSink::PutValue(const CChild& child, const void* value) {
  const ItemType kind = child.value.GetWrittenKind();
  if (child.value.IsText()) {
    const std::string_view text = child.value.GetText(value, m_writer.GetScratch().text);
    return m_run.PutTextElement(child.octetsName, text, kind) || PutTextInShortWay(child, text);
  }
  char buffer[CPlannedValue::kRoom];
  const char* const end = child.value.Write(value, buffer);
  if (end == nullptr) return false;
  const std::string_view text(buffer, static_cast<std::size_t>(end - buffer));
  return m_run.PutPrintedElement(child.octetsName, text, kind, OctetsOfScalar(kind, value)) ||
         PutValueInShortWay(child, value, text);
}

bool CFastInfosetSink::PutAttribute(const CAttribute& attribute, const void* value) {
  const ItemType kind = attribute.value.GetWrittenKind();
  if (attribute.value.IsText()) {
    const std::string_view text = attribute.value.GetText(value, m_writer.GetScratch().text);
    if (IsLeftOut(attribute, text)) return true;
    if (text.empty()) return false;
    return m_run.PutTextAttribute(attribute.octetsName, text, kind) ||
           (kind == ItemType_string && PutTextInShortWay(attribute, text));
  }
  char buffer[CPlannedValue::kRoom];
  const char* const end = attribute.value.Write(value, buffer);
  if (end == nullptr) return false;
  const std::string_view text(buffer, static_cast<std::size_t>(end - buffer));
  return IsLeftOut(attribute, text) ||
         m_run.PutPrintedAttribute(attribute.octetsName, text, kind, OctetsOfScalar(kind, value)) ||
         (attribute.value.IsScalar() && PutValueInShortWay(attribute, value));
}

bool CFastInfosetSink::PutOwnText(const CPlannedValue& text, const void* value) {
  if (!text.IsText()) return false;
  const std::string_view whole = text.GetText(value, m_writer.GetScratch().text);
  return whole.empty() || m_run.PutOwnText(whole, text.GetWrittenKind());
}

// --- Short ways

template <typename Put>
[[gnu::noinline]] bool CFastInfosetSink::InShortWay(Put put) {
  m_run.Interrupt();
  const bool isDone = put();
  m_run.Resume();
  return isDone;
}

[[gnu::noinline]] bool CFastInfosetSink::PutTextInShortWay(const CChild& child,
                                                           std::string_view text) {
  const std::string whole(text);
  return InShortWay([&] {
    return m_ways.PutTextElement(child.name.GetTags(), child.name.GetUri(), whole,
                                 child.value.GetWrittenKind());
  });
}

[[gnu::noinline]] bool CFastInfosetSink::PutTextInShortWay(const CAttribute& attribute,
                                                           std::string_view text) {
  const std::string whole(text);
  QzVariant variant;
  variant.LendString(whole);
  return InShortWay(
      [&] { return m_ways.PutValueAttribute(attribute.tag, variant, std::string()); });
}

[[gnu::noinline]] bool CFastInfosetSink::PutValueInShortWay(const CChild& child, const void* value,
                                                            std::string_view text) {
  if (!child.value.IsScalar()) return PutTextInShortWay(child, text);
  QzVariant variant;
  return child.value.Lend(value, variant) && InShortWay([&] {
           return m_ways.PutValueElement(child.name.GetTags(), child.name.GetUri(), variant,
                                         std::string());
         });
}

[[gnu::noinline]] bool CFastInfosetSink::PutValueInShortWay(const CAttribute& attribute,
                                                            const void* value) {
  QzVariant variant;
  return attribute.value.Lend(value, variant) && InShortWay([&] {
           return m_ways.PutValueAttribute(attribute.tag, variant, std::string());
         });
}

}  // namespace QzXmlLib16::detail
