#pragma once

#include <string_view>
#include <typeinfo>
#include <vector>

#include "qzxml/binding/BoundClass.h"
#include "qzxml/binding/ClassBinding.h"
#include "qzxml/binding/Member.h"
#include "qzxml/binding/PlannedValue.h"
#include "qzxml/fastinfoset/FastInfosetName.h"
#include "qzxml/serialization/AttributeInfo.h"
#include "qzxml/serialization/ElementInfo.h"
#include "qzxml/serialization/SerializationContext.h"
#include "qzxml/xml/WrittenName.h"
#include "qzxml/xml/XmlTextName.h"

namespace QzXmlLib16::detail {

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
    Text,            // a value that is a text
    Value,           // any other
    Int,             // of these: ItemType_i4
    Real,            // ItemType_r8
    Date,            // a CDateTime
    Object,
    Collection,  // of objects
  };

  struct CChild {
    CChild(const CMember& member, const QzXmlLib16Data::CElementInfo* entry);

    Way way = Way::Walk;
    bool isNeeded = false;        // what is absent is left to the walk, which knows what follows
    bool optionalChoice = false;  // what the child's own ToXml_Int gets
    bool hasDefault;
    CProperty property;
    CPlannedValue value;
    const std::type_info* itemClass = nullptr;  // of objects: that of the declared class
    const QzXmlLib16Data::CElementInfo* entry;
    XmlTextName name;
    FastInfosetName octetsName;
  };

  struct CAttribute {
    CAttribute(const CMember& member, const QzXmlLib16Data::CAttributeInfo* entry);

    // Whether that text is the default, and the context leaves it out.
    bool IsLeftOut(std::string_view text, const CSerializationContext& context) const {
      return hasDefault && isOptional && value.IsDefault(text) &&
             context.GetNoOptionalAttributeDefaultOutput();
    }

    Way way = Way::Walk;
    bool isOptional;
    bool hasDefault;
    CProperty property;
    CPlannedValue value;
    const QzXmlLib16Data::CAttributeInfo* entry;
    AttributeTag tag;
    FastInfosetName octetsName;
  };

  // Makes the plan of a class whose tables have just been made.
  static void Build(CClassBinding& binding, const CTabledClass::CTables& tables);

  // The plan of an object; null for an object of a class that is derived from the one that the
  // binding tells of: it may have overridden anything.
  static const CWritePlan* For(const CBoundClass& object) {
    const CWritePlan* plan = object.m_binding->m_writePlan.load(std::memory_order_acquire);
    if (plan == nullptr) plan = Make(object);
    return plan->m_class == &typeid(object) ? plan : nullptr;
  }

  const std::vector<CAttribute>& GetAttributes() const { return m_attributes; }
  const std::vector<CChild>& GetChildren() const { return m_children; }
  bool IsChoice() const { return m_isChoice; }
  bool IsNillable() const { return m_isNillable; }
  bool RequiresContent() const { return m_requiresContent; }
  // Whether one of the two has to be looked into.
  bool MayBeEmpty() const { return m_isNillable || m_requiresContent; }
  // Null for a class without a text.
  const CPlannedValue* GetText() const { return m_hasText ? &m_text : nullptr; }
  // Whether start tag and attributes can be planned too: the class has a tag, and no groups whose
  // attributes it would have to ask for.
  bool HasTag() const { return m_hasTag; }

 private:
  CWritePlan(const CClassBinding& binding, const CTabledClass::CTables& tables);

  static const CWritePlan* Make(const CBoundClass& object);
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
  bool m_requiresContent;
};

}  // namespace QzXmlLib16::detail
