// Reads a GPX file, prints what it holds, changes it and writes it back; writes its tracks as XML,
// JSON and Fast Infoset, plain and compressed, and reads them again; and shows what a wrong value
// and what is missing are answered with. With --times it tells how long writing and reading take.
//
// usage: gpx_demo [--times] [FILE]
#include <chrono>
#include <cmath>
#include <iomanip>
#include <iostream>
#include <string>

#include "gpx/gpx.h"
#include "qzxml/QzXml.h"
#include "survey/survey.h"

using namespace QzXmlLib16;
using std::cout;
using std::setw;

namespace {

// --- Reading

void Print(const char* what, const CObjectCol<gpx::CWptType>& points) {
  for (int i = 0; i < points.size() && i < 3; ++i) {
    const auto point = points[i];
    cout << "    " << what << ' ' << i + 1 << ": " << point->GetLat().ToString(5) << ", "
         << point->GetLon().ToString(5);
    if (point->GetEle()) cout << ", " << point->GetEle()->ToString(1) << " m";
    if (point->GetTime()) cout << ", " << point->GetTime()->ToString();
    if (point->GetName()) cout << ", " << *point->GetName();
    cout << '\n';
  }
  if (points.size() > 3) cout << "    ... " << points.size() << " in all\n";
}

void Print(const gpx::CGpxType& document) {
  cout << "GPX " << document.GetVersion() << ", made by " << document.GetCreator() << "\n  "
       << document.GetWpts().size() << " waypoints\n";
  Print("waypoint", document.GetWpts());
  for (const auto& track : document.GetTrks()) {
    cout << "  track " << track->GetName().value_or("?") << ", " << track->GetTrksegs().size()
         << " segments\n";
    for (const auto& segment : track->GetTrksegs()) Print("point", segment->GetTrkpts());
  }
}

// --- Changing

template <typename Collection>
void Shorten(Collection& items, int count) {
  while (items.size() > count) items.Remove(count);
}

// Keeps the first points of the first track, and adds a waypoint with an extension of our own.
void Change(gpx::CGpxType& document) {
  Shorten(document.GetTrks(), 1);
  for (const auto& track : document.GetTrks()) {
    track->SetName("Shortened & renamed");
    Shorten(track->GetTrksegs(), 1);
    for (const auto& segment : track->GetTrksegs()) Shorten(segment->GetTrkpts(), 2);
  }
  document.GetWpts().Clear();
  const auto waypoint = document.GetWpts().Add();
  waypoint->SetLat(45.2761);
  waypoint->SetLon(13.7226);
  waypoint->SetName("Višnjan");
  waypoint->SetFix(gpx::FixType_3d);
  survey::CSurvey survey;
  survey.SetBy("the demo");
  survey.SetAccuracy(2.5);
  waypoint->EnsureExtensions()->GetAnyElements().Add(new CElement(&survey, nullptr));
}

// --- Three formats

CSerializationContext MakeContext() {
  CSerializationContext context;
  context.SetIndentChars("  ");
  context.SetDefaultNamespaceURI(gpx::kNamespace);
  // JSON declares namespaces on its root alone, so that all of them have to be known there.
  context.GetNamespaceAliases().Add("gpxx", "http://www.garmin.com/xmlschemas/GpxExtensions/v3");
  context.GetFIContext().SetSuggestedValues();
  return context;
}

const CSerializationContext kContext = MakeContext();

const struct {
  const char* name;
  CBinaryData (*write)(const gpx::CTrkType& track, CompressionType compression);
  void (*read)(gpx::CTrkType& track, const CBinaryData& bytes);
} kFormats[] = {
    {"XML",
     [](auto& track, auto compression) {
       return track.ToXmlStream(true, false, XmlEncoding_UTF8, EOLType_LF, kContext, compression);
     },
     [](auto& track, auto& bytes) { track.FromXmlStream(bytes); }},
    {"JSON",
     [](auto& track, auto compression) {
       return track.ToJsonStream(false, XmlEncoding_UTF8, EOLType_LF, kContext, compression);
     },
     [](auto& track, auto& bytes) { track.FromJsonStream(bytes); }},
    {"Fast Infoset",
     [](auto& track, auto compression) {
       return track.ToFastInfosetStream(FInfoDecl_None, kContext, compression);
     },
     [](auto& track, auto& bytes) { track.FromXmlStream(bytes); }},
};

void PrintSizes(const gpx::CTrkType& track) {
  cout << "\nThe whole track, in octets:\n          ";
  for (const auto& format : kFormats) cout << setw(14) << format.name;
  std::string first;
  for (const auto& [name, compression] : {std::pair("plain", CompressionType_None),
                                          {"gzip", CompressionType_GZip},
                                          {"zlib", CompressionType_ZLib}}) {
    cout << "\n  " << std::left << setw(8) << name << std::right;
    for (const auto& format : kFormats) {
      const CBinaryData bytes = format.write(track, compression);
      cout << setw(14) << bytes.GetLength();
      // Reading any of them gives the same track; compression is recognised by itself.
      gpx::CTrkType copy;
      format.read(copy, bytes);
      copy.SetExtensions(nullptr);  // open content keeps the white space between its elements
      if (first.empty()) first = copy.ToXml();
      if (copy.ToXml() != first) throw CQzException("The track did not come back.");
    }
  }
  cout << "\n  and the same track again from each of the nine\n";
}

template <typename Work>
void PrintTime(Work work) {
  constexpr int kTimes = 200;
  const auto begin = std::chrono::steady_clock::now();
  for (int i = 0; i < kTimes; ++i) work();
  const std::chrono::duration<double, std::micro> taken = std::chrono::steady_clock::now() - begin;
  cout << setw(9) << std::lround(taken.count() / kTimes);
}

void PrintTimes(const gpx::CTrkType& track) {
  cout << "\nWriting and reading it, in microseconds:\n                    write     read";
  for (const auto& format : kFormats) {
    cout << "\n  " << std::left << setw(14) << format.name << std::right;
    const CBinaryData bytes = format.write(track, CompressionType_None);
    PrintTime([&] { format.write(track, CompressionType_None); });
    PrintTime([&] {
      gpx::CTrkType copy;
      format.read(copy, bytes);
    });
  }
  cout << '\n';
}

// --- What is refused

template <typename Work>
void Refuse(const char* what, Work work) {
  cout << '\n' << what << "\n  ";
  try {
    work();
    cout << "was accepted\n";
  } catch (const CQzException& e) {
    std::string text = e.GetFullMessage();
    ReplaceAll(text, "\r", "\n");
    ReplaceAll(text, "\n", "\n  ");
    cout << text << '\n';
  }
}

void RefuseWaypoint(const char* what, const std::string& waypoint) {
  Refuse(what, [&] {
    gpx::CGpxType().FromXml(("<gpx xmlns='http://www.topografix.com/GPX/1/1' version='1.1'"
                             " creator='demo'>" +
                             waypoint + "</gpx>")
                                .c_str());
  });
}

void Run(const char* file, bool withTimes) {
  gpx::CGpxType document;
  document.FromXmlFile(file);
  Print(document);
  for (const auto& track : document.GetTrks()) {
    PrintSizes(*track);
    if (withTimes) PrintTimes(*track);
  }
  Change(document);
  CSerializationContext context = kContext;
  context.GetNamespaceAliases().Add("s", survey::kNamespace);
  cout << "\nChanged and written back:\n" << document.ToXml(true, true, EOLType_LF, context);
  for (const auto& track : document.GetTrks()) {
    cout << "\nIts track as JSON:\n" << track->ToJson(true, EOLType_LF, kContext) << '\n';
  }
  Refuse("A latitude of 91 degrees, set by a program:", [&] { document.GetWpts()[0]->SetLat(91); });
  RefuseWaypoint("A latitude of 91 degrees, read from a document:", "<wpt lat='91' lon='0'/>");
  RefuseWaypoint("A point without its longitude:", "<wpt lat='45'/>");
  Refuse("A survey without the element that has to be there:", [] {
    survey::CSurvey().FromXml("<survey xmlns='urn:example:survey'><accuracy>1</accuracy></survey>");
  });
}

}  // namespace

int main(int argc, char** argv) try {
  const bool withTimes = argc > 1 && argv[1] == std::string("--times");
  const int file = withTimes ? 2 : 1;
  Run(argc > file ? argv[file] : QZXML_EXAMPLE_DATA "/around-visnjan-with-car.gpx", withTimes);
} catch (const CQzException& e) {
  std::cerr << e.GetFullMessage() << '\n';
  return 1;
}
