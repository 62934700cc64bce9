#include "qzxml/xml/KeptTags.h"

#include <array>
#include <cstddef>
#include <map>
#include <utility>

#include "qzxml/runtime/CriticalSection.h"
#include "qzxml/xml/ShortText.h"

namespace QzXmlLib16::detail {
namespace {

struct CEntry {
  CEntry(const std::string& name, const std::string& itsUri)
      : uri(itsUri), tags(ElementTags::InOneNamespace(name)) {}

  bool Is(const std::string& name, const std::string& itsUri) const {
    return AreEqual(tags.GetName(), name) && AreEqual(uri, itsUri);
  }

  std::string uri;
  ElementTags tags;
};

// Null where there are enough of them.
const CEntry* FindOrKeep(const std::string& name, const std::string& uri) {
  using CKey = std::pair<std::string, std::string>;
  static CQZCriticalSection& section = *new CQZCriticalSection;
  static std::map<CKey, CEntry>& all = *new std::map<CKey, CEntry>;
  CKey key(name, uri);
  const CriticalSectionGuard guard(section);
  const auto found = all.find(key);
  if (found != all.end()) return &found->second;
  if (all.size() >= CKeptTags::kMost) return nullptr;
  return &all.emplace(std::piecewise_construct, std::forward_as_tuple(std::move(key)),
                      std::forward_as_tuple(name, uri))
              .first->second;
}

}  // namespace

// Those that the thread has met last are found without the others.
CKeptTags::CKeptTags(const std::string& name, const std::string& uri) : m_kept(nullptr) {
  thread_local std::array<const CEntry*, 16> met = {};
  std::size_t place = name.size();
  if (!name.empty()) {
    place += std::size_t{3} * static_cast<unsigned char>(name.front());
    place += std::size_t{5} * static_cast<unsigned char>(name.back());
  }
  const CEntry*& last = met[place % met.size()];
  if (last == nullptr || !last->Is(name, uri)) {
    const CEntry* const entry = FindOrKeep(name, uri);
    if (entry == nullptr) {
      m_own.emplace(name);
      return;
    }
    last = entry;
  }
  m_kept = &last->tags;
}

}  // namespace QzXmlLib16::detail
