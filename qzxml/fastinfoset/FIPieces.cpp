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

// An ordinary one mostly waits.
std::unique_ptr<char[]> CFIPieces::Take(std::size_t room) {
  if (room == kOrdinary && m_spares != 0) return std::move(m_spare[--m_spares]);
  std::unique_ptr<char[]> octets(new char[room]);
  ExpectToFill(octets.get(), room);
  return octets;
}

void CFIPieces::Keep(std::unique_ptr<char[]> octets, std::size_t room) {
  if (room == kOrdinary && m_spares != m_spare.size()) m_spare[m_spares++] = std::move(octets);
}

void CFIPieces::Grow(std::size_t filled, std::size_t more) {
  const std::size_t room = std::max({kOrdinary, filled + more, filled * 2});
  std::unique_ptr<char[]> grown = Take(room);
  if (filled != 0) std::memcpy(grown.get(), m_last.get(), filled);
  m_last = std::move(grown);
  m_room = room;
}

void CFIPieces::Begin(std::size_t filled) {
  const std::size_t room = m_fullSize + filled < kLargePiece ? kOrdinary : kLong;
  std::unique_ptr<char[]> next = Take(room);
  m_full.emplace_back();
  m_full.back() = {std::exchange(m_last, std::move(next)), std::exchange(m_room, room), filled};
  m_fullSize += filled;
}

void CFIPieces::PutInto(CBinaryStream& stream, std::size_t filled) {
  const std::uint64_t size = m_fullSize + filled;
  if (m_full.empty() || size > kMostOctets) {
    // The stream tells where it has no room for them.
    for (const Full& full : m_full) PutSlices(stream, full.octets.get(), full.size);
    PutSlices(stream, m_last.get(), filled);
    m_full.clear();
    m_fullSize = 0;
    return;
  }
  std::unique_ptr<unsigned char[]> octets(new unsigned char[size]);
  ExpectToFill(octets.get(), size);
  const CBinaryData data(octets.get(), static_cast<std::uint32_t>(size), true);
  unsigned char* out = octets.release();
  std::vector<Full> pieces;
  pieces.swap(m_full);
  m_fullSize = 0;
  for (Full& full : pieces) {
    std::memcpy(out, full.octets.get(), full.size);
    out += full.size;
    Keep(std::move(full.octets), full.room);
  }
  std::memcpy(out, m_last.get(), filled);
  stream.Put(data);
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
