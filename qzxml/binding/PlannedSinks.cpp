#include "qzxml/binding/PlannedSinks.h"

#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>

#include "qzxml/fastinfoset/FastInfosetRunPut.h"
#include "qzxml/serialization/SerializationContext.h"
#include "qzxml/values/QzVariant.h"
#include "qzxml/xml/XmlWriter.h"

namespace QzXmlLib16::detail {

namespace {

// A number in the octets of an algorithm.
class NumberOctets {
 public:
  NumberOctets(ItemType kind, const void* value) : m_kind(kind), m_value(value) {}

  // None for a kind or a value that the algorithm does not take.
  FastInfosetRun::Octets operator()(std::uint32_t algorithm) const {
    if (m_kind == ItemType_r8) return OctetsOfReal(algorithm);
    if (m_kind == ItemType_boolean) {
      return algorithm == 6 ? Octets{As<bool>() ? 0x38u : 0x30u, 1} : kNone;
    }
    std::int64_t number = 0;
    if (!GetInteger(number)) return kNone;
    const auto bits = static_cast<std::uint64_t>(number);
    if (algorithm == 3) return Fits<std::int16_t>(number) ? Octets{bits, 2} : kNone;
    if (algorithm == 4) return Fits<std::int32_t>(number) ? Octets{bits, 4} : kNone;
    return algorithm == 5 ? Octets{bits, 8} : kNone;
  }

 private:
  using Octets = FastInfosetRun::Octets;
  static constexpr Octets kNone = {0, 0};

  template <typename T>
  const T& As() const {
    return *static_cast<const T*>(m_value);
  }
  template <typename Narrow>
  static bool Fits(std::int64_t number) {
    return number >= std::numeric_limits<Narrow>::min() &&
           number <= std::numeric_limits<Narrow>::max();
  }

  // The text of a negative zero may be that of zero, whose octets it has then.
  Octets OctetsOfReal(std::uint32_t algorithm) const {
    const auto real = As<double>();
    if (real == 0 && std::signbit(real)) return kNone;
    std::uint64_t bits = 0;
    if (algorithm == 8) {
      std::memcpy(&bits, &real, sizeof bits);
      return {bits, 8};
    }
    if (algorithm != 7) return kNone;
    std::uint32_t narrowBits = 0;
    const auto narrow = static_cast<float>(real);
    std::memcpy(&narrowBits, &narrow, sizeof narrowBits);
    return {narrowBits, 4};
  }

  bool GetInteger(std::int64_t& number) const {
    switch (m_kind) {
      case ItemType_i1:
        number = static_cast<signed char>(As<char>());
        return true;
      case ItemType_i2:
        number = As<std::int16_t>();
        return true;
      case ItemType_i4:
        number = As<std::int32_t>();
        return true;
      case ItemType_i8:
        number = As<std::int64_t>();
        return true;
      case ItemType_ui1:
        number = As<std::uint8_t>();
        return true;
      case ItemType_ui2:
        number = As<std::uint16_t>();
        return true;
      case ItemType_ui4:
        number = As<std::uint32_t>();
        return true;
      case ItemType_ui8:
        number = static_cast<std::int64_t>(As<std::uint64_t>());
        return number >= 0;
      default:
        return false;
    }
  }

  ItemType m_kind;
  const void* m_value;
};

}  // namespace

// --- XML text

bool CXmlSink::PutAttribute(const CAttribute& attribute, std::string_view text) {
  if (IsLeftOut(attribute, text)) return true;
  char* const begin = m_run.BeginAttribute(attribute.tag, text.size() + kEntityRoom);
  if (begin == nullptr) return false;
  char* const end = m_run.PutText<true>(begin, text);
  if (end == nullptr) return false;
  m_run.EndAttribute(end);
  return true;
}

bool CXmlSink::PutAttribute(const CAttribute& attribute, const void* value) {
  const CPlannedValue& planned = attribute.value;
  if (planned.IsText()) return PutAttribute(attribute, planned.GetText(value, m_run.GetScratch()));
  return PutWritten(attribute, [&](char* out) { return planned.Write(value, out); });
}

bool CXmlSink::PutValue(const CChild& child, const void* value) {
  const CPlannedValue& planned = child.value;
  if (planned.IsText()) return PutText(child, planned.GetText(value, m_run.GetScratch()));
  return PutWritten(child, [&](char* out) { return planned.Write(value, out); });
}

bool CXmlSink::PutText(const CChild& child, std::string_view text) {
  if (IsLeftOut(child, text)) text = std::string_view();
  char* const begin = m_run.BeginValue(child.name, text.size() + kEntityRoom);
  if (begin == nullptr) return false;
  char* const end = m_run.PutText<false>(begin, text);
  if (end == nullptr) return false;
  m_run.EndValue(child.name, begin, end);
  return true;
}

bool CXmlSink::PutOwnText(const CPlannedValue& text, const void* value) {
  std::string_view whole;
  if (text.IsText()) {
    whole = text.GetText(value, m_run.GetScratch());
    if (whole.empty()) return true;
  }
  const std::size_t room = text.IsText() ? whole.size() + kEntityRoom : CPlannedValue::kRoom;
  char* const begin = m_run.BeginText(room);
  if (begin == nullptr) return false;
  char* const end = text.IsText() ? m_run.PutText<false>(begin, whole) : text.Write(value, begin);
  if (end == nullptr) return false;
  m_run.EndText(end);
  return true;
}

// --- Fast Infoset

bool CFastInfosetSink::BeginElement(Element& element, const XmlTextRun::Name& name) {
  m_run.BeginElement(element, name.GetTags(), name.GetUri());
  return true;
}

void CFastInfosetSink::EndElement(Element& element) { m_run.EndElement(element); }

bool CFastInfosetSink::PutText(const CChild& child, const std::string& text) {
  return m_run.PutTextElement(child.name.GetTags(), text, ItemType_string) ||
         PutTextInShortWay(child, text);
}

bool CFastInfosetSink::PutValue(const CChild& child, const void* value) {
  const ItemType kind = child.value.GetWrittenKind();
  const ElementTags& tags = child.name.GetTags();
  if (child.value.IsText()) {
    const std::string_view text = child.value.GetText(value, m_writer.GetScratch().text);
    return m_run.PutTextElement(tags, text, kind) || PutTextInShortWay(child, text);
  }
  char buffer[CPlannedValue::kRoom];
  const char* const end = child.value.Write(value, buffer);
  if (end == nullptr) return false;
  const std::string_view text(buffer, static_cast<std::size_t>(end - buffer));
  return m_run.PutPrintedElement(tags, text, kind, NumberOctets(kind, value)) ||
         PutValueInShortWay(child, value, text);
}

bool CFastInfosetSink::PutAttribute(const CAttribute& attribute, const std::string& text) {
  if (IsLeftOut(attribute, text)) return true;
  if (text.empty()) return false;
  return m_run.PutTextAttribute(attribute.tag, text, ItemType_string) ||
         PutTextInShortWay(attribute, text);
}

bool CFastInfosetSink::PutAttribute(const CAttribute& attribute, const void* value) {
  const ItemType kind = attribute.value.GetWrittenKind();
  if (attribute.value.IsText()) {
    const std::string_view text = attribute.value.GetText(value, m_writer.GetScratch().text);
    if (IsLeftOut(attribute, text)) return true;
    if (text.empty()) return false;
    return m_run.PutTextAttribute(attribute.tag, text, kind) ||
           (kind == ItemType_string && PutTextInShortWay(attribute, text));
  }
  char buffer[CPlannedValue::kRoom];
  const char* const end = attribute.value.Write(value, buffer);
  if (end == nullptr) return false;
  const std::string_view text(buffer, static_cast<std::size_t>(end - buffer));
  return IsLeftOut(attribute, text) ||
         m_run.PutPrintedAttribute(attribute.tag, text, kind, NumberOctets(kind, value)) ||
         (attribute.value.IsScalar() && PutValueInShortWay(attribute, value));
}

inline bool CFastInfosetSink::IsLeftOut(const CAttribute& attribute, std::string_view text) const {
  return attribute.hasDefault && attribute.isOptional && attribute.value.IsDefault(text) &&
         m_context.GetNoOptionalAttributeDefaultOutput();
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
