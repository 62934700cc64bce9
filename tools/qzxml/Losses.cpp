#include "tools/qzxml/Losses.h"

#include <map>
#include <set>
#include <string>
#include <vector>

#include "tools/qzxml/FastInfosetNamespaces.h"
#include "tools/qzxml/NamespaceScopes.h"

namespace qztool {
namespace {

using QzXmlLib16::JsonRoundTrip;

// Text runs of an element with elements in it: where they stood is known from the format alone when
// there is one, in front of all elements, and the format puts it there.
bool IsTextInFront(const CContentElement& element) {
  bool isElementSeen = false;
  for (const CContentItem& item : element.items) {
    if (item.kind == ContentKind::Element) {
      isElementSeen = true;
    } else if (isElementSeen &&
               (item.kind == ContentKind::Text || item.kind == ContentKind::CData)) {
      return false;
    }
  }
  return true;
}

class CLossTelling {
 public:
  CLossTelling(DocumentFormat to, JsonRoundTrip roundTrip, CNotices& notices)
      : m_to(to), m_roundTrip(roundTrip), m_notices(notices) {}

  void Run(const CContentDocument& document) {
    CollectLosses(document);
    TellMessages(nullptr);
    if (m_to != DocumentFormat::Xml && !document.documentType.empty()) {
      Tell(nullptr, "the document type is not kept");
    }
    for (const CContentItem& item : document.before) TellItem(nullptr, item);
    TellElement(*document.root);
    for (const CContentItem& item : document.after) TellItem(nullptr, item);
    m_notices.Finish();
  }

 private:
  void CollectLosses(const CContentDocument& document) {
    for (const CContentLoss& loss : document.losses) {
      m_messages[loss.element].push_back(loss.message);
    }
    if (m_to != DocumentFormat::FastInfoset) return;
    for (const CContentLoss& loss : CFastInfosetNamespaces(document).losses) {
      m_messages[loss.element].push_back(loss.message);
    }
  }

  void Tell(const CContentElement* element, const std::string& message) {
    if (!m_notices.IsTold(message)) return;
    m_notices.Tell(element != nullptr ? element->GetPath() : "/", message);
  }

  void TellMessages(const CContentElement* element) {
    const auto found = m_messages.find(element);
    if (found == m_messages.end()) return;
    for (const std::string& message : found->second) Tell(element, message);
  }

  void TellElement(const CContentElement& element) {
    TellMessages(&element);
    if (m_to == DocumentFormat::Json) TellNames(element);
    const CContentShape shape(element);
    if (m_to != DocumentFormat::Xml && shape.isMixed &&
        !(m_to == DocumentFormat::FastInfoset && IsTextInFront(element))) {
      Tell(&element, "the position of text among elements is not kept");
    }
    for (const CContentItem& item : element.items) {
      if (item.kind == ContentKind::Element) {
        TellElement(*item.element);
      } else {
        TellItem(&element, item);
      }
    }
    if (m_to == DocumentFormat::Json) m_scopes.Leave();
  }

  void TellItem(const CContentElement* element, const CContentItem& item) {
    if (item.value == ValueKind::Null && m_to != DocumentFormat::Json) {
      Tell(element, "null becomes an empty element");
    }
    if (m_to == DocumentFormat::Xml) return;
    switch (item.kind) {
      case ContentKind::Comment:
        Tell(element, "a comment is not kept");
        break;
      case ContentKind::Instruction:
        Tell(element, "the processing instruction \"" +
                          item.text.substr(0, item.text.find_first_of(" \t\r\n")) +
                          "\" is not kept");
        break;
      case ContentKind::CData:
        Tell(element, "a CDATA section is kept as plain text");
        break;
      default:
        break;
    }
  }

  // ---- What only JSON loses ----

  void TellNames(const CContentElement& element) {
    const CWrittenNames names = m_scopes.Enter(element);
    std::set<std::string> members;
    TellNamespace(element, element.name->uri);
    for (const CContentAttribute& attribute : element.attributes) {
      TellNamespace(element, attribute.name->uri);
      if (m_roundTrip == JsonRoundTrip::JsonRoundTrip_Full) continue;
      const bool isNew = members.insert(attribute.name->localName).second;
      if (!isNew) TellSecond(&element, attribute.name->localName);
    }
    if (m_roundTrip == JsonRoundTrip::JsonRoundTrip_None && !element.attributes.empty() &&
        !m_isAttributeTold) {
      m_isAttributeTold = true;
      Tell(&element, "attributes can not be told from elements");
    }
    // Marked attributes have names of their own.
    if (m_roundTrip != JsonRoundTrip::JsonRoundTrip_None) members.clear();
    TellRepeated(element, members);
  }

  void TellRepeated(const CContentElement& element, std::set<std::string>& members) {
    const std::string* last = nullptr;
    for (const CContentItem& item : element.items) {
      if (item.kind != ContentKind::Element) continue;
      const bool isFull = m_roundTrip == JsonRoundTrip::JsonRoundTrip_Full;
      const std::string name =
          isFull ? m_scopes.Enter(*item.element).element : item.element->name->localName;
      if (isFull) m_scopes.Leave();
      if (last != nullptr && *last == name) continue;
      const auto [member, isNew] = members.insert(name);
      if (!isNew) TellSecond(item.element.get(), name);
      last = &*member;
    }
  }

  void TellSecond(const CContentElement* element, const std::string& name) {
    Tell(element, "the member \"" + name +
                      "\" stands in its object twice, and many readers of JSON keep one only");
  }

  void TellNamespace(const CContentElement& element, const std::string& uri) {
    if (m_roundTrip == JsonRoundTrip::JsonRoundTrip_Full || uri.empty()) return;
    if (!m_namespaces.insert(uri).second) return;
    Tell(&element, "the namespace \"" + uri + "\" is not kept");
  }

  const DocumentFormat m_to;
  const JsonRoundTrip m_roundTrip;
  CNotices& m_notices;
  CNamespaceScopes m_scopes;
  std::map<const CContentElement*, std::vector<std::string>> m_messages;
  std::set<std::string> m_namespaces;
  bool m_isAttributeTold = false;
};

}  // namespace

void TellLosses(const CContentDocument& document, DocumentFormat to, JsonRoundTrip roundTrip,
                CNotices& notices) {
  CLossTelling(to, roundTrip, notices).Run(document);
}

}  // namespace qztool
