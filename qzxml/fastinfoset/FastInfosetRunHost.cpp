#include "qzxml/fastinfoset/FastInfosetRunHost.h"

#include <memory>

#include "qzxml/fastinfoset/FIWritingTables.h"
#include "qzxml/fastinfoset/FastInfosetName.h"
#include "qzxml/fastinfoset/FastInfosetWriter.h"
#include "qzxml/fastinfoset/FastInfosetWriterEntry.h"
#include "qzxml/fastinfoset/FastInfosetWriterNames.h"
#include "qzxml/platform/DebugChannel.h"
#include "qzxml/xml/XmlWriterContext.h"

namespace QzXmlLib16 {

using namespace detail;

class CFastInfosetWriter::CTableEntry::CRunHost final : public FastInfosetRunHost {
 public:
  explicit CRunHost(CFastInfosetWriter& writer) : m_writer(writer) {}

  // ---- Short ways ----

  bool PutTextElement(const ElementTags& name, const std::string& uri, const std::string& text,
                      ItemType type) override {
    return m_writer.CFastInfosetWriter::PutTextElement(name, uri, text, type);
  }
  bool PutValueElement(const ElementTags& name, const std::string& uri, const QzVariant& value,
                       const std::string& format) override {
    return m_writer.CFastInfosetWriter::PutValueElement(name, uri, value, format);
  }
  bool PutValueAttribute(const AttributeTag& name, const QzVariant& value,
                         const std::string& format) override {
    return m_writer.CFastInfosetWriter::PutValueAttribute(name, value, format);
  }

  // ---- Runs ----

  Parts GetParts() override {
    CFIWritingTables& tables = *m_writer.m_pTables;
    return {m_writer.m_pOptions, &tables.names, &tables.integers, &tables.maps,
            CFIVocabulary::kMaxEntries};
  }

  Place Lend() override {
    Place place;
    place.isPending = m_writer.m_pPendingContext != nullptr;
    place.innermost = place.isPending ? m_writer.m_pPendingContext : m_writer.m_pContext;
    place.isHalfPending = m_writer.m_bHalfTerminatorPending;
    // What is traced is what the writer's own calls do.
    if (place.innermost == nullptr || GetDebugChannel() != nullptr) return place;
    char* const piece = m_writer.m_pPiece;
    place.out = piece + m_writer.m_pieceSize;
    place.limit = piece + m_writer.m_pieceRoom;
    return place;
  }

  void TakeBack(const Place& place) override {
    if (place.out == nullptr) return;
    m_writer.EndPiece(place.out);
    m_writer.m_bHalfTerminatorPending = place.isHalfPending;
  }

  void NextPiece() override { m_writer.NextPiece(); }
  void WritePending(bool hasAttributes) override { m_writer.FlushPendingElement(hasAttributes); }
  void StartElement(const std::string& name, const std::string& uri) override {
    m_writer.CFastInfosetWriter::WriteStartElement(name, uri);
  }
  void EndElement() override { m_writer.CFastInfosetWriter::WriteEndElement(); }

  Context* OpenElement(const std::string& name, const std::string& uri, bool isPending) override {
    Context* const context = m_writer.OpenContext(name, uri);
    (isPending ? m_writer.m_pPendingContext : m_writer.m_pContext) = context;
    return context;
  }

  std::string_view FormKey(const std::string& prefix, const FastInfosetName& name) override {
    return CFIVocabulary::FormKey(prefix, name.GetUri(), name.GetName(), m_writer.m_pTables->key);
  }

 private:
  CFastInfosetWriter& m_writer;
};

std::unique_ptr<FastInfosetRunHost> CFastInfosetWriter::CTableEntry::NewRunHost(
    CFastInfosetWriter& writer) {
  return std::make_unique<CRunHost>(writer);
}

}  // namespace QzXmlLib16
