#include <utility>

#include "qzxml/runtime/Functions.h"
#include "qzxml/runtime/TextStream.h"
#include "qzxml/values/BinaryData.h"
#include "qzxml/xml/XmlTextWriter.h"
#include "tools/qzxml/NamespaceScopes.h"
#include "tools/qzxml/Output.h"
#include "tools/qzxml/XmlCharacters.h"

// Names go to the writer as they are to stand there, prefix and all, and declarations as
// attributes; so it declares nothing of its own. It writes unformatted: what is laid out gets its
// white space here, as text, and what has text is left alone.

namespace qztool {
namespace {

using namespace QzXmlLib16;

constexpr char kCDataBegin[] = "<![CDATA[";

// The value of an attribute with all characters escaped that a reader would not give back.
std::string Escape(const std::string& value) {
  std::string escaped;
  escaped.reserve(value.size());
  for (const char c : value) {
    switch (c) {
      case '&':
        escaped += "&amp;";
        break;
      case '<':
        escaped += "&lt;";
        break;
      case '>':
        escaped += "&gt;";
        break;
      case '"':
        escaped += "&quot;";
        break;
      case '\n':
        escaped += "&#xA;";
        break;
      case '\t':
        escaped += "&#x9;";
        break;
      case '\r':
        escaped += "&#xD;";
        break;
      default:
        escaped += c;
        break;
    }
  }
  return escaped;
}

class CXmlOutput {
 public:
  CXmlOutput(const CLayout& layout, CProgress& progress)
      : m_layout(layout), m_progress(progress), m_stream(XmlEncoding_UTF8), m_writer(&m_stream) {}

  std::string Run(const CContentDocument& document) {
    m_size = document.size;
    m_writer.StartDocument();
    m_writer.SetFormatted(false);
    m_writer.WriteXmlDeclaration();
    if (!document.documentType.empty()) m_writer.WriteDirective(document.documentType);
    m_skipDefaults = !document.documentType.empty();
    for (const CContentItem& item : document.before) m_writer.WriteDirective(GetMarkup(item));
    PutElement(*document.root, m_layout.isKept, 0);
    m_writer.WriteDirective("");
    for (const CContentItem& item : document.after) m_writer.WriteDirective(GetMarkup(item));
    m_writer.EndDocument();
    CBinaryData bytes;
    m_stream.GetEncodedData(bytes);
    return std::string(reinterpret_cast<const char*>(bytes.GetData()), bytes.GetLength());
  }

 private:
  // Of a comment or a processing instruction.
  static std::string GetMarkup(const CContentItem& item) {
    return item.kind == ContentKind::Comment ? "<!--" + item.text + "-->" : "<?" + item.text + "?>";
  }

  void PutMarkup(const std::string& markup) {
    m_writer.CloseOpenStartTag();
    m_writer.WriteRawLine(markup);
  }

  void PutElement(const CContentElement& element, bool isKept, int depth) {
    m_progress.Tell(m_done += element.items.size() + 1, m_size);
    PutStartTag(element);
    const CContentShape shape(element);
    const bool isLaidOut = !isKept && !shape.isMixed && !element.isPreserved &&
                           (shape.hasElements || !shape.hasAnyText) && !element.items.empty();
    for (const CContentItem& item : element.items) {
      if (isLaidOut && item.kind == ContentKind::Text) continue;
      if (isLaidOut) PutLineEnd(depth + 1);
      PutItem(item, isKept || !isLaidOut, depth + 1);
    }
    if (isLaidOut) PutLineEnd(depth);
    m_writer.WriteEndElement();
    m_scopes.Leave();
  }

  void PutStartTag(const CContentElement& element) {
    const CWrittenNames names = m_scopes.Enter(element);
    m_writer.WriteStartElement(names.element, "");
    for (const CContentDeclaration& declaration : names.declarations) {
      PutAttribute(declaration.prefix.empty() ? "xmlns" : "xmlns:" + declaration.prefix,
                   declaration.uri);
    }
    for (std::size_t i = 0; i < names.attributes.size(); ++i) {
      const CContentAttribute& attribute = element.attributes[i];
      if (!m_skipDefaults || !attribute.isDefault) {
        PutAttribute(names.attributes[i], attribute.value);
      }
    }
  }

  // A tab or a carriage return is a blank to those who read an attribute, unless it is escaped.
  void PutAttribute(const std::string& name, const std::string& value) {
    if (value.find_first_of("\t\r") == std::string::npos) {
      return m_writer.WriteAttribute(name, "", value, ItemType_string);
    }
    m_writer.WriteRawLine(' ' + name + "=\"" + Escape(value) + '"');
  }

  void PutItem(const CContentItem& item, bool isKept, int depth) {
    switch (item.kind) {
      case ContentKind::Element:
        PutElement(*item.element, isKept, depth);
        break;
      case ContentKind::Text:
        PutText(item.text);
        break;
      case ContentKind::CData:
        PutCData(item.text);
        break;
      default:
        PutMarkup(GetMarkup(item));
        break;
    }
  }

  // The writer drops carriage returns, and takes a text that begins as a CDATA section for one.
  void PutText(const std::string& text) {
    std::size_t at = 0;
    for (;;) {
      const std::size_t end = text.find('\r', at);
      std::string piece = text.substr(at, end - at);
      if (piece.compare(0, sizeof(kCDataBegin) - 1, kCDataBegin) == 0) {
        m_writer.WriteText("<", ItemType_string, false);
        piece.erase(0, 1);
      }
      m_writer.WriteText(piece, ItemType_string, false);
      if (end == std::string::npos) return;
      PutMarkup("&#xD;");
      at = end + 1;
    }
  }

  void PutCData(std::string text) {
    if (text.find('\r') != std::string::npos) return PutText(text);
    ReplaceAll(text, "]]>", "]]]]><![CDATA[>");
    m_writer.WriteText(kCDataBegin + text + "]]>", ItemType_string, false);
  }

  void PutLineEnd(int depth) {
    if (m_layout.indent == 0) return;
    m_writer.WriteText('\n' + std::string(static_cast<std::size_t>(depth * m_layout.indent), ' '),
                       ItemType_string, false);
  }

  const CLayout m_layout;
  CProgress& m_progress;
  CTextStream m_stream;
  CXmlTextWriter m_writer;
  CNamespaceScopes m_scopes;
  std::uint64_t m_size = 0;
  std::uint64_t m_done = 0;
  bool m_skipDefaults = false;
};

}  // namespace

std::string WriteXml(const CContentDocument& document, const CLayout& layout, CProgress& progress) {
  return CXmlOutput(layout, progress).Run(document);
}

}  // namespace qztool
