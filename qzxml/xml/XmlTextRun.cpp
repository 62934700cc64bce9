#include "qzxml/xml/XmlTextRun.h"

#include <algorithm>
#include <cstring>
#include <string>

#include "qzxml/xml/XmlTextRunPut.h"

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
  const bool isInnermost = &element == m_innermost;
  context.SetStartTagOpen(isInnermost && m_isStartTagOpen);
  if ((!isInnermost || m_hasChildren) && context.GetChildCount() == 0) context.AddChild();
}

void XmlTextRun::Interrupt() {
  Commit();
  Element* element = m_innermost;
  while (element->m_context == nullptr) {
    element->m_outer->m_inner = element;
    element = element->m_outer;
  }
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
  m_isStartTagOpen = context.IsStartTagOpen();
  m_hasChildren = context.GetChildCount() != 0;
  m_indent = m_writer.GetIndentSize(context.GetDepth() + 1);
  m_indents = m_writer.m_pIndents;
  std::memcpy(m_tagEol, m_writer.m_tagEol, sizeof(m_tagEol));
  m_tagEolSize = m_writer.m_tagEolSize;
  if (m_namespaceState != context.GetNamespaceState()) {
    m_namespaceState = context.GetNamespaceState();
    m_plainUri = &kNoUri;
    for (XmlTextPrefix& prefix : m_prefixes) prefix.uri = &kNoUri;
  }

  // A block is opened by the call that needs it.
  std::uint32_t room = m_stream.GetFree();
  if (m_writer.m_bStreamFlushes) {
    const std::uint32_t pending = m_stream.GetLength();
    room = pending < kFlushThreshold ? std::min(room, kFlushThreshold - 1 - pending) : 0;
  }
  m_begin = m_out = room == 0 ? nullptr : m_stream.Reserve(room);
  m_limit = m_out + room;
  m_nearLimit = reinterpret_cast<std::uintptr_t>(m_limit) - Name::kShortRoom - m_indent;
}

// The end of an element that has a context, or gets one as its end tag has no room.
void XmlTextRun::EndInWriter(const Element& element) {
  Interrupt();
  m_writer.CXmlTextWriter::WriteEndElement();
  m_innermost = element.m_outer;
  Resume();
}

// ---- What is not the ordinary case ----

const std::string XmlTextRun::kNoUri;

// What is found is at hand from here; the first namespace without a prefix as the plain one.
[[gnu::noinline]] bool XmlTextRun::FindPrefix(const Name& name, const std::string*& prefix) {
  if (!m_writer.FindElementPrefix(name.GetTags(), name.GetUri(), prefix)) return false;
  if (name.GetShortUri() == nullptr) return true;
  if (prefix == nullptr && (m_plainUri == &kNoUri || IsPlain(name))) {
    m_plainUri = name.GetShortUri();
  } else {
    XmlTextPrefix& place = m_prefixes[name.GetPrefixPlace()];
    if (place.Set(prefix)) place.uri = name.GetShortUri();
  }
  return true;
}

[[gnu::noinline]] bool XmlTextRun::BeginOtherElement(Element& element, const Name& name) {
  const std::string* prefix = nullptr;
  if (!FindPrefix(name, prefix) || !HasRoom(name, 2 * GetPrefixSize(prefix))) return false;
  m_out = CXmlTextWriter::PutTag(PutGap(), name.GetTags().GetStart(), 1, prefix) - 1;
  EnterElement(element, name);
  return true;
}

[[gnu::noinline]] void XmlTextRun::EndOtherElement(const Element& element) {
  const Name& name = *element.m_name;
  const std::string* prefix = nullptr;
  if (element.m_context != nullptr || !FindPrefix(name, prefix) ||
      !HasRoom(name, 2 * GetPrefixSize(prefix))) {
    return EndInWriter(element);
  }
  PutElementEnd(element, [&](char* out) { return PutOtherEnd(out, name, prefix); });
}

[[gnu::noinline]] char* XmlTextRun::BeginOtherValue(const Name& name, std::size_t room) {
  if (!FindPrefix(name, m_otherPrefix) || !HasRoom(name, room + 2 * GetPrefixSize(m_otherPrefix))) {
    return nullptr;
  }
  return CXmlTextWriter::PutTag(PutGap(), name.GetTags().GetStart(), 1, m_otherPrefix);
}

template <bool inAttribute>
[[gnu::noinline]] char* XmlTextRun::PutEscapedText(char* out, std::string_view text) const {
  return m_writer.PutShortText<inAttribute>(out, text.data(), text.size());
}
template char* XmlTextRun::PutEscapedText<false>(char*, std::string_view) const;
template char* XmlTextRun::PutEscapedText<true>(char*, std::string_view) const;

[[gnu::noinline]] char* XmlTextRun::PutOtherEnd(char* out, const Name& name,
                                                const std::string* prefix) {
  return CXmlTextWriter::PutTag(out, name.GetTags().GetEnd(), 2, prefix);
}

[[gnu::noinline]] char* XmlTextRun::PutLongIndent(char* out) const {
  return m_writer.PutIndent(out, m_indent);
}

}  // namespace QzXmlLib16::detail
