#include "qzxml/binding/PlannedSinks.h"

#include "qzxml/serialization/SerializationContext.h"
#include "qzxml/values/QzVariant.h"
#include "qzxml/xml/XmlWriter.h"

namespace QzXmlLib16::detail {

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

// --- Short ways

// The text of a value that is asked for as such, or a date; empty for none.
const std::string& CShortWaysSink::GetText(const CPlannedValue& value, const void* found) {
  std::string& text = m_writer.GetScratch().text;
  if (value.IsText()) {
    const std::string_view view = value.GetText(found, text);
    if (view.data() != text.data()) text.assign(view);
    return text;
  }
  char buffer[CPlannedValue::kRoom];
  const char* const end = value.Write(found, buffer);
  text.assign(buffer, end == nullptr ? 0 : static_cast<std::size_t>(end - buffer));
  return text;
}

bool CShortWaysSink::PutValue(const CChild& child, const void* value) {
  const ElementTags& tags = child.name.GetTags();
  QzVariant variant;
  if (child.value.IsScalar()) {
    if (!child.value.Lend(value, variant)) return false;
    return m_ways.PutValueElement(tags, child.name.GetUri(), variant, m_noFormat);
  }
  const std::string& text = GetText(child.value, value);
  const bool isDate = !child.value.IsText();
  if (isDate && text.empty()) return false;
  return m_ways.PutTextElement(tags, child.name.GetUri(), text, child.value.GetWrittenKind());
}

bool CShortWaysSink::PutAttribute(const CAttribute& attribute, const std::string& text) {
  if (IsLeftOut(attribute, text)) return true;
  QzVariant variant;
  variant.LendString(text);
  return m_ways.PutValueAttribute(attribute.tag, variant, m_noFormat);
}

// What has a default is left to the walk.
bool CShortWaysSink::PutAttribute(const CAttribute& attribute, const void* value) {
  if (attribute.value.GetWrittenKind() == ItemType_string) {
    return PutAttribute(attribute, GetText(attribute.value, value));
  }
  QzVariant variant;
  return !attribute.hasDefault && attribute.value.IsScalar() &&
         attribute.value.Lend(value, variant) &&
         m_ways.PutValueAttribute(attribute.tag, variant, m_noFormat);
}

bool CShortWaysSink::IsLeftOut(const CAttribute& attribute, std::string_view text) const {
  return attribute.hasDefault && attribute.isOptional && attribute.value.IsDefault(text) &&
         m_context.GetNoOptionalAttributeDefaultOutput();
}

}  // namespace QzXmlLib16::detail
