#pragma once

#include <clocale>

namespace qztest {

// While one lives, this thread runs in the "C" locale, whatever that of the process is: for what a
// test asks of the C library.
class CLocale {
 public:
  CLocale() : m_before(uselocale(Get())) {}
  CLocale(const CLocale&) = delete;
  CLocale& operator=(const CLocale&) = delete;
  ~CLocale() { uselocale(m_before); }

 private:
  static locale_t Get() {
    static const locale_t s_locale = newlocale(LC_ALL_MASK, "C", nullptr);
    return s_locale;
  }

  locale_t m_before;
};

}  // namespace qztest
