#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

#include "qzxml/runtime/TextStream.h"
#include "qzxml/xml/ShortText.h"
#include "qzxml/xml/XmlTextScan.h"
#include "qzxml/xml/XmlTextWriter.h"
#include "qzxml/xml/XmlWriterContext.h"

// The pieces that tags are put together of: what the sources of the text writer share.
namespace QzXmlLib16 {
namespace detail {

inline constexpr std::uint32_t kFlushThreshold = 4096;  // bytes pending
inline constexpr std::size_t kLargestPiece = 4095;      // that is put together inside a block
inline constexpr std::size_t kShortIndent = 16;         // bytes that are copied, wanted or not
inline constexpr std::size_t kTagEolRoom = 2;           // likewise
inline constexpr std::size_t kEntityRoom = 32;  // bytes that the entities of a short text may add

inline char* PutText(char* out, std::string_view text) {
  return detail::CopyShort(out, text.data(), text.size());
}

// A literal, whose copy the compiler unrolls.
template <std::size_t size>
char* PutText(char* out, const char (&literal)[size]) {
  std::memcpy(out, literal, size - 1);
  return out + size - 1;
}

inline std::size_t GetPrefixSize(const std::string* prefix) {
  return prefix != nullptr ? prefix->size() + 1 : 0;
}

inline char* PutPrefix(char* out, const std::string* prefix) {
  if (prefix == nullptr) return out;
  out = PutText(out, *prefix);
  *out++ = ':';
  return out;
}

// What stands for a byte in a text, where that does not depend on options; empty for all others.
inline std::string_view EntityOf(char c) {
  switch (c) {
    case '&':
      return "&amp;";
    case '<':
      return "&lt;";
    case '>':
      return "&gt;";
    default:
      return std::string_view();
  }
}

}  // namespace detail

// What a line feed of element text becomes; empty when the EOL type is damaged.
inline std::string_view CXmlTextWriter::GetTextEol() const {
  switch (m_eolType) {
    case EOLType_CRLF:
      return "\r\n";
    case EOLType_LF:
      return "\n";
    default:
      return std::string_view();
  }
}

// Room for a piece that is committed as a whole and brings no flush; null where there is none.
inline char* CXmlTextWriter::ReserveInPlace(std::size_t size) {
  if (size > detail::kLargestPiece) return nullptr;
  if (m_bStreamFlushes && m_pStream->GetLength() + size >= detail::kFlushThreshold) return nullptr;
  return m_pStream->Reserve(static_cast<std::uint32_t>(size));
}

inline std::size_t CXmlTextWriter::GetIndentSize(std::uint32_t depth) const {
  return m_indentUnit * depth;
}

// size is a multiple of the indent characters, as m_indentsSize is. Takes the room of kShortIndent
// at least.
inline char* CXmlTextWriter::PutIndent(char* out, std::size_t size) const {
  std::memcpy(out, m_pIndents, detail::kShortIndent);
  if (size <= detail::kShortIndent) return out + size;
  for (; size > m_indentsSize; size -= m_indentsSize) {
    std::memcpy(out, m_pIndents, m_indentsSize);
    out += m_indentsSize;
  }
  return detail::CopyShort(out, m_pIndents, size);
}

// The line end behind a tag. Takes the room of kTagEolRoom.
inline char* CXmlTextWriter::PutTagEol(char* out) const {
  std::memcpy(out, m_tagEol, detail::kTagEolRoom);
  return out + m_tagEolSize;
}

// The prefix of an element inside the innermost one; false when its namespace is unknown.
inline bool CXmlTextWriter::FindElementPrefix(const detail::ElementTags& name,
                                              const std::string& uri, const std::string*& prefix) {
  const KnownPrefix& known = m_knownPrefixes[name.GetId() % m_knownPrefixes.size()];
  if (known.id != name.GetId() || known.state != m_pContext->GetNamespaceState()) {
    return SearchElementPrefix(name, uri, prefix);
  }
  prefix = known.prefix;
  return true;
}

// "<name>" and "</name>" with a prefix, or with none.
inline char* CXmlTextWriter::PutTag(char* out, const detail::SteppedText& tag, std::size_t mark,
                                    const std::string* prefix) {
  if (prefix == nullptr) return tag.Put(out);
  out = detail::PutText(out, tag.View().substr(0, mark));
  return detail::PutText(detail::PutPrefix(out, prefix), tag.View().substr(mark));
}

// Escapes a text with few entities and nothing more difficult: null for any other. Takes
// kEntityRoom more than size.
template <bool inAttribute>
inline char* CXmlTextWriter::PutShortText(char* out, const char* text, std::size_t size) const {
  std::size_t room = detail::kEntityRoom;
  for (;;) {
    const std::size_t clean = detail::CopyClean<inAttribute>(text, size, out);
    out += clean;
    if (clean == size) return out;
    std::string_view entity = detail::EntityOf(text[clean]);
    if (text[clean] == '\n') entity = inAttribute ? "&#xA;" : GetTextEol();
    if (inAttribute && text[clean] == '"') entity = "&quot;";
    if (entity.empty() || entity.size() > room) return nullptr;
    out = detail::PutText(out, entity);
    room -= entity.size();
    text += clean + 1;
    size -= clean + 1;
  }
}

}  // namespace QzXmlLib16
