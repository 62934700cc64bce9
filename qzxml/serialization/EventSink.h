#pragma once

#include "qzxml/platform/Export.h"

namespace QzXmlLib16 {

class CXmlObjectBase;

// Hears what happens to the collections that it listens to. A listener is called on the thread that
// changes the collection, inside the operation; it may throw before the change has been made, and
// the change is then not made.
class QZXML_API IEventSink {
 public:
  // What happened. The pointer beside it is told with each.
  enum MsgType : int {
    MsgType_CollectionChange = 0,          // null
    MsgType_CollectionAdd = 1,             // the item; it is not in the collection yet
    MsgType_CollectionAddComplete = 2,     // the item
    MsgType_CollectionRemove = 3,          // a std::int32_t, the index; null where it is -1
    MsgType_CollectionRemoveComplete = 4,  // as above; the item is gone
  };

  // sender is the collection's CXmlObjectBase.
  virtual void OnEvent(CXmlObjectBase* sender, MsgType type, void* data) = 0;

 protected:
  IEventSink() = default;
  IEventSink(const IEventSink&) = default;
  IEventSink& operator=(const IEventSink&) = default;
  ~IEventSink() = default;  // nobody deletes through this interface
};

}  // namespace QzXmlLib16
