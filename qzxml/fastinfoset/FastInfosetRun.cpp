#include "qzxml/fastinfoset/FastInfosetRun.h"

#include "qzxml/runtime/Encoder.h"
#include "qzxml/xml/XmlWriterContext.h"

namespace QzXmlLib16::detail {

FastInfosetRun::FastInfosetRun(FastInfosetRunHost& host)
    : m_host(host),
      m_parts(host.GetParts()),
      m_writesUtf8(m_parts.options->GetDefaultStringEncoding() != 1 && IsLocalUtf8()),
      m_attributeValues{m_parts.attributeValues, m_parts.options->GetAttributeMaxAddLength()},
      m_chunks{m_parts.chunks, m_parts.options->GetElementMaxAddLength()},
      m_innermost(&m_base) {
  Resume();
}

// Tells a context what has happened to its element here.
void FastInfosetRun::Settle(const Element& element) {
  CXmlWriter::CXmlWriterContext& context = *element.m_context;
  if (element.m_state == State::Attributes) context.SetHasAttributes(true);
  if (element.m_state == State::Content) context.SetStartTagOpen(false);
}

void FastInfosetRun::Interrupt() {
  if (m_innermost->m_state == State::Begun) m_place.out = m_head;
  m_host.TakeBack(m_place);
  Element* element = m_innermost;
  while (element->m_context == nullptr && element->m_outer != nullptr) element = element->m_outer;
  if (element->m_context == nullptr) return;  // no element is open
  if (m_elements != 0) element->m_context->CountElements(m_elements);
  m_elements = 0;
  Settle(*element);
  while (element != m_innermost) {
    element = element->m_inner;
    element->m_context = m_host.OpenElement(element->m_name->GetName(), *element->m_uri,
                                            element->m_state == State::Begun);
    Settle(*element);
  }
}

void FastInfosetRun::Resume() {
  m_place = m_host.Lend();
  Element& element = *m_innermost;
  const CXmlWriter::CXmlWriterContext* const context = m_place.innermost;
  element.m_context = m_place.innermost;
  m_namespaceState = context == nullptr ? 0 : context->GetNamespaceState();
  if (m_place.isPending) {
    element.m_state = State::Pending;
  } else if (context == nullptr || !context->IsStartTagOpen()) {
    element.m_state = State::Content;
  } else {
    element.m_state = context->HasAttributes() ? State::Attributes : State::Headed;
  }
}

// The flush leaves all as it is but the place.
[[gnu::noinline]] void FastInfosetRun::Flush() {
  m_host.TakeBack(m_place);
  m_host.Flush();
  m_place = m_host.Lend();
}

// Gives the name an alias where it has none, so that other namespaces may be in force behind it.
[[gnu::noinline]] void FastInfosetRun::WritePending(bool hasAttributes) {
  m_host.TakeBack(m_place);
  m_host.WritePending(hasAttributes);
  Resume();
}

// An element of whose name nothing is known, or without room.
[[gnu::noinline]] void FastInfosetRun::BeginInWriter(Element& element, const ElementTags& name,
                                                     const std::string& uri) {
  Interrupt();
  m_host.StartElement(name.GetName(), uri);
  m_innermost->m_inner = &element;
  element.m_outer = m_innermost;
  element.m_name = &name;
  element.m_uri = &uri;
  m_innermost = &element;
  Resume();
}

// The end of an element that has a context, or gets one as its end has no room.
[[gnu::noinline]] void FastInfosetRun::EndInWriter(const Element& element) {
  Interrupt();
  m_host.EndElement();
  m_innermost = element.m_outer;
  Resume();
}

// A name that the document may have met, but not by its id.
[[gnu::noinline]] const CFIKnownNames::ById* FastInfosetRun::FindName(const ElementTags& name,
                                                                      const std::string& uri) {
  if (m_place.innermost == nullptr || !m_host.FindElement(name, uri)) return nullptr;
  return &m_parts.names->ElementOf(name.GetId());
}

}  // namespace QzXmlLib16::detail
