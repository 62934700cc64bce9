#include "qzxml/collections/Attribute.h"
#include "qzxml/runtime/QzException.h"
#include "qzxml/serialization/AttributeInfo.h"
#include "tests/collections/OpenContent.h"
#include "tests/support/GeneratedTable.h"
#include "tests/support/QzTest.h"

namespace QzXmlLib16 {
namespace {

using qztest::CLoaded;
using qztest::CWalk;
using qztest::WriteInOwner;

// An attribute that notes what its hooks see.
class CHooked : public CAttribute {
 public:
  CHooked() : CAttribute("name", "value", "urn:a") {}
  std::string seen;

 protected:
  void FireOnChangeName() override { seen += "name " + GetName() + "; "; }
  void FireOnChangeNamespace() override { seen += "namespace " + GetNamespace() + "; "; }
};

CSmartPtr<CAttribute> Made(const char* name, const char* value, const char* namespaceUri) {
  CAttributeCol attributes("", "##any", "");
  return attributes.Add(name, value, namespaceUri);
}

TEST(Attribute, HasANameAValueAndANamespace) {
  const CSmartPtr<CAttribute> attribute = Made("lang", "en", "urn:a");
  EXPECT_EQ("lang", attribute->GetName());
  EXPECT_EQ("en", attribute->GetValue());
  EXPECT_EQ("urn:a", attribute->GetNamespace());
  EXPECT_EQ("urn:a", attribute->GetTargetNamespace());
  EXPECT_EQ(attribute, attribute->GetBase());
}

TEST(Attribute, ChangesWithoutBeingTested) {
  const CSmartPtr<CAttribute> attribute = Made("lang", "en", "");
  attribute->SetName("xy");
  attribute->SetValue("1");
  attribute->SetNamespace("##other");
  EXPECT_EQ("xy", attribute->GetName());
  EXPECT_EQ("1", attribute->GetValue());
  EXPECT_EQ("##other", attribute->GetNamespace());
  attribute->SetName(nullptr);
  attribute->SetValue(nullptr);
  attribute->SetNamespace(nullptr);
  EXPECT_EQ("", attribute->GetName());
  EXPECT_EQ("", attribute->GetValue());
  EXPECT_EQ("", attribute->GetNamespace());
}

TEST(Attribute, CallsItsHooksBeforeItChanges) {
  CHooked attribute;
  attribute.SetName("n");
  attribute.SetValue("v");
  attribute.SetNamespace("urn:b");
  EXPECT_EQ("name name; namespace urn:a; ", attribute.seen);
  EXPECT_EQ("n", attribute.GetName());
}

TEST(Attribute, HasACloneOfItsOwn) {
  const CSmartPtr<CAttribute> attribute = Made("lang", "en", "urn:a");
  const CSmartPtr<CAttribute> clone = attribute->Clone();
  EXPECT_NE(attribute, clone);
  clone->SetName("other");
  clone->SetValue("de");
  clone->SetNamespace("");
  EXPECT_EQ("lang", attribute->GetName());
  EXPECT_EQ("en", attribute->GetValue());
  EXPECT_EQ("urn:a", attribute->GetNamespace());
  EXPECT_EQ("en", attribute->Clone()->GetValue());
}

TEST(Attribute, CanNotReadItself) {
  const CSmartPtr<CAttribute> attribute = Made("lang", "en", "");
  const char text[] = "This should be done by the collection";
  EXPECT_QZ_THROW_FULL(CQzException, text, "", attribute->FromXml("<a/>"));
  const CLoaded document("<a/>");
  EXPECT_QZ_THROW(CQzException, text, CWalk::Read(attribute, document.root(), nullptr));
}

TEST(Attribute, IsWrittenOnTheOpenElement) {
  EXPECT_EQ("<owner lang=\"en\"/>", WriteInOwner(Made("lang", "en", "")));
  EXPECT_EQ("<owner xmlns:AA=\"urn:a\" AA:lang=\"en\"/>",
            WriteInOwner(Made("lang", "en", "urn:a")));
  EXPECT_EQ("<owner k=\"&lt;&amp;&quot;&gt;&#xA;'\"/>", WriteInOwner(Made("k", "<&\">\n'", "")));
}

TEST(Attribute, IsWrittenWithoutTheCarriageReturnsThatADocumentBrought) {
  CAttributeCol attributes("", "##any", "");
  const CLoaded document("<a k='x&#13;y&#13;&#10;'/>");
  CWalk::Read(&attributes, document.root(), nullptr);
  EXPECT_EQ("x\ry\r\n", attributes.Item(0)->GetValue());
  EXPECT_EQ("<owner k=\"xy&#xA;\"/>", WriteInOwner(&attributes));
  EXPECT_EQ("<owner k=\"xy&#xA;\"/>", WriteInOwner(attributes.Item(0)->Clone()));
}

TEST(Attribute, IsWrittenWithoutTheCarriageReturnsThatAGeneratedClassRead) {
  qztest::CTables tables;
  tables.Add(new QzXmlLib16Data::CAttributeInfoAny("AnyAttribute", "", 0, true, "##any", "", ""),
             qztest::Unset::Collection([] { return new CAttributeCol("", "##any", ""); }));
  const CSmartPtr<qztest::CTableObject> object(new qztest::CTableObject(tables));
  object->FromXml("<r k='x&#13;y'/>");
  EXPECT_EQ("<r k=\"xy\"/>", qztest::Text(*object));
}

TEST(Attribute, AssertsForACarriageReturnOfACaller) {
  CAttributeCol attributes("", "##any", "");
  attributes.Add("k", "x\ry");
  EXPECT_QZ_ASSERT("false", WriteInOwner(&attributes));

  // Also in the place of one that was read.
  const CLoaded document("<a k='x'/>");
  CAttributeCol read("", "##any", "");
  CWalk::Read(&read, document.root(), nullptr);
  read.Item(0)->SetValue("x\ry");
  EXPECT_QZ_ASSERT("false", WriteInOwner(&read));
}

#if !defined(QZXML_ASSERTIONS)
TEST(Attribute, DropsACarriageReturnOfACallerWithoutAssertions) {
  EXPECT_EQ("<owner k=\"xy\"/>", WriteInOwner(Made("k", "x\ry", "")));
}
#endif

}  // namespace
}  // namespace QzXmlLib16
