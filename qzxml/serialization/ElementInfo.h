#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <utility>

#include "qzxml/platform/Export.h"
#include "qzxml/serialization/ClassfactoryBase.h"
#include "qzxml/serialization/ElementRules.h"
#include "qzxml/serialization/ParentElementInfo.h"
#include "qzxml/serialization/PrimitiveRestrictions.h"
#include "qzxml/values/ItemType.h"
#include "qzxml/values/WhitespaceUtils.h"
#include "qzxml/xml/WrittenName.h"

namespace QzXmlLib16 {
class CElementCol;
class CSerializationContext;
class CXmlCollectionBase;
class CXmlElement;
class CXmlGeneratedClass;
class CXmlObjectBase;
class CXmlWriter;
struct QzVariant;
}  // namespace QzXmlLib16

namespace QzXmlLib16Data {

using QzXmlLib16::AbstractClassFactory;
using QzXmlLib16::CElementCol;
using QzXmlLib16::ClassFactory;
using QzXmlLib16::CPrimitiveRestrictions;
using QzXmlLib16::CSerializationContext;
using QzXmlLib16::CWhitespaceUtils;
using QzXmlLib16::CXmlCollectionBase;
using QzXmlLib16::CXmlElement;
using QzXmlLib16::CXmlGeneratedClass;
using QzXmlLib16::CXmlObjectBase;
using QzXmlLib16::CXmlWriter;
using QzXmlLib16::EnumToString;
using QzXmlLib16::ItemType;
using QzXmlLib16::QzVariant;
using QzXmlLib16::StringToEnum;

// One child element of a generated class: writes the property behind it, and takes it from the
// children of an element. The classes below this one stand in ElementInfoSeq.h, ElementInfoAll.h
// and ElementInfoChoice.h; their names tell the model group (Seq, All, Choice), the kind of value
// (Cls a class, AbsCls a class known only from the element, Enum, Prim, Untpd open content) and the
// occurrence (Mnd exactly once, Opt at most once, Col many).
//
// An object copies the texts it is given, belongs to the table of one class, and is not changed
// once it is made: all threads share it.
class QZXML_API CElementInfo {
 public:
  CElementInfo(const CElementInfo&) = delete;
  CElementInfo& operator=(const CElementInfo&) = delete;
  virtual ~CElementInfo();

  // Writes the property of object; true when something was written. Throws CQzInvalidParamException
  // "The Property [%s] is mandatory, it may not be NULL" for a mandatory member with nothing to
  // write.
  virtual bool ElementToXml(const CSerializationContext& context, const CXmlGeneratedClass* object,
                            CXmlWriter* writer) const = 0;

  // Tries to take this child from the cursor *current, which then moves behind what was taken.
  // parentNamespace is the namespace of object, parentType how its class stands in the document.
  // What true and false mean is told with each family.
  virtual bool ElementFromXml(const CSerializationContext& context, CXmlGeneratedClass* object,
                              CXmlElement* parent, CXmlElement** current,
                              const char* parentNamespace, XmlElementType parentType) = 0;

  // Whether a class of an xs:all may do with this member found or not found; enforce when it must
  // fail otherwise. Throws CQzException "Not implemented, should never be called" here.
  virtual bool Validate(const CSerializationContext& context, const CXmlGeneratedClass* object,
                        bool found, bool enforce) const;

  // Writes the attributes of a child that has no tag of its own. Does nothing here.
  virtual void PseudoChildAttributeToXml(const CSerializationContext& context,
                                         const CXmlGeneratedClass* object,
                                         CXmlWriter* writer) const;

  // Has the rules look at each element of this value that is read, and takes them over. To be
  // called while the table is made.
  void SetRules(std::unique_ptr<const QzXmlLib16::detail::IElementRules> rules) {
    m_pRules = std::move(rules);
  }

  // Has an untyped child of one name be read only in its own namespace, where otherwise none at all
  // passes too. To be called while the table is made.
  void SetNeedsNamespace() { m_bNeedsNamespace = true; }

  // Throws what the facet test of a primitive throws, and CQzException "Cannot CheckRestriction for
  // type: " with the value's type for a member that is none.
  void CheckRestriction(const QzVariant& value) const;

 protected:
  // A class or a collection.
  CElementInfo(const char* elementName, const char* elementNamespace, std::int32_t propertyIndex);
  // An enumeration. A null default is the empty text.
  CElementInfo(const char* elementName, const char* elementNamespace, std::int32_t propertyIndex,
               bool nillable, EnumToString enumToString, StringToEnum stringToEnum,
               const char* defaultValue);
  // A primitive. A null format or default is the empty text.
  CElementInfo(const char* elementName, const char* elementNamespace, std::int32_t propertyIndex,
               bool nillable, ItemType itemType, const char* formatOverride,
               CWhitespaceUtils::WhitespaceRule whitespaceRule,
               const CPrimitiveRestrictions& restrictions, const char* defaultValue);

  std::string GetElementName() const { return m_strElementName; }
  std::string GetElementNamespace() const { return m_strElementNamespace; }
  int GetPropertyIndex() const { return m_lPropertyIndex; }
  EnumToString GetEnumToString() const { return m_enumToString; }  // null for no enumeration

  // Whether an element has this member's name, and its namespace where the context minds
  // namespaces. False for null.
  bool IsThisElement(const CSerializationContext& context, const CXmlElement* element) const;

  // --- The property. A CQzException of the object comes out as the inner exception of
  // CQzValidationException "Failed to get the property value for [%s]." (empty path) or
  // "Failed to set the property value." (path of the element).
  void ReadProperty(const CXmlGeneratedClass* object, QzVariant& value) const;
  void InvokePropertyGet(CXmlGeneratedClass* object, QzVariant& value) const;
  void InvokePropertySet(CXmlGeneratedClass* object, QzVariant& value,
                         const CXmlElement& element) const;

  // --- The protected operations of other objects.
  static CXmlElement* FromXml_Int(CXmlObjectBase* target, CXmlElement* parent, CXmlElement* current,
                                  const CSerializationContext& context, bool optionalChoice);
  static void AttributesToXml_Int(const CXmlObjectBase* object, CXmlWriter* writer,
                                  const CSerializationContext& context);

  // The namespace of a new open element under a namespace restriction.
  // Meant: only the first token of a list counts, and "##other" without a parent namespace gives
  // the literal text "DefaultNamespace".
  static std::string GetAnyDefaultNamespace(const char* restrictions, const char* parentNamespace,
                                            const char* targetNamespace);

  // --- Writing a value: true when something was written.
  bool ElementToXmlCol(const CSerializationContext& context, const CXmlGeneratedClass* object,
                       CXmlWriter* writer) const;
  bool ElementToXmlCls(const CSerializationContext& context, const CXmlGeneratedClass* object,
                       CXmlWriter* writer, bool optionalChoice) const;
  bool ElementToXmlPrim(const CSerializationContext& context, const CXmlGeneratedClass* object,
                        CXmlWriter* writer) const;
  bool ElementToXmlEnum(const CSerializationContext& context, const CXmlGeneratedClass* object,
                        CXmlWriter* writer, EnumToString enumToString) const;

  // --- Reading a value from the element at the cursor, which is known to be this member; the
  // cursor moves to its next sibling. Throw CQzValidationException "Unexpected Attribute found.",
  // "Invalid use of 'nil' attribute in non-nillable element.", "Unexpected Value [%s] for 'nil'
  // Attribute found.", and what the conversion and the property throw.
  // Meant: xsi:nil leaves the property as it is; a namespace declaration counts as an attribute.
  void ElementFromXmlPrim(const CSerializationContext& context, CXmlGeneratedClass* object,
                          CXmlElement** cursor);
  void ElementFromXmlEnum(const CSerializationContext& context, CXmlGeneratedClass* object,
                          CXmlElement** cursor);

 private:
  friend class QzXmlLib16::CXmlGeneratedClass;
  friend class CElementInfoValues;

  bool PlainValueToXml(const QzVariant& value, CXmlWriter* writer) const;
  bool ValueToXml(const QzVariant& value, CXmlWriter* writer) const;
  static void ToXml_Int(const CXmlObjectBase* object, CXmlWriter* writer, const char* namespaceUri,
                        const CSerializationContext& context, bool optionalChoice);
  static CXmlElement* FromXmlLockElementName_Int(CElementCol* collection, const std::string& name,
                                                 const std::string& namespaceUri,
                                                 CXmlElement* parent, CXmlElement* cursor,
                                                 const CSerializationContext& context);

  std::string m_strElementName;
  std::string m_strElementNamespace;
  QzXmlLib16::detail::ElementTags m_tags;  // of m_strElementName
  std::int32_t m_lPropertyIndex;
  CPrimitiveRestrictions m_restrictions;
  ItemType m_itemType;
  std::string m_strFormatOverride;
  CWhitespaceUtils::WhitespaceRule m_whitespaceRule;
  std::string m_strDefaultValue;
  bool m_bNillable;
  EnumToString m_enumToString;
  StringToEnum m_stringToEnum;
  bool m_bHasPrimitiveRestrictions;
  bool m_bPassesItsKind;  // no value of the item type breaks the restrictions
  bool m_bIsPlainValue;   // so it is, and there is no default value
  std::unique_ptr<const QzXmlLib16::detail::IElementRules> m_pRules;  // null for none
  bool m_bNeedsNamespace = false;
};

}  // namespace QzXmlLib16Data
