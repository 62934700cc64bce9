#pragma once

#include <string>
#include <string_view>

#include "qzxml/platform/Export.h"

// The rules that decide whether a namespace suits a wildcard, and an element a member.
// Source: XML Schema 1.0 part 1, section 3.10 (the namespace attribute of xs:any).
namespace QzXmlLib16 {

class CSerializationContext;
class CXmlElement;

// Whether a namespace meets restrictions, which are "##any", "##other", "##local",
// "##targetNamespace", one URI, or a list of these with blanks between.
// Meant: only the first token of a list is seen as such; behind it, the namespace passes when it is
// empty or equals the text of the whole list. An empty namespace passes one URI as well.
QZXML_API bool IsNamespaceInRestrictions(const std::string& namespaceUri,
                                         const std::string& restrictions,
                                         const std::string& targetNamespace);

// Throws CQzInvalidNamespaceException "Invalid namespace [%s]. The namespace must be one of [%s]
// where the target namespace is [%s]." (empty path) where the answer above is no.
QZXML_API void CheckNamespaceAgainstRestrictions(const std::string& namespaceUri,
                                                 const std::string& restrictions,
                                                 const std::string& targetNamespace);

// Whether an element has a name and a namespace; the namespace counts only where the context minds
// namespaces. No element (null) has no name.
QZXML_API bool IsElementNameEqual(const CSerializationContext& context, const CXmlElement* element,
                                  const std::string& name, const std::string& namespaceUri);

// The same without owned strings, for what runs once for each element and attribute.
namespace detail {

bool NamespaceMeetsRestrictions(std::string_view namespaceUri, std::string_view restrictions,
                                std::string_view targetNamespace);
bool ElementHasName(const CSerializationContext& context, const CXmlElement* element,
                    std::string_view name, std::string_view namespaceUri);

}  // namespace detail
}  // namespace QzXmlLib16
