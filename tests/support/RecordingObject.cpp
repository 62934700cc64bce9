#include "tests/support/RecordingObject.h"

#include <map>
#include <utility>

#include "qzxml/xml/XmlElement.h"

namespace qztest {

using namespace QzXmlLib16;
using namespace QzXmlLib16Data;

// --- The record

namespace {

std::vector<std::string>* g_calls = nullptr;

std::string Described(const QzVariant& value) {
  if (value.GetTypeAsEnum() != ItemType_XmlObjectBase) return value.ToString(nullptr);
  const CSmartPtr<CXmlObjectBase> object = value.GetXmlObject();
  if (object == nullptr) return "null";
  CXmlObjectBase* const plain = object;
  CTableObject* const child = dynamic_cast<CTableObject*>(plain);
  if (child == nullptr) return "open content";
  const bool isEmpty = child->TextOf(0) == "(unset)";
  return "<" + child->GetElementName() + "> " + (isEmpty ? "empty" : "filled");
}

}  // namespace

CRecord::CRecord() { g_calls = new std::vector<std::string>; }

CRecord::~CRecord() {
  delete g_calls;
  g_calls = nullptr;
}

std::vector<std::string> CRecord::Take() { return std::exchange(*g_calls, {}); }

void CRecord::Note(const std::string& call) {
  if (g_calls != nullptr) g_calls->push_back(call);
}

// --- Objects

void CRecordingObject::AccessProperty(int index, bool read, QzVariant& value) const {
  const std::string call = GetElementName() + (read ? " gives " : " takes ");
  CRecord::Note(call + std::to_string(index) + (read ? "" : " " + Described(value)));
  CTableObject::AccessProperty(index, read, value);
}

void CRecordingObject::Init() {
  CRecord::Note(GetElementName() + " init");
  CTableObject::Init();
}

void CSelectingObject::AccessProperty(int index, bool read, QzVariant& value) const {
  if (!read) {
    const std::string name = "P" + std::to_string(index);
    CSelectingObject* const self = const_cast<CSelectingObject*>(this);
    self->Choice_SelectElement(name.c_str(), value.GetXmlObject(), selected);
  }
  CRecordingObject::AccessProperty(index, read, value);
}

void CSelectingObject::Init() {
  selected.clear();
  CRecordingObject::Init();
}

// --- Factories

namespace {

std::map<int, const CTables*>& Made() {
  static std::map<int, const CTables*> tables;
  return tables;
}

}  // namespace

CMadeTables::CMadeTables(XmlElementGroupType group, XmlElementType type) : CTables(group, type) {
  Made()[id()] = this;
}

CMadeTables::~CMadeTables() { Made().erase(id()); }

CSmartPtr<CXmlObjectBase> MakeRecordingObject(int classId, const char* elementName) {
  return CSmartPtr<CXmlObjectBase>(new CRecordingObject(*Made().at(classId), elementName));
}

CSmartPtr<CXmlObjectBase> MakeNillableObject(int classId, const char* elementName) {
  return CSmartPtr<CXmlObjectBase>(new CNillableTableObject(*Made().at(classId), elementName));
}

CSmartPtr<CXmlObjectBase> MakeRecordingObjectByName(CXmlElement* element) {
  for (const auto& [id, tables] : Made()) {
    if (element != nullptr && tables->name == element->GetLocalName()) {
      return MakeRecordingObject(id, tables->name.c_str());
    }
  }
  return CSmartPtr<CXmlObjectBase>();
}

}  // namespace qztest
