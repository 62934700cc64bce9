#include "tests/collections/TypedCols.h"

namespace qztest {
namespace {

std::string Index(const void* data) {
  return data == nullptr ? "null" : std::to_string(*static_cast<const std::int32_t*>(data));
}

}  // namespace

CColListener::CColListener(CXmlCollectionBase& collection, TextOf textOf)
    : m_collection(collection), m_textOf(textOf) {
  collection.AddEventListener(this);
}

CColListener::~CColListener() { m_collection.RemoveEventListener(this); }

void CColListener::OnEvent(CXmlObjectBase* sender, MsgType type, void* data) {
  if (sender != m_collection.GetBase()) log.push_back("of another sender:");
  log.push_back(Describe(type, data) + ", " + std::to_string(m_collection.GetCount()));
  if (onEvent) onEvent(type, data);
}

std::string CColListener::Describe(MsgType type, void* data) const {
  switch (type) {
    case MsgType_CollectionChange:
      return data == nullptr ? "change" : "change with data";
    case MsgType_CollectionAdd:
      return "add " + m_textOf(data);
    case MsgType_CollectionAddComplete:
      return "added " + m_textOf(data);
    case MsgType_CollectionRemove:
      return "remove " + Index(data);
    case MsgType_CollectionRemoveComplete:
      return "removed " + Index(data);
  }
  return "unknown";
}

}  // namespace qztest
