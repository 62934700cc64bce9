#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

// A document with everything in it, in the order in which it stood: what CXmlDocument, which serves
// objects, leaves out is here as well, the places of texts among elements, comments and processing
// instructions. The readers of the three formats build it and the writers walk over it.
namespace qztool {

struct CContentName {
  std::string prefix;  // "" for none
  std::string localName;
  std::string uri;  // "" for no namespace

  std::string GetQName() const { return prefix.empty() ? localName : prefix + ':' + localName; }
};

// What a text was in JSON; documents of other formats have texts only.
enum class ValueKind : unsigned char { Text, Number, Boolean, Null };

struct CContentAttribute {
  const CContentName* name;  // of the document
  std::string value;
  ValueKind kind;
  bool isDefault;  // not in the document itself, but in its document type
};

struct CContentDeclaration {
  std::string prefix;  // "" for the default namespace
  std::string uri;     // "" for none
};

enum class ContentKind : unsigned char {
  Element,
  Text,
  CData,        // text that was marked as such
  Comment,      // without its marks
  Instruction,  // the target, a blank and the data, without the marks
};

struct CContentElement;

struct CContentItem {
  ContentKind kind;
  ValueKind value;
  std::string text;  // of all but an element
  std::unique_ptr<CContentElement> element;
};

struct CContentElement {
  const CContentName* name = nullptr;  // of the document
  CContentElement* parent = nullptr;   // null for the root
  std::vector<CContentDeclaration> declarations;
  std::vector<CContentAttribute> attributes;
  std::vector<CContentItem> items;
  bool isPreserved = false;  // xml:space="preserve" holds here

  // "/" and a step for each element from the root to this one: its qualified name, and its number
  // among its siblings of that name in brackets where there is more than one.
  std::string GetPath() const;
};

// What an element has in it.
struct CContentShape {
  explicit CContentShape(const CContentElement& element);
  bool hasElements = false;
  bool hasText = false;     // other than white space
  bool hasAnyText = false;  // or white space
  bool isMixed = false;     // text among elements, white space only where xml:space preserves it
};

// A place where the document itself was not had whole.
struct CContentLoss {
  const CContentElement* element;  // null for the document
  std::string message;
};

class CContentDocument {
 public:
  CContentDocument() = default;
  CContentDocument(const CContentDocument&) = delete;
  CContentDocument& operator=(const CContentDocument&) = delete;

  // Each name once, in the memory of the document.
  const CContentName* GetName(std::string_view prefix, std::string_view localName,
                              std::string_view uri);

  std::string documentType;          // the whole declaration; "" for none
  std::vector<CContentItem> before;  // of the root: comments and processing instructions
  std::unique_ptr<CContentElement> root;
  std::vector<CContentItem> after;
  std::vector<CContentLoss> losses;
  std::uint64_t size = 0;  // elements, and items of elements, for those who tell of progress

 private:
  std::map<std::string, CContentName, std::less<>> m_names;
};

// Builds a document from its beginning to its end. Where content is not trusted, because no parser
// of XML has read it, it is checked to be such that XML can hold it.
class CContentBuilder {
 public:
  // Elements inside each other, and how often its own size, above 8 MiB, a document may grow:
  // the bounds that CSerializationContext has by default.
  static constexpr unsigned kMaxDepth = 1024;
  static constexpr std::uint64_t kMaxGrowth = 100;

  CContentBuilder(CContentDocument& document, std::uint64_t inputSize, bool isTrusted);

  // Where the reader is, for the end of messages: " at offset 12".
  void SetPlace(std::function<std::string()> place) { m_place = std::move(place); }

  // All throw CDocumentFailure with the path of the innermost open element, and the place.
  void StartElement(std::string_view prefix, std::string_view localName, std::string_view uri);
  void AddDeclaration(std::string_view prefix, std::string_view uri);
  void AddAttribute(std::string_view prefix, std::string_view localName, std::string_view uri,
                    std::string value, ValueKind kind = ValueKind::Text, bool isDefault = false);
  void AddText(std::string_view text, ContentKind kind = ContentKind::Text,
               ValueKind value = ValueKind::Text);
  void AddComment(std::string_view text);
  void AddInstruction(std::string_view target, std::string_view data);
  void EndElement();
  // Behind the last one; a document has to have a root.
  void EndDocument();

  // The same text does not go on: what follows is another item.
  void EndText() { m_isTextOpen = false; }
  void Lose(std::string message);
  [[noreturn]] void Fail(const std::string& message) const;

  CContentElement* GetOpenElement() const { return m_open; }
  std::string GetPath() const { return m_open != nullptr ? m_open->GetPath() : std::string(); }

 private:
  std::vector<CContentItem>& GetItems();
  void EndStartTag();
  void Count(std::size_t octets);
  void CheckName(std::string_view name) const;
  void CheckQName(std::string_view prefix, std::string_view localName, std::string_view uri) const;
  void CheckText(const std::string& text) const;

  CContentDocument& m_document;
  std::function<std::string()> m_place;
  CContentElement* m_open = nullptr;
  unsigned m_depth = 0;
  std::uint64_t m_size = 0;
  std::uint64_t m_maxSize;
  bool m_isTrusted;
  bool m_isTextOpen = false;
  bool m_isStartTagOpen = false;
};

}  // namespace qztool
