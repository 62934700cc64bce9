#pragma once

#include <cstdint>
#include <string>

#include "qzxml/platform/Export.h"
#include "qzxml/serialization/ElementInfo.h"

// The children of an xs:choice. ElementFromXml answers true when it took something, which ends the
// walk's search, and never raises the failure of a missing child. Every member is optional by
// nature. "Selected" is what the generated setters record: the class members set their property
// before the content is read, and unset it again when a child without a tag took nothing. Source:
// XML Schema 1.0 part 1, section 3.8.
namespace QzXmlLib16Data {

// A nested choice that is this member may stay empty.
class QZXML_API CElementInfoChoiceClsOpt : public CElementInfo {
 public:
  CElementInfoChoiceClsOpt(const char* elementName, const char* elementNamespace, int propertyIndex,
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

class QZXML_API CElementInfoChoiceAbsClsOpt : public CElementInfo {
 public:
  CElementInfoChoiceAbsClsOpt(const char* elementName, const char* elementNamespace,
                              int propertyIndex, XmlElementType elementType,
                              AbstractClassFactory classFactory)
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

class QZXML_API CElementInfoChoicePrimOpt : public CElementInfo {
 public:
  CElementInfoChoicePrimOpt(const char* elementName, const char* elementNamespace,
                            int propertyIndex, bool nillable, ItemType itemType,
                            const char* formatOverride,
                            CWhitespaceUtils::WhitespaceRule whitespaceRule,
                            const CPrimitiveRestrictions& restrictions, const char* defaultValue)
      : CElementInfo(elementName, elementNamespace, propertyIndex, nillable, itemType,
                     formatOverride, whitespaceRule, restrictions, defaultValue) {}
  bool ElementToXml(const CSerializationContext&, const CXmlGeneratedClass*,
                    CXmlWriter*) const override;
  bool ElementFromXml(const CSerializationContext&, CXmlGeneratedClass*, CXmlElement*,
                      CXmlElement**, const char*, XmlElementType) override;
};

class QZXML_API CElementInfoChoiceEnumOpt : public CElementInfo {
 public:
  CElementInfoChoiceEnumOpt(const char* elementName, const char* elementNamespace,
                            int propertyIndex, bool nillable, EnumToString enumToString,
                            StringToEnum stringToEnum, const char* defaultValue)
      : CElementInfo(elementName, elementNamespace, propertyIndex, nillable, enumToString,
                     stringToEnum, defaultValue) {}
  bool ElementToXml(const CSerializationContext&, const CXmlGeneratedClass*,
                    CXmlWriter*) const override;
  bool ElementFromXml(const CSerializationContext&, CXmlGeneratedClass*, CXmlElement*,
                      CXmlElement**, const char*, XmlElementType) override;
};

// A new CElement; its property is set only behind a successful reading.
class QZXML_API CElementInfoChoiceUntpdOpt : public CElementInfo {
 public:
  CElementInfoChoiceUntpdOpt(const char* elementName, const char* elementNamespace,
                             int propertyIndex, const char* namespaceRestrictions,
                             const char* targetNamespace);
  bool ElementToXml(const CSerializationContext&, const CXmlGeneratedClass*,
                    CXmlWriter*) const override;
  bool ElementFromXml(const CSerializationContext&, CXmlGeneratedClass*, CXmlElement*,
                      CXmlElement**, const char*, XmlElementType) override;

 private:
  std::string m_strNamespaceRestrictions;
  std::string m_strTargetNamespace;
};

// A collection; outside its limits it takes nothing in a class without a tag, and fails in a real
// element. Meant: writing checks no count.
class QZXML_API CElementInfoChoiceCol : public CElementInfo {
 public:
  CElementInfoChoiceCol(const char* elementName, const char* elementNamespace, int propertyIndex)
      : CElementInfo(elementName, elementNamespace, propertyIndex) {}
  bool ElementToXml(const CSerializationContext&, const CXmlGeneratedClass*,
                    CXmlWriter*) const override;
  bool ElementFromXml(const CSerializationContext&, CXmlGeneratedClass*, CXmlElement*,
                      CXmlElement**, const char*, XmlElementType) override;
};

class QZXML_API CElementInfoChoiceClsCol : public CElementInfoChoiceCol {
 public:
  CElementInfoChoiceClsCol(const char* elementName, const char* elementNamespace, int propertyIndex,
                           XmlElementType elementType)
      : CElementInfoChoiceCol(elementName, elementNamespace, propertyIndex),
        m_elementType(elementType) {}
  void PseudoChildAttributeToXml(const CSerializationContext&, const CXmlGeneratedClass*,
                                 CXmlWriter*) const override;

 private:
  friend class CElementTableAccess;

  XmlElementType m_elementType;
};

class QZXML_API CElementInfoChoiceAbsClsCol : public CElementInfoChoiceCol {
 public:
  CElementInfoChoiceAbsClsCol(const char* elementName, const char* elementNamespace,
                              int propertyIndex, XmlElementType elementType)
      : CElementInfoChoiceCol(elementName, elementNamespace, propertyIndex),
        m_elementType(elementType) {}
  void PseudoChildAttributeToXml(const CSerializationContext&, const CXmlGeneratedClass*,
                                 CXmlWriter*) const override;

 private:
  friend class CElementTableAccess;

  XmlElementType m_elementType;
};

class QZXML_API CElementInfoChoicePrimCol : public CElementInfoChoiceCol {
 public:
  CElementInfoChoicePrimCol(const char* elementName, const char* elementNamespace,
                            int propertyIndex)
      : CElementInfoChoiceCol(elementName, elementNamespace, propertyIndex) {}
};

class QZXML_API CElementInfoChoiceEnumCol : public CElementInfoChoiceCol {
 public:
  CElementInfoChoiceEnumCol(const char* elementName, const char* elementNamespace,
                            int propertyIndex)
      : CElementInfoChoiceCol(elementName, elementNamespace, propertyIndex) {}
};

// The name "AnyElement" takes elements of any name; any other takes that name in the namespace of
// the first element.
class QZXML_API CElementInfoChoiceUntpdCol : public CElementInfoChoiceCol {
 public:
  CElementInfoChoiceUntpdCol(const char* elementName, const char* elementNamespace,
                             int propertyIndex)
      : CElementInfoChoiceCol(elementName, elementNamespace, propertyIndex) {}
  bool ElementFromXml(const CSerializationContext&, CXmlGeneratedClass*, CXmlElement*,
                      CXmlElement**, const char*, XmlElementType) override;
};

}  // namespace QzXmlLib16Data
