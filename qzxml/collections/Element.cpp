#include "qzxml/collections/Element.h"

#include <memory>
#include <typeinfo>
#include <utility>
#include <vector>

#include "qzxml/collections/ElementReader.h"
#include "qzxml/collections/Messages.h"
#include "qzxml/runtime/Encoder.h"
#include "qzxml/runtime/Functions.h"
#include "qzxml/runtime/QzException.h"
#include "qzxml/runtime/TextStream.h"
#include "qzxml/serialization/NamespaceRules.h"
#include "qzxml/serialization/TextOrEmpty.h"
#include "qzxml/values/BinaryData.h"
#include "qzxml/xml/XmlAttribute.h"
#include "qzxml/xml/XmlDocument.h"
#include "qzxml/xml/XmlElement.h"
#include "qzxml/xml/XmlTextWriter.h"

// A tree of open content can be as deep as its caller cares to build it, so whatever visits all of
// it is a loop with the open levels in a vector: reading (ElementReader.cpp), cloning, testing and
// writing. Only an element that is written in a way of its own (a derived class, a fragment with a
// default namespace) is handed on to its ToXml_Int. Destroying is a loop in XmlCollection.cpp.

namespace QzXmlLib16 {

using detail::TextOrEmpty;

namespace {

CInstanceClass s_class("CElement");

// The namespace that is to be its own restriction.
const char* NoWildcard(const char* namespaceUri) {
  const std::string text = TextOrEmpty(namespaceUri);
  if (text == "##any" || text == "##other" || text == "##local" || text == "##targetNamespace") {
    throw CQzInvalidNamespaceException(FormatString("Invalid Namespace [%s].", text.c_str()), "");
  }
  return namespaceUri;
}

void ThrowIfNull(const char* text, const char* failure) {
  if (text == nullptr) throw CQzInvalidNamespaceException(failure, "");
}

}  // namespace

// An open level of a tree: an element, and the first of its children that is not visited yet.
struct CElement::Level {
  explicit Level(const CElement* e) : element(e), next(e->m_children->GetFirstNode()) {}

  // The next child, or null behind the last one.
  const CElement* Advance() {
    if (next == nullptr) return nullptr;
    const CElement* const child = element->m_children->At(next);
    next = next->next;
    return child;
  }

  const CElement* element;
  const CXmlCollection::CNode* next;
};

// Making

CElement::CElement(const char* name) : CInstanceMonitor(s_class) { Init(name, "", "##any", ""); }

CElement::CElement(const char* name, const char* namespaceUri) : CInstanceMonitor(s_class) {
  Init(name, NoWildcard(namespaceUri), namespaceUri, "");
}

CElement::CElement(const char* name, const char* namespaceUri, const char* restriction,
                   const char* targetNamespace)
    : CInstanceMonitor(s_class) {
  Init(name, namespaceUri, restriction, targetNamespace);
}

CElement::CElement(const CXmlObjectBase* object, const char* defaultNamespace)
    : CInstanceMonitor(s_class) {
  Init("", "", "##any", "");
  m_strDefaultNamespace = detail::CSharedText(TextOrEmpty(defaultNamespace));
  QZ_ASSERT_TEXT(object != nullptr, "object != 0");
  if (object == nullptr) return;

  CSerializationContext context;
  context.SetDefaultNamespaceURI(defaultNamespace);
  const std::string text = object->ToXml(false, false, EOLType_LF, context);
  const CBinaryData bytes = LocalToUtf8(text.c_str());
  CXmlDocument document(context);
  document.LoadXmlStream(bytes.GetData(), bytes.GetLength());
  CopyXmlElement(document.GetDocumentElement());
}

CElement::CElement(detail::CSharedText namespaceUri, detail::CSharedText restriction,
                   detail::CSharedText targetNamespace, CSmartPtr<CAttributeCol> attributes,
                   CSmartPtr<CElementCol> children)
    : CInstanceMonitor(s_class),
      m_strNamespace(std::move(namespaceUri)),
      m_strNamespaceRestriction(std::move(restriction)),
      m_strTargetNamespace(std::move(targetNamespace)),
      m_attributes(std::move(attributes)),
      m_children(std::move(children)) {}

CElement::CElement(detail::CSharedText namespaceUri, detail::CSharedText restriction,
                   detail::CSharedText targetNamespace)
    : CInstanceMonitor(s_class),
      m_strNamespace(std::move(namespaceUri)),
      m_strNamespaceRestriction(std::move(restriction)),
      m_strTargetNamespace(std::move(targetNamespace)),
      m_attributes(
          new CAttributeCol(m_strNamespace, detail::CSharedText::Any(), m_strTargetNamespace)),
      m_children(CElementCol::ForChildren(m_strNamespace, m_strTargetNamespace)) {}

CElement::~CElement() = default;

// Meant: the namespace is not tested for null, only name, restriction and target namespace are.
void CElement::Init(const char* name, const char* namespaceUri, const char* restriction,
                    const char* targetNamespace) {
  ThrowIfNull(name, "Element Name must have a value");
  ThrowIfNull(restriction, "Namespace Restriction must have a value");
  ThrowIfNull(targetNamespace, "Target Namespace must have a value");
  CheckNamespaceAgainstRestrictions(TextOrEmpty(namespaceUri), restriction, targetNamespace);

  m_strName = name;
  m_strNamespace = detail::CSharedText(TextOrEmpty(namespaceUri));
  m_strNamespaceRestriction = detail::CSharedText::Like(m_strNamespace, restriction);
  m_strTargetNamespace = detail::CSharedText::Like(m_strNamespace, targetNamespace);
  m_attributes =
      new CAttributeCol(m_strNamespace, detail::CSharedText::Any(), m_strTargetNamespace);
  m_children = CElementCol::ForChildren(m_strNamespace, m_strTargetNamespace);
}

CSmartPtr<CElement> CElement::CloneWithoutChildren() const {
  if (!m_strNamespaceRestriction.IsAny()) {
    CheckNamespaceAgainstRestrictions(m_strNamespace.str(), m_strNamespaceRestriction.str(),
                                      m_strTargetNamespace.str());
  }
  const CSmartPtr<CElement> clone(new CElement(m_strNamespace, m_strNamespaceRestriction,
                                               m_strTargetNamespace, m_attributes->Clone(),
                                               m_children->CloneEmpty()));
  clone->m_strName = m_strName;
  clone->m_strText = m_strText;
  clone->m_strDefaultNamespace = m_strDefaultNamespace;
  return clone;
}

CSmartPtr<CElement> CElement::Clone() const {
  const CSmartPtr<CElement> clone = CloneWithoutChildren();
  std::vector<std::pair<Level, CElementCol*>> open = {{Level(this), clone->m_children}};
  while (!open.empty()) {
    const CElement* const child = open.back().first.Advance();
    if (child == nullptr) {
      open.pop_back();
      continue;
    }
    const CSmartPtr<CElement> childClone = child->CloneWithoutChildren();
    open.back().second->AppendItem(childClone);
    open.emplace_back(Level(child), childClone->m_children);
  }
  return clone;
}

// Content

void CElement::SetName(const char* name) {
  FireOnChangeName();
  m_strName = TextOrEmpty(name);
}

std::string CElement::GetNamespace() const { return m_strNamespace.str(); }

void CElement::SetNamespace(const char* namespaceUri) {
  FireOnChangeNamespace();
  m_strNamespace = detail::CSharedText(TextOrEmpty(namespaceUri));
}

void CElement::SetText(const char* text) {
  FireOnChangeText();
  m_strText = TextOrEmpty(text);
}

void CElement::FireOnChangeName() {}

void CElement::FireOnChangeNamespace() {}

void CElement::FireOnChangeText() {}

CXmlObjectBase* CElement::GetBase() { return this; }

std::string CElement::GetTargetNamespace() const { return m_strTargetNamespace.str(); }

// Testing

void CElement::TestNamespaces(const std::string& restriction,
                              const std::string& targetNamespace) const {
  CheckNamespaceAgainstRestrictions(m_strNamespace.str(), restriction, targetNamespace);
  for (const CSmartPtr<CAttribute>& attribute : *m_attributes) {
    CheckNamespaceAgainstRestrictions(attribute->GetNamespace(), restriction, targetNamespace);
  }
}

void CElement::SetNamespaceRestrictions(const char* restriction,
                                        const char* targetNamespace) const {
  const std::string restrictionText = TextOrEmpty(restriction);
  const std::string targetText = TextOrEmpty(targetNamespace);
  std::vector<Level> open = {Level(this)};
  try {
    TestNamespaces(restrictionText, targetText);
    while (!open.empty()) {
      const CElement* const child = open.back().Advance();
      if (child == nullptr) {
        open.pop_back();
      } else {
        open.emplace_back(child);
        child->TestNamespaces(restrictionText, targetText);
      }
    }
  } catch (const CQzException& e) {
    std::unique_ptr<CQzInvalidNamespaceException> failure;
    for (; !open.empty(); open.pop_back()) {
      const CElement* const element = open.back().element;
      const CQzException& inner = failure != nullptr ? *failure : e;
      failure = std::make_unique<CQzInvalidNamespaceException>(
          FormatString(Messages::kRestrictionRefused, element->m_strNamespace.str().c_str(),
                       element->m_strName.c_str(), restrictionText.c_str()),
          "", inner);
    }
    throw *failure;
  }
}

// Writing

bool CElement::IsWrittenInPlace() const {
  return m_strDefaultNamespace.empty() && typeid(*this) == typeid(CElement);
}

CElement::Level CElement::WriteStart(CXmlWriter* writer,
                                     const CSerializationContext& context) const {
  writer->WriteStartElement(m_strName, m_strNamespace.str());
  CXmlObjectBase::ToXml_Int(m_attributes, writer, false, m_strNamespace.str().c_str(), context,
                            false);
  m_children->ValidateCount(context);
  return Level(this);
}

void CElement::ToXml_Int(CXmlWriter* writer, bool, const char* namespaceUri,
                         const CSerializationContext& context, bool optionalChoice) const {
  if (!m_strDefaultNamespace.empty()) {
    CXmlTextWriter* const pXmlTextOut = dynamic_cast<CXmlTextWriter*>(writer);
    QZ_ASSERT_TEXT(pXmlTextOut != nullptr, "pXmlTextOut != 0");
    if (pXmlTextOut != nullptr) return WriteFragment(pXmlTextOut);
  }
  std::vector<Level> above;
  Level current = WriteStart(writer, context);
  for (;;) {
    const CElement* const child = current.Advance();
    if (child == nullptr) {
      writer->WriteText(current.element->m_strText, ItemType_string, false);
      writer->WriteEndElement();
      if (above.empty()) return;
      current = above.back();
      above.pop_back();
    } else if (child->IsWrittenInPlace()) {
      above.push_back(current);
      current = child->WriteStart(writer, context);
    } else {
      CXmlObjectBase::ToXml_Int(child, writer, false, namespaceUri, context, optionalChoice);
    }
  }
}

void CElement::WriteFragment(CXmlTextWriter* outer) const {
  CTextStream stream;
  CXmlTextWriter inner(&stream);
  inner.SetEOLType(outer->GetEOLType());
  inner.SetFormatted(outer->GetFormatted());
  inner.SetDefaultNamespace(m_strDefaultNamespace.str());
  inner.WriteStartElement(m_strName, m_strNamespace.str());

  CSerializationContext context;
  context.SetDefaultNamespaceURI(m_strDefaultNamespace.str().c_str());
  CXmlObjectBase::ToXml_Int(m_children, &inner, false, m_strNamespace.str().c_str(), context,
                            false);
  inner.WriteText(m_strText, ItemType_string, false);
  inner.WriteEndElement();
  stream.Flush();

  outer->CloseOpenStartTag();
  outer->WriteRawLine(stream.TakeText());
}

// Reading

void CElement::FromXml(const char* text) {
  CXmlDocument document;
  document.LoadXml(TextOrEmpty(text));
  CXmlElement* const root = document.GetDocumentElement();
  FromXml_Int(root, root, CSerializationContext::GetDefaultContext(), false);
}

CXmlElement* CElement::FromXml_Int(CXmlElement*, CXmlElement* cursor,
                                   const CSerializationContext& context, bool) {
  if (cursor == nullptr ||
      !IsNamespaceInRestrictions(cursor->GetNamespaceURI(), m_strNamespaceRestriction.str(),
                                 m_strTargetNamespace.str())) {
    return cursor;
  }
  m_attributes->Clear();
  m_children->Clear();
  CXmlElement* const next = cursor->GetNextSiblingElement();
  CXmlObjectBase::FromXml_Int(m_attributes, cursor, next, context);
  const CXmlElement* const left =
      CXmlObjectBase::FromXml_Int(m_children, cursor, cursor->GetFirstElement(), context);
  if (left != nullptr) {
    throw CQzValidationException(
        FormatString("Invalid Element [%s] found.", left->GetLocalName().c_str()),
        left->GetXPath());
  }
  m_strText = cursor->GetTextView();
  m_strName = cursor->GetLocalName();
  m_strNamespace = detail::CSharedText::Like(m_strNamespace, cursor->GetNamespaceURI());
  return next;
}

void CElement::CopyXmlElement(const CXmlElement* element) {
  if (element == nullptr) return;
  m_strName = element->GetLocalName();
  m_strNamespace = detail::CSharedText::Like(m_strNamespace, element->GetNamespaceURI());
  m_strText = element->GetTextView();
  m_attributes->Clear();
  m_children->Clear();
  for (const CXmlAttribute* attribute : element->GetAttributeRange()) {
    m_attributes->AppendRead(*attribute);
    if (attribute->GetLocalName() == "xmlns") {
      m_strDefaultNamespace = detail::CSharedText(attribute->GetValue());
    }
  }
  auto reader = detail::CElementReader::ForCopying();
  for (const CXmlElement* child = element->GetFirstElement(); child != nullptr;
       child = child->GetNextSiblingElement()) {
    m_children->AppendItem(reader.Read(child));
  }
}

}  // namespace QzXmlLib16
