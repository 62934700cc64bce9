#include "qzxml/serialization/XmlObjectBase.h"

#include <cstring>

#include "qzxml/collections/XmlCollectionBase.h"
#include "qzxml/serialization/TextOrEmpty.h"

namespace QzXmlLib16 {

CXmlObjectBase::CXmlObjectBase() : m_lRefCount(0) {}

CXmlObjectBase::CXmlObjectBase(const CXmlObjectBase& other)
    : IEventSink(other),
      m_strElementName(other.m_strElementName),
      // Meant: the count comes along as it stands, for callers that count copies on.
      m_lRefCount(other.m_lRefCount.load(std::memory_order_relaxed)) {}

CXmlObjectBase& CXmlObjectBase::operator=(const CXmlObjectBase& other) {
  m_strElementName = other.m_strElementName;
  return *this;
}

CXmlObjectBase::~CXmlObjectBase() = default;

void CXmlObjectBase::Destroy() { delete this; }

void CXmlObjectBase::OnEvent(CXmlObjectBase*, MsgType, void*) {}

void CXmlObjectBase::SetElementName(const char* name) {
  const char* const text = detail::TextOrEmpty(name);
  // Mostly a factory says again what the constructor has said.
  if (std::strcmp(m_strElementName.c_str(), text) != 0) m_strElementName = text;
}

void CXmlObjectBase::SetElementName(CXmlObjectBase* object, const char* name) {
  object->SetElementName(name);
}

void CXmlObjectBase::AttributesToXml_Int(CXmlWriter*, const CSerializationContext&) const {}

void CXmlObjectBase::AttributesToXml_Int(const CXmlObjectBase* object, CXmlWriter* writer,
                                         const CSerializationContext& context) {
  object->AttributesToXml_Int(writer, context);
}

void CXmlObjectBase::ToXml_Int(const CXmlObjectBase* object, CXmlWriter* writer, bool root,
                               const char* namespaceUri, const CSerializationContext& context,
                               bool optionalChoice) {
  object->ToXml_Int(writer, root, namespaceUri, context, optionalChoice);
}

CXmlElement* CXmlObjectBase::FromXml_Int(CXmlObjectBase* object, CXmlElement* parent,
                                         CXmlElement* cursor,
                                         const CSerializationContext& context) {
  return object->FromXml_Int(parent, cursor, context, false);
}

void CXmlObjectBase::FireOnCollectionChangeEvent(IEventSink* sink, CXmlCollectionBase* collection) {
  sink->OnEvent(collection->GetBase(), MsgType_CollectionChange, nullptr);
}

void CXmlObjectBase::FireOnCollectionAddEvent(IEventSink* sink, CXmlCollectionBase* collection,
                                              void* item) {
  sink->OnEvent(collection->GetBase(), MsgType_CollectionAdd, item);
}

void CXmlObjectBase::FireOnCollectionAddCompleteEvent(IEventSink* sink,
                                                      CXmlCollectionBase* collection, void* item) {
  sink->OnEvent(collection->GetBase(), MsgType_CollectionAddComplete, item);
}

void CXmlObjectBase::FireOnCollectionRemoveEvent(IEventSink* sink, CXmlCollectionBase* collection,
                                                 int index) {
  std::int32_t position = index;
  sink->OnEvent(collection->GetBase(), MsgType_CollectionRemove, index != -1 ? &position : nullptr);
}

void CXmlObjectBase::FireOnCollectionRemoveCompleteEvent(IEventSink* sink,
                                                         CXmlCollectionBase* collection,
                                                         int index) {
  std::int32_t position = index;
  sink->OnEvent(collection->GetBase(), MsgType_CollectionRemoveComplete,
                index != -1 ? &position : nullptr);
}

}  // namespace QzXmlLib16
