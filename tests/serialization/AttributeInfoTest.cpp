#include "qzxml/collections/AttributeCol.h"
#include "qzxml/serialization/AttributeInfo.h"
#include "qzxml/xml/XmlAttribute.h"
#include "qzxml/xml/XmlDocument.h"
#include "qzxml/xml/XmlElement.h"
#include "tests/support/GeneratedTable.h"
#include "tests/support/QzTest.h"

using namespace QzXmlLib16;
using namespace QzXmlLib16Data;
using namespace qztest;

namespace {

using Context = CSerializationContext;
using Object = CSmartPtr<CTableObject>;

struct Options {
  const char* uri = "";
  bool optional = true;
  const char* defaultValue = nullptr;
  ItemType type = ItemType_string;
  const char* format = nullptr;
  CPrimitiveRestrictions restrictions{};
};

CAttributeInfo* Primitive(const char* name, const Options& options = Options()) {
  return new CAttributeInfoPrimitive(name, options.uri, 0, options.optional, options.type,
                                     options.format, CWhitespaceUtils::WhitespaceRule_Collapse,
                                     options.restrictions, options.defaultValue);
}

CAttributeInfo* Enumeration(const char* name, const Options& options = Options()) {
  return new CAttributeInfoEnum(name, options.uri, 0, options.optional, &ColourToString,
                                &StringToColour, options.defaultValue);
}

CAttributeInfo* Any(int index, const char* restrictions, const char* target) {
  return new CAttributeInfoAny("any", "", index, true, restrictions, target, nullptr);
}

Unset::Make Wildcard(const char* restrictions = "##any") {
  return Unset::Collection(
      [=]() -> CXmlCollectionBase* { return new CAttributeCol("", restrictions, ""); });
}

CAttributeCol& AttributesIn(CTableObject& object, std::size_t index) {
  CXmlCollectionBase* const collection = object[index].GetXmlCollection();
  return static_cast<CAttributeCol&>(*collection);
}

Options Required() {
  Options options;
  options.optional = false;
  return options;
}

Options WithDefault(const char* text, bool optional = true) {
  Options options;
  options.defaultValue = text;
  options.optional = optional;
  return options;
}

// The class of one attribute, with its property at 0.
struct One {
  explicit One(CAttributeInfo* attribute, const Unset::Make& unset = Unset::Value) {
    tables.Add(attribute, unset);
    object = Object(new CTableObject(tables));
  }
  CTables tables;
  Object object;
};

}  // namespace

// --- Primitives

TEST(AttributeInfoPrimitive, IsReadAndWritten) {
  Options options;
  options.type = ItemType_i4;
  const One one(Primitive("a", options));
  one.object->FromXml("<r a=' 7 '/>");
  EXPECT_EQ(7, (*one.object)[0].GetI4());
  EXPECT_EQ("<r a=\"7\"/>", Text(*one.object));
}

TEST(AttributeInfoPrimitive, IsWrittenInItsNamespaceWithItsFormat) {
  Options options;
  options.uri = "urn:a";
  options.type = ItemType_r8;
  options.format = "%.1f";
  const One one(Primitive("a", options));
  (*one.object)[0].SetR8(0.25);
  EXPECT_EQ("<r xmlns:AA=\"urn:a\" AA:a=\"0.2\"/>", Text(*one.object));
}

TEST(AttributeInfoPrimitive, OptionalOneThatIsNotSetIsLeftOut) {
  const One one(Primitive("a"));
  EXPECT_EQ("<r/>", Text(*one.object));
}

TEST(AttributeInfoPrimitive, RequiredOneThatIsNotSetFailsWithTheTextOfTheVariant) {
  const One one(Primitive("a", Required()));
  EXPECT_QZ_THROW_FULL(CQzValidationException,
                       "Failed to convert the element [r] to XML\n"
                       "Failed to convert attributes to XML\n"
                       "Invalid Type 0 to convert to string",
                       "", Text(*one.object));
}

TEST(AttributeInfoPrimitive, ValueIsHeldAgainstTheFacetsWhenWritten) {
  Options options;
  options.type = ItemType_i4;
  options.restrictions =
      CPrimitiveRestrictions(nullptr, -1, -1, "10", nullptr, nullptr, nullptr, -1, -1, -1);
  const One one(Primitive("size", options));
  one.object->FromXml("<r size='9'/>");  // meant: reading does not look at facets
  EXPECT_QZ_THROW_FULL(CQzValidationException,
                       "Failed to convert the element [r] to XML\n"
                       "Failed to convert attributes to XML\n"
                       "Invalid Value for size [9]",
                       "", Text(*one.object));
  (*one.object)[0].SetI4(10);
  EXPECT_EQ("<r size=\"10\"/>", Text(*one.object));
}

TEST(AttributeInfoPrimitive, CheckRestrictionIsOpenToCallers) {
  const CAttributeInfoPrimitive info(
      "size", "", 0, true, ItemType_string, nullptr, CWhitespaceUtils::WhitespaceRule_None,
      CPrimitiveRestrictions(nullptr, 2, -1, nullptr, nullptr, nullptr, nullptr, -1, -1, -1),
      nullptr);
  QzVariant value;
  value.SetString("ab");
  info.CheckRestriction(value);
  value.SetString("a");
  EXPECT_QZ_THROW_FULL(CQzException, "Invalid Value for size [a].", "",
                       info.CheckRestriction(value));
}

TEST(AttributeInfoPrimitive, DefaultIsLeftOutOnlyWhenOptionalAndTheContextSaysSo) {
  struct Case {
    bool optional;
    bool leavesOut;
    const char* value;
    const char* text;
  };
  const Case cases[] = {{true, true, "d", "<r/>"},
                        {true, false, "d", "<r a=\"d\"/>"},
                        {false, true, "d", "<r a=\"d\"/>"},
                        {true, true, "e", "<r a=\"e\"/>"}};
  for (const Case& c : cases) {
    const Context context =
        With([&](Context& it) { it.SetNoOptionalAttributeDefaultOutput(c.leavesOut); });
    const One primitive(Primitive("a", WithDefault("d", c.optional)));
    primitive.object->Set(0, c.value);
    EXPECT_EQ(c.text, Text(*primitive.object, context));
  }
  const One withoutDefault(Primitive("a"));
  withoutDefault.object->Set(0, "");
  EXPECT_EQ("<r a=\"\"/>",
            Text(*withoutDefault.object, Ignoring(&Context::SetNoOptionalAttributeDefaultOutput)));
}

TEST(AttributeInfoPrimitive, DefaultIsNotFilledInOnReading) {
  const One one(Primitive("a", WithDefault("d")));
  one.object->FromXml("<r/>");
  EXPECT_EQ("(unset)", one.object->TextOf(0));
}

TEST(AttributeInfoPrimitive, MindsItsNamespaceEvenWhereNamespacesAreIgnored) {
  const One one(Primitive("a", Required()));
  const char kDocument[] = "<r xmlns:o='urn:o' o:a='1'/>";
  EXPECT_QZ_THROW_FULL(CQzException, "Unexpected Attribute found.\nPath: /r/o:@a", "/r/o:@a",
                       one.object->FromXml(kDocument, Ignoring(&Context::SetIgnoreNamespaces)));
  EXPECT_QZ_THROW_FULL(CQzException, "Unexpected Attribute found.\nPath: /r/o:@a", "/r/o:@a",
                       one.object->FromXml(kDocument));
}

TEST(AttributeInfoPrimitive, ValueThatDoesNotConvertFailsWithThePathOfTheElement) {
  Options options;
  options.type = ItemType_i4;
  const One one(Primitive("a", options));
  EXPECT_QZ_THROW_FULL(CQzValidationException,
                       "Failed to process the element.\nPath: /r\n"
                       "The value [x] can not be converted to a i4",
                       "/r", one.object->FromXml("<r a='x'/>"));
}

// --- Enumerations

TEST(AttributeInfoEnum, IsReadAndWritten) {
  const One one(Enumeration("a"));
  one.object->FromXml("<r a='blue'/>");
  EXPECT_EQ(ItemType_i4, (*one.object)[0].GetTypeAsEnum());
  EXPECT_EQ(2, (*one.object)[0].GetI4());
  EXPECT_EQ("<r a=\"blue\"/>", Text(*one.object));
}

TEST(AttributeInfoEnum, OptionalOneThatIsNotSetIsLeftOut) {
  const One one(Enumeration("a"));
  EXPECT_EQ("<r/>", Text(*one.object));
}

TEST(AttributeInfoEnum, RequiredOneThatIsNotSetFailsWithTheTextOfTheVariant) {
  const One one(Enumeration("a", Required()));
  EXPECT_QZ_THROW_FULL(CQzValidationException,
                       "Failed to convert the element [r] to XML\n"
                       "Failed to convert attributes to XML\n"
                       "Invalid Type 0 to convert to string",
                       "", Text(*one.object));
}

TEST(AttributeInfoEnum, DefaultIsLeftOutOnlyWhenOptionalAndTheContextSaysSo) {
  const Context leavesOut = Ignoring(&Context::SetNoOptionalAttributeDefaultOutput);
  const One optional(Enumeration("a", WithDefault("green")));
  (*optional.object)[0].SetI4(1);
  EXPECT_EQ("<r/>", Text(*optional.object, leavesOut));
  EXPECT_EQ("<r a=\"green\"/>", Text(*optional.object));
  (*optional.object)[0].SetI4(0);
  EXPECT_EQ("<r a=\"red\"/>", Text(*optional.object, leavesOut));
  const One required(Enumeration("a", WithDefault("green", false)));
  (*required.object)[0].SetI4(1);
  EXPECT_EQ("<r a=\"green\"/>", Text(*required.object, leavesOut));
}

TEST(AttributeInfoEnum, MatchesByItsLocalNameWhereNamespacesAreIgnored) {
  const One one(Enumeration("a"));
  const char kDocument[] = "<r xmlns:o='urn:o' o:a='green'/>";
  one.object->FromXml(kDocument, Ignoring(&Context::SetIgnoreNamespaces));
  EXPECT_EQ("1", one.object->TextOf(0));
  EXPECT_QZ_THROW_FULL(CQzException, "Unexpected Attribute found.\nPath: /r/o:@a", "/r/o:@a",
                       one.object->FromXml(kDocument));
}

TEST(AttributeInfoEnum, UnknownEnumeratorFailsWithTheTextOfTheClass) {
  const One one(Enumeration("a"));
  EXPECT_QZ_THROW_FULL(CQzValidationException,
                       "Failed to process the element.\nPath: /r\nNo such colour [pink].", "/r",
                       one.object->FromXml("<r a='pink'/>"));
}

// --- Wildcards

TEST(AttributeInfoAny, TakesWhatNoEntryBeforeItTook) {
  CTables tables;
  tables.Add(Primitive("a"), Unset::Value);
  tables.Add(Any(1, "##any", ""), Wildcard());
  const Object object(new CTableObject(tables));
  object->FromXml("<r xmlns:o='urn:o' x='1' a='2' o:y='3'/>");
  EXPECT_EQ("2", object->TextOf(0));
  CAttributeCol& others = AttributesIn(*object, 1);
  ASSERT_EQ(2, others.GetCount());
  EXPECT_EQ("x", others.Item(0)->GetName());
  EXPECT_EQ("1", others.Item(0)->GetValue());
  EXPECT_EQ("", others.Item(0)->GetNamespace());
  EXPECT_EQ("y", others.Item(1)->GetName());
  EXPECT_EQ("3", others.Item(1)->GetValue());
  EXPECT_EQ("urn:o", others.Item(1)->GetNamespace());
  EXPECT_EQ("<r a=\"2\" x=\"1\" xmlns:AA=\"urn:o\" AA:y=\"3\"/>", Text(*object));
}

TEST(AttributeInfoAny, InFrontOfAnEntryTakesWhatThatWouldTake) {
  CTables tables;
  tables.Add(Any(0, "##any", ""), Wildcard());
  tables.Add(new CAttributeInfoPrimitive("a", "", 1, true, ItemType_string, nullptr,
                                         CWhitespaceUtils::WhitespaceRule_None,
                                         CPrimitiveRestrictions(), nullptr),
             Unset::Value);
  const Object object(new CTableObject(tables));
  object->FromXml("<r a='1'/>");
  EXPECT_EQ("(unset)", object->TextOf(1));
  EXPECT_EQ(1, AttributesIn(*object, 0).GetCount());
}

TEST(AttributeInfoAny, LeavesNamespacesOutsideItsRestrictions) {
  struct Case {
    const char* restrictions;
    const char* target;
    const char* taken;  // of the attributes plain, o:other and t:target
  };
  const Case cases[] = {{"##any", "urn:t", "plain other target "},
                        {"##other", "urn:t", "plain other "},
                        {"##local", "urn:t", "plain "},
                        {"##targetNamespace", "urn:t", "target "},
                        {"urn:o", "urn:t", "plain other "}};
  for (const Case& c : cases) {
    const One one(Any(0, c.restrictions, c.target), Wildcard());
    one.object->FromXml("<r xmlns:o='urn:o' xmlns:t='urn:t' plain='1' o:other='2' t:target='3'/>",
                        Ignoring(&Context::SetIgnoreUnknownAttributes));
    std::string taken;
    for (const CSmartPtr<CAttribute> attribute : AttributesIn(*one.object, 0)) {
      taken += attribute->GetName() + " ";
    }
    EXPECT_EQ(c.taken, taken) << c.restrictions;
  }
}

TEST(AttributeInfoAny, PropertyOfAnotherClassFails) {
  const One one(Any(0, "##any", ""), Unset::Collection([]() -> CXmlCollectionBase* {
                  return new CTextCol("a", "", 0, -1);
                }));
  EXPECT_QZ_THROW_FULL(
      CQzValidationException,
      "Failed to process the element.\nPath: /r\n"
      "Serialization Data Error : The collection should be a CAttributeCol, it was not!",
      "/r", one.object->FromXml("<r a='1'/>"));
}

TEST(AttributeInfoAny, RefusalOfTheCollectionIsPassedOn) {
  const One one(Any(0, "##any", ""), Wildcard("##local"));
  EXPECT_QZ_THROW_FULL(CQzValidationException,
                       "Failed to process the element.\nPath: /r\n"
                       "Invalid namespace [urn:o]. The namespace must be one of [##local] where "
                       "the target namespace is [].",
                       "/r", one.object->FromXml("<r xmlns:o='urn:o' o:a='1'/>"));
}

TEST(AttributeInfoAny, IsNeverMissing) {
  CTables tables;
  tables.Add(new CAttributeInfoAny("any", "", 0, false, "##any", "", nullptr), Wildcard());
  const Object object(new CTableObject(tables));
  object->FromXml("<r/>");
  EXPECT_EQ(0, AttributesIn(*object, 0).GetCount());
}

// --- What they share

TEST(AttributeInfo, RequiredOneThatIsMissingFailsWithoutAPathOfItsOwn) {
  for (CAttributeInfo* attribute : {Primitive("a", Required()), Enumeration("a", Required())}) {
    const One one(attribute);
    EXPECT_QZ_THROW_FULL(CQzValidationException, "Failed to find the required Attribute [a].", "",
                         attribute->Validate(Context(), false));
    attribute->Validate(Context(), true);
    EXPECT_QZ_THROW_FULL(CQzValidationException,
                         "Failed to process the element.\nPath: /r\n"
                         "Failed to find the required Attribute [a].",
                         "/r", one.object->FromXml("<r/>"));
  }
}

TEST(AttributeInfo, OptionalOneMayBeMissing) {
  for (CAttributeInfo* attribute : {Primitive("a"), Enumeration("a"), Any(0, "##any", "")}) {
    const One one(attribute);
    attribute->Validate(Context(), false);
  }
}

TEST(AttributeInfo, FailureOfAPropertyThatIsReadNamesTheAttribute) {
  for (CAttributeInfo* attribute : {Primitive("a"), Enumeration("a")}) {
    const One one(attribute);
    one.object->failsToGive = "Out of order.";
    EXPECT_QZ_THROW_FULL(CQzValidationException,
                         "Failed to convert the element [r] to XML\n"
                         "Failed to convert attributes to XML\n"
                         "Failed to get the property value for [a].\n"
                         "Out of order.",
                         "", Text(*one.object));
  }
  const One any(Any(0, "##any", ""), Wildcard());
  any.object->failsToGive = "Out of order.";
  EXPECT_QZ_THROW_FULL(CQzValidationException,
                       "Failed to process the element.\nPath: /r\n"
                       "Failed to get the property value for [any].\n"
                       "Out of order.",
                       "/r", any.object->FromXml("<r a='1'/>"));
}

TEST(AttributeInfo, FailureOfAPropertyThatIsSetShowsTheValueAndThePath) {
  for (CAttributeInfo* attribute : {Primitive("a"), Enumeration("a")}) {
    const One one(attribute);
    one.object->failsToTake = "Out of order.";
    EXPECT_QZ_THROW_FULL(CQzException,
                         "Failed to set the property value [green].\nPath: /r/@a\nOut of order.",
                         "/r/@a", one.object->FromXml("<r a='green'/>"));
  }
}

TEST(AttributeInfo, CopiesTheTextsThatItIsGiven) {
  std::string name = "a";
  const One one(Primitive(name.c_str()));
  name = "b";
  one.object->FromXml("<r a='1'/>");
  EXPECT_EQ("1", one.object->TextOf(0));
}

namespace {

// What a class of attributes made outside the library may use.
class COpenInfo : public CAttributeInfoEnum {
 public:
  COpenInfo() : CAttributeInfoEnum("a", "urn:a", 0, true, nullptr, nullptr, nullptr) {}
  using CAttributeInfo::GetTargetNamespace;
  using CAttributeInfo::IsNamespaceValid;
  using CAttributeInfo::IsThisAttribute;
  using CAttributeInfo::TestNamespace;
};

}  // namespace

TEST(AttributeInfo, IsThisAttributeComparesNameAndNamespace) {
  COpenInfo info;
  CXmlDocument document;
  document.LoadXml("<r xmlns:a='urn:a' xmlns:o='urn:o' a:a='1' o:a='2' a='3' a:b='4'/>");
  const std::vector<CXmlAttribute*>& all = document.GetDocumentElement()->GetAttributes();
  ASSERT_EQ(4U, all.size());
  const bool expected[][2] = {{true, true}, {false, true}, {false, true}, {false, false}};
  const Context ignoring = Ignoring(&Context::SetIgnoreNamespaces);
  for (std::size_t i = 0; i < all.size(); ++i) {
    EXPECT_EQ(expected[i][0], info.IsThisAttribute(Context(), all[i])) << all[i]->GetXPath();
    EXPECT_EQ(expected[i][1], info.IsThisAttribute(ignoring, all[i])) << all[i]->GetXPath();
  }
  EXPECT_FALSE(info.IsThisAttribute(Context(), nullptr));
  EXPECT_FALSE(info.IsThisAttribute(ignoring, nullptr));
}

TEST(AttributeInfo, RulesOfNamespacesAreThoseOfTheLibrary) {
  EXPECT_TRUE(COpenInfo::IsNamespaceValid("urn:a", "##any", ""));
  EXPECT_FALSE(COpenInfo::IsNamespaceValid("urn:a", "##other", "urn:a"));
  COpenInfo::TestNamespace("urn:a", "##any", "");
  EXPECT_QZ_THROW_FULL(CQzInvalidNamespaceException,
                       "Invalid namespace [urn:a]. The namespace must be one of [##other] where "
                       "the target namespace is [urn:a].",
                       "", COpenInfo::TestNamespace("urn:a", "##other", "urn:a"));
  CTables tables;
  tables.uri = "urn:t";
  const Object object(new CTableObject(tables));
  EXPECT_EQ("urn:t", COpenInfo::GetTargetNamespace(object));
}
