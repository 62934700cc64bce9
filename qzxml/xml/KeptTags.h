#pragma once

#include <optional>
#include <string>

#include "qzxml/platform/Export.h"
#include "qzxml/xml/WrittenName.h"

namespace QzXmlLib16::detail {

// The tags of the items of a collection, which has no tables of its own to hold them: the same for
// each collection whose items have that name in that namespace, so that the name keeps its number.
// Never freed, as there are not many names in the classes of a program; what comes behind the first
// kMost is made for its object alone, and has no number.
class QZXML_API CKeptTags {
 public:
  static constexpr std::size_t kMost = 4096;

  CKeptTags(const std::string& name, const std::string& uri);

  operator const ElementTags&() const { return m_kept != nullptr ? *m_kept : *m_own; }

 private:
  const ElementTags* m_kept;
  std::optional<ElementTags> m_own;
};

}  // namespace QzXmlLib16::detail
