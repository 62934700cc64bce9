#include "qzxml/collections/XmlTypeCollection.h"
#include "qzxml/runtime/QzException.h"
#include "qzxml/xml/XmlDocument.h"
#include "qzxml/xml/XmlElement.h"
#include "qzxml/xml/XmlWriter.h"
#include "tests/support/QzTest.h"

namespace QzXmlLib16 {
namespace {

// Texts as they come, but for "bad".
class CTexts : public CXmlTypeCollection {
 public:
  CTexts()
      : CXmlTypeCollection(ItemType_string, "item", "urn:items", 1, 4, "[a-z]+", 2, 8, "b", "y",
                           "a", "z", 5, 3, 1, CWhitespaceUtils::WhitespaceRule_Replace, "%.2f") {}
  CTexts(const char* name, const char* namespaceUri, const char* format)
      : CXmlTypeCollection(ItemType_i4, name, namespaceUri, 0, -1, nullptr, -1, -1, nullptr,
                           nullptr, nullptr, nullptr, -1, -1, -1,
                           CWhitespaceUtils::WhitespaceRule_None, format) {}

  int GetCount() const override { return static_cast<int>(values.size()); }
  void Clear() override { values.clear(); }
  void Remove(int index) override { values.erase(values.begin() + index); }

  using CXmlTypeCollection::FromXml_Int;
  using CXmlTypeCollection::GetFormat;
  using CXmlTypeCollection::GetItemType;
  using CXmlTypeCollection::GetRestrictions;
  using CXmlTypeCollection::GetWhitespaceRule;

  std::vector<std::string> values;

 protected:
  void AddFromString(std::string text) override {
    if (text == "bad") throw CQzInvalidValueException("Not this.");
    values.push_back(std::move(text));
  }
  void ToXml_Int(CXmlWriter*, bool, const char*, const CSerializationContext&,
                 bool) const override {}
};

using Texts = std::vector<std::string>;

// Reads the children of a root; answers the name of the first one that was left, or "".
std::string Read(CTexts& texts, const char* xml, const CSerializationContext& context) {
  CXmlDocument document(context);
  document.LoadXml(xml);
  CXmlElement* const root = document.GetDocumentElement();
  const CXmlElement* const left = texts.FromXml_Int(root, root->GetFirstElement(), context, false);
  return left != nullptr ? left->GetLocalName() : "";
}

TEST(XmlTypeCollection, KeepsWhatItWasMadeWith) {
  const CTexts texts;
  EXPECT_EQ(ItemType_string, texts.GetItemType());
  EXPECT_EQ("urn:items", texts.GetNamespace());
  EXPECT_EQ(1, texts.GetMinOccurs());
  EXPECT_EQ(4, texts.GetMaxOccurs());
  EXPECT_EQ("%.2f", texts.GetFormat());
  EXPECT_EQ(CWhitespaceUtils::WhitespaceRule_Replace, texts.GetWhitespaceRule());
  const CPrimitiveRestrictions& r = texts.GetRestrictions();
  EXPECT_EQ("[a-z]+", r.GetPattern());
  EXPECT_EQ(2, r.GetMinLength());
  EXPECT_EQ(8, r.GetMaxLength());
  EXPECT_EQ("b", r.GetMinInclusive());
  EXPECT_EQ("y", r.GetMaxInclusive());
  EXPECT_EQ("a", r.GetMinExclusive());
  EXPECT_EQ("z", r.GetMaxExclusive());
  EXPECT_EQ(5, r.GetLength());
  EXPECT_EQ(3, r.GetTotalDigits());
  EXPECT_EQ(1, r.GetFractionDigits());
}

TEST(XmlTypeCollection, TakesNullTextsAsEmpty) {
  const CTexts texts(nullptr, nullptr, nullptr);
  EXPECT_EQ("", texts.GetNamespace());
  EXPECT_EQ("", texts.GetFormat());
  EXPECT_EQ("", texts.GetRestrictions().GetPattern());
}

TEST(XmlTypeCollection, EatsTheRunOfSiblingsThatHaveItsName) {
  const CSerializationContext context;
  const struct {
    const char* xml;
    Texts values;
    const char* left;
  } cases[] = {
      {"<r/>", {}, ""},
      {"<r><item xmlns='urn:items'>a</item></r>", {"a"}, ""},
      {"<r xmlns='urn:items'><item>a</item><item> b </item><item/></r>", {"a", " b ", ""}, ""},
      {"<r xmlns='urn:items'><item>a</item><other/><item>b</item></r>", {"a"}, "other"},
      {"<r xmlns='urn:items'><other/><item>a</item></r>", {}, "other"},
      {"<r><item>a</item></r>", {}, "item"},  // another namespace
      {"<r xmlns='urn:items'><Item>a</Item></r>", {}, "Item"},
      // No number of items is too high for reading.
      {"<r xmlns='urn:items'><item/><item/><item/><item/><item/></r>", Texts(5), ""},
  };
  for (const auto& c : cases) {
    CTexts texts;
    EXPECT_EQ(c.left, Read(texts, c.xml, context)) << c.xml;
    EXPECT_EQ(c.values, texts.values) << c.xml;
  }
}

TEST(XmlTypeCollection, GivesBackAnElementThatIsNotItsOwn) {
  const CSerializationContext context;
  CXmlDocument document(context);
  document.LoadXml("<r><other/></r>");
  CXmlElement* const root = document.GetDocumentElement();
  CTexts texts;
  EXPECT_EQ(root->GetFirstElement(),
            texts.FromXml_Int(root, root->GetFirstElement(), context, false));
  EXPECT_EQ(nullptr, texts.FromXml_Int(root, nullptr, context, false));
  EXPECT_EQ(0, texts.GetCount());
}

TEST(XmlTypeCollection, MindsNamespacesAsTheContextSays) {
  CSerializationContext context;
  context.SetIgnoreNamespaces(true);
  CTexts texts;
  EXPECT_EQ("", Read(texts, "<r><item>a</item><item xmlns='urn:b'>b</item></r>", context));
  EXPECT_EQ((Texts{"a", "b"}), texts.values);

  CSerializationContext noNamespaces;
  noNamespaces.SetSchemaType(SchemaType_NoNamespaces);
  CTexts more;
  EXPECT_EQ("p:item", Read(more, "<r><item>a</item><p:item>b</p:item></r>", noNamespaces));
  EXPECT_EQ((Texts{"a"}), more.values);
}

TEST(XmlTypeCollection, KeepsWhatItReadBeforeAValueFails) {
  const CSerializationContext context;
  CTexts texts;
  EXPECT_QZ_THROW(CQzInvalidValueException, "Not this.",
                  Read(texts, "<r xmlns='urn:items'><item>a</item><item>bad</item></r>", context));
  EXPECT_EQ((Texts{"a"}), texts.values);
}

}  // namespace
}  // namespace QzXmlLib16
