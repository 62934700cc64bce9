#include "qzxml/binding/PlannedSinks.h"

namespace QzXmlLib16::detail {

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

}  // namespace QzXmlLib16::detail
