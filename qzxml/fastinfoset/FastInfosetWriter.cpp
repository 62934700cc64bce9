#include "qzxml/fastinfoset/FastInfosetWriter.h"

#include <algorithm>
#include <cstring>

#include "qzxml/fastinfoset/DocumentMarks.h"
#include "qzxml/fastinfoset/FastInfosetContext.h"
#include "qzxml/fastinfoset/OctetForms.h"
#include "qzxml/fastinfoset/Trace.h"
#include "qzxml/platform/Assert.h"
#include "qzxml/platform/DebugChannel.h"
#include "qzxml/runtime/BinaryStream.h"
#include "qzxml/runtime/Encoder.h"
#include "qzxml/runtime/Functions.h"
#include "qzxml/runtime/QzException.h"
#include "qzxml/xml/Messages.h"
#include "qzxml/xml/XmlNamespaces.h"
#include "qzxml/xml/XmlWriterContext.h"

// The first octet of an element says whether it has attributes, so its head waits, as the pending
// element, until the first call behind WriteStartElement tells. It becomes the innermost open
// element when its head is written.
//
// An end is half an octet, F. The first of two waits; the second completes it to FF, and whatever
// element begins in between completes it to F0.

namespace QzXmlLib16 {
namespace {

constexpr std::size_t kFlushSize = 4096;
constexpr std::uint32_t kLargestPut = 1u << 30;

constexpr unsigned kTerminator = 0xF0;
constexpr unsigned kTwoTerminators = 0xFF;
constexpr unsigned kEmptyValue = 0xFF;  // the index 0

// The kinds of an encoding.
constexpr std::uint32_t kText = 0;
constexpr std::uint32_t kRestrictedAlphabet = 1;
constexpr std::uint32_t kAlgorithm = 2;

std::string_view Octets(const CBinaryData& data) {
  return {reinterpret_cast<const char*>(data.GetData()), data.GetLength()};
}

bool IsTraced() { return detail::GetDebugChannel() != nullptr; }

}  // namespace

CFastInfosetWriter::CFastInfosetWriter(CFastInfosetContext* context, CBinaryStream* stream)
    : CXmlWriter("CFastInfosetWriter"),
      m_pStream(stream),
      m_pOptions(context),
      m_pPendingContext(nullptr),
      m_bHalfTerminatorPending(false),
      m_pVocabulary(context->GetUseGeneratedVocabulary()
                        ? new CFIVocabulary(*context->GetVocabulary())
                        : new CFIVocabulary) {}

CFastInfosetWriter::~CFastInfosetWriter() {
  if (m_pPendingContext != nullptr) CloseContext(m_pPendingContext);
}

// ---- The document ----

void CFastInfosetWriter::WriteHeader(FInfoDecl declaration) {
  QZ_ASSERT(declaration >= 0 && declaration <= 9);
  if (declaration > 0 && declaration <= 9) m_strPiece += detail::kFIDeclarations[declaration - 1];
  for (const unsigned char octet : detail::kFIIdentification) PutOctet(octet);
  if (!m_pOptions->GetUseGeneratedVocabulary()) {
    PutOctet(0x00);
    return;
  }
  PutOctet(0x20);  // an initial vocabulary
  PutOctet(0x10);  // which is an external one
  PutOctet(0x00);
  const std::string uri = m_pOptions->GetExternalVocabularyURI();
  PutName(uri.empty() ? kDefaultVocabularyURI : uri);
}

void CFastInfosetWriter::WriteDocumentEnd() {
  FlushPendingElement(false);
  PutOctet(m_bHalfTerminatorPending ? kTwoTerminators : kTerminator);
  m_bHalfTerminatorPending = false;
  Flush();
}

void CFastInfosetWriter::EndDocument() {
  FlushPendingElement(false);
  Flush();
  CXmlWriter::EndDocument();
}

// The element that was started last is the innermost one, though it is not written yet.
void CFastInfosetWriter::SetDefaultNamespace(const std::string& uri) {
  if (m_pPendingContext != nullptr) {
    m_pPendingContext->SetDefaultNamespace(uri);
  } else {
    CXmlWriter::SetDefaultNamespace(uri);
  }
}

void CFastInfosetWriter::AddNamespaceMapping(const std::string& alias, const std::string& uri) {
  if (m_pPendingContext != nullptr) {
    m_pPendingContext->AddNamespaceMapValue(uri, alias);
  } else {
    CXmlWriter::AddNamespaceMapping(alias, uri);
  }
}

void CFastInfosetWriter::WriteComment(const std::string&) {}

void CFastInfosetWriter::WriteProcessingInstruction(const std::string&) {
  FlushPendingElement(false);
}

void CFastInfosetWriter::WriteInlineSchema(const std::string&) {}

// ---- Elements ----

void CFastInfosetWriter::WriteStartElement(const std::string& name, const std::string& uri) {
  FlushPendingElement(false);
  if (m_bHalfTerminatorPending) {
    PutOctet(kTerminator);
    m_bHalfTerminatorPending = false;
  }
  if (m_pContext != nullptr) {
    m_pContext->AddChild();
    CloseStartTag();
  }
  if (IsTraced()) {
    detail::TraceCut(
        FormatString(m_pContext == nullptr ? "Root Elm: %s::%s\n" : "New Elm: %s::%s\n",
                     uri.c_str(), name.c_str()));
  }
  m_pPendingContext = OpenContext(name, uri);
  FlushWhenDue();
}

void CFastInfosetWriter::FlushPendingElement(bool hasAttributes) {
  if (m_pPendingContext == nullptr) return;
  CXmlWriterContext& context = *m_pPendingContext;
  unsigned byCurrent = hasAttributes ? 0x40 : 0x00;
  context.SetHasAttributes(hasAttributes);
  if (context.GetParent() == nullptr) {
    PutNamespaceAttributes(byCurrent);
    byCurrent = 0x00;
  }
  const std::string& uri = context.GetNamespace();
  const bool isPrefixed = !uri.empty() && uri != context.GetDefaultNamespace();
  m_strName.assign(context.GetName());
  PutElementName(byCurrent, isPrefixed ? GetAlias(context, uri) : m_strNone, uri, m_strName);
  m_pContext = m_pPendingContext;
  m_pPendingContext = nullptr;
}

// The mark of them and their end, also where there are none: the prefix "xml" is always mapped, and
// never declared.
void CFastInfosetWriter::PutNamespaceAttributes(unsigned byCurrent) {
  PutOctet(byCurrent | 0x38);
  const auto put = [this](const std::string& prefix, const std::string& uri) {
    PutOctet(0xCCu | (prefix.empty() ? 0u : 2u) | (uri.empty() ? 0u : 1u));
    if (!prefix.empty()) PutIdentifier(prefix, m_pVocabulary->m_prefixNameMap);
    if (!uri.empty()) PutIdentifier(uri, m_pVocabulary->m_namespaceNameMap);
  };
  if (!GetRootDefaultNamespace().empty()) put(m_strNone, GetRootDefaultNamespace());
  for (const auto& [uri, alias] : GetRootNamespaceMap()) {
    if (!IsXmlNamespace(uri)) put(alias, uri);
  }
  PutOctet(kTerminator);
}

void CFastInfosetWriter::CloseStartTag() {
  if (!m_pContext->IsStartTagOpen()) return;
  m_pContext->SetStartTagOpen(false);
  if (m_pContext->HasAttributes()) PutOctet(kTerminator);
}

void CFastInfosetWriter::WriteText(const std::string& text, ItemType type, bool) {
  FlushPendingElement(false);
  QZ_ASSERT_TEXT(m_pContext != nullptr, "m_pContext != 0");
  if (m_pContext == nullptr) return;
  CloseStartTag();
  if (text.empty()) return;
  PutCharacterChunk(text, type);
  if (IsTraced()) detail::TraceCut(FormatString("Elm Val: %s\n", text.c_str()));
  FlushWhenDue();
}

void CFastInfosetWriter::WriteEndElement() {
  FlushPendingElement(false);
  QZ_ASSERT_TEXT(m_pContext != nullptr, "m_pContext != 0");
  if (m_pContext == nullptr) return;
  CloseStartTag();
  if (m_bHalfTerminatorPending) PutOctet(kTwoTerminators);
  m_bHalfTerminatorPending = !m_bHalfTerminatorPending;
  if (IsTraced()) {
    detail::TraceCut(FormatString("End Elm: %s::%s\n", m_pContext->GetNamespace().c_str(),
                                  std::string(m_pContext->GetName()).c_str()));
  }
  m_pContext = CloseContext(m_pContext);
  FlushWhenDue();
}

// ---- Attributes ----

void CFastInfosetWriter::BeginAttribute() {
  FlushPendingElement(true);
  RequireOpenStartTag();
  // The head is written and says that there are no attributes.
  if (!m_pContext->HasAttributes()) throw CQzException(Messages::kAttributeAfterContent);
}

void CFastInfosetWriter::WriteAttribute(const std::string& name, const std::string& uri,
                                        const std::string& value, ItemType type) {
  BeginAttribute();
  const std::string& alias = uri.empty() ? m_strNone : GetAlias(*m_pContext, uri);
  PutAttributeName(0x00, alias, uri, name);
  PutAttributeValue(value, type);
  if (IsTraced()) {
    detail::TraceCut(uri.empty() ? FormatString("Add Att: ::%s\n", name.c_str())
                                 : FormatString("Add Att: %s %s::%s\n", alias.c_str(), uri.c_str(),
                                                name.c_str()));
    detail::TraceCut(FormatString("Att Val: %s\n", value.c_str()));
  }
  FlushWhenDue();
}

void CFastInfosetWriter::WriteXsiType(const std::string& typeUri, const std::string& typeName,
                                      ItemType type) {
  BeginAttribute();
  if (typeUri.empty() || typeUri == m_pContext->GetDefaultNamespace()) {
    WriteAttribute("type", kXmlSchemaInstanceNamespace, typeName, type);
    return;
  }
  const bool isKnown = m_pContext->FindAlias(typeUri) != nullptr;
  const std::string& alias = GetAlias(*m_pContext, typeUri);
  QZ_ASSERT_TEXT(!alias.empty(), "!m_pContext->GetNamespaceMapValue(strElementNamespace).empty()");
  // Meant: the name depends on who made the alias, and never has that of the instance namespace.
  const std::string attributeUri = isKnown ? kXmlSchemaInstanceNamespace : typeUri;
  const std::string attributeName = isKnown ? "type" : typeName;
  PutAttributeName(0x00, alias, attributeUri, attributeName);
  PutAttributeValue(alias + ':' + typeName, type);
  if (IsTraced()) {
    detail::TraceCut(FormatString("Add Att: %s %s::%s\n", alias.c_str(), attributeUri.c_str(),
                                  attributeName.c_str()));
    detail::TraceCut(FormatString("Att Val: %s:%s\n", alias.c_str(), typeName.c_str()));
  }
  FlushWhenDue();
}

void CFastInfosetWriter::WriteXsiNil() {
  BeginAttribute();
  WriteAttribute("nil", kXmlSchemaInstanceNamespace, "true", ItemType_boolean);
}

// Generated where there is none, and known in the element then.
const std::string& CFastInfosetWriter::GetAlias(CXmlWriterContext& context,
                                                const std::string& uri) {
  const std::string* const alias = context.FindAlias(uri);
  if (alias != nullptr) return *alias;
  context.AddNamespaceMapValue(uri, context.GenerateAlias());
  return *context.FindAlias(uri);
}

// ---- Names ----

void CFastInfosetWriter::PutElementName(unsigned byCurrent, const std::string& strPrefix,
                                        const std::string& strNamespace,
                                        const std::string& strLocalName) {
  QZ_ASSERT((byCurrent & 0x3F) == 0);
  std::uint32_t index = 0;
  CFIVocabulary::FormKey(strPrefix, strNamespace, strLocalName, m_strKey);
  if (CFIVocabulary::FindIndex(m_pVocabulary->m_elementNameMap, m_strKey, index)) {
    detail::PutIndexOnThirdBit(m_strPiece, byCurrent, index);
    return;
  }
  PutLiteralName(byCurrent | 0x3C, strPrefix, strNamespace, strLocalName);
  CFIVocabulary::AddValueToMap(m_strKey, m_pVocabulary->m_elementNameMap);
}

void CFastInfosetWriter::PutAttributeName(unsigned byCurrent, const std::string& strPrefix,
                                          const std::string& strNamespace,
                                          const std::string& strLocalName) {
  QZ_ASSERT((byCurrent & 0x7F) == 0);
  std::uint32_t index = 0;
  CFIVocabulary::FormKey(strPrefix, strNamespace, strLocalName, m_strKey);
  if (CFIVocabulary::FindIndex(m_pVocabulary->m_attributeNameMap, m_strKey, index)) {
    detail::PutIndexOnSecondBit(m_strPiece, byCurrent, index);
    return;
  }
  PutLiteralName(byCurrent | 0x78, strPrefix, strNamespace, strLocalName);
  CFIVocabulary::AddValueToMap(m_strKey, m_pVocabulary->m_attributeNameMap);
}

// The mark, with the bits of the parts that are there, and these parts.
void CFastInfosetWriter::PutLiteralName(unsigned mark, const std::string& strPrefix,
                                        const std::string& strNamespace,
                                        const std::string& strLocalName) {
  QZ_ASSERT_TEXT(strPrefix.empty() || !strNamespace.empty(), "!strNamespace.empty()");
  PutOctet(mark | (strPrefix.empty() ? 0u : 2u) | (strNamespace.empty() ? 0u : 1u));
  if (!strPrefix.empty()) PutIdentifier(strPrefix, m_pVocabulary->m_prefixNameMap);
  if (!strNamespace.empty()) PutIdentifier(strNamespace, m_pVocabulary->m_namespaceNameMap);
  if (!strLocalName.empty()) PutIdentifier(strLocalName, m_pVocabulary->m_localNameMap);
}

// The index of a part of a name, or the part itself, which has an index from then on.
void CFastInfosetWriter::PutIdentifier(const std::string& text, CFIVocabulary::CIndexMap& map) {
  std::uint32_t index = 0;
  if (CFIVocabulary::FindIndex(map, text, index)) {
    detail::PutIndexOnSecondBit(m_strPiece, 0x80, index);
    return;
  }
  PutName(text);
  CFIVocabulary::AddValueToMap(text, map);
}

// A text that is not empty, in full, with its length on the second bit.
void CFastInfosetWriter::PutName(const std::string& text) {
  CBinaryData utf8;
  if (!detail::IsLocalUtf8()) utf8 = LocalToUtf8(text.c_str());
  const std::string_view octets = utf8.GetLength() != 0 ? Octets(utf8) : std::string_view(text);
  detail::PutLengthOnSecondBit(m_strPiece, 0x00, static_cast<std::uint32_t>(octets.size()));
  m_strPiece += octets;
}

// ---- Values ----

void CFastInfosetWriter::PutAttributeValue(const std::string& value, ItemType type) {
  if (value.empty()) return PutOctet(kEmptyValue);
  const bool add = value.size() < m_pOptions->GetAttributeMaxAddLength();
  std::uint32_t index = 0;
  if (add && CFIVocabulary::FindIndex(m_pVocabulary->m_attributeValueMap, value, index)) {
    return detail::PutIndexOnSecondBit(m_strPiece, 0x80, index);
  }
  const CValue encoded = Encode(
      value, type, "Failed to write FastInfoset. Unknown encoding in EncodedCharacterStringBit5.");
  if (encoded.octets.empty()) return PutOctet(kEmptyValue);
  unsigned head = add ? 0x40 : 0x00;
  if (encoded.type != kText) {
    head |= encoded.type == kRestrictedAlphabet ? 0x20 : 0x30;
    PutOctet(head | (encoded.index - 1) >> 4);
    head = ((encoded.index - 1) & 0x0F) << 4;
  }
  detail::PutLengthOnFifthBit(m_strPiece, head, static_cast<std::uint32_t>(encoded.octets.size()));
  m_strPiece += encoded.octets;
  if (add) CFIVocabulary::AddValueToMap(value, m_pVocabulary->m_attributeValueMap);
}

void CFastInfosetWriter::PutCharacterChunk(const std::string& strVal, ItemType type) {
  QZ_ASSERT(!strVal.empty());
  const bool add = strVal.size() < m_pOptions->GetElementMaxAddLength();
  std::uint32_t index = 0;
  if (add && CFIVocabulary::FindIndex(m_pVocabulary->m_characterChunkMap, strVal, index)) {
    return detail::PutIndexOnFourthBit(m_strPiece, 0xA0, index);
  }
  const CValue encoded = Encode(
      strVal, type, "Failed to write FastInfoset. Unknown encoding in EncodedCharacterStringBit7.");
  if (encoded.octets.empty()) return;
  unsigned head = add ? 0x90 : 0x80;
  if (encoded.type != kText) {
    head |= encoded.type == kRestrictedAlphabet ? 0x08 : 0x0C;
    PutOctet(head | (encoded.index - 1) >> 6);
    head = ((encoded.index - 1) & 0x3F) << 2;
  }
  detail::PutLengthOnSeventhBit(m_strPiece, head,
                                static_cast<std::uint32_t>(encoded.octets.size()));
  m_strPiece += encoded.octets;
  if (add) CFIVocabulary::AddValueToMap(strVal, m_pVocabulary->m_characterChunkMap);
}

// The octets belong to the text or to this writer, until the next call. There are none for a text
// that begins with a zero byte, nor for one of base 64 that is none.
CFastInfosetWriter::CValue CFastInfosetWriter::Encode(const std::string& text, ItemType type,
                                                      const char* unknownEncoding) {
  const auto encoding = m_pOptions->GetEncoding(type);
  const std::uint32_t index = encoding.m_dwIndex;
  switch (encoding.m_dwType) {
    case kText:
      if (m_pOptions->GetDefaultStringEncoding() == 1) {
        throw CQzException(
            "Failed to write FastInfoset. Unsupported Feature UTF16BE in "
            "EncodedCharacterStringBit5.");
      }
      if (detail::IsLocalUtf8()) return {text.c_str(), kText, 0};
      m_bdOctets.SetAsEncodedString(10, text.c_str());
      return {Octets(m_bdOctets), kText, 0};
    case kRestrictedAlphabet:
      if (index < 1 || index > 2) {
        throw CQzException(
            FormatString("Failed to write FastInfoset. Invalid Restricted Alphabet value [%d]",
                         static_cast<int>(index)));
      }
      m_strOctets.clear();
      detail::AppendRestrictedAlphabetString(m_pVocabulary->m_restrictedAlphabets[index - 1], text,
                                             m_strOctets);
      return {m_strOctets, kRestrictedAlphabet, index};
    case kAlgorithm:
      if (index < 1 || index > 10) {
        throw CQzException(
            FormatString("Failed to write FastInfoset. Invalid Encoding Algorithm value [%d]",
                         static_cast<int>(index)));
      }
      m_bdOctets.SetAsEncodedString(index, text.c_str());
      return {Octets(m_bdOctets), kAlgorithm, index};
    default:
      throw CQzException(unknownEncoding);
  }
}

// ---- The stream ----

void CFastInfosetWriter::FlushWhenDue() {
  if (m_strPiece.size() >= kFlushSize) Flush();
}

void CFastInfosetWriter::Flush() {
  for (std::size_t at = 0; at < m_strPiece.size(); at += kLargestPut) {
    const std::size_t rest = m_strPiece.size() - at;
    m_pStream->Put(m_strPiece.data() + at,
                   static_cast<std::uint32_t>(std::min<std::size_t>(rest, kLargestPut)));
  }
  m_strPiece.clear();
}

}  // namespace QzXmlLib16
