#pragma once

#include <initializer_list>
#include <string>
#include <vector>

#include "qzxml/serialization/SerializationContext.h"
#include "qzxml/xml/XmlWriter.h"
#include "tests/support/GeneratedTable.h"

namespace qztest {

// A flag of the context; null for none.
using Flag = void (CSerializationContext::*)(bool);
constexpr Flag kNoFlag = nullptr;
constexpr Flag kUnknownAttributes = &CSerializationContext::SetIgnoreUnknownAttributes;
constexpr Flag kUnknownElements = &CSerializationContext::SetIgnoreUnknownElements;
constexpr Flag kMissingMandatory = &CSerializationContext::SetIgnoreMissingMandatoryElements;
constexpr Flag kMissingChoice = &CSerializationContext::SetIgnoreMissingChoice;
constexpr Flag kCollectionCounts = &CSerializationContext::SetIgnoreInvalidCollectionCounts;
constexpr Flag kNamespaces = &CSerializationContext::SetIgnoreNamespaces;

CSerializationContext Flagged(Flag flag);
const char* NameOf(Flag flag);

// How the class around a member, or a child, stands in the document.
constexpr XmlElementType kReal = QzXmlLib16Data::XmlElementType_Element;
constexpr XmlElementType kPseudo = QzXmlLib16Data::XmlElementType_PseudoElement;

constexpr char kXsi[] = "http://www.w3.org/2001/XMLSchema-instance";

// The class of the failure and its full text, "CQzException: An Element has not been closed.", or
// what the action answers.
std::string Outcome(const std::function<std::string()>& action);

// Some children, and what a member takes of them.
struct Taking {
  const char* children;
  XmlElementType parentType;
  Flag flag;
  std::string outcome;
};

// One member on trial, without the walk that calls it: what it takes of the children of an element
// <r>, and what it writes of its property between the tags of <r>. The root declares the prefixes
// xsi and o, the latter for "urn:o".
//
//   CTrial trial(Prim<CElementInfoSeqPrimMnd>("a", 0), Unset::Value);
//   EXPECT_EQ("true, at b, 1", trial.Take("<a>1</a><b/>"));
//   EXPECT_EQ("true, <r><a>1</a></r>", trial.Give());
class CTrial {
 public:
  CTrial(QzXmlLib16Data::CElementInfo* member, Unset::Make unset, const char* uri = "");

  // Attributes for the start tag of <r>, with a blank in front.
  std::string rootAttributes;

  // Reads into an object just made. Its answer, where the cursor stands ("end" behind the last
  // child), and the property: as text, "(unset)", "(nil)", "(null)", or as it is written now.
  std::string Take(const std::string& children, XmlElementType parentType = kReal,
                   const CSerializationContext& context = {});

  // Its answer and the text written, unformatted. Attributes of a pseudo child are on <r>.
  std::string Give(const CSerializationContext& context = {}) const;

  // The calls of the writer that come of it, one after the other.
  std::vector<std::string> GiveCalls(const CSerializationContext& context = {}) const;

  void Expect(std::initializer_list<Taking> takings);

  QzXmlLib16Data::CElementInfo& member() { return *m_member; }
  CTables& tables() { return m_tables; }
  CTableObject& object() { return *m_object; }
  QzVariant& value() { return (*m_object)[0]; }

  // Reads and writes as Take and Give do, and lets failures out.
  std::string TakeOrThrow(const std::string& children, XmlElementType parentType = kReal,
                          const CSerializationContext& context = {});
  std::string GiveOrThrow(const CSerializationContext& context = {}) const;

  // While set, given to the object before it reads.
  std::string failsToGive;
  std::string failsToTake;

 private:
  std::string Held() const;
  void RenewObject();

  CTables m_tables;
  QzXmlLib16Data::CElementInfo* m_member;  // the tables own it
  CSmartPtr<CTableObject> m_object;
};

// A writer that notes its calls: "start a", "start a urn:o", "text 1 5" (with the ItemType), "text
// 1 5 default", "attribute id 7", "type circle", "nil", "end"; the element's collection state
// stands in front of those made in it, when it is not 0: "[1] start a".
class CRecordingWriter : public QzXmlLib16::CXmlWriter {
 public:
  CRecordingWriter() : CXmlWriter("CRecordingWriter") {}
  std::vector<std::string> calls;

  void WriteComment(const std::string&) override {}
  void WriteProcessingInstruction(const std::string&) override {}
  void WriteInlineSchema(const std::string&) override {}
  void WriteStartElement(const std::string& name, const std::string& uri) override;
  void WriteText(const std::string& text, ItemType type, bool isDefault) override;
  void WriteEndElement() override;
  void WriteAttribute(const std::string& name, const std::string& uri, const std::string& value,
                      ItemType type) override;
  void WriteXsiType(const std::string& uri, const std::string& name, ItemType type) override;
  void WriteXsiNil() override;

 private:
  void Note(const std::string& call);
};

}  // namespace qztest
