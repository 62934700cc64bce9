#include "qzxml/serialization/ElementInfo.h"
#include "qzxml/serialization/ElementInfoSeq.h"
#include "qzxml/xml/XmlDocument.h"
#include "qzxml/xml/XmlElement.h"
#include "tests/support/GeneratedTable.h"
#include "tests/support/QzTest.h"

// What the members of all model groups share. The members themselves have their own files.

using namespace QzXmlLib16;
using namespace QzXmlLib16Data;
using namespace qztest;

namespace {

using Context = CSerializationContext;
using Object = CSmartPtr<CTableObject>;

const char kXsi[] = "http://www.w3.org/2001/XMLSchema-instance";

// What a class of members made outside the library may use.
class COpenInfo : public CElementInfoSeqPrimOpt {
 public:
  COpenInfo()
      : CElementInfoSeqPrimOpt("a", "urn:a", 3, false, ItemType_string, nullptr,
                               CWhitespaceUtils::WhitespaceRule_None, CPrimitiveRestrictions(),
                               nullptr) {}
  using CElementInfo::GetAnyDefaultNamespace;
  using CElementInfo::GetElementName;
  using CElementInfo::GetElementNamespace;
  using CElementInfo::GetPropertyIndex;
  using CElementInfo::IsThisElement;
};

// The class of one member, with its property at 0.
struct One {
  explicit One(CElementInfo* itsMember, const Unset::Make& unset = Unset::Value)
      : member(itsMember) {
    tables.Add(member, unset);
    object = Object(new CTableObject(tables));
  }
  CElementInfo* member;
  CTables tables;
  Object object;
};

PrimOptions WithDefault(const char* text) {
  PrimOptions options;
  options.defaultValue = text;
  return options;
}

PrimOptions Nillable() {
  PrimOptions options;
  options.nillable = true;
  return options;
}

PrimOptions AtLeast(const char* bound) {
  PrimOptions options;
  options.type = ItemType_i4;
  options.restrictions =
      CPrimitiveRestrictions(nullptr, -1, -1, bound, nullptr, nullptr, nullptr, -1, -1, -1);
  return options;
}

// A document of one element "a" with these attributes and text.
std::string Document(const std::string& attributes, const std::string& text) {
  return std::string("<r xmlns:i='") + kXsi + "'><a " + attributes + ">" + text + "</a></r>";
}

}  // namespace

// --- The element

TEST(ElementInfo, GivesBackWhatItWasMadeWith) {
  const COpenInfo info;
  EXPECT_EQ("a", info.GetElementName());
  EXPECT_EQ("urn:a", info.GetElementNamespace());
  EXPECT_EQ(3, info.GetPropertyIndex());
}

TEST(ElementInfo, IsThisElementComparesNameAndNamespace) {
  const COpenInfo info;
  CXmlDocument document;
  document.LoadXml("<r><a xmlns='urn:a'/><a/><A xmlns='urn:a'/><a xmlns='URN:A'/></r>");
  const bool expected[][2] = {{true, true}, {false, true}, {false, false}, {false, true}};
  const Context ignoring = Ignoring(&Context::SetIgnoreNamespaces);
  const Context without = With([](Context& it) { it.SetSchemaType(SchemaType_NoNamespaces); });
  std::size_t i = 0;
  for (const CXmlElement* element = document.GetDocumentElement()->GetFirstElement();
       element != nullptr; element = element->GetNextSiblingElement(), ++i) {
    EXPECT_EQ(expected[i][0], info.IsThisElement(Context(), element)) << i;
    EXPECT_EQ(expected[i][1], info.IsThisElement(ignoring, element)) << i;
    EXPECT_EQ(expected[i][1], info.IsThisElement(without, element)) << i;
  }
  EXPECT_EQ(4U, i);
}

TEST(ElementInfo, NoElementIsNotThisElement) {
  const COpenInfo info;
  EXPECT_FALSE(info.IsThisElement(Context(), nullptr));
  EXPECT_FALSE(info.IsThisElement(Ignoring(&Context::SetIgnoreNamespaces), nullptr));
}

TEST(ElementInfo, CopiesTheTextsThatItIsGiven) {
  std::string name = "a";
  const One one(Prim<CElementInfoSeqPrimMnd>(name.c_str(), 0));
  name = "b";
  one.object->FromXml("<r><a>1</a></r>");
  EXPECT_EQ("1", one.object->TextOf(0));
}

TEST(ElementInfo, NamespaceOfANewOpenElementFollowsTheFirstTokenOfItsRestriction) {
  struct Case {
    const char* restrictions;
    const char* parent;
    const char* expected;
  };
  const Case cases[] = {{"##any", "urn:p", "urn:p"},
                        {"##any", "", ""},
                        {"##other", "", "DefaultNamespace"},
                        {"##other", "urn:p", ""},
                        {"##local", "urn:p", ""},
                        {"##targetNamespace", "urn:p", "urn:t"},
                        {"##local urn:x", "urn:p", ""},
                        {"##any urn:x", "urn:p", "urn:p"},
                        {"##targetNamespace ##local", "urn:p", "urn:t"},
                        {"##other urn:x", "", "DefaultNamespace"},
                        {"urn:x", "urn:p", ""},
                        {"urn:x urn:y", "urn:p", ""},
                        {"urn:x ##any", "urn:p", ""},
                        {" ##any", "urn:p", ""},
                        {"## ", "urn:p", ""},
                        {"##", "urn:p", ""},
                        {"##none", "urn:p", ""},
                        {"", "urn:p", ""},
                        {nullptr, "urn:p", ""}};
  for (const Case& c : cases) {
    EXPECT_EQ(c.expected, COpenInfo::GetAnyDefaultNamespace(c.restrictions, c.parent, "urn:t"))
        << (c.restrictions != nullptr ? c.restrictions : "(null)") << " in " << c.parent;
  }
}

// --- What the base answers

TEST(ElementInfo, ValidateIsForTheMembersOfAnAllAlone) {
  const One one(Prim<CElementInfoSeqPrimOpt>("a", 0));
  EXPECT_QZ_THROW_FULL(CQzException, "Not implemented, should never be called", "",
                       one.member->Validate(Context(), one.object, true, true));
}

TEST(ElementInfo, FacetsAreForPrimitivesAlone) {
  QzVariant value;
  value.SetI4(7);
  const One primitive(Prim<CElementInfoSeqPrimOpt>("size", 0, AtLeast("8")));
  EXPECT_QZ_THROW_FULL(CQzException, "Invalid Value for size [7]", "",
                       primitive.member->CheckRestriction(value));
  const One enumeration(Enum<CElementInfoSeqEnumOpt>("a", 0));
  EXPECT_QZ_THROW_FULL(CQzException, "Cannot CheckRestriction for type: i4", "",
                       enumeration.member->CheckRestriction(value));
  const One collection(new CElementInfoSeqPrimCol("a", "", 0));
  EXPECT_QZ_THROW_FULL(CQzException, "Cannot CheckRestriction for type: i4", "",
                       collection.member->CheckRestriction(value));
  EXPECT_QZ_THROW_FULL(CQzException, "Invalid Type 0", "",
                       collection.member->CheckRestriction(QzVariant()));
}

// --- The property

TEST(ElementInfo, FailureOfAPropertyThatIsReadNamesTheElement) {
  const One one(Prim<CElementInfoSeqPrimOpt>("a", 0));
  one.object->failsToGive = "Out of order.";
  EXPECT_QZ_THROW_FULL(CQzValidationException,
                       "Failed to convert the element [r] to XML\n"
                       "Failed to get the property value for [a].\n"
                       "Out of order.",
                       "", Text(*one.object));
}

TEST(ElementInfo, FailureOfAPropertyThatIsSetHasThePathOfTheElement) {
  const One one(Prim<CElementInfoSeqPrimOpt>("a", 0));
  one.object->failsToTake = "Out of order.";
  EXPECT_QZ_THROW_FULL(CQzException, "Failed to set the property value.\nPath: /r/a\nOut of order.",
                       "/r/a", one.object->FromXml("<r><a>1</a></r>"));
}

// --- Primitives, written

TEST(ElementInfo, PrimitiveIsWrittenWithItsFormat) {
  PrimOptions options;
  options.type = ItemType_r8;
  options.format = "%.2f";
  options.uri = "urn:a";
  const One one(Prim<CElementInfoSeqPrimOpt>("a", 0, options));
  (*one.object)[0].SetR8(0.5);
  EXPECT_EQ("<r><AA:a xmlns:AA=\"urn:a\">0.50</AA:a></r>", Text(*one.object));
}

TEST(ElementInfo, PrimitiveThatIsNotSetIsNotWritten) {
  const One one(Prim<CElementInfoSeqPrimOpt>("a", 0));
  EXPECT_EQ("<r/>", Text(*one.object));
}

TEST(ElementInfo, NilIsWrittenEvenForAMemberThatCannotBeNil) {
  const std::string nil = std::string("<r><a xmlns:AA=\"") + kXsi + "\" AA:nil=\"true\"/></r>";
  const One primitive(Prim<CElementInfoSeqPrimOpt>("a", 0));
  (*primitive.object)[0].SetNil();
  EXPECT_EQ(nil, Text(*primitive.object));
  const One enumeration(Enum<CElementInfoSeqEnumOpt>("a", 0));
  (*enumeration.object)[0].SetNil();
  EXPECT_EQ(nil, Text(*enumeration.object));
}

TEST(ElementInfo, DefaultIsWrittenOnlyWhenTheContextSaysSo) {
  const Context writing = Ignoring(&Context::SetWriteDefaultElementValues);
  const One primitive(Prim<CElementInfoSeqPrimOpt>("a", 0, WithDefault("d")));
  primitive.object->Set(0, "d");
  EXPECT_EQ("<r><a/></r>", Text(*primitive.object));
  EXPECT_EQ("<r><a>d</a></r>", Text(*primitive.object, writing));
  primitive.object->Set(0, "e");
  EXPECT_EQ("<r><a>e</a></r>", Text(*primitive.object));
  const One enumeration(Enum<CElementInfoSeqEnumOpt>("a", 0, false, "green"));
  (*enumeration.object)[0].SetI4(1);
  EXPECT_EQ("<r><a/></r>", Text(*enumeration.object));
  EXPECT_EQ("<r><a>green</a></r>", Text(*enumeration.object, writing));
  (*enumeration.object)[0].SetI4(2);
  EXPECT_EQ("<r><a>blue</a></r>", Text(*enumeration.object));
}

TEST(ElementInfo, DefaultMayBreakAFacetAndNothingElse) {
  PrimOptions options = AtLeast("10");
  options.defaultValue = "9";
  const One one(Prim<CElementInfoSeqPrimOpt>("a", 0, options));
  (*one.object)[0].SetI4(9);
  EXPECT_EQ("<r><a/></r>", Text(*one.object));
  (*one.object)[0].SetI4(8);
  EXPECT_QZ_THROW_FULL(CQzValidationException,
                       "Failed to convert the element [r] to XML\nInvalid Value for a [8]", "",
                       Text(*one.object));
}

// --- Primitives and enumerations, read

TEST(ElementInfo, EmptyTextTakesTheDefault) {
  const One primitive(Prim<CElementInfoSeqPrimOpt>("a", 0, WithDefault("d")));
  primitive.object->FromXml("<r><a/></r>");
  EXPECT_EQ("d", primitive.object->TextOf(0));
  primitive.object->FromXml("<r><a>e</a></r>");
  EXPECT_EQ("e", primitive.object->TextOf(0));
  const One enumeration(Enum<CElementInfoSeqEnumOpt>("a", 0, false, "green"));
  enumeration.object->FromXml("<r><a/></r>");
  EXPECT_EQ("1", enumeration.object->TextOf(0));
}

TEST(ElementInfo, EmptyTextWithoutADefaultIsConverted) {
  const One text(Prim<CElementInfoSeqPrimOpt>("a", 0));
  text.object->FromXml("<r><a/></r>");
  EXPECT_EQ("", text.object->TextOf(0));
  const One number(Prim<CElementInfoSeqPrimOpt>("a", 0, AtLeast("0")));
  EXPECT_QZ_THROW_FULL(CQzValidationException,
                       "Failed to process the element.\nPath: /r\n"
                       "The value [] can not be converted to a i4",
                       "/r", number.object->FromXml("<r><a/></r>"));
  const One enumeration(Enum<CElementInfoSeqEnumOpt>("a", 0));
  EXPECT_QZ_THROW_FULL(CQzValidationException,
                       "Failed to process the element.\nPath: /r\nNo such colour [].", "/r",
                       enumeration.object->FromXml("<r><a/></r>"));
}

TEST(ElementInfo, TextIsReadByTheWhitespaceRule) {
  PrimOptions options;
  options.rule = CWhitespaceUtils::WhitespaceRule_Collapse;
  const One one(Prim<CElementInfoSeqPrimOpt>("a", 0, options));
  one.object->FromXml("<r><a>  b \n c </a></r>");
  EXPECT_EQ("b c", one.object->TextOf(0));
}

TEST(ElementInfo, NilLeavesThePropertyAsInitLeftIt) {
  for (const bool isEnum : {false, true}) {
    for (const char* value : {"true", "1", "TRUE"}) {
      CElementInfo* const member =
          isEnum ? static_cast<CElementInfo*>(Enum<CElementInfoSeqEnumOpt>("a", 0, true))
                 : Prim<CElementInfoSeqPrimOpt>("a", 0, Nillable());
      const One one(member);
      one.object->FromXml(Document(std::string("i:nil='") + value + "'", "text").c_str());
      EXPECT_EQ("(unset)", one.object->TextOf(0)) << value;
      EXPECT_EQ("<r/>", Text(*one.object)) << value;
    }
  }
}

TEST(ElementInfo, FalseNilIsAcceptedOnAMemberThatCannotBeNil) {
  for (const char* value : {"false", "0", "False"}) {
    const One one(Prim<CElementInfoSeqPrimOpt>("a", 0));
    one.object->FromXml(Document(std::string("i:nil='") + value + "'", "text").c_str());
    EXPECT_EQ("text", one.object->TextOf(0)) << value;
  }
}

TEST(ElementInfo, AnyOtherNilOnAMemberThatCannotBeNilIsMisplaced) {
  for (const char* value : {"true", "1", "yes", ""}) {
    const One one(Prim<CElementInfoSeqPrimOpt>("a", 0));
    EXPECT_QZ_THROW_FULL(
        CQzException, "Invalid use of 'nil' attribute in non-nillable element.\nPath: /r/a", "/r/a",
        one.object->FromXml(Document(std::string("i:nil='") + value + "'", "text").c_str()));
  }
}

TEST(ElementInfo, UnknownValueOfNilIsRefused) {
  const One primitive(Prim<CElementInfoSeqPrimOpt>("a", 0, Nillable()));
  const One enumeration(Enum<CElementInfoSeqEnumOpt>("a", 0, true));
  for (const One* one : {&primitive, &enumeration}) {
    EXPECT_QZ_THROW_FULL(
        CQzException, "Unexpected Value [yes] for 'nil' Attribute found.\nPath: /r/a/i:@nil",
        "/r/a/i:@nil", one->object->FromXml(Document("i:nil='yes'", "red").c_str()));
  }
}

TEST(ElementInfo, AttributesOfAPrimitiveFailUnlessTheyAreIgnored) {
  const Context ignoring = Ignoring(&Context::SetIgnoreUnknownAttributes);
  const One primitive(Prim<CElementInfoSeqPrimOpt>("a", 0));
  const One enumeration(Enum<CElementInfoSeqEnumOpt>("a", 0));
  for (const One* one : {&primitive, &enumeration}) {
    const std::string document = Document("b='1'", "red");
    EXPECT_QZ_THROW_FULL(CQzException, "Unexpected Attribute found.\nPath: /r/a/@b", "/r/a/@b",
                         one->object->FromXml(document.c_str()));
    one->object->FromXml(document.c_str(), ignoring);
    EXPECT_NE("(unset)", one->object->TextOf(0));
    // Meant: those of the schema machinery are no exception here.
    EXPECT_QZ_THROW_FULL(CQzException, "Unexpected Attribute found.\nPath: /r/a/i:@type",
                         "/r/a/i:@type",
                         one->object->FromXml(Document("i:type='x'", "red").c_str()));
  }
}

TEST(ElementInfo, AttributesAreTestedInTheOrderOfTheDocument) {
  const One one(Prim<CElementInfoSeqPrimOpt>("a", 0));
  EXPECT_QZ_THROW_FULL(CQzException, "Unexpected Attribute found.\nPath: /r/a/@b", "/r/a/@b",
                       one.object->FromXml(Document("b='1' i:nil='true'", "").c_str()));
  EXPECT_QZ_THROW_FULL(CQzException,
                       "Invalid use of 'nil' attribute in non-nillable element.\nPath: /r/a",
                       "/r/a", one.object->FromXml(Document("i:nil='true' b='1'", "").c_str()));
}

// --- Objects and collections

TEST(ElementInfo, CollectionThatIsNotThereIsAMistakeOfTheClass) {
  const One one(new CElementInfoSeqCol("a", "", 0),
                Unset::Collection([]() -> CXmlCollectionBase* { return nullptr; }));
#if defined(QZXML_ASSERTIONS)
  EXPECT_QZ_ASSERT("m_type == ItemType_XmlCollection && m_pXmlCol != 0", Text(*one.object));
#else
  EXPECT_QZ_THROW_FULL(CQzValidationException,
                       "Failed to convert the element [r] to XML\n"
                       "The Property [a] is mandatory, it may not be NULL",
                       "", Text(*one.object));
  EXPECT_QZ_THROW_FULL(CQzValidationException,
                       "Failed to process the element.\nPath: /r\n"
                       "The Property [a] is mandatory, it may not be NULL",
                       "/r", one.object->FromXml("<r><a/></r>"));
#endif
}

TEST(ElementInfo, ObjectThatIsNotThereIsAMistakeOfTheClass) {
  const One one(
      new CElementInfoSeqClsMnd("a", "", 0, XmlElementType_Element, &MakeTableObject, 0, true),
      Unset::Object);
#if defined(QZXML_ASSERTIONS)
  EXPECT_QZ_ASSERT("p != 0", one.object->FromXml("<r><a/></r>"));
#else
  EXPECT_QZ_THROW_FULL(CQzValidationException,
                       "Failed to process the element.\nPath: /r\n"
                       "The Property [a] is mandatory, it may not be NULL",
                       "/r", one.object->FromXml("<r><a/></r>"));
#endif
}
