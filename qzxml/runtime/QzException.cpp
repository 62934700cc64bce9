#include "qzxml/runtime/QzException.h"

#include <utility>

namespace QzXmlLib16 {

namespace {

std::string WithPath(std::string message, const std::string& path) {
  if (!path.empty()) {
    message += "\nPath: ";
    message += path;
  }
  return message;
}

}  // namespace

CQzException::CQzException(std::string message) : m_strMessage(std::move(message)) {}

CQzException::CQzException(std::string message, const CQzException& inner)
    : m_strMessage(std::move(message)), m_pInner(inner.Clone()) {}

CQzException::CQzException(std::string message, std::string path)
    : m_strMessage(WithPath(std::move(message), path)), m_strPath(std::move(path)) {}

CQzException::CQzException(std::string message, std::string path, const CQzException& inner)
    : m_strMessage(WithPath(std::move(message), path)),
      m_strPath(std::move(path)),
      m_pInner(inner.Clone()) {}

CQzException::CQzException(const CQzException& other)
    : m_strMessage(other.m_strMessage),
      m_strPath(other.m_strPath),
      m_pInner(Hold(other.m_pInner)) {}

CQzException& CQzException::operator=(const CQzException& other) {
  m_strMessage = other.m_strMessage;
  // Held before the old chain is dropped: the other may be a link of it.
  const CQzException* const replaced = std::exchange(m_pInner, Hold(other.m_pInner));
  Drop(replaced);
  return *this;
}

CQzException::~CQzException() { Drop(m_pInner); }

const CQzException* CQzException::Hold(const CQzException* link) {
  if (link != nullptr) link->m_links.fetch_add(1, std::memory_order_relaxed);
  return link;
}

// A loop: each link is parted from the next before it goes, so a chain of any length needs no
// stack.
void CQzException::Drop(const CQzException* link) {
  while (link != nullptr && link->m_links.fetch_sub(1, std::memory_order_acq_rel) == 1) {
    const CQzException* const next = link->m_pInner;
    const_cast<CQzException*>(link)->m_pInner = nullptr;
    delete link;
    link = next;
  }
}

std::string CQzException::GetFullMessage() const {
  std::string text = m_strMessage;
  for (const CQzException* link = m_pInner; link != nullptr; link = link->m_pInner) {
    text += '\n';
    text += link->m_strMessage;
  }
  return text;
}

CQzException* CQzException::Clone() const { return new CQzException(*this); }

// ---- The derived classes ----

CQzValidationException::CQzValidationException(std::string message, std::string path)
    : CQzException(std::move(message), std::move(path)) {}
CQzValidationException::CQzValidationException(std::string message, std::string path,
                                               const CQzException& inner)
    : CQzException(std::move(message), std::move(path), inner) {}
CQzValidationException::CQzValidationException(const CQzException& other) : CQzException(other) {}
CQzException* CQzValidationException::Clone() const { return new CQzValidationException(*this); }

CQzInvalidValueException::CQzInvalidValueException(std::string message)
    : CQzValidationException(std::move(message), std::string()) {}
CQzInvalidValueException::CQzInvalidValueException(std::string message, const CQzException& inner)
    : CQzValidationException(std::move(message), std::string(), inner) {}
CQzInvalidValueException::CQzInvalidValueException(const CQzException& other)
    : CQzValidationException(other) {}
CQzException* CQzInvalidValueException::Clone() const {
  return new CQzInvalidValueException(*this);
}

CQzInvalidNamespaceException::CQzInvalidNamespaceException(std::string message, std::string path)
    : CQzValidationException(std::move(message), std::move(path)) {}
CQzInvalidNamespaceException::CQzInvalidNamespaceException(std::string message, std::string path,
                                                           const CQzException& inner)
    : CQzValidationException(std::move(message), std::move(path), inner) {}
CQzInvalidNamespaceException::CQzInvalidNamespaceException(const CQzException& other)
    : CQzValidationException(other) {}
CQzException* CQzInvalidNamespaceException::Clone() const {
  return new CQzInvalidNamespaceException(*this);
}

CQzInvalidStateException::CQzInvalidStateException(std::string message)
    : CQzException(std::move(message)) {}
CQzInvalidStateException::CQzInvalidStateException(std::string message, const CQzException& inner)
    : CQzException(std::move(message), inner) {}
CQzInvalidStateException::CQzInvalidStateException(const CQzException& other)
    : CQzException(other) {}
CQzException* CQzInvalidStateException::Clone() const {
  return new CQzInvalidStateException(*this);
}

CQzInvalidParamException::CQzInvalidParamException(std::string message)
    : CQzException(std::move(message)) {}
CQzInvalidParamException::CQzInvalidParamException(std::string message, const CQzException& inner)
    : CQzException(std::move(message), inner) {}
CQzInvalidParamException::CQzInvalidParamException(const CQzException& other)
    : CQzException(other) {}
CQzException* CQzInvalidParamException::Clone() const {
  return new CQzInvalidParamException(*this);
}

CQzOverFlowException::CQzOverFlowException(std::string message)
    : CQzException(std::move(message)) {}
CQzOverFlowException::CQzOverFlowException(std::string message, const CQzException& inner)
    : CQzException(std::move(message), inner) {}
CQzOverFlowException::CQzOverFlowException(const CQzException& other) : CQzException(other) {}
CQzException* CQzOverFlowException::Clone() const { return new CQzOverFlowException(*this); }

}  // namespace QzXmlLib16
