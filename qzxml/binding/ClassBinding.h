#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>

#include "qzxml/binding/Member.h"
#include "qzxml/platform/Export.h"
#include "qzxml/serialization/ParentElementInfo.h"
#include "qzxml/serialization/TabledClass.h"

namespace QzXmlLib16 {

namespace detail {
class CReadPlan;
class CReadValues;
class CWritePlan;
}  // namespace detail

// What a bound class is as a whole.
struct CClassTraits {
  // Name and namespace under which the schema declares the type; what xsi:type names.
  const char* typeName;
  const char* namespaceUri;
  // The tag of an object that nobody has given another name.
  const char* elementName;
  ClassFactory newObject;  // makes an object of this class; null for an abstract type
  QzXmlLib16Data::XmlElementGroupType group = QzXmlLib16Data::XmlElementGroupType_Sequence;
  QzXmlLib16Data::XmlElementType elementType = QzXmlLib16Data::XmlElementType_Element;
  // Whether an object may stand where the schema declares another type, so that it has to say which
  // it is.
  bool isDerived = false;
  // Whether a choice has to have a member selected.
  bool requiresContent = false;
  // Whether text may stand between the children; it is kept as the class's text, and its place is
  // lost.
  bool isMixed = false;
  // Whether the class is a CNillableState.
  bool isNillable = false;

  // --- The same traits with one thing changed.
  constexpr CClassTraits AsChoice() const {
    return With(&CClassTraits::group, QzXmlLib16Data::XmlElementGroupType_Choice);
  }
  constexpr CClassTraits AsAll() const {
    return With(&CClassTraits::group, QzXmlLib16Data::XmlElementGroupType_All);
  }
  // Without a tag of its own.
  constexpr CClassTraits AsGroup() const {
    return With(&CClassTraits::elementType, QzXmlLib16Data::XmlElementType_PseudoElement);
  }
  constexpr CClassTraits Derived() const { return With(&CClassTraits::isDerived, true); }
  constexpr CClassTraits RequiresContent() const {
    return With(&CClassTraits::requiresContent, true);
  }
  constexpr CClassTraits Mixed() const { return With(&CClassTraits::isMixed, true); }
  constexpr CClassTraits Nillable() const { return With(&CClassTraits::isNillable, true); }

 private:
  template <typename T>
  constexpr CClassTraits With(T CClassTraits::*trait, T value) const {
    CClassTraits changed = *this;
    changed.*trait = value;
    return changed;
  }
};

// A member that a class derived by restriction has in another form than its base class. It keeps
// the index and the data member of the base's property, so that the simple type has the base's kind
// and the property here is not looked at; {0, 0} occurrences take the member out of the class.
struct CRestrictedMember {
  std::int32_t propertyIndex;
  CMember member;
};

// Arrays of generated code.
class CMemberList {
 public:
  constexpr CMemberList() = default;
  template <std::size_t count>
  constexpr CMemberList(const CMember (&members)[count])
      : m_first(members), m_count(static_cast<std::int32_t>(count)) {}

  constexpr const CMember* begin() const { return m_first; }
  constexpr const CMember* end() const { return m_first + m_count; }
  constexpr std::int32_t size() const { return m_count; }

 private:
  const CMember* m_first = nullptr;
  std::int32_t m_count = 0;
};

class CRestrictedList {
 public:
  constexpr CRestrictedList() = default;
  template <std::size_t count>
  constexpr CRestrictedList(const CRestrictedMember (&members)[count])
      : m_first(members), m_count(static_cast<std::int32_t>(count)) {}

  constexpr const CRestrictedMember* begin() const { return m_first; }
  constexpr const CRestrictedMember* end() const { return m_first + m_count; }

 private:
  const CRestrictedMember* m_first = nullptr;
  std::int32_t m_count = 0;
};

// The description of a bound class: its traits and its members. It is a static member of generated
// code, there before anything runs; what the walks need is made of it at the first use of the
// class.
//
//   const CMember CWpt::s_members[] = {RequiredAttribute(...), ValueElement(...)};
//   CClassBinding CWpt::s_binding({"wptType", kNamespace, "wpt"}, s_members);
class QZXML_API CClassBinding {
 public:
  // base describes the C++ base class where that is a bound class too, and basePropertyCount is how
  // many members it has with all of its own base classes: they come first, and the property indexes
  // of own members go on behind them. restricted replaces members of base classes.
  constexpr CClassBinding(const CClassTraits& traits, CMemberList own,
                          CClassBinding* base = nullptr, std::int32_t basePropertyCount = 0,
                          CRestrictedList restricted = {})
      : m_traits(traits),
        m_own(own),
        m_base(base),
        m_basePropertyCount(basePropertyCount),
        m_restricted(restricted) {}
  CClassBinding(const CClassBinding&) = delete;
  CClassBinding& operator=(const CClassBinding&) = delete;

  const CClassTraits& GetTraits() const { return m_traits; }

  std::int32_t GetMemberCount() const { return m_basePropertyCount + m_own.size(); }
  // The member as this class has it. The index is below the count.
  const CMember& GetMember(std::int32_t propertyIndex) const;
  // The member as the class that has the data member declares it, with the property.
  const CMember& GetDeclaredMember(std::int32_t propertyIndex) const;

 private:
  friend class CBoundClass;
  friend class detail::CReadPlan;
  friend class detail::CReadValues;
  friend class detail::CWritePlan;

  CClassTraits m_traits;
  CMemberList m_own;
  CClassBinding* m_base;
  std::int32_t m_basePropertyCount;
  CRestrictedList m_restricted;

  // Made at the first use. The entries live as long as the process.
  CTabledClass::CTables m_tables;
  QzXmlLib16Data::CParentElementInfo* m_typedInfo = nullptr;  // that of m_tables, with xsi:type
  const detail::CReadPlan* m_readPlan = nullptr;              // null for a class that has none
  std::atomic<const detail::CWritePlan*> m_writePlan{nullptr};
};

}  // namespace QzXmlLib16
