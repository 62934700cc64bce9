#include "qzxml/xml/KeptTags.h"

#include <array>
#include <map>
#include <utility>

#include "qzxml/runtime/CriticalSection.h"
#include "qzxml/xml/ShortText.h"
#include "qzxml/xml/TextHash.h"

namespace QzXmlLib16::detail {
namespace {

// Name and namespace, with the tags.
using CKey = std::pair<std::string, std::string>;
using CEntry = std::pair<const CKey, ElementTags>;

bool Is(const CEntry& entry, const std::string& name, const std::string& uri) {
  return AreEqual(entry.first.first, name) && AreEqual(entry.first.second, uri);
}

// Null where there are enough of them.
const CEntry* FindOrKeep(const std::string& name, const std::string& uri) {
  static CQZCriticalSection& section = *new CQZCriticalSection;
  static std::map<CKey, ElementTags>& all = *new std::map<CKey, ElementTags>;
  CKey key(name, uri);
  const CriticalSectionGuard guard(section);
  const auto found = all.find(key);
  if (found != all.end()) return &*found;
  if (all.size() >= CKeptTags::kMost) return nullptr;
  return &*all.emplace(std::move(key), ElementTags::InOneNamespace(name)).first;
}

}  // namespace

// Those that the thread has met last are found without the others.
CKeptTags::CKeptTags(const std::string& name, const std::string& uri) : m_kept(nullptr) {
  thread_local std::array<const CEntry*, 16> met = {};
  const CEntry*& last = met[HashText(name) % met.size()];
  if (last == nullptr || !Is(*last, name, uri)) {
    const CEntry* const entry = FindOrKeep(name, uri);
    if (entry == nullptr) {
      m_own.emplace(name);
      return;
    }
    last = entry;
  }
  m_kept = &last->second;
}

}  // namespace QzXmlLib16::detail
