#pragma once

// The namespace names that the recommendations of the W3C fix.
namespace QzXmlLib16 {

// Of the attributes type, nil and schemaLocation (XML Schema 1.0 part 1, section 2.6).
inline constexpr char kXmlSchemaInstanceNamespace[] = "http://www.w3.org/2001/XMLSchema-instance";

// Of schemas and of the built-in types (XML Schema 1.0 part 1, section 2.6).
inline constexpr char kXmlSchemaNamespace[] = "http://www.w3.org/2001/XMLSchema";

// Bound to the prefix "xml" in every document (Namespaces in XML 1.0, section 3).
inline constexpr char kXmlNamespace[] = "http://www.w3.org/XML/1998/namespace";

// Of the declarations themselves (Namespaces in XML 1.0, section 3).
inline constexpr char kXmlnsNamespace[] = "http://www.w3.org/2000/xmlns/";

}  // namespace QzXmlLib16
