// Counts what reading Fast Infoset takes from the heap, in a process of its own: whatever the
// octets say, it is in proportion to their number. Ends with the number of documents that took
// more.
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <new>
#include <string>

#include "qzxml/runtime/QzException.h"
#include "qzxml/xml/XmlDocument.h"
#include "tests/fastinfoset/FIDocument.h"

namespace {

std::size_t g_live = 0;
std::size_t g_peak = 0;

// The size of each piece stands in front of it.
constexpr std::size_t kHead = alignof(std::max_align_t);

void* Take(std::size_t size) {
  void* const piece = std::malloc(size + kHead);
  if (piece == nullptr) throw std::bad_alloc();
  *static_cast<std::size_t*>(piece) = size;
  g_live += size;
  g_peak = std::max(g_peak, g_live);
  return static_cast<char*>(piece) + kHead;
}

void Give(void* memory) {
  if (memory == nullptr) return;
  void* const piece = static_cast<char*>(memory) - kHead;
  g_live -= *static_cast<std::size_t*>(piece);
  std::free(piece);
}

}  // namespace

void* operator new(std::size_t size) { return Take(size); }
void* operator new[](std::size_t size) { return Take(size); }
void operator delete(void* memory) noexcept { Give(memory); }
void operator delete[](void* memory) noexcept { Give(memory); }
void operator delete(void* memory, std::size_t) noexcept { Give(memory); }
void operator delete[](void* memory, std::size_t) noexcept { Give(memory); }

namespace {

using namespace QzXmlLib16;
using qztest::Finf;
using qztest::FinfOf;
using qztest::Octets;
using qztest::Times;

// What a document of any size takes, and what each of its octets may take. The most is that of
// eight booleans in one octet: 40 characters, in a text that grows and in the tree.
constexpr std::size_t kForAny = 100'000;
constexpr std::size_t kForEach = 120;

std::size_t PeakOf(const std::string& octets) {
  const std::size_t before = g_live;
  g_peak = g_live;
  CSerializationContext context;
  context.SetMaxDepth(0);
  try {
    CXmlDocument document(context);
    qztest::LoadOctets(document, octets);
  } catch (const CQzException&) {
  }
  return g_peak - before;
}

int Check(const std::string& what, const std::string& octets) {
  const std::size_t peak = PeakOf(octets);
  if (peak <= kForAny + kForEach * octets.size()) return 0;
  std::printf("%s: %zu octets took %zu\n", what.c_str(), octets.size(), peak);
  return 1;
}

// Each octet with its lowest bit changed, its highest, all of them, and as FF.
int CheckChanges(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  std::string octets{std::istreambuf_iterator<char>(file), {}};
  int failures = 0;
  for (char& octet : octets) {
    const char kept = octet;
    for (const int change : {1, 128, 255, ~kept & 0xFF}) {
      octet = static_cast<char>(kept ^ change);
      failures += Check(path.filename().string() + ", changed", octets);
    }
    octet = kept;
  }
  return failures;
}

int CheckLengths() {
  int failures = 0;
  for (const char* hex :
       {"3C 60 FF FF FF FF 41", "3C 60 7F FF FF FF 41", "3C 00 61 83 FF FF FF FF 41",
        "3C 00 61 83 7F FF FF FF 41", "3C 00 61 8B FF 7F FF FF FF 41",
        "3C 00 61 8C 27 7F FF FF FF 41", "7C 00 61 78 00 6B 0C FF FF FF FF 41",
        "7C 00 61 78 00 6B 0C 7F FF FF FF 41", "7C 00 61 78 00 6B 1C 7F FF FF FF 41",
        "3C 00 61 BF FF FF FF", "3C 00 61 B8 FF FF FF", "30 FF FF FF", "7C 00 61 6F FF FF",
        "3C EF FF FF", "38 CF EF FF FF", "E2 0C 7F FF FF FF", "C7 60 7F FF FF FF"}) {
    failures += Check(hex, FinfOf(hex));
  }
  for (const char* hex : {"40 8F FF FF 60 7F FF FF FF", "20 1F FF 60 7F FF FF FF",
                          "20 08 00 8F FF FF 00 61", "20 00 01 8F FF FF 03 EF FF FF",
                          "10 C3 60 7F FF FF FF", "08 D1 60 7F FF FF FF", "01 3F FC 7F FF FF FF"}) {
    failures += Check(hex, Octets("E0 00 00 01") + Octets(hex));
  }
  return failures;
}

// A million octets of what takes most.
int CheckLongDocuments() {
  const std::string names = Octets("3C 00 61");
  const struct {
    const char* what;
    std::string octets;
  } documents[] = {
      {"elements in a row", Finf(names + Times(500000, Octets("00 F0")) + Octets("FF"))},
      {"elements in each other",
       Finf(names + Times(666667, Octets("00")) + Times(333334, Octets("FF")))},
      {"names in full", Finf(names + Times(333333, Octets("3C 80 F0")) + Octets("FF"))},
      {"attributes",
       Finf(Octets("7C 00 61 78 00 6B FF") + Times(500000, Octets("00 FF")) + Octets("FF F0"))},
      {"values in the table",
       Finf(Octets("7C 00 61 78 00 6B FF") + Times(333333, Octets("00 40 76")) + Octets("FF F0"))},
      {"chunks in the table", Finf(names + Times(500000, Octets("90 76")) + Octets("FF"))},
      {"chunks by their index",
       Finf(names + Octets("91 76 77") + Times(1000000, Octets("A0")) + Octets("FF"))},
      {"booleans",
       Finf(names + Octets("8C 17 00 0F 41 3D") + std::string(1000000, '\0') + Octets("FF"))},
      {"namespaces", Finf(Octets("38 CF 00 70 00 75") + Times(333333, Octets("CF 81 81")) +
                          Octets("F0 3C 00 61 FF"))},
  };
  int failures = 0;
  for (const auto& document : documents) failures += Check(document.what, document.octets);
  return failures;
}

}  // namespace

int main() {
  int failures = CheckLengths() + CheckLongDocuments();
  int files = 0;
  for (const auto& entry :
       std::filesystem::directory_iterator(QZXML_TEST_DIRECTORY "/corpora/finf/peer")) {
    if (entry.path().extension() != ".finf" || entry.file_size() > 500) continue;
    failures += CheckChanges(entry.path());
    ++files;
  }
  std::printf("%d files, %d documents took too much\n", files, failures);
  return files > 0 ? failures : 1;
}
