#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <type_traits>

#include "qzxml/binding/SimpleTypeInfo.h"
#include "qzxml/platform/Export.h"
#include "qzxml/runtime/SmartPtr.h"
#include "qzxml/serialization/ClassfactoryBase.h"
#include "qzxml/values/BigInteger.h"
#include "qzxml/values/BinaryData.h"
#include "qzxml/values/DateTime.h"
#include "qzxml/values/DateTimeSpan.h"
#include "qzxml/values/Decimal.h"

namespace QzXmlLib16 {

namespace detail {
class CPlannedValue;
template <typename Sink>
class CPlannedWriting;
class CReadValues;
}  // namespace detail

class CBoundClass;
class CXmlCollectionBase;
class CXmlObjectBase;
struct CMember;

// The data members that a bound class may have beside values of the kinds of ItemType: an object of
// a bound class or of open content, and a collection of either or of values.
using CObjectHandle = CSmartPtr<CXmlObjectBase>;
using CCollectionHandle = CSmartPtr<CXmlCollectionBase>;

// Makes the collection that a member describes.
using CollectionFactory = CXmlCollectionBase* (*)(const CMember& member);

// Which data member of a bound class a property is. The value is absent when the optional is empty,
// an object when the handle is null. An enumeration stands as its number in an
// std::optional<std::int32_t>.
class CProperty {
 public:
  // The types of values, which AccessProperty tells apart by the ItemType of the simple type.
  template <typename Value>
  using Pointer = std::optional<Value> CBoundClass::*;

  constexpr CProperty() : m_object(nullptr) {}
#define QZXML_PROPERTY(type, name) \
  template <typename Class>        \
  constexpr CProperty(type Class::*member) : m_##name(static_cast<type CBoundClass::*>(member)) {}
  QZXML_PROPERTY(std::optional<std::string>, string)
  QZXML_PROPERTY(std::optional<bool>, boolean)
  QZXML_PROPERTY(std::optional<char>, i1)
  QZXML_PROPERTY(std::optional<std::int16_t>, i2)
  QZXML_PROPERTY(std::optional<std::int32_t>, i4)
  QZXML_PROPERTY(std::optional<std::int64_t>, i8)
  QZXML_PROPERTY(std::optional<std::uint8_t>, ui1)
  QZXML_PROPERTY(std::optional<std::uint16_t>, ui2)
  QZXML_PROPERTY(std::optional<std::uint32_t>, ui4)
  QZXML_PROPERTY(std::optional<std::uint64_t>, ui8)
  QZXML_PROPERTY(std::optional<float>, r4)
  QZXML_PROPERTY(std::optional<double>, r8)
  QZXML_PROPERTY(std::optional<CDateTime>, dateTime)
  QZXML_PROPERTY(std::optional<CDateTimeSpan>, duration)
  QZXML_PROPERTY(std::optional<CDecimal>, decimal)
  QZXML_PROPERTY(std::optional<CBigInteger>, integer)
  QZXML_PROPERTY(std::optional<CBinaryData>, binary)
  QZXML_PROPERTY(CObjectHandle, object)
  QZXML_PROPERTY(CCollectionHandle, collection)
#undef QZXML_PROPERTY

 private:
  friend class CBoundClass;
  friend class detail::CPlannedValue;
  template <typename Sink>
  friend class detail::CPlannedWriting;
  friend class detail::CReadValues;

  union {
    Pointer<std::string> m_string;
    Pointer<bool> m_boolean;
    Pointer<char> m_i1;
    Pointer<std::int16_t> m_i2;
    Pointer<std::int32_t> m_i4;
    Pointer<std::int64_t> m_i8;
    Pointer<std::uint8_t> m_ui1;
    Pointer<std::uint16_t> m_ui2;
    Pointer<std::uint32_t> m_ui4;
    Pointer<std::uint64_t> m_ui8;
    Pointer<float> m_r4;
    Pointer<double> m_r8;
    Pointer<CDateTime> m_dateTime;
    Pointer<CDateTimeSpan> m_duration;
    Pointer<CDecimal> m_decimal;
    Pointer<CBigInteger> m_integer;
    Pointer<CBinaryData> m_binary;
    CObjectHandle CBoundClass::*m_object;
    CCollectionHandle CBoundClass::*m_collection;
  };
};

// How often an element stands in a document; -1 is no upper limit.
// Source: XML Schema 1.0 part 1, section 3.9.
struct COccurs {
  std::int32_t min;
  std::int32_t max;
};
constexpr COccurs Once{1, 1};
constexpr COccurs Optional{0, 1};
constexpr COccurs Repeated(std::int32_t min = 0, std::int32_t max = -1) { return {min, max}; }

enum class MemberForm : unsigned char {
  Attribute,
  AnyAttribute,  // the rest of the attributes, a CAttributeCol
  Text,          // the class's own text
  Value,         // an element with a simple type
  Object,        // an element with a class
  Group,         // a class without a tag of its own: a model group in the class's content
  Untyped,       // an element of any type under one name, a CElement
  Wildcard,      // elements of any name, a CWildcardCol
};

// One attribute, child or text of a bound class. Generated code lists them in a constant array: the
// attributes first, then the children in the order of the schema. A member's place in the array,
// counted on from the base class's members, is its property index.
//
//   static constexpr CMember kMembers[] = {
//       RequiredAttribute("lat", "", &CWpt::m_lat, kLatitude),
//       ValueElement("ele", kNamespace, Optional, &CWpt::m_ele, kDecimal),
//       ObjectElement("link", kNamespace, Repeated(), &CWpt::m_links, &NewObject<CLink>,
//                     &NewObjectCol<CLink>)};
struct CMember {
  MemberForm form = MemberForm::Attribute;
  bool isFixed = false;          // defaultValue is the only value
  bool isNillable = false;       // a value that is not set stands for nil, if it is mandatory
  bool isOwnTypeOnly = false;    // an xsi:type of a value may name no other type than its own
  bool requiresContent = false;  // a group that takes at least one element
  COccurs occurs = Once;
  const char* name = "";          // local name; of a wildcard "AnyElement", of a group its name
  const char* namespaceUri = "";  // of a wildcard, the target namespace that its rule refers to
  CProperty property;

  const CSimpleTypeInfo* type = nullptr;           // of values
  const CNamedSimpleType* namedTypes = nullptr;    // of its family; null for a type without one
  ClassFactory newObject = nullptr;                // of objects and groups
  AbstractClassFactory newObjectByType = nullptr;  // of objects whose class xsi:type tells
  CollectionFactory newCollection = nullptr;       // of what may stand more than once
  const char* defaultValue = nullptr;  // in lexical form; null for none. Empty elements take it
  const char* wildcard = nullptr;      // the namespaces that a wildcard takes, as in the schema

  // --- The same member with one thing changed.
  constexpr CMember WithDefault(const char* text) const {
    CMember changed = *this;
    changed.defaultValue = text;
    return changed;
  }
  constexpr CMember WithFixed(const char* text) const {
    CMember changed = WithDefault(text);
    changed.isFixed = true;
    return changed;
  }
  constexpr CMember Nillable() const {
    CMember changed = *this;
    changed.isNillable = true;
    return changed;
  }
  constexpr CMember OwnTypeOnly() const {
    CMember changed = *this;
    changed.isOwnTypeOnly = true;
    return changed;
  }
  constexpr CMember ByType(AbstractClassFactory factory) const {
    CMember changed = *this;
    changed.newObjectByType = factory;
    return changed;
  }
  constexpr CMember RequiresContent() const {
    CMember changed = *this;
    changed.requiresContent = true;
    return changed;
  }

  // Of a restriction: an element of any type that the base class's member holds a collection of.
  constexpr CMember InCollection() const;

  // Of a restriction: the base class's member may not stand in the class.
  constexpr CMember Prohibited() const {
    CMember changed = *this;
    changed.occurs = {0, 0};
    return changed;
  }

  bool IsAttribute() const {
    return form == MemberForm::Attribute || form == MemberForm::AnyAttribute;
  }
  bool IsElement() const { return !IsAttribute() && form != MemberForm::Text; }
  bool IsCollection() const { return newCollection != nullptr; }
  bool IsObject() const { return form >= MemberForm::Object && !IsCollection(); }
  bool IsValue() const {
    return (form == MemberForm::Attribute || form == MemberForm::Text ||
            form == MemberForm::Value) &&
           !IsCollection();
  }
};

namespace detail {
constexpr CMember MakeMember(MemberForm form, const char* name, const char* namespaceUri,
                             COccurs occurs, CProperty property) {
  CMember member;
  member.form = form;
  member.name = name;
  member.namespaceUri = namespaceUri;
  member.occurs = occurs;
  member.property = property;
  return member;
}
}  // namespace detail

constexpr CMember RequiredAttribute(const char* name, const char* namespaceUri, CProperty property,
                                    const CSimpleTypeInfo& type) {
  CMember member = detail::MakeMember(MemberForm::Attribute, name, namespaceUri, Once, property);
  member.type = &type;
  return member;
}

constexpr CMember OptionalAttribute(const char* name, const char* namespaceUri, CProperty property,
                                    const CSimpleTypeInfo& type) {
  CMember member = RequiredAttribute(name, namespaceUri, property, type);
  member.occurs = Optional;
  return member;
}

// wildcard: "##any", "##other" or a list of namespaces, as in the schema.
QZXML_API CXmlCollectionBase* NewAttributeCol(const CMember& member);
constexpr CMember AnyAttribute(const char* targetNamespace, const char* wildcard,
                               CProperty property) {
  CMember member = detail::MakeMember(MemberForm::AnyAttribute, "AnyAttribute", targetNamespace,
                                      Repeated(), property);
  member.wildcard = wildcard;
  member.newCollection = &NewAttributeCol;
  return member;
}

constexpr CMember Text(CProperty property, const CSimpleTypeInfo& type) {
  CMember member = detail::MakeMember(MemberForm::Text, "", "", Once, property);
  member.type = &type;
  return member;
}

constexpr CMember Text(CProperty property, const CSimpleTypeFamily& family) {
  CMember member = Text(property, family.type);
  member.namedTypes = family.named;
  return member;
}

// newCollection where it may stand more than once.
constexpr CMember ValueElement(const char* name, const char* namespaceUri, COccurs occurs,
                               CProperty property, const CSimpleTypeInfo& type,
                               CollectionFactory newCollection = nullptr) {
  CMember member = detail::MakeMember(MemberForm::Value, name, namespaceUri, occurs, property);
  member.type = &type;
  member.newCollection = newCollection;
  return member;
}

constexpr CMember ValueElement(const char* name, const char* namespaceUri, COccurs occurs,
                               CProperty property, const CSimpleTypeFamily& family,
                               CollectionFactory newCollection = nullptr) {
  CMember member = ValueElement(name, namespaceUri, occurs, property, family.type, newCollection);
  member.namedTypes = family.named;
  return member;
}

constexpr CMember ObjectElement(const char* name, const char* namespaceUri, COccurs occurs,
                                CProperty property, ClassFactory newObject,
                                CollectionFactory newCollection = nullptr) {
  CMember member = detail::MakeMember(MemberForm::Object, name, namespaceUri, occurs, property);
  member.newObject = newObject;
  member.newCollection = newCollection;
  return member;
}

constexpr CMember Group(const char* name, COccurs occurs, CProperty property,
                        ClassFactory newObject, CollectionFactory newCollection = nullptr) {
  CMember member = detail::MakeMember(MemberForm::Group, name, "", occurs, property);
  member.newObject = newObject;
  member.newCollection = newCollection;
  return member;
}

// An element of one name whose content may be anything.
QZXML_API CXmlCollectionBase* NewElementCol(const CMember& member);
constexpr CMember UntypedElement(const char* name, const char* namespaceUri, COccurs occurs,
                                 CProperty property) {
  CMember member = detail::MakeMember(MemberForm::Untyped, name, namespaceUri, occurs, property);
  member.wildcard = *namespaceUri == '\0' ? "##local" : namespaceUri;
  member.newCollection = occurs.max == 1 ? nullptr : &NewElementCol;
  return member;
}

constexpr CMember CMember::InCollection() const {
  CMember changed = *this;
  changed.newCollection = &NewElementCol;
  return changed;
}

// wildcard as with AnyAttribute. A collection even where one element at most may stand.
QZXML_API CXmlCollectionBase* NewWildcardCol(const CMember& member);
constexpr CMember AnyElement(const char* targetNamespace, const char* wildcard, COccurs occurs,
                             CProperty property) {
  CMember member =
      detail::MakeMember(MemberForm::Wildcard, "AnyElement", targetNamespace, occurs, property);
  member.wildcard = wildcard;
  member.newCollection = &NewWildcardCol;
  return member;
}

}  // namespace QzXmlLib16
