// Counts what reading numbers takes from the heap, in a process of its own, which counts every
// allocation there is: up to 27 digits on either side of the point stand in the decimal itself, and
// more of them are a vector for the side, with its digits. Ends with the number of cases that took
// something else.
#include <cstdio>
#include <cstdlib>
#include <new>
#include <string>

#include "qzxml/values/QzVariant.h"

namespace {

int g_allocations = 0;

void* Count(std::size_t size) {
  ++g_allocations;
  if (void* const memory = std::malloc(size)) return memory;
  throw std::bad_alloc();
}

}  // namespace

void* operator new(std::size_t size) { return Count(size); }
void* operator new[](std::size_t size) { return Count(size); }
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete[](void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }
void operator delete[](void* memory, std::size_t) noexcept { std::free(memory); }

namespace {

using namespace QzXmlLib16;

// How many allocations the work makes.
template <typename Work>
int CountOf(Work work) {
  const int before = g_allocations;
  work();
  return g_allocations - before;
}

int Compare(const char* what, int expected, int counted) {
  if (expected == counted) return 0;
  std::printf("%s: %d allocations, expected %d\n", what, counted, expected);
  return 1;
}

int CheckDecimal(int expected, const std::string& text) {
  return Compare(text.c_str(), expected, CountOf([&text] { const CDecimal value(text.c_str()); }));
}

int CheckRead(const char* what, ItemType type, const std::string& text, int first, int next) {
  QzVariant value;
  const auto read = [&] { value.FromString(text, type, CWhitespaceUtils::WhitespaceRule_None); };
  return Compare(what, first, CountOf(read)) + Compare(what, next, CountOf(read));
}

}  // namespace

int main() {
  int failures = 0;
  const std::string inPlace(27, '9');
  const std::string onHeap(28, '9');
  for (const std::string& text :
       {std::string("0"), std::string("-1"), std::string("-0.05"), std::string(" +12 . 50 "),
        inPlace, "0." + inPlace, inPlace + '.' + inPlace}) {
    failures += CheckDecimal(0, text);
  }
  failures += CheckDecimal(2, onHeap) + CheckDecimal(2, "0." + onHeap);
  failures += CheckDecimal(4, onHeap + '.' + onHeap);
  // A variant takes one for a value, which it keeps for the next of the same kind, and only long
  // digits are made anew.
  failures += CheckRead("decimal", ItemType_decimal, "12345678901234.5678", 1, 0);
  failures += CheckRead("a long decimal", ItemType_decimal, onHeap + '.' + onHeap, 5, 2);
  failures += CheckRead("integer", ItemType_integer, "123456789012345678", 1, 0);
  failures += CheckRead("a long integer", ItemType_integer, onHeap, 3, 1);
  failures += CheckRead("date", ItemType_date, "2004-05-06", 1, 0);
  failures += CheckRead("i4", ItemType_i4, "-2147483648", 0, 0);
  failures += CheckRead("r8", ItemType_r8, "-1.7976931348623157e+308", 0, 0);
  return failures;
}
