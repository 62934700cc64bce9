#include <type_traits>

#include "qzxml/serialization/ElementInfoChoice.h"
#include "qzxml/serialization/ElementInfoSeq.h"
#include "tests/support/AtCursor.h"
#include "tests/support/ClassTrial.h"
#include "tests/support/MemberTrial.h"
#include "tests/support/QzTest.h"
#include "tests/support/RecordingObject.h"

// The members of an xs:choice, one by one: values, open content and collections. The classes have
// ElementInfoChoiceClsTest.cpp.

using namespace QzXmlLib16;
using namespace QzXmlLib16Data;
using namespace qztest;

// --- The grid

static_assert(std::is_base_of_v<CElementInfoChoiceCol, CElementInfoChoiceAbsClsCol>);
static_assert(std::is_base_of_v<CElementInfoChoiceCol, CElementInfoChoiceClsCol>);
static_assert(std::is_base_of_v<CElementInfoChoiceCol, CElementInfoChoiceEnumCol>);
static_assert(std::is_base_of_v<CElementInfoChoiceCol, CElementInfoChoicePrimCol>);
static_assert(std::is_base_of_v<CElementInfoChoiceCol, CElementInfoChoiceUntpdCol>);
static_assert(!std::is_abstract_v<CElementInfoChoiceCol>);

namespace {

using Calls = std::vector<std::string>;

const char kTooFew[] =
    "CQzValidationException: The Minimum number of [a] elements allowed in this collection is 2";
const char kTooMany[] =
    "CQzValidationException: The Maximum number of [a] elements allowed in this collection is 3";

// One collection of two to three items, the text or attribute of which is told.
struct Collection {
  const char* name;
  CElementInfo* member;
  Unset::Make property;
};

}  // namespace

// --- Values

TEST(ElementInfoChoicePrimOpt, TakesItsElementAtTheCursorAndMayStayUnwritten) {
  ExpectPrimitive<CElementInfoChoicePrimOpt>(false);
}

TEST(ElementInfoChoiceEnumOpt, TakesItsElementAtTheCursorAndMayStayUnwritten) {
  ExpectEnumeration<CElementInfoChoiceEnumOpt>(false);
}

TEST(ElementInfoChoicePrimOpt, MatchesInItsOwnNamespace) {
  PrimOptions inO;
  inO.uri = "urn:o";
  CTrial trial(Prim<CElementInfoChoicePrimOpt>("a", 0, inO), Unset::Value);
  trial.Expect({{"<a>1</a>", kReal, kNoFlag, "false, at a, (unset)"},
                {"<a>1</a>", kPseudo, kNamespaces, "true, at end, 1"},
                {"<o:a>1</o:a>", kReal, kNoFlag, "true, at end, 1"}});
  EXPECT_EQ("true, <r><AA:a xmlns:AA=\"urn:o\">1</AA:a></r>", trial.Give());
}

TEST(ElementInfoChoice, ValidateIsNotForAChoice) {
  CElementInfo* const members[] = {Prim<CElementInfoChoicePrimOpt>("a", 0),
                                   Enum<CElementInfoChoiceEnumOpt>("a", 0),
                                   new CElementInfoChoiceClsOpt("a", "", 0, kReal, nullptr, 0),
                                   new CElementInfoChoiceAbsClsOpt("a", "", 0, kReal, nullptr),
                                   new CElementInfoChoiceUntpdOpt("a", "", 0, "##any", ""),
                                   new CElementInfoChoiceCol("a", "", 0),
                                   new CElementInfoChoicePrimCol("a", "", 0),
                                   new CElementInfoChoiceEnumCol("a", "", 0),
                                   new CElementInfoChoiceClsCol("a", "", 0, kReal),
                                   new CElementInfoChoiceAbsClsCol("a", "", 0, kReal),
                                   new CElementInfoChoiceUntpdCol("a", "", 0)};
  for (CElementInfo* member : members) {
    CTrial trial(member, Unset::Value);
    for (const bool found : {false, true}) {
      EXPECT_QZ_THROW_FULL(CQzException, "Not implemented, should never be called", "",
                           member->Validate(CSerializationContext(), &trial.object(), found, true));
    }
  }
}

// --- Open content

TEST(ElementInfoChoiceUntpdOpt, TakesWhatItsRestrictionAllows) {
  ExpectOpenContent([](const char* name, const char* restriction, const char* target) {
    return new CElementInfoChoiceUntpdOpt(name, "", 0, restriction, target);
  });
}

TEST(ElementInfoChoiceUntpdOpt, PropertyIsSetBehindTheReadingAndEmptiedWhereNothingWasRead) {
  CTables tables(XmlElementGroupType_Choice);
  tables.Add(new CElementInfoChoiceUntpdOpt("a", "", 0, "##local", ""), Unset::Object);
  tables.Add(Prim<CElementInfoChoicePrimOpt>("p", 1), Unset::Value);
  const CSmartPtr<CRecordingObject> object(new CRecordingObject(tables));
  CRecord record;
  object->FromXml("<r><a/></r>");
  EXPECT_EQ((Calls{"r init", "r takes 0 open content"}), record.Take());
  object->FromXml("<r><p>1</p></r>");
  EXPECT_EQ((Calls{"r init", "r takes 0 null", "r takes 1 1"}), record.Take());
  EXPECT_THROW(object->FromXml("<r><a xmlns='urn:o'/></r>"), CQzException);
  EXPECT_EQ((Calls{"r init", "r takes 0 null"}), record.Take());
  object->FromXml("<r/>");  // without an element there is nothing to empty
  EXPECT_EQ((Calls{"r init"}), record.Take());
}

TEST(ElementInfoChoiceUntpdOpt, PropertyThatCannotBeEmptiedFailsWithThePathOfTheParent) {
  CTrial trial(new CElementInfoChoiceUntpdOpt("a", "", 0, "##any", ""), Unset::Object);
  trial.failsToTake = "Out of order.";
  EXPECT_EQ("CQzValidationException: Failed to set the property value.\nPath: /r\nOut of order.",
            trial.Take("<b/>"));
}

// --- Collections

TEST(ElementInfoChoiceCol, TakesARunOfElementsWithAValidCount) {
  CTables item;
  item.textIndex = 0;
  item.textType = ItemType_string;
  item.AddProperty(Unset::Value);
  const Collection collections[] = {
      {"Col", new CElementInfoChoiceCol("a", "", 0), Texts("a", 2, 3)},
      {"PrimCol", new CElementInfoChoicePrimCol("a", "", 0), Texts("a", 2, 3)},
      {"EnumCol", new CElementInfoChoiceEnumCol("a", "", 0), Texts("a", 2, 3)},
      {"ClsCol", new CElementInfoChoiceClsCol("a", "", 0, kReal), Objects(item, "a", 2, 3)},
      {"AbsClsCol", new CElementInfoChoiceAbsClsCol("a", "", 0, kReal), Objects(item, "a", 2, 3)}};
  for (const Collection& c : collections) {
    SCOPED_TRACE(c.name);
    CTrial trial(c.member, c.property);
    for (const XmlElementType parent : {kReal, kPseudo}) {
      trial.Expect(
          {{"<a>1</a><a>2</a><b/>", parent, kNoFlag, "true, at b, <r><a>1</a><a>2</a></r>"},
           {"<a/><a/><a/>", parent, kNoFlag, "true, at end, <r><a/><a/><a/></r>"},
           {"", parent, kNoFlag, "false, at end, <r/>"},
           {"<b/><a/><a/>", parent, kNoFlag, "false, at b, <r/>"},
           {"<b/><a/><a/>", parent, kUnknownElements, "false, at b, <r/>"},
           {"<o:a/><o:a/>", parent, kNoFlag, "false, at o:a[1], <r/>"},
           {"<o:a/><o:a/>", parent, kNamespaces, "true, at end, <r><a/><a/></r>"},
           {"<a/>", parent, kCollectionCounts, "true, at end, <r><a/></r>"},
           {"<a/><a/><a/><a/>", parent, kCollectionCounts,
            "true, at end, <r><a/><a/><a/><a/></r>"}});
    }
    trial.Expect(
        {{"<a/>", kReal, kNoFlag, kTooFew},
         {"<a/><b/>", kReal, kMissingChoice, kTooFew},
         {"<a/><a/><a/><a/>", kReal, kNoFlag, kTooMany},
         // Without a tag of its own the class lets a later member try; what was read stays.
         {"<a/><b/>", kPseudo, kNoFlag, "false, at a, <r><a/></r>"},
         {"<a/><a/><a/><a/>", kPseudo, kNoFlag, "false, at a[1], <r><a/><a/><a/><a/></r>"}});
  }
}

TEST(ElementInfoChoiceUntpdCol, TakesElementsOfAnyNameOrOfItsOwn) {
  for (const XmlElementType parent : {kReal, kPseudo}) {
    CTrial(new CElementInfoChoiceUntpdCol("AnyElement", "", 0), Elements("##any", 0, -1))
        .Expect({{"<a/><z>1</z><o:b/>", parent, kNoFlag,
                  "true, at end, <r><a/><z>1</z><AA:b xmlns:AA=\"urn:o\"/></r>"},
                 {"", parent, kNoFlag, "false, at end, <r/>"}});
    CTrial(new CElementInfoChoiceUntpdCol("a", "urn:unused", 0), Elements("##any", 0, -1))
        .Expect({{"<a>1</a><a>2</a><b/>", parent, kNoFlag, "true, at b, <r><a>1</a><a>2</a></r>"},
                 // The namespace is that of the first one.
                 {"<o:a/><o:a/><a/>", parent, kNoFlag,
                  "true, at a, <r><AA:a xmlns:AA=\"urn:o\"/><AA:a xmlns:AA=\"urn:o\"/></r>"},
                 {"<a/><o:a/>", parent, kNoFlag, "true, at o:a, <r><a/></r>"},
                 {"<b/><a/>", parent, kNoFlag, "false, at b, <r/>"},
                 {"", parent, kNoFlag, "false, at end, <r/>"}});
  }
}

TEST(ElementInfoChoiceUntpdCol, MindsItsCountOnReading) {
  for (const char* name : {"AnyElement", "a"}) {
    CTrial(new CElementInfoChoiceUntpdCol(name, "", 0), Elements("##any", 2, 2))
        .Expect({{"<a/><a/>", kReal, kNoFlag, "true, at end, <r><a/><a/></r>"},
                 // Meant: a collection of open content has no name for its message.
                 {"<a/>", kReal, kNoFlag,
                  "CQzValidationException: The Minimum number of [] elements allowed in this "
                  "collection is 2"},
                 {"<a/><a/><a/>", kReal, kNoFlag,
                  "CQzValidationException: The Maximum number of [] elements allowed in this "
                  "collection is 2"},
                 {"<a/>", kPseudo, kNoFlag, "false, at a, <r><a/></r>"},
                 {"<a/>", kReal, kCollectionCounts, "true, at end, <r><a/></r>"}});
  }
}

TEST(ElementInfoChoiceCol, IsWrittenWithAnyCountWhereASequenceFails) {
  struct Case {
    const char* children;
    const char* written;
    const char* inASequence;
  };
  const Case cases[] = {{"", "false, <r/>", kTooFew},
                        {"<a>1</a>", "true, <r><a>1</a></r>", kTooFew},
                        {"<a/><a/>", "true, <r><a/><a/></r>", "true, <r><a/><a/></r>"},
                        {"<a/><a/><a/><a/>", "true, <r><a/><a/><a/><a/></r>", kTooMany}};
  CTrial choice(new CElementInfoChoicePrimCol("a", "", 0), Texts("a", 2, 3));
  CTrial sequence(new CElementInfoSeqPrimCol("a", "", 0), Texts("a", 2, 3));
  for (const Case& c : cases) {
    choice.Take(c.children, kReal, Flagged(kCollectionCounts));
    EXPECT_EQ(c.written, choice.Give()) << c.children;
    sequence.Take(c.children, kReal, Flagged(kCollectionCounts));
    EXPECT_EQ(c.inASequence, sequence.Give()) << c.children;
  }
}

TEST(ElementInfoChoiceUntpdCol, CollectionOfTheLibraryTestsItsOwnCountWhenItIsWritten) {
  CTrial trial(new CElementInfoChoiceUntpdCol("AnyElement", "", 0), Elements("##any", 2, -1));
  trial.Take("<a/>", kReal, Flagged(kCollectionCounts));
  EXPECT_EQ(
      "CQzValidationException: The Minimum number of [] elements allowed in this collection is 2",
      trial.Give());
  EXPECT_EQ("true, <r><a/></r>", trial.Give(Flagged(kCollectionCounts)));
}

TEST(ElementInfoChoiceCol, TellsTheWriterWhereItsItemsBeginAndEnd) {
  CTrial trial(new CElementInfoChoicePrimCol("a", "", 0), Texts("a", 0, -1));
  EXPECT_EQ((Calls{"start r", "end"}), trial.GiveCalls());
  trial.Take("<a>1</a><a>2</a>");
  EXPECT_EQ((Calls{"start r", "[1] start a", "text 1 23", "end", "[1] start a", "text 2 23", "end",
                   "[3] end"}),
            trial.GiveCalls());
}

TEST(ElementInfoChoiceCol, ItemsWithoutATagAreReadInARowAndWriteTheirAttributesInFront) {
  CTables group(XmlElementGroupType_Sequence, kPseudo);
  group.Add(TextAttribute("id", 0), Unset::Value);
  group.Add(Prim<CElementInfoSeqPrimMnd>("x", 1), Unset::Value);
  group.Add(Prim<CElementInfoSeqPrimMnd>("y", 2), Unset::Value);
  struct Case {
    CElementInfo* member;
    const char* attributes;
  };
  const Case cases[] = {
      {new CElementInfoChoiceClsCol("g", "", 0, kPseudo), " id=\"7\""},
      {new CElementInfoChoiceAbsClsCol("g", "", 0, kPseudo), " id=\"7\""},
      // Only a member whose type is exactly 1 writes them.
      {new CElementInfoChoiceClsCol("g", "", 0, kReal), ""},
      {new CElementInfoChoiceAbsClsCol("g", "", 0, static_cast<XmlElementType>(2)), ""},
      {new CElementInfoChoiceCol("g", "", 0), ""}};
  for (const Case& c : cases) {
    CTrial trial(c.member, Groups(group, 1, 1));
    trial.rootAttributes = " id='7'";
    const std::string r = std::string("<r") + c.attributes + ">";
    trial.Expect(
        {{"<x>1</x><y>2</y><b/>", kReal, kNoFlag, "true, at b, " + r + "<x>1</x><y>2</y></r>"},
         {"<x>1</x><b/>", kReal, kNoFlag, "false, at x, <r/>"},
         {"<x/><y/><x/><y/>", kReal, kNoFlag,
          "CQzValidationException: The Maximum number of [g] elements allowed in this "
          "collection is 1"}});
  }
}

TEST(ElementInfoChoiceCol, CollectionThatCannotBeReadFailsWithTheNameOfTheMember) {
  CElementInfo* const members[] = {new CElementInfoChoicePrimCol("a", "", 0),
                                   new CElementInfoChoiceUntpdCol("a", "", 0)};
  for (CElementInfo* member : members) {
    CTrial trial(member, Unset::Object);
    trial.failsToGive = "Out of order.";
    EXPECT_EQ("CQzValidationException: Failed to get the property value for [a].\nOut of order.",
              trial.Take("<a/>"));
    EXPECT_EQ("CQzValidationException: Failed to get the property value for [a].\nOut of order.",
              trial.Give());
  }
}

// --- Facets

TEST(ElementInfoChoice, FacetsAreForPrimitivesAlone) {
  QzVariant value;
  value.SetString("x");
  CElementInfo* const members[] = {Enum<CElementInfoChoiceEnumOpt>("a", 0),
                                   new CElementInfoChoiceClsOpt("a", "", 0, kReal, nullptr, 0),
                                   new CElementInfoChoiceAbsClsOpt("a", "", 0, kReal, nullptr),
                                   new CElementInfoChoiceUntpdOpt("a", "", 0, "##any", ""),
                                   new CElementInfoChoicePrimCol("a", "", 0),
                                   new CElementInfoChoiceEnumCol("a", "", 0),
                                   new CElementInfoChoiceClsCol("a", "", 0, kReal),
                                   new CElementInfoChoiceAbsClsCol("a", "", 0, kReal),
                                   new CElementInfoChoiceUntpdCol("a", "", 0)};
  for (CElementInfo* member : members) {
    const CTrial owner(member, Unset::Value);
    EXPECT_QZ_THROW_FULL(CQzException, "Cannot CheckRestriction for type: string", "",
                         member->CheckRestriction(value));
  }
  CTrial primitive(Prim<CElementInfoChoicePrimOpt>("a", 0), Unset::Value);
  primitive.member().CheckRestriction(value);  // has none
}
