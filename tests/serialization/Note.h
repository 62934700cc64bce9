#pragma once

#include <string>
#include <utility>
#include <vector>

#include "qzxml/collections/AttributeCol.h"
#include "qzxml/runtime/QzException.h"
#include "qzxml/serialization/XmlObjectBase.h"
#include "qzxml/values/ItemType.h"
#include "qzxml/xml/XmlAttribute.h"
#include "qzxml/xml/XmlElement.h"
#include "qzxml/xml/XmlWriter.h"

namespace qztest {

// A class that writes and reads itself, without tables: a note to somebody, of lines.
//
//   <note xmlns="urn:notes" to="Ann"><line>Milk</line><line>Bread</line></note>
//
// It remembers what it was called with, and opens what classes may use of CXmlObjectBase.
class CNote : public QzXmlLib16::CXmlObjectBase {
 public:
  using Base = QzXmlLib16::CXmlObjectBase;
  using Context = QzXmlLib16::CSerializationContext;

  // What the last call of ToXml_Int or FromXml_Int was given.
  struct Call {
    bool root = false;
    bool optionalChoice = true;
    std::string namespaceUri;
    const Context* context = nullptr;
    QzXmlLib16::CXmlElement* cursor = nullptr;
  };

  explicit CNote(bool* deleted = nullptr) : m_deleted(deleted) { SetElementName("note"); }
  CNote(const CNote&) = default;
  CNote& operator=(const CNote&) = default;
  ~CNote() override {
    if (m_deleted != nullptr) *m_deleted = true;
  }

  std::string to;
  std::vector<std::string> lines;
  mutable Call call;
  mutable int attributeCalls = 0;

  using Base::GetBase;
  Base* GetBase() override { return this; }
  std::string GetTargetNamespace() const override { return "urn:notes"; }
  std::string GetNamespace() const override { return "urn:notes"; }

  using Base::Choice_CollectionChanged;
  using Base::Choice_Read_Collection;
  using Base::Choice_SelectElement;
  using Base::Choice_SetElementValid;
  using Base::DoesElementNameMatch;
  using Base::FireOnCollectionAddCompleteEvent;
  using Base::FireOnCollectionAddEvent;
  using Base::FireOnCollectionChangeEvent;
  using Base::FireOnCollectionRemoveCompleteEvent;
  using Base::FireOnCollectionRemoveEvent;
  using Base::GetElementName;
  using Base::IsNamespaceValid;
  using Base::SetElementName;
  using Base::TestNamespace;
  using Base::Throw_IfElementNameDiffers;
  using Base::Throw_IfPropertyIsNull;

  // The statics by which one class reaches the protected operations of another.
  static void WriteAttributesOf(const Base* object, QzXmlLib16::CXmlWriter* writer,
                                const Context& context) {
    Base::AttributesToXml_Int(object, writer, context);
  }
  static void Write(const Base* object, QzXmlLib16::CXmlWriter* writer, bool root, const char* uri,
                    const Context& context, bool optionalChoice) {
    Base::ToXml_Int(object, writer, root, uri, context, optionalChoice);
  }
  static QzXmlLib16::CXmlElement* Read(Base* object, QzXmlLib16::CXmlElement* parent,
                                       QzXmlLib16::CXmlElement* cursor, const Context& context) {
    return Base::FromXml_Int(object, parent, cursor, context);
  }

 protected:
  void AttributesToXml_Int(QzXmlLib16::CXmlWriter* writer, const Context&) const override {
    ++attributeCalls;
    writer->WriteAttribute("to", "", to, QzXmlLib16::ItemType_string);
  }

  void ToXml_Int(QzXmlLib16::CXmlWriter* writer, bool root, const char* namespaceUri,
                 const Context& context, bool optionalChoice) const override {
    call = Call{root, optionalChoice, namespaceUri, &context, nullptr};
    if (to == "nobody") throw QzXmlLib16::CQzException("A note is to somebody.");
    if (root) DeclareNamespaces(writer, context);
    writer->WriteStartElement(GetElementName(), namespaceUri);
    if (root) {
      Base::ToXml_Int(context.GetAdditionalRootAttributes(), writer, false, namespaceUri, context,
                      false);
    }
    AttributesToXml_Int(writer, context);
    for (const std::string& line : lines) {
      writer->WriteStartElement("line", namespaceUri);
      writer->WriteText(line, QzXmlLib16::ItemType_string, line == "(none)");
      writer->WriteEndElement();
    }
    if (to != "left open") writer->WriteEndElement();
  }

  QzXmlLib16::CXmlElement* FromXml_Int(QzXmlLib16::CXmlElement* parent,
                                       QzXmlLib16::CXmlElement* cursor, const Context& context,
                                       bool optionalChoice) override {
    call = Call{false, optionalChoice, parent->GetNamespaceURI(), &context, cursor};
    SetElementName(parent->GetLocalName().c_str());
    to = parent->GetAttribute("to", "");
    lines.clear();
    for (; cursor != nullptr; cursor = cursor->GetNextSiblingElement()) {
      if (!DoesElementNameMatch(context, cursor, "line", "urn:notes")) {
        throw QzXmlLib16::CQzValidationException("A note has lines alone.", cursor->GetXPath());
      }
      lines.push_back(cursor->GetText());
    }
    return cursor;
  }

 private:
  static void DeclareNamespaces(QzXmlLib16::CXmlWriter* writer, const Context& context) {
    const QzXmlLib16::CNamespaceAliasMap& aliases = context.GetNamespaceAliases();
    for (int i = 0; i < aliases.GetNamespaceCount(); ++i) {
      const std::string uri = aliases.GetNamespaceAt(i);
      writer->AddNamespaceMapping(aliases.GetAliasFromNamespace(uri.c_str()), uri);
    }
    if (!context.GetDefaultNamespaceURI().empty()) {
      writer->SetDefaultNamespace(context.GetDefaultNamespaceURI());
    }
  }

  bool* m_deleted;
};

}  // namespace qztest
