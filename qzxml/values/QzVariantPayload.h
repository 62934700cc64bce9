#pragma once

#include <memory>
#include <utility>

#include "qzxml/values/QzVariant.h"

// How a variant takes a payload and gives it up, for the sources of QzVariant.
//
// The kind decides which member of the union is in use. Whatever sets a kind whose payload is a
// pointer has the new payload ready before the old one goes, so that neither a failed allocation
// nor a payload that lives by the old one alone leaves a pointer to nothing.
namespace QzXmlLib16 {

// Whether there is a payload of this kind that may be written to.
template <typename T>
bool QzVariant::OwnsPayload(ItemType type, T* Value::*member) const {
  return m_type == type && m_value.*member != nullptr && !m_isLent;
}

// A payload that is there already takes the value over.
template <typename T>
void QzVariant::SetOwned(ItemType type, T* Value::*member, T value) {
  if (OwnsPayload(type, member)) {
    *(m_value.*member) = std::move(value);
    m_isNil = false;
    return;
  }
  std::unique_ptr<T> payload = std::make_unique<T>(std::move(value));
  Clear();
  m_type = type;
  m_value.*member = payload.release();
}

template <typename T>
void QzVariant::LendPayload(ItemType type, T* Value::*member, const T& value) {
  if (m_type == type && m_value.*member == &value) return;
  Clear();
  m_type = type;
  m_isLent = true;
  m_value.*member = const_cast<T*>(&value);  // never written through
}

// The payload is there.
template <typename T>
T QzVariant::TakePayload(T* Value::*member) {
  if (m_isLent && !m_isGiven) return *(m_value.*member);
  T value = std::move(*(m_value.*member));
  Clear();
  return value;
}

template <typename T>
void QzVariant::FreePayload(T* Value::*member) {
  T* const payload = std::exchange(m_value.*member, nullptr);
  if (!std::exchange(m_isLent, false)) delete payload;
  m_isGiven = false;
}

template <typename T>
void QzVariant::CopyOwned(const QzVariant& other, T* Value::*member) {
  if (other.m_value.*member != nullptr) m_value.*member = new T(*(other.m_value.*member));
}

}  // namespace QzXmlLib16
