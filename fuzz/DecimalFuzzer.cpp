// Two texts, a bar between them, as decimals and as integers of any size: what is read is written
// and read again, and the rules of arithmetic hold for the two.
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "qzxml/QzXml.h"

using namespace QzXmlLib16;

namespace {

void Demand(bool holds, const char* rule, const std::string& a, const std::string& b) {
  if (holds) return;
  std::fprintf(stderr, "%s does not hold for [%s] and [%s]\n", rule, a.c_str(), b.c_str());
  std::abort();
}

// A fraction that was rounded up to a whole is not carried, and its text is that of another number.
bool IsCarried(const CDecimal& value) {
  const std::string fraction = value.GetFractionPart().GetAbs().ToString();
  return fraction.size() <= static_cast<std::size_t>(value.GetFractionDivider());
}

template <typename Value>
bool Read(const std::string& text, Value& value) {
  try {
    value.Parse(text.c_str());
    return true;
  } catch (const CQzInvalidValueException&) {
    return false;
  }
}

template <typename Number>
void Convert(Number convert) {
  try {
    convert();
  } catch (const CQzOverFlowException&) {
  }
}

void CheckDecimal(const CDecimal& value) {
  const std::string text = value.ToString();
  CDecimal again;
  Demand(Read(text, again), "a written decimal can be read", text, "");
  if (IsCarried(value)) Demand(again == value, "a decimal comes back", text, again.ToString());
  CDecimal once;
  Demand(Read(again.ToString(), once) && once.ToString() == again.ToString(), "a text comes back",
         again.ToString(), once.ToString());
  for (int places = 0; places < 40; places += 3) static_cast<void>(value.ToString(places));
  Convert([&] { static_cast<void>(value.ToLong()); });
  Convert([&] { static_cast<void>(value.ToLongLong()); });
  Convert([&] { static_cast<void>(value.ToDouble()); });
  Demand(CBigInteger(value) == value.ToBigInteger(), "an integer is a rounded decimal", text, "");
}

void CheckDecimals(const CDecimal& a, const CDecimal& b) {
  const std::string left = a.ToString();
  const std::string right = b.ToString();
  Demand((a < b) == (b > a) && !(a < b && b < a), "one of two is less", left, right);
  Demand(a + b == b + a, "a + b = b + a", left, right);
  Demand(a * b == b * a, "a * b = b * a", left, right);
  if (IsCarried(a) && IsCarried(b)) Demand((a + b) - b == a, "(a + b) - b = a", left, right);
  try {
    static_cast<void>(a / b);
    Demand(b != CDecimal(), "zero divides nothing", left, right);
  } catch (const CQzInvalidValueException&) {
    Demand(b == CDecimal(), "what is not zero divides", left, right);
  }
}

void CheckInteger(const CBigInteger& value) {
  const std::string text = value.ToString();
  Demand(CBigInteger(text.c_str()) == value, "an integer comes back", text, "");
  if (value <= CBigInteger()) return;
  const CBigInteger root = value.SquareRoot();
  const CBigInteger next = root + CBigInteger(1);
  Demand(root * root <= value && value < next * next, "a root is rounded down", text, "");
}

void CheckIntegers(const CBigInteger& a, const CBigInteger& b) {
  const std::string left = a.ToString();
  const std::string right = b.ToString();
  Demand((a + b) - b == a, "(a + b) - b = a", left, right);
  Demand(a * b == b * a, "a * b = b * a", left, right);
  if (b <= CBigInteger()) return;
  const CBigInteger rest = a % b;
  Demand((a / b) * b + rest == a, "quotient and remainder make the number", left, right);
  Demand(rest.GetAbs() < b, "a remainder is less than the divisor", left, right);
}

template <typename Value, typename One, typename Two>
void Check(const std::string& left, const std::string& right, One one, Two two) {
  Value a;
  Value b;
  const bool hasBoth = Read(left, a) && Read(right, b);
  one(a);
  one(b);
  if (hasBoth) two(a, b);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size > 4096) return 0;
  const std::string input(reinterpret_cast<const char*>(data), size);
  const std::size_t bar = input.find('|');
  const std::string left = input.substr(0, bar);
  const std::string right = bar == std::string::npos ? std::string() : input.substr(bar + 1);
  Check<CDecimal>(left, right, &CheckDecimal, &CheckDecimals);
  Check<CBigInteger>(left, right, &CheckInteger, &CheckIntegers);
  return 0;
}
