#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "qzxml/xml/XmlAttribute.h"
#include "qzxml/xml/XmlDocument.h"
#include "qzxml/xml/XmlElement.h"
#include "tests/support/LiveCounts.h"

namespace QzXmlLib16 {
namespace {

constexpr char kXsi[] = "http://www.w3.org/2001/XMLSchema-instance";
constexpr char kXmlns[] = "http://www.w3.org/2000/xmlns/";
constexpr char kXml[] = "http://www.w3.org/XML/1998/namespace";

class XmlAttribute : public qztest::NothingLeftBehind {};

TEST_F(XmlAttribute, HasANameANamespaceAndAValue) {
  CXmlDocument document;
  CXmlElement* root = document.AddDocElement("", "r");
  CXmlDocument::AddElementAttribute(root, "local", "the value", "urn:a");
  CXmlDocument::AddElementAttribute(root, "plain", "", "");
  ASSERT_EQ(2U, root->GetAttributes().size());
  const CXmlAttribute* first = root->GetAttributes()[0];
  EXPECT_EQ("local", first->GetLocalName());
  EXPECT_EQ("urn:a", first->GetNamespaceURI());
  EXPECT_EQ("the value", first->GetValue());
  EXPECT_EQ("the value", first->GetValueView());
  const CXmlAttribute* second = root->GetAttributes()[1];
  EXPECT_EQ("plain", second->GetLocalName());
  EXPECT_EQ("", second->GetNamespaceURI());
  EXPECT_EQ("", second->GetValue());
}

TEST_F(XmlAttribute, AValueKeepsItsZeroBytesAndItsLength) {
  CXmlDocument document;
  CXmlElement* root = document.AddDocElement("", "r");
  std::vector<std::string> values = {std::string("a\0b", 3), "\r\n\t", ""};
  for (const std::size_t size : {4095U, 4096U, 4097U, 32767U, 32768U, 65535U, 65536U, 65537U}) {
    values.emplace_back(size, 'v');
  }
  for (const std::string& value : values) root->AddAttribute("a", value, "");
  ASSERT_EQ(values.size(), root->GetAttributes().size());
  for (std::size_t i = 0; i < values.size(); ++i) {
    EXPECT_TRUE(values[i] == root->GetAttributes()[i]->GetValue()) << i;
  }
}

TEST_F(XmlAttribute, ServesNamespacesByNameAndNamespace) {
  const struct {
    const char* uri;
    const char* name;
    bool isNamespace;
    bool isNil;
  } cases[] = {
      {kXsi, "type", true, false},
      {kXsi, "xmlns", true, false},
      {kXsi, "schemaLocation", true, false},
      {kXsi, "noNamespaceSchemaLocation", true, false},
      {kXsi, "nil", false, true},
      {kXsi, "Type", false, false},
      {kXsi, "types", false, false},
      {kXsi, "Nil", false, false},
      {kXsi, "schemalocation", false, false},
      {kXsi, "", false, false},
      {kXmlns, "type", true, false},
      {kXmlns, "xmlns", true, false},
      {kXmlns, "schemaLocation", true, false},
      {kXmlns, "noNamespaceSchemaLocation", true, false},
      {kXmlns, "nil", false, true},
      {kXmlns, "p", false, false},
      {kXml, "type", false, false},
      {kXml, "nil", false, false},
      {kXml, "lang", false, false},
      {"", "type", false, false},
      {"", "xmlns", false, false},
      {"", "schemaLocation", false, false},
      {"", "noNamespaceSchemaLocation", false, false},
      {"", "nil", false, false},
      {"urn:o", "type", false, false},
      {"urn:o", "nil", false, false},
      {"http://www.w3.org/2001/XMLSchema", "type", false, false},
      {"http://www.w3.org/2001/XMLSchema-instance/", "nil", false, false},
      {"http://www.w3.org/2000/xmlns", "xmlns", false, false},
  };
  for (const auto& c : cases) {
    CXmlDocument document;
    CXmlElement* root = document.AddDocElement("", "r");
    root->AddAttribute(c.name, "v", c.uri);
    const CXmlAttribute* attribute = root->GetAttributes()[0];
    EXPECT_EQ(c.isNamespace, attribute->IsNamespaceAttribute()) << c.uri << ' ' << c.name;
    EXPECT_EQ(c.isNil, attribute->IsNilAttribute()) << c.uri << ' ' << c.name;
  }
}

TEST_F(XmlAttribute, TheAliasStandsBeforeTheAtSignOfItsPath) {
  const struct {
    const char* text;
    const char* path;  // of the only attribute of the innermost first element
  } cases[] = {
      {"<r a='1'/>", "/r/@a"},
      {"<r xmlns:p='urn:p' p:a='1'/>", "/r/p:@a"},
      {"<p:r xmlns:p='urn:p' a='1'/>", "/p:r/@a"},
      {"<r xmlns:q='urn:p' xmlns:p='urn:p' q:a='1'/>", "/r/p:@a"},
      {"<r xmlns='urn:p' xmlns:p='urn:p' p:a='1'/>", "/r/@a"},
      {"<r xml:lang='en'/>", "/r/@lang"},
      {"<r><c a='1'/></r>", "/r/c/@a"},
      {"<r xmlns:p='urn:p'><p:c p:a='1'/><p:c/></r>", "/r/p:c[1]/p:@a"},
      {"<r><c xmlns:p='urn:p' p:a='1'/><c xmlns:p='urn:o'/></r>", "/r/c[1]/@a"},
  };
  for (const auto& c : cases) {
    CXmlDocument document;
    document.LoadXml(c.text);
    const CXmlElement* element = document.GetDocumentElement();
    while (element->GetFirstElement() != nullptr) element = element->GetFirstElement();
    ASSERT_EQ(1U, element->GetAttributes().size()) << c.text;
    EXPECT_EQ(c.path, element->GetAttributes()[0]->GetXPath()) << c.text;
  }
}

}  // namespace
}  // namespace QzXmlLib16
