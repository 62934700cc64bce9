#pragma once

#include <cstdint>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "qzxml/binding/ItemCopying.h"
#include "qzxml/binding/Member.h"
#include "qzxml/collections/DateTimeCols.h"
#include "qzxml/collections/NumberCols.h"
#include "qzxml/collections/TextCols.h"
#include "qzxml/platform/Export.h"
#include "qzxml/serialization/PropertyAccess.h"

namespace QzXmlLib16 {

namespace detail {

// The library's collection of a kind.
template <ItemType kind>
struct CollectionOf;
#define QZXML_COLLECTION_OF(kind)        \
  template <>                            \
  struct CollectionOf<ItemType_##kind> { \
    using Type = C##kind##Col;           \
  };
QZXML_COLLECTION_OF(hexBinary)
QZXML_COLLECTION_OF(base64Binary)
QZXML_COLLECTION_OF(i1)
QZXML_COLLECTION_OF(i2)
QZXML_COLLECTION_OF(i4)
QZXML_COLLECTION_OF(i8)
QZXML_COLLECTION_OF(ui1)
QZXML_COLLECTION_OF(ui2)
QZXML_COLLECTION_OF(ui4)
QZXML_COLLECTION_OF(ui8)
QZXML_COLLECTION_OF(r4)
QZXML_COLLECTION_OF(r8)
QZXML_COLLECTION_OF(duration)
QZXML_COLLECTION_OF(yearMonth)
QZXML_COLLECTION_OF(monthDay)
QZXML_COLLECTION_OF(year)
QZXML_COLLECTION_OF(month)
QZXML_COLLECTION_OF(day)
QZXML_COLLECTION_OF(date)
QZXML_COLLECTION_OF(datetime)
QZXML_COLLECTION_OF(time)
QZXML_COLLECTION_OF(string)
QZXML_COLLECTION_OF(boolean)
QZXML_COLLECTION_OF(decimal)
QZXML_COLLECTION_OF(integer)
#undef QZXML_COLLECTION_OF

}  // namespace detail

// The values of a member that may stand more than once: the library's collection of their kind,
// which also holds each value against the simple type of the member.
template <ItemType kind>
class QZXML_API CValueCol : public detail::CollectionOf<kind>::Type, public detail::IItemCopying {
 public:
  using Base = typename detail::CollectionOf<kind>::Type;
  using Value = typename VariantKind<kind>::Value;
  // Dates are taken as their base takes them, whose functions these override.
  static constexpr bool kHoldsDates = std::is_same_v<Value, CDateTime>;
  using Argument = std::conditional_t<kHoldsDates, const CDateTime&, Value>;

  // The member is a constant of generated code; it is kept.
  explicit CValueCol(const CMember& member);
  ~CValueCol() override;

  // Throws what CSimpleTypeInfo::Check throws, for another value than the member's fixed one as the
  // setter of a class, and then what Add of the base throws.
#if defined(__clang__)  // of dates they override, of others not
#pragma clang diagnostic push
#pragma clang diagnostic ignored "-Winconsistent-missing-override"
#endif
  void Add(Argument value);
  void AddAt(int index, Argument value);
#if defined(__clang__)
#pragma clang diagnostic pop
#endif

  int size() const { return this->GetCount(); }
  bool empty() const { return this->GetCount() == 0; }
  Value operator[](int index) const { return this->Item(index); }

 protected:
  void AddFromString(std::string text) override;
  void ToXml_Int(CXmlWriter* writer, bool root, const char* namespaceUri,
                 const CSerializationContext& context, bool optionalChoice) const override;
  CXmlElement* FromXml_Int(CXmlElement* parent, CXmlElement* cursor,
                           const CSerializationContext& context, bool optionalChoice) override;

 private:
  void Check(const Value& value) const;
  void CopyItems(const CXmlCollectionBase& from) override;

  const CMember& m_member;
};

template <ItemType kind>
CXmlCollectionBase* NewValueCol(const CMember& member) {
  return new CValueCol<kind>(member);
}

// The enumerators of a member that may stand more than once, as numbers. Classes use CEnumCol.
class QZXML_API CEnumColBase : public CXmlCollectionBase, public detail::IItemCopying {
 public:
  explicit CEnumColBase(const CMember& member);
  ~CEnumColBase() override;

  int GetCount() const override { return static_cast<int>(m_values.size()); }
  void Clear() override;
  // Throws CQzInvalidParamException "Index %d is out of range, use 0 - %d".
  void Remove(int index) override;

  int size() const { return GetCount(); }
  bool empty() const { return m_values.empty(); }

 protected:
  // Throws CQzInvalidParamException "Index out of range", and what the enumeration throws for a
  // number that is none of its own.
  void AddNumberAt(int index, std::int32_t value);
  std::int32_t NumberAt(int index) const;
  const std::vector<std::int32_t>& Numbers() const { return m_values; }

  void ToXml_Int(CXmlWriter* writer, bool root, const char* namespaceUri,
                 const CSerializationContext& context, bool optionalChoice) const override;
  CXmlElement* FromXml_Int(CXmlElement* parent, CXmlElement* cursor,
                           const CSerializationContext& context, bool optionalChoice) override;

 private:
  void CopyItems(const CXmlCollectionBase& from) override;

  const CMember& m_member;
  std::vector<std::int32_t> m_values;
};

template <typename Enumeration>
class CEnumCol : public CEnumColBase {
 public:
  class iterator {
   public:
    explicit iterator(std::vector<std::int32_t>::const_iterator at) : m_at(at) {}
    Enumeration operator*() const { return static_cast<Enumeration>(*m_at); }
    iterator& operator++() {
      ++m_at;
      return *this;
    }
    friend bool operator==(const iterator& a, const iterator& b) { return a.m_at == b.m_at; }
    friend bool operator!=(const iterator& a, const iterator& b) { return a.m_at != b.m_at; }

   private:
    std::vector<std::int32_t>::const_iterator m_at;
  };

  using CEnumColBase::CEnumColBase;

  void Add(Enumeration value) { AddNumberAt(size(), value); }
  void AddAt(int index, Enumeration value) { AddNumberAt(index, value); }
  // Throws CQzInvalidParamException "Index %d is out of range, use 0 - %d".
  Enumeration Item(int index) const { return static_cast<Enumeration>(NumberAt(index)); }
  Enumeration operator[](int index) const { return Item(index); }
  iterator begin() const { return iterator(Numbers().begin()); }
  iterator end() const { return iterator(Numbers().end()); }
};

template <typename Enumeration>
CXmlCollectionBase* NewEnumCol(const CMember& member) {
  return new CEnumCol<Enumeration>(member);
}

}  // namespace QzXmlLib16
