#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "qzxml/platform/Export.h"

namespace QzXmlLib16 {

class CBinaryStream;

namespace detail {

// The octets of a document while it is written, in pieces in the order of their writing, so that
// none has to move: they go into the stream together, when it is known how many there are. The last
// piece is filled in place by its user, who tells how far; the others are full.
//
// Pieces are of 64 KiB, and longer ones where a value needs one, or behind 4 MiB.
class QZXML_API CFIPieces {
 public:
  CFIPieces();
  ~CFIPieces();
  CFIPieces(const CFIPieces&) = delete;
  CFIPieces& operator=(const CFIPieces&) = delete;

  // The last piece.
  char* GetLast() const { return m_last.get(); }
  std::size_t GetRoom() const { return m_room; }

  // Gives the last piece, with so many octets in it, room for more, wherever it is then. Throws
  // std::bad_alloc, and nothing has changed then.
  void Grow(std::size_t filled, std::size_t more);
  // Begins another one. Throws as Grow.
  void Begin(std::size_t filled);

  // Puts all octets into the stream; none are left. Throws what CBinaryStream::Put does.
  void PutInto(CBinaryStream& stream, std::size_t filled);

  // Drops what is there, and keeps some 1 MiB of memory at most.
  void Clear();

 private:
  struct Full {
    std::unique_ptr<char[]> octets;
    std::size_t room;
    std::size_t size;
  };

  std::unique_ptr<char[]> Take(std::size_t room);
  void Keep(std::unique_ptr<char[]> octets, std::size_t room);

  std::unique_ptr<char[]> m_last;  // null until there is something to write
  std::size_t m_room = 0;
  std::vector<Full> m_full;
  std::uint64_t m_fullSize = 0;
  std::array<std::unique_ptr<char[]>, 16> m_spare;  // of the ordinary size
  std::size_t m_spares = 0;                         // how many of these there are
};

}  // namespace detail
}  // namespace QzXmlLib16
