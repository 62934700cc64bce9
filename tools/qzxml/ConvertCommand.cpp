#include <map>
#include <memory>
#include <optional>
#include <string_view>

#include "qzxml/runtime/QzException.h"
#include "tools/qzxml/Commands.h"
#include "tools/qzxml/Documents.h"
#include "tools/qzxml/Failure.h"
#include "tools/qzxml/Gzip.h"
#include "tools/qzxml/Losses.h"
#include "tools/qzxml/Output.h"
#include "tools/qzxml/System.h"
#include "tools/qzxml/XmlCharacters.h"

namespace qztool {
namespace {

using QzXmlLib16::JsonRoundTrip;

constexpr int kMaxIndent = 16;

struct ConvertOptions {
  std::string in;
  std::string out;
  std::optional<DocumentFormat> to;
  std::optional<int> indent;
  JsonRoundTrip roundTrip = QzXmlLib16::JsonRoundTrip_Full;
  std::string rootName;
  bool isGzip = false;
  bool isStrict = false;
};

const std::map<std::string, DocumentFormat> kFormats = {
    {"xml", DocumentFormat::Xml},
    {"fastinfoset", DocumentFormat::FastInfoset},
    {"json", DocumentFormat::Json}};
const std::map<std::string, JsonRoundTrip> kRoundTrips = {
    {"none", QzXmlLib16::JsonRoundTrip_None},
    {"marked", QzXmlLib16::JsonRoundTrip_Marked},
    {"full", QzXmlLib16::JsonRoundTrip_Full}};

// Takes an ending off a name, if the name has it.
bool TakeEnding(std::string& name, std::string_view ending) {
  if (name.size() < ending.size() ||
      name.compare(name.size() - ending.size(), ending.size(), ending) != 0) {
    return false;
  }
  name.resize(name.size() - ending.size());
  return true;
}

// What the name of the output says and the options do not.
void CompleteByName(ConvertOptions& options) {
  std::string name = options.out;
  if (TakeEnding(name, ".gz")) options.isGzip = true;
  if (options.to.has_value()) return;
  if (TakeEnding(name, ".json")) {
    options.to = DocumentFormat::Json;
  } else if (TakeEnding(name, ".finf") || TakeEnding(name, ".fi")) {
    options.to = DocumentFormat::FastInfoset;
  } else {
    options.to = DocumentFormat::Xml;
  }
}

std::string Write(const ConvertOptions& options, DocumentFormat from,
                  const CContentDocument& document, CProgress& progress) {
  CLayout layout;
  layout.isKept = from == DocumentFormat::Xml && !options.indent.has_value();
  if (options.indent.has_value()) layout.indent = *options.indent;
  switch (*options.to) {
    case DocumentFormat::Xml:
      return WriteXml(document, layout, progress);
    case DocumentFormat::FastInfoset:
      return WriteFastInfoset(document, progress);
    case DocumentFormat::Json:
      return WriteJson(document, layout, options.roundTrip, progress);
  }
  return "";
}

void Convert(ConvertOptions options, CConsole& console) {
  CompleteByName(options);
  CProgress progress(console.err, IsErrorATerminal());
  const CInput input = ReadDocument(options.in, console, progress);
  CContentDocument document;
  ReadContent(input, {options.roundTrip, options.rootName}, document, progress);
  CNotices notices(console, options.in);
  TellLosses(document, *options.to, options.roundTrip, notices);
  if (options.isStrict && notices.GetCount() > 0) {
    throw CFailure(ExitCode_NotKept, options.out + ": not written, as " +
                                         GetFormatName(*options.to) + " would not keep all of " +
                                         options.in);
  }
  std::string octets;
  try {
    progress.Begin("writing " + options.out);
    octets = Write(options, input.format, document, progress);
  } catch (const QzXmlLib16::CQzException& e) {
    throw CFailure(ExitCode_Document, options.out + ": " + e.GetFullMessage());
  }
  if (options.isGzip) {
    progress.Begin("compressing " + options.out);
    octets = Gzip(octets, progress);
  }
  WriteOutput(options.out, octets, console.out);
}

}  // namespace

void AddConvertCommand(CCommandLine& line, CConsole& console) {
  const auto options = std::make_shared<ConvertOptions>();
  CCommand command = line.AddCommand("convert", "Convert a document into another format");
  command.AddOption("IN", options->in, "The document, plain or within gzip; - for standard input")
      .Require()
      .SetTypeName("");
  command.AddOption("OUT", options->out, "The file to write; - for standard output")
      .Require()
      .SetTypeName("");
  command
      .AddChoice(
          "--to", {"xml", "fastinfoset", "json"},
          [options](const std::string& name) { options->to = kFormats.at(name); },
          "The format; else by the name of OUT")
      .SetTypeName("FORMAT");
  command.AddFlag("--gzip", options->isGzip, "Compress the output");
  command.AddOption("--indent", options->indent, "Blanks for each level; 0 for one line")
      .SetTypeName("N")
      .RequireRange(0, kMaxIndent);
  command
      .AddChoice(
          "--round-trip", {"none", "marked", "full"},
          [options](const std::string& name) { options->roundTrip = kRoundTrips.at(name); },
          "How much of XML is kept in JSON")
      .SetTypeName("MEASURE");
  command.AddOption("--root", options->rootName, "An element around the whole of JSON")
      .SetTypeName("NAME")
      .AddCheck([](const std::string& name) {
        return IsNCName(name) ? "" : '"' + name + "\" can not be the name of an element";
      });
  command.AddFlag("--strict", options->isStrict, "Fail where not everything would be kept");
  command.SetFooter(
      "IN is XML in any encoding, Fast Infoset or JSON, by its content. The format of OUT is that\n"
      "of its name, .json, .finf or .fi, with or without .gz, and XML for any other name. Without\n"
      "--indent XML made of XML keeps its layout, and anything else is indented by 2. JSON has\n"
      "attributes and texts that can be told from elements (marked), and namespaces as well "
      "(full,\n"
      "the default). What is not kept is told on standard error, as 'file: path: message'.");
  command.SetWork([options, &console] { Convert(*options, console); });
}

}  // namespace qztool
