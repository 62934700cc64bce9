#include "qzxml/collections/Element.h"
#include "qzxml/collections/ElementCol.h"
#include "qzxml/runtime/QzException.h"
#include "tests/collections/OpenContent.h"
#include "tests/collections/Things.h"
#include "tests/support/QzTest.h"

namespace QzXmlLib16 {
namespace {

using qztest::CListener;
using qztest::CLoaded;
using qztest::CWalk;
using qztest::Flat;
using qztest::Log;
using qztest::WriteInOwner;

// Opens what the tables of generated classes use.
class COpenCol : public CElementCol {
 public:
  using CElementCol::CElementCol;
  using CElementCol::FromXmlLockElementName_Int;
};

// Name and namespace of each element.
std::string Listed(const CElementCol& elements) {
  std::string text;
  for (CSmartPtr<CElement> e : elements) text += "{" + e->GetNamespace() + "}" + e->GetName() + " ";
  return text;
}

std::string Refusal(const char* namespaceUri, const char* restriction, const char* target) {
  return std::string("Invalid namespace [") + namespaceUri + "]. The namespace must be one of [" +
         restriction + "] where the target namespace is [" + target + "].";
}

TEST(ElementCol, TestsItsNamespaceWhenItIsMade) {
  EXPECT_QZ_THROW_FULL(CQzInvalidNamespaceException, Refusal("urn:t", "##other", "urn:t"), "",
                       CElementCol("urn:t", "##other", "urn:t", 0, -1));
  EXPECT_QZ_THROW(CQzInvalidNamespaceException, Refusal("urn:a", "urn:a urn:b", ""),
                  CElementCol("urn:a", "urn:a urn:b", "", 0, -1));
  const CElementCol elements("urn:a", "##other", "urn:t", 2, 5);
  EXPECT_EQ(2, elements.GetMinOccurs());
  EXPECT_EQ(5, elements.GetMaxOccurs());
}

TEST(ElementCol, GivesItsTargetNamespaceAsItsNamespace) {
  EXPECT_EQ("urn:t", CElementCol("urn:a", "##any", "urn:t", 0, -1).GetNamespace());
  EXPECT_EQ("", CElementCol(nullptr, nullptr, nullptr, 0, -1).GetNamespace());
}

TEST(ElementCol, AddsByNameInTheNamespaceForNewElements) {
  const struct {
    const char* namespaceUri;
    const char* restriction;
    const char* taken;
  } cases[] = {
      {"urn:a", "##any", "urn:a"},        {"", "##any", "##any"},
      {"", "##other", "##other"},         {"", "##local", "##local"},
      {"", "##any urn:a", "##any urn:a"}, {"", "##", "##"},
      {nullptr, "##any", "##any"},
  };
  for (const auto& c : cases) {
    CElementCol elements(c.namespaceUri, c.restriction, "urn:t", 0, -1);
    const CSmartPtr<CElement> element = elements.Add("a");
    EXPECT_EQ("a", element->GetName());
    EXPECT_EQ(c.taken, element->GetNamespace()) << c.restriction;
    EXPECT_EQ("urn:t", element->GetTargetNamespace());
    EXPECT_EQ(element, elements.Item(0));
  }
}

TEST(ElementCol, AddsNothingByNameWithoutANamespace) {
  for (const char* restriction : {"urn:a urn:b", "urn:a", "#a", ""}) {
    CElementCol elements("", restriction, "", 0, -1);
    EXPECT_QZ_THROW_FULL(CQzInvalidStateException,
                         "A Namespace has not been set for this Collection", "", elements.Add("a"));
    EXPECT_EQ(0, elements.GetCount());
  }
}

TEST(ElementCol, LetsEveryNamespacePassOnceItIsMade) {
  CElementCol elements("", "##local", "urn:t", 0, -1);
  elements.Add("a", "urn:a");
  elements.Add("b", "");
  elements.Add("c", nullptr);
  elements.Add(new CElement("d", "urn:d"));
  EXPECT_EQ("{urn:a}a {}b {}c {urn:d}d ", Listed(elements));
}

TEST(ElementCol, RefusesAnElementWithoutAName) {
  CElementCol elements("urn:a", "##any", "", 0, -1);
  EXPECT_QZ_THROW_FULL(CQzInvalidNamespaceException, "Element Name must have a value", "",
                       elements.Add(static_cast<const char*>(nullptr)));
  EXPECT_EQ(0, elements.GetCount());
}

TEST(ElementCol, PlacesAReadyElement) {
  CElementCol elements("", "##any", "", 0, -1);
  const CSmartPtr<CElement> a = elements.Add("a", "");
  const CSmartPtr<CElement> b = elements.Add("b", "");
  const CSmartPtr<CElement> x(new CElement("x"));
  EXPECT_EQ(x, elements.AddAfter(a, x));
  EXPECT_EQ(x, elements.AddBefore(a, x));
  EXPECT_EQ(x, elements.AddAfter(nullptr, x));
  EXPECT_EQ(x, elements.AddBefore(nullptr, x));
  EXPECT_EQ("{}x {}x {}a {}x {}b {}x ", Listed(elements));
  CElementCol others("", "##any", "", 0, -1);
  EXPECT_QZ_THROW(CQzInvalidParamException, "The object was not found in the collection",
                  others.AddAfter(a, x));
  EXPECT_QZ_THROW(CQzInvalidParamException, "The object was not found in the collection",
                  others.AddBefore(b, x));
}

TEST(ElementCol, TakesNoNullElement) {
  CElementCol elements("", "##any", "", 0, -1);
  EXPECT_QZ_ASSERT("item != 0", elements.Add(static_cast<CElement*>(nullptr)));
  EXPECT_QZ_ASSERT("item != 0", elements.AddBefore(nullptr, nullptr));
  EXPECT_EQ(0, elements.GetCount());
}

TEST(ElementCol, KeepsAnElementThatAListenerHoldsOrTakesOut) {
  CListener listener;
  CElementCol elements("", "##any", "", 0, -1);
  elements.AddEventListener(&listener);
  listener.onEvent = [&](IEventSink::MsgType type) {
    if (type == IEventSink::MsgType_CollectionAddComplete) elements.Clear();
  };
  const CSmartPtr<CElement> a = elements.Add(new CElement("a"));
  EXPECT_EQ("a", a->GetName());
  EXPECT_EQ(0, elements.GetCount());
  EXPECT_EQ(1, a->AddRef() - 1);
  a->Release();
}

TEST(ElementCol, RefusesAnIndexOutsideOfIt) {
  CElementCol elements("", "##any", "", 0, -1);
  EXPECT_QZ_THROW(CQzInvalidParamException, "Index 0 is out of range, use 0 - 0", elements.Item(0));
}

TEST(ElementCol, HasACloneInTheSameState) {
  CElementCol elements("", "urn:a urn:b", "urn:t", 1, 3);
  elements.Add("a", "urn:a")->GetChildElements()->Add("b");
  const CSmartPtr<CElementCol> clone = elements.Clone();
  EXPECT_EQ(1, clone->GetMinOccurs());
  EXPECT_EQ(3, clone->GetMaxOccurs());
  EXPECT_EQ("urn:t", clone->GetNamespace());
  EXPECT_EQ("{urn:a}a ", Listed(*clone));
  EXPECT_QZ_THROW(CQzInvalidStateException, "A Namespace has not been set for this Collection",
                  clone->Add("c"));
  clone->Item(0)->GetChildElements()->Item(0)->SetName("changed");
  EXPECT_EQ("b", elements.Item(0)->GetChildElements()->Item(0)->GetName());
}

// Writing

TEST(ElementCol, WritesItsElementsInTheirOrder) {
  CElementCol elements("", "##any", "", 0, -1);
  EXPECT_EQ("<owner/>", WriteInOwner(&elements));
  elements.Add("a", "");
  elements.Add("b", "urn:b")->SetText("t");
  EXPECT_EQ("<owner><a/><AA:b xmlns:AA=\"urn:b\">t</AA:b></owner>", WriteInOwner(&elements));
}

TEST(ElementCol, ChecksItsCountBeforeItWrites) {
  CElementCol elements("", "##any", "", 2, 2);
  const char few[] = "The Minimum number of [] elements allowed in this collection is 2";
  const char many[] = "The Maximum number of [] elements allowed in this collection is 2";
  elements.Add("a", "");
  EXPECT_QZ_THROW_FULL(CQzValidationException, few, "", WriteInOwner(&elements));
  elements.Add("a", "");
  EXPECT_EQ("<owner><a/><a/></owner>", WriteInOwner(&elements));
  elements.Add("a", "");
  EXPECT_QZ_THROW_FULL(CQzValidationException, many, "", WriteInOwner(&elements));
}

// Reading

TEST(ElementCol, ReadsEveryElementFromTheCursorOn) {
  const CLoaded document("<r><skip/><a>1</a><b xmlns='urn:b'><c k='v'/></b></r>");
  CElementCol elements("", "##local", "urn:t", 0, 1);
  CXmlElement* const cursor = document.root()->GetFirstElement()->GetNextSiblingElement();
  EXPECT_EQ(nullptr, CWalk::Read(&elements, document.root(), cursor));
  EXPECT_EQ("{}a {urn:b}b ", Listed(elements));  // the number is not checked
  EXPECT_EQ("<a>1</a>", Flat(elements.Item(0)));
  EXPECT_EQ("<AA:b xmlns:AA=\"urn:b\"><AA:c k=\"v\"/></AA:b>", Flat(elements.Item(1)));
  EXPECT_EQ("urn:t", elements.Item(1)->GetTargetNamespace());
  EXPECT_EQ("urn:t", elements.Item(1)->GetChildElements()->GetNamespace());
  EXPECT_EQ(nullptr, CWalk::Read(&elements, document.root(), nullptr));
  EXPECT_EQ(2, elements.GetCount());
}

TEST(ElementCol, AddsWhatItReadsToWhatItHas) {
  const CLoaded document("<r><b/></r>");
  CElementCol elements("", "##any", "", 0, -1);
  elements.Add("a", "");
  CWalk::Read(&elements, document.root(), document.root()->GetFirstElement());
  EXPECT_EQ("{}a {}b ", Listed(elements));
}

TEST(ElementCol, TellsOfAnElementThatItReadWhenThatIsComplete) {
  const CLoaded document("<r><a><b/></a></r>");
  CListener listener;
  CElementCol elements("", "##any", "", 0, -1);
  Log texts;
  listener.onEvent = [&](IEventSink::MsgType type) {
    if (type == IEventSink::MsgType_CollectionAddComplete) texts.push_back(Flat(elements.Item(0)));
  };
  elements.AddEventListener(&listener);
  CWalk::Read(&elements, document.root(), document.root()->GetFirstElement());
  EXPECT_EQ((Log{"add element 0", "added element 1", "change 1"}), listener.own);
  EXPECT_EQ((Log{"<a><b/></a>"}), texts);
}

TEST(ElementCol, GivesTheElementsThatItReadTheirNamespaceForNewOnes) {
  const CLoaded document("<r><a xmlns='urn:a'><b xmlns=''/></a></r>");
  CElementCol elements("", "##any", "", 0, -1);
  CWalk::Read(&elements, document.root(), document.root()->GetFirstElement());
  const CSmartPtr<CElement> a = elements.Item(0);
  EXPECT_EQ("urn:a", a->GetAttributes()->Add("k")->GetNamespace());
  EXPECT_EQ("urn:a", a->GetChildElements()->Add("new")->GetNamespace());
  const CSmartPtr<CElement> b = a->GetChildElements()->Item(0);
  EXPECT_EQ("", b->GetAttributes()->Add("k")->GetNamespace());
  EXPECT_EQ("##any", b->GetChildElements()->Add("new")->GetNamespace());
}

TEST(ElementCol, ReadsElementsOfOneNameAndNamespaceWhereTheNameIsFixed) {
  const struct {
    const char* xml;
    const char* read;
    const char* left;
  } cases[] = {
      {"<r><a/><a/><b/><a/></r>", "{}a {}a ", "b"},
      {"<r><b/><a/></r>", "", "b"},
      {"<r><a/><a xmlns='urn:a'/></r>", "{}a ", "a"},
      {"<r><a><b/></a></r>", "{}a ", ""},
      {"<r/>", "", ""},
  };
  for (const auto& c : cases) {
    const CLoaded document(c.xml);
    COpenCol elements("", "##any", "", 0, -1);
    const CXmlElement* const left = elements.FromXmlLockElementName_Int(
        "a", "", document.root(), document.root()->GetFirstElement(),
        CSerializationContext::GetDefaultContext());
    EXPECT_EQ(c.left, left != nullptr ? left->GetLocalName() : "") << c.xml;
    EXPECT_EQ(c.read, Listed(elements)) << c.xml;
  }
  const CLoaded document("<r xmlns='urn:a'><a><b k='v'>t</b></a></r>");
  COpenCol elements("", "##any", "", 0, -1);
  EXPECT_EQ(nullptr, elements.FromXmlLockElementName_Int(
                         "a", "urn:a", document.root(), document.root()->GetFirstElement(),
                         CSerializationContext::GetDefaultContext()));
  EXPECT_EQ("<AA:a xmlns:AA=\"urn:a\"><AA:b k=\"v\">t</AA:b></AA:a>", Flat(elements.Item(0)));
}

}  // namespace
}  // namespace QzXmlLib16
