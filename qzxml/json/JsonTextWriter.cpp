#include "qzxml/json/JsonTextWriter.h"

#include <cstring>

#include "qzxml/json/JsonArrayState.h"
#include "qzxml/platform/Assert.h"
#include "qzxml/runtime/Functions.h"
#include "qzxml/runtime/QzException.h"
#include "qzxml/runtime/TextStream.h"
#include "qzxml/xml/Messages.h"
#include "qzxml/xml/XmlNamespaces.h"
#include "qzxml/xml/XmlWriterContext.h"

namespace QzXmlLib16 {
namespace {

CInstanceClass s_class("CJsonTextWriter");

constexpr std::uint32_t kFlushSize = 4096;

// Kinds whose lexical form is written without quotes.
bool IsBare(ItemType type) {
  return (type >= ItemType_i1 && type <= ItemType_r8) ||
         (type >= ItemType_boolean && type <= ItemType_integer);
}

// What a string's text does not keep as it stands: the characters below the blank, without those
// that JSON has short escapes for and which pass raw.
bool IsFiltered(char c) {
  return static_cast<unsigned char>(c) < 0x20 && c != '\b' && c != '\t' && c != '\f';
}

}  // namespace

// A context that is given back unless it becomes the innermost one.
class CJsonTextWriter::CNewElement {
 public:
  CNewElement(CJsonTextWriter& writer, const std::string& name, const std::string& uri)
      : m_writer(writer), m_pContext(writer.OpenContext(name, uri)) {}
  CNewElement(const CNewElement&) = delete;
  CNewElement& operator=(const CNewElement&) = delete;
  ~CNewElement() {
    if (m_pContext != nullptr) m_writer.CloseContext(m_pContext);
  }

  CXmlWriterContext& Get() { return *m_pContext; }
  void Begin() {
    m_writer.m_pContext = m_pContext;
    m_pContext = nullptr;
  }

 private:
  CJsonTextWriter& m_writer;
  CXmlWriterContext* m_pContext;
};

CJsonTextWriter::CJsonTextWriter(CTextStream* stream)
    : CXmlWriter(s_class),
      m_strIndentChars("\t"),
      m_strEol("\n"),
      m_eolType(EOLType_LF),
      m_roundTrip(JsonRoundTrip_Full),
      m_bFormatted(true),
      m_pStream(stream),
      m_bNamePending(false) {}

CJsonTextWriter::~CJsonTextWriter() = default;

// ---- Options ----

void CJsonTextWriter::SetFormatted(bool formatted) {
  QZ_ASSERT_TEXT(m_pContext == nullptr, "m_pContext == 0");
  m_bFormatted = formatted;
}

void CJsonTextWriter::SetEOLType(EOLType type) {
  if (type != EOLType_CRLF && type != EOLType_LF) throw CQzException(Messages::kInvalidEolType);
  m_eolType = type;
  m_strEol = type == EOLType_CRLF ? "\r\n" : "\n";
}

void CJsonTextWriter::SetIndentChars(const char* chars) {
  m_strIndentChars = chars != nullptr ? chars : "";
}

// ---- The document ----

void CJsonTextWriter::StartDocument() { m_pStream->Start(); }

void CJsonTextWriter::EndDocument() {
  m_pStream->End();
  CXmlWriter::EndDocument();
}

void CJsonTextWriter::WriteDocumentStart() {
  m_pStream->Put('{');
  if (m_bFormatted) PutEol();
  FlushWhenDue();
  QZ_ASSERT_TEXT(m_pContext == nullptr, "m_pContext == 0");
}

void CJsonTextWriter::WriteDocumentEnd() {
  if (m_bFormatted) PutEol();
  m_pStream->Put('}');
}

void CJsonTextWriter::WriteComment(const std::string& text) {
  m_pStream->Put("/* ", 3);
  PutStringContent(text);
  m_pStream->Put(" */", 3);
  PutEol();
  FlushWhenDue();
}

void CJsonTextWriter::WriteProcessingInstruction(const std::string&) {}

void CJsonTextWriter::WriteInlineSchema(const std::string&) {}

void CJsonTextWriter::WriteXsiNil() {}

// ---- Elements ----

void CJsonTextWriter::WriteStartElement(const std::string& name, const std::string& uri) {
  bool writeKey = true;
  if (m_pContext != nullptr) {
    writeKey = m_pContext->GetCollectionState() != JsonArrayState_Open;
    PutMemberSeparator(*m_pContext);
  }
  CNewElement element(*this, name, uri);
  CXmlWriterContext& context = element.Get();
  if (m_pContext == nullptr) context.SetDepth(1);
  if (m_bFormatted) PutIndent(context.GetDepth());
  if (!writeKey) {
    m_bNamePending = true;
  } else if (m_roundTrip != JsonRoundTrip_Full) {
    PutKey("", nullptr, name);
    m_bNamePending = true;
  } else {
    PutQualifiedKey(context, name, uri);
  }
  FlushWhenDue();
  element.Begin();
}

// The key of an element with its alias and, on the root, what it declares.
void CJsonTextWriter::PutQualifiedKey(CXmlWriterContext& context, const std::string& name,
                                      const std::string& uri) {
  const bool isRoot = m_pContext == nullptr;
  if (uri.empty() || uri == context.GetDefaultNamespace()) {
    PutKey("", nullptr, name);
    m_bNamePending = true;
  } else {
    const std::string* alias = context.FindAlias(uri);
    const bool declare = alias == nullptr;
    if (declare) {
      if (!isRoot) throw CQzException(FormatString("Unknown Namespace: %s.", name.c_str()));
      context.AddNamespaceMapValue(uri, context.GenerateAlias());
      alias = context.FindAlias(uri);
    }
    PutKey("", alias, name);
    m_bNamePending = true;
    if (declare) PutDeclaration(context, alias, uri);
  }
  if (isRoot) PutRootDeclarations(context);
}

// In the ascending order of the URIs.
void CJsonTextWriter::PutRootDeclarations(CXmlWriterContext& context) {
  if (!GetRootDefaultNamespace().empty()) {
    PutDeclaration(context, nullptr, GetRootDefaultNamespace());
  }
  for (const auto& [uri, alias] : GetRootNamespaceMap()) {
    if (!IsXmlNamespace(uri)) PutDeclaration(context, &alias, uri);
  }
}

// A member "@xmlns:alias", or "@xmlns" for no alias. Meant: neither text is filtered.
void CJsonTextWriter::PutDeclaration(CXmlWriterContext& context, const std::string* alias,
                                     const std::string& uri) {
  PutMemberSeparator(context);
  if (m_bFormatted) PutIndent(context.GetDepth() + 1);
  static constexpr char kMark[] = "@xmlns";
  m_pStream->Put('"');
  m_pStream->Put(kMark, sizeof(kMark) - 1);
  if (alias != nullptr) {
    m_pStream->Put(':');
    m_pStream->Put(*alias);
  }
  m_pStream->Put("\": ", 3);
  m_pStream->Put('"');
  m_pStream->Put(uri);
  m_pStream->Put('"');
  m_bNamePending = false;
}

void CJsonTextWriter::WriteText(const std::string& text, ItemType type, bool) {
  QZ_ASSERT_TEXT(m_pContext != nullptr, "m_pContext != 0");
  if (m_pContext == nullptr) return;
  if (!m_bNamePending) {
    m_pStream->Put(',');
    if (m_bFormatted) {
      PutEol();
      PutIndent(m_pContext->GetDepth() + 1);
    }
    PutKey("", nullptr, m_roundTrip != JsonRoundTrip_None ? "#text" : "");
  }
  PutValue(text, type);
}

void CJsonTextWriter::WriteEndElement() {
  QZ_ASSERT_TEXT(m_pContext != nullptr, "m_pContext != 0");
  if (m_pContext == nullptr) return;
  if (m_pContext->GetCollectionState() == JsonArrayState_Closing) {
    m_pContext->SetCollectionState(JsonArrayState_None);
    if (m_bFormatted) {
      PutEol();
      PutIndent(m_pContext->GetDepth());
      LowerDepths(m_pContext);
    }
    m_pStream->Put(']');
  }
  if (!m_bNamePending) {
    if (m_bFormatted) {
      PutEol();
      PutIndent(m_pContext->GetDepth());
    }
    m_pStream->Put('}');
  }
  m_pContext = CloseContext(m_pContext);
  m_bNamePending = false;
}

void CJsonTextWriter::WriteAttribute(const std::string& name, const std::string& uri,
                                     const std::string& value, ItemType type) {
  QZ_ASSERT_TEXT(m_pContext != nullptr, "m_pContext != 0");
  if (m_pContext == nullptr) return;
  PutMemberSeparator(*m_pContext);
  if (m_bFormatted) PutIndent(m_pContext->GetDepth() + 1);
  if (!uri.empty() && m_roundTrip == JsonRoundTrip_Full) {
    const std::string& alias = GetAlias(uri, name);
    QZ_ASSERT_TEXT(alias.length() != 0,
                   "m_pContext->GetNamespaceMapValue(strNamespace).length() != 0");
    PutKey("@", &alias, name);
  } else {
    PutKey(m_roundTrip != JsonRoundTrip_None ? "@" : "", nullptr, name);
  }
  PutValue(value, type);
  m_bNamePending = false;
}

void CJsonTextWriter::WriteXsiType(const std::string& typeUri, const std::string& typeName,
                                   ItemType type) {
  QZ_ASSERT_TEXT(m_pContext != nullptr, "m_pContext != 0");
  if (m_pContext == nullptr || m_roundTrip != JsonRoundTrip_Full) return;
  std::string value = typeName;
  if (!typeUri.empty() && typeUri != m_pContext->GetDefaultNamespace()) {
    const std::string& alias = GetAlias(typeUri, typeName);
    QZ_ASSERT_TEXT(alias.length() != 0,
                   "m_pContext->GetNamespaceMapValue(strElementNamespace).length() != 0");
    value = alias + ':' + typeName;
  }
  WriteAttribute("type", kXmlSchemaInstanceNamespace, value, type);
}

// The alias of a namespace in the innermost element; the name is for the failure.
const std::string& CJsonTextWriter::GetAlias(const std::string& uri,
                                             const std::string& name) const {
  const std::string* const alias = m_pContext->FindAlias(uri);
  if (alias == nullptr) throw CQzException(FormatString("Unknown Namespace: %s.", name.c_str()));
  return *alias;
}

// ---- Pieces ----

void CJsonTextWriter::PutEol() { m_pStream->Put(m_strEol); }

void CJsonTextWriter::PutIndent(std::uint32_t depth) {
  for (; depth != 0; --depth) m_pStream->Put(m_strIndentChars);
}

// In front of a member of the element: the brace that makes it an object, behind the bracket when
// it is the first item of an array, or a comma.
void CJsonTextWriter::PutMemberSeparator(CXmlWriterContext& context) {
  if (m_bNamePending) {
    CXmlWriterContext* const parent = context.GetParent();
    if (parent != nullptr && parent->GetCollectionState() == JsonArrayState_Pending) {
      parent->SetCollectionState(JsonArrayState_Open);
      m_pStream->Put('[');
      if (m_bFormatted) {
        RaiseDepths(&context);
        PutEol();
        PutIndent(context.GetDepth());
      }
    }
    m_pStream->Put('{');
  } else {
    m_pStream->Put(',');
  }
  if (m_bFormatted) PutEol();
}

void CJsonTextWriter::RaiseDepths(CXmlWriterContext* context) {
  for (; context != nullptr; context = context->GetParent()) {
    context->SetDepth(context->GetDepth() + 1);
  }
}

void CJsonTextWriter::LowerDepths(CXmlWriterContext* context) {
  for (; context != nullptr; context = context->GetParent()) {
    if (context->GetDepth() > 1) context->SetDepth(context->GetDepth() - 1);
  }
}

// A key with an alias in front where there is one: "@alias:name": and a blank, also when not
// formatted.
void CJsonTextWriter::PutKey(const char* mark, const std::string* alias, const std::string& name) {
  m_pStream->Put('"');
  m_pStream->Put(mark);
  if (alias != nullptr) {
    m_pStream->Put(*alias);
    m_pStream->Put(':');
  }
  m_pStream->Put(name);
  m_pStream->Put("\": ", 3);
}

void CJsonTextWriter::PutValue(const std::string& value, ItemType type) {
  if (IsBare(type)) {
    m_pStream->Put(value);
    return;
  }
  m_pStream->Put('"');
  PutStringContent(value);
  m_pStream->Put('"');
}

// Up to the first zero byte.
void CJsonTextWriter::PutStringContent(const std::string& text) {
  const char* run = text.c_str();
  const char* at = run;
  for (; *at != '\0'; ++at) {
    if (!IsFiltered(*at)) continue;
    m_pStream->Put(run, static_cast<std::size_t>(at - run));
    PutEscape(*at);
    run = at + 1;
  }
  m_pStream->Put(run, static_cast<std::size_t>(at - run));
}

void CJsonTextWriter::PutEscape(char c) {
  if (c == '\n') {
    if (m_eolType != EOLType_CRLF && m_eolType != EOLType_LF) {
      throw CQzException(Messages::kInvalidEolType);
    }
    m_pStream->Put(m_eolType == EOLType_CRLF ? "\r\n" : "\n");
  } else if (c == '\r') {
    if (!AreDocumentValues()) QZ_ASSERT_TEXT(false, "false");
  } else {
    constexpr char digits[] = "0123456789ABCDEF";
    const char escape[] = {'\\', 'u', '0', '0', digits[c >> 4], digits[c & 0x0F]};
    m_pStream->Put(escape, sizeof(escape));
  }
}

void CJsonTextWriter::FlushWhenDue() {
  if (m_pStream->GetLength() >= kFlushSize) m_pStream->Flush();
}

}  // namespace QzXmlLib16
