#include "tests/support/GeneratedTable.h"

#include <algorithm>
#include <cstring>

#include "qzxml/runtime/Functions.h"
#include "qzxml/runtime/QzException.h"
#include "qzxml/serialization/ClassfactoryBase.h"
#include "qzxml/xml/XmlElement.h"
#include "qzxml/xml/XmlWriter.h"

namespace qztest {

using namespace QzXmlLib16;
using namespace QzXmlLib16Data;

namespace {

// Every living CTables; its place is its class id.
std::vector<const CTables*>& Registry() {
  static std::vector<const CTables*> tables;
  return tables;
}

// A table with one more entry in front of its null entry.
template <typename Entry>
void Append(Entry**& table, Entry* entry) {
  std::size_t count = 0;
  while (table[count] != nullptr) ++count;
  Entry** const longer = new Entry*[count + 2];
  std::copy(table, table + count, longer);
  longer[count] = entry;
  longer[count + 1] = nullptr;
  delete[] table;
  table = longer;
}

}  // namespace

// --- Properties

QzVariant Unset::Object() {
  QzVariant value;
  value.SetXmlObject(nullptr);
  return value;
}

Unset::Make Unset::Held(std::function<CXmlObjectBase*()> of) {
  return [of] {
    QzVariant value;
    value.SetXmlObject(of());
    return value;
  };
}

Unset::Make Unset::Collection(std::function<CXmlCollectionBase*()> of) {
  return [of] {
    QzVariant value;
    value.SetXmlCollection(of());
    return value;
  };
}

// --- Tables

CTables::CTables(XmlElementGroupType group, XmlElementType type)
    : m_group(group),
      m_type(type),
      m_id(static_cast<int>(Registry().size())),
      m_elements(new CElementInfo* [1] { nullptr }),
      m_attributes(new CAttributeInfo* [1] { nullptr }) {
  Registry().push_back(this);
}

CTables::~CTables() {
  Registry()[static_cast<std::size_t>(m_id)] = nullptr;
  CTableObject::CleanMetaData(m_info, m_elements, m_attributes);
}

CTables& CTables::Add(CElementInfo* member, Unset::Make unset) {
  Append(m_elements, member);
  return AddProperty(unset);
}

CTables& CTables::Add(CAttributeInfo* attribute, Unset::Make unset) {
  Append(m_attributes, attribute);
  return AddProperty(unset);
}

CTables& CTables::AddProperty(Unset::Make unset) {
  m_unset.push_back(unset);
  return *this;
}

CParentElementInfo* CTables::Info() const {
  if (m_info == nullptr) {
    m_info =
        new CParentElementInfo(m_group, m_type, name.c_str(), uri.c_str(), failIfAttributeUnknown,
                               hasBaseClasses, textIndex, textType, textFormat.c_str(), textAsText);
  }
  return m_info;
}

// --- Objects

CTableObject::CTableObject(const CTables& tables, const char* elementName) : m_tables(tables) {
  SetElementName(elementName);
  for (const Unset::Make& unset : m_tables.m_unset) m_values.push_back(unset());
}

CTableObject::~CTableObject() = default;

std::string CTableObject::GetNamespace() const {
  ++namespaceCalls;
  return m_tables.uri;
}

std::string CTableObject::TextOf(std::size_t index) const {
  const QzVariant& value = m_values[index];
  if (value.IsNil()) return "(nil)";
  return value.IsValid() ? value.ToString(nullptr) : "(unset)";
}

CTableObject* CTableObject::ObjectAt(std::size_t index) const {
  CXmlObjectBase* const object = m_values[index].GetXmlObject();
  return static_cast<CTableObject*>(object);
}

void CTableObject::AccessProperty(int index, bool read, QzVariant& value) const {
  const std::string& failure = read ? failsToGive : failsToTake;
  if (!failure.empty()) throw CQzException(failure);
  QzVariant& property = m_values.at(static_cast<std::size_t>(index));
  (read ? value : property) = read ? property : value;
}

void CTableObject::Init() {
  ++initCalls;
  for (std::size_t i = 0; i < m_values.size(); ++i) m_values[i] = m_tables.m_unset[i]();
}

// --- Factories

CSmartPtr<CXmlObjectBase> MakeTableObject(int classId, const char* elementName) {
  const CTables* const tables = Registry().at(static_cast<std::size_t>(classId));
  return CSmartPtr<CXmlObjectBase>(new CTableObject(*tables, elementName));
}

class CTypeFactory : public CClassfactoryBase {
 public:
  static CSmartPtr<CXmlObjectBase> Make(CXmlElement* element) {
    const std::string type = GetElementType(element);
    const std::string uri = GetElementTypeNamespaceUri(element);
    for (const CTables* tables : Registry()) {
      if (tables != nullptr && tables->name == type && tables->uri == uri) {
        return MakeTableObject(tables->id(), tables->name.c_str());
      }
    }
    return CSmartPtr<CXmlObjectBase>();
  }
};

CSmartPtr<CXmlObjectBase> MakeTableObjectByType(CXmlElement* element) {
  return CTypeFactory::Make(element);
}

// --- Collections

CTableObject* CTableCol::Add() {
  const CSmartPtr<CTableObject> item(new CTableObject(m_tables, GetElementName().c_str()));
  AppendItem(item);
  return item;
}

CTableObject* CTableCol::Item(int index) const {
  CXmlObjectBase* const item = GetNodeAtIndex(index)->item;
  return static_cast<CTableObject*>(item);
}

void CTableCol::ToXml_Int(CXmlWriter* writer, bool, const char* uri,
                          const CSerializationContext& context, bool) const {
  for (const CNode* node = GetFirstNode(); node != nullptr; node = node->next) {
    CXmlObjectBase::ToXml_Int(node->item, writer, false, uri, context, false);
  }
}

CXmlElement* CTableCol::FromXml_Int(CXmlElement*, CXmlElement* cursor,
                                    const CSerializationContext& context, bool) {
  const std::string uri = GetNamespace();
  while (cursor != nullptr &&
         DoesElementNameMatch(context, cursor, GetElementName().c_str(), uri.c_str())) {
    CXmlObjectBase::FromXml_Int(Add(), cursor, cursor->GetFirstElement(), context);
    cursor = cursor->GetNextSiblingElement();
  }
  return cursor;
}

CTextCol::CTextCol(const char* name, const char* uri, int minOccurs, int maxOccurs)
    : CXmlTypeCollection(ItemType_string, name, uri, minOccurs, maxOccurs, nullptr, -1, -1, nullptr,
                         nullptr, nullptr, nullptr, -1, -1, -1,
                         CWhitespaceUtils::WhitespaceRule_None, nullptr) {}

void CTextCol::ToXml_Int(CXmlWriter* writer, bool, const char* uri, const CSerializationContext&,
                         bool) const {
  for (const std::string& text : texts) {
    writer->WriteStartElement(GetElementName(), uri);
    writer->WriteText(text, ItemType_string, false);
    writer->WriteEndElement();
  }
}

// --- Values and documents

namespace {
constexpr const char* kColours[] = {"red", "green", "blue"};
}  // namespace

const char* ColourToString(int colour) { return kColours[colour]; }

int StringToColour(const char* text) {
  for (int colour = 0; colour < 3; ++colour) {
    if (std::strcmp(kColours[colour], text) == 0) return colour;
  }
  throw CQzException(FormatString("No such colour [%s].", text));
}

CSerializationContext With(const std::function<void(CSerializationContext&)>& change) {
  CSerializationContext context;
  change(context);
  return context;
}

CSerializationContext Ignoring(void (CSerializationContext::*flag)(bool)) {
  CSerializationContext context;
  (context.*flag)(true);
  return context;
}

std::string Text(const CXmlObjectBase& object, const CSerializationContext& context) {
  return object.ToXml(false, false, EOLType_LF, context);
}

}  // namespace qztest
