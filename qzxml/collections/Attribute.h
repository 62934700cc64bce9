#pragma once

#include <string>

#include "qzxml/collections/SharedText.h"
#include "qzxml/platform/Export.h"
#include "qzxml/runtime/MemoryLeakHelp.h"
#include "qzxml/runtime/SmartPtr.h"
#include "qzxml/serialization/XmlObjectBase.h"

namespace QzXmlLib16 {

class CXmlAttribute;

// One attribute of open content. A CAttributeCol makes and holds it; client code may hold it
// longer. Cannot be copied; see Clone. Belongs to one thread.
class QZXML_API CAttribute : public CXmlObjectBase, private CInstanceMonitor {
 public:
  CAttribute(const CAttribute&) = delete;
  CAttribute& operator=(const CAttribute&) = delete;
  ~CAttribute() override;

  // A new attribute with the same name, value and namespace.
  CSmartPtr<CAttribute> Clone() const;

  // The setters check nothing: a changed namespace is not tested against the restriction of the
  // collection. Null is taken as the empty text.
  const std::string& GetName() const { return m_strName; }
  void SetName(const char* name);
  const std::string& GetValue() const { return m_strValue; }
  void SetValue(const char* value);
  std::string GetNamespace() const override;
  void SetNamespace(const char* namespaceUri);

  using CXmlObjectBase::GetBase;
  CXmlObjectBase* GetBase() override;
  // The namespace of the attribute: the schema that declares an attribute has it as its target.
  std::string GetTargetNamespace() const override;

 protected:
  CAttribute(const char* name, const char* value, const char* namespaceUri);

  // Called before a name and a namespace are changed. Nothing happens here.
  virtual void FireOnChangeName();
  virtual void FireOnChangeNamespace();

  void ToXml_Int(CXmlWriter* writer, bool root, const char* namespaceUri,
                 const CSerializationContext& context, bool optionalChoice) const override;
  // Throws CQzException "This should be done by the collection".
  CXmlElement* FromXml_Int(CXmlElement* parent, CXmlElement* cursor,
                           const CSerializationContext& context, bool optionalChoice) override;

 private:
  friend class CAttributeCol;
  // fromDocument: the value was read, so that a carriage return in it is no mistake of a caller.
  CAttribute(std::string name, std::string value, detail::CSharedText namespaceUri,
             bool fromDocument);

  std::string m_strName;
  std::string m_strValue;
  detail::CSharedText m_strNamespace;
  bool m_bFromDocument = false;
};

}  // namespace QzXmlLib16
