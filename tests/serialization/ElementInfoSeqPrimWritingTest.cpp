#include "qzxml/serialization/ElementInfoSeq.h"
#include "qzxml/values/BinaryData.h"
#include "tests/support/MemberTrial.h"
#include "tests/support/QzTest.h"

// Primitives of a sequence: what is written of a value that is unset, nil, the default, or outside
// its facets.

using namespace QzXmlLib16;
using namespace QzXmlLib16Data;
using namespace qztest;

namespace {

using Mnd = CElementInfoSeqPrimMnd;
using Opt = CElementInfoSeqPrimOpt;

using Make = CElementInfo* (*)(const PrimOptions& options);
template <typename Member>
CElementInfo* A(const PrimOptions& options) {
  return Prim<Member>("a", 0, options);
}

// The mandatory and the optional member, which treat a value alike.
struct Occurrence {
  const char* name;
  Make make;
} const kBoth[] = {{"mandatory", &A<Mnd>}, {"optional", &A<Opt>}};

PrimOptions OfType(ItemType type) {
  PrimOptions options;
  options.type = type;
  return options;
}

PrimOptions Nillable(bool nillable) {
  PrimOptions options;
  options.nillable = nillable;
  return options;
}

PrimOptions DefaultTo(const char* text, ItemType type = ItemType_string) {
  PrimOptions options = OfType(type);
  options.defaultValue = text;
  return options;
}

CPrimitiveRestrictions TotalDigits(int digits) {
  return CPrimitiveRestrictions(nullptr, -1, -1, nullptr, nullptr, nullptr, nullptr, -1, digits,
                                -1);
}
CPrimitiveRestrictions MinInclusive(const char* text) {
  return CPrimitiveRestrictions(nullptr, -1, -1, text, nullptr, nullptr, nullptr, -1, -1, -1);
}
CPrimitiveRestrictions MaxExclusive(const char* text) {
  return CPrimitiveRestrictions(nullptr, -1, -1, nullptr, nullptr, nullptr, text, -1, -1, -1);
}
CPrimitiveRestrictions MinLength(int length) {
  return CPrimitiveRestrictions(nullptr, length, -1, nullptr, nullptr, nullptr, nullptr, -1, -1,
                                -1);
}
CPrimitiveRestrictions PatternOf(const char* pattern) {
  return CPrimitiveRestrictions(pattern, -1, -1, nullptr, nullptr, nullptr, nullptr, -1, -1, -1);
}

}  // namespace

TEST(ElementInfoSeqPrim, UnsetValueIsAFailureOfTheMandatoryMemberAlone) {
  CTrial mandatory(A<Mnd>({}), Unset::Value);
  EXPECT_QZ_THROW_FULL(CQzInvalidParamException,
                       "The Property [a] is mandatory, it may not be NULL", "",
                       mandatory.GiveOrThrow());
  EXPECT_EQ("false, <r/>", CTrial(A<Opt>({}), Unset::Value).Give());
}

TEST(ElementInfoSeqPrim, UnsetValueDoesNotTurnIntoTheDefault) {
  EXPECT_EQ("false, <r/>", CTrial(A<Opt>(DefaultTo("d")), Unset::Value).Give());
  EXPECT_EQ("CQzInvalidParamException: The Property [a] is mandatory, it may not be NULL",
            CTrial(A<Mnd>(DefaultTo("d")), Unset::Value).Give());
}

TEST(ElementInfoSeqPrim, NilIsWrittenWhateverTheNillableFlagSays) {
  const std::string written =
      "true, <r><a xmlns:AA=\"" + std::string(kXsi) + "\" AA:nil=\"true\"/></r>";
  for (const Occurrence& member : kBoth) {
    for (const bool nillable : {true, false}) {
      PrimOptions options = Nillable(nillable);
      options.restrictions = MinLength(1);
      CTrial trial(member.make(options), Unset::Value);
      trial.value().SetString("gone");
      trial.value().SetNil();
      EXPECT_EQ(written, trial.Give());
      EXPECT_EQ((std::vector<std::string>{"start r", "start a", "nil", "end", "end"}),
                trial.GiveCalls());
    }
  }
}

TEST(ElementInfoSeqPrim, ValueIsWrittenInItsNamespaceWithItsType) {
  PrimOptions options;
  options.uri = "urn:o";
  for (const Occurrence& member : kBoth) {
    CTrial trial(member.make(options), Unset::Value);
    trial.value().SetString("x < y & z");
    EXPECT_EQ("true, <r><AA:a xmlns:AA=\"urn:o\">x &lt; y &amp; z</AA:a></r>", trial.Give());
    EXPECT_EQ(
        (std::vector<std::string>{"start r", "start a urn:o", "text x < y & z 23", "end", "end"}),
        trial.GiveCalls());
    trial.value().SetString("");
    EXPECT_EQ("true, <r><AA:a xmlns:AA=\"urn:o\"/></r>", trial.Give());
  }
}

TEST(ElementInfoSeqPrim, WriterIsToldTheKindOfTheValueNotOfTheMember) {
  PrimOptions options = DefaultTo("5", ItemType_string);
  for (const Occurrence& member : kBoth) {
    CTrial trial(member.make(options), Unset::Value);
    trial.value().SetI4(5);
    EXPECT_EQ((std::vector<std::string>{"start r", "start a", "text 5 5 default", "end", "end"}),
              trial.GiveCalls());
  }
}

TEST(ElementInfoSeqPrim, FormatOverrideShapesReals) {
  const struct {
    std::function<void(QzVariant&)> set;
    ItemType type;
    const char* format;
    const char* text;
  } cases[] = {
      {[](QzVariant& v) { v.SetR8(2.5); }, ItemType_r8, "%.3f", "2.500"},
      {[](QzVariant& v) { v.SetR8(2.5); }, ItemType_r8, "", "2.5"},
      {[](QzVariant& v) { v.SetR8(2.5); }, ItemType_r8, nullptr, "2.5"},
      {[](QzVariant& v) { v.SetR4(0.25F); }, ItemType_r4, "%.1e", "2.5e-001"},
      {[](QzVariant& v) { v.SetR4(0.25F); }, ItemType_r4, nullptr, "0.25"},
      {[](QzVariant& v) { v.SetI4(25); }, ItemType_i4, "%.3f", "25"},
      {[](QzVariant& v) { v.SetString("x"); }, ItemType_string, "%.3f", "x"},
  };
  for (const Occurrence& member : kBoth) {
    for (const auto& c : cases) {
      PrimOptions options = OfType(c.type);
      options.format = c.format;
      CTrial trial(member.make(options), Unset::Value);
      c.set(trial.value());
      EXPECT_EQ("true, <r><a>" + std::string(c.text) + "</a></r>", trial.Give()) << c.text;
    }
  }
}

TEST(ElementInfoSeqPrim, ValueThatEqualsTheDefaultIsMarkedForTheWriter) {
  const CSerializationContext writing =
      With([](CSerializationContext& c) { c.SetWriteDefaultElementValues(true); });
  for (const Occurrence& member : kBoth) {
    CTrial trial(member.make(DefaultTo("d")), Unset::Value);
    trial.value().SetString("d");
    EXPECT_EQ("true, <r><a/></r>", trial.Give());
    EXPECT_EQ("true, <r><a>d</a></r>", trial.Give(writing));
    trial.value().SetString("D");
    EXPECT_EQ("true, <r><a>D</a></r>", trial.Give());
    trial.value().SetString("");
    EXPECT_EQ("true, <r><a/></r>", trial.Give(writing));
  }
}

TEST(ElementInfoSeqPrim, DefaultIsComparedWithTheFormattedText) {
  const struct {
    const char* defaultValue;
    const char* written;
  } cases[] = {{"2.50", "true, <r><a/></r>"}, {"2.5", "true, <r><a>2.50</a></r>"}};
  for (const auto& c : cases) {
    PrimOptions options = DefaultTo(c.defaultValue, ItemType_r8);
    options.format = "%.2f";
    CTrial trial(A<Mnd>(options), Unset::Value);
    trial.value().SetR8(2.5);
    EXPECT_EQ(c.written, trial.Give());
  }
}

TEST(ElementInfoSeqPrim, ValueThatBreaksAFacetIsNotWritten) {
  const struct {
    ItemType type;
    std::function<void(QzVariant&)> set;
    CPrimitiveRestrictions restrictions;
    const char* outcome;
  } cases[] = {
      {ItemType_string, [](QzVariant& v) { v.SetString("abc"); }, MinLength(4),
       "CQzException: Invalid Value for a [abc]."},
      {ItemType_string, [](QzVariant& v) { v.SetString("abcd"); }, MinLength(4),
       "true, <r><a>abcd</a></r>"},
      {ItemType_string, [](QzVariant& v) { v.SetString("xabcx"); }, PatternOf("abc"),
       "CQzException: Invalid Value for a [xabcx]."},
      {ItemType_string, [](QzVariant& v) { v.SetString(""); }, MinLength(1),
       "CQzException: Invalid Value for a []."},
      {ItemType_i4, [](QzVariant& v) { v.SetI4(9); }, MinInclusive("10"),
       "CQzException: Invalid Value for a [9]"},
      {ItemType_i4, [](QzVariant& v) { v.SetI4(10); }, MinInclusive("10"),
       "true, <r><a>10</a></r>"},
      {ItemType_i4, [](QzVariant& v) { v.SetI4(-10); }, TotalDigits(2),
       "CQzException: Invalid Value for a [-10]"},
      {ItemType_i4, [](QzVariant& v) { v.SetI4(9); }, MinInclusive("x"),
       "CQzInvalidValueException: The value [x] can not be converted to a i4"},
      {ItemType_i8, [](QzVariant& v) { v.SetI8(9); }, MinInclusive("10"),
       "CQzException: Invalid Value for a [9]."},
      {ItemType_r8, [](QzVariant& v) { v.SetR8(1.5); }, MaxExclusive("1.5"),
       "CQzException: Invalid Value for a [1.500000]"},
      {ItemType_hexBinary, [](QzVariant& v) { v.SetHexBinary(CBinaryData("M")); }, MinLength(2),
       "CQzException: Invalid Value for a [4D]."},
      {ItemType_base64Binary, [](QzVariant& v) { v.SetBase64Binary(CBinaryData("M")); },
       MinLength(2), "CQzException: Invalid Value for a [TQ==]."},
      {ItemType_boolean, [](QzVariant& v) { v.SetBoolean(false); }, MinLength(99),
       "true, <r><a>false</a></r>"},
      {ItemType_char, [](QzVariant& v) { v.SetChar('x'); }, CPrimitiveRestrictions(),
       "CQzInvalidValueException: Unknown type [char]."},
  };
  for (const Occurrence& member : kBoth) {
    for (const auto& c : cases) {
      PrimOptions options = OfType(c.type);
      options.restrictions = c.restrictions;
      CTrial trial(member.make(options), Unset::Value);
      c.set(trial.value());
      EXPECT_EQ(c.outcome, trial.Give()) << member.name;
    }
  }
}

TEST(ElementInfoSeqPrim, FacetsAreCheckedBeforeTheTagIsWritten) {
  PrimOptions options;
  options.restrictions = MinLength(4);
  CTrial trial(A<Opt>(options), Unset::Value);
  trial.value().SetString("abc");
  CRecordingWriter writer;
  EXPECT_QZ_THROW_FULL(CQzException, "Invalid Value for a [abc].", "",
                       trial.member().ElementToXml({}, &trial.object(), &writer));
  EXPECT_EQ(std::vector<std::string>(), writer.calls);
}

TEST(ElementInfoSeqPrim, ValueThatEqualsTheDefaultIsNotCheckedAgainstTheFacets) {
  PrimOptions options = DefaultTo("abc");
  options.restrictions = MinLength(4);
  PrimOptions ofChar = DefaultTo("x", ItemType_char);
  for (const Occurrence& member : kBoth) {
    CTrial trial(member.make(options), Unset::Value);
    trial.value().SetString("abc");
    EXPECT_EQ("true, <r><a/></r>", trial.Give());
    CTrial character(member.make(ofChar), Unset::Value);
    character.value().SetChar('x');
    EXPECT_EQ("true, <r><a/></r>", character.Give());
  }
}

TEST(ElementInfoSeqPrim, PropertyThatGivesNothingFailsWithTheNameOfTheMember) {
  for (const Occurrence& member : kBoth) {
    CTrial trial(member.make({}), Unset::Value);
    trial.object().failsToGive = "Not now.";
    EXPECT_QZ_THROW_FULL(CQzValidationException,
                         "Failed to get the property value for [a].\nNot now.", "",
                         trial.GiveOrThrow());
  }
}

TEST(ElementInfoSeqPrim, FailuresOfWritingReachTheCallerWithTheNameOfTheElement) {
  PrimOptions options = OfType(ItemType_i4);
  options.restrictions = MinInclusive("10");
  CTables tables;
  tables.Add(A<Mnd>(options), Unset::Value);
  CSmartPtr<CTableObject> object(new CTableObject(tables, "order"));
  EXPECT_QZ_THROW_FULL(CQzValidationException,
                       "Failed to convert the element [order] to XML\nThe Property [a] is "
                       "mandatory, it may not be NULL",
                       "", Text(*object));
  (*object)[0].SetI4(9);
  EXPECT_QZ_THROW_FULL(CQzValidationException,
                       "Failed to convert the element [order] to XML\nInvalid Value for a [9]", "",
                       Text(*object));
}

// Meant: the kind of the member decides which facets are tested, whatever its property answers; a
// text in the place of a duration or a real is the empty value to them.
TEST(ElementInfoSeqPrim, TextInThePlaceOfAValueIsTestedAsAValueOfTheKind) {
  const struct {
    ItemType type;
    const char* text;
    const char* least;
    const char* condition;
    const char* failure;
  } cases[] = {
      {ItemType_duration, "P2D", "P1D", "m_type == ItemType_duration",
       "CQzException: Invalid Value for a [P]."},
      {ItemType_r8, "0.75", "0.5", "m_type == ItemType_r8",
       "CQzException: Invalid Value for a [0.000000]"},
  };
  for (const Occurrence& member : kBoth) {
    for (const auto& c : cases) {
      PrimOptions options = OfType(c.type);
      options.restrictions = MinInclusive(c.least);
      CTrial trial(member.make(options), Unset::Value);
      trial.value().SetString(c.text);
#if defined(QZXML_ASSERTIONS)
      EXPECT_QZ_ASSERT(c.condition, trial.GiveOrThrow());
#else
      EXPECT_EQ(c.failure, trial.Give()) << member.name;
#endif
    }
  }
}
