#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "qzxml/collections/SharedText.h"
#include "qzxml/platform/Export.h"
#include "qzxml/serialization/XmlObjectBase.h"

namespace QzXmlLib16 {

namespace detail {
class CReadValues;
}

// What every collection of repeated elements has: the namespace and the number of its items, and
// the listeners that hear of changes. It is an object itself, so that CSmartPtr holds it, a
// property of a generated class can be one, and it is written and read like any other; its element
// name is the name that each item is written under. Cannot be copied. A collection belongs to one
// thread.
class QZXML_API CXmlCollectionBase : public CXmlObjectBase {
 public:
  CXmlCollectionBase(const CXmlCollectionBase&) = delete;
  CXmlCollectionBase& operator=(const CXmlCollectionBase&) = delete;
  ~CXmlCollectionBase() override;

  using CXmlObjectBase::GetBase;
  CXmlObjectBase* GetBase() override;

  // Throws CQzException "CXmlCollectionBase::GetTargetNamespace Should not be used from within a
  // Collection (program logic error)".
  std::string GetTargetNamespace() const override;
  // The namespace of the items.
  std::string GetNamespace() const override;

  // --- Items
  virtual int GetCount() const = 0;
  // Removes every item, the first one first, each as Remove does.
  virtual void Clear() = 0;
  virtual void Remove(int index) = 0;

  // --- Occurrence

  // The fewest and the most items that a document may have; -1 stands for no upper limit.
  int GetMinOccurs() const { return m_lMinOccurs; }
  int GetMaxOccurs() const { return m_lMaxOccurs; }

  // Throws CQzValidationException "The Maximum number of [%s] elements allowed in this collection
  // is %d" or "The Minimum number of [%s] elements allowed in this collection is %d" (empty path),
  // unless the context ignores invalid counts.
  virtual void ValidateCount(const CSerializationContext& context) const;
  // Whether ValidateCount would pass.
  virtual bool IsValidCount(const CSerializationContext& context) const;

  // --- Listeners. Not owned; each must stay until it is removed or the collection has gone.
  // They are called in the order in which they were added. A listener may add and remove listeners
  // while it is called: one that is removed is not called any more, one that is added is not called
  // for that event yet.

  // The same listener can be added more than once and is then called as often. Null is ignored.
  void AddEventListener(IEventSink* listener);
  // Removes every entry of the listener.
  void RemoveEventListener(IEventSink* listener);

 protected:
  CXmlCollectionBase();
  // Null is taken as the empty text.
  CXmlCollectionBase(const char* elementName, const char* namespaceUri, int minOccurs,
                     int maxOccurs);
  CXmlCollectionBase(detail::CSharedText namespaceUri, int minOccurs, int maxOccurs);

  // --- Events. An insertion tells of the addition, inserts, tells that it is complete and tells of
  // the change; a removal likewise. An exception of a listener goes on to the caller.
  void FireOnCollectionChange();
  void FireOnCollectionAdd(void* item);
  void FireOnCollectionAddComplete(void* item);
  void FireOnCollectionRemove(int index);
  void FireOnCollectionRemoveComplete(int index);
  bool HasEventListeners() const;

  const detail::CSharedText& Namespace() const { return m_strNamespace; }
  void SetNamespace(detail::CSharedText namespaceUri);

 private:
  friend class detail::CReadValues;
  class CListeners;

  template <class Tell>
  void TellListeners(Tell tell);

  detail::CSharedText m_strNamespace;
  std::unique_ptr<CListeners> m_pListeners;  // null until somebody listens
  std::int32_t m_lMinOccurs = 0;
  std::int32_t m_lMaxOccurs = -1;
};

}  // namespace QzXmlLib16
