#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "qzxml/runtime/TextStream.h"
#include "qzxml/xml/WrittenName.h"
#include "qzxml/xml/XmlTextPieces.h"
#include "qzxml/xml/XmlTextWriter.h"
#include "qzxml/xml/XmlWriterContext.h"

namespace QzXmlLib16::detail {

// Writes many elements into a text writer, whose place in its block it keeps for itself meanwhile:
// what is in the stream, and what is open in the writer, is right again behind Interrupt and
// Finish.
//
//   XmlTextRun run(writer);                // an element is open
//   XmlTextRun::Element item;
//   if (!run.BeginElement(item, tags, uri)) ...
//   char* const text = run.BeginValue(other, uri, size);
//   if (text != nullptr) run.EndValue(other, text, Write(text));
//   run.EndElement(item);
//   run.Finish();
//
// Each call does what the calls of the writer do, or answers null or false and has changed nothing:
// where there is no room, where a flush would be due, where a namespace is unknown. Then Interrupt
// makes the writer ready for its own calls, and Resume goes on behind them. An element that is
// begun and ended here needs no context in the writer, unless there is an interruption in it: then
// it gets one, as all those around it do.
//
// A run that an exception ends leaves in the stream what was put until then.
class XmlTextRun {
 public:
  // An element that is open; not copied, and at its place until its end.
  class Element {
   public:
    Element() = default;
    Element(const Element&) = delete;
    Element& operator=(const Element&) = delete;

   private:
    friend class XmlTextRun;

    Element* m_outer = nullptr;
    Element* m_inner = nullptr;  // while that is open
    const ElementTags* m_tags = nullptr;
    const std::string* m_uri = nullptr;
    const std::string* m_prefix = nullptr;
    CXmlWriter::CXmlWriterContext* m_context = nullptr;  // the writer's, where it has one
    bool m_isStartTagOpen = true;
    bool m_hasChildren = false;
  };

  // What is written by Begin... and the matching End... as one piece.
  explicit XmlTextRun(CXmlTextWriter& writer)
      : m_writer(writer), m_stream(*writer.m_pStream), m_innermost(&m_base) {
    m_base.m_context = writer.m_pContext;
    Resume();
  }
  XmlTextRun(const XmlTextRun&) = delete;
  XmlTextRun& operator=(const XmlTextRun&) = delete;
  ~XmlTextRun() { Commit(); }

  // ---- The writer's own calls ----

  // Behind this the writer is as it would be without the run.
  void Interrupt();
  // The innermost element is the one of before.
  void Resume();
  // The last call; the innermost element is the one that was open at first.
  void Finish() { Interrupt(); }

  bool WritesDefaultValues() const { return m_writer.m_bWriteDefaultValues; }
  std::string& GetScratch() { return m_writer.GetScratch().text; }

  // ---- Elements ----

  bool BeginElement(Element& element, const ElementTags& tags, const std::string& uri);
  // Always done.
  void EndElement(Element& element);

  // An element with nothing but a text: where the text goes, with room for so many bytes, or null.
  // EndValue makes the element of it; without that nothing has happened.
  char* BeginValue(const ElementTags& tags, const std::string& uri, std::size_t room);
  void EndValue(const ElementTags& tags, const char* text, char* end);

  // An attribute in no namespace, likewise.
  char* BeginAttribute(const AttributeTag& tag, std::size_t room);
  void EndAttribute(char* end) {
    *end = '"';
    m_out = end + 1;
  }

  // Text of the innermost element, likewise; not for an empty text.
  char* BeginText(std::size_t room);
  void EndText(char* end) {
    m_innermost->m_isStartTagOpen = false;
    m_out = end;
  }

  // Writes a text with few bytes to escape and answers its end; null for any other. Takes
  // kEntityRoom more than its size.
  template <bool inAttribute>
  char* PutText(char* out, std::string_view text) const {
    // May be a CDATA section.
    if (!inAttribute && !text.empty() && text[0] == '<') return nullptr;
    return m_writer.PutShortText<inAttribute>(out, text.data(), text.size());
  }

 private:
  void Commit();
  void EndInWriter(const Element& element);
  void Settle(const Element& element) const;
  std::size_t GetRoom() const { return static_cast<std::size_t>(m_limit - m_out); }
  // What the start of a child takes at most, and the child's end.
  std::size_t GetTagRoom(const SteppedText& tag, const std::string* prefix) const {
    return 1 + kTagEolRoom + m_indent + kShortIndent + tag.GetRoom() + GetPrefixSize(prefix);
  }
  char* PutStart(const ElementTags& tags, const std::string* prefix) const;

  CXmlTextWriter& m_writer;
  CTextStream& m_stream;
  char* m_begin = nullptr;  // what the stream does not know of
  char* m_out = nullptr;
  char* m_limit = nullptr;
  std::size_t m_indent = 0;               // of a child of the innermost element
  std::uint32_t m_elements = 0;           // that had no context, since the last interruption
  const std::string* m_prefix = nullptr;  // of the value that has begun
  Element m_base;
  Element* m_innermost;
};

// The start of a child, with what the innermost element needs in front of it.
inline char* XmlTextRun::PutStart(const ElementTags& tags, const std::string* prefix) const {
  char* out = m_out;
  if (m_innermost->m_isStartTagOpen) {
    *out++ = '>';
    out = m_writer.PutTagEol(out);
  }
  return CXmlTextWriter::PutTag(m_writer.PutIndent(out, m_indent), tags.GetStart(), 1, prefix);
}

inline bool XmlTextRun::BeginElement(Element& element, const ElementTags& tags,
                                     const std::string& uri) {
  const std::string* prefix = nullptr;
  if (!m_writer.FindElementPrefix(tags, uri, prefix)) return false;
  if (GetTagRoom(tags.GetStart(), prefix) > GetRoom()) return false;
  m_out = PutStart(tags, prefix) - 1;  // the tag is open yet
  m_innermost->m_isStartTagOpen = false;
  m_innermost->m_hasChildren = true;
  m_innermost->m_inner = &element;
  element.m_outer = m_innermost;
  element.m_tags = &tags;
  element.m_uri = &uri;
  element.m_prefix = prefix;
  m_innermost = &element;
  m_indent += m_writer.m_indentUnit;
  return true;
}

inline void XmlTextRun::EndElement(Element& element) {
  const bool isHere = element.m_context == nullptr &&
                      GetTagRoom(element.m_tags->GetEnd(), element.m_prefix) <= GetRoom();
  if (!isHere) return EndInWriter(element);
  m_innermost = element.m_outer;
  m_indent -= m_writer.m_indentUnit;
  char* out = m_out;
  if (element.m_isStartTagOpen) {
    *out++ = '/';
    *out++ = '>';
  } else {
    if (element.m_hasChildren) out = m_writer.PutIndent(out, m_indent);
    out = CXmlTextWriter::PutTag(out, element.m_tags->GetEnd(), 2, element.m_prefix);
  }
  m_out = m_writer.PutTagEol(out);
  ++m_elements;
}

inline char* XmlTextRun::BeginValue(const ElementTags& tags, const std::string& uri,
                                    std::size_t room) {
  if (!m_writer.FindElementPrefix(tags, uri, m_prefix)) return nullptr;
  const std::size_t size = GetTagRoom(tags.GetStart(), m_prefix) + room + tags.GetEnd().GetRoom() +
                           GetPrefixSize(m_prefix) + kTagEolRoom;
  return size <= GetRoom() ? PutStart(tags, m_prefix) : nullptr;
}

inline void XmlTextRun::EndValue(const ElementTags& tags, const char* text, char* end) {
  if (end == text) {
    end[-1] = '/';
    *end++ = '>';
  } else {
    end = CXmlTextWriter::PutTag(end, tags.GetEnd(), 2, m_prefix);
  }
  m_out = m_writer.PutTagEol(end);
  m_innermost->m_isStartTagOpen = false;
  m_innermost->m_hasChildren = true;
  ++m_elements;
}

inline char* XmlTextRun::BeginAttribute(const AttributeTag& tag, std::size_t room) {
  if (!m_innermost->m_isStartTagOpen) return nullptr;
  return tag.GetStart().GetRoom() + room + 1 <= GetRoom() ? tag.GetStart().Put(m_out) : nullptr;
}

inline char* XmlTextRun::BeginText(std::size_t room) {
  if (1 + room > GetRoom()) return nullptr;
  if (!m_innermost->m_isStartTagOpen) return m_out;
  *m_out = '>';
  return m_out + 1;
}

}  // namespace QzXmlLib16::detail
