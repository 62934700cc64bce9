#include "qzxml/xml/XmlTextRun.h"

#include <algorithm>
#include <cstring>
#include <set>
#include <string>

#include "qzxml/runtime/CriticalSection.h"

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
  }

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

// ---- What is not the ordinary case ----

const std::string XmlTextRun::kNoUri;

XmlTextRun::Name::Name(const char* name, const char* uri)
    : m_uri(&KeepUri(uri)), m_tags(ElementTags::InOneNamespace(name)) {
  const SteppedText& start = m_tags.GetStart();
  const SteppedText& end = m_tags.GetEnd();
  m_room = 1 + 2 * kTagEolRoom + kShortIndent + start.GetRoom() + end.GetRoom() + Tag::kRoom;
  m_start.Set(start.View());
  m_end.Set(end.View());
  m_plainUri = end.View().size() <= Tag::kRoom ? m_uri : nullptr;
}

const std::string& XmlTextRun::Name::KeepUri(const char* uri) {
  static CQZCriticalSection& section = *new CQZCriticalSection;
  static std::set<std::string>& kept = *new std::set<std::string>;
  const CriticalSectionGuard guard(section);
  return *kept.emplace(uri).first;
}

// A namespace that is found to take no prefix is the plain one from here.
[[gnu::noinline]] bool XmlTextRun::FindPrefix(const Name& name, const std::string*& prefix) {
  if (!m_writer.FindElementPrefix(name.m_tags, name.GetUri(), prefix)) return false;
  if (prefix == nullptr && name.m_plainUri != nullptr) m_plainUri = name.m_plainUri;
  return true;
}

[[gnu::noinline]] bool XmlTextRun::BeginOtherElement(Element& element, const Name& name) {
  const std::string* prefix = nullptr;
  if (!FindPrefix(name, prefix) || !HasRoom(name, 2 * GetPrefixSize(prefix))) return false;
  m_out = CXmlTextWriter::PutTag(PutGap(), name.m_tags.GetStart(), 1, prefix) - 1;
  EnterElement(element, name, prefix);
  return true;
}

[[gnu::noinline]] char* XmlTextRun::BeginOtherValue(const Name& name, std::size_t room) {
  if (!FindPrefix(name, m_prefix) || !HasRoom(name, room + 2 * GetPrefixSize(m_prefix))) {
    return nullptr;
  }
  return CXmlTextWriter::PutTag(PutGap(), name.m_tags.GetStart(), 1, m_prefix);
}

template <bool inAttribute>
[[gnu::noinline]] char* XmlTextRun::PutEscapedText(char* out, std::string_view text) const {
  return m_writer.PutShortText<inAttribute>(out, text.data(), text.size());
}
template char* XmlTextRun::PutEscapedText<false>(char*, std::string_view) const;
template char* XmlTextRun::PutEscapedText<true>(char*, std::string_view) const;

[[gnu::noinline]] char* XmlTextRun::PutOtherEnd(char* out, const Name& name,
                                                const std::string* prefix) {
  return CXmlTextWriter::PutTag(out, name.m_tags.GetEnd(), 2, prefix);
}

[[gnu::noinline]] char* XmlTextRun::PutLongIndent(char* out) const {
  return m_writer.PutIndent(out, m_indent);
}

}  // namespace QzXmlLib16::detail
