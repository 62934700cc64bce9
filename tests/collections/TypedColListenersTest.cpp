#include <vector>

#include "tests/collections/OpenContent.h"
#include "tests/collections/TypedColKinds.h"
#include "tests/support/QzTest.h"

// Listeners that take part: that change the value, or the collection, or that throw.
namespace qztest {
namespace {

using Col = CMade<Ci4Col>;
using Values = std::vector<std::int32_t>;
using Msg = IEventSink::MsgType;

Values ValuesOf(const Col& col) { return Values(col.begin(), col.end()); }

void Fill(Col& col, const Values& values) {
  for (const std::int32_t value : values) col.Add(value);
}

// Does something at the first event of a type.
struct CAtFirst {
  CAtFirst(Col& col, Msg at, std::function<void(void*)> action) : listener(col) {
    listener.onEvent = [this, at, action](Msg type, void* data) {
      if (type != at || done) return;
      done = true;
      action(data);
    };
  }
  bool done = false;
  CValueListener<I4> listener;
};

void Throw(void*) { throw CQzException("Not now."); }

TEST(TypedColListeners, ChangeAValueBeforeItIsCheckedAndInserted) {
  ColOptions o;
  o.maxInclusive = "10";
  Col col(o);
  {
    CAtFirst change(col, IEventSink::MsgType_CollectionAdd,
                    [](void* data) { *static_cast<std::int32_t*>(data) = 9; });
    col.Add(1);
  }
  EXPECT_EQ(Values{9}, ValuesOf(col));
  CAtFirst change(col, IEventSink::MsgType_CollectionAdd,
                  [](void* data) { *static_cast<std::int32_t*>(data) = 11; });
  EXPECT_QZ_THROW(CQzException, "Invalid Value for v [11]", col.Add(1));
  EXPECT_EQ(Values{9}, ValuesOf(col));
}

TEST(TypedColListeners, StopAnAdditionBeforeTheValueIsIn) {
  Col col;
  Fill(col, {1, 2});
  CAtFirst stop(col, IEventSink::MsgType_CollectionAdd, &Throw);
  EXPECT_QZ_THROW(CQzException, "Not now.", col.AddAt(1, 3));
  EXPECT_EQ((Values{1, 2}), ValuesOf(col));
}

TEST(TypedColListeners, StopAnAdditionWhenTheValueIsIn) {
  for (const Msg at :
       {IEventSink::MsgType_CollectionAddComplete, IEventSink::MsgType_CollectionChange}) {
    Col col;
    Fill(col, {1, 2});
    CAtFirst stop(col, at, &Throw);
    EXPECT_QZ_THROW(CQzException, "Not now.", col.AddAt(1, 3));
    EXPECT_EQ((Values{1, 3, 2}), ValuesOf(col));
  }
}

TEST(TypedColListeners, StopARemovalBeforeAndAfterIt) {
  const struct {
    Msg at;
    Values left;
  } cases[] = {{IEventSink::MsgType_CollectionRemove, {1, 2, 3}},
               {IEventSink::MsgType_CollectionRemoveComplete, {1, 3}},
               {IEventSink::MsgType_CollectionChange, {1, 3}}};
  for (const auto& c : cases) {
    Col col;
    Fill(col, {1, 2, 3});
    CAtFirst stop(col, c.at, &Throw);
    EXPECT_QZ_THROW(CQzException, "Not now.", col.Remove(1));
    EXPECT_EQ(c.left, ValuesOf(col));
  }
}

TEST(TypedColListeners, EndAClearWhereTheyThrow) {
  Col col;
  Fill(col, {1, 2, 3, 4});
  CValueListener<I4> listener(col);
  listener.onEvent = [&](Msg type, void*) {
    if (type == IEventSink::MsgType_CollectionRemove && col.GetCount() == 2) Throw(nullptr);
  };
  EXPECT_QZ_THROW(CQzException, "Not now.", col.Clear());
  EXPECT_EQ((Values{3, 4}), ValuesOf(col));
  EXPECT_EQ(3, col.Item(0));
}

TEST(TypedColListeners, AddDuringAnAddition) {
  // The index of Add is taken ahead of the first event.
  Col col;
  CAtFirst more(col, IEventSink::MsgType_CollectionAdd, [&](void*) { col.Add(9); });
  col.Add(1);
  EXPECT_EQ((Values{1, 9}), ValuesOf(col));
}

TEST(TypedColListeners, TakeThePlaceOfAnAdditionAway) {
  Col col;
  Fill(col, {1, 2});
  CAtFirst clear(col, IEventSink::MsgType_CollectionAdd, [&](void*) { col.Clear(); });
  EXPECT_QZ_THROW(CQzInvalidParamException, "Index out of range", col.AddAt(1, 3));
  EXPECT_EQ(Values(), ValuesOf(col));
}

TEST(TypedColListeners, TakeTheItemOfARemovalAway) {
  Col col;
  Fill(col, {1, 2});
  CAtFirst clear(col, IEventSink::MsgType_CollectionRemove, [&](void*) { col.Remove(0); });
  EXPECT_QZ_THROW(CQzInvalidParamException, "Index 1 is out of range, use 0 - 1", col.Remove(1));
  EXPECT_EQ(Values{2}, ValuesOf(col));
}

TEST(TypedColListeners, AddDuringAClear) {
  Col col;
  Fill(col, {1, 2});
  CAtFirst more(col, IEventSink::MsgType_CollectionRemoveComplete, [&](void*) { col.Add(3); });
  col.Clear();
  EXPECT_EQ(Values(), ValuesOf(col));
  EXPECT_EQ((Lines{"remove 0, 2", "removed 0, 1", "add (another value), 1",
                   "added (another value), 2", "change, 2", "change, 2", "remove 0, 2",
                   "removed 0, 1", "change, 1", "remove 0, 1", "removed 0, 0", "change, 0"}),
            more.listener.log);
}

TEST(TypedColListeners, ClearDuringAClear) {
  Col col;
  Fill(col, {1, 2, 3});
  CAtFirst inner(col, IEventSink::MsgType_CollectionRemoveComplete, [&](void*) { col.Clear(); });
  col.Clear();
  EXPECT_EQ(0, col.GetCount());
  EXPECT_EQ(9U, inner.listener.log.size());
}

TEST(TypedColListeners, HearOfAValueThatWentMeanwhile) {
  CMade<CstringCol> col;
  CValueListener<String> first(col);
  first.onEvent = [&](Msg type, void*) {
    if (type == IEventSink::MsgType_CollectionAddComplete) col.Clear();
  };
  CValueListener<String> second(col);
  col.Add(String::Samples()[2].text);
  EXPECT_EQ("added a text of more than fifteen octets, 0", second.log[4]);
}

TEST(TypedColListeners, CostNoMoreForManyItems) {
  // A clear that moved what is left at each step would move 500 GB.
  constexpr int kItems = 500000;
  Col col;
  for (int i = 0; i < kItems; ++i) col.Add(i);
  struct CCount final : IEventSink {
    void OnEvent(CXmlObjectBase*, MsgType, void*) override { ++events; }
    int events = 0;
  } count;
  col.AddEventListener(&count);
  col.Clear();
  EXPECT_EQ(3 * kItems, count.events);
  EXPECT_EQ(0, col.GetCount());
}

TEST(TypedColListeners, SeeARowThatIsTakenFromTheFront) {
  // Values go in at one end and out at the other.
  CMade<CstringCol> col;
  int next = 0;
  for (int round = 0; round < 100; ++round) {
    for (int i = 0; i < 7; ++i) col.Add(std::to_string(round * 7 + i));
    for (int i = 0; i < 6; ++i) {
      EXPECT_EQ(std::to_string(next++), col.Item(0));
      col.Remove(0);
    }
    EXPECT_EQ(round + 1, col.GetCount());
    EXPECT_EQ(round + 1, col.end() - col.begin());
    EXPECT_EQ(std::to_string(round * 7 + 6), col.Item(round));
  }
  col.Remove(50);
  col.AddAt(50, "between");
  EXPECT_EQ("between", col.Item(50));
  EXPECT_EQ(std::to_string(next + 49), col.Item(49));
  EXPECT_EQ(std::to_string(next + 51), col.Item(51));
}

TEST(TypedColListeners, FindNothingLeftOfARemovedValue) {
  // A store that nobody shares is written to where it is.
  CMade<Cbase64BinaryCol> col;
  CBinaryData octets = Octets({1, 2, 3});
  for (int i = 0; i < 9; ++i) col.Add(i == 0 ? octets : Octets({4}));
  col.Remove(0);
  const unsigned char* const store = octets.GetData();
  octets[0] = 9;
  EXPECT_EQ(store, octets.GetData());
}

}  // namespace
}  // namespace qztest
