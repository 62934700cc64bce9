#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "qzxml/fastinfoset/FITextIndexes.h"
#include "qzxml/xml/ShortText.h"
#include "qzxml/xml/TextHash.h"

// How a text is looked for: inline, for those who do so for each value of a document.
namespace QzXmlLib16::detail {

inline constexpr std::uint64_t kLongMark = 0xFF;  // in front of the key of a long text

inline std::uint64_t CFITextIndexes::KeyOf(std::string_view text) {
  const char* const bytes = text.data();
  const std::size_t size = text.size();
  if (size > kShort) return HashText(text) | kLongMark << 56;
  std::uint64_t key = std::uint64_t{size} << 56;
  const auto byte = [bytes](std::size_t at) {
    return std::uint64_t{static_cast<unsigned char>(bytes[at])} << (8 * at);
  };
  if (size >= 4) {
    key |= LoadWord<std::uint32_t>(bytes);
    key |= std::uint64_t{LoadWord<std::uint32_t>(bytes + size - 4)} << (8 * (size - 4));
  } else if (size > 0) {
    key |= byte(0) | byte(size / 2) | byte(size - 1);
  }
  return key;
}

inline std::uint64_t CFITextIndexes::KeyOfRoomy(std::string_view text) {
  const std::size_t size = text.size();
  if (size > kShort) return HashText(text) | kLongMark << 56;
  const std::uint64_t mask = ~std::uint64_t{0} >> (64 - 8 * size);
  return (LoadWord<std::uint64_t>(text.data()) & mask) | std::uint64_t{size} << 56;
}

// The key of a long text is a hash already.
inline std::uint64_t CFITextIndexes::HashOf(std::uint64_t key) const {
  return key >> 56 == kLongMark ? key : MixWord(m_salt, key);
}

// The place of a text, or the free one where it would stand. There are places.
inline std::size_t CFITextIndexes::FindPlace(std::string_view text, std::uint64_t key) const {
  std::size_t at = HashOf(key) & m_mask;
  for (;; at = (at + 1) & m_mask) {
    const Entry entry = GetEntry(at);
    if (IsFree(entry) || (entry.key == key && IsText(entry, text))) return at;
  }
}

inline std::string_view CFITextIndexes::GetLongText(std::size_t begin) const {
  const char* const size = m_texts.data() + begin;
  return {size + sizeof(std::size_t), LoadWord<std::size_t>(size)};
}

// Whether the key of a text, which is that of the entry, is all there is to say.
inline bool CFITextIndexes::IsText(const Entry& entry, std::string_view text) const {
  if (text.size() <= kShort) return true;
  const std::string_view found = GetLongText(entry.GetBegin());
  return found.size() == text.size() && AreEqual(found.data(), text.data(), text.size());
}

inline std::uint32_t CFITextIndexes::Find(std::string_view text, std::uint64_t key) const {
  return m_count == 0 ? 0 : GetIndex(GetEntry(FindPlace(text, key)));
}

inline CFITextIndexes::Place CFITextIndexes::Look(std::string_view text, std::uint64_t key) {
  if (m_count >= m_mostTexts) Grow();
  const std::size_t at = FindPlace(text, key);
  return {at, GetIndex(GetEntry(at))};
}

// The same for a short text, for which the key is all there is.
inline CFITextIndexes::Place CFITextIndexes::LookShort(std::uint64_t key) {
  if (m_count >= m_mostTexts) Grow();
  std::size_t at = MixWord(m_salt, key) & m_mask;
  for (;; at = (at + 1) & m_mask) {
    const Entry entry = GetEntry(at);
    if (IsFree(entry)) return {at, 0};
    if (entry.key == key) return {at, entry.GetNumber() - m_before};
  }
}

inline void CFITextIndexes::AddNewAt(const Place& place, std::string_view text, std::uint64_t key,
                                     std::uint32_t index) {
  const std::uint64_t begin = text.size() > kShort ? AddLongText(text) : 0;
  SetEntry(place.at, {key, begin << kIndexBits | (m_before + index)});
  ++m_count;
}

inline void CFITextIndexes::AddAt(const Place& place, std::string_view text, std::uint64_t key,
                                  std::uint32_t index) {
  if (IsFree(GetEntry(place.at))) return AddNewAt(place, text, key, index);
  AddAgainAt(place.at, index);
}

inline void CFITextIndexes::AddAgainAt(std::size_t at, std::uint32_t index) {
  const Entry entry = GetEntry(at);
  SetEntry(at, {entry.key, entry.GetBegin() << kIndexBits | (m_before + index)});
  ++m_count;
  ++m_mostTexts;
}

inline std::uint32_t CFITextIndexes::Find(std::string_view text) const {
  return Find(text, KeyOf(text));
}

}  // namespace QzXmlLib16::detail
