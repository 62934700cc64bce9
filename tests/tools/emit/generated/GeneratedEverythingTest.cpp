#include "everything/everything.h"
#include "other/other.h"
#include "qzxml/QzXml.h"
#include "tests/support/QzTest.h"

// What the classes of everything.xsd do, which are made, compiled and used by this program's build.

using namespace QzXmlLib16;
using namespace everything;

namespace {

constexpr char kDocument[] = R"(<?xml version="1.0" encoding="UTF-8"?>
<all xmlns="urn:example:everything" xmlns:o="urn:example:other" xmlns:m="urn:example:more"
     xmlns:i="http://www.w3.org/2001/XMLSchema-instance" namespace="n" m:extra="e">
  <values><Int>123456789012345678901234567890</Int><int>-7</int><unsignedByte>255</unsignedByte>
    <hexBinary>00ff</hexBinary><gYear>-0044</gYear><NMTOKENS>a b</NMTOKENS></values>
  <facets><percent>99.5</percent><plate>AB-12</plate><size>small</size><even>2 4</even>
    <key>0102</key></facets>
  <shape i:type="NamedCircle"><name>c</name><radius>2</radius></shape>
  <shape i:type="Circle"><radius>1</radius></shape>
  <road><left>1</left><right>2</right><left>3</left><point x="4"/><turn>1/2</turn><back>true</back></road>
  <flags elementName="en" value="5"><class>k</class><value>v</value><object x="1" y="2"/>
    <collection>one</collection><collection>two</collection><binding>Once</binding></flags>
  <text>some <b>bold</b> words</text>
  <money i:nil="true"/>
  <when i:nil="true"/>
  <tree label="a"><tree label="b"/><tree><tree label="c"/></tree></tree>
  <second>abc</second><first>first</first>
  <o:box o:mark="x"><o:level>class</o:level><point x="9"/></o:box>
  <free><m:anything at="all">x</m:anything></free>
  <words><turn>left</turn><turn>Left</turn><any>1</any><any at="2"/></words>
  <m:one/><m:two>2</m:two>
</all>)";

CSmartPtr<CAll> Read(const char* text) {
  CSmartPtr<CAll> all = NewAll();
  all->FromXml(text);
  return all;
}

// The text with one piece of it in the place of another.
std::string Changed(const std::string& from, const std::string& to) {
  std::string text = kDocument;
  text.replace(text.find(from), from.size(), to);
  return text;
}

bool IsRefused(const std::string& text) {
  try {
    Read(text.c_str());
    return false;
  } catch (const CQzException&) {
    return true;
  }
}

}  // namespace

TEST(GeneratedEverything, ReadsValuesOfAnyType) {
  const CSmartPtr<CAll> all = Read(kDocument);
  const CSmartPtr<CValues> values = all->GetValues();
  EXPECT_EQ(-7, values->GetInt());
  EXPECT_EQ("123456789012345678901234567890", values->GetInt2().ToString());
  EXPECT_EQ(std::uint8_t{255}, values->GetUnsignedByte());
  EXPECT_EQ("-0044", values->GetGYear());
  EXPECT_EQ("a b", values->GetNMTOKENS());
  EXPECT_TRUE(values->GetBoolean());
  EXPECT_FALSE(values->IsSetBoolean());
  EXPECT_EQ("1\"\\ ?\?=", all->GetVersion());
  EXPECT_EQ("n", all->GetNamespaceAttribute());
  EXPECT_EQ(1, all->GetAnyAttributes().GetCount());
}

TEST(GeneratedEverything, KeepsTheOrderOfARepeatedChoice) {
  const CSmartPtr<CRoad> road = Read(kDocument)->GetRoad();
  using Step = CRoad::CLeftOrRightOrPoint;
  std::vector<Step::Selected> steps;
  for (const auto& step : road->GetLeftOrRightOrPoints()) steps.push_back(step->GetSelected());
  EXPECT_EQ((std::vector<Step::Selected>{Step::Selected_Left, Step::Selected_Right,
                                         Step::Selected_Left, Step::Selected_Point}),
            steps);
  EXPECT_EQ(3, road->GetLeftOrRightOrPoints()[2]->GetLeft());
  EXPECT_EQ(CEnd::Selected_TurnAndBack, road->GetEnd()->GetSelected());
  EXPECT_EQ(StringToTurn("1/2"), road->GetEnd()->GetTurnAndBack()->GetTurn());
}

TEST(GeneratedEverything, MakesObjectsOfTheTypeThatTheDocumentNames) {
  const CSmartPtr<CAll> all = Read(kDocument);
  ASSERT_EQ(2, all->GetShapes().size());
  CShape* const first = all->GetShapes()[0];
  CShape* const second = all->GetShapes()[1];
  EXPECT_NE(nullptr, dynamic_cast<CNamedCircle*>(first));
  EXPECT_EQ(nullptr, dynamic_cast<CNamedCircle*>(second));
  ASSERT_NE(nullptr, dynamic_cast<CCircle*>(second));
  EXPECT_EQ(1.0, dynamic_cast<CCircle*>(second)->GetRadius());
  EXPECT_QZ_THROW(CQzInvalidStateException,
                  "The Property [shape] has an abstract type, set an object",
                  all->GetShapes().Add());
}

TEST(GeneratedEverything, ReadsTheOtherConstructs) {
  const CSmartPtr<CAll> all = Read(kDocument);
  EXPECT_EQ("en", all->GetFlags()->GetElementNameAttribute());
  EXPECT_EQ("k", all->GetFlags()->GetClass());
  EXPECT_EQ("v", all->GetFlags()->GetValue());
  EXPECT_EQ(5, all->GetFlags()->GetValueAttribute());
  EXPECT_EQ(2, all->GetFlags()->GetObject()->GetY());
  EXPECT_EQ("two", all->GetFlags()->GetCollections()[1]);
  EXPECT_EQ(1, all->GetText()->GetBs().size());
  EXPECT_TRUE(all->GetMoney()->GetIsNil());
  EXPECT_FALSE(all->GetWhen().has_value());
  EXPECT_EQ("c", all->GetTree()->GetTrees()[1]->GetTrees()[0]->GetLabel());
  ASSERT_EQ(2, all->GetHeads().size());
  EXPECT_EQ("abc", all->GetHeads()[0]->GetSecond());
  EXPECT_EQ("first", all->GetHeads()[1]->GetFirst());
  EXPECT_EQ(other::Level_class, all->GetBox()->GetLevel());
  EXPECT_EQ("x", all->GetBox()->GetMark());
  EXPECT_EQ(9, all->GetBox()->GetPoint()->GetX());
  EXPECT_NE(nullptr, all->GetFree());
  EXPECT_EQ(StringToTurn("Left"), all->GetWords()->GetTurns()[1]);
  EXPECT_EQ(2, all->GetAnyElements().size());
}

TEST(GeneratedEverything, WritesWhatItReads) {
  // Without indentation, which mixed content would take for text.
  const std::string text = Read(kDocument)->ToXml(true, false);
  EXPECT_EQ(text, Read(text.c_str())->ToXml(true, false));
}

TEST(GeneratedEverything, PassesThroughFastInfoset) {
  const CSmartPtr<CAll> all = Read(kDocument);
  all->SetText(nullptr);  // the place of mixed text is not kept
  const CSmartPtr<CAll> again = NewAll();
  again->FromXmlStream(all->ToFastInfosetStream());
  EXPECT_EQ(all->ToXml(), again->ToXml());
}

TEST(GeneratedEverything, RefusesDocumentsThatTheSchemaForbids) {
  EXPECT_FALSE(IsRefused(kDocument));
  const std::pair<const char*, const char*> changes[] = {
      {"<int>-7</int>", ""},
      {"<int>-7</int>", "<int>x</int>"},
      {"99.5", "0"},
      {"99.5", "100.01"},
      {"99.5", "1.234"},
      {"AB-12", "AB12"},
      {"AB-12", "AB-1234"},
      {">small<", ">middle<"},
      {">2 4<", ">2 3<"},
      {">2 4<", ">2 4 6 8<"},
      {">0102<", ">01<"},
      {"i:type=\"Circle\"", "i:type=\"Shape\""},
      {"i:type=\"Circle\"", "i:type=\"Square\""},
      {"<name>c</name>", ""},
      {"<back>true</back>", ""},
      {"<turn>1/2</turn>", "<turn>right</turn>"},
      {"<second>abc</second>", "<second>abcd</second>"},
      {"<point x=\"9\"/>", ""},
      {"<turn>left</turn><turn>Left</turn>", ""},
      {"namespace=\"n\"", "version=\"2\""},
      {"namespace=\"n\"", "unknown=\"n\""},
      {"<m:one/>", "<m:one/><m:more/>"},
  };
  for (const auto& [from, to] : changes) {
    EXPECT_TRUE(IsRefused(Changed(from, to))) << from << " became " << to;
  }
}

TEST(GeneratedEverything, SettersRefuseWhatTheSchemaForbids) {
  const CSmartPtr<CFacets> facets(new CFacets);
  EXPECT_QZ_THROW(CQzException, "Invalid Value for plate [AB12].", facets->SetPlate("AB12"));
  EXPECT_QZ_THROW(CQzException, "Invalid Value for size [middle].", facets->SetSize("middle"));
  EXPECT_QZ_THROW(CQzException, "Invalid Value for even [3].", facets->SetEven("3"));
  facets->SetPlate("Xab_a");
  facets->SetSize("12");
  facets->SetEven("2 4 6");
  const CSmartPtr<CAll> all = NewAll();
  EXPECT_QZ_THROW(CQzInvalidValueException,
                  "The value [2] of version is not the fixed value [1\"\\ ?\?=]",
                  all->SetVersion("2"));
}

TEST(GeneratedEverything, MakesTheRootThatADocumentHas) {
  const CSerializationContext context;
  CXmlDocument document(context);
  document.LoadXml("<point xmlns=\"urn:example:everything\" x=\"1\"/>");
  const CObjectHandle point = NewRoot(document.GetDocumentElement());
  CXmlObjectBase* const object = point;
  EXPECT_NE(nullptr, dynamic_cast<CPoint*>(object));
  document.LoadXml("<box xmlns=\"urn:example:other\"/>");
  EXPECT_EQ(nullptr, NewRoot(document.GetDocumentElement()));
  EXPECT_NE(nullptr, other::NewRoot(document.GetDocumentElement()));
}
