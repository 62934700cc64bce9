#include "qzxml/serialization/ElementInfoAll.h"
#include "qzxml/serialization/ElementInfoChoice.h"
#include "qzxml/serialization/ElementInfoSeq.h"
#include "tests/support/ReadingClass.h"

// What each flag of the context changes on reading a document: every situation with the flag clear
// and set, and where the flag does not reach.

using namespace QzXmlLib16;
using namespace QzXmlLib16Data;
using namespace qztest;

namespace {

// --- Failures of <r>

std::string Missing(const char* name) {
  return std::string("CQzException: Failed to find the required child element [") + name +
         "].\nPath: /r";
}
std::string LeftOver(const char* name) {
  return std::string(
             "CQzException: Failed read all the elements held within the element [r]. The "
             "unexpected element [") +
         name + "] remains un processed\nPath: /r";
}
std::string UnknownAttribute(const char* path) {
  return std::string("CQzException: Unexpected Attribute found.\nPath: ") + path;
}
const std::string kNothingChosen =
    "CQzException: No child elements within the element [r] were populated. The element "
    "represents a choice, so one and only one element should be populated. The element contained "
    "no sutable child elements\nPath: /r";
const std::string kTooFew =
    "CQzValidationException: Failed to process the element.\nPath: /r\nThe Minimum number of [c] "
    "elements allowed in this collection is 2";
const std::string kTooMany =
    "CQzValidationException: Failed to process the element.\nPath: /r\nThe Maximum number of [c] "
    "elements allowed in this collection is 3";

std::string Process(const std::string& inner) {
  return "CQzValidationException: Failed to process the element.\nPath: /r\n" + inner;
}

constexpr XmlElementGroupType kAll = XmlElementGroupType_All;
constexpr XmlElementGroupType kChoice = XmlElementGroupType_Choice;

}  // namespace

// --- IgnoreUnknownAttributes

TEST(IgnoreUnknownAttributes, DropsAttributesOfAClassThatMindsThem) {
  CReadingClass tables;
  tables.AddAttribute("id");
  ExpectColumns(tables, kUnknownAttributes,
                {{"<r id='1'/>", "1", "1"},
                 {"<r id='1' x='2'/>", UnknownAttribute("/r/@x"), "1"},
                 {"<r o:id='1'/>", UnknownAttribute("/r/o:@id"), "-"},
                 {"<r xsi:type='t' xsi:schemaLocation='a b'/>", "-", "-"}});
}

TEST(IgnoreUnknownAttributes, ChangesNothingForAClassThatDropsThemAnyway) {
  CReadingClass tables;
  tables.failIfAttributeUnknown = false;
  tables.AddAttribute("id");
  ExpectColumns(tables, kUnknownAttributes, {{"<r x='2' id='1' o:id='3'/>", "1", "1"}});
}

TEST(IgnoreUnknownAttributes, ReachesEveryLevelOfTheDocument) {
  CReadingClass item;
  item.AddPrim<CElementInfoSeqPrimMnd>("v");
  CReadingClass tables;
  tables.AddMandatory("item", kReal, item);
  ExpectColumns(tables, kUnknownAttributes,
                {{"<r><item x='1'><v>1</v></item></r>", UnknownAttribute("/r/item/@x"), "{1}"},
                 {"<r><item><v x='1'>1</v></item></r>", UnknownAttribute("/r/item/v/@x"), "{1}"}});
}

TEST(IgnoreUnknownAttributes, DropsThoseOfPrimitivesAndEnumerationsInEveryModelGroup) {
  CReadingClass sequence;
  sequence.AddPrim<CElementInfoSeqPrimMnd>("a").AddEnum<CElementInfoSeqEnumOpt>("e");
  CReadingClass all(kAll);
  all.AddPrim<CElementInfoAllPrimMnd>("a").AddEnum<CElementInfoAllEnumOpt>("e");
  for (const CReadingClass* tables : {&sequence, &all}) {
    ExpectColumns(*tables, kUnknownAttributes,
                  {{"<r><a x='1'>1</a></r>", UnknownAttribute("/r/a/@x"), "1 -"},
                   {"<r><a xsi:type='t'>1</a></r>", UnknownAttribute("/r/a/xsi:@type"), "1 -"},
                   {"<r><a>1</a><e x='1'>red</e></r>", UnknownAttribute("/r/e/@x"), "1 0"}});
  }
  CReadingClass choice(kChoice);
  choice.AddPrim<CElementInfoChoicePrimOpt>("a").AddEnum<CElementInfoChoiceEnumOpt>("e");
  ExpectColumns(choice, kUnknownAttributes,
                {{"<r><a x='1'>1</a></r>", UnknownAttribute("/r/a/@x"), "1 -"},
                 {"<r><e x='1'>red</e></r>", UnknownAttribute("/r/e/@x"), "- 0"}});
}

TEST(IgnoreUnknownAttributes, ItemsOfACollectionOfPrimitivesAreNotLookedAt) {
  CReadingClass tables;
  tables.AddTexts<CElementInfoSeqPrimCol>(0, -1);
  ExpectColumns(tables, kUnknownAttributes, {{"<r><c x='1'>1</c></r>", "[1]", "[1]"}});
}

TEST(IgnoreUnknownAttributes, DoesNotExcuseNilOrAMissingAttribute) {
  CReadingClass tables;
  tables.AddPrim<CElementInfoSeqPrimOpt>("a");
  const std::string invalidNil =
      "CQzException: Invalid use of 'nil' attribute in non-nillable element.\nPath: /r";
  ExpectColumns(tables, kUnknownAttributes,
                {{"<r xsi:nil='1'/>", invalidNil, invalidNil},
                 {"<r xsi:nil='0'/>", invalidNil, invalidNil},
                 {"<r><a xsi:nil='1'/></r>", invalidNil + "/a", invalidNil + "/a"}});
  CReadingClass required;
  required.AddAttribute("id", false);
  const std::string missing = Process("Failed to find the required Attribute [id].");
  ExpectColumns(required, kUnknownAttributes,
                {{"<r x='1'/>", UnknownAttribute("/r/@x"), missing}, {"<r/>", missing, missing}});
}

// --- IgnoreUnknownElements: what is left over

TEST(IgnoreUnknownElements, SkipsWhatIsLeftOverBehindASequence) {
  CReadingClass optional;
  optional.AddPrim<CElementInfoSeqPrimOpt>("a");
  ExpectColumns(optional, kUnknownElements,
                {{"<r><a>1</a></r>", "1", "1"},
                 {"<r><a>1</a><x/></r>", LeftOver("x"), "1"},
                 {"<r><a>1</a><x/><y/></r>", LeftOver("x"), "1"},
                 {"<r><x/><y/></r>", LeftOver("x"), "-"}});
  const CReadingClass empty;
  ExpectColumns(empty, kUnknownElements, {{"<r><x/><y/></r>", LeftOver("x"), ""}});
}

// The last member is asked again behind each element that was skipped.
TEST(IgnoreUnknownElements, LastMemberOfASequenceIsAskedAgain) {
  CReadingClass optional;
  optional.AddPrim<CElementInfoSeqPrimOpt>("a");
  ExpectColumns(optional, kUnknownElements,
                {{"<r><x/><a>1</a></r>", LeftOver("x"), "1"},
                 {"<r><a>1</a><a>2</a></r>", LeftOver("a"), "1"},
                 {"<r><a>1</a><a>2</a><a>3</a></r>", LeftOver("a"), "3"}});
  CReadingClass mandatory;
  mandatory.AddPrim<CElementInfoSeqPrimMnd>("a");
  ExpectColumns(mandatory, kUnknownElements,
                {{"<r><a>1</a><x/></r>", LeftOver("x"), "1"},
                 {"<r><a>1</a><x/><a>2</a></r>", LeftOver("x"), "2"},
                 {"<r><a>1</a><x/><y/></r>", LeftOver("x"), Missing("a")}});
  CReadingClass enumeration;
  enumeration.AddEnum<CElementInfoSeqEnumMnd>("a");
  ExpectColumns(enumeration, kUnknownElements,
                {{"<r><a>red</a><x/></r>", LeftOver("x"), "0"},
                 {"<r><a>red</a><x/><y/></r>", LeftOver("x"), Missing("a")}});
  CReadingClass collection;
  collection.AddTexts<CElementInfoSeqPrimCol>(0, -1);
  ExpectColumns(collection, kUnknownElements,
                {{"<r><c>1</c><x/><c>2</c><y/><c>3</c></r>", LeftOver("x"), "[123]"}});
}

TEST(IgnoreUnknownElements, MembersInFrontOfTheLastAreNotAskedAgain) {
  CReadingClass tables;
  tables.AddPrim<CElementInfoSeqPrimOpt>("a").AddPrim<CElementInfoSeqPrimOpt>("b");
  ExpectColumns(tables, kUnknownElements,
                {{"<r><a>1</a><x/><y/><b>2</b></r>", LeftOver("x"), "1 2"},
                 {"<r><x/><a>1</a><b>2</b></r>", LeftOver("x"), "- 2"},
                 {"<r><b>2</b><a>1</a></r>", LeftOver("a"), "- 2"}});
  CReadingClass collection;
  collection.AddTexts<CElementInfoSeqPrimCol>(0, -1).AddPrim<CElementInfoSeqPrimOpt>("z");
  ExpectColumns(collection, kUnknownElements,
                {{"<r><c>1</c><x/><c>2</c><z>3</z></r>", LeftOver("x"), "[1] 3"}});
}

TEST(IgnoreUnknownElements, SkipsWhatIsLeftOverBehindAGroup) {
  CReadingGroup group;
  group.AddPrim<CElementInfoSeqPrimMnd>("v");
  CReadingClass tables;
  tables.AddOptional<CElementInfoSeqClsOpt>("g", kPseudo, group);
  ExpectColumns(tables, kUnknownElements,
                {{"<r><v>1</v><x/></r>", LeftOver("x"), "{1}"},
                 {"<r><v>1</v><x/><y/></r>", LeftOver("x"), "{1}"},
                 {"<r><x/></r>", LeftOver("x"), "(null)"}});
}

TEST(IgnoreUnknownElements, LetsAnAllEndAtTheFirstUnknownElement) {
  CReadingClass tables(kAll);
  tables.AddPrim<CElementInfoAllPrimOpt>("a").AddPrim<CElementInfoAllPrimOpt>("b");
  ExpectColumns(tables, kUnknownElements,
                {{"<r><b>2</b><a>1</a></r>", "1 2", "1 2"},
                 {"<r><b>2</b><a>1</a><x/></r>", LeftOver("x"), "1 2"},
                 {"<r><a>1</a><x/><b>2</b></r>", LeftOver("x"), "1 -"},
                 {"<r><x/><a>1</a></r>", LeftOver("x"), "- -"},
                 {"<r><a>1</a><a>2</a></r>", LeftOver("a"), "1 -"}});
  CReadingClass mandatory(kAll);
  mandatory.AddPrim<CElementInfoAllPrimMnd>("a");
  const std::string missing = Process("Failed to find the mandatory element [a].");
  ExpectColumns(mandatory, kUnknownElements, {{"<r><x/><a>1</a></r>", missing, missing}});
}

TEST(IgnoreUnknownElements, SkipsBeforeAndBehindTheChosenElement) {
  CReadingClass tables(kChoice);
  tables.AddPrim<CElementInfoChoicePrimOpt>("a").AddPrim<CElementInfoChoicePrimOpt>("b");
  ExpectColumns(tables, kUnknownElements,
                {{"<r><a>1</a><x/></r>", LeftOver("x"), "1 -"},
                 {"<r><a>1</a><b>2</b></r>", LeftOver("b"), "1 -"},
                 {"<r><x/><y/><b>2</b></r>", LeftOver("x"), "- 2"},
                 {"<r><x/></r>", LeftOver("x"), "- -"}});
  CReadingClass mandatory(kChoice);
  mandatory.AddTexts<CElementInfoChoicePrimCol>(1, 3);
  ExpectColumns(mandatory, kUnknownElements,
                {{"<r><x/><c>1</c></r>", kNothingChosen, "[1]"},
                 {"<r><x/></r>", kNothingChosen, kNothingChosen}});
}

// --- IgnoreUnknownElements: what stands in front of a member of a sequence

TEST(IgnoreUnknownElements, MandatoryMembersAreLookedFor) {
  CReadingClass item;
  item.AddPrim<CElementInfoSeqPrimMnd>("v");
  CReadingClass tables;
  tables.AddPrim<CElementInfoSeqPrimMnd>("a").AddEnum<CElementInfoSeqEnumMnd>("e").AddMandatory(
      "item", kReal, item);
  const char kClean[] = "<r><a>1</a><e>red</e><item><v>2</v></item></r>";
  ExpectColumns(
      tables, kUnknownElements,
      {{kClean, "1 0 {2}", "1 0 {2}"},
       {"<r><x/><a>1</a><e>red</e><item><v>2</v></item></r>", Missing("a"), "1 0 {2}"},
       {"<r><a>1</a><x/><y/><e>red</e><item><v>2</v></item></r>", Missing("e"), "1 0 {2}"},
       {"<r><a>1</a><e>red</e><x/><item><v>2</v></item></r>", Missing("item"), "1 0 {2}"},
       {"<r><a>1</a><e>red</e><item><x/><v>2</v></item></r>",
        "CQzException: Failed to find the required child element [v].\nPath: /r/item", "1 0 {2}"},
       {"<r><a>1</a><item><v>2</v></item></r>", Missing("e"), Missing("e")}});
}

TEST(IgnoreUnknownElements, SomeMembersAreNotLookedFor) {
  CReadingClass shape;
  shape.name = "Shape";
  shape.AddPrim<CElementInfoSeqPrimMnd>("v");
  CReadingClass abstract;
  abstract.AddAbstract("shape");
  const std::string unsuitable =
      "CQzException: Failed to find a suitable substitution element for [shape].\nPath: /r";
  ExpectColumns(abstract, kUnknownElements,
                {{"<r><shape xsi:type='Shape'><v>1</v></shape></r>", "{1}", "{1}"},
                 {"<r><x/><shape xsi:type='Shape'><v>1</v></shape></r>", unsuitable, unsuitable}});
  CReadingClass open;
  open.AddOpen("a");
  const std::string nothingTaken =
      "CQzException: Failed to find the required element from namespace [urn:n].\nPath: /r";
  ExpectColumns(open, kUnknownElements,
                {{"<r><a/></r>", "a", "a"}, {"<r><x/><a/></r>", nothingTaken, nothingTaken}});
  CReadingClass collection;
  collection.AddTexts<CElementInfoSeqPrimCol>(2, 3);
  ExpectColumns(collection, kUnknownElements,
                {{"<r><x/><c>1</c><c>2</c></r>", kTooFew, kTooFew},
                 {"<r><c>1</c><x/><c>2</c></r>", kTooFew, kTooFew}});
}

// What a member of a group does not look for, the walk of the group does, as long as there are
// children.
TEST(IgnoreUnknownElements, WalkOfAGroupLooksForEveryMandatoryMember) {
  CReadingClass shape;
  shape.name = "Shape";
  shape.AddPrim<CElementInfoSeqPrimMnd>("v");
  CReadingGroup prim, enumeration, real, abstract, open;
  prim.AddPrim<CElementInfoSeqPrimMnd>("a");
  enumeration.AddEnum<CElementInfoSeqEnumMnd>("a");
  real.AddMandatory("a", kReal, shape);
  abstract.AddAbstract("a");
  open.AddOpen("a");
  const struct {
    const CReadingGroup& group;
    const char* element;
    const char* read;
    std::string neverFound;
  } cases[] = {
      {prim, "<a>1</a>", "{1}", "(null)"},
      {enumeration, "<a>green</a>", "{1}", "(null)"},
      {real, "<a><v>1</v></a>", "{{1}}", "(null)"},
      {abstract, "<a xsi:type='Shape'><v>1</v></a>", "{{1}}", "(null)"},
      {open, "<a/>", "{a}", Missing("a")},
  };
  for (const auto& c : cases) {
    CReadingClass tables;
    tables.AddOptional<CElementInfoSeqClsOpt>("g", kPseudo, c.group);
    const std::string clean = "<r>" + std::string(c.element) + "</r>";
    const std::string behind = "<r><x/><y/>" + std::string(c.element) + "</r>";
    ExpectColumns(tables, kUnknownElements,
                  {{clean.c_str(), c.read, c.read},
                   {behind.c_str(), LeftOver("x"), c.read},
                   {"<r><x/></r>", LeftOver("x"), c.neverFound}});
  }
}

TEST(IgnoreUnknownElements, MandatoryGroupIsLookedForByItsMembers) {
  CReadingGroup group;
  group.AddPrim<CElementInfoSeqPrimMnd>("v");
  CReadingClass requiring, lenient;
  requiring.AddMandatory("g", kPseudo, group, true);
  lenient.AddMandatory("g", kPseudo, group, false);
  ExpectColumns(
      requiring, kUnknownElements,
      {{"<r><x/><v>1</v></r>", Missing("g"), "{1}"}, {"<r><x/></r>", Missing("g"), Missing("g")}});
  ExpectColumns(
      lenient, kUnknownElements,
      {{"<r><x/><v>1</v></r>", LeftOver("x"), "{1}"}, {"<r><x/></r>", LeftOver("x"), "{-}"}});
}

// --- IgnoreMissingMandatoryElements

TEST(IgnoreMissingMandatoryElements, PassesOverPrimitivesEnumerationsAndClasses) {
  CReadingClass item;
  item.AddPrim<CElementInfoSeqPrimMnd>("v");
  CReadingClass tables;
  tables.AddPrim<CElementInfoSeqPrimMnd>("a")
      .AddEnum<CElementInfoSeqEnumMnd>("e")
      .AddMandatory("item", kReal, item)
      .AddPrim<CElementInfoSeqPrimOpt>("b");
  ExpectColumns(
      tables, kMissingMandatory,
      {{"<r><e>red</e><item><v>2</v></item><b>3</b></r>", Missing("a"), "- 0 {2} 3"},
       {"<r><a>1</a><item><v>2</v></item><b>3</b></r>", Missing("e"), "1 - {2} 3"},
       {"<r><a>1</a><e>red</e><b>3</b></r>", Missing("item"), "1 0 {-} 3"},
       {"<r><a>1</a><e>red</e><item/><b>3</b></r>",
        "CQzException: Failed to find the required child element [v].\nPath: /r/item", "1 0 {-} 3"},
       {"<r/>", Missing("a"), "- - {-} -"},
       {"<r><x/></r>", Missing("a"), LeftOver("x")},
       {"<r><b>3</b><a>1</a></r>", Missing("a"), LeftOver("a")}});
}

TEST(IgnoreMissingMandatoryElements, DoesNotReachOtherMandatoryThings) {
  CReadingGroup group;
  group.AddPrim<CElementInfoSeqPrimMnd>("v");
  CReadingClass abstract, open, requiring, collection;
  abstract.AddAbstract("shape");
  open.AddOpen("a");
  requiring.AddMandatory("g", kPseudo, group, true);
  collection.AddTexts<CElementInfoSeqPrimCol>(2, 3);
  CReadingClass all(kAll), choice(kChoice);
  all.AddPrim<CElementInfoAllPrimMnd>("a");
  choice.AddTexts<CElementInfoChoicePrimCol>(1, 3);
  CReadingClass attribute;
  attribute.AddAttribute("id", false);
  const struct {
    const CReadingClass& tables;
    std::string failure;
  } cases[] = {
      {abstract,
       "CQzException: Failed to find a suitable substitution element for [shape].\nPath: /r"},
      {open, Missing("a")},
      {requiring, Missing("g")},
      {collection, kTooFew},
      {all, Process("Failed to find the mandatory element [a].")},
      {choice, kNothingChosen},
      {attribute, Process("Failed to find the required Attribute [id].")},
  };
  for (const auto& c : cases) {
    ExpectColumns(c.tables, kMissingMandatory, {{"<r/>", c.failure, c.failure}});
  }
}

TEST(IgnoreMissingMandatoryElements, DoesNotReachTheMembersOfAGroup) {
  CReadingGroup group;
  group.AddPrim<CElementInfoSeqPrimMnd>("v").AddPrim<CElementInfoSeqPrimMnd>("w");
  CReadingClass tables;
  tables.AddMandatory("g", kPseudo, group, false);
  ExpectColumns(tables, kMissingMandatory,
                {{"<r/>", "{-}", "{-}"},
                 {"<r><v>1</v><w>2</w></r>", "{1}", "{1}"},
                 {"<r><w>2</w></r>", LeftOver("w"), LeftOver("w")},
                 {"<r><v>1</v></r>", LeftOver("v"), LeftOver("v")}});
}

// --- IgnoreMissingChoice

TEST(IgnoreMissingChoice, AcceptsAChoiceWithNothingChosen) {
  CReadingClass tables(kChoice);
  tables.AddTexts<CElementInfoChoicePrimCol>(1, 3);
  ExpectColumns(tables, kMissingChoice,
                {{"<r><c>1</c></r>", "[1]", "[1]"},
                 {"<r/>", kNothingChosen, "[]"},
                 {"<r><x/></r>", kNothingChosen, LeftOver("x")}});
  CSerializationContext both = Flagged(kMissingChoice);
  both.SetIgnoreUnknownElements(true);
  EXPECT_EQ("[]", Read(tables, "<r><x/></r>", both));
  EXPECT_EQ("[1]", Read(tables, "<r><x/><c>1</c></r>", both));
}

TEST(IgnoreMissingChoice, IsNeededForAChildButNotForAGroup) {
  CReadingClass item(kChoice);
  item.AddTexts<CElementInfoChoicePrimCol>(1, 3);
  CReadingGroup group(kChoice);
  group.AddTexts<CElementInfoChoicePrimCol>(1, 3);
  CReadingClass child, pseudo, requiring;
  child.AddMandatory("item", kReal, item);
  pseudo.AddMandatory("g", kPseudo, group, false);
  requiring.AddMandatory("g", kPseudo, group, true);
  ExpectColumns(
      child, kMissingChoice,
      {{"<r><item/></r>",
        "CQzException: No child elements within the element [item] were populated. The element "
        "represents a choice, so one and only one element should be populated. The element "
        "contained no sutable child elements\nPath: /r/item",
        "{[]}"}});
  ExpectColumns(pseudo, kMissingChoice, {{"<r/>", "{[]}", "{[]}"}});
  ExpectColumns(requiring, kMissingChoice, {{"<r/>", Missing("g"), Missing("g")}});
}

TEST(IgnoreMissingChoice, IsNotNeededWhereAMemberMayBeEmpty) {
  CReadingClass inner(kChoice);
  inner.AddTexts<CElementInfoChoicePrimCol>(1, 3);
  CReadingClass collection(kChoice), optional(kChoice);
  collection.AddTexts<CElementInfoChoicePrimCol>(0, 3);
  optional.AddOptional<CElementInfoChoiceClsOpt>("item", kReal, inner);
  ExpectColumns(collection, kMissingChoice, {{"<r/>", "[]", "[]"}});
  ExpectColumns(optional, kMissingChoice,
                {{"<r/>", "(null)", "(null)"}, {"<r><item/></r>", "{[]}", "{[]}"}});
}

// --- IgnoreInvalidCollectionCounts

TEST(IgnoreInvalidCollectionCounts, AcceptsEveryCount) {
  CReadingClass sequence, choice(kChoice);
  sequence.AddTexts<CElementInfoSeqPrimCol>(2, 3);
  choice.AddTexts<CElementInfoChoicePrimCol>(2, 3);
  for (const CReadingClass* tables : {&sequence, &choice}) {
    ExpectColumns(*tables, kCollectionCounts,
                  {{"<r><c>1</c><c>2</c></r>", "[12]", "[12]"},
                   {"<r><c>1</c></r>", kTooFew, "[1]"},
                   {"<r><c>1</c><c>2</c><c>3</c><c>4</c></r>", kTooMany, "[1234]"}});
  }
  ExpectColumns(sequence, kCollectionCounts, {{"<r/>", kTooFew, "[]"}});
  ExpectColumns(choice, kCollectionCounts, {{"<r/>", kNothingChosen, kNothingChosen}});
}

TEST(IgnoreInvalidCollectionCounts, WrongCountInAGroupGivesTheElementsBack) {
  CReadingGroup group;
  group.AddTexts<CElementInfoSeqPrimCol>(2, 3);
  CReadingClass tables;
  tables.AddOptional<CElementInfoSeqClsOpt>("g", kPseudo, group);
  ExpectColumns(tables, kCollectionCounts,
                {{"<r><c>1</c><c>2</c></r>", "{[12]}", "{[12]}"},
                 {"<r><c>1</c></r>", LeftOver("c"), "{[1]}"},
                 {"<r><c>1</c><c>2</c><c>3</c><c>4</c></r>", LeftOver("c"), "{[1234]}"}});
}

TEST(IgnoreInvalidCollectionCounts, DoesNotMakeACollectionReadableInAnAll) {
  CReadingClass tables(kAll);
  tables.AddTexts<CElementInfoAllPrimCol>(0, 3);
  const std::string never = Process("Not implemented, should never be called");
  ExpectColumns(tables, kCollectionCounts,
                {{"<r/>", never, never}, {"<r><c>1</c></r>", never, never}});
}

// --- IgnoreNamespaces

TEST(IgnoreNamespaces, ElementsMatchByLocalNameInEveryModelGroup) {
  CReadingClass sequence, all(kAll), choice(kChoice), inO;
  sequence.AddPrim<CElementInfoSeqPrimMnd>("a");
  all.AddPrim<CElementInfoAllPrimOpt>("a");
  choice.AddPrim<CElementInfoChoicePrimOpt>("a");
  inO.AddPrim<CElementInfoSeqPrimMnd>("a", "urn:o");
  ExpectColumns(sequence, kNamespaces, {{"<r><o:a>1</o:a></r>", Missing("a"), "1"}});
  ExpectColumns(all, kNamespaces, {{"<r><o:a>1</o:a></r>", LeftOver("a"), "1"}});
  ExpectColumns(choice, kNamespaces, {{"<r><o:a>1</o:a></r>", LeftOver("a"), "1"}});
  ExpectColumns(inO, kNamespaces,
                {{"<r><a>1</a></r>", Missing("a"), "1"}, {"<r><o:a>1</o:a></r>", "1", "1"}});
}

TEST(IgnoreNamespaces, ReachesCollectionsAndChildren) {
  CReadingClass item;
  item.AddPrim<CElementInfoSeqPrimMnd>("v");
  CReadingClass tables;
  tables.AddMandatory("item", kReal, item).AddTexts<CElementInfoSeqPrimCol>(0, -1);
  ExpectColumns(tables, kNamespaces,
                {{"<r><o:item><o:v>1</o:v></o:item></r>", Missing("item"), "{1} []"},
                 {"<r><item><v>1</v></item><o:c>2</o:c><c>3</c></r>", LeftOver("c"), "{1} [23]"}});
}

TEST(IgnoreNamespaces, AttributesOfEnumerationsMatchByLocalNameButNotThoseOfPrimitives) {
  CReadingClass tables;
  tables.AddEnumAttribute("e").AddAttribute("id");
  ExpectColumns(tables, kNamespaces,
                {{"<r e='red' id='1'/>", "0 1", "0 1"},
                 {"<r o:e='red'/>", UnknownAttribute("/r/o:@e"), "0 -"},
                 {"<r o:id='1'/>", UnknownAttribute("/r/o:@id"), UnknownAttribute("/r/o:@id")}});
}

TEST(IgnoreNamespaces, IsSetByADocumentWithoutNamespaces) {
  CReadingClass tables;
  tables.failIfAttributeUnknown = false;  // the declarations are attributes now
  tables.AddPrim<CElementInfoSeqPrimMnd>("a", "urn:o");
  const CSerializationContext context =
      With([](CSerializationContext& c) { c.SetSchemaType(SchemaType_NoNamespaces); });
  EXPECT_EQ("1", Read(tables, "<r><a>1</a></r>", context));
  EXPECT_EQ(Missing("a"), Read(tables, "<r><o:a>1</o:a></r>", context));
}
