#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "qzxml/xml/XmlDocument.h"
#include "qzxml/xml/XmlElement.h"

namespace QzXmlLib16 {
namespace {

constexpr char kXsi[] = "xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance'";

void Collect(const CXmlElement* element, const char* alias, std::vector<std::string>& found) {
  found.push_back(element->GetDocument()->LookupNamespaceOfType(*element, alias));
  for (const CXmlElement* child = element->GetFirstElement(); child != nullptr;
       child = child->GetNextSiblingElement()) {
    Collect(child, alias, found);
  }
}

// What the alias stands for in the xsi:type of each element, in the order of the document.
std::vector<std::string> Meanings(const std::string& attributes, const std::string& content,
                                  const char* alias) {
  CXmlDocument document;
  document.LoadXml(("<r " + std::string(kXsi) + " " + attributes + ">" + content + "</r>").c_str());
  std::vector<std::string> found;
  Collect(document.GetDocumentElement(), alias, found);
  return found;
}

using Uris = std::vector<std::string>;

TEST(ScopedAliases, WhereAnAliasHasOneMeaningTheTableTells) {
  EXPECT_EQ((Uris{"urn:1", "urn:1"}), Meanings("xmlns:p='urn:1'", "<a xsi:type='p:T'/>", "p"));
  EXPECT_EQ(
      (Uris{"urn:1", "urn:1", "urn:1"}),
      Meanings("xsi:type='p:T'", "<a xmlns:p='urn:1' xsi:type='p:T'/><b xsi:type='p:T'/>", "p"));
  EXPECT_EQ((Uris{"", ""}), Meanings("", "<a xsi:type='p:T'/>", "p"));
}

TEST(ScopedAliases, AMeaningEndsWithItsElement) {
  EXPECT_EQ((Uris{"urn:1", "urn:1", "urn:2", "urn:2", "urn:1"}),
            Meanings("xmlns:p='urn:1' xsi:type='p:T'",
                     "<a xsi:type='p:T'/>"
                     "<a xmlns:p='urn:2' xsi:type='p:T'><b xsi:type=' p:T '/></a>"
                     "<a xsi:type='p:T'/>",
                     "p"));
}

TEST(ScopedAliases, ADefaultNamespaceIsOneToo) {
  EXPECT_EQ((Uris{"urn:1", "urn:1", "", "urn:2", "urn:1"}),
            Meanings("xmlns='urn:1' xsi:type='T'",
                     "<a xsi:type='T'/><a xmlns='' xsi:type='T'><b xmlns='urn:2' xsi:type='T'/></a>"
                     "<a xsi:type='T'/>",
                     ""));
}

TEST(ScopedAliases, OutsideOfEveryDeclarationThereIsNone) {
  EXPECT_EQ((Uris{"urn:1", "urn:1", "urn:2", ""}),
            Meanings("",
                     "<a xmlns:p='urn:1' xsi:type='p:T'/><a xmlns:p='urn:2' xsi:type='p:T'/>"
                     "<a xsi:type='p:T'/>",
                     "p"));
}

TEST(ScopedAliases, OneElementMayDeclareMany) {
  const std::string content =
      "<a xmlns:p='urn:2' xmlns:q='urn:3' xmlns='urn:4' xsi:type='p:T'/><a xsi:type='p:T'/>"
      "<a xmlns:q='urn:5' xsi:type='p:T'/>";
  EXPECT_EQ((Uris{"urn:1", "urn:2", "urn:1", "urn:1"}),
            Meanings("xmlns:p='urn:1' xmlns:q='urn:1' xsi:type='p:T'", content, "p"));
}

TEST(ScopedAliases, EveryLoadBeginsAnew) {
  CXmlDocument document;
  const std::string before = "<r " + std::string(kXsi);
  document.LoadXml((before + " xmlns:p='urn:1'><a xmlns:p='urn:2' xsi:type='p:T'/></r>").c_str());
  document.LoadXml((before + " xmlns:p='urn:3' xsi:type='p:T'><a xsi:type='p:T'/></r>").c_str());
  std::vector<std::string> found;
  Collect(document.GetDocumentElement(), "p", found);
  EXPECT_EQ((Uris{"urn:3", "urn:3"}), found);
}

}  // namespace
}  // namespace QzXmlLib16
