#include "qzxml/fastinfoset/FITextIndexes.h"

#include <algorithm>
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

}  // namespace

std::vector<std::pair<std::string, std::uint32_t>> CFITextIndexes::GetAll() const {
  std::vector<std::pair<std::string, std::uint32_t>> all;
  for (std::size_t place = 0; place < GetPlaces(); ++place) {
    const Entry entry = GetEntry(place);
    if (IsFree(entry)) continue;
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

// Nothing has been put behind it since, so that nobody looks for anything past its place.
void CFITextIndexes::RemoveLast(std::string_view text, std::uint64_t key) {
  const std::size_t at = FindPlace(text, key);
  if (text.size() > kShort) m_textsSize = GetEntry(at).GetBegin();
  SetEntry(at, {0, 0});
  --m_count;
}

std::size_t CFITextIndexes::AddLongText(std::string_view text) {
  const std::size_t begin = m_textsSize;
  m_textsSize += sizeof(std::size_t) + text.size();
  if (m_textsSize > m_texts.size()) {
    m_texts.resize(std::max({kFirstOctets, m_textsSize, m_texts.size() * 2}));
  }
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
    m_mostTexts = 0;
  }
  if (m_texts.size() > kKeptOctets) m_texts = {};
  m_textsSize = 0;
  m_count = 0;
  m_before += kMostIndex;
  if (m_before <= kIndexMask - kMostIndex) return;
  m_before = 0;
  std::fill(m_words.begin(), m_words.end(), 0);
}

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
    if (!IsFree(entry)) PutInFreePlace(entry);
  }
}

inline void CFITextIndexes::PutInFreePlace(const Entry& entry) {
  std::size_t at = HashOf(entry.key) & m_mask;
  while (!IsFree(GetEntry(at))) at = (at + 1) & m_mask;
  SetEntry(at, entry);
}

}  // namespace QzXmlLib16::detail
