#pragma once

#include "qzxml/platform/Export.h"

namespace QzXmlLib16 {

// Implemented beside CXmlGeneratedClass by a class whose element may carry xsi:nil. Reading and
// writing find it by a dynamic cast.
// Source: XML Schema 1.0 part 1, section 2.6.2.
class QZXML_API INillable {
 public:
  virtual bool GetIsNil() = 0;
  virtual void SetIsNil(bool isNil) = 0;

 protected:
  INillable() = default;
  INillable(const INillable&) = default;
  INillable& operator=(const INillable&) = default;
  ~INillable() = default;  // nobody deletes through this interface
};

}  // namespace QzXmlLib16
