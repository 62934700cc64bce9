#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>

#include "qzxml/fastinfoset/FITextIndexesFind.h"
#include "qzxml/fastinfoset/OctetForms.h"
#include "qzxml/xml/WrittenName.h"

namespace QzXmlLib16::detail {

// Between the parts of a name in the key of the tables. No character of XML 1.0, so that no name
// holds it.
inline constexpr char kNameSeparator = '\x01';

// The name of elements or attributes without a prefix, made once for many of them, with all that
// the tables of a document look it up by.
class FastInfosetName {
 public:
  struct Text {
    explicit Text(std::string whole) : text(std::move(whole)), key(CFITextIndexes::KeyOf(text)) {}

    std::string text;
    std::uint64_t key;
  };

  // The id is that of ElementTags or of AttributeTag. The namespace has to stay where it is; names
  // of one namespace share one string (XmlTextName::GetUri), as it is told by its address.
  FastInfosetName(std::uint64_t id, const std::string& name, const std::string& uri)
      : m_id(id),
        m_local(name),
        m_literal(LiteralOf(name)),
        m_uri(&uri),
        m_uriKey(CFITextIndexes::KeyOf(uri)),
        m_whole(name + kNameSeparator + uri + kNameSeparator) {}

  std::uint64_t GetId() const { return m_id; }
  const Text& GetLocal() const { return m_local; }
  const Text& GetWhole() const { return m_whole; }  // the key of the name
  const std::string& GetName() const { return m_local.text; }
  // The local part with its length, as in a name in full; empty for a long one.
  const SteppedText& GetLiteral() const { return m_literal; }
  const std::string& GetUri() const { return *m_uri; }
  std::uint64_t GetUriKey() const { return m_uriKey; }

  // What it takes in full.
  std::size_t GetRoom() const {
    return 1 + 2 * kFormSize + m_whole.text.size() + SteppedText::kStep;
  }

 private:
  static std::string LiteralOf(const std::string& name) {
    constexpr std::size_t kMost = 64;  // of one octet
    std::string literal;
    if (name.empty() || name.size() > kMost) return literal;
    PutLengthOnSecondBit(literal, 0x00, static_cast<std::uint32_t>(name.size()));
    return literal += name;
  }

  std::uint64_t m_id;
  Text m_local;
  SteppedText m_literal;
  const std::string* m_uri;
  std::uint64_t m_uriKey;
  Text m_whole;
};

}  // namespace QzXmlLib16::detail
