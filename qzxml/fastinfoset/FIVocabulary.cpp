#include "qzxml/fastinfoset/FIVocabulary.h"

#include <algorithm>
#include <cstdio>

#include "qzxml/fastinfoset/FITextIndexesFind.h"
#include "qzxml/fastinfoset/FastInfosetName.h"
#include "qzxml/fastinfoset/Messages.h"
#include "qzxml/fastinfoset/SmallAlphabets.h"
#include "qzxml/runtime/Functions.h"
#include "qzxml/runtime/QzException.h"
#include "qzxml/xml/ShortText.h"
#include "qzxml/xml/XmlNamespaces.h"

namespace QzXmlLib16 {
namespace {

template <typename Entry>
const Entry& EntryAt(const std::vector<Entry>& table, std::uint32_t index) {
  if (index == 0 || index > table.size()) {
    throw CQzException(FormatString(Messages::kFIIndexOutsideTable, index,
                                    static_cast<std::uint32_t>(table.size())));
  }
  return table[index - 1];
}

}  // namespace

// ---- The tables for reading ----

CFIVocabulary::CFIStringTable::CFIStringTable() = default;
CFIVocabulary::CFIStringTable::CFIStringTable(const CFIStringTable& other) = default;
CFIVocabulary::CFIStringTable& CFIVocabulary::CFIStringTable::operator=(
    const CFIStringTable& other) = default;
CFIVocabulary::CFIStringTable::~CFIStringTable() = default;

const std::string& CFIVocabulary::CFIStringTable::GetEntry(std::uint32_t index) const {
  return EntryAt(m_table, index);
}

CFIVocabulary::CFIQNameTable::CFIQNameTable() = default;
CFIVocabulary::CFIQNameTable::CFIQNameTable(const CFIQNameTable& other) = default;
CFIVocabulary::CFIQNameTable& CFIVocabulary::CFIQNameTable::operator=(const CFIQNameTable& other) =
    default;
CFIVocabulary::CFIQNameTable::~CFIQNameTable() = default;

const CFIVocabulary::CQNameParts& CFIVocabulary::CFIQNameTable::GetEntry(
    std::uint32_t index) const {
  return EntryAt(m_table, index);
}

// ---- The vocabulary ----

CFIVocabulary::CFIVocabulary() : m_restrictedAlphabets(GetAlphabets()) {
  AddPrefixName("xml");
  AddNamespaceName(kXmlNamespace);
}

void CFIVocabulary::Begin(detail::CFIIndexMaps& maps) {
  AddValueToMap("xml", maps.prefixNames);
  AddValueToMap(kXmlNamespace, maps.namespaceNames);
}

const std::vector<std::string>& CFIVocabulary::GetAlphabets() {
  static const std::vector<std::string> alphabets{std::string(detail::kNumericAlphabet),
                                                  std::string(detail::kDateAndTimeAlphabet)};
  return alphabets;
}

CFIVocabulary::CFIVocabulary(const CFIVocabulary& other) = default;
CFIVocabulary& CFIVocabulary::operator=(const CFIVocabulary& other) = default;
CFIVocabulary::~CFIVocabulary() = default;

void CFIVocabulary::AddAttribute(const std::string& prefix, const std::string& namespaceName,
                                 const std::string& localName) {
  AddQName(prefix, namespaceName, localName, m_maps.attributeNames, m_attributeNames);
}

void CFIVocabulary::AddElement(const std::string& prefix, const std::string& namespaceName,
                               const std::string& localName) {
  AddQName(prefix, namespaceName, localName, m_maps.elementNames, m_elementNames);
}

void CFIVocabulary::AddAttributeValue(const std::string& value) {
  AddValueToMap(value, m_maps.attributeValues);
  AddValueToVector(value, m_attributeValues);
}

void CFIVocabulary::AddElementValue(const std::string& value) {
  AddValueToMap(value, m_maps.characterChunks);
  AddValueToVector(value, m_characterChunks);
}

void CFIVocabulary::AddPrefixName(const std::string& name) {
  AddValueToMap(name, m_maps.prefixNames);
  AddValueToVector(name, m_prefixNames);
}

void CFIVocabulary::AddNamespaceName(const std::string& name) {
  AddValueToMap(name, m_maps.namespaceNames);
  AddValueToVector(name, m_namespaceNames);
}

void CFIVocabulary::AddLocalName(const std::string& name) {
  AddValueToMap(name, m_maps.localNames);
  AddValueToVector(name, m_localNames);
}

bool CFIVocabulary::FindPrefixNameIndex(const std::string& name, std::uint32_t& index) const {
  return FindIndex(m_maps.prefixNames, name, index);
}

bool CFIVocabulary::FindNamespaceNameIndex(const std::string& name, std::uint32_t& index) const {
  return FindIndex(m_maps.namespaceNames, name, index);
}

bool CFIVocabulary::FindLocalNameIndex(const std::string& name, std::uint32_t& index) const {
  return FindIndex(m_maps.localNames, name, index);
}

// ---- Pieces ----

std::string_view CFIVocabulary::FormKey(const std::string& prefix, const std::string& namespaceName,
                                        const std::string& localName, std::string& room) {
  const std::size_t size = localName.size() + namespaceName.size() + prefix.size() + 2;
  if (room.size() < size) room.resize(size);
  char* out = detail::CopyShort(room.data(), localName.data(), localName.size());
  *out++ = detail::kNameSeparator;
  out = detail::CopyShort(out, namespaceName.data(), namespaceName.size());
  *out++ = detail::kNameSeparator;
  detail::CopyShort(out, prefix.data(), prefix.size());
  return {room.data(), size};
}

void CFIVocabulary::AddQName(const std::string& prefix, const std::string& namespaceName,
                             const std::string& localName, CIndexMap& map, CFIQNameTable& table) {
  std::string room;
  const std::string_view key = FormKey(prefix, namespaceName, localName, room);
  CQNameParts parts(0, 0, 0);
  std::uint32_t index = 0;
  if (FindIndex(map, key, index)) return;
  if (!prefix.empty() && !FindPrefixNameIndex(prefix, parts.m_dwPrefixIndex)) {
    AddPrefixName(prefix);
    parts.m_dwPrefixIndex = static_cast<std::uint32_t>(m_prefixNames.m_table.size());
  }
  if (!namespaceName.empty() && !FindNamespaceNameIndex(namespaceName, parts.m_dwNamespaceIndex)) {
    AddNamespaceName(namespaceName);
    parts.m_dwNamespaceIndex = static_cast<std::uint32_t>(m_namespaceNames.m_table.size());
  }
  if (!FindLocalNameIndex(localName, parts.m_dwLocalNameIndex)) {
    AddLocalName(localName);
    parts.m_dwLocalNameIndex = static_cast<std::uint32_t>(m_localNames.m_table.size());
  }
  AddValueToMap(key, map);
  AddQNameToVector(parts, table);
}

void CFIVocabulary::AddQNameToVector(const CQNameParts& parts, CFIQNameTable& table) {
  if (table.m_table.size() < kMaxEntries) table.m_table.push_back(parts);
}

void CFIVocabulary::AddValueToVector(const std::string& value, CFIStringTable& table) {
  if (table.m_table.size() < kMaxEntries) table.m_table.push_back(value);
}

void CFIVocabulary::AddValueToMap(std::string_view value, CIndexMap& map) {
  const std::size_t size = map.GetCount();
  if (size < kMaxEntries) map.Set(value, static_cast<std::uint32_t>(size + 1));
}

bool CFIVocabulary::FindIndex(const CIndexMap& map, std::string_view key, std::uint32_t& index) {
  const std::uint32_t found = map.Find(key);
  if (found == 0) return false;
  index = found;
  return true;
}

// ---- Dump ----

void CFIVocabulary::DumpMap(const char* title, const CIndexMap& map) {
  std::printf("\n%s\n", title);
  auto entries = map.GetAll();
  std::sort(entries.begin(), entries.end());
  for (const auto& [text, index] : entries) {
    std::printf("%s, %d\n", text.c_str(), static_cast<int>(index));
  }
}

void CFIVocabulary::Dump() const {
  std::printf("\n** Dumping FI Tables **\n");
  DumpMap("Attr Names", m_maps.attributeNames);
  DumpMap("Attr Values", m_maps.attributeValues);
  DumpMap("Character Chunks", m_maps.characterChunks);
  DumpMap("Element Names", m_maps.elementNames);
  DumpMap("Local Names", m_maps.localNames);
  DumpMap("Namespace Names", m_maps.namespaceNames);
  DumpMap("Prefix Names", m_maps.prefixNames);
}

}  // namespace QzXmlLib16
