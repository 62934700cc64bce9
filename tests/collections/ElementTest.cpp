#include "qzxml/collections/Element.h"
#include "qzxml/runtime/QzException.h"
#include "tests/collections/OpenContent.h"
#include "tests/collections/Things.h"
#include "tests/support/LiveCounts.h"
#include "tests/support/QzTest.h"

namespace QzXmlLib16 {
namespace {

using qztest::CListener;
using qztest::CLoaded;
using qztest::CThing;
using qztest::CWalk;
using qztest::Flat;
using qztest::Formatted;
using qztest::LiveCounts;
using qztest::Log;
using qztest::MakeDeep;
using qztest::WriteInOwner;

// Opens what derived classes use, and notes what the hooks see.
class COpen : public CElement {
 public:
  using CElement::CElement;
  using CElement::CopyXmlElement;
  using CElement::Init;
  std::string seen;

 protected:
  void FireOnChangeName() override { seen += "name " + GetName() + "; "; }
  void FireOnChangeNamespace() override { seen += "namespace " + GetNamespace() + "; "; }
  void FireOnChangeText() override { seen += "text " + GetText() + "; "; }
};

std::string Refusal(const char* namespaceUri, const char* restriction, const char* target) {
  return std::string("Invalid namespace [") + namespaceUri + "]. The namespace must be one of [" +
         restriction + "] where the target namespace is [" + target + "].";
}

CSmartPtr<CElement> Read(const char* xml) {
  CSmartPtr<CElement> element(new CElement("e"));
  element->FromXml(xml);
  return element;
}

// Making

TEST(Element, HasNoNamespaceAndItsCollectionsWhenItIsMadeByItsName) {
  const CSmartPtr<CElement> element(new CElement("a"));
  EXPECT_EQ("a", element->GetName());
  EXPECT_EQ("", element->GetNamespace());
  EXPECT_EQ("", element->GetTargetNamespace());
  EXPECT_EQ("", element->GetText());
  ASSERT_TRUE(element->GetAttributes() != nullptr);
  ASSERT_TRUE(element->GetChildElements() != nullptr);
  EXPECT_EQ(0, element->GetAttributes()->GetCount());
  EXPECT_EQ(0, element->GetChildElements()->GetCount());
  EXPECT_EQ(element, element->GetBase());

  // Its restriction is "##any": an element of any namespace can be read.
  element->FromXml("<b xmlns='urn:b'/>");
  EXPECT_EQ("urn:b", element->GetNamespace());
}

TEST(Element, TakesItsNamespaceAsItsRestriction) {
  const CSmartPtr<CElement> element(new CElement("a", "urn:a"));
  EXPECT_EQ("urn:a", element->GetNamespace());
  EXPECT_EQ("", element->GetTargetNamespace());
  element->FromXml("<b xmlns='urn:b'/>");  // not taken
  EXPECT_EQ("a", element->GetName());
  element->FromXml("<b/>");  // no namespace passes a name of one
  EXPECT_EQ("b", element->GetName());
  element->FromXml("<c xmlns='urn:a'/>");
  EXPECT_EQ("c", element->GetName());
}

TEST(Element, TakesNameNamespaceRestrictionAndTarget) {
  const CSmartPtr<CElement> element(new CElement("a", "urn:a", "##other", "urn:t"));
  EXPECT_EQ("urn:a", element->GetNamespace());
  EXPECT_EQ("urn:t", element->GetTargetNamespace());
  EXPECT_EQ("", CElement("a", nullptr, "##any", "").GetNamespace());
}

TEST(Element, RefusesAWildcardForANamespace) {
  const struct {
    const char* namespaceUri;
    const char* text;
  } cases[] = {
      {"##any", "Invalid Namespace [##any]."},
      {"##other", "Invalid Namespace [##other]."},
      {"##local", "Invalid Namespace [##local]."},
      {"##targetNamespace", "Invalid Namespace [##targetNamespace]."},
  };
  for (const auto& c : cases) {
    EXPECT_QZ_THROW_FULL(CQzInvalidNamespaceException, c.text, "", CElement("a", c.namespaceUri));
    // It comes before the test of the name.
    EXPECT_QZ_THROW(CQzInvalidNamespaceException, c.text,
                    CElement(static_cast<const char*>(nullptr), c.namespaceUri));
    EXPECT_EQ(c.namespaceUri, CElement("a", c.namespaceUri, "##any", "").GetNamespace());
  }
}

TEST(Element, RefusesNull) {
  const char* const null = nullptr;
  const char name[] = "Element Name must have a value";
  const char restriction[] = "Namespace Restriction must have a value";
  const char target[] = "Target Namespace must have a value";
  EXPECT_QZ_THROW_FULL(CQzInvalidNamespaceException, name, "", CElement{null});
  EXPECT_QZ_THROW_FULL(CQzInvalidNamespaceException, name, "", CElement(null, "urn:a"));
  EXPECT_QZ_THROW_FULL(CQzInvalidNamespaceException, name, "", CElement(null, "a", null, null));
  EXPECT_QZ_THROW_FULL(CQzInvalidNamespaceException, restriction, "", CElement("a", null));
  EXPECT_QZ_THROW_FULL(CQzInvalidNamespaceException, restriction, "",
                       CElement("a", "", null, null));
  EXPECT_QZ_THROW_FULL(CQzInvalidNamespaceException, target, "", CElement("a", "", "##any", null));
}

TEST(Element, RefusesANamespaceOutsideItsRestriction) {
  EXPECT_QZ_THROW_FULL(CQzInvalidNamespaceException, Refusal("urn:t", "##other", "urn:t"), "",
                       CElement("a", "urn:t", "##other", "urn:t"));
  EXPECT_QZ_THROW(CQzInvalidNamespaceException, Refusal("urn:a b", "urn:a b urn:c", ""),
                  CElement("a", "urn:a b", "urn:a b urn:c", ""));
}

TEST(Element, IsMadeAnewByInit) {
  const CSmartPtr<COpen> element(new COpen("a"));
  const CSmartPtr<CElementCol> children = element->GetChildElements();
  children->Add("b", "");
  element->GetAttributes()->Add("k");
  EXPECT_QZ_THROW(CQzInvalidNamespaceException, "Element Name must have a value",
                  element->Init(nullptr, "", "##any", ""));
  EXPECT_EQ("<a k=\"\"><b/></a>", Flat(element));  // as it was
  element->Init("c", "urn:c", "##other", "urn:t");
  EXPECT_EQ("<AA:c xmlns:AA=\"urn:c\"/>", Flat(element));
  EXPECT_EQ("urn:c", element->GetAttributes()->Add("k")->GetNamespace());
  EXPECT_EQ("urn:c", element->GetChildElements()->Add("d")->GetNamespace());
  EXPECT_EQ("urn:t", element->GetChildElements()->GetNamespace());
  EXPECT_EQ(1, children->GetCount());  // who holds them may keep them
}

TEST(Element, HasCollectionsWithoutRestriction) {
  const CSmartPtr<CElement> element(new CElement("a", "urn:a", "##other", "urn:t"));
  element->GetAttributes()->Add("k", "v", "urn:t");
  element->GetChildElements()->Add("b", "urn:t");
  EXPECT_EQ(1, element->GetChildElements()->GetCount());
  EXPECT_EQ(0, element->GetChildElements()->GetMinOccurs());
  EXPECT_EQ(-1, element->GetChildElements()->GetMaxOccurs());
}

TEST(Element, GivesAChildWithoutANamespaceOfItsOwnTheWildcardAsOne) {
  const CSmartPtr<CElement> element(new CElement("a"));
  EXPECT_EQ("##any", element->GetChildElements()->Add("b")->GetNamespace());
  EXPECT_EQ("", element->GetAttributes()->Add("k")->GetNamespace());
}

TEST(Element, KeepsItsItemsForWhoHoldsThem) {
  CSmartPtr<CElement> element = Read("<a k='v'><b>t</b></a>");
  const CSmartPtr<CElementCol> children = element->GetChildElements();
  const CSmartPtr<CElement> b = children->Item(0);
  const CSmartPtr<CAttribute> k = element->GetAttributes()->Item(0);
  element = nullptr;
  EXPECT_EQ("v", k->GetValue());
  EXPECT_EQ("t", b->GetText());
  children->Clear();
  EXPECT_EQ("<b>t</b>", Flat(b));
}

TEST(Element, CountsItselfAndItsCollectionsAndLeavesNothingBehind) {
  const std::map<std::string, std::int32_t> before = LiveCounts();
  {
    const CSmartPtr<CElement> element = Read("<a k='v'><b/></a>");
    std::map<std::string, std::int32_t> expected = before;
    expected["CElement"] += 2;
    expected["CElementCol"] += 2;
    expected["CAttribute"] += 1;
    expected["CAttributeCol"] += 2;
    EXPECT_EQ(expected, LiveCounts());
  }
  EXPECT_EQ(before, LiveCounts());
}

// Content

TEST(Element, ChangesWithoutBeingTested) {
  const CSmartPtr<CElement> element(new CElement("a", "urn:a"));
  element->SetName("b");
  element->SetNamespace("urn:b");
  element->SetText("t");
  EXPECT_EQ("<AA:b xmlns:AA=\"urn:b\">t</AA:b>", Flat(element));
  element->SetName(nullptr);
  element->SetNamespace(nullptr);
  element->SetText(nullptr);
  EXPECT_EQ("", element->GetName());
  EXPECT_EQ("", element->GetNamespace());
  EXPECT_EQ("", element->GetText());
}

TEST(Element, CallsItsHooksBeforeItChanges) {
  const CSmartPtr<COpen> element(new COpen("a", "urn:a"));
  element->SetName("b");
  element->SetNamespace("urn:b");
  element->SetText("t");
  element->SetText("u");
  EXPECT_EQ("name a; namespace urn:a; text ; text t; ", element->seen);
}

TEST(Element, HasADeepClone) {
  const CSmartPtr<CElement> element = Read("<a xmlns='urn:a' k='v'><b l='w'><c/>t</b><d/>u</a>");
  const std::string text = Flat(element);
  const CSmartPtr<CElement> clone = element->Clone();
  EXPECT_EQ(text, Flat(clone));
  clone->SetText("changed");
  clone->GetAttributes()->Item(0)->SetValue("changed");
  const CSmartPtr<CElement> b = clone->GetChildElements()->Item(0);
  b->SetName("changed");
  b->GetAttributes()->Clear();
  b->GetChildElements()->Add("new", "");
  EXPECT_EQ(text, Flat(element));
  EXPECT_EQ(
      "<AA:a xmlns:AA=\"urn:a\" k=\"changed\"><AA:changed><AA:c/><new/>t</AA:changed><AA:d/>"
      "changed</AA:a>",
      Flat(clone));
}

TEST(Element, ClonesItsRules) {
  const CSmartPtr<CElement> element(new CElement("a", "urn:a", "##other", "urn:t"));
  const CSmartPtr<CElement> clone = element->Clone();
  EXPECT_EQ("urn:t", clone->GetTargetNamespace());
  clone->FromXml("<b xmlns='urn:t'/>");  // not taken
  EXPECT_EQ("a", clone->GetName());
  EXPECT_EQ("urn:a", clone->GetChildElements()->Add("c")->GetNamespace());
  const CSmartPtr<CElement> fragment(new CElement("a"));
  CThing thing("t");
  const CSmartPtr<CElement> content(new CElement(&thing, "urn:d"));
  EXPECT_EQ("<t xmlns=\"urn:d\"/>", Flat(content->Clone()));  // the default namespace too
}

TEST(Element, HasNoCloneOutsideItsRestriction) {
  const CSmartPtr<CElement> element(new CElement("a", "urn:a"));
  element->SetNamespace("urn:b");
  EXPECT_QZ_THROW_FULL(CQzInvalidNamespaceException, Refusal("urn:b", "urn:a", ""), "",
                       element->Clone());
  const CSmartPtr<CElement> parent(new CElement("p"));
  parent->GetChildElements()->Add(element);
  EXPECT_QZ_THROW(CQzInvalidNamespaceException, Refusal("urn:b", "urn:a", ""), parent->Clone());
}

// Testing

TEST(Element, TestsEverythingBelowAgainstARestriction) {
  const CSmartPtr<CElement> element =
      Read("<a xmlns:p='urn:p'><p:b p:k='v'><c/></p:b><d l='w'/></a>");
  element->SetNamespaceRestrictions("##any", "");
  element->SetNamespaceRestrictions("urn:p", "");  // no namespace passes
  element->SetNamespaceRestrictions("##other", "urn:t");
  EXPECT_QZ_THROW_FULL(
      CQzInvalidNamespaceException,
      "The namespace  in the class a is invalid against restriction ##local\n"
      "The namespace urn:p in the class b is invalid against restriction ##local\n" +
          Refusal("urn:p", "##local", "urn:t"),
      "", element->SetNamespaceRestrictions("##local", "urn:t"));
  EXPECT_QZ_THROW_FULL(CQzInvalidNamespaceException,
                       "The namespace  in the class a is invalid against restriction ##other\n" +
                           Refusal("", "##other", ""),
                       "", element->SetNamespaceRestrictions("##other", nullptr));
}

TEST(Element, TestsAttributesBeforeChildrenAndTellsOfEachLevel) {
  const CSmartPtr<CElement> element =
      Read("<a><b><c xmlns:p='urn:p' p:k='v'><d xmlns='urn:d'/></c></b></a>");
  EXPECT_QZ_THROW_FULL(CQzInvalidNamespaceException,
                       "The namespace  in the class a is invalid against restriction ##local\n"
                       "The namespace  in the class b is invalid against restriction ##local\n"
                       "The namespace  in the class c is invalid against restriction ##local\n" +
                           Refusal("urn:p", "##local", ""),
                       "", element->SetNamespaceRestrictions("##local", ""));
  const CSmartPtr<CElement> later = Read("<a><b/><c xmlns='urn:c'/><d xmlns='urn:d'/></a>");
  EXPECT_QZ_THROW_FULL(
      CQzInvalidNamespaceException,
      "The namespace  in the class a is invalid against restriction ##local\n"
      "The namespace urn:c in the class c is invalid against restriction ##local\n" +
          Refusal("urn:c", "##local", ""),
      "", later->SetNamespaceRestrictions("##local", ""));
}

TEST(Element, OnlyTestsARestriction) {
  const CSmartPtr<CElement> element(new CElement("a", "urn:a"));
  element->SetNamespaceRestrictions("##any", "urn:t");
  EXPECT_EQ("", element->GetTargetNamespace());
  element->FromXml("<b xmlns='urn:b'/>");  // "urn:a" is still what counts
  EXPECT_EQ("a", element->GetName());
}

// Writing

TEST(Element, WritesItsTextBehindItsChildren) {
  const CSmartPtr<CElement> element(new CElement("a"));
  element->SetText("text");
  element->GetChildElements()->Add("b", "");
  EXPECT_EQ("<a><b/>text</a>", Flat(element));
  EXPECT_EQ("<a>\n\t<b/>\ntext</a>\n", Formatted(element));
}

TEST(Element, WritesADerivedClassInItsOwnWay) {
  class CDerived : public CElement {
   public:
    using CElement::CElement;

   protected:
    void ToXml_Int(CXmlWriter* writer, bool, const char*, const CSerializationContext&,
                   bool) const override {
      writer->WriteStartElement("derived", "");
      writer->WriteEndElement();
    }
  };
  const CSmartPtr<CElement> element(new CElement("a"));
  element->GetChildElements()->Add(new CDerived("b"));
  element->GetChildElements()->Add(new COpen("c"));
  EXPECT_EQ("<a><derived/><c/></a>", Flat(element));
}

TEST(Element, WritesNothingOfTheContextThatBelongsToARoot) {
  CSerializationContext context;
  context.GetProcessingInstructions().push_back("<?pi?>");
  context.SetDefaultNamespaceURI("urn:a");
  context.GetAdditionalRootAttributes()->Add("k", "v");
  const CSmartPtr<CElement> element(new CElement("a", "urn:a"));
  EXPECT_EQ("<AA:a xmlns:AA=\"urn:a\"/>", element->ToXml(false, false, EOLType_LF, context));
}

// Content of an object

// An element that notes what it is written with.
class CSeeing : public CElement {
 public:
  using CElement::CElement;
  mutable std::string seen;

 protected:
  void ToXml_Int(CXmlWriter* writer, bool root, const char*, const CSerializationContext& context,
                 bool) const override {
    seen = (root ? "root " : "") + context.GetDefaultNamespaceURI();
    writer->WriteStartElement(GetName(), "");
    writer->WriteEndElement();
  }
};

TEST(Element, WritesAnObjectAndTheChildrenOfAFragmentWithTheDefaultNamespace) {
  const CSmartPtr<CSeeing> seeing(new CSeeing("s"));
  const CSmartPtr<CElement> fragment(new CElement(seeing, "urn:d"));
  EXPECT_EQ("root urn:d", seeing->seen);
  CSerializationContext context;
  context.SetDefaultNamespaceURI("urn:e");
  fragment->GetChildElements()->Add(seeing);
  EXPECT_EQ("<s xmlns=\"urn:d\"><s/></s>", fragment->ToXml(false, false, EOLType_LF, context));
  EXPECT_EQ("urn:d", seeing->seen);
  const CSmartPtr<CElement> plain(new CElement(seeing, nullptr));
  EXPECT_EQ("root ", seeing->seen);
  plain->GetChildElements()->Add(seeing);
  EXPECT_EQ("<s><s/></s>", plain->ToXml(false, false, EOLType_LF, context));
  EXPECT_EQ("urn:e", seeing->seen);
}

TEST(Element, MakesTheContentOfAnObjectByItsNamesAlone) {
  const CSmartPtr<CElement> element(
      new CElement(Read("<a xmlns='urn:a'><b><c/></b></a>"), nullptr));
  const CSmartPtr<CElement> b = element->GetChildElements()->Item(0);
  EXPECT_EQ("urn:a", b->GetNamespace());
  EXPECT_EQ("##any", b->GetChildElements()->Add("n")->GetNamespace());
  EXPECT_EQ("", b->GetAttributes()->Add("k")->GetNamespace());
  const CSmartPtr<CElement> c = b->GetChildElements()->Item(0);
  EXPECT_EQ("##any", c->GetChildElements()->Add("n")->GetNamespace());
}

TEST(Element, TakesTheContentOfAnObject) {
  const CSmartPtr<CElement> source = Read("<p:a xmlns:p='urn:p' k='v'><b/>t</p:a>");
  const CSmartPtr<CElement> element(new CElement(source, nullptr));
  EXPECT_EQ("a", element->GetName());
  EXPECT_EQ("urn:p", element->GetNamespace());
  EXPECT_EQ("t", element->GetText());
  EXPECT_EQ(Flat(source), Flat(element));
  // Made by their names, its children know no namespace for new ones.
  EXPECT_EQ("##any", element->GetChildElements()->Add("c")->GetNamespace());
}

TEST(Element, WritesTheContentOfAnObjectAsAFragmentWithItsDefaultNamespace) {
  const CSmartPtr<CElement> source =
      Read("<a xmlns='urn:a' k='v'><b><c/></b><d xmlns='urn:d'/>t</a>");
  const CSmartPtr<CElement> element(new CElement(source, "urn:a"));
  EXPECT_EQ(1, element->GetAttributes()->GetCount());
  // The attribute is lost; the default namespace is declared and needs no prefix.
  EXPECT_EQ("<a xmlns=\"urn:a\"><b><c/></b><AA:d xmlns:AA=\"urn:d\"/>t</a>", Flat(element));
  EXPECT_EQ("<owner><a xmlns=\"urn:a\"><b><c/></b><AA:d xmlns:AA=\"urn:d\"/>t</a></owner>",
            WriteInOwner(element));
}

TEST(Element, DoesNotIndentAFragment) {
  const CSmartPtr<CElement> source = Read("<a xmlns='urn:a'><b/></a>");
  const CSmartPtr<CElement> outer(new CElement("o"));
  outer->GetChildElements()->Add("before", "");
  outer->GetChildElements()->Add(new CElement(source, "urn:a"));
  outer->GetChildElements()->Add("behind", "");
  EXPECT_EQ("<o>\n\t<before/>\n<a xmlns=\"urn:a\">\n\t<b/>\n</a>\n\n\t<behind/>\n</o>\n",
            Formatted(outer));
  EXPECT_EQ(
      "<o>\r\n\t<before/>\r\n<a xmlns=\"urn:a\">\r\n\t<b/>\r\n</a>\r\n\r\n\t<behind/>\r\n"
      "</o>\r\n",
      outer->ToXml(false, true, EOLType_CRLF));
}

TEST(Element, ClosesTheStartTagOfItsOwnerBeforeAFragment) {
  CThing thing("t");
  const CSmartPtr<CElement> outer(new CElement("o"));
  outer->GetChildElements()->Add(new CElement(&thing, "urn:d"));
  EXPECT_EQ("<o><t xmlns=\"urn:d\"/></o>", Flat(outer));
}

TEST(Element, IsEmptyWithoutAnObject) {
  CSmartPtr<CElement> element;
  EXPECT_QZ_ASSERT("object != 0",
                   element = new CElement(static_cast<CXmlObjectBase*>(nullptr), "urn:d"));
#if !defined(QZXML_ASSERTIONS)
  element = new CElement(static_cast<CXmlObjectBase*>(nullptr), "urn:d");
  EXPECT_EQ("", element->GetName());
  EXPECT_EQ(0, element->GetChildElements()->GetCount());
#endif
}

TEST(Element, FailsWithTheFailureOfTheObject) {
  CElementCol collection("", "##any", "", 0, -1);
  EXPECT_QZ_THROW(CQzException,
                  "CXmlCollectionBase::GetTargetNamespace Should not be used from within a "
                  "Collection (program logic error)",
                  CElement(&collection, "urn:d"));
}

TEST(Element, WritesAnXmlnsAttributeThatItCopiedAsItsDefaultNamespaceAlone) {
  CSerializationContext noNamespaces;
  noNamespaces.SetSchemaType(SchemaType_NoNamespaces);
  const CLoaded document("<o><a k='v' xmlns='urn:a'><b xmlns='urn:b' l='w'/><c m='x'/></a></o>",
                         noNamespaces);
  const CSmartPtr<COpen> element(new COpen("e"));
  element->GetAttributes()->Add("old");
  element->GetChildElements()->Add("old", "");
  element->CopyXmlElement(document.root()->GetFirstElement());
  EXPECT_EQ(2, element->GetAttributes()->GetCount());
  EXPECT_EQ("urn:a", element->GetAttributes()->Item(1)->GetValue());
  EXPECT_EQ("<a xmlns=\"urn:a\"><b xmlns=\"urn:b\"/><c m=\"x\"/></a>", Flat(element));
  // What is read instead keeps its attributes.
  const CSmartPtr<CElement> read(new CElement("e"));
  CWalk::Read(read, document.root(), document.root()->GetFirstElement());
  EXPECT_EQ("<a k=\"v\" xmlns=\"urn:a\"><b xmlns=\"urn:b\" l=\"w\"/><c m=\"x\"/></a>", Flat(read));
}

TEST(Element, CopiesNothingFromNoElement) {
  const CSmartPtr<COpen> element(new COpen("e"));
  element->CopyXmlElement(nullptr);
  EXPECT_EQ("<e/>", Flat(element));
}

// A writer that is none of XML text: what it is told, in one line.
class CNotes : public CXmlWriter {
 public:
  CNotes() : CXmlWriter("CNotes") {}
  void WriteComment(const std::string&) override {}
  void WriteProcessingInstruction(const std::string&) override {}
  void WriteInlineSchema(const std::string&) override {}
  void WriteStartElement(const std::string& name, const std::string&) override {
    text += "(" + name;
  }
  void WriteText(const std::string& value, ItemType type, bool isDefault) override {
    text += "=" + value + std::to_string(type) + (isDefault ? "default" : "");
  }
  void WriteEndElement() override { text += ")"; }
  void WriteAttribute(const std::string& name, const std::string&, const std::string& value,
                      ItemType type) override {
    text += " " + name + value + std::to_string(type);
  }
  void WriteXsiType(const std::string&, const std::string&, ItemType) override {}
  void WriteXsiNil() override {}
  std::string text;
};

TEST(Element, TellsAWriterThatItsTextsAreStrings) {
  CNotes notes;
  CWalk::Write(Read("<a k='v'><b>t</b>u</a>"), &notes);
  EXPECT_EQ("(a kv23(b=t23)=u23)", notes.text);
}

TEST(Element, AssertsATextWriterForAFragment) {
  const CSmartPtr<CElement> source = Read("<a xmlns='urn:a' k='v'><b/></a>");
  const CSmartPtr<CElement> element(new CElement(source, "urn:a"));
  CNotes notes;
  EXPECT_QZ_ASSERT("pXmlTextOut != 0", CWalk::Write(element, &notes));
  EXPECT_EQ("", notes.text);
}

#if !defined(QZXML_ASSERTIONS)
TEST(Element, IsWrittenWithItsAttributesByAnyOtherWriterWithoutAssertions) {
  const CSmartPtr<CElement> source = Read("<a xmlns='urn:a' k='v'><b/></a>");
  CNotes notes;
  CWalk::Write(CSmartPtr<CElement>(new CElement(source, "urn:a")), &notes);
  EXPECT_EQ("(a kv23(b=23)=23)", notes.text);
}
#endif

// Reading

TEST(Element, EmptiesItselfBeforeItReads) {
  CListener attributes, children;
  const CSmartPtr<CElement> element = Read("<a k='v'><b/>t</a>");
  element->GetAttributes()->AddEventListener(&attributes);
  element->GetChildElements()->AddEventListener(&children);
  element->FromXml("<c l='w'><d/></c>");
  EXPECT_EQ("<c l=\"w\"><d/></c>", Flat(element));
  const Log log{"remove 1",      "removed 0",       "change 0",
                "add element 0", "added element 1", "change 1"};
  EXPECT_EQ(log, attributes.own);
  EXPECT_EQ(log, children.own);
}

TEST(Element, StaysAsItWasWhenADocumentIsNotItsOwn) {
  const CSmartPtr<CElement> element(new CElement("a", "urn:a"));
  element->GetAttributes()->Add("k", "v", "");
  const std::string text = Flat(element);
  const CLoaded document("<o><b xmlns='urn:b'/><c xmlns='urn:a'/></o>");
  CXmlElement* const b = document.root()->GetFirstElement();
  EXPECT_EQ(b, CWalk::Read(element, document.root(), b));
  EXPECT_EQ(nullptr, CWalk::Read(element, document.root(), nullptr));
  EXPECT_EQ(text, Flat(element));
  EXPECT_EQ(nullptr, CWalk::Read(element, document.root(), b->GetNextSiblingElement()));
  EXPECT_EQ("<AA:c xmlns:AA=\"urn:a\"/>", Flat(element));
}

TEST(Element, GivesTheNextSiblingBehindTheOneThatItRead) {
  const CLoaded document("<o><a/><b/></o>");
  CXmlElement* const a = document.root()->GetFirstElement();
  const CSmartPtr<CElement> element(new CElement("e"));
  EXPECT_EQ(a->GetNextSiblingElement(), CWalk::Read(element, document.root(), a));
  EXPECT_EQ("a", element->GetName());
}

TEST(Element, FailsWithTheFailureOfTheDocument) {
  const CSmartPtr<CElement> element(new CElement("e"));
  EXPECT_QZ_THROW(CQzException, "XML String is empty!", element->FromXml(""));
  EXPECT_QZ_THROW(CQzException, "XML String is empty!",
                  element->FromXml(static_cast<const char*>(nullptr)));
  EXPECT_QZ_THROW(CQzException, "no element found at line 1", element->FromXml("<a>"));
  EXPECT_EQ("<e/>", Flat(element));
}

// Meant for whoever holds it as an object of any class.
TEST(Element, ReadsTheFirstChildThroughTheOperationsOfItsBase) {
  const CSmartPtr<CXmlObjectBase> object(new CElement("e"));
  object->FromXml("<o><a k='v'/><b/></o>");
  EXPECT_EQ("<a k=\"v\"/>", object->ToXml(false, false));
  object->FromXml("<o/>");
  EXPECT_EQ("<a k=\"v\"/>", object->ToXml(false, false));
}

// Depth

TEST(Element, GoesOfAnyDepth) {
  const CSmartPtr<CElement> half = MakeDeep(100000);
  CSmartPtr<CElement> whole = MakeDeep(100000);
  const CSmartPtr<CElementCol> children = whole->GetChildElements();
  whole = nullptr;
  EXPECT_EQ(1, children->GetCount());
  children->Clear();
  half->GetChildElements()->Remove(0);
  EXPECT_EQ("<e/>", Flat(half));
}

TEST(Element, IsClonedTestedAndWrittenAtAnyDepth) {
  const CSmartPtr<CElement> element = MakeDeep(100000);
  const CSmartPtr<CElement> clone = element->Clone();
  clone->SetNamespaceRestrictions("##local", "");
  std::string expected;
  for (int i = 1; i < 100000; ++i) expected += "<e>";
  expected += "<e/>";
  for (int i = 1; i < 100000; ++i) expected += "</e>";
  EXPECT_TRUE(expected == Flat(clone));
}

TEST(Element, ReadsAsDeepAsADocumentMayBe) {
  std::string xml;
  for (int i = 0; i < 1024; ++i) xml += "<e>";
  for (int i = 0; i < 1024; ++i) xml += "</e>";
  const CSmartPtr<CElement> element = Read(xml.c_str());
  int depth = 1;
  for (CSmartPtr<CElement> at = element; at->GetChildElements()->GetCount() == 1; ++depth) {
    at = at->GetChildElements()->Item(0);
  }
  EXPECT_EQ(1024, depth);
  EXPECT_QZ_THROW(CQzException, "The document exceeds the depth limit of 1024 elements",
                  element->FromXml(("<e>" + xml + "</e>").c_str()));
}

TEST(Element, TellsOfEachLevelOfADeepRefusal) {
  const CSmartPtr<CElement> element = MakeDeep(20000);
  CElement* at = element;
  while (at->GetChildElements()->GetCount() != 0) at = at->GetChildElements()->Item(0);
  at->SetNamespace("urn:a");
  int levels = 0;
  try {
    element->SetNamespaceRestrictions("##local", "");
  } catch (const CQzInvalidNamespaceException& e) {
    for (const CQzException* link = &e; link != nullptr; link = link->GetInnerException()) ++levels;
  }
  EXPECT_EQ(20001, levels);
}

}  // namespace
}  // namespace QzXmlLib16
