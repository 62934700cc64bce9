#pragma once

#include <cstdint>
#include <string>

#include "qzxml/platform/Export.h"
#include "qzxml/serialization/ElementInfo.h"

// The children of an xs:all. ElementFromXml answers whether something was taken, moves the cursor
// only then, and never raises the failure of a missing child: once every element has been offered
// to every member, the walk asks Validate. Writing is that of the sequence's member of the same
// kind. A missing mandatory child is CQzValidationException "Failed to find the mandatory element
// [%s]." (empty path), whatever the context ignores. Source: XML Schema 1.0 part 1, section 3.8.
namespace QzXmlLib16Data {

// An object that is there already and is filled in place. Meant: Validate lets a missing child with
// a tag pass unless requiresContent is set.
class QZXML_API CElementInfoAllClsMnd : public CElementInfo {
 public:
  CElementInfoAllClsMnd(const char* elementName, const char* elementNamespace, int propertyIndex,
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
  bool Validate(const CSerializationContext&, const CXmlGeneratedClass*, bool, bool) const override;
  void PseudoChildAttributeToXml(const CSerializationContext&, const CXmlGeneratedClass*,
                                 CXmlWriter*) const override;

 private:
  friend class CElementTableAccess;

  XmlElementType m_elementType;
  bool m_bRequiresContent;
  ClassFactory m_classFactory;  // the object is there already: not called
  std::int32_t m_lClassId;
};

class QZXML_API CElementInfoAllClsOpt : public CElementInfo {
 public:
  CElementInfoAllClsOpt(const char* elementName, const char* elementNamespace, int propertyIndex,
                        XmlElementType elementType, ClassFactory classFactory, int classId)
      : CElementInfo(elementName, elementNamespace, propertyIndex),
        m_elementType(elementType),
        m_classFactory(classFactory),
        m_lClassId(classId) {}
  bool ElementToXml(const CSerializationContext&, const CXmlGeneratedClass*,
                    CXmlWriter*) const override;
  bool ElementFromXml(const CSerializationContext&, CXmlGeneratedClass*, CXmlElement*,
                      CXmlElement**, const char*, XmlElementType) override;
  bool Validate(const CSerializationContext&, const CXmlGeneratedClass*, bool, bool) const override;
  void PseudoChildAttributeToXml(const CSerializationContext&, const CXmlGeneratedClass*,
                                 CXmlWriter*) const override;

 private:
  friend class CElementTableAccess;

  XmlElementType m_elementType;
  ClassFactory m_classFactory;
  std::int32_t m_lClassId;
};

class QZXML_API CElementInfoAllAbsClsMnd : public CElementInfo {
 public:
  CElementInfoAllAbsClsMnd(const char* elementName, const char* elementNamespace, int propertyIndex,
                           XmlElementType elementType, AbstractClassFactory classFactory)
      : CElementInfo(elementName, elementNamespace, propertyIndex),
        m_elementType(elementType),
        m_classFactory(classFactory) {}
  bool ElementToXml(const CSerializationContext&, const CXmlGeneratedClass*,
                    CXmlWriter*) const override;
  bool ElementFromXml(const CSerializationContext&, CXmlGeneratedClass*, CXmlElement*,
                      CXmlElement**, const char*, XmlElementType) override;
  bool Validate(const CSerializationContext&, const CXmlGeneratedClass*, bool, bool) const override;
  void PseudoChildAttributeToXml(const CSerializationContext&, const CXmlGeneratedClass*,
                                 CXmlWriter*) const override;

 private:
  friend class CElementTableAccess;

  XmlElementType m_elementType;
  AbstractClassFactory m_classFactory;
};

class QZXML_API CElementInfoAllAbsClsOpt : public CElementInfo {
 public:
  CElementInfoAllAbsClsOpt(const char* elementName, const char* elementNamespace, int propertyIndex,
                           XmlElementType elementType, AbstractClassFactory classFactory)
      : CElementInfo(elementName, elementNamespace, propertyIndex),
        m_elementType(elementType),
        m_classFactory(classFactory) {}
  bool ElementToXml(const CSerializationContext&, const CXmlGeneratedClass*,
                    CXmlWriter*) const override;
  bool ElementFromXml(const CSerializationContext&, CXmlGeneratedClass*, CXmlElement*,
                      CXmlElement**, const char*, XmlElementType) override;
  bool Validate(const CSerializationContext&, const CXmlGeneratedClass*, bool, bool) const override;
  void PseudoChildAttributeToXml(const CSerializationContext&, const CXmlGeneratedClass*,
                                 CXmlWriter*) const override;

 private:
  friend class CElementTableAccess;

  XmlElementType m_elementType;
  AbstractClassFactory m_classFactory;
};

class QZXML_API CElementInfoAllPrimMnd : public CElementInfo {
 public:
  CElementInfoAllPrimMnd(const char* elementName, const char* elementNamespace, int propertyIndex,
                         bool nillable, ItemType itemType, const char* formatOverride,
                         CWhitespaceUtils::WhitespaceRule whitespaceRule,
                         const CPrimitiveRestrictions& restrictions, const char* defaultValue)
      : CElementInfo(elementName, elementNamespace, propertyIndex, nillable, itemType,
                     formatOverride, whitespaceRule, restrictions, defaultValue) {}
  bool ElementToXml(const CSerializationContext&, const CXmlGeneratedClass*,
                    CXmlWriter*) const override;
  bool ElementFromXml(const CSerializationContext&, CXmlGeneratedClass*, CXmlElement*,
                      CXmlElement**, const char*, XmlElementType) override;
  bool Validate(const CSerializationContext&, const CXmlGeneratedClass*, bool, bool) const override;
};

class QZXML_API CElementInfoAllPrimOpt : public CElementInfo {
 public:
  CElementInfoAllPrimOpt(const char* elementName, const char* elementNamespace, int propertyIndex,
                         bool nillable, ItemType itemType, const char* formatOverride,
                         CWhitespaceUtils::WhitespaceRule whitespaceRule,
                         const CPrimitiveRestrictions& restrictions, const char* defaultValue)
      : CElementInfo(elementName, elementNamespace, propertyIndex, nillable, itemType,
                     formatOverride, whitespaceRule, restrictions, defaultValue) {}
  bool ElementToXml(const CSerializationContext&, const CXmlGeneratedClass*,
                    CXmlWriter*) const override;
  bool ElementFromXml(const CSerializationContext&, CXmlGeneratedClass*, CXmlElement*,
                      CXmlElement**, const char*, XmlElementType) override;
  bool Validate(const CSerializationContext&, const CXmlGeneratedClass*, bool, bool) const override;
};

class QZXML_API CElementInfoAllEnumMnd : public CElementInfo {
 public:
  CElementInfoAllEnumMnd(const char* elementName, const char* elementNamespace, int propertyIndex,
                         bool nillable, EnumToString enumToString, StringToEnum stringToEnum,
                         const char* defaultValue)
      : CElementInfo(elementName, elementNamespace, propertyIndex, nillable, enumToString,
                     stringToEnum, defaultValue) {}
  bool ElementToXml(const CSerializationContext&, const CXmlGeneratedClass*,
                    CXmlWriter*) const override;
  bool ElementFromXml(const CSerializationContext&, CXmlGeneratedClass*, CXmlElement*,
                      CXmlElement**, const char*, XmlElementType) override;
  bool Validate(const CSerializationContext&, const CXmlGeneratedClass*, bool, bool) const override;
};

class QZXML_API CElementInfoAllEnumOpt : public CElementInfo {
 public:
  CElementInfoAllEnumOpt(const char* elementName, const char* elementNamespace, int propertyIndex,
                         bool nillable, EnumToString enumToString, StringToEnum stringToEnum,
                         const char* defaultValue)
      : CElementInfo(elementName, elementNamespace, propertyIndex, nillable, enumToString,
                     stringToEnum, defaultValue) {}
  bool ElementToXml(const CSerializationContext&, const CXmlGeneratedClass*,
                    CXmlWriter*) const override;
  bool ElementFromXml(const CSerializationContext&, CXmlGeneratedClass*, CXmlElement*,
                      CXmlElement**, const char*, XmlElementType) override;
  bool Validate(const CSerializationContext&, const CXmlGeneratedClass*, bool, bool) const override;
};

class QZXML_API CElementInfoAllUntpdMnd : public CElementInfo {
 public:
  CElementInfoAllUntpdMnd(const char* elementName, const char* elementNamespace, int propertyIndex,
                          const char* namespaceRestrictions, const char* targetNamespace);
  bool ElementToXml(const CSerializationContext&, const CXmlGeneratedClass*,
                    CXmlWriter*) const override;
  bool ElementFromXml(const CSerializationContext&, CXmlGeneratedClass*, CXmlElement*,
                      CXmlElement**, const char*, XmlElementType) override;
  bool Validate(const CSerializationContext&, const CXmlGeneratedClass*, bool, bool) const override;

 private:
  std::string m_strNamespaceRestrictions;
  std::string m_strTargetNamespace;
};

class QZXML_API CElementInfoAllUntpdOpt : public CElementInfo {
 public:
  CElementInfoAllUntpdOpt(const char* elementName, const char* elementNamespace, int propertyIndex,
                          const char* namespaceRestrictions, const char* targetNamespace);
  bool ElementToXml(const CSerializationContext&, const CXmlGeneratedClass*,
                    CXmlWriter*) const override;
  bool ElementFromXml(const CSerializationContext&, CXmlGeneratedClass*, CXmlElement*,
                      CXmlElement**, const char*, XmlElementType) override;
  bool Validate(const CSerializationContext&, const CXmlGeneratedClass*, bool, bool) const override;

 private:
  std::string m_strNamespaceRestrictions;
  std::string m_strTargetNamespace;
};

// A collection. Meant: it never answers that it was found, and Validate stays the base's, so that a
// class of an xs:all with a collection can be written but not read.
class QZXML_API CElementInfoAllCol : public CElementInfo {
 public:
  CElementInfoAllCol(const char* elementName, const char* elementNamespace, int propertyIndex)
      : CElementInfo(elementName, elementNamespace, propertyIndex) {}
  bool ElementToXml(const CSerializationContext&, const CXmlGeneratedClass*,
                    CXmlWriter*) const override;
  bool ElementFromXml(const CSerializationContext&, CXmlGeneratedClass*, CXmlElement*,
                      CXmlElement**, const char*, XmlElementType) override;
};

class QZXML_API CElementInfoAllClsCol : public CElementInfoAllCol {
 public:
  CElementInfoAllClsCol(const char* elementName, const char* elementNamespace, int propertyIndex,
                        XmlElementType elementType)
      : CElementInfoAllCol(elementName, elementNamespace, propertyIndex),
        m_elementType(elementType) {}
  void PseudoChildAttributeToXml(const CSerializationContext&, const CXmlGeneratedClass*,
                                 CXmlWriter*) const override;

 private:
  friend class CElementTableAccess;

  XmlElementType m_elementType;
};

class QZXML_API CElementInfoAllAbsClsCol : public CElementInfoAllCol {
 public:
  CElementInfoAllAbsClsCol(const char* elementName, const char* elementNamespace, int propertyIndex,
                           XmlElementType elementType)
      : CElementInfoAllCol(elementName, elementNamespace, propertyIndex),
        m_elementType(elementType) {}
  void PseudoChildAttributeToXml(const CSerializationContext&, const CXmlGeneratedClass*,
                                 CXmlWriter*) const override;

 private:
  friend class CElementTableAccess;

  XmlElementType m_elementType;
};

class QZXML_API CElementInfoAllPrimCol : public CElementInfoAllCol {
 public:
  CElementInfoAllPrimCol(const char* elementName, const char* elementNamespace, int propertyIndex)
      : CElementInfoAllCol(elementName, elementNamespace, propertyIndex) {}
};

// Meant: abstract, as it has no way to be written or read; the generator has no use for it.
class QZXML_API CElementInfoAllEnumCol : public CElementInfo {
 public:
  CElementInfoAllEnumCol(const char* elementName, const char* elementNamespace, int propertyIndex)
      : CElementInfo(elementName, elementNamespace, propertyIndex) {}
};

class QZXML_API CElementInfoAllUntpdCol : public CElementInfoAllCol {
 public:
  CElementInfoAllUntpdCol(const char* elementName, const char* elementNamespace, int propertyIndex)
      : CElementInfoAllCol(elementName, elementNamespace, propertyIndex) {}
};

}  // namespace QzXmlLib16Data
