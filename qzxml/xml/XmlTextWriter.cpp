#include "qzxml/xml/XmlTextWriter.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <utility>

#include "qzxml/platform/Assert.h"
#include "qzxml/runtime/QzException.h"
#include "qzxml/runtime/TextStream.h"
#include "qzxml/xml/Messages.h"
#include "qzxml/xml/XmlNamespaces.h"
#include "qzxml/xml/XmlTextScan.h"
#include "qzxml/xml/XmlWriterContext.h"

// How a document comes about.
//
// A start tag is left open, "<name", until it is known what follows: attributes go in; a child or a
// text ends it with ">"; an end tag right behind it makes it "/>". Every line end stands behind a
// tag and every indent in front of one, so that an element with nothing but text stays on one line:
// a text ends the start tag without a line end, and the end tag is indented only when the element
// counts children.
//
// Namespaces in force belong to the open elements (XmlWriterContext). The root begins with those of
// the writer and declares them. An element or attribute in an unknown namespace gets a generated
// alias, which is declared in place and entered in its own scope: a sibling knows nothing of it and
// declares the namespace again, with the same alias.
//
// Tags are put together in the last block of the stream, or in m_strPiece where they do not fit in
// what is left of it; texts are escaped from block to block.

namespace QzXmlLib16 {
namespace {

constexpr std::uint32_t kFlushThreshold = 4096;  // bytes pending
constexpr std::size_t kLargestPiece = 4095;      // that is put together inside a block
constexpr std::size_t kPreparedIndents = 128;    // bytes
constexpr char kCDataBegin[] = "<![CDATA[";

char* PutText(char* out, const std::string& text) {
  return detail::CopyShort(out, text.data(), text.size());
}

// A literal, whose copy the compiler unrolls.
template <std::size_t size>
char* PutText(char* out, const char (&literal)[size]) {
  std::memcpy(out, literal, size - 1);
  return out + size - 1;
}

bool IsMarkedAsCData(const std::string& text) {
  return text.compare(0, sizeof(kCDataBegin) - 1, kCDataBegin) == 0;
}

const std::string& SchemaInstanceNamespace() {
  static const std::string name(kXmlSchemaInstanceNamespace);
  return name;
}

}  // namespace

CXmlTextWriter::CXmlTextWriter(CTextStream* stream)
    : CXmlWriter("CXmlTextWriter"),
      m_eolType(EOLType_LF),
      m_bWriteDefaultValues(false),
      m_strEol("\n"),
      m_bFormatted(true),
      m_pStream(stream) {
  SetIndentChars("\t");
}

CXmlTextWriter::~CXmlTextWriter() = default;

// An element that has not become the innermost one yet: given back when its start tag fails.
class CXmlTextWriter::NewElement {
 public:
  NewElement(CXmlTextWriter* writer, const std::string& name, const std::string& uri)
      : m_pWriter(writer), m_pContext(writer->OpenContext(name, uri)) {}
  ~NewElement() {
    if (m_pContext != nullptr) m_pWriter->CloseContext(m_pContext);
  }
  NewElement(const NewElement&) = delete;
  NewElement& operator=(const NewElement&) = delete;

  CXmlWriterContext* operator->() const { return m_pContext; }
  CXmlWriterContext* Begin() { return std::exchange(m_pContext, nullptr); }

 private:
  CXmlTextWriter* m_pWriter;
  CXmlWriterContext* m_pContext;
};

// Puts what fill makes, at most size bytes: fill gets the place to write to and answers its end.
template <typename Fill>
void CXmlTextWriter::PutPiece(std::size_t size, Fill fill) {
  char* out =
      size <= kLargestPiece ? m_pStream->Reserve(static_cast<std::uint32_t>(size)) : nullptr;
  if (out != nullptr) {
    m_pStream->Commit(static_cast<std::uint32_t>(fill(out) - out));
    return;
  }
  if (m_strPiece.size() < size) m_strPiece.resize(size);
  out = &m_strPiece[0];
  m_pStream->Put(out, static_cast<std::size_t>(fill(out) - out));
}

// Puts a text escaped, up to its first zero byte.
template <bool inAttribute>
void CXmlTextWriter::PutEscaped(const char* text, std::size_t size) {
  while (size > 0) {
    char* const out = m_pStream->Reserve(1);
    const std::size_t room = std::min<std::size_t>(size, m_pStream->GetFree());
    const std::size_t clean = detail::CopyClean<inAttribute>(text, room, out);
    m_pStream->Commit(static_cast<std::uint32_t>(clean));
    text += clean;
    size -= clean;
    if (clean == room) continue;
    if (*text == '\0') return;
    PutEscape(*text, inAttribute);
    ++text;
    --size;
  }
}

void CXmlTextWriter::PutEscape(char c, bool inAttribute) {
  switch (c) {
    case '\n':
      if (inAttribute) {
        m_pStream->Put("&#xA;");
      } else {
        PutTextEol();
      }
      break;
    case '\r':
      QZ_ASSERT_TEXT(AreDocumentValues(), "false");
      break;
    case '"':
      m_pStream->Put("&quot;");
      break;
    case '&':
      m_pStream->Put("&amp;");
      break;
    case '<':
      m_pStream->Put("&lt;");
      break;
    case '>':
      m_pStream->Put("&gt;");
      break;
    default:
      m_pStream->Put(c);
      break;
  }
}

// A line feed of element text.
void CXmlTextWriter::PutTextEol() {
  switch (m_eolType) {
    case EOLType_CRLF:
      m_pStream->Put("\r\n");
      break;
    case EOLType_LF:
      m_pStream->Put('\n');
      break;
    default:
      throw CQzException(Messages::kInvalidEolType);
  }
}

void CXmlTextWriter::FlushWhenDue() {
  if (m_pStream->GetLength() >= kFlushThreshold) m_pStream->Flush();
}

std::size_t CXmlTextWriter::GetIndentSize(std::uint32_t depth) const {
  return m_bFormatted ? m_strIndentChars.size() * depth : 0;
}

// size is a multiple of the indent characters, as m_strIndents is.
char* CXmlTextWriter::PutIndent(char* out, std::size_t size) const {
  for (; size > m_strIndents.size(); size -= m_strIndents.size()) out = PutText(out, m_strIndents);
  return detail::CopyShort(out, m_strIndents.data(), size);
}

char* CXmlTextWriter::PutPrefix(char* out, const std::string* prefix) {
  if (prefix == nullptr) return out;
  out = PutText(out, *prefix);
  *out++ = ':';
  return out;
}

// Behind a tag.
char* CXmlTextWriter::PutEol(char* out) const {
  return m_bFormatted ? PutText(out, m_strEol) : out;
}

// Meant: the URI goes out as it stands.
void CXmlTextWriter::PutDeclaration(const std::string* alias, const std::string& uri) {
  m_pStream->Put(" xmlns");
  if (alias != nullptr) {
    m_pStream->Put(':');
    m_pStream->Put(*alias);
  }
  m_pStream->Put("=\"");
  m_pStream->Put(uri);
  m_pStream->Put('"');
}

void CXmlTextWriter::PutRootDeclarations() {
  if (!GetRootDefaultNamespace().empty()) PutDeclaration(nullptr, GetRootDefaultNamespace());
  for (const auto& [uri, alias] : GetRootNamespaceMap()) {
    if (!IsXmlNamespace(uri)) PutDeclaration(&alias, uri);
  }
}

// The alias of a namespace on the open start tag, made and declared there when it is unknown.
const std::string* CXmlTextWriter::GetAttributeAlias(const std::string& uri, const char* behind) {
  const std::string* alias = m_pContext->FindAlias(uri);
  if (alias != nullptr) return alias;
  m_pContext->AddNamespaceMapValue(uri, m_pContext->GenerateAlias());
  alias = m_pContext->FindAlias(uri);
  PutDeclaration(alias, uri);
  m_pStream->Put(behind);
  return alias;
}

void CXmlTextWriter::SetFormatted(bool formatted) {
  QZ_ASSERT_TEXT(m_pContext == nullptr, "m_pContext == 0");
  m_bFormatted = formatted;
}

void CXmlTextWriter::SetEOLType(EOLType type) {
  switch (type) {
    case EOLType_CRLF:
      m_strEol = "\r\n";
      break;
    case EOLType_LF:
      m_strEol = "\n";
      break;
    default:
      throw CQzException(Messages::kInvalidEolType);
  }
  m_eolType = type;
}

void CXmlTextWriter::SetIndentChars(const char* chars) {
  SetIndentChars(std::string(chars != nullptr ? chars : ""));
}

void CXmlTextWriter::SetIndentChars(const std::string& chars) {
  m_strIndentChars = chars;
  m_strIndents = chars;
  if (chars.empty()) return;
  while (m_strIndents.size() + chars.size() <= kPreparedIndents) m_strIndents += m_strIndentChars;
}

void CXmlTextWriter::StartDocument() {
  CXmlWriter::StartDocument();
  m_pStream->Start();
}

void CXmlTextWriter::EndDocument() {
  m_pStream->End();
  CXmlWriter::EndDocument();
}

void CXmlTextWriter::WriteXmlDeclaration() {
  m_pStream->Put("<?xml version=\"1.0\"");
  switch (m_pStream->GetEncoding()) {
    case XmlEncoding_UTF8:
      m_pStream->Put(" encoding=\"UTF-8\"");
      break;
    case XmlEncoding_UTF16:
      m_pStream->Put(" encoding=\"UTF-16\"");
      break;
    default:
      break;
  }
  m_pStream->Put("?>");
  m_pStream->Put(m_strEol);
  FlushWhenDue();
  QZ_ASSERT_TEXT(m_pContext == nullptr, "m_pContext == 0");
}

void CXmlTextWriter::WriteDirective(const std::string& text) {
  if (m_pContext != nullptr) {
    throw CQzException("Headed directives must appear before an Element has been added.");
  }
  m_pStream->Put(text);
  m_pStream->Put(m_strEol);
  FlushWhenDue();
}

void CXmlTextWriter::WriteComment(const std::string& text) {
  m_pStream->Put("<!--");
  PutEscaped<false>(text.data(), text.size());
  m_pStream->Put("-->");
  m_pStream->Put(m_strEol);
  FlushWhenDue();
}

void CXmlTextWriter::WriteProcessingInstruction(const std::string& text) {
  m_pStream->Put(text);
  m_pStream->Put(m_strEol);
  m_pStream->Put(m_strEol);
  FlushWhenDue();
}

void CXmlTextWriter::WriteInlineSchema(const std::string& text) {
  m_pStream->Put(' ');
  m_pStream->Put(m_strEol);
  m_pStream->Put(text);
  m_pStream->Put(m_strEol);
  FlushWhenDue();
}

void CXmlTextWriter::WriteStartElement(const std::string& name, const std::string& uri) {
  CloseOpenStartTag();
  const bool isRoot = m_pContext == nullptr;
  NewElement element(this, name, uri);
  const std::string* prefix = nullptr;
  const bool declare = !element->FindPrefix(prefix);
  if (declare) {
    element->AddNamespaceMapValue(uri, element->GenerateAlias());
    element->FindPrefix(prefix);
  }
  const std::size_t indent = GetIndentSize(element->GetDepth());
  const std::size_t prefixSize = prefix != nullptr ? prefix->size() + 1 : 0;
  PutPiece(indent + 1 + prefixSize + name.size(), [&](char* out) {
    out = PutIndent(out, indent);
    *out++ = '<';
    return PutText(PutPrefix(out, prefix), name);
  });
  if (declare) PutDeclaration(prefix, uri);
  if (isRoot) PutRootDeclarations();
  FlushWhenDue();
  m_pContext = element.Begin();
}

void CXmlTextWriter::WriteText(const std::string& text, ItemType, bool isDefault) {
  QZ_ASSERT_TEXT(m_pContext != nullptr, "m_pContext != 0");
  if (m_pContext == nullptr) return;
  if (text.empty() || (isDefault && !m_bWriteDefaultValues)) return;
  if (m_pContext->IsStartTagOpen()) {
    m_pStream->Put('>');
    m_pContext->SetStartTagOpen(false);
  }
  if (IsMarkedAsCData(text)) {
    m_pStream->Put(text);
  } else {
    PutEscaped<false>(text.data(), text.size());
  }
  FlushWhenDue();
}

void CXmlTextWriter::WriteEndElement() {
  QZ_ASSERT_TEXT(m_pContext != nullptr, "m_pContext != 0");
  if (m_pContext == nullptr) return;
  const std::size_t eolSize = m_bFormatted ? m_strEol.size() : 0;
  if (m_pContext->IsStartTagOpen()) {
    PutPiece(2 + eolSize, [&](char* out) { return PutEol(PutText(out, "/>")); });
  } else {
    // Meant: the default namespace may have changed since the start tag, and then the two differ.
    const std::string* prefix = nullptr;
    if (!m_pContext->FindPrefix(prefix)) {
      prefix = &m_pContext->GetNamespaceMapValue(m_pContext->GetNamespace());
    }
    const std::string& name = m_pContext->GetName();
    const std::size_t prefixSize = prefix != nullptr ? prefix->size() + 1 : 0;
    const std::size_t indent =
        m_pContext->GetChildCount() != 0 ? GetIndentSize(m_pContext->GetDepth()) : 0;
    PutPiece(indent + 2 + prefixSize + name.size() + 1 + eolSize, [&](char* out) {
      out = PutText(PutIndent(out, indent), "</");
      out = PutText(PutPrefix(out, prefix), name);
      *out++ = '>';
      return PutEol(out);
    });
  }
  FlushWhenDue();
  m_pContext = CloseContext(m_pContext);
}

void CXmlTextWriter::WriteAttribute(const std::string& name, const std::string& uri,
                                    const std::string& value, ItemType) {
  RequireOpenStartTag();
  const std::string* prefix = nullptr;
  if (!uri.empty()) {
    prefix = GetAttributeAlias(uri, "");
    QZ_ASSERT_TEXT(!prefix->empty(),
                   "m_pContext->GetNamespaceMapValue(strNamespace).length() != 0");
  }
  const std::size_t prefixSize = prefix != nullptr ? prefix->size() + 1 : 0;
  PutPiece(1 + prefixSize + name.size() + 2, [&](char* out) {
    *out++ = ' ';
    return PutText(PutText(PutPrefix(out, prefix), name), "=\"");
  });
  PutEscaped<true>(value.data(), value.size());
  m_pStream->Put('"');
  FlushWhenDue();
}

void CXmlTextWriter::WriteXsiType(const std::string& typeUri, const std::string& typeName,
                                  ItemType type) {
  static const std::string attribute("type");
  RequireOpenStartTag();
  if (typeUri.empty() || typeUri == m_pContext->GetDefaultNamespace()) {
    WriteAttribute(attribute, SchemaInstanceNamespace(), typeName, type);
    return;
  }
  // Meant: the blank behind a declaration is followed by the one of the attribute.
  const std::string* alias = GetAttributeAlias(typeUri, " ");
  QZ_ASSERT_TEXT(!alias->empty(),
                 "m_pContext->GetNamespaceMapValue(strElementNamespace).length() != 0");
  m_strQName.assign(*alias).append(1, ':').append(typeName);
  WriteAttribute(attribute, SchemaInstanceNamespace(), m_strQName, type);
}

void CXmlTextWriter::WriteXsiNil() {
  static const std::string attribute("nil");
  static const std::string value("true");
  WriteAttribute(attribute, SchemaInstanceNamespace(), value, ItemType_boolean);
}

void CXmlTextWriter::CloseOpenStartTag() {
  if (m_pContext == nullptr) return;
  m_pContext->AddChild();
  if (!m_pContext->IsStartTagOpen()) return;
  m_pContext->SetStartTagOpen(false);
  PutPiece(1 + m_strEol.size(), [&](char* out) {
    *out++ = '>';
    return PutEol(out);
  });
}

void CXmlTextWriter::WriteRawLine(const std::string& text) {
  m_pStream->Put(text);
  if (m_bFormatted) m_pStream->Put(m_strEol);
}

}  // namespace QzXmlLib16
