#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "qzxml/binding/ClassBinding.h"
#include "qzxml/platform/Export.h"
#include "qzxml/values/BigInteger.h"
#include "qzxml/values/Decimal.h"
#include "qzxml/xml/XmlAttribute.h"
#include "qzxml/xml/XmlElement.h"

// How CBoundClass reads what is ordinary. Not for others.
namespace QzXmlLib16 {

class CBoundClass;
class CSerializationContext;

namespace detail {

// The name of an element or an attribute, as a member asks for it. A document stores each name
// once; the member that has been found to have a name is remembered there.
class CReadName {
 public:
  CReadName(const char* localName, const char* namespaceUri)
      : m_localName(localName), m_namespaceUri(namespaceUri) {}

  bool Is(const CXmlElement& element) const { return Is(*element.m_pName); }
  bool Is(const CXmlAttribute& attribute) const { return Is(*attribute.m_pName); }
  bool Is(const XmlName& name) const { return name.lastMember == this || Compare(name); }
  bool operator==(const CReadName& other) const {
    return m_localName == other.m_localName && m_namespaceUri == other.m_namespaceUri;
  }

 private:
  bool Compare(const XmlName& name) const {
    if (name.localName != m_localName || *name.uri != m_namespaceUri) return false;
    name.lastMember = this;
    return true;
  }

  std::string_view m_localName;  // constants of generated code
  std::string_view m_namespaceUri;
};

// One attribute, child or text of a class, as it is read when nothing is out of the ordinary.
struct ReadMember {
  // Makes a value of the text and puts it into the object. False for a text that is not ordinary;
  // the object is as it was then, as it is after a CQzException.
  using StoreValue = bool (*)(CBoundClass& object, const ReadMember& member, std::string_view text);

  // How a member that was found is read.
  enum class Way : unsigned char {
    kWalk,        // by its entry in the tables
    kValue,       // by storeValue
    kHeldObject,  // into the object that the class holds
    kNewObject,   // into a new object, which the class is then to hold
    kCollection,  // by the collection
  };

  ReadMember(const CMember& itsMember, std::int32_t itsIndex);

  CReadName name;
  Way way = Way::kWalk;
  bool isMandatory = false;
  bool isNamed = false;  // an element of its own name; the others go to the walk
  StoreValue storeValue = nullptr;
  unsigned char pointer[sizeof(std::string CBoundClass::*)] = {};  // to the data member
  const CMember& member;
  std::int32_t index;  // of the property
  QzXmlLib16Data::CElementInfo* info = nullptr;

  // The bounds of a number, both included; those of an unsigned number as their bits.
  bool hasBounds = false;
  std::int64_t lowest = 0;
  std::int64_t highest = 0;
};

// Empties one data member.
struct MemberReset {
  using Function = void (*)(CBoundClass& object, const MemberReset& member);

  Function function = nullptr;
  unsigned char pointer[sizeof(std::string CBoundClass::*)] = {};  // to the data member
};

// The short way through the elements of one class. It takes the members in the order of the class
// and does with each what its entry in the tables would do, but without the virtual calls and the
// variant: a text becomes the value, is held against its type and moved to the data member. It
// steps aside where anything is out of the ordinary, ahead of any change of the object: such a
// member, attribute or text goes to its entry in the tables. So all failures, and whatever the
// options of the context turn on, are the walk's alone.
//
// Made with the tables of a class and kept as long as they; any number of threads may read by it.
class CReadPlan {
 public:
  // Null for a class that the plan does not serve: one without a tag of its own.
  static std::unique_ptr<CReadPlan> Make(const CClassBinding& binding,
                                         const CTabledClass::CTables& tables);

  // The plan of an object; null for an object of a class that is derived from the one that the plan
  // serves, and for one without a plan.
  static const CReadPlan* For(const CBoundClass& object);

  // Whether there are names that FindObject finds.
  bool HasObjects() const { return !m_objects.empty(); }
  // The member that elements of a name are read into where it is an object of a known class or a
  // collection of objects; null for other names.
  const ReadMember* FindObject(const XmlName& name) const;

  // Whether the context leaves all as it is ordinarily.
  QZXML_API static bool Serves(const CSerializationContext& context);

  // Empties all data members of an object of that class.
  void Reset(CBoundClass& object) const {
    for (const MemberReset& reset : m_resets) reset.function(object, reset);
  }

  // As CXmlGeneratedClass::FromXml_Int for an object of that class.
  CXmlElement* Read(CBoundClass& object, CXmlElement* parent, CXmlElement* cursor,
                    const CSerializationContext& context, bool optionalChoice) const;

 private:
  CReadPlan() = default;

  void AddAttributes(const CClassBinding& binding);
  void AddElements(const CClassBinding& binding, const CTabledClass::CTables& tables);
  void ListObjects();
  void ReadAttributes(CBoundClass& object, CXmlElement* parent,
                      const CSerializationContext& context) const;
  int FindAttribute(const CXmlAttribute& attribute, std::size_t first) const;
  CXmlElement* ReadSequence(CBoundClass& object, CXmlElement* parent, CXmlElement* cursor,
                            const CSerializationContext& context) const;
  static bool ReadElement(CBoundClass& object, const ReadMember& member, CXmlElement* parent,
                          CXmlElement*& cursor, const CSerializationContext& context);
  static bool ReadCollection(CBoundClass& object, const ReadMember& member, CXmlElement* parent,
                             CXmlElement*& cursor, const CSerializationContext& context);
  void ReadText(CBoundClass& object, const CXmlElement& parent) const;

  std::vector<ReadMember> m_attributes;  // in the order of the table, without a wildcard
  std::uint64_t m_required = 0;          // of them, by their places
  bool m_knowsAttributes = false;        // false: all go to the table
  std::vector<ReadMember> m_elements;    // in the order of the table
  bool m_isSequence = false;             // false: the content goes to the walk
  std::vector<std::size_t> m_objects;    // of the elements, those that FindObject finds
  std::unique_ptr<ReadMember> m_text;    // null without
  bool m_isMixed = false;
  std::vector<MemberReset> m_resets;
};

// For tests: false lets all objects be read by the walk. To be called while nobody reads.
QZXML_API void ReadByPlans(bool reads);

}  // namespace detail
}  // namespace QzXmlLib16
