#include "tools/qzxml/FastInfosetDecoder.h"

#include <utility>

#include "tools/qzxml/Console.h"

// An item ends with four bits, 1111. Where the next item begins in the next octet, four zeros
// follow; two items that end together share the octet 0xFF. So there are the octets F0 and FF, and
// behind FF the element around has ended as well.

namespace qztool {
namespace {

constexpr std::uint32_t kEnd = 0xF0;
constexpr std::uint32_t kTwoEnds = 0xFF;
constexpr std::uint32_t kInstruction = 0xE1;
constexpr std::uint32_t kComment = 0xE2;

std::string Entry(std::string_view what, std::size_t index) {
  return std::string(what) + ", entry " + std::to_string(index) + " of its table";
}

}  // namespace

const OctetRows& CFastInfosetDecoder::NoRows() {
  static const OctetRows none;
  return none;
}

CFastInfosetDecoder::CFastInfosetDecoder(const std::string& octets, CContentDocument& document,
                                         const OctetRows& rows)
    : m_document(document),
      m_builder(document, octets.size(), false),
      m_octets(octets, rows, [this](const std::string& message) { m_builder.Fail(message); }) {
  m_builder.SetPlace([this] {
    const std::size_t behind = m_octets.GetPlace();
    return " at offset " + std::to_string(behind == 0 ? 0 : behind - 1);
  });
}

void CFastInfosetDecoder::Run(CProgress& progress) {
  m_progress = &progress;
  ReadHead();
  ReadDocument(progress);
  m_builder.EndDocument();
  EndDocumentType();
}

void CFastInfosetDecoder::ReadDocument(CProgress& progress) {
  for (bool isEnded = false; !isEnded;) {
    const std::uint32_t octet = m_octets.Take();
    progress.Tell(m_octets.GetPlace(), m_octets.GetSize());
    if (octet < 0x80) {
      ReadElement(octet);
      isEnded = std::exchange(m_isParentEnded, false);
    } else if (octet == kInstruction) {
      ReadInstruction(false);
    } else if (octet == kComment) {
      ReadComment();
    } else if ((octet & 0xFC) == 0xC4) {
      ReadDocumentType(octet);
      isEnded = std::exchange(m_isParentEnded, false);
    } else if (octet == kEnd || octet == kTwoEnds) {
      m_octets.Say("end of the document");
      isEnded = true;
    } else {
      m_octets.Fail("no item begins like this:");
    }
  }
  const std::size_t behind = m_octets.GetSize() - m_octets.GetPlace();
  if (behind == 0) return;
  m_octets.TakeOctets(behind);
  m_octets.Say("behind the end of the document");
  m_document.losses.push_back({nullptr, "octets behind the end of the document are not kept (" +
                                            CountOctets(behind) + ')'});
}

// ---- Elements ----

void CFastInfosetDecoder::ReadElement(std::uint32_t first) {
  m_progress->Tell(m_octets.GetPlace(), m_octets.GetSize());
  BeginElement(first);
  const bool hasAttributes = (first & 0x40) != 0;
  const bool isEnded = hasAttributes && ReadAttributes();
  if (!isEnded) ReadChildren();
  m_builder.EndElement();
}

void CFastInfosetDecoder::BeginElement(std::uint32_t first) {
  const std::string_view what =
      (first & 0x40) != 0 ? "element with attributes" : "element without attributes";
  std::vector<std::pair<std::uint32_t, std::uint32_t>> declarations;
  std::uint32_t name = first;
  if ((first & 0x3F) == 0x38) {
    m_octets.Say(std::string(what) + ", with namespace attributes");
    std::uint32_t octet = m_octets.Take();
    for (; (octet & 0xFC) == 0xCC; octet = m_octets.Take()) {
      m_octets.Say("namespace attribute");
      const std::uint32_t prefix =
          (octet & 0x02) != 0 ? ReadIdentifying(m_tables.prefixes, "prefix") : 0;
      const std::uint32_t uri =
          (octet & 0x01) != 0 ? ReadIdentifying(m_tables.namespaceNames, "namespace name") : 0;
      declarations.emplace_back(prefix, uri);
    }
    if (octet != kEnd) m_octets.Fail("no namespace attribute begins like this:");
    m_octets.Say("end of the namespace attributes");
    name = m_octets.Take();
    if ((name & 0xC0) != 0) m_octets.Fail("no element name begins like this:");
  }
  CFastInfosetTables::Name parts;
  const bool isSeparate = name != first || (first & 0x3F) == 0x38;
  if ((name & 0x3C) == 0x3C) {
    m_octets.Say(isSeparate ? "element name in full" : std::string(what) + ", its name in full");
    parts = ReadName(name, m_tables.elementNames);
  } else {
    const std::uint32_t index = m_octets.TakeIndexOnThirdBit(name);
    parts = GetEntry(m_tables.elementNames, index, "element names");
    if (m_octets.IsTold()) {
      m_octets.Say(Entry(isSeparate ? "element name" : what, index), Describe(parts));
    }
  }
  m_builder.StartElement(GetPart(m_tables.prefixes, parts.prefix),
                         GetPart(m_tables.localNames, parts.localName),
                         GetPart(m_tables.namespaceNames, parts.namespaceName));
  for (const auto& [prefix, uri] : declarations) {
    m_builder.AddDeclaration(GetPart(m_tables.prefixes, prefix),
                             GetPart(m_tables.namespaceNames, uri));
  }
}

// Answers whether the element ends with them.
bool CFastInfosetDecoder::ReadAttributes() {
  for (;;) {
    const std::uint32_t octet = m_octets.Take();
    if (octet == kEnd) {
      m_octets.Say("end of the attributes");
      return false;
    }
    if (octet == kTwoEnds) {
      m_octets.Say("end of the attributes and of the element");
      return true;
    }
    if (octet >= 0x80) m_octets.Fail("no attribute begins like this:");
    ReadAttribute(octet);
  }
}

void CFastInfosetDecoder::ReadAttribute(std::uint32_t first) {
  CFastInfosetTables::Name parts;
  if ((first & 0x7C) == 0x78) {
    m_octets.Say("attribute, its name in full");
    parts = ReadName(first, m_tables.attributeNames);
  } else {
    const std::uint32_t index = m_octets.TakeIndexOnSecondBit(first);
    parts = GetEntry(m_tables.attributeNames, index, "attribute names");
    if (m_octets.IsTold()) m_octets.Say(Entry("attribute", index), Describe(parts));
  }
  CFastInfosetText value =
      ReadNonIdentifying(m_octets.Take(), m_tables.attributeValues, "attribute value");
  CheckKnown(value);
  m_builder.AddAttribute(
      GetPart(m_tables.prefixes, parts.prefix), GetPart(m_tables.localNames, parts.localName),
      GetPart(m_tables.namespaceNames, parts.namespaceName), std::move(value.text));
}

void CFastInfosetDecoder::ReadChildren() {
  for (;;) {
    const std::uint32_t octet = m_octets.Take();
    if (octet < 0x80) {
      ReadElement(octet);
      if (std::exchange(m_isParentEnded, false)) return;
    } else if (octet < 0xC0) {
      ReadText(octet);
    } else if (octet == kInstruction) {
      ReadInstruction(false);
    } else if (octet == kComment) {
      ReadComment();
    } else if ((octet & 0xFC) == 0xC8) {
      ReadReference(octet);
    } else if (octet == kEnd) {
      m_octets.Say("end of the element");
      return;
    } else if (octet == kTwoEnds) {
      const bool isRoot = m_builder.GetOpenElement()->parent == nullptr;
      m_octets.Say(isRoot ? "end of the element and of the document"
                          : "end of the element and of the one around it");
      m_isParentEnded = true;
      return;
    } else {
      m_octets.Fail("no item begins like this:");
    }
  }
}

void CFastInfosetDecoder::ReadText(std::uint32_t first) {
  CFastInfosetText text;
  if ((first & 0x20) != 0) {
    const std::uint32_t index = m_octets.TakeIndexOnFourthBit(first);
    text.text = GetEntry(m_tables.characterChunks, index, "character chunks");
    m_octets.Say(m_octets.IsTold() ? Entry("character chunk", index) : std::string(), text.text);
  } else {
    text = m_octets.TakeTextOnFifthBit(first, "character chunk");
    EndLiteral(text.text, (first & 0x10) != 0, m_tables.characterChunks);
  }
  CheckKnown(text);
  if (!text.text.empty()) {
    m_builder.AddText(text.text, text.isCData ? ContentKind::CData : ContentKind::Text);
  }
}

void CFastInfosetDecoder::ReadInstruction(bool isInDocumentType) {
  m_octets.Say("processing instruction");
  const std::string target = ReadOther(m_tables.otherNames, "its target");
  const CFastInfosetText data =
      ReadNonIdentifying(m_octets.Take(), m_tables.otherStrings, "its data");
  if (!isInDocumentType) {
    m_builder.AddInstruction(target, data.text);
  } else {
    m_builder.Lose("the processing instruction \"" + target +
                   "\" in the document type is not kept");
  }
}

void CFastInfosetDecoder::ReadComment() {
  m_octets.Say("comment");
  m_builder.AddComment(ReadNonIdentifying(m_octets.Take(), m_tables.otherStrings, "its text").text);
}

void CFastInfosetDecoder::ReadReference(std::uint32_t first) {
  m_octets.Say("reference to an entity");
  const std::string name = ReadOther(m_tables.otherNames, "its name");
  if ((first & 0x02) != 0) ReadOther(m_tables.otherUris, "its system identifier");
  if ((first & 0x01) != 0) ReadOther(m_tables.otherUris, "its public identifier");
  m_builder.EndText();
  m_builder.Lose("the reference to the entity \"" + name + "\" is not kept");
}

// ---- Names and strings ----

// A name in full; the bits 7 and 8 tell of a prefix and of a namespace.
CFastInfosetTables::Name CFastInfosetDecoder::ReadName(std::uint32_t flags, Names& table) {
  const bool hasPrefix = (flags & 0x02) != 0;
  const bool hasNamespace = (flags & 0x01) != 0;
  if (hasPrefix && !hasNamespace) m_octets.Fail("a name has a prefix and no namespace:");
  CFastInfosetTables::Name name;
  if (hasPrefix) name.prefix = ReadIdentifying(m_tables.prefixes, "its prefix");
  if (hasNamespace) {
    name.namespaceName = ReadIdentifying(m_tables.namespaceNames, "its namespace name");
  }
  name.localName = ReadIdentifying(m_tables.localNames, "its local name");
  table.push_back(name);
  return name;
}

// Answers the index in the table, to which a string in full has been added. Behind the last entry
// that a table may have, no index leads to it.
std::uint32_t CFastInfosetDecoder::ReadIdentifying(Strings& table, std::string_view what) {
  const std::uint32_t first = m_octets.Take();
  if ((first & 0x80) != 0) {
    const std::uint32_t index = m_octets.TakeIndexOnSecondBit(first);
    const std::string& text = GetEntry(table, index, what);
    if (m_octets.IsTold()) m_octets.Say(Entry(what, index), text);
    return index;
  }
  table.push_back(m_octets.TakeUtf8(m_octets.TakeLengthOnSecondBit(first), what));
  if (m_octets.IsTold()) m_octets.Say(Entry("its octets", table.size()), table.back());
  return static_cast<std::uint32_t>(table.size());
}

std::string CFastInfosetDecoder::ReadOther(Strings& table, std::string_view what) {
  return std::string(GetPart(table, ReadIdentifying(table, what)));
}

CFastInfosetText CFastInfosetDecoder::ReadNonIdentifying(std::uint32_t first, Strings& table,
                                                         std::string_view what) {
  CFastInfosetText text;
  if (first == kTwoEnds) {
    m_octets.Say(m_octets.IsTold() ? std::string(what) + ", empty" : std::string());
  } else if ((first & 0x80) != 0) {
    const std::uint32_t index = m_octets.TakeIndexOnSecondBit(first);
    text.text = GetEntry(table, index, what);
    m_octets.Say(m_octets.IsTold() ? Entry(what, index) : std::string(), text.text);
  } else {
    text = m_octets.TakeTextOnThirdBit(first, what);
    EndLiteral(text.text, (first & 0x40) != 0, table);
  }
  return text;
}

// Says the octets of a value, which may go into its table.
void CFastInfosetDecoder::EndLiteral(const std::string& text, bool isAdded, Strings& table) {
  const std::size_t size = table.size();
  if (isAdded) AddEntry(table, text);
  if (!m_octets.IsTold()) return;
  m_octets.Say(table.size() > size ? Entry("its octets", table.size()) : "its octets", text);
}

void CFastInfosetDecoder::CheckKnown(const CFastInfosetText& text) {
  if (text.unknownAlgorithm.empty() || m_acceptUnknown) return;
  m_octets.Fail("a value is encoded by the algorithm \"" + text.unknownAlgorithm +
                "\", which is not known,");
}

void CFastInfosetDecoder::FailEntry(std::uint32_t index, std::size_t size,
                                    std::string_view what) const {
  std::string message = "there is no entry " + std::to_string(index) + " in a table of " +
                        std::to_string(size) + " (" + std::string(what) + ')';
  if (!m_tables.externalVocabulary.empty()) {
    message += ", nor is the vocabulary \"" + m_tables.externalVocabulary + "\" known,";
  }
  m_octets.Fail(message);
}

std::string_view CFastInfosetDecoder::GetPart(const Strings& table, std::uint32_t index) const {
  return index == 0 || index > table.size() ? std::string_view()
                                            : std::string_view(table[index - 1]);
}

std::string CFastInfosetDecoder::Describe(const CFastInfosetTables::Name& name) const {
  const std::string prefix(GetPart(m_tables.prefixes, name.prefix));
  const std::string localName(GetPart(m_tables.localNames, name.localName));
  return prefix.empty() ? localName : prefix + ':' + localName;
}

}  // namespace qztool
