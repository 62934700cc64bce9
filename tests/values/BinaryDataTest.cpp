#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "qzxml/runtime/Encoder.h"
#include "qzxml/runtime/QzException.h"
#include "qzxml/values/BinaryData.h"
#include "qzxml/values/BinaryDataBuffer.h"
#include "tests/support/HugeText.h"
#include "tests/support/QzTest.h"

namespace QzXmlLib16 {
namespace {

using namespace std::string_literals;

std::string Text(const CBinaryData& data) {
  return data.GetLength() == 0
             ? std::string()
             : std::string(reinterpret_cast<const char*>(data.GetData()), data.GetLength());
}

CBinaryData Bytes(const std::string& text) {
  return CBinaryData(reinterpret_cast<const unsigned char*>(text.data()),
                     static_cast<std::uint32_t>(text.size()));
}

// ---- Construction and copying ----

TEST(BinaryData, TellsWhetherABase64TextWasNone) {
  CBinaryData data;
  EXPECT_FALSE(data.IsRefusedBase64());
  data.SetAsBase64("YWJj");
  EXPECT_FALSE(data.IsRefusedBase64());
  data.SetAsBase64("Y!Jj");
  EXPECT_TRUE(data.IsRefusedBase64());
  data.SetAsBase64("");
  EXPECT_FALSE(data.IsRefusedBase64());
}

TEST(BinaryData, IsEmptyByDefaultAndFromNothing) {
  unsigned char byte = 'x';
  for (const CBinaryData& data : {CBinaryData(), CBinaryData(""), CBinaryData(&byte, 0, false),
                                  CBinaryData(&byte, 0, true), CBinaryData(&byte, 0)}) {
    EXPECT_EQ(0U, data.GetLength());
    EXPECT_EQ(nullptr, data.GetData());
    EXPECT_EQ("", data.GetAsHexString());
    EXPECT_EQ("", data.GetAsBase64());
    EXPECT_TRUE(data == CBinaryData());
  }
}

TEST(BinaryData, CopiesOrAdoptsTheBytes) {
  unsigned char source[] = {1, 2, 3};
  const CBinaryData copied(source, 3, false);
  EXPECT_NE(source, copied.GetData());
  EXPECT_EQ("\1\2\3", Text(copied));

  auto* const array = new unsigned char[2]{7, 8};
  const CBinaryData adopted(array, 2, true);
  EXPECT_EQ(array, adopted.GetData());
  EXPECT_EQ("\7\b", Text(adopted));
}

TEST(BinaryData, CopiesShareTheirStoreUntilOneIsWritten) {
  CBinaryData a("abc");
  CBinaryData b(a);
  EXPECT_EQ(a.GetData(), b.GetData());
  const unsigned char* const store = a.GetData();
  b.Append('d');
  EXPECT_EQ("abc", Text(a));
  EXPECT_EQ("abcd", Text(b));
  EXPECT_EQ(store, a.GetData());
  // a has its store for itself again: writing does not move it.
  a[0] = 'A';
  EXPECT_EQ(store, a.GetData());
  EXPECT_EQ("Abc", Text(a));
}

TEST(BinaryData, AssignmentShares) {
  CBinaryData a("abc");
  CBinaryData b("xyz");
  b = a;
  EXPECT_EQ(a.GetData(), b.GetData());
  b = CBinaryData();
  EXPECT_EQ(0U, b.GetLength());
  EXPECT_EQ("abc", Text(a));
}

TEST(BinaryData, AssignmentToItselfLeavesItEmpty) {
  CBinaryData a("abc");
  const CBinaryData& same = a;
  a = same;
  EXPECT_EQ(0U, a.GetLength());
}

TEST(BinaryData, MoveTakesTheStoreAlong) {
  CBinaryData a("abc");
  const unsigned char* const store = a.GetData();
  CBinaryData b(std::move(a));
  EXPECT_EQ(store, b.GetData());
  EXPECT_EQ(0U, a.GetLength());  // NOLINT: a moved-from value is empty
  CBinaryData c("old");
  c = std::move(b);
  EXPECT_EQ(store, c.GetData());
  EXPECT_EQ(0U, b.GetLength());  // NOLINT
}

TEST(BinaryData, ComparesLengthsAndBytes) {
  EXPECT_TRUE(CBinaryData() == CBinaryData());
  EXPECT_FALSE(CBinaryData() == CBinaryData("a"));
  EXPECT_FALSE(CBinaryData("a") == CBinaryData());
  EXPECT_TRUE(CBinaryData("abc") == CBinaryData("abc"));
  EXPECT_TRUE(CBinaryData("abc") != CBinaryData("abd"));
  EXPECT_TRUE(CBinaryData("abc") != CBinaryData("ab"));
  EXPECT_TRUE(Bytes("a\0b"s) != Bytes("a\0c"s));
}

// ---- Bytes ----

TEST(BinaryData, IndexReadsAndWrites) {
  CBinaryData data("abc");
  const CBinaryData& constant = data;
  EXPECT_EQ('a', constant[0]);
  EXPECT_EQ('c', constant[2]);
  data[1] = 'X';
  EXPECT_EQ("aXc", Text(data));
}

TEST(BinaryData, IndexMakesTheStorePrivateOnlyInItsWritingForm) {
  CBinaryData a("abc");
  CBinaryData b(a);
  EXPECT_EQ('a', std::as_const(b)[0]);
  EXPECT_EQ(a.GetData(), b.GetData());
  b[0] = 'X';
  EXPECT_NE(a.GetData(), b.GetData());
  EXPECT_EQ("abc", Text(a));
  EXPECT_EQ("Xbc", Text(b));
}

TEST(BinaryData, OnePastTheEndIsAZeroByteAndFurtherFails) {
  CBinaryData copied("abc");
  CBinaryData adopted(new unsigned char[3]{'a', 'b', 'c'}, 3, true);
  for (CBinaryData* data : {&copied, &adopted}) {
    EXPECT_EQ(0, std::as_const(*data)[3]);
    (*data)[3] = 'X';
    EXPECT_EQ(0, std::as_const(*data)[3]);
    EXPECT_EQ(0, (*data)[3]);
    EXPECT_EQ("abc", Text(*data));
    EXPECT_QZ_THROW(CQzException, "Index Out of range [4]", std::as_const(*data)[4]);
    EXPECT_QZ_THROW(CQzException, "Index Out of range [4]", (*data)[4]);
    EXPECT_QZ_THROW(CQzException, "Index Out of range [-1]", (*data)[0xFFFFFFFFU]);
    data->Append('d');
    EXPECT_EQ("abcd", Text(*data));
  }
}

TEST(BinaryData, IndexOfAnEmptyValueFails) {
  CBinaryData data;
  EXPECT_QZ_THROW(CQzException, "Index Out of range [0]", data[0]);
  EXPECT_QZ_THROW(CQzException, "Index Out of range [7]", std::as_const(data)[7]);
}

// ---- Changing ----

TEST(BinaryData, AppendsEveryForm) {
  CBinaryData data;
  data.Append("text");
  data.Append(std::string("+string"));
  data.Append('c');
  data.Append(static_cast<unsigned char>(0xFF));
  const unsigned char bytes[] = {0, 1};
  data.Append(bytes, 2);
  data.Append(CBinaryData("end"));
  EXPECT_EQ("text+stringc\xFF\0\1end"s, Text(data));
}

TEST(BinaryData, AppendingNothingChangesNothing) {
  CBinaryData data;
  data.Append("");
  data.Append(std::string());
  data.Append(CBinaryData());
  data.Append(static_cast<const unsigned char*>(nullptr), 0);
  EXPECT_EQ(nullptr, data.GetData());
  data.Append("abc");
  const CBinaryData copy(data);
  data.Append("");
  EXPECT_EQ(copy.GetData(), data.GetData());
}

TEST(BinaryData, AZeroByteEndsAStringThatIsAppended) {
  CBinaryData data("<");
  data.Append("ab\0cd"s);
  EXPECT_EQ("<ab", Text(data));
}

TEST(BinaryData, AppendsItselfAndItsOwnBytes) {
  CBinaryData data("abc");
  data.Append(data);
  EXPECT_EQ("abcabc", Text(data));
  CBinaryData adopted(new unsigned char[2]{'x', 'y'}, 2, true);
  adopted.Append(adopted.GetData(), adopted.GetLength());
  EXPECT_EQ("xyxy", Text(adopted));
  const CBinaryData shared(adopted);
  adopted.Append(adopted);
  EXPECT_EQ("xyxyxyxy", Text(adopted));
  EXPECT_EQ("xyxy", Text(shared));
}

TEST(BinaryData, SmallAppendsDoNotMoveAStoreThatWasCopied) {
  CBinaryData data("a");
  const unsigned char* const store = data.GetData();
  std::string expected = "a";
  for (int i = 1; i < 8192; ++i) {
    data.Append(static_cast<char>('a' + i % 26));
    expected += static_cast<char>('a' + i % 26);
  }
  EXPECT_EQ(store, data.GetData());
  data.Append('!');
  EXPECT_EQ(expected + "!", Text(data));
}

TEST(BinaryData, AStoreThatWasCopiedHasRoomForAsManyBytesAgain) {
  CBinaryData data = Bytes(std::string(5000, 'x'));
  const unsigned char* const store = data.GetData();
  data.Append(std::string(5000, 'y'));
  EXPECT_EQ(store, data.GetData());
  const CBinaryData shared(data);
  data[0] = 'z';  // a copy of 10000 bytes
  const unsigned char* const copy = data.GetData();
  data.Append(std::string(10000, 'y'));
  EXPECT_EQ(copy, data.GetData());
}

TEST(BinaryData, AStoreGrowsToTwiceWhatItHolds) {
  CBinaryData data(new unsigned char[3]{'a', 'b', 'c'}, 3, true);
  data.Append('d');  // room for 8 from here on
  const unsigned char* const store = data.GetData();
  data.Append("efgh");
  EXPECT_EQ(store, data.GetData());
  EXPECT_EQ("abcdefgh", Text(data));
}

TEST(BinaryData, SetBufferReplacesTheValueByACopy) {
  CBinaryData data("old");
  const CBinaryData copy(data);
  const unsigned char bytes[] = {'n', 'e', 'w', '!'};
  data.SetBuffer(bytes, 4);
  EXPECT_EQ("new!", Text(data));
  data.SetBuffer("text");
  EXPECT_EQ("text", Text(data));
  data.SetBuffer(data.GetData() + 1, 2);  // of its own bytes
  EXPECT_EQ("ex", Text(data));
  data.SetBuffer(bytes, 0);
  EXPECT_EQ(nullptr, data.GetData());
  data.SetBuffer("");
  EXPECT_EQ(nullptr, data.GetData());
  EXPECT_EQ("old", Text(copy));
}

TEST(BinaryData, ReleaseDataHandsTheBytesOver) {
  CBinaryData data("abc");
  const unsigned char* const store = data.GetData();
  const std::unique_ptr<unsigned char[]> bytes(data.ReleaseData());
  EXPECT_EQ(store, bytes.get());
  EXPECT_EQ('a', bytes[0]);
  EXPECT_EQ(0U, data.GetLength());
  EXPECT_EQ(nullptr, data.ReleaseData());
}

TEST(BinaryData, ReleaseDataOfASharedValueCopiesAndLeavesTheOthersAlone) {
  CBinaryData a("abc");
  CBinaryData b(a);
  const std::unique_ptr<unsigned char[]> bytes(b.ReleaseData());
  EXPECT_NE(a.GetData(), bytes.get());
  EXPECT_EQ('c', bytes[2]);
  EXPECT_EQ("abc", Text(a));
  EXPECT_EQ(0U, b.GetLength());
}

TEST(BinaryData, ClearEmptiesOnlyThisValue) {
  CBinaryData a("abc");
  CBinaryData b(a);
  b.Clear();
  EXPECT_EQ(nullptr, b.GetData());
  EXPECT_EQ("abc", Text(a));
  b.Clear();
  EXPECT_EQ(nullptr, b.GetData());
}

TEST(BinaryData, RefusesMoreThan32BitsCountAndKeepsWhatItHas) {
  CBinaryData data("abc");
  EXPECT_QZ_THROW(CQzException, "Binary data can not hold more than 4294967295 bytes",
                  data.Append(data.GetData(), 0xFFFFFFFFU));
  EXPECT_EQ("abc", Text(data));
}

TEST(BinaryData, RefusesTextThat32BitsCanNotCount) {
  const qztest::HugeText text('0', std::size_t{0x100000000});
  const char* const message = "Binary data can not hold more than 4294967295 bytes";
  CBinaryData data("abc");
  EXPECT_QZ_THROW(CQzException, message, CBinaryData(text.c_str()));
  EXPECT_QZ_THROW(CQzException, message, data.Append(text.c_str()));
  EXPECT_QZ_THROW(CQzException, message, data.SetBuffer(text.c_str()));
  EXPECT_EQ("abc", Text(data));
  EXPECT_QZ_THROW(CQzException, message, LocalToUtf8(text.c_str()));
  EXPECT_QZ_THROW(CQzException, message, data.SetAsHexString(text.c_str()));
  EXPECT_EQ(0U, data.GetLength());
}

TEST(BinaryData, CopiesMayBeChangedInDifferentThreads) {
  const CBinaryData shared("abc");
  std::vector<std::thread> threads;
  for (int t = 0; t < 4; ++t) {
    threads.emplace_back([copy = shared, t]() mutable {
      for (int i = 0; i < 2000; ++i) {
        CBinaryData mine(copy);
        mine.Append(static_cast<char>('0' + t));
        EXPECT_EQ(4U, mine.GetLength());
      }
      copy[0] = 'X';
      EXPECT_EQ("Xbc", Text(copy));
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ("abc", Text(shared));
}

// ---- Hexadecimal ----

TEST(BinaryData, WritesTwoUpperCaseDigitsForEachByte) {
  EXPECT_EQ("0FA0", Bytes("\x0F\xA0").GetAsHexString());
  const unsigned char bytes[] = {0x00, 0x7F, 0x80, 0xFF};
  EXPECT_EQ("007F80FF", CBinaryData::GetAsHexString(bytes, 4));
  EXPECT_EQ("", CBinaryData::GetAsHexString(bytes, 0));
  EXPECT_EQ("", CBinaryData::GetAsHexString(nullptr, 4));
}

TEST(BinaryData, ReadsDigitsOfEitherCase) {
  CBinaryData data("old");
  for (const char* text : {"0fa0", "0FA0", "0fA0"}) {
    data.SetAsHexString(text);
    EXPECT_TRUE(Bytes("\x0F\xA0") == data) << text;
  }
  data.SetAsHexString("");
  EXPECT_EQ(nullptr, data.GetData());
}

TEST(BinaryData, EveryByteMakesTheRoundTripInHexadecimal) {
  std::string all;
  for (int i = 0; i < 256; ++i) all += static_cast<char>(i);
  CBinaryData data;
  data.SetAsHexString(Bytes(all).GetAsHexString().c_str());
  EXPECT_EQ(all, Text(data));
}

TEST(BinaryData, RefusesTextThatIsNotHexadecimalAndIsEmptyThen) {
  const struct {
    const char* text;
    const char* message;
  } cases[] = {
      {"ABC", "Invalid length in hex string"},    {"0", "Invalid length in hex string"},
      {"0G", "Invalid char in hex string [G]"},   {"G0", "Invalid char in hex string [G]"},
      {"00 0", "Invalid char in hex string [ ]"}, {"00:0", "Invalid char in hex string [:]"},
      {"0/", "Invalid char in hex string [/]"},   {"0@", "Invalid char in hex string [@]"},
      {"0`", "Invalid char in hex string [`]"},   {"0g", "Invalid char in hex string [g]"},
      {"xyz", "Invalid length in hex string"},
  };
  for (const auto& c : cases) {
    CBinaryData data("old");
    EXPECT_QZ_THROW(CQzException, c.message, data.SetAsHexString(c.text));
    EXPECT_EQ(0U, data.GetLength()) << c.text;
  }
}

TEST(BinaryData, ConvertToHexDataGivesAnArrayToTheCaller) {
  unsigned char* array = nullptr;
  EXPECT_EQ(2U, CBinaryData::ConvertToHexData("01fF", &array));
  const std::unique_ptr<unsigned char[]> owned(array);
  EXPECT_EQ(0x01, owned[0]);
  EXPECT_EQ(0xFF, owned[1]);
  unsigned char* none = nullptr;
  EXPECT_EQ(0U, CBinaryData::ConvertToHexData("", &none));
  EXPECT_NE(nullptr, none);
  delete[] none;
}

// ---- Base64 ----

TEST(BinaryData, WritesAndReadsBase64) {
  EXPECT_EQ("TQ==", CBinaryData("M").GetAsBase64());
  EXPECT_EQ("TWE=", CBinaryData("Ma").GetAsBase64());
  EXPECT_EQ("TWFu", CBinaryData("Man").GetAsBase64());
  CBinaryData data("old");
  data.SetAsBase64("TW Fu\n");
  EXPECT_EQ("Man", Text(data));
  data.SetAsBase64("");
  EXPECT_EQ(nullptr, data.GetData());
}

TEST(BinaryData, ABadCharacterOfBase64LeavesAStoreOfLengthZero) {
  CBinaryData data;
  data.SetAsBase64("TWFu*");
  EXPECT_QZ_ASSERT("m_dwLen > 0", data.GetLength());
  EXPECT_QZ_ASSERT("m_dwLen > 0", data.GetData());
  EXPECT_QZ_ASSERT("m_dwLen > 0", data.GetAsHexString());
  EXPECT_QZ_ASSERT("m_dwLen > 0", data.GetAsBase64());
  EXPECT_QZ_ASSERT("m_dwLen > 0", data == data);
  EXPECT_QZ_ASSERT("m_dwLen > 0", data[0]);
}

TEST(BinaryData, AStoreOfLengthZeroAnswersSafely) {
  const qztest::AssertionRecorder goesOn;
  for (const char* text : {"TWFu*", "====", " ", "T"}) {
    CBinaryData data;
    data.SetAsBase64(text);
    EXPECT_EQ(0U, data.GetLength());
    EXPECT_EQ("", data.GetAsHexString());
    EXPECT_EQ("", data.GetAsBase64());
    EXPECT_EQ(0, std::as_const(data)[0]);
    EXPECT_EQ(0, data[0]);
    EXPECT_QZ_THROW(CQzException, "Index Out of range [1]", data[1]);
    EXPECT_TRUE(data == CBinaryData(data));
    EXPECT_FALSE(data == CBinaryData());
    EXPECT_FALSE(data == CBinaryData("a"));
    CBinaryData copy(data);
    copy.Append("abc");
    EXPECT_EQ("abc", Text(copy));
    data.Append("abc");
    EXPECT_EQ("abc", Text(data));
    copy.SetAsBase64(text);
    delete[] copy.ReleaseData();
    EXPECT_EQ(nullptr, copy.GetData());
  }
}

TEST(BinaryData, ReadsTextThatIsItsOwnBytes) {
  CBinaryData data = Bytes("TWFu\0"s);
  data.SetAsBase64(reinterpret_cast<const char*>(data.GetData()));
  EXPECT_EQ("Man", Text(data));
  data = Bytes("0FA0\0"s);
  data.SetAsHexString(reinterpret_cast<const char*>(data.GetData()));
  EXPECT_EQ("\x0F\xA0", Text(data));
  data = Bytes("0G\0"s);
  EXPECT_QZ_THROW(CQzException, "Invalid char in hex string [G]",
                  data.SetAsHexString(reinterpret_cast<const char*>(data.GetData())));
  EXPECT_EQ(0U, data.GetLength());
}

// ---- The store ----

TEST(BinaryDataBuffer, RefusesToAppendWhileShared) {
  auto* const buffer = new CBinaryDataBuffer(reinterpret_cast<const unsigned char*>("abc"), 3);
  buffer->AddRef();
  EXPECT_EQ(2, buffer->GetRefCount());
  const unsigned char byte = 'd';
  EXPECT_QZ_ASSERT("m_refCount == 1", buffer->Append(&byte, 1));
  {
    const qztest::AssertionRecorder goesOn;
    EXPECT_QZ_THROW(CQzException, "Failed to append. [RefCount=2]", buffer->Append(&byte, 1));
  }
  EXPECT_EQ(3U, buffer->GetLength());
  buffer->Release(false);
  EXPECT_EQ(1, buffer->GetRefCount());
  buffer->Release(false);
}

TEST(BinaryDataBuffer, RefusesToGiveItsBytesAwayWhileShared) {
  auto* const buffer = new CBinaryDataBuffer(reinterpret_cast<const unsigned char*>("abc"), 3);
  buffer->AddRef();
  buffer->AddRef();
  {
    const qztest::AssertionRecorder recorder;
    EXPECT_QZ_THROW(CQzException, "Failed to release data. [RefCount=2]", buffer->Release(true));
#if defined(QZXML_ASSERTIONS)
    EXPECT_EQ(std::vector<std::string>{"m_refCount == 0"}, recorder.conditions());
#endif
  }
  EXPECT_EQ(3U, buffer->GetLength());
  buffer->Release(false);
  buffer->Release(false);
}

TEST(BinaryDataBuffer, IsItsOwnPrivateCopyWhileItHasOneReference) {
  auto* const buffer = new CBinaryDataBuffer(reinterpret_cast<const unsigned char*>("abc"), 3);
  EXPECT_EQ(buffer, buffer->MakePrivate());
  buffer->AddRef();
  CBinaryDataBuffer* const copy = buffer->MakePrivate();
  EXPECT_NE(buffer, copy);
  EXPECT_EQ(1, buffer->GetRefCount());
  EXPECT_EQ(1, copy->GetRefCount());
  copy->Release(false);
  buffer->Release(false);
}

TEST(BinaryDataBuffer, WithoutBytesIsOfLengthZeroAndAsserts) {
  unsigned char* const none = nullptr;
  CBinaryData data(none, 5, true);
  EXPECT_QZ_ASSERT("m_lpData != 0", data.GetData());
  EXPECT_QZ_ASSERT("m_lpData != 0", data.GetLength());
  const qztest::AssertionRecorder goesOn;
  EXPECT_EQ(0U, data.GetLength());
  EXPECT_EQ(nullptr, data.GetData());
  data.Append("abc");
  EXPECT_EQ("abc", Text(data));
}

}  // namespace
}  // namespace QzXmlLib16
