#include "qzxml/json/JsonContext.h"

#include "qzxml/serialization/TextOrEmpty.h"

namespace QzXmlLib16 {

CJsonContext::CJsonContext() = default;
CJsonContext::CJsonContext(const CJsonContext& other) = default;
CJsonContext& CJsonContext::operator=(const CJsonContext& other) = default;
CJsonContext::~CJsonContext() = default;

void CJsonContext::SetRootElementName(const char* name) {
  m_strRootElementName = detail::TextOrEmpty(name);
}

}  // namespace QzXmlLib16
