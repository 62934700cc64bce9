#include "qzxml/serialization/ElementInfoAll.h"
#include "qzxml/serialization/ElementInfoChoice.h"
#include "qzxml/serialization/ElementInfoSeq.h"
#include "qzxml/xml/XmlElement.h"
#include "tests/support/AtCursor.h"
#include "tests/support/ClassTrial.h"
#include "tests/support/MemberTrial.h"
#include "tests/support/QzTest.h"
#include "tests/support/RecordingObject.h"

// The members of an xs:choice that are classes: what they take, when they select their property,
// and which of them lets a nested choice stay empty.

using namespace QzXmlLib16;
using namespace QzXmlLib16Data;
using namespace qztest;

namespace {

using Calls = std::vector<std::string>;

constexpr XmlElementType kNeither = static_cast<XmlElementType>(2);
const char kNoneSet[] =
    "This element is a choice, and as such must have at one (and only one) valid item, currently "
    "there are none set";

// <a id="...">, with an optional <x> and a text of its own.
struct Child {
  Child() {
    tables.name = "a";
    tables.Add(TextAttribute("id", 0), Unset::Value);
    tables.Add(Prim<CElementInfoSeqPrimOpt>("x", 1), Unset::Value);
    tables.textIndex = 2;
    tables.textType = ItemType_string;
    tables.AddProperty([] {
      QzVariant empty;
      empty.SetString("");
      return empty;
    });
  }
  CMadeTables tables;
};

// A group of two elements, the first of which must be there.
struct Group {
  Group(const char* first, const char* second) {
    tables.Add(Prim<CElementInfoSeqPrimMnd>(first, 0), Unset::Value);
    tables.Add(Prim<CElementInfoSeqPrimOpt>(second, 1), Unset::Value);
  }
  CMadeTables tables{XmlElementGroupType_Sequence, kPseudo};
};

CElementInfo* Cls(const char* name, int index, XmlElementType type, const CTables& tables) {
  return new CElementInfoChoiceClsOpt(name, "", index, type, &MakeRecordingObject, tables.id());
}

CSmartPtr<CXmlObjectBase> MakeNothing(CXmlElement*) { return CSmartPtr<CXmlObjectBase>(); }

}  // namespace

// --- What they take

TEST(ElementInfoChoiceClsOpt, MakesAnObjectForTheElementAtTheCursor) {
  const Child child;
  const MakeMember make = [&] { return Cls("a", 0, kReal, child.tables); };
  ExpectTakesAtCursorAlone(make, Unset::Object, "<r><a>green</a></r>", "(null)");
  CTrial trial(make(), Unset::Object);
  trial.Expect({{"<a id='1'><x>2</x></a><b/>", kReal, kNoFlag,
                 "true, at b, <r><a id=\"1\"><x>2</x></a></r>"},
                {"<a><y/></a>", kReal, kNoFlag,
                 "CQzException: Failed read all the elements held within the element [a]. The "
                 "unexpected element [y] remains un processed\nPath: /r/a"}});
  trial.failsToTake = "Out of order.";
  EXPECT_EQ("CQzValidationException: Failed to set the property value.\nPath: /r\nOut of order.",
            trial.Take("<a/>"));
}

TEST(ElementInfoChoiceClsOpt, GroupThatTakesNothingLeavesThePropertyEmptyAgain) {
  const Group group("x", "y");
  for (const XmlElementType type : {kPseudo, kNeither}) {
    CTrial trial(Cls("g", 0, type, group.tables), Unset::Object);
    for (const XmlElementType parent : {kReal, kPseudo}) {
      trial.Expect(
          {{"<x>1</x><y>2</y><b/>", parent, kNoFlag, "true, at b, <r><x>1</x><y>2</y></r>"},
           {"<x>1</x><x>2</x>", parent, kNoFlag, "true, at x[2], <r><x>1</x></r>"},
           {"<y>2</y>", parent, kNoFlag, "false, at y, (null)"},
           {"<b/><x>1</x>", parent, kNoFlag, "false, at b, (null)"},
           {"<g/>", parent, kNoFlag, "false, at g, (null)"},
           {"", parent, kNoFlag, "false, at end, (null)"}});
    }
  }
}

TEST(ElementInfoChoiceAbsClsOpt, TakesTheElementAtTheCursorWithTheClassOfItsType) {
  CTables circle;
  circle.name = "circle";
  circle.hasBaseClasses = true;
  circle.Add(Prim<CElementInfoSeqPrimMnd>("radius", 0), Unset::Value);
  const std::string written =
      std::string("<r><a xmlns:AA=\"") + kXsi + "\" AA:type=\"circle\"><radius>1</radius></a></r>";
  // The type of the member plays no part.
  for (const XmlElementType type : {kReal, kPseudo}) {
    CTrial trial(new CElementInfoChoiceAbsClsOpt("a", "", 0, type, &MakeTableObjectByType),
                 Unset::Object);
    for (const XmlElementType parent : {kReal, kPseudo}) {
      trial.Expect({{"", parent, kNoFlag, "false, at end, (null)"},
                    {"<b/><a xsi:type='circle'/>", parent, kNoFlag, "false, at b, (null)"},
                    {"<b/><a xsi:type='circle'/>", parent, kUnknownElements, "false, at b, (null)"},
                    {"<o:a xsi:type='circle'/>", parent, kNoFlag, "false, at o:a, (null)"},
                    {"<a xsi:type='circle'/>", parent, kNoFlag,
                     "CQzException: Failed to find the required child element [radius].\n"
                     "Path: /r/a"}});
    }
    if (type == kPseudo) continue;  // its attributes would be written on <r>
    trial.Expect({{"<a xsi:type='circle'><radius>1</radius></a><b/>", kReal, kNoFlag,
                   "true, at b, " + written},
                  {"<a xsi:type='circle'><radius>1</radius></a><a/>", kPseudo, kNoFlag,
                   "true, at a[2], " + written}});
  }
}

TEST(ElementInfoChoiceAbsClsOpt, ElementWithoutASuitableClassIsNotTaken) {
  for (const XmlElementType parent : {kReal, kPseudo}) {
    CTrial(new CElementInfoChoiceAbsClsOpt("a", "", 0, kReal, &MakeNothing), Unset::Object)
        .Expect({{"<a/><b/>", parent, kNoFlag, "false, at a, (null)"}});
  }
}

TEST(ElementInfoChoiceCls, UnsetOneIsNotWritten) {
  for (CElementInfo* member :
       {static_cast<CElementInfo*>(new CElementInfoChoiceClsOpt("a", "", 0, kReal, nullptr, 0)),
        static_cast<CElementInfo*>(new CElementInfoChoiceAbsClsOpt("a", "", 0, kReal, nullptr))}) {
    EXPECT_EQ("false, <r/>", CTrial(member, Unset::Object).Give());
  }
}

TEST(ElementInfoChoiceCls, AttributesOfAGroupAreWrittenInFront) {
  CTables group(XmlElementGroupType_Sequence, kPseudo);
  group.Add(TextAttribute("id", 0), Unset::Value);
  group.Add(Prim<CElementInfoSeqPrimOpt>("x", 1), Unset::Value);
  const CSmartPtr<CTableObject> object(new CTableObject(group, "g"));
  object->Set(0, "7");
  object->Set(1, "1");
  for (const XmlElementType type : {kReal, kPseudo, kNeither}) {
    CElementInfo* const members[] = {new CElementInfoChoiceClsOpt("g", "", 0, type, nullptr, 0),
                                     new CElementInfoChoiceAbsClsOpt("g", "", 0, type, nullptr)};
    for (CElementInfo* member : members) {
      CTrial trial(member, Unset::Object);
      trial.value().SetXmlObject(object);
      EXPECT_EQ(type == kPseudo ? "true, <r id=\"7\"><x>1</x></r>" : "true, <r><x>1</x></r>",
                trial.Give());
    }
  }
}

// --- When they select

TEST(ElementInfoChoiceClsOpt, PropertyIsSetInFrontOfTheReading) {
  Child child;
  CTables tables(XmlElementGroupType_Choice);
  tables.Add(Cls("a", 0, kReal, child.tables), Unset::Object);
  const CSmartPtr<CRecordingObject> object(new CRecordingObject(tables));
  CRecord record;
  object->FromXml("<r><a id='1'><x>2</x></a></r>");
  EXPECT_EQ((Calls{"r init", "r takes 0 <a> empty", "a init", "a takes 0 1", "a takes 1 2",
                   "a takes 2 "}),
            record.Take());
  EXPECT_EQ("<r><a id=\"1\"><x>2</x></a></r>", Text(*object));
  EXPECT_EQ("r gives 0", record.Take().front());
  object->FromXml("<r/>");
  EXPECT_EQ((Calls{"r init"}), record.Take());
}

TEST(ElementInfoChoiceAbsClsOpt, PropertyIsSetInFrontOfTheReading) {
  Child child;
  CTables tables(XmlElementGroupType_Choice);
  tables.Add(new CElementInfoChoiceAbsClsOpt("a", "", 0, kReal, &MakeRecordingObjectByName),
             Unset::Object);
  const CSmartPtr<CRecordingObject> object(new CRecordingObject(tables));
  CRecord record;
  object->FromXml("<r><a id='1'/></r>");
  EXPECT_EQ((Calls{"r init", "r takes 0 <a> empty", "a init", "a takes 0 1", "a takes 2 "}),
            record.Take());
}

TEST(ElementInfoChoiceAbsClsOpt, PropertyIsSetToNothingWhereNoClassSuits) {
  CTables tables(XmlElementGroupType_Choice);
  tables.Add(new CElementInfoChoiceAbsClsOpt("a", "", 0, kReal, &MakeNothing), Unset::Object);
  const CSmartPtr<CRecordingObject> object(new CRecordingObject(tables));
  CRecord record;
  EXPECT_QZ_THROW_FULL(CQzException,
                       "Failed read all the elements held within the element [r]. The unexpected "
                       "element [a] remains un processed\nPath: /r",
                       "/r", object->FromXml("<r><a/></r>"));
  EXPECT_EQ((Calls{"r init", "r takes 0 null"}), record.Take());
}

TEST(ElementInfoChoiceClsOpt, GroupSelectsBeforeItReadsAndUndoesThatWhereItTookNothing) {
  Group first("x", "y"), second("p", "q");
  CTables tables(XmlElementGroupType_Choice);
  tables.Add(Cls("g", 0, kPseudo, first.tables), Unset::Object);
  tables.Add(Cls("h", 1, kPseudo, second.tables), Unset::Object);
  const CSmartPtr<CSelectingObject> object(new CSelectingObject(tables));
  CRecord record;
  object->FromXml("<r><p>1</p></r>");
  EXPECT_EQ((Calls{"r init", "r takes 0 <g> empty", "g init", "r takes 0 null",
                   "r takes 1 <h> empty", "h init", "h takes 0 1"}),
            record.Take());
  EXPECT_EQ("P1", object->selected);
  EXPECT_EQ(nullptr, object->ObjectAt(0));
  EXPECT_EQ("<r><p>1</p></r>", Text(*object));

  object->FromXml("<r><x>1</x><y>2</y></r>");
  EXPECT_EQ("P0", object->selected);
  EXPECT_EQ("<r><x>1</x><y>2</y></r>", Text(*object));
  object->FromXml("<r/>");
  EXPECT_EQ("", object->selected);
  EXPECT_THROW(object->FromXml("<r><z/></r>"), CQzException);
  EXPECT_EQ("", object->selected);
}

TEST(ElementInfoChoiceClsOpt, SetterThatRefusesIsTheInnermostFailure) {
  Child child;
  CTables tables(XmlElementGroupType_Choice);
  tables.Add(Cls("a", 0, kReal, child.tables), Unset::Object);
  const CSmartPtr<CSelectingObject> object(new CSelectingObject(tables));
  object->failsToTake = "Out of order.";
  EXPECT_QZ_THROW_FULL(CQzException, "Failed to set the property value.\nPath: /r\nOut of order.",
                       "/r", object->FromXml("<r><a/></r>"));
  // Meant: an unset property of another member leaves its name selected, and there is one name.
  CTables open(XmlElementGroupType_Choice);
  open.Add(new CElementInfoChoiceUntpdOpt("u", "", 0, "##any", ""), Unset::Object);
  open.Add(Cls("a", 1, kReal, child.tables), Unset::Object);
  const CSmartPtr<CSelectingObject> selecting(new CSelectingObject(open));
  EXPECT_QZ_THROW_FULL(CQzException,
                       "Failed to set the property value.\nPath: /r\n"
                       "The Property [P0] is already set. Only one element within this class bay "
                       "be set at a time",
                       "/r", selecting->FromXml("<r><a/></r>"));
}

// --- Which of them lets a nested choice stay empty

namespace {

// A choice that may not be empty by itself, as a member of a class of each model group.
struct Nested {
  explicit Nested(XmlElementType type = kReal) : choice(XmlElementGroupType_Choice, type) {
    choice.name = "c";
    choice.Add(new CElementInfoChoicePrimCol("a", "", 0), Texts("a", 1, -1));
  }
  CMadeTables choice;
};

std::string Outer(CElementInfo* member, const Unset::Make& property, XmlElementGroupType group,
                  const char* children) {
  CTables tables(group);
  tables.Add(member, property);
  return CClassTrial(tables).Read(children);
}

}  // namespace

TEST(ElementInfoChoiceClsOpt, AloneLetsANestedChoiceStayEmptyOnReading) {
  const Nested nested;
  const CMadeTables& c = nested.choice;
  const int id = c.id();
  const Unset::Make held = HeldObject(c, "c");
  const Unset::Make none = Unset::Object;
  const XmlElementGroupType kSeq = XmlElementGroupType_Sequence;
  const XmlElementGroupType kAll = XmlElementGroupType_All;
  const XmlElementGroupType kChoice = XmlElementGroupType_Choice;
  const auto factory = &MakeRecordingObject;
  const auto byName = &MakeRecordingObjectByName;
  EXPECT_EQ("at end, <r><c/></r>", Outer(Cls("c", 0, kReal, c), none, kChoice, "<c/>"));
  struct Case {
    CElementInfo* member;
    Unset::Make property;
    XmlElementGroupType group;
  };
  const Case cases[] = {
      {new CElementInfoChoiceAbsClsOpt("c", "", 0, kReal, byName), none, kChoice},
      {new CElementInfoChoiceClsCol("c", "", 0, kReal), Objects(c, "c", 0, -1), kChoice},
      {new CElementInfoSeqClsOpt("c", "", 0, kReal, factory, id), none, kSeq},
      {new CElementInfoSeqClsMnd("c", "", 0, kReal, factory, id, true), held, kSeq},
      {new CElementInfoSeqAbsClsOpt("c", "", 0, kReal, byName), none, kSeq},
      {new CElementInfoSeqAbsClsMnd("c", "", 0, kReal, byName), none, kSeq},
      {new CElementInfoSeqClsCol("c", "", 0, kReal), Objects(c, "c", 0, -1), kSeq},
      {new CElementInfoAllClsOpt("c", "", 0, kReal, factory, id), none, kAll},
      {new CElementInfoAllClsMnd("c", "", 0, kReal, factory, id, true), held, kAll},
      {new CElementInfoAllAbsClsOpt("c", "", 0, kReal, byName), none, kAll},
      {new CElementInfoAllAbsClsMnd("c", "", 0, kReal, byName), none, kAll}};
  int row = 0;
  for (const Case& it : cases) {
    EXPECT_EQ(NothingChosen("c", "/r/c"), Outer(it.member, it.property, it.group, "<c/>")) << row++;
  }
}

TEST(ElementInfoChoiceClsOpt, AloneLetsANestedChoiceStayEmptyOnWriting) {
  for (const XmlElementType type : {kReal, kPseudo}) {
    const Nested nested(type);
    const CSmartPtr<CTableObject> empty(new CTableObject(nested.choice, "c"));
    const std::string failure =
        std::string("CQzValidationException: Failed to convert the element [c] to XML\n") +
        kNoneSet;
    CElementInfo* const failing[] = {new CElementInfoChoiceAbsClsOpt("c", "", 0, type, nullptr),
                                     new CElementInfoSeqClsOpt("c", "", 0, type, nullptr, 0),
                                     new CElementInfoSeqClsMnd("c", "", 0, type, nullptr, 0, false),
                                     new CElementInfoSeqAbsClsOpt("c", "", 0, type, nullptr),
                                     new CElementInfoSeqAbsClsMnd("c", "", 0, type, nullptr),
                                     new CElementInfoAllClsOpt("c", "", 0, type, nullptr, 0),
                                     new CElementInfoAllClsMnd("c", "", 0, type, nullptr, 0, false),
                                     new CElementInfoAllAbsClsOpt("c", "", 0, type, nullptr),
                                     new CElementInfoAllAbsClsMnd("c", "", 0, type, nullptr)};
    for (CElementInfo* member : failing) {
      CTrial trial(member, Unset::Object);
      trial.value().SetXmlObject(empty);
      EXPECT_EQ(failure, trial.Give());
      EXPECT_EQ(type == kReal ? "true, <r><c/></r>" : "true, <r/>",
                trial.Give(Flagged(kMissingChoice)));
    }
    CTrial trial(new CElementInfoChoiceClsOpt("c", "", 0, type, nullptr, 0), Unset::Object);
    trial.value().SetXmlObject(empty);
    EXPECT_EQ(type == kReal ? "true, <r><c/></r>" : "true, <r/>", trial.Give());
  }
}

TEST(ElementInfoChoiceClsOpt, NestedChoiceThatMayStayEmptyStillMindsUnknownElements) {
  const Nested nested;
  EXPECT_EQ(
      "CQzException: Failed read all the elements held within the element [c]. The unexpected "
      "element [z] remains un processed\nPath: /r/c",
      Outer(Cls("c", 0, kReal, nested.choice), Unset::Object, XmlElementGroupType_Choice,
            "<c><z/></c>"));
}
