// Memory of the objects that a document brings. Under an AddressSanitizer each object has memory of
// its own, whose bounds it watches; the other builds put objects together.
#include <sys/resource.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <new>
#include <optional>
#include <random>
#include <thread>
#include <vector>

#include "qzxml/runtime/ObjectMemory.h"
#include "tests/support/QzTest.h"

namespace QzXmlLib16 {
namespace {

using detail::CObjectsTogether;
using detail::GiveObjectMemory;
using detail::TakeObjectMemory;

// An object that is filled with a byte of its own.
struct Filled {
  Filled(std::size_t itsSize, int itsByte)
      : memory(TakeObjectMemory(itsSize)), size(itsSize), byte(itsByte & 0xFF) {
    std::memset(memory, byte, size);
  }

  bool IsWhole() const {
    const auto* const bytes = static_cast<const unsigned char*>(memory);
    for (std::size_t i = 0; i < size; ++i) {
      if (bytes[i] != byte) return false;
    }
    return true;
  }

  void* memory;
  std::size_t size;
  int byte;
};

std::vector<Filled> Fill(std::size_t count) {
  std::vector<Filled> objects;
  for (std::size_t i = 0; i < count; ++i) {
    objects.emplace_back(1 + (i * 37) % 2500, static_cast<int>(i));
  }
  return objects;
}

void ExpectWholeAndGive(const std::vector<Filled>& objects) {
  for (const Filled& object : objects) {
    EXPECT_TRUE(object.IsWhole());
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(object.memory) % 16, 0U);
    GiveObjectMemory(object.memory);
  }
}

TEST(ObjectMemory, ObjectsKeepWhatTheyHoldAndAreAligned) { ExpectWholeAndGive(Fill(1000)); }

TEST(ObjectMemory, ObjectsThatLieTogetherDoNotOverlap) {
  const CObjectsTogether together;
  ExpectWholeAndGive(Fill(5000));
}

TEST(ObjectMemory, ObjectsOutliveTheTimeThatTheyWereMadeIn) {
  std::vector<Filled> objects;
  {
    const CObjectsTogether together;
    objects = Fill(3000);
  }
  std::shuffle(objects.begin(), objects.end(), std::mt19937(7));
  ExpectWholeAndGive(objects);
}

TEST(ObjectMemory, ObjectsGoInTheMiddleOfTheMakingOfOthers) {
  const CObjectsTogether together;
  std::vector<Filled> kept;
  for (int i = 0; i < 20000; ++i) {
    kept.emplace_back(200, i);
    if (i % 10 != 0) {
      EXPECT_TRUE(kept.back().IsWhole());
      GiveObjectMemory(kept.back().memory);
      kept.pop_back();
    }
  }
  ExpectWholeAndGive(kept);
}

TEST(ObjectMemory, AnInnerTimeEndsWithoutTheOuterOne) {
  const CObjectsTogether together;
  std::vector<Filled> objects = Fill(10);
  {
    const CObjectsTogether inner;
    objects.emplace_back(100, 1);
  }
  for (int i = 0; i < 1000; ++i) objects.emplace_back(100, i);
  ExpectWholeAndGive(objects);
}

TEST(ObjectMemory, AnyThreadFrees) {
  std::vector<Filled> objects;
  std::thread([&objects] {
    const CObjectsTogether together;
    objects = Fill(2000);
  }).join();
  std::vector<Filled> others(objects.begin() + 1000, objects.end());
  objects.erase(objects.begin() + 1000, objects.end());
  std::thread thread([&others] { ExpectWholeAndGive(others); });
  ExpectWholeAndGive(objects);
  thread.join();
}

TEST(ObjectMemory, NullIsNoObject) { GiveObjectMemory(nullptr); }

long PeakKilobytes() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  return usage.ru_maxrss;
}

// 100 times 8 MB, of which none stays.
TEST(ObjectMemory, APieceIsUsedAgainWhenItsLastObjectHasGone) {
  const long before = PeakKilobytes();
  for (int i = 0; i < 100; ++i) {
    std::vector<void*> objects;
    {
      const CObjectsTogether together;
      for (int k = 0; k < 16000; ++k) {
        objects.push_back(TakeObjectMemory(500));
        std::memset(objects.back(), i, 500);
      }
    }
    for (void* const object : objects) GiveObjectMemory(object);
  }
#if !defined(__SANITIZE_ADDRESS__)  // which keeps freed memory aside
  EXPECT_LT(PeakKilobytes() - before, 32 * 1024);
#else
  static_cast<void>(before);
#endif
}

// --- As a base

class Placed : public detail::CObjectPlaced {
 public:
  explicit Placed(int itsNumber) : number(itsNumber) {}
  virtual ~Placed() = default;
  int number;
};

class Refusing : public Placed {
 public:
  Refusing() : Placed(1) { throw 1; }
};

class alignas(128) Wide : public Placed {
 public:
  Wide() : Placed(2) {}
};

TEST(ObjectMemory, AClassIsMadeByEveryFormOfNew) {
  const CObjectsTogether together;
  const std::unique_ptr<Placed> plain(new Placed(1));
  const std::unique_ptr<Placed> quiet(new (std::nothrow) Placed(2));
  const std::unique_ptr<Placed> wide(new Wide);
  std::optional<Placed> inPlace;
  inPlace.emplace(3);
  alignas(Placed) unsigned char place[sizeof(Placed)];
  Placed* const placed = new (place) Placed(4);
  EXPECT_EQ(plain->number, 1);
  EXPECT_EQ(quiet->number, 2);
  EXPECT_EQ(wide->number, 2);
  EXPECT_EQ(reinterpret_cast<std::uintptr_t>(wide.get()) % 128, 0U);
  EXPECT_EQ(inPlace->number, 3);
  EXPECT_EQ(placed->number, 4);
  placed->~Placed();
  EXPECT_THROW(new Refusing, int);
}

}  // namespace
}  // namespace QzXmlLib16
