#include <string>
#include <utility>

#include "qzxml/json/JsonContext.h"
#include "qzxml/runtime/Functions.h"
#include "qzxml/runtime/QzException.h"
#include "qzxml/serialization/SerializationContext.h"
#include "qzxml/serialization/XmlObjectBase.h"
#include "qzxml/values/BinaryData.h"
#include "qzxml/xml/GrowthBound.h"
#include "qzxml/xml/XmlDocument.h"

// The entry points for JSON. Names and some texts of JSON stand in its XML as they are, so that a
// hostile one can bring a document type with it; the origin lets the tree of the XML be bounded by
// the size of the JSON.

namespace QzXmlLib16 {
namespace {

// Ignores namespaces in a context while it lives, if it is to. The flag is one that may be changed
// in a const context.
class CNamespacesIgnored {
 public:
  CNamespacesIgnored(const CSerializationContext& context, bool ignore)
      : m_context(const_cast<CSerializationContext&>(context)),
        m_bIgnore(ignore),
        m_bBefore(context.GetIgnoreNamespaces()) {
    if (m_bIgnore) m_context.SetIgnoreNamespaces(true);
  }
  CNamespacesIgnored(const CNamespacesIgnored&) = delete;
  CNamespacesIgnored& operator=(const CNamespacesIgnored&) = delete;
  ~CNamespacesIgnored() {
    if (m_bIgnore) m_context.SetIgnoreNamespaces(m_bBefore);
  }

 private:
  CSerializationContext& m_context;
  const bool m_bIgnore;
  const bool m_bBefore;
};

}  // namespace

void CXmlObjectBase::FromJsonFile(const char* fileName, const CSerializationContext& context) {
  const detail::CInputOrigin origin;
  CXmlDocument document(context);
  FromJson_Int(document.LoadJsonFile(fileName), context);
}

void CXmlObjectBase::FromJson(const wchar_t* text, const CSerializationContext& context) {
  const detail::CInputOrigin origin;
  CXmlDocument document(context);
  FromJson_Int(document.LoadJson(text), context);
}

void CXmlObjectBase::FromJson(const char16_t* text, const CSerializationContext& context) {
  const detail::CInputOrigin origin;
  CXmlDocument document(context);
  FromJson_Int(document.LoadJson(text), context);
}

void CXmlObjectBase::FromJson(const char* text, const CSerializationContext& context) {
  const detail::CInputOrigin origin;
  CXmlDocument document(context);
  FromJson_Int(document.LoadJson(text), context);
}

void CXmlObjectBase::FromJsonStream(const CBinaryData& data, const CSerializationContext& context) {
  FromJsonStream(data.GetData(), data.GetLength(), context);
}

void CXmlObjectBase::FromJsonStream(const BYTE* data, DWORD length,
                                    const CSerializationContext& context) {
  const detail::CInputOrigin origin;
  CXmlDocument document(context);
  FromJson_Int(document.LoadJsonStream(data, length), context);
}

// JSON that is not written with all of XML has lost its namespaces.
void CXmlObjectBase::FromJson_Int(const CBinaryData& xml, const CSerializationContext& context) {
  const bool hasNamespaces = context.GetJsonContext().GetSupportRoundtrip() == JsonRoundTrip_Full;
  const CNamespacesIgnored namespacesIgnored(context, !hasNamespaces);
  try {
    FromXmlStream(xml, context);
  } catch (const CQzException& e) {
    // The text is appended, since it can be longer than what is formatted.
    std::string message = FormatString("Error converting JSON to XML:\n%s", "");
    message.append(reinterpret_cast<const char*>(xml.GetData()), xml.GetLength());
    throw CQzException(std::move(message), e);
  }
}

}  // namespace QzXmlLib16
