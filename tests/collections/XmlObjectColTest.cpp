#include "qzxml/collections/XmlObjectCol.h"
#include "qzxml/runtime/QzException.h"
#include "tests/collections/OpenContent.h"
#include "tests/collections/Things.h"
#include "tests/support/GeneratedTable.h"
#include "tests/support/QzTest.h"

namespace QzXmlLib16 {
namespace {

using qztest::CListener;
using qztest::CLoaded;
using qztest::CTableObject;
using qztest::CTables;
using qztest::CWalk;
using qztest::WriteInOwner;

// The class of the items has no members.
struct Items {
  Items() : items("item", "", 1, 2, &qztest::MakeTableObject, tables.id()) {}
  CTables tables;
  CXmlObjectCol<CTableObject> items;
};

TEST(XmlObjectCol, MakesItsItemsUnderItsName) {
  Items of;
  EXPECT_EQ("item", of.items.Add()->GetElementName());
  EXPECT_EQ("<owner><item/></owner>", WriteInOwner(&of.items));
}

TEST(XmlObjectCol, GivesAReadyItemItsName) {
  Items of;
  const CSmartPtr<CTableObject> a(new CTableObject(of.tables, "a"));
  const CSmartPtr<CTableObject> b(new CTableObject(of.tables, "b"));
  EXPECT_EQ(a, of.items.Add(a));
  of.items.AddAt(0, b);
  EXPECT_EQ("item", a->GetElementName());
  EXPECT_EQ("item", b->GetElementName());
  const CXmlObjectCol<CTableObject>& items = of.items;
  EXPECT_EQ(b, items.Item(0));
  EXPECT_EQ(a, items.Item(1));
  EXPECT_QZ_THROW(CQzInvalidParamException, "Index 2 is out of range, use 0 - 2", items.Item(2));
  EXPECT_QZ_THROW(CQzInvalidParamException, "Index out of range", of.items.AddAt(3, b));
  EXPECT_EQ(&of.items, items.GetBase());
}

TEST(XmlObjectCol, TakesNoNullItem) {
  Items of;
  EXPECT_QZ_ASSERT("item != 0", of.items.Add(nullptr));
  EXPECT_QZ_ASSERT("item != 0", of.items.AddAt(0, nullptr));
  EXPECT_EQ(0, of.items.GetCount());
}

TEST(XmlObjectCol, KeepsAnItemThatAListenerTakesOut) {
  Items of;
  CListener listener;
  listener.onEvent = [&](IEventSink::MsgType type) {
    if (type == IEventSink::MsgType_CollectionAddComplete) of.items.Clear();
  };
  of.items.AddEventListener(&listener);
  const CSmartPtr<CTableObject> item = of.items.Add(new CTableObject(of.tables));
  EXPECT_EQ("item", item->GetElementName());
  EXPECT_EQ(0, of.items.GetCount());
  of.items.RemoveEventListener(&listener);
}

TEST(XmlObjectCol, ReadsTheRunOfElementsOfItsNameAndChecksTheNumberOnWriting) {
  Items of;
  const CLoaded document("<r><item/><item/><item/><other/><item/></r>");
  CXmlElement* const left =
      CWalk::Read(&of.items, document.root(), document.root()->GetFirstElement());
  ASSERT_NE(nullptr, left);
  EXPECT_EQ("other", left->GetLocalName());
  EXPECT_EQ(3, of.items.GetCount());
  int seen = 0;
  for (const CSmartPtr<CTableObject>& item : of.items) seen += item != nullptr ? 1 : 0;
  EXPECT_EQ(3, seen);
  EXPECT_QZ_THROW(CQzValidationException,
                  "The Maximum number of [item] elements allowed in this collection is 2",
                  WriteInOwner(&of.items));
}

}  // namespace
}  // namespace QzXmlLib16
