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

}  // namespace

int FormatNeutral(char* text, std::size_t size, const char* format, std::va_list arguments) {
  if (std::strcmp(nl_langinfo(RADIXCHAR), ".") == 0) {
    return std::vsnprintf(text, size, format, arguments);
  }
  const NeutralNumbers neutral;
  return std::vsnprintf(text, size, format, arguments);
}

}  // namespace QzXmlLib16::detail
