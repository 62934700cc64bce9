#include <cstdint>
#include <string>

#include "qzxml/json/JsonReaderToXmlHandler.h"
#include "qzxml/json/JsonTextReader.h"
#include "qzxml/runtime/Encoder.h"
#include "qzxml/runtime/TextStream.h"
#include "qzxml/values/BinaryData.h"
#include "qzxml/xml/GrowthBound.h"
#include "qzxml/xml/XmlTextWriter.h"

// The way from JSON text to XML text, all of it in memory.

namespace QzXmlLib16 {
namespace {

// Watches how much XML comes of the text. A name counts once there and can be written any number of
// times, for each object of an array; an element that is left open indents all that follow.
class CBoundedHandler final : public CJsonReaderToXmlHandler {
 public:
  CBoundedHandler(CXmlTextWriter* writer, const CTextStream* stream, const std::string& jsonText,
                  const CSerializationContext& context, IErrorPathProvider* errorPathProvider)
      : CJsonReaderToXmlHandler(writer, context.GetJsonContext().GetSupportRoundtrip(),
                                errorPathProvider),
        m_pStream(stream) {
    m_growth.Begin(context.GetMaxAmplification());
    m_growth.SetInputOctets(jsonText.size());
  }

  void Name(const std::string& name) override {
    CJsonReaderToXmlHandler::Name(name);
    CheckGrowth();
  }

  void StartObject() override {
    CJsonReaderToXmlHandler::StartObject();
    CheckGrowth();
  }

 private:
  void CheckGrowth() {
    const std::uint32_t length = m_pStream->GetLength();
    m_growth.Count(length - m_dwCounted);
    m_dwCounted = length;
  }

  const CTextStream* m_pStream;  // not owned
  std::uint32_t m_dwCounted = 0;
  detail::CGrowthBound m_growth;
};

}  // namespace

CBinaryData JsonToXml(const std::string& jsonText, const CSerializationContext& context) {
  CTextStream stream(XmlEncoding_UTF8);
  CXmlTextWriter writer(&stream);
  writer.StartDocument();
  CJsonTextReader reader(jsonText);
  reader.SetHandler(
      new CBoundedHandler(&writer, &stream, jsonText, context, reader.GetErrorPathProvider()));
  const CJsonContext& options = context.GetJsonContext();
  reader.SetAllowComments(options.GetAllowComments());
  reader.SetRootElementName(options.GetRootElementName().c_str());
  reader.Parse();
  writer.EndDocument();
  CBinaryData xml = LocalToUtf8(stream.GetBuffer());
  detail::CInputOrigin::Tell(xml.GetData(), jsonText.size());
  return xml;
}

}  // namespace QzXmlLib16
