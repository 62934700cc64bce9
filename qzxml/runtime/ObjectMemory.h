#pragma once

#include <cstddef>
#include <cstdint>
#include <new>

#include "qzxml/platform/Export.h"

namespace QzXmlLib16::detail {

// Memory for one object of the library's classes, aligned for every type but those that ask for
// more. Take throws std::bad_alloc; Give takes null too. Any thread may give.
QZXML_API void* TakeObjectMemory(std::size_t size);
QZXML_API void GiveObjectMemory(void* object) noexcept;

// While one stands, the objects that its thread makes lie together in the order of their making,
// which is that in which they are mostly used and destroyed: a document brings great numbers of
// them, and the heap would take a good part of the time of reading it. They lie in pieces that grow
// to 64 KiB, and a piece is freed with the last object in it. The first 2 KiB of objects, large
// ones, and all that are made at other times have memory of their own, which is freed with each.
// Within another one it does nothing.
class QZXML_API CObjectsTogether {
 public:
  CObjectsTogether();
  ~CObjectsTogether();
  CObjectsTogether(const CObjectsTogether&) = delete;
  CObjectsTogether& operator=(const CObjectsTogether&) = delete;

 private:
  struct Piece;

  friend void* TakeObjectMemory(std::size_t size);
  friend void GiveObjectMemory(void* object) noexcept;

  void* Take(std::size_t size);
  bool AddPiece(std::size_t objectSize);
  void LeavePiece() noexcept;
  static void FreePiece(Piece* piece) noexcept;

  bool m_isOuter;
  Piece* m_piece = nullptr;  // that objects are put into
  char* m_next = nullptr;
  std::size_t m_left = 0;    // of the piece
  std::uint32_t m_made = 0;  // objects in the piece
  std::size_t m_total = 0;   // of all pieces
};

// A base without data for classes whose objects lie there. Objects on the stack, in arrays and in
// other objects are not concerned, and those of a class that asks for more alignment have memory of
// the heap's. Each form of new has its delete beside it: `delete` for an object, and the one with
// the arguments of that new where the constructor throws.
class CObjectPlaced {
 public:
  static void* operator new(std::size_t size) { return TakeObjectMemory(size); }
  static void operator delete(void* object) noexcept { GiveObjectMemory(object); }

  // The other forms would be hidden by these: as they are for every class.
  static void* operator new(std::size_t, void* place) noexcept { return place; }
  static void operator delete(void*, void*) noexcept {}
  static void* operator new(std::size_t size, std::align_val_t alignment) {
    return ::operator new(size, alignment);
  }
  static void operator delete(void* object, std::align_val_t alignment) noexcept {
    ::operator delete(object, alignment);
  }
  static void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    try {
      return TakeObjectMemory(size);
    } catch (const std::bad_alloc&) {
      return nullptr;
    }
  }
  static void operator delete(void* object, const std::nothrow_t&) noexcept {
    GiveObjectMemory(object);
  }
  static void* operator new(std::size_t size, std::align_val_t alignment,
                            const std::nothrow_t& quiet) noexcept {
    return ::operator new(size, alignment, quiet);
  }
  static void operator delete(void* object, std::align_val_t alignment,
                              const std::nothrow_t& quiet) noexcept {
    ::operator delete(object, alignment, quiet);
  }
};

}  // namespace QzXmlLib16::detail
