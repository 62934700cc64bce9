#pragma once

#include <string>
#include <string_view>

#include "qzxml/binding/PlannedOctetForms.h"
#include "qzxml/binding/WritePlan.h"
#include "qzxml/fastinfoset/FastInfosetRunHost.h"
#include "qzxml/fastinfoset/FastInfosetRunPut.h"
#include "qzxml/xml/XmlWriter.h"

namespace QzXmlLib16 {
class CSerializationContext;
}  // namespace QzXmlLib16

namespace QzXmlLib16::detail {

// Where planned writing puts what it finds for Fast Infoset; the operations are those of CXmlSink.
// What a run does not do, the short ways of the writer may do, which know prefixes, and find room.
class CFastInfosetSink {
 public:
  using Element = FastInfosetRun::Element;
  using CChild = CWritePlan::CChild;
  using CAttribute = CWritePlan::CAttribute;

  // The ways are those of the writer.
  CFastInfosetSink(const CSerializationContext& context, CXmlWriter& writer, CShortWays& ways)
      : m_context(context),
        m_writer(writer),
        m_ways(static_cast<FastInfosetRunHost&>(ways)),
        m_run(m_ways) {}

  void Interrupt() { m_run.Interrupt(); }
  void Resume() { m_run.Resume(); }
  void Finish() { m_run.Finish(); }
  CXmlWriter& GetWriter() { return m_writer; }
  bool IsLong() const { return m_run.IsLong(); }

  bool BeginElement(Element& element, const CChild& child) {
    m_run.BeginElement(element, child.octetsName);
    return true;
  }
  void EndElement(Element& element) { m_run.EndElement(element); }

  bool PutText(const CChild& child, const std::string& text) {
    return m_run.PutTextElement(child.octetsName, text, ItemType_string) ||
           PutTextInShortWay(child, text);
  }
  bool PutValue(const CChild& child, const void* value);
  bool PutAttribute(const CAttribute& attribute, const std::string& text) {
    if (IsLeftOut(attribute, text)) return true;
    if (text.empty()) return false;
    return m_run.PutTextAttribute(attribute.octetsName, text, ItemType_string) ||
           PutTextInShortWay(attribute, text);
  }
  bool PutAttribute(const CAttribute& attribute, const void* value);
  bool PutOwnText(const CPlannedValue& text, const void* value);
  template <typename T>
  bool PutValueAs(const CChild& child, const T& value);
  template <typename T>
  bool PutAttributeAs(const CAttribute& attribute, const T& value);

 private:
  template <typename Put>
  bool InShortWay(Put put);
  bool PutTextInShortWay(const CChild& child, std::string_view text);
  bool PutTextInShortWay(const CAttribute& attribute, std::string_view text);
  bool PutValueInShortWay(const CChild& child, const void* value, std::string_view text);
  bool PutValueInShortWay(const CAttribute& attribute, const void* value);
  bool IsLeftOut(const CAttribute& attribute, std::string_view text) const {
    return attribute.IsLeftOut(text, m_context);
  }

  const CSerializationContext& m_context;
  CXmlWriter& m_writer;
  FastInfosetRunHost& m_ways;
  FastInfosetRun m_run;
};

// The kind of a value, which for those of a way of their own is that of the way.
inline ItemType KindOf(const CPlannedValue&, const std::int32_t&) { return ItemType_i4; }
inline ItemType KindOf(const CPlannedValue&, const double&) { return ItemType_r8; }
inline ItemType KindOf(const CPlannedValue& planned, const CDateTime&) {
  return planned.GetWrittenKind();
}

// A number whose octets are known is not printed at all.
template <>
inline bool CFastInfosetSink::PutValueAs(const CChild& child, const std::int32_t& value) {
  const auto print = [value](char* out) { return CPlannedValue::WriteAs(value, out); };
  if (m_run.PutIntegerElement(child.octetsName, value, print,
                              [value](std::uint32_t as) { return OctetsOf(value, as); })) {
    return true;
  }
  char buffer[CPlannedValue::kRoom];
  const std::string_view text(buffer, static_cast<std::size_t>(print(buffer) - buffer));
  return PutValueInShortWay(child, &value, text);
}

template <>
inline bool CFastInfosetSink::PutAttributeAs(const CAttribute& attribute,
                                             const std::int32_t& value) {
  const auto print = [value](char* out) { return CPlannedValue::WriteAs(value, out); };
  if (attribute.hasDefault) {
    char buffer[CPlannedValue::kRoom];
    const std::string_view text(buffer, static_cast<std::size_t>(print(buffer) - buffer));
    if (IsLeftOut(attribute, text)) return true;
  }
  return m_run.PutIntegerAttribute(attribute.octetsName, value, print, [value](std::uint32_t as) {
    return OctetsOf(value, as);
  }) || (attribute.value.IsScalar() && PutValueInShortWay(attribute, &value));
}

template <typename T>
inline bool CFastInfosetSink::PutValueAs(const CChild& child, const T& value) {
  char buffer[CPlannedValue::kRoom];
  const char* const end = CPlannedValue::WriteAs(value, buffer);
  if (end == nullptr) return false;
  const std::string_view text(buffer, static_cast<std::size_t>(end - buffer));
  return m_run.PutPrintedElement(child.octetsName, text, KindOf(child.value, value),
                                 [&](std::uint32_t as) { return OctetsOf(value, as); }) ||
         PutValueInShortWay(child, &value, text);
}

template <typename T>
inline bool CFastInfosetSink::PutAttributeAs(const CAttribute& attribute, const T& value) {
  char buffer[CPlannedValue::kRoom];
  const char* const end = CPlannedValue::WriteAs(value, buffer);
  if (end == nullptr) return false;
  const std::string_view text(buffer, static_cast<std::size_t>(end - buffer));
  return IsLeftOut(attribute, text) ||
         m_run.PutPrintedAttribute(attribute.octetsName, text, KindOf(attribute.value, value),
                                   [&](std::uint32_t as) { return OctetsOf(value, as); }) ||
         (attribute.value.IsScalar() && PutValueInShortWay(attribute, &value));
}

}  // namespace QzXmlLib16::detail
