#include "qzxml/serialization/NamespaceRules.h"

#include "qzxml/runtime/Functions.h"
#include "qzxml/runtime/QzException.h"
#include "qzxml/serialization/SerializationContext.h"
#include "qzxml/serialization/TextOrEmpty.h"
#include "qzxml/serialization/XmlObjectBase.h"
#include "qzxml/xml/XmlElement.h"

namespace QzXmlLib16 {

using detail::ElementHasName;
using detail::NamespaceMeetsRestrictions;
using detail::TextOrEmpty;

namespace {

// Anything that is no token is compared as a whole, whatever token of it is looked at.
bool MeetsWholeText(std::string_view namespaceUri, std::string_view restrictions) {
  return namespaceUri.empty() || namespaceUri == restrictions;
}

void CheckNamespace(std::string_view namespaceUri, std::string_view restrictions,
                    std::string_view targetNamespace) {
  if (NamespaceMeetsRestrictions(namespaceUri, restrictions, targetNamespace)) return;
  throw CQzInvalidNamespaceException(
      FormatString("Invalid namespace [%s]. The namespace must be one of [%s] where the target "
                   "namespace is [%s].",
                   std::string(namespaceUri).c_str(), std::string(restrictions).c_str(),
                   std::string(targetNamespace).c_str()),
      "");
}

}  // namespace

bool detail::NamespaceMeetsRestrictions(std::string_view namespaceUri,
                                        std::string_view restrictions,
                                        std::string_view targetNamespace) {
  const std::size_t blank = restrictions.find(' ');
  const std::string_view token = restrictions.substr(0, blank);
  bool meets = false;
  if (token == "##any") {
    meets = true;
  } else if (token == "##other") {
    meets = namespaceUri != targetNamespace;
  } else if (token == "##local") {
    meets = namespaceUri.empty();
  } else if (token == "##targetNamespace") {
    meets = namespaceUri == targetNamespace;
  } else {
    meets = MeetsWholeText(namespaceUri, restrictions);
  }
  if (meets || blank == std::string_view::npos) return meets;
  // Meant: behind the first token of a list only an empty one is seen, however often one looks, so
  // the second answer is the last. Generated classes hold restrictions that rely on it.
  return MeetsWholeText(namespaceUri, restrictions);
}

bool detail::ElementHasName(const CSerializationContext& context, const CXmlElement* element,
                            std::string_view name, std::string_view namespaceUri) {
  if (element == nullptr || element->GetLocalName() != name) return false;
  return context.GetIgnoreNamespaces() || element->GetNamespaceURI() == namespaceUri;
}

bool IsNamespaceInRestrictions(const std::string& namespaceUri, const std::string& restrictions,
                               const std::string& targetNamespace) {
  return NamespaceMeetsRestrictions(namespaceUri, restrictions, targetNamespace);
}

void CheckNamespaceAgainstRestrictions(const std::string& namespaceUri,
                                       const std::string& restrictions,
                                       const std::string& targetNamespace) {
  CheckNamespace(namespaceUri, restrictions, targetNamespace);
}

bool IsElementNameEqual(const CSerializationContext& context, const CXmlElement* element,
                        const std::string& name, const std::string& namespaceUri) {
  return ElementHasName(context, element, name, namespaceUri);
}

void CXmlObjectBase::TestNamespace(const char* namespaceUri, const char* restrictions,
                                   const char* targetNamespace) const {
  CheckNamespace(TextOrEmpty(namespaceUri), TextOrEmpty(restrictions),
                 TextOrEmpty(targetNamespace));
}

bool CXmlObjectBase::IsNamespaceValid(const char* namespaceUri, const char* restrictions,
                                      const char* targetNamespace) const {
  return NamespaceMeetsRestrictions(TextOrEmpty(namespaceUri), TextOrEmpty(restrictions),
                                    TextOrEmpty(targetNamespace));
}

bool CXmlObjectBase::DoesElementNameMatch(const CSerializationContext& context,
                                          const CXmlElement* element, const char* name,
                                          const char* namespaceUri) const {
  return ElementHasName(context, element, TextOrEmpty(name), TextOrEmpty(namespaceUri));
}

}  // namespace QzXmlLib16
