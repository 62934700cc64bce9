#include <type_traits>

#include "qzxml/collections/Element.h"
#include "qzxml/serialization/ElementInfoAll.h"
#include "tests/support/AtCursor.h"
#include "tests/support/ClassTrial.h"
#include "tests/support/MemberTrial.h"
#include "tests/support/QzTest.h"

// The members of an xs:all that are no classes: values, open content and collections, one by one;
// and what Validate of every member decides.

using namespace QzXmlLib16;
using namespace QzXmlLib16Data;
using namespace qztest;

// --- The grid

static_assert(std::is_abstract_v<CElementInfoAllEnumCol>);
static_assert(std::is_base_of_v<CElementInfo, CElementInfoAllEnumCol>);
static_assert(!std::is_base_of_v<CElementInfoAllCol, CElementInfoAllEnumCol>);
static_assert(std::is_base_of_v<CElementInfoAllCol, CElementInfoAllAbsClsCol>);
static_assert(std::is_base_of_v<CElementInfoAllCol, CElementInfoAllClsCol>);
static_assert(std::is_base_of_v<CElementInfoAllCol, CElementInfoAllPrimCol>);
static_assert(std::is_base_of_v<CElementInfoAllCol, CElementInfoAllUntpdCol>);
static_assert(!std::is_abstract_v<CElementInfoAllCol>);

namespace {

constexpr XmlElementType kNeither = static_cast<XmlElementType>(2);

CElementInfo* Cls(XmlElementType type, bool requiresContent) {
  return new CElementInfoAllClsMnd("a", "", 0, type, nullptr, 0, requiresContent);
}

const char kMissing[] = "CQzValidationException: Failed to find the mandatory element [a].";

// What Validate makes of a member, found or not, in a class that enforces it or not.
struct Verdict {
  const char* name;
  CElementInfo* member;
  std::string missing;          // not found, enforced
  std::string missingInAGroup;  // not found, not enforced
  std::string found;            // in both
};

std::string VerdictOf(CTrial& trial, const CElementInfo& member, bool found, bool enforce,
                      const CSerializationContext& context) {
  return Outcome(
      [&] { return member.Validate(context, &trial.object(), found, enforce) ? "true" : "false"; });
}

void ExpectVerdict(const Verdict& v) {
  CTrial trial(v.member, Unset::Value);
  for (const Flag flag : kFlagsForMissing) {
    const CSerializationContext context = Flagged(flag);
    const std::string where = std::string(v.name) + " with " + NameOf(flag);
    EXPECT_EQ(v.missing, VerdictOf(trial, *v.member, false, true, context)) << where;
    EXPECT_EQ(v.missingInAGroup, VerdictOf(trial, *v.member, false, false, context)) << where;
    EXPECT_EQ(v.found, VerdictOf(trial, *v.member, true, true, context)) << where;
    EXPECT_EQ(v.found, VerdictOf(trial, *v.member, true, false, context)) << where;
  }
}

}  // namespace

// --- Values

TEST(ElementInfoAllPrimMnd, TakesItsElementAtTheCursorAndMustBeWritten) {
  ExpectPrimitive<CElementInfoAllPrimMnd>(true);
}

TEST(ElementInfoAllPrimOpt, TakesItsElementAtTheCursorAndMayStayUnwritten) {
  ExpectPrimitive<CElementInfoAllPrimOpt>(false);
}

TEST(ElementInfoAllEnumMnd, TakesItsElementAtTheCursorAndMustBeWritten) {
  ExpectEnumeration<CElementInfoAllEnumMnd>(true);
}

TEST(ElementInfoAllEnumOpt, TakesItsElementAtTheCursorAndMayStayUnwritten) {
  ExpectEnumeration<CElementInfoAllEnumOpt>(false);
}

TEST(ElementInfoAllPrim, MatchesInItsOwnNamespace) {
  PrimOptions inO;
  inO.uri = "urn:o";
  const std::string held = "<r><AA:a xmlns:AA=\"urn:o\">1</AA:a></r>";
  for (CElementInfo* member :
       {static_cast<CElementInfo*>(Prim<CElementInfoAllPrimMnd>("a", 0, inO)),
        static_cast<CElementInfo*>(Prim<CElementInfoAllPrimOpt>("a", 0, inO))}) {
    CTrial trial(member, Unset::Value);
    trial.Expect({{"<o:a>1</o:a>", kReal, kNoFlag, "true, at end, 1"},
                  {"<a>1</a>", kReal, kNoFlag, "false, at a, (unset)"},
                  {"<a>1</a>", kPseudo, kNamespaces, "true, at end, 1"}});
    trial.Take("<o:a>1</o:a>");
    EXPECT_EQ("true, " + held, trial.Give());
  }
}

// --- Open content

TEST(ElementInfoAllUntpdOpt, TakesWhatItsRestrictionAllows) {
  ExpectOpenContent([](const char* name, const char* restriction, const char* target) {
    return new CElementInfoAllUntpdOpt(name, "", 0, restriction, target);
  });
}

TEST(ElementInfoAllUntpdMnd, FillsTheElementThatIsThereByItsLocalName) {
  for (const XmlElementType parent : {kReal, kPseudo}) {
    CTrial(new CElementInfoAllUntpdMnd("a", "urn:unused", 0, "##any", ""),
           HeldElement("was", "##any"))
        .Expect(
            {{"<a k='1'><y/>2</a><b/>", parent, kNoFlag, "true, at b, <r><a k=\"1\"><y/>2</a></r>"},
             {"<o:a/>", parent, kNoFlag, "true, at end, <r><AA:a xmlns:AA=\"urn:o\"/></r>"},
             {"<a/><a/>", parent, kNoFlag, "true, at a[2], <r><a/></r>"},
             {"", parent, kNoFlag, "false, at end, <r><was/></r>"},
             {"<b/><a/>", parent, kNoFlag, "false, at b, <r><was/></r>"},
             {"<b/><a/>", parent, kUnknownElements, "false, at b, <r><was/></r>"},
             {"<b/>", parent, kMissingMandatory, "false, at b, <r><was/></r>"}});
  }
}

TEST(ElementInfoAllUntpdMnd, AnyElementIsOfAnyName) {
  for (const XmlElementType parent : {kReal, kPseudo}) {
    CTrial(new CElementInfoAllUntpdMnd("AnyElement", "", 0, "##any", ""),
           HeldElement("was", "##any"))
        .Expect({{"<z/><b/>", parent, kNoFlag, "true, at b, <r><z/></r>"},
                 {"", parent, kNoFlag, "false, at end, <r><was/></r>"}});
  }
}

TEST(ElementInfoAllUntpdMnd, ItIsTheRestrictionOfTheElementThatIsThereThatCounts) {
  CTrial(new CElementInfoAllUntpdMnd("AnyElement", "", 0, "##any", ""),
         HeldElement("was", "##local"))
      .Expect({{"<o:a/>", kReal, kNoFlag, "false, at o:a, <r><was/></r>"},
               {"<a/>", kReal, kNoFlag, "true, at end, <r><a/></r>"}});
}

TEST(ElementInfoAllUntpdMnd, MustBeWritten) {
  const CTrial trial(new CElementInfoAllUntpdMnd("AnyElement", "", 0, "##any", ""), Unset::Object);
  EXPECT_EQ("CQzInvalidParamException: The Property [AnyElement] is mandatory, it may not be NULL",
            trial.Give());
}

// --- Collections

TEST(ElementInfoAllCol, TakesARunOfElementsAndNeverSaysSo) {
  CTables item;
  item.Add(TextAttribute("id", 0), Unset::Value);
  for (const XmlElementType parent : {kReal, kPseudo}) {
    for (CElementInfoAllCol* member :
         {new CElementInfoAllCol("a", "", 0),
          static_cast<CElementInfoAllCol*>(new CElementInfoAllPrimCol("a", "", 0))}) {
      CTrial(member, Texts("a", 2, 3))
          .Expect(
              {{"<a>1</a><a>2</a><b/>", parent, kNoFlag, "false, at b, <r><a>1</a><a>2</a></r>"},
               {"<a>1</a>", parent, kNoFlag, "false, at end, <r><a>1</a></r>"},
               {"<a/><a/><a/><a/>", parent, kNoFlag, "false, at end, <r><a/><a/><a/><a/></r>"},
               {"<b/><a/>", parent, kNoFlag, "false, at b, <r/>"},
               {"<b/><a/>", parent, kUnknownElements, "false, at b, <r/>"},
               {"<o:a/>", parent, kNoFlag, "false, at o:a, <r/>"},
               {"", parent, kNoFlag, "false, at end, <r/>"}});
    }
    for (CElementInfoAllCol* member :
         {static_cast<CElementInfoAllCol*>(new CElementInfoAllClsCol("a", "", 0, kReal)),
          static_cast<CElementInfoAllCol*>(new CElementInfoAllAbsClsCol("a", "", 0, kReal))}) {
      CTrial(member, Objects(item, "a", 2, 2))
          .Expect({{"<a id='1'/><a id='2'/><b/>", parent, kNoFlag,
                    "false, at b, <r><a id=\"1\"/><a id=\"2\"/></r>"},
                   {"<b/>", parent, kNoFlag, "false, at b, <r/>"}});
    }
  }
}

TEST(ElementInfoAllUntpdCol, TakesElementsOfAnyNameWhateverItsOwnIs) {
  for (const char* name : {"AnyElement", "a"}) {
    CTrial(new CElementInfoAllUntpdCol(name, "", 0), Elements("##any", 0, -1))
        .Expect({{"<a/><z>1</z><o:b/>", kReal, kNoFlag,
                  "false, at end, <r><a/><z>1</z><AA:b xmlns:AA=\"urn:o\"/></r>"},
                 {"", kPseudo, kNoFlag, "false, at end, <r/>"}});
  }
}

TEST(ElementInfoAllCol, IsWrittenOnlyWithAValidCount) {
  const std::string kTooFew =
      "CQzValidationException: The Minimum number of [a] elements allowed in this collection is 2";
  const std::string kTooMany =
      "CQzValidationException: The Maximum number of [a] elements allowed in this collection is 3";
  CTrial trial(new CElementInfoAllPrimCol("a", "", 0), Texts("a", 2, 3));
  const CSerializationContext ignoring = Flagged(kCollectionCounts);
  struct Case {
    const char* children;
    std::string written;
    std::string ignoringCounts;
  };
  const Case cases[] = {{"", kTooFew, "false, <r/>"},
                        {"<a>1</a>", kTooFew, "true, <r><a>1</a></r>"},
                        {"<a/><a/>", "true, <r><a/><a/></r>", "true, <r><a/><a/></r>"},
                        {"<a/><a/><a/>", "true, <r><a/><a/><a/></r>", "true, <r><a/><a/><a/></r>"},
                        {"<a/><a/><a/><a/>", kTooMany, "true, <r><a/><a/><a/><a/></r>"}};
  for (const Case& c : cases) {
    trial.Take(c.children);
    EXPECT_EQ(c.written, trial.Give()) << c.children;
    EXPECT_EQ(c.ignoringCounts, trial.Give(ignoring)) << c.children;
  }
}

TEST(ElementInfoAllCol, TellsTheWriterWhereItsItemsBeginAndEnd) {
  CTrial trial(new CElementInfoAllPrimCol("a", "", 0), Texts("a", 0, -1));
  EXPECT_EQ((std::vector<std::string>{"start r", "end"}), trial.GiveCalls());
  trial.Take("<a>1</a><a>2</a>");
  EXPECT_EQ((std::vector<std::string>{"start r", "[1] start a", "text 1 23", "end", "[1] start a",
                                      "text 2 23", "end", "[3] end"}),
            trial.GiveCalls());
}

TEST(ElementInfoAllCol, AttributesOfItemsWithoutATagAreWrittenInFront) {
  CTables group(XmlElementGroupType_Sequence, kPseudo);
  group.Add(TextAttribute("id", 0), Unset::Value);
  group.Add(Prim<CElementInfoAllPrimOpt>("x", 1), Unset::Value);
  struct Case {
    CElementInfo* member;
    const char* written;
  };
  const Case cases[] = {
      {new CElementInfoAllClsCol("g", "", 0, kPseudo), "true, <r id=\"7\"><x>1</x></r>"},
      {new CElementInfoAllAbsClsCol("g", "", 0, kPseudo), "true, <r id=\"7\"><x>1</x></r>"},
      // A type of the member other than 1 leaves them out, and so do the other members.
      {new CElementInfoAllClsCol("g", "", 0, kReal), "true, <r><x>1</x></r>"},
      {new CElementInfoAllAbsClsCol("g", "", 0, kNeither), "true, <r><x>1</x></r>"},
      {new CElementInfoAllCol("g", "", 0), "true, <r><x>1</x></r>"}};
  for (const Case& c : cases) {
    CTrial trial(c.member, Groups(group, 0, -1));
    trial.rootAttributes = " id='7'";
    trial.Take("<x>1</x>");
    EXPECT_EQ(c.written, trial.Give());
  }
}

TEST(ElementInfoAll, HeldPropertyThatCannotBeReadFailsWithTheNameOfTheMember) {
  CElementInfo* const members[] = {new CElementInfoAllUntpdMnd("a", "", 0, "##any", ""),
                                   new CElementInfoAllPrimCol("a", "", 0),
                                   new CElementInfoAllUntpdCol("a", "", 0)};
  for (CElementInfo* member : members) {
    CTrial trial(member, Unset::Object);
    trial.failsToGive = "Out of order.";
    EXPECT_EQ("CQzValidationException: Failed to get the property value for [a].\nOut of order.",
              trial.Take("<a/>"));
    EXPECT_EQ("CQzValidationException: Failed to get the property value for [a].\nOut of order.",
              trial.Give());
  }
}

// --- Validate

TEST(ElementInfoAll, MissingMandatoryMemberFailsWhereItIsEnforcedWhateverIsIgnored) {
  const Verdict verdicts[] = {
      {"AbsClsMnd", new CElementInfoAllAbsClsMnd("a", "", 0, kReal, nullptr), kMissing, "false",
       "true"},
      {"AbsClsMnd pseudo", new CElementInfoAllAbsClsMnd("a", "", 0, kPseudo, nullptr), kMissing,
       "false", "true"},
      {"EnumMnd", Enum<CElementInfoAllEnumMnd>("a", 0), kMissing, "false", "true"},
      {"PrimMnd", Prim<CElementInfoAllPrimMnd>("a", 0), kMissing, "false", "true"},
      {"UntpdMnd", new CElementInfoAllUntpdMnd("a", "", 0, "##any", ""), kMissing, "false",
       "true"}};
  for (const Verdict& verdict : verdicts) ExpectVerdict(verdict);
}

TEST(ElementInfoAllClsMnd, MissingElementPassesUnlessContentIsRequired) {
  const Verdict verdicts[] = {
      {"real", Cls(kReal, false), "true", "false", "true"},
      {"real with content", Cls(kReal, true), kMissing, "false", "true"},
      {"pseudo", Cls(kPseudo, false), kMissing, "false", "true"},
      {"pseudo with content", Cls(kPseudo, true), kMissing, "false", "true"},
      {"neither", Cls(kNeither, false), "true", "false", "true"},
      {"neither with content", Cls(kNeither, true), kMissing, "false", "true"}};
  for (const Verdict& verdict : verdicts) ExpectVerdict(verdict);
}

TEST(ElementInfoAll, OptionalMemberMayBeMissing) {
  const Verdict verdicts[] = {
      {"AbsClsOpt", new CElementInfoAllAbsClsOpt("a", "", 0, kReal, nullptr), "true", "true",
       "true"},
      {"AbsClsOpt pseudo", new CElementInfoAllAbsClsOpt("a", "", 0, kPseudo, nullptr), "true",
       "true", "true"},
      {"ClsOpt", new CElementInfoAllClsOpt("a", "", 0, kReal, nullptr, 0), "true", "true", "true"},
      {"ClsOpt pseudo", new CElementInfoAllClsOpt("a", "", 0, kPseudo, nullptr, 0), "true", "true",
       "true"},
      {"EnumOpt", Enum<CElementInfoAllEnumOpt>("a", 0), "true", "true", "true"},
      {"PrimOpt", Prim<CElementInfoAllPrimOpt>("a", 0), "true", "true", "true"},
      {"UntpdOpt", new CElementInfoAllUntpdOpt("a", "", 0, "##any", ""), "true", "true", "true"}};
  for (const Verdict& verdict : verdicts) ExpectVerdict(verdict);
}

TEST(ElementInfoAllCol, CannotBeValidated) {
  const std::string kNever = "CQzException: Not implemented, should never be called";
  const Verdict verdicts[] = {
      {"Col", new CElementInfoAllCol("a", "", 0), kNever, kNever, kNever},
      {"AbsClsCol", new CElementInfoAllAbsClsCol("a", "", 0, kReal), kNever, kNever, kNever},
      {"ClsCol", new CElementInfoAllClsCol("a", "", 0, kPseudo), kNever, kNever, kNever},
      {"PrimCol", new CElementInfoAllPrimCol("a", "", 0), kNever, kNever, kNever},
      {"UntpdCol", new CElementInfoAllUntpdCol("a", "", 0), kNever, kNever, kNever}};
  for (const Verdict& verdict : verdicts) ExpectVerdict(verdict);
}

TEST(ElementInfoAll, FailureOfValidateHasNoPathOfItsOwn) {
  CTrial trial(Prim<CElementInfoAllPrimMnd>("a", 0), Unset::Value);
  EXPECT_QZ_THROW_FULL(CQzValidationException, "Failed to find the mandatory element [a].", "",
                       trial.member().Validate(CSerializationContext(), nullptr, false, true));
  CTrial collection(new CElementInfoAllPrimCol("a", "", 0), Texts("a", 0, -1));
  EXPECT_QZ_THROW_FULL(CQzException, "Not implemented, should never be called", "",
                       collection.member().Validate(CSerializationContext(), nullptr, true, false));
}
