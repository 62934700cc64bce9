#pragma once

#include <cstdint>
#include <string>

#include "qzxml/platform/Export.h"
#include "qzxml/serialization/ClassfactoryBase.h"
#include "qzxml/serialization/PrimitiveRestrictions.h"
#include "qzxml/values/ItemType.h"
#include "qzxml/values/QzVariant.h"
#include "qzxml/values/WhitespaceUtils.h"
#include "qzxml/xml/WrittenName.h"

namespace QzXmlLib16 {
class CSerializationContext;
class CXmlAttribute;
class CXmlGeneratedClass;
class CXmlObjectBase;
class CXmlWriter;
}  // namespace QzXmlLib16

namespace QzXmlLib16Data {

using QzXmlLib16::CPrimitiveRestrictions;
using QzXmlLib16::CSerializationContext;
using QzXmlLib16::CWhitespaceUtils;
using QzXmlLib16::CXmlAttribute;
using QzXmlLib16::CXmlGeneratedClass;
using QzXmlLib16::CXmlObjectBase;
using QzXmlLib16::CXmlWriter;
using QzXmlLib16::EnumToString;
using QzXmlLib16::ItemType;
using QzXmlLib16::QzVariant;
using QzXmlLib16::StringToEnum;

// One attribute of a generated class, or the wildcard that takes all the others. The driver offers
// each attribute of an element to the entries of the class's table in their order, and asks each
// entry behind the last one whether it is content. An object copies the texts it is given and is
// not changed once it is made: all threads share it.
class QZXML_API CAttributeInfo {
 public:
  CAttributeInfo(const CAttributeInfo&) = delete;
  CAttributeInfo& operator=(const CAttributeInfo&) = delete;
  virtual ~CAttributeInfo();

  // Writes the property of object on the start tag that is open.
  virtual void AttributeToXml(const CSerializationContext& context,
                              const CXmlGeneratedClass* object, CXmlWriter* writer) const = 0;

  // True when this entry took the attribute.
  virtual bool AttributeFromXml(const CSerializationContext& context, CXmlGeneratedClass* object,
                                CXmlAttribute* attribute) = 0;

  // Throws where the attribute may not be absent and was not found.
  virtual void Validate(const CSerializationContext& context, bool found) const = 0;

 protected:
  // A null default is the empty text.
  CAttributeInfo(const char* attributeName, const char* attributeNamespace,
                 std::int32_t propertyIndex, bool optional, const char* defaultValue);

  // Whether an attribute has this entry's name, and its namespace where the context minds
  // namespaces. False for null.
  bool IsThisAttribute(const CSerializationContext& context, CXmlAttribute* attribute);

  // --- The property. A CQzException of the object comes out as the inner exception of
  // CQzValidationException "Failed to get the property value for [%s]." (name, empty path) or
  // "Failed to set the property value [%s]." (value, path of the attribute).
  void ReadProperty(const CXmlGeneratedClass* object, QzVariant& value) const;
  void InvokePropertyGet(CXmlGeneratedClass* object, QzVariant& value) const;
  void InvokePropertySet(CXmlGeneratedClass* object, QzVariant& value,
                         const CXmlAttribute& attribute) const;

  // --- The protected operations of other objects; the first passes false at the end.
  static void ToXml_Int(const CXmlObjectBase* object, CXmlWriter* writer, bool root,
                        const char* namespaceUri, const CSerializationContext& context);
  static std::string GetTargetNamespace(const CXmlObjectBase* object);

  // --- Rules of namespaces; see NamespaceRules.h.
  static void TestNamespace(const std::string& namespaceUri, const std::string& restrictions,
                            const std::string& targetNamespace);
  static bool IsNamespaceValid(const std::string& namespaceUri, const std::string& restrictions,
                               const std::string& targetNamespace);

  bool HasName(const CXmlAttribute& attribute) const;
  bool HasNamespace(const CXmlAttribute& attribute) const;

  // Throws CQzValidationException "Failed to find the required Attribute [%s]." (empty path) for a
  // required attribute that was not found.
  void RequireFound(bool found) const;

  // Whether the text is a default that the context leaves out.
  bool IsOmittedDefault(const CSerializationContext& context, const std::string& text) const;

  std::string m_strAttributeName;
  std::string m_strAttributeNamespace;
  QzXmlLib16::detail::AttributeTag m_tag;  // of m_strAttributeName
  std::int32_t m_lPropertyIndex;
  bool m_bOptional;
  std::string m_strDefaultValue;
};

// An XSD primitive.
class QZXML_API CAttributeInfoPrimitive : public CAttributeInfo {
 public:
  // A null format or default is the empty text.
  CAttributeInfoPrimitive(const char* attributeName, const char* attributeNamespace,
                          int propertyIndex, bool optional, ItemType itemType,
                          const char* formatOverride,
                          CWhitespaceUtils::WhitespaceRule whitespaceRule,
                          const CPrimitiveRestrictions& restrictions, const char* defaultValue);

  // Meant: a required attribute whose property is not set is turned into text all the same, and
  // fails with the variant's own text.
  void AttributeToXml(const CSerializationContext&, const CXmlGeneratedClass*,
                      CXmlWriter*) const override;
  // Meant: minds the namespace even where the context ignores namespaces, and checks no facet.
  bool AttributeFromXml(const CSerializationContext&, CXmlGeneratedClass*, CXmlAttribute*) override;
  void Validate(const CSerializationContext&, bool found) const override;

  // Throws what the facet test throws.
  void CheckRestriction(QzVariant value) const;

 protected:
  // The facet test of a value that is about to be written, and the kind that it is written as.
  virtual ItemType TestValue(const QzVariant& value) const;

 private:
  bool PlainValueToXml(const QzVariant& value, CXmlWriter* writer) const;
  void ValueToXml(const CSerializationContext& context, const QzVariant& value,
                  CXmlWriter* writer) const;
  void CheckFacets(const QzVariant& value) const;

  CPrimitiveRestrictions m_restrictions;
  ItemType m_itemType;
  std::string m_strFormatOverride;
  CWhitespaceUtils::WhitespaceRule m_whitespaceRule;
  bool m_bPassesItsKind;  // no value of the item type breaks the restrictions
  bool m_bIsPlainValue;   // so it is, and there is neither a default value nor a namespace
};

// A generated enumeration; its property is a 32-bit integer in the variant.
class QZXML_API CAttributeInfoEnum : public CAttributeInfo {
 public:
  CAttributeInfoEnum(const char* attributeName, const char* attributeNamespace, int propertyIndex,
                     bool optional, EnumToString enumToString, StringToEnum stringToEnum,
                     const char* defaultValue);

  void AttributeToXml(const CSerializationContext&, const CXmlGeneratedClass*,
                      CXmlWriter*) const override;
  bool AttributeFromXml(const CSerializationContext&, CXmlGeneratedClass*, CXmlAttribute*) override;
  void Validate(const CSerializationContext&, bool found) const override;

 private:
  StringToEnum m_stringToEnum;
  EnumToString m_enumToString;
};

// The wildcard of an xs:anyAttribute; its property is a CAttributeCol. It takes every attribute
// that no entry before it took and whose namespace meets the restrictions, whatever its name.
class QZXML_API CAttributeInfoAny : public CAttributeInfo {
 public:
  CAttributeInfoAny(const char* attributeName, const char* attributeNamespace, int propertyIndex,
                    bool optional, const char* namespaceRestrictions, const char* targetNamespace,
                    const char* defaultValue);

  void AttributeToXml(const CSerializationContext&, const CXmlGeneratedClass*,
                      CXmlWriter*) const override;
  // Throws CQzException "Serialization Data Error : The collection should be a CAttributeCol, it
  // was not!" for a property of another class.
  bool AttributeFromXml(const CSerializationContext&, CXmlGeneratedClass*, CXmlAttribute*) override;
  void Validate(const CSerializationContext&, bool found) const override;  // does nothing

 private:
  [[noreturn]] static void ThrowNoAttributeCol();

  std::string m_strNamespaceRestrictions;
  std::string m_strTargetNamespace;
};

}  // namespace QzXmlLib16Data
