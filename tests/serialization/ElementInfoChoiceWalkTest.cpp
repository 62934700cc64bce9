#include <cstring>

#include "qzxml/collections/Element.h"
#include "qzxml/serialization/ElementInfoAll.h"
#include "qzxml/serialization/ElementInfoChoice.h"
#include "qzxml/serialization/ElementInfoSeq.h"
#include "tests/support/ClassTrial.h"
#include "tests/support/MemberTrial.h"
#include "tests/support/QzTest.h"
#include "tests/support/RecordingObject.h"

// Whole classes of the model group xs:choice, as a real element and as a group of an enclosing
// class, and choices in choices.

using namespace QzXmlLib16;
using namespace QzXmlLib16Data;
using namespace qztest;

namespace {

constexpr XmlElementGroupType kChoice = XmlElementGroupType_Choice;

const char kNoneSet[] =
    "CQzValidationException: Failed to convert the element [r] to XML\n"
    "This element is a choice, and as such must have at one (and only one) valid item, currently "
    "there are none set";

CElementInfo* Prim(const char* name, int index) {
  return qztest::Prim<CElementInfoChoicePrimOpt>(name, index);
}

CElementInfo* Cls(const char* name, int index, XmlElementType type, const CTables& tables) {
  return new CElementInfoChoiceClsOpt(name, "", index, type, &MakeTableObject, tables.id());
}

// A choice with a member of every class of the family.
struct EachKind {
  explicit EachKind(XmlElementType type) : tables(kChoice, type) {
    child.Add(qztest::Prim<CElementInfoSeqPrimOpt>("x", 0), Unset::Value);
    shape.name = "s";
    shape.AddProperty(Unset::Value);
    item.Add(TextAttribute("id", 0), Unset::Value);
    tables.Add(Prim("p", 0), Unset::Value);
    tables.Add(Enum<CElementInfoChoiceEnumOpt>("e", 1), Unset::Value);
    tables.Add(Cls("c", 2, kReal, child), Unset::Object);
    tables.Add(new CElementInfoChoiceAbsClsOpt("s", "", 3, kReal, &MakeRecordingObjectByName),
               Unset::Object);
    tables.Add(new CElementInfoChoiceUntpdOpt("u", "", 4, "##local", ""), Unset::Object);
    tables.Add(new CElementInfoChoicePrimCol("pp", "", 5), Texts("pp", 1, -1));
    tables.Add(new CElementInfoChoiceEnumCol("ee", "", 6), Texts("ee", 1, -1));
    tables.Add(new CElementInfoChoiceClsCol("cc", "", 7, kReal), Objects(item, "cc", 1, -1));
    tables.Add(new CElementInfoChoiceAbsClsCol("ss", "", 8, kReal), Objects(item, "ss", 1, -1));
    tables.Add(new CElementInfoChoiceUntpdCol("uu", "", 9), Elements("##any", 1, -1));
  }
  CTables child, item;
  CMadeTables shape;
  CTables tables;
};

// What each of its members reads and writes, and the name of its element.
struct Piece {
  const char* name;
  const char* text;
};
const Piece kPieces[] = {{"p", "<p>1</p>"},
                         {"e", "<e>blue</e>"},
                         {"c", "<c><x>2</x></c>"},
                         {"s", "<s/>"},
                         {"u", "<u><v/></u>"},
                         {"pp", "<pp>1</pp><pp>2</pp>"},
                         {"ee", "<ee>red</ee><ee>red</ee>"},
                         {"cc", "<cc id=\"1\"/><cc id=\"2\"/>"},
                         {"ss", "<ss id=\"1\"/><ss id=\"2\"/>"},
                         {"uu", "<uu/><uu>3</uu>"}};

std::string InR(const std::string& children) { return "<r>" + children + "</r>"; }

// A choice with a mandatory collection alone: nothing in it is optional.
struct NothingOptional {
  explicit NothingOptional(XmlElementType type) : tables(kChoice, type) {
    tables.Add(new CElementInfoChoicePrimCol("a", "", 0), Texts("a", 1, -1));
    tables.Add(new CElementInfoChoicePrimCol("b", "", 1), Texts("b", 2, -1));
  }
  CTables tables;
};

}  // namespace

// --- A real element

TEST(ElementInfoChoiceWalk, MemberOfEveryKindIsReadAndWritten) {
  const EachKind real(kReal), group(kPseudo);
  CClassTrial inReal(real.tables), inGroup(group.tables);
  for (const Piece& piece : kPieces) {
    EXPECT_EQ("at end, " + InR(piece.text), inReal.Read(piece.text));
    EXPECT_EQ(std::string("at end, ") + piece.text, inGroup.Read(piece.text));
    EXPECT_EQ(std::string("at z, ") + piece.text, inGroup.Read(std::string(piece.text) + "<z/>"));
  }
}

TEST(ElementInfoChoiceWalk, OnlyOneMemberIsTaken) {
  const EachKind real(kReal), group(kPseudo);
  CClassTrial inReal(real.tables), inGroup(group.tables);
  for (const Piece& first : kPieces) {
    for (const Piece& second : kPieces) {
      if (&first == &second) continue;
      const std::string both = std::string(first.text) + second.text;
      EXPECT_EQ(LeftOver(second.name), inReal.Read(both));
      const std::string stopped = inGroup.Read(both);
      EXPECT_EQ(std::string("at ") + second.name, stopped.substr(0, 3 + std::strlen(second.name)));
      EXPECT_NE(std::string::npos, stopped.find(std::string(", ") + first.text)) << stopped;
    }
  }
}

TEST(ElementInfoChoiceWalk, SecondElementOfAMemberIsLeftOverUnlessItIsACollection) {
  const EachKind real(kReal);
  for (std::size_t i = 0; i < 10; ++i) {
    const std::string twice = std::string(kPieces[i].text) + kPieces[i].text;
    EXPECT_EQ(i < 5 ? LeftOver(kPieces[i].name) : "at end, " + InR(twice),
              CClassTrial(real.tables).Read(twice));
  }
}

TEST(ElementInfoChoiceWalk, ChildInAnotherNamespaceIsAnotherElement) {
  const EachKind real(kReal), group(kPseudo);
  for (std::size_t i = 0; i < 9; ++i) {
    const std::string other = std::string("<o:") + kPieces[i].name + "/>";
    EXPECT_EQ(LeftOver(kPieces[i].name), CClassTrial(real.tables).Read(other));
    EXPECT_EQ(std::string("at o:") + kPieces[i].name + ", ", CClassTrial(group.tables).Read(other));
  }
  // Open content in many takes the namespace that it meets.
  EXPECT_EQ("at end, <r><AA:uu xmlns:AA=\"urn:o\"/></r>", CClassTrial(real.tables).Read("<o:uu/>"));
  EXPECT_EQ("at end, <r><c/></r>", CClassTrial(real.tables).Read("<o:c/>", Flagged(kNamespaces)));
}

TEST(ElementInfoChoiceWalk, EmptyElementPassesWithAnOptionalMember) {
  const EachKind real(kReal), group(kPseudo);
  CClassTrial(real.tables)
      .Expect({{"", {}, "at end, <r/>"},
               {"<z/>", {}, LeftOver("z")},
               {"<z/>", Flagged(kMissingChoice), LeftOver("z")}});
  CClassTrial(group.tables).Expect({{"", {}, "at end, "}, {"<z/>", {}, "at z, "}});
}

TEST(ElementInfoChoiceWalk, NothingChosenFailsUnlessTheContextAcceptsIt) {
  const NothingOptional real(kReal), group(kPseudo);
  const CSerializationContext ignoring = Flagged(kMissingChoice);
  CClassTrial inReal(real.tables);
  inReal.Expect({{"", {}, NothingChosen("r", "/r")},
                 {"<z/>", {}, NothingChosen("r", "/r")},
                 {"", ignoring, "at end, <r/>"},
                 {"<z/>", ignoring, LeftOver("z")},
                 {"<a>1</a>", {}, "at end, <r><a>1</a></r>"}});
  EXPECT_EQ("at end, " + std::string(kNoneSet), inReal.Read("", {}, true));
  inReal.Renew();
  EXPECT_EQ(kNoneSet, inReal.Write());
  EXPECT_EQ("<r/>", inReal.Write(ignoring));
  EXPECT_QZ_THROW_FULL(CQzValidationException,
                       "Failed to convert the element [r] to XML\n"
                       "This element is a choice, and as such must have at one (and only one) "
                       "valid item, currently there are none set",
                       "", Text(inReal.object()));
  CClassTrial(group.tables)
      .Expect({{"", ignoring, "at end, "},
               {"<z/>", ignoring, "at z, "},
               {"", {}, "at end, " + std::string(kNoneSet)},
               {"<z/>", {}, "at z, " + std::string(kNoneSet)}});
}

TEST(ElementInfoChoiceWalk, UnknownElementsInFrontOfTheMemberAreSkippedInARealElement) {
  const EachKind real(kReal), group(kPseudo);
  const CSerializationContext ignoring = Flagged(kUnknownElements);
  for (const Piece& piece : kPieces) {
    const std::string behind = std::string("<z/><z/>") + piece.text;
    EXPECT_EQ("at end, " + InR(piece.text), CClassTrial(real.tables).Read(behind, ignoring));
    EXPECT_EQ("at z, " + InR(piece.text),
              CClassTrial(real.tables).Read(behind + "<z/>", ignoring).replace(4, 3, ""));
    EXPECT_EQ("at z[1], ", CClassTrial(group.tables).Read(behind, ignoring));
  }
  const NothingOptional strict(kReal);
  CClassTrial(strict.tables)
      .Expect({{"<z/><z/>", ignoring, NothingChosen("r", "/r")},
               {"<z/><a>1</a>", ignoring, "at end, <r><a>1</a></r>"},
               {"", ignoring, NothingChosen("r", "/r")}});
}

TEST(ElementInfoChoiceWalk, CollectionOutsideItsLimits) {
  CTables group(kChoice, kPseudo), real(kChoice);
  for (CTables* tables : {&group, &real}) {
    tables->Add(new CElementInfoChoicePrimCol("a", "", 0), Texts("a", 2, 3));
    tables->Add(qztest::Prim<CElementInfoChoicePrimOpt>("a", 1), Unset::Value);
  }
  CClassTrial inReal(real);
  const std::string limit = "] elements allowed in this collection is ";
  inReal.Expect({{"<a>1</a>",
                  {},
                  "CQzValidationException: Failed to process the element.\nPath: /r\n"
                  "The Minimum number of [a" +
                      limit + "2"},
                 {"<a/><a/><a/><a/>",
                  {},
                  "CQzValidationException: Failed to process the element.\nPath: /r\n"
                  "The Maximum number of [a" +
                      limit + "3"},
                 {"<a>1</a>", Flagged(kCollectionCounts), "at end, <r><a>1</a></r>"}});
  // In a group the next member has a try at the same element.
  CClassTrial inGroup(group);
  EXPECT_EQ("at z, <a>1</a>", inGroup.Read("<a>1</a><z/>"));
  EXPECT_EQ("1", inGroup.object().TextOf(1));
  EXPECT_EQ("at z, <a>1</a><a>2</a>", inGroup.Read("<a>1</a><a>2</a><z/>"));
  EXPECT_EQ("(unset)", inGroup.object().TextOf(1));
}

TEST(ElementInfoChoiceWalk, WritingStopsAtTheFirstMemberThatIsSet) {
  CTables child;
  CTables tables(kChoice);
  tables.Add(Prim("p", 0), Unset::Value);
  tables.Add(Cls("c", 1, kReal, child), Unset::Object);
  tables.Add(Prim("q", 2), Unset::Value);
  const CSmartPtr<CRecordingObject> object(new CRecordingObject(tables));
  object->Set(1, new CTableObject(child, "c"));
  object->Set(2, "2");
  CRecord record;
  EXPECT_EQ("<r><c/></r>", Text(*object));
  EXPECT_EQ((std::vector<std::string>{"r gives 0", "r gives 1"}), record.Take());
}

TEST(ElementInfoChoiceWalk, NilObjectIsAMemberLikeAnyOther) {
  CMadeTables child;
  child.Add(qztest::Prim<CElementInfoSeqPrimMnd>("x", 0), Unset::Value);
  CTables tables(kChoice);
  tables.Add(new CElementInfoChoiceClsOpt("c", "", 0, kReal, &MakeNillableObject, child.id()),
             Unset::Object);
  tables.Add(Prim("p", 1), Unset::Value);
  CClassTrial(tables).Expect(
      {{"<c xsi:nil='true'><y/></c>",
        {},
        "at end, <r><c xmlns:AA=\"" + std::string(kXsi) + "\" AA:nil=\"true\"/></r>"},
       {"<c xsi:nil='0'><x>1</x></c>", {}, "at end, <r><c><x>1</x></c></r>"},
       {"<c xsi:nil='yes'/>",
        {},
        "CQzException: Unexpected Value [yes] for 'nil' Attribute found.\nPath: /r/c/xsi:@nil"},
       {"<c xsi:nil='1'/><p/>", {}, LeftOver("p")}});
}

TEST(ElementInfoChoiceWalk, OpenContentIsMadeForTheNamespaceOfTheClass) {
  for (const char* uri : {"", "urn:p"}) {
    CTables tables(kChoice);
    tables.uri = uri;
    tables.Add(new CElementInfoChoiceUntpdOpt("u", "", 0, "##other", ""), Unset::Object);
    const std::string expected =
        *uri == '\0' ? "at end, <r><AA:u xmlns:AA=\"urn:o\"/></r>"
                     : "CQzValidationException: Failed to process the element.\nPath: /r\n"
                       "Invalid namespace []. The namespace must be one of [##other] where the "
                       "target namespace is [].";
    EXPECT_EQ(expected, CClassTrial(tables).Read("<o:u/>"));
  }
}

// --- Choices in other classes

TEST(ElementInfoChoiceWalk, GroupInASequenceIsOneOfItsMembers) {
  const EachKind group(kPseudo);
  CTables tables;
  tables.Add(qztest::Prim<CElementInfoSeqPrimOpt>("first", 0), Unset::Value);
  tables.Add(new CElementInfoSeqClsOpt("g", "", 1, kPseudo, &MakeTableObject, group.tables.id()),
             Unset::Object);
  tables.Add(qztest::Prim<CElementInfoSeqPrimOpt>("last", 2), Unset::Value);
  CClassTrial trial(tables);
  for (const Piece& piece : kPieces) {
    const std::string children = std::string("<first>1</first>") + piece.text + "<last>2</last>";
    EXPECT_EQ("at end, " + InR(children), trial.Read(children));
  }
  trial.Expect(
      {{"<first>1</first><last>2</last>", {}, "at end, <r><first>1</first><last>2</last></r>"},
       {"<p>1</p><e>red</e><last>2</last>", {}, LeftOver("e")},
       {"<last>2</last><p>1</p>", {}, LeftOver("p")}});
}

TEST(ElementInfoChoiceWalk, GroupWithNothingChosenCountsAsMissing) {
  const NothingOptional group(kPseudo);
  CTables required, lenient;
  for (const bool requiresContent : {true, false}) {
    (requiresContent ? required : lenient)
        .Add(new CElementInfoSeqClsMnd("g", "", 0, kPseudo, nullptr, 0, requiresContent),
             HeldObject(group.tables, "g"));
  }
  const std::string kMissing =
      "CQzException: Failed to find the required child element [g].\nPath: /r";
  CClassTrial(required).Expect({{"<a>1</a>", {}, "at end, <r><a>1</a></r>"},
                                {"<b>1</b><b>2</b>", {}, "at end, <r><b>1</b><b>2</b></r>"},
                                {"<b>1</b>", {}, kMissing},
                                {"<z/>", {}, kMissing},
                                {"", {}, kMissing}});
  const std::string kEmpty =
      "CQzValidationException: Failed to convert the element [r] to XML\n"
      "Failed to convert the element [g] to XML\n"
      "This element is a choice, and as such must have at one (and only one) valid item, currently "
      "there are none set";
  CClassTrial(lenient).Expect({{"<z/>", {}, LeftOver("z")}, {"", {}, "at end, " + kEmpty}});
}

TEST(ElementInfoChoiceWalk, ChoicesInAChoiceAreTriedOneBehindTheOther) {
  CTables first(XmlElementGroupType_Sequence, kPseudo), second(kChoice, kPseudo),
      third(XmlElementGroupType_All, kPseudo);
  first.Add(qztest::Prim<CElementInfoSeqPrimMnd>("a", 0), Unset::Value);
  first.Add(qztest::Prim<CElementInfoSeqPrimMnd>("b", 1), Unset::Value);
  second.Add(Prim("c", 0), Unset::Value).Add(Prim("d", 1), Unset::Value);
  third.Add(qztest::Prim<CElementInfoAllPrimMnd>("e", 0), Unset::Value);
  third.Add(qztest::Prim<CElementInfoAllPrimMnd>("a", 1), Unset::Value);
  for (const XmlElementType type : {kReal, kPseudo}) {
    CTables tables(kChoice, type);
    tables.Add(Cls("g1", 0, kPseudo, first), Unset::Object);
    tables.Add(Cls("g2", 1, kPseudo, second), Unset::Object);
    tables.Add(Cls("g3", 2, kPseudo, third), Unset::Object);
    CClassTrial trial(tables);
    for (const char* children : {"<a>1</a><b>2</b>", "<d>3</d>", "<c>4</c>", "<e>5</e><a>6</a>"}) {
      EXPECT_EQ("at end, " + (type == kReal ? InR(children) : children), trial.Read(children));
    }
    // The first group gives <a> back, and the third one takes it.
    const std::string turned = "<e>5</e><a>6</a>";
    EXPECT_EQ("at end, " + (type == kReal ? InR(turned) : turned), trial.Read("<a>6</a><e>5</e>"));
    EXPECT_EQ(type == kReal ? "at end, <r/>" : "at end, ", trial.Read(""));
    EXPECT_EQ(type == kReal ? LeftOver("a") : "at a, ", trial.Read("<a>1</a>"));
    EXPECT_EQ(type == kReal ? LeftOver("d") : "at d, <c>4</c>", trial.Read("<c>4</c><d>3</d>"));
  }
}

TEST(ElementInfoChoiceWalk, ChoiceInAnElementOfAChoice) {
  CTables inner(kChoice);
  inner.Add(Prim("x", 0), Unset::Value).Add(Prim("y", 1), Unset::Value);
  CTables middle(kChoice);
  middle.Add(Cls("inner", 0, kReal, inner), Unset::Object).Add(Prim("z", 1), Unset::Value);
  CTables outer(kChoice);
  outer.Add(Cls("middle", 0, kReal, middle), Unset::Object);
  const auto same = [](const char* children) {
    return Reading{children, {}, "at end, " + InR(children)};
  };
  CClassTrial(outer).Expect(
      {same("<middle><inner><y>1</y></inner></middle>"),
       same("<middle><inner/></middle>"),
       same("<middle><z>1</z></middle>"),
       same("<middle/>"),
       {"<middle><inner><y>1</y><x>2</x></inner></middle>",
        {},
        "CQzException: Failed read all the elements held within the element [inner]. The "
        "unexpected element [x] remains un processed\nPath: /r/middle/inner"}});
}

// --- What makes a choice optional

namespace {

// A member, and whether a choice of it alone may stay empty.
struct Optional {
  const char* name;
  CElementInfo* member;
  Unset::Make property;
  bool expected;
};

CElementInfo* NewCol(const std::string& name) {
  if (name == "Prim") return new CElementInfoChoicePrimCol("a", "", 0);
  if (name == "Enum") return new CElementInfoChoiceEnumCol("a", "", 0);
  if (name == "Cls") return new CElementInfoChoiceClsCol("a", "", 0, kReal);
  if (name == "AbsCls") return new CElementInfoChoiceAbsClsCol("a", "", 0, kPseudo);
  return new CElementInfoChoiceUntpdCol("a", "", 0);
}

bool MayStayEmpty(const Optional& it) {
  CTables tables(kChoice);
  tables.Add(it.member, it.property);
  return CSmartPtr<CTableObject>(new CTableObject(tables))->DoesElementContainOptionalElements();
}

}  // namespace

TEST(ElementInfoChoiceWalk, ChoiceIsOptionalThroughItsCollectionsWithoutAMinimum) {
  for (const char* name : {"Prim", "Enum", "Cls", "AbsCls", "Untpd"}) {
    EXPECT_TRUE(MayStayEmpty({name, NewCol(name), Texts("a", 0, 5), true})) << name;
    EXPECT_FALSE(MayStayEmpty({name, NewCol(name), Texts("a", 1, 5), false})) << name;
    EXPECT_FALSE(MayStayEmpty({name, NewCol(name), Texts("a", 2, -1), false})) << name;
  }
}

TEST(ElementInfoChoiceWalk, MembersOfOtherModelGroupsDoNotMakeAChoiceOptional) {
  CTables child;
  const Unset::Make none = Texts("a", 0, -1);
  const Optional cases[] = {
      {"SeqPrimOpt", qztest::Prim<CElementInfoSeqPrimOpt>("a", 0), Unset::Value, false},
      {"SeqEnumOpt", Enum<CElementInfoSeqEnumOpt>("a", 0), Unset::Value, false},
      {"SeqClsOpt", new CElementInfoSeqClsOpt("a", "", 0, kReal, nullptr, 0), Unset::Object, false},
      {"SeqAbsClsOpt", new CElementInfoSeqAbsClsOpt("a", "", 0, kReal, nullptr), Unset::Object,
       false},
      {"SeqUntpdOpt", new CElementInfoSeqUntpdOpt("a", "", 0, "##any", ""), Unset::Object, false},
      {"SeqPrimCol", new CElementInfoSeqPrimCol("a", "", 0), none, false},
      {"SeqEnumCol", new CElementInfoSeqEnumCol("a", "", 0), none, false},
      {"SeqClsCol", new CElementInfoSeqClsCol("a", "", 0, kReal), none, false},
      {"SeqAbsClsCol", new CElementInfoSeqAbsClsCol("a", "", 0, kReal), none, false},
      {"SeqUntpdCol", new CElementInfoSeqUntpdCol("a", "", 0), none, false},
      {"AllPrimOpt", qztest::Prim<CElementInfoAllPrimOpt>("a", 0), Unset::Value, false},
      {"AllEnumOpt", Enum<CElementInfoAllEnumOpt>("a", 0), Unset::Value, false},
      {"AllClsOpt", new CElementInfoAllClsOpt("a", "", 0, kReal, nullptr, 0), Unset::Object, false},
      {"AllAbsClsOpt", new CElementInfoAllAbsClsOpt("a", "", 0, kReal, nullptr), Unset::Object,
       false},
      {"AllUntpdOpt", new CElementInfoAllUntpdOpt("a", "", 0, "##any", ""), Unset::Object, false},
      {"AllPrimCol", new CElementInfoAllPrimCol("a", "", 0), none, false},
      {"ChoiceCol", new CElementInfoChoiceCol("a", "", 0), none, false}};
  for (const Optional& it : cases) EXPECT_EQ(it.expected, MayStayEmpty(it)) << it.name;
}

TEST(ElementInfoChoiceWalk, MemberOfADerivedClassCountsAsItsBase) {
  struct COwnPrimOpt : CElementInfoChoicePrimOpt {
    COwnPrimOpt()
        : CElementInfoChoicePrimOpt("a", "", 0, false, ItemType_string, nullptr,
                                    CWhitespaceUtils::WhitespaceRule_None, CPrimitiveRestrictions(),
                                    nullptr) {}
  };
  EXPECT_TRUE(MayStayEmpty({"own", new COwnPrimOpt, Unset::Value, true}));
}

TEST(ElementInfoChoiceWalk, OptionalMembersAreLookedForInTheOrderOfTheTable) {
  CTables tables(kChoice);
  tables.Add(new CElementInfoChoicePrimCol("a", "", 0), Texts("a", 1, -1));
  tables.Add(new CElementInfoChoicePrimCol("b", "", 1), Texts("b", 0, -1));
  tables.Add(new CElementInfoChoicePrimCol("c", "", 2), Texts("c", 0, -1));
  const CSmartPtr<CRecordingObject> object(new CRecordingObject(tables));
  CRecord record;
  EXPECT_TRUE(object->DoesElementContainOptionalElements());
  EXPECT_EQ((std::vector<std::string>{"r gives 0", "r gives 1"}), record.Take());
  EXPECT_EQ("<r/>", Text(*object, Flagged(kMissingChoice)));  // asked before the flag is
  EXPECT_EQ(
      (std::vector<std::string>{"r gives 0", "r gives 1", "r gives 2", "r gives 0", "r gives 1"}),
      record.Take());
}
