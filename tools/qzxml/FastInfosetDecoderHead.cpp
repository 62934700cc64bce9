#include <string_view>

#include "qzxml/fastinfoset/DocumentMarks.h"
#include "tools/qzxml/FastInfosetDecoder.h"
#include "tools/qzxml/XmlCharacters.h"

// What stands in front of the root: identification, vocabulary, notations, the document type.

namespace qztool {
namespace {

using namespace std::string_view_literals;

constexpr std::string_view kIdentification = "\xE0\x00\x00\x01"sv;

struct Component {
  std::uint32_t bit;
  std::string_view name;
};

// What is present, for the row of the octets that tell it.
template <std::size_t count>
std::string ListPresent(std::uint32_t present, const Component (&components)[count]) {
  std::string list;
  for (const Component& component : components) {
    if ((present & component.bit) == 0) continue;
    if (!list.empty()) list += ", ";
    list += component.name;
  }
  return list.empty() ? "none" : list;
}

constexpr Component kComponents[] = {
    {0x40, "additional data"},   {0x20, "initial vocabulary"}, {0x10, "notations"},
    {0x08, "unparsed entities"}, {0x04, "character encoding"}, {0x02, "standalone"},
    {0x01, "version"},
};

constexpr Component kTables[] = {
    {0x1000, "external vocabulary"}, {0x0800, "alphabets"},
    {0x0400, "algorithms"},          {0x0200, "prefixes"},
    {0x0100, "namespace names"},     {0x0080, "local names"},
    {0x0040, "other names"},         {0x0020, "other URIs"},
    {0x0010, "attribute values"},    {0x0008, "character chunks"},
    {0x0004, "other strings"},       {0x0002, "element names"},
    {0x0001, "attribute names"},
};

}  // namespace

void CFastInfosetDecoder::ReadHead() {
  for (const std::string_view declaration : QzXmlLib16::detail::kFIDeclarations) {
    if (!m_octets.IsNext(declaration)) continue;
    m_declaration = m_octets.TakeOctets(declaration.size());
    m_octets.Say("XML declaration");
    break;
  }
  if (!m_octets.IsNext(kIdentification)) {
    m_octets.TakeOctets(1);
    m_octets.Fail("this is not Fast Infoset of version 1");
  }
  m_octets.TakeOctets(kIdentification.size());
  m_octets.Say("identification, version 1");
  const std::uint32_t present = m_octets.Take();
  if ((present & 0x80) != 0) m_octets.Fail("no document begins like this:");
  if (m_octets.IsTold()) {
    m_octets.Say("optional components: " + ListPresent(present, kComponents));
  }
  if ((present & 0x40) != 0) ReadAdditionalData();
  if ((present & 0x20) != 0) ReadVocabulary();
  if ((present & 0x10) != 0) ReadNotations();
  if ((present & 0x08) != 0) ReadUnparsedEntities();
  if ((present & 0x04) != 0) ReadOctetString("character encoding");
  if ((present & 0x02) != 0) {
    m_octets.Say(m_octets.Take() != 0 ? "standalone: yes" : "standalone: no");
  }
  if ((present & 0x01) != 0) {
    ReadNonIdentifying(m_octets.Take(), m_tables.otherStrings, "version");
  }
}

std::string CFastInfosetDecoder::ReadOctetString(std::string_view what) {
  const std::uint32_t first = m_octets.Take();
  if ((first & 0x80) != 0) m_octets.Fail("no string begins like this:");
  std::string text = m_octets.TakeUtf8(m_octets.TakeLengthOnSecondBit(first), what);
  m_octets.Say("its octets", text);
  return text;
}

void CFastInfosetDecoder::ReadAdditionalData() {
  const std::uint32_t count = m_octets.TakeSequenceLength();
  if (m_octets.IsTold()) m_octets.Say("pieces of additional data: " + std::to_string(count));
  for (std::uint32_t i = 0; i < count; ++i) {
    const std::string name = ReadOctetString("name of the additional data");
    ReadOctetString("additional data");
    m_builder.Lose("the additional data \"" + name + "\" are not kept");
  }
}

void CFastInfosetDecoder::ReadVocabulary() {
  const std::uint32_t present = m_octets.TakeNumber(2);
  if ((present & 0xE000) != 0) m_octets.Fail("no vocabulary begins like this:");
  if (m_octets.IsTold()) m_octets.Say("initial vocabulary: " + ListPresent(present, kTables));
  if ((present & 0x1000) != 0) m_tables.externalVocabulary = ReadOctetString("external vocabulary");
  struct Table {
    std::uint32_t bit;
    Strings& strings;
    std::string_view what;
  };
  const Table named[] = {
      {0x0800, m_tables.alphabets, "alphabet"},
      {0x0400, m_tables.algorithms, "algorithm"},
      {0x0200, m_tables.prefixes, "prefix"},
      {0x0100, m_tables.namespaceNames, "namespace name"},
      {0x0080, m_tables.localNames, "local name"},
      {0x0040, m_tables.otherNames, "other name"},
      {0x0020, m_tables.otherUris, "other URI"},
  };
  for (const Table& table : named) {
    if ((present & table.bit) != 0) ReadStrings(table.strings, table.what);
  }
  for (const std::string& alphabet : m_tables.alphabets) m_octets.AddAlphabet(alphabet);
  for (const std::string& algorithm : m_tables.algorithms) m_octets.AddAlgorithm(algorithm);
  const Table encoded[] = {
      {0x0010, m_tables.attributeValues, "attribute value"},
      {0x0008, m_tables.characterChunks, "character chunk"},
      {0x0004, m_tables.otherStrings, "other string"},
  };
  for (const Table& table : encoded) {
    if ((present & table.bit) != 0) ReadEncodedStrings(table.strings, table.what);
  }
  if ((present & 0x0002) != 0) ReadSurrogates(m_tables.elementNames, "element name");
  if ((present & 0x0001) != 0) ReadSurrogates(m_tables.attributeNames, "attribute name");
}

void CFastInfosetDecoder::ReadStrings(Strings& table, std::string_view what) {
  const std::uint32_t count = m_octets.TakeSequenceLength();
  if (m_octets.IsTold())
    m_octets.Say("entries, " + std::string(what) + ": " + std::to_string(count));
  for (std::uint32_t i = 0; i < count; ++i) AddEntry(table, ReadOctetString(what));
}

void CFastInfosetDecoder::ReadEncodedStrings(Strings& table, std::string_view what) {
  const std::uint32_t count = m_octets.TakeSequenceLength();
  if (m_octets.IsTold())
    m_octets.Say("entries, " + std::string(what) + ": " + std::to_string(count));
  for (std::uint32_t i = 0; i < count; ++i) {
    const CFastInfosetText text = m_octets.TakeTextOnThirdBit(m_octets.Take(), what);
    m_octets.Say("its octets", text.text);
    CheckKnown(text);
    AddEntry(table, text.text);
  }
}

void CFastInfosetDecoder::ReadSurrogates(Names& table, std::string_view what) {
  const std::uint32_t count = m_octets.TakeSequenceLength();
  if (m_octets.IsTold())
    m_octets.Say("entries, " + std::string(what) + ": " + std::to_string(count));
  for (std::uint32_t i = 0; i < count; ++i) {
    const std::uint32_t flags = m_octets.Take();
    const auto takeIndex = [this](const Strings& strings, std::string_view part) {
      const std::uint32_t index = m_octets.TakeIndexOnSecondBit(m_octets.Take());
      GetEntry(strings, index, part);
      return index;
    };
    CFastInfosetTables::Name name;
    if ((flags & 0x02) != 0) name.prefix = takeIndex(m_tables.prefixes, "prefix");
    if ((flags & 0x01) != 0) {
      name.namespaceName = takeIndex(m_tables.namespaceNames, "namespace name");
    }
    name.localName = takeIndex(m_tables.localNames, "local name");
    if (m_octets.IsTold()) m_octets.Say(what, Describe(name));
    AddEntry(table, name);
  }
}

void CFastInfosetDecoder::ReadNotations() {
  std::uint32_t octet = m_octets.Take();
  for (; (octet & 0xFC) == 0xC0; octet = m_octets.Take()) {
    m_octets.Say("notation");
    const std::string name = ReadOther(m_tables.otherNames, "its name");
    if ((octet & 0x02) != 0) ReadOther(m_tables.otherUris, "its system identifier");
    if ((octet & 0x01) != 0) ReadOther(m_tables.otherUris, "its public identifier");
    m_builder.Lose("the notation \"" + name + "\" is not kept");
  }
  if (octet != 0xF0) m_octets.Fail("no notation begins like this:");
  m_octets.Say("end of the notations");
}

void CFastInfosetDecoder::ReadUnparsedEntities() {
  std::uint32_t octet = m_octets.Take();
  for (; (octet & 0xFE) == 0xD0; octet = m_octets.Take()) {
    m_octets.Say("unparsed entity");
    const std::string name = ReadOther(m_tables.otherNames, "its name");
    ReadOther(m_tables.otherUris, "its system identifier");
    if ((octet & 0x01) != 0) ReadOther(m_tables.otherUris, "its public identifier");
    ReadOther(m_tables.otherNames, "its notation");
    m_builder.Lose("the unparsed entity \"" + name + "\" is not kept");
  }
  if (octet != 0xF0) m_octets.Fail("no unparsed entity begins like this:");
  m_octets.Say("end of the unparsed entities");
}

void CFastInfosetDecoder::ReadDocumentType(std::uint32_t first) {
  m_octets.Say("document type");
  if (m_hasDocumentType) m_octets.Fail("the document has two document types");
  m_hasDocumentType = true;
  std::string systemId;
  std::string publicId;
  if ((first & 0x02) != 0) systemId = ReadOther(m_tables.otherUris, "its system identifier");
  if ((first & 0x01) != 0) publicId = ReadOther(m_tables.otherUris, "its public identifier");
  if (!systemId.empty()) {
    const bool hasPublicId = !publicId.empty();
    const char quote = systemId.find('"') == std::string::npos ? '"' : '\'';
    m_documentType =
        (hasPublicId ? " PUBLIC \"" + publicId + '"' : " SYSTEM") + ' ' + quote + systemId + quote;
  }
  constexpr char kPublicCharacters[] =
      " \r\nabcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789-'()+,./:=?;!*#@$_%";
  const bool isWritable =
      publicId.find_first_not_of(kPublicCharacters) == std::string::npos &&
      (systemId.find('"') == std::string::npos || systemId.find('\'') == std::string::npos) &&
      FindNoXmlCharacter(systemId) == std::string::npos && (publicId.empty() || !systemId.empty());
  if (!isWritable) {
    m_documentType.clear();
    m_builder.Lose("the identifiers of the document type are not kept");
  }
  std::uint32_t octet = m_octets.Take();
  for (; octet == 0xE1; octet = m_octets.Take()) ReadInstruction(true);
  if (octet != 0xF0 && octet != 0xFF) m_octets.Fail("no instruction begins like this:");
  m_octets.Say("end of the document type");
  m_isParentEnded = octet == 0xFF;
}

// The declaration of XML has the name of the root in it.
void CFastInfosetDecoder::EndDocumentType() {
  if (!m_hasDocumentType) return;
  m_document.documentType = "<!DOCTYPE " + m_document.root->name->GetQName() + m_documentType + '>';
}

}  // namespace qztool
