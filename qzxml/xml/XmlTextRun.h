#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

#include "qzxml/runtime/TextStream.h"
#include "qzxml/xml/XmlTextName.h"
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
  using Name = XmlTextName;

  // An element that is open; not copied, and at its place until its end.
  class Element {
   public:
    Element() {}
    Element(const Element&) = delete;
    Element& operator=(const Element&) = delete;

   private:
    friend class XmlTextRun;

    // Of an element that has begun.
    Element* m_outer;
    Element* m_inner;  // during an interruption
    const Name* m_name;
    CXmlWriter::CXmlWriterContext* m_context = nullptr;  // the writer's, where it has one
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
    m_isStartTagOpen = false;
    m_out = end;
  }

  // Whether so much is in the stream that the objects behind it are none that have just been made.
  bool IsLong() const {
    return m_writer.m_bStreamFlushes ||
           m_stream.GetLength() + static_cast<std::size_t>(m_out - m_begin) >= kLong;
  }

  // Writes a text with few bytes to escape and answers its end; null for any other. Takes
  // kEntityRoom more than its size.
  template <bool inAttribute>
  char* PutText(char* out, std::string_view text) const {
    const std::size_t clean = CopyClean<inAttribute>(text.data(), text.size(), out);
    if (clean == text.size()) return out + clean;
    // May be a CDATA section.
    if (!inAttribute && text[0] == '<') return nullptr;
    return PutEscapedText<inAttribute>(out + clean, text.substr(clean));
  }

 private:
  static constexpr std::size_t kLong = 32768;  // bytes
  static const std::string kNoUri;             // that of no name

  void Commit();
  template <bool inAttribute>
  char* PutEscapedText(char* out, std::string_view text) const;
  void EndInWriter(const Element& element);
  void EndOtherElement(const Element& element);
  template <typename PutEnd>
  void PutElementEnd(const Element& element, PutEnd putEnd);
  void Settle(const Element& element) const;
  bool FindPrefix(const Name& name, const std::string*& prefix);
  char* BeginOtherValue(const Name& name, std::size_t room);
  bool BeginOtherElement(Element& element, const Name& name);
  void EnterElement(Element& element, const Name& name);
  void LeaveElement(char* out);
  void SetIndent(std::size_t indent);
  char* PutLongIndent(char* out) const;

  // Most elements are in the namespace that takes no prefix, and nearly all others in one whose
  // prefix is at hand.
  bool IsPlain(const Name& name) const { return name.GetShortUri() == m_plainUri; }
  const XmlTextPrefix& PrefixOf(const Name& name) const {
    return m_prefixes[name.GetPrefixPlace()];
  }
  bool HasPrefix(const Name& name) const { return name.GetShortUri() == PrefixOf(name).uri; }
  std::size_t GetRoom() const { return static_cast<std::size_t>(m_limit - m_out); }
  bool HasRoom(const Name& name, std::size_t more) const {
    return m_indent + name.GetRoom() + more <= GetRoom();
  }
  // The same for a name with a short URI, where there is room for any such; else yet to be seen.
  bool HasRoomForShort(std::size_t more) const {
    const std::uintptr_t room = m_nearLimit - reinterpret_cast<std::uintptr_t>(m_out);
    return static_cast<std::ptrdiff_t>(more) <= static_cast<std::ptrdiff_t>(room);
  }
  char* PutIndent(char* out) const {
    std::memcpy(out, m_indents, kShortIndent);
    return m_indent <= kShortIndent ? out + m_indent : PutLongIndent(out);
  }
  char* PutTagEol(char* out) const {
    std::memcpy(out, m_tagEol, kTagEolRoom);
    return out + m_tagEolSize;
  }
  char* PutGap() const;
  static char* PutOtherEnd(char* out, const Name& name, const std::string* prefix);

  CXmlTextWriter& m_writer;
  CTextStream& m_stream;
  char* m_begin = nullptr;  // what the stream does not know of
  char* m_out = nullptr;
  char* m_limit = nullptr;
  std::uintptr_t m_nearLimit = 0;           // m_limit, less the indent and any short name
  std::size_t m_indent = 0;                 // of a child of the innermost element
  bool m_isStartTagOpen = false;            // of the innermost element
  bool m_hasChildren = false;               // likewise; those around it have some
  char m_tagEol[kTagEolRoom] = {};          // as in the writer
  std::uint32_t m_elements = 0;             // that had no context, since the last interruption
  std::size_t m_tagEolSize = 0;             // as in the writer
  const char* m_indents = nullptr;          // likewise
  std::uint64_t m_namespaceState = 0;       // of the writer's context
  const std::string* m_plainUri = &kNoUri;  // a namespace without a prefix there
  XmlTextPrefix m_prefixes[Name::kPrefixPlaces];  // at hand there, at the places of the names
  const std::string* m_otherPrefix = nullptr;     // of the value that has begun, if it is none
  Element m_base;
  Element* m_innermost;
};

}  // namespace QzXmlLib16::detail
