#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <vector>

#include "qzxml/binding/ReadPlan.h"
#include "qzxml/platform/Export.h"
#include "qzxml/xml/ItemWatch.h"

// How CXmlObjectBase reads a large document into a bound class. Not for others.
namespace QzXmlLib16 {

class CBoundClass;

namespace detail {

// The items of a document that are made and read while it loads, so that the tree does not have to
// hold them: the members of collections of objects, in the root and in what the plans of classes
// lead to from there. They wait here until the collection is read, which puts them where they
// belong: so all else happens in the order in which it happens without.
//
// Reading an item looks at the item's element alone, and at the aliases of the document. So what
// comes of it is the same as when the tree is complete, unless an alias changes meanwhile. Where it
// does, where an item cannot be read, and where items are left over, the document is loaded once
// more and read from the tree: every failure is told by that.
class CEarlyItems final : public IItemReader {
 public:
  enum class Source { Memory, File };
  using Load = std::function<void(CXmlDocument& document)>;

  CEarlyItems(const CReadPlan& plan, const CSerializationContext& context);
  CEarlyItems(const CEarlyItems&) = delete;
  CEarlyItems& operator=(const CEarlyItems&) = delete;
  ~CEarlyItems();

  // Loads a document and reads it into the object. False when this is not for the object, or when
  // it did not come out well: then the object is to be read in the ordinary way, from the load on.
  // Throws what the load throws, and, where no item was read ahead, what reading throws.
  static bool Read(CBoundClass& object, const CSerializationContext& context, Source source,
                   const Load& load);

  // --- For collections

  // The items of the document of an element; null where it has none.
  static CEarlyItems* Of(const CXmlElement& element) {
    return static_cast<CEarlyItems*>(CItemWatch::ReaderOf(element));
  }

  // Whether the next items are those that the element stands for, and the member's.
  bool HasRun(const CXmlElement& standIn, const CMember& member) const {
    return m_next < m_runs.size() && m_runs[m_next].standIn == &standIn &&
           m_runs[m_next].member == &member;
  }
  // These items, which stay until the next run is taken.
  class CTaken;
  CTaken TakeRun();

  // --- For the load
  const Role* FindRole(const Role& parent, const XmlName& name) override;
  std::size_t GetRunCount() const override { return m_runs.size(); }
  bool ReadItems(const Role& role, CXmlElement* first, CXmlElement* last, std::size_t firstRun,
                 bool continuesRun) override;

 private:
  struct CRole : Role {
    const ReadMember* member;  // null for the root
    const CReadPlan* plan;     // of the object; null where its content is of no interest
  };
  // Items that one element stands for.
  struct Run {
    const CXmlElement* standIn;
    const CMember* member;
    std::size_t first;  // of the items
  };

  static bool IsFor(CBoundClass& object, const CSerializationContext& context, Source source);
  bool IsEmpty() const { return m_next == m_runs.size(); }
  const CRole* RoleOf(const ReadMember& member);
  std::unique_ptr<const CRole> MakeRole(const ReadMember& member) const;

  const CSerializationContext& m_context;
  CRole m_root;
  std::vector<std::unique_ptr<const CRole>> m_roles;  // one for each member that was met
  // What was asked for last, which mostly is asked for again.
  const Role* m_lastParent = nullptr;
  const XmlName* m_lastName = nullptr;
  const Role* m_lastRole = nullptr;
  std::vector<CObjectHandle> m_items;
  std::vector<CObjectHandle> m_batch;  // that is being read; keeps its memory
  std::vector<Run> m_runs;             // in the order of the document
  std::size_t m_next = 0;              // the run that is taken next
};

class CEarlyItems::CTaken {
 public:
  CTaken(CObjectHandle* begin, CObjectHandle* end) : m_begin(begin), m_end(end) {}
  CObjectHandle* begin() const { return m_begin; }
  CObjectHandle* end() const { return m_end; }

 private:
  CObjectHandle* m_begin;
  CObjectHandle* m_end;
};

inline CEarlyItems::CTaken CEarlyItems::TakeRun() {
  CObjectHandle* const items = m_items.data();
  const std::size_t first = m_runs[m_next++].first;
  const std::size_t end = m_next < m_runs.size() ? m_runs[m_next].first : m_items.size();
  return {items + first, items + end};
}

// For tests: how many octets of the tree make a batch of items, and how many a document, and an
// item with items of its own, takes before these are read ahead; the largest number for never. To
// be called while nobody reads.
QZXML_API void ReadItemsEarly(std::size_t octets);
// What it is ordinarily.
inline constexpr std::size_t kReadItemsFrom = 32 * 1024;

}  // namespace detail
}  // namespace QzXmlLib16
