// Reads a GPX file, prints what it holds, changes it, writes it back indented, shows one object as
// XML, JSON and Fast Infoset, plain and compressed, with sizes, and what a wrong value, a missing
// attribute and a missing element are answered with. With --times it also tells how long writing
// and reading the object take.
//
// usage: gpx_demo [--times] [FILE]
#include <chrono>
#include <cstdio>
#include <exception>
#include <string>

#include "examples/Gpx.h"
#include "examples/Survey.h"

using namespace QzXmlLib16;

namespace {

void PrintPoints(const char* what, const gpx::CWptCol& points) {
  int number = 0;
  for (const CSmartPtr<gpx::CWpt>& point : points) {
    if (++number > 3) break;
    std::printf("    %s %d: %s, %s", what, number, point->GetLat().ToString(5).c_str(),
                point->GetLon().ToString(5).c_str());
    if (point->GetEle()) std::printf(", %s m", point->GetEle()->ToString(1).c_str());
    if (point->GetTime()) std::printf(", %s", point->GetTime()->ToString().c_str());
    if (point->GetName()) std::printf(", %s", point->GetName()->c_str());
    std::printf("\n");
  }
  if (points.GetCount() > number) std::printf("    ... %d in all\n", points.GetCount());
}

void Print(const gpx::CGpx& document) {
  std::printf("GPX %s, made by %s\n", document.GetVersion().c_str(), document.GetCreator().c_str());
  std::printf("  %d waypoints\n", document.GetWpts().GetCount());
  PrintPoints("waypoint", document.GetWpts());
  for (const CSmartPtr<gpx::CTrk>& track : document.GetTrks()) {
    std::printf("  track %s, %d segments\n", track->GetName() ? track->GetName()->c_str() : "?",
                track->GetTrksegs().GetCount());
    for (const CSmartPtr<gpx::CTrkseg>& segment : track->GetTrksegs()) {
      PrintPoints("point", segment->GetTrkpts());
    }
  }
}

// Keeps the first points of the first track, and adds a waypoint with an extension of our own.
void Change(gpx::CGpx& document) {
  while (document.GetTrks().GetCount() > 1) document.GetTrks().Remove(1);
  for (const CSmartPtr<gpx::CTrk>& track : document.GetTrks()) {
    track->SetName(std::string("Shortened & renamed"));
    while (track->GetTrksegs().GetCount() > 1) track->GetTrksegs().Remove(1);
    for (const CSmartPtr<gpx::CTrkseg>& segment : track->GetTrksegs()) {
      while (segment->GetTrkpts().GetCount() > 2) segment->GetTrkpts().Remove(2);
    }
  }
  while (document.GetWpts().GetCount() > 0) document.GetWpts().Remove(0);

  const CSmartPtr<gpx::CWpt> waypoint = document.GetWpts().Add();
  waypoint->SetLat(45.2761);
  waypoint->SetLon(13.7226);
  waypoint->SetName(std::string("Višnjan"));
  waypoint->SetFix(gpx::Fix_3d);

  survey::CSurvey survey;
  survey.SetBy(std::string("the demo"));
  survey.SetAccuracy(2.5);
  const CSmartPtr<gpx::CExtensions> extensions(new gpx::CExtensions);
  extensions->GetElements().Add(new CElement(&survey, nullptr));
  waypoint->SetExtensions(extensions);
}

// --- One object in several forms

CSerializationContext TrackContext(const gpx::CTrk& track) {
  CSerializationContext context;
  context.SetIndentChars("  ");
  context.SetDefaultNamespaceURI(track.GetNamespace().c_str());
  // JSON declares namespaces on its root alone, so that all of them have to be known there.
  context.GetNamespaceAliases().Add("gpxx", "http://www.garmin.com/xmlschemas/GpxExtensions/v3");
  return context;
}

// The track without its open content, which keeps the white space between its elements as text.
std::string WithoutExtensions(gpx::CTrk& track) {
  track.SetExtensions(nullptr);
  return track.ToXml();
}

// The three formats of one object, side by side.
struct Format {
  const char* name;
  CBinaryData (*write)(const gpx::CTrk& track, const CSerializationContext& context,
                       CompressionType compression);
  void (*read)(gpx::CTrk& track, const CBinaryData& bytes);
};

constexpr Format kFormats[] = {
    {"XML",
     [](const gpx::CTrk& track, const CSerializationContext& context, CompressionType compression) {
       return track.ToXmlStream(true, false, XmlEncoding_UTF8, EOLType_LF, context, compression);
     },
     [](gpx::CTrk& track, const CBinaryData& bytes) { track.FromXmlStream(bytes); }},
    {"JSON",
     [](const gpx::CTrk& track, const CSerializationContext& context, CompressionType compression) {
       return track.ToJsonStream(false, XmlEncoding_UTF8, EOLType_LF, context, compression);
     },
     [](gpx::CTrk& track, const CBinaryData& bytes) { track.FromJsonStream(bytes); }},
    {"Fast Infoset",
     [](const gpx::CTrk& track, const CSerializationContext& context, CompressionType compression) {
       return track.ToFastInfosetStream(FInfoDecl_None, context, compression);
     },
     [](gpx::CTrk& track, const CBinaryData& bytes) { track.FromXmlStream(bytes); }},
};

void PrintSizes(const gpx::CTrk& track) {
  const struct {
    const char* name;
    CompressionType type;
  } forms[] = {{"plain", CompressionType_None},
               {"gzip", CompressionType_GZip},
               {"zlib", CompressionType_ZLib}};
  CSerializationContext context = TrackContext(track);
  context.GetFIContext().SetSuggestedValues();
  gpx::CTrk original;
  original.FromXml(track.ToXml().c_str());
  const std::string expected = WithoutExtensions(original);

  std::printf("\nThe whole track, in octets:\n  %-8s", "");
  for (const Format& format : kFormats) std::printf("%14s", format.name);
  for (const auto& form : forms) {
    std::printf("\n  %-8s", form.name);
    for (const Format& format : kFormats) {
      const CBinaryData bytes = format.write(track, context, form.type);
      std::printf("%14u", bytes.GetLength());
      // Reading any of them gives the same track; compression is recognised by itself.
      gpx::CTrk copy;
      format.read(copy, bytes);
      if (WithoutExtensions(copy) != expected) throw CQzException("The track did not come back.");
    }
  }
  std::printf("\n  and the same track again from each of the nine\n");
}

// Microseconds that the work takes, once it has run often enough to tell.
template <typename Work>
double MicrosecondsOf(Work work) {
  using Clock = std::chrono::steady_clock;
  constexpr int kTimes = 200;
  const Clock::time_point begin = Clock::now();
  for (int i = 0; i < kTimes; ++i) work();
  return std::chrono::duration<double, std::micro>(Clock::now() - begin).count() / kTimes;
}

void PrintTimes(const gpx::CTrk& track) {
  CSerializationContext context = TrackContext(track);
  context.GetFIContext().SetSuggestedValues();
  std::printf("\nWriting and reading it, in microseconds:\n  %-14s%9s%9s\n", "", "write", "read");
  for (const Format& format : kFormats) {
    const CBinaryData bytes = format.write(track, context, CompressionType_None);
    const double write =
        MicrosecondsOf([&] { format.write(track, context, CompressionType_None); });
    const double read = MicrosecondsOf([&] {
      gpx::CTrk copy;
      format.read(copy, bytes);
    });
    std::printf("  %-14s%9.0f%9.0f\n", format.name, write, read);
  }
}

// The text of the failure that a document is answered with.
template <typename Read>
void Refuse(const char* what, Read read) {
  std::printf("\n%s\n", what);
  try {
    read();
    std::printf("  was accepted\n");
  } catch (const CQzException& e) {
    std::string text = "  " + e.GetFullMessage();
    ReplaceAll(text, "\n", "\r");
    ReplaceAll(text, "\r", "\n  ");
    std::printf("%s\n", text.c_str());
  }
}

int Run(const char* file, bool withTimes) {
  gpx::CGpx document;
  document.FromXmlFile(file);
  Print(document);
  for (const CSmartPtr<gpx::CTrk>& track : document.GetTrks()) {
    PrintSizes(*track);
    if (withTimes) PrintTimes(*track);
  }

  Change(document);
  CSerializationContext context;
  context.SetIndentChars("  ");
  context.SetDefaultNamespaceURI(document.GetNamespace().c_str());
  context.GetNamespaceAliases().Add("s", "urn:example:survey");
  std::printf("\nChanged and written back:\n%s",
              document.ToXml(true, true, EOLType_LF, context).c_str());

  for (const CSmartPtr<gpx::CTrk>& track : document.GetTrks()) {
    std::printf("\nIts track as JSON:\n%s\n",
                track->ToJson(true, EOLType_LF, TrackContext(*track)).c_str());
  }

  Refuse("A latitude of 91 degrees, set by a program:",
         [&] { document.GetWpts().Item(0)->SetLat(91); });
  Refuse("A latitude of 91 degrees, read from a document:", [] {
    gpx::CGpx refused;
    refused.FromXml(
        "<gpx xmlns='http://www.topografix.com/GPX/1/1' version='1.1' creator='demo'>"
        "<wpt lat='91' lon='0'/></gpx>");
  });
  Refuse("A point without its longitude:", [] {
    gpx::CGpx refused;
    refused.FromXml(
        "<gpx xmlns='http://www.topografix.com/GPX/1/1' version='1.1' creator='demo'>"
        "<wpt lat='45'/></gpx>");
  });
  Refuse("A survey without the element that has to be there:", [] {
    survey::CSurvey refused;
    refused.FromXml("<survey xmlns='urn:example:survey'><accuracy>1</accuracy></survey>");
  });
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  const bool withTimes = argc > 1 && argv[1] == std::string("--times");
  const int file = withTimes ? 2 : 1;
  try {
    return Run(argc > file ? argv[file] : QZXML_EXAMPLE_DATA "/around-visnjan-with-car.gpx",
               withTimes);
  } catch (const CQzException& e) {
    std::fprintf(stderr, "%s\n", e.GetFullMessage().c_str());
  } catch (const std::exception& e) {
    std::fprintf(stderr, "%s\n", e.what());
  }
  return 1;
}
