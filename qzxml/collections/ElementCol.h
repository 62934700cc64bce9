#pragma once

#include <string>

#include "qzxml/collections/SharedText.h"
#include "qzxml/collections/XmlCollection.h"
#include "qzxml/platform/Export.h"
#include "qzxml/runtime/MemoryLeakHelp.h"
#include "qzxml/runtime/QzIterator.h"
#include "qzxml/runtime/SmartPtr.h"

namespace QzXmlLib16Data {
class CElementInfo;
}

namespace QzXmlLib16 {

class CElement;

namespace detail {
class CElementReader;
}

// The elements that a schema leaves open (xs:any), in their order.
// Null texts are taken as empty. Cannot be copied; see Clone. Belongs to one thread.
class QZXML_API CElementCol : public CXmlCollection, private CInstanceMonitor {
 public:
  // Throws what CheckNamespaceAgainstRestrictions throws. The namespace is that of new elements; an
  // empty one becomes the restriction when that begins with "##".
  // Meant: the restriction is tested here and then gives way to "##any", so that every element can
  // be added later on.
  CElementCol(const char* namespaceUri, const char* restriction, const char* targetNamespace,
              int minOccurs, int maxOccurs);
  ~CElementCol() override;

  // A collection with the same namespaces and limits and a deep copy of each item, without
  // listeners. Throws as CElement::Clone.
  CSmartPtr<CElementCol> Clone() const;

  // The target namespace.
  std::string GetNamespace() const override;

  // --- Adding, with the events of CXmlCollection.

  CSmartPtr<CElement> Add(const char* name, const char* namespaceUri);
  // In the namespace for new elements. Throws CQzInvalidStateException "A Namespace has not been
  // set for this Collection" where that is empty.
  CSmartPtr<CElement> Add(const char* name);
  CSmartPtr<CElement> Add(CElement* element);

  // Behind null means at the start, in front of null at the end; throw CQzInvalidParamException
  // "The object was not found in the collection".
  CSmartPtr<CElement> AddAfter(const CElement* existing, CElement* element);
  CSmartPtr<CElement> AddBefore(const CElement* existing, CElement* element);

  // --- Access

  // Throws CQzInvalidParamException "Index %d is out of range, use 0 - %d".
  CSmartPtr<CElement> Item(int index) const;
  CQzIterator<CElement> begin() const { return CQzIterator<CElement>(GetFirstNode()); }
  CQzIterator<CElement> end() const { return CQzIterator<CElement>(nullptr); }

 protected:
  // Throws as ValidateCount.
  void ToXml_Int(CXmlWriter* writer, bool root, const char* namespaceUri,
                 const CSerializationContext& context, bool optionalChoice) const override;
  // Reads elements from the cursor on and gives the first one that it does not take, or null.
  CXmlElement* FromXml_Int(CXmlElement* parent, CXmlElement* cursor,
                           const CSerializationContext& context, bool optionalChoice) override;
  // The same for a wildcard to which a schema has given a name: takes elements of exactly that name
  // and namespace.
  CXmlElement* FromXmlLockElementName_Int(const std::string& name, const std::string& namespaceUri,
                                          CXmlElement* parent, CXmlElement* cursor,
                                          const CSerializationContext& context);

 private:
  friend class CElement;
  friend class detail::CElementReader;
  friend class QzXmlLib16Data::CElementInfo;
  CElementCol(detail::CSharedText newNamespace, detail::CSharedText targetNamespace, int minOccurs,
              int maxOccurs);
  // The children of an element, in its namespace.
  static CSmartPtr<CElementCol> ForChildren(const detail::CSharedText& namespaceUri,
                                            const detail::CSharedText& targetNamespace);

  CSmartPtr<CElementCol> CloneEmpty() const;
  const CElement* At(const CNode* node) const;
  bool IsAllowed(const std::string& namespaceUri) const;
  void CheckNamespace(const std::string& namespaceUri) const;

  detail::CSharedText m_strRestriction;   // always "##any"
  detail::CSharedText m_strNewNamespace;  // of elements that are added by name alone
  detail::CSharedText m_strTargetNamespace;
};

}  // namespace QzXmlLib16
