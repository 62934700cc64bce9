#include "everything/everything.h"
#include "other/other.h"
#include "qzxml/QzXml.h"
#include "tests/support/PlanTrial.h"

// The classes of everything.xsd are written by plans as by the walk.

using namespace QzXmlLib16;
using namespace everything;

namespace {

constexpr char kUri[] = "urn:example:everything";

// As much as an object can hold, and as little.
constexpr char kFull[] = R"(<?xml version="1.0" encoding="UTF-8"?>
<all xmlns="urn:example:everything" xmlns:o="urn:example:other" xmlns:m="urn:example:more"
     xmlns:i="http://www.w3.org/2001/XMLSchema-instance" namespace="n &quot;m&quot; &lt;&amp;&gt;"
     m:extra="e" version='1"\ ??='>
  <values><int>-7</int><Int>123456789012345678901234567890</Int><long>-9223372036854775808</long>
    <short>-32768</short><byte>-128</byte><unsignedLong>18446744073709551615</unsignedLong>
    <unsignedByte>255</unsignedByte><decimal>-0.100</decimal><float>0.1</float>
    <double>0.30000000000000004</double><boolean>true</boolean>
    <dateTime>2004-02-29T23:59:59.125+05:30</dateTime><duration>-P1Y2M3DT4H5M6.5S</duration>
    <gYear>-0044</gYear><hexBinary>00ff</hexBinary><base64Binary>AAECAw==</base64Binary>
    <anyURI>urn:a?b=c&amp;d</anyURI><NMTOKENS>a b</NMTOKENS></values>
  <facets><percent>99.5</percent><plate>AB-12</plate><size>small</size><even>2 4</even>
    <key>0102</key></facets>
  <shape i:type="NamedCircle"><name>c</name><radius>2</radius></shape>
  <shape i:type="Circle"><radius>1.25</radius></shape>
  <road><left>1</left><right>2</right><left>3</left><point x="4"/><turn>1/2</turn><back>true</back></road>
  <flags elementName="en" value="5"><class>k</class><value>v</value><object x="1" y="2"/>
    <collection>one</collection><collection>two</collection><selected>false</selected><binding>Once</binding></flags>
  <text>some <b>bold</b> words <b/>&amp; more</text>
  <money currency="CHF">12.50</money>
  <when>2004-02-29Z</when>
  <tree label="a"><tree label="b"/><tree><tree label="c"><tree/></tree></tree></tree>
  <second>abc</second><first>first</first>
  <o:box o:mark="x"><o:level>class</o:level><point x="9"/></o:box>
  <free><m:anything at="all">x</m:anything></free>
  <words><turn>left</turn><turn></turn><any>1</any><any at="2"/></words>
  <m:one/><m:two>2</m:two>
</all>)";

constexpr char kSmall[] = R"(
<all xmlns="urn:example:everything" xmlns:i="http://www.w3.org/2001/XMLSchema-instance">
  <values><int>0</int><Int>0</Int></values><facets/>
  <shape i:type="Circle"><radius>1e300</radius></shape>
  <road><stop>&lt;s></stop></road><money i:nil="true"/><when i:nil="true"/></all>)";

CSmartPtr<CAll> Read(const char* text) {
  CSmartPtr<CAll> all = NewAll();
  all->FromXml(text);
  return all;
}

}  // namespace

TEST(GeneratedWriting, IsTheWalkForAllThatThereIs) {
  qztest::ExpectPlannedAsWalked(*Read(kFull), kUri);
}

TEST(GeneratedWriting, IsTheWalkForTheLeast) { qztest::ExpectPlannedAsWalked(*Read(kSmall), kUri); }

TEST(GeneratedWriting, IsTheWalkForWhatIsNotComplete) {
  qztest::ExpectPlannedAsWalked(*NewAll(), kUri);
  const CSmartPtr<CAll> all = Read(kFull);
  all->SetTree(nullptr);
  all->GetRoad()->GetEnd()->GetTurnAndBack()->SetTurn(StringToTurn("left"));
  qztest::ExpectPlannedAsWalked(*all, kUri);
}

TEST(GeneratedWriting, IsTheWalkForADeepTree) {
  const CSmartPtr<CAll> all = Read(kSmall);
  CSmartPtr<CTree> tree = all->EnsureTree();
  for (int i = 0; i < 300; ++i) {
    tree->SetLabel("level " + std::to_string(i));
    tree->GetTrees().Add();
    tree = tree->GetTrees().Add();
  }
  const CSerializationContext context;
  for (const qztest::Form& form : qztest::Forms()) {
    const qztest::Written walked = qztest::ByWalk(*all, form, context);
    const qztest::Written planned = qztest::ByPlan(*all, form, context);
    ASSERT_EQ(walked.text, planned.text);
    ASSERT_EQ(walked.flushes, planned.flushes);
  }
}
