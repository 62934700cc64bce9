// Documents that are large in one way. Each gives a tree or an exception of the library's family,
// on a stack of 1 MiB, and what it leaves behind is freed.
#include <cstring>

#include "qzxml/QzXml.h"
#include "tests/support/QzTest.h"
#include "tests/support/SmallStack.h"

using namespace QzXmlLib16;

namespace {

constexpr std::size_t kStack = 1 << 20;

std::string Nested(std::size_t depth, const std::string& inner) {
  std::string text;
  for (std::size_t i = 0; i < depth; ++i) text += "<a>";
  text += inner;
  for (std::size_t i = 0; i < depth; ++i) text += "</a>";
  return text;
}

TEST(LargeDocuments, DepthIsRefusedBeyondTheLimitAndTheRootCountsAsOne) {
  qztest::RunOnStack(kStack, [] {
    CXmlDocument document;
    document.LoadXml(Nested(1024, "x").c_str());
    EXPECT_EQ("a", document.GetDocumentElement()->GetLocalName());
    EXPECT_QZ_THROW(CQzException, "The document exceeds the depth limit of 1024 elements",
                    document.LoadXml(Nested(1025, "x").c_str()));
    EXPECT_QZ_THROW(CQzException, "The document exceeds the depth limit of 1024 elements",
                    document.LoadXml(Nested(100000, "x").c_str()));
  });
}

TEST(LargeDocuments, WithoutALimitATreeOf100000LevelsIsBuiltAndFreed) {
  qztest::RunOnStack(kStack, [] {
    CSerializationContext context;
    context.SetMaxDepth(0);
    CXmlDocument document(context);
    document.LoadXml(Nested(100000, "x").c_str());
    const CXmlElement* deepest = document.GetDocumentElement();
    std::size_t depth = 1;
    for (; deepest->GetFirstElement() != nullptr; ++depth) deepest = deepest->GetFirstElement();
    EXPECT_EQ(100000u, depth);
    EXPECT_EQ(200000u, deepest->GetXPath().size());
  });
}

TEST(LargeDocuments, OpenContentAtTheDepthLimitIsReadAndWrittenOnASmallStack) {
  qztest::RunOnStack(kStack, [] {
    const std::string text = Nested(1024, "x");
    CElement element("none");
    element.FromXml(text.c_str());
    EXPECT_EQ(text, element.ToXml(false, false));
  });
}

TEST(LargeDocuments, ATextOf200MegabytesIsKept) {
  std::string text = "<r>";
  text.append(200'000'000, 'x');
  text += "</r>";
  CXmlDocument document;
  document.LoadXmlStream(reinterpret_cast<const unsigned char*>(text.data()),
                         static_cast<std::uint32_t>(text.size()));
  EXPECT_EQ(200'000'000u, document.GetDocumentElement()->GetText().size());
}

TEST(LargeDocuments, AMillionSiblingsAreKeptAndWritten) {
  std::string text = "<r>";
  for (int i = 0; i < 1'000'000; ++i) text += "<a/>";
  text += "</r>";
  CElement element("none");
  element.FromXml(text.c_str());
  EXPECT_EQ(1'000'000, element.GetChildElements()->GetCount());
  EXPECT_EQ(text, element.ToXml(false, false));
}

TEST(LargeDocuments, AnAttributeOf10MegabytesIsKeptAndWritten) {
  const std::string text = "<r a=\"" + std::string(10'000'000, 'x') + "\"/>";
  CElement element("none");
  element.FromXml(text.c_str());
  EXPECT_EQ(text, element.ToXml(false, false));
}

TEST(LargeDocuments, AGoodDocumentCutAtAnyByteGivesAnException) {
  const std::string text =
      "<?xml version='1.0' encoding='UTF-8'?><!DOCTYPE r [<!ENTITY e 'v'>]><!--c-->"
      "<r xmlns:p='u' p:a='1'><?pi?><p:b>t&amp;&e;<![CDATA[x]]>\xC3\xA9</p:b><c/></r>";
  for (std::size_t length = 1; length < text.size(); ++length) {
    CXmlDocument document;
    EXPECT_THROW(document.LoadXmlStream(reinterpret_cast<const unsigned char*>(text.data()),
                                        static_cast<std::uint32_t>(length)),
                 CQzException)
        << length;
  }
  CXmlDocument document;
  document.LoadXml(text.c_str());
  EXPECT_EQ("t&vx\xC3\xA9", document.GetDocumentElement()->GetFirstElement()->GetText());
}

}  // namespace
