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
//   if (!run.BeginElement(item, name)) ...
//   char* const text = run.BeginValue(other, size);
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
  // The name of elements, made once for many of them.
  class Name {
   public:
    Name(const char* name, const char* uri)
        : m_tags(ElementTags::InOneNamespace(name)),
          m_uri(uri),
          m_room(1 + 2 * kTagEolRoom + kShortIndent + m_tags.GetStart().GetRoom() +
                 m_tags.GetEnd().GetRoom()) {}

    const std::string& GetName() const { return m_tags.GetName(); }
    const std::string& GetUri() const { return m_uri; }
    const ElementTags& GetTags() const { return m_tags; }

   private:
    friend class XmlTextRun;

    ElementTags m_tags;
    std::string m_uri;
    std::size_t m_room;  // what an element takes beside its indent, its prefix and its text
  };

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
    const Name* m_name = nullptr;
    const std::string* m_prefix = nullptr;
    CXmlWriter::CXmlWriterContext* m_context = nullptr;  // the writer's, where it has one
    bool m_isStartTagOpen = true;
    bool m_hasChildren = false;
  };

  // Whether an element is open in the writer, as there has to be one.
  static bool IsPossible(const CXmlTextWriter& writer) { return writer.m_pContext != nullptr; }

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

  bool BeginElement(Element& element, const Name& name);
  // Always done.
  void EndElement(Element& element);

  // An element with nothing but a text: where the text goes, with room for so many bytes, or null.
  // EndValue makes the element of it; without that nothing has happened.
  char* BeginValue(const Name& name, std::size_t room);
  void EndValue(const Name& name, const char* text, char* end);

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
  bool FindPrefix(const Name& name, const std::string*& prefix) {
    return m_writer.FindElementPrefix(name.m_tags, name.m_uri, prefix);
  }
  bool HasRoom(const Name& name, const std::string* prefix, std::size_t more) const {
    return m_indent + name.m_room + 2 * GetPrefixSize(prefix) + more <= GetRoom();
  }
  char* PutStart(const Name& name, const std::string* prefix) const;

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
inline char* XmlTextRun::PutStart(const Name& name, const std::string* prefix) const {
  char* out = m_out;
  if (m_innermost->m_isStartTagOpen) {
    *out++ = '>';
    out = m_writer.PutTagEol(out);
  }
  out = m_writer.PutIndent(out, m_indent);
  return CXmlTextWriter::PutTag(out, name.m_tags.GetStart(), 1, prefix);
}

inline bool XmlTextRun::BeginElement(Element& element, const Name& name) {
  const std::string* prefix = nullptr;
  if (!FindPrefix(name, prefix) || !HasRoom(name, prefix, 0)) return false;
  m_out = PutStart(name, prefix) - 1;  // the tag is open yet
  m_innermost->m_isStartTagOpen = false;
  m_innermost->m_hasChildren = true;
  m_innermost->m_inner = &element;
  element.m_outer = m_innermost;
  element.m_name = &name;
  element.m_prefix = prefix;
  m_innermost = &element;
  m_indent += m_writer.m_indentUnit;
  return true;
}

inline void XmlTextRun::EndElement(Element& element) {
  const Name& name = *element.m_name;
  if (element.m_context != nullptr || !HasRoom(name, element.m_prefix, 0)) {
    return EndInWriter(element);
  }
  m_innermost = element.m_outer;
  m_indent -= m_writer.m_indentUnit;
  char* out = m_out;
  if (element.m_isStartTagOpen) {
    out = detail::PutText(out, "/>");
  } else {
    if (element.m_hasChildren) out = m_writer.PutIndent(out, m_indent);
    out = CXmlTextWriter::PutTag(out, name.m_tags.GetEnd(), 2, element.m_prefix);
  }
  m_out = m_writer.PutTagEol(out);
  ++m_elements;
}

inline char* XmlTextRun::BeginValue(const Name& name, std::size_t room) {
  if (!FindPrefix(name, m_prefix) || !HasRoom(name, m_prefix, room)) return nullptr;
  return PutStart(name, m_prefix);
}

inline void XmlTextRun::EndValue(const Name& name, const char* text, char* end) {
  if (end == text) {
    end[-1] = '/';
    *end++ = '>';
  } else {
    end = CXmlTextWriter::PutTag(end, name.m_tags.GetEnd(), 2, m_prefix);
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
