#include "qzxml/xml/XmlTextWriter.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <typeinfo>
#include <utility>

#include "qzxml/platform/Assert.h"
#include "qzxml/runtime/QzException.h"
#include "qzxml/runtime/TextStream.h"
#include "qzxml/xml/Messages.h"
#include "qzxml/xml/XmlNamespaces.h"
#include "qzxml/xml/XmlTextPieces.h"
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

CInstanceClass s_class("CXmlTextWriter");

using namespace detail;

constexpr char kCDataBegin[] = "<![CDATA[";

bool IsMarkedAsCData(const std::string& text) {
  return text[0] == '<' && text.compare(0, sizeof(kCDataBegin) - 1, kCDataBegin) == 0;
}

const std::string& SchemaInstanceNamespace() {
  static const std::string name(kXmlSchemaInstanceNamespace);
  return name;
}

}  // namespace

// ---- Putting bytes ----

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

// Where to put a piece of at most size bytes together; EndPiece takes it from there.
inline char* CXmlTextWriter::BeginPiece(std::size_t size) {
  if (size <= kLargestPiece) {
    char* const out = m_pStream->Reserve(static_cast<std::uint32_t>(size));
    if (out != nullptr) return out;
  }
  if (m_strPiece.size() < size) m_strPiece.resize(size);
  return &m_strPiece[0];
}

inline void CXmlTextWriter::EndPiece(const char* begin, const char* end) {
  const auto size = static_cast<std::size_t>(end - begin);
  if (begin != m_strPiece.data()) {
    m_pStream->Commit(static_cast<std::uint32_t>(size));
  } else {
    m_pStream->Put(begin, size);
  }
}

template <std::size_t size>
inline void CXmlTextWriter::PutLiteral(const char (&literal)[size]) {
  m_pStream->Put(literal, size - 1);
}

// Puts a text escaped, up to its first zero byte.
template <bool inAttribute>
inline void CXmlTextWriter::PutEscaped(const std::string& value) {
  const char* text = value.data();
  std::size_t size = value.size();
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
        PutLiteral("&#xA;");
      } else {
        const std::string_view eol = GetTextEol();
        if (eol.empty()) throw CQzException(Messages::kInvalidEolType);
        m_pStream->Put(eol.data(), eol.size());
      }
      break;
    case '\r':
      QZ_ASSERT_TEXT(AreDocumentValues(), "false");
      break;
    case '"':
      PutLiteral("&quot;");
      break;
    default: {
      const std::string_view entity = EntityOf(c);
      m_pStream->Put(entity.data(), entity.size());
      break;
    }
  }
}

// A stream that is only a buffer does nothing in its Flush, and is not asked.
inline void CXmlTextWriter::FlushWhenDue() {
  if (m_bStreamFlushes && m_pStream->GetLength() >= kFlushThreshold) m_pStream->Flush();
}

// Makes what is written between elements, by the options.
void CXmlTextWriter::PrepareFormat() {
  m_tagEolSize = m_bFormatted ? m_strEol.size() : 0;
  std::memcpy(m_tagEol, m_strEol.data(), m_strEol.size());
  m_indentUnit = m_bFormatted ? m_strIndentChars.size() : 0;
}

// Meant: the URI goes out as it stands.
void CXmlTextWriter::PutDeclaration(const std::string* alias, const std::string& uri) {
  PutLiteral(" xmlns");
  if (alias != nullptr) {
    m_pStream->Put(':');
    m_pStream->Put(*alias);
  }
  PutLiteral("=\"");
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

// ---- Construction and options ----

CXmlTextWriter::CXmlTextWriter(CTextStream* stream)
    : CXmlWriter(s_class),
      m_bWriteDefaultValues(false),
      m_strIndentChars(1, '\t'),
      m_strEol("\n"),
      m_eolType(EOLType_LF),
      m_bFormatted(true),
      m_tagEol(),
      m_bStreamFlushes(typeid(*stream) != typeid(CTextStream)),
      m_pStream(stream),
      m_indentsSize(sizeof m_indents),
      m_pIndents(m_indents) {
  std::memset(m_indents, '\t', sizeof m_indents);
  PrepareFormat();
}

CXmlTextWriter::~CXmlTextWriter() = default;

void CXmlTextWriter::SetFormatted(bool formatted) {
  QZ_ASSERT_TEXT(m_pContext == nullptr, "m_pContext == 0");
  m_bFormatted = formatted;
  PrepareFormat();
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
  PrepareFormat();
}

void CXmlTextWriter::SetIndentChars(const char* chars) {
  SetIndentChars(std::string(chars != nullptr ? chars : ""));
}

void CXmlTextWriter::SetIndentChars(const std::string& chars) {
  m_strIndentChars = chars;
  const std::size_t size = chars.size();
  m_indentsSize = size;
  m_pIndents = m_strIndentChars.data();
  if (size <= sizeof(m_indents)) {
    m_indentsSize = size == 0 ? 0 : sizeof(m_indents) / size * size;
    std::memcpy(m_indents, chars.data(), size);
    for (std::size_t done = size; done < m_indentsSize; done *= 2) {
      std::memcpy(m_indents + done, m_indents, std::min(done, m_indentsSize - done));
    }
    m_pIndents = m_indents;
  }
  PrepareFormat();
}

void CXmlTextWriter::StartDocument() {
  CXmlWriter::StartDocument();
  m_pStream->Start();
  // A derived class may have operations of its own for what the short ways leave out.
  if (typeid(*this) == typeid(CXmlTextWriter)) SetPlainTextWriter(this);
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
  PutEscaped<false>(text);
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
  CXmlWriterContext* const parent = m_pContext;
  if (parent != nullptr) parent->AddChild();
  const bool closeParent = parent != nullptr && parent->IsStartTagOpen();
  NewElement element(this, name, uri);
  const std::string* prefix = nullptr;
  const bool declare = !element->FindPrefix(prefix);
  if (declare) {
    element->AddNamespaceMapValue(uri, element->GenerateAlias());
    element->FindPrefix(prefix);
  }
  const std::size_t indent = GetIndentSize(element->GetDepth());
  char* const begin =
      BeginPiece(1 + kTagEolRoom + indent + kShortIndent + 1 + GetPrefixSize(prefix) + name.size());
  char* out = begin;
  if (closeParent) {
    *out++ = '>';
    out = PutTagEol(out);
  }
  out = PutIndent(out, indent);
  *out++ = '<';
  EndPiece(begin, PutText(PutPrefix(out, prefix), name));
  if (parent != nullptr) parent->SetStartTagOpen(false);
  if (declare) PutDeclaration(prefix, uri);
  if (parent == nullptr) {
    PutRootDeclarations();
    m_knownPrefixes = {};
  }
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
    PutEscaped<false>(text);
  }
  FlushWhenDue();
}

void CXmlTextWriter::WriteEndElement() {
  QZ_ASSERT_TEXT(m_pContext != nullptr, "m_pContext != 0");
  if (m_pContext == nullptr) return;
  if (m_pContext->IsStartTagOpen()) {
    char* const begin = BeginPiece(2 + kTagEolRoom);
    EndPiece(begin, PutTagEol(PutText(begin, "/>")));
  } else {
    PutEndTag();
  }
  FlushWhenDue();
  m_pContext = CloseContext(m_pContext);
}

inline void CXmlTextWriter::PutEndTag() {
  // Meant: the default namespace may have changed since the start tag, and then the two differ.
  const std::string* prefix = nullptr;
  if (!m_pContext->FindPrefix(prefix)) {
    prefix = &m_pContext->GetNamespaceMapValue(m_pContext->GetNamespace());
  }
  const std::string_view name = m_pContext->GetName();
  const bool hasChildren = m_pContext->GetChildCount() != 0;
  const std::size_t indent = hasChildren ? GetIndentSize(m_pContext->GetDepth()) : 0;
  char* const begin =
      BeginPiece(indent + kShortIndent + 2 + GetPrefixSize(prefix) + name.size() + 1 + kTagEolRoom);
  char* out = PutText(PutIndent(begin, indent), "</");
  out = PutText(PutPrefix(out, prefix), name);
  *out++ = '>';
  EndPiece(begin, PutTagEol(out));
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
  const std::size_t nameSize = 1 + GetPrefixSize(prefix) + name.size() + 2;
  const bool isShort = nameSize + value.size() < kLargestPiece;
  char* const begin = BeginPiece(isShort ? nameSize + value.size() + 1 : nameSize);
  *begin = ' ';
  char* const out = PutText(PutText(PutPrefix(begin + 1, prefix), name), "=\"");
  if (isShort && detail::CopyClean<true>(value.data(), value.size(), out) == value.size()) {
    out[value.size()] = '"';
    EndPiece(begin, out + value.size() + 1);
  } else {
    EndPiece(begin, out);
    PutEscaped<true>(value);
    m_pStream->Put('"');
  }
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
  m_pStream->Put('>');
  if (m_bFormatted) m_pStream->Put(m_strEol);
  m_pContext->SetStartTagOpen(false);
}

void CXmlTextWriter::WriteRawLine(const std::string& text) {
  m_pStream->Put(text);
  if (m_bFormatted) m_pStream->Put(m_strEol);
}

}  // namespace QzXmlLib16
