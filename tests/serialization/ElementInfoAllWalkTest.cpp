#include <algorithm>

#include "qzxml/serialization/ElementInfoAll.h"
#include "qzxml/serialization/ElementInfoSeq.h"
#include "tests/support/ClassTrial.h"
#include "tests/support/MemberTrial.h"
#include "tests/support/QzTest.h"
#include "tests/support/RecordingObject.h"

// Whole classes of the model group xs:all, as a real element and as a group of an enclosing class.

using namespace QzXmlLib16;
using namespace QzXmlLib16Data;
using namespace qztest;

namespace {

// The children that the members of the classes below stand for.
const char* const kPieces[] = {"<p>1</p>", "<e>green</e>", "<c><x>2</x></c>", "<s>3</s>",
                               "<u><v/></u>"};
const char* const kNames[] = {"p", "e", "c", "s", "u"};
const char kAll[] = "<p>1</p><e>green</e><c><x>2</x></c><s>3</s><u><v/></u>";

// A class with a member of each kind: all of them mandatory or all optional.
struct EachKind {
  EachKind(XmlElementType type, bool mandatory) : tables(XmlElementGroupType_All, type) {
    child.name = "c";
    child.Add(Prim<CElementInfoSeqPrimOpt>("x", 0), Unset::Value);
    shape.name = "s";
    shape.textIndex = 0;
    shape.textType = ItemType_string;
    shape.AddProperty(Unset::Value);
    if (mandatory) {
      AddMandatory();
    } else {
      AddOptional();
    }
  }

  void AddMandatory() {
    tables.Add(Prim<CElementInfoAllPrimMnd>("p", 0), Unset::Value);
    tables.Add(Enum<CElementInfoAllEnumMnd>("e", 1), Unset::Value);
    tables.Add(new CElementInfoAllClsMnd("c", "", 2, kReal, nullptr, 0, false),
               HeldObject(child, "c"));
    tables.Add(new CElementInfoAllAbsClsMnd("s", "", 3, kReal, &MakeRecordingObjectByName),
               Unset::Object);
    tables.Add(new CElementInfoAllUntpdMnd("u", "", 4, "##local", ""), HeldElement("u", "##local"));
  }

  void AddOptional() {
    tables.Add(Prim<CElementInfoAllPrimOpt>("p", 0), Unset::Value);
    tables.Add(Enum<CElementInfoAllEnumOpt>("e", 1), Unset::Value);
    tables.Add(new CElementInfoAllClsOpt("c", "", 2, kReal, &MakeRecordingObject, child.id()),
               Unset::Object);
    tables.Add(new CElementInfoAllAbsClsOpt("s", "", 3, kReal, &MakeRecordingObjectByName),
               Unset::Object);
    tables.Add(new CElementInfoAllUntpdOpt("u", "", 4, "##local", ""), Unset::Object);
  }

  CMadeTables child, shape;
  CTables tables;
};

// All pieces but one, from left to right.
std::string Without(std::size_t left) {
  std::string children;
  for (std::size_t i = 0; i < 5; ++i) children += i != left ? kPieces[i] : "";
  return children;
}

std::string InR(const std::string& children) { return "<r>" + children + "</r>"; }

// A sequence of that group, which is an xs:all of <a> and <b>, and an optional <z>.
enum class GroupMember { Optional, Mandatory, MandatoryWithContent };
struct Sequence {
  Sequence(GroupMember kind, CElementInfo* a, CElementInfo* b)
      : group(XmlElementGroupType_All, kPseudo) {
    group.Add(a, Unset::Value).Add(b, Unset::Value);
    if (kind == GroupMember::Optional) {
      tables.Add(new CElementInfoSeqClsOpt("g", "", 0, kPseudo, &MakeTableObject, group.id()),
                 Unset::Object);
    } else {
      tables.Add(new CElementInfoSeqClsMnd("g", "", 0, kPseudo, nullptr, 0,
                                           kind == GroupMember::MandatoryWithContent),
                 HeldObject(group, "g"));
    }
    tables.Add(Prim<CElementInfoSeqPrimOpt>("z", 1), Unset::Value);
  }
  CTables group, tables;
};

CElementInfo* MndA() { return Prim<CElementInfoAllPrimMnd>("a", 0); }
CElementInfo* MndB() { return Prim<CElementInfoAllPrimMnd>("b", 1); }
CElementInfo* OptB() { return Prim<CElementInfoAllPrimOpt>("b", 1); }

}  // namespace

// --- A real element

TEST(ElementInfoAllWalk, ChildrenAreReadInAnyOrderAndWrittenInThatOfTheTable) {
  for (const bool mandatory : {true, false}) {
    for (const XmlElementType type : {kReal, kPseudo}) {
      const EachKind each(type, mandatory);
      CClassTrial trial(each.tables);
      const std::string expected = "at end, " + (type == kReal ? InR(kAll) : kAll);
      std::vector<std::size_t> order = {0, 1, 2, 3, 4};
      int orders = 0;
      do {
        std::string children;
        for (const std::size_t i : order) children += kPieces[i];
        EXPECT_EQ(expected, trial.Read(children)) << children;
        ++orders;
      } while (std::next_permutation(order.begin(), order.end()));
      EXPECT_EQ(120, orders);
    }
  }
}

TEST(ElementInfoAllWalk, MissingMandatoryChildIsNamedWithThePathOfTheElement) {
  const EachKind each(kReal, true);
  CClassTrial trial(each.tables);
  const std::string expected[] = {MandatoryIsMissing("p"), MandatoryIsMissing("e"),
                                  // Meant: the object of a class is there in any case.
                                  "at end, <r><p>1</p><e>green</e><c/><s>3</s><u><v/></u></r>",
                                  MandatoryIsMissing("s"), MandatoryIsMissing("u")};
  for (std::size_t i = 0; i < 5; ++i) {
    EXPECT_EQ(expected[i], trial.Read(Without(i)));
    EXPECT_EQ(expected[i], trial.Read(Without(i), Flagged(kMissingMandatory)));
    EXPECT_EQ(expected[i], trial.Read(Without(i), Flagged(kUnknownElements)));
  }
  EXPECT_EQ(MandatoryIsMissing("p"), trial.Read(""));
}

TEST(ElementInfoAllWalk, MissingOptionalChildIsNotWritten) {
  const EachKind each(kReal, false);
  CClassTrial trial(each.tables);
  for (std::size_t i = 0; i < 5; ++i) {
    EXPECT_EQ("at end, " + InR(Without(i)), trial.Read(Without(i)));
  }
  EXPECT_EQ("at end, <r/>", trial.Read(""));
}

TEST(ElementInfoAllWalk, SecondElementOfAMemberIsLeftOver) {
  const EachKind mandatory(kReal, true);
  const EachKind optional(kReal, false);
  for (std::size_t i = 0; i < 5; ++i) {
    const std::string last = std::string(kAll) + kPieces[i];
    EXPECT_EQ(LeftOver(kNames[i]), CClassTrial(mandatory.tables).Read(last));
    EXPECT_EQ(LeftOver(kNames[i]), CClassTrial(optional.tables).Read(last));
    // The walk does not get past the second one, so the others are missing.
    const std::string first = std::string(kPieces[i]) + kPieces[i] + Without(i);
    EXPECT_EQ(MandatoryIsMissing(i == 0 ? "e" : "p"), CClassTrial(mandatory.tables).Read(first));
    EXPECT_EQ(LeftOver(kNames[i]), CClassTrial(optional.tables).Read(first));
  }
}

TEST(ElementInfoAllWalk, ChildInAnotherNamespaceIsAnotherElement) {
  for (const char* name : kNames) {
    const std::string other = std::string("<o:") + name + "/>";
    const EachKind mandatory(kReal, true);
    EXPECT_EQ(MandatoryIsMissing("p"), CClassTrial(mandatory.tables).Read(other));
    const EachKind optional(kReal, false);
    EXPECT_EQ(LeftOver(name), CClassTrial(optional.tables).Read(other));
  }
  const EachKind optional(kReal, false);
  EXPECT_EQ("at end, <r><p>1</p><c/></r>",
            CClassTrial(optional.tables).Read("<o:c/><o:p>1</o:p>", Flagged(kNamespaces)));
}

TEST(ElementInfoAllWalk, UnknownElementEndsTheReadingWhereItIsIgnored) {
  const EachKind optional(kReal, false);
  CClassTrial(optional.tables)
      .Expect({{"<s>3</s><x/><p>1</p>", {}, LeftOver("x")},
               {"<s>3</s><x/><p>1</p>", Flagged(kUnknownElements), "at x, <r><s>3</s></r>"},
               {"<x/>", Flagged(kUnknownElements), "at x, <r/>"}});
  const EachKind mandatory(kReal, true);
  EXPECT_EQ(
      MandatoryIsMissing("e"),
      CClassTrial(mandatory.tables).Read("<p>1</p><x/><e>green</e>", Flagged(kUnknownElements)));
}

TEST(ElementInfoAllWalk, UnsetMandatoryPropertyFailsInThatOfTheElement) {
  const EachKind each(kReal, true);
  CClassTrial trial(each.tables);
  trial.Renew();
  EXPECT_EQ(
      "CQzValidationException: Failed to convert the element [r] to XML\n"
      "The Property [p] is mandatory, it may not be NULL",
      trial.Write());
  EXPECT_QZ_THROW_FULL(CQzValidationException,
                       "Failed to convert the element [r] to XML\n"
                       "The Property [p] is mandatory, it may not be NULL",
                       "", Text(trial.object()));
}

TEST(ElementInfoAllWalk, MembersFoundAreNotOfferedMore) {
  CMadeTables child;
  child.AddProperty(Unset::Value);
  CTables tables(XmlElementGroupType_All);
  tables.Add(new CElementInfoAllClsOpt("c", "", 0, kReal, &MakeRecordingObject, child.id()),
             Unset::Object);
  tables.Add(Prim<CElementInfoAllPrimOpt>("p", 1), Unset::Value);
  const CSmartPtr<CRecordingObject> object(new CRecordingObject(tables));
  CRecord record;
  EXPECT_THROW(object->FromXml("<r><p>1</p><c/><c/></r>"), CQzException);
  EXPECT_EQ((std::vector<std::string>{"r init", "r takes 1 1", "c init", "r takes 0 <c> empty"}),
            record.Take());
}

TEST(ElementInfoAllWalk, GroupWithoutContentFailsInARealElement) {
  CTables group(XmlElementGroupType_Sequence, kPseudo);
  group.Add(Prim<CElementInfoSeqPrimOpt>("x", 0), Unset::Value);
  for (const bool requiresContent : {false, true}) {
    CTables tables(XmlElementGroupType_All);
    tables.Add(new CElementInfoAllClsMnd("g", "", 0, kPseudo, nullptr, 0, requiresContent),
               HeldObject(group, "g"));
    tables.Add(Prim<CElementInfoAllPrimOpt>("p", 1), Unset::Value);
    CClassTrial(tables).Expect({{"<x>1</x><p>2</p>", {}, "at end, <r><x>1</x><p>2</p></r>"},
                                {"<p>2</p><x>1</x>", {}, "at end, <r><x>1</x><p>2</p></r>"},
                                {"<p>2</p>", {}, MandatoryIsMissing("g")},
                                {"", {}, MandatoryIsMissing("g")}});
  }
}

TEST(ElementInfoAllWalk, RealChildThatMustHaveContentMustBeThere) {
  CTables child;
  child.Add(Prim<CElementInfoSeqPrimOpt>("x", 0), Unset::Value);
  CTables tables(XmlElementGroupType_All);
  tables.Add(new CElementInfoAllClsMnd("c", "", 0, kReal, nullptr, 0, true),
             HeldObject(child, "c"));
  CClassTrial(tables).Expect({{"", {}, MandatoryIsMissing("c")},
                              {"", Flagged(kMissingMandatory), MandatoryIsMissing("c")},
                              {"<c/>", {}, "at end, <r><c/></r>"}});
}

TEST(ElementInfoAllWalk, NilObjectKeepsNothingOfItsContent) {
  CMadeTables child;
  child.Add(Prim<CElementInfoSeqPrimMnd>("x", 0), Unset::Value);
  CTables tables(XmlElementGroupType_All);
  tables.Add(new CElementInfoAllClsOpt("c", "", 0, kReal, &MakeNillableObject, child.id()),
             Unset::Object);
  CClassTrial(tables).Expect(
      {{"<c xsi:nil='true'><y/></c>",
        {},
        "at end, <r><c xmlns:AA=\"" + std::string(kXsi) + "\" AA:nil=\"true\"/></r>"},
       {"<c xsi:nil='false'><x>1</x></c>", {}, "at end, <r><c><x>1</x></c></r>"}});
}

TEST(ElementInfoAllWalk, ClassWithACollectionCannotBeRead) {
  CTables item;
  struct Case {
    CElementInfo* member;
    Unset::Make property;
  };
  const Case cases[] = {
      {new CElementInfoAllCol("a", "", 0), Texts("a", 0, -1)},
      {new CElementInfoAllPrimCol("a", "", 0), Texts("a", 0, -1)},
      {new CElementInfoAllClsCol("a", "", 0, kReal), Objects(item, "a", 0, -1)},
      {new CElementInfoAllAbsClsCol("a", "", 0, kReal), Objects(item, "a", 0, -1)},
      {new CElementInfoAllUntpdCol("AnyElement", "", 0), Elements("##any", 0, -1)}};
  for (const Case& c : cases) {
    CTables tables(XmlElementGroupType_All);
    tables.Add(c.member, c.property);
    for (const char* children : {"", "<a/>"}) {
      EXPECT_EQ(
          "CQzValidationException: Failed to process the element.\nPath: /r\n"
          "Not implemented, should never be called",
          CClassTrial(tables).Read(children));
    }
  }
}

TEST(ElementInfoAllWalk, OpenContentIsMadeForTheNamespaceOfTheClass) {
  for (const char* uri : {"", "urn:p"}) {
    CTables tables(XmlElementGroupType_All);
    tables.uri = uri;
    tables.Add(new CElementInfoAllUntpdOpt("u", "", 0, "##other", ""), Unset::Object);
    const std::string expected =
        *uri == '\0' ? "at end, <r><AA:u xmlns:AA=\"urn:o\"/></r>"
                     : "CQzValidationException: Failed to process the element.\nPath: /r\n"
                       "Invalid namespace []. The namespace must be one of [##other] where the "
                       "target namespace is [].";
    EXPECT_EQ(expected, CClassTrial(tables).Read("<o:u/>"));
  }
}

// --- A group

TEST(ElementInfoAllWalk, GroupWithoutAMandatoryChildGivesTheCursorBackWithoutAFailure) {
  const EachKind each(kPseudo, true);
  CClassTrial trial(each.tables);
  const char* const kFirst[] = {"e", "p", "p", "p", "p"};
  // What was read by then stays in the object, which has nothing to write for the missing child.
  const std::string kUnwritten =
      "CQzValidationException: Failed to convert the element [r] to XML\nThe Property [";
  const std::string kNotSet = "] is mandatory, it may not be NULL";
  const std::string written[] = {kUnwritten + "p" + kNotSet, kUnwritten + "e" + kNotSet,
                                 "<p>1</p><e>green</e><c/><s>3</s><u><v/></u>",
                                 kUnwritten + "s" + kNotSet,
                                 "<p>1</p><e>green</e><c><x>2</x></c><s>3</s><u/>"};
  for (std::size_t i = 0; i < 5; ++i) {
    for (const Flag flag : {kNoFlag, kUnknownElements, kMissingMandatory}) {
      EXPECT_EQ(std::string("at ") + kFirst[i] + ", " + written[i],
                trial.Read(Without(i) + "<z/>", Flagged(flag)));
    }
  }
}

TEST(ElementInfoAllWalk, GroupLeavesWhatIsBehindItToTheEnclosingElement) {
  for (const bool mandatory : {true, false}) {
    const EachKind each(kPseudo, mandatory);
    CClassTrial trial(each.tables);
    EXPECT_EQ(std::string("at z, ") + kAll, trial.Read(std::string(kAll) + "<z/><p/>"));
    EXPECT_EQ(std::string("at z, ") + kAll,
              trial.Read(std::string(kAll) + "<z/><p/>", Flagged(kUnknownElements)));
  }
  const EachKind optional(kPseudo, false);
  EXPECT_EQ("at z, ", CClassTrial(optional.tables).Read("<z/>"));
  EXPECT_EQ("at end, ", CClassTrial(optional.tables).Read(""));
}

TEST(ElementInfoAllWalk, GroupInASequenceIsOneOfItsMembers) {
  for (const GroupMember kind :
       {GroupMember::Optional, GroupMember::Mandatory, GroupMember::MandatoryWithContent}) {
    const Sequence sequence(kind, MndA(), OptB());
    CClassTrial(sequence.tables)
        .Expect({{"<a>1</a><b>2</b><z>3</z>", {}, "at end, <r><a>1</a><b>2</b><z>3</z></r>"},
                 {"<b>2</b><a>1</a><z>3</z>", {}, "at end, <r><a>1</a><b>2</b><z>3</z></r>"},
                 {"<a>1</a><z>3</z>", {}, "at end, <r><a>1</a><z>3</z></r>"},
                 {"<a>1</a><z>3</z><b>2</b>", {}, LeftOver("b")},
                 {"<a>1</a><a>2</a>", {}, LeftOver("a")}});
  }
}

TEST(ElementInfoAllWalk, GroupInASequenceWithoutItsMandatoryChildCountsAsMissing) {
  const Sequence optional(GroupMember::Optional, MndA(), MndB());
  CClassTrial(optional.tables)
      .Expect({{"<a>1</a><z>3</z>", {}, LeftOver("a")},
               {"<b>2</b>", {}, LeftOver("b")},
               {"<z>3</z>", {}, "at end, <r><z>3</z></r>"},
               {"", {}, "at end, <r/>"}});
  const Sequence required(GroupMember::MandatoryWithContent, MndA(), MndB());
  const std::string kMissing =
      "CQzException: Failed to find the required child element [g].\nPath: /r";
  CClassTrial(required.tables)
      .Expect({{"<a>1</a><z>3</z>", {}, kMissing}, {"<z>3</z>", {}, kMissing}, {"", {}, kMissing}});
  // Without such a demand the sequence goes on, and what is missing shows when it is written.
  const Sequence lenient(GroupMember::Mandatory, MndA(), MndB());
  const std::string kUnset =
      "CQzValidationException: Failed to convert the element [r] to XML\n"
      "Failed to convert the element [g] to XML\n"
      "The Property [a] is mandatory, it may not be NULL";
  CClassTrial(lenient.tables)
      .Expect({{"<a>1</a><z>3</z>", {}, LeftOver("a")},
               {"<z>3</z>", {}, "at end, " + kUnset},
               {"", {}, "at end, " + kUnset}});
}
