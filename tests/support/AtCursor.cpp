#include "tests/support/AtCursor.h"

#include <gtest/gtest.h>

namespace qztest {

using namespace QzXmlLib16;
using namespace QzXmlLib16Data;

void ExpectTakesAtCursorAlone(const MakeMember& make, const Unset::Make& property,
                              const std::string& taken, const std::string& unset) {
  CTrial trial(make(), property);
  for (const XmlElementType parent : {kReal, kPseudo}) {
    for (const Flag flag : kFlagsForMissing) {
      trial.Expect({{"<a>green</a><b/>", parent, flag, "true, at b, " + taken},
                    {"<a>green</a>", parent, flag, "true, at end, " + taken},
                    {"<a>green</a><a>red</a>", parent, flag, "true, at a[2], " + taken},
                    {"", parent, flag, "false, at end, " + unset},
                    {"<b/>", parent, flag, "false, at b, " + unset},
                    {"<b/><a>green</a>", parent, flag, "false, at b, " + unset},
                    {"<A>green</A>", parent, flag, "false, at A, " + unset},
                    {"<o:a>green</o:a>", parent, flag, "false, at o:a, " + unset}});
    }
    trial.Expect({{"<o:a>green</o:a><b/>", parent, kNamespaces, "true, at b, " + taken},
                  {"<o:b>green</o:b>", parent, kNamespaces, "false, at o:b, " + unset}});
  }
}

// --- Values

namespace {

const char kRefusal[] = "Out of order.";

void ExpectValueIsRead(const ValueMember& member) {
  const std::string kInvalidUse =
      "CQzValidationException: Invalid use of 'nil' attribute in non-nillable element.\n"
      "Path: /r/a";
  const std::string green = "true, at end, " + member.heldGreen;
  CTrial(member.make(false, nullptr), Unset::Value)
      .Expect({{"<a xsi:nil='false'>green</a>", kReal, kNoFlag, green},
               {"<a xsi:nil='0'>green</a>", kReal, kNoFlag, green},
               {"<a xsi:nil='true'/>", kReal, kNoFlag, kInvalidUse},
               {"<a xsi:nil='yes'/>", kPseudo, kNoFlag, kInvalidUse},
               {"<a x='1'>green</a>", kReal, kNoFlag,
                "CQzValidationException: Unexpected Attribute found.\nPath: /r/a/@x"},
               {"<a x='1'>green</a>", kReal, kUnknownAttributes, green}});
  CTrial(member.make(true, "green"), Unset::Value)
      .Expect({{"<a xsi:nil='true'>red</a><b/>", kReal, kNoFlag, "true, at b, (unset)"},
               {"<a xsi:nil='TRUE'/>", kPseudo, kNoFlag, "true, at end, (unset)"},
               {"<a xsi:nil='1'/>", kReal, kUnknownAttributes, "true, at end, (unset)"},
               {"<a xsi:nil='yes'/>", kReal, kNoFlag,
                "CQzValidationException: Unexpected Value [yes] for 'nil' Attribute found.\n"
                "Path: /r/a/xsi:@nil"},
               {"<a/>", kReal, kNoFlag, green},
               {"<a></a><b/>", kPseudo, kNoFlag, "true, at b, " + member.heldGreen}});
  CTrial refusing(member.make(false, nullptr), Unset::Value);
  refusing.failsToTake = kRefusal;
  EXPECT_EQ("CQzValidationException: Failed to set the property value.\nPath: /r/a\nOut of order.",
            refusing.Take("<a>green</a>"));
}

void ExpectValueIsWritten(const ValueMember& member) {
  CTrial trial(member.make(false, "green"), Unset::Value);
  EXPECT_EQ(member.mandatory
                ? "CQzInvalidParamException: The Property [a] is mandatory, it may not be NULL"
                : "false, <r/>",
            trial.Give());
  member.setGreen(trial.value());
  EXPECT_EQ("true, <r><a/></r>", trial.Give());
  EXPECT_EQ("true, <r><a>green</a></r>",
            trial.Give(Ignoring(&CSerializationContext::SetWriteDefaultElementValues)));
  EXPECT_EQ((std::vector<std::string>{"start r", "start a", "text green 23 default", "end", "end"}),
            trial.GiveCalls());

  CTrial plain(member.make(false, nullptr), Unset::Value);
  member.setGreen(plain.value());
  EXPECT_EQ("true, <r><a>green</a></r>", plain.Give());
  EXPECT_EQ((std::vector<std::string>{"start r", "start a", "text green 23", "end", "end"}),
            plain.GiveCalls());
  plain.value().SetNil();
  EXPECT_EQ("true, <r><a xmlns:AA=\"" + std::string(kXsi) + "\" AA:nil=\"true\"/></r>",
            plain.Give());
  plain.object().failsToGive = kRefusal;
  EXPECT_EQ("CQzValidationException: Failed to get the property value for [a].\nOut of order.",
            plain.Give());
}

}  // namespace

void ExpectValueMember(const ValueMember& member) {
  ExpectTakesAtCursorAlone([&] { return member.make(false, nullptr); }, Unset::Value,
                           member.heldGreen, "(unset)");
  ExpectValueIsRead(member);
  ExpectValueIsWritten(member);
}

void ExpectFacetsOfPrimitive(const MakeMember& makeAtLeastTen) {
  CTrial trial(makeAtLeastTen(), Unset::Value);
  EXPECT_EQ("true, at end, 8", trial.Take("<a>8</a>"));  // meant: reading does not look at facets
  EXPECT_EQ("CQzException: Invalid Value for a [8]", trial.Give());
  trial.value().SetI4(9);  // the default
  EXPECT_EQ("true, <r><a/></r>", trial.Give());
  trial.value().SetI4(10);
  EXPECT_EQ("true, <r><a>10</a></r>", trial.Give());
  EXPECT_EQ("CQzInvalidValueException: The value [x] can not be converted to a i4",
            trial.Take("<a>x</a>"));
}

// --- Open content

namespace {

// Which of <a>, <o:a> and <t:a> (of "urn:t", the target) a restriction lets in.
struct Restriction {
  const char* text;
  bool none;
  bool other;
  bool target;
};

const Restriction kRestrictions[] = {{"##any", true, true, true},
                                     {"##other", true, true, false},
                                     {"##local", true, false, false},
                                     {"##targetNamespace", false, false, true},
                                     {"urn:o", true, true, false},
                                     // Only the first token of a list counts, and behind it the
                                     // empty namespace passes.
                                     {"##any urn:x", true, true, true},
                                     {"##other urn:x", true, true, false},
                                     {"##local urn:o", true, false, false},
                                     {"##targetNamespace urn:o", true, false, true},
                                     {"urn:o urn:t", true, false, false}};

void ExpectRestriction(const MakeOpenMember& make, const Restriction& r) {
  struct Case {
    const char* children;
    const char* place;
    const char* written;
    bool taken;
  };
  const Case cases[] = {
      {"<a>1</a>", "a", "<a>1</a>", r.none},
      {"<o:a>1</o:a>", "o:a", "<AA:a xmlns:AA=\"urn:o\">1</AA:a>", r.other},
      {"<t:a xmlns:t='urn:t'>1</t:a>", "t:a", "<AA:a xmlns:AA=\"urn:t\">1</AA:a>", r.target}};
  for (const char* name : {"a", "AnyElement"}) {
    CTrial trial(make(name, r.text, "urn:t"), Unset::Object);
    for (const Case& c : cases) {
      const std::string expected = c.taken ? "true, at end, <r>" + std::string(c.written) + "</r>"
                                           : "false, at " + std::string(c.place) + ", (null)";
      EXPECT_EQ(expected, trial.Take(c.children)) << name << " with " << r.text;
    }
  }
}

}  // namespace

void ExpectOpenContent(const MakeOpenMember& make) {
  for (const Restriction& restriction : kRestrictions) ExpectRestriction(make, restriction);
  for (const XmlElementType parent : {kReal, kPseudo}) {
    CTrial(make("AnyElement", "##any", ""), Unset::Object)
        .Expect({{"", parent, kNoFlag, "false, at end, (null)"},
                 {"", parent, kUnknownElements, "false, at end, (null)"},
                 {"<z k='1'><y>2</y>3</z><b/>", parent, kNoFlag,
                  "true, at b, <r><z k=\"1\"><y>2</y>3</z></r>"}});
    CTrial(make("a", "##any", ""), Unset::Object)
        .Expect({{"", parent, kNoFlag, "false, at end, (null)"},
                 {"<b/><a/>", parent, kNoFlag, "false, at b, (null)"},
                 {"<b/><a/>", parent, kUnknownElements, "false, at b, (null)"},
                 {"<A/>", parent, kNoFlag, "false, at A, (null)"},
                 {"<a/><a/>", parent, kNoFlag, "true, at a[2], <r><a/></r>"},
                 {"<AnyElement/>", parent, kNoFlag, "false, at AnyElement, (null)"}});
  }
  // Where the namespace that a new element would get is not allowed, none is made.
  CTrial inNamespace(make("AnyElement", "##other", ""), Unset::Object, "urn:p");
  EXPECT_EQ(
      "CQzInvalidNamespaceException: Invalid namespace []. The namespace must be one of [##other] "
      "where the target namespace is [].",
      inNamespace.Take("<o:a/>"));
  EXPECT_EQ("false, at end, (null)", inNamespace.Take(""));
  CTrial refusing(make("a", "##any", ""), Unset::Object);
  EXPECT_EQ("false, <r/>", refusing.Give());
  refusing.failsToTake = kRefusal;
  EXPECT_EQ("CQzValidationException: Failed to set the property value.\nPath: /r\nOut of order.",
            refusing.Take("<a/>"));
}

}  // namespace qztest
