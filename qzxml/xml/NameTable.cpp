#include "qzxml/xml/NameTable.h"

#include <initializer_list>
#include <random>
#include <utility>

#include "qzxml/runtime/Encoder.h"
#include "qzxml/xml/XmlNamespaces.h"

namespace QzXmlLib16::detail {
namespace {

constexpr std::size_t kFirstSlots = 32;

std::uint64_t MakeSalt() {
  std::random_device device;
  return (static_cast<std::uint64_t>(device()) << 32) ^ device();
}

std::uint64_t GetSalt() {
  static const std::uint64_t salt = MakeSalt();
  return salt;
}

bool IsOneOf(const std::string& text, std::initializer_list<const char*> list) {
  for (const char* candidate : list) {
    if (text == candidate) return true;
  }
  return false;
}

}  // namespace

CNameTable::CNameTable(const CXmlDocument* document) : m_document(document), m_salt(GetSalt()) {
  Rehash(kFirstSlots);
}

CNameTable::~CNameTable() = default;

const XmlName* CNameTable::Find(std::string_view uri, std::string_view localName) {
  const std::size_t uriLength = uri.size();
  m_pairKey.assign(uri).append(localName);
  m_pairKey.append(reinterpret_cast<const char*>(&uriLength), sizeof uriLength);
  const std::uint64_t hash = Hash(m_pairKey);
  const Entry* entry = Lookup(m_pairKey, hash);
  return entry != nullptr ? entry
                          : Insert(m_pairKey, hash, std::string(uri), std::string(localName));
}

const XmlName* CNameTable::InsertJoined(std::string_view key, std::uint64_t hash) {
  std::string name = Utf8ToLocal(key.data(), static_cast<std::uint32_t>(key.size()));
  const std::size_t bar = name.find('|');
  if (bar == std::string::npos) return Insert(key, hash, std::string(), std::move(name));
  return Insert(key, hash, name.substr(0, bar), name.substr(bar + 1));
}

const XmlName* CNameTable::Insert(std::string_view key, std::uint64_t hash, std::string uri,
                                  std::string localName) {
  if ((m_entries.size() + 1) * 2 > m_slots.size()) Rehash(m_slots.size() * 2);
  auto entry = std::make_unique<Entry>();
  const bool isSchemaUri = uri == kXmlSchemaInstanceNamespace || uri == kXmlnsNamespace;
  entry->document = m_document;
  entry->isNamespaceAttribute =
      isSchemaUri &&
      IsOneOf(localName, {"xmlns", "type", "schemaLocation", "noNamespaceSchemaLocation"});
  entry->isNilAttribute = isSchemaUri && localName == "nil";
  entry->localName = std::move(localName);
  entry->uri = std::move(uri);
  entry->hash = hash;
  entry->key = key;
  m_entries.push_back(std::move(entry));
  const Entry* added = m_entries.back().get();
  m_uriOctets += added->uri.size();
  std::size_t i = hash & m_mask;
  while (m_slots[i] != nullptr) i = (i + 1) & m_mask;
  m_slots[i] = added;
  return added;
}

void CNameTable::Rehash(std::size_t slotCount) {
  std::vector<const Entry*> slots(slotCount);
  const std::size_t mask = slotCount - 1;
  for (const std::unique_ptr<Entry>& entry : m_entries) {
    std::size_t i = entry->hash & mask;
    while (slots[i] != nullptr) i = (i + 1) & mask;
    slots[i] = entry.get();
  }
  m_slots = std::move(slots);
  m_mask = mask;
}

void CNameTable::Clear() {
  if (m_entries.empty()) return;
  m_entries.clear();
  m_entries.shrink_to_fit();
  m_uriOctets = 0;
  Rehash(kFirstSlots);
}

}  // namespace QzXmlLib16::detail
