#pragma once

#include <atomic>
#include <cstdint>
#include <string>
#include <typeinfo>

#include "qzxml/platform/Export.h"
#include "qzxml/values/ItemType.h"

namespace QzXmlLib16 {
class CXmlGeneratedClass;
}  // namespace QzXmlLib16

namespace QzXmlLib16Data {

class CElementInfo;

// What holds a class's children together. The numbers are part of the interface: generated code
// passes them.
// Source: XML Schema 1.0 part 1, section 3.8 (model groups).
enum XmlElementGroupType : int {
  XmlElementGroupType_Sequence = 0,  // children in the order of the table
  XmlElementGroupType_Choice = 1,    // one child at most
  XmlElementGroupType_All = 2,       // children in any order
};

// How a class or a child stands in the document.
enum XmlElementType : int {
  XmlElementType_Element = 0,        // with a start tag, attributes and an end tag
  XmlElementType_PseudoElement = 1,  // no tag of its own: its children and attributes stand in the
                                     // element around it, as those of a group do
};

// The last class or table for which an answer was found, so that it is not asked for each object.
// All threads share it; a copy begins without one.
template <typename T>
class CFoundFor {
 public:
  CFoundFor() = default;
  CFoundFor(const CFoundFor&) : CFoundFor() {}
  CFoundFor& operator=(const CFoundFor&) { return *this; }

  bool Is(const T* asked) const { return m_found.load(std::memory_order_relaxed) == asked; }
  void Keep(const T* found) { m_found.store(found, std::memory_order_relaxed); }

 private:
  std::atomic<const T*> m_found{nullptr};
};

// What a generated class says of itself as a whole. One object for each class, made with its tables
// and shared by all threads, which only read it. A plain value: copies are independent.
class QZXML_API CParentElementInfo {
 public:
  // A null format is the empty text. An index of -1 or ItemType_None stands for a class without
  // text of its own.
  CParentElementInfo(XmlElementGroupType elementGroupType, XmlElementType elementType,
                     const char* elementName, const char* elementNamespace,
                     bool fromXmlFailIfAttributeUnknown, bool hasBaseClasses,
                     std::int32_t primitiveValuePropertyIndex,
                     QzXmlLib16::ItemType primitiveDataType, const char* primitiveFormatOverride,
                     bool outputPrimitiveClassAsTextProperty);
  CParentElementInfo(const CParentElementInfo&) = default;
  CParentElementInfo& operator=(const CParentElementInfo&) = default;
  virtual ~CParentElementInfo();

  XmlElementGroupType GetElementGroupType() const { return m_elementGroupType; }
  XmlElementType GetElementType() const { return m_elementType; }

  // Name and namespace under which the schema declares the type.
  std::string GetElementName() const { return m_strElementName; }
  std::string GetElementNamespace() const { return m_strElementNamespace; }

  // Whether an attribute that no table entry takes is an error, unless the context ignores it.
  // Meant: false drops such attributes whatever the context says.
  bool GetFromXmlFailIfAttributeUnknown() const { return m_bFailIfAttributeUnknown; }

  // Whether the schema type takes part in derivation, so that xsi:type may be needed.
  bool GetHasBaseClasses() const { return m_bHasBaseClasses; }

  // Has reading leave the attributes of the element to the class around: for a class without a tag
  // that has none, so that its objects do not all look through them. To be called while the tables
  // are made.
  void SetReadsNoAttributes() { m_bReadsNoAttributes = true; }

  // Lets nothing of a choice be there although no member says so: a choice of collections may be
  // empty while none of them is. To be called while the tables are made.
  void SetMayBeEmpty() { m_bMayBeEmpty = true; }

  // --- The class's own text
  std::int32_t GetPrimitiveValuePropertyIndex() const { return m_lPrimitiveValuePropertyIndex; }
  QzXmlLib16::ItemType GetPrimitiveDataType() const { return m_primitiveDataType; }
  std::string GetPrimitiveFormatOverride() const { return m_strPrimitiveFormatOverride; }

  // Whether reading stores the text as it stands, without converting it by the data type.
  // Meant: writing converts in both cases.
  bool GetOutputPrimitiveClassAsTextProperty() const { return m_bPrimitiveAsText; }

 private:
  friend class QzXmlLib16::CXmlGeneratedClass;

  bool HasText() const {
    return m_lPrimitiveValuePropertyIndex != -1 && m_primitiveDataType != QzXmlLib16::ItemType_None;
  }

  XmlElementGroupType m_elementGroupType;
  XmlElementType m_elementType;
  std::string m_strElementName;
  std::string m_strElementNamespace;
  bool m_bFailIfAttributeUnknown;
  bool m_bHasBaseClasses;
  std::int32_t m_lPrimitiveValuePropertyIndex;
  QzXmlLib16::ItemType m_primitiveDataType;
  std::string m_strPrimitiveFormatOverride;
  bool m_bPrimitiveAsText;
  bool m_bReadsNoAttributes = false;
  bool m_bMayBeEmpty = false;

  mutable CFoundFor<std::type_info> m_notNillable;        // a class that is no INillable
  mutable CFoundFor<CElementInfo*> m_readsNoNamespace;    // a table without open content
  mutable CFoundFor<CElementInfo*> m_writesNoAttributes;  // a table without groups
};

}  // namespace QzXmlLib16Data
