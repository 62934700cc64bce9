#include "qzxml/fastinfoset/FIPieces.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <utility>

#include "qzxml/platform/Memory.h"
#include "qzxml/runtime/BinaryStream.h"
#include "qzxml/values/BinaryData.h"

namespace QzXmlLib16::detail {
namespace {

constexpr std::size_t kOrdinary = 64 * 1024 - 32;  // with the heap's header within 64 KiB
constexpr std::size_t kLong = std::size_t{8} << 20;
constexpr std::size_t kMostSpare = 16;
constexpr std::uint64_t kMostOctets = std::numeric_limits<std::uint32_t>::max();

void PutSlices(CBinaryStream& stream, const char* octets, std::size_t size) {
  constexpr std::size_t kLargest = std::size_t{1} << 30;
  while (size != 0) {
    const std::size_t slice = std::min(size, kLargest);
    stream.Put(octets, static_cast<std::uint32_t>(slice));
    octets += slice;
    size -= slice;
  }
}

}  // namespace

CFIPieces::CFIPieces() = default;
CFIPieces::~CFIPieces() = default;

void CFIPieces::Take(std::size_t room) {
  if (room == kOrdinary && !m_spare.empty()) {
    m_last = std::move(m_spare.back());
    m_spare.pop_back();
  } else {
    m_last.reset(new char[room]);
    ExpectToFill(m_last.get(), room);
  }
  m_room = room;
}

void CFIPieces::Keep(std::unique_ptr<char[]> octets, std::size_t room) {
  if (room == kOrdinary && m_spare.size() < kMostSpare) m_spare.push_back(std::move(octets));
}

void CFIPieces::Grow(std::size_t filled, std::size_t more) {
  const std::unique_ptr<char[]> former = std::move(m_last);
  Take(std::max({kOrdinary, filled + more, filled * 2}));
  if (filled != 0) std::memcpy(m_last.get(), former.get(), filled);
}

void CFIPieces::Begin(std::size_t filled) {
  m_full.push_back({std::move(m_last), m_room, filled});
  m_room = 0;
  m_fullSize += filled;
  Take(m_fullSize < kLargePiece ? kOrdinary : kLong);
}

void CFIPieces::PutInto(CBinaryStream& stream, std::size_t filled) {
  const std::uint64_t size = m_fullSize + filled;
  if (m_full.empty() || size > kMostOctets) {
    // The stream tells where it has no room for them.
    for (const Full& full : m_full) PutSlices(stream, full.octets.get(), full.size);
    PutSlices(stream, m_last.get(), filled);
  } else {
    std::unique_ptr<unsigned char[]> octets(new unsigned char[size]);
    ExpectToFill(octets.get(), size);
    unsigned char* out = octets.get();
    for (Full& full : m_full) {
      std::memcpy(out, full.octets.get(), full.size);
      out += full.size;
      Keep(std::move(full.octets), full.room);
    }
    std::memcpy(out, m_last.get(), filled);
    stream.Put(CBinaryData(octets.release(), static_cast<std::uint32_t>(size), true));
  }
  m_full.clear();
  m_fullSize = 0;
}

void CFIPieces::Clear() {
  for (Full& full : m_full) Keep(std::move(full.octets), full.room);
  m_full.clear();
  m_fullSize = 0;
  if (m_room == kOrdinary) return;
  m_last = nullptr;
  m_room = 0;
}

}  // namespace QzXmlLib16::detail
