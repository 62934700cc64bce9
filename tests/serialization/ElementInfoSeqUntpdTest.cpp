#include "qzxml/collections/Element.h"
#include "qzxml/serialization/ElementInfoSeq.h"
#include "tests/support/MemberTrial.h"
#include "tests/support/QzTest.h"

// Open content of a sequence: one element of any name, or one whose name the schema has locked.

using namespace QzXmlLib16;
using namespace QzXmlLib16Data;
using namespace qztest;

namespace {

using Mnd = CElementInfoSeqUntpdMnd;
using Opt = CElementInfoSeqUntpdOpt;

const std::string kMissing =
    "CQzValidationException: Failed to find the required child element [AnyElement].\nPath: /r";

std::string NothingTaken(const std::string& uri) {
  return "CQzValidationException: Failed to find the required element from namespace [" + uri +
         "].\nPath: /r";
}

// The element of a mandatory member, which its class has made.
Unset::Make HeldElement(const char* restriction = "##any", const char* target = "") {
  return Unset::Held([=] { return new CElement("AnyElement", "", restriction, target); });
}

// A mandatory member does not read its own restrictions: its element has them.
Mnd* MndOf(const char* name = "AnyElement", const char* uri = "") {
  return new Mnd(name, uri, 0, "##any", "");
}

Opt* OptOf(const char* name = "AnyElement", const char* restriction = "##any",
           const char* target = "") {
  return new Opt(name, "", 0, restriction, target);
}

}  // namespace

// --- Mandatory

TEST(ElementInfoSeqUntpdMnd, TakesTheElementAtTheCursorWhateverItsName) {
  for (const XmlElementType parent : {kReal, kPseudo}) {
    CTrial(MndOf(), HeldElement())
        .Expect(
            {{"<b x='1'>t<c/></b><d/>", parent, kNoFlag, "true, at d, <r><b x=\"1\"><c/>t</b></r>"},
             {"<b>1</b><b>2</b>", parent, kNoFlag, "true, at b[2], <r><b>1</b></r>"},
             {"<o:b/>", parent, kNoFlag, "true, at end, <r><AA:b xmlns:AA=\"urn:o\"/></r>"},
             {"<AnyElement/>", parent, kNoFlag, "true, at end, <r><AnyElement/></r>"}});
  }
}

TEST(ElementInfoSeqUntpdMnd, FailsBehindTheLastChildInEitherParentUnderEveryFlag) {
  for (const XmlElementType parent : {kReal, kPseudo}) {
    for (const Flag flag : {kNoFlag, kMissingMandatory, kUnknownElements, kNamespaces}) {
      CTrial(MndOf(), HeldElement()).Expect({{"", parent, flag, kMissing}});
    }
  }
}

TEST(ElementInfoSeqUntpdMnd, LockedNameIsComparedWithTheLocalNameAlone) {
  CTrial trial(MndOf("note", "urn:n"), HeldElement());
  trial.Expect({{"<note>1</note><b/>", kReal, kNoFlag, "true, at b, <r><note>1</note></r>"},
                {"<o:note>1</o:note>", kReal, kNoFlag,
                 "true, at end, <r><AA:note xmlns:AA=\"urn:o\">1</AA:note></r>"},
                {"<note/><note/>", kPseudo, kNoFlag, "true, at note[2], <r><note/></r>"},
                {"<Note/>", kReal, kNoFlag, NothingTaken("urn:n")},
                {"<b/><note/>", kReal, kNoFlag, NothingTaken("urn:n")},
                {"<b/><note/>", kPseudo, kNoFlag, "false, at b, <r><AnyElement/></r>"},
                {"", kReal, kNoFlag,
                 "CQzValidationException: Failed to find the required child element [note].\nPath: "
                 "/r"}});
}

TEST(ElementInfoSeqUntpdMnd, NoFlagMakesItOptionalOrLooksForIt) {
  for (const Flag flag : {kMissingMandatory, kUnknownElements, kUnknownAttributes}) {
    CTrial(MndOf("note", "urn:n"), HeldElement())
        .Expect({{"<b/><note/>", kReal, flag, NothingTaken("urn:n")},
                 {"<b/><note/>", kPseudo, flag, "false, at b, <r><AnyElement/></r>"}});
  }
}

TEST(ElementInfoSeqUntpdMnd, ElementOutsideTheRestrictionsIsNotTaken) {
  const struct {
    const char* restriction;
    const char* target;
    const char* element;
    const char* taken;  // null for nothing
  } cases[] = {
      {"##other", "urn:t", "<o:b/>", "<AA:b xmlns:AA=\"urn:o\"/>"},
      {"##other", "urn:o", "<o:b/>", nullptr},
      {"##other", "urn:o", "<b/>", "<b/>"},
      {"##local", "urn:o", "<b/>", "<b/>"},
      {"##local", "urn:o", "<o:b/>", nullptr},
      {"##targetNamespace", "", "<b/>", "<b/>"},
      {"##targetNamespace", "", "<o:b/>", nullptr},
      {"urn:o", "", "<o:b/>", "<AA:b xmlns:AA=\"urn:o\"/>"},
      {"urn:o", "", "<b/>", "<b/>"},
      {"urn:p", "", "<o:b/>", nullptr},
  };
  for (const auto& c : cases) {
    CTrial trial(MndOf("AnyElement", "urn:n"), HeldElement(c.restriction, c.target));
    if (c.taken != nullptr) {
      const std::string taken = "true, at end, <r>" + std::string(c.taken) + "</r>";
      trial.Expect({{c.element, kReal, kNoFlag, taken}, {c.element, kPseudo, kNoFlag, taken}});
    } else {
      trial.Expect({{c.element, kReal, kNoFlag, NothingTaken("urn:n")}});
      EXPECT_EQ("false", trial.Take(c.element, kPseudo).substr(0, 5)) << c.restriction;
    }
  }
}

TEST(ElementInfoSeqUntpdMnd, IsFilledInPlace) {
  const CSmartPtr<CElement> element(new CElement("former"));
  element->SetText("former");
  CTrial trial(MndOf(), Unset::Held([&]() -> CXmlObjectBase* { return element; }));
  trial.Take("<b>new</b>");
  EXPECT_EQ("b", element->GetName());
  EXPECT_EQ("new", element->GetText());
}

TEST(ElementInfoSeqUntpdMnd, ElementThatTheClassHasNotMadeAsserts) {
  CTrial trial(MndOf(), Unset::Object);
  EXPECT_QZ_ASSERT("p != 0", trial.TakeOrThrow("<b/>"));
}

TEST(ElementInfoSeqUntpdMnd, FailuresOfReadingReachTheCallerWithPathAndChain) {
  CTables tables;
  tables.Add(MndOf("note", "urn:n"), HeldElement());
  CSmartPtr<CTableObject> object(new CTableObject(tables));
  EXPECT_QZ_THROW_FULL(CQzException, "Failed to find the required child element [note].\nPath: /r",
                       "/r", object->FromXml("<r/>"));
  EXPECT_QZ_THROW_FULL(CQzException,
                       "Failed to find the required element from namespace [urn:n].\nPath: /r",
                       "/r", object->FromXml("<r><b/></r>"));
  object->failsToGive = "Not now.";
  EXPECT_QZ_THROW_FULL(CQzValidationException,
                       "Failed to process the element.\nPath: /r\n"
                       "Failed to get the property value for [note].\nNot now.",
                       "/r", object->FromXml("<r><note/></r>"));
}

// --- Optional

TEST(ElementInfoSeqUntpdOpt, TakesTheElementAtTheCursorWhateverItsName) {
  for (const XmlElementType parent : {kReal, kPseudo}) {
    CTrial(OptOf(), Unset::Object)
        .Expect(
            {{"<b x='1'>t<c/></b><d/>", parent, kNoFlag, "true, at d, <r><b x=\"1\"><c/>t</b></r>"},
             {"<b>1</b><b>2</b>", parent, kNoFlag, "true, at b[2], <r><b>1</b></r>"},
             {"<o:b/>", parent, kNoFlag, "true, at end, <r><AA:b xmlns:AA=\"urn:o\"/></r>"},
             {"", parent, kNoFlag, "true, at end, (null)"}});
  }
}

TEST(ElementInfoSeqUntpdOpt, LockedNameIsComparedWithTheLocalNameAlone) {
  for (const XmlElementType parent : {kReal, kPseudo}) {
    for (const Flag flag : {kNoFlag, kUnknownElements, kMissingMandatory}) {
      CTrial(OptOf("note"), Unset::Object)
          .Expect(
              {{"<note>1</note><b/>", parent, flag, "true, at b, <r><note>1</note></r>"},
               {"<o:note/>", parent, flag, "true, at end, <r><AA:note xmlns:AA=\"urn:o\"/></r>"},
               {"<b/><note/>", parent, flag, "true, at b, (null)"},
               {"<Note/>", parent, flag, "true, at Note, (null)"}});
    }
  }
}

TEST(ElementInfoSeqUntpdOpt, ElementOutsideTheRestrictionsIsNotTaken) {
  const struct {
    const char* restriction;
    const char* target;
    const char* element;
    const char* outcome;
  } cases[] = {
      {"##any", "urn:t", "<o:b/>", "true, at end, <r><AA:b xmlns:AA=\"urn:o\"/></r>"},
      {"##other", "urn:t", "<o:b/>", "true, at end, <r><AA:b xmlns:AA=\"urn:o\"/></r>"},
      {"##other", "urn:o", "<o:b/>", "true, at o:b, (null)"},
      {"##local", "urn:o", "<b/>", "true, at end, <r><b/></r>"},
      {"##local", "urn:o", "<o:b/>", "true, at o:b, (null)"},
      {"##targetNamespace", "urn:o", "<o:b/>", "true, at end, <r><AA:b xmlns:AA=\"urn:o\"/></r>"},
      {"##targetNamespace", "urn:t", "<o:b/>", "true, at o:b, (null)"},
      {"urn:o", "urn:t", "<o:b/>", "true, at end, <r><AA:b xmlns:AA=\"urn:o\"/></r>"},
      {"urn:p", "urn:t", "<o:b/>", "true, at o:b, (null)"},
      // Of a list the first token decides, or the list as a whole.
      {"##local urn:o", "urn:t", "<b/>", "true, at end, <r><b/></r>"},
      {"##local urn:o", "urn:t", "<o:b/>", "true, at o:b, (null)"},
      {"##any urn:p", "urn:t", "<o:b/>", "true, at end, <r><AA:b xmlns:AA=\"urn:o\"/></r>"},
      {"urn:p urn:o", "urn:t", "<o:b/>", "true, at o:b, (null)"},
  };
  for (const auto& c : cases) {
    CTrial trial(OptOf("AnyElement", c.restriction, c.target), Unset::Object);
    EXPECT_EQ(c.outcome, trial.Take(c.element)) << c.restriction << " " << c.element;
    EXPECT_EQ(c.outcome, trial.Take(c.element, kPseudo)) << c.restriction << " " << c.element;
  }
}

// The new element begins in the namespace that its restrictions and that of the parent give; where
// they contradict each other it cannot be made, whatever stands at the cursor.
TEST(ElementInfoSeqUntpdOpt, ElementIsMadeInTheNamespaceOfTheParentUnderTheRestrictions) {
  CTrial inParent(OptOf("AnyElement", "##any"), Unset::Object, "urn:r");
  EXPECT_EQ("true, at end, <r><b/></r>", inParent.Take("<b/>"));
  CTrial foreign(OptOf("AnyElement", "##other", "urn:r"), Unset::Object, "urn:r");
  EXPECT_EQ("true, at end, <r><b/></r>", foreign.Take("<b/>"));
  CTrial noParent(OptOf("AnyElement", "##other", ""), Unset::Object);
  EXPECT_EQ("true, at end, <r><AA:b xmlns:AA=\"urn:o\"/></r>", noParent.Take("<o:b/>"));
  CTrial contradiction(OptOf("note", "##other", ""), Unset::Object, "urn:r");
  EXPECT_QZ_THROW_FULL(CQzInvalidNamespaceException,
                       "Invalid namespace []. The namespace must be one of [##other] where the "
                       "target namespace is [].",
                       "", contradiction.TakeOrThrow("<b/>"));
  EXPECT_EQ("true, at end, (null)", contradiction.Take(""));
}

TEST(ElementInfoSeqUntpdOpt, PropertyThatRefusesTheElementFailsWithThePathOfTheParent) {
  CTrial trial(OptOf(), Unset::Object);
  trial.failsToTake = "No room.";
  EXPECT_QZ_THROW_FULL(CQzValidationException,
                       "Failed to set the property value.\nPath: /r\nNo room.", "/r",
                       trial.TakeOrThrow("<b/>"));
  EXPECT_EQ("true, at end, (null)", trial.Take(""));
}

// --- Writing

TEST(ElementInfoSeqUntpd, MissingElementIsAFailureOfTheMandatoryMemberAlone) {
  CTrial mandatory(MndOf(), Unset::Object);
  EXPECT_QZ_THROW_FULL(CQzInvalidParamException,
                       "The Property [AnyElement] is mandatory, it may not be NULL", "",
                       mandatory.GiveOrThrow());
  EXPECT_EQ("false, <r/>", CTrial(OptOf(), Unset::Object).Give());
}

TEST(ElementInfoSeqUntpd, ElementIsWrittenUnderItsOwnNameAndNamespace) {
  for (CElementInfo* member :
       {static_cast<CElementInfo*>(MndOf("note", "urn:n")),
        static_cast<CElementInfo*>(new Opt("note", "urn:n", 0, "##any", ""))}) {
    CTrial trial(member, Unset::Object);
    const CSmartPtr<CElement> element(new CElement("b", "urn:o"));
    element->SetText("t");
    trial.value().SetXmlObject(element);
    EXPECT_EQ("true, <r><AA:b xmlns:AA=\"urn:o\">t</AA:b></r>", trial.Give());
  }
}

TEST(ElementInfoSeqUntpd, PropertyThatGivesNothingFailsWithTheNameOfTheMember) {
  for (CElementInfo* member :
       {static_cast<CElementInfo*>(MndOf()), static_cast<CElementInfo*>(OptOf())}) {
    CTrial trial(member, Unset::Object);
    trial.object().failsToGive = "Not now.";
    EXPECT_QZ_THROW_FULL(CQzValidationException,
                         "Failed to get the property value for [AnyElement].\nNot now.", "",
                         trial.GiveOrThrow());
  }
}
