#include "qzxml/fastinfoset/FastInfosetWriter.h"
#include "qzxml/runtime/BinaryStream.h"
#include "qzxml/runtime/QzZip.h"
#include "qzxml/serialization/FileOutput.h"
#include "qzxml/serialization/XmlObjectBase.h"
#include "qzxml/values/BinaryData.h"

// The entry points that write Fast Infoset, step by step as those of XML.

namespace QzXmlLib16 {

CBinaryData CXmlObjectBase::ToFastInfosetStream(FInfoDecl declaration,
                                                const CSerializationContext& context,
                                                CompressionType compression) const {
  CBinaryStream stream;
  CFastInfosetWriter writer(&context.GetFIContext(), &stream);
  writer.StartDocument();
  writer.WriteHeader(declaration);
  ToXml_Int(&writer, true, GetTargetNamespace().c_str(), context, false);
  writer.WriteDocumentEnd();
  writer.EndDocument();
  CBinaryData bytes = stream.GetData();
  CQzZip::Compress(bytes, compression);
  return bytes;
}

void CXmlObjectBase::ToFastInfosetFile(const char* fileName, FInfoDecl declaration,
                                       const CSerializationContext& context,
                                       CompressionType compression) const {
  detail::RequireFileCompression(compression);
  const CBinaryData bytes = ToFastInfosetStream(declaration, context, compression);
  CFileBinaryStream(fileName, XmlEncoding_Default, bytes).Write();
}

}  // namespace QzXmlLib16
