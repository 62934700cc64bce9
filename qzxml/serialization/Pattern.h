#pragma once

#include <atomic>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "qzxml/serialization/PlainPattern.h"

struct pcre2_real_code_8;  // PCRE2's pcre2_code

// The pattern facet's engine: XSD's regular expressions, run by PCRE2.
namespace QzXmlLib16 {
namespace detail {

struct MatchScratch;

// One pattern, compiled or refused once. Any number of threads may match against it.
class CPattern {
 public:
  // The pattern is in UTF-8. One that PCRE2 refuses is kept with the reason, and Matches fails.
  explicit CPattern(const std::string& pattern);
  ~CPattern();
  CPattern(const CPattern&) = delete;
  CPattern& operator=(const CPattern&) = delete;

  // Whether the whole value, in the local encoding and up to its first zero byte, matches.
  // Throws CQzException "Invalid Regular Expression: %s Error: '%s'" with the value and the reason.
  bool Matches(const std::string& value) const;
  // The same of a value in UTF-8, whose zero bytes count.
  bool MatchesUtf8(std::string_view value) const;

 private:
  using Scratch = std::unique_ptr<MatchScratch>;

  void RequireCode(std::string_view value) const;
  bool Run(const char* subject, std::size_t length) const;
  bool RunWith(MatchScratch& scratch, const char* subject, std::size_t length) const;

  pcre2_real_code_8* m_code = nullptr;   // null when refused
  std::optional<CPlainPattern> m_plain;  // which says the same in fewer steps
  bool m_compiledToMachineCode = false;
  std::string m_error;
  mutable std::atomic<MatchScratch*> m_spare{nullptr};  // owned; taken for the time of one match
};

// The compiled form of the pattern, shared by all who have the same one. Compiled patterns are kept
// for the life of the process, a bounded number of them.
std::shared_ptr<const CPattern> FindPattern(const std::string& pattern);

// The same for those whose own life is that of the process: the pattern is kept for good, once for
// each text.
const CPattern& KeepPattern(const std::string& pattern);

// A pattern that a CPrimitiveRestrictions has found.
struct PatternHandle {
  std::shared_ptr<const CPattern> pattern;
};

// The XSD pattern as PCRE2 takes it, without the frame that makes it match whole values.
std::string TranslatePattern(const std::string& pattern);

}  // namespace detail
}  // namespace QzXmlLib16
