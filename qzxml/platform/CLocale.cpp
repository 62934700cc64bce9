#include "qzxml/platform/CLocale.h"

#include <locale.h>
#if defined(__APPLE__)
#include <xlocale.h>
#endif

#include <cstdarg>
#include <cstdio>
#include <cstdlib>

namespace QzXmlLib16 {
namespace detail {
namespace {

// While one lives, the calling thread works in the "C" locale. Where the system has no room for the
// locale the thread keeps its own.
class CThreadCLocale {
 public:
  CThreadCLocale() : m_previous(uselocale(Handle())) {}
  ~CThreadCLocale() { uselocale(m_previous); }
  CThreadCLocale(const CThreadCLocale&) = delete;
  CThreadCLocale& operator=(const CThreadCLocale&) = delete;

 private:
  static locale_t Handle() {
    static const locale_t s_handle = newlocale(LC_ALL_MASK, "C", static_cast<locale_t>(nullptr));
    return s_handle;
  }

  const locale_t m_previous;
};

// Takes the value as a variable argument, as the compiler can not look into the format.
int Print(char* buffer, std::size_t size, const char* format, ...) {
  std::va_list arguments;
  va_start(arguments, format);
  const int length = std::vsnprintf(buffer, size, format, arguments);
  va_end(arguments);
  return length;
}

}  // namespace

int FormatReal(char* buffer, std::size_t size, const char* format, double value) {
  const CThreadCLocale scope;
  return Print(buffer, size, format, value);
}

double ParseReal(const char* text) {
  const CThreadCLocale scope;
  return std::strtod(text, nullptr);
}

}  // namespace detail
}  // namespace QzXmlLib16
