#include "qzxml/fastinfoset/FastInfosetContext.h"
#include "qzxml/fastinfoset/FastInfosetWriter.h"
#include "qzxml/runtime/BinaryStream.h"
#include "qzxml/values/BinaryData.h"
#include "tools/qzxml/FastInfosetNamespaces.h"
#include "tools/qzxml/Output.h"

namespace qztool {
namespace {

using namespace QzXmlLib16;

class CFastInfosetOutput {
 public:
  explicit CFastInfosetOutput(CProgress& progress)
      : m_progress(progress), m_writer(&m_options, &m_stream) {}

  std::string Run(const CContentDocument& document) {
    const CFastInfosetNamespaces namespaces(document);
    m_writer.StartDocument();
    m_writer.WriteHeader(FInfoDecl_None);
    if (!namespaces.defaultUri.empty()) m_writer.SetDefaultNamespace(namespaces.defaultUri);
    for (const auto& [uri, prefix] : namespaces.prefixes) {
      m_writer.AddNamespaceMapping(prefix, uri);
    }
    m_size = document.size;
    PutElement(*document.root);
    m_writer.WriteDocumentEnd();
    m_writer.EndDocument();
    const CBinaryData bytes = m_stream.GetData();
    return std::string(reinterpret_cast<const char*>(bytes.GetData()), bytes.GetLength());
  }

 private:
  // The writer puts a text that stands behind an element into that element; so texts go first.
  void PutElement(const CContentElement& element) {
    m_progress.Tell(m_done += element.items.size() + 1, m_size);
    m_writer.WriteStartElement(element.name->localName, element.name->uri);
    for (const CContentAttribute& attribute : element.attributes) {
      m_writer.WriteAttribute(attribute.name->localName, attribute.name->uri, attribute.value,
                              ItemType_string);
    }
    m_writer.WriteText(GetJoinedText(element), ItemType_string, false);
    for (const CContentItem& item : element.items) {
      if (item.element != nullptr) PutElement(*item.element);
    }
    m_writer.WriteEndElement();
  }

  CProgress& m_progress;
  CFastInfosetContext m_options;
  CBinaryStream m_stream;
  CFastInfosetWriter m_writer;
  std::uint64_t m_size = 0;
  std::uint64_t m_done = 0;
};

}  // namespace

std::string WriteFastInfoset(const CContentDocument& document, CProgress& progress) {
  return CFastInfosetOutput(progress).Run(document);
}

}  // namespace qztool
