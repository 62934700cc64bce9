#pragma once

#include "qzxml/binding/Member.h"

// How the collections of bound classes are copied. Not for others.
namespace QzXmlLib16 {
namespace detail {

class QZXML_API IItemCopying {
 public:
  // Appends copies of all items of a collection of the same class.
  virtual void CopyItems(const CXmlCollectionBase& from) = 0;

 protected:
  ~IItemCopying() = default;
};

// A copy of an object of a bound class or of open content, with all that is below it.
CObjectHandle CopyOfObject(const CXmlObjectBase& object);

}  // namespace detail
}  // namespace QzXmlLib16
