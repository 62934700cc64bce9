#include "qzxml/QzXml.h"
#include "strict/strict.h"
#include "tests/support/QzTest.h"
#include "tests/support/Refusal.h"

// What the classes of strict.xsd refuse, and what they take beside the plainest form.

using namespace QzXmlLib16;
using namespace strict;

namespace {

constexpr char kNamespaces[] =
    " xmlns='urn:example:strict' xmlns:s='urn:example:strict'"
    " xmlns:xs='http://www.w3.org/2001/XMLSchema'"
    " xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance'";

// The document, whose root gets the namespaces.
std::string Whole(std::string document) {
  return document.insert(document.find_first_of(" />"), kNamespaces);
}

CObjectHandle Read(const std::string& document) {
  CXmlDocument tree(CSerializationContext::GetDefaultContext());
  tree.LoadXml(Whole(document).c_str());
  CObjectHandle root = NewRoot(tree.GetDocumentElement());
  root->FromXmlElement(tree.GetDocumentElement());
  return root;
}

std::string Refusal(const std::string& document) {
  return qztest::RefusalOf([&] { Read(document); });
}

std::string Value(const std::string& element) {
  return Refusal("<values>" + element + "<nil>1</nil></values>");
}

std::string Items(const std::string& elements) {
  return Refusal("<values><nil>1</nil>" + elements + "</values>");
}

// The text of one element in what is written of the document.
std::string Written(const std::string& document, const std::string& name) {
  const std::string text = Read(document)->ToXml();
  const std::size_t begin = text.find(":" + name + ">") + name.size() + 2;
  return text.substr(begin, text.find('<', begin) - begin);
}

const std::string kX = "<x>1</x>";
const std::string kXY = "<x>1</x><y>2</y>";

}  // namespace

TEST(GeneratedStrict, ABlockedDerivationIsRefused) {
  const struct {
    const char* element;
    const char* type;
    std::string content;
    bool isTaken;
  } cases[] = {
      {"free", "Longer", kXY, true},       {"free", "Tighter", kX, true},
      {"notLonger", "Longer", kXY, false}, {"notLonger", "Tighter", kX, true},
      {"notTighter", "Longer", kXY, true}, {"notTighter", "Tighter", kX, false},
      {"alone", "Longer", kXY, false},     {"alone", "Tighter", kX, false},
      {"alone", "Base", kX, true},         {"shut", "LongerShut", kXY, false},
      {"shut", "TighterShut", kX, true},   {"shut", "Base", kX, false},
  };
  for (const auto& c : cases) {
    const std::string name = c.element;
    const std::string refusal = Refusal("<blocks><" + name + " xsi:type='s:" + c.type + "'>" +
                                        c.content + "</" + name + "></blocks>");
    EXPECT_EQ(c.isTaken, refusal.empty()) << c.element << " " << c.type << ": " << refusal;
  }
}

TEST(GeneratedStrict, WhiteSpaceAroundTheNameOfATypeIsNoneOfIt) {
  EXPECT_EQ("", Refusal("<blocks><free xsi:type=' s:Longer '>" + kXY + "</free></blocks>"));
  EXPECT_EQ("", Refusal("<number xsi:type='\n xs:byte\n'>5</number>"));
}

TEST(GeneratedStrict, ABlockedSubstitutionIsRefused) {
  EXPECT_EQ("", Refusal("<blocks><head>" + kX + "</head></blocks>"));
  EXPECT_NE("", Refusal("<blocks><never>" + kX + "</never></blocks>"));
  EXPECT_NE("", Refusal("<blocks><longer>" + kXY + "</longer></blocks>"));
  EXPECT_EQ("", Refusal("<blocks><tighter>" + kX + "</tighter></blocks>"));
}

TEST(GeneratedStrict, AnObjectRefusesTheTypeOfAnotherOne) {
  EXPECT_EQ("The type [Tighter] that xsi:type names cannot stand in the element [alone].",
            Refusal("<blocks><alone xsi:type='Tighter'>" + kX + "</alone></blocks>"));
  CSmartPtr<CBase> base(new CBase);
  EXPECT_QZ_THROW(CQzValidationException,
                  "The type [Longer] that xsi:type names cannot stand in the element [open].\n"
                  "Path: /open",
                  base->FromXml(Whole("<open xsi:type='Longer'>" + kXY + "</open>").c_str()));
}

TEST(GeneratedStrict, TakesOnlyTheTextsThatXmlSchemaHas) {
  const struct {
    const char* type;
    const char* text;
    const char* refusal;
  } cases[] = {
      {"int", "1.0", "The value [1.0] can not be converted to a i4"},
      {"int", " +12 ", ""},
      {"int", "", "The value [] can not be converted to a i4"},
      {"unsignedInt", "-1", "The value [-1] can not be converted to a ui4"},
      {"unsignedInt", "-0", ""},
      {"unsignedInt", "4294967296", "The value [4294967296] is to large to fit in a ui4"},
      {"nonNegativeInteger", "-0", ""},
      {"nonNegativeInteger", "-1", "Invalid Value for nonNegativeInteger [-1]."},
      {"integer", "-3.14159", "The value [-3.14159] can not be converted to a integer"},
      {"integer", "12-34", "The value [12-34] can not be converted to a integer"},
      {"integer", "", "The value [] can not be converted to a integer"},
      {"decimal", "1e3", "The value [1e3] can not be converted to a decimal"},
      {"decimal", "--1", "The value [--1] can not be converted to a decimal"},
      {"decimal", ".", "The value [.] can not be converted to a decimal"},
      {"decimal", "-.5", ""},
      {"boolean", "TRUE", "The value [TRUE] can not be converted to a boolean"},
      {"boolean", " 1 ", ""},
      {"double", "+INF", "The value [+INF] can not be converted to a r8"},
      {"double", "-INF", ""},
      {"duration", "P", "Invalid XSD Duration [P] expected [-]P[nY][nM][nD][T[nH][nM][nS.ff]]"},
      {"duration", "P1M2Y", "The value [P1M2Y] can not be converted to a duration"},
      {"date", "+2004-02-29", "Invalid XSD Date [+2004-02-29] expected CCYY-MM-DD[Z|[+|-]hh:mm]"},
      {"date", "2004-02-29Z", ""},
  };
  for (const auto& c : cases) {
    const std::string name = c.type;
    EXPECT_EQ(c.refusal, Value("<" + name + ">" + c.text + "</" + name + ">")) << name;
  }
  EXPECT_EQ("The value [x] can not be converted to a i4", Items("<ints>1</ints><ints>x</ints>"));
  EXPECT_EQ("The value [1] is not one of kg, m", Items("<units>1</units>"));
  EXPECT_EQ("The value [1.0] can not be converted to a integer",
            Refusal("<values count='1.0'><nil>1</nil></values>"));
  EXPECT_EQ("The value [1.0] can not be converted to a i4", Refusal("<number>1.0</number>"));
}

TEST(GeneratedStrict, NothingBesideAValueIsDropped) {
  EXPECT_EQ("Unexpected Attribute found.", Value("<int a='1'>5</int>"));
  EXPECT_EQ("Unexpected Attribute found.", Items("<ints a='1'>5</ints>"));
  EXPECT_EQ("Unexpected Attribute found.", Items("<units a='1'>kg</units>"));
  EXPECT_EQ("", Value("<int xsi:schemaLocation='a b'>5</int>"));
  const char* const notNillable = "Invalid use of 'nil' attribute in non-nillable element.";
  EXPECT_EQ(notNillable, Value("<int xsi:nil='false'>5</int>"));
  EXPECT_EQ(notNillable, Items("<ints xsi:nil='true'/>"));
  EXPECT_EQ("", Refusal("<values><nil xsi:nil='false'>5</nil></values>"));
  EXPECT_EQ(
      "Failed read all the elements held within the element [int]. The unexpected element [x] "
      "remains un processed",
      Value("<int>5<x/></int>"));
  EXPECT_EQ(
      "Failed read all the elements held within the element [ints]. The unexpected element [x] "
      "remains un processed",
      Items("<ints>5<x/></ints>"));
  EXPECT_EQ("Unexpected text [5] found in the element [nil].",
            Refusal("<values><nil xsi:nil='true'>5</nil></values>"));
  EXPECT_EQ("", Refusal("<values><nil xsi:nil='true'/></values>"));
}

TEST(GeneratedStrict, WhatIsIgnoredBesideAValuePasses) {
  CSerializationContext context;
  context.SetIgnoreUnknownAttributes(true);
  context.SetIgnoreUnknownElements(true);
  CSmartPtr<CValues> values = NewValues();
  values->FromXml(
      Whole("<values><int a='1'>5<x/></int><nil>1</nil><ints b='2'>7<x/></ints></values>").c_str(),
      context);
  EXPECT_EQ(5, values->GetInt());
  EXPECT_EQ(7, values->GetInts()[0]);
}

TEST(GeneratedStrict, AValueMaySayTheTypeThatItHas) {
  EXPECT_EQ("", Value("<int xsi:type='xs:int'>5</int>"));
  EXPECT_EQ("", Value("<int xsi:type='xs:byte'>5</int>"));
  EXPECT_EQ("Invalid Value for int [500].", Value("<int xsi:type='xs:byte'>500</int>"));
  EXPECT_EQ("The type [string] that xsi:type names cannot stand in the element [int].",
            Value("<int xsi:type='xs:string'>5</int>"));
  EXPECT_EQ("", Value("<string xsi:type='xs:token'>a</string>"));
  EXPECT_EQ("", Items("<ints xsi:type='xs:short'>5</ints>"));
  EXPECT_EQ("Invalid Value for ints [70000].", Items("<ints xsi:type='xs:short'>70000</ints>"));
  EXPECT_EQ("", Refusal("<number xsi:type='xs:int'>5</number>"));
  EXPECT_EQ("The type [string] that xsi:type names cannot stand in the element [number].",
            Refusal("<number xsi:type='xs:string'>5</number>"));
}

TEST(GeneratedStrict, ADurationOfNothingSurvives) {
  EXPECT_EQ("PT0S", Written("<values><duration>P0D</duration><nil>1</nil></values>", "duration"));
  EXPECT_EQ("PT0S",
            Written("<values><nil>1</nil><durations>PT0S</durations></values>", "durations"));
  EXPECT_NE(std::string::npos,
            Read("<values time='PT0S'><nil>1</nil></values>")->ToXml().find("time=\"PT0S\""));
  EXPECT_EQ("PT0S", Written("<time>-PT0S</time>", "time xmlns:AA=\"urn:example:strict\""));
  CSmartPtr<CTime> time = NewTime();
  time->SetValue(CDateTimeSpan());
  CSmartPtr<CTime> copy = NewTime();
  copy->FromXmlStream(time->ToFastInfosetStream());
  EXPECT_EQ(time->ToXml(), copy->ToXml());
}

TEST(GeneratedStrict, CollectionsOfRealsKeepEveryDigit) {
  EXPECT_EQ(
      "0.30000000000000004",
      Written("<values><nil>1</nil><doubles>0.30000000000000004</doubles></values>", "doubles"));
}

TEST(GeneratedStrict, AGroupLeavesTheAttributesToItsElement) {
  const CObjectHandle root = Read("<steps xsi:nil='false' p='1'><a>1</a><b>2</b><a>3</a></steps>");
  CSteps& steps = dynamic_cast<CSteps&>(*root);
  EXPECT_FALSE(steps.GetIsNil());
  EXPECT_EQ(1, steps.GetAnyAttributes().GetCount());
  EXPECT_EQ("", Refusal("<steps xsi:nil='true'/>"));
}

TEST(GeneratedStrict, AChoiceOfCollectionsThatMayBeEmptyIsEmpty) {
  EXPECT_EQ("", Refusal("<rows/>"));
  EXPECT_EQ("<AA:rows xmlns:AA=\"urn:example:strict\"/>",
            Read("<rows/>")->ToXml(false, false, EOLType_LF));
  EXPECT_EQ("", Refusal("<rows><a/><a/></rows>"));
  EXPECT_NE("", Refusal("<rows><a/><b>1</b></rows>"));
  EXPECT_NE("", Refusal("<fewRows/>"));
}

TEST(GeneratedStrict, ARestrictionCountsElementsOfAnyType) {
  EXPECT_EQ("", Refusal("<fewRows><a/></fewRows>"));
  EXPECT_NE("", Refusal("<fewRows><a/><a/></fewRows>"));
  EXPECT_EQ("", Refusal("<fewRows><b>1</b><b>1</b></fewRows>"));
  EXPECT_NE("", Refusal("<fewRows><b>1</b><b>1</b><b>1</b></fewRows>"));
}

TEST(GeneratedStrict, AnElementOfAnyTypeHasItsNamespace) {
  EXPECT_EQ("", Refusal("<free><one/><many/><many a='1'>t</many><plain xmlns=''/></free>"));
  EXPECT_EQ("Failed to find the required element from namespace [urn:example:strict].",
            Refusal("<free><one xmlns=''/></free>"));
  EXPECT_NE("", Refusal("<free><one/><many xmlns='urn:other'/></free>"));
  EXPECT_NE("", Refusal("<free><one/><plain/></free>"));
}

TEST(GeneratedStrict, ANilObjectIsEmpty) {
  EXPECT_EQ(
      "Failed read all the elements held within the element [steps]. The unexpected element [a] "
      "remains un processed",
      Refusal("<steps xsi:nil='true'><a>1</a></steps>"));
  EXPECT_EQ("Unexpected text [1] found in the element [steps].",
            Refusal("<steps xsi:nil='1'>1</steps>"));
  EXPECT_EQ("", Refusal("<steps xsi:nil='true' p='1'> </steps>"));
}

TEST(GeneratedStrict, ARootReadsOnlyItsOwnDocuments) {
  CSmartPtr<CNumber> number = NewNumber();
  EXPECT_QZ_THROW(
      CQzValidationException,
      "The root of the document is [{urn:example:strict}time], not [{urn:example:strict}number].\n"
      "Path: /time",
      number->FromXml(Whole("<time>PT1S</time>").c_str()));
  EXPECT_QZ_THROW(CQzValidationException,
                  "The root of the document is [number], not [{urn:example:strict}number].\n"
                  "Path: /number",
                  number->FromXml("<number>1</number>"));
  number->FromXml(Whole("<number>7</number>").c_str());
  EXPECT_EQ(7, number->GetValue());
  EXPECT_QZ_THROW(CQzValidationException,
                  "The root of the document is [n], not [{urn:example:strict}number].\nPath: /n",
                  number->NewCopy()->FromXml("<n>1</n>"));
}

TEST(GeneratedStrict, AnObjectThatIsNoRootReadsAnyElementOfItsType) {
  CSmartPtr<CBase> base(new CBase);
  base->FromXml(Whole("<other>" + kX + "</other>").c_str());
  EXPECT_EQ(1, base->GetX());
  CSmartPtr<CBase> member = NewHead();
  CSmartPtr<CEither> either = NewEither();
  either->GetBs().Add(member);
  member->FromXml(Whole("<other>" + kX + "</other>").c_str());
  EXPECT_EQ(1, member->GetX());
}

TEST(GeneratedStrict, AnIndexThatIsRefusedSelectsNothing) {
  CSmartPtr<CEither> either = NewEither();
  CSmartPtr<CBase> base(new CBase);
  EXPECT_QZ_THROW(CQzInvalidParamException, "Index out of range", either->GetAs().AddAt(3, 1));
  EXPECT_EQ(CEither::Selected_None, either->GetSelected());
  EXPECT_QZ_THROW(CQzInvalidParamException, "Index out of range", either->GetBs().AddAt(3, base));
  EXPECT_EQ(CEither::Selected_None, either->GetSelected());
  either->SetD(4);
  EXPECT_EQ(CEither::Selected_D, either->GetSelected());
  EXPECT_THROW(either->GetAs().Add(1), CQzInvalidStateException);
}
