#pragma once

#include <mutex>

#include "qzxml/platform/Export.h"

// The library's lock. The thread that holds it may enter again; it leaves as often as it entered.
class QZXML_API CQZCriticalSection {
 public:
  CQZCriticalSection();
  CQZCriticalSection(const CQZCriticalSection&) = delete;
  CQZCriticalSection& operator=(const CQZCriticalSection&) = delete;
  virtual ~CQZCriticalSection();

  void Enter() { m_mutex.lock(); }
  void Leave() { m_mutex.unlock(); }

 private:
  std::recursive_mutex m_mutex;
};

namespace QzXmlLib16::detail {

// Holds a lock for as long as it lives.
class CriticalSectionGuard {
 public:
  explicit CriticalSectionGuard(CQZCriticalSection& section) : m_section(section) {
    m_section.Enter();
  }
  CriticalSectionGuard(const CriticalSectionGuard&) = delete;
  CriticalSectionGuard& operator=(const CriticalSectionGuard&) = delete;
  ~CriticalSectionGuard() { m_section.Leave(); }

 private:
  CQZCriticalSection& m_section;
};

}  // namespace QzXmlLib16::detail
