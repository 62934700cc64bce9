#include "qzxml/xml/XmlTextRun.h"

#include <algorithm>

namespace QzXmlLib16::detail {

// Hands over to the stream what was put.
void XmlTextRun::Commit() {
  if (m_out == m_begin) return;
  m_stream.Commit(static_cast<std::uint32_t>(m_out - m_begin));
  m_begin = m_out;
}

// Tells a context what has happened to its element here.
void XmlTextRun::Settle(const Element& element) const {
  CXmlWriter::CXmlWriterContext& context = *element.m_context;
  context.SetStartTagOpen(element.m_isStartTagOpen);
  if (element.m_hasChildren && context.GetChildCount() == 0) context.AddChild();
}

void XmlTextRun::Interrupt() {
  Commit();
  Element* element = m_innermost;
  while (element->m_context == nullptr) element = element->m_outer;
  if (m_elements != 0) element->m_context->CountElements(m_elements);
  m_elements = 0;
  Settle(*element);
  while (element != m_innermost) {
    element = element->m_inner;
    element->m_context =
        m_writer.OpenContext(element->m_name->GetName(), element->m_name->GetUri());
    m_writer.m_pContext = element->m_context;
    Settle(*element);
  }
}

void XmlTextRun::Resume() {
  CXmlWriter::CXmlWriterContext& context = *m_innermost->m_context;
  m_innermost->m_isStartTagOpen = context.IsStartTagOpen();
  m_innermost->m_hasChildren = context.GetChildCount() != 0;
  m_indent = m_writer.GetIndentSize(context.GetDepth() + 1);

  // A block is opened by the call that needs it.
  std::uint32_t room = m_stream.GetFree();
  if (m_writer.m_bStreamFlushes) {
    const std::uint32_t pending = m_stream.GetLength();
    room = pending < kFlushThreshold ? std::min(room, kFlushThreshold - 1 - pending) : 0;
  }
  m_begin = m_out = room == 0 ? nullptr : m_stream.Reserve(room);
  m_limit = m_out + room;
}

// The end of an element that has a context, or gets one as its end tag has no room.
void XmlTextRun::EndInWriter(const Element& element) {
  Interrupt();
  m_writer.CXmlTextWriter::WriteEndElement();
  m_innermost = element.m_outer;
  Resume();
}

}  // namespace QzXmlLib16::detail
