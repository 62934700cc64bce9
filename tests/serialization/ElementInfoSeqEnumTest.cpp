#include "qzxml/serialization/ElementInfoSeq.h"
#include "tests/support/MemberTrial.h"
#include "tests/support/QzTest.h"

// Enumerations of a sequence. The colours are "red" 0, "green" 1 and "blue" 2; what a member took
// shows as the number.

using namespace QzXmlLib16;
using namespace QzXmlLib16Data;
using namespace qztest;

namespace {

using Mnd = CElementInfoSeqEnumMnd;
using Opt = CElementInfoSeqEnumOpt;

const std::string kMissing =
    "CQzValidationException: Failed to find the required child element [a].\nPath: /r";
const std::string kUnexpected = "CQzValidationException: Unexpected Attribute found.\nPath: /r/a/";
const std::string kInvalidNil =
    "CQzValidationException: Invalid use of 'nil' attribute in non-nillable element.\nPath: /r/a";

std::string UnexpectedNil(const std::string& value) {
  return "CQzValidationException: Unexpected Value [" + value +
         "] for 'nil' Attribute found.\nPath: /r/a/xsi:@nil";
}

using Make = CElementInfo* (*)(bool nillable, const char* defaultValue);
template <typename Member>
CElementInfo* A(bool nillable, const char* defaultValue) {
  return Enum<Member>("a", 0, nillable, defaultValue);
}

// The mandatory and the optional member, which treat a value alike.
struct Occurrence {
  const char* name;
  Make make;
} const kBoth[] = {{"mandatory", &A<Mnd>}, {"optional", &A<Opt>}};

CTrial TrialOf(Make make, bool nillable = false, const char* defaultValue = nullptr) {
  return CTrial(make(nillable, defaultValue), Unset::Value);
}

CSerializationContext NoNamespaces() {
  return With([](CSerializationContext& c) { c.SetSchemaType(SchemaType_NoNamespaces); });
}

}  // namespace

// --- Where the element is looked for

TEST(ElementInfoSeqEnumMnd, MustStandAtTheCursorInARealParent) {
  TrialOf(&A<Mnd>).Expect({{"<a>green</a><b/>", kReal, kNoFlag, "true, at b, 1"},
                           {"<a>green</a><a>blue</a>", kReal, kNoFlag, "true, at a[2], 1"},
                           {"", kReal, kNoFlag, kMissing},
                           {"<b/>", kReal, kNoFlag, kMissing},
                           {"<b/><a>green</a>", kReal, kNoFlag, kMissing},
                           {"<o:a>green</o:a>", kReal, kNoFlag, kMissing},
                           {"<o:a>green</o:a>", kReal, kNamespaces, "true, at end, 1"}});
}

TEST(ElementInfoSeqEnumMnd, PassesUnknownElementsInARealParentAsThePrimitiveDoes) {
  TrialOf(&A<Mnd>).Expect({{"<b/><c/><a>green</a><d/>", kReal, kUnknownElements, "true, at d, 1"},
                           {"<b/><c/>", kReal, kUnknownElements, kMissing},
                           {"", kReal, kUnknownElements, kMissing}});
}

TEST(ElementInfoSeqEnumMnd, LooksAtTheCursorAloneInAPseudoParent) {
  for (const Flag flag : {kNoFlag, kUnknownElements, kMissingMandatory}) {
    TrialOf(&A<Mnd>).Expect({{"<a>green</a><b/>", kPseudo, flag, "true, at b, 1"},
                             {"<a>green</a><a>blue</a>", kPseudo, flag, "true, at a[2], 1"},
                             {"", kPseudo, flag, "false, at end, (unset)"},
                             {"<b/>", kPseudo, flag, "false, at b, (unset)"},
                             {"<b/><a>green</a>", kPseudo, flag, "false, at b, (unset)"},
                             {"<o:a>green</o:a>", kPseudo, flag, "false, at o:a, (unset)"}});
  }
  TrialOf(&A<Mnd>).Expect({{"<o:a>green</o:a>", kPseudo, kNamespaces, "true, at end, 1"}});
}

TEST(ElementInfoSeqEnumMnd, MayBeMissingWhereTheContextSaysSoInARealParentAlone) {
  TrialOf(&A<Mnd>).Expect({{"", kReal, kMissingMandatory, "true, at end, (unset)"},
                           {"<b/>", kReal, kMissingMandatory, "true, at b, (unset)"},
                           {"<b/><a>green</a>", kReal, kMissingMandatory, "true, at b, (unset)"},
                           {"<a>green</a>", kReal, kMissingMandatory, "true, at end, 1"}});
}

TEST(ElementInfoSeqEnumMnd, OtherFlagsDoNotMakeItOptional) {
  for (const Flag flag : {kUnknownAttributes, kMissingChoice, kCollectionCounts, kNamespaces}) {
    TrialOf(&A<Mnd>).Expect({{"<b/>", kReal, flag, kMissing}, {"", kReal, flag, kMissing}});
  }
}

TEST(ElementInfoSeqEnumOpt, MayBeMissingInEitherParent) {
  for (const XmlElementType parent : {kReal, kPseudo}) {
    TrialOf(&A<Opt>).Expect(
        {{"<a>green</a><b/>", parent, kNoFlag, "true, at b, 1"},
         {"<a>green</a><a>blue</a>", parent, kNoFlag, "true, at a[2], 1"},
         {"", parent, kNoFlag, "true, at end, (unset)"},
         {"<b/>", parent, kNoFlag, "true, at b, (unset)"},
         {"<b/><a>green</a>", parent, kNoFlag, "true, at b, (unset)"},
         {"<o:a>green</o:a>", parent, kNoFlag, "true, at o:a, (unset)"},
         {"<o:a>green</o:a>", parent, kNamespaces, "true, at end, 1"},
         {"<b/><a>green</a>", parent, kUnknownElements, "true, at b, (unset)"},
         {"<b/><a>green</a>", parent, kMissingMandatory, "true, at b, (unset)"}});
  }
}

// --- Its text

TEST(ElementInfoSeqEnum, TextGoesToTheClassAsItStands) {
  const struct {
    const char* text;
    const char* outcome;
  } cases[] = {
      {"red", "true, at end, 0"},
      {"blue", "true, at end, 2"},
      {"mauve", "CQzException: No such colour [mauve]."},
      {" red", "CQzException: No such colour [ red]."},
      {"Red", "CQzException: No such colour [Red]."},
      {"", "CQzException: No such colour []."},
  };
  for (const Occurrence& member : kBoth) {
    for (const auto& c : cases) {
      CTrial trial = TrialOf(member.make);
      EXPECT_EQ(c.outcome, trial.Take("<a>" + std::string(c.text) + "</a>")) << member.name;
      EXPECT_EQ(c.outcome, trial.Take("<a>" + std::string(c.text) + "</a>", kPseudo));
    }
  }
}

TEST(ElementInfoSeqEnum, EmptyTextTakesTheDefaultWhereThereIsOne) {
  for (const Occurrence& member : kBoth) {
    TrialOf(member.make, false, "green")
        .Expect({{"<a/>", kReal, kNoFlag, "true, at end, 1"},
                 {"<a>red</a>", kReal, kNoFlag, "true, at end, 0"},
                 {"<a> </a>", kReal, kNoFlag, "CQzException: No such colour [ ]."}});
    TrialOf(member.make, false, "mauve")
        .Expect({{"<a/>", kReal, kNoFlag, "CQzException: No such colour [mauve]."}});
    TrialOf(member.make, false, "")
        .Expect({{"<a/>", kReal, kNoFlag, "CQzException: No such colour []."}});
  }
}

TEST(ElementInfoSeqEnum, PropertyThatRefusesTheValueFailsWithThePathOfTheElement) {
  for (const Occurrence& member : kBoth) {
    CTrial trial = TrialOf(member.make);
    trial.failsToTake = "No room.";
    EXPECT_QZ_THROW_FULL(CQzValidationException,
                         "Failed to set the property value.\nPath: /r/a[1]\nNo room.", "/r/a[1]",
                         trial.TakeOrThrow("<a>red</a><a>red</a>"));
  }
}

// --- Its attributes

TEST(ElementInfoSeqEnum, NilIsReadByTheNillableFlag) {
  const std::string asItWas = "true, at end, (unset)";
  const std::string read = "true, at end, 2";
  const struct {
    const char* nil;
    std::string nillable;
    std::string other;
  } cases[] = {
      {"true", asItWas, kInvalidNil},
      {"1", asItWas, kInvalidNil},
      {"TRUE", asItWas, kInvalidNil},
      {"false", read, read},
      {"0", read, read},
      {"FALSE", read, read},
      {"yes", UnexpectedNil("yes"), kInvalidNil},
      {"", UnexpectedNil(""), kInvalidNil},
  };
  for (const Occurrence& member : kBoth) {
    for (const auto& c : cases) {
      const std::string element = "<a xsi:nil='" + std::string(c.nil) + "'>blue</a>";
      for (const XmlElementType parent : {kReal, kPseudo}) {
        EXPECT_EQ(c.nillable, TrialOf(member.make, true).Take(element, parent)) << element;
        EXPECT_EQ(c.other, TrialOf(member.make, false).Take(element, parent)) << element;
      }
    }
    TrialOf(member.make, true)
        .Expect({{"<a xsi:nil='true'>mauve</a><b/>", kReal, kNoFlag, "true, at b, (unset)"}});
  }
}

TEST(ElementInfoSeqEnum, AttributesOtherThanNilNeedTheFlag) {
  for (const Occurrence& member : kBoth) {
    TrialOf(member.make, true)
        .Expect({{"<a x='1'>red</a>", kReal, kNoFlag, kUnexpected + "@x"},
                 {"<a x='1'>red</a>", kPseudo, kNoFlag, kUnexpected + "@x"},
                 {"<a o:x='1'>red</a>", kReal, kNoFlag, kUnexpected + "o:@x"},
                 {"<a xsi:type='o:t'>red</a>", kReal, kNoFlag, kUnexpected + "xsi:@type"},
                 {"<a x='1' xsi:nil='?'>red</a>", kReal, kNoFlag, kUnexpected + "@x"},
                 {"<a x='1' xsi:nil='?'>red</a>", kReal, kUnknownAttributes, UnexpectedNil("?")},
                 {"<a x='1' xsi:type='o:t'>red</a>", kReal, kUnknownAttributes, "true, at end, 0"},
                 {"<a x='1'>red</a>", kPseudo, kUnknownAttributes, "true, at end, 0"},
                 {"<a xmlns:p='urn:p'>red</a>", kReal, kNoFlag, "true, at end, 0"}});
    CTrial trial = TrialOf(member.make);
    EXPECT_EQ(kUnexpected + "@xmlns:p",
              trial.Take("<a xmlns:p='urn:p'>red</a>", kReal, NoNamespaces()));
    CSerializationContext lenient = NoNamespaces();
    lenient.SetIgnoreUnknownAttributes(true);
    EXPECT_EQ("true, at end, 0", trial.Take("<a xmlns:p='urn:p'>red</a>", kReal, lenient));
  }
}

// --- Writing

TEST(ElementInfoSeqEnum, UnsetValueIsAFailureOfTheMandatoryMemberAlone) {
  for (const char* defaultValue : {"", "green"}) {
    CTrial mandatory = TrialOf(&A<Mnd>, false, defaultValue);
    EXPECT_QZ_THROW_FULL(CQzInvalidParamException,
                         "The Property [a] is mandatory, it may not be NULL", "",
                         mandatory.GiveOrThrow());
    EXPECT_EQ("false, <r/>", TrialOf(&A<Opt>, false, defaultValue).Give());
  }
}

TEST(ElementInfoSeqEnum, NilIsWrittenWhateverTheNillableFlagSays) {
  for (const Occurrence& member : kBoth) {
    for (const bool nillable : {true, false}) {
      CTrial trial = TrialOf(member.make, nillable);
      trial.value().SetI4(1);
      trial.value().SetNil();
      EXPECT_EQ("true, <r><a xmlns:AA=\"" + std::string(kXsi) + "\" AA:nil=\"true\"/></r>",
                trial.Give());
    }
  }
}

TEST(ElementInfoSeqEnum, ValueIsWrittenAsText) {
  for (const Occurrence& member : kBoth) {
    CTrial trial = TrialOf(member.make, false, "green");
    trial.value().SetI4(2);
    EXPECT_EQ("true, <r><a>blue</a></r>", trial.Give());
    EXPECT_EQ((std::vector<std::string>{"start r", "start a", "text blue 23", "end", "end"}),
              trial.GiveCalls());
    trial.value().SetI4(1);
    EXPECT_EQ("true, <r><a/></r>", trial.Give());
    EXPECT_EQ(
        (std::vector<std::string>{"start r", "start a", "text green 23 default", "end", "end"}),
        trial.GiveCalls());
    EXPECT_EQ("true, <r><a>green</a></r>", trial.Give(With([](CSerializationContext& context) {
      context.SetWriteDefaultElementValues(true);
    })));
  }
}

TEST(ElementInfoSeqEnum, IsWrittenInTheNamespaceOfTheMember) {
  CTrial trial(new Mnd("a", "urn:o", 0, false, &ColourToString, &StringToColour, nullptr),
               Unset::Value);
  trial.Expect(
      {{"<o:a>red</o:a>", kReal, kNoFlag, "true, at end, 0"}, {"<a/>", kReal, kNoFlag, kMissing}});
  trial.value().SetI4(0);
  EXPECT_EQ("true, <r><AA:a xmlns:AA=\"urn:o\">red</AA:a></r>", trial.Give());
}

TEST(ElementInfoSeqEnum, PropertyThatGivesNothingFailsWithTheNameOfTheMember) {
  for (const Occurrence& member : kBoth) {
    CTrial trial = TrialOf(member.make);
    trial.object().failsToGive = "Not now.";
    EXPECT_QZ_THROW_FULL(CQzValidationException,
                         "Failed to get the property value for [a].\nNot now.", "",
                         trial.GiveOrThrow());
  }
}

// --- Its failures, as a document reports them

TEST(ElementInfoSeqEnum, FailuresReachTheCallerWithPathAndChain) {
  CTables tables;
  tables.Add(A<Mnd>(false, nullptr), Unset::Value);
  CSmartPtr<CTableObject> object(new CTableObject(tables));
  EXPECT_QZ_THROW_FULL(CQzException, "Failed to find the required child element [a].\nPath: /r",
                       "/r", object->FromXml("<r/>"));
  EXPECT_QZ_THROW_FULL(CQzException, "Unexpected Attribute found.\nPath: /r/a/@x", "/r/a/@x",
                       object->FromXml("<r><a x='1'>red</a></r>"));
  EXPECT_QZ_THROW_FULL(CQzValidationException,
                       "Failed to process the element.\nPath: /r\nNo such colour [mauve].", "/r",
                       object->FromXml("<r><a>mauve</a></r>"));
  EXPECT_QZ_THROW_FULL(CQzValidationException,
                       "Failed to convert the element [r] to XML\nThe Property [a] is mandatory, "
                       "it may not be NULL",
                       "", Text(*object));
}
