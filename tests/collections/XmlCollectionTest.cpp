#include <memory>

#include "qzxml/collections/XmlCollection.h"
#include "qzxml/runtime/TextStream.h"
#include "qzxml/xml/XmlTextWriter.h"
#include "tests/collections/Things.h"
#include "tests/support/QzTest.h"

namespace QzXmlLib16 {
namespace {

using qztest::CListener;
using qztest::CThing;
using qztest::CThings;
using qztest::Log;

// A listener that refuses one kind of event.
class CRefusal : public CListener {
 public:
  explicit CRefusal(MsgType refused) {
    onEvent = [refused](MsgType type) {
      if (type == refused) throw CQzException("No.");
    };
  }
};

CThings& Filled(CThings& things, const char* names) {
  for (; *names != '\0'; ++names) things.Append(std::string(1, *names).c_str());
  return things;
}

// Insertion

TEST(XmlCollection, AppendsToAnEmptyListAsHeadAndTail) {
  CThings things;
  EXPECT_EQ(nullptr, things.GetFirstNode());
  EXPECT_EQ(nullptr, things.GetLastNode());
  things.Append("x");
  ASSERT_NE(nullptr, things.GetFirstNode());
  EXPECT_EQ(things.GetFirstNode(), things.GetLastNode());
  EXPECT_EQ(nullptr, things.GetFirstNode()->next);
  EXPECT_EQ(nullptr, things.GetFirstNode()->prev);
  things.Remove(0);
  EXPECT_EQ(nullptr, things.GetFirstNode());
  EXPECT_EQ(nullptr, things.GetLastNode());
  EXPECT_EQ(0, things.GetCount());
}

TEST(XmlCollection, InsertsWhereItIsTold) {
  const struct {
    const char* before;
    std::function<void(CThings&, CThing*)> insert;
    const char* after;
  } cases[] = {
      {"", [](CThings& t, CThing* x) { t.AppendItem(x); }, "x"},
      {"abc", [](CThings& t, CThing* x) { t.AppendItem(x); }, "abcx"},
      {"", [](CThings& t, CThing* x) { t.PrependItem(x); }, "x"},
      {"abc", [](CThings& t, CThing* x) { t.PrependItem(x); }, "xabc"},
      {"abc", [](CThings& t, CThing* x) { t.AddAfterItem(nullptr, x); }, "xabc"},
      {"abc", [](CThings& t, CThing* x) { t.AddBeforeItem(nullptr, x); }, "abcx"},
      {"abc", [](CThings& t, CThing* x) { t.AddAfterItem(t.GetNodeAtIndex(0)->item, x); }, "axbc"},
      {"abc", [](CThings& t, CThing* x) { t.AddAfterItem(t.GetNodeAtIndex(2)->item, x); }, "abcx"},
      {"abc", [](CThings& t, CThing* x) { t.AddBeforeItem(t.GetNodeAtIndex(0)->item, x); }, "xabc"},
      {"abc", [](CThings& t, CThing* x) { t.AddBeforeItem(t.GetNodeAtIndex(2)->item, x); }, "abxc"},
      {"", [](CThings& t, CThing* x) { t.AddItemAt(0, x); }, "x"},
      {"abc", [](CThings& t, CThing* x) { t.AddItemAt(0, x); }, "xabc"},
      {"abc", [](CThings& t, CThing* x) { t.AddItemAt(1, x); }, "axbc"},
      {"abc", [](CThings& t, CThing* x) { t.AddItemAt(2, x); }, "abxc"},
      {"abc", [](CThings& t, CThing* x) { t.AddItemAt(3, x); }, "abcx"},
  };
  for (const auto& c : cases) {
    CListener listener;
    CThings things;
    Filled(things, c.before).AddEventListener(&listener);
    const int count = things.GetCount();
    const CSmartPtr<CThing> x(new CThing("x"));
    c.insert(things, x);
    EXPECT_EQ(c.after, things.names()) << c.before;
    EXPECT_EQ(count + 1, things.GetCount());
    const std::string before = " " + std::to_string(count);
    const std::string after = " " + std::to_string(count + 1);
    EXPECT_EQ((Log{"add x" + before, "added x" + after, "change" + after}), listener.own);
  }
}

TEST(XmlCollection, RefusesAnIndexToInsertAtBeforeAnyEvent) {
  CListener listener;
  CThings things;
  Filled(things, "abc").AddEventListener(&listener);
  const CSmartPtr<CThing> x(new CThing("x"));
  EXPECT_QZ_THROW_FULL(CQzInvalidParamException, "Index out of range", "", things.AddItemAt(-1, x));
  EXPECT_QZ_THROW_FULL(CQzInvalidParamException, "Index out of range", "", things.AddItemAt(4, x));
  EXPECT_EQ(Log(), listener.own);
  EXPECT_EQ("abc", things.names());
  EXPECT_EQ(1, x->references());
}

TEST(XmlCollection, RefusesAPlaceBesideAnUnknownItemBehindTheAddEvent) {
  CListener listener;
  CThings things;
  Filled(things, "ab").AddEventListener(&listener);
  const CSmartPtr<CThing> x(new CThing("x"));
  const CSmartPtr<CThing> stranger(new CThing("s"));
  const char text[] = "The object was not found in the collection";
  EXPECT_QZ_THROW_FULL(CQzInvalidParamException, text, "", things.AddAfterItem(stranger, x));
  EXPECT_QZ_THROW_FULL(CQzInvalidParamException, text, "", things.AddBeforeItem(stranger, x));
  EXPECT_EQ((Log{"add x 2", "add x 2"}), listener.own);
  EXPECT_EQ("ab", things.names());
  EXPECT_EQ(1, x->references());
}

TEST(XmlCollection, TakesNoNullItem) {
  CThings things;
  EXPECT_QZ_ASSERT("item != 0", things.AppendItem(nullptr));
  EXPECT_QZ_ASSERT("item != 0", things.PrependItem(nullptr));
  EXPECT_QZ_ASSERT("item != 0", things.AddAfterItem(nullptr, nullptr));
  EXPECT_QZ_ASSERT("item != 0", things.AddItemAt(0, nullptr));
  EXPECT_EQ(0, things.GetCount());
}

#if !defined(QZXML_ASSERTIONS)
TEST(XmlCollection, InsertsNothingForANullItemWithoutAssertions) {
  CListener listener;
  CThings things;
  things.AddEventListener(&listener);
  things.AppendItem(nullptr);
  things.AddItemAt(0, nullptr);
  EXPECT_EQ(0, things.GetCount());
  EXPECT_EQ(Log(), listener.own);
}
#endif

TEST(XmlCollection, HoldsOneReferenceOnEachItem) {
  CThings things;
  const CSmartPtr<CThing> x(new CThing("x"));
  EXPECT_EQ(1, x->references());
  things.AppendItem(x);
  EXPECT_EQ(2, x->references());
  things.PrependItem(x);
  EXPECT_EQ(3, x->references());
  things.Remove(0);
  EXPECT_EQ(2, x->references());
  things.Clear();
  EXPECT_EQ(1, x->references());
}

TEST(XmlCollection, ReleasesItsItemsWhenItGoes) {
  bool deleted = false;
  const CSmartPtr<CThing> kept(new CThing("kept"));
  {
    CThings things;
    things.AppendItem(new CThing("x", &deleted));
    things.AppendItem(kept);
    EXPECT_FALSE(deleted);
  }
  EXPECT_TRUE(deleted);
  EXPECT_EQ(1, kept->references());
}

// Access

TEST(XmlCollection, FindsANodeByItsIndex) {
  CThings things;
  Filled(things, "abc");
  EXPECT_EQ(things.GetFirstNode(), things.GetNodeAtIndex(0));
  EXPECT_EQ(things.GetFirstNode()->next, things.GetNodeAtIndex(1));
  EXPECT_EQ(things.GetLastNode(), things.GetNodeAtIndex(2));
}

TEST(XmlCollection, NamesTheCountInTheMessageForAnIndex) {
  CThings things;
  Filled(things, "abc");
  const struct {
    int index;
    const char* text;
  } cases[] = {
      {5, "Index 5 is out of range, use 0 - 3"},
      {3, "Index 3 is out of range, use 0 - 3"},
      {-1, "Index -1 is out of range, use 0 - 3"},
  };
  for (const auto& c : cases) {
    EXPECT_QZ_THROW_FULL(CQzInvalidParamException, c.text, "", things.GetNodeAtIndex(c.index));
    EXPECT_QZ_THROW_FULL(CQzInvalidParamException, c.text, "", things.Remove(c.index));
  }
  CThings empty;
  EXPECT_QZ_THROW(CQzInvalidParamException, "Index 0 is out of range, use 0 - 0", empty.Remove(0));
}

TEST(XmlCollection, RefusesAnIndexToRemoveBeforeAnyEvent) {
  CListener listener;
  CThings things;
  Filled(things, "a").AddEventListener(&listener);
  EXPECT_QZ_THROW(CQzInvalidParamException, "Index 1 is out of range, use 0 - 1", things.Remove(1));
  EXPECT_EQ(Log(), listener.own);
}

// A thing that stands for another one.
class CStandIn : public CThing {
 public:
  explicit CStandIn(CXmlObjectBase* base) : m_base(base) {}
  using CThing::GetBase;
  CXmlObjectBase* GetBase() override { return m_base; }

 private:
  CXmlObjectBase* m_base;
};

TEST(XmlCollection, FindsTheFirstNodeOfAnObjectByItsBase) {
  CThings things;
  Filled(things, "ab");
  CXmlObjectBase* const b = things.GetNodeAtIndex(1)->item;
  things.AppendItem(b);
  EXPECT_EQ(things.GetNodeAtIndex(1), things.GetNodeForItem(b));
  CStandIn standIn(b);
  EXPECT_EQ(things.GetNodeAtIndex(1), things.GetNodeForItem(&standIn));
}

TEST(XmlCollection, FindsNoNodeOfAStranger) {
  CThings things;
  Filled(things, "ab");
  CThing stranger;
  const char text[] = "The object was not found in the collection";
  EXPECT_QZ_THROW_FULL(CQzInvalidParamException, text, "", things.GetNodeForItem(&stranger));
  EXPECT_QZ_THROW_FULL(CQzInvalidParamException, text, "", things.GetNodeForItem(nullptr));
}

// Removal

TEST(XmlCollection, ClosesUpWhereAnItemWasRemoved) {
  const struct {
    int index;
    const char* left;
  } cases[] = {{0, "bcd"}, {1, "acd"}, {2, "abd"}, {3, "abc"}};
  for (const auto& c : cases) {
    CThings things;
    Filled(things, "abcd").Remove(c.index);
    EXPECT_EQ(c.left, things.names()) << c.index;
    EXPECT_EQ(3, things.GetCount());
  }
}

TEST(XmlCollection, AssertsOnTheOnlyNodeOfAnotherList) {
  CThings things;
  CThings others;
  Filled(things, "ab");
  Filled(others, "c");
  EXPECT_QZ_ASSERT("m_pTail == pNode", things.RemoveNode(others.GetFirstNode()));
  EXPECT_EQ("ab", things.names());
  EXPECT_EQ("c", others.names());
}

TEST(XmlCollection, LeavesTheEndsOfAnotherListAlone) {
  CThings things;
  CThings others;
  Filled(things, "ab");
  Filled(others, "cd");
  {
    const qztest::AssertionRecorder silent;
    things.RemoveNode(others.GetFirstNode());
    things.RemoveNode(others.GetLastNode());
  }
  EXPECT_QZ_ASSERT("m_pTail == pNode", things.RemoveNode(others.GetLastNode()));
  EXPECT_EQ("ab", things.names());
  EXPECT_EQ("cd", others.names());
  EXPECT_EQ(2, things.GetCount());
  EXPECT_EQ(2, others.GetCount());
}

TEST(XmlCollection, TellsOfARemovalWithoutTheIndex) {
  CListener listener;
  CThings things;
  Filled(things, "abc").AddEventListener(&listener);
  things.Remove(1);
  things.RemoveNode(things.GetLastNode());
  EXPECT_EQ((Log{"remove 3", "removed 2", "change 2", "remove 2", "removed 1", "change 1"}),
            listener.own);
  EXPECT_EQ("a", things.names());
}

TEST(XmlCollection, ClearsItemByItemWithTheEventsOfEach) {
  CListener listener;
  CThings things;
  Filled(things, "abc").AddEventListener(&listener);
  things.Clear();
  EXPECT_EQ((Log{"remove 3", "removed 2", "change 2", "remove 2", "removed 1", "change 1",
                 "remove 1", "removed 0", "change 0"}),
            listener.own);
  things.Clear();
  EXPECT_EQ(9u, listener.own.size());
}

TEST(XmlCollection, ClearsThroughTheRemoveOfItsClass) {
  class CCounting : public CThings {
   public:
    void Remove(int index) override {
      ++removed;
      CThings::Remove(index);
    }
    int removed = 0;
  };
  CCounting things;
  Filled(things, "abc").Clear();
  EXPECT_EQ(3, things.removed);
}

TEST(XmlCollection, TellsOfTheRemovalsWhenItGoes) {
  CListener listener;
  auto things = std::make_unique<CThings>();
  Filled(*things, "ab").AddEventListener(&listener);
  things.reset();
  EXPECT_EQ((Log{"remove 2", "removed 1", "change 1", "remove 1", "removed 0", "change 0"}),
            listener.own);
}

TEST(XmlCollection, GoesWithAllItsItemsWhenAListenerThrowsMeanwhile) {
  bool deleted = false;
  CRefusal refusal(IEventSink::MsgType_CollectionRemove);
  {
    CThings things;
    things.AppendItem(new CThing("a"));
    things.AppendItem(new CThing("b", &deleted));
    things.AddEventListener(&refusal);
  }
  EXPECT_EQ((Log{"remove 2"}), refusal.own);
  EXPECT_TRUE(deleted);
}

// Listeners that throw and that change the list

TEST(XmlCollection, StaysAsItWasWhenAListenerRefusesTheFirstStep) {
  CRefusal refusal(IEventSink::MsgType_CollectionAdd);
  CRefusal removal(IEventSink::MsgType_CollectionRemove);
  CThings things;
  Filled(things, "ab");
  things.AddEventListener(&refusal);
  const CSmartPtr<CThing> x(new CThing("x"));
  EXPECT_QZ_THROW(CQzException, "No.", things.AppendItem(x));
  EXPECT_QZ_THROW(CQzException, "No.", things.PrependItem(x));
  EXPECT_QZ_THROW(CQzException, "No.", things.AddItemAt(1, x));
  EXPECT_QZ_THROW(CQzException, "No.", things.AddAfterItem(things.GetFirstNode()->item, x));
  EXPECT_EQ("ab", things.names());
  EXPECT_EQ(1, x->references());

  things.RemoveEventListener(&refusal);
  things.AddEventListener(&removal);
  EXPECT_QZ_THROW(CQzException, "No.", things.Remove(0));
  EXPECT_QZ_THROW(CQzException, "No.", things.Clear());
  EXPECT_EQ("ab", things.names());
}

TEST(XmlCollection, KeepsTheChangeWhenAListenerThrowsBehindIt) {
  CRefusal added(IEventSink::MsgType_CollectionAddComplete);
  CRefusal removed(IEventSink::MsgType_CollectionRemoveComplete);
  CThings things;
  things.AddEventListener(&added);
  EXPECT_QZ_THROW(CQzException, "No.", things.Append("a"));
  EXPECT_EQ("a", things.names());
  EXPECT_EQ((Log{"add a 0", "added a 1"}), added.own);

  things.RemoveEventListener(&added);
  things.AddEventListener(&removed);
  EXPECT_QZ_THROW(CQzException, "No.", things.Remove(0));
  EXPECT_EQ("", things.names());
}

TEST(XmlCollection, LeavesAnItemThatNobodyHeldToTheCallerWhenAListenerRefusesIt) {
  bool deleted = false;
  CThing* const x = new CThing("x", &deleted);
  CRefusal refusal(IEventSink::MsgType_CollectionAdd);
  CThings things;
  things.AddEventListener(&refusal);
  EXPECT_QZ_THROW(CQzException, "No.", things.AppendItem(x));
  ASSERT_FALSE(deleted);
  EXPECT_EQ(1, x->AddRef());
  x->Release();
  EXPECT_TRUE(deleted);
}

TEST(XmlCollection, KeepsAnItemThatAListenerHoldsForAWhile) {
  bool deleted = false;
  CThing* const x = new CThing("x", &deleted);
  CListener listener;
  listener.onEvent = [&](IEventSink::MsgType type) {
    if (type == IEventSink::MsgType_CollectionAdd) const CSmartPtr<CThing> handle(x);
  };
  CThings things;
  things.AddEventListener(&listener);
  things.AppendItem(x);
  ASSERT_FALSE(deleted);
  EXPECT_EQ(1, x->references());
  EXPECT_EQ("x", things.names());
}

TEST(XmlCollection, LetsAListenerTakeOutWhatItHearsOf) {
  bool deleted = false;
  CListener listener;
  CThings things;
  listener.onEvent = [&](IEventSink::MsgType type) {
    if (type == IEventSink::MsgType_CollectionAddComplete) things.Remove(0);
  };
  things.AddEventListener(&listener);
  things.AppendItem(new CThing("x", &deleted));
  EXPECT_TRUE(deleted);
  EXPECT_EQ(0, things.GetCount());
  EXPECT_EQ((Log{"add x 0", "added x 1", "remove 1", "removed 0", "change 0", "change 0"}),
            listener.own);
}

TEST(XmlCollection, LetsAListenerRemoveTheItemThatIsBeingRemoved) {
  CListener listener;
  CThings things;
  Filled(things, "abc").AddEventListener(&listener);
  bool done = false;
  listener.onEvent = [&](IEventSink::MsgType) {
    if (done) return;
    done = true;
    things.Remove(1);
  };
  things.Remove(1);  // once, whoever does it
  EXPECT_EQ("ac", things.names());
  EXPECT_EQ((Log{"remove 3", "remove 3", "removed 2", "change 2"}), listener.own);
}

TEST(XmlCollection, RemovesTheItemThatWasMeantWhenAListenerHasRemovedAnother) {
  CListener listener;
  CThings things;
  Filled(things, "abc").AddEventListener(&listener);
  bool done = false;
  listener.onEvent = [&](IEventSink::MsgType) {
    if (done) return;
    done = true;
    things.Remove(0);
  };
  things.Remove(2);
  EXPECT_EQ("b", things.names());
}

TEST(XmlCollection, InsertsBesideTheItemsThatAListenerHasLeft) {
  CListener listener;
  CThings things;
  Filled(things, "abc").AddEventListener(&listener);
  listener.onEvent = [&](IEventSink::MsgType type) {
    if (type != IEventSink::MsgType_CollectionAdd) return;
    things.RemoveEventListener(&listener);
    things.Clear();
    things.Append("z");
  };
  const CSmartPtr<CThing> x(new CThing("x"));
  things.AddItemAt(2, x);
  EXPECT_EQ("zx", things.names());
}

TEST(XmlCollection, AppendsAtItsCountWhateverAListenerHasAppendedMeanwhile) {
  CListener listener;
  CThings things;
  Filled(things, "ab").AddEventListener(&listener);
  listener.onEvent = [&](IEventSink::MsgType) {
    things.RemoveEventListener(&listener);
    things.Append("z");
  };
  const CSmartPtr<CThing> x(new CThing("x"));
  things.AddItemAt(2, x);
  EXPECT_EQ("abzx", things.names());
}

TEST(XmlCollection, OutlivesItsLastHandleWhileItTellsAListener) {
  CSmartPtr<CThings> things(new CThings);
  CListener listener;
  listener.onEvent = [&](IEventSink::MsgType) { things = nullptr; };
  things->AddEventListener(&listener);
  things->AppendItem(new CThing("x"));
  EXPECT_TRUE(things == nullptr);
  EXPECT_EQ((Log{"add x 0", "added x 1", "change 1", "remove 1", "removed 0", "change 0"}),
            listener.own);
}

TEST(XmlCollection, OutlivesItsLastHandleWhileItRemovesAndClears) {
  const struct {
    void (*change)(CThings& things);
    Log log;
  } cases[] = {
      {[](CThings& things) { things.Remove(1); },
       {"remove 2", "removed 1", "change 1", "remove 1", "removed 0", "change 0"}},
      {[](CThings& things) { things.Clear(); },
       {"remove 2", "removed 1", "change 1", "remove 1", "removed 0", "change 0"}},
  };
  for (const auto& c : cases) {
    CSmartPtr<CThings> handle(new CThings);
    CThings& things = *handle;
    CListener listener;
    listener.onEvent = [&](IEventSink::MsgType) { handle = nullptr; };
    Filled(things, "ab").AddEventListener(&listener);
    c.change(things);
    EXPECT_TRUE(handle == nullptr);
    EXPECT_EQ(c.log, listener.own);
  }
}

TEST(XmlCollection, IsEmptyForAnItemThatGoesWithIt) {
  int count = -1;
  {
    CThings things;
    const CSmartPtr<CThing> x = things.Append("x");
    const CXmlCollection& dying = things;
    x->onDelete = [&] { count = dying.GetCount(); };
    things.Append("y");
  }  // the handle goes first, so that the collection is the last one to hold x
  EXPECT_EQ(0, count);
}

// Writing

TEST(XmlCollection, WritesTheAttributesOfItsItems) {
  CThings things;
  Filled(things, "ab");
  CTextStream stream;
  CXmlTextWriter writer(&stream);
  writer.SetFormatted(false);
  writer.StartDocument();
  writer.WriteStartElement("owner", "");
  things.AttributesToXml_Int(&writer, CSerializationContext::GetDefaultContext());
  writer.WriteEndElement();
  writer.EndDocument();
  EXPECT_STREQ("<owner a=\"yes\" b=\"yes\"/>", stream.GetBuffer());
}

// Size

TEST(XmlCollection, ReleasesALongList) {
  CThings things;
  for (int i = 0; i < 200000; ++i) things.AppendItem(new CThing);
  EXPECT_EQ(200000, things.GetCount());
  things.Clear();
  EXPECT_EQ(0, things.GetCount());
  for (int i = 0; i < 200000; ++i) things.AppendItem(new CThing);
}

TEST(XmlCollection, ReleasesATreeOfAnyDepth) {
  // A thing with things of its own, which a generated class may have as well.
  class CTree : public CThing {
   public:
    CSmartPtr<CThings> things{new CThings};
  };
  int deleted = 0;
  {
    CSmartPtr<CTree> root(new CTree);
    CSmartPtr<CTree> at = root;
    for (int i = 0; i < 100000; ++i) {
      CSmartPtr<CTree> child(new CTree);
      child->onDelete = [&] { ++deleted; };
      at->things->AppendItem(child);
      at = child;
    }
  }
  EXPECT_EQ(100000, deleted);
}

TEST(XmlCollection, ReleasesItsItemsBeforeItIsGoneAtTheDepthOfAnyOrdinaryDocument) {
  Log log;
  class COwner : public CThing {
   public:
    COwner(Log& l, std::string name) : CThing(std::move(name)), m_log(l) {}
    ~COwner() override {
      things = nullptr;
      m_log.push_back(name());
    }
    CSmartPtr<CThings> things{new CThings};

   private:
    Log& m_log;
  };
  {
    const CSmartPtr<COwner> root(new COwner(log, "0"));
    CSmartPtr<COwner> at = root;
    for (int i = 1; i < 20; ++i) {
      const CSmartPtr<COwner> child(new COwner(log, std::to_string(i)));
      at->things->AppendItem(child);
      at = child;
    }
    at = nullptr;
  }
  ASSERT_EQ(20u, log.size());
  EXPECT_EQ("19", log.front());  // the innermost first
  EXPECT_EQ("0", log.back());
}

}  // namespace
}  // namespace QzXmlLib16
