// The bound format of examples/ on documents that nobody here wrote.
#include <algorithm>
#include <filesystem>
#include <map>
#include <set>

#include "gpx/gpx.h"
#include "qzxml/QzXml.h"
#include "survey/survey.h"
#include "tests/support/QzTest.h"
#include "tests/support/TreeText.h"

using namespace QzXmlLib16;

namespace {

constexpr char kXsi[] = "http://www.w3.org/2001/XMLSchema-instance";

bool IsGpx(const CXmlElement& element) {
  return element.GetNamespaceURI() == "http://www.topografix.com/GPX/1/1";
}

// Elements that the schema gives elements only: a class keeps none of their indentation.
bool HoldsElementsOnly(const CXmlElement& element) {
  static const std::set<std::string> names = {"gpx",  "metadata", "author", "copyright", "email",
                                              "link", "bounds",   "wpt",    "rte",       "rtept",
                                              "trk",  "trkseg",   "trkpt",  "extensions"};
  return IsGpx(element) && names.count(element.GetLocalName()) != 0;
}

std::string Written(const CXmlElement& element, const std::string& attribute,
                    const std::string& value) {
  return attribute.empty() && HoldsElementsOnly(element) ? "" : value;
}

// A number without the zeros that say nothing: "+045.30" is "45.3".
std::string WithoutIdleZeros(std::string number) {
  const bool negative = number.front() == '-';
  if (negative || number.front() == '+') number.erase(0, 1);
  if (number.find('.') != std::string::npos) {
    number.erase(number.find_last_not_of('0') + 1);
    if (number.back() == '.') number.pop_back();
  }
  number.erase(0, std::min(number.find_first_not_of('0'), number.size()));
  if (number.empty() || number.front() == '.') number.insert(0, "0");
  return (negative && number != "0" ? "-" : "") + number;
}

// A time without the zeros that say nothing: "12:00:00.50Z" is "12:00:00.5Z".
std::string WithoutIdleFraction(const std::string& time) {
  const std::size_t point = std::min(time.find('.'), time.size());
  const std::size_t zone = std::min(time.find_first_not_of("0123456789", point + 1), time.size());
  std::string kept = time.substr(0, zone);
  if (point < zone) kept.erase(kept.find_last_not_of("0.") + 1);
  return kept + time.substr(zone);
}

// What the classes make of a value of the document. The digits of a number and of a time come back
// as they are; zeros that say nothing do not, so that these are compared by their values.
std::string Expected(const CXmlElement& element, const std::string& attribute,
                     const std::string& value) {
  static const std::set<std::string> numbers = {
      "lat",         "lon", "minlat", "minlon", "maxlat", "maxlon",        "ele",    "magvar",
      "geoidheight", "sat", "hdop",   "vdop",   "pdop",   "ageofdgpsdata", "dgpsid", "number"};
  const std::string& name = attribute.empty() ? element.GetLocalName() : attribute;
  if (!IsGpx(element)) return Written(element, attribute, value);
  if (numbers.count(name) != 0) return WithoutIdleZeros(CWhitespaceUtils::Collapse(value));
  if (name == "time") return WithoutIdleFraction(CWhitespaceUtils::Collapse(value));
  return Written(element, attribute, value);
}

// A document and what its classes make of it.
struct Trip {
  std::string before;
  std::string after;
};

// Reads a document into objects and writes it back. The attributes of XML Schema instances on the
// root (schemaLocation) are no part of the classes: they go along as additional root attributes.
Trip MakeTrip(const std::string& file) {
  CXmlDocument document;
  document.Load(file.c_str());
  gpx::CGpxType object;
  CSerializationContext context;
  object.FromXmlElement(document.GetDocumentElement(), context);
  for (const CXmlAttribute* attribute : document.GetDocumentElement()->GetAttributes()) {
    if (attribute->GetNamespaceURI() == kXsi) {
      context.GetAdditionalRootAttributes()->Add(attribute->GetLocalName().c_str(),
                                                 attribute->GetValue().c_str(), kXsi);
    }
  }
  CXmlDocument written;
  written.LoadXml(object.ToXml(true, true, EOLType_LF, context).c_str());
  return {qztest::TreeText(document.GetDocumentElement(), &Expected),
          qztest::TreeText(written.GetDocumentElement(), &Written)};
}

TEST(Gpx, ReadsTheSamplesAndWritesTheSameElementsAttributesAndValues) {
  int seen = 0;
  for (const auto& entry : std::filesystem::directory_iterator(QZXML_EXAMPLE_DATA)) {
    if (entry.path().extension() != ".gpx") continue;
    SCOPED_TRACE(entry.path().filename());
    const Trip trip = MakeTrip(entry.path().string());
    EXPECT_EQ(trip.before, trip.after);
    ++seen;
  }
  EXPECT_EQ(4, seen);
}

// The samples whose version is not the one that the schema fixes: those of the older GPX 1.0, and
// one whose maker wrote a version of its own.
const std::map<std::string, std::string> kOtherVersions = {
    {"Mojstrovka.gpx", "1.0"},
    {"cerknicko-jezero-no-creator.gpx", "1.0"},
    {"cerknicko-jezero-with-elevations-zero.gpx", "1.0"},
    {"cerknicko-without-times.gpx", "1.0"},
    {"first_and_last_elevation.gpx", "1.0"},
    {"gpx1.0_with_all_fields.gpx", "1.0"},
    {"jpx-GPX_10-1.gpx", "1.0"},
    {"jpx-GPX_10-2.gpx", "1.0"},
    {"jpx-GPX_10-4.gpx", "1.0"},
    {"jpx-GPX_10-5.gpx", "1.0"},
    {"jpx-ISSUE-170.gpx", "7.7.5-play"},
    {"jpx-ISSUE-49.gpx", "1.0"},
    {"track_with_dilution_errors.gpx", "1.0"},
    {"unicode.gpx", "1.0"},
};

// The samples with an element that may not stand there, and where: a speed, which GPX 1.1 does not
// have; extensions in the namespace of GPX itself.
struct Refused {
  const char* element;
  const char* path;
};
const std::map<std::string, Refused> kRefused = {
    {"gpx1.1_with_extensions_without_namespaces.gpx", {"aaa", "/gpx/wpt/extensions"}},
    {"jpx-GPX_empty_extensions.gpx", {"speed", "/gpx/trk/trkseg/trkpt[1]"}},
    {"jpx-extensions-metadata.gpx", {"foo", "/gpx/metadata/extensions"}},
    {"jpx-extensions.gpx", {"power", "/gpx/trk/trkseg/trkpt[1]/extensions"}},
};

// What a sample is answered with; "accepted" where it is read.
std::string Answer(const std::string& name) {
  const auto version = kOtherVersions.find(name);
  if (version != kOtherVersions.end()) {
    return "Failed to set the property value [" + version->second +
           "].\nPath: /gpx/@version\nThe value [" + version->second +
           "] of version is not the fixed value [1.1]";
  }
  if (name == "jpx-GPX-full.gpx") {  // a year has four digits; its speed would be refused too
    return "Failed to set the property value.\nPath: /gpx/metadata/copyright/year\n"
           "Invalid Value for year [856].";
  }
  if (name == "gpx1.1_with_extensions.gpx") {
    return "Unexpected text [hhh\n            \n        ] found in the element [extensions].\n"
           "Path: /gpx/wpt/extensions";
  }
  const auto refused = kRefused.find(name);
  if (refused == kRefused.end()) return "accepted";
  std::string parent = refused->second.path;
  parent = parent.substr(parent.rfind('/') + 1);
  parent = parent.substr(0, parent.find('['));
  return "Failed read all the elements held within the element [" + parent +
         "]. The unexpected element [" + refused->second.element +
         "] remains un processed\nPath: " + refused->second.path;
}

TEST(Gpx, ReadsTheWholeCorpusAndRefusesWhatIsNoGpx11) {
  const char* corpora = std::getenv("QZXML_CORPORA");
  if (corpora == nullptr) GTEST_SKIP() << "QZXML_CORPORA names no folder";
  int seen = 0;
  for (const auto& entry :
       std::filesystem::directory_iterator(std::string(corpora) + "/standards/gpx")) {
    const std::string extension = entry.path().extension().string();
    if (extension != ".gpx" && extension != ".GPX") continue;
    const std::string name = entry.path().filename().string();
    SCOPED_TRACE(name);
    ++seen;
    try {
      const Trip trip = MakeTrip(entry.path().string());
      EXPECT_EQ(trip.before, trip.after);
      EXPECT_EQ(Answer(name), "accepted");
    } catch (const CQzException& e) {
      EXPECT_EQ(Answer(name), e.GetFullMessage());
    }
  }
  EXPECT_EQ(28, seen);
}

TEST(Gpx, HoldsWhatTheDocumentSays) {
  gpx::CGpxType document;
  document.FromXmlFile(QZXML_EXAMPLE_DATA "/gpx1.1_with_all_fields.gpx");
  EXPECT_EQ("1.1", document.GetVersion());
  ASSERT_TRUE(document.GetMetadata() != nullptr);
  EXPECT_EQ("author name", document.GetMetadata()->GetAuthor()->GetName());
  EXPECT_EQ("bbb.com", document.GetMetadata()->GetAuthor()->GetEmail()->GetDomain());
  EXPECT_EQ("2013", document.GetMetadata()->GetCopyright()->GetYear());
  EXPECT_EQ("2013-01-01T12:00:00", document.GetMetadata()->GetTime()->ToString());
  EXPECT_EQ("7.8", document.GetMetadata()->GetBounds()->GetMaxlon().ToString());
  ASSERT_EQ(2, document.GetWpts().GetCount());
  const CSmartPtr<gpx::CWptType> waypoint = document.GetWpts().Item(0);
  EXPECT_EQ("12.3", waypoint->GetLat().ToString());
  EXPECT_EQ("45.6", waypoint->GetLon().ToString());
  EXPECT_EQ("75.1", waypoint->GetEle()->ToString());
  EXPECT_EQ(CDateTime::dt_dateTime, waypoint->GetTime()->GetType());
  EXPECT_EQ(gpx::FixType_2d, waypoint->GetFix());
  EXPECT_EQ(CBigInteger(5), waypoint->GetSat());
  EXPECT_EQ(45, waypoint->GetDgpsid());
  EXPECT_EQ(2, waypoint->GetExtensions()->GetAnyElements().GetCount());
  EXPECT_EQ("bbb", waypoint->GetExtensions()->GetAnyElements().Item(0)->GetText());
  EXPECT_FALSE(document.GetWpts().Item(1)->GetEle().has_value());
}

TEST(Gpx, ASetterRefusesWhatAFacetForbidsAndKeepsTheValue) {
  gpx::CWptType point;
  point.SetLat(45);
  EXPECT_QZ_THROW(CQzException, "Invalid Value for lat [90.5].", point.SetLat(90.5));
  EXPECT_QZ_THROW(CQzException, "Invalid Value for lon [180].", point.SetLon(180));
  EXPECT_QZ_THROW(CQzException, "Invalid Value for magvar [360].", point.SetMagvar(360));
  EXPECT_QZ_THROW(CQzException, "Invalid Value for dgpsid [1024]", point.SetDgpsid(1024));
  EXPECT_EQ("45", point.GetLat().ToString());
  EXPECT_FALSE(point.IsSetLon());
}

TEST(Gpx, ATimeThatIsNoneIsAnsweredWithWhatAndWhere) {
  gpx::CGpxType document;
  EXPECT_QZ_THROW_FULL(
      CQzException,
      "Failed to process the element.\nPath: /gpx/wpt\nInvalid XSD DateTime [yesterday].",
      "/gpx/wpt",
      document.FromXml("<gpx xmlns='http://www.topografix.com/GPX/1/1' version='1.1' creator='c'>"
                       "<wpt lat='1' lon='0'><time>yesterday</time></wpt></gpx>"));
}

TEST(Gpx, AWrongValueIsAnsweredWithWhatAndWhere) {
  gpx::CGpxType document;
  EXPECT_QZ_THROW_FULL(
      CQzException,
      "Failed to set the property value [91].\nPath: /gpx/wpt/@lat\n"
      "Invalid Value for lat [91].",
      "/gpx/wpt/@lat",
      document.FromXml("<gpx xmlns='http://www.topografix.com/GPX/1/1' version='1.1' creator='c'>"
                       "<wpt lat='91' lon='0'/></gpx>"));
}

TEST(Gpx, AMissingAttributeIsAnsweredWithItsNameAndElement) {
  gpx::CGpxType document;
  EXPECT_QZ_THROW_FULL(
      CQzException,
      "Failed to process the element.\nPath: /gpx/wpt\n"
      "Failed to find the required Attribute [lon].",
      "/gpx/wpt",
      document.FromXml("<gpx xmlns='http://www.topografix.com/GPX/1/1' version='1.1' creator='c'>"
                       "<wpt lat='45'/></gpx>"));
}

TEST(Gpx, AMissingElementIsAnsweredWithItsNameAndParent) {
  survey::CSurvey survey;
  EXPECT_QZ_THROW_FULL(CQzException,
                       "Failed to find the required child element [by].\nPath: /survey", "/survey",
                       survey.FromXml("<survey xmlns='urn:example:survey'/>"));
}

TEST(Gpx, AnObjectBecomesAnExtensionAndComesBack) {
  survey::CSurvey survey;
  survey.SetBy("a & b");
  survey.SetAccuracy(0.5);
  const CSmartPtr<gpx::CExtensionsType> extensions(new gpx::CExtensionsType);
  extensions->GetAnyElements().Add(new CElement(&survey, nullptr));
  survey::CSurvey back;
  const CElement* kept = extensions->GetAnyElements().Item(0);
  back.FromXmlElement(kept);
  EXPECT_EQ("a & b", back.GetBy());
  EXPECT_EQ(0.5, back.GetAccuracy());
}

}  // namespace
