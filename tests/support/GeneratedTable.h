#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "qzxml/collections/XmlCollection.h"
#include "qzxml/collections/XmlTypeCollection.h"
#include "qzxml/runtime/SmartPtr.h"
#include "qzxml/serialization/ElementInfo.h"
#include "qzxml/serialization/XmlGeneratedClass.h"
#include "qzxml/values/QzVariant.h"

// Classes whose tables a test puts together on the spot, where a generated class has them in
// statics. GeneratedOrder.h has classes as the generator writes them.
//
//   CTables item;
//   item.Add(Prim<CElementInfoSeqPrimMnd>("sku", 0), Unset::Value);
//   CSmartPtr<CTableObject> object(new CTableObject(item));
//   object->Set(0, "A-7");
//   EXPECT_EQ("<r><sku>A-7</sku></r>", Text(*object));
namespace qztest {

using QzXmlLib16::CSerializationContext;
using QzXmlLib16::CXmlCollectionBase;
using QzXmlLib16::CXmlElement;
using QzXmlLib16::CXmlObjectBase;
using QzXmlLib16::ItemType;
using QzXmlLib16::QzVariant;
using QzXmlLib16Data::XmlElementGroupType;
using QzXmlLib16Data::XmlElementType;

class CTableObject;

// What a property is while nobody has set it.
struct Unset {
  using Make = std::function<QzVariant()>;
  static QzVariant Value() { return QzVariant(); }
  static QzVariant Object();                              // null
  static Make Held(std::function<CXmlObjectBase*()> of);  // an object that is always there
  static Make Collection(std::function<CXmlCollectionBase*()> of);
};

// The tables of one class. They outlive its objects.
class CTables {
 public:
  explicit CTables(XmlElementGroupType group = QzXmlLib16Data::XmlElementGroupType_Sequence,
                   XmlElementType type = QzXmlLib16Data::XmlElementType_Element);
  CTables(const CTables&) = delete;
  CTables& operator=(const CTables&) = delete;
  ~CTables();

  // --- What the class says of itself; before the first object.
  std::string name = "r";  // under which the schema declares the type
  std::string uri;         // of the type, of its element and of its schema
  bool failIfAttributeUnknown = true;
  bool hasBaseClasses = false;
  int textIndex = -1;
  ItemType textType = QzXmlLib16::ItemType_None;
  std::string textFormat;
  bool textAsText = false;

  // --- Its members. The tables own them; the property index is the number of the Add.
  CTables& Add(QzXmlLib16Data::CElementInfo* member, Unset::Make unset);
  CTables& Add(QzXmlLib16Data::CAttributeInfo* attribute, Unset::Make unset);
  CTables& AddProperty(Unset::Make unset);  // one without a member

  // The class id for MakeTableObject.
  int id() const { return m_id; }

 private:
  friend class CTableObject;
  friend class CTypeFactory;

  QzXmlLib16Data::CParentElementInfo* Info() const;

  XmlElementGroupType m_group;
  XmlElementType m_type;
  int m_id;
  mutable QzXmlLib16Data::CParentElementInfo* m_info = nullptr;
  QzXmlLib16Data::CElementInfo** m_elements;
  QzXmlLib16Data::CAttributeInfo** m_attributes;
  std::vector<Unset::Make> m_unset;
};

// An object of such a class. Its properties are the variants that its metadata gives it.
class CTableObject : public QzXmlLib16::CXmlGeneratedClass {
 public:
  explicit CTableObject(const CTables& tables, const char* elementName = "r");
  ~CTableObject() override;

  std::string GetTargetNamespace() const override { return m_tables.uri; }
  std::string GetNamespace() const override;

  // --- Properties
  QzVariant& operator[](std::size_t index) { return m_values[index]; }
  void Set(std::size_t index, const char* text) { m_values[index].SetString(text); }
  void Set(std::size_t index, CXmlObjectBase* object) { m_values[index].SetXmlObject(object); }
  std::string TextOf(std::size_t index) const;  // "(unset)" and "(nil)" beside the text
  // The object in a property; null for none. The property must hold a CTableObject.
  CTableObject* ObjectAt(std::size_t index) const;

  // While set, reading or writing a property throws CQzException with this text.
  mutable std::string failsToGive;
  mutable std::string failsToTake;
  // How often things were asked for.
  mutable int namespaceCalls = 0;
  int initCalls = 0;

  // --- Opened for tests
  using CXmlGeneratedClass::CleanMetaData;
  using CXmlGeneratedClass::DoesElementContainOptionalElements;
  using CXmlGeneratedClass::FromXml_Int;
  using CXmlGeneratedClass::GetElementName;
  using CXmlGeneratedClass::IsElementInList;
  using CXmlGeneratedClass::m_csInit;
  using CXmlGeneratedClass::ReadProperty;
  using CXmlGeneratedClass::ToXml_Int;

 protected:
  void AccessProperty(int index, bool read, QzVariant& value) const override;
  QzXmlLib16Data::CParentElementInfo* GetClassInfo() const override { return m_tables.Info(); }
  QzXmlLib16Data::CElementInfo** GetClassElementInfo() const override {
    return m_tables.m_elements;
  }
  QzXmlLib16Data::CAttributeInfo** GetClassAttributeInfo() const override {
    return m_tables.m_attributes;
  }
  void Init() override;

 private:
  const CTables& m_tables;
  mutable std::vector<QzVariant> m_values;
};

// The same for a class whose element may be nil.
class CNillableTableObject : public CTableObject, public QzXmlLib16::INillable {
 public:
  using CTableObject::CTableObject;
  bool GetIsNil() override { return m_isNil; }
  void SetIsNil(bool isNil) override { m_isNil = isNil; }

 protected:
  void Init() override {
    CTableObject::Init();
    m_isNil = false;
  }

 private:
  bool m_isNil = false;
};

// The generated factories: an object of the class with that id; an object of the class whose name
// is the xsi:type of the element, null where there is none.
CSmartPtr<CXmlObjectBase> MakeTableObject(int classId, const char* elementName);
CSmartPtr<CXmlObjectBase> MakeTableObjectByType(CXmlElement* element);

// A collection of such objects under one name, and one of texts.
class CTableCol : public QzXmlLib16::CXmlCollection {
 public:
  CTableCol(const CTables& tables, const char* name, const char* uri, int minOccurs, int maxOccurs)
      : CXmlCollection(name, uri, minOccurs, maxOccurs), m_tables(tables) {}
  CTableObject* Add();
  CTableObject* Item(int index) const;

 protected:
  void ToXml_Int(QzXmlLib16::CXmlWriter* writer, bool, const char* uri,
                 const CSerializationContext& context, bool) const override;
  CXmlElement* FromXml_Int(CXmlElement*, CXmlElement* cursor, const CSerializationContext& context,
                           bool) override;

 private:
  const CTables& m_tables;
};

class CTextCol : public QzXmlLib16::CXmlTypeCollection {
 public:
  CTextCol(const char* name, const char* uri, int minOccurs, int maxOccurs);
  std::vector<std::string> texts;
  int GetCount() const override { return static_cast<int>(texts.size()); }
  void Clear() override { texts.clear(); }
  void Remove(int index) override { texts.erase(texts.begin() + index); }

 protected:
  void ToXml_Int(QzXmlLib16::CXmlWriter* writer, bool, const char* uri,
                 const CSerializationContext&, bool) const override;
  void AddFromString(std::string text) override { texts.push_back(text); }
};

// --- Members, with what tests rarely change at the end.

// An enumeration: "red" 0, "green" 1, "blue" 2. Throws CQzException "No such colour [%s]." for any
// other text.
const char* ColourToString(int colour);
int StringToColour(const char* text);

struct PrimOptions {
  ItemType type = QzXmlLib16::ItemType_string;
  bool nillable = false;
  const char* defaultValue = nullptr;
  const char* uri = "";
  const char* format = nullptr;
  QzXmlLib16::CPrimitiveRestrictions restrictions{};
  QzXmlLib16::CWhitespaceUtils::WhitespaceRule rule =
      QzXmlLib16::CWhitespaceUtils::WhitespaceRule_None;
};

template <typename Member>
Member* Prim(const char* name, int index, const PrimOptions& options = PrimOptions()) {
  return new Member(name, options.uri, index, options.nillable, options.type, options.format,
                    options.rule, options.restrictions, options.defaultValue);
}

template <typename Member>
Member* Enum(const char* name, int index, bool nillable = false,
             const char* defaultValue = nullptr) {
  return new Member(name, "", index, nillable, &ColourToString, &StringToColour, defaultValue);
}

// --- Documents

// A context with one thing changed.
CSerializationContext With(const std::function<void(CSerializationContext&)>& change);
CSerializationContext Ignoring(void (CSerializationContext::*flag)(bool));

// The object as a document without declaration and formatting.
std::string Text(const CXmlObjectBase& object, const CSerializationContext& context = {});

}  // namespace qztest
