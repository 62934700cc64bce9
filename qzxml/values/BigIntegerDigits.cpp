#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

#include "qzxml/platform/Assert.h"
#include "qzxml/runtime/QzException.h"
#include "qzxml/values/BigInteger.h"
#include "qzxml/values/Decimal.h"
#include "qzxml/values/Messages.h"

// The arithmetic of magnitudes: vectors of the digits 0 to 9, least significant first.
//
// Sums go digit by digit. A product or quotient that fits into 64 bits is calculated there. Larger
// ones are calculated in limbs, nine digits each: packing and unpacking costs a pass over the
// digits, and the schoolbook methods then have a ninth of the rows and of the columns. Division is
// algorithm D (Knuth, The Art of Computer Programming, volume 2, section 4.3.1): it estimates each
// limb of the quotient from the top limbs, which is at most two too large, and takes the rest of
// the error back where a subtraction borrows.
namespace QzXmlLib16 {
namespace {

using Digits = CBigInteger::Digits;
using Limbs = std::vector<std::uint32_t>;  // least significant first, no zero at the end

constexpr std::uint32_t kLimb = 1000000000;
constexpr std::size_t kLimbDigits = 9;
constexpr std::size_t kWordDigits = 19;  // that many always fit into 64 bits

// The digits of a value that was moved from are those of zero.
const Digits& OrZero(const Digits& digits) {
  static const Digits zero{0};
  return digits.empty() ? zero : digits;
}

// A char that is no digit counts as 9, so that what is made of it stays in its range.
unsigned int DigitOf(char c) { return std::min(unsigned{static_cast<unsigned char>(c)}, 9U); }

// The number of the digits [first, last), which are up to kWordDigits.
std::uint64_t WordOf(const char* first, const char* last) {
  std::uint64_t word = 0;
  while (last != first) word = word * 10 + DigitOf(*--last);
  return word;
}

std::uint64_t WordOf(const Digits& digits) {
  return WordOf(digits.data(), digits.data() + digits.size());
}

void AddTo(Digits& sum, const Digits& addend) {
  if (sum.size() < addend.size()) sum.resize(addend.size(), 0);
  int carry = 0;
  for (std::size_t i = 0; i < sum.size(); ++i) {
    if (i >= addend.size() && carry == 0) return;
    const int digit = sum[i] + (i < addend.size() ? addend[i] : 0) + carry;
    carry = digit > 9 ? 1 : 0;
    sum[i] = static_cast<char>(digit - 10 * carry);
  }
  if (carry > 0) sum.push_back(1);
}

void SubtractFrom(Digits& difference, const Digits& subtrahend) {
  int borrow = 0;
  for (std::size_t i = 0; i < difference.size(); ++i) {
    if (i >= subtrahend.size() && borrow == 0) break;
    const int digit = difference[i] - (i < subtrahend.size() ? subtrahend[i] : 0) - borrow;
    borrow = digit < 0 ? 1 : 0;
    difference[i] = static_cast<char>(digit + 10 * borrow);
  }
  CBigInteger::Clean(difference);
}

// --- Limbs. ---

void Trim(Limbs& limbs) {
  while (!limbs.empty() && limbs.back() == 0) limbs.pop_back();
}

Limbs Pack(const Digits& digits) {
  Limbs limbs;
  limbs.reserve(digits.size() / kLimbDigits + 2);  // a division appends one
  for (std::size_t at = 0; at < digits.size(); at += kLimbDigits) {
    const std::size_t count = std::min(kLimbDigits, digits.size() - at);
    const char* const first = digits.data() + at;
    limbs.push_back(static_cast<std::uint32_t>(WordOf(first, first + count)));
  }
  Trim(limbs);
  return limbs;
}

void Unpack(const Limbs& limbs, Digits& out) {
  out.resize(limbs.size() * kLimbDigits);
  char* digit = out.data();
  for (std::uint32_t limb : limbs) {
    for (std::size_t i = 0; i < kLimbDigits; ++i) {
      *digit++ = static_cast<char>(limb % 10);
      limb /= 10;
    }
  }
  CBigInteger::Clean(out);
}

// Carries what the columns from first on hold above a limb.
void Carry(std::vector<std::uint64_t>& columns, std::size_t first) {
  std::uint64_t carry = 0;
  for (std::size_t i = first; i < columns.size(); ++i) {
    const std::uint64_t sum = columns[i] + carry;
    columns[i] = sum % kLimb;
    carry = sum / kLimb;
  }
}

// A column of 64 bits holds 18 products of limbs, so carries wait for that many rows, less those of
// the carries themselves.
Limbs MultiplyLimbs(const Limbs& a, const Limbs& b) {
  constexpr std::size_t kRows = 16;
  std::vector<std::uint64_t> columns(a.size() + b.size(), 0);
  for (std::size_t i = 0; i < b.size(); ++i) {
    std::uint64_t* const row = columns.data() + i;
    const std::uint64_t factor = b[i];
    for (std::size_t j = 0; j < a.size(); ++j) row[j] += factor * a[j];
    if (i % kRows == kRows - 1) Carry(columns, i + 1 - kRows);
  }
  Carry(columns, 0);
  Limbs product(columns.size());
  std::transform(columns.begin(), columns.end(), product.begin(),
                 [](std::uint64_t column) { return static_cast<std::uint32_t>(column); });
  return product;
}

// Times a factor below kLimb; what is carried out of the last limb is returned.
std::uint32_t Scale(Limbs& limbs, std::uint32_t factor) {
  std::uint64_t carry = 0;
  for (std::uint32_t& limb : limbs) {
    const std::uint64_t sum = std::uint64_t{limb} * factor + carry;
    limb = static_cast<std::uint32_t>(sum % kLimb);
    carry = sum / kLimb;
  }
  return static_cast<std::uint32_t>(carry);
}

// Divided by one limb; the remainder is returned.
std::uint32_t DivideByLimb(Limbs& limbs, std::uint32_t divisor) {
  std::uint64_t remainder = 0;
  for (std::size_t i = limbs.size(); i-- > 0;) {
    const std::uint64_t part = remainder * kLimb + limbs[i];
    limbs[i] = static_cast<std::uint32_t>(part / divisor);
    remainder = part % divisor;
  }
  return static_cast<std::uint32_t>(remainder);
}

// The limb of the quotient at a place, by the three top limbs there; at most one too large.
std::uint64_t EstimateLimb(const Limbs& a, const Limbs& b, std::size_t place) {
  const std::size_t n = b.size();
  const std::uint64_t top = std::uint64_t{a[place + n]} * kLimb + a[place + n - 1];
  std::uint64_t quotient = top / b[n - 1];
  std::uint64_t remainder = top % b[n - 1];
  while (quotient >= kLimb || quotient * b[n - 2] > remainder * kLimb + a[place + n - 2]) {
    --quotient;
    remainder += b[n - 1];
    if (remainder >= kLimb) break;
  }
  return quotient;
}

// Takes b times the factor off a at a place; true if more was to be taken than was there.
bool SubtractMultiple(Limbs& a, const Limbs& b, std::uint64_t factor, std::size_t place) {
  std::uint64_t carry = 0;
  std::uint32_t borrow = 0;
  for (std::size_t i = 0; i <= b.size(); ++i) {
    const std::uint64_t product = (i < b.size() ? factor * b[i] : 0) + carry;
    carry = product / kLimb;
    const auto subtrahend = static_cast<std::uint32_t>(product % kLimb) + borrow;
    std::uint32_t& limb = a[place + i];
    borrow = limb < subtrahend ? 1 : 0;
    limb = limb - subtrahend + borrow * kLimb;
  }
  return borrow != 0;
}

// Adds b to a at a place; the carry goes into the limb above, which is at kLimb - 1 then.
void AddBack(Limbs& a, const Limbs& b, std::size_t place) {
  std::uint32_t carry = 0;
  for (std::size_t i = 0; i < b.size(); ++i) {
    const std::uint32_t sum = a[place + i] + b[i] + carry;
    carry = sum >= kLimb ? 1 : 0;
    a[place + i] = sum - carry * kLimb;
  }
  a[place + b.size()] = (a[place + b.size()] + carry) % kLimb;
}

// The quotient; the remainder is left in a. b has two limbs or more, a at least as many. Both are
// scaled so that the top limb of b is at least half of kLimb, which the estimate relies on.
Limbs DivideLimbs(Limbs& a, Limbs& b) {
  const std::uint32_t scale = kLimb / (b.back() + 1);
  a.push_back(Scale(a, scale));
  Scale(b, scale);
  Limbs quotient(a.size() - b.size());
  for (std::size_t place = quotient.size(); place-- > 0;) {
    std::uint64_t limb = EstimateLimb(a, b, place);
    if (SubtractMultiple(a, b, limb, place)) {
      --limb;
      AddBack(a, b, place);
    }
    quotient[place] = static_cast<std::uint32_t>(limb);
  }
  DivideByLimb(a, scale);
  return quotient;
}

[[noreturn]] void ThrowDivisionByZero() {
  throw CQzInvalidValueException(Messages::kDivisionByZero);
}

}  // namespace

void CBigInteger::Build(const std::string& text, Digits& out) {
  const char* const last = text.data() + text.size();
  const char* first = last;
  while (first != text.data() && first[-1] >= '0' && first[-1] <= '9') --first;
  BuildText(first, last, out);
}

void CBigInteger::BuildText(const char* first, const char* last, Digits& out) {
  while (first != last && *first == '0') ++first;
  constexpr std::size_t kShort = 32;
  const auto count = static_cast<std::size_t>(last - first);
  if (count > kShort) {
    out.resize(count);
    for (char& digit : out) digit = static_cast<char>(*--last - '0');
    return;
  }
  char digits[kShort];
  digits[0] = 0;
  for (char* digit = digits; last != first; ++digit) *digit = static_cast<char>(*--last - '0');
  out.assign(digits, digits + std::max<std::size_t>(count, 1));
}

void CBigInteger::Build(unsigned int value, Digits& out) { BuildDWORDLONG(value, out); }

void CBigInteger::BuildDWORDLONG(unsigned long long value, Digits& out) {
  char digits[kWordDigits + 1];
  std::size_t count = 0;
  do {
    digits[count++] = static_cast<char>(value % 10);
    value /= 10;
  } while (value > 0);
  out.assign(digits, digits + count);
}

void CBigInteger::BuildDouble(double d, Digits& out) {
  if (!std::isfinite(d)) static_cast<void>(CDecimal(d));  // throws
  QZ_ASSERT_TEXT(d >= 0, "d >= 0");
  d = std::ceil(d - 0.5);
  out.clear();
  while (d > 0) {
    out.push_back(static_cast<char>(std::fmod(d, 10)));
    std::modf(d / 10, &d);
  }
  Clean(out);
}

void CBigInteger::Clean(Digits& digits) {
  while (digits.size() > 1 && digits.back() == 0) digits.pop_back();
  if (digits.empty()) digits.push_back(0);
}

int CBigInteger::Compare(const Digits& a, const Digits& b) {
  if (a.empty() || b.empty()) {
    if (a.empty() && b.empty()) return 0;
    return Compare(OrZero(a), OrZero(b));
  }
  if (a.size() != b.size()) return a.size() < b.size() ? -1 : 1;
  const auto difference = std::mismatch(a.rbegin(), a.rend(), b.rbegin());
  if (difference.first == a.rend()) return 0;
  return *difference.first < *difference.second ? -1 : 1;
}

void CBigInteger::Add(const Digits& a, const Digits& b, Digits& out) {
  if (&out == &b) {
    AddTo(out, OrZero(a));
    return;
  }
  if (&out != &a) out = a;
  AddTo(out, OrZero(b));
}

void CBigInteger::Subtract(const Digits& a, const Digits& b, Digits& out) {
  QZ_ASSERT_TEXT(Compare(a, b) >= 0, "a >= b");
  if (&out == &b) {
    Digits difference(a);
    SubtractFrom(difference, b);
    out = std::move(difference);
    return;
  }
  if (&out != &a) out = a;
  SubtractFrom(out, b);
}

void CBigInteger::Multiply(const Digits& a, const Digits& b, Digits& out) {
  if (a.size() + b.size() <= kWordDigits) {
    BuildDWORDLONG(WordOf(a) * WordOf(b), out);
    return;
  }
  Unpack(MultiplyLimbs(Pack(a), Pack(b)), out);
}

void CBigInteger::Multiply(const Digits& a, char digit, Digits& out) {
  const unsigned int factor = DigitOf(digit);
  if (factor == 0) {
    out.assign(1, 0);
    return;
  }
  if (&out != &a) out = a;
  unsigned int carry = 0;
  for (char& c : out) {
    const unsigned int product = DigitOf(c) * factor + carry;
    c = static_cast<char>(product % 10);
    carry = product / 10;
  }
  if (carry > 0 || out.empty()) out.push_back(static_cast<char>(carry));
}

void CBigInteger::Divide(const Digits& a, const Digits& b, Digits& quotient, Digits& remainder) {
  if (a.size() <= kWordDigits && b.size() <= kWordDigits) {
    const std::uint64_t dividend = WordOf(a);
    const std::uint64_t divisor = WordOf(b);
    if (divisor == 0) ThrowDivisionByZero();
    BuildDWORDLONG(dividend / divisor, quotient);
    BuildDWORDLONG(dividend % divisor, remainder);
    return;
  }
  Limbs dividend = Pack(a);
  Limbs divisor = Pack(b);
  if (divisor.empty()) ThrowDivisionByZero();
  if (dividend.size() < divisor.size()) {
    remainder = a;  // ahead of the quotient, which may be the same object as a
    quotient.assign(1, 0);
    return;
  }
  if (divisor.size() == 1) {
    const std::uint32_t rest = DivideByLimb(dividend, divisor[0]);
    Unpack(dividend, quotient);
    Build(rest, remainder);
    return;
  }
  Unpack(DivideLimbs(dividend, divisor), quotient);
  Unpack(dividend, remainder);
}

void CBigInteger::Pow10(unsigned int exponent, Digits& out) {
  out.assign(std::size_t{exponent} + 1, 0);
  out.back() = 1;
}

void CBigInteger::ShiftLeft(Digits& digits, int count) {
  if (count > 0) digits.insert(digits.begin(), static_cast<std::size_t>(count), 0);
}

int CBigInteger::Position(const Digits& digits) {
  return digits.empty() ? 1 : static_cast<int>(digits.size());
}

}  // namespace QzXmlLib16
