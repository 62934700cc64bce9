#include "qzxml/json/JsonContext.h"
#include "qzxml/json/JsonTextWriter.h"
#include "qzxml/runtime/BinaryStream.h"
#include "qzxml/runtime/FileTextStream.h"
#include "qzxml/runtime/QzZip.h"
#include "qzxml/runtime/TextStream.h"
#include "qzxml/serialization/FileOutput.h"
#include "qzxml/serialization/XmlObjectBase.h"
#include "qzxml/values/BinaryData.h"

// The entry points that write JSON, step by step as those of XML.

namespace QzXmlLib16 {

void CXmlObjectBase::WriteJson(CTextStream& stream, bool formatted, EOLType eol,
                               const CSerializationContext& context) const {
  CJsonTextWriter writer(&stream);
  writer.StartDocument();
  writer.SetFormatted(formatted);
  writer.SetIndentChars(context.GetIndentChars().c_str());
  writer.SetEOLType(eol);
  writer.SetRoundtrip(context.GetJsonContext().GetSupportRoundtrip());
  writer.WriteDocumentStart();
  ToXml_Int(&writer, true, GetTargetNamespace().c_str(), context, false);
  writer.WriteDocumentEnd();
  writer.EndDocument();
}

std::string CXmlObjectBase::ToJson(bool formatted, EOLType eol,
                                   const CSerializationContext& context) const {
  CTextStream stream(XmlEncoding_Default);
  WriteJson(stream, formatted, eol, context);
  return stream.TakeText();
}

CBinaryData CXmlObjectBase::ToJsonStream(bool formatted, XmlEncoding encoding, EOLType eol,
                                         const CSerializationContext& context,
                                         CompressionType compression) const {
  CTextStream stream(encoding);
  WriteJson(stream, formatted, eol, context);
  CBinaryData bytes;
  stream.GetEncodedData(bytes);
  CQzZip::Compress(bytes, compression);
  return bytes;
}

void CXmlObjectBase::ToJsonFile(const char* fileName, bool formatted, XmlEncoding encoding,
                                EOLType eol, const CSerializationContext& context,
                                CompressionType compression) const {
  if (detail::IsFileWrittenInPieces(compression)) {
    CFileTextStream stream(fileName, encoding);
    WriteJson(stream, formatted, eol, context);
  } else {
    const CBinaryData bytes = ToJsonStream(formatted, encoding, eol, context, compression);
    CFileBinaryStream(fileName, encoding, bytes).Write();
  }
}

}  // namespace QzXmlLib16
