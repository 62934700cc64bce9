#include "tests/support/MemberTrial.h"

#include <gtest/gtest.h>

#include <typeindex>
#include <typeinfo>

#include "qzxml/runtime/QzException.h"
#include "qzxml/runtime/TextStream.h"
#include "qzxml/xml/XmlDocument.h"
#include "qzxml/xml/XmlElement.h"
#include "qzxml/xml/XmlTextWriter.h"
#include "qzxml/xml/XmlWriterContext.h"

namespace qztest {

using namespace QzXmlLib16;
using namespace QzXmlLib16Data;

namespace {

const char* ClassOf(const CQzException& e) {
  static const std::map<std::type_index, const char*> names = {
      {typeid(CQzException), "CQzException"},
      {typeid(CQzValidationException), "CQzValidationException"},
      {typeid(CQzInvalidValueException), "CQzInvalidValueException"},
      {typeid(CQzInvalidNamespaceException), "CQzInvalidNamespaceException"},
      {typeid(CQzInvalidStateException), "CQzInvalidStateException"},
      {typeid(CQzInvalidParamException), "CQzInvalidParamException"}};
  const auto found = names.find(typeid(e));
  return found != names.end() ? found->second : typeid(e).name();
}

// The element by its last step, so that namesakes have their number.
std::string PlaceOf(const CXmlElement* element) {
  if (element == nullptr) return "end";
  const std::string path = element->GetXPath();
  return path.substr(path.rfind('/') + 1);
}

std::string WithAnswer(bool answer, const std::string& rest) {
  return (answer ? "true, " : "false, ") + rest;
}

// The member between the tags of <r>, as the walk of writing calls it.
bool GiveTo(CXmlWriter& writer, const CElementInfo& member, const CTableObject& object,
            const CSerializationContext& context) {
  writer.WriteStartElement("r", "");
  member.PseudoChildAttributeToXml(context, &object, &writer);
  const bool answer = member.ElementToXml(context, &object, &writer);
  writer.WriteEndElement();
  return answer;
}

}  // namespace

CSerializationContext Flagged(Flag flag) {
  return flag != kNoFlag ? Ignoring(flag) : CSerializationContext();
}

const char* NameOf(Flag flag) {
  if (flag == kUnknownAttributes) return "IgnoreUnknownAttributes";
  if (flag == kUnknownElements) return "IgnoreUnknownElements";
  if (flag == kMissingMandatory) return "IgnoreMissingMandatoryElements";
  if (flag == kMissingChoice) return "IgnoreMissingChoice";
  if (flag == kCollectionCounts) return "IgnoreInvalidCollectionCounts";
  return flag == kNamespaces ? "IgnoreNamespaces" : "no flag";
}

std::string Outcome(const std::function<std::string()>& action) {
  try {
    return action();
  } catch (const CQzException& e) {
    return std::string(ClassOf(e)) + ": " + e.GetFullMessage();
  }
}

// --- The trial

CTrial::CTrial(CElementInfo* member, Unset::Make unset, const char* uri) : m_member(member) {
  m_tables.uri = uri;
  m_tables.Add(member, unset);
  RenewObject();
}

void CTrial::RenewObject() {
  m_object = CSmartPtr<CTableObject>(new CTableObject(m_tables));
  m_object->failsToGive = failsToGive;
  m_object->failsToTake = failsToTake;
}

std::string CTrial::TakeOrThrow(const std::string& children, XmlElementType parentType,
                                const CSerializationContext& context) {
  const std::string text = "<r xmlns:xsi='" + std::string(kXsi) + "' xmlns:o='urn:o'" +
                           rootAttributes + ">" + children + "</r>";
  CXmlDocument document(context);
  document.LoadXml(text.c_str());
  CXmlElement* const root = document.GetDocumentElement();
  CXmlElement* cursor = root->GetFirstElement();
  RenewObject();
  const std::string uri = m_object->GetNamespace();
  const bool answer =
      m_member->ElementFromXml(context, m_object, root, &cursor, uri.c_str(), parentType);
  return WithAnswer(answer, "at " + PlaceOf(cursor) + ", " + Held());
}

std::string CTrial::Take(const std::string& children, XmlElementType parentType,
                         const CSerializationContext& context) {
  return Outcome([&] { return TakeOrThrow(children, parentType, context); });
}

std::string CTrial::Held() const {
  const QzVariant& value = (*m_object)[0];
  const ItemType kind = value.GetTypeAsEnum();
  if (kind != ItemType_XmlObjectBase && kind != ItemType_XmlCollection) {
    return m_object->TextOf(0);
  }
  if (kind == ItemType_XmlObjectBase && value.GetXmlObject() == nullptr) return "(null)";
  CSerializationContext lenient = Flagged(kCollectionCounts);
  lenient.SetIgnoreMissingChoice(true);
  const std::string given = GiveOrThrow(lenient);
  return given.substr(given.find('<'));
}

std::string CTrial::GiveOrThrow(const CSerializationContext& context) const {
  CTextStream stream(XmlEncoding_Default);
  CXmlTextWriter writer(&stream);
  writer.StartDocument();
  writer.SetFormatted(false);
  writer.SetWriteDefaultValues(context.GetWriteDefaultElementValues());
  const bool answer = GiveTo(writer, *m_member, *m_object, context);
  writer.EndDocument();
  return WithAnswer(answer, stream.GetBuffer());
}

std::string CTrial::Give(const CSerializationContext& context) const {
  return Outcome([&] { return GiveOrThrow(context); });
}

std::vector<std::string> CTrial::GiveCalls(const CSerializationContext& context) const {
  CRecordingWriter writer;
  const std::string answer =
      Outcome([&] { return WithAnswer(GiveTo(writer, *m_member, *m_object, context), ""); });
  EXPECT_FALSE(answer.rfind("CQz", 0) == 0) << answer;
  return writer.calls;
}

void CTrial::Expect(std::initializer_list<Taking> takings) {
  for (const Taking& taking : takings) {
    EXPECT_EQ(taking.outcome, Take(taking.children, taking.parentType, Flagged(taking.flag)))
        << "of " << taking.children << " in a " << (taking.parentType == kReal ? "real" : "pseudo")
        << " parent with " << NameOf(taking.flag);
  }
}

// --- The recording writer

void CRecordingWriter::Note(const std::string& call) {
  const std::uint32_t state = m_pContext != nullptr ? m_pContext->GetCollectionState() : 0;
  calls.push_back((state != 0 ? "[" + std::to_string(state) + "] " : "") + call);
}

void CRecordingWriter::WriteStartElement(const std::string& name, const std::string& uri) {
  Note("start " + name + (uri.empty() ? "" : " " + uri));
  m_pContext = OpenContext(name, uri);
}

void CRecordingWriter::WriteText(const std::string& text, ItemType type, bool isDefault) {
  Note("text " + text + " " + std::to_string(type) + (isDefault ? " default" : ""));
}

void CRecordingWriter::WriteEndElement() {
  Note("end");
  m_pContext = CloseContext(m_pContext);
}

void CRecordingWriter::WriteAttribute(const std::string& name, const std::string&,
                                      const std::string& value, ItemType) {
  Note("attribute " + name + " " + value);
}

void CRecordingWriter::WriteXsiType(const std::string&, const std::string& name, ItemType) {
  Note("type " + name);
}

void CRecordingWriter::WriteXsiNil() { Note("nil"); }

}  // namespace qztest
