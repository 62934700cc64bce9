#include "qzxml/xml/XmlTextName.h"

#include <map>
#include <string>

#include "qzxml/runtime/CriticalSection.h"
#include "qzxml/xml/XmlTextPieces.h"

namespace QzXmlLib16::detail {

bool XmlTextPrefix::Set(const std::string* prefix) {
  const std::size_t taken = GetPrefixSize(prefix);
  if (taken > kRoom - 2) return false;
  size = 1 + taken;
  PutPrefix(PutText(start, "<"), prefix);
  PutPrefix(PutText(end, "</"), prefix);
  return true;
}

XmlTextName::XmlTextName(const char* name, const Uri& uri)
    : m_prefixPlace(uri.second % kPrefixPlaces),
      m_uri(&uri.first),
      m_tags(ElementTags::InOneNamespace(name)) {
  const SteppedText& start = m_tags.GetStart();
  const SteppedText& end = m_tags.GetEnd();
  m_room = 1 + 2 * kTagEolRoom + kShortIndent + start.GetRoom() + end.GetRoom() + Tag::kRoom +
           2 * XmlTextPrefix::kRoom;
  m_start.Set(start.View());
  m_end.Set(end.View());
  m_shortUri = end.View().size() <= Tag::kRoom ? m_uri : nullptr;
  QZ_ASSERT(m_shortUri == nullptr || m_room <= kShortRoom);
}

const XmlTextName::Uri& XmlTextName::KeepUri(const char* uri) {
  static CQZCriticalSection& section = *new CQZCriticalSection;
  static std::map<std::string, std::size_t>& kept = *new std::map<std::string, std::size_t>;
  const CriticalSectionGuard guard(section);
  return *kept.emplace(uri, kept.size()).first;
}

}  // namespace QzXmlLib16::detail
