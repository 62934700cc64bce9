#include "qzxml/collections/AttributeCol.h"
#include "qzxml/runtime/QzException.h"
#include "tests/collections/OpenContent.h"
#include "tests/collections/Things.h"
#include "tests/support/QzTest.h"

namespace QzXmlLib16 {
namespace {

using qztest::CListener;
using qztest::CLoaded;
using qztest::CWalk;
using qztest::Log;
using qztest::WriteInOwner;

// Name, value and namespace of each attribute.
std::string Listed(const CAttributeCol& attributes) {
  std::string text;
  for (CSmartPtr<CAttribute> a : attributes) {
    text += "{" + a->GetNamespace() + "}" + a->GetName() + "=" + a->GetValue() + " ";
  }
  return text;
}

std::string Refusal(const char* namespaceUri, const char* restriction, const char* target) {
  return std::string("Invalid namespace [") + namespaceUri + "]. The namespace must be one of [" +
         restriction + "] where the target namespace is [" + target + "].";
}

TEST(AttributeCol, TakesANamespaceForNewAttributes) {
  const struct {
    const char* namespaceUri;
    const char* restriction;
    const char* taken;
  } cases[] = {
      {"urn:a", "##any", "urn:a"},
      {"", "##any", ""},
      {"", "##other", ""},
      {"", "urn:a", "urn:a"},
      {"", "urn:a urn:b", "urn:a"},
      {"urn:b", "urn:a urn:b", "urn:b"},
      {"", "##local urn:a", ""},
      {"", "", ""},
      // At least two characters, neither of the first two a "#".
      {"", "u", ""},
      {"", "ur", "ur"},
      {"", "#r", ""},
      {"", "u#", ""},
      {"", "ur#", "ur#"},
      {"", "u urn:a", ""},
      {"", " urn:a", ""},  // the first token is empty
      {nullptr, "urn:a", "urn:a"},
      {nullptr, nullptr, ""},
  };
  for (const auto& c : cases) {
    const CAttributeCol attributes(c.namespaceUri, c.restriction, "urn:t");
    EXPECT_EQ(c.taken, attributes.GetNamespace())
        << (c.namespaceUri != nullptr ? c.namespaceUri : "(null)") << ", "
        << (c.restriction != nullptr ? c.restriction : "(null)");
  }
}

TEST(AttributeCol, HasNoLimits) {
  const CAttributeCol attributes("", "##any", "");
  EXPECT_EQ(0, attributes.GetMinOccurs());
  EXPECT_EQ(-1, attributes.GetMaxOccurs());
}

TEST(AttributeCol, AddsAttributesInTheirOrder) {
  CAttributeCol attributes("urn:c", "##any", "");
  const CSmartPtr<CAttribute> a = attributes.Add("a", "1", "urn:a");
  attributes.Add("b", "2");
  attributes.Add("c");
  attributes.Add("a", "again", "urn:a");
  EXPECT_EQ("{urn:a}a=1 {urn:c}b=2 {urn:c}c= {urn:a}a=again ", Listed(attributes));
  EXPECT_EQ(a, attributes.Item(0));
  attributes.Add(nullptr, nullptr, nullptr);
  EXPECT_EQ("", attributes.Item(4)->GetName());
}

TEST(AttributeCol, TestsTheNamespaceOfWhatIsAddedByName) {
  CAttributeCol attributes("", "##other", "urn:t");
  EXPECT_QZ_THROW_FULL(CQzInvalidNamespaceException, Refusal("urn:t", "##other", "urn:t"), "",
                       attributes.Add("a", "1", "urn:t"));
  EXPECT_EQ(0, attributes.GetCount());
  attributes.Add("a", "1", "urn:a");
  attributes.Add("b", "2");  // no namespace is another one
  EXPECT_EQ("{urn:a}a=1 {}b=2 ", Listed(attributes));
}

TEST(AttributeCol, TestsItsOwnNamespaceWhenItIsUsed) {
  CAttributeCol attributes("urn:t", "##other", "urn:t");
  EXPECT_QZ_THROW(CQzInvalidNamespaceException, Refusal("urn:t", "##other", "urn:t"),
                  attributes.Add("a", "1"));
  EXPECT_QZ_THROW(CQzInvalidNamespaceException, Refusal("urn:t", "##other", "urn:t"),
                  attributes.Add("a"));
}

TEST(AttributeCol, UsesTheFirstNamespaceOfAListWhichTheListDoesNotLetPass) {
  CAttributeCol attributes("", "urn:a urn:b", "");
  EXPECT_QZ_THROW_FULL(CQzInvalidNamespaceException, Refusal("urn:a", "urn:a urn:b", ""), "",
                       attributes.Add("a", "1"));
  attributes.Add("b", "2", "");  // no namespace passes every list of names
  EXPECT_EQ("{}b=2 ", Listed(attributes));
}

TEST(AttributeCol, TakesAReadyAttributeWithoutATest) {
  CAttributeCol strict("", "##other", "urn:t");
  CAttributeCol source("", "##any", "");
  const CSmartPtr<CAttribute> attribute = source.Add("a", "1", "urn:t");
  EXPECT_EQ(attribute, strict.Add(attribute));
  EXPECT_EQ(attribute, strict.AddAfter(nullptr, attribute));
  EXPECT_EQ(attribute, strict.AddBefore(nullptr, attribute));
  EXPECT_EQ(3, strict.GetCount());
}

TEST(AttributeCol, PlacesAReadyAttribute) {
  CAttributeCol attributes("", "##any", "");
  const CSmartPtr<CAttribute> a = attributes.Add("a");
  const CSmartPtr<CAttribute> b = attributes.Add("b");
  attributes.AddAfter(a, attributes.Add("x")->Clone());
  attributes.AddBefore(a, attributes.Add("y")->Clone());
  attributes.AddAfter(nullptr, attributes.Add("z")->Clone());
  attributes.AddBefore(nullptr, attributes.Add("w")->Clone());
  EXPECT_EQ("{}z= {}y= {}a= {}x= {}b= {}x= {}y= {}z= {}w= {}w= ", Listed(attributes));
  CAttributeCol others("", "##any", "");
  EXPECT_QZ_THROW(CQzInvalidParamException, "The object was not found in the collection",
                  others.AddAfter(a, b));
  EXPECT_QZ_THROW(CQzInvalidParamException, "The object was not found in the collection",
                  others.AddBefore(a, b));
}

TEST(AttributeCol, TakesNoNullAttribute) {
  CAttributeCol attributes("", "##any", "");
  EXPECT_QZ_ASSERT("item != 0", attributes.Add(static_cast<CAttribute*>(nullptr)));
  EXPECT_QZ_ASSERT("item != 0", attributes.AddAfter(nullptr, nullptr));
  EXPECT_EQ(0, attributes.GetCount());
}

TEST(AttributeCol, TellsItsListenersOfAnAddition) {
  CListener listener;
  CAttributeCol attributes("", "##any", "");
  attributes.AddEventListener(&listener);
  attributes.Add("a");
  attributes.Remove(0);
  EXPECT_EQ(
      (Log{"add element 0", "added element 1", "change 1", "remove 1", "removed 0", "change 0"}),
      listener.own);
  EXPECT_EQ(&attributes, listener.senders.front());
}

TEST(AttributeCol, RefusesAnIndexOutsideOfIt) {
  CAttributeCol attributes("", "##any", "");
  attributes.Add("a");
  EXPECT_QZ_THROW(CQzInvalidParamException, "Index 1 is out of range, use 0 - 1",
                  attributes.Item(1));
  EXPECT_QZ_THROW(CQzInvalidParamException, "Index -1 is out of range, use 0 - 1",
                  attributes.Item(-1));
}

TEST(AttributeCol, HasACloneWithTheSameRulesAndItemsOfItsOwn) {
  CListener listener;
  CAttributeCol attributes("", "urn:a", "urn:t");
  attributes.AddEventListener(&listener);
  attributes.Add("a", "1");
  listener.own.clear();
  const CSmartPtr<CAttributeCol> clone = attributes.Clone();
  EXPECT_EQ("{urn:a}a=1 ", Listed(*clone));
  clone->Item(0)->SetValue("2");
  clone->Add("b", "3");
  EXPECT_EQ("{urn:a}a=1 ", Listed(attributes));
  EXPECT_EQ(Log(), listener.own);
  EXPECT_QZ_THROW(CQzInvalidNamespaceException, Refusal("urn:b", "urn:a", "urn:t"),
                  clone->Add("c", "4", "urn:b"));
}

TEST(AttributeCol, ClonesItemsThatAreOutsideItsRestriction) {
  CAttributeCol attributes("", "urn:a", "");
  attributes.Add("a")->SetNamespace("urn:b");
  EXPECT_EQ("{urn:b}a= ", Listed(*attributes.Clone()));
}

// Reading and writing

TEST(AttributeCol, ReadsTheAttributesOfAnElementAndLeavesTheCursor) {
  const CLoaded document(
      "<a xmlns='urn:d' xmlns:p='urn:p' k='1' p:k='2' xml:lang='en'><first/></a>");
  CAttributeCol attributes("urn:c", "##any", "");
  attributes.Add("before");
  CXmlElement* const cursor = document.root()->GetFirstElement();
  EXPECT_EQ(cursor, CWalk::Read(&attributes, document.root(), cursor));
  EXPECT_EQ("{urn:c}before= {}k=1 {urn:p}k=2 {http://www.w3.org/XML/1998/namespace}lang=en ",
            Listed(attributes));
  EXPECT_EQ(nullptr, CWalk::Read(&attributes, document.root(), nullptr));
}

TEST(AttributeCol, ReadsSchemaAttributesLikeAnyOther) {
  const CLoaded document(
      "<a xmlns:i='http://www.w3.org/2001/XMLSchema-instance' i:type='t' i:nil='true'/>");
  CAttributeCol attributes("", "##any", "");
  CWalk::Read(&attributes, document.root(), nullptr);
  EXPECT_EQ(
      "{http://www.w3.org/2001/XMLSchema-instance}type=t "
      "{http://www.w3.org/2001/XMLSchema-instance}nil=true ",
      Listed(attributes));
  CSerializationContext noNamespaces;
  noNamespaces.SetSchemaType(SchemaType_NoNamespaces);
  const CLoaded plain("<a xmlns='urn:d' xmlns:p='urn:p'/>", noNamespaces);
  CAttributeCol declarations("", "##any", "");
  CWalk::Read(&declarations, plain.root(), nullptr);
  EXPECT_EQ("{}xmlns=urn:d {}xmlns:p=urn:p ", Listed(declarations));
}

TEST(AttributeCol, RefusesAnAttributeOutsideItsRestrictionWithThePathOfTheElement) {
  const CLoaded document("<a><b/><b k='1' xmlns:p='urn:p' p:m='2' q='3'/></a>");
  CXmlElement* const second = document.root()->GetFirstElement()->GetNextSiblingElement();
  CAttributeCol attributes("", "##local", "urn:t");
  EXPECT_QZ_THROW_FULL(
      CQzInvalidNamespaceException,
      "Invalid Attribute [m]. The attributes namespace is Inappropriate.\nPath: /a/b[2]", "/a/b[2]",
      CWalk::Read(&attributes, second, nullptr));
  EXPECT_EQ("{}k=1 ", Listed(attributes));  // what came before it stays
}

TEST(AttributeCol, AddsAnAttributeOfADocument) {
  const CLoaded document("<a xmlns:p='urn:p' p:k='x&#13;'/>");
  const CXmlAttribute& read = *document.root()->GetAttributes().front();
  CAttributeCol attributes("", "##any", "");
  EXPECT_EQ("x\r", attributes.AddFromDocument(read)->GetValue());
  EXPECT_EQ("<owner xmlns:AA=\"urn:p\" AA:k=\"x\"/>", WriteInOwner(&attributes));
  CAttributeCol strict("", "##local", "");
  EXPECT_QZ_THROW(CQzInvalidNamespaceException, Refusal("urn:p", "##local", ""),
                  strict.AddFromDocument(read));
}

TEST(AttributeCol, WritesItsAttributes) {
  CAttributeCol attributes("", "##any", "");
  EXPECT_EQ("<owner/>", WriteInOwner(&attributes));
  attributes.Add("a", "1");
  attributes.Add("b", "2", "urn:b");
  attributes.Add("c", "3", "urn:b");
  attributes.Add("d", "");
  EXPECT_EQ("<owner a=\"1\" xmlns:AA=\"urn:b\" AA:b=\"2\" AA:c=\"3\" d=\"\"/>",
            WriteInOwner(&attributes));
}

}  // namespace
}  // namespace QzXmlLib16
