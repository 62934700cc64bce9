#include "places/places.h"
#include "qzxml/QzXml.h"
#include "tests/support/QzTest.h"
#include "tests/support/Refusal.h"

// What an xsi:type names by the classes of places.xsd, where two namespaces have types of the same
// names. What is valid by XML Schema 1.0, xmllint says of these documents too; those behind "this
// library's own" it refuses.

using namespace QzXmlLib16;

namespace {

constexpr char kHere[] = "urn:example:places";
constexpr char kAbroad[] = "urn:example:abroad";

// A trip with one element in it, under that default namespace; null for none.
std::string Trip(const char* defaultUri, const std::string& element) {
  return "<p:trip xmlns:p='urn:example:places' xmlns:f='urn:example:abroad'" +
         (defaultUri == nullptr ? "" : " xmlns='" + std::string(defaultUri) + "'") +
         " xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance'>" + element + "</p:trip>";
}

std::string Level(const std::string& type, const std::string& text) {
  return "<p:level xsi:type='" + type + "'>" + text + "</p:level>";
}

std::string Place(const std::string& type, const std::string& content) {
  return "<p:place xsi:type='" + type + "'><p:name>a</p:name>" + content + "</p:place>";
}

const std::string kMayor = "<p:mayor>m</p:mayor>";
const std::string kCountry = "<f:country>c</f:country>";
const std::string kHeight = "<p:height>8</p:height>";

template <typename Read>
std::string Refusal(Read read) {
  return qztest::RefusalOf([&] { read(*places::NewTrip()); });
}

std::string Refusal(const std::string& document) {
  return Refusal([&](places::CTrip& trip) { trip.FromXml(document.c_str()); });
}

}  // namespace

TEST(GeneratedTypeNames, ATypeWithoutAPrefixIsThatOfTheDefaultNamespace) {
  EXPECT_EQ("", Refusal(Trip(kHere, Place("Town", kMayor))));
  EXPECT_NE("", Refusal(Trip(kHere, Place("Town", kCountry))));
  EXPECT_EQ("", Refusal(Trip(kAbroad, Place("Town", kCountry))));
  EXPECT_NE("", Refusal(Trip(kAbroad, Place("Town", kMayor))));
  EXPECT_EQ("", Refusal(Trip(kHere, Level("Low", "10"))));
  EXPECT_EQ("Invalid Value for level [15].", Refusal(Trip(kHere, Level("Low", "15"))));
  EXPECT_EQ("", Refusal(Trip(kAbroad, Level("Low", "15"))));
  EXPECT_EQ("Invalid Value for level [25].", Refusal(Trip(kAbroad, Level("Low", "25"))));
}

TEST(GeneratedTypeNames, APrefixLeavesTheDefaultNamespaceAside) {
  for (const char* const uri : {kHere, kAbroad, static_cast<const char*>(nullptr)}) {
    EXPECT_EQ("", Refusal(Trip(uri, Place("p:Town", kMayor))));
    EXPECT_EQ("", Refusal(Trip(uri, Place("f:Town", kCountry))));
    EXPECT_EQ("Invalid Value for level [15].", Refusal(Trip(uri, Level("p:Low", "15"))));
    EXPECT_EQ("", Refusal(Trip(uri, Level("f:Low", "15"))));
  }
}

// This library's own.
TEST(GeneratedTypeNames, WhatTheDefaultNamespaceHasNotIsOneOfTheElements) {
  EXPECT_EQ("", Refusal(Trip(kAbroad, Place("Hill", kHeight))));
  EXPECT_EQ("", Refusal(Trip(kAbroad, Level("Level", "100"))));
  EXPECT_EQ("", Refusal(Trip(nullptr, Place("Town", kMayor))));
  EXPECT_EQ("Invalid Value for level [15].", Refusal(Trip(nullptr, Level("Low", "15"))));
  EXPECT_EQ("", Refusal(Trip("urn:other", Place("Town", kMayor))));
  EXPECT_EQ("", Refusal(Trip(kHere, Place("q:Hill", kHeight))));
}

TEST(GeneratedTypeNames, WhatIsNoQualifiedNameIsRefused) {
  for (const std::string type :
       {"", ":", "p:", ":Low", "p :Low", "p: Low", "p:Low:x", "p::Low", "1p:Low", "Lo w"}) {
    EXPECT_EQ("The type [" + type + "] that xsi:type names cannot stand in the element [level].",
              Refusal(Trip(kHere, Level(type, "5"))));
  }
  for (const char* const type : {"", ":", "p:", ":Town", "p :Town", "p: Town", "p:Town:x"}) {
    EXPECT_NE("", Refusal(Trip(kHere, Place(type, kMayor)))) << type;
    EXPECT_NE("", Refusal(Trip(kHere, Place(type, "")))) << type;
  }
}

TEST(GeneratedTypeNames, JsonIsReadAlike) {
  const struct {
    const char* defaultUri;
    const char* text;
    const char* refusal;
  } cases[] = {
      {kHere, "10", ""},
      {kHere, "15", "Invalid Value for level [15]."},
      {kAbroad, "15", ""},
      {kAbroad, "25", "Invalid Value for level [25]."},
  };
  for (const auto& c : cases) {
    const std::string json = R"({"p:trip": {"@xmlns:p": "urn:example:places", "@xmlns": ")" +
                             std::string(c.defaultUri) +
                             R"(", "@xmlns:xsi": "http://www.w3.org/2001/XMLSchema-instance",)"
                             R"( "p:level": {"@xsi:type": "Low", "#text": ")" +
                             c.text + R"("}}})";
    EXPECT_EQ(c.refusal, Refusal([&](places::CTrip& trip) { trip.FromJson(json.c_str()); }));
  }
}

// Prefixes that are made for the types of each place stand for one namespace here and for another
// there.
TEST(GeneratedTypeNames, WhatIsWrittenWithMadePrefixesIsReadAsTheSameTypes) {
  const std::string document =
      Trip(kHere, Place("f:Town", kCountry) + Place("Town", kMayor) + Place("f:Town", kCountry) +
                      Place("Hill", kHeight) + Place("Place", ""));
  const CSmartPtr<places::CTrip> trip = places::NewTrip();
  trip->FromXml(document.c_str());
  const std::string text = trip->ToXml(true, true, EOLType_LF);
  EXPECT_NE(std::string::npos, text.find("xmlns:AB=\"urn:example:abroad\"")) << text;
  const CSmartPtr<places::CTrip> read = places::NewTrip();
  read->FromXml(text.c_str());
  EXPECT_EQ(text, read->ToXml(true, true, EOLType_LF));
  // With more places than are kept in a tree.
  std::string many;
  for (int i = 0; i < 300; ++i) many += Place("f:Town", kCountry) + Place("Hill", kHeight);
  const CSmartPtr<places::CTrip> large = places::NewTrip();
  large->FromXml(Trip(kHere, many).c_str());
  const std::string largeText = large->ToXml(true, true, EOLType_LF);
  const CSmartPtr<places::CTrip> largeRead = places::NewTrip();
  largeRead->FromXml(largeText.c_str());
  EXPECT_EQ(largeText, largeRead->ToXml(true, true, EOLType_LF));
}

// The prefix that is written is looked up, whatever the default namespace is.
TEST(GeneratedTypeNames, WhatIsWrittenIsReadAsTheSameTypes) {
  const CSmartPtr<places::CTrip> trip = places::NewTrip();
  trip->FromXml(
      Trip(kAbroad, Place("Town", kCountry) + Place("p:Town", kMayor) + Place("Hill", kHeight))
          .c_str());
  for (const char* const uri : {kHere, kAbroad, ""}) {
    CSerializationContext context;
    context.SetDefaultNamespaceURI(uri);
    context.GetNamespaceAliases().Add("f", kAbroad);
    context.GetNamespaceAliases().Add("xsi", "http://www.w3.org/2001/XMLSchema-instance");
    const CSmartPtr<places::CTrip> read = places::NewTrip();
    read->FromXml(trip->ToXml(false, false, EOLType_LF, context).c_str());
    EXPECT_EQ(trip->ToXml(false, false), read->ToXml(false, false));
    const CSmartPtr<places::CTrip> readOctets = places::NewTrip();
    readOctets->FromXmlStream(trip->ToFastInfosetStream(FInfoDecl_None, context));
    EXPECT_EQ(trip->ToXml(false, false), readOctets->ToXml(false, false));
  }
}
