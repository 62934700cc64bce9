#pragma once

#include <type_traits>
#include <utility>

#include "qzxml/platform/Assert.h"

// A handle on an object that counts its own references with AddRef and Release: CXmlObjectBase and
// what derives from it. Each handle that is not null stands for one reference; the object deletes
// itself when the last one goes.
//
// A handle takes no lock: it is as safe between threads as AddRef and Release of its object, and
// one handle belongs to one thread at a time.
template <typename T>
class CSmartPtr {
 public:
  using element_type = T;

  CSmartPtr() = default;
  CSmartPtr(T* object) : p(object) {
    if (p != nullptr) p->AddRef();
  }
  CSmartPtr(const CSmartPtr& other) : CSmartPtr(other.p) {}
  CSmartPtr(CSmartPtr&& other) noexcept : p(std::exchange(other.p, nullptr)) {}

  // From a handle on a derived class.
  template <typename U, typename = std::enable_if_t<std::is_convertible_v<U*, T*>>>
  CSmartPtr(const CSmartPtr<U>& other) : CSmartPtr(static_cast<U*>(other)) {}

  ~CSmartPtr() {
    if (p != nullptr) p->Release();
  }

  // The object held before is released after the new one is held. Takes a raw pointer and null too.
  CSmartPtr& operator=(CSmartPtr other) noexcept {
    std::swap(p, other.p);
    return *this;
  }

  // Both assert "p != 0": dereferencing an empty handle is the caller's mistake.
  T* operator->() const {
    QZ_ASSERT_TEXT(p != nullptr, "p != 0");
    return p;
  }
  T& operator*() const {
    QZ_ASSERT_TEXT(p != nullptr, "p != 0");
    return *p;
  }

  // The pointer, null or not; what tests a handle and compares two.
  operator T*() const { return p; }

 private:
  T* p = nullptr;
};

// Written out, so that comparing needs no conversion and works while T is incomplete.
template <typename T>
bool operator==(const CSmartPtr<T>& handle, decltype(nullptr)) {
  return static_cast<T*>(handle) == nullptr;
}
template <typename T>
bool operator==(decltype(nullptr), const CSmartPtr<T>& handle) {
  return static_cast<T*>(handle) == nullptr;
}
template <typename T>
bool operator!=(const CSmartPtr<T>& handle, decltype(nullptr)) {
  return static_cast<T*>(handle) != nullptr;
}
template <typename T>
bool operator!=(decltype(nullptr), const CSmartPtr<T>& handle) {
  return static_cast<T*>(handle) != nullptr;
}
