#include "qzxml/collections/XmlCollectionBase.h"
#include "tests/collections/Things.h"
#include "tests/support/QzTest.h"

namespace QzXmlLib16 {
namespace {

using qztest::CListener;
using qztest::CThing;
using qztest::CThings;
using qztest::Log;

// The events of the base, with an index as the typed collections pass it.
class CIndexed : public CThings {
 public:
  using CThings::CThings;
  using CXmlCollectionBase::FireOnCollectionAdd;
  using CXmlCollectionBase::FireOnCollectionAddComplete;
  using CXmlCollectionBase::FireOnCollectionChange;
  using CXmlCollectionBase::FireOnCollectionRemove;
  using CXmlCollectionBase::FireOnCollectionRemoveComplete;
  using CXmlObjectBase::FireOnCollectionRemoveCompleteEvent;
  using CXmlObjectBase::FireOnCollectionRemoveEvent;
};

// A collection that is the part of an object with another base.
class CPart : public CThings {
 public:
  explicit CPart(CXmlObjectBase* whole) : m_whole(whole) {}
  using CThings::GetBase;
  CXmlObjectBase* GetBase() override { return m_whole; }

 private:
  CXmlObjectBase* m_whole;
};

TEST(XmlCollectionBase, StartsWithoutNamespaceNameAndLimits) {
  const CThings things;
  EXPECT_EQ("", things.GetElementName());
  EXPECT_EQ("", things.GetNamespace());
  EXPECT_EQ(0, things.GetMinOccurs());
  EXPECT_EQ(-1, things.GetMaxOccurs());
  EXPECT_EQ(0, things.GetCount());
}

TEST(XmlCollectionBase, TakesNameNamespaceAndLimits) {
  const CThings things(2, 7);
  EXPECT_EQ("thing", things.GetElementName());
  EXPECT_EQ("urn:things", things.GetNamespace());
  EXPECT_EQ(2, things.GetMinOccurs());
  EXPECT_EQ(7, things.GetMaxOccurs());
}

TEST(XmlCollectionBase, HasNoTargetNamespace) {
  const CThings things;
  const char text[] =
      "CXmlCollectionBase::GetTargetNamespace Should not be used from within a Collection (program "
      "logic error)";
  EXPECT_QZ_THROW_FULL(CQzException, text, "", things.GetTargetNamespace());
  EXPECT_QZ_THROW_FULL(CQzException, text, "", things.ToXml());
}

TEST(XmlCollectionBase, IsItsOwnBase) {
  CThings things;
  EXPECT_EQ(&things, things.GetBase());
  EXPECT_EQ(&things, static_cast<const CThings&>(things).GetBase());
}

// Occurrence

TEST(XmlCollectionBase, TellsWhetherItsCountIsWithinItsLimits) {
  const struct {
    int minOccurs, maxOccurs, count;
    const char* failure;
  } cases[] = {
      {0, -1, 0, ""},
      {0, -1, 5, ""},
      {0, 0, 0, ""},
      {2, 3, 2, ""},
      {2, 3, 3, ""},
      {2, -1, 5, ""},
      {2, 3, 4, "The Maximum number of [thing] elements allowed in this collection is 3"},
      {0, 0, 1, "The Maximum number of [thing] elements allowed in this collection is 0"},
      {2, 3, 1, "The Minimum number of [thing] elements allowed in this collection is 2"},
      {1, -1, 0, "The Minimum number of [thing] elements allowed in this collection is 1"},
      // Too many is looked for first.
      {5, 1, 2, "The Maximum number of [thing] elements allowed in this collection is 1"},
      // Any other negative maximum is one.
      {0, -2, 0, "The Maximum number of [thing] elements allowed in this collection is -2"},
  };
  CSerializationContext strict;
  CSerializationContext lenient;
  lenient.SetIgnoreInvalidCollectionCounts(true);
  for (const auto& c : cases) {
    SCOPED_TRACE(c.failure);
    CThings things(c.minOccurs, c.maxOccurs);
    for (int i = 0; i < c.count; ++i) things.Append("x");
    if (*c.failure == '\0') {
      things.ValidateCount(strict);
      EXPECT_TRUE(things.IsValidCount(strict));
    } else {
      EXPECT_QZ_THROW_FULL(CQzValidationException, c.failure, "", things.ValidateCount(strict));
      EXPECT_FALSE(things.IsValidCount(strict));
    }
    things.ValidateCount(lenient);
    EXPECT_TRUE(things.IsValidCount(lenient));
  }
}

// Listeners

TEST(XmlCollectionBase, TellsItsListenersInTheOrderOfTheirRegistration) {
  CListener a("a: "), b("b: ");
  Log log;
  CThings things;
  a.log = b.log = &log;
  things.AddEventListener(&b);
  things.AddEventListener(&a);
  things.Append("x");
  EXPECT_EQ((Log{"b: add x 0", "a: add x 0", "b: added x 1", "a: added x 1", "b: change 1",
                 "a: change 1"}),
            log);
}

TEST(XmlCollectionBase, GivesItsBaseAsTheSender) {
  CListener listener;
  CThings things;
  CPart part(&things);
  part.AddEventListener(&listener);
  part.Append("x");
  EXPECT_EQ((std::vector<CXmlObjectBase*>(3, &things)), listener.senders);
}

TEST(XmlCollectionBase, CallsAListenerAsOftenAsItWasAdded) {
  CListener listener;
  CThings things;
  things.AddEventListener(&listener);
  things.AddEventListener(&listener);
  things.Append("x");
  EXPECT_EQ((Log{"add x 0", "add x 0", "added x 1", "added x 1", "change 1", "change 1"}),
            listener.own);
}

TEST(XmlCollectionBase, RemovesEveryEntryOfAListener) {
  CListener twice, once;
  CThings things;
  things.AddEventListener(&twice);
  things.AddEventListener(&once);
  things.AddEventListener(&twice);
  things.RemoveEventListener(&twice);
  things.Append("x");
  EXPECT_EQ(Log(), twice.own);
  EXPECT_EQ((Log{"add x 0", "added x 1", "change 1"}), once.own);
  things.RemoveEventListener(&twice);  // nothing is there any more
  things.RemoveEventListener(&once);
  things.Append("y");
  EXPECT_EQ(3u, once.own.size());
}

TEST(XmlCollectionBase, IgnoresAListenerThatIsNull) {
  CThings things;
  things.AddEventListener(nullptr);
  things.RemoveEventListener(nullptr);
  things.Append("x");
  EXPECT_EQ("x", things.names());
}

TEST(XmlCollectionBase, DoesNotCallAListenerThatAnotherOneHasRemoved) {
  CListener first, second;
  CThings things;
  things.AddEventListener(&first);
  things.AddEventListener(&second);
  first.onEvent = [&](IEventSink::MsgType) { things.RemoveEventListener(&second); };
  things.Append("x");
  EXPECT_EQ(3u, first.own.size());
  EXPECT_EQ(Log(), second.own);
}

TEST(XmlCollectionBase, CallsTheOthersWhenAListenerRemovesItself) {
  CListener first, second;
  CThings things;
  things.AddEventListener(&first);
  things.AddEventListener(&second);
  first.onEvent = [&](IEventSink::MsgType) { things.RemoveEventListener(&first); };
  things.Append("x");
  EXPECT_EQ((Log{"add x 0"}), first.own);
  EXPECT_EQ((Log{"add x 0", "added x 1", "change 1"}), second.own);
}

TEST(XmlCollectionBase, CallsAListenerThatAnotherOneHasAddedFromTheNextEventOn) {
  CListener first, second;
  CThings things;
  things.AddEventListener(&first);
  first.onEvent = [&](IEventSink::MsgType type) {
    if (type == IEventSink::MsgType_CollectionAdd) things.AddEventListener(&second);
  };
  things.Append("x");
  EXPECT_EQ((Log{"added x 1", "change 1"}), second.own);
}

TEST(XmlCollectionBase, KeepsItsListenersInOrderWhenACallIsMadeInsideACall) {
  CListener first("1: "), second("2: "), third("3: ");
  Log log;
  CThings things;
  first.log = second.log = third.log = &log;
  for (CListener* listener : {&first, &second, &third}) things.AddEventListener(listener);
  bool done = false;
  second.onEvent = [&](IEventSink::MsgType) {
    if (done) return;
    done = true;
    things.RemoveEventListener(&first);
    things.Append("y");  // inside the event for x
    things.AddEventListener(&first);
  };
  things.Append("x");
  EXPECT_EQ((Log{"1: add x 0", "2: add x 0", "2: add y 0", "3: add y 0", "2: added y 1",
                 "3: added y 1", "2: change 1", "3: change 1", "3: add x 1", "2: added x 2",
                 "3: added x 2", "1: added x 2", "2: change 2", "3: change 2", "1: change 2"}),
            log);
}

TEST(XmlCollectionBase, CallsOnWhenAListenerHasThrown) {
  CListener first, second;
  CThings things;
  things.AddEventListener(&first);
  things.AddEventListener(&second);
  first.onEvent = [&](IEventSink::MsgType) {
    things.RemoveEventListener(&first);
    throw CQzException("No.");
  };
  EXPECT_QZ_THROW(CQzException, "No.", things.Append("x"));
  EXPECT_EQ(Log(), second.own);
  things.Append("y");
  EXPECT_EQ((Log{"add x 0"}), first.own);
  EXPECT_EQ((Log{"add y 0", "added y 1", "change 1"}), second.own);
}

TEST(XmlCollectionBase, HandsOutTheIndexOfARemovalAndNullForMinusOne) {
  CListener listener;
  CIndexed things;
  things.AddEventListener(&listener);
  things.FireOnCollectionRemove(3);
  things.FireOnCollectionRemove(0);
  things.FireOnCollectionRemove(-1);
  things.FireOnCollectionRemoveComplete(3);
  things.FireOnCollectionRemoveComplete(-1);
  CIndexed::FireOnCollectionRemoveEvent(&listener, &things, -1);
  CIndexed::FireOnCollectionRemoveCompleteEvent(&listener, &things, -1);
  EXPECT_EQ((Log{"remove 3 0", "remove 0 0", "remove 0", "removed 3 0", "removed 0", "remove 0",
                 "removed 0"}),
            listener.own);
}

TEST(XmlCollectionBase, HandsOutTheItemOfAnAdditionAndNothingWithAChange) {
  CListener listener;
  CIndexed things;
  things.AddEventListener(&listener);
  CThing thing("x");
  things.FireOnCollectionAdd(static_cast<CXmlObjectBase*>(&thing));
  things.FireOnCollectionAddComplete(static_cast<CXmlObjectBase*>(&thing));
  things.FireOnCollectionChange();
  EXPECT_EQ((Log{"add x 0", "added x 0", "change 0"}), listener.own);
}

}  // namespace
}  // namespace QzXmlLib16
