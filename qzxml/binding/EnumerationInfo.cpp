#include "qzxml/binding/EnumerationInfo.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <numeric>
#include <string>

#include "qzxml/runtime/Functions.h"
#include "qzxml/runtime/QzException.h"

namespace QzXmlLib16 {

namespace {

constexpr std::size_t kFewTexts = 16;    // that are faster to walk over than to look up
constexpr std::size_t kShownTexts = 20;  // in a message

}  // namespace

const char* CEnumerationInfo::ToText(int value) const {
  if (value < 0 || static_cast<std::size_t>(value) >= m_count) Refuse(std::to_string(value));
  return m_texts[value];
}

int CEnumerationInfo::FromText(const char* text) const {
  std::string scratch;
  const std::string_view value =
      detail::ApplyRule(m_whitespace, text == nullptr ? "" : text, scratch);
  const int found = Find(value);
  if (found < 0) Refuse(value);
  return found;
}

int CEnumerationInfo::Find(std::string_view text) const {
  if (m_count <= kFewTexts) {
    const auto* const end = m_texts + m_count;
    const auto* const found = std::find(m_texts, end, text);
    return found == end ? -1 : static_cast<int>(found - m_texts);
  }
  const int* const sorted = FindSorted();
  const auto isBefore = [this](int index, std::string_view sought) {
    return m_texts[index] < sought;
  };
  const int* const end = sorted + m_count;
  const int* const found = std::lower_bound(sorted, end, text, isBefore);
  return found != end && m_texts[*found] == text ? *found : -1;
}

const int* CEnumerationInfo::FindSorted() const {
  const int* found = m_sorted.load(std::memory_order_acquire);
  if (found != nullptr) return found;
  auto made = std::make_unique<int[]>(m_count);
  std::iota(made.get(), made.get() + m_count, 0);
  std::stable_sort(made.get(), made.get() + m_count,
                   [this](int a, int b) { return std::strcmp(m_texts[a], m_texts[b]) < 0; });
  // Of two threads that come here at once the second takes what the first has stored.
  if (m_sorted.compare_exchange_strong(found, made.get(), std::memory_order_acq_rel)) {
    found = made.release();
  }
  return found;
}

void CEnumerationInfo::Refuse(std::string_view value) const {
  std::string texts;
  for (std::size_t i = 0; i < std::min(m_count, kShownTexts); ++i) {
    if (i > 0) texts += ", ";
    texts += m_texts[i];
  }
  if (m_count > kShownTexts) texts.append(",").append(" ...");
  throw CQzInvalidValueException(
      FormatString("The value [%s] is not one of %s", std::string(value).c_str(), texts.c_str()));
}

}  // namespace QzXmlLib16
