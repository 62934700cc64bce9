#include "qzxml/binding/BoundClass.h"
#include "qzxml/binding/EarlyItems.h"
#include "qzxml/collections/Element.h"
#include "qzxml/runtime/BinaryStream.h"
#include "qzxml/runtime/FileTextStream.h"
#include "qzxml/runtime/QzException.h"
#include "qzxml/runtime/QzZip.h"
#include "qzxml/runtime/TextStream.h"
#include "qzxml/serialization/FileOutput.h"
#include "qzxml/serialization/XmlObjectBase.h"
#include "qzxml/values/BinaryData.h"
#include "qzxml/xml/Messages.h"
#include "qzxml/xml/XmlDocument.h"
#include "qzxml/xml/XmlElement.h"
#include "qzxml/xml/XmlTextWriter.h"

// The entry points for XML. Each stands on the stack: the writer or the document of a call goes
// with it, whatever the call throws.

namespace QzXmlLib16 {
namespace {

constexpr bool kMemory = true;
constexpr bool kFile = false;

constexpr std::uint32_t kBlockSize = 65536;  // most documents fit into one

}  // namespace

void CXmlObjectBase::WriteXml(CTextStream& stream, bool declaration, bool formatted, EOLType eol,
                              const CSerializationContext& context) const {
  CXmlTextWriter writer(&stream);
  writer.StartDocument();
  writer.SetFormatted(formatted);
  writer.SetIndentChars(context.GetIndentChars());
  writer.SetEOLType(eol);
  writer.SetWriteDefaultValues(context.GetWriteDefaultElementValues());
  if (declaration) writer.WriteXmlDeclaration();
  ToXml_Int(&writer, true, GetTargetNamespace().c_str(), context, false);
  writer.EndDocument();
}

std::string CXmlObjectBase::ToXml(bool declaration, bool formatted, EOLType eol,
                                  const CSerializationContext& context) const {
  CTextStream stream(XmlEncoding_Default, kBlockSize);
  WriteXml(stream, declaration, formatted, eol, context);
  return stream.TakeText();
}

CBinaryData CXmlObjectBase::ToXmlStream(bool declaration, bool formatted, XmlEncoding encoding,
                                        EOLType eol, const CSerializationContext& context,
                                        CompressionType compression) const {
  CTextStream stream(encoding, kBlockSize);
  WriteXml(stream, declaration, formatted, eol, context);
  CBinaryData bytes;
  stream.GetEncodedData(bytes);
  CQzZip::Compress(bytes, compression);
  return bytes;
}

void CXmlObjectBase::ToXmlFile(const char* fileName, bool declaration, bool formatted,
                               XmlEncoding encoding, EOLType eol,
                               const CSerializationContext& context,
                               CompressionType compression) const {
  if (detail::IsFileWrittenInPieces(compression)) {
    CFileTextStream stream(fileName, encoding);
    WriteXml(stream, declaration, formatted, eol, context);
  } else {
    const CBinaryData bytes =
        ToXmlStream(declaration, formatted, encoding, eol, context, compression);
    CFileBinaryStream(fileName, encoding, bytes).Write();
  }
}

// Bytes in memory may be those of a value of this object.
template <bool isInMemory, typename Load>
void CXmlObjectBase::FromDocument(const CSerializationContext& context, Load load) {
  using Source = detail::CEarlyItems::Source;
  constexpr Source source = isInMemory ? Source::Memory : Source::File;
  if (m_isBound &&
      detail::CEarlyItems::Read(static_cast<CBoundClass&>(*this), context, source, load)) {
    return;
  }
  CXmlDocument document(context);
  load(document);
  CXmlObjectBase::FromXmlElement(document.GetDocumentElement(), context);
}

void CXmlObjectBase::FromXmlFile(const char* fileName, const CSerializationContext& context) {
  const std::string path = fileName != nullptr ? fileName : "";  // may be a text of this object
  FromDocument<kFile>(context, [&](CXmlDocument& document) { document.Load(path.c_str()); });
}

void CXmlObjectBase::FromXml(const wchar_t* text, const CSerializationContext& context) {
  FromDocument<kMemory>(context, [=](CXmlDocument& document) { document.LoadXml(text); });
}

void CXmlObjectBase::FromXml(const char16_t* text, const CSerializationContext& context) {
  FromDocument<kMemory>(context, [=](CXmlDocument& document) { document.LoadXml(text); });
}

void CXmlObjectBase::FromXml(const char* text, const CSerializationContext& context) {
  FromDocument<kMemory>(context, [=](CXmlDocument& document) { document.LoadXml(text); });
}

void CXmlObjectBase::FromXmlStream(const CBinaryData& data, const CSerializationContext& context) {
  FromXmlStream(data.GetData(), data.GetLength(), context);
}

void CXmlObjectBase::FromXmlStream(const BYTE* data, DWORD length,
                                   const CSerializationContext& context) {
  FromDocument<kMemory>(context,
                        [=](CXmlDocument& document) { document.LoadXmlStream(data, length); });
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
  const detail::CObjectsTogether together;
  FromXml_Int(const_cast<CXmlElement*>(element), element->GetFirstElement(), context, false);
}

}  // namespace QzXmlLib16
