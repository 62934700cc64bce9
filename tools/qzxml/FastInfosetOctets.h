#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

// The octets of a Fast Infoset document, one after the other, with what each of them means.
// Source: ITU-T Rec. X.891 | ISO/IEC 24824-1, clauses 7 to 10 and annex C.
namespace qztool {

// Takes rows: where octets stand, what they mean, and their value, "" for none.
using OctetRows = std::function<void(std::size_t offset, std::string_view octets,
                                     const std::string& meaning, const std::string& value)>;

// A text as it came out of its octets.
struct CFastInfosetText {
  std::string text;  // in UTF-8
  bool isCData = false;
  std::string unknownAlgorithm;  // its name, when the text is but the octets in hexadecimal digits
};

class CFastInfosetOctets {
 public:
  // What to do where the octets break the layout; does not return.
  using Failure = std::function<void(const std::string& message)>;

  // The text and rows, which may be empty, must outlive this.
  CFastInfosetOctets(const std::string& octets, const OctetRows& rows, Failure failure);

  std::size_t GetPlace() const { return m_at; }
  std::size_t GetSize() const { return m_octets.size(); }
  bool IsTold() const { return static_cast<bool>(m_rows); }

  // All octets since the last call are a row of this meaning. The two arguments are only looked at
  // with IsTold.
  void Say(std::string_view meaning, std::string_view value = {});

  // Calls the failure with " at offset %d" of the octet taken last.
  [[noreturn]] void Fail(const std::string& message) const;

  std::uint32_t Take();
  std::uint32_t TakeNumber(unsigned octets);  // most significant octet first
  std::string_view TakeOctets(std::size_t count);
  // Whether these octets come next.
  bool IsNext(std::string_view octets) const {
    return std::string_view(m_octets).substr(m_at, octets.size()) == octets;
  }

  // ---- Integers and lengths that begin inside the octet taken before ----

  std::uint32_t TakeIndexOnSecondBit(std::uint32_t first);    // C.25
  std::uint32_t TakeIndexOnThirdBit(std::uint32_t first);     // C.27
  std::uint32_t TakeIndexOnFourthBit(std::uint32_t first);    // C.28
  std::uint32_t TakeLengthOnSecondBit(std::uint32_t first);   // C.22
  std::uint32_t TakeLengthOnFifthBit(std::uint32_t first);    // C.23
  std::uint32_t TakeLengthOnSeventhBit(std::uint32_t first);  // C.24
  std::uint32_t TakeSequenceLength();                         // C.21

  // ---- Texts; each says its rows, the first with what ("comment") ----

  // Begins on the third bit (C.19) or on the fifth (C.20) of the octet taken before.
  CFastInfosetText TakeTextOnThirdBit(std::uint32_t first, std::string_view what);
  CFastInfosetText TakeTextOnFifthBit(std::uint32_t first, std::string_view what);
  // Octets of UTF-8.
  std::string TakeUtf8(std::uint32_t length, std::string_view what);

  // What a document adds to the alphabets and algorithms that are built in.
  void AddAlphabet(const std::string& characters);
  void AddAlgorithm(const std::string& uri) { m_algorithms.push_back(uri); }

 private:
  CFastInfosetText TakeText(unsigned kind, std::uint32_t index, std::uint32_t length,
                            std::string_view what);
  std::string Describe(unsigned kind, std::uint32_t index, std::uint32_t length,
                       std::string_view what) const;
  std::string FromUtf16(std::string_view octets) const;
  std::string FromAlphabet(std::uint32_t index, std::string_view octets) const;
  CFastInfosetText FromAlgorithm(std::uint32_t number, std::string_view octets) const;
  const std::vector<std::string>& GetAlphabet(std::uint32_t index) const;

  const std::string& m_octets;
  const OctetRows& m_rows;
  Failure m_failure;
  std::size_t m_at = 0;
  std::size_t m_said = 0;                             // up to here
  std::vector<std::vector<std::string>> m_alphabets;  // those built in first; characters
  std::vector<std::string> m_algorithms;              // the names of those that are not built in
};

}  // namespace qztool
