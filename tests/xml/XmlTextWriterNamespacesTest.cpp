#include <gtest/gtest.h>

#include <string>

#include "qzxml/xml/XmlNamespaces.h"
#include "qzxml/xml/XmlTextWriter.h"
#include "tests/support/QzTest.h"
#include "tests/xml/XmlTextWriterOutput.h"

using namespace QzXmlLib16;
using namespace qztest;

// ---- Namespaces ----

TEST(XmlTextWriterNamespaces, DeclaresTheRootsNamespacesInTheOrderOfTheirUris) {
  Output out(false);
  out.writer.SetDefaultNamespace("urn:d");
  out.writer.AddNamespaceMapping("a", "urn:z");
  out.writer.AddNamespaceMapping("b", "urn:A");
  out.writer.AddNamespaceMapping("c", "urn:a");
  out.Start("r", "urn:new");
  out.Start("x", "urn:z");
  out.End(2);
  EXPECT_EQ(
      "<AA:r xmlns:AA=\"urn:new\" xmlns=\"urn:d\" xmlns:b=\"urn:A\" xmlns:c=\"urn:a\""
      " xmlns:a=\"urn:z\"><a:x/></AA:r>",
      out.text());
}

TEST(XmlTextWriterNamespaces, WritesNoPrefixInTheDefaultNamespaceAndNoneWithoutNamespace) {
  Output out(false);
  out.writer.SetDefaultNamespace("urn:d");
  out.Start("r", "urn:d");
  out.Start("a", "urn:d");
  out.End();
  out.Start("b");  // meant: no xmlns="" takes the default namespace away
  out.End(2);
  EXPECT_EQ("<r xmlns=\"urn:d\"><a/><b/></r>", out.text());
}

TEST(XmlTextWriterNamespaces, DeclaresTheDefaultNamespaceOnARootWithoutNamespaceToo) {
  Output out(false);
  out.writer.SetDefaultNamespace("urn:d");
  out.Start("r");
  out.End();
  EXPECT_EQ("<r xmlns=\"urn:d\"/>", out.text());
}

TEST(XmlTextWriterNamespaces, PrefixesAnAttributeInTheDefaultNamespace) {
  Output out(false);
  out.writer.SetDefaultNamespace("urn:d");
  out.Start("r", "urn:d");
  out.Attribute("a", "1", "urn:d");
  out.Attribute("b", "2", "urn:d");
  out.End();
  EXPECT_EQ("<r xmlns=\"urn:d\" xmlns:AA=\"urn:d\" AA:a=\"1\" AA:b=\"2\"/>", out.text());
}

TEST(XmlTextWriterNamespaces, DeclaresAnUnknownNamespaceInPlaceOnEachSibling) {
  Output out(false);
  out.Start("r");
  for (int i = 0; i < 2; ++i) {
    out.Start("a", "urn:a");
    out.Start("b", "urn:a");
    out.End(2);
  }
  out.End();
  EXPECT_EQ(
      "<r><AA:a xmlns:AA=\"urn:a\"><AA:b/></AA:a>"
      "<AA:a xmlns:AA=\"urn:a\"><AA:b/></AA:a></r>",
      out.text());
}

TEST(XmlTextWriterNamespaces, PassesOverAnAliasThatTheCallerDeclared) {
  Output out(false);
  out.writer.AddNamespaceMapping("AA", "urn:u");
  out.Start("r", "urn:u");
  out.Start("a", "urn:a");
  out.End(2);
  EXPECT_EQ("<AA:r xmlns:AA=\"urn:u\"><AB:a xmlns:AB=\"urn:a\"/></AA:r>", out.text());
}

TEST(XmlTextWriterNamespaces, GivesNestedNamespacesAliasesOfTheirOwn) {
  Output out(false);
  out.Start("r", "urn:1");
  out.Start("a", "urn:2");
  out.Start("b", "urn:3");
  out.Start("c", "urn:1");
  out.End(2);
  out.Start("d", "urn:4");
  out.End(3);
  EXPECT_EQ(
      "<AA:r xmlns:AA=\"urn:1\"><AB:a xmlns:AB=\"urn:2\"><AC:b xmlns:AC=\"urn:3\"><AA:c/>"
      "</AC:b><AC:d xmlns:AC=\"urn:4\"/></AB:a></AA:r>",
      out.text());
}

// "AB" and "AK" are the caller's. From the sixth element on so many namespaces are in force that
// their aliases are counted. What ends gives its alias back.
TEST(XmlTextWriterNamespaces, GivesTheFirstAliasThatIsFreeHoweverManyAreInForce) {
  Output out(false);
  out.writer.AddNamespaceMapping("AB", "urn:mine");
  out.writer.AddNamespaceMapping("AK", "urn:mine2");
  const auto start = [&out](int number) {
    out.Start("e", ("urn:" + std::to_string(number)).c_str());
    if (number == 4) out.Attribute("a", "1", "urn:attribute");
  };
  const auto startTag = [](const std::string& alias, int number) {
    return "<" + alias + ":e xmlns:" + alias + "=\"urn:" + std::to_string(number) + "\"";
  };
  for (int i = 1; i <= 11; ++i) start(i);
  out.End(9);
  for (int i = 11; i >= 3; --i) start(i);
  out.End(9);
  start(12);
  out.End(3);

  std::string expected = "<AA:e xmlns:AA=\"urn:1\" xmlns:AB=\"urn:mine\" xmlns:AK=\"urn:mine2\">" +
                         startTag("AC", 2) + ">";
  const std::string down[] = {"AD", "AE", "AG", "AH", "AI", "AJ", "AL", "AM", "AN"};
  for (int i = 3; i <= 11; ++i) {
    expected += startTag(down[i - 3], i);
    if (i == 4) expected += " xmlns:AF=\"urn:attribute\" AF:a=\"1\"";
    expected += i == 11 ? "/>" : ">";
  }
  for (int i = 10; i >= 3; --i) expected += "</" + down[i - 3] + ":e>";
  const std::string again[] = {"AD", "AE", "AF", "AG", "AH", "AI", "AJ", "AL", "AN"};
  for (int i = 11; i >= 3; --i) {
    expected += startTag(again[11 - i], i);
    if (i == 4) expected += " xmlns:AM=\"urn:attribute\" AM:a=\"1\"";
    expected += i == 3 ? "/>" : ">";
  }
  for (int i = 4; i <= 11; ++i) expected += "</" + again[11 - i] + ":e>";
  expected += startTag("AD", 12) + "/></AC:e></AA:e>";
  EXPECT_EQ(expected, out.text());
}

TEST(XmlTextWriterNamespaces, ForgetsTheNamespaceOfAnAttributeWithItsElement) {
  Output out(false);
  out.Start("r");
  for (int i = 0; i < 2; ++i) {
    out.Start("a");
    out.Attribute("x", "1", "urn:a");
    out.Start("b", "urn:a");
    out.End(2);
  }
  out.End();
  EXPECT_EQ(
      "<r><a xmlns:AA=\"urn:a\" AA:x=\"1\"><AA:b/></a>"
      "<a xmlns:AA=\"urn:a\" AA:x=\"1\"><AA:b/></a></r>",
      out.text());
}

TEST(XmlTextWriterNamespaces, NeverDeclaresTheXmlNamespace) {
  Output out(false);
  out.Start("r");
  out.Attribute("lang", "de", kXmlNamespace);
  out.Start("a", kXmlNamespace);
  out.End(2);
  EXPECT_EQ("<r xml:lang=\"de\"><xml:a/></r>", out.text());
}

TEST(XmlTextWriterNamespaces, LeavesEveryDeclarationOutWhoseUriBeginsLikeTheXmlNamespace) {
  Output out(false);
  out.writer.AddNamespaceMapping("a", "http://www.w3.org/XML/1998/namespace/more");
  out.writer.AddNamespaceMapping("b", "http://www.w3.org/XML/1998/namespac");
  out.Start("r", "http://www.w3.org/XML/1998/namespace/more");
  out.End();
  EXPECT_EQ("<a:r xmlns:b=\"http://www.w3.org/XML/1998/namespac\"/>", out.text());
}

TEST(XmlTextWriterNamespaces, DoesNotEscapeUrisInDeclarations) {
  Output out(false);
  out.writer.SetDefaultNamespace("urn:d&<>");
  out.writer.AddNamespaceMapping("p", "urn:p&\"");
  out.Start("r", "urn:r&amp;&");
  out.Attribute("a", "1", "urn:<a>");
  out.writer.WriteXsiType("urn:&t", "t", kString);
  out.End();
  EXPECT_EQ(
      "<AA:r xmlns:AA=\"urn:r&amp;&\" xmlns=\"urn:d&<>\" xmlns:p=\"urn:p&\"\""
      " xmlns:AB=\"urn:<a>\" AB:a=\"1\" xmlns:AC=\"urn:&t\" "
      " xmlns:AD=\"http://www.w3.org/2001/XMLSchema-instance\" AD:type=\"AC:t\"/>",
      out.text());
}

TEST(XmlTextWriterNamespaces, LeavesPrefixesOutBelowALaterDefaultNamespaceWithoutDeclaringIt) {
  Output out(false);
  out.writer.AddNamespaceMapping("p", "urn:p");
  out.Start("r");
  out.Start("a");
  out.writer.SetDefaultNamespace("urn:p");
  out.Start("b", "urn:p");
  out.End(2);
  out.Start("c", "urn:p");
  out.End(2);
  EXPECT_EQ("<r xmlns:p=\"urn:p\"><a><b/></a><p:c/></r>", out.text());
}

TEST(XmlTextWriterNamespaces, WritesAnEndTagByTheNamespacesInForceAtTheEnd) {
  // Meant: the end tag looks at the default namespace and the aliases anew.
  Output left(false);
  left.writer.SetDefaultNamespace("urn:d");
  left.Start("r", "urn:d");
  left.Text("t");
  left.writer.SetDefaultNamespace("urn:e");
  left.End();
  EXPECT_EQ("<r xmlns=\"urn:d\">t</:r>", left.text());

  Output entered(false);
  entered.writer.AddNamespaceMapping("p", "urn:p");
  entered.Start("r", "urn:p");
  entered.Text("t");
  entered.writer.SetDefaultNamespace("urn:p");
  entered.End();
  EXPECT_EQ("<p:r xmlns:p=\"urn:p\">t</r>", entered.text());

  Output renamed(false);
  renamed.writer.AddNamespaceMapping("p", "urn:p");
  renamed.Start("r", "urn:p");
  renamed.Text("t");
  renamed.writer.AddNamespaceMapping("q", "urn:p");
  renamed.End();
  EXPECT_EQ("<p:r xmlns:p=\"urn:p\">t</q:r>", renamed.text());
}

TEST(XmlTextWriterNamespaces, UsesPrefixesThatTheCallerAddsInAnElement) {
  Output out(false);
  out.Start("r");
  out.writer.AddNamespaceMapping("p", "urn:p");
  out.Start("a", "urn:p");
  out.Attribute("b", "1", "urn:p");
  out.End(2);
  EXPECT_EQ("<r><p:a p:b=\"1\"/></r>", out.text());
}

TEST(XmlTextWriterNamespaces, DeclaresSevenHundredNamespacesOnOneElement) {
  Output out(false);
  out.Start("r");
  std::string expected = "<r";
  for (int i = 0; i < 700; ++i) {
    const std::string uri = "urn:" + std::to_string(i);
    std::string alias(1, static_cast<char>('A' + i / 26 % 26));
    alias += static_cast<char>('A' + i % 26);
    if (i >= 676) alias = "A" + alias;
    expected += " xmlns:" + alias + "=\"" + uri + "\" " + alias + ":a=\"1\"";
    out.Attribute("a", "1", uri.c_str());
  }
  out.End();
  EXPECT_EQ(expected + "/>", out.text());
}

TEST(XmlTextWriterNamespaces, DeclaresAHundredThousandNamespacesOnOneElement) {
  Output out(false);
  out.Start("r");
  for (int i = 0; i < 100000; ++i) {
    out.Attribute("a", "1", ("urn:" + std::to_string(i)).c_str());
  }
  out.End();
  // 26^2 aliases of two letters, 26^3 of three, so the last has the index 81747 among those of
  // four: 81747 = 4 * 26^3 + 16 * 26^2 + 24 * 26 + 3.
  const std::string text = out.text();
  const std::string last = " xmlns:EQYD=\"urn:99999\" EQYD:a=\"1\"/>";
  EXPECT_EQ(last, text.substr(text.size() - last.size()));
}

TEST(XmlTextWriterNamespaces, AssertsThatAMappedAliasIsNotEmpty) {
  Output out(false);
  out.writer.AddNamespaceMapping("", "urn:e");
  out.Start("r");
  EXPECT_QZ_ASSERT("m_pContext->GetNamespaceMapValue(strNamespace).length() != 0",
                   out.Attribute("a", "1", "urn:e"));
  EXPECT_QZ_ASSERT("m_pContext->GetNamespaceMapValue(strElementNamespace).length() != 0",
                   out.writer.WriteXsiType("urn:e", "t", kString));

  const qztest::AssertionRecorder silence;
  Output other(false);
  other.writer.AddNamespaceMapping("", "urn:e");
  other.writer.AddNamespaceMapping("xsi", kXmlSchemaInstanceNamespace);
  other.Start("r", "urn:e");
  other.Attribute("a", "1", "urn:e");
  other.writer.WriteXsiType("urn:e", "t", kString);
  other.Text("t");
  other.End();
  EXPECT_EQ(
      "<:r xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\" xmlns:=\"urn:e\" :a=\"1\""
      " xsi:type=\":t\">t</:r>",
      other.text());
}

// ---- The attributes of the XML Schema instance namespace ----

TEST(XmlTextWriterNamespaces, WritesTheTypeAttributeInItsForms) {
  struct Case {
    const char* typeUri;
    const char* expected;  // behind "<r" and its declarations
  };
  const std::string root = "<r xmlns=\"urn:d\" xmlns:p=\"urn:p\"";
  const std::string declaration = " xmlns:AA=\"http://www.w3.org/2001/XMLSchema-instance\"";
  const Case cases[] = {
      {"", " xmlns:AA=\"http://www.w3.org/2001/XMLSchema-instance\" AA:type=\"t&amp;\"/>"},
      {"urn:d", " xmlns:AA=\"http://www.w3.org/2001/XMLSchema-instance\" AA:type=\"t&amp;\"/>"},
      {"urn:p", " xmlns:AA=\"http://www.w3.org/2001/XMLSchema-instance\" AA:type=\"p:t&amp;\"/>"},
      {"urn:n",
       " xmlns:AA=\"urn:n\"  xmlns:AB=\"http://www.w3.org/2001/XMLSchema-instance\""
       " AB:type=\"AA:t&amp;\"/>"},
  };
  for (const Case& c : cases) {
    Output out(false);
    out.writer.SetDefaultNamespace("urn:d");
    out.writer.AddNamespaceMapping("p", "urn:p");
    out.Start("r");
    out.writer.WriteXsiType(c.typeUri, "t&", kString);
    out.End();
    EXPECT_EQ(root + c.expected, out.text());
  }
}

TEST(XmlTextWriterNamespaces, UsesTheCallersPrefixForTypeAndNil) {
  Output out(false);
  out.writer.AddNamespaceMapping("xsi", kXmlSchemaInstanceNamespace);
  out.Start("r");
  out.writer.WriteXsiType("urn:n", "t", kString);
  out.writer.WriteXsiNil();
  out.End();
  EXPECT_EQ(
      "<r xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\" xmlns:AA=\"urn:n\" "
      " xsi:type=\"AA:t\" xsi:nil=\"true\"/>",
      out.text());
}

TEST(XmlTextWriterNamespaces, DeclaresTheInstanceNamespaceForNilOnEachElement) {
  Output out(false);
  out.Start("r");
  for (int i = 0; i < 2; ++i) {
    out.Start("a");
    out.writer.WriteXsiNil();
    out.End();
  }
  out.End();
  const std::string a =
      "<a xmlns:AA=\"http://www.w3.org/2001/XMLSchema-instance\" AA:nil=\"true\"/>";
  EXPECT_EQ("<r>" + a + a + "</r>", out.text());
}
