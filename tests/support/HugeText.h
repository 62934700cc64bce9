#pragma once

#include <cstddef>

namespace qztest {

// A zero-terminated text of any length that takes next to no memory: a few pages, mapped again and
// again. For the limits at 2 and 4 GiB.
class HugeText {
 public:
  // `length` times the character.
  HugeText(char character, std::size_t length);
  HugeText(const HugeText&) = delete;
  HugeText& operator=(const HugeText&) = delete;
  ~HugeText();
  const char* c_str() const { return m_text; }

 private:
  char* m_begin;
  std::size_t m_mapped;
  const char* m_text;
};

}  // namespace qztest
