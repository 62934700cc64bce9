// Each case but 0 is a mistake that the compiler must refuse.

#include "Item.h"
#if CASE == 9  // a header that no public header reaches is not installed
#include "qzxml/serialization/Messages.h"
#endif

using namespace QzXmlLib16;

std::string Use(CItem& item, CXmlDocument& document, CElement& element) {
  CSmartPtr<CXmlObjectBase> object(&item);
#if CASE == 1  // a handle on a derived class from one on its base
  CSmartPtr<CItem> derived(object);
#endif
#if CASE == 2  // the internals of an object are for the walks
  item.ToXml_Int(nullptr, true, "", CSerializationContext::GetDefaultContext(), false);
#endif
#if CASE == 3  // a document owns its tree
  CXmlDocument copy(document);
#endif
#if CASE == 4  // open content is copied by Clone alone
  CElement copy(element);
#endif
#if CASE == 5  // a context must outlive the document
  CXmlDocument temporary{CSerializationContext()};
#endif
#if CASE == 6  // what stands in a message fits its placeholder
  FormatString("%s", 1);
#endif
#if CASE == 7  // an element belongs to its document
  CXmlElement loose;
#endif
#if CASE == 8  // a class without its operations
  struct CIncomplete : CXmlGeneratedClass {};
  CIncomplete incomplete;
#endif
  return object->ToXml() + element.GetName() +
         (document.GetDocumentElement() != nullptr ? "." : "");
}
