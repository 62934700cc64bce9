#include "qzxml/xml/ParserMemory.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <new>

#include "qzxml/runtime/BlockPool.h"

namespace QzXmlLib16::detail {
namespace {

constexpr std::size_t kSmallestRun = std::size_t{32} << 20;
constexpr std::size_t kMostSize = ~std::size_t{0} / 2;

// In front of each piece.
struct alignas(16) Header {
  std::size_t size;  // with the header

  bool IsRun() const { return size >= kSmallestRun; }
};

void* Keep(void* memory, std::size_t size) noexcept {
  return memory != nullptr ? new (memory) Header{size} + 1 : nullptr;
}

}  // namespace

void* TakeParserMemory(std::size_t size) noexcept {
  if (size > kMostSize) return nullptr;
  size += sizeof(Header);
  if (size < kSmallestRun) return Keep(std::malloc(size), size);
  try {
    return Keep(CBlockPool::TakeRun(size), size);
  } catch (const std::bad_alloc&) {
    return nullptr;
  }
}

void* ResizeParserMemory(void* memory, std::size_t size) noexcept {
  if (memory == nullptr) return TakeParserMemory(size);
  if (size > kMostSize) return nullptr;
  Header* const header = static_cast<Header*>(memory) - 1;
  const std::size_t whole = size + sizeof(Header);
  if (!header->IsRun() && whole < kSmallestRun) return Keep(std::realloc(header, whole), whole);
  void* const resized = TakeParserMemory(size);
  if (resized == nullptr) return nullptr;
  std::memcpy(resized, memory, std::min(size, header->size - sizeof(Header)));
  GiveParserMemory(memory);
  return resized;
}

void GiveParserMemory(void* memory) noexcept {
  if (memory == nullptr) return;
  Header* const header = static_cast<Header*>(memory) - 1;
  if (header->IsRun()) {
    CBlockPool::GiveRun(header, header->size);
  } else {
    std::free(header);
  }
}

}  // namespace QzXmlLib16::detail
