#include <cstring>

#include "qzxml/collections/AttributeCol.h"
#include "qzxml/serialization/AttributeInfo.h"
#include "qzxml/serialization/ElementInfoSeq.h"
#include "tests/support/ClassTrial.h"
#include "tests/support/MemberTrial.h"
#include "tests/support/QzTest.h"
#include "tests/support/RecordingObject.h"

// Attributes of whole classes, in tables of cases: every kind and occurrence, present, absent and
// in another namespace, defaults, white space, wildcards, and those of children without a tag.

using namespace QzXmlLib16;
using namespace QzXmlLib16Data;
using namespace qztest;

namespace {

using Context = CSerializationContext;
using Rule = CWhitespaceUtils;

const char kUnexpected[] = "CQzException: Unexpected Attribute found.\nPath: /r/";
const char kNotConverted[] = "CQzValidationException: Failed to process the element.\nPath: /r\n";
const char kNotWritten[] =
    "CQzValidationException: Failed to convert the element [r] to XML\n"
    "Failed to convert attributes to XML\n";

std::string Required(const char* name) {
  return std::string(kNotConverted) + "Failed to find the required Attribute [" + name + "].";
}

struct Options {
  ItemType type = ItemType_string;
  bool optional = true;
  const char* uri = "";
  const char* defaultValue = nullptr;
  const char* format = nullptr;
  CPrimitiveRestrictions restrictions{};
  Rule::WhitespaceRule rule = Rule::WhitespaceRule_None;
};

Options OfType(ItemType type) {
  Options options;
  options.type = type;
  return options;
}

Options In(const char* uri, bool optional = true) {
  Options options;
  options.uri = uri;
  options.optional = optional;
  return options;
}

CAttributeInfo* Primitive(const char* name, int index, const Options& options = Options()) {
  return new CAttributeInfoPrimitive(name, options.uri, index, options.optional, options.type,
                                     options.format, options.rule, options.restrictions,
                                     options.defaultValue);
}

CAttributeInfo* Colour(const char* name, int index, const Options& options = Options()) {
  return new CAttributeInfoEnum(name, options.uri, index, options.optional, &ColourToString,
                                &StringToColour, options.defaultValue);
}

CAttributeInfo* Any(int index, const char* restriction, const char* target = "") {
  return new CAttributeInfoAny("any", "", index, false, restriction, target, nullptr);
}

Unset::Make Wildcard(const char* restriction = "##any", const char* target = "") {
  return Unset::Collection(
      [=]() -> CXmlCollectionBase* { return new CAttributeCol("", restriction, target); });
}

// The class of one attribute on trial: it reads an <r> with these attributes.
class COne {
 public:
  explicit COne(CAttributeInfo* attribute, const Unset::Make& unset = Unset::Value)
      : m_trial(m_tables) {
    m_tables.Add(attribute, unset);
    m_trial.Renew();
  }
  CTables& tables() { return m_tables; }
  CTableObject& object() { return m_trial.object(); }

  // What it writes of what it read, or the failure.
  std::string Read(const char* attributes, const Context& context = {}) {
    m_trial.rootAttributes = std::string(" ") + attributes;
    const std::string read = m_trial.Read("", context);
    return read.substr(read.rfind("at end, ", 0) == 0 ? 8 : 0);
  }
  std::string Write(const Context& context = {}) const { return m_trial.Write(context); }

 private:
  CTables m_tables;
  CClassTrial m_trial;
};

}  // namespace

// --- Kinds

TEST(AttributeInfoGrid, EveryKindIsReadAndWritten) {
  struct Case {
    ItemType type;
    const char* text;
    const char* written;  // null for the same
    const char* bad;
    const char* failure;
  };
  const Case cases[] = {
      {ItemType_hexBinary, "1234", nullptr, nullptr, nullptr},
      {ItemType_base64Binary, "QUJD", nullptr, nullptr, nullptr},
      {ItemType_i1, "-128", nullptr, "128", "The value [128] is to large to fit in a i1"},
      {ItemType_i2, "-7", nullptr, "40000", "The value [40000] is to large to fit in a i2"},
      {ItemType_i4, "+7", "7", "x", "The value [x] can not be converted to a i4"},
      {ItemType_i8, "-9223372036854775808", nullptr, "7x",
       "The value [7x] can not be converted to a i8"},
      {ItemType_ui1, "255", nullptr, "256", "The value [256] is to large to fit in a ui1"},
      {ItemType_ui2, "65535", nullptr, "65536", "The value [65536] is to large to fit in a ui2"},
      {ItemType_ui4, "-1", "4294967295", "", "The value [] can not be converted to a ui4"},
      {ItemType_ui8, "18446744073709551615", nullptr, "18446744073709551616",
       "The value [18446744073709551616] is to large to fit in a ui8"},
      {ItemType_r4, "0.50", "0.5", "inf", "The value [inf] can not be converted to a r4"},
      {ItemType_r8, "1e20", "1e+020", "x", "The value [x] can not be converted to a r8"},
      {ItemType_string, "a &lt; b", nullptr, nullptr, nullptr},
      {ItemType_boolean, "1", "true", "2",
       "A Boolean Value read from an XML document was invalid [2]. Valid values are 'true', "
       "'false', '1', or '0'"}};
  for (const Case& c : cases) {
    COne one(Primitive("a", 0, OfType(c.type)));
    const std::string written = c.written != nullptr ? c.written : c.text;
    EXPECT_EQ("<r a=\"" + written + "\"/>", one.Read(("a='" + std::string(c.text) + "'").c_str()));
    EXPECT_EQ(c.type, one.object()[0].GetTypeAsEnum());
    if (c.bad == nullptr) continue;
    EXPECT_EQ(kNotConverted + std::string(c.failure),
              one.Read(("a='" + std::string(c.bad) + "'").c_str()));
  }
}

TEST(AttributeInfoGrid, CharIsReadAndNotWritten) {
  COne one(Primitive("a", 0, OfType(ItemType_char)));
  // Meant: the facet test knows no char.
  EXPECT_EQ(kNotWritten + std::string("Unknown type [char]."), one.Read("a='x'"));
  EXPECT_EQ('x', one.object()[0].GetChar());
  EXPECT_EQ(std::string(kNotConverted) +
                "The value [xy] can not be a char as it is either empty of greater than 1 char "
                "long",
            one.Read("a='xy'"));
}

TEST(AttributeInfoGrid, WriterIsToldTheKindOfTheValue) {
  class CKindWriter : public CRecordingWriter {
   public:
    void WriteAttribute(const std::string& name, const std::string& uri, const std::string& value,
                        ItemType type) override {
      calls.push_back(name + "|" + uri + "|" + value + "|" + std::to_string(type));
    }
  };
  CTables tables;
  CAttributeInfo* const attributes[] = {
      Primitive("i", 0, OfType(ItemType_i4)), Primitive("s", 1, In("urn:o")),
      Primitive("b", 2, OfType(ItemType_boolean)), Colour("c", 3), Any(4, "##any")};
  for (CAttributeInfo* attribute : attributes) {
    tables.Add(attribute, attribute == attributes[4] ? Wildcard() : Unset::Value);
  }
  const CSmartPtr<CTableObject> object(new CTableObject(tables));
  object->FromXml("<r xmlns:o='urn:o' i='7' o:s='t' b='0' c='blue' w='1'/>");
  CKindWriter writer;
  for (CAttributeInfo* attribute : attributes) {
    attribute->AttributeToXml(Context(), object, &writer);
  }
  EXPECT_EQ(
      (std::vector<std::string>{"i||7|5", "s|urn:o|t|23", "b||false|24", "c||blue|23", "w||1|23"}),
      writer.calls);
}

// --- Occurrence and namespace

TEST(AttributeInfoGrid, OneOfItsNameAndNamespaceIsTaken) {
  struct Case {
    const char* uri;
    bool optional;
    const char* attributes;
    std::string read;
  };
  const std::string unexpected = kUnexpected;
  const std::string inO = "<r xmlns:AA=\"urn:o\" AA:a=\"red\"/>";
  const Case cases[] = {{"", true, "a='red'", "<r a=\"red\"/>"},
                        {"", false, "a='red'", "<r a=\"red\"/>"},
                        {"", true, "", "<r/>"},
                        {"", false, "", Required("a")},
                        {"", true, "o:a='red'", unexpected + "o:@a"},
                        {"", false, "o:a='red'", unexpected + "o:@a"},
                        {"", true, "A='red'", unexpected + "@A"},
                        {"", true, "a='red' o:a='blue'", unexpected + "o:@a"},
                        {"urn:o", true, "o:a='red'", inO},
                        {"urn:o", false, "o:a='red'", inO},
                        {"urn:o", true, "a='red'", unexpected + "@a"},
                        {"urn:o", false, "a='red'", unexpected + "@a"},
                        {"urn:o", false, "", Required("a")}};
  for (const Case& c : cases) {
    COne primitive(Primitive("a", 0, In(c.uri, c.optional)));
    EXPECT_EQ(c.read, primitive.Read(c.attributes)) << c.attributes;
    COne enumeration(Colour("a", 0, In(c.uri, c.optional)));
    EXPECT_EQ(c.read, enumeration.Read(c.attributes)) << c.attributes;
  }
}

TEST(AttributeInfoGrid, AttributeThatIsIgnoredIsStillMissing) {
  const Context ignoring = Ignoring(&Context::SetIgnoreUnknownAttributes);
  for (CAttributeInfo* attribute :
       {Primitive("a", 0, In("", false)), Colour("a", 0, In("", false))}) {
    COne one(attribute);
    EXPECT_EQ(Required("a"), one.Read("o:a='red'", ignoring));
    EXPECT_EQ("<r a=\"blue\"/>", one.Read("o:a='red' a='blue' z='1'", ignoring));
  }
}

TEST(AttributeInfoGrid, IgnoredNamespacesLetEnumerationsMatchByNameAndPrimitivesNot) {
  const Context ignoring = Ignoring(&Context::SetIgnoreNamespaces);
  const std::string unexpected = kUnexpected;
  COne primitive(Primitive("a", 0));
  EXPECT_EQ(unexpected + "o:@a", primitive.Read("o:a='red'", ignoring));
  COne primitiveInO(Primitive("a", 0, In("urn:o")));
  EXPECT_EQ(unexpected + "@a", primitiveInO.Read("a='red'", ignoring));
  COne enumeration(Colour("a", 0));
  EXPECT_EQ("<r a=\"red\"/>", enumeration.Read("o:a='red'", ignoring));
  // Each attribute of the name is taken, and the last one stays.
  EXPECT_EQ("<r a=\"blue\"/>", enumeration.Read("o:a='red' a='blue'", ignoring));
  EXPECT_EQ("<r a=\"red\"/>", enumeration.Read("a='blue' o:a='red'", ignoring));
  EXPECT_EQ(unexpected + "o:@b", enumeration.Read("o:b='red'", ignoring));
  COne enumerationInO(Colour("a", 0, In("urn:o", false)));
  EXPECT_EQ("<r xmlns:AA=\"urn:o\" AA:a=\"red\"/>", enumerationInO.Read("a='red'", ignoring));
}

TEST(AttributeInfoGrid, FirstMissingOneInTheOrderOfTheTableIsNamed) {
  CTables tables;
  tables.Add(Primitive("a", 0), Unset::Value);
  tables.Add(Colour("b", 1, In("", false)), Unset::Value);
  tables.Add(Primitive("c", 2, In("", false)), Unset::Value);
  CClassTrial trial(tables);
  EXPECT_EQ(Required("b"), trial.Read(""));
  trial.rootAttributes = " b='red'";
  EXPECT_EQ(Required("c"), trial.Read(""));
  trial.rootAttributes = " c='1' b='red'";
  EXPECT_EQ("at end, <r b=\"red\" c=\"1\"/>", trial.Read(""));
}

TEST(AttributeInfoGrid, UnsetRequiredPropertyFailsWithTheTextOfTheVariant) {
  const std::string expected = kNotWritten + std::string("Invalid Type 0 to convert to string");
  Options required = In("", false);
  required.defaultValue = "red";
  for (CAttributeInfo* attribute : {Primitive("a", 0, required), Colour("a", 0, required)}) {
    const COne one(attribute);
    EXPECT_EQ(expected, one.Write());
    EXPECT_EQ(expected, one.Write(Ignoring(&Context::SetNoOptionalAttributeDefaultOutput)));
  }
}

// --- Defaults, formats and facets

TEST(AttributeInfoGrid, DefaultIsLeftOutOnlyOfAnOptionalAttributeWhereTheContextSaysSo) {
  struct Case {
    bool optional;
    const char* defaultValue;
    const char* value;
    bool leftOut;
  };
  const Case cases[] = {{true, "red", "red", true},    {true, "red", "blue", false},
                        {false, "red", "red", false},  {false, "red", "blue", false},
                        {true, nullptr, "red", false}, {true, "", "red", false},
                        {true, "RED", "red", false},   {true, " red", "red", false}};
  for (const Case& c : cases) {
    Options options = In("", c.optional);
    options.defaultValue = c.defaultValue;
    for (CAttributeInfo* attribute : {Primitive("a", 0, options), Colour("a", 0, options)}) {
      COne one(attribute);
      const std::string written = "<r a=\"" + std::string(c.value) + "\"/>";
      const std::string read = "a='" + std::string(c.value) + "'";
      EXPECT_EQ(written, one.Read(read.c_str()));
      EXPECT_EQ(c.leftOut ? "<r/>" : written,
                one.Write(Ignoring(&Context::SetNoOptionalAttributeDefaultOutput)));
    }
  }
}

TEST(AttributeInfoGrid, DefaultIsComparedWithTheTextThatWouldBeWritten) {
  const Context leavesOut = Ignoring(&Context::SetNoOptionalAttributeDefaultOutput);
  Options options = OfType(ItemType_r8);
  options.format = "%.2f";
  options.defaultValue = "0.50";
  COne formatted(Primitive("a", 0, options));
  EXPECT_EQ("<r a=\"0.50\"/>", formatted.Read("a='0.5'"));
  EXPECT_EQ("<r/>", formatted.Write(leavesOut));
  options.defaultValue = "0.5";
  COne plain(Primitive("a", 0, options));
  EXPECT_EQ("<r a=\"0.50\"/>", plain.Read("a='0.5'", leavesOut));
  // Without a value for it: the default is never filled in.
  EXPECT_EQ("<r/>", formatted.Read(""));
  EXPECT_EQ("(unset)", formatted.object().TextOf(0));
}

TEST(AttributeInfoGrid, FormatIsForRealsAlone) {
  const std::pair<ItemType, const char*> cases[] = {{ItemType_r4, "<r a=\"2.00\"/>"},
                                                    {ItemType_r8, "<r a=\"2.00\"/>"},
                                                    {ItemType_i4, "<r a=\"2\"/>"},
                                                    {ItemType_string, "<r a=\"2\"/>"}};
  for (const auto& [type, written] : cases) {
    Options options = OfType(type);
    options.format = "%.2f";
    COne one(Primitive("a", 0, options));
    EXPECT_EQ(written, one.Read("a='2'"));
  }
}

TEST(AttributeInfoGrid, FacetsAreTestedOnWritingEvenOfADefault) {
  const auto facets = [](const char* pattern, int maxLength, const char* minInclusive) {
    return CPrimitiveRestrictions(pattern, -1, maxLength, minInclusive, nullptr, nullptr, nullptr,
                                  -1, -1, -1);
  };
  struct Case {
    ItemType type;
    CPrimitiveRestrictions restrictions;
    const char* good;
    const char* bad;
    const char* failure;
  };
  const Case cases[] = {
      {ItemType_string, facets("[a-z]+", -1, nullptr), "abc", "aBc", "Invalid Value for a [aBc]."},
      {ItemType_string, facets(nullptr, 3, nullptr), "abc", "abcd", "Invalid Value for a [abcd]."},
      {ItemType_i4, facets(nullptr, -1, "10"), "10", "9", "Invalid Value for a [9]"},
      {ItemType_i8, facets(nullptr, -1, "10"), "10", "9", "Invalid Value for a [9]."},
      {ItemType_r8, facets(nullptr, -1, "0.5"), "0.5", "0.25", "Invalid Value for a [0.250000]"},
      {ItemType_hexBinary, facets(nullptr, 1, nullptr), "12", "1234",
       "Invalid Value for a [1234]."},
      {ItemType_base64Binary, facets(nullptr, 2, nullptr), "QUI=", "QUJD",
       "Invalid Value for a [QUJD]."}};
  for (const Case& c : cases) {
    Options options = OfType(c.type);
    options.restrictions = c.restrictions;
    options.defaultValue = c.bad;
    COne one(Primitive("a", 0, options));
    const std::string good = c.good;
    EXPECT_EQ("<r a=\"" + good + "\"/>", one.Read(("a='" + good + "'").c_str()));
    // Meant: reading looks at no facet.
    EXPECT_EQ(kNotWritten + std::string(c.failure),
              one.Read(("a='" + std::string(c.bad) + "'").c_str()));
    EXPECT_EQ("<r/>", one.Write(Ignoring(&Context::SetNoOptionalAttributeDefaultOutput)));
  }
}

// Meant: as with elements, the kind of the member decides which facets are tested.
TEST(AttributeInfoGrid, TextInThePlaceOfAValueIsTestedAsAValueOfTheKind) {
  const struct {
    ItemType type;
    const char* text;
    const char* least;
    const char* condition;
    const char* failure;
  } cases[] = {
      {ItemType_duration, "P2D", "P1D", "m_type == ItemType_duration", "Invalid Value for a [P]."},
      {ItemType_r8, "0.75", "0.5", "m_type == ItemType_r8", "Invalid Value for a [0.000000]"},
  };
  for (const auto& c : cases) {
    Options options = OfType(c.type);
    options.restrictions =
        CPrimitiveRestrictions(nullptr, -1, -1, c.least, nullptr, nullptr, nullptr, -1, -1, -1);
    COne one(Primitive("a", 0, options));
    one.object()[0].SetString(c.text);
#if defined(QZXML_ASSERTIONS)
    EXPECT_QZ_ASSERT(c.condition, one.Write());
#else
    EXPECT_EQ(kNotWritten + std::string(c.failure), one.Write());
#endif
  }
}

TEST(AttributeInfoGrid, TextIsReadByTheWhitespaceRule) {
  struct Case {
    int rule;
    const char* attribute;
    const char* value;
  };
  const char kSpaced[] = "a=' &#9;b&#10;c  d '";
  const Case cases[] = {{Rule::WhitespaceRule_None, kSpaced, " \tb\nc  d "},
                        {Rule::WhitespaceRule_Preserve, kSpaced, " \tb\nc  d "},
                        {Rule::WhitespaceRule_Replace, kSpaced, "  b c  d "},
                        {Rule::WhitespaceRule_Collapse, kSpaced, "b c d"},
                        {Rule::WhitespaceRule_Preserve, "a='b&#13;&#10;c&#13;'", "b\nc\n"},
                        {Rule::WhitespaceRule_Replace, "a='b&#13;&#10;c&#13;'", "b c "}};
  for (const Case& c : cases) {
    Options options;
    options.rule = static_cast<Rule::WhitespaceRule>(c.rule);
    COne one(Primitive("a", 0, options));
    one.Read(c.attribute);
    EXPECT_EQ(c.value, one.object().TextOf(0)) << c.rule;
  }
  Options unknown;
  unknown.rule = static_cast<Rule::WhitespaceRule>(4);
  EXPECT_EQ(kNotConverted + std::string("Unknown WhitespaceRule"),
            COne(Primitive("a", 0, unknown)).Read("a='1'"));
  // An enumeration has no rule.
  EXPECT_EQ(kNotConverted + std::string("No such colour [ red ]."),
            COne(Colour("a", 0)).Read("a=' red '"));
}

// --- What nobody claims

TEST(AttributeInfoGrid, UnknownAttributeIsDroppedByAClassThatDoesNotMind) {
  for (const bool minds : {true, false}) {
    CTables tables;
    tables.failIfAttributeUnknown = minds;
    tables.Add(Primitive("a", 0), Unset::Value);
    CClassTrial trial(tables);
    trial.rootAttributes = " z='1' a='2' o:a='3'";
    const std::string read = "at end, <r a=\"2\"/>";
    EXPECT_EQ(minds ? kUnexpected + std::string("@z") : read, trial.Read(""));
    EXPECT_EQ(read, trial.Read("", Ignoring(&Context::SetIgnoreUnknownAttributes)));
  }
}

TEST(AttributeInfoGrid, AttributesOfTheSchemaMachineryAreOfferedToNobody) {
  const char kAll[] =
      "xsi:type='t' xsi:schemaLocation='a b' xsi:noNamespaceSchemaLocation='c' type='1'";
  COne any(Any(0, "##any"), Wildcard());
  EXPECT_EQ("<r type=\"1\"/>", any.Read(kAll));
  COne named(Primitive("type", 0, In(kXsi)));
  EXPECT_EQ(std::string(kUnexpected) + "@type", named.Read(kAll));
  EXPECT_EQ("<r/>", named.Read("xsi:type='t'"));
  COne unqualified(Primitive("type", 0));
  EXPECT_EQ("<r type=\"1\"/>", unqualified.Read(kAll));
  // Any other attribute of that namespace is one like the others; nil is the object's own.
  EXPECT_EQ("<r xmlns:AA=\"" + std::string(kXsi) + "\" AA:other=\"1\"/>",
            any.Read("xsi:other='1'"));
  EXPECT_EQ(std::string(kUnexpected) + "xsi:@other", unqualified.Read("xsi:other='1'"));
  EXPECT_EQ("CQzException: Invalid use of 'nil' attribute in non-nillable element.\nPath: /r",
            any.Read("xsi:nil='false'"));
}

// --- Wildcards

TEST(AttributeInfoGrid, WildcardBehindNamedEntriesTakesWhatItsRestrictionAllows) {
  struct Case {
    const char* restriction;
    const char* plain;  // what comes of each of these three, null for a failure
    const char* other;
    const char* target;
  };
  const char kPlain[] = "<r a=\"0\" x=\"1\"/>";
  const char kOther[] = "<r a=\"0\" xmlns:AA=\"urn:o\" AA:x=\"1\"/>";
  const char kTarget[] = "<r a=\"0\" xmlns:AA=\"urn:t\" AA:x=\"1\"/>";
  const Case cases[] = {{"##any", kPlain, kOther, kTarget},
                        {"##other", kPlain, kOther, nullptr},
                        {"##local", kPlain, nullptr, nullptr},
                        {"##targetNamespace", nullptr, nullptr, kTarget},
                        {"urn:o", kPlain, kOther, nullptr},
                        // The first token of a list counts, and behind it the empty namespace.
                        {"##any urn:z", kPlain, kOther, kTarget},
                        {"##other urn:z", kPlain, kOther, nullptr},
                        {"##local urn:o", kPlain, nullptr, nullptr},
                        {"##targetNamespace urn:o", kPlain, nullptr, kTarget},
                        {"urn:o urn:t", kPlain, nullptr, nullptr}};
  for (const Case& c : cases) {
    CTables tables;
    tables.Add(Primitive("a", 0), Unset::Value);
    tables.Add(Any(1, c.restriction, "urn:t"), Wildcard());
    CClassTrial trial(tables);
    const std::pair<const char*, const char*> documents[] = {
        {"x", c.plain}, {"o:x", c.other}, {"t:x", c.target}};
    for (const auto& [name, read] : documents) {
      trial.rootAttributes = std::string(" xmlns:t='urn:t' ") + name + "='1' a='0'";
      const std::string path = std::string(name).replace(std::strlen(name) - 1, 1, "@x");
      EXPECT_EQ(read != nullptr ? "at end, " + std::string(read) : kUnexpected + path,
                trial.Read(""))
          << name << " with " << c.restriction;
    }
  }
}

TEST(AttributeInfoGrid, NameOfAWildcardAndIgnoredNamespacesPlayNoPart) {
  const Context ignoring = Ignoring(&Context::SetIgnoreNamespaces);
  COne local(Any(0, "##local"), Wildcard());
  EXPECT_EQ("<r any=\"1\" z=\"2\"/>", local.Read("any='1' z='2'", ignoring));
  EXPECT_EQ(std::string(kUnexpected) + "o:@any", local.Read("o:any='1'", ignoring));
  EXPECT_EQ("<r/>", local.Read(""));  // though it says that it is required
}

TEST(AttributeInfoGrid, WildcardsShareWhatTheirRestrictionsDivide) {
  CTables tables;
  tables.Add(Any(0, "##local"), Wildcard());
  tables.Add(Any(1, "##any"), Wildcard());
  tables.Add(Primitive("a", 2), Unset::Value);
  CClassTrial trial(tables);
  trial.rootAttributes = " o:x='1' a='2' y='3'";
  EXPECT_EQ("at end, <r a=\"2\" y=\"3\" xmlns:AA=\"urn:o\" AA:x=\"1\"/>", trial.Read(""));
  EXPECT_EQ("(unset)", trial.object().TextOf(2));
}

TEST(AttributeInfoGrid, PropertyBehindAWildcardMustBeACollectionOfAttributes) {
  const Unset::Make wrong[] = {Texts("a", 0, -1), Elements("##any", 0, -1)};
  for (const Unset::Make& property : wrong) {
    COne one(Any(0, "##any"), property);
    EXPECT_EQ(kNotConverted + std::string("Serialization Data Error : The collection should be a "
                                          "CAttributeCol, it was not!"),
              one.Read("a='1'"));
    EXPECT_EQ("<r/>", one.Read(""));
  }
}

TEST(AttributeInfoGrid, CollectionBehindAWildcardHasARestrictionOfItsOwn) {
  COne one(Any(0, "##any"), Wildcard("##other", "urn:o"));
  EXPECT_EQ("<r a=\"1\"/>", one.Read("a='1'"));
  EXPECT_EQ(kNotConverted +
                std::string("Invalid namespace [urn:o]. The namespace must be one of [##other] "
                            "where the target namespace is [urn:o]."),
            one.Read("o:a='1'"));
}

TEST(AttributeInfoGrid, AttributeOfTheXmlNamespaceKeepsItsPrefix) {
  COne any(Any(0, "##any"), Wildcard());
  EXPECT_EQ("<r xml:lang=\"en\"/>", any.Read("xml:lang='en'"));
  COne named(Primitive("lang", 0, In("http://www.w3.org/XML/1998/namespace")));
  EXPECT_EQ("<r xml:lang=\"en\"/>", named.Read("xml:lang='en'"));
}

// --- Children without a tag

namespace {

// A class with an attribute "p" and a group with an attribute "g", which is required.
struct WithGroup {
  explicit WithGroup(bool classMinds, bool groupMinds) {
    group.failIfAttributeUnknown = groupMinds;
    group.Add(Primitive("g", 0, In("", false)), Unset::Value);
    group.Add(Prim<CElementInfoSeqPrimOpt>("x", 1), Unset::Value);
    tables.failIfAttributeUnknown = classMinds;
    tables.Add(new CElementInfoSeqClsMnd("group", "", 0, kPseudo, nullptr, 0, false),
               HeldObject(group, "group"));
    tables.Add(Colour("p", 1, In("", false)), Unset::Value);
  }
  CTables group{XmlElementGroupType_Sequence, kPseudo};
  CTables tables;
};

}  // namespace

TEST(AttributeInfoGrid, GroupReadsItsAttributesOfTheEnclosingElement) {
  const WithGroup lenient(false, false);
  CClassTrial trial(lenient.tables);
  trial.rootAttributes = " g='1' p='red' z='2'";
  EXPECT_EQ("at end, <r p=\"red\" g=\"1\"><x>3</x></r>", trial.Read("<x>3</x>"));
  trial.rootAttributes = " g='1'";
  EXPECT_EQ(Required("p"), trial.Read(""));
  // What fails in the group has been wrapped there, and goes on as the plain class.
  trial.rootAttributes = " p='red'";
  EXPECT_EQ(
      "CQzException: Failed to process the element.\nPath: /r\n"
      "Failed to find the required Attribute [g].",
      trial.Read(""));
  trial.Renew();
  trial.object()[1].SetI4(0);
  EXPECT_EQ(
      "CQzValidationException: Failed to convert the element [r] to XML\n"
      "Failed to convert attributes to XML\nFailed to convert attributes to XML\n"
      "Invalid Type 0 to convert to string",
      trial.Write());
}

TEST(AttributeInfoGrid, ClassAndGroupEachMindWhatTheyDoNotKnow) {
  const Context ignoring = Ignoring(&Context::SetIgnoreUnknownAttributes);
  const std::string read = "at end, <r p=\"red\" g=\"1\"/>";
  for (const bool classMinds : {true, false}) {
    for (const bool groupMinds : {true, false}) {
      const WithGroup classes(classMinds, groupMinds);
      CClassTrial trial(classes.tables);
      trial.rootAttributes = " g='1' p='red'";
      const std::string unexpected = kUnexpected + std::string(classMinds ? "@g" : "@p");
      EXPECT_EQ(classMinds || groupMinds ? unexpected : read, trial.Read(""));
      EXPECT_EQ(read, trial.Read("", ignoring));
    }
  }
}

// --- Order

TEST(AttributeInfoGrid, AttributesAreWrittenInTheOrderOfTheTable) {
  CTables tables;
  tables.Add(Primitive("c", 0), Unset::Value);
  tables.Add(Any(1, "##any"), Wildcard());
  tables.Add(Colour("a", 2), Unset::Value);
  tables.Add(Primitive("b", 3, OfType(ItemType_boolean)), Unset::Value);
  const CSmartPtr<CTableObject> object(new CTableObject(tables));
  object->Set(0, "1");
  CXmlCollectionBase* const wildcard = (*object)[1].GetXmlCollection();
  static_cast<CAttributeCol*>(wildcard)->Add("z", "2", "");
  (*object)[2].SetI4(1);
  (*object)[3].SetBoolean(true);
  EXPECT_EQ("<r c=\"1\" z=\"2\" a=\"green\" b=\"true\"/>", Text(*object));
}
