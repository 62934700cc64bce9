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

class alignas(128) Wide : public Placed {
 public:
  Wide() : Placed(2) {}
};

// Their constructors throw, so that what was taken goes back by the delete of the form of new.
class Refusing : public Placed {
 public:
  Refusing() : Placed(1) { throw 1; }
};

class alignas(128) WideRefusing : public Placed {
 public:
  WideRefusing() : Placed(1) { throw 1; }
};

bool IsAligned(const void* object, std::size_t alignment) {
  return reinterpret_cast<std::uintptr_t>(object) % alignment == 0;
}

TEST(ObjectMemory, AClassIsMadeByEveryFormOfNew) {
  const CObjectsTogether together;
  const std::unique_ptr<Placed> plain(new Placed(1));
  const std::unique_ptr<Placed> quiet(new (std::nothrow) Placed(2));
  std::optional<Placed> inPlace;
  inPlace.emplace(3);
  alignas(Placed) unsigned char place[sizeof(Placed)];
  Placed* const placed = new (place) Placed(4);
  EXPECT_EQ(plain->number, 1);
  EXPECT_EQ(quiet->number, 2);
  EXPECT_EQ(inPlace->number, 3);
  EXPECT_EQ(placed->number, 4);
  placed->~Placed();
  EXPECT_THROW(new Refusing, int);
  EXPECT_THROW(new (std::nothrow) Refusing, int);
  EXPECT_THROW(new (place) Refusing, int);
}

// A delete that is not that of the form of new is seen by an AddressSanitizer, and by the heap in
// most other builds.
TEST(ObjectMemory, AClassOfMoreAlignmentIsMadeByEveryFormOfNew) {
  const CObjectsTogether together;
  for (int i = 0; i < 100; ++i) {
    const std::unique_ptr<const Placed> between(new Placed(i));
    const std::unique_ptr<Placed> plain(new Wide);  // deleted by way of the base
    const std::unique_ptr<Wide> quiet(new (std::nothrow) Wide);
    const std::shared_ptr<Wide> shared = std::make_shared<Wide>();
    std::optional<Wide> inPlace;
    inPlace.emplace();
    alignas(Wide) unsigned char place[sizeof(Wide)];
    Wide* const placed = new (place) Wide;
    for (const Placed* const object :
         {plain.get(), static_cast<Placed*>(quiet.get()), static_cast<Placed*>(shared.get()),
          static_cast<Placed*>(placed)}) {
      EXPECT_EQ(object->number, 2);
      EXPECT_TRUE(IsAligned(object, 128));
    }
    EXPECT_TRUE(IsAligned(&*inPlace, 128));
    placed->~Wide();
    EXPECT_THROW(new WideRefusing, int);
    EXPECT_THROW(new (std::nothrow) WideRefusing, int);
    EXPECT_THROW(new (place) WideRefusing, int);
  }
}

TEST(ObjectMemory, ObjectsInArraysAreThoseOfTheHeap) {
  const CObjectsTogether together;
  struct Default : Placed {
    Default() : Placed(5) {}
  };
  const std::unique_ptr<Default[]> row(new Default[3]);
  const std::unique_ptr<Default[]> quietRow(new (std::nothrow) Default[3]);
  const std::unique_ptr<Wide[]> wideRow(new Wide[3]);
  const std::unique_ptr<Wide[]> quietWideRow(new (std::nothrow) Wide[3]);
  EXPECT_EQ(row[2].number + quietRow[2].number, 10);
  EXPECT_EQ(wideRow[2].number + quietWideRow[2].number, 4);
  EXPECT_TRUE(IsAligned(&wideRow[1], 128) && IsAligned(&quietWideRow[1], 128));
}

// ::new knows nothing of a class, and so ::delete has to free what it made.
TEST(ObjectMemory, WhatTheGlobalNewMadeTheGlobalDeleteFrees) {
  const CObjectsTogether together;
  Placed* const placed = ::new Placed(1);
  Wide* const wide = ::new Wide;
  EXPECT_TRUE(IsAligned(wide, 128));
  EXPECT_EQ(placed->number + wide->number, 3);
  ::delete placed;
  ::delete wide;
  EXPECT_THROW(::new Refusing, int);
  EXPECT_THROW(::new WideRefusing, int);
  EXPECT_THROW(::new (std::nothrow) WideRefusing, int);
}

// What does not fit into memory is an answer, in the forms that do not throw.
TEST(ObjectMemory, TheQuietFormsAnswerNullWhereThereIsNoMemory) {
#if !defined(__SANITIZE_ADDRESS__)  // which stops the process
  const std::size_t tooMuch = PTRDIFF_MAX;
  EXPECT_EQ(Placed::operator new(tooMuch - 4096, std::nothrow), nullptr);
  EXPECT_EQ(Placed::operator new(tooMuch - 4096, std::align_val_t(128), std::nothrow), nullptr);
#else
  GTEST_SKIP() << "an AddressSanitizer stops where there is no memory";
#endif
}

}  // namespace
}  // namespace QzXmlLib16
