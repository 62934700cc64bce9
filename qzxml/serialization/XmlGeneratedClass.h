#pragma once

#include <cstdint>
#include <string>

#include "qzxml/platform/Export.h"
#include "qzxml/runtime/CriticalSection.h"
#include "qzxml/runtime/QzException.h"
#include "qzxml/serialization/AttributeInfo.h"
#include "qzxml/serialization/ElementInfo.h"
#include "qzxml/serialization/ParentElementInfo.h"
#include "qzxml/serialization/XmlObjectBase.h"

namespace QzXmlLib16 {

class CQzException;

// The base of every class that the generator makes from a schema. A generated class describes
// itself in three tables, made once for the class under m_csInit and shared by all its objects:
//
//   class CItem : public CXmlGeneratedClass {
//    public:
//     std::string GetTargetNamespace() const override { return "urn:items"; }
//     std::string GetNamespace() const override { return "urn:items"; }
//    protected:
//     void AccessProperty(int index, bool read, QzVariant& value) const override;
//     QzXmlLib16Data::CParentElementInfo* GetClassInfo() const override;
//     QzXmlLib16Data::CElementInfo** GetClassElementInfo() const override;
//     QzXmlLib16Data::CAttributeInfo** GetClassAttributeInfo() const override;
//     void Init() override;
//   };
//
// It holds no data of its own. One object belongs to one thread at a time; threads may read and
// write different objects of a class at once.
class QZXML_API CXmlGeneratedClass : public CXmlObjectBase {
 public:
  ~CXmlGeneratedClass() override;

  using CXmlObjectBase::GetBase;
  CXmlObjectBase* GetBase() override { return this; }

 protected:
  using CParentElementInfo = QzXmlLib16Data::CParentElementInfo;
  using CElementInfo = QzXmlLib16Data::CElementInfo;
  using CAttributeInfo = QzXmlLib16Data::CAttributeInfo;
  using XmlElementType = QzXmlLib16Data::XmlElementType;

  CXmlGeneratedClass() = default;
  CXmlGeneratedClass(const CXmlGeneratedClass&) = default;
  CXmlGeneratedClass& operator=(const CXmlGeneratedClass&) = default;

  // --- What a generated class supplies

  // Passes the property with that index into the value (read) or the value into the property.
  // Const, as it is called on const objects too. A property that is not set makes the value
  // invalid.
  virtual void AccessProperty(int propertyIndex, bool read, QzVariant& value) const = 0;
  virtual CParentElementInfo* GetClassInfo() const = 0;
  // The children in the order of the schema, and the attributes; both end with a null entry.
  virtual CElementInfo** GetClassElementInfo() const = 0;
  virtual CAttributeInfo** GetClassAttributeInfo() const = 0;
  // Puts the object back to its empty state. Every reading begins with it.
  virtual void Init() = 0;

  // --- Its tables

  // Held by generated code while it makes the tables of a class for the first time. The library
  // never enters it.
  static CQZCriticalSection m_csInit;

  // Deletes the entries of the tables and the tables, and sets all three to null. Null is skipped.
  static void CleanMetaData(CParentElementInfo*& parent, CElementInfo**& elements,
                            CAttributeInfo**& attributes);

  // --- The two walks. XmlGeneratedClass.cpp begins with what they do.

  // Throws CQzValidationException "Failed to convert the element [%s] to XML" (empty path) around
  // every failure; each level of the document adds one.
  void ToXml_Int(CXmlWriter* writer, bool root, const char* namespaceUri,
                 const CSerializationContext& context, bool optionalChoice) const override;
  // Throws CQzException "Failed to convert attributes to XML" around every failure.
  void AttributesToXml_Int(CXmlWriter* writer, const CSerializationContext& context) const override;
  // Throws CQzValidationException "Failed to process the element." with the path of parent around a
  // failure without a path, and any other as a plain CQzException with its message, path and inner
  // exception; what was read so far stays.
  CXmlElement* FromXml_Int(CXmlElement* parent, CXmlElement* cursor,
                           const CSerializationContext& context, bool optionalChoice) override;

  // Offers the attributes of an element to the table. Throws CQzValidationException for an unknown
  // attribute, a misplaced or wrong xsi:nil, and a required attribute that is missing.
  void ProcessAttributesFromXml(const CSerializationContext& context, CXmlElement* parent,
                                bool failIfUnknown);

  // Whether a member of the element table has the element's name.
  bool IsElementInList(const CSerializationContext& context, CXmlElement* element) const;

  // Whether a choice may be empty: some member is optional, or a collection that may be empty.
  bool DoesElementContainOptionalElements() const;

  void ReadProperty(int propertyIndex, QzVariant& value) const;

  // --- The steps of the walk that reads, for a class that knows shorter ways through ordinary
  // documents and comes back here for all others

  // The object takes the name of its element.
  void TakeElementName(const CXmlElement& parent);
  // Offers one attribute to the table: the index of the entry that took it, or -1.
  int AttributeFromXml(const CSerializationContext& context, CXmlElement* parent,
                       CXmlAttribute* attribute, bool failIfUnknown);
  // Whether the object is nil, which an attribute has said.
  bool IsNil(const CParentElementInfo& info) const;
  // Offers the element at the cursor, or null behind the last one, to a member of a sequence in a
  // real element, where unknown elements are no matter. False when the walk is to go back.
  bool MemberFromXml(CElementInfo* member, CXmlElement* parent, CXmlElement** cursor,
                     const CSerializationContext& context);
  // The children, by the kind of the class's content; the first element that is left.
  CXmlElement* ContentFromXml(const CParentElementInfo& info, CXmlElement* parent,
                              CXmlElement* cursor, const CSerializationContext& context,
                              bool optionalChoice);
  // The class's own text.
  void TextFromXml(const CParentElementInfo& info, const CXmlElement& parent);
  // The failure of an element with a child that no member took.
  [[noreturn]] static void ThrowLeftOver(const CXmlElement& parent, const CXmlElement& cursor);
  // What goes around a failure, which is being handled, on its way out of FromXml_Int.
  [[noreturn]] static void ThrowReadingFailed(const CXmlElement& parent, const CQzException& inner);

  // --- Steps of the writing walk

  // The children, of an object that is not nil; its start tag is open. Nothing of the object
  // changes.
  virtual void ContentToXml(const CParentElementInfo& info, CXmlWriter* writer,
                            const CSerializationContext& context, bool optionalChoice) const;
  // The class's own text.
  void TextToXml(const CParentElementInfo& info, CXmlWriter* writer) const;
  // Throws CQzValidationException for a choice of which nothing was written and may not be empty.
  void EmptyChoiceToXml(const CSerializationContext& context, bool optionalChoice) const;
  // What goes around a failure of ToXml_Int, and of AttributesToXml_Int.
  [[noreturn]] static void ThrowWritingFailed(const std::string& elementName,
                                              const CQzException& inner);
  [[noreturn]] static void ThrowAttributesFailed(const CQzException& inner);

 private:
  friend class QzXmlLib16Data::CAttributeInfo;
  friend class QzXmlLib16Data::CElementInfo;

  class CReadingWalk;

  INillable* AsNillable(const CParentElementInfo& info) const;

  // --- Writing
  void StartTagToXml(CXmlWriter* writer, bool root, const char* namespaceUri,
                     const CSerializationContext& context, bool optionalChoice) const;
  static void PrologueToXml(CXmlWriter* writer, const CSerializationContext& context);
  void ProcessAttributesToXml(const CParentElementInfo& info, const CSerializationContext& context,
                              CXmlWriter* writer) const;
  void ProcessElementSeqToXml(const CSerializationContext& context, CElementInfo** elements,
                              CXmlWriter* writer) const;
  void ProcessElementAllToXml(const CSerializationContext& context, CElementInfo** elements,
                              CXmlWriter* writer) const;
  void ProcessElementChoiceToXml(const CSerializationContext& context, CElementInfo** elements,
                                 CXmlWriter* writer, bool optionalChoice) const;

  // --- Reading
  void NilFromXml(const CXmlAttribute& attribute, const CXmlElement& parent);
  CXmlElement* ProcessElementSeqFromXml(const CSerializationContext& context, CXmlElement* parent,
                                        CXmlElement* cursor, XmlElementType elementType);
  CXmlElement* ProcessElementAllFromXml(const CSerializationContext& context, CXmlElement* parent,
                                        CXmlElement* cursor, XmlElementType elementType);
  CXmlElement* ProcessElementChoiceFromXml(const CSerializationContext& context,
                                           CXmlElement* parent, CXmlElement* cursor,
                                           XmlElementType elementType, bool optionalChoice);
};

}  // namespace QzXmlLib16
