#include "qzxml/serialization/SoughtMembers.h"

#include <algorithm>
#include <functional>

#include "qzxml/serialization/ElementTable.h"
#include "qzxml/xml/XmlElement.h"

namespace QzXmlLib16Data {
namespace {

// Of the element that this thread is reading.
thread_local CSoughtMembers* t_innermost = nullptr;

}  // namespace

CSoughtMembers::CSoughtMembers(const CXmlElement& parent)
    : m_parent(parent), m_pOuter(t_innermost) {
  t_innermost = this;
}

CSoughtMembers::~CSoughtMembers() { t_innermost = m_pOuter; }

CSoughtMembers* CSoughtMembers::Of(const CXmlElement& parent) {
  return t_innermost != nullptr && &t_innermost->m_parent == &parent ? t_innermost : nullptr;
}

// --- Walks

std::size_t CSoughtMembers::Enter(const CXmlElement* cursor) {
  ++m_depth;
  if (m_searches.empty()) return 0;
  Search& search = m_searches.back();
  if (search.isCollection && !search.hasFound && search.depth + 1 == m_depth) {
    const Known* const known = Look(*search.member);
    if (known != nullptr && !known->items.empty()) {
      const auto item = std::lower_bound(known->items.begin(), known->items.end(), PlaceOf(cursor));
      if (item != known->items.end() && *item == PlaceOf(cursor)) {
        const std::size_t count =
            search.items.size() + static_cast<std::size_t>(known->items.end() - item);
        search.isInVain = count >= known->low && count <= known->high;
      }
    }
    search.items.push_back(cursor);
  }
  return m_searches.size();
}

void CSoughtMembers::Leave(std::size_t walk) {
  --m_depth;
  m_searches.erase(m_searches.begin() + static_cast<std::ptrdiff_t>(walk), m_searches.end());
}

bool CSoughtMembers::IsItemInVain() const {
  if (m_searches.empty()) return false;
  const Search& search = m_searches.back();
  return search.isInVain && search.depth + 1 == m_depth;
}

// --- Searches

bool CSoughtMembers::Begin(const CElementInfo& member, CXmlElement** cursor) {
  CXmlElement* const from = *cursor;
  if (const Known* const known = Look(member)) {
    const Place place = PlaceOf(from);
    if (place >= known->absentFrom && !known->needsNothing) return false;
    if (place >= known->from && place <= known->to) {
      if (known->fails) return false;
      *cursor = const_cast<CXmlElement*>(known->found);
    }
  }
  m_searches.push_back({&member, from, m_depth, IsSequenceCollection(member)});
  return true;
}

void CSoughtMembers::Find(const CXmlElement* asked, const CXmlElement* behind) {
  Search& search = m_searches.back();
  if (search.hasFound) return;
  search.hasFound = true;
  search.found = asked;
  search.behind = behind;
  if (asked != search.from && IsSoughtByPlace(*search.member)) Keep(search, false);
}

void CSoughtMembers::FindItems(const CXmlElement* asked, const CXmlElement* behind,
                               std::size_t count, std::size_t low, std::size_t high) {
  Search& search = m_searches.back();
  if (!search.hasFound) {
    search.count = count;
    search.low = low;
    search.high = high;
  }
  Find(asked, behind);
}

bool CSoughtMembers::IsAbsentFrom(const CXmlElement* element) const {
  const Known* const known = Look(*m_searches.back().member);
  return known != nullptr && known->absentFrom != kNowhere && PlaceOf(element) >= known->absentFrom;
}

bool CSoughtMembers::WasReadThrough() const {
  const Search& search = m_searches.back();
  const Known* const known = Look(*search.member);
  return known != nullptr && known->readThroughFrom != kNowhere &&
         PlaceOf(search.from) >= known->readThroughFrom;
}

bool CSoughtMembers::IsInVainAt(const CElementInfo& member, const CXmlElement* element) const {
  const Known* const known = Look(member);
  if (known == nullptr) return false;
  const Place place = PlaceOf(element);
  return place >= known->from && place <= known->to;
}

void CSoughtMembers::KeepInVain(const CElementInfo& member, const CXmlElement* element,
                                std::size_t more) {
  Known& known = m_known[&member];
  known.from = PlaceOf(element);
  known.to = known.from + more;
}

// --- Failures

void CSoughtMembers::Fail(std::size_t walk) {
  for (std::size_t i = m_searches.size(); i > walk; --i) {
    const Search& search = m_searches[i - 1];
    // A member of which nothing is known may do anything, and so may the walk in front of it.
    if (!IsSoughtByPlace(*search.member)) return;
    if (search.hasFound) Keep(search, true);
  }
}

void CSoughtMembers::FailAtEnd(std::size_t walk, const CXmlElement* quiet, bool needsNothing) {
  Fail(walk);
  const Search& search = m_searches.back();
  if (!IsSoughtByPlace(*search.member)) return;
  Known& known = m_known[search.member];
  known.absentFrom = std::min(known.absentFrom, PlaceOf(quiet));
  known.needsNothing = needsNothing;
  known.readThroughFrom = std::min(known.readThroughFrom, PlaceOf(search.from));
}

// --- What is known

const CSoughtMembers::Known* CSoughtMembers::Look(const CElementInfo& member) const {
  if (m_known.empty()) return nullptr;
  const auto known = m_known.find(&member);
  return known != m_known.end() ? &known->second : nullptr;
}

// Walks go forward, so that the latest is the one to ask.
void CSoughtMembers::Keep(const Search& search, bool fails) {
  Known& known = m_known[search.member];
  known.from = PlaceOf(search.from);
  known.to = PlaceOf(search.found);
  known.found = search.found;
  known.fails = fails;
  if (fails && search.isCollection) KeepItems(search, known);
}

// Items with one element each: asked one element further on, the collection has one item less.
// Other items are known where they begin.
void CSoughtMembers::KeepItems(const Search& search, Known& known) {
  if (search.count < search.low || search.high == 0) return;
  if (PlaceOf(search.behind) - known.to == search.count) known.to += search.count - search.low;
  std::vector<Place> places;
  for (const CXmlElement* const item : search.items) {
    if (item != search.behind) places.push_back(PlaceOf(item));
  }
  if (places.size() != search.count) return;
  known.items = std::move(places);
  known.low = search.low;
  known.high = search.high;
}

CSoughtMembers::Place CSoughtMembers::PlaceOf(const CXmlElement* element) const {
  if (m_places.empty()) {
    Place place = 0;
    for (const CXmlElement* child = m_parent.GetFirstElement(); child != nullptr;
         child = child->GetNextSiblingElement()) {
      m_places.push_back({child, place++});
    }
    std::sort(m_places.begin(), m_places.end());
  }
  if (element == nullptr) return m_places.size();
  const auto found = std::lower_bound(m_places.begin(), m_places.end(), element,
                                      [](const auto& entry, const CXmlElement* asked) {
                                        return std::less<>()(entry.first, asked);
                                      });
  return found != m_places.end() && found->first == element ? found->second : m_places.size();
}

}  // namespace QzXmlLib16Data
