#include "tests/support/HugeText.h"

#include <sys/mman.h>
#include <unistd.h>

#include <cstdio>
#include <stdexcept>
#include <string>

namespace qztest {

namespace {

constexpr std::size_t kPieceSize = 4 * 1024 * 1024;

void Check(bool isGood) {
  if (!isGood) throw std::runtime_error("A huge text can not be mapped");
}

// Maps a temporary file of one piece `times` times, one behind the other, from `at` on.
void MapPieces(char* at, std::size_t times, const std::string& piece) {
  std::FILE* const file = std::tmpfile();
  Check(file != nullptr);
  Check(std::fwrite(piece.data(), 1, piece.size(), file) == piece.size());
  Check(std::fflush(file) == 0);
  for (std::size_t i = 0; i < times; ++i, at += piece.size()) {
    Check(mmap(at, piece.size(), PROT_READ, MAP_SHARED | MAP_FIXED, fileno(file), 0) == at);
  }
  std::fclose(file);
}

}  // namespace

// The text ends with the mapping but for one piece of zero bytes, so it begins where it must.
HugeText::HugeText(char character, std::size_t length) {
  const std::size_t pieces = length / kPieceSize + 1;
  m_mapped = (pieces + 1) * kPieceSize;
  void* const area = mmap(nullptr, m_mapped, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  Check(area != MAP_FAILED);
  m_begin = static_cast<char*>(area);
  char* const end = m_begin + pieces * kPieceSize;
  MapPieces(m_begin, pieces, std::string(kPieceSize, character));
  MapPieces(end, 1, std::string(kPieceSize, '\0'));
  m_text = end - length;
}

HugeText::~HugeText() { munmap(m_begin, m_mapped); }

}  // namespace qztest
