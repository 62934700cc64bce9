#include <atomic>
#include <optional>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "qzxml/serialization/AttributeInfo.h"
#include "qzxml/serialization/ElementInfoSeq.h"
#include "qzxml/serialization/PropertyAccess.h"
#include "qzxml/serialization/TabledClass.h"
#include "tests/support/QzTest.h"

namespace QzXmlLib16 {
namespace {

using QzXmlLib16Data::CAttributeInfoPrimitive;
using QzXmlLib16Data::CElementInfoSeqPrimMnd;

// A class with a child and an attribute, and with a hand on the building of its tables.
class CPart : public CTabledClass {
 public:
  CPart() { SetElementName("part"); }
  std::string GetTargetNamespace() const override { return "urn:parts"; }
  std::string GetNamespace() const override { return "urn:parts"; }

  static void CleanTables() { Clean(s_tables); }
  static CXmlGeneratedClass::CElementInfo** GetElements() { return s_tables.GetElements(); }
  const CTables& GetTables() const override {
    return BuildOnce(s_tables, [](CTables& made) {
      ++s_builds;
      made.SetInfo(new CParentElementInfo(
          QzXmlLib16Data::XmlElementGroupType_Sequence, QzXmlLib16Data::XmlElementType_Element,
          "part", "urn:parts", true, false, -1, ItemType_None, nullptr, false));
      made.SetElements({new CElementInfoSeqPrimMnd(
          "size", "urn:parts", 0, false, ItemType_decimal, nullptr,
          CWhitespaceUtils::WhitespaceRule_Collapse, CPrimitiveRestrictions(), nullptr)});
      if (s_fails) throw std::runtime_error("no table of attributes");
      made.SetAttributes({new CAttributeInfoPrimitive("made", "", 1, true, ItemType_date, nullptr,
                                                      CWhitespaceUtils::WhitespaceRule_Collapse,
                                                      CPrimitiveRestrictions(), nullptr)});
    });
  }

  static inline std::atomic<int> s_builds{0};
  static inline bool s_fails = false;
  std::optional<CDecimal> m_size;
  std::optional<CDateTime> m_made;

 protected:
  void AccessProperty(int index, bool read, QzVariant& value) const override {
    CPart& self = const_cast<CPart&>(*this);
    if (index == 0) return AccessValue<ItemType_decimal>(read, value, self.m_size);
    AccessValue<ItemType_date>(read, value, self.m_made);
  }
  void Init() override {
    m_size.reset();
    m_made.reset();
  }

 private:
  static inline CTables s_tables;
};

constexpr char kText[] = "<part xmlns='urn:parts' made='2004-05-06'><size>1.50</size></part>";

// A class that sets nothing, and one that sets everything twice.
class CBare : public CPart {
 public:
  const CTables& GetTables() const override {
    static CTables tables;
    return BuildOnce(tables, [](CTables&) {});
  }
};

class CTwice : public CPart {
 public:
  const CTables& GetTables() const override {
    static CTables tables;
    return BuildOnce(tables, [](CTables& made) {
      for (int i = 0; i < 2; ++i) {
        made.SetInfo(nullptr);
        made.SetElements({});
        made.SetAttributes({});
      }
    });
  }
};

}  // namespace

TEST(TabledClass, ReadsAndWritesByItsTables) {
  CPart part;
  part.FromXml(kText);
  EXPECT_EQ("1.5", part.m_size->ToString());
  EXPECT_EQ("2004-05-06", part.m_made->ToString());
  CPart back;
  back.FromXml(part.ToXml().c_str());
  EXPECT_EQ("1.5", back.m_size->ToString());
  EXPECT_EQ("2004-05-06", back.m_made->ToString());
}

TEST(TabledClass, ThreadsThatComeFirstTogetherBuildOnce) {
  CPart::CleanTables();
  CPart::s_builds = 0;
  std::atomic<int> failures{0};
  std::vector<std::thread> threads;
  for (int i = 0; i < 8; ++i) {
    threads.emplace_back([&failures] {
      CPart part;
      part.FromXml(kText);
      if (!part.m_size || part.m_size->ToString() != "1.5") ++failures;
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(0, failures.load());
  EXPECT_EQ(1, CPart::s_builds.load());
}

TEST(TabledClass, TablesThatFailedAreEmptyAndBuiltAgain) {
  CPart::CleanTables();
  CPart::s_builds = 0;
  CPart::s_fails = true;
  CPart part;
  EXPECT_THROW(part.GetTables(), std::runtime_error);
  EXPECT_EQ(nullptr, CPart::GetElements());
  CPart::s_fails = false;
  part.FromXml(kText);
  EXPECT_EQ("1.5", part.m_size->ToString());
  EXPECT_EQ(2, CPart::s_builds.load());
}

TEST(TabledClass, TablesEndWithANullEntry) {
  CPart part;
  EXPECT_NE(nullptr, part.GetTables().GetElements()[0]);
  EXPECT_EQ(nullptr, part.GetTables().GetElements()[1]);
  EXPECT_NE(nullptr, part.GetTables().GetAttributes()[0]);
  EXPECT_EQ(nullptr, part.GetTables().GetAttributes()[1]);
  CBare bare;
  EXPECT_EQ(nullptr, bare.GetTables().GetInfo());
  EXPECT_EQ(nullptr, bare.GetTables().GetElements()[0]);
  EXPECT_EQ(nullptr, bare.GetTables().GetAttributes()[0]);
}

TEST(TabledClass, ATableIsSetOnce) { EXPECT_QZ_ASSERT("m_pElements == 0", CTwice().GetTables()); }

}  // namespace QzXmlLib16
