#include <thread>
#include <type_traits>

#include "qzxml/serialization/NamespaceAliasMap.h"
#include "tests/support/QzTest.h"

namespace QzXmlLib16 {
namespace {

CNamespaceAliasMap Sample() {
  CNamespaceAliasMap map;
  map.Add("o", "urn:orders");
  map.Add("c", "urn:customers");
  return map;
}

TEST(NamespaceAliasMap, StartsWithoutAnyEntry) {
  const CNamespaceAliasMap map;
  EXPECT_EQ(0, map.GetNamespaceCount());
  EXPECT_FALSE(map.DoesNamespaceExist("http://www.w3.org/XML/1998/namespace"));
  EXPECT_FALSE(map.DoesNamespaceExist(""));
  EXPECT_FALSE(map.DoesAliasExist("xml"));
  EXPECT_FALSE(map.DoesAliasExist(""));
}

TEST(NamespaceAliasMap, AnAliasThatIsNotThereIsRefused) {
  const CNamespaceAliasMap empty;
  for (const char* alias : {"", "xml", "o"}) {
    EXPECT_QZ_THROW_FULL(CQzException, "Namespace alias [" + std::string(alias) + "] not found", "",
                         empty.GetNamespaceFromAlias(alias));
  }
  const CNamespaceAliasMap map = Sample();
  EXPECT_QZ_THROW_FULL(CQzException, "Namespace alias [urn:orders] not found", "",
                       map.GetNamespaceFromAlias("urn:orders"));
}

TEST(NamespaceAliasMap, TakesTheAliasFirstAndTheNamespaceSecond) {
  const CNamespaceAliasMap map = Sample();
  EXPECT_EQ(2, map.GetNamespaceCount());
  EXPECT_EQ("urn:orders", map.GetNamespaceFromAlias("o"));
  EXPECT_EQ("o", map.GetAliasFromNamespace("urn:orders"));
  EXPECT_TRUE(map.DoesNamespaceExist("urn:orders"));
  EXPECT_FALSE(map.DoesNamespaceExist("o"));
  EXPECT_TRUE(map.DoesAliasExist("o"));
  EXPECT_FALSE(map.DoesAliasExist("urn:orders"));
}

TEST(NamespaceAliasMap, ANamespaceHasOneAliasTheLaterOne) {
  CNamespaceAliasMap map;
  map.Add("a", "urn:orders");
  map.Add("b", "urn:orders");
  EXPECT_EQ(1, map.GetNamespaceCount());
  EXPECT_EQ("b", map.GetAliasFromNamespace("urn:orders"));
  EXPECT_FALSE(map.DoesAliasExist("a"));
}

TEST(NamespaceAliasMap, AskingForTheAliasOfAnAbsentNamespaceEntersItWithAnEmptyOne) {
  const CNamespaceAliasMap map = Sample();
  EXPECT_EQ("", map.GetAliasFromNamespace("urn:absent"));
  EXPECT_EQ(3, map.GetNamespaceCount());
  EXPECT_TRUE(map.DoesNamespaceExist("urn:absent"));
  EXPECT_TRUE(map.DoesAliasExist(""));
  EXPECT_EQ("urn:absent", map.GetNamespaceFromAlias(""));
  EXPECT_EQ("", map.GetAliasFromNamespace("urn:absent"));
  EXPECT_EQ(3, map.GetNamespaceCount());
}

TEST(NamespaceAliasMap, AskingWhetherSomethingIsThereEntersNothing) {
  const CNamespaceAliasMap map = Sample();
  EXPECT_FALSE(map.DoesNamespaceExist("urn:absent"));
  EXPECT_FALSE(map.DoesAliasExist("x"));
  EXPECT_EQ("o", map.GetAliasFromNamespace("urn:orders"));
  EXPECT_EQ(2, map.GetNamespaceCount());
}

TEST(NamespaceAliasMap, AnAliasOfTwoNamespacesStandsForTheOneThatSortsFirst) {
  CNamespaceAliasMap map;
  map.Add("p", "urn:b");
  map.Add("p", "urn:a");
  map.Add("p", "urn:c");
  EXPECT_EQ(3, map.GetNamespaceCount());
  EXPECT_EQ("urn:a", map.GetNamespaceFromAlias("p"));
  map.RemoveNamespace("urn:a");
  EXPECT_EQ("urn:b", map.GetNamespaceFromAlias("p"));
}

TEST(NamespaceAliasMap, RemovingAnAbsentNamespaceChangesNothing) {
  CNamespaceAliasMap map = Sample();
  map.RemoveNamespace("urn:absent");
  map.RemoveNamespace("o");
  EXPECT_EQ(2, map.GetNamespaceCount());
  map.RemoveNamespace("urn:orders");
  EXPECT_EQ(1, map.GetNamespaceCount());
  EXPECT_FALSE(map.DoesNamespaceExist("urn:orders"));
  map.RemoveNamespace("urn:orders");
  EXPECT_EQ(1, map.GetNamespaceCount());
}

TEST(NamespaceAliasMap, CountsThroughTheNamespacesInAscendingByteOrder) {
  CNamespaceAliasMap map;
  const std::vector<std::string> ascending = {"",      "URN:Z", "urn:",    "urn:a", "urn:a:deeper",
                                              "urn:b", "z",     "\xC3\xA9"};
  for (const std::size_t i : {6u, 2u, 0u, 5u, 7u, 1u, 4u, 3u}) {
    map.Add(("p" + std::to_string(i)).c_str(), ascending[i].c_str());
  }
  ASSERT_EQ(8, map.GetNamespaceCount());
  for (int i = 0; i < map.GetNamespaceCount(); ++i) {
    EXPECT_EQ(ascending[static_cast<std::size_t>(i)], map.GetNamespaceAt(i));
    EXPECT_EQ("p" + std::to_string(i), map.GetAliasFromNamespace(map.GetNamespaceAt(i).c_str()));
  }
  EXPECT_EQ(8, map.GetNamespaceCount());
}

TEST(NamespaceAliasMap, AnIndexOutsideIsAssertedAndAnsweredByAnEmptyText) {
  const CNamespaceAliasMap map = Sample();
  for (const int index : {-1, 2, 2147483647, -2147483647 - 1}) {
    EXPECT_QZ_ASSERT("index >= 0 && index < GetNamespaceCount()", map.GetNamespaceAt(index));
    const qztest::AssertionRecorder recorder;
    EXPECT_EQ("", map.GetNamespaceAt(index)) << index;
  }
}

TEST(NamespaceAliasMap, ACopyIsIndependent) {
  CNamespaceAliasMap source = Sample();
  CNamespaceAliasMap copy(source);
  CNamespaceAliasMap assigned;
  assigned.Add("x", "urn:former");
  assigned = source;
  source.Add("other", "urn:orders");
  source.Add("n", "urn:new");
  for (const CNamespaceAliasMap* map : {&copy, &assigned}) {
    EXPECT_EQ(2, map->GetNamespaceCount());
    EXPECT_EQ("urn:customers", map->GetNamespaceAt(0));
    EXPECT_EQ("o", map->GetAliasFromNamespace("urn:orders"));
  }
  copy.RemoveNamespace("urn:orders");
  EXPECT_EQ(3, source.GetNamespaceCount());
}

TEST(NamespaceAliasMap, AssigningAMapToItselfKeepsIt) {
  CNamespaceAliasMap map = Sample();
  const CNamespaceAliasMap& same = map;
  map = same;
  EXPECT_EQ(2, map.GetNamespaceCount());
  EXPECT_EQ("c", map.GetAliasFromNamespace("urn:customers"));
}

TEST(NamespaceAliasMap, NullIsTheEmptyText) {
  CNamespaceAliasMap map;
  map.Add(nullptr, nullptr);
  EXPECT_EQ(1, map.GetNamespaceCount());
  EXPECT_TRUE(map.DoesNamespaceExist(""));
  EXPECT_TRUE(map.DoesNamespaceExist(nullptr));
  EXPECT_TRUE(map.DoesAliasExist(nullptr));
  EXPECT_EQ("", map.GetAliasFromNamespace(nullptr));
  EXPECT_EQ("", map.GetNamespaceFromAlias(nullptr));
  map.RemoveNamespace(nullptr);
  EXPECT_EQ(0, map.GetNamespaceCount());
  EXPECT_QZ_THROW(CQzException, "Namespace alias [] not found", map.GetNamespaceFromAlias(nullptr));
}

TEST(NamespaceAliasMap, TheDestructorIsVirtual) {
  EXPECT_TRUE(std::has_virtual_destructor<CNamespaceAliasMap>::value);
}

TEST(NamespaceAliasMap, ThreadsMayAskForWhatIsThereAtOnce) {
  const CNamespaceAliasMap map = Sample();
  const auto ask = [&map](bool* right) {
    for (int turn = 0; turn < 200; ++turn) {
      for (int i = 0; i < map.GetNamespaceCount(); ++i) {
        const std::string alias = map.GetAliasFromNamespace(map.GetNamespaceAt(i).c_str());
        *right = *right && alias == (i == 0 ? "c" : "o");
      }
    }
  };
  bool first = true;
  bool second = true;
  std::thread other(ask, &first);
  ask(&second);
  other.join();
  EXPECT_TRUE(first);
  EXPECT_TRUE(second);
  EXPECT_EQ(2, map.GetNamespaceCount());
}

}  // namespace
}  // namespace QzXmlLib16
