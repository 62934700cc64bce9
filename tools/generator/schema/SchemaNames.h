#pragma once

#include <map>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

namespace QzXmlLib16 {
class CXmlElement;
}

namespace qzxml::generator {

inline constexpr char kSchemaNamespace[] = "http://www.w3.org/2001/XMLSchema";

struct SchemaDocument;

// The expanded name of a component. An empty namespaceUri is no namespace; an empty localName is no
// name, that of an anonymous component.
struct QName {
  std::string namespaceUri;
  std::string localName;

  bool IsEmpty() const { return localName.empty(); }
  // "{uri}local", or "local" without a namespace; for messages.
  std::string ToString() const;

  friend bool operator==(const QName& a, const QName& b) {
    return a.localName == b.localName && a.namespaceUri == b.namespaceUri;
  }
  friend bool operator!=(const QName& a, const QName& b) { return !(a == b); }
  friend bool operator<(const QName& a, const QName& b) {
    return std::tie(a.namespaceUri, a.localName) < std::tie(b.namespaceUri, b.localName);
  }
};

// Prefix to namespace, as in scope at some element; "" is the default namespace, if it is declared.
using NamespaceBindings = std::map<std::string, std::string, std::less<>>;

// Where something stands in a schema. Valid as long as the CSchemaSet that it came from.
struct Location {
  const SchemaDocument* document = nullptr;          // null for what is built in
  const QzXmlLib16::CXmlElement* element = nullptr;  // null for the document as a whole

  // The file as it was opened; empty for what is built in.
  const std::string& GetFile() const;
  // A step for each element: its name as written, and its name or ref attribute or, where it has
  // neither and there are several of that name, its number:
  // "/xs:schema/xs:complexType[@name='A']/xs:sequence/xs:element[@ref='b']". Empty without element.
  std::string GetPath() const;
};

enum Severity { Severity_Error, Severity_Warning };

struct Diagnostic {
  Severity severity = Severity_Error;
  std::string file;
  std::string path;  // as Location::GetPath; may be empty
  std::string message;

  // "file: path: message"; what is empty falls away with its colon.
  std::string ToString() const;
};

}  // namespace qzxml::generator
