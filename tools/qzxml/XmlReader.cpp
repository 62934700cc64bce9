#include "tools/qzxml/XmlReader.h"

#include <expat.h>

#include <algorithm>
#include <exception>
#include <memory>
#include <string_view>
#include <vector>

#include "qzxml/runtime/Functions.h"
#include "tools/qzxml/Failure.h"

// Expat with namespaces gives a name as its URI, its local name and its prefix, with a character in
// between that XML can not hold. Declarations come before the element that has them. No exception
// travels through Expat's frames: it is kept, the parser is stopped, and it goes on from there.

namespace qztool {
namespace {

constexpr char kSeparator = '\1';
constexpr std::size_t kSlice = std::size_t{1} << 18;

struct Name {
  explicit Name(const char* text) {
    const std::string_view whole(text);
    const std::size_t first = whole.find(kSeparator);
    if (first == std::string_view::npos) {
      localName = whole;
      return;
    }
    uri = whole.substr(0, first);
    const std::size_t second = whole.find(kSeparator, first + 1);
    localName = whole.substr(first + 1, second - first - 1);
    if (second != std::string_view::npos) prefix = whole.substr(second + 1);
  }
  std::string_view prefix;
  std::string_view localName;
  std::string_view uri;
};

std::string_view TextOf(const char* text) {
  return text != nullptr ? std::string_view(text) : std::string_view();
}

class CXmlReading {
 public:
  CXmlReading(const std::string& text, CContentDocument& document)
      : m_text(text),
        m_document(document),
        m_builder(document, text.size(), true),
        m_parser(XML_ParserCreateNS("UTF-8", kSeparator), &XML_ParserFree) {}

  void Run(CProgress& progress) {
    XML_Parser const parser = m_parser.get();
    if (parser == nullptr) throw std::bad_alloc();
    m_builder.SetPlace([this] { return TellPlace(); });
    XML_SetUserData(parser, this);
    XML_SetReturnNSTriplet(parser, 1);
    XML_SetElementHandler(parser, &OnStart, &OnEnd);
    XML_SetNamespaceDeclHandler(parser, &OnDeclaration, nullptr);
    XML_SetCharacterDataHandler(parser, &OnText);
    XML_SetCdataSectionHandler(parser, &OnStartCData, &OnEndCData);
    XML_SetCommentHandler(parser, &OnComment);
    XML_SetProcessingInstructionHandler(parser, &OnInstruction);
    XML_SetDoctypeDeclHandler(parser, &OnStartDocumentType, &OnEndDocumentType);
    XML_SetSkippedEntityHandler(parser, &OnSkippedEntity);
    XML_SetExternalEntityRefHandler(parser, &OnExternalEntity);
    for (std::size_t at = 0; at < m_text.size();) {
      const std::size_t size = std::min(kSlice, m_text.size() - at);
      const bool isLast = at + size == m_text.size();
      Parse(m_text.data() + at, static_cast<int>(size), isLast);
      at += size;
      progress.Tell(at, m_text.size());
    }
    m_builder.EndDocument();
  }

 private:
  void Parse(const char* slice, int size, bool isLast) {
    XML_Parser const parser = m_parser.get();
    const XML_Status status = XML_Parse(parser, slice, size, isLast ? XML_TRUE : XML_FALSE);
    if (m_failure) std::rethrow_exception(m_failure);
    if (status == XML_STATUS_OK) return;
    m_builder.Fail(XML_ErrorString(XML_GetErrorCode(parser)));
  }

  std::string TellPlace() const {
    return QzXmlLib16::FormatString(
        " at line %llu, column %llu",
        static_cast<unsigned long long>(XML_GetCurrentLineNumber(m_parser.get())),
        static_cast<unsigned long long>(XML_GetCurrentColumnNumber(m_parser.get())) + 1);
  }

  template <typename Work>
  static void Guard(void* user, Work work) {
    CXmlReading& self = *static_cast<CXmlReading*>(user);
    if (self.m_failure) return;
    try {
      work(self);
    } catch (...) {
      self.m_failure = std::current_exception();
      XML_StopParser(self.m_parser.get(), XML_FALSE);
    }
  }

  static void OnStart(void* user, const char* name, const char** attributes) {
    Guard(user, [&](CXmlReading& self) { self.StartElement(Name(name), attributes); });
  }
  static void OnEnd(void* user, const char*) {
    Guard(user, [](CXmlReading& self) { self.m_builder.EndElement(); });
  }
  static void OnDeclaration(void* user, const char* prefix, const char* uri) {
    Guard(user, [&](CXmlReading& self) {
      self.m_declarations.push_back({std::string(TextOf(prefix)), std::string(TextOf(uri))});
    });
  }
  static void OnText(void* user, const char* text, int length) {
    Guard(user, [&](CXmlReading& self) {
      self.m_builder.AddText(std::string_view(text, static_cast<std::size_t>(length)),
                             self.m_isCData ? ContentKind::CData : ContentKind::Text);
    });
  }
  static void OnStartCData(void* user) {
    Guard(user, [](CXmlReading& self) {
      self.m_isCData = true;
      self.m_builder.EndText();
      self.m_builder.AddText("", ContentKind::CData);  // also when it has no text
    });
  }
  static void OnEndCData(void* user) {
    Guard(user, [](CXmlReading& self) {
      self.m_isCData = false;
      self.m_builder.EndText();
    });
  }
  static void OnComment(void* user, const char* text) {
    Guard(user, [&](CXmlReading& self) {
      if (!self.m_isInDocumentType) self.m_builder.AddComment(text);
    });
  }
  static void OnInstruction(void* user, const char* target, const char* data) {
    Guard(user, [&](CXmlReading& self) {
      if (!self.m_isInDocumentType) self.m_builder.AddInstruction(target, TextOf(data));
    });
  }
  static void OnStartDocumentType(void* user, const char*, const char*, const char*, int) {
    Guard(user, [](CXmlReading& self) {
      self.m_isInDocumentType = true;
      self.m_documentTypeBegin = self.m_text.rfind("<!DOCTYPE", self.GetPlace());
    });
  }
  static void OnEndDocumentType(void* user) {
    Guard(user, [](CXmlReading& self) {
      self.m_isInDocumentType = false;
      const std::size_t begin = self.m_documentTypeBegin;
      if (begin == std::string::npos) return;
      self.m_document.documentType = self.m_text.substr(begin, self.GetPlace() + 1 - begin);
    });
  }
  static void OnSkippedEntity(void* user, const char* name, int isParameterEntity) {
    Guard(user, [&](CXmlReading& self) {
      if (isParameterEntity == 0) {
        self.m_builder.Lose("the entity \"" + std::string(name) + "\" is not known");
      }
    });
  }
  // The parser stands in for the user data.
  static int OnExternalEntity(XML_Parser parser, const char*, const char*, const char* systemId,
                              const char*) {
    Guard(XML_GetUserData(parser), [&](CXmlReading& self) {
      self.m_builder.Lose("the external entity \"" + std::string(TextOf(systemId)) +
                          "\" is not read");
    });
    return XML_STATUS_OK;
  }

  std::size_t GetPlace() const {
    return static_cast<std::size_t>(XML_GetCurrentByteIndex(m_parser.get()));
  }

  void StartElement(const Name& name, const char** attributes) {
    m_builder.StartElement(name.prefix, name.localName, name.uri);
    for (const CContentDeclaration& declaration : m_declarations) {
      m_builder.AddDeclaration(declaration.prefix, declaration.uri);
    }
    m_declarations.clear();
    const int specified = XML_GetSpecifiedAttributeCount(m_parser.get());
    for (int i = 0; attributes[i] != nullptr; i += 2) {
      const Name attribute(attributes[i]);
      m_builder.AddAttribute(attribute.prefix, attribute.localName, attribute.uri,
                             attributes[i + 1], ValueKind::Text, i >= specified);
    }
  }

  const std::string& m_text;
  CContentDocument& m_document;
  CContentBuilder m_builder;
  const std::unique_ptr<XML_ParserStruct, void (*)(XML_Parser)> m_parser;
  std::exception_ptr m_failure;
  std::vector<CContentDeclaration> m_declarations;
  std::size_t m_documentTypeBegin = std::string::npos;
  bool m_isCData = false;
  bool m_isInDocumentType = false;
};

}  // namespace

void ReadXml(const std::string& text, CContentDocument& document, CProgress& progress) {
  CXmlReading(text, document).Run(progress);
}

}  // namespace qztool
