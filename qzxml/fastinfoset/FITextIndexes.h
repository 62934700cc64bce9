#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "qzxml/platform/Export.h"
#include "qzxml/xml/TextHash.h"

namespace QzXmlLib16::detail {

// Texts, each with an index: what a writer of Fast Infoset looks texts up in. They stand in an open
// hash table, at most half full, long ones with their bytes behind those of the others; so a text
// costs no memory of its own, and one that is looked for is mostly met at once.
//
// The hash is salted for each process (HashText), so that no document can be made whose texts
// collide. Clear and Forget cost nothing: what is stored for an index counts on from table to
// table, and what was stored before is taken for a free place, or for a text without an index. A
// plain value; a copy is deep. The operations that look for a text are in FITextIndexesFind.h.
class QZXML_API CFITextIndexes {
 public:
  // The number of an arrangement of texts, which no other table has at any time; that of a copy is
  // a new one.
  class QZXML_API CArrangement {
   public:
    CArrangement() { Renew(); }
    CArrangement(const CArrangement&) : CArrangement() {}
    CArrangement& operator=(const CArrangement&) {
      Renew();
      return *this;
    }

    void Renew();
    std::uint64_t GetNumber() const { return m_number; }

   private:
    std::uint64_t m_number;
  };

  static constexpr std::size_t kShort = 7;

  // By what a text is looked for. The first byte is its size and the others are its own, where the
  // text is short, which is most of what is looked for; then no other text has the same. Else it
  // begins with FF and a hash follows.
  static std::uint64_t KeyOf(std::string_view text);
  // The same for a text behind which eight bytes can be read, and which is not empty.
  static std::uint64_t KeyOfRoomy(std::string_view text);

  static constexpr std::uint32_t kMostIndex = 0x100000;

  std::size_t GetCount() const { return m_count; }
  std::size_t GetMemory() const {
    return m_words.capacity() * sizeof m_words[0] + m_texts.capacity();
  }

  // Takes all texts away. Memory is kept for the next ones, unless it is much for as many as there
  // were, or much at all.
  void Clear();

  // Takes the index of each text away. Texts stay where they stand, and one that comes again costs
  // less than a new one. Clears where they are many.
  void Forget();

  // All texts with their indexes, in no order.
  std::vector<std::pair<std::string, std::uint32_t>> GetAll() const;

  // The index of a text, given with its key; 0 for one that is not there.
  std::uint32_t Find(std::string_view text, std::uint64_t key) const;
  std::uint32_t Find(std::string_view text) const;

  // Gives a text that is not there yet an index, from 1 to kMostIndex.
  void Add(std::string_view text, std::uint64_t key, std::uint32_t index);

  // The same in two steps, for one look in all: where the text is, with its index, or where it may
  // be added, with 0, until something else is.
  struct Place {
    std::size_t at;
    std::uint32_t index;
  };
  Place Look(std::string_view text, std::uint64_t key);
  void AddAt(const Place& place, std::string_view text, std::uint64_t key, std::uint32_t index);

  // The same for a text of which the place is known: it is good, whether the text has an index or
  // not, as long as this number is the same.
  std::uint64_t GetArrangement() const { return m_arrangement.GetNumber(); }
  std::uint32_t GetIndexAt(std::size_t at) const { return GetIndex(GetEntry(at)); }
  void AddAgainAt(std::size_t at, std::uint32_t index);

  // Both in a table that never forgets: the look for a short text, by its key alone.
  Place LookShort(std::uint64_t key);
  void AddNewAt(const Place& place, std::string_view text, std::uint64_t key, std::uint32_t index);

  // Takes the index of the text away that was added last.
  void RemoveLast(std::string_view text, std::uint64_t key);

  // The same for any text: in place of the index that it may have.
  void Set(std::string_view text, std::uint32_t index);

 private:
  static constexpr int kIndexBits = 28;
  static constexpr std::uint32_t kIndexMask = (1u << kIndexBits) - 1;

  // A place of the table, free where the number is not above m_free; else a text stands there,
  // which has the index that the number is above m_before, if it is.
  struct Entry {
    std::uint32_t GetNumber() const { return static_cast<std::uint32_t>(value) & kIndexMask; }
    // Where a long text begins.
    std::size_t GetBegin() const { return value >> kIndexBits; }

    std::uint64_t key;
    std::uint64_t value;
  };

  std::uint64_t HashOf(std::uint64_t key) const;
  std::string_view GetLongText(std::size_t begin) const;
  std::size_t FindPlace(std::string_view text, std::uint64_t key) const;
  bool IsText(const Entry& entry, std::string_view text) const;
  bool IsFree(const Entry& entry) const { return entry.GetNumber() <= m_free; }
  std::uint32_t GetIndex(const Entry& entry) const {
    const std::uint32_t number = entry.GetNumber();
    return number > m_before ? number - m_before : 0;
  }
  std::size_t GetPlaces() const { return m_words.size() / 2; }
  Entry GetEntry(std::size_t place) const { return {m_words[place * 2], m_words[place * 2 + 1]}; }
  void SetEntry(std::size_t place, const Entry& entry) {
    m_words[place * 2] = entry.key;
    m_words[place * 2 + 1] = entry.value;
  }
  void Grow();
  void PutInFreePlace(const Entry& entry);
  std::size_t AddLongText(std::string_view text);

  std::uint64_t m_salt = HashSalt();   // of this process
  std::vector<std::uint64_t> m_words;  // the places, two for each: a power of two, or none
  std::size_t m_mask = 0;              // of a place, where there are some
  std::size_t m_count = 0;
  std::uint32_t m_free = 0;     // the highest number of what does not stand there any more
  std::uint32_t m_before = 1;   // and of a text without an index; always more than that
  std::size_t m_mostTexts = 0;  // that these places take, beside those without an index
  std::vector<char> m_texts;    // room for the long ones, each behind its size
  std::size_t m_textsSize = 0;
  CArrangement m_arrangement;
};

}  // namespace QzXmlLib16::detail
