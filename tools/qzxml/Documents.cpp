#include "tools/qzxml/Documents.h"

#include "tools/qzxml/Failure.h"
#include "tools/qzxml/FastInfosetDecoder.h"
#include "tools/qzxml/XmlReader.h"

namespace qztool {

void ReadContent(const CInput& input, const CJsonReading& json, CContentDocument& document,
                 CProgress& progress) {
  progress.Begin("reading " + input.name);
  try {
    switch (input.format) {
      case DocumentFormat::Xml:
        ReadXml(input.octets, document, progress);
        break;
      case DocumentFormat::FastInfoset:
        CFastInfosetDecoder(input.octets, document).Run(progress);
        break;
      case DocumentFormat::Json:
        ReadJson(input.octets, json, document, progress);
        break;
    }
  } catch (const CDocumentFailure& e) {
    throw CFailure(ExitCode_Document, input.name + ": " + e.what());
  }
}

}  // namespace qztool
