#pragma once

#include <cstdint>
#include <string>

#include "qzxml/platform/Export.h"
#include "qzxml/serialization/ElementInfo.h"

// The children of an xs:sequence. ElementFromXml answers true when the walk may go on with the next
// member, and false when this one did not match and the walk is to decide; it is the member itself
// that raises the failure of a missing child, with the path of the parent, where the enclosing
// class is a real element. Validate is never called. Source: XML Schema 1.0 part 1, section 3.8.
namespace QzXmlLib16Data {

// An object that is there already and is filled in place. requiresContent: a child without a
// tag must take at least one element. Fails with CQzValidationException
// "Failed to find the required child element [%s].".
class QZXML_API CElementInfoSeqClsMnd : public CElementInfo {
 public:
  CElementInfoSeqClsMnd(const char* elementName, const char* elementNamespace, int propertyIndex,
                        XmlElementType elementType, ClassFactory classFactory, int classId,
                        bool requiresContent)
      : CElementInfo(elementName, elementNamespace, propertyIndex),
        m_elementType(elementType),
        m_bRequiresContent(requiresContent),
        m_classFactory(classFactory),
        m_lClassId(classId) {}
  bool ElementToXml(const CSerializationContext&, const CXmlGeneratedClass*,
                    CXmlWriter*) const override;
  bool ElementFromXml(const CSerializationContext&, CXmlGeneratedClass*, CXmlElement*,
                      CXmlElement**, const char*, XmlElementType) override;
  void PseudoChildAttributeToXml(const CSerializationContext&, const CXmlGeneratedClass*,
                                 CXmlWriter*) const override;

 private:
  friend class CElementTableAccess;

  bool PseudoFromXml(const CSerializationContext& context, CXmlGeneratedClass* object,
                     CXmlElement* parent, CXmlElement** current, XmlElementType parentType);

  XmlElementType m_elementType;
  bool m_bRequiresContent;
  ClassFactory m_classFactory;  // the object is there already: not called
  std::int32_t m_lClassId;
};

// Made by the factory when its element is met; dropped when a child without a tag took nothing.
class QZXML_API CElementInfoSeqClsOpt : public CElementInfo {
 public:
  CElementInfoSeqClsOpt(const char* elementName, const char* elementNamespace, int propertyIndex,
                        XmlElementType elementType, ClassFactory classFactory, int classId)
      : CElementInfo(elementName, elementNamespace, propertyIndex),
        m_elementType(elementType),
        m_classFactory(classFactory),
        m_lClassId(classId) {}
  bool ElementToXml(const CSerializationContext&, const CXmlGeneratedClass*,
                    CXmlWriter*) const override;
  bool ElementFromXml(const CSerializationContext&, CXmlGeneratedClass*, CXmlElement*,
                      CXmlElement**, const char*, XmlElementType) override;
  void PseudoChildAttributeToXml(const CSerializationContext&, const CXmlGeneratedClass*,
                                 CXmlWriter*) const override;

 private:
  friend class CElementTableAccess;

  XmlElementType m_elementType;
  ClassFactory m_classFactory;
  std::int32_t m_lClassId;
};

// Made by the factory from the element. Fails with CQzValidationException
// "Failed to find a suitable substitution element for [%s].".
// Meant: no flag of the context makes this child optional.
class QZXML_API CElementInfoSeqAbsClsMnd : public CElementInfo {
 public:
  CElementInfoSeqAbsClsMnd(const char* elementName, const char* elementNamespace, int propertyIndex,
                           XmlElementType elementType, AbstractClassFactory classFactory)
      : CElementInfo(elementName, elementNamespace, propertyIndex),
        m_elementType(elementType),
        m_classFactory(classFactory) {}
  bool ElementToXml(const CSerializationContext&, const CXmlGeneratedClass*,
                    CXmlWriter*) const override;
  bool ElementFromXml(const CSerializationContext&, CXmlGeneratedClass*, CXmlElement*,
                      CXmlElement**, const char*, XmlElementType) override;
  void PseudoChildAttributeToXml(const CSerializationContext&, const CXmlGeneratedClass*,
                                 CXmlWriter*) const override;

 private:
  friend class CElementTableAccess;

  XmlElementType m_elementType;
  AbstractClassFactory m_classFactory;
};

// As above; an element that suits no class stays where it is.
class QZXML_API CElementInfoSeqAbsClsOpt : public CElementInfo {
 public:
  CElementInfoSeqAbsClsOpt(const char* elementName, const char* elementNamespace, int propertyIndex,
                           XmlElementType elementType, AbstractClassFactory classFactory)
      : CElementInfo(elementName, elementNamespace, propertyIndex),
        m_elementType(elementType),
        m_classFactory(classFactory) {}
  bool ElementToXml(const CSerializationContext&, const CXmlGeneratedClass*,
                    CXmlWriter*) const override;
  bool ElementFromXml(const CSerializationContext&, CXmlGeneratedClass*, CXmlElement*,
                      CXmlElement**, const char*, XmlElementType) override;
  void PseudoChildAttributeToXml(const CSerializationContext&, const CXmlGeneratedClass*,
                                 CXmlWriter*) const override;

 private:
  friend class CElementTableAccess;

  XmlElementType m_elementType;
  AbstractClassFactory m_classFactory;
};

// Fails with CQzValidationException "Failed to find the required child element [%s].".
class QZXML_API CElementInfoSeqPrimMnd : public CElementInfo {
 public:
  CElementInfoSeqPrimMnd(const char* elementName, const char* elementNamespace, int propertyIndex,
                         bool nillable, ItemType itemType, const char* formatOverride,
                         CWhitespaceUtils::WhitespaceRule whitespaceRule,
                         const CPrimitiveRestrictions& restrictions, const char* defaultValue)
      : CElementInfo(elementName, elementNamespace, propertyIndex, nillable, itemType,
                     formatOverride, whitespaceRule, restrictions, defaultValue) {}
  bool ElementToXml(const CSerializationContext&, const CXmlGeneratedClass*,
                    CXmlWriter*) const override;
  bool ElementFromXml(const CSerializationContext&, CXmlGeneratedClass*, CXmlElement*,
                      CXmlElement**, const char*, XmlElementType) override;
};

class QZXML_API CElementInfoSeqPrimOpt : public CElementInfo {
 public:
  CElementInfoSeqPrimOpt(const char* elementName, const char* elementNamespace, int propertyIndex,
                         bool nillable, ItemType itemType, const char* formatOverride,
                         CWhitespaceUtils::WhitespaceRule whitespaceRule,
                         const CPrimitiveRestrictions& restrictions, const char* defaultValue)
      : CElementInfo(elementName, elementNamespace, propertyIndex, nillable, itemType,
                     formatOverride, whitespaceRule, restrictions, defaultValue) {}
  bool ElementToXml(const CSerializationContext&, const CXmlGeneratedClass*,
                    CXmlWriter*) const override;
  bool ElementFromXml(const CSerializationContext&, CXmlGeneratedClass*, CXmlElement*,
                      CXmlElement**, const char*, XmlElementType) override;
};

// As the primitive. Meant: in a class without a tag it looks at the cursor alone, where the
// primitive skips unknown elements.
class QZXML_API CElementInfoSeqEnumMnd : public CElementInfo {
 public:
  CElementInfoSeqEnumMnd(const char* elementName, const char* elementNamespace, int propertyIndex,
                         bool nillable, EnumToString enumToString, StringToEnum stringToEnum,
                         const char* defaultValue)
      : CElementInfo(elementName, elementNamespace, propertyIndex, nillable, enumToString,
                     stringToEnum, defaultValue) {}
  bool ElementToXml(const CSerializationContext&, const CXmlGeneratedClass*,
                    CXmlWriter*) const override;
  bool ElementFromXml(const CSerializationContext&, CXmlGeneratedClass*, CXmlElement*,
                      CXmlElement**, const char*, XmlElementType) override;
};

class QZXML_API CElementInfoSeqEnumOpt : public CElementInfo {
 public:
  CElementInfoSeqEnumOpt(const char* elementName, const char* elementNamespace, int propertyIndex,
                         bool nillable, EnumToString enumToString, StringToEnum stringToEnum,
                         const char* defaultValue)
      : CElementInfo(elementName, elementNamespace, propertyIndex, nillable, enumToString,
                     stringToEnum, defaultValue) {}
  bool ElementToXml(const CSerializationContext&, const CXmlGeneratedClass*,
                    CXmlWriter*) const override;
  bool ElementFromXml(const CSerializationContext&, CXmlGeneratedClass*, CXmlElement*,
                      CXmlElement**, const char*, XmlElementType) override;
};

// A CElement that is there already. The name "AnyElement" takes an element of any name. Fails
// with CQzValidationException "Failed to find the required child element [%s]." at the end of the
// children, for either kind of parent, and "Failed to find the required element from namespace
// [%s].".
class QZXML_API CElementInfoSeqUntpdMnd : public CElementInfo {
 public:
  CElementInfoSeqUntpdMnd(const char* elementName, const char* elementNamespace, int propertyIndex,
                          const char* namespaceRestrictions, const char* targetNamespace);
  bool ElementToXml(const CSerializationContext&, const CXmlGeneratedClass*,
                    CXmlWriter*) const override;
  bool ElementFromXml(const CSerializationContext&, CXmlGeneratedClass*, CXmlElement*,
                      CXmlElement**, const char*, XmlElementType) override;

 private:
  std::string m_strNamespaceRestrictions;
  std::string m_strTargetNamespace;
};

// A new CElement under the namespace restrictions.
class QZXML_API CElementInfoSeqUntpdOpt : public CElementInfo {
 public:
  CElementInfoSeqUntpdOpt(const char* elementName, const char* elementNamespace, int propertyIndex,
                          const char* namespaceRestrictions, const char* targetNamespace);
  bool ElementToXml(const CSerializationContext&, const CXmlGeneratedClass*,
                    CXmlWriter*) const override;
  bool ElementFromXml(const CSerializationContext&, CXmlGeneratedClass*, CXmlElement*,
                      CXmlElement**, const char*, XmlElementType) override;

 private:
  std::string m_strNamespaceRestrictions;
  std::string m_strTargetNamespace;
};

// A collection, which takes all that suits it. Its count is checked behind the reading, and before
// the writing.
class QZXML_API CElementInfoSeqCol : public CElementInfo {
 public:
  CElementInfoSeqCol(const char* elementName, const char* elementNamespace, int propertyIndex)
      : CElementInfo(elementName, elementNamespace, propertyIndex) {}
  bool ElementToXml(const CSerializationContext&, const CXmlGeneratedClass*,
                    CXmlWriter*) const override;
  bool ElementFromXml(const CSerializationContext&, CXmlGeneratedClass*, CXmlElement*,
                      CXmlElement**, const char*, XmlElementType) override;
};

class QZXML_API CElementInfoSeqClsCol : public CElementInfoSeqCol {
 public:
  CElementInfoSeqClsCol(const char* elementName, const char* elementNamespace, int propertyIndex,
                        XmlElementType elementType)
      : CElementInfoSeqCol(elementName, elementNamespace, propertyIndex),
        m_elementType(elementType) {}
  void PseudoChildAttributeToXml(const CSerializationContext&, const CXmlGeneratedClass*,
                                 CXmlWriter*) const override;

 private:
  friend class CElementTableAccess;

  XmlElementType m_elementType;
};

class QZXML_API CElementInfoSeqAbsClsCol : public CElementInfoSeqCol {
 public:
  CElementInfoSeqAbsClsCol(const char* elementName, const char* elementNamespace, int propertyIndex,
                           XmlElementType elementType)
      : CElementInfoSeqCol(elementName, elementNamespace, propertyIndex),
        m_elementType(elementType) {}
  void PseudoChildAttributeToXml(const CSerializationContext&, const CXmlGeneratedClass*,
                                 CXmlWriter*) const override;

 private:
  friend class CElementTableAccess;

  XmlElementType m_elementType;
};

class QZXML_API CElementInfoSeqPrimCol : public CElementInfoSeqCol {
 public:
  CElementInfoSeqPrimCol(const char* elementName, const char* elementNamespace, int propertyIndex)
      : CElementInfoSeqCol(elementName, elementNamespace, propertyIndex) {}
};

class QZXML_API CElementInfoSeqEnumCol : public CElementInfoSeqCol {
 public:
  CElementInfoSeqEnumCol(const char* elementName, const char* elementNamespace, int propertyIndex)
      : CElementInfoSeqCol(elementName, elementNamespace, propertyIndex) {}
};

// The name "AnyElement" takes elements of any name; any other takes that name in the namespace of
// the first element.
class QZXML_API CElementInfoSeqUntpdCol : public CElementInfoSeqCol {
 public:
  CElementInfoSeqUntpdCol(const char* elementName, const char* elementNamespace, int propertyIndex)
      : CElementInfoSeqCol(elementName, elementNamespace, propertyIndex) {}
  bool ElementFromXml(const CSerializationContext&, CXmlGeneratedClass*, CXmlElement*,
                      CXmlElement**, const char*, XmlElementType) override;
};

}  // namespace QzXmlLib16Data
