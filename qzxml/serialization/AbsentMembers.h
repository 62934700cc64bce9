#pragma once

#include <vector>

#include "qzxml/serialization/ElementInfo.h"

namespace QzXmlLib16Data {

// What is known to be absent from the rest of an element's children while unknown ones are skipped.
//
// A class without a tag (a group) looks for its members up to the last sibling. When one is not
// there, the walk of the class around it steps over one element and asks the group again, which
// looks through the same siblings once more: quadratic in the children of an element, which a
// document chooses. So a group that has looked to the end in vain leaves a word here, and the next
// one to look for that member, from there or from further on, stops at once.
//
// The walks over one element stand inside each other, the real element's outermost, and each only
// moves forward. What was found absent from an element on counts once some walk that is still
// running has come to that element: every later search begins behind it.
class CAbsentMembers {
 public:
  // Made by the walk of a real element. Belongs to the thread until it goes.
  explicit CAbsentMembers(const CXmlElement& parent);
  CAbsentMembers(const CAbsentMembers&) = delete;
  CAbsentMembers& operator=(const CAbsentMembers&) = delete;
  ~CAbsentMembers();

  // What the walk of the element that is being read has made; null when that is another element, or
  // has made none.
  static CAbsentMembers* Of(const CXmlElement& parent);

  // --- A walk that begins, comes to an element (null behind the last), and ends.
  void Enter(const CXmlElement* position) { m_positions.push_back(position); }
  void MoveTo(const CXmlElement* position);
  void Leave();

  // A member looked for from an element on and not found; last is the last element that it looked
  // at, null when the member need not be asked there again.
  void Keep(const CElementInfo* member, const CXmlElement* from, CXmlElement* last);

  // Whether a member is absent from where the innermost walk stands; gives the last as kept.
  bool Find(const CElementInfo* member, CXmlElement** last) const;

 private:
  static constexpr std::size_t kNowhere = ~std::size_t{0};
  struct Absence {
    const CElementInfo* member;
    const CXmlElement* from;
    CXmlElement* last;
    std::size_t walk;  // the outermost that has come to from; kNowhere when none has
  };

  const CXmlElement& m_parent;
  CAbsentMembers* const m_pOuter;  // of an element further out, which comes back behind this
  std::vector<const CXmlElement*> m_positions;  // where the walks stand, outermost first
  std::vector<Absence> m_absences;
};

}  // namespace QzXmlLib16Data
