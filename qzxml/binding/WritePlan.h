#pragma once

#include <string>
#include <string_view>
#include <typeinfo>
#include <vector>

#include "qzxml/binding/ClassBinding.h"
#include "qzxml/binding/Member.h"
#include "qzxml/serialization/AttributeInfo.h"
#include "qzxml/serialization/ElementInfo.h"
#include "qzxml/xml/WrittenName.h"

namespace QzXmlLib16::detail {

// A value of a bound class, found and turned into text without AccessProperty and without a
// variant.
class CPlannedValue {
 public:
  CPlannedValue() = default;
  // declared is the member as the class that has the data member declares it.
  CPlannedValue(const CMember& member, const CMember& declared);

  // False for the kinds that are left to the walk.
  bool IsPlanned() const { return m_form != Form::Other; }

  // Where the value is; null for an absent one.
  const void* Find(const CBoundClass& object) const;

  // Whether its text has to be asked for as such. A text may have bytes to escape.
  bool IsText() const { return m_form >= Form::Text; }
  // Lies in the object, or in scratch.
  std::string_view GetText(const void* value, std::string& scratch) const;

  // Any other is written in place, and its end answered. Null, and what is there has no meaning,
  // for a value whose text is not easily told. Takes kRoom.
  static constexpr std::size_t kRoom = 64;
  char* Write(const void* value, char* out) const;

  bool IsString() const { return m_form == Form::Text; }
  bool IsDefault(std::string_view text) const {
    return !m_defaultText.empty() && text == m_defaultText;
  }

 private:
  enum class Form : unsigned char {
    Other,
    Scalar,       // a number or a boolean
    Date,         // a CDateTime
    Text,         // a text
    Enumeration,  // a number with a text
    Composed,     // something that makes a text of itself
  };

  Form m_form = Form::Other;
  ItemType m_kind = ItemType_None;
  CProperty m_property;
  EnumToString m_enumToString = nullptr;
  std::string m_defaultText;  // empty for none
};

// How the objects of a class are written: their members in the order of its tables, each with all
// that is known of it beforehand. What is not planned for a member is done by its entry in the
// tables, as the walk does it.
//
// Made with the tables and, as they, never changed and never freed.
class CWritePlan {
 public:
  enum class Way : unsigned char {
    Walk,            // nothing is known
    WalkObject,      // nothing is written for a null handle
    WalkCollection,  // nothing is written for an empty collection
    Value,
    Object,
    Collection,  // of objects
  };

  struct CChild {
    CChild(const CMember& member, const QzXmlLib16Data::CElementInfo* entry);

    Way way = Way::Walk;
    bool isNeeded = false;        // what is absent is left to the walk, which knows what follows
    bool optionalChoice = false;  // what the child's own ToXml_Int gets
    CProperty property;
    CPlannedValue value;
    const std::type_info* itemClass = nullptr;  // of objects: that of the declared class
    const QzXmlLib16Data::CElementInfo* entry;
    ElementTags tags;
    std::string uri;
  };

  struct CAttribute {
    CAttribute(const CMember& member, const QzXmlLib16Data::CAttributeInfo* entry);

    Way way = Way::Walk;
    bool isOptional;
    CProperty property;
    CPlannedValue value;
    const QzXmlLib16Data::CAttributeInfo* entry;
    AttributeTag tag;
  };

  // Makes the plan of a class whose tables have just been made.
  static void Build(CClassBinding& binding, const CTabledClass::CTables& tables);

  // The plan of an object; null for an object of a class that is derived from the one that the
  // binding tells of: it may have overridden anything.
  static const CWritePlan* For(const CBoundClass& object);

  const std::vector<CAttribute>& GetAttributes() const { return m_attributes; }
  const std::vector<CChild>& GetChildren() const { return m_children; }
  bool IsChoice() const { return m_isChoice; }
  bool IsNillable() const { return m_isNillable; }
  // Null for a class without a text.
  const CPlannedValue* GetText() const { return m_hasText ? &m_text : nullptr; }
  // Whether start tag and attributes can be planned too: the class has a tag, and no groups whose
  // attributes it would have to ask for.
  bool HasTag() const { return m_hasTag; }

 private:
  CWritePlan(const CClassBinding& binding, const CTabledClass::CTables& tables);

  void AddChild(const CMember& member, const CMember& declared,
                const QzXmlLib16Data::CElementInfo* entry);
  void AddAttribute(const CMember& member, const CMember& declared,
                    const QzXmlLib16Data::CAttributeInfo* entry);

  const std::type_info* m_class = nullptr;  // null for an abstract one
  std::vector<CAttribute> m_attributes;
  std::vector<CChild> m_children;
  CPlannedValue m_text;
  bool m_hasText = false;
  bool m_hasTag;
  bool m_isChoice;
  bool m_isNillable;
};

}  // namespace QzXmlLib16::detail
