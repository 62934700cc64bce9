#include "qzxml/fastinfoset/FastInfosetName.h"

#include <map>

#include "qzxml/runtime/CriticalSection.h"

namespace QzXmlLib16::detail {

// As the tables of classes, which names belong to, they stay for good.
const FastInfosetName::Text* FastInfosetName::Share(const std::string& uri) {
  static auto* const lock = new CQZCriticalSection();
  static auto* const all = new std::map<std::string, Text>();
  const CriticalSectionGuard guard(*lock);
  return &all->try_emplace(uri, uri).first->second;
}

}  // namespace QzXmlLib16::detail
