#include "qzxml/serialization/SerializationContext.h"

#include "qzxml/collections/AttributeCol.h"
#include "qzxml/fastinfoset/FastInfosetContext.h"
#include "qzxml/json/JsonContext.h"
#include "qzxml/platform/InitOrder.h"
#include "qzxml/runtime/QzException.h"
#include "qzxml/runtime/SmartPtr.h"
#include "qzxml/serialization/Messages.h"
#include "qzxml/serialization/TextOrEmpty.h"

namespace QzXmlLib16 {

CSerializationContext::CSerializationContext() = default;
CSerializationContext::CSerializationContext(const CSerializationContext& other) = default;
CSerializationContext& CSerializationContext::operator=(const CSerializationContext& other) =
    default;
CSerializationContext::~CSerializationContext() = default;

CSerializationContext& CSerializationContext::GetDefaultContext() {
  static CSerializationContext context;
  return context;
}

namespace {

// Makes the default context when the library is loaded, if nobody was earlier: made on first use it
// would go before the static objects that the program had built by then, which may still need it.
struct DefaultContextMaker {
  DefaultContextMaker() { CSerializationContext::GetDefaultContext(); }
};

QZXML_INIT_ORDER(detail::InitOrder_DefaultContext) const DefaultContextMaker g_maker;

}  // namespace

void CSerializationContext::SetDefaultNamespaceURI(const char* uri) {
  m_strDefaultNamespaceURI = detail::TextOrEmpty(uri);
}

void CSerializationContext::SetInLineSchema(const char* schema) {
  m_strInLineSchema = detail::TextOrEmpty(schema);
}

void CSerializationContext::SetIndentChars(const char* indent) {
  const std::string unit = detail::TextOrEmpty(indent);
  if (unit.find_first_not_of(" \t") != std::string::npos) {
    throw CQzInvalidParamException(
        "IndentChars can only contain Whitespace characters, i.e. \\t or spaces");
  }
  m_strIndentChars = unit;
}

void CSerializationContext::SetIgnoreUnknownElements(bool ignore) {
  if (ignore && m_bIgnoreMissingMandatoryElements) {
    throw CQzInvalidStateException(Messages::kUnknownAndMissingElements);
  }
  m_bIgnoreUnknownElements = ignore;
}

void CSerializationContext::SetIgnoreMissingMandatoryElements(bool ignore) {
  if (ignore && m_bIgnoreUnknownElements) {
    throw CQzInvalidStateException(Messages::kUnknownAndMissingElements);
  }
  m_bIgnoreMissingMandatoryElements = ignore;
}

CSmartPtr<CAttributeCol> CSerializationContext::GetAdditionalRootAttributes() const {
  return CSmartPtr<CAttributeCol>(m_additionalRootAttributes.GetOrMake());
}

CJsonContext& CSerializationContext::GetJsonContext() const { return m_jsonContext.GetOrMake(); }

CFastInfosetContext& CSerializationContext::GetFIContext() const {
  return m_fastInfosetContext.GetOrMake();
}

// Whoever comes second gives up what it made and takes what the first has put there.
template <typename Options>
Options& CSerializationContext::CFormatOptions<Options>::GetOrMake() {
  std::shared_ptr<Options> present = Share();
  if (present != nullptr) return *present;
  const std::shared_ptr<Options> made = std::make_shared<Options>();
  return std::atomic_compare_exchange_strong(&m_p, &present, made) ? *made : *present;
}

CSerializationContext::CRootAttributes::CRootAttributes(const CRootAttributes& other)
    : m_p(other.Share()) {}

CSerializationContext::CRootAttributes& CSerializationContext::CRootAttributes::operator=(
    const CRootAttributes& other) {
  CAttributeCol* const former = m_p.exchange(other.Share(), std::memory_order_acq_rel);
  if (former != nullptr) former->Release();
  return *this;
}

CSerializationContext::CRootAttributes::~CRootAttributes() {
  CAttributeCol* const attributes = m_p.load(std::memory_order_acquire);
  if (attributes != nullptr) attributes->Release();
}

CAttributeCol* CSerializationContext::CRootAttributes::Share() const {
  CAttributeCol* const attributes = m_p.load(std::memory_order_acquire);
  if (attributes != nullptr) attributes->AddRef();
  return attributes;
}

// Whoever comes second gives up what it made and takes what the first has put there.
CAttributeCol* CSerializationContext::CRootAttributes::GetOrMake() {
  CAttributeCol* present = m_p.load(std::memory_order_acquire);
  if (present != nullptr) return present;
  CAttributeCol* const made = new CAttributeCol("", "##any", "");
  made->AddRef();
  if (m_p.compare_exchange_strong(present, made, std::memory_order_acq_rel)) return made;
  made->Release();
  return present;
}

}  // namespace QzXmlLib16
