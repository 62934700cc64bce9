#include "qzxml/serialization/AbsentMembers.h"

#include <algorithm>

namespace QzXmlLib16Data {
namespace {

// Of the element that this thread is reading.
thread_local CAbsentMembers* t_innermost = nullptr;

}  // namespace

CAbsentMembers::CAbsentMembers(const CXmlElement& parent)
    : m_parent(parent), m_pOuter(t_innermost) {
  t_innermost = this;
}

CAbsentMembers::~CAbsentMembers() { t_innermost = m_pOuter; }

CAbsentMembers* CAbsentMembers::Of(const CXmlElement& parent) {
  return t_innermost != nullptr && &t_innermost->m_parent == &parent ? t_innermost : nullptr;
}

void CAbsentMembers::MoveTo(const CXmlElement* position) {
  m_positions.back() = position;
  const std::size_t walk = m_positions.size() - 1;
  for (Absence& absence : m_absences) {
    if (absence.from == position) absence.walk = std::min(absence.walk, walk);
  }
}

void CAbsentMembers::Leave() {
  m_positions.pop_back();
  for (Absence& absence : m_absences) {
    if (absence.walk == m_positions.size()) absence.walk = kNowhere;
  }
}

void CAbsentMembers::Keep(const CElementInfo* member, const CXmlElement* from, CXmlElement* last) {
  const auto stands = std::find(m_positions.begin(), m_positions.end(), from);
  const Absence absence = {member, from, last,
                           stands != m_positions.end()
                               ? static_cast<std::size_t>(stands - m_positions.begin())
                               : kNowhere};
  const auto known = std::find_if(m_absences.begin(), m_absences.end(),
                                  [=](const Absence& it) { return it.member == member; });
  if (known == m_absences.end()) {
    m_absences.push_back(absence);
  } else {
    *known = absence;
  }
}

bool CAbsentMembers::Find(const CElementInfo* member, CXmlElement** last) const {
  for (const Absence& absence : m_absences) {
    if (absence.member != member || absence.walk == kNowhere) continue;
    *last = absence.last;
    return true;
  }
  return false;
}

}  // namespace QzXmlLib16Data
