#include <gtest/gtest.h>

#include <string>

#include "qzxml/runtime/QzException.h"
#include "qzxml/serialization/SerializationContext.h"
#include "qzxml/xml/XmlDocument.h"
#include "tests/support/Documents.h"
#include "tests/support/LiveCounts.h"
#include "tests/support/QzTest.h"
#include "tests/xml/TreeShape.h"

// The bounds that keep a small document from taking much memory.

namespace QzXmlLib16 {
namespace {

class XmlDocumentBounds : public qztest::NothingLeftBehind {};

std::string Nested(int depth) {
  std::string text;
  for (int i = 0; i < depth; ++i) text += "<a>";
  for (int i = 0; i < depth; ++i) text += "</a>";
  return text;
}

TEST_F(XmlDocumentBounds, ADepthOf1024PassesAndOneMoreFails) {
  CXmlDocument document;
  document.LoadXml(Nested(1024).c_str());
  EXPECT_EQ(1024U, qztest::AllElements(document.GetDocumentElement()).size());
  EXPECT_QZ_THROW_FULL(CQzException, "The document exceeds the depth limit of 1024 elements", "",
                       document.LoadXml(Nested(1025).c_str()));
  EXPECT_EQ(1024U, qztest::AllElements(document.GetDocumentElement()).size());
  const qztest::TemporaryFile file(Nested(1025));
  AsyncFromXmlFile(true);
  EXPECT_QZ_THROW(CQzException, "The document exceeds the depth limit of 1024 elements",
                  document.Load(file.path().c_str()));
  AsyncFromXmlFile(false);
}

TEST_F(XmlDocumentBounds, TheDepthIsBoundedAsTheContextSays) {
  CSerializationContext context;
  CXmlDocument document(context);
  context.SetMaxDepth(1);
  document.LoadXml("<a/>");
  EXPECT_QZ_THROW(CQzException, "The document exceeds the depth limit of 1 elements",
                  document.LoadXml("<a><b/></a>"));
  context.SetMaxDepth(3);
  document.LoadXml("<a><b><c/><c/></b><b><c/></b></a>");
  EXPECT_QZ_THROW(CQzException, "The document exceeds the depth limit of 3 elements",
                  document.LoadXml("<a><b><c><d/></c></b></a>"));
  context.SetMaxDepth(0);
  document.LoadXml(Nested(20000).c_str());
  EXPECT_QZ_THROW(CQzException, "mismatched tag at line 1",
                  document.LoadXml((Nested(20000) + "</a>").insert(0, "<b>").c_str()));
}

TEST_F(XmlDocumentBounds, TheDepthOfATreeThatIsBuiltByHandIsNotBounded) {
  CXmlDocument document;
  document.AddDocElement("", "r");
  for (int i = 0; i < 5000; ++i) document.AddChildElement("", "a");
  EXPECT_EQ(5001U, qztest::AllElements(document.GetDocumentElement()).size());
}

constexpr std::size_t kMiB = 1024 * 1024;

// Grows by default attributes: each of the elements has one of that many octets.
std::string WithDefaults(std::size_t elements, std::size_t octets) {
  std::string text = "<!DOCTYPE r [<!ATTLIST c a CDATA '" + std::string(octets, 'v') + "'>]><r>";
  while (elements-- > 0) text += "<c/>";
  return text + "</r>";
}

// Grows by references to an entity of that many octets, behind a text that does not.
std::string WithEntities(std::size_t references, std::size_t octets, const std::string& fill) {
  std::string text = "<!DOCTYPE r [<!ENTITY e '" + std::string(octets, 'v') + "'>]><r>" + fill;
  while (references-- > 0) text += "&e;";
  return text + "</r>";
}

TEST_F(XmlDocumentBounds, DefaultAttributesMayNotMakeItGrowPastItsBound) {
  CXmlDocument document;
  document.LoadXml(WithDefaults(1000, 8000).c_str());  // below 8 MiB is never too much
  EXPECT_QZ_THROW_FULL(CQzException, "The document grows past 100 times its size", "",
                       document.LoadXml(WithDefaults(10000, 8000).c_str()));
  const qztest::TemporaryFile file(WithDefaults(100000, 8000));
  AsyncFromXmlFile(true);
  EXPECT_QZ_THROW(CQzException, "The document grows past 100 times its size",
                  document.Load(file.path().c_str()));
  AsyncFromXmlFile(false);
}

TEST_F(XmlDocumentBounds, TheGrowthIsBoundedAsTheContextSays) {
  CSerializationContext context;
  CXmlDocument document(context);
  context.SetMaxAmplification(3);
  EXPECT_QZ_THROW(CQzException, "The document grows past 3 times its size",
                  document.LoadXml(WithDefaults(1200, 8000).c_str()));
  context.SetMaxAmplification(1);
  EXPECT_QZ_THROW(CQzException, "The document grows past 1 times its size",
                  document.LoadXml(WithDefaults(1200, 8000).c_str()));
  context.SetMaxAmplification(0);
  document.LoadXml(WithDefaults(1200, 8000).c_str());
  document.LoadXml(WithDefaults(10000, 4000).c_str());
  EXPECT_EQ(10001, qztest::LiveCounts()["CXmlElement"]);
}

TEST_F(XmlDocumentBounds, EntitiesMayNotMakeItGrowPastItsBound) {
  CSerializationContext context;
  CXmlDocument document(context);
  const std::string fill(80000, ' ');
  context.SetMaxAmplification(10);
  document.LoadXml(WithEntities(100, 80000, fill).c_str());  // below 8 MiB
  EXPECT_EQ(8080000U, document.GetDocumentElement()->GetText().size());
  EXPECT_QZ_THROW(CQzException, "The document grows past 10 times its size",
                  document.LoadXml(WithEntities(120, 80000, fill).c_str()));
  context.SetMaxAmplification(0);
  document.LoadXml(WithEntities(120, 80000, fill).c_str());
  EXPECT_EQ(9680000U, document.GetDocumentElement()->GetText().size());
}

TEST_F(XmlDocumentBounds, EntitiesThatMultiplyAreRefused) {
  std::string text = "<!DOCTYPE r [<!ENTITY e0 'lol'>";
  for (int i = 1; i < 10; ++i) {
    const std::string inner = "&e" + std::to_string(i - 1) + ";";
    text += "<!ENTITY e" + std::to_string(i) + " '";
    for (int k = 0; k < 10; ++k) text += inner;
    text += "'>";
  }
  text += "]><r>&e9;</r>";
  CXmlDocument document;
  EXPECT_THROW(document.LoadXml(text.c_str()), CQzException);
  EXPECT_GT(9 * kMiB, document.GetDocumentElement()->GetText().size());
}

// A namespace of that many octets, and elements in it, each with a name of its own or all with one.
std::string InNamespace(std::size_t octets, std::size_t elements, bool ownNames) {
  std::string text = "<r xmlns:a='" + std::string(octets, 'u') + "'>";
  for (std::size_t i = 0; i < elements; ++i) {
    text += ownNames ? "<a:b" + std::to_string(i) + "/>" : std::string("<a:b/>");
  }
  return text + "</r>";
}

TEST_F(XmlDocumentBounds, ALongNamespaceOfManyNamesMayNotMakeItGrowPastItsBound) {
  CXmlDocument document;
  EXPECT_QZ_THROW(CQzException, "The document grows past 100 times its size",
                  document.LoadXml(InNamespace(1000000, 10000, true).c_str()));
  EXPECT_QZ_THROW(CQzException, "The document grows past 100 times its size",
                  document.LoadXml(InNamespace(100000, 10000, false).c_str()));
  std::string text = "<r xmlns:a='" + std::string(100000, 'u') + "'>";
  for (int i = 0; i < 1000; ++i) text += "<c a:a='' a:b=''/>";
  EXPECT_QZ_THROW(CQzException, "The document grows past 100 times its size",
                  document.LoadXml((text + "</r>").c_str()));
}

TEST_F(XmlDocumentBounds, NamespacesOfOrdinaryLengthDoNotCountForEachElement) {
  CSerializationContext context;
  context.SetMaxAmplification(2);
  CXmlDocument document(context);
  document.LoadXml(InNamespace(1023, 100000, false).c_str());
  EXPECT_EQ(100001, qztest::LiveCounts()["CXmlElement"]);
}

TEST_F(XmlDocumentBounds, DefaultDeclarationsMayNotMakeItGrowPastItsBound) {
  std::string text =
      "<!DOCTYPE r [<!ATTLIST c xmlns:a CDATA '" + std::string(100000, 'u') + "'>]><r>";
  for (int i = 0; i < 10000; ++i) text += "<c/>";
  CXmlDocument document;
  EXPECT_QZ_THROW(CQzException, "The document grows past 100 times its size",
                  document.LoadXml((text + "</r>").c_str()));
}

TEST_F(XmlDocumentBounds, ABoundDoesNotHideTheFailureThatWasMet) {
  CSerializationContext context;
  context.SetMaxAmplification(1);
  CXmlDocument document(context);
  // The text is not in the tree yet when the parser fails; with it the tree is past its bound.
  const std::string text(9000000, 't');
  const std::string entities = "<!DOCTYPE r [<!ENTITY e '" + std::string(60000, 'v') + "'>]>";
  EXPECT_QZ_THROW(CQzException, "mismatched tag at line 1",
                  document.LoadXml((entities + "<r a='" + text + "'>&e;&e;</s>").c_str()));
  EXPECT_EQ(120000U, document.GetDocumentElement()->GetText().size());
}

TEST_F(XmlDocumentBounds, PlainContentMayBeOfAnySize) {
  CSerializationContext context;
  context.SetMaxAmplification(1);
  CXmlDocument document(context);
  const std::string text(9 * kMiB, 't');
  document.LoadXml(("<r a='" + text + "'>" + text + "</r>").c_str());
  EXPECT_EQ(text.size(), document.GetDocumentElement()->GetText().size());
  EXPECT_EQ(text.size(), document.GetDocumentElement()->GetAttribute("a", "").size());
}

}  // namespace
}  // namespace QzXmlLib16
