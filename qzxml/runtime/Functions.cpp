#include "qzxml/runtime/Functions.h"

#include <algorithm>
#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <memory>

#include "qzxml/platform/Assert.h"
#include "qzxml/platform/DebugChannel.h"
#include "qzxml/platform/Format.h"
#include "qzxml/runtime/FormatCheck.h"

namespace QzXmlLib16 {

namespace {

constexpr int kTraceSize = 1024 * 32;

// One pass that does not look at what it put in.
template <typename String>
void ReplaceOnce(String& text, const String& what, const String& with) {
  String done;
  std::size_t rest = 0;
  for (std::size_t at = text.find(what); at != String::npos; at = text.find(what, rest)) {
    done.append(text, rest, at - rest);
    done += with;
    rest = at + what.size();
  }
  done.append(text, rest, String::npos);
  text = std::move(done);
}

template <typename String>
bool EndsWith(const String& text, const String& end) {
  return text.size() >= end.size() && text.compare(text.size() - end.size(), end.size(), end) == 0;
}

// Gives what searching from the beginning after each replacement gives, in time of one pass: `done`
// never holds `what`, so the first place is where `done` first ends with it, and what is put in
// goes back to the front of what is still to come.
template <typename String>
void ReplaceUntilNoneIsLeft(String& text, const String& what, const String& with) {
  // Replacements that lengthen the text can bring about new places for ever, or for as good as
  // ever, so their number is bounded. One of the same length ends by itself: each step moves the
  // text the same way in the alphabetical order of all texts of its length.
  std::size_t replacementsLeft = 1024 + 64 * text.size();
  const String backwards(with.rbegin(), with.rend());
  String done;
  String putIn;  // last character first
  std::size_t rest = 0;
  while ((!putIn.empty() || rest < text.size()) && replacementsLeft > 0) {
    if (putIn.empty()) {
      done += text[rest++];
    } else {
      done += putIn.back();
      putIn.pop_back();
    }
    if (!EndsWith(done, what)) continue;
    done.resize(done.size() - what.size());
    putIn += backwards;
    if (with.size() > what.size()) --replacementsLeft;
  }
  done.append(putIn.rbegin(), putIn.rend());
  done.append(text, rest, String::npos);
  text = std::move(done);
}

template <typename String>
void ReplaceAllIn(String& text, const String& what, const String& with) {
  if (what.empty() || text.find(what) == String::npos) return;
  // No place can come about anew from a single character that is not put in.
  if (what.size() == 1 || with.find(what) != String::npos) {
    ReplaceOnce(text, what, with);
  } else {
    ReplaceUntilNoneIsLeft(text, what, with);
  }
}

#if defined(__GNUC__)
__attribute__((format(printf, 1, 0)))
#endif
std::string
FormatVa(const char* format, std::va_list arguments) {
  char shortText[512];
  std::va_list again;
  va_copy(again, arguments);
  const int length = detail::FormatNeutral(shortText, sizeof shortText, format, arguments);
  std::string text;
  if (length >= 0 && static_cast<std::size_t>(length) < sizeof shortText) {
    text = shortText;
  } else if (length >= 0) {
    text.resize(static_cast<std::size_t>(length) + 1);
    detail::FormatNeutral(text.data(), text.size(), format, again);
    text.resize(std::strlen(text.c_str()));
  }
  va_end(again);
  return text;
}

}  // namespace

std::string FormatString(const char* format, ...) {
  std::va_list arguments;
  va_start(arguments, format);
  detail::CheckFormat(format, arguments);
  va_end(arguments);
  va_start(arguments, format);
  std::string text = FormatVa(format, arguments);
  va_end(arguments);
  return text;
}

void ReplaceAll(std::string& text, const std::string& what, const std::string& with) {
  ReplaceAllIn(text, what, with);
}

void ReplaceAll(std::wstring& text, const std::wstring& what, const std::wstring& with) {
  ReplaceAllIn(text, what, with);
}

void ReplaceAll(std::u16string& text, const std::u16string& what, const std::u16string& with) {
  ReplaceAllIn(text, what, with);
}

std::string FormatPaddedInt(int value, int width) {
  constexpr int kMaxWidth = 255;
  char text[kMaxWidth + 1];
  std::snprintf(text, sizeof text, "%0*d", std::clamp(width, -kMaxWidth, kMaxWidth), value);
  return text;
}

std::string TrimTrailingZeros(const std::string& text) {
  std::size_t length = text.size();
  while (length > 1 && text[length - 1] == '0') --length;
  return text.substr(0, length);
}

void DebugTrace(const char* format, ...) {
  if (detail::GetDebugChannel() == nullptr) return;
  const std::unique_ptr<char[]> text(new char[kTraceSize]);
  std::va_list arguments;
  va_start(arguments, format);
  const int nBuf = detail::FormatNeutral(text.get(), kTraceSize, format, arguments);
  va_end(arguments);
  QZ_ASSERT_TEXT(nBuf < kTraceSize, "nBuf < 1024*32");
  const int sent = std::clamp(nBuf, 0, kTraceSize - 1);
  detail::SendToDebugChannel(text.get(), static_cast<std::size_t>(sent));
}

}  // namespace QzXmlLib16
