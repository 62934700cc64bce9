#include "qzxml/json/JsonReaderToXmlHandler.h"

#include "qzxml/platform/Assert.h"
#include "qzxml/runtime/Functions.h"
#include "qzxml/runtime/QzException.h"
#include "qzxml/values/ItemType.h"
#include "qzxml/xml/XmlTextWriter.h"
#include "qzxml/xml/XmlWriter.h"

// An item is what stands behind a name: m_strCurrentName is set while its value is awaited, and
// m_bInAttribute tells what it is. Items that are elements are opened with their name and closed
// behind their value by EndItem, which closes whatever element is innermost.
//
// Meant: m_bInAttribute stays set behind the value of an attribute, until a name that is none. So
// the end of an object that ends in attributes closes nothing. Those who read documents with such
// elements know that this fails; nothing here mends it.

namespace QzXmlLib16 {

CJsonReaderToXmlHandler::CJsonReaderToXmlHandler(CXmlWriter* writer, JsonRoundTrip roundTrip,
                                                 IErrorPathProvider* errorPathProvider)
    : m_pWriter(writer), m_roundTrip(roundTrip), m_pErrorPathProvider(errorPathProvider) {}

CJsonReaderToXmlHandler::~CJsonReaderToXmlHandler() = default;

// ---- Items

void CJsonReaderToXmlHandler::StartElementFor(const std::string& name) {
  m_bInAttribute = false;
  m_strCurrentName = name;
  ++m_openElements;
  try {
    m_pWriter->WriteStartElement(m_strCurrentName, std::string());
  } catch (const CQzException&) {
    QZ_ASSERT(false);
    throw CQzInvalidStateException(
        FormatString("Failed to convert name '%s' to Element name in XML.", name.c_str()));
  }
}

void CJsonReaderToXmlHandler::WriteCurrentValue(const std::string& value) {
  // A document can bring it about: a value that is all of it, or a second one in an array.
  if (m_openElements == 0) ThrowValue(value);
  try {
    WriteToWriter(value);
  } catch (const CQzException&) {
    QZ_ASSERT(false);
    ThrowValue(value);
  }
  EndItem();
}

void CJsonReaderToXmlHandler::WriteToWriter(const std::string& value) {
  const CXmlWriter::CDocumentValues documentValues(m_pWriter);
  if (m_bInAttribute) {
    m_pWriter->WriteAttribute(m_strCurrentName, std::string(), value, ItemType_string);
  } else {
    m_pWriter->WriteText(value, ItemType_string, false);
  }
}

void CJsonReaderToXmlHandler::EndItem() {
  m_strCurrentName.clear();
  if (m_bInAttribute || m_openElements == 0) return;
  --m_openElements;
  m_pWriter->WriteEndElement();
}

void CJsonReaderToXmlHandler::ThrowWithPath(const char* text) const {
  throw CQzValidationException(text, m_pErrorPathProvider->GetErrorPath());
}

void CJsonReaderToXmlHandler::ThrowValue(const std::string& value) const {
  throw CQzInvalidStateException(
      m_bInAttribute
          ? FormatString("Failed to convert value '%s' to Attribute string value in XML.",
                         value.c_str())
          : FormatString("Failed to convert value '%s' to Element string value in XML.",
                         value.c_str()));
}

// ---- Events

void CJsonReaderToXmlHandler::StartDocument() {
  m_openElements = 0;
  m_arrayStack.clear();
  if (auto* const writer = dynamic_cast<CXmlTextWriter*>(m_pWriter)) writer->WriteXmlDeclaration();
}

void CJsonReaderToXmlHandler::EndDocument() {}

void CJsonReaderToXmlHandler::Name(const std::string& name) {
  if (name.empty()) ThrowWithPath("JSON item has an empty Name.");
  if (m_roundTrip != JsonRoundTrip_None && name == "#text") {
    m_bTextSeen = true;
    m_bInAttribute = false;
  } else if (m_roundTrip != JsonRoundTrip_None && name[0] == '@') {
    m_bInAttribute = true;
    m_strCurrentName.assign(name, 1);
  } else {
    StartElementFor(name);
  }
}

void CJsonReaderToXmlHandler::String(const std::string& value) { WriteCurrentValue(value); }

void CJsonReaderToXmlHandler::Number(const std::string& value) { WriteCurrentValue(value); }

void CJsonReaderToXmlHandler::Bool(bool value) { WriteCurrentValue(value ? "true" : "false"); }

void CJsonReaderToXmlHandler::Null() { EndItem(); }

// An object that no name announced is one more of its array.
void CJsonReaderToXmlHandler::StartObject() {
  if (m_strCurrentName.empty() && !m_arrayStack.empty()) StartElementFor(m_arrayStack.back());
}

void CJsonReaderToXmlHandler::EndObject() {
  if (!m_bTextSeen) EndItem();
  m_bTextSeen = false;
}

void CJsonReaderToXmlHandler::StartArray() {
  if (m_strCurrentName.empty()) ThrowWithPath("JSON Array has no Name.");
  m_arrayStack.push_back(m_strCurrentName);
}

void CJsonReaderToXmlHandler::EndArray() {
  QZ_ASSERT(m_arrayStack.size() > 0);
  if (!m_arrayStack.empty()) m_arrayStack.pop_back();
}

}  // namespace QzXmlLib16
