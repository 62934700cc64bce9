#pragma once

#include <string>
#include <string_view>

#include "qzxml/binding/WritePlan.h"
#include "qzxml/xml/ShortWays.h"
#include "qzxml/xml/XmlTextRun.h"

namespace QzXmlLib16 {
class CSerializationContext;
class CXmlWriter;
}  // namespace QzXmlLib16

// Where planned writing puts what it finds: one class for each kind of writer. Each Put... answers
// false, and has changed nothing, when the walk has to do it; so does BeginElement.
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

  bool BeginElement(Element& element, const XmlTextRun::Name& name) {
    return m_run.BeginElement(element, name);
  }
  void EndElement(Element& element) { m_run.EndElement(element); }

  // A value that is a text, and any other.
  bool PutText(const CChild& child, std::string_view text);
  bool PutValue(const CChild& child, const void* value);
  bool PutAttribute(const CAttribute& attribute, std::string_view text);
  bool PutAttribute(const CAttribute& attribute, const void* value);
  bool PutOwnText(const CPlannedValue& text, const void* value);

 private:
  bool IsLeftOut(const CChild& child, std::string_view text) const;
  bool IsLeftOut(const CAttribute& attribute, std::string_view text) const;

  const CSerializationContext& m_context;
  CXmlTextWriter& m_writer;
  XmlTextRun m_run;
};

// A writer with short ways, which is Fast Infoset's. The operations are those of above.
class CShortWaysSink {
 public:
  struct Element {};
  using CChild = CWritePlan::CChild;
  using CAttribute = CWritePlan::CAttribute;

  CShortWaysSink(const CSerializationContext& context, CXmlWriter& writer, CShortWays& ways)
      : m_context(context), m_writer(writer), m_ways(ways) {}

  void Interrupt() {}
  void Resume() {}
  void Finish() {}
  CXmlWriter& GetWriter() { return m_writer; }

  bool BeginElement(Element&, const XmlTextRun::Name& name) {
    m_writer.WriteStartElement(name.GetName(), name.GetUri());
    return true;
  }
  void EndElement(Element&) { m_writer.WriteEndElement(); }

  bool PutText(const CChild& child, const std::string& text) {
    return m_ways.PutTextElement(child.name.GetTags(), child.name.GetUri(), text, ItemType_string);
  }
  bool PutValue(const CChild& child, const void* value);
  bool PutAttribute(const CAttribute& attribute, const std::string& text);
  bool PutAttribute(const CAttribute& attribute, const void* value);
  bool PutOwnText(const CPlannedValue&, const void*) { return false; }

 private:
  const std::string& GetText(const CPlannedValue& value, const void* found);
  bool IsLeftOut(const CAttribute& attribute, std::string_view text) const;

  const CSerializationContext& m_context;
  CXmlWriter& m_writer;
  CShortWays& m_ways;
  const std::string m_noFormat;
};

}  // namespace QzXmlLib16::detail
