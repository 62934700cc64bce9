#include "qzxml/serialization/Pattern.h"

#define PCRE2_CODE_UNIT_WIDTH 8
#include <pcre2.h>

#include <algorithm>
#include <cstring>
#include <mutex>
#include <new>
#include <shared_mutex>
#include <unordered_map>

#include "qzxml/runtime/Encoder.h"
#include "qzxml/runtime/Functions.h"
#include "qzxml/runtime/QzException.h"
#include "qzxml/values/BinaryData.h"

// A pattern is rewritten from XSD's dialect into PCRE2's, compiled, and turned into machine code
// where PCRE2 can do that. It is anchored when it is compiled, since machine code can not be
// anchored later.
//
// The plainest patterns are matched without PCRE2, which has only to find them good.
//
// Patterns like "(a+)+" can take a time that doubles with each char of the value. PCRE2 counts its
// steps, and the limit grows with the value, so that matching takes a time in proportion to the
// value; what meets the limit does not match. Memory is bounded alike: machine code starts on the
// stack of the caller, and on one of its own, as large as the value deserves, when that is used up;
// without machine code PCRE2's heap limit holds.
namespace QzXmlLib16 {
namespace detail {

// What one match needs beside the pattern.
struct MatchScratch {
  MatchScratch() : data(pcre2_match_data_create(1, nullptr)), context(nullptr) {
    if (data != nullptr) context = pcre2_match_context_create(nullptr);
    if (context == nullptr) {
      pcre2_match_data_free(data);
      throw std::bad_alloc();
    }
  }
  ~MatchScratch() {
    pcre2_match_context_free(context);
    pcre2_match_data_free(data);
  }
  MatchScratch(const MatchScratch&) = delete;
  MatchScratch& operator=(const MatchScratch&) = delete;

  pcre2_match_data* const data;  // room for the place of the whole match; more is not asked for
  pcre2_match_context* context;
};

namespace {

constexpr std::size_t kBaseSteps = 200000;
constexpr std::size_t kStepsPerByte = 8;
constexpr std::size_t kBaseStack = std::size_t{1} << 20;
constexpr std::size_t kStackPerByte = 64;
constexpr std::size_t kBaseHeap = std::size_t{16} << 20;
constexpr std::size_t kHeapPerByte = 512;
constexpr std::size_t kMostMemory = std::size_t{1} << 30;
constexpr std::size_t kMostPatterns = 1024;

std::uint32_t GetStepLimit(std::size_t length) {
  const std::size_t most = UINT32_MAX;
  return static_cast<std::uint32_t>(
      length > (most - kBaseSteps) / kStepsPerByte ? most : kBaseSteps + kStepsPerByte * length);
}

std::size_t GetMemoryLimit(std::size_t base, std::size_t perByte, std::size_t length) {
  return length > kMostMemory / perByte ? kMostMemory
                                        : std::min(kMostMemory, base + perByte * length);
}

PCRE2_SPTR ToUnits(const char* text) { return reinterpret_cast<PCRE2_SPTR>(text); }

std::string GetErrorText(int error) {
  PCRE2_UCHAR text[256] = {};
  pcre2_get_error_message(error, text, sizeof text);
  return reinterpret_cast<const char*>(text);
}

// A stack of its own for machine code, for one match.
class CMachineStack {
 public:
  CMachineStack(pcre2_match_context* context, std::size_t length)
      : m_context(context),
        m_stack(pcre2_jit_stack_create(32 * 1024, GetMemoryLimit(kBaseStack, kStackPerByte, length),
                                       nullptr)) {
    pcre2_jit_stack_assign(m_context, nullptr, m_stack);
  }
  ~CMachineStack() {
    pcre2_jit_stack_assign(m_context, nullptr, nullptr);
    pcre2_jit_stack_free(m_stack);
  }
  CMachineStack(const CMachineStack&) = delete;
  CMachineStack& operator=(const CMachineStack&) = delete;

 private:
  pcre2_match_context* const m_context;
  pcre2_jit_stack* const m_stack;
};

// Compiled patterns by their text. When there are too many they all go; whoever uses one keeps it.
class CPatternCache {
 public:
  std::shared_ptr<const CPattern> Find(const std::string& pattern) {
    {
      const std::shared_lock<std::shared_mutex> lock(m_mutex);
      const auto found = m_patterns.find(pattern);
      if (found != m_patterns.end()) return found->second;
    }
    std::shared_ptr<const CPattern> compiled = std::make_shared<const CPattern>(pattern);
    const std::unique_lock<std::shared_mutex> lock(m_mutex);
    if (m_patterns.size() >= kMostPatterns) m_patterns.clear();
    return m_patterns.emplace(pattern, std::move(compiled)).first->second;
  }

 private:
  std::shared_mutex m_mutex;
  std::unordered_map<std::string, std::shared_ptr<const CPattern>> m_patterns;
};

// Lives until the library is unloaded. Objects that are destroyed later still can match: false here
// tells them that the cache has gone.
std::atomic<bool> g_hasCache{true};

class CPatternCacheOwner {
 public:
  CPatternCacheOwner() = default;
  ~CPatternCacheOwner() { g_hasCache.store(false, std::memory_order_release); }
  CPatternCacheOwner(const CPatternCacheOwner&) = delete;
  CPatternCacheOwner& operator=(const CPatternCacheOwner&) = delete;
  CPatternCache& Get() { return m_cache; }

 private:
  CPatternCache m_cache;
};

}  // namespace

std::string TranslatePattern(const std::string& pattern) {
  struct Step {
    const char* what;
    const char* with;
  };
  // In this order: the first step hides an escaped backslash from all others, the last shows it.
  // Meant: "[\600-\1117]" is what is passed on, and PCRE2 refuses it as a range out of order.
  static constexpr Step kSteps[] = {
      {"\\\\", "\x01"},
      {"\\i", "([^\\W\\d]|:)"},
      {"\\I", "([\\W\\d])"},
      {"\\c", "(\\w|\\.|-|:)"},
      {"\\C", "([^\\w\\.\\-\\:])"},
      {"\\p{IsBasicLatin}", "[\\000-\\177]"},
      {"\\p{IsLatin-1Supplement}", "[\\200-\\377]"},
      {"\\p{IsLatinExtended-A}", "[\\400-\\577]"},
      {"\\p{IsLatinExtended-B}", "[\\600-\\1117]"},
      {"\x01", "\\\\"},
  };
  std::string text = pattern;
  for (const Step& step : kSteps) ReplaceAll(text, step.what, step.with);
  return text;
}

CPattern::CPattern(const std::string& pattern) {
  const std::string framed = "^(" + TranslatePattern(pattern) + ")$";
  int error = 0;
  PCRE2_SIZE offset = 0;
  m_code = pcre2_compile(ToUnits(framed.c_str()), PCRE2_ZERO_TERMINATED, PCRE2_UTF | PCRE2_ANCHORED,
                         &error, &offset, nullptr);
  if (m_code == nullptr) {
    m_error = GetErrorText(error);
  } else {
    m_compiledToMachineCode = pcre2_jit_compile(m_code, PCRE2_JIT_COMPLETE) == 0;
    m_plain = CPlainPattern::Parse(pattern);
  }
}

CPattern::~CPattern() {
  delete m_spare.load(std::memory_order_acquire);
  pcre2_code_free(m_code);
}

void CPattern::RequireCode(std::string_view value) const {
  if (m_code != nullptr) return;
  // Meant: the text names the value under test, not the pattern.
  throw CQzException(FormatString("Invalid Regular Expression: %s Error: '%s'",
                                  std::string(value).c_str(), m_error.c_str()));
}

bool CPattern::MatchesUtf8(std::string_view value) const {
  RequireCode(value);
  return Run(value.data() == nullptr ? "" : value.data(), value.size());
}

bool CPattern::Matches(const std::string& value) const {
  RequireCode(value);
  if (IsLocalUtf8()) return Run(value.c_str(), std::strlen(value.c_str()));
  const CBinaryData subject = LocalToUtf8(value.c_str());
  if (subject.GetLength() == 0) return Run("", 0);
  return Run(reinterpret_cast<const char*>(subject.GetData()), subject.GetLength());
}

bool CPattern::Run(const char* subject, std::size_t length) const {
  if (m_plain) return m_plain->Matches(std::string_view(subject, length));
  Scratch scratch(m_spare.exchange(nullptr, std::memory_order_acquire));
  if (scratch == nullptr) scratch = std::make_unique<MatchScratch>();
  const bool matches = RunWith(*scratch, subject, length);
  // Without machine code the scratch holds the memory of the match, which is not kept.
  if (m_compiledToMachineCode) {
    scratch.reset(m_spare.exchange(scratch.release(), std::memory_order_acq_rel));
  }
  return matches;
}

bool CPattern::RunWith(MatchScratch& scratch, const char* subject, std::size_t length) const {
  const std::size_t heap = GetMemoryLimit(kBaseHeap, kHeapPerByte, length);
  pcre2_set_match_limit(scratch.context, GetStepLimit(length));
  pcre2_set_heap_limit(scratch.context, static_cast<std::uint32_t>(heap / 1024));

  const auto match = [&] {
    return pcre2_match(m_code, ToUnits(subject), length, 0, 0, scratch.data, scratch.context);
  };
  int result = match();
  if (result == PCRE2_ERROR_JIT_STACKLIMIT) {
    const CMachineStack stack(scratch.context, length);
    result = match();
  }
  if (result < 0) return false;  // no match, or a limit, or a value that is not UTF-8
  const PCRE2_SIZE* const place = pcre2_get_ovector_pointer(scratch.data);
  return place[0] == 0 && place[1] == length;
}

std::shared_ptr<const CPattern> FindPattern(const std::string& pattern) {
  static CPatternCacheOwner s_owner;
  if (g_hasCache.load(std::memory_order_acquire)) return s_owner.Get().Find(pattern);
  return std::make_shared<const CPattern>(pattern);
}

// Never destroyed, as static objects that ask are not.
const CPattern& KeepPattern(const std::string& pattern) {
  static std::mutex& s_mutex = *new std::mutex;
  static auto& s_kept = *new std::unordered_map<std::string, std::shared_ptr<const CPattern>>;
  const std::lock_guard<std::mutex> lock(s_mutex);
  std::shared_ptr<const CPattern>& kept = s_kept[pattern];
  if (kept == nullptr) kept = FindPattern(pattern);
  return *kept;
}

}  // namespace detail
}  // namespace QzXmlLib16
