#include "qzxml/fastinfoset/FastInfosetWriter.h"

#include <algorithm>
#include <cstring>
#include <typeinfo>
#include <utility>

#include "qzxml/fastinfoset/DocumentMarks.h"
#include "qzxml/fastinfoset/FIWritingTables.h"
#include "qzxml/fastinfoset/FastInfosetContext.h"
#include "qzxml/fastinfoset/FastInfosetRunHost.h"
#include "qzxml/fastinfoset/FastInfosetWriterEntry.h"
#include "qzxml/fastinfoset/FastInfosetWriterForms.h"
#include "qzxml/fastinfoset/FastInfosetWriterNames.h"
#include "qzxml/fastinfoset/OctetForms.h"
#include "qzxml/fastinfoset/Trace.h"
#include "qzxml/platform/Assert.h"
#include "qzxml/platform/DebugChannel.h"
#include "qzxml/runtime/BinaryStream.h"
#include "qzxml/runtime/Encoder.h"
#include "qzxml/runtime/Functions.h"
#include "qzxml/runtime/QzException.h"
#include "qzxml/xml/Messages.h"
#include "qzxml/xml/ShortText.h"
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

CInstanceClass s_class("CFastInfosetWriter");

constexpr unsigned kTerminator = 0xF0;
constexpr unsigned kTwoTerminators = 0xFF;
constexpr unsigned kEmptyValue = 0xFF;  // the index 0

std::string_view Octets(const CBinaryData& data) {
  return {reinterpret_cast<const char*>(data.GetData()), data.GetLength()};
}

bool IsTraced() { return detail::GetDebugChannel() != nullptr; }

}  // namespace

CFastInfosetWriter::CFastInfosetWriter(CFastInfosetContext* context, CBinaryStream* stream)
    : CXmlWriter(s_class),
      m_pStream(stream),
      m_pOptions(context),
      m_pPendingContext(nullptr),
      m_bHalfTerminatorPending(false),
      m_bHasRoot(false),
      m_pTables(detail::TakeFIWritingTables()),
      m_pPiece(m_pTables->pieces.GetLast()),
      m_pieceRoom(m_pTables->pieces.GetRoom()),
      m_pieceSize(0) {
  if (context->GetUseGeneratedVocabulary()) {
    // Taken over when all of it is there: what memory runs out for would be half a copy.
    detail::CFIIndexMaps copy(context->GetVocabulary()->m_maps);
    m_pTables->maps = std::move(copy);
  } else {
    CFIVocabulary::Begin(m_pTables->maps);
  }
}

CFastInfosetWriter::~CFastInfosetWriter() {
  if (m_pPendingContext != nullptr) CloseContext(m_pPendingContext);
}

// ---- The document ----

void CFastInfosetWriter::WriteHeader(FInfoDecl declaration) {
  QZ_ASSERT(declaration >= 0 && declaration <= 9);
  // A derived class may have operations of its own for what the short ways leave out.
  if (typeid(*this) == typeid(CFastInfosetWriter)) {
    m_pRunHost = CTableEntry::NewRunHost(*this);
    SetShortWays(m_pRunHost.get());
  }
  if (declaration > 0 && declaration <= 9) PutOctets(detail::kFIDeclarations[declaration - 1]);
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
  PutPieces();
}

void CFastInfosetWriter::EndDocument() {
  FlushPendingElement(false);
  PutPieces();
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
  if (m_pPendingContext != nullptr) FlushPendingElement(false);
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
  NextPieceWhenDue();
}

void CFastInfosetWriter::FlushPendingElement(bool hasAttributes) {
  if (m_pPendingContext == nullptr) return;
  CXmlWriterContext& context = *m_pPendingContext;
  unsigned byCurrent = hasAttributes ? 0x40 : 0x00;
  context.SetHasAttributes(hasAttributes);
  if (context.GetParent() == nullptr) {
    if (m_bHasRoot) m_pTables->names.Forget();
    m_bHasRoot = true;
    PutNamespaceAttributes(byCurrent);
    byCurrent = 0x00;
  }
  PutPendingName(byCurrent, context);
  m_pContext = m_pPendingContext;
  m_pPendingContext = nullptr;
}

// Most names have come before, in the same namespaces.
void CFastInfosetWriter::PutPendingName(unsigned byCurrent, CXmlWriterContext& context) {
  const std::string_view name = context.GetName();
  const std::string& uri = context.GetNamespace();
  detail::CFIKnownNames& names = m_pTables->names;
  auto& known = names.ElementOf(name);
  if (known.Is(name, uri, names.Marked(context.GetNamespaceState()))) {
    char* const out = BeginPiece(detail::CFIKnownNames::kRoom);
    EndPiece(known.octets.Write(out));
    *out = static_cast<char>(static_cast<unsigned char>(*out) | byCurrent);
    return;
  }
  const bool isPrefixed = !uri.empty() && uri != context.GetDefaultNamespace();
  m_strName.assign(name);
  const std::uint32_t index =
      PutElementName(byCurrent, isPrefixed ? GetAlias(context, uri) : m_strNone, uri, m_strName);
  if (index == 0) return;  // the table is full
  if (known.SetName(m_strName)) {
    known.uri = names.StoreUri(uri);
    known.octets.SetElement(index);
    known.state = names.Marked(context.GetNamespaceState());
  }
}

// The mark of them and their end, also where there are none: the prefix "xml" is always mapped, and
// never declared.
void CFastInfosetWriter::PutNamespaceAttributes(unsigned byCurrent) {
  PutOctet(byCurrent | 0x38);
  const auto put = [this](const std::string& prefix, const std::string& uri) {
    PutOctet(0xCCu | (prefix.empty() ? 0u : 2u) | (uri.empty() ? 0u : 1u));
    if (!prefix.empty()) PutIdentifier(prefix, m_pTables->maps.prefixNames);
    if (!uri.empty()) PutIdentifier(uri, m_pTables->maps.namespaceNames);
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
  NextPieceWhenDue();
}

void CFastInfosetWriter::WriteEndElement() {
  if (m_pPendingContext != nullptr) FlushPendingElement(false);
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
  NextPieceWhenDue();
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
  NextPieceWhenDue();
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
  NextPieceWhenDue();
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

// Answers the index, which the name has now; 0 where the table is full.
std::uint32_t CFastInfosetWriter::PutElementName(unsigned byCurrent, const std::string& strPrefix,
                                                 const std::string& strNamespace,
                                                 const std::string& strLocalName) {
  QZ_ASSERT((byCurrent & 0x3F) == 0);
  CTableEntry entry(CFIVocabulary::FormKey(strPrefix, strNamespace, strLocalName, m_pTables->key),
                    m_pTables->maps.elementNames);
  if (const std::uint32_t index = entry.FindIndex()) {
    EndPiece(detail::WriteIndexOnThirdBit(BeginPiece(detail::kFormSize), byCurrent, index));
    return index;
  }
  PutLiteralName(byCurrent | 0x3C, strPrefix, strNamespace, strLocalName);
  return entry.Add();
}

std::uint32_t CFastInfosetWriter::PutAttributeName(unsigned byCurrent, const std::string& strPrefix,
                                                   const std::string& strNamespace,
                                                   const std::string& strLocalName) {
  QZ_ASSERT((byCurrent & 0x7F) == 0);
  CTableEntry entry(CFIVocabulary::FormKey(strPrefix, strNamespace, strLocalName, m_pTables->key),
                    m_pTables->maps.attributeNames);
  if (const std::uint32_t index = entry.FindIndex()) {
    EndPiece(detail::WriteIndexOnSecondBit(BeginPiece(detail::kFormSize), byCurrent, index));
    return index;
  }
  PutLiteralName(byCurrent | 0x78, strPrefix, strNamespace, strLocalName);
  return entry.Add();
}

// The mark, with the bits of the parts that are there, and these parts.
void CFastInfosetWriter::PutLiteralName(unsigned mark, const std::string& strPrefix,
                                        const std::string& strNamespace,
                                        const std::string& strLocalName) {
  QZ_ASSERT_TEXT(strPrefix.empty() || !strNamespace.empty(), "!strNamespace.empty()");
  PutOctet(mark | (strPrefix.empty() ? 0u : 2u) | (strNamespace.empty() ? 0u : 1u));
  if (!strPrefix.empty()) PutIdentifier(strPrefix, m_pTables->maps.prefixNames);
  if (!strNamespace.empty()) PutIdentifier(strNamespace, m_pTables->maps.namespaceNames);
  if (!strLocalName.empty()) PutIdentifier(strLocalName, m_pTables->maps.localNames);
}

// The index of a part of a name, or the part itself, which has an index from then on.
void CFastInfosetWriter::PutIdentifier(const std::string& text, CFIVocabulary::CIndexMap& map) {
  CTableEntry entry(text, map);
  if (const std::uint32_t index = entry.FindIndex()) {
    EndPiece(detail::WriteIndexOnSecondBit(BeginPiece(detail::kFormSize), 0x80, index));
    return;
  }
  PutName(text);
  entry.Add();
}

// A text that is not empty, in full, with its length on the second bit.
void CFastInfosetWriter::PutName(const std::string& text) {
  if (detail::IsLocalUtf8()) return PutUtf8(text);
  const CBinaryData utf8 = LocalToUtf8(text.c_str());
  PutUtf8(utf8.GetLength() != 0 ? Octets(utf8) : std::string_view(text));
}

inline void CFastInfosetWriter::PutUtf8(std::string_view octets) {
  char* const out = BeginPiece(detail::kFormSize + octets.size());
  EndPiece(detail::CopyShort(
      detail::WriteLengthOnSecondBit(out, 0x00, static_cast<std::uint32_t>(octets.size())),
      octets.data(), octets.size()));
}

// ---- Values ----

// The index of a value that is not empty, or the value in full. False, with nothing written, where
// it has no octets.
template <typename Form>
bool CFastInfosetWriter::PutValue(const std::string& value, ItemType type,
                                  const char* unknownEncoding) {
  CTableEntry entry(value, GetTable<Form>(), Form::GetMaxAddLength(*m_pOptions));
  if (const std::uint32_t index = entry.FindIndex()) {
    EndPiece(Form::WriteIndex(BeginPiece(detail::kFormSize), index));
    return true;
  }
  const CValue encoded = Encode(value, type, unknownEncoding);
  if (encoded.octets.empty()) return false;
  EndPiece(detail::WriteValueHead<Form>(BeginPiece(detail::kFIValueHead), entry.IsToBeAdded(),
                                        encoded.type, encoded.index,
                                        static_cast<std::uint32_t>(encoded.octets.size())));
  PutOctets(encoded.octets);
  entry.Add();
  return true;
}

void CFastInfosetWriter::PutAttributeValue(const std::string& value, ItemType type) {
  constexpr char kUnknownEncoding[] =
      "Failed to write FastInfoset. Unknown encoding in EncodedCharacterStringBit5.";
  const bool isThere =
      !value.empty() && PutValue<detail::CFIAttributeForm>(value, type, kUnknownEncoding);
  if (!isThere) PutOctet(kEmptyValue);
}

void CFastInfosetWriter::PutCharacterChunk(const std::string& strVal, ItemType type) {
  QZ_ASSERT(!strVal.empty());
  PutValue<detail::CFIChunkForm>(
      strVal, type, "Failed to write FastInfoset. Unknown encoding in EncodedCharacterStringBit7.");
}

// The octets belong to the text or to this writer, until the next call. There are none for a text
// that begins with a zero byte, nor for one of base 64 that is none.
CFastInfosetWriter::CValue CFastInfosetWriter::Encode(const std::string& text, ItemType type,
                                                      const char* unknownEncoding) {
  const auto encoding = m_pOptions->GetEncoding(type);
  const std::uint32_t index = encoding.m_dwIndex;
  switch (encoding.m_dwType) {
    case detail::kFIText:
      if (m_pOptions->GetDefaultStringEncoding() == 1) {
        throw CQzException(
            "Failed to write FastInfoset. Unsupported Feature UTF16BE in "
            "EncodedCharacterStringBit5.");
      }
      if (detail::IsLocalUtf8()) return {text.c_str(), detail::kFIText, 0};
      m_bdOctets.SetAsEncodedString(10, text.c_str());
      return {Octets(m_bdOctets), detail::kFIText, 0};
    case detail::kFIRestrictedAlphabet:
      if (index < 1 || index > 2) {
        throw CQzException(
            FormatString("Failed to write FastInfoset. Invalid Restricted Alphabet value [%d]",
                         static_cast<int>(index)));
      }
      m_strOctets.clear();
      detail::AppendRestrictedAlphabetString(CFIVocabulary::GetAlphabets()[index - 1], text,
                                             m_strOctets);
      return {m_strOctets, detail::kFIRestrictedAlphabet, index};
    case detail::kFIAlgorithm:
      if (index < 1 || index > 10) {
        throw CQzException(
            FormatString("Failed to write FastInfoset. Invalid Encoding Algorithm value [%d]",
                         static_cast<int>(index)));
      }
      m_bdOctets.SetAsEncodedString(index, text.c_str());
      return {Octets(m_bdOctets), detail::kFIAlgorithm, index};
    default:
      throw CQzException(unknownEncoding);
  }
}

// ---- The stream ----

void CFastInfosetWriter::PutOctets(std::string_view octets) {
  char* const out = BeginPiece(octets.size());
  EndPiece(detail::CopyShort(out, octets.data(), octets.size()));
}

void CFastInfosetWriter::GrowPiece(std::size_t size) {
  detail::CFIPieces& pieces = m_pTables->pieces;
  pieces.Grow(m_pieceSize, size);
  m_pPiece = pieces.GetLast();
  m_pieceRoom = pieces.GetRoom();
}

void CFastInfosetWriter::NextPiece() {
  if (m_pieceSize == 0) return;
  detail::CFIPieces& pieces = m_pTables->pieces;
  pieces.Begin(m_pieceSize);
  m_pPiece = pieces.GetLast();
  m_pieceRoom = pieces.GetRoom();
  m_pieceSize = 0;
}

void CFastInfosetWriter::PutPieces() {
  m_pTables->pieces.PutInto(*m_pStream, m_pieceSize);
  m_pieceSize = 0;
}

}  // namespace QzXmlLib16
