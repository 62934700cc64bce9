#include "qzxml/fastinfoset/FITextIndexes.h"

#include <algorithm>
#include <atomic>
#include <utility>

#include "qzxml/fastinfoset/FITextIndexesFind.h"

namespace QzXmlLib16::detail {
namespace {

// Most tables stay small, or get large.
constexpr std::size_t kFirstPlaces = 64;
constexpr std::size_t kFirstGrowth = 4;
constexpr std::size_t kSomePlaces = 256;
constexpr std::size_t kFirstOctets = 1024;

// What is kept for the next texts: so many places, or octets of long texts, at most; and places for
// so many times the texts there were, so that few of them are not looked for in wide memory.
constexpr std::size_t kKeptPlaces = 32768;
constexpr std::size_t kKeptOctets = 65536;
constexpr std::size_t kKeptForEach = 64;
constexpr std::size_t kForgottenPlaces = 4096;

}  // namespace

void CFITextIndexes::CArrangement::Renew() {
  static std::atomic<std::uint64_t> last{0};
  m_number = last.fetch_add(1, std::memory_order_relaxed) + 1;
}

std::vector<std::pair<std::string, std::uint32_t>> CFITextIndexes::GetAll() const {
  std::vector<std::pair<std::string, std::uint32_t>> all;
  for (std::size_t place = 0; place < GetPlaces(); ++place) {
    const Entry entry = GetEntry(place);
    if (GetIndex(entry) == 0) continue;
    if (entry.key >> 56 == kLongMark) {
      all.emplace_back(GetLongText(entry.GetBegin()), GetIndex(entry));
      continue;
    }
    std::string text(entry.key >> 56, '\0');
    for (std::size_t i = 0; i < text.size(); ++i) {
      text[i] = static_cast<char>(entry.key >> (8 * i) & 0xFF);
    }
    all.emplace_back(std::move(text), GetIndex(entry));
  }
  return all;
}

void CFITextIndexes::Add(std::string_view text, std::uint64_t key, std::uint32_t index) {
  AddAt(Look(text, key), text, key, index);
}

// It stays in its place: other texts may be looked for past it.
void CFITextIndexes::RemoveLast(std::string_view text, std::uint64_t key) {
  const std::size_t at = FindPlace(text, key);
  SetEntry(at, {key, std::uint64_t{GetEntry(at).GetBegin()} << kIndexBits | m_before});
  --m_count;
  --m_mostTexts;
}

std::size_t CFITextIndexes::AddLongText(std::string_view text) {
  const std::size_t begin = m_textsSize;
  const std::size_t end = begin + sizeof(std::size_t) + text.size();
  if (end > m_texts.size()) {
    m_texts.resize(std::max({kFirstOctets, end, m_texts.size() * 2}));
  }
  m_textsSize = end;
  char* const out = m_texts.data() + begin;
  StoreWord<std::size_t>(out, text.size());
  CopyShort(out + sizeof(std::size_t), text.data(), text.size());
  return begin;
}

void CFITextIndexes::Set(std::string_view text, std::uint32_t index) {
  const std::uint64_t key = KeyOf(text);
  if (Find(text, key) == 0) return Add(text, key, index);
  const std::size_t place = FindPlace(text, key);
  const std::uint64_t begin = GetEntry(place).GetBegin();
  SetEntry(place, {key, begin << kIndexBits | (m_before + index)});
}

void CFITextIndexes::Clear() {
  const std::size_t places = GetPlaces();
  if (places > kKeptPlaces || places > std::max(kSomePlaces, m_count * kKeptForEach)) {
    m_words = {};
    m_mask = 0;
  }
  if (m_texts.size() > kKeptOctets) m_texts = {};
  m_textsSize = 0;
  m_count = 0;
  m_mostTexts = GetPlaces() / 2;
  m_free = m_before + kMostIndex;
  if (m_free >= kIndexMask - kMostIndex) {
    m_free = 0;
    std::fill(m_words.begin(), m_words.end(), 0);
  }
  m_before = m_free + 1;
  m_arrangement.Renew();
}

void CFITextIndexes::Forget() {
  const bool areMany = GetPlaces() > kForgottenPlaces || m_texts.size() > kKeptOctets;
  if (areMany || m_before + kMostIndex > kIndexMask - kMostIndex) return Clear();
  m_mostTexts -= m_count;
  m_count = 0;
  m_before += kMostIndex;
}

// Texts without an index are dropped.
[[gnu::noinline]] void CFITextIndexes::Grow() {
  const std::size_t size = GetPlaces();
  const std::size_t places =
      size == 0 ? kFirstPlaces : size * (size < kSomePlaces ? kFirstGrowth : 2);
  std::vector<std::uint64_t> former(places * 2);
  former.swap(m_words);
  m_mask = places - 1;
  m_mostTexts = places / 2;
  for (std::size_t at = 0; at < former.size(); at += 2) {
    const Entry entry{former[at], former[at + 1]};
    if (GetIndex(entry) != 0) PutInFreePlace(entry);
  }
  m_free = m_before - 1;
  m_arrangement.Renew();
}

inline void CFITextIndexes::PutInFreePlace(const Entry& entry) {
  std::size_t at = HashOf(entry.key) & m_mask;
  while (!IsFree(GetEntry(at))) at = (at + 1) & m_mask;
  SetEntry(at, entry);
}

}  // namespace QzXmlLib16::detail
