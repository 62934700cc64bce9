#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "qzxml/collections/XmlCollection.h"
#include "qzxml/runtime/QzIterator.h"
#include "qzxml/runtime/SmartPtr.h"
#include "qzxml/serialization/XmlObjectBase.h"
#include "qzxml/values/ItemType.h"
#include "qzxml/xml/XmlElement.h"
#include "qzxml/xml/XmlWriter.h"

namespace qztest {

// An object with a name, which it writes as an empty element, or as an attribute of its owner.
class CThing : public QzXmlLib16::CXmlObjectBase {
 public:
  explicit CThing(std::string name = "thing", bool* deleted = nullptr)
      : m_name(std::move(name)), m_deleted(deleted) {}
  ~CThing() override {
    if (onDelete) onDelete();
    if (m_deleted != nullptr) *m_deleted = true;
  }

  using CXmlObjectBase::GetBase;
  CXmlObjectBase* GetBase() override { return this; }
  std::string GetTargetNamespace() const override { return ""; }
  std::string GetNamespace() const override { return ""; }

  const std::string& name() const { return m_name; }
  int references() {
    AddRef();
    return Release();
  }
  std::function<void()> onDelete;

 protected:
  void AttributesToXml_Int(QzXmlLib16::CXmlWriter* writer,
                           const QzXmlLib16::CSerializationContext&) const override {
    writer->WriteAttribute(m_name, "", "yes", QzXmlLib16::ItemType_string);
  }
  void ToXml_Int(QzXmlLib16::CXmlWriter* writer, bool, const char* namespaceUri,
                 const QzXmlLib16::CSerializationContext&, bool) const override {
    writer->WriteStartElement(m_name, namespaceUri);
    writer->WriteEndElement();
  }
  QzXmlLib16::CXmlElement* FromXml_Int(QzXmlLib16::CXmlElement*, QzXmlLib16::CXmlElement* cursor,
                                       const QzXmlLib16::CSerializationContext&, bool) override {
    return cursor;
  }

 private:
  std::string m_name;
  bool* m_deleted;
};

// A collection of things, as a generated class would offer it, with everything open.
class CThings : public QzXmlLib16::CXmlCollection {
 public:
  CThings() = default;
  CThings(int minOccurs, int maxOccurs)
      : CXmlCollection("thing", "urn:things", minOccurs, maxOccurs) {}

  using CXmlCollection::AddAfterItem;
  using CXmlCollection::AddBeforeItem;
  using CXmlCollection::AddItemAt;
  using CXmlCollection::AppendItem;
  using CXmlCollection::AttributesToXml_Int;
  using CXmlCollection::GetElementName;
  using CXmlCollection::GetFirstNode;
  using CXmlCollection::GetLastNode;
  using CXmlCollection::GetNodeAtIndex;
  using CXmlCollection::GetNodeForItem;
  using CXmlCollection::PrependItem;
  using CXmlCollection::RemoveNode;

  CSmartPtr<CThing> Append(const char* name) {
    CSmartPtr<CThing> thing(new CThing(name));
    AppendItem(thing);
    return thing;
  }
  QzXmlLib16::CQzIterator<CThing> begin() const {
    return QzXmlLib16::CQzIterator<CThing>(GetFirstNode());
  }
  QzXmlLib16::CQzIterator<CThing> end() const { return QzXmlLib16::CQzIterator<CThing>(nullptr); }

  // The names from head to tail; "broken" where the way back is another one.
  std::string names() const {
    std::string forth;
    for (CSmartPtr<CThing> thing : *this) forth += thing->name();
    std::string back;
    for (const CNode* node = GetLastNode(); node != nullptr; node = node->prev) {
      back.insert(0, static_cast<CThing*>(static_cast<CXmlObjectBase*>(node->item))->name());
    }
    return forth == back ? forth : "broken";
  }

 protected:
  void ToXml_Int(QzXmlLib16::CXmlWriter* writer, bool, const char*,
                 const QzXmlLib16::CSerializationContext& context, bool) const override {
    ValidateCount(context);
    for (const CNode* node = GetFirstNode(); node != nullptr; node = node->next) {
      CXmlObjectBase::ToXml_Int(node->item, writer, false, GetNamespace().c_str(), context, false);
    }
  }
  QzXmlLib16::CXmlElement* FromXml_Int(QzXmlLib16::CXmlElement*, QzXmlLib16::CXmlElement* cursor,
                                       const QzXmlLib16::CSerializationContext&, bool) override {
    return cursor;
  }
};

// What it hears, one line an event: the event, what its data points at, and the items that the
// collection has just then. Then it does what it was told to do.
class CListener : public QzXmlLib16::IEventSink {
 public:
  using Base = QzXmlLib16::CXmlObjectBase;

  explicit CListener(std::string name = "") : m_name(std::move(name)) {}
  CListener(const CListener&) = delete;
  CListener& operator=(const CListener&) = delete;
  virtual ~CListener() = default;

  void OnEvent(Base* sender, MsgType type, void* data) override {
    senders.push_back(sender);
    log->push_back(
        m_name + Describe(type, data) + " " +
        std::to_string(dynamic_cast<QzXmlLib16::CXmlCollectionBase&>(*sender).GetCount()));
    if (onEvent) onEvent(type);
  }

  std::vector<std::string> own;
  std::vector<std::string>* log = &own;
  std::vector<Base*> senders;
  std::function<void(MsgType)> onEvent;

 private:
  static std::string Describe(MsgType type, void* data) {
    switch (type) {
      case MsgType_CollectionChange:
        return data == nullptr ? "change" : "change with data";
      case MsgType_CollectionAdd:
        return "add " + Item(data);
      case MsgType_CollectionAddComplete:
        return "added " + Item(data);
      case MsgType_CollectionRemove:
        return "remove" + Index(data);
      case MsgType_CollectionRemoveComplete:
        return "removed" + Index(data);
    }
    return "unknown";
  }
  static std::string Item(void* data) {
    const auto* thing = dynamic_cast<CThing*>(static_cast<Base*>(data));
    return thing != nullptr ? thing->name() : "element";
  }
  static std::string Index(void* data) {
    return data == nullptr ? "" : " " + std::to_string(*static_cast<std::int32_t*>(data));
  }

  std::string m_name;
};

using Log = std::vector<std::string>;

}  // namespace qztest
