#include "qzxml/collections/XmlCollectionBase.h"

#include <algorithm>
#include <cstddef>
#include <utility>
#include <vector>

#include "qzxml/runtime/Functions.h"
#include "qzxml/runtime/QzException.h"
#include "qzxml/serialization/TextOrEmpty.h"

namespace QzXmlLib16 {

// The listeners in the order of their registration. While some of them are being called, an entry
// that is removed becomes null and keeps its place, and one that is added goes behind those that
// the call is for; the places are closed up when the outermost call has ended.
class CXmlCollectionBase::CListeners {
 public:
  void Add(IEventSink* listener) { m_sinks.push_back(listener); }

  void Remove(IEventSink* listener) {
    std::replace(m_sinks.begin(), m_sinks.end(), listener, static_cast<IEventSink*>(nullptr));
    CloseUp();
  }

  bool IsEmpty() const { return m_sinks.empty(); }

  template <class Tell>
  void ForEach(Tell tell) {
    const CCall call(*this);
    const std::size_t count = m_sinks.size();
    for (std::size_t i = 0; i < count; ++i) {
      if (m_sinks[i] != nullptr) tell(m_sinks[i]);
    }
  }

 private:
  class CCall {
   public:
    explicit CCall(CListeners& listeners) : m_listeners(listeners) { ++m_listeners.m_calls; }
    ~CCall() {
      --m_listeners.m_calls;
      m_listeners.CloseUp();
    }
    CCall(const CCall&) = delete;
    CCall& operator=(const CCall&) = delete;

   private:
    CListeners& m_listeners;
  };

  void CloseUp() {
    if (m_calls != 0) return;
    m_sinks.erase(std::remove(m_sinks.begin(), m_sinks.end(), static_cast<IEventSink*>(nullptr)),
                  m_sinks.end());
  }

  std::vector<IEventSink*> m_sinks;  // not owned
  int m_calls = 0;                   // how many calls are under way, one inside the other
};

CXmlCollectionBase::CXmlCollectionBase() = default;

CXmlCollectionBase::CXmlCollectionBase(const char* elementName, const char* namespaceUri,
                                       int minOccurs, int maxOccurs)
    : m_strNamespace(detail::TextOrEmpty(namespaceUri)),
      m_lMinOccurs(minOccurs),
      m_lMaxOccurs(maxOccurs) {
  SetElementName(elementName);
}

CXmlCollectionBase::CXmlCollectionBase(detail::CSharedText namespaceUri, int minOccurs,
                                       int maxOccurs)
    : m_strNamespace(std::move(namespaceUri)), m_lMinOccurs(minOccurs), m_lMaxOccurs(maxOccurs) {}

CXmlCollectionBase::~CXmlCollectionBase() = default;

CXmlObjectBase* CXmlCollectionBase::GetBase() { return this; }

std::string CXmlCollectionBase::GetTargetNamespace() const {
  throw CQzException(
      "CXmlCollectionBase::GetTargetNamespace Should not be used from within a Collection (program "
      "logic error)");
}

std::string CXmlCollectionBase::GetNamespace() const { return m_strNamespace.str(); }

void CXmlCollectionBase::SetNamespace(detail::CSharedText namespaceUri) {
  m_strNamespace = std::move(namespaceUri);
}

// Occurrence

void CXmlCollectionBase::ValidateCount(const CSerializationContext& context) const {
  if (context.GetIgnoreInvalidCollectionCounts()) return;
  const int count = GetCount();
  if (count > m_lMaxOccurs && m_lMaxOccurs != -1) {
    throw CQzValidationException(
        FormatString("The Maximum number of [%s] elements allowed in this collection is %d",
                     ElementName().c_str(), m_lMaxOccurs),
        "");
  }
  if (count < m_lMinOccurs) {
    throw CQzValidationException(
        FormatString("The Minimum number of [%s] elements allowed in this collection is %d",
                     ElementName().c_str(), m_lMinOccurs),
        "");
  }
}

bool CXmlCollectionBase::IsValidCount(const CSerializationContext& context) const {
  if (context.GetIgnoreInvalidCollectionCounts()) return true;
  const int count = GetCount();
  return (count <= m_lMaxOccurs || m_lMaxOccurs == -1) && count >= m_lMinOccurs;
}

// Listeners and events

void CXmlCollectionBase::AddEventListener(IEventSink* listener) {
  if (listener == nullptr) return;
  if (m_pListeners == nullptr) m_pListeners = std::make_unique<CListeners>();
  m_pListeners->Add(listener);
}

void CXmlCollectionBase::RemoveEventListener(IEventSink* listener) {
  if (m_pListeners != nullptr) m_pListeners->Remove(listener);
}

bool CXmlCollectionBase::HasEventListeners() const {
  return m_pListeners != nullptr && !m_pListeners->IsEmpty();
}

template <class Tell>
void CXmlCollectionBase::TellListeners(Tell tell) {
  if (m_pListeners != nullptr) m_pListeners->ForEach(tell);
}

void CXmlCollectionBase::FireOnCollectionChange() {
  TellListeners([this](IEventSink* sink) { FireOnCollectionChangeEvent(sink, this); });
}

void CXmlCollectionBase::FireOnCollectionAdd(void* item) {
  TellListeners([=](IEventSink* sink) { FireOnCollectionAddEvent(sink, this, item); });
}

void CXmlCollectionBase::FireOnCollectionAddComplete(void* item) {
  TellListeners([=](IEventSink* sink) { FireOnCollectionAddCompleteEvent(sink, this, item); });
}

void CXmlCollectionBase::FireOnCollectionRemove(int index) {
  TellListeners([=](IEventSink* sink) { FireOnCollectionRemoveEvent(sink, this, index); });
}

void CXmlCollectionBase::FireOnCollectionRemoveComplete(int index) {
  TellListeners([=](IEventSink* sink) { FireOnCollectionRemoveCompleteEvent(sink, this, index); });
}

}  // namespace QzXmlLib16
