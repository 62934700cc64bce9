#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "qzxml/xml/XmlName.h"

namespace QzXmlLib16::detail {

// The names of one document, found by the bytes that a parser delivers, so that a name that is
// known costs no string. An entry's address never changes before Clear.
//
// Open addressing over a power of two slots, at most half of them taken. The hash is salted for
// each process, so that no document can be written whose names collide.
class CNameTable {
 public:
  explicit CNameTable(const CXmlDocument* document);
  CNameTable(const CNameTable&) = delete;
  CNameTable& operator=(const CNameTable&) = delete;
  ~CNameTable();

  // The name of UTF-8 bytes as Expat joins them: the URI, "|", and the local name; or the local
  // name alone. A new name is converted to the local encoding and split at the first "|" then.
  const XmlName* FindJoined(const char* name) {
    const std::string_view key(name);
    const std::uint64_t hash = Hash(key);
    const Entry* entry = Lookup(key, hash);
    return entry != nullptr ? entry : InsertJoined(key, hash);
  }

  // The name of two local texts.
  const XmlName* Find(std::string_view uri, std::string_view localName);

  // Octets of the namespaces made so far, each name counted once.
  std::size_t GetUriOctets() const { return m_uriOctets; }

  // Forgets all names and gives their memory back.
  void Clear();

 private:
  struct Entry : XmlName {
    std::uint64_t hash = 0;
    std::string key;  // as looked up: joined bytes, or both texts and the length of the first,
                      // which has a zero byte, so that the two kinds never meet
  };

  std::uint64_t Hash(std::string_view key) const {
    std::uint64_t hash = m_salt ^ key.size();
    const char* bytes = key.data();
    std::size_t left = key.size();
    for (; left >= 8; bytes += 8, left -= 8) hash = Mix(hash, bytes, 8);
    return left != 0 ? Mix(hash, bytes, left) : hash;
  }

  static std::uint64_t Mix(std::uint64_t hash, const char* bytes, std::size_t count) {
    std::uint64_t word = 0;
    std::memcpy(&word, bytes, count);
    const Product product = static_cast<Product>(hash ^ word) * 0x9E3779B97F4A7C15u;
    return static_cast<std::uint64_t>(product) ^ static_cast<std::uint64_t>(product >> 64);
  }

  // The entry, or null.
  const Entry* Lookup(std::string_view key, std::uint64_t hash) const {
    for (std::size_t i = hash & m_mask;; i = (i + 1) & m_mask) {
      const Entry* entry = m_slots[i];
      if (entry == nullptr || (entry->hash == hash && entry->key == key)) return entry;
    }
  }

  const XmlName* InsertJoined(std::string_view key, std::uint64_t hash);
  const XmlName* Insert(std::string_view key, std::uint64_t hash, std::string uri,
                        std::string localName);
  void Rehash(std::size_t slotCount);

  __extension__ using Product = unsigned __int128;

  const CXmlDocument* m_document;
  const std::uint64_t m_salt;
  std::size_t m_uriOctets = 0;
  std::size_t m_mask = 0;
  std::vector<const Entry*> m_slots;  // null for a free one
  std::vector<std::unique_ptr<Entry>> m_entries;
  std::string m_pairKey;  // of the last Find; keeps its capacity
};

}  // namespace QzXmlLib16::detail
