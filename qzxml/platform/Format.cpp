#include "qzxml/platform/Format.h"

#include <langinfo.h>
#include <locale.h>

#include <cstdio>
#include <cstring>

namespace QzXmlLib16::detail {

namespace {

// While one lives, this thread writes numbers as the C locale does; characters stay as they were.
class NeutralNumbers {
 public:
  NeutralNumbers() {
    const locale_t copy = duplocale(uselocale(nullptr));
    m_neutral = newlocale(LC_NUMERIC_MASK, "C", copy);
    if (m_neutral == nullptr) {
      freelocale(copy);
    } else {
      m_before = uselocale(m_neutral);
    }
  }
  NeutralNumbers(const NeutralNumbers&) = delete;
  NeutralNumbers& operator=(const NeutralNumbers&) = delete;
  ~NeutralNumbers() {
    if (m_neutral == nullptr) return;
    uselocale(m_before);
    freelocale(m_neutral);
  }

 private:
  locale_t m_neutral = nullptr;
  locale_t m_before = nullptr;
};

// While one lives, this thread works in the C locale wholly. That locale is made once, so this
// costs less than NeutralNumbers, but a wide text would not pass.
class PlainLocale {
 public:
  PlainLocale() : m_before(uselocale(GetPlain())) {}
  PlainLocale(const PlainLocale&) = delete;
  PlainLocale& operator=(const PlainLocale&) = delete;
  ~PlainLocale() { uselocale(m_before); }

 private:
  static locale_t GetPlain() {
    static const locale_t s_plain = newlocale(LC_ALL_MASK, "C", nullptr);
    return s_plain;
  }

  const locale_t m_before;
};

// The value as a variable argument: the compiler can not look into the format.
int PrintReal(char* text, std::size_t size, const char* format, ...) {
  std::va_list arguments;
  va_start(arguments, format);
  const int length = std::vsnprintf(text, size, format, arguments);
  va_end(arguments);
  return length;
}

}  // namespace

int FormatNeutral(char* text, std::size_t size, const char* format, std::va_list arguments) {
  if (std::strcmp(nl_langinfo(RADIXCHAR), ".") == 0) {
    return std::vsnprintf(text, size, format, arguments);
  }
  const NeutralNumbers neutral;
  return std::vsnprintf(text, size, format, arguments);
}

int FormatReal(char* text, std::size_t size, const char* format, double value) {
  const PlainLocale plain;
  return PrintReal(text, size, format, value);
}

}  // namespace QzXmlLib16::detail
