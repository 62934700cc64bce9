#pragma once

#include <string>
#include <string_view>

#include "qzxml/binding/WritePlan.h"
#include "qzxml/serialization/SerializationContext.h"
#include "qzxml/xml/XmlTextRunPut.h"

// Where planned writing puts what it finds: one class for each kind of writer, the other of which
// is in PlannedOctets.h. Each Put... answers false, and has changed nothing, when the walk has to
// do it; so does BeginElement.
namespace QzXmlLib16::detail {

// XML text.
class CXmlSink {
 public:
  using Element = XmlTextRun::Element;
  using CChild = CWritePlan::CChild;
  using CAttribute = CWritePlan::CAttribute;

  CXmlSink(const CSerializationContext& context, CXmlTextWriter& writer)
      : m_context(context), m_writer(writer), m_run(writer) {}

  // The writer is ready for its own calls between these two, and behind the last one.
  void Interrupt() { m_run.Interrupt(); }
  void Resume() { m_run.Resume(); }
  void Finish() { m_run.Finish(); }
  CXmlWriter& GetWriter() { return m_writer; }
  // Whether what is written next may have to be fetched from far away.
  bool IsLong() const { return m_run.IsLong(); }

  bool BeginElement(Element& element, const CChild& child) {
    return m_run.BeginElement(element, child.name);
  }
  void EndElement(Element& element) { m_run.EndElement(element); }

  // A value that is a text, and any other.
  bool PutText(const CChild& child, std::string_view text);
  bool PutValue(const CChild& child, const void* value);
  bool PutAttribute(const CAttribute& attribute, std::string_view text);
  bool PutAttribute(const CAttribute& attribute, const void* value);
  bool PutOwnText(const CPlannedValue& text, const void* value);
  // One whose kind the way has told: a number of 32 bits, a double or a date.
  template <typename T>
  bool PutValueAs(const CChild& child, const T& value) {
    return PutWritten(child, [&](char* out) { return CPlannedValue::WriteAs(value, out); });
  }
  template <typename T>
  bool PutAttributeAs(const CAttribute& attribute, const T& value) {
    return PutWritten(attribute, [&](char* out) { return CPlannedValue::WriteAs(value, out); });
  }

 private:
  template <typename Write>
  bool PutWritten(const CChild& child, Write write);
  template <typename Write>
  bool PutWritten(const CAttribute& attribute, Write write);
  bool IsLeftOut(const CChild& child, std::string_view text) const;
  bool IsLeftOut(const CAttribute& attribute, std::string_view text) const {
    return attribute.IsLeftOut(text, m_context);
  }

  const CSerializationContext& m_context;
  CXmlTextWriter& m_writer;
  XmlTextRun m_run;
};

// ---- XML text, on the path of each value ----

template <typename Write>
inline bool CXmlSink::PutWritten(const CAttribute& attribute, Write write) {
  char* const begin = m_run.BeginAttribute(attribute.tag, CPlannedValue::kRoom);
  if (begin == nullptr) return false;
  char* const end = write(begin);
  if (end == nullptr) return false;
  const std::string_view text(begin, static_cast<std::size_t>(end - begin));
  if (!IsLeftOut(attribute, text)) m_run.EndAttribute(end);
  return true;
}

inline bool CXmlSink::IsLeftOut(const CChild& child, std::string_view text) const {
  return child.hasDefault && child.value.IsDefault(text) && !m_run.WritesDefaultValues();
}

template <typename Write>
inline bool CXmlSink::PutWritten(const CChild& child, Write write) {
  char* const begin = m_run.BeginValue(child.name, CPlannedValue::kRoom);
  if (begin == nullptr) return false;
  char* const end = write(begin);
  if (end == nullptr) return false;
  const std::string_view text(begin, static_cast<std::size_t>(end - begin));
  m_run.EndValue(child.name, begin, IsLeftOut(child, text) ? begin : end);
  return true;
}

[[gnu::always_inline]] inline bool CXmlSink::PutAttribute(const CAttribute& attribute,
                                                          std::string_view text) {
  if (IsLeftOut(attribute, text)) return true;
  char* const begin = m_run.BeginAttribute(attribute.tag, text.size() + kEntityRoom);
  if (begin == nullptr) return false;
  char* const end = m_run.PutText<true>(begin, text);
  if (end == nullptr) return false;
  m_run.EndAttribute(end);
  return true;
}

[[gnu::always_inline]] inline bool CXmlSink::PutText(const CChild& child, std::string_view text) {
  if (IsLeftOut(child, text)) text = std::string_view();
  char* const begin = m_run.BeginValue(child.name, text.size() + kEntityRoom);
  if (begin == nullptr) return false;
  char* const end = m_run.PutText<false>(begin, text);
  if (end == nullptr) return false;
  m_run.EndValue(child.name, begin, end);
  return true;
}

}  // namespace QzXmlLib16::detail
