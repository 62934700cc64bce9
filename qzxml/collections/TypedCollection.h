#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "qzxml/collections/XmlTypeCollection.h"
#include "qzxml/platform/Export.h"
#include "qzxml/runtime/MemoryLeakHelp.h"
#include "qzxml/values/ItemType.h"
#include "qzxml/values/WhitespaceUtils.h"

// What the collections of values consist of: Ci4Col, CstringCol, CdateCol and their kin, which are
// in NumberCols.h, TextCols.h and DateTimeCols.h. Those are the names to use.
//
//   Ci4Col sizes("size", "urn:shop", 0, -1, nullptr, -1, -1, "1", "60", nullptr, nullptr, -1, -1,
//                -1, CWhitespaceUtils::WhitespaceRule_Collapse, nullptr);
//   sizes.Add(38);
//   sizes.AddAt(0, 36);
//   for (const std::int32_t size : sizes) total += size;
//   sizes.Add(61);  // CQzException "Invalid Value for size [61]"; sizes is as it was
namespace QzXmlLib16 {

namespace detail {

// A vector from which the first value is taken away at the same cost however many there are: its
// place stays behind, empty, until there are more such places than values.
template <typename Value>
class CValueRow {
 public:
  using iterator = typename std::vector<Value>::iterator;
  using const_iterator = typename std::vector<Value>::const_iterator;

  bool empty() const { return size() == 0; }
  std::size_t size() const { return m_places.size() - m_left; }
  iterator begin() { return m_places.begin() + Step(m_left); }
  iterator end() { return m_places.end(); }
  const_iterator begin() const { return m_places.begin() + Step(m_left); }
  const_iterator end() const { return m_places.end(); }

  // The index is valid. An insertion that fails changes nothing.
  void Insert(std::size_t index, Value&& value) {
    if (index == size()) {
      m_places.push_back(std::move(value));
    } else {
      m_places.insert(begin() + Step(index), std::move(value));
    }
  }
  void Erase(std::size_t index) {
    if (index == 0) {
      EraseFirst();
    } else {
      m_places.erase(begin() + Step(index));
    }
  }

 private:
  static std::ptrdiff_t Step(std::size_t count) { return static_cast<std::ptrdiff_t>(count); }

  void EraseFirst() {
    { [[maybe_unused]] const Value gone = std::move(m_places[m_left]); }  // frees what it holds
    ++m_left;
    if (m_left <= m_places.size() / 2) return;
    m_places.erase(m_places.begin(), begin());
    m_left = 0;
  }

  std::vector<Value> m_places;
  std::size_t m_left = 0;  // empty places in front of the first value
};

}  // namespace detail

// What all collections of values of one C++ type have in common. The values lie in one vector.
//
// Every change is told to the listeners, the data of an addition being a pointer to the value. That
// is a copy which belongs to the call: what a listener writes there ahead of the insertion is what
// goes in. It is checked as any other value, but for dates, which are checked before.
template <typename Value>
class QZXML_API CValueCollection : public CXmlTypeCollection {
 public:
  using iterator = typename detail::CValueRow<Value>::iterator;
  using const_iterator = typename detail::CValueRow<Value>::const_iterator;

  ~CValueCollection() override;

  int GetCount() const override;

  // Calls Remove(0) until nothing is left, so that each item has its events, a listener sees what
  // is left meanwhile, and a derived class hears of each item in its own Remove. All of it takes
  // time in proportion to the number of items. Ends with the exception of a listener or of that
  // Remove, and what was not removed by then stays.
  void Clear() override;

  // Tells the listeners, and then throws CQzInvalidParamException "Index %d is out of range, use
  // 0 - %d" (meant: the upper figure is the count). The last item and the first one go at a
  // constant cost, others at one in proportion to those behind them.
  void Remove(int index) override;

  // Iterators of the vector, valid until the collection changes. What is written through them is
  // neither checked nor told to anybody.
  iterator begin() { return m_values.begin(); }
  iterator end() { return m_values.end(); }
  const_iterator begin() const { return m_values.begin(); }
  const_iterator end() const { return m_values.end(); }

 protected:
  using CXmlTypeCollection::CXmlTypeCollection;

 private:
  friend class CdatetimeBaseCol;
  template <ItemType kType, typename OfKind>
  friend class CTypedCollection;

  // Throws as Remove does.
  void RequireItem(int index) const;
  Value ValueAt(int index) const;

  // What ends an addition, behind its first event: throws CQzInvalidParamException "Index out of
  // range"; inserts the value, which is used up if nobody listens, and tells that it is there.
  void RequirePlace(int index) const;
  void Insert(int index, Value& value);

  detail::CValueRow<Value> m_values;
};

// The values of one kind. Its classes are used by generated code for a primitive element that can
// occur more than once, and by whoever fills and reads such a property. A collection belongs to one
// thread.
template <ItemType kType, typename Value>
class QZXML_API CTypedCollection : public CValueCollection<Value>, private CInstanceMonitor {
 public:
  // The name and namespace that each item is written under, the occurrences (-1 for no upper
  // limit), the facets that each value has to keep as those of CPrimitiveRestrictions, what happens
  // to the white space of a text that is read, and how a real or a decimal is written (other kinds
  // ignore it). Null is the empty text.
  CTypedCollection(const char* elementName, const char* namespaceUri, int minOccurs, int maxOccurs,
                   const char* pattern, std::int32_t minLength, std::int32_t maxLength,
                   const char* minInclusive, const char* maxInclusive, const char* minExclusive,
                   const char* maxExclusive, std::int32_t length, std::int32_t totalDigits,
                   std::int32_t fractionDigits, CWhitespaceUtils::WhitespaceRule whitespaceRule,
                   const char* format);
  ~CTypedCollection() override;

  // Appends the value, or inserts it in front of the item at index, which may be the count. Tells
  // of the addition first; throws CQzInvalidParamException "Index out of range"; then what the
  // check of the facets throws (see CheckPrimitiveRestriction) with the element name. The
  // collection is then as it was, though listeners were told. The number of items is only checked
  // when they are written or have been read.
  void Add(Value value);
  void AddAt(int index, Value value);

  // A copy. Throws CQzInvalidParamException "Index %d is out of range, use 0 - %d" (meant: the
  // upper figure is the count).
  Value Item(int index) const;

 protected:
  // Checks the number of items, then writes each as an element of its own.
  void ToXml_Int(CXmlWriter* writer, bool root, const char* namespaceUri,
                 const CSerializationContext& context, bool optionalChoice) const override;

  // Throws what the FromString of CConversions throws for the kind, and what Add throws.
  void AddFromString(std::string text) override;
};

}  // namespace QzXmlLib16
