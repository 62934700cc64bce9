#pragma once

#include <string>

#include "qzxml/collections/AttributeCol.h"
#include "qzxml/collections/ElementCol.h"
#include "qzxml/collections/SharedText.h"
#include "qzxml/platform/Export.h"
#include "qzxml/runtime/MemoryLeakHelp.h"
#include "qzxml/runtime/SmartPtr.h"
#include "qzxml/serialization/XmlObjectBase.h"

namespace QzXmlLib16 {

class CXmlTextWriter;

namespace detail {
class CElementReader;
}

// An element that a schema leaves open (xs:any): name, text, attributes and children, to be read,
// built and changed without a generated class.
//
//   CSmartPtr<CElement> note(new CElement("note", "urn:notes"));
//   note->GetAttributes()->Add("lang", "en");
//   note->GetChildElements()->Add("to")->SetText("Ann");
//   std::string text = note->ToXml();
//
// It has one text, which is written behind all children. Names are tested against a restriction of
// namespaces when the element is made and when it is read, not when it is changed; its collections
// let every namespace pass.
// The element holds its collections, which are always there; both and every item can be held longer
// by others. Cannot be copied; see Clone. Belongs to one thread. Trees of any depth are written,
// cloned and destroyed without recursion, but for fragments inside fragments (see ToXml_Int) and
// elements of derived classes, which are written one stack frame deeper each.
class QZXML_API CElement : public CXmlObjectBase, private CInstanceMonitor {
 public:
  // --- Making. Throw CQzInvalidNamespaceException "Element Name must have a value", "Namespace
  // Restriction must have a value" or "Target Namespace must have a value" for null (a null
  // namespace is empty), and what CheckNamespaceAgainstRestrictions throws.

  explicit CElement(const char* name);  // no namespace, restriction "##any"
  // The namespace is its own restriction. Throws CQzInvalidNamespaceException "Invalid Namespace
  // [%s]." for a wildcard.
  CElement(const char* name, const char* namespaceUri);
  CElement(const char* name, const char* namespaceUri, const char* restriction,
           const char* targetNamespace);
  // The content of any object, as its ToXml writes it with that default namespace. Null: none.
  CElement(const CXmlObjectBase* object, const char* defaultNamespace);

  CElement(const CElement&) = delete;
  CElement& operator=(const CElement&) = delete;
  ~CElement() override;

  // A deep copy. Throws CQzInvalidNamespaceException where SetNamespace has put the element, or one
  // below it, outside its restriction.
  CSmartPtr<CElement> Clone() const;

  // Empties the element and reads it from a document, whose root it becomes. A root outside the
  // restriction is left alone and changes nothing. Throws what loading the document throws.
  // Meant: the FromXml... of the base, for whoever holds this as a CXmlObjectBase, read the first
  // child of the document's element. Clang warns of that in every source of generated classes.
#if defined(__clang__)
#pragma clang diagnostic push
#pragma clang diagnostic ignored "-Woverloaded-virtual"
#endif
  void FromXml(const char* text);
#if defined(__clang__)
#pragma clang diagnostic pop
#endif

  // --- Content. The setters check nothing. Null is taken as the empty text.
  const std::string& GetName() const { return m_strName; }
  void SetName(const char* name);
  std::string GetNamespace() const override;
  void SetNamespace(const char* namespaceUri);
  // A text that begins with "<![CDATA[" is written as it stands, without escaping.
  const std::string& GetText() const { return m_strText; }
  void SetText(const char* text);
  CSmartPtr<CAttributeCol> GetAttributes() const { return m_attributes; }
  CSmartPtr<CElementCol> GetChildElements() const { return m_children; }

  // Tests the namespaces of the element, its attributes and everything below it; changes nothing.
  // Throws CQzInvalidNamespaceException "The namespace %s in the class %s is invalid against
  // restriction %s" for each level from this one down to the one that failed, with the failed test
  // as the innermost exception.
  void SetNamespaceRestrictions(const char* restriction, const char* targetNamespace) const;

  using CXmlObjectBase::GetBase;
  CXmlObjectBase* GetBase() override;
  std::string GetTargetNamespace() const override;

 protected:
  // Sets name and namespaces and makes new, empty collections. Throws as the constructors.
  void Init(const char* name, const char* namespaceUri, const char* restriction,
            const char* targetNamespace);
  // Takes over an element of a document with everything below it. The value of an attribute "xmlns"
  // becomes the default namespace as well.
  void CopyXmlElement(const CXmlElement* element);

  // Called before a name, a namespace and a text are changed. Nothing happens here.
  virtual void FireOnChangeName();
  virtual void FireOnChangeNamespace();
  virtual void FireOnChangeText();

  // Meant: with a default namespace the element goes out as a fragment of its own, declaring that
  // namespace, and its attributes are lost; the writer must be a CXmlTextWriter for that (asserted
  // as "pXmlTextOut != 0"; any other writer gets the element as if it had no default namespace).
  void ToXml_Int(CXmlWriter* writer, bool root, const char* namespaceUri,
                 const CSerializationContext& context, bool optionalChoice) const override;
  // Reads the element at the cursor and gives the next one. Gives the cursor back where its
  // namespace is outside the restriction.
  CXmlElement* FromXml_Int(CXmlElement* parent, CXmlElement* cursor,
                           const CSerializationContext& context, bool optionalChoice) override;

 private:
  friend class CElementCol;
  friend class detail::CElementReader;
  struct Level;

  // Tests nothing.
  CElement(detail::CSharedText namespaceUri, detail::CSharedText restriction,
           detail::CSharedText targetNamespace);
  CElement(detail::CSharedText namespaceUri, detail::CSharedText restriction,
           detail::CSharedText targetNamespace, CSmartPtr<CAttributeCol> attributes,
           CSmartPtr<CElementCol> children);

  CSmartPtr<CElement> CloneWithoutChildren() const;
  void TestNamespaces(const std::string& restriction, const std::string& targetNamespace) const;
  bool IsWrittenInPlace() const;
  Level WriteStart(CXmlWriter* writer, const CSerializationContext& context) const;
  void WriteFragment(CXmlTextWriter* outer) const;

  std::string m_strName;
  std::string m_strText;
  detail::CSharedText m_strNamespace;
  detail::CSharedText m_strNamespaceRestriction;
  detail::CSharedText m_strTargetNamespace;
  CSmartPtr<CAttributeCol> m_attributes;
  CSmartPtr<CElementCol> m_children;
  detail::CSharedText m_strDefaultNamespace;
};

}  // namespace QzXmlLib16
