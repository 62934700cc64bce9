#include <cstdint>

#include "tools/qzxml/NamespaceScopes.h"
#include "tools/qzxml/Output.h"

// CJsonTextWriter serves callers who know its texts: quotes stand bare there, an empty element is a
// key without a value, an array goes on to the end of its object. So JSON that anybody can read is
// put together here.

namespace qztool {
namespace {

using namespace QzXmlLib16;

class CJsonOutput {
 public:
  CJsonOutput(const CLayout& layout, JsonRoundTrip roundTrip, CProgress& progress)
      : m_indent(layout.indent), m_roundTrip(roundTrip), m_progress(progress) {}

  std::string Run(const CContentDocument& document) {
    const CContentElement& root = *document.root;
    m_size = document.size;
    m_text += '{';
    PutLineEnd(1);
    Element element(root, m_scopes);
    PutKey(GetName(element));
    PutElement(element, false, 1);
    PutLineEnd(0);
    m_text += "}\n";
    return std::move(m_text);
  }

 private:
  // An element with the names under which it is written, as long as those are known.
  struct Element {
    Element(const CContentElement& e, CNamespaceScopes& s)
        : content(e), scopes(s), names(s.Enter(e)) {}
    Element(const Element&) = delete;
    Element& operator=(const Element&) = delete;
    ~Element() { scopes.Leave(); }
    const CContentElement& content;
    CNamespaceScopes& scopes;
    CWrittenNames names;
  };

  bool IsFull() const { return m_roundTrip == JsonRoundTrip_Full; }
  bool IsMarked() const { return m_roundTrip != JsonRoundTrip_None; }

  std::string GetName(const Element& element) const {
    return IsFull() ? element.names.element : element.content.name->localName;
  }

  // Whether nothing but the text would be written of it.
  bool IsPlain(const Element& element) const {
    if (!element.content.attributes.empty()) return false;
    if (IsFull() && !element.names.declarations.empty()) return false;
    for (const CContentItem& item : element.content.items) {
      if (item.kind == ContentKind::Element) return false;
    }
    return true;
  }

  void PutElement(const Element& element, bool isItem, int depth) {
    m_progress.Tell(m_done += element.content.items.size() + 1, m_size);
    if (IsPlain(element) && !(isItem && IsMarked())) return PutText(element.content);
    m_isFirst = true;
    m_text += '{';
    PutAttributes(element, depth + 1);
    const bool hasChildren = PutChildren(element, depth + 1);
    const std::string text = GetJoinedText(element.content);
    if (!text.empty() || (!hasChildren && IsMarked())) {
      BeginMember(depth + 1);
      PutKey(IsMarked() ? "#text" : "");
      PutText(element.content);
    }
    PutLineEnd(depth);
    m_text += '}';
  }

  void PutAttributes(const Element& element, int depth) {
    if (IsFull()) {
      for (const CContentDeclaration& declaration : element.names.declarations) {
        BeginMember(depth);
        PutKey(declaration.prefix.empty() ? "@xmlns" : "@xmlns:" + declaration.prefix);
        PutString(declaration.uri);
      }
    }
    for (std::size_t i = 0; i < element.content.attributes.size(); ++i) {
      const CContentAttribute& attribute = element.content.attributes[i];
      const std::string& name = IsFull() ? element.names.attributes[i] : attribute.name->localName;
      BeginMember(depth);
      PutKey(IsMarked() ? '@' + name : name);
      PutValue(attribute.value, attribute.kind);
    }
  }

  // Elements of one name that follow each other are the items of an array.
  bool PutChildren(const Element& element, int depth) {
    bool isAny = false;
    std::string name;
    std::size_t count = 0;
    const std::vector<CContentItem>& items = element.content.items;
    for (std::size_t i = 0; i < items.size(); ++i) {
      if (items[i].kind != ContentKind::Element) continue;
      isAny = true;
      const Element child(*items[i].element, m_scopes);
      const std::string childName = GetName(child);
      if (count > 0 && childName == name) {
        m_text += ',';
        PutLineEnd(depth + 1);
      } else {
        EndArray(count, depth);
        BeginMember(depth);
        PutKey(childName);
        name = childName;
        count = IsRepeated(element.content, i, childName) ? 1 : 0;
        if (count > 0) {
          m_text += '[';
          PutLineEnd(depth + 1);
        }
      }
      PutElement(child, count > 0, count > 0 ? depth + 1 : depth);
      m_isFirst = false;
    }
    EndArray(count, depth);
    return isAny;
  }

  void EndArray(std::size_t count, int depth) {
    if (count == 0) return;
    PutLineEnd(depth);
    m_text += ']';
  }

  // Whether the element behind the given one has the same name.
  bool IsRepeated(const CContentElement& parent, std::size_t at, const std::string& name) {
    for (std::size_t i = at + 1; i < parent.items.size(); ++i) {
      if (parent.items[i].kind != ContentKind::Element) continue;
      return GetName(Element(*parent.items[i].element, m_scopes)) == name;
    }
    return false;
  }

  // ---- Texts ----

  void PutText(const CContentElement& element) {
    const bool isOne = element.items.size() == 1 && element.items[0].kind == ContentKind::Text;
    if (isOne) return PutValue(element.items[0].text, element.items[0].value);
    PutString(GetJoinedText(element));
  }

  void PutValue(const std::string& text, ValueKind kind) {
    switch (kind) {
      case ValueKind::Text:
        PutString(text);
        break;
      case ValueKind::Null:
        m_text += "null";
        break;
      default:
        m_text += text;
        break;
    }
  }

  void PutString(const std::string& text) {
    m_text += '"';
    for (const char c : text) {
      switch (c) {
        case '"':
          m_text += "\\\"";
          break;
        case '\\':
          m_text += "\\\\";
          break;
        case '\n':
          m_text += "\\n";
          break;
        case '\r':
          m_text += "\\r";
          break;
        case '\t':
          m_text += "\\t";
          break;
        default:
          m_text += c;
          break;
      }
    }
    m_text += '"';
  }

  void PutKey(const std::string& name) {
    PutString(name);
    m_text += m_indent == 0 ? ":" : ": ";
  }

  void BeginMember(int depth) {
    if (!m_isFirst) m_text += ',';
    m_isFirst = false;
    PutLineEnd(depth);
  }

  void PutLineEnd(int depth) {
    if (m_indent == 0) return;
    m_text += '\n';
    m_text.append(static_cast<std::size_t>(depth * m_indent), ' ');
  }

  const int m_indent;
  const JsonRoundTrip m_roundTrip;
  CProgress& m_progress;
  CNamespaceScopes m_scopes;
  std::string m_text;
  std::uint64_t m_size = 0;
  std::uint64_t m_done = 0;
  bool m_isFirst = true;  // the next member is the first one of its object
};

}  // namespace

std::string GetJoinedText(const CContentElement& element) {
  const CContentShape shape(element);
  std::string text;
  if (shape.hasElements && !shape.isMixed) return text;
  for (const CContentItem& item : element.items) {
    if (item.kind == ContentKind::Text || item.kind == ContentKind::CData) text += item.text;
  }
  return text;
}

std::string WriteJson(const CContentDocument& document, const CLayout& layout,
                      JsonRoundTrip roundTrip, CProgress& progress) {
  return CJsonOutput(layout, roundTrip, progress).Run(document);
}

}  // namespace qztool
