#pragma once

#include <string>
#include <vector>

namespace qztest {

// Every text of up to four chars that a number could be made of.
inline std::vector<std::string> GetShortNumberTexts() {
  std::vector<std::string> texts = {""};
  for (std::size_t i = 0; i < texts.size() && texts[i].size() < 4; ++i) {
    for (const char c : std::string("+-.0 19eE")) texts.push_back(std::string(texts[i]) + c);
  }
  return texts;
}

}  // namespace qztest
