#include "qzxml/serialization/ElementInfoAll.h"
#include "qzxml/serialization/ElementInfoSeq.h"
#include "qzxml/xml/XmlElement.h"
#include "tests/support/AtCursor.h"
#include "tests/support/ClassTrial.h"
#include "tests/support/MemberTrial.h"
#include "tests/support/QzTest.h"
#include "tests/support/RecordingObject.h"

// The members of an xs:all that are classes: with a tag and without, of one class and of a class
// that the element tells.

using namespace QzXmlLib16;
using namespace QzXmlLib16Data;
using namespace qztest;

namespace {

constexpr XmlElementType kNeither = static_cast<XmlElementType>(2);

using Calls = std::vector<std::string>;

// <a id="..."> with a text and an optional <x>.
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

// A group of an optional <x> and an optional <y>, with an attribute "id".
struct Group {
  Group() {
    tables.Add(TextAttribute("id", 0), Unset::Value);
    tables.Add(Prim<CElementInfoSeqPrimOpt>("x", 1), Unset::Value);
    tables.Add(Prim<CElementInfoSeqPrimOpt>("y", 2), Unset::Value);
  }
  CMadeTables tables{XmlElementGroupType_Sequence, kPseudo};
};

// Two classes that stand for an abstract "shape": their elements are <a xsi:type="circle"> and <a
// xsi:type="square">.
struct Shapes {
  Shapes() {
    circle.name = "circle";
    circle.hasBaseClasses = true;
    circle.Add(Prim<CElementInfoSeqPrimMnd>("radius", 0), Unset::Value);
    square.name = "square";
    square.hasBaseClasses = true;
    square.Add(Prim<CElementInfoSeqPrimMnd>("side", 0), Unset::Value);
  }
  CTables circle, square;
};

std::string Written(const char* type, const char* content) {
  return std::string("<r><a xmlns:AA=\"") + kXsi + "\" AA:type=\"" + type + "\">" + content +
         "</a></r>";
}

// An abstract factory that makes a group whatever it is shown, and counts.
const CTables* g_group = nullptr;
std::vector<std::string> g_shown;
CSmartPtr<CXmlObjectBase> MakeGroup(CXmlElement* element) {
  g_shown.push_back(element != nullptr ? element->GetLocalName() : "(null)");
  return CSmartPtr<CXmlObjectBase>(new CTableObject(*g_group, "g"));
}

CSmartPtr<CXmlObjectBase> MakeNothing(CXmlElement*) { return CSmartPtr<CXmlObjectBase>(); }

}  // namespace

// --- One class, mandatory

TEST(ElementInfoAllClsMnd, FillsTheObjectThatIsThereFromTheElementAtTheCursor) {
  const Child child;
  for (const bool requiresContent : {false, true}) {
    const MakeMember make = [=] {
      return new CElementInfoAllClsMnd("a", "", 0, kReal, nullptr, 0, requiresContent);
    };
    const Unset::Make held = HeldObject(child.tables, "a");
    ExpectTakesAtCursorAlone(make, held, "<r><a>green</a></r>", "<r><a/></r>");
    CTrial(make(), held)
        .Expect({{"<a id='1'><x>2</x></a><b/>", kReal, kNoFlag,
                  "true, at b, <r><a id=\"1\"><x>2</x></a></r>"},
                 {"<a><y/></a>", kReal, kNoFlag,
                  "CQzException: Failed read all the elements held within the element [a]. The "
                  "unexpected element [y] remains un processed\nPath: /r/a"},
                 {"<a/><a z='1'/>", kReal, kNoFlag, "true, at a[2], <r><a/></r>"}});
  }
}

TEST(ElementInfoAllClsMnd, GroupIsFilledFromTheElementsAtTheCursor) {
  const Group group;
  for (const bool requiresContent : {false, true}) {
    for (const XmlElementType type : {kPseudo, kNeither}) {
      CTrial trial(new CElementInfoAllClsMnd("g", "", 0, type, nullptr, 0, requiresContent),
                   HeldObject(group.tables, "g"));
      for (const XmlElementType parent : {kReal, kPseudo}) {
        trial.Expect(
            {{"<x>1</x><y>2</y><b/>", parent, kNoFlag, "true, at b, <r><x>1</x><y>2</y></r>"},
             {"<y>2</y>", parent, kNoFlag, "true, at end, <r><y>2</y></r>"},
             {"<x>1</x><x>2</x>", parent, kNoFlag, "true, at x[2], <r><x>1</x></r>"},
             {"<b/><x>1</x>", parent, kNoFlag, "false, at b, <r/>"},
             {"<g/>", parent, kNoFlag, "false, at g, <r/>"},
             {"", parent, kNoFlag, "false, at end, <r/>"}});
      }
    }
  }
}

TEST(ElementInfoAllClsMnd, GroupTakesItsAttributesEvenWhereItTakesNoElement) {
  const Group group;
  for (const char* children : {"<b/>", ""}) {
    CTrial trial(new CElementInfoAllClsMnd("g", "", 0, kPseudo, nullptr, 0, false),
                 HeldObject(group.tables, "g"));
    trial.rootAttributes = " id='7'";
    const std::string place = *children != '\0' ? "b" : "end";
    EXPECT_EQ("false, at " + place + ", <r id=\"7\"/>", trial.Take(children));
  }
}

TEST(ElementInfoAllClsMnd, MustBeWritten) {
  for (const XmlElementType type : {kReal, kPseudo}) {
    CTrial trial(new CElementInfoAllClsMnd("a", "", 0, type, nullptr, 0, false), Unset::Object);
    EXPECT_EQ("CQzInvalidParamException: The Property [a] is mandatory, it may not be NULL",
              trial.Give());
  }
}

TEST(ElementInfoAllClsMnd, ObjectThatIsNotThereIsAMistakeOfTheClass) {
  for (const XmlElementType type : {kReal, kPseudo}) {
    CTrial trial(new CElementInfoAllClsMnd("a", "", 0, type, nullptr, 0, false), Unset::Object);
    EXPECT_QZ_ASSERT("p != 0", trial.TakeOrThrow("<a/>"));
  }
}

// --- One class, optional

TEST(ElementInfoAllClsOpt, MakesAnObjectForTheElementAtTheCursor) {
  const Child child;
  const MakeMember make = [&] {
    return new CElementInfoAllClsOpt("a", "", 0, kReal, &MakeTableObject, child.tables.id());
  };
  ExpectTakesAtCursorAlone(make, Unset::Object, "<r><a>green</a></r>", "(null)");
  CTrial trial(make(), Unset::Object);
  EXPECT_EQ("true, at b, <r><a id=\"1\"><x>2</x></a></r>",
            trial.Take("<a id='1'><x>2</x></a><b/>"));
  trial.failsToTake = "Out of order.";
  EXPECT_EQ("CQzValidationException: Failed to set the property value.\nPath: /r\nOut of order.",
            trial.Take("<a/>"));
}

TEST(ElementInfoAllClsOpt, MakesAGroupThatIsDroppedWhereItTakesNothing) {
  const Group group;
  CTrial trial(new CElementInfoAllClsOpt("g", "", 0, kPseudo, &MakeTableObject, group.tables.id()),
               Unset::Object);
  for (const XmlElementType parent : {kReal, kPseudo}) {
    trial.Expect({{"<x>1</x><y>2</y><b/>", parent, kNoFlag, "true, at b, <r><x>1</x><y>2</y></r>"},
                  {"<x>1</x><x>2</x>", parent, kNoFlag, "true, at x[2], <r><x>1</x></r>"},
                  {"<b/><x>1</x>", parent, kNoFlag, "false, at b, (null)"},
                  {"<b/><x>1</x>", parent, kUnknownElements, "false, at b, (null)"},
                  {"<g/>", parent, kNoFlag, "false, at g, (null)"},
                  {"", parent, kNoFlag, "false, at end, (null)"}});
  }
  trial.rootAttributes = " id='7'";
  EXPECT_EQ("true, at end, <r id=\"7\"><x>1</x></r>", trial.Take("<x>1</x>"));
  EXPECT_EQ("false, at b, (null)", trial.Take("<b/>"));  // the attribute is no content
}

TEST(ElementInfoAllClsOpt, PropertyIsSetBehindTheReading) {
  Child child;
  Group group;
  CTables tables(XmlElementGroupType_All);
  tables.Add(new CElementInfoAllClsOpt("a", "", 0, kReal, &MakeRecordingObject, child.tables.id()),
             Unset::Object);
  tables.Add(
      new CElementInfoAllClsOpt("g", "", 1, kPseudo, &MakeRecordingObject, group.tables.id()),
      Unset::Object);
  const CSmartPtr<CRecordingObject> object(new CRecordingObject(tables));
  CRecord record;
  object->FromXml("<r><a id='1'/></r>");
  EXPECT_EQ((Calls{"r init", "a init", "a takes 0 1", "a takes 2 ", "r takes 0 <a> filled"}),
            record.Take());
  // A group that took nothing is not set; behind the last element it is not even made.
  object->FromXml("<r><a id='1'/><x>2</x></r>");
  EXPECT_EQ((Calls{"r init", "a init", "a takes 0 1", "a takes 2 ", "r takes 0 <a> filled",
                   "g init", "g takes 1 2", "r takes 1 <g> empty"}),
            record.Take());
}

// --- A class that the element tells

TEST(ElementInfoAllAbsCls, TakesTheElementAtTheCursorWithTheClassOfItsType) {
  const Shapes shapes;
  for (const bool mandatory : {true, false}) {
    const auto make = [=]() -> CElementInfo* {
      if (mandatory) {
        return new CElementInfoAllAbsClsMnd("a", "", 0, kReal, &MakeTableObjectByType);
      }
      return new CElementInfoAllAbsClsOpt("a", "", 0, kReal, &MakeTableObjectByType);
    };
    for (const XmlElementType parent : {kReal, kPseudo}) {
      CTrial(make(), Unset::Object)
          .Expect({{"<a xsi:type='circle'><radius>1</radius></a><b/>", parent, kNoFlag,
                    "true, at b, " + Written("circle", "<radius>1</radius>")},
                   {"<a xsi:type='square'><side>2</side></a>", parent, kNoFlag,
                    "true, at end, " + Written("square", "<side>2</side>")},
                   {"<a xsi:type='square'><side>2</side></a><a/>", parent, kNoFlag,
                    "true, at a[2], " + Written("square", "<side>2</side>")},
                   {"", parent, kNoFlag, "false, at end, (null)"},
                   {"<b/><a xsi:type='square'/>", parent, kNoFlag, "false, at b, (null)"},
                   {"<b/><a xsi:type='square'/>", parent, kUnknownElements, "false, at b, (null)"},
                   {"<b/>", parent, kMissingMandatory, "false, at b, (null)"},
                   {"<o:a xsi:type='circle'/>", parent, kNoFlag, "false, at o:a, (null)"},
                   {"<a xsi:type='circle'/>", parent, kNoFlag,
                    "CQzException: Failed to find the required child element [radius].\n"
                    "Path: /r/a"}});
    }
    CTrial refusing(make(), Unset::Object);
    refusing.failsToTake = "Out of order.";
    EXPECT_EQ("CQzValidationException: Failed to set the property value.\nPath: /r\nOut of order.",
              refusing.Take("<a xsi:type='square'><side>2</side></a>"));
  }
}

TEST(ElementInfoAllAbsCls, ElementWithoutASuitableClassIsNotTaken) {
  for (const XmlElementType type : {kReal, kPseudo}) {
    CElementInfo* const members[] = {new CElementInfoAllAbsClsMnd("a", "", 0, type, &MakeNothing),
                                     new CElementInfoAllAbsClsOpt("a", "", 0, type, &MakeNothing)};
    for (CElementInfo* member : members) {
      CTrial(member, Unset::Object)
          .Expect({{"<a/><b/>", kReal, kNoFlag, "false, at a, (null)"},
                   {"<a/>", kPseudo, kUnknownElements, "false, at a, (null)"},
                   {"", kReal, kNoFlag, "false, at end, (null)"}});
    }
  }
  // What that means is said by the walk.
  CTables mandatory(XmlElementGroupType_All), optional(XmlElementGroupType_All);
  mandatory.Add(new CElementInfoAllAbsClsMnd("a", "", 0, kReal, &MakeNothing), Unset::Object);
  optional.Add(new CElementInfoAllAbsClsOpt("a", "", 0, kReal, &MakeNothing), Unset::Object);
  EXPECT_EQ(MandatoryIsMissing("a"), CClassTrial(mandatory).Read("<a/>"));
  EXPECT_EQ(LeftOver("a"), CClassTrial(optional).Read("<a/>"));
}

TEST(ElementInfoAllAbsCls, GroupIsMadeForTheElementAtTheCursor) {
  const Group group;
  g_group = &group.tables;
  CElementInfo* const members[] = {new CElementInfoAllAbsClsMnd("g", "", 0, kPseudo, &MakeGroup),
                                   new CElementInfoAllAbsClsOpt("g", "", 0, kPseudo, &MakeGroup)};
  for (CElementInfo* member : members) {
    CTrial trial(member, Unset::Object);
    g_shown.clear();
    for (const XmlElementType parent : {kReal, kPseudo}) {
      trial.Expect(
          {{"<x>1</x><y>2</y><b/>", parent, kNoFlag, "true, at b, <r><x>1</x><y>2</y></r>"},
           {"<y>2</y>", parent, kNoFlag, "true, at end, <r><y>2</y></r>"},
           {"<b/><x>1</x>", parent, kNoFlag, "false, at b, (null)"},
           {"<g/>", parent, kNoFlag, "false, at g, (null)"}});
    }
    EXPECT_EQ((Calls{"x", "y", "b", "g", "x", "y", "b", "g"}), g_shown);
  }
}

TEST(ElementInfoAllAbsCls, BehindTheLastElementOnlyTheMandatoryOneAsksForAGroup) {
  const Group group;
  g_group = &group.tables;
  g_shown.clear();
  CTrial mandatory(new CElementInfoAllAbsClsMnd("g", "", 0, kPseudo, &MakeGroup), Unset::Object);
  EXPECT_EQ("false, at end, (null)", mandatory.Take(""));
  EXPECT_EQ((Calls{"(null)"}), g_shown);
  g_shown.clear();
  CTrial optional(new CElementInfoAllAbsClsOpt("g", "", 0, kPseudo, &MakeGroup), Unset::Object);
  EXPECT_EQ("false, at end, (null)", optional.Take(""));
  EXPECT_EQ(Calls(), g_shown);
}

TEST(ElementInfoAllAbsCls, MandatoryOneMustBeWritten) {
  CTrial mandatory(new CElementInfoAllAbsClsMnd("a", "", 0, kReal, &MakeNothing), Unset::Object);
  EXPECT_EQ("CQzInvalidParamException: The Property [a] is mandatory, it may not be NULL",
            mandatory.Give());
  CTrial optional(new CElementInfoAllAbsClsOpt("a", "", 0, kReal, &MakeNothing), Unset::Object);
  EXPECT_EQ("false, <r/>", optional.Give());
}

// --- Attributes of children without a tag

TEST(ElementInfoAllCls, AttributesOfAGroupAreWrittenInFront) {
  const Group group;
  const CSmartPtr<CTableObject> object(new CTableObject(group.tables, "g"));
  object->Set(0, "7");
  object->Set(1, "1");
  const auto make = [](XmlElementType type) {
    return std::vector<CElementInfo*>{
        new CElementInfoAllClsMnd("g", "", 0, type, nullptr, 0, false),
        new CElementInfoAllClsOpt("g", "", 0, type, nullptr, 0),
        new CElementInfoAllAbsClsMnd("g", "", 0, type, nullptr),
        new CElementInfoAllAbsClsOpt("g", "", 0, type, nullptr)};
  };
  for (CElementInfo* member : make(kPseudo)) {
    CTrial trial(member, Unset::Object);
    trial.value().SetXmlObject(object);
    EXPECT_EQ("true, <r id=\"7\"><x>1</x></r>", trial.Give());
  }
  // Only a member whose type is exactly 1 does so.
  for (const XmlElementType type : {kReal, kNeither}) {
    for (CElementInfo* member : make(type)) {
      CTrial trial(member, Unset::Object);
      trial.value().SetXmlObject(object);
      EXPECT_EQ("true, <r><x>1</x></r>", trial.Give());
    }
  }
}

TEST(ElementInfoAllCls, ChildIsWrittenUnderItsOwnNameInTheNamespaceOfTheMember) {
  const Child child;
  const CSmartPtr<CTableObject> object(new CTableObject(child.tables, "own"));
  CTrial trial(new CElementInfoAllClsOpt("a", "urn:m", 0, kReal, nullptr, 0), Unset::Object);
  trial.value().SetXmlObject(object);
  EXPECT_EQ("true, <r><AA:own xmlns:AA=\"urn:m\"/></r>", trial.Give());
}

// --- Failures that all classes share

TEST(ElementInfoAllCls, PropertyThatCannotBeReadFailsWithTheNameOfTheMember) {
  const std::string expected =
      "CQzValidationException: Failed to get the property value for [a].\nOut of order.";
  for (const XmlElementType type : {kReal, kPseudo}) {
    CElementInfo* const members[] = {new CElementInfoAllClsMnd("a", "", 0, type, nullptr, 0, false),
                                     new CElementInfoAllClsOpt("a", "", 0, type, nullptr, 0),
                                     new CElementInfoAllAbsClsMnd("a", "", 0, type, nullptr),
                                     new CElementInfoAllAbsClsOpt("a", "", 0, type, nullptr)};
    for (CElementInfo* member : members) {
      CTrial trial(member, Unset::Object);
      trial.failsToGive = "Out of order.";
      if (member == members[0]) {
        EXPECT_EQ(expected, trial.Take("<a/>"));  // the others make their object
      }
      trial.object().failsToGive = "Out of order.";
      EXPECT_EQ(expected, trial.Give());
    }
  }
}

TEST(ElementInfoAllCls, HasNoFacets) {
  QzVariant value;
  value.SetString("x");
  CElementInfo* const members[] = {new CElementInfoAllClsMnd("a", "", 0, kReal, nullptr, 0, false),
                                   new CElementInfoAllClsOpt("a", "", 0, kReal, nullptr, 0),
                                   new CElementInfoAllAbsClsMnd("a", "", 0, kReal, nullptr),
                                   new CElementInfoAllAbsClsOpt("a", "", 0, kReal, nullptr),
                                   new CElementInfoAllClsCol("a", "", 0, kReal),
                                   new CElementInfoAllAbsClsCol("a", "", 0, kReal),
                                   new CElementInfoAllPrimCol("a", "", 0),
                                   new CElementInfoAllUntpdCol("a", "", 0),
                                   new CElementInfoAllUntpdMnd("a", "", 0, "##any", ""),
                                   new CElementInfoAllUntpdOpt("a", "", 0, "##any", ""),
                                   Enum<CElementInfoAllEnumMnd>("a", 0),
                                   Enum<CElementInfoAllEnumOpt>("a", 0)};
  for (CElementInfo* member : members) {
    const CTrial owner(member, Unset::Value);
    EXPECT_QZ_THROW_FULL(CQzException, "Cannot CheckRestriction for type: string", "",
                         member->CheckRestriction(value));
  }
}
