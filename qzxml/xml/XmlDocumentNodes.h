#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <new>
#include <string>
#include <string_view>
#include <unordered_set>
#include <utility>
#include <vector>

#include "qzxml/xml/Arena.h"
#include "qzxml/xml/GrowthBound.h"
#include "qzxml/xml/NameTable.h"
#include "qzxml/xml/XmlAttribute.h"
#include "qzxml/xml/XmlDocument.h"
#include "qzxml/xml/XmlElement.h"

namespace QzXmlLib16 {

class CSerializationContext;

namespace detail {

// An empty text that outlives every static which may hold it.
const std::string& NoText();

// Null is taken as the empty text.
inline std::string_view ViewOf(const char* text) {
  return text != nullptr ? std::string_view(text) : std::string_view();
}

// The classes that the nodes count under.
extern CInstanceClass g_elementClass;
extern CInstanceClass g_attributeClass;

// The elements of one content of a document that were taken out of its tree. Shared with those who
// hold them, so that they know it when the content goes first.
class CTakenElements {
 public:
  void Add(CXmlElement* element) { m_elements.insert(element); }
  bool Remove(CXmlElement* element) { return m_elements.erase(element) != 0; }
  // All there are, and none is left.
  std::unordered_set<CXmlElement*> RemoveAll() { return std::exchange(m_elements, {}); }

 private:
  std::unordered_set<CXmlElement*> m_elements;
};

// What holds the tree of one document: the memory of its nodes, its names, and the bounds of the
// load that is running. Every node is made and destroyed here; destroying is a loop, whatever the
// depth.
class CXmlNodes {
 public:
  explicit CXmlNodes(const CXmlDocument* document) : m_names(document, m_keptBlocks, m_growth) {}
  CXmlNodes(const CXmlNodes&) = delete;
  CXmlNodes& operator=(const CXmlNodes&) = delete;

  CNameTable& GetNames() { return m_names; }

  // An element outside the tree.
  CXmlElement* MakeElement(const CXmlElement* parent, const XmlName* name) {
    auto* const element = new (m_elements.Take()) CXmlElement(parent, name);
    m_liveElements.Add(element->GetRecord());
    return element;
  }

  // Makes it the last child of its parent.
  static void Append(CXmlElement* parent, CXmlElement* child) {
    CXmlElement* const last = std::exchange(parent->m_pLastChild, child);
    child->m_pNextSibling = last != nullptr ? std::exchange(last->m_pNextSibling, child) : child;
  }

  // Adds an attribute behind the others.
  void AddAttribute(CXmlElement* element, const XmlName* name, std::string_view value);

  // Gives an element that has none its text. The white space between the children of an element is
  // mostly that of the last one of its name, and shared with it.
  void SetText(CXmlElement* element, std::string_view text) {
    const StoredText*& last = element->m_pName->lastText;
    if (element->m_pLastChild != nullptr && last != nullptr && last->View() == text) {
      element->m_text = CNodeText(last);
      return;
    }
    element->m_text = MakeText(text);
    if (element->m_pLastChild != nullptr && m_sharesTexts) last = element->m_text.GetStored();
  }

  // What is stored stays until Clear, also when its node goes before; a load that prunes makes
  // strings instead, whose memory is used again.
  void SetStoresTexts(bool storesTexts) { m_storesTexts = m_sharesTexts = storesTexts; }
  // Texts of elements that are made from now on are not shared with later ones.
  void StopSharingTexts() { m_sharesTexts = false; }

  // The string of a text, which is made when it is not there yet.
  const std::string& FetchString(CNodeText& text);
  // The same, to be changed.
  std::string& OwnString(CNodeText& text);
  // The vector of attributes, which is made when it is not there yet.
  const std::vector<CXmlAttribute*>& FetchList(CNodeAttributes& attributes);

  // Makes an element, which is to leave the tree, one that is held.
  CXmlElement::Owner Take(CXmlElement* element);
  CTakenElements* GetTaken() const { return m_taken.get(); }  // null for none

  // Frees an element that no list holds, with all below it; its memory is used again.
  void Destroy(CXmlElement* element);

  // --- Elements that go again, with all that was made since they began. Their memory is that of
  // what comes next.

  // What there is at a moment.
  struct Mark {
    CBlocks::Mark blocks;
    std::size_t usedOctets;
    std::uint32_t elements;
    std::uint32_t attributes;
    const std::string* string;
    const CNodeAttributes::List* attributeList;
    bool isRewindable;
  };
  Mark SetMark() const;
  // Frees all that was made since, but the string of one text, or null. Nobody may know of it any
  // more. False where this can not be done: nodes have to be destroyed one by one.
  bool Rewind(const Mark& mark, const std::string* kept);
  // Destroys children, attributes and text of an element.
  void Empty(CXmlElement* element);

  // The size of the memory that the nodes and their texts need.
  std::size_t GetUsedOctets() const { return m_blocks.GetUsed(); }

  // Frees the tree of this root and what was taken out of it, all names and all memory. The root
  // may be null.
  void Clear(CXmlElement* root);

  // --- Bounds of a load; none while no load runs.

  void SetBounds(const CSerializationContext& context);
  void ClearBounds();

  // Tells how much input there is to compare the growth with.
  void SetInputOctets(std::uint64_t octets) { m_growth.SetInputOctets(octets); }

  // Throws CQzException "The document exceeds the depth limit of %d elements".
  void CheckDepth(std::size_t depth) const {
    if (depth > m_maxDepth) ThrowDepth();
  }

  // Counts octets that are put into the tree.
  // Throws CQzException "The document grows past %d times its size".
  void CountOctets(std::uint64_t octets) { m_growth.Count(octets); }

 private:
  // How many nodes of a class there are, all counted in one record, as long as that is so.
  struct CLiveNodes {
    void Add(InstanceRecord* itsRecord) {
      if (record == nullptr) record = itsRecord;
      isMixed |= record != itsRecord;
      ++count;
    }
    void Remove() { --count; }

    InstanceRecord* record = nullptr;
    std::uint32_t count = 0;
    bool isMixed = false;  // counted in more than one
  };

  static constexpr std::size_t kLongestStored = 8192;
  static constexpr std::uint64_t kNone = std::numeric_limits<std::uint64_t>::max();

  [[noreturn]] void ThrowDepth() const;
  CNodeText MakeText(std::string_view text) {
    return m_storesTexts && text.size() <= kLongestStored
               ? CNodeText(m_blocks.AddText(text))
               : CNodeText(m_strings.Make(std::string(text)));
  }
  void DestroyText(const CNodeText& text);
  void DestroyAttributes(const CNodeAttributes& attributes);
  void DestroyTree(CXmlElement* root);
  bool CountAllOut();

  CBlocks m_blocks;      // nodes and stored texts
  CBlocks m_keptBlocks;  // names, strings and lists
  CGrowthBound m_growth;
  CArena<CXmlElement> m_elements{m_blocks};
  CArena<CXmlAttribute> m_attributes{m_blocks};
  COwners<CNodeAttributes::List> m_attributeLists{m_keptBlocks};
  COwners<std::string> m_strings{m_keptBlocks};
  CNameTable m_names;
  std::shared_ptr<CTakenElements> m_taken;  // null for none
  CLiveNodes m_liveElements;
  CLiveNodes m_liveAttributes;
  bool m_storesTexts = true;
  bool m_sharesTexts = true;
  std::uint64_t m_maxDepth = kNone;
};

}  // namespace detail

// --- What runs for each node of a load

// Opens the child of the innermost open element, or the root when none is open.
inline CXmlElement* CXmlDocument::OpenElement(const detail::XmlName* name) {
  m_pNodes->CheckDepth(m_pElementStack.size() + 1);
  m_pNodes->CountOctets(name->octets);
  if (m_bWatched && (m_pElementStack.size() == m_watch.openDepth ||
                     m_pNodes->GetUsedOctets() >= m_watch.openOctets)) {
    return OpenWatchedElement(name);
  }
  return PutElement(name);
}

inline CXmlElement* CXmlDocument::PutElement(const detail::XmlName* name) {
  CXmlElement* const parent = m_pElementStack.empty() ? nullptr : m_pElementStack.back();
  CXmlElement* const element = m_pNodes->MakeElement(parent, name);
  if (parent != nullptr) {
    detail::CXmlNodes::Append(parent, element);
  } else {
    m_pDocElement = element;
  }
  m_pElementStack.push_back(element);
  return element;
}

inline void CXmlDocument::CloseElement() {
  CXmlElement* const element = m_pElementStack.back();
  m_pElementStack.pop_back();
  if (m_bWatched && m_pElementStack.size() < m_watch.closeDepth) CloseWatchedElement(element);
}

inline CXmlElement::CXmlElement(const CXmlElement* parent, const detail::XmlName* name)
    : CInstanceMonitor(detail::g_elementClass), m_pName(name), m_pParent(parent) {}

inline CXmlAttribute::CXmlAttribute(const CXmlElement* parent, const detail::XmlName* name)
    : CInstanceMonitor(detail::g_attributeClass), m_pParent(parent), m_pName(name) {}

inline CXmlElement::~CXmlElement() = default;

inline CXmlAttribute::~CXmlAttribute() = default;

}  // namespace QzXmlLib16
