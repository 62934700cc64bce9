#pragma once

#include <string>

#include "qzxml/collections/AttributeCol.h"
#include "qzxml/collections/Element.h"
#include "qzxml/collections/ElementCol.h"
#include "qzxml/runtime/TextStream.h"
#include "qzxml/xml/XmlDocument.h"
#include "qzxml/xml/XmlElement.h"
#include "qzxml/xml/XmlTextWriter.h"

namespace qztest {

// Reaches the protected operations of the classes of open content, as the walks of generated
// classes do.
class CWalk : public QzXmlLib16::CXmlObjectBase {
 public:
  using Context = QzXmlLib16::CSerializationContext;
  using Element = QzXmlLib16::CXmlElement;

  static void Write(const CXmlObjectBase* object, QzXmlLib16::CXmlWriter* writer,
                    const Context& context = Context::GetDefaultContext()) {
    CXmlObjectBase::ToXml_Int(object, writer, false, "", context, false);
  }
  static Element* Read(CXmlObjectBase* object, Element* parent, Element* cursor,
                       const Context& context = Context::GetDefaultContext()) {
    return CXmlObjectBase::FromXml_Int(object, parent, cursor, context);
  }
};

// A document that lives as long as its variable.
class CLoaded {
 public:
  explicit CLoaded(const char* xml) : CLoaded(xml, CWalk::Context()) {}
  CLoaded(const char* xml, const CWalk::Context& context)
      : m_context(context), m_document(m_context) {
    m_document.LoadXml(xml);
  }
  QzXmlLib16::CXmlElement* root() const { return m_document.GetDocumentElement(); }

 private:
  const CWalk::Context m_context;
  QzXmlLib16::CXmlDocument m_document;
};

// What an object writes into an element "owner", without any white space.
inline std::string WriteInOwner(const QzXmlLib16::CXmlObjectBase* object) {
  QzXmlLib16::CTextStream stream;
  QzXmlLib16::CXmlTextWriter writer(&stream);
  writer.SetFormatted(false);
  writer.StartDocument();
  writer.WriteStartElement("owner", "");
  CWalk::Write(object, &writer);
  writer.WriteEndElement();
  writer.EndDocument();
  return stream.GetBuffer();
}

inline std::string Flat(const QzXmlLib16::CElement* element) {
  return element->ToXml(false, false);
}

inline std::string Formatted(const QzXmlLib16::CElement* element) {
  return element->ToXml(false, true);
}

// A chain of elements, one in the other, as a caller builds it.
inline CSmartPtr<QzXmlLib16::CElement> MakeDeep(int levels) {
  CSmartPtr<QzXmlLib16::CElement> root(new QzXmlLib16::CElement("e"));
  QzXmlLib16::CElement* at = root;
  for (int i = 1; i < levels; ++i) at = at->GetChildElements()->Add("e", "");
  return root;
}

}  // namespace qztest
