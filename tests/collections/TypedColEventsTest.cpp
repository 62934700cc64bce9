#include <vector>

#include "tests/collections/AnyCol.h"
#include "tests/support/QzTest.h"

// What the listeners of the collections of every kind hear.
namespace qztest {
namespace {

class TypedColEvents : public OfEveryKind {};
INSTANTIATE_TEST_SUITE_P(Kinds, TypedColEvents, testing::ValuesIn(AllKinds()), &NameOfKind);

TEST_P(TypedColEvents, TellsOfEachAddition) {
  const auto col = kind().Make();
  CColListener listener(col->base(), kind().textOf);
  col->Fill("2");
  col->AddAt(0, 1);
  const std::string second = text(2);
  const std::string first = text(1);
  EXPECT_EQ((Lines{"add " + second + ", 0", "added " + second + ", 1", "change, 1",
                   "add " + first + ", 1", "added " + first + ", 2", "change, 2"}),
            listener.log);
}

TEST_P(TypedColEvents, TellsOfEachRemovalWithItsIndex) {
  const auto col = kind().Make();
  col->Fill("012");
  CColListener listener(col->base(), kind().textOf);
  col->Remove(2);
  col->Remove(0);
  EXPECT_EQ((Lines{"remove 2, 3", "removed 2, 2", "change, 2", "remove 0, 2", "removed 0, 1",
                   "change, 1"}),
            listener.log);
}

TEST_P(TypedColEvents, ClearsByRemovingTheFirstOneUntilNothingIsLeft) {
  const auto col = kind().Make();
  col->Fill("012");
  CColListener listener(col->base(), kind().textOf);
  Lines seen;
  listener.onEvent = [&](IEventSink::MsgType type, void*) {
    if (type != IEventSink::MsgType_CollectionChange) return;
    std::string texts;
    for (const std::string& text : col->Texts()) texts += text + ";";
    seen.push_back(texts);
  };
  col->Clear();
  EXPECT_EQ((Lines{"remove 0, 3", "removed 0, 2", "change, 2", "remove 0, 2", "removed 0, 1",
                   "change, 1", "remove 0, 1", "removed 0, 0", "change, 0"}),
            listener.log);
  EXPECT_EQ((Lines{text(1) + ";" + text(2) + ";", text(2) + ";", ""}), seen);
  EXPECT_EQ(0, col->GetCount());
  col->Clear();
  EXPECT_EQ(9U, listener.log.size());
}

TEST_P(TypedColEvents, ClearsThroughTheRemoveOfADerivedClass) {
  std::vector<int> removed;
  const auto col = kind().MakeWatched(removed);
  col->Fill("012");
  col->Clear();
  EXPECT_EQ((std::vector<int>{0, 0, 0}), removed);
  EXPECT_EQ(0, col->GetCount());
}

TEST_P(TypedColEvents, RefusesAPlaceOutside) {
  for (const int index : {-1, 3, 5}) {
    const auto col = kind().Make();
    col->Fill("01");
    CColListener listener(col->base(), kind().textOf);
    EXPECT_QZ_THROW(CQzInvalidParamException, "Index out of range", col->AddAt(index, 2));
    EXPECT_EQ((Lines{"add " + text(2) + ", 2"}), listener.log);
    EXPECT_EQ(TextsOf("01"), col->Texts());
  }
}

TEST_P(TypedColEvents, RefusesAnIndexOutside) {
  const struct {
    int index;
    const char* told;
    const char* text;
  } cases[] = {{-1, "remove null, 2", "Index -1 is out of range, use 0 - 2"},
               {2, "remove 2, 2", "Index 2 is out of range, use 0 - 2"},
               {7, "remove 7, 2", "Index 7 is out of range, use 0 - 2"}};
  for (const auto& c : cases) {
    const auto col = kind().Make();
    col->Fill("01");
    CColListener listener(col->base(), kind().textOf);
    EXPECT_QZ_THROW(CQzInvalidParamException, c.text, col->Item(c.index));
    EXPECT_EQ(Lines(), listener.log);
    EXPECT_QZ_THROW(CQzInvalidParamException, c.text, col->Remove(c.index));
    EXPECT_EQ(Lines{c.told}, listener.log);
    EXPECT_EQ(TextsOf("01"), col->Texts());
  }
  const auto empty = kind().Make();
  EXPECT_QZ_THROW(CQzInvalidParamException, "Index 0 is out of range, use 0 - 0", empty->Item(0));
  EXPECT_QZ_THROW(CQzInvalidParamException, "Index 0 is out of range, use 0 - 0", empty->Remove(0));
}

}  // namespace
}  // namespace qztest
