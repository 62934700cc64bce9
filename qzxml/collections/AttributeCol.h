#pragma once

#include <string>

#include "qzxml/collections/Attribute.h"
#include "qzxml/collections/SharedText.h"
#include "qzxml/collections/XmlCollection.h"
#include "qzxml/platform/Export.h"
#include "qzxml/runtime/MemoryLeakHelp.h"
#include "qzxml/runtime/QzIterator.h"
#include "qzxml/runtime/SmartPtr.h"

namespace QzXmlLib16 {

namespace detail {
class CElementReader;
}

// The attributes that a schema leaves open (xs:anyAttribute), in their order. What is added by name
// is tested against the restriction; see NamespaceRules.h.
// Null texts are taken as empty. Cannot be copied; see Clone. Belongs to one thread.
class QZXML_API CAttributeCol : public CXmlCollection, private CInstanceMonitor {
 public:
  // The namespace is that of new attributes. An empty one takes the first token of the restriction
  // when that is a URI: at least two characters, neither of the first two a "#".
  // Meant: over a list of URIs, whose tokens are not seen one by one, Add without a namespace is
  // then refused.
  CAttributeCol(const char* namespaceUri, const char* restriction, const char* targetNamespace);
  ~CAttributeCol() override;

  // A collection with the same namespaces and a clone of each item, without listeners.
  CSmartPtr<CAttributeCol> Clone() const;

  // --- Adding, with the events of CXmlCollection. Those by name throw CQzInvalidNamespaceException
  // "Invalid namespace [%s]. The namespace must be one of [%s] where the target namespace is [%s]."
  // An attribute of a given name can be there more than once: nothing checks for that.

  CSmartPtr<CAttribute> Add(const char* name, const char* value, const char* namespaceUri);
  CSmartPtr<CAttribute> Add(const char* name, const char* value);  // the collection's namespace
  CSmartPtr<CAttribute> Add(const char* name);                     // the value is ""
  CSmartPtr<CAttribute> Add(CAttribute* attribute);                // not tested
  // With name, value and namespace of an attribute that was read. A carriage return in its value is
  // no mistake of a caller: it is dropped on writing, without an assertion.
  CSmartPtr<CAttribute> AddFromDocument(const CXmlAttribute& attribute);

  // Not tested. Behind null means at the start, in front of null at the end; throw
  // CQzInvalidParamException "The object was not found in the collection".
  CSmartPtr<CAttribute> AddAfter(const CAttribute* existing, CAttribute* attribute);
  CSmartPtr<CAttribute> AddBefore(const CAttribute* existing, CAttribute* attribute);

  // --- Access

  // Throws CQzInvalidParamException "Index %d is out of range, use 0 - %d".
  CSmartPtr<CAttribute> Item(int index) const;
  CQzIterator<CAttribute> begin() const { return CQzIterator<CAttribute>(GetFirstNode()); }
  CQzIterator<CAttribute> end() const { return CQzIterator<CAttribute>(nullptr); }

 protected:
  // Writes each attribute on the start tag that is open. The number is not checked.
  void ToXml_Int(CXmlWriter* writer, bool root, const char* namespaceUri,
                 const CSerializationContext& context, bool optionalChoice) const override;
  // Adds the attributes of the element and gives the cursor back as it came. Throws
  // CQzInvalidNamespaceException "Invalid Attribute [%s]. The attributes namespace is
  // Inappropriate." with the path of the element.
  CXmlElement* FromXml_Int(CXmlElement* element, CXmlElement* cursor,
                           const CSerializationContext& context, bool optionalChoice) override;

 private:
  friend class CElement;
  friend class detail::CElementReader;
  CAttributeCol(detail::CSharedText namespaceUri, detail::CSharedText restriction,
                detail::CSharedText targetNamespace);

  bool IsAllowed(const std::string& namespaceUri) const;
  void CheckNamespace(const std::string& namespaceUri) const;
  CSmartPtr<CAttribute> AppendRead(const CXmlAttribute& attribute);

  detail::CSharedText m_strRestriction;
  detail::CSharedText m_strTargetNamespace;
};

}  // namespace QzXmlLib16
