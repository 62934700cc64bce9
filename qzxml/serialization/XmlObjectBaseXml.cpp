#include "qzxml/collections/Element.h"
#include "qzxml/runtime/QzException.h"
#include "qzxml/runtime/TextStream.h"
#include "qzxml/serialization/XmlObjectBase.h"
#include "qzxml/values/BinaryData.h"
#include "qzxml/xml/Messages.h"
#include "qzxml/xml/XmlDocument.h"
#include "qzxml/xml/XmlElement.h"
#include "qzxml/xml/XmlTextWriter.h"

// The entry points for XML. Each stands on the stack: the writer or the document of a call goes
// with it, whatever the call throws.

namespace QzXmlLib16 {

std::string CXmlObjectBase::ToXml(bool declaration, bool formatted, EOLType eol,
                                  const CSerializationContext& context) const {
  CTextStream stream(XmlEncoding_Default);
  CXmlTextWriter writer(&stream);
  writer.StartDocument();
  writer.SetFormatted(formatted);
  writer.SetIndentChars(context.GetIndentChars());
  writer.SetEOLType(eol);
  writer.SetWriteDefaultValues(context.GetWriteDefaultElementValues());
  if (declaration) writer.WriteXmlDeclaration();
  ToXml_Int(&writer, true, GetTargetNamespace().c_str(), context, false);
  writer.EndDocument();
  return stream.TakeText();
}

void CXmlObjectBase::FromXmlFile(const char* fileName, const CSerializationContext& context) {
  CXmlDocument document(context);
  document.Load(fileName);
  CXmlObjectBase::FromXmlElement(document.GetDocumentElement(), context);
}

void CXmlObjectBase::FromXml(const wchar_t* text, const CSerializationContext& context) {
  CXmlDocument document(context);
  document.LoadXml(text);
  CXmlObjectBase::FromXmlElement(document.GetDocumentElement(), context);
}

void CXmlObjectBase::FromXml(const char16_t* text, const CSerializationContext& context) {
  CXmlDocument document(context);
  document.LoadXml(text);
  CXmlObjectBase::FromXmlElement(document.GetDocumentElement(), context);
}

void CXmlObjectBase::FromXml(const char* text, const CSerializationContext& context) {
  CXmlDocument document(context);
  document.LoadXml(text);
  CXmlObjectBase::FromXmlElement(document.GetDocumentElement(), context);
}

void CXmlObjectBase::FromXmlStream(const CBinaryData& data, const CSerializationContext& context) {
  FromXmlStream(data.GetData(), data.GetLength(), context);
}

void CXmlObjectBase::FromXmlStream(const BYTE* data, DWORD length,
                                   const CSerializationContext& context) {
  CXmlDocument document(context);
  document.LoadXmlStream(data, length);
  CXmlObjectBase::FromXmlElement(document.GetDocumentElement(), context);
}

void CXmlObjectBase::FromXmlElement(const CElement* element, const CSerializationContext& context) {
  if (element == nullptr) throw CQzException(Messages::kEmptyDocument);
  const std::string text =
      element->ToXml(false, false, EOLType_LF, CSerializationContext::GetDefaultContext());
  CXmlObjectBase::FromXml(text.c_str(), context);
}

void CXmlObjectBase::FromXmlElement(const CXmlElement* element,
                                    const CSerializationContext& context) {
  if (element == nullptr) throw CQzException(Messages::kEmptyDocument);
  FromXml_Int(const_cast<CXmlElement*>(element), element->GetFirstElement(), context, false);
}

}  // namespace QzXmlLib16
