#include "qzxml/runtime/FormatCheck.h"

#include "qzxml/platform/Assert.h"

#if defined(QZXML_ASSERTIONS)

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace QzXmlLib16::detail {

namespace {

// What stands between '%' and the conversion, as far as it decides the argument's type.
enum class Size { kInt, kLong, kLongLong, kIntMax, kSize, kDifference, kLongDouble };

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// A width or a precision: digits, or '*' for an argument, whose value is the result; 0 otherwise.
int ReadNumber(const char*& at, std::va_list* arguments) {
  if (*at == '*') {
    ++at;
    return va_arg(*arguments, int);
  }
  while (IsDigit(*at)) ++at;
  return 0;
}

// Meant: 'F', 'L' and 'N' are prefixes, as the formats of generated code have it.
Size ReadSize(const char*& at) {
  Size size = Size::kInt;
  for (;; ++at) {
    switch (*at) {
      case 'F':
      case 'N':
      case 'h':
        break;
      case 'L':
        size = Size::kLongDouble;
        break;
      case 'l':
        size = size == Size::kLong ? Size::kLongLong : Size::kLong;
        break;
      case 'j':
        size = Size::kIntMax;
        break;
      case 'z':
        size = Size::kSize;
        break;
      case 't':
        size = Size::kDifference;
        break;
      default:
        return size;
    }
  }
}

void SkipInteger(Size size, std::va_list* arguments) {
  switch (size) {
    case Size::kLong:
      static_cast<void>(va_arg(*arguments, long));
      break;
    case Size::kLongLong:
      static_cast<void>(va_arg(*arguments, long long));
      break;
    case Size::kIntMax:
      static_cast<void>(va_arg(*arguments, std::intmax_t));
      break;
    case Size::kSize:
      static_cast<void>(va_arg(*arguments, std::size_t));
      break;
    case Size::kDifference:
      static_cast<void>(va_arg(*arguments, std::ptrdiff_t));
      break;
    default:
      static_cast<void>(va_arg(*arguments, int));
  }
}

// Passes over the argument of a conversion; false when the conversion is not known.
bool SkipArgument(char conversion, Size size, std::va_list* arguments) {
  if (conversion == '\0') return false;
  if (std::strchr("diouxX", conversion) != nullptr) {
    SkipInteger(size, arguments);
  } else if (conversion == 'c' || conversion == 'C') {
    SkipInteger(Size::kInt, arguments);
  } else if (std::strchr("sSpn", conversion) != nullptr) {
    static_cast<void>(va_arg(*arguments, void*));
  } else if (std::strchr("efgG", conversion) == nullptr) {
    return false;
  } else if (size == Size::kLongDouble) {
    static_cast<void>(va_arg(*arguments, long double));
  } else {
    static_cast<void>(va_arg(*arguments, double));
  }
  return true;
}

void CheckConversions(const char* at, std::va_list* arguments) {
  while ((at = std::strchr(at, '%')) != nullptr) {
    ++at;
    if (*at == '%') {
      ++at;
      continue;
    }
    while (*at != '\0' && std::strchr("#-+0 ", *at) != nullptr) ++at;
    const int nWidth = ReadNumber(at, arguments);
    QZ_ASSERT(nWidth >= 0);
    if (*at == '.') {
      ++at;
      const int nPrecision = ReadNumber(at, arguments);
      QZ_ASSERT(nPrecision >= 0);
    }
    const Size size = ReadSize(at);
    if (!SkipArgument(*at, size, arguments)) {
      QZ_ASSERT_TEXT(false, "0");
      return;
    }
    ++at;
  }
}

}  // namespace

void CheckFormat(const char* format, std::va_list arguments) {
  std::va_list copy;
  va_copy(copy, arguments);
  // A handler that throws leaves va_end out, which is a formality on every platform of the library.
  CheckConversions(format, &copy);
  va_end(copy);
}

}  // namespace QzXmlLib16::detail

#else

namespace QzXmlLib16::detail {

void CheckFormat(const char*, std::va_list) {}

}  // namespace QzXmlLib16::detail

#endif
