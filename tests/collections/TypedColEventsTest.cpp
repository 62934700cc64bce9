#include <vector>

#include "tests/collections/TypedColKinds.h"
#include "tests/support/QzTest.h"

// What the listeners of the collections of every kind hear.
namespace qztest {
namespace {

template <typename Kind>
class TypedColEvents : public TypedColOf<Kind> {};
TYPED_TEST_SUITE(TypedColEvents, Kinds, KindName);

TYPED_TEST(TypedColEvents, TellsOfEachAddition) {
  typename TestFixture::Col col;
  CValueListener<TypeParam> listener(col);
  this->Fill(col, "2");
  col.AddAt(0, this->value(1));
  const std::string second = this->text(2);
  const std::string first = this->text(1);
  EXPECT_EQ((Lines{"add " + second + ", 0", "added " + second + ", 1", "change, 1",
                   "add " + first + ", 1", "added " + first + ", 2", "change, 2"}),
            listener.log);
}

TYPED_TEST(TypedColEvents, TellsOfEachRemovalWithItsIndex) {
  typename TestFixture::Col col;
  this->Fill(col, "012");
  CValueListener<TypeParam> listener(col);
  col.Remove(2);
  col.Remove(0);
  EXPECT_EQ((Lines{"remove 2, 3", "removed 2, 2", "change, 2", "remove 0, 2", "removed 0, 1",
                   "change, 1"}),
            listener.log);
}

TYPED_TEST(TypedColEvents, ClearsByRemovingTheFirstOneUntilNothingIsLeft) {
  typename TestFixture::Col col;
  this->Fill(col, "012");
  CValueListener<TypeParam> listener(col);
  Lines seen;
  listener.onEvent = [&](IEventSink::MsgType type, void*) {
    if (type != IEventSink::MsgType_CollectionChange) return;
    std::string texts;
    for (const std::string& text : this->Texts(col)) texts += text + ";";
    seen.push_back(texts);
  };
  col.Clear();
  EXPECT_EQ((Lines{"remove 0, 3", "removed 0, 2", "change, 2", "remove 0, 2", "removed 0, 1",
                   "change, 1", "remove 0, 1", "removed 0, 0", "change, 0"}),
            listener.log);
  EXPECT_EQ((Lines{this->text(1) + ";" + this->text(2) + ";", this->text(2) + ";", ""}), seen);
  EXPECT_EQ(0, col.GetCount());
  col.Clear();
  EXPECT_EQ(9U, listener.log.size());
}

TYPED_TEST(TypedColEvents, ClearsThroughTheRemoveOfADerivedClass) {
  class CWatched : public TestFixture::Col {
   public:
    void Remove(int index) override {
      removed.push_back(index);
      TestFixture::Col::Remove(index);
    }
    std::vector<int> removed;
  };
  CWatched col;
  this->Fill(col, "012");
  col.Clear();
  EXPECT_EQ((std::vector<int>{0, 0, 0}), col.removed);
  EXPECT_EQ(0, col.GetCount());
}

TYPED_TEST(TypedColEvents, RefusesAPlaceOutside) {
  for (const int index : {-1, 3, 5}) {
    typename TestFixture::Col col;
    this->Fill(col, "01");
    CValueListener<TypeParam> listener(col);
    EXPECT_QZ_THROW(CQzInvalidParamException, "Index out of range",
                    col.AddAt(index, this->value(2)));
    EXPECT_EQ((Lines{"add " + this->text(2) + ", 2"}), listener.log);
    EXPECT_EQ(this->TextsOf("01"), this->Texts(col));
  }
}

TYPED_TEST(TypedColEvents, RefusesAnIndexOutside) {
  const struct {
    int index;
    const char* told;
    const char* text;
  } cases[] = {{-1, "remove null, 2", "Index -1 is out of range, use 0 - 2"},
               {2, "remove 2, 2", "Index 2 is out of range, use 0 - 2"},
               {7, "remove 7, 2", "Index 7 is out of range, use 0 - 2"}};
  for (const auto& c : cases) {
    typename TestFixture::Col col;
    this->Fill(col, "01");
    CValueListener<TypeParam> listener(col);
    EXPECT_QZ_THROW(CQzInvalidParamException, c.text, col.Item(c.index));
    EXPECT_EQ(Lines(), listener.log);
    EXPECT_QZ_THROW(CQzInvalidParamException, c.text, col.Remove(c.index));
    EXPECT_EQ(Lines{c.told}, listener.log);
    EXPECT_EQ(this->TextsOf("01"), this->Texts(col));
  }
  typename TestFixture::Col empty;
  EXPECT_QZ_THROW(CQzInvalidParamException, "Index 0 is out of range, use 0 - 0", empty.Item(0));
  EXPECT_QZ_THROW(CQzInvalidParamException, "Index 0 is out of range, use 0 - 0", empty.Remove(0));
}

}  // namespace
}  // namespace qztest
