#include "qzxml/serialization/ElementInfoSeq.h"
#include "qzxml/xml/XmlElement.h"
#include "tests/support/MemberTrial.h"
#include "tests/support/QzTest.h"

// Classes of a sequence that are known only when the element is seen. Here the xsi:type of <shape>
// names the class; an element without one suits none.

using namespace QzXmlLib16;
using namespace QzXmlLib16Data;
using namespace qztest;

namespace {

using Mnd = CElementInfoSeqAbsClsMnd;
using Opt = CElementInfoSeqAbsClsOpt;

const std::string kUnsuitable =
    "CQzValidationException: Failed to find a suitable substitution element for [shape].\nPath: /r";

const std::string kCircle =
    "<shape xmlns:AA=\"" + std::string(kXsi) + "\" AA:type=\"circle\"><radius>2</radius></shape>";

// The path of the element that the factory was last shown, and how often.
struct FactoryCalls {
  std::string last = "(nothing)";
  int count = 0;
} g_factory;

CSmartPtr<CXmlObjectBase> Record(CXmlElement* element) {
  g_factory.last = element->GetXPath();
  ++g_factory.count;
  return MakeTableObjectByType(element);
}

CSmartPtr<CXmlObjectBase> Refuse(CXmlElement* element) {
  throw CQzException("No class for [" + element->GetLocalName() + "].");
}

class ElementInfoSeqAbsCls : public ::testing::Test {
 protected:
  ElementInfoSeqAbsCls() {
    g_factory = FactoryCalls();
    m_circle.name = "circle";
    m_circle.hasBaseClasses = true;
    m_circle.Add(Prim<CElementInfoSeqPrimOpt>("radius", 0), Unset::Value);
    m_square.name = "square";
    m_square.hasBaseClasses = true;
    m_square.Add(Prim<CElementInfoSeqPrimMnd>("side", 0), Unset::Value);
  }

  CTables m_circle;
  CTables m_square;
};

template <typename Member>
CElementInfo* Shape(XmlElementType type = kReal, const char* uri = "",
                    AbstractClassFactory factory = &Record) {
  return new Member("shape", uri, 0, type, factory);
}

}  // namespace

// --- Reading

TEST_F(ElementInfoSeqAbsCls, MandatoryChildMustStandAtTheCursorInARealParent) {
  CTrial(Shape<Mnd>(), Unset::Object)
      .Expect({{"<shape xsi:type='circle'><radius>2</radius></shape><b/>", kReal, kNoFlag,
                "true, at b, <r>" + kCircle + "</r>"},
               {"<shape xsi:type='circle'><radius>2</radius></shape><shape/>", kReal, kNoFlag,
                "true, at shape[2], <r>" + kCircle + "</r>"},
               {"", kReal, kNoFlag, kUnsuitable},
               {"<b/>", kReal, kNoFlag, kUnsuitable},
               {"<b/><shape xsi:type='circle'/>", kReal, kNoFlag, kUnsuitable},
               {"<o:shape xsi:type='circle'/>", kReal, kNoFlag, kUnsuitable},
               // A substitute does not change the name of the element.
               {"<circle xsi:type='circle'/>", kReal, kNoFlag, kUnsuitable}});
}

TEST_F(ElementInfoSeqAbsCls, NoFlagMakesTheMandatoryChildOptionalOrLooksForIt) {
  for (const Flag flag : {kNoFlag, kMissingMandatory, kUnknownElements, kUnknownAttributes,
                          kMissingChoice, kCollectionCounts}) {
    CTrial(Shape<Mnd>(), Unset::Object)
        .Expect({{"", kReal, flag, kUnsuitable},
                 {"<b/>", kReal, flag, kUnsuitable},
                 {"<b/><shape xsi:type='circle'/>", kReal, flag, kUnsuitable},
                 {"<shape/>", kReal, flag, kUnsuitable},
                 {"<b/><shape xsi:type='circle'/>", kPseudo, flag, "false, at b, (null)"}});
  }
}

TEST_F(ElementInfoSeqAbsCls, MandatoryChildLeavesTheDecisionToTheWalkInAPseudoParent) {
  CTrial(Shape<Mnd>(), Unset::Object)
      .Expect({{"<shape xsi:type='circle'><radius>2</radius></shape><b/>", kPseudo, kNoFlag,
                "true, at b, <r>" + kCircle + "</r>"},
               {"<shape xsi:type='circle'><radius>2</radius></shape><shape/>", kPseudo, kNoFlag,
                "true, at shape[2], <r>" + kCircle + "</r>"},
               {"", kPseudo, kNoFlag, "false, at end, (null)"},
               {"<b/>", kPseudo, kNoFlag, "false, at b, (null)"},
               {"<o:shape xsi:type='circle'/>", kPseudo, kNoFlag, "false, at o:shape, (null)"},
               {"<shape/>", kPseudo, kNoFlag, "false, at shape, (null)"}});
}

TEST_F(ElementInfoSeqAbsCls, OptionalChildMayBeMissingInEitherParent) {
  for (const XmlElementType parent : {kReal, kPseudo}) {
    for (const Flag flag : {kNoFlag, kUnknownElements, kMissingMandatory}) {
      CTrial(Shape<Opt>(), Unset::Object)
          .Expect({{"<shape xsi:type='circle'><radius>2</radius></shape><b/>", parent, flag,
                    "true, at b, <r>" + kCircle + "</r>"},
                   {"<shape xsi:type='circle'><radius>2</radius></shape><shape/>", parent, flag,
                    "true, at shape[2], <r>" + kCircle + "</r>"},
                   {"", parent, flag, "true, at end, (null)"},
                   {"<b/>", parent, flag, "true, at b, (null)"},
                   {"<b/><shape xsi:type='circle'/>", parent, flag, "true, at b, (null)"},
                   {"<o:shape xsi:type='circle'/>", parent, flag, "true, at o:shape, (null)"}});
    }
  }
}

TEST_F(ElementInfoSeqAbsCls, ElementThatSuitsNoClassStaysAtTheCursor) {
  for (const char* element : {"<shape/>", "<shape xsi:type='line'/>"}) {
    CTrial(Shape<Mnd>(), Unset::Object)
        .Expect({{element, kReal, kNoFlag, kUnsuitable},
                 {element, kPseudo, kNoFlag, "false, at shape, (null)"}});
    CTrial(Shape<Opt>(), Unset::Object)
        .Expect({{element, kReal, kNoFlag, "true, at shape, (null)"},
                 {element, kPseudo, kNoFlag, "true, at shape, (null)"}});
  }
}

TEST_F(ElementInfoSeqAbsCls, MatchesByLocalNameWhereNamespacesAreIgnored) {
  m_circle.uri = "urn:o";  // that of the element, where its xsi:type has no prefix
  const std::string written = "<r><shape xmlns:AA=\"urn:o\"  xmlns:AB=\"" + std::string(kXsi) +
                              "\" AB:type=\"AA:circle\"><radius>2</radius></shape></r>";
  for (const XmlElementType parent : {kReal, kPseudo}) {
    for (CElementInfo* member : {Shape<Mnd>(), Shape<Opt>()}) {
      CTrial(member, Unset::Object)
          .Expect({{"<o:shape xsi:type='circle'><radius>2</radius></o:shape>", parent, kNamespaces,
                    "true, at end, " + written}});
    }
  }
}

TEST_F(ElementInfoSeqAbsCls, ReadsAlikeForEitherElementTypeOfTheMember) {
  m_circle.hasBaseClasses = false;  // its xsi:type would be written on <r>
  const std::string taken = "true, at b, <r><shape><radius>2</radius></shape></r>";
  for (CElementInfo* member : {Shape<Mnd>(kPseudo), Shape<Opt>(kPseudo)}) {
    CTrial(member, Unset::Object)
        .Expect(
            {{"<shape xsi:type='circle'><radius>2</radius></shape><b/>", kReal, kNoFlag, taken},
             {"<shape xsi:type='circle'><radius>2</radius></shape><b/>", kPseudo, kNoFlag, taken}});
  }
  CTrial(Shape<Mnd>(kPseudo), Unset::Object)
      .Expect({{"<radius>2</radius>", kReal, kNoFlag, kUnsuitable},
               {"<radius>2</radius>", kPseudo, kNoFlag, "false, at radius, (null)"}});
}

TEST_F(ElementInfoSeqAbsCls, FactoryIsShownTheElementOnceItHasTheName) {
  for (CElementInfo* member : {Shape<Mnd>(), Shape<Opt>()}) {
    g_factory = FactoryCalls();
    CTrial trial(member, Unset::Object);
    trial.Take("<b/>");
    trial.Take("");
    EXPECT_EQ(0, g_factory.count);
    trial.Take("<shape xsi:type='circle'/><shape/>");
    EXPECT_EQ(1, g_factory.count);
    EXPECT_EQ("/r/shape[1]", g_factory.last);
  }
}

TEST_F(ElementInfoSeqAbsCls, EachElementGetsItsOwnClass) {
  CTrial trial(Shape<Mnd>(), Unset::Object);
  EXPECT_EQ("true, at end, <r>" + kCircle + "</r>",
            trial.Take("<shape xsi:type='circle'><radius>2</radius></shape>"));
  EXPECT_EQ("true, at end, <r><shape xmlns:AA=\"" + std::string(kXsi) +
                "\" AA:type=\"square\"><side>3</side></shape></r>",
            trial.Take("<shape xsi:type='square'><side>3</side></shape>"));
}

// --- Failures of reading

TEST_F(ElementInfoSeqAbsCls, FailureOfTheFactoryGoesOn) {
  for (CElementInfo* member : {Shape<Mnd>(kReal, "", &Refuse), Shape<Opt>(kReal, "", &Refuse)}) {
    CTrial(member, Unset::Object)
        .Expect({{"<shape/>", kReal, kNoFlag, "CQzException: No class for [shape]."}});
  }
}

TEST_F(ElementInfoSeqAbsCls, FailureInsideTheChildHasThePathOfTheChild) {
  for (CElementInfo* member : {Shape<Mnd>(), Shape<Opt>()}) {
    CTrial(member, Unset::Object)
        .Expect({{"<shape xsi:type='square'/>", kReal, kNoFlag,
                  "CQzException: Failed to find the required child element [side].\nPath: "
                  "/r/shape"}});
  }
}

TEST_F(ElementInfoSeqAbsCls, PropertyThatRefusesTheObjectFailsWithThePathOfTheParent) {
  for (CElementInfo* member : {Shape<Mnd>(), Shape<Opt>()}) {
    CTrial trial(member, Unset::Object);
    trial.failsToTake = "No room.";
    EXPECT_QZ_THROW_FULL(CQzValidationException,
                         "Failed to set the property value.\nPath: /r\nNo room.", "/r",
                         trial.TakeOrThrow("<shape xsi:type='circle'/>"));
  }
}

TEST_F(ElementInfoSeqAbsCls, FailuresOfReadingReachTheCallerWithPathAndChain) {
  CTables tables;
  tables.Add(Shape<Mnd>(), Unset::Object);
  CSmartPtr<CTableObject> object(new CTableObject(tables));
  const char kText[] = "Failed to find a suitable substitution element for [shape].\nPath: /r";
  EXPECT_QZ_THROW_FULL(CQzException, kText, "/r", object->FromXml("<r/>"));
  EXPECT_QZ_THROW_FULL(CQzException, kText, "/r", object->FromXml("<r><shape/></r>"));
}

// --- Writing

TEST_F(ElementInfoSeqAbsCls, MissingObjectIsAFailureOfTheMandatoryMemberAlone) {
  CTrial mandatory(Shape<Mnd>(), Unset::Object);
  EXPECT_QZ_THROW_FULL(CQzInvalidParamException,
                       "The Property [shape] is mandatory, it may not be NULL", "",
                       mandatory.GiveOrThrow());
  EXPECT_EQ("false, <r/>", CTrial(Shape<Opt>(), Unset::Object).Give());
}

TEST_F(ElementInfoSeqAbsCls, ObjectIsWrittenUnderItsOwnNameInTheNamespaceOfTheMember) {
  for (CElementInfo* member : {Shape<Mnd>(kReal, "urn:o"), Shape<Opt>(kReal, "urn:o")}) {
    CTrial trial(member, Unset::Object);
    trial.value().SetXmlObject(CSmartPtr<CTableObject>(new CTableObject(m_circle, "circle")));
    EXPECT_EQ("true, <r><AA:circle xmlns:AA=\"urn:o\"/></r>", trial.Give());
    trial.value().SetXmlObject(CSmartPtr<CTableObject>(new CTableObject(m_circle, "disc")));
    EXPECT_EQ("true, <r><AA:disc xmlns:AA=\"urn:o\" xmlns:AB=\"" + std::string(kXsi) +
                  "\" AB:type=\"circle\"/></r>",
              trial.Give());
    EXPECT_EQ("true, <r><AA:disc xmlns:AA=\"urn:o\"/></r>",
              trial.Give(With([](CSerializationContext& c) { c.SetWriteTypeAttribute(false); })));
  }
}

TEST_F(ElementInfoSeqAbsCls, PropertyThatGivesNothingFailsWithTheNameOfTheMember) {
  for (CElementInfo* member : {Shape<Mnd>(), Shape<Opt>()}) {
    CTrial trial(member, Unset::Object);
    trial.object().failsToGive = "Not now.";
    EXPECT_QZ_THROW_FULL(CQzValidationException,
                         "Failed to get the property value for [shape].\nNot now.", "",
                         trial.GiveOrThrow());
  }
}
