#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <utility>
#include <vector>

namespace QzXmlLib16::detail {

// The digits of a CBigInteger, the numbers 0 to 9, least significant first. As many as most values
// have stand in place and need no memory of their own; more are a vector, as the arithmetic of
// magnitudes takes them. A plain value; one that was moved from has no digits.
class CDigitStore {
 public:
  using Digits = std::vector<char>;
  static constexpr std::size_t kMostInPlace = 27;

  CDigitStore() noexcept : m_size(0) {}
  explicit CDigitStore(char digit) noexcept : m_size(1) { m_inPlace[0] = digit; }
  CDigitStore(const CDigitStore& other) : CDigitStore() { Assign(other.data(), other.size()); }
  CDigitStore(CDigitStore&& other) noexcept { TakeFrom(other); }
  CDigitStore& operator=(const CDigitStore& other) {
    if (this != &other) Assign(other.data(), other.size());
    return *this;
  }
  CDigitStore& operator=(CDigitStore&& other) noexcept {
    if (this == &other) return *this;
    Free();
    TakeFrom(other);
    return *this;
  }
  ~CDigitStore() { Free(); }

  bool empty() const { return size() == 0; }
  std::size_t size() const { return IsVector() ? GetVector()->size() : m_size; }
  const char* data() const { return IsVector() ? GetVector()->data() : m_inPlace; }
  const char* begin() const { return data(); }
  const char* end() const { return data() + size(); }
  char operator[](std::size_t place) const { return data()[place]; }

  // The digits of another place may be some of these.
  void Assign(const char* digits, std::size_t count) {
    if (count > kMostInPlace) return Set(Digits(digits, digits + count));
    char copy[kMostInPlace];
    std::memcpy(copy, digits, count);
    Free();
    std::memcpy(m_inPlace, copy, count);
    m_size = static_cast<std::uint8_t>(count);
  }
  void Set(Digits digits) {
    if (digits.size() <= kMostInPlace) return Assign(digits.data(), digits.size());
    if (IsVector()) {
      *GetVector() = std::move(digits);
    } else {
      SetVector(new Digits(std::move(digits)));
    }
  }
  // Room for so many digits, at most kMostInPlace, which the caller writes.
  char* MakeInPlace(std::size_t count) {
    Free();
    m_size = static_cast<std::uint8_t>(count);
    return m_inPlace;
  }

  // As a vector: the one that is there, or scratch with the digits.
  const Digits& View(Digits& scratch) const {
    if (IsVector()) return *GetVector();
    scratch.assign(m_inPlace, m_inPlace + m_size);
    return scratch;
  }
  // The same, taken out.
  Digits Take() {
    if (!IsVector()) return Digits(m_inPlace, m_inPlace + m_size);
    Digits digits = std::move(*GetVector());
    Free();
    return digits;
  }

 private:
  static constexpr std::uint8_t kVector = 0xFF;

  bool IsVector() const { return m_size == kVector; }
  Digits* GetVector() const {
    Digits* digits;
    std::memcpy(&digits, m_inPlace, sizeof digits);
    return digits;
  }
  void SetVector(Digits* digits) {
    std::memcpy(m_inPlace, &digits, sizeof digits);
    m_size = kVector;
  }
  void TakeFrom(CDigitStore& other) noexcept {
    std::memcpy(m_inPlace, other.m_inPlace, sizeof m_inPlace);
    m_size = std::exchange(other.m_size, std::uint8_t{0});
  }
  void Free() {
    if (IsVector()) delete GetVector();
    m_size = 0;
  }

  char m_inPlace[kMostInPlace];  // or the address of a vector
  std::uint8_t m_size;           // or kVector
};

}  // namespace QzXmlLib16::detail
