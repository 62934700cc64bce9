#include "tools/qzxml/Content.h"

#include <algorithm>
#include <utility>

#include "qzxml/runtime/Functions.h"
#include "tools/qzxml/Failure.h"
#include "tools/qzxml/XmlCharacters.h"

namespace qztool {
namespace {

constexpr std::string_view kXmlNamespace = "http://www.w3.org/XML/1998/namespace";
constexpr std::string_view kXmlnsNamespace = "http://www.w3.org/2000/xmlns/";
constexpr std::uint64_t kFreeGrowth = std::uint64_t{8} << 20;
constexpr std::size_t kElementCost = 32;  // octets that an element counts for beside its name

// The number of an element among its siblings of the same name, or 0 where it is the only one.
std::size_t GetNumber(const CContentElement& element) {
  if (element.parent == nullptr) return 0;
  const CContentName& own = *element.name;
  std::size_t count = 0;
  std::size_t number = 0;
  for (const CContentItem& item : element.parent->items) {
    if (item.element == nullptr) continue;
    const CContentName& name = *item.element->name;
    if (&name != &own && (name.localName != own.localName || name.prefix != own.prefix)) continue;
    ++count;
    if (item.element.get() == &element) number = count;
  }
  return count > 1 ? number : 0;
}

}  // namespace

std::string CContentElement::GetPath() const {
  std::vector<std::string> steps;
  for (const CContentElement* element = this; element != nullptr; element = element->parent) {
    const std::size_t number = GetNumber(*element);
    steps.push_back('/' + element->name->GetQName() +
                    (number != 0 ? '[' + std::to_string(number) + ']' : std::string()));
  }
  std::string path;
  for (auto step = steps.rbegin(); step != steps.rend(); ++step) path += *step;
  return path;
}

CContentShape::CContentShape(const CContentElement& element) {
  for (const CContentItem& item : element.items) {
    if (item.kind == ContentKind::Element) hasElements = true;
    if (item.kind == ContentKind::Text || item.kind == ContentKind::CData) {
      hasAnyText = true;
      const bool isSaid = item.kind == ContentKind::CData && !item.text.empty();
      hasText = hasText || isSaid || !IsWhiteSpace(item.text);
    }
  }
  isMixed = hasElements && (hasText || (hasAnyText && element.isPreserved));
}

const CContentName* CContentDocument::GetName(std::string_view prefix, std::string_view localName,
                                              std::string_view uri) {
  std::string key;
  key.reserve(prefix.size() + localName.size() + uri.size() + 2);
  key.append(prefix).append(1, '\1').append(localName).append(1, '\1').append(uri);
  const auto found = m_names.find(key);
  if (found != m_names.end()) return &found->second;
  CContentName name{std::string(prefix), std::string(localName), std::string(uri)};
  return &m_names.emplace(std::move(key), std::move(name)).first->second;
}

// ---- The builder ----

CContentBuilder::CContentBuilder(CContentDocument& document, std::uint64_t inputSize,
                                 bool isTrusted)
    : m_document(document),
      m_maxSize(std::max(kFreeGrowth, inputSize * kMaxGrowth)),
      m_isTrusted(isTrusted) {}

void CContentBuilder::Fail(const std::string& message) const {
  throw CDocumentFailure(GetPath(), m_place ? message + m_place() : message);
}

void CContentBuilder::Lose(std::string message) {
  m_document.losses.push_back({m_open, std::move(message)});
}

void CContentBuilder::Count(std::size_t octets) {
  m_size += octets;
  if (m_size <= m_maxSize) return;
  Fail(QzXmlLib16::FormatString("The document grows past %d times its size",
                                static_cast<int>(kMaxGrowth)));
}

void CContentBuilder::CheckName(std::string_view name) const {
  if (!m_isTrusted && !IsNCName(std::string(name))) {
    Fail("\"" + std::string(name) + "\" can not be a name in XML");
  }
}

void CContentBuilder::CheckQName(std::string_view prefix, std::string_view localName,
                                 std::string_view uri) const {
  if (m_isTrusted) return;
  if (!prefix.empty()) CheckName(prefix);
  CheckName(localName);
  CheckText(std::string(uri));
  if (prefix == "xmlns") Fail("the prefix \"xmlns\" can not be used");
  if (!prefix.empty() && uri.empty()) {
    Fail("the prefix \"" + std::string(prefix) + "\" stands for no namespace");
  }
}

void CContentBuilder::CheckText(const std::string& text) const {
  if (m_isTrusted) return;
  const std::size_t at = FindNoXmlCharacter(text);
  if (at == std::string::npos) return;
  const std::size_t length = GetCharacterLength(text, at);
  if (length == 0) {
    Fail(QzXmlLib16::FormatString("the octet 0x%02X is no text in UTF-8",
                                  static_cast<unsigned>(static_cast<unsigned char>(text[at]))));
  }
  Fail(QzXmlLib16::FormatString("the character U+%04X can not stand in XML",
                                static_cast<unsigned>(GetCharacter(text, at, length))));
}

std::vector<CContentItem>& CContentBuilder::GetItems() {
  if (m_open != nullptr) {
    EndStartTag();
    ++m_document.size;
    return m_open->items;
  }
  return m_document.root == nullptr ? m_document.before : m_document.after;
}

void CContentBuilder::StartElement(std::string_view prefix, std::string_view localName,
                                   std::string_view uri) {
  EndStartTag();
  if (m_depth == kMaxDepth) {
    Fail(QzXmlLib16::FormatString("The document exceeds the depth limit of %d elements",
                                  static_cast<int>(kMaxDepth)));
  }
  if (m_open == nullptr && m_document.root != nullptr) Fail("the document has two roots");
  CheckQName(prefix, localName, uri);
  Count(localName.size() + uri.size() + kElementCost);
  auto element = std::make_unique<CContentElement>();
  element->name = m_document.GetName(prefix, localName, uri);
  element->parent = m_open;
  element->isPreserved = m_open != nullptr && m_open->isPreserved;
  CContentElement* const started = element.get();
  if (m_open == nullptr) {
    m_document.root = std::move(element);
  } else {
    m_open->items.push_back({ContentKind::Element, ValueKind::Text, "", std::move(element)});
    ++m_document.size;
  }
  ++m_document.size;
  m_open = started;
  ++m_depth;
  m_isTextOpen = false;
  m_isStartTagOpen = true;
}

void CContentBuilder::AddDeclaration(std::string_view prefix, std::string_view uri) {
  if (!m_isTrusted) {
    CheckQName(prefix, prefix.empty() ? "xmlns" : prefix, uri);
    const bool isReserved = uri == kXmlnsNamespace || (uri == kXmlNamespace && prefix != "xml");
    if (isReserved) {
      Fail("the prefix \"" + std::string(prefix) + "\" can not be declared for \"" +
           std::string(uri) + '"');
    }
  }
  Count(prefix.size() + uri.size());
  m_open->declarations.push_back({std::string(prefix), std::string(uri)});
}

void CContentBuilder::AddAttribute(std::string_view prefix, std::string_view localName,
                                   std::string_view uri, std::string value, ValueKind kind,
                                   bool isDefault) {
  CheckQName(prefix, localName, uri);
  CheckText(value);
  if (!m_isTrusted && prefix.empty() && localName == "xmlns") {
    Fail("an attribute can not have the name \"xmlns\"");
  }
  Count(localName.size() + uri.size() + value.size());
  const CContentName* const name = m_document.GetName(prefix, localName, uri);
  if (uri == kXmlNamespace && localName == "space") m_open->isPreserved = value == "preserve";
  m_open->attributes.push_back({name, std::move(value), kind, isDefault});
}

// Two attributes of one name, or two declarations of one prefix, would be no XML.
void CContentBuilder::EndStartTag() {
  if (!m_isStartTagOpen) return;
  m_isStartTagOpen = false;
  if (m_isTrusted || m_open->attributes.size() + m_open->declarations.size() < 2) return;
  std::vector<std::pair<std::string_view, std::string_view>> names;
  for (const CContentAttribute& attribute : m_open->attributes) {
    names.emplace_back(attribute.name->uri, attribute.name->localName);
  }
  for (const CContentDeclaration& declaration : m_open->declarations) {
    names.emplace_back("xmlns", declaration.prefix);
  }
  std::sort(names.begin(), names.end());
  const auto twice = std::adjacent_find(names.begin(), names.end());
  if (twice == names.end()) return;
  if (twice->first == "xmlns") {
    Fail("the prefix \"" + std::string(twice->second) + "\" is declared twice");
  }
  Fail("the attribute \"" + std::string(twice->second) + "\" stands there twice");
}

void CContentBuilder::AddText(std::string_view text, ContentKind kind, ValueKind value) {
  if (m_open == nullptr) {
    if (IsWhiteSpace(std::string(text))) return;
    Fail("text stands outside the root");
  }
  std::vector<CContentItem>& items = GetItems();
  Count(text.size());
  const bool goesOn =
      m_isTextOpen && !items.empty() && items.back().kind == kind && items.back().value == value;
  if (goesOn) {
    --m_document.size;  // GetItems has counted an item
  } else {
    items.push_back({kind, value, "", nullptr});
  }
  items.back().text.append(text);
  m_isTextOpen = true;
  if (!m_isTrusted) CheckText(std::string(text));
}

void CContentBuilder::AddComment(std::string_view text) {
  std::string comment(text);
  CheckText(comment);
  if (!m_isTrusted &&
      (comment.find("--") != std::string::npos || (!comment.empty() && comment.back() == '-'))) {
    Fail("a comment with \"--\" in it can not be had in XML");
  }
  Count(text.size());
  GetItems().push_back({ContentKind::Comment, ValueKind::Text, std::move(comment), nullptr});
  m_isTextOpen = false;
}

void CContentBuilder::AddInstruction(std::string_view target, std::string_view data) {
  CheckName(target);
  std::string text(target);
  if (!data.empty()) text.append(1, ' ').append(data);
  CheckText(text);
  if (!m_isTrusted && text.find("?>") != std::string::npos) {
    Fail("a processing instruction with \"?>\" in it can not be had in XML");
  }
  Count(text.size());
  GetItems().push_back({ContentKind::Instruction, ValueKind::Text, std::move(text), nullptr});
  m_isTextOpen = false;
}

void CContentBuilder::EndElement() {
  EndStartTag();
  m_open = m_open->parent;
  --m_depth;
  m_isTextOpen = false;
}

void CContentBuilder::EndDocument() {
  if (m_document.root == nullptr) Fail("the document has no root");
}

}  // namespace qztool
