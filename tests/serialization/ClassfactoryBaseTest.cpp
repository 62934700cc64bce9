#include "qzxml/serialization/ClassfactoryBase.h"
#include "qzxml/xml/XmlDocument.h"
#include "qzxml/xml/XmlElement.h"
#include "tests/support/QzTest.h"

using namespace QzXmlLib16;

namespace {

class CFactory : public CClassfactoryBase {
 public:
  using CClassfactoryBase::GetElementType;
  using CClassfactoryBase::GetElementTypeNamespaceUri;
};

const char kXsi[] = "xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance'";

// The root element of a document, in the namespace "urn:own".
class Root {
 public:
  explicit Root(const std::string& attributes) {
    m_document.LoadXml(("<a xmlns='urn:own' " + attributes + "/>").c_str());
  }
  CXmlElement* get() const { return m_document.GetDocumentElement(); }

 private:
  CXmlDocument m_document;
};

}  // namespace

TEST(ClassfactoryBase, ReadsTheLocalPartOfTheType) {
  struct Case {
    const char* value;
    const char* type;
  };
  const Case cases[] = {{"Circle", "Circle"},
                        {"s:Circle", "Circle"},
                        {"s:x:Circle", "x:Circle"},
                        {":Circle", "Circle"},
                        {"s:", ""},
                        {"", ""}};
  for (const Case& c : cases) {
    const Root root(std::string(kXsi) + " xsi:type='" + c.value + "'");
    EXPECT_EQ(c.type, CFactory::GetElementType(root.get())) << c.value;
  }
}

TEST(ClassfactoryBase, TypeIsEmptyWithoutTheAttributeOfTheSchemaInstance) {
  EXPECT_EQ("", CFactory::GetElementType(Root("").get()));
  EXPECT_EQ("", CFactory::GetElementType(Root("type='Circle'").get()));
  EXPECT_EQ("", CFactory::GetElementType(Root("xmlns:o='urn:other' o:type='Circle'").get()));
}

TEST(ClassfactoryBase, NamespaceOfATypeWithoutPrefixIsThatOfTheElement) {
  const Root root(std::string(kXsi) + " xsi:type='Circle'");
  EXPECT_EQ("urn:own", CFactory::GetElementTypeNamespaceUri(root.get()));
  EXPECT_EQ("urn:own", CFactory::GetElementTypeNamespaceUri(Root("").get()));
}

TEST(ClassfactoryBase, NamespaceOfATypeIsWhatItsPrefixIsBoundTo) {
  const Root root(std::string(kXsi) + " xmlns:s='urn:shapes' xsi:type='s:Circle'");
  EXPECT_EQ("urn:shapes", CFactory::GetElementTypeNamespaceUri(root.get()));
  EXPECT_EQ("Circle", CFactory::GetElementType(root.get()));
}

TEST(ClassfactoryBase, AnUnboundPrefixGivesTheNamespaceOfTheElement) {
  const Root root(std::string(kXsi) + " xsi:type='s:Circle'");
  EXPECT_EQ("urn:own", CFactory::GetElementTypeNamespaceUri(root.get()));
  EXPECT_EQ("Circle", CFactory::GetElementType(root.get()));
}

TEST(ClassfactoryBase, AnEmptyPrefixGivesTheDefaultNamespace) {
  const Root root(std::string(kXsi) + " xsi:type=':Circle'");
  EXPECT_EQ("urn:own", CFactory::GetElementTypeNamespaceUri(root.get()));
}

TEST(ClassfactoryBase, NoElementHasNoType) {
  EXPECT_EQ("", CFactory::GetElementType(nullptr));
  EXPECT_EQ("", CFactory::GetElementTypeNamespaceUri(nullptr));
}
