#include <pthread.h>

#include <functional>

#include "qzxml/serialization/ElementInfoChoice.h"
#include "qzxml/serialization/ElementInfoSeq.h"
#include "qzxml/serialization/XmlGeneratedClass.h"
#include "tests/support/GeneratedTable.h"
#include "tests/support/QzTest.h"

// The walks go as deep as the document, whose depth is limited. A small stack must do for that.

using namespace QzXmlLib16;
using namespace QzXmlLib16Data;
using namespace qztest;

namespace {

using Object = CSmartPtr<CTableObject>;

// The frames of a build with the address sanitizer are many times as large.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr std::size_t kStack = 32 << 20;
#else
constexpr std::size_t kStack = 1 << 20;
#endif
constexpr int kDepth = 1023;  // and the number in the innermost element

const char kLevel[] = "Failed to convert the element [a] to XML\n";

void* Call(void* work) {
  try {
    (*static_cast<std::function<void()>*>(work))();
  } catch (const CQzException& e) {
    ADD_FAILURE() << e.GetFullMessage();
  }
  return nullptr;
}

// Runs work on a thread with such a stack.
void OnSmallStack(std::function<void()> work) {
  pthread_attr_t attributes;
  ASSERT_EQ(0, pthread_attr_init(&attributes));
  ASSERT_EQ(0, pthread_attr_setstacksize(&attributes, kStack));
  pthread_t thread;
  ASSERT_EQ(0, pthread_create(&thread, &attributes, &Call, &work));
  ASSERT_EQ(0, pthread_join(thread, nullptr));
  pthread_attr_destroy(&attributes);
}

// Elements "a" inside each other, with what stands in the innermost.
std::string Nested(const char* inside) {
  std::string text;
  for (int i = 0; i < kDepth; ++i) text += "<a>";
  text += inside;
  for (int i = 0; i < kDepth; ++i) text += "</a>";
  return text;
}

// Reads a document of the greatest depth into a class that holds itself, writes it back, and fails
// on the ground both ways. The number in property 1 of the innermost object is the ground.
// Each level but the innermost adds levels to the message of a failure in writing.
void ExpectDeep(const CTables& tables, const std::function<CTableObject*(CTableObject&)>& child,
                const std::string& levels = kLevel) {
  const std::string document = Nested("<n>1</n>");
  const std::string broken = Nested("<n>x</n>");
  OnSmallStack([&] {
    const Object object(new CTableObject(tables, "a"));
    object->FromXml(document.c_str());
    EXPECT_EQ(document, Text(*object));

    CTableObject* innermost = object;
    while (CTableObject* const next = child(*innermost)) innermost = next;
    innermost->failsToGive = "Out of order.";
    try {
      Text(*object);
      ADD_FAILURE();
    } catch (const CQzException& e) {
      std::string expected;
      for (int i = 1; i < kDepth; ++i) expected += levels;
      expected += kLevel;
      const std::string full = e.GetFullMessage();
      EXPECT_EQ(0, full.compare(0, expected.size(), expected));
      EXPECT_NE(std::string::npos, full.find("\nOut of order.")) << full.substr(expected.size());
    }
    const Object second(new CTableObject(tables, "a"));
    try {
      second->FromXml(broken.c_str());
      ADD_FAILURE();
    } catch (const CQzException& e) {
      EXPECT_EQ(typeid(CQzException), typeid(e));
      std::string path;
      for (int i = 0; i < kDepth; ++i) path += "/a";
      EXPECT_EQ(path, e.GetPath());
      EXPECT_EQ("Failed to process the element.\nPath: " + path +
                    "\nThe value [x] can not be converted to a i4",
                e.GetFullMessage());
    }
  });
}

CElementInfo* Number(int index) {
  PrimOptions options;
  options.type = ItemType_i4;
  return Prim<CElementInfoSeqPrimOpt>("n", index, options);
}

}  // namespace

TEST(XmlGeneratedClassDepth, ObjectsInsideEachOtherFitASmallStack) {
  CTables tables;
  tables.Add(
      new CElementInfoSeqClsOpt("a", "", 0, XmlElementType_Element, &MakeTableObject, tables.id()),
      Unset::Object);
  tables.Add(Number(1), Unset::Value);
  ExpectDeep(tables, [](CTableObject& object) { return object.ObjectAt(0); });
}

TEST(XmlGeneratedClassDepth, CollectionsInsideEachOtherFitASmallStack) {
  CTables tables;
  tables.Add(new CElementInfoSeqClsCol("a", "", 0, XmlElementType_Element),
             Unset::Collection(
                 [&]() -> CXmlCollectionBase* { return new CTableCol(tables, "a", "", 0, -1); }));
  tables.Add(Number(1), Unset::Value);
  ExpectDeep(tables, [](CTableObject& object) -> CTableObject* {
    CXmlCollectionBase* const collection = object[0].GetXmlCollection();
    return collection->GetCount() != 0 ? static_cast<CTableCol*>(collection)->Item(0) : nullptr;
  });
}

TEST(XmlGeneratedClassDepth, GroupsAndChoicesInsideEachOtherFitASmallStack) {
  CTables tables(XmlElementGroupType_Choice);
  CTables group(XmlElementGroupType_Sequence, XmlElementType_PseudoElement);
  group.Add(
      new CElementInfoSeqClsOpt("a", "", 0, XmlElementType_Element, &MakeTableObject, tables.id()),
      Unset::Object);
  tables.Add(new CElementInfoChoiceClsOpt("g", "", 0, XmlElementType_PseudoElement,
                                          &MakeTableObject, group.id()),
             Unset::Object);
  PrimOptions options;
  options.type = ItemType_i4;
  tables.Add(Prim<CElementInfoChoicePrimOpt>("n", 1, options), Unset::Value);
  ExpectDeep(
      tables,
      [](CTableObject& object) -> CTableObject* {
        CTableObject* const inGroup = object.ObjectAt(0);
        return inGroup != nullptr ? inGroup->ObjectAt(0) : nullptr;
      },
      std::string(kLevel) + "Failed to convert the element [g] to XML\n");
}
