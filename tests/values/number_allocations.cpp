// Counts what reading numbers takes from the heap, in a process of its own, which counts every
// allocation there is: a decimal needs its digits and nothing besides. Ends with the number of
// cases that took something else.
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

// The digits ahead of the point and those behind it are an allocation each.
int CheckDecimal(const char* text) {
  return Compare(text, 2, CountOf([text] { const CDecimal value(text); }));
}

int CheckRead(const char* what, ItemType type, const std::string& text, int first, int next) {
  QzVariant value;
  const auto read = [&] { value.FromString(text, type, CWhitespaceUtils::WhitespaceRule_None); };
  return Compare(what, first, CountOf(read)) + Compare(what, next, CountOf(read));
}

}  // namespace

int main() {
  int failures = 0;
  for (const char* text : {"0", "-1", "1.5", "-0.05", "123456789012345678", "12345678901234.5678",
                           "0.123456789012345678", " +12 . 50 "}) {
    failures += CheckDecimal(text);
  }
  // A variant takes one more for a value, and keeps all of them for the next of the same kind.
  failures += CheckRead("decimal", ItemType_decimal, "12345678901234.5678", 3, 0);
  failures += CheckRead("integer", ItemType_integer, "123456789012345678", 2, 0);
  failures += CheckRead("date", ItemType_date, "2004-05-06", 1, 0);
  failures += CheckRead("i4", ItemType_i4, "-2147483648", 0, 0);
  failures += CheckRead("r8", ItemType_r8, "-1.7976931348623157e+308", 0, 0);
  return failures;
}
