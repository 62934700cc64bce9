#include "qzxml/values/ConversionsDetail.h"
#include "qzxml/values/QzVariant.h"
#include "qzxml/xml/XmlTextPieces.h"
#include "qzxml/xml/XmlTextWriter.h"
#include "qzxml/xml/XmlWriterContext.h"

// The short ways of the text writer. What is most of a document is put into the stream's block as
// one piece, which is counted when all of it stands there: until then nothing has happened, and the
// calls of the long way can take over.

namespace QzXmlLib16 {

using namespace detail;

[[gnu::noinline]] bool CXmlTextWriter::SearchElementPrefix(const ElementTags& name,
                                                           const std::string& uri,
                                                           const std::string*& prefix) {
  prefix = nullptr;
  if (!uri.empty() && !detail::AreEqual(uri, m_pContext->GetDefaultNamespace())) {
    prefix = m_pContext->FindAlias(uri);
    if (prefix == nullptr) return false;
  }
  const std::uint64_t id = name.GetId();
  if (id != 0) {
    m_knownPrefixes[id % m_knownPrefixes.size()] = {id, m_pContext->GetNamespaceState(), prefix};
  }
  return true;
}

// The ordinary case is a known namespace, room in the stream's block, no flush due before the end
// of the element, and a content that takes no more than that room: put(out) writes it and answers
// its end, or null.
template <typename PutContent>
inline bool CXmlTextWriter::PutElement(const ElementTags& name, const std::string& uri,
                                       std::size_t room, PutContent put) {
  CXmlWriterContext* const parent = m_pContext;
  const std::string* prefix = nullptr;
  if (parent == nullptr || !FindElementPrefix(name, uri, prefix)) return false;
  const std::size_t indent = GetIndentSize(parent->GetDepth() + 1);
  const std::size_t size = 1 + kTagEolRoom + indent + kShortIndent + name.GetStart().GetRoom() +
                           room + name.GetEnd().GetRoom() + 2 * GetPrefixSize(prefix) + kTagEolRoom;
  char* const begin = ReserveInPlace(size);
  if (begin == nullptr) return false;

  char* out = begin;
  if (parent->IsStartTagOpen()) {
    *out++ = '>';
    out = PutTagEol(out);
  }
  out = PutTag(PutIndent(out, indent), name.GetStart(), 1, prefix);
  char* const content = out;
  out = put(out);
  if (out == content) {
    out[-1] = '/';
    *out++ = '>';
  } else if (out != nullptr) {
    out = PutTag(out, name.GetEnd(), 2, prefix);
  } else {
    return false;
  }
  out = PutTagEol(out);
  m_pStream->Commit(static_cast<std::uint32_t>(out - begin));
  parent->AddChild();
  parent->SetStartTagOpen(false);
  parent->CountElement();
  return true;
}

// A text with few bytes to escape.
bool CXmlTextWriter::PutTextElement(const ElementTags& name, const std::string& uri,
                                    std::string_view text, bool isDefault) {
  if (isDefault && !m_bWriteDefaultValues) text = std::string_view();
  if (!text.empty() && text[0] == '<') return false;  // may be a CDATA section
  return PutElement(name, uri, text.size() + kEntityRoom,
                    [=](char* out) { return PutShortText<false>(out, text.data(), text.size()); });
}

// No number has a byte to escape; a single char may be one.
bool CXmlTextWriter::PutValueElement(const ElementTags& name, const std::string& uri,
                                     const QzVariant& value, const std::string& format) {
  if (value.GetTypeAsEnum() == ItemType_string) {
    return PutTextElement(name, uri, value.GetStringReference(), false);
  }
  if (value.GetTypeAsEnum() == ItemType_char) return false;
  return PutElement(name, uri, kNumberSize,
                    [&](char* out) { return WriteShortText(value, format, out); });
}

// The ordinary case is an open start tag, room as above, and a value with nothing to escape.
template <typename PutContent>
inline bool CXmlTextWriter::PutAttribute(const AttributeTag& name, std::size_t room,
                                         PutContent put) {
  if (m_pContext == nullptr || !m_pContext->IsStartTagOpen()) return false;
  char* const begin = ReserveInPlace(name.GetStart().GetRoom() + room + 1);
  if (begin == nullptr) return false;
  char* out = put(name.GetStart().Put(begin));
  if (out == nullptr) return false;
  *out++ = '"';
  m_pStream->Commit(static_cast<std::uint32_t>(out - begin));
  return true;
}

bool CXmlTextWriter::PutPlainAttribute(const AttributeTag& name, std::string_view value) {
  return PutAttribute(name, value.size(), [=](char* out) {
    const bool isClean = CopyClean<true>(value.data(), value.size(), out) == value.size();
    return isClean ? out + value.size() : nullptr;
  });
}

bool CXmlTextWriter::PutValueAttribute(const AttributeTag& name, const QzVariant& value,
                                       const std::string& format) {
  if (value.GetTypeAsEnum() == ItemType_string) {
    return PutPlainAttribute(name, value.GetStringReference());
  }
  if (value.GetTypeAsEnum() == ItemType_char) return false;
  return PutAttribute(name, kNumberSize,
                      [&](char* out) { return WriteShortText(value, format, out); });
}

}  // namespace QzXmlLib16
