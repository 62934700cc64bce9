#include "corners/corners.h"
#include "qzxml/QzXml.h"
#include "tests/support/QzTest.h"

// What the classes of corners.xsd do, which are made, compiled and used by this program's build.

using namespace QzXmlLib16;

namespace {

constexpr char kInstance[] = "http://www.w3.org/2001/XMLSchema-instance";

// What a document becomes when its root's class has read and written it.
std::string RoundTrip(const std::string& text) {
  CXmlDocument document;
  document.LoadXml(text.c_str());
  const CObjectHandle object = corners::NewRoot(document.GetDocumentElement());
  object->FromXmlElement(document.GetDocumentElement());
  return object->ToXml(false, false);
}

// One of the schema's elements in the prefix that its classes write.
std::string Of(const std::string& name, const std::string& content) {
  const std::string start = "<AA:" + name + " xmlns:AA=\"urn:example:corners\"";
  return content.empty() ? start + "/>" : start + ">" + content + "</AA:" + name + ">";
}

std::string NilObject(const std::string& content) {
  return Of("nils", "<object xmlns:i=\"" + std::string(kInstance) + "\" i:nil=\"true\">" + content +
                        "</object>");
}

}  // namespace

// --- Choices that may be empty

TEST(GeneratedCorners, AChoiceOfCollectionsWithABranchOfNothingMayBeEmpty) {
  EXPECT_EQ(RoundTrip(Of("many", "")), Of("many", ""));
  EXPECT_EQ(RoundTrip(Of("many", "<a>1</a><a>2</a>")), Of("many", "<a>1</a><a>2</a>"));
  EXPECT_EQ(RoundTrip(Of("many", "<b/>")), Of("many", "<b/>"));
}

TEST(GeneratedCorners, ARestrictionOfItToOneEachMayBeEmpty) {
  EXPECT_EQ(RoundTrip(Of("few", "")), Of("few", ""));
  EXPECT_EQ(RoundTrip(Of("few", "<a>1</a>")), Of("few", "<a>1</a>"));
  EXPECT_THROW(RoundTrip(Of("few", "<a>1</a><a>2</a>")), CQzException);
}

TEST(GeneratedCorners, ARestrictionToNothingIsEmpty) {
  EXPECT_EQ(RoundTrip(Of("none", "")), Of("none", ""));
  EXPECT_QZ_THROW(CQzException,
                  "Failed read all the elements held within the element [none]. The unexpected "
                  "element [a] remains un processed\nPath: /AA:none",
                  RoundTrip(Of("none", "<a>1</a>")));
}

TEST(GeneratedCorners, AChoiceOfCollectionsThatHaveToStandMayNotBeEmpty) {
  EXPECT_QZ_THROW(CQzException,
                  "No child elements within the element [some] were populated. The element "
                  "represents a choice, so one and only one element should be populated. The "
                  "element contained no sutable child elements\nPath: /AA:some",
                  RoundTrip(Of("some", "")));
  EXPECT_EQ(RoundTrip(Of("some", "<a>1</a>")), Of("some", "<a>1</a>"));
  const CSmartPtr<corners::CSome> some = corners::NewSome();
  EXPECT_THROW(some->ToXml(false, false), CQzException);
  EXPECT_EQ(corners::NewMany()->ToXml(false, false), Of("many", ""));
}

// --- Children of any type

TEST(GeneratedCorners, AChildOfAnyTypeStandsInItsNamespace) {
  for (const char* const root : {"once", "perhaps", "either", "all"}) {
    EXPECT_EQ(RoundTrip(Of(root, "<AA:any/>")), Of(root, "<AA:any/>"));
    EXPECT_THROW(RoundTrip(Of(root, "<any/>")), CQzException) << root;
    EXPECT_THROW(RoundTrip(Of(root, "<o:any xmlns:o=\"urn:other\"/>")), CQzException) << root;
  }
  EXPECT_QZ_THROW(CQzException,
                  "Failed to find the required element from namespace [urn:example:corners].\n"
                  "Path: /AA:once",
                  RoundTrip(Of("once", "<any/>")));
}

TEST(GeneratedCorners, AChildOfAnyTypeStandsAnywhereWhereNamespacesAreIgnored) {
  CSerializationContext context;
  context.SetIgnoreNamespaces(true);
  const CSmartPtr<corners::CPerhaps> perhaps = corners::NewPerhaps();
  perhaps->FromXml(Of("perhaps", "<AA:any>x</AA:any>").c_str(), context);
  ASSERT_NE(perhaps->GetAny(), nullptr);
  EXPECT_EQ(perhaps->GetAny()->GetText(), "x");
}

// --- Fixed values of unions

TEST(GeneratedCorners, AFixedValueOfAUnionIsComparedAsAValueOfItsMember) {
  EXPECT_EQ(RoundTrip(Of("fixes", "<number>1.000</number>")),
            Of("fixes", "<number>1.000</number>"));
  EXPECT_QZ_THROW(CQzException, "Failed to set the property value.\nPath: /AA:fixes/number",
                  RoundTrip(Of("fixes", "<number>true</number>")));
  EXPECT_THROW(RoundTrip(Of("fixes", "<number>2</number>")), CQzException);
}

// A value that is the default is written as an empty element.
TEST(GeneratedCorners, AFixedValueOfAUnionKeepsTheSpacesThatItsMembersKeep) {
  EXPECT_EQ(corners::NewFixes()->GetSpaced(), "two  words ");
  EXPECT_EQ(RoundTrip(Of("fixes", "<spaced>two  words </spaced>")), Of("fixes", "<spaced/>"));
  EXPECT_THROW(RoundTrip(Of("fixes", "<spaced>two words</spaced>")), CQzException);
  EXPECT_EQ(corners::NewFixes()->GetCollapsed(), "two words");
  EXPECT_EQ(RoundTrip(Of("fixes", "<collapsed> two\nwords</collapsed>")),
            Of("fixes", "<collapsed/>"));
}

// --- Nil elements

TEST(GeneratedCorners, ANilElementIsEmpty) {
  EXPECT_EQ(RoundTrip(NilObject(" ")),
            Of("nils", "<object xmlns:AB=\"" + std::string(kInstance) + "\" AB:nil=\"true\"/>"));
  EXPECT_QZ_THROW(CQzException,
                  "Failed read all the elements held within the element [object]. The unexpected "
                  "element [a] remains un processed\nPath: /AA:nils/object",
                  RoundTrip(NilObject("<a>1</a>")));
  EXPECT_QZ_THROW(CQzException,
                  "Unexpected text [words] found in the element [object].\nPath: /AA:nils/object",
                  RoundTrip(NilObject("words")));
  const std::string text = Of(
      "nils", "<text at=\"1\" xmlns:i=\"" + std::string(kInstance) + "\" i:nil=\"1\">words</text>");
  EXPECT_QZ_THROW(CQzException,
                  "Unexpected text [words] found in the element [text].\nPath: /AA:nils/text",
                  RoundTrip(text));
}
