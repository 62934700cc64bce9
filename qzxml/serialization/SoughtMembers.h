#pragma once

#include <cstddef>
#include <unordered_map>
#include <utility>
#include <vector>

#include "qzxml/serialization/ElementInfo.h"

namespace QzXmlLib16Data {

// What the members of groups have been sought for among the children of an element, while unknown
// children are skipped.
//
// A class without a tag (a group) that lacks a member gives the cursor back. The walk around it
// steps over one element and asks the group again, which looks through the same siblings once more
// and reads again those it finds: quadratic in what a document chooses. But what becomes of a
// member and of the members behind it depends only on the child at which it is asked. So a walk
// leaves for each of its members where it was asked and where it found something, and whether the
// walk failed then: asked in between, the same would happen. A later walk goes straight there, or
// fails at once; what it would have read before it failed is then not read, which shows in an
// object that its owner keeps without its content.
class CSoughtMembers {
 public:
  // Made by the walk of a real element. Belongs to the thread until it goes.
  explicit CSoughtMembers(const CXmlElement& parent);
  CSoughtMembers(const CSoughtMembers&) = delete;
  CSoughtMembers& operator=(const CSoughtMembers&) = delete;
  ~CSoughtMembers();

  // What the walk of the element that is being read has made; null when that is another element, or
  // has made none.
  static CSoughtMembers* Of(const CXmlElement& parent);

  // --- The walks, one inside the other. Each has the searches behind those of the walk around it.

  // A walk begins at an element, null behind the last child. Gives where its searches begin.
  std::size_t Enter(const CXmlElement* cursor);
  void Leave(std::size_t walk);
  // Whether the walk that has just begun is that of an item which cannot save its collection any
  // more: it need not be read.
  bool IsItemInVain() const;

  // --- The search of the innermost walk for its next member

  // Begins at the cursor. False when the walk is known to fail; else the cursor has moved to where
  // the member is to be asked first.
  bool Begin(const CElementInfo& member, CXmlElement** cursor);
  // The member is asked.
  void Ask() {
    if (!m_searches.back().hasFound) m_searches.back().items.clear();
  }
  // It has taken something, or was content with nothing. What comes first counts.
  void Find(const CXmlElement* asked, const CXmlElement* behind);
  // The same of a collection that has this count. With one of low to high in its place, and nothing
  // else behind it, the walk would fail just so, if it fails.
  void FindItems(const CXmlElement* asked, const CXmlElement* behind, std::size_t count,
                 std::size_t low, std::size_t high);
  // Whether it was a collection whose items were in vain.
  bool IsInVain() const { return m_searches.back().isInVain; }
  // Whether the member, which was asked in vain up to an element, takes nothing from there on.
  bool IsAbsentFrom(const CXmlElement* element) const;
  // Whether all that it can take from where the search began has been read before.
  bool WasReadThrough() const;

  // --- The collections of a choice

  // Whether one takes nothing at an element.
  bool IsInVainAt(const CElementInfo& member, const CXmlElement* element) const;
  // It takes nothing there nor at as many of the next elements.
  void KeepInVain(const CElementInfo& member, const CXmlElement* element, std::size_t more);

  // --- The walk fails

  // With the member it has sought last.
  void Fail(std::size_t walk);
  // The same, and that member was asked at every child that it had not taken, up to the end: it
  // took nothing from quiet on. Nothing may also be all that it needs: then it failed for what it
  // had taken, and need not fail where there is nothing for it.
  void FailAtEnd(std::size_t walk, const CXmlElement* quiet, bool needsNothing);

 private:
  using Place = std::size_t;  // of a child, from 0; the number of children behind the last
  static constexpr Place kNowhere = ~Place{0};

  // One member that a running walk has looked for.
  struct Search {
    const CElementInfo* member;
    const CXmlElement* from;
    std::size_t depth;  // of the walk
    bool isCollection;
    bool hasFound = false;
    bool isInVain = false;
    const CXmlElement* found = nullptr;
    const CXmlElement* behind = nullptr;
    std::size_t count = 0;
    std::size_t low = 0;
    std::size_t high = 0;
    std::vector<const CXmlElement*> items{};  // where its items began that are groups
  };
  // What is known of a member.
  struct Known {
    Place from = kNowhere;               // asked at one of the children from here
    Place to = 0;                        // to here
    const CXmlElement* found = nullptr;  // it finds something here first,
    bool fails = false;                  // or the walk fails
    Place absentFrom = kNowhere;         // it takes nothing from here on
    bool needsNothing = false;           // so that this is no failure
    Place readThroughFrom = kNowhere;    // all that it can take from here on has been read
    // Items that are groups, each beginning where the one before it ends: the walk fails when there
    // are low to high at the end of them.
    std::vector<Place> items{};
    std::size_t low = 0;
    std::size_t high = 0;
  };

  const Known* Look(const CElementInfo& member) const;
  void Keep(const Search& search, bool fails);
  void KeepItems(const Search& search, Known& known);
  Place PlaceOf(const CXmlElement* element) const;

  const CXmlElement& m_parent;
  CSoughtMembers* const m_pOuter;  // of an element further out, which comes back behind this
  std::size_t m_depth = 0;         // how many walks are running
  std::vector<Search> m_searches;
  std::unordered_map<const CElementInfo*, Known> m_known;
  // The children by their address with their places; empty until something is known.
  mutable std::vector<std::pair<const CXmlElement*, Place>> m_places;
};

}  // namespace QzXmlLib16Data
