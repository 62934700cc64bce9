#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>

#include "qzxml/binding/ClassBinding.h"
#include "qzxml/binding/Member.h"
#include "qzxml/platform/Export.h"
#include "qzxml/serialization/PropertyAccess.h"
#include "qzxml/serialization/TabledClass.h"

namespace QzXmlLib16 {

namespace detail {

class CEarlyItems;

// A parameter of this type takes what converts to T, which another parameter says.
template <typename T>
struct NotDeduced {
  using Type = T;
};

}  // namespace detail

// The base of the classes that `qzxml generate` makes. A class holds one data member for each
// attribute and child, lists them in a table of CMember, and has typed accessors over the protected
// operations here; all the rest is the same for all classes and stands here.
//
//   class CWpt : public CBoundClass {
//    public:
//     CWpt();
//     const CDecimal& GetLat() const { return ValueOrEmpty(m_lat); }
//     bool IsSetLat() const { return m_lat.has_value(); }
//     void SetLat(CDecimal value) { SetValue(Property_Lat, m_lat, std::move(value)); }
//     ...
//    private:
//     enum Property : int { Property_Lat, ... };
//     static const CMember s_members[];
//     static CClassBinding s_binding;
//     std::optional<CDecimal> m_lat;
//   };
//
// Every value that comes in, by a setter or from a document, is held against its simple type, and
// what the schema forbids is refused with the exceptions of CSimpleTypeInfo::Check; the property
// then stays as it was. Mandatory objects and all collections are made when they are first asked
// for. An object belongs to one thread at a time; that includes the const operations.
class QZXML_API CBoundClass : public CTabledClass {
 public:
  CBoundClass(const CBoundClass&) = delete;
  CBoundClass& operator=(const CBoundClass&) = delete;
  ~CBoundClass() override;

  std::string GetTargetNamespace() const override;
  std::string GetNamespace() const override;

  // The name of the element that the object is written under.
  using CTabledClass::GetElementName;

  const CClassBinding& GetBinding() const { return *m_binding; }

  // Gives the object another tag.
  void TakeElementName(const char* name) { SetElementName(name); }
  // Makes the object one for documents that begin with the element of its tag: reading one with
  // another root throws CQzValidationException "The root of the document is [%s], not [%s]." The
  // element has that namespace, or with null the namespace of the object's type. The text stays the
  // caller's and outlives the object. Becoming the member of another object ends this.
  void BeRoot(const char* namespaceUri);

  // A new object of the same class with copies of all that this one holds; nobody listens to it.
  CObjectHandle NewCopy() const;

  // Hears of the collections of a choice.
  void OnEvent(CXmlObjectBase* sender, MsgType type, void* data) override;

 protected:
  explicit CBoundClass(CClassBinding& binding);

  // --- Values. The index is that of the property, which decides about the check.

  // Absent values answer an empty one: no text, zero, false.
  template <typename Value>
  static const Value& ValueOrEmpty(const std::optional<Value>& property) {
    static const Value kEmpty{};
    return property ? *property : kEmpty;
  }

  // Absent values answer the default of the schema. Value is one of those that a CProperty points
  // at; how it travels is said by the table of members.
  template <typename Value>
  Value ValueOrDefault(std::int32_t index, const std::optional<Value>& property) const;

  // No value makes the property absent, and gives it up in a choice. Throws what the check throws;
  // in a choice CQzInvalidStateException "The Property [%s] is already set. Only one element within
  // this class bay be set at a time" while another member is selected.
  template <typename Value>
  void SetValue(std::int32_t index, std::optional<Value>& property,
                typename detail::NotDeduced<std::optional<Value>>::Type value);

  // An enumeration, whose property holds the number.
  std::int32_t EnumOrDefault(std::int32_t index, const std::optional<std::int32_t>& property) const;
  void SetEnum(std::int32_t index, std::optional<std::int32_t>& property,
               std::optional<std::int32_t> value);
  template <typename Enumeration>
  static std::optional<Enumeration> AsEnum(const std::optional<std::int32_t>& property) {
    if (!property) return std::nullopt;
    return static_cast<Enumeration>(*property);
  }

  // --- Objects and collections

  // The object, made if the member is mandatory; null for an absent one.
  const CObjectHandle& GetObject(std::int32_t index, const CObjectHandle& property) const;
  template <typename Object>
  static CSmartPtr<Object> As(const CObjectHandle& object) {
    CXmlObjectBase* const base = object;
    return CSmartPtr<Object>(static_cast<Object*>(base));
  }
  // The object, made if it is absent and no abstract type: throws CQzInvalidStateException "The
  // Property [%s] has an abstract type, set an object".
  const CObjectHandle& EnsureObject(std::int32_t index, CObjectHandle& property);
  template <typename Object>
  CSmartPtr<Object> GetObject(std::int32_t index, const CObjectHandle& property) const {
    return As<Object>(GetObject(index, property));
  }
  template <typename Object>
  CSmartPtr<Object> EnsureObject(std::int32_t index, CObjectHandle& property) {
    return As<Object>(EnsureObject(index, property));
  }
  // The object takes the element name of the member. Null makes it absent; throws
  // CQzInvalidParamException "The Property [%s] is mandatory, it may node be NULL" for a mandatory
  // one, and in a choice as SetValue does.
  void SetObject(std::int32_t index, CObjectHandle& property, CXmlObjectBase* value);
  // The collection, made at the first call.
  CXmlCollectionBase& GetCollection(std::int32_t index, const CCollectionHandle& property) const;
  template <typename Collection>
  Collection& GetCollection(std::int32_t index, const CCollectionHandle& property) const {
    return static_cast<Collection&>(GetCollection(index, property));
  }

  // --- Choices: the property index of the member that is selected, or -1.
  std::int32_t GetSelectedMember() const;

  // --- The walks
  // Meant: final, as ordinary elements are read and written without it.
  void AccessProperty(int index, bool read, QzVariant& value) const final;
  void Init() override;
  const CTables& GetTables() const final;
  CParentElementInfo* GetClassInfo() const override;
  void ToXml_Int(CXmlWriter* writer, bool root, const char* namespaceUri,
                 const CSerializationContext& context, bool optionalChoice) const override;
  void ContentToXml(const CParentElementInfo& info, CXmlWriter* writer,
                    const CSerializationContext& context, bool optionalChoice) const override;
  CXmlElement* FromXml_Int(CXmlElement* parent, CXmlElement* cursor,
                           const CSerializationContext& context, bool optionalChoice) override;

 private:
  friend class CBoundObjectCol;
  friend class detail::CEarlyItems;
  friend class detail::CReadPlan;
  friend class detail::CReadValues;
  friend class detail::CWritePlan;
  template <typename Sink>
  friend class detail::CPlannedWriting;

  void CheckValue(std::int32_t index, const QzVariant& value) const;
  void DefaultValue(std::int32_t index, QzVariant& value) const;
  void SelectMember(std::int32_t index, bool hasValue);
  static void TakeAsMember(const CMember& member, CXmlObjectBase* object);
  void TakeTypeFrom(const CMember& member);
  void ResetMembers();
  bool MissesContent() const;
  bool IsNilObject() const;
  void RequireSuitableElement(const CSerializationContext& context,
                              const CXmlElement& element) const;
  void RequireRoot(const CSerializationContext& context, const CXmlElement& element) const;

  void AccessObjectMember(const CMember& member, int index, bool read, QzVariant& value);
  void ReadValue(const CMember& member, int index, QzVariant& value);
  void StoreValue(const CMember& member, int index, QzVariant& value);
  template <typename Visit>
  static void VisitValue(const CMember& declared, Visit visit);

  CClassBinding* m_binding;
  const char* m_rootNamespace = nullptr;
  bool m_isRoot = false;         // reads no document with another root
  std::int32_t m_selected = -1;  // stays with a collection whose first item was refused
  bool m_writesType = false;     // stands where another type is declared
};

// Beside CBoundClass, for a class whose element may carry xsi:nil.
class QZXML_API CNillableState : public INillable {
 public:
  bool GetIsNil() override { return m_isNil; }
  void SetIsNil(bool isNil) override { m_isNil = isNil; }

 protected:
  CNillableState() = default;
  ~CNillableState() = default;

 private:
  bool m_isNil = false;
};

}  // namespace QzXmlLib16
