#include "qzxml/collections/Element.h"
#include "qzxml/collections/ElementCol.h"
#include "qzxml/serialization/ElementInfoSeq.h"
#include "tests/support/MemberTrial.h"
#include "tests/support/QzTest.h"

// What all members of a sequence have in common, one after the other, in whole documents.

using namespace QzXmlLib16;
using namespace QzXmlLib16Data;
using namespace qztest;

namespace {

using Object = CSmartPtr<CTableObject>;

// <a><v/></a>, and the group v, v2 without a tag.
class ItemTables : public CTables {
 public:
  ItemTables(const char* typeName, bool derived) {
    name = typeName;
    hasBaseClasses = derived;
    Add(Prim<CElementInfoSeqPrimMnd>("v", 0), Unset::Value);
  }
};
class GroupTables : public CTables {
 public:
  GroupTables() : CTables(XmlElementGroupType_Sequence, kPseudo) {
    Add(Prim<CElementInfoSeqPrimMnd>("v", 0), Unset::Value);
    Add(Prim<CElementInfoSeqPrimOpt>("v2", 1), Unset::Value);
  }
};
const CTables& Item() {
  static const ItemTables tables("a", false);
  return tables;
}
const CTables& Group() {
  static const GroupTables tables;
  return tables;
}

Unset::Make Held(const CTables& tables) {
  return Unset::Held([&tables] { return new CTableObject(tables, "a"); });
}
Unset::Make Texts() {
  return Unset::Collection([]() -> CXmlCollectionBase* { return new CTextCol("a", "", 1, 3); });
}
Unset::Make Items() {
  return Unset::Collection(
      []() -> CXmlCollectionBase* { return new CTableCol(Item(), "a", "", 1, 3); });
}
Unset::Make Elements() {
  return Unset::Collection(
      []() -> CXmlCollectionBase* { return new CElementCol("", "##any", "", 1, 3); });
}
Unset::Make Open() {
  return Unset::Held([] { return new CElement("a"); });
}

// The children that a member takes, and reads, writes and reads again without a change.
struct Row {
  const char* name;
  CElementInfo* (*make)();
  Unset::Make unset;
  const char* children;
};

const Row* Rows(std::size_t& count) {
  static const char kTexts[] = "<a>1</a><a>2</a>";
  static const char kItem[] = "<a><v>1</v></a>";
  static const char kTyped[] =
      "<a xmlns:AA=\"http://www.w3.org/2001/XMLSchema-instance\" AA:type=\"Typed\"><v>1</v></a>";
  static const ItemTables typed("Typed", true);
  static const Row rows[] = {
      {"PrimMnd", [] { return static_cast<CElementInfo*>(Prim<CElementInfoSeqPrimMnd>("a", 0)); },
       Unset::Value, "<a>1</a>"},
      {"PrimOpt", [] { return static_cast<CElementInfo*>(Prim<CElementInfoSeqPrimOpt>("a", 0)); },
       Unset::Value, "<a>1</a>"},
      {"EnumMnd", [] { return static_cast<CElementInfo*>(Enum<CElementInfoSeqEnumMnd>("a", 0)); },
       Unset::Value, "<a>red</a>"},
      {"EnumOpt", [] { return static_cast<CElementInfo*>(Enum<CElementInfoSeqEnumOpt>("a", 0)); },
       Unset::Value, "<a>red</a>"},
      {"ClsMnd",
       []() -> CElementInfo* {
         return new CElementInfoSeqClsMnd("a", "", 0, kReal, &MakeTableObject, Item().id(), false);
       },
       Held(Item()), kItem},
      {"ClsMnd of a group",
       []() -> CElementInfo* {
         return new CElementInfoSeqClsMnd("a", "", 0, kPseudo, &MakeTableObject, Group().id(),
                                          true);
       },
       Held(Group()), "<v>1</v><v2>2</v2>"},
      {"ClsOpt",
       []() -> CElementInfo* {
         return new CElementInfoSeqClsOpt("a", "", 0, kReal, &MakeTableObject, Item().id());
       },
       Unset::Object, kItem},
      {"ClsOpt of a group",
       []() -> CElementInfo* {
         return new CElementInfoSeqClsOpt("a", "", 0, kPseudo, &MakeTableObject, Group().id());
       },
       Unset::Object, "<v>1</v><v2>2</v2>"},
      {"AbsClsMnd",
       []() -> CElementInfo* {
         return new CElementInfoSeqAbsClsMnd("a", "", 0, kReal, &MakeTableObjectByType);
       },
       Unset::Object, kTyped},
      {"AbsClsOpt",
       []() -> CElementInfo* {
         return new CElementInfoSeqAbsClsOpt("a", "", 0, kReal, &MakeTableObjectByType);
       },
       Unset::Object, kTyped},
      {"UntpdMnd",
       []() -> CElementInfo* {
         return new CElementInfoSeqUntpdMnd("AnyElement", "", 0, "##any", "");
       },
       Open(), "<b x=\"1\"><c/>2</b>"},
      {"UntpdMnd of a name",
       []() -> CElementInfo* { return new CElementInfoSeqUntpdMnd("a", "", 0, "##any", ""); },
       Open(), "<a>1</a>"},
      {"UntpdOpt",
       []() -> CElementInfo* {
         return new CElementInfoSeqUntpdOpt("AnyElement", "", 0, "##any", "");
       },
       Unset::Object, "<b x=\"1\"><c/>2</b>"},
      {"UntpdOpt of a name",
       []() -> CElementInfo* { return new CElementInfoSeqUntpdOpt("a", "", 0, "##any", ""); },
       Unset::Object, "<a>1</a>"},
      {"Col", []() -> CElementInfo* { return new CElementInfoSeqCol("a", "", 0); }, Texts(),
       kTexts},
      {"PrimCol", []() -> CElementInfo* { return new CElementInfoSeqPrimCol("a", "", 0); }, Texts(),
       kTexts},
      {"EnumCol", []() -> CElementInfo* { return new CElementInfoSeqEnumCol("a", "", 0); }, Texts(),
       kTexts},
      {"ClsCol", []() -> CElementInfo* { return new CElementInfoSeqClsCol("a", "", 0, kReal); },
       Items(), "<a><v>1</v></a><a><v>2</v></a>"},
      {"AbsClsCol",
       []() -> CElementInfo* { return new CElementInfoSeqAbsClsCol("a", "", 0, kReal); }, Items(),
       "<a><v>1</v></a><a><v>2</v></a>"},
      {"UntpdCol",
       []() -> CElementInfo* { return new CElementInfoSeqUntpdCol("AnyElement", "", 0); },
       Elements(), "<b>1</b><c/>"},
      {"UntpdCol of a name",
       []() -> CElementInfo* { return new CElementInfoSeqUntpdCol("a", "", 0); }, Elements(),
       kTexts},
  };
  count = sizeof(rows) / sizeof(*rows);
  return rows;
}

// Calls with each row in turn.
template <typename Action>
void ForEachRow(Action action) {
  std::size_t count = 0;
  const Row* const rows = Rows(count);
  for (std::size_t i = 0; i < count; ++i) {
    SCOPED_TRACE(rows[i].name);
    action(rows[i]);
  }
}

// Whether it takes its neighbours as well, whatever their names.
bool TakesEveryElement(const Row& row) { return std::string(row.name) == "UntpdCol"; }
bool TakesAnyElement(const Row& row) {
  return TakesEveryElement(row) || std::string(row.name) == "UntpdMnd" ||
         std::string(row.name) == "UntpdOpt";
}

// A member <z/> behind it, which shows that the cursor stood right.
void AddNeighbour(CTables& tables) {
  tables.Add(Prim<CElementInfoSeqPrimMnd>("z", 1), Unset::Value);
}

// The member in a group, which a class has first.
void AddGroup(CTables& tables, const CTables& group, bool mandatory) {
  if (mandatory) {
    tables.Add(new CElementInfoSeqClsMnd("g", "", 0, kPseudo, &MakeTableObject, group.id(), true),
               Held(group));
  } else {
    tables.Add(new CElementInfoSeqClsOpt("g", "", 0, kPseudo, &MakeTableObject, group.id()),
               Unset::Object);
  }
}

void ExpectRoundTrip(const CTables& tables, const std::string& document) {
  Object object(new CTableObject(tables));
  object->FromXml(document.c_str());
  EXPECT_EQ(document, Text(*object));
  object->FromXml(document.c_str());
  EXPECT_EQ(document, Text(*object)) << "a second time";
}

}  // namespace

TEST(ElementInfoSeq, MemberOfAClassWithATagReadsWhatItWrites) {
  ForEachRow([](const Row& row) {
    CTables tables;
    tables.Add(row.make(), row.unset);
    ExpectRoundTrip(tables, "<r>" + std::string(row.children) + "</r>");
  });
}

TEST(ElementInfoSeq, MemberLeavesItsNeighbourAlone) {
  ForEachRow([](const Row& row) {
    if (TakesEveryElement(row)) return;
    CTables tables;
    tables.Add(row.make(), row.unset);
    AddNeighbour(tables);
    ExpectRoundTrip(tables, "<r>" + std::string(row.children) + "<z>0</z></r>");
  });
}

TEST(ElementInfoSeq, MemberOfAGroupReadsWhatItWrites) {
  ForEachRow([](const Row& row) {
    CTables group(XmlElementGroupType_Sequence, kPseudo);
    group.Add(row.make(), row.unset);
    for (const bool mandatory : {true, false}) {
      CTables alone;
      AddGroup(alone, group, mandatory);
      ExpectRoundTrip(alone, "<r>" + std::string(row.children) + "</r>");
      if (TakesEveryElement(row)) continue;
      CTables withNeighbour;
      AddGroup(withNeighbour, group, mandatory);
      AddNeighbour(withNeighbour);
      ExpectRoundTrip(withNeighbour, "<r>" + std::string(row.children) + "<z>0</z></r>");
    }
  });
}

TEST(ElementInfoSeq, GroupThatDoesNotFindItsMemberIsNotThere) {
  ForEachRow([](const Row& row) {
    if (TakesAnyElement(row)) return;
    CTables group(XmlElementGroupType_Sequence, kPseudo);
    group.Add(row.make(), row.unset);
    CTables tables;
    AddGroup(tables, group, false);
    AddNeighbour(tables);
    ExpectRoundTrip(tables, "<r><z>0</z></r>");
  });
}

// The member takes its children, and then the next one of the group is not there.
TEST(ElementInfoSeq, GroupThatIsNotFinishedGivesBackWhatItsMemberTook) {
  ForEachRow([](const Row& row) {
    if (TakesEveryElement(row)) return;
    CTables group(XmlElementGroupType_Sequence, kPseudo);
    group.Add(row.make(), row.unset);
    group.Add(Prim<CElementInfoSeqPrimMnd>("y", 1), Unset::Value);
    CTables tables;
    AddGroup(tables, group, false);
    tables.Add(new CElementInfoSeqUntpdCol("AnyElement", "", 1),
               Unset::Collection([]() -> CXmlCollectionBase* {
                 return new CElementCol("", "##any", "", 0, -1);
               }));
    Object object(new CTableObject(tables));
    const std::string finished = "<r>" + std::string(row.children) + "<y>0</y></r>";
    object->FromXml(finished.c_str());
    EXPECT_NE(nullptr, object->ObjectAt(0));
    EXPECT_EQ(finished, Text(*object));
    const std::string unfinished = "<r>" + std::string(row.children) + "<x>0</x></r>";
    object->FromXml(unfinished.c_str());
    EXPECT_EQ(nullptr, object->ObjectAt(0));
    EXPECT_EQ(unfinished, Text(*object));
  });
}

TEST(ElementInfoSeq, NoMemberCanBeValidated) {
  ForEachRow([](const Row& row) {
    CTrial trial(row.make(), row.unset);
    for (const bool found : {true, false}) {
      EXPECT_QZ_THROW(CQzException, "Not implemented, should never be called",
                      trial.member().Validate({}, &trial.object(), found, true));
    }
  });
}

TEST(ElementInfoSeq, FacetsAreForPrimitivesAlone) {
  QzVariant value;
  value.SetString("x");
  ForEachRow([&value](const Row& row) {
    CTrial trial(row.make(), row.unset);
    if (std::string(row.name).rfind("PrimMnd", 0) == 0 || std::string(row.name) == "PrimOpt") {
      EXPECT_NO_THROW(trial.member().CheckRestriction(value));
    } else {
      EXPECT_QZ_THROW(CQzException, "Cannot CheckRestriction for type: string",
                      trial.member().CheckRestriction(value));
    }
  });
}
