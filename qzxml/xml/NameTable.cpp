#include "qzxml/xml/NameTable.h"

#include <cstring>
#include <initializer_list>
#include <new>
#include <utility>

#include "qzxml/runtime/Encoder.h"
#include "qzxml/xml/XmlNamespaces.h"

namespace QzXmlLib16::detail {
namespace {

constexpr std::size_t kFirstSlots = 64;
constexpr std::size_t kLongUri = 1024;  // octets

bool IsOneOf(const std::string& text, std::initializer_list<const char*> list) {
  for (const char* candidate : list) {
    if (text == candidate) return true;
  }
  return false;
}

}  // namespace

CNameTable::CNameTable(const CXmlDocument* document, CBlocks& blocks, CGrowthBound& growth)
    : m_document(document), m_blocks(blocks), m_growth(growth) {
  Rehash(kFirstSlots);
}

CNameTable::~CNameTable() { DestroyEntries(); }

const XmlName* CNameTable::Find(std::string_view uri, std::string_view localName) {
  const std::size_t uriLength = uri.size();
  m_pairKey.resize(uriLength + localName.size() + sizeof uriLength);
  char* const key = m_pairKey.data();
  uri.copy(key, uriLength);
  localName.copy(key + uriLength, localName.size());
  std::memcpy(key + uriLength + localName.size(), &uriLength, sizeof uriLength);
  const std::uint64_t hash = HashText(m_pairKey);
  const Entry* entry = Lookup(m_pairKey, hash);
  return entry != nullptr ? entry : Insert(m_pairKey, hash, uri, localName);
}

CNameTable::Entry* CNameTable::LookupJoined(std::string_view key) {
  const std::uint64_t hash = HashText(key);
  if (Entry* entry = Lookup(key, hash)) return entry;
  std::string converted;
  std::string_view name = key;
  if (!IsLocalUtf8()) {
    converted = Utf8ToLocal(key.data(), static_cast<std::uint32_t>(key.size()));
    name = converted;
  }
  const std::size_t bar = name.find('|');
  if (bar == std::string_view::npos) return Insert(key, hash, std::string_view(), name);
  return Insert(key, hash, name.substr(0, bar), name.substr(bar + 1));
}

CNameTable::Entry* CNameTable::Insert(std::string_view key, std::uint64_t hash,
                                      std::string_view uri, std::string_view localName) {
  m_growth.Count(key.size());
  if ((m_entries.size() + 1) * 2 > m_slots.size()) Rehash(m_slots.size() * 2);
  m_entries.reserve(m_slots.size() / 2);
  const std::string* const storedUri = StoreUri(uri);
  const StoredText* const storedKey = m_blocks.AddText(key);
  const std::size_t octets = localName.size() + (uri.size() >= kLongUri ? uri.size() : 0);
  Entry* const entry = new (m_blocks.Take(sizeof(Entry)))
      Entry{{m_document, storedUri, std::string(localName), octets, false, false, nullptr},
            hash,
            nullptr,
            storedKey};
  if (uri == std::string_view(kXmlSchemaInstanceNamespace) ||
      uri == std::string_view(kXmlnsNamespace)) {
    entry->isNamespaceAttribute =
        IsOneOf(entry->localName, {"xmlns", "type", "schemaLocation", "noNamespaceSchemaLocation"});
    entry->isNilAttribute = entry->localName == "nil";
  }
  m_entries.push_back(entry);
  std::size_t i = hash & m_mask;
  while (m_slots[i] != nullptr) i = (i + 1) & m_mask;
  m_slots[i] = entry;
  return entry;
}

// Names that come one after the other mostly share their namespace, or have none.
const std::string* CNameTable::StoreUri(std::string_view uri) {
  std::size_t left = 4;
  for (const std::string& stored : m_uris) {
    if (stored == uri) return &stored;
    if (--left == 0) break;
  }
  return &m_uris.emplace_front(uri);
}

void CNameTable::Rehash(std::size_t slotCount) {
  std::vector<Entry*> slots(slotCount);
  const std::size_t mask = slotCount - 1;
  for (Entry* entry : m_entries) {
    std::size_t i = entry->hash & mask;
    while (slots[i] != nullptr) i = (i + 1) & mask;
    slots[i] = entry;
  }
  m_slots = std::move(slots);
  m_mask = mask;
}

void CNameTable::DestroyEntries() {
  for (Entry* entry : m_entries) entry->~Entry();
}

void CNameTable::Clear() {
  if (m_entries.empty()) return;
  DestroyEntries();
  m_entries = std::vector<Entry*>();
  m_first = nullptr;
  m_pNext = &m_first;
  m_uris.clear();
  Rehash(kFirstSlots);
}

}  // namespace QzXmlLib16::detail
