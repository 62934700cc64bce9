#include <functional>
#include <optional>
#include <type_traits>

#include "qzxml/fastinfoset/FastInfosetContext.h"
#include "qzxml/json/JsonContext.h"
#include "qzxml/serialization/AttributeInfo.h"
#include "qzxml/serialization/ElementInfoSeq.h"
#include "qzxml/serialization/PropertyAccess.h"
#include "tests/collections/TypedCols.h"
#include "tests/serialization/Facets.h"
#include "tests/support/GeneratedTable.h"
#include "tests/support/MemberTrial.h"
#include "tests/support/QzTest.h"

// Every kind of value that there is, as a class holds it: in an attribute, in an element, as the
// text beside attributes, and in a collection.

using namespace QzXmlLib16;
using namespace QzXmlLib16Data;
using namespace qztest;

namespace {

using Items = CSmartPtr<CXmlCollectionBase>;
constexpr auto kCollapse = CWhitespaceUtils::WhitespaceRule_Collapse;

// --- Objects with a property of each sort

enum Property { kAttribute, kContent, kItems };

class CKindObject : public CTableObject {
 public:
  CKindObject(const CTables& tables, CXmlCollectionBase* itsItems)
      : CTableObject(tables), items(itsItems) {}
  const Items items;  // null for a kind without a collection

  // What a property gives; lives by the object.
  QzVariant Get(Property property) const {
    QzVariant value;
    AccessProperty(property, true, value);
    return value;
  }
};

// Holds plain values, as a generated class does.
template <ItemType kType>
class CObjectOf : public CKindObject {
 public:
  using CKindObject::CKindObject;

 protected:
  void AccessProperty(int index, bool read, QzVariant& value) const override {
    if (index == kItems) return AccessCollection(read, value, items);
    AccessValue<kType>(read, value, index == kAttribute ? m_attribute : m_content);
  }
  void Init() override {
    m_attribute.reset();
    m_content.reset();
    if (items != nullptr) items->Clear();
  }

 private:
  mutable std::optional<typename VariantKind<kType>::Value> m_attribute;
  mutable std::optional<typename VariantKind<kType>::Value> m_content;
};

// --- The kinds

struct Kind {
  const char* name;
  const char* text;      // of a value, in a document
  const char* written;   // of the same value, as it is written
  Facets facets;         // which the value keeps
  const char* breaking;  // the text of a value that does not; null where no facet refuses any
  const char* shown;     // how the failure shows it
  const char* noValue;   // a text that is no value; null where every text is one
  const char* refusal;   // the text of that failure

  ItemType type = ItemType_None;
  CKindObject* (*newObject)(const CTables& tables, CXmlCollectionBase* items) = nullptr;
  CXmlCollectionBase* (*newItems)(const Facets& facets) = nullptr;  // null for none
};

template <ItemType kType>
CKindObject* NewObject(const CTables& tables, CXmlCollectionBase* items) {
  return new CObjectOf<kType>(tables, items);
}

template <typename Col>
CXmlCollectionBase* NewItems(const Facets& f) {
  return new Col("i", "", 0, -1, f.pattern, f.minLength, f.maxLength, f.minInclusive,
                 f.maxInclusive, f.minExclusive, f.maxExclusive, f.length, f.totalDigits,
                 f.fractionDigits, kCollapse, nullptr);
}

template <ItemType kType, typename Col>
Kind Of(Kind kind) {
  kind.type = kType;
  kind.newObject = &NewObject<kType>;
  if constexpr (!std::is_void_v<Col>) kind.newItems = &NewItems<Col>;
  return kind;
}

Kind HexBinary() {
  return Of<ItemType_hexBinary, ChexBinaryCol>({"hexBinary", "0aFf", "0AFF", MaxLength(2), "010203",
                                                "[010203].", "0", "Invalid length in hex string"});
}
Kind Base64Binary() {
  return Of<ItemType_base64Binary, Cbase64BinaryCol>(
      {"base64Binary", "AP8", "AP8=", Length(2), "AQ==", "[AQ==].", nullptr, nullptr});
}

std::vector<Kind> Binaries() { return {HexBinary(), Base64Binary()}; }

std::vector<Kind> Integers() {
  return {
      Of<ItemType_i1, Ci1Col>({"i1", "-128", "-128", MaxInclusive("-1"), "0", "[0]", "128",
                               "The value [128] is to large to fit in a i1"}),
      Of<ItemType_i2, Ci2Col>({"i2", "-32768", "-32768", MaxExclusive("5"), "5", "[5]", "32768",
                               "The value [32768] is to large to fit in a i2"}),
      Of<ItemType_i4, Ci4Col>({"i4", "+7", "7", TotalDigits(2), "-10", "[-10]", "2147483648",
                               "The value [2147483648] is to large to fit in a i4"}),
      Of<ItemType_i8, Ci8Col>({"i8", "-9223372036854775808", "-9223372036854775808",
                               MaxInclusive("0"), "1", "[1].", "9223372036854775808",
                               "The value [9223372036854775808] is to large to fit in a i8"}),
      Of<ItemType_ui1, Cui1Col>({"ui1", "255", "255", MinInclusive("128"), "127", "[127]", "256",
                                 "The value [256] is to large to fit in a ui1"}),
      Of<ItemType_ui2, Cui2Col>({"ui2", "65535", "65535", MinExclusive("9"), "9", "[9]", "-1",
                                 "The value [-1] is to large to fit in a ui2"}),
      Of<ItemType_ui4, Cui4Col>({"ui4", "-1", "4294967295", MinInclusive("4294967295"),
                                 "4294967294", "[-2]", "4294967296",
                                 "The value [4294967296] is to large to fit in a ui4"}),
      Of<ItemType_ui8, Cui8Col>({"ui8", "18446744073709551615", "18446744073709551615",
                                 MinInclusive("1"), "0", "[0].", "18446744073709551616",
                                 "The value [18446744073709551616] is to large to fit in a ui8"}),
  };
}

std::vector<Kind> Reals() {
  return {
      Of<ItemType_r4, Cr4Col>({"r4", "0.50", "0.5", MaxExclusive("1.5"), "1.5", "[1.500000]", "1,5",
                               "The value [1,5] can not be converted to a r4"}),
      Of<ItemType_r8, Cr8Col>({"r8", "1e20", "1e+020", MinInclusive("0"), "-0.25", "[-0.250000]",
                               "inf", "The value [inf] can not be converted to a r8"}),
  };
}

std::vector<Kind> DurationsAndDates() {
  return {
      Of<ItemType_duration, CdurationCol>(
          {"duration", "P1Y2M3DT4H5M6.50S", "P1Y2M3DT4H5M6.5S", MinInclusive("P1Y"), "P11M",
           "[P11M].", "1Y",
           "Invalid XSD Duration [1Y] expected [-]P[nY][nM][nD][T[nH][nM][nS.ff]]"}),
      Of<ItemType_yearMonth, CyearMonthCol>(
          {"yearMonth", "2004-05", "2004-05", MaxInclusive("2004-05"), "2004-06", "[2004-06].",
           "04-5", "Invalid XSD Date [04-5] expected CCYY-MM-DD[Z|[+|-]hh:mm]"}),
      Of<ItemType_monthDay, CmonthDayCol>(
          {"monthDay", "--02-29", "--02-29", MaxExclusive("--03-01"), "--03-01", "[--03-01].",
           "--02-30", "Invalid Day [30] (1 <= day <= days in month)"}),
      Of<ItemType_year, CyearCol>({"year", "1999Z", "1999", MinExclusive("1998"), "1998", "[1998]",
                                   "--05", "Failed to GetYear. Invalid Date Type: gMonth."}),
      Of<ItemType_month, CmonthCol>({"month", "--12--", "--12", MinInclusive("--12"), "--11",
                                     "[11]", "--13", "Invalid Month [13] (1 <= month <= 12)"}),
      Of<ItemType_day, CdayCol>({"day", "---31", "---31", MinInclusive("---10"), "---09", "[9]",
                                 "---00", "Invalid Day [0] (1 <= day <= 31)"}),
      Of<ItemType_date, CdateCol>({"date", "2004-02-29Z", "2004-02-29Z",
                                   MinInclusive("2004-02-29Z"), "2004-02-28Z", "[2004-02-28Z].",
                                   "2003-02-29", "Invalid Day [29] (1 <= day <= days in month"}),
      Of<ItemType_datetime, CdatetimeCol>(
          {"datetime", "2004-02-29T23:59:59.50+01:00", "2004-02-29T23:59:59.5+01:00",
           MaxInclusive("2004-02-29T22:59:59.5Z"), "2004-02-29T23:00:00Z",
           "[2004-02-29T23:00:00Z].", "2004-02-29", "Invalid XSD DateTime [2004-02-29]."}),
      Of<ItemType_time, CtimeCol>({"time", "12:00:00.50", "12:00:00.5", MinExclusive("12:00:00"),
                                   "12:00:00", "[12:00:00].", "24:00:00",
                                   "Invalid XSD Time [24:00:00] expected hh:mm:ss[.ff]"}),
  };
}

std::vector<Kind> Texts() {
  return {
      Of<ItemType_char, void>(
          {"char", "x", "x", Facets(), nullptr, nullptr, "xy",
           "The value [xy] can not be a char as it is either empty of greater than 1 char long"}),
      Of<ItemType_string, CstringCol>(
          {"string", "a b", "a b", Pattern("[a-z ]+"), "a1", "[a1].", nullptr, nullptr}),
      Of<ItemType_boolean, CbooleanCol>(
          {"boolean", "1", "true", MaxLength(0), nullptr, nullptr, "2",
           "A Boolean Value read from an XML document was invalid [2]. Valid values are 'true', "
           "'false', '1', or '0'"}),
  };
}

std::vector<Kind> NumbersOfAnySize() {
  return {
      Of<ItemType_decimal, CdecimalCol>(
          {"decimal", "-12345678901234567890.050", "-12345678901234567890.05", FractionDigits(2),
           "0.125", "[0.125].", "1,5",
           "The string representing a Decimal, contained an invalid char at position 1 [1,5]."}),
      Of<ItemType_integer, CintegerCol>(
          {"integer", "-0123456789012345678901234567890", "-123456789012345678901234567890",
           TotalDigits(31), "12345678901234567890123456789012",
           "[12345678901234567890123456789012].", "one",
           "The string representing a Decimal, contained an invalid char at position 0 [one]."}),
  };
}

const std::vector<Kind>& Kinds() {
  static const std::vector<Kind> s_kinds = [] {
    std::vector<Kind> kinds;
    for (const std::vector<Kind>& some :
         {Binaries(), Integers(), Reals(), DurationsAndDates(), Texts(), NumbersOfAnySize()}) {
      kinds.insert(kinds.end(), some.begin(), some.end());
    }
    return kinds;
  }();
  return s_kinds;
}

// The facet test knows no char, and there is no collection of chars.
bool IsChar(const Kind& kind) { return kind.type == ItemType_char; }

// --- Trials

// A class with an optional attribute "a" and an optional element "e" of a kind and any number of
// elements "i", or with the attribute and a text.
class CKindTrial {
 public:
  enum Form { kElements, kText };

  CKindTrial(const Kind& kind, Form form) {
    m_tables.Add(new CAttributeInfoPrimitive("a", "", kAttribute, true, kind.type, nullptr,
                                             kCollapse, kind.facets.Make(), nullptr),
                 Unset::Value);
    if (form == kText) {
      m_tables.textIndex = kContent;
      m_tables.textType = kind.type;
      m_tables.AddProperty(Unset::Value);
    } else {
      PrimOptions options;
      options.type = kind.type;
      options.rule = kCollapse;
      options.restrictions = kind.facets.Make();
      m_tables.Add(Prim<CElementInfoSeqPrimOpt>("e", kContent, options), Unset::Value);
    }
    const bool hasItems = form == kElements && kind.newItems != nullptr;
    if (hasItems) m_tables.Add(new CElementInfoSeqPrimCol("i", "", kItems), Unset::Value);
    m_object = CSmartPtr<CKindObject>(
        kind.newObject(m_tables, hasItems ? kind.newItems(kind.facets) : nullptr));
  }

  // What it writes of what it reads, or the class and the full text of the failure.
  std::string Read(const std::string& document) const {
    return Outcome([&] {
      m_object->FromXml(document.c_str());
      return Text(*m_object);
    });
  }

  CKindObject& object() const { return *m_object; }

 private:
  CTables m_tables;
  CSmartPtr<CKindObject> m_object;
};

std::string In(const char* tag, const std::string& text) {
  return std::string("<") + tag + ">" + text + "</" + tag + ">";
}

std::string WithAttribute(const std::string& value) { return "<r a=\"" + value + "\"/>"; }

const std::string kNotRead = "CQzValidationException: Failed to process the element.\nPath: /r\n";
const std::string kNotWritten =
    "CQzValidationException: Failed to convert the element [r] to XML\n";
const std::string kNoAttributes = "Failed to convert attributes to XML\n";

// Whether a variant holds the value of the kind, and takes it from its own text.
void ExpectValue(const Kind& kind, const QzVariant& value) {
  EXPECT_EQ(kind.type, value.GetTypeAsEnum());
  EXPECT_EQ(kind.name, value.GetType());
  EXPECT_FALSE(value.IsNil());
  EXPECT_EQ(kind.written, value.ToString(nullptr));
  QzVariant again;
  again.FromString(kind.written, kind.type, CWhitespaceUtils::WhitespaceRule_None);
  EXPECT_EQ(kind.written, again.ToString(""));
}

}  // namespace

TEST(EveryKind, HasItsNumber) {
  ASSERT_EQ(26U, Kinds().size());
  for (std::size_t i = 0; i < Kinds().size(); ++i) {
    EXPECT_EQ(static_cast<int>(i) + 1, Kinds()[i].type) << Kinds()[i].name;
    EXPECT_EQ(IsChar(Kinds()[i]), Kinds()[i].newItems == nullptr) << Kinds()[i].name;
  }
}

TEST(EveryKind, PassesBetweenADocumentAVariantAndAProperty) {
  for (const Kind& kind : Kinds()) {
    SCOPED_TRACE(kind.name);
    const CKindTrial trial(kind, CKindTrial::kElements);
    const std::string text = kind.text;
    const std::string items = IsChar(kind) ? "" : In("i", text + "\n") + In("i", "\t" + text);
    const std::string written =
        trial.Read("<r a=' " + text + "'>" + In("e", "\n " + text + " ") + items + "</r>");
    ExpectValue(kind, trial.object().Get(kAttribute));
    ExpectValue(kind, trial.object().Get(kContent));
    if (IsChar(kind)) {
      EXPECT_EQ(kNotWritten + kNoAttributes + "Unknown type [char].", written);
      continue;
    }
    EXPECT_EQ("<r a=\"" + std::string(kind.written) + "\">" + In("e", kind.written) +
                  In("i", kind.written) + In("i", kind.written) + "</r>",
              written);
    EXPECT_EQ(2, trial.object().items->GetCount());
  }
}

TEST(EveryKind, IsTheTextBesideAttributes) {
  for (const Kind& kind : Kinds()) {
    SCOPED_TRACE(kind.name);
    const CKindTrial trial(kind, CKindTrial::kText);
    EXPECT_EQ(In("r", kind.written), trial.Read(In("r", kind.text)));
    EXPECT_FALSE(trial.object().Get(kAttribute).IsValid());
    ExpectValue(kind, trial.object().Get(kContent));
    if (IsChar(kind)) continue;
    EXPECT_EQ("<r a=\"" + std::string(kind.written) + "\">" + kind.written + "</r>",
              trial.Read("<r a='" + std::string(kind.text) + "'>" + kind.text + "</r>"));
  }
}

TEST(EveryKind, MayBeAbsent) {
  for (const Kind& kind : Kinds()) {
    SCOPED_TRACE(kind.name);
    const CKindTrial trial(kind, CKindTrial::kElements);
    trial.Read("<r a='" + std::string(kind.text) + "'>" + In("e", kind.text) + "</r>");
    EXPECT_EQ("<r/>", trial.Read("<r/>"));
    EXPECT_FALSE(trial.object().Get(kAttribute).IsValid());
    EXPECT_FALSE(trial.object().Get(kContent).IsValid());
  }
}

TEST(EveryKind, PassesThroughJson) {
  CSerializationContext context;
  context.GetJsonContext().SetSupportRoundtrip(JsonRoundTrip_Marked);
  for (const Kind& kind : Kinds()) {
    if (IsChar(kind)) continue;
    SCOPED_TRACE(kind.name);
    const CKindTrial trial(kind, CKindTrial::kElements);
    const std::string whole =
        "<r a=\"" + std::string(kind.written) + "\">" + In("e", kind.written) + "</r>";
    ASSERT_EQ(whole, trial.Read(whole));
    const bool isBare = (kind.type >= ItemType_i1 && kind.type <= ItemType_r8) ||
                        (kind.type >= ItemType_boolean && kind.type <= ItemType_integer);
    const std::string value = isBare ? kind.written : '"' + std::string(kind.written) + '"';
    const std::string json = trial.object().ToJson(false, EOLType_LF, context);
    EXPECT_EQ("{\"r\": {\"@a\": " + value + ",\"e\": " + value + "}}", json);
    trial.Read("<r/>");
    EXPECT_EQ(whole, Outcome([&] {
                trial.object().FromJson(json.c_str(), context);
                return Text(trial.object());
              }));
  }
}

// Writes the object of the trial as Fast Infoset and reads it into the same, emptied.
std::string ThroughFastInfoset(const CKindTrial& trial, const CSerializationContext& context) {
  return Outcome([&] {
    const CBinaryData octets = trial.object().ToFastInfosetStream(FInfoDecl_None, context);
    trial.Read("<r/>");
    trial.object().FromXmlStream(octets, context);
    return Text(trial.object());
  });
}

// What the suggested encoding of the kind says of its value; null where it takes it.
const char* SuggestedRefusal(const Kind& kind) {
  switch (kind.type) {
    case ItemType_ui8:
      return "The value [18446744073709551615] is to large to fit in a i8";
    case ItemType_datetime:  // a fraction, and a zone with "+"
    case ItemType_time:      // a fraction
      return "Failed to write FastInfoset. Invalid character not found for Restricted Alphabet.";
    default:
      return nullptr;
  }
}

TEST(EveryKind, PassesThroughFastInfoset) {
  const CSerializationContext asText;
  const CSerializationContext suggested;
  suggested.GetFIContext().SetSuggestedValues();
  for (const Kind& kind : Kinds()) {
    if (IsChar(kind)) continue;
    SCOPED_TRACE(kind.name);
    const CKindTrial trial(kind, CKindTrial::kElements);
    const std::string items = In("i", kind.written) + In("i", kind.written);
    const std::string whole =
        "<r a=\"" + std::string(kind.written) + "\">" + In("e", kind.written) + items + "</r>";
    ASSERT_EQ(whole, trial.Read(whole));
    EXPECT_EQ(whole, ThroughFastInfoset(trial, asText));
    const char* const refusal = SuggestedRefusal(kind);
    EXPECT_EQ(refusal == nullptr ? whole : kNotWritten + kNoAttributes + refusal,
              ThroughFastInfoset(trial, suggested));
    if (refusal == nullptr) continue;
    ASSERT_EQ(In("r", In("e", kind.written)), trial.Read(In("r", In("e", kind.written))));
    EXPECT_EQ(kNotWritten + refusal, ThroughFastInfoset(trial, suggested));
  }
}

TEST(EveryKind, IsHeldToItsFacets) {
  for (const Kind& kind : Kinds()) {
    if (kind.breaking == nullptr) continue;
    SCOPED_TRACE(kind.name);
    const std::string text = kind.breaking;
    const std::string shown = kind.shown;
    const CKindTrial trial(kind, CKindTrial::kElements);
    EXPECT_EQ(kNotWritten + kNoAttributes + "Invalid Value for a " + shown,
              trial.Read(WithAttribute(text)));
    EXPECT_EQ(kNotWritten + "Invalid Value for e " + shown, trial.Read(In("r", In("e", text))));
    EXPECT_EQ(kNotRead + "Invalid Value for i " + shown,
              trial.Read(In("r", In("i", kind.text) + In("i", text))));
    EXPECT_EQ(1, trial.object().items->GetCount());
    // Meant: no facet is known of a text beside attributes.
    EXPECT_EQ(In("r", text), CKindTrial(kind, CKindTrial::kText).Read(In("r", text)));
  }
}

TEST(EveryKind, RefusesATextThatIsNoValue) {
  for (const Kind& kind : Kinds()) {
    if (kind.noValue == nullptr) continue;
    SCOPED_TRACE(kind.name);
    const std::string text = kind.noValue;
    const std::string failure = kNotRead + kind.refusal;
    const CKindTrial trial(kind, CKindTrial::kElements);
    EXPECT_EQ(failure, trial.Read(WithAttribute(text)));
    EXPECT_EQ(failure, trial.Read(In("r", In("e", text))));
    EXPECT_EQ(failure, CKindTrial(kind, CKindTrial::kText).Read(In("r", text)));
    if (IsChar(kind)) continue;
    EXPECT_EQ(failure, trial.Read(In("r", In("i", text))));
    EXPECT_EQ(0, trial.object().items->GetCount());
  }
}
