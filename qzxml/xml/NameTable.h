#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <forward_list>
#include <string>
#include <string_view>
#include <vector>

#include "qzxml/xml/Arena.h"
#include "qzxml/xml/GrowthBound.h"
#include "qzxml/xml/TextHash.h"
#include "qzxml/xml/XmlName.h"

namespace QzXmlLib16::detail {

// The names of one document, found by the bytes that a parser delivers, so that a name that is
// known costs no string. A name's address never changes before Clear.
// Open addressing over a power of two slots, at most half of them taken.
// A document can give a long namespace to many short names. So what a new name takes is counted
// against the growth, and each node counts its namespace when that is a long one, as it takes time
// to compare.
class CNameTable {
 public:
  CNameTable(const CXmlDocument* document, CBlocks& blocks, CGrowthBound& growth);
  CNameTable(const CNameTable&) = delete;
  CNameTable& operator=(const CNameTable&) = delete;
  ~CNameTable();

  // The name of UTF-8 bytes as Expat joins them: the URI, "|", and the local name; or the local
  // name alone. A new name is converted to the local encoding and split at the first "|" then.
  // Throws as CGrowthBound::Count.
  // Documents repeat themselves: the name that followed the last one before is tried first.
  const XmlName* FindJoined(const char* name) {
    Entry*& next = *m_pNext;
    if (next == nullptr || std::strcmp(next->key->GetBytes(), name) != 0) next = LookupJoined(name);
    m_pNext = &next->follower;
    return next;
  }

  // The name of two local texts. Throws likewise.
  const XmlName* Find(std::string_view uri, std::string_view localName);

  // Forgets all names, before their blocks are freed.
  void Clear();

 private:
  struct Entry : XmlName {
    std::uint64_t hash;
    Entry* follower;  // the name that was asked for behind this one, or null
    // As looked up: joined bytes, or both texts and the length of the first,
    // which has a zero byte, so that the two kinds never meet.
    const StoredText* key;
  };

  // The entry, or null.
  Entry* Lookup(std::string_view key, std::uint64_t hash) const {
    for (std::size_t i = hash & m_mask;; i = (i + 1) & m_mask) {
      Entry* entry = m_slots[i];
      if (entry == nullptr || (entry->hash == hash && entry->key->View() == key)) return entry;
    }
  }

  Entry* LookupJoined(std::string_view key);
  Entry* Insert(std::string_view key, std::uint64_t hash, std::string_view uri,
                std::string_view localName);
  const std::string* StoreUri(std::string_view uri);
  void Rehash(std::size_t slotCount);
  void DestroyEntries();

  const CXmlDocument* m_document;
  CBlocks& m_blocks;
  CGrowthBound& m_growth;
  std::forward_list<std::string> m_uris;  // the newest first
  std::vector<Entry*> m_entries;
  std::vector<Entry*> m_slots;  // null for a free one
  std::size_t m_mask = 0;
  Entry* m_first = nullptr;    // the name that was asked for first
  Entry** m_pNext = &m_first;  // the likely next one
  std::string m_pairKey;       // of the last Find; keeps its capacity
};

}  // namespace QzXmlLib16::detail
