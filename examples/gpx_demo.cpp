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

#include "gpx/gpx.h"
#include "qzxml/QzXml.h"
#include "survey/survey.h"

using namespace QzXmlLib16;

namespace {

void PrintPoints(const char* what, const CObjectCol<gpx::CWptType>& points) {
  int number = 0;
  for (const auto& point : points) {
    if (++number > 3) break;
    std::printf("    %s %d: %s, %s", what, number, point->GetLat().ToString(5).c_str(),
                point->GetLon().ToString(5).c_str());
    if (point->GetEle()) std::printf(", %s m", point->GetEle()->ToString(1).c_str());
    if (point->GetTime()) std::printf(", %s", point->GetTime()->ToString().c_str());
    if (point->GetName()) std::printf(", %s", point->GetName()->c_str());
    std::printf("\n");
  }
  if (points.size() > number) std::printf("    ... %d in all\n", points.size());
}

void Print(const gpx::CGpxType& document) {
  std::printf("GPX %s, made by %s\n", document.GetVersion().c_str(), document.GetCreator().c_str());
  std::printf("  %d waypoints\n", document.GetWpts().size());
  PrintPoints("waypoint", document.GetWpts());
  for (const auto& track : document.GetTrks()) {
    std::printf("  track %s, %d segments\n", track->GetName().value_or("?").c_str(),
                track->GetTrksegs().size());
    for (const auto& segment : track->GetTrksegs()) PrintPoints("point", segment->GetTrkpts());
  }
}

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

// --- One object in several forms

using Context = CSerializationContext;
using Track = gpx::CTrkType;

Context NewContext() {
  Context context;
  context.SetIndentChars("  ");
  context.SetDefaultNamespaceURI(gpx::kNamespace);
  return context;
}

Context TrackContext() {
  Context context = NewContext();
  // JSON declares namespaces on its root alone, so that all of them have to be known there.
  context.GetNamespaceAliases().Add("gpxx", "http://www.garmin.com/xmlschemas/GpxExtensions/v3");
  context.GetFIContext().SetSuggestedValues();
  return context;
}

// The three formats of one object, side by side.
const struct {
  const char* name;
  CBinaryData (*write)(const Track& track, const Context& context, CompressionType compression);
  void (*read)(Track& track, const CBinaryData& bytes);
} kFormats[] = {
    {"XML",
     [](const Track& track, const Context& context, CompressionType compression) {
       return track.ToXmlStream(true, false, XmlEncoding_UTF8, EOLType_LF, context, compression);
     },
     [](Track& track, const CBinaryData& bytes) { track.FromXmlStream(bytes); }},
    {"JSON",
     [](const Track& track, const Context& context, CompressionType compression) {
       return track.ToJsonStream(false, XmlEncoding_UTF8, EOLType_LF, context, compression);
     },
     [](Track& track, const CBinaryData& bytes) { track.FromJsonStream(bytes); }},
    {"Fast Infoset",
     [](const Track& track, const Context& context, CompressionType compression) {
       return track.ToFastInfosetStream(FInfoDecl_None, context, compression);
     },
     [](Track& track, const CBinaryData& bytes) { track.FromXmlStream(bytes); }},
};

// The track without its open content, which keeps the white space between its elements as text.
std::string WithoutExtensions(Track& track) {
  track.SetExtensions(nullptr);
  return track.ToXml();
}

void PrintSizes(const Track& track) {
  const struct {
    const char* name;
    CompressionType type;
  } forms[] = {{"plain", CompressionType_None},
               {"gzip", CompressionType_GZip},
               {"zlib", CompressionType_ZLib}};
  Track original;
  original.FromXml(track.ToXml().c_str());
  const std::string expected = WithoutExtensions(original);

  std::printf("\nThe whole track, in octets:\n  %-8s", "");
  for (const auto& format : kFormats) std::printf("%14s", format.name);
  for (const auto& form : forms) {
    std::printf("\n  %-8s", form.name);
    for (const auto& format : kFormats) {
      const CBinaryData bytes = format.write(track, TrackContext(), form.type);
      std::printf("%14u", bytes.GetLength());
      // Reading any of them gives the same track; compression is recognised by itself.
      Track copy;
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

void PrintTimes(const Track& track) {
  const Context context = TrackContext();
  std::printf("\nWriting and reading it, in microseconds:\n  %-14s%9s%9s\n", "", "write", "read");
  for (const auto& format : kFormats) {
    const CBinaryData bytes = format.write(track, context, CompressionType_None);
    const double write =
        MicrosecondsOf([&] { format.write(track, context, CompressionType_None); });
    const double read = MicrosecondsOf([&] {
      Track copy;
      format.read(copy, bytes);
    });
    std::printf("  %-14s%9.0f%9.0f\n", format.name, write, read);
  }
}

// The text of the failure that a piece of work is answered with.
template <typename Work>
void Refuse(const char* what, Work work) {
  std::printf("\n%s\n", what);
  try {
    work();
    std::printf("  was accepted\n");
  } catch (const CQzException& e) {
    std::string text = "  " + e.GetFullMessage();
    ReplaceAll(text, "\n", "\r");
    ReplaceAll(text, "\r", "\n  ");
    std::printf("%s\n", text.c_str());
  }
}

void RefuseDocument(const char* what, const char* waypoint) {
  const std::string text =
      "<gpx xmlns='http://www.topografix.com/GPX/1/1' version='1.1' creator='demo'>" +
      std::string(waypoint) + "</gpx>";
  Refuse(what, [&] { gpx::NewGpx()->FromXml(text.c_str()); });
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
  Context context = NewContext();
  context.GetNamespaceAliases().Add("s", survey::kNamespace);
  std::printf("\nChanged and written back:\n%s",
              document.ToXml(true, true, EOLType_LF, context).c_str());
  for (const auto& track : document.GetTrks()) {
    std::printf("\nIts track as JSON:\n%s\n",
                track->ToJson(true, EOLType_LF, TrackContext()).c_str());
  }

  Refuse("A latitude of 91 degrees, set by a program:", [&] { document.GetWpts()[0]->SetLat(91); });
  RefuseDocument("A latitude of 91 degrees, read from a document:", "<wpt lat='91' lon='0'/>");
  RefuseDocument("A point without its longitude:", "<wpt lat='45'/>");
  Refuse("A survey without the element that has to be there:", [] {
    survey::NewSurvey()->FromXml(
        "<survey xmlns='urn:example:survey'><accuracy>1</accuracy></survey>");
  });
}

}  // namespace

int main(int argc, char** argv) {
  const bool withTimes = argc > 1 && argv[1] == std::string("--times");
  const int file = withTimes ? 2 : 1;
  try {
    Run(argc > file ? argv[file] : QZXML_EXAMPLE_DATA "/around-visnjan-with-car.gpx", withTimes);
    return 0;
  } catch (const CQzException& e) {
    std::fprintf(stderr, "%s\n", e.GetFullMessage().c_str());
  } catch (const std::exception& e) {
    std::fprintf(stderr, "%s\n", e.what());
  }
  return 1;
}
