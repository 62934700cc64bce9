#include "tools/qzxml/JsonReader.h"

#include <map>
#include <utility>

#include "tools/qzxml/Failure.h"
#include "tools/qzxml/JsonValue.h"

namespace qztool {
namespace {

constexpr char kItemName[] = "item";
constexpr char kXmlNamespace[] = "http://www.w3.org/XML/1998/namespace";

bool BeginsWith(const std::string& text, std::string_view beginning) {
  return text.compare(0, beginning.size(), beginning) == 0;
}

ValueKind KindOf(const CJsonValue& value) {
  switch (value.kind) {
    case JsonKind::Number:
      return ValueKind::Number;
    case JsonKind::Boolean:
      return ValueKind::Boolean;
    case JsonKind::Null:
      return ValueKind::Null;
    default:
      return ValueKind::Text;
  }
}

class CJsonToContent {
 public:
  CJsonToContent(std::size_t inputSize, const CJsonReading& options, CContentDocument& document)
      : m_builder(document, inputSize, false),
        m_isMarked(options.roundTrip != QzXmlLib16::JsonRoundTrip_None) {
    m_scope["xml"].push_back(kXmlNamespace);
  }

  void ReadRoot(const CJsonValue& value, const std::string& rootName) {
    if (!rootName.empty()) {
      AddElement(rootName, value);
    } else if (value.kind != JsonKind::Object) {
      m_builder.Fail("the document is no object, so that its root has no name; --root gives one");
    } else {
      std::size_t roots = 0;
      for (const CJsonValue& member : value.values) {
        roots += member.kind == JsonKind::Array ? member.values.size() : 1;
      }
      if (roots != 1) {
        m_builder.Fail("the document has " + std::to_string(roots) +
                       " roots; --root puts an element around them");
      }
      for (std::size_t i = 0; i < value.values.size(); ++i) {
        AddMember(value.names[i], value.values[i]);
      }
    }
    m_builder.EndDocument();
  }

  void LoseComments(const std::vector<std::size_t>& lines) {
    for (const std::size_t line : lines) {
      m_builder.Lose("a comment is not kept (line " + std::to_string(line) + ')');
    }
  }

 private:
  using Scope = std::map<std::string, std::vector<std::string>>;

  bool IsDeclaration(const std::string& name) const {
    return m_isMarked && (name == "@xmlns" || BeginsWith(name, "@xmlns:"));
  }
  bool IsAttribute(const std::string& name) const {
    return m_isMarked && BeginsWith(name, "@") && !IsDeclaration(name);
  }
  bool IsText(const std::string& name) const { return name == (m_isMarked ? "#text" : ""); }
  static std::string GetDeclaredPrefix(const std::string& name) {
    return name.size() > 7 ? name.substr(7) : std::string();
  }

  // One or, for an array, several elements.
  void AddMember(const std::string& name, const CJsonValue& value) {
    if (name.empty()) m_builder.Fail("a member has no name");
    if (value.kind != JsonKind::Array) return AddElement(name, value);
    if (value.values.empty()) m_builder.Lose("the empty array \"" + name + "\" is left out");
    for (const CJsonValue& item : value.values) AddElement(name, item);
  }

  void AddElement(const std::string& name, const CJsonValue& value) {
    Declare(value);
    const auto [prefix, localName] = Split(name);
    m_builder.StartElement(prefix, localName, GetUri(prefix, name));
    switch (value.kind) {
      case JsonKind::Object:
        AddContent(value);
        break;
      case JsonKind::Array:
        for (const CJsonValue& item : value.values) AddElement(kItemName, item);
        break;
      case JsonKind::Null:
        m_builder.AddText("", ContentKind::Text, ValueKind::Null);
        break;
      default:
        if (!value.text.empty()) m_builder.AddText(value.text, ContentKind::Text, KindOf(value));
        break;
    }
    m_builder.EndElement();
    Forget(value);
  }

  void AddContent(const CJsonValue& object) {
    for (std::size_t i = 0; i < object.values.size(); ++i) {
      const std::string& name = object.names[i];
      if (IsDeclaration(name)) {
        m_builder.AddDeclaration(GetDeclaredPrefix(name), GetPlain(name, object.values[i]).text);
      } else if (IsAttribute(name)) {
        AddAttribute(name.substr(1), GetPlain(name, object.values[i]));
      }
    }
    for (std::size_t i = 0; i < object.values.size(); ++i) {
      const std::string& name = object.names[i];
      if (IsText(name)) {
        const CJsonValue& value = GetPlain(name, object.values[i]);
        m_builder.EndText();
        if (!value.text.empty() || value.kind == JsonKind::Null) {
          m_builder.AddText(value.text, ContentKind::Text, KindOf(value));
        }
      } else if (!IsDeclaration(name) && !IsAttribute(name)) {
        AddMember(name, object.values[i]);
      }
    }
  }

  void AddAttribute(const std::string& name, const CJsonValue& value) {
    if (value.kind == JsonKind::Null) {
      return m_builder.Lose("the attribute \"" + name + "\" is null and left out");
    }
    const auto [prefix, localName] = Split(name);
    const std::string uri = prefix.empty() ? std::string() : GetUri(prefix, name);
    m_builder.AddAttribute(prefix, localName, uri, value.text, KindOf(value));
  }

  const CJsonValue& GetPlain(const std::string& name, const CJsonValue& value) const {
    if (!value.IsPlain()) m_builder.Fail("\"" + name + "\" has to have a plain value");
    return value;
  }

  // ---- Namespaces ----

  static std::pair<std::string, std::string> Split(const std::string& name) {
    const std::size_t colon = name.find(':');
    if (colon == std::string::npos) return {"", name};
    return {name.substr(0, colon), name.substr(colon + 1)};
  }

  std::string GetUri(const std::string& prefix, const std::string& name) const {
    const auto found = m_scope.find(prefix);
    if (found != m_scope.end() && !found->second.empty()) return found->second.back();
    if (prefix.empty() && name.find(':') == std::string::npos) return "";
    m_builder.Fail("the prefix of \"" + name + "\" is not declared");
  }

  template <typename Visit>
  void ForEachDeclaration(const CJsonValue& object, Visit visit) {
    for (std::size_t i = 0; i < object.names.size(); ++i) {
      if (IsDeclaration(object.names[i])) {
        visit(GetDeclaredPrefix(object.names[i]), object.values[i]);
      }
    }
  }
  void Declare(const CJsonValue& object) {
    ForEachDeclaration(object, [this](const std::string& prefix, const CJsonValue& value) {
      m_scope[prefix].push_back(value.text);
    });
  }
  void Forget(const CJsonValue& object) {
    ForEachDeclaration(object, [this](const std::string& prefix, const CJsonValue&) {
      m_scope[prefix].pop_back();
    });
  }

  CContentBuilder m_builder;
  bool m_isMarked;
  Scope m_scope;  // of each prefix the namespaces, innermost last
};

}  // namespace

void ReadJson(const std::string& text, const CJsonReading& options, CContentDocument& document,
              CProgress& progress) {
  CJsonCounts counts;
  const CJsonValue value = ParseJson(text, counts, progress);
  CJsonToContent reading(text.size(), options, document);
  reading.LoseComments(counts.comments);
  reading.ReadRoot(value, options.rootName);
}

}  // namespace qztool
