#include <algorithm>
#include <map>
#include <memory>
#include <ostream>
#include <set>

#include "qzxml/runtime/Functions.h"
#include "tools/qzxml/Commands.h"
#include "tools/qzxml/Documents.h"
#include "tools/qzxml/Failure.h"
#include "tools/qzxml/FastInfosetDecoder.h"
#include "tools/qzxml/JsonValue.h"
#include "tools/qzxml/OctetListing.h"
#include "tools/qzxml/System.h"
#include "tools/qzxml/XmlCharacters.h"

namespace qztool {
namespace {

using QzXmlLib16::FormatString;

struct InspectOptions {
  std::string file;
  bool isOctets = false;
};

struct Counts {
  std::uint64_t elements = 0;
  std::uint64_t attributes = 0;
  std::uint64_t texts = 0;
  std::uint64_t textOctets = 0;
  std::uint64_t sections = 0;
  std::uint64_t comments = 0;
  std::uint64_t instructions = 0;
  std::uint64_t depth = 0;
  std::map<std::string, std::set<std::string>> namespaces;  // with their prefixes
};

void CountItem(const CContentItem& item, Counts& counts) {
  switch (item.kind) {
    case ContentKind::Element:
      break;
    case ContentKind::CData:
      ++counts.sections;
      if (item.text.empty()) break;
      ++counts.texts;
      counts.textOctets += item.text.size();
      break;
    case ContentKind::Text:
      if (IsWhiteSpace(item.text)) break;
      ++counts.texts;
      counts.textOctets += item.text.size();
      break;
    case ContentKind::Comment:
      ++counts.comments;
      break;
    case ContentKind::Instruction:
      ++counts.instructions;
      break;
  }
}

void CountElement(const CContentElement& element, std::uint64_t depth, Counts& counts) {
  ++counts.elements;
  counts.depth = std::max(counts.depth, depth);
  counts.attributes += element.attributes.size();
  const auto countName = [&counts](const std::string& prefix, const std::string& uri) {
    if (!uri.empty()) counts.namespaces[uri].insert(prefix);
  };
  for (const CContentDeclaration& d : element.declarations) countName(d.prefix, d.uri);
  countName(element.name->prefix, element.name->uri);
  for (const CContentAttribute& a : element.attributes) countName(a.name->prefix, a.name->uri);
  for (const CContentItem& item : element.items) {
    if (item.element != nullptr) {
      CountElement(*item.element, depth + 1, counts);
    } else {
      CountItem(item, counts);
    }
  }
}

class CInspection {
 public:
  CInspection(const InspectOptions& options, CConsole& console)
      : m_options(options),
        m_out(console.out),
        m_progress(console.err, IsErrorATerminal()),
        m_input(ReadDocument(options.file, console, m_progress)) {}

  void Run() {
    PutHead();
    m_progress.Begin("reading " + m_input.name);
    try {
      switch (m_input.format) {
        case DocumentFormat::Json:
          PutJson();
          break;
        case DocumentFormat::Xml:
          PutXml();
          break;
        case DocumentFormat::FastInfoset:
          PutFastInfoset();
          break;
      }
    } catch (const CDocumentFailure& e) {
      m_out.flush();
      throw CFailure(ExitCode_Document, m_input.name + ": " + e.what());
    }
    FlushOutput(m_out);
  }

 private:
  void Put(const char* what, const std::string& value) {
    m_out << FormatString("%-24s", what) << Printable(value) << '\n';
  }
  void Put(const char* what, std::uint64_t value) { Put(what, std::to_string(value)); }

  void PutHead() {
    Put("file", m_input.name);
    Put("size", CountOctets(m_input.size));
    Put("compression",
        m_input.compression.empty()
            ? "none"
            : m_input.compression + ", " + CountOctets(m_input.expandedSize) + " expanded");
    Put("format", GetFormatName(m_input.format));
    if (m_input.format == DocumentFormat::FastInfoset) return;
    std::string encoding = m_input.encoding.name;
    if (m_input.encoding.hasByteOrderMark) encoding += ", with a byte-order mark";
    if (!m_input.encoding.declared.empty()) encoding += ", declared";
    Put("encoding", encoding);
  }

  // ---- XML ----

  void PutXml() {
    CContentDocument document;
    ReadContent(m_input, CJsonReading(), document, m_progress);
    PutContent(document);
  }

  void PutContent(const CContentDocument& document) {
    Counts counts;
    for (const CContentItem& item : document.before) CountItem(item, counts);
    CountElement(*document.root, 1, counts);
    for (const CContentItem& item : document.after) CountItem(item, counts);
    if (!document.documentType.empty()) {
      const std::string& type = document.documentType;
      const std::size_t subset = type.find('[');
      Put("document type", subset == std::string::npos ? type : type.substr(0, subset) + "[...]>");
    }
    const CContentName& root = *document.root->name;
    Put("root", root.uri.empty() ? root.GetQName() : root.GetQName() + " in " + root.uri);
    Put("namespaces", counts.namespaces.size());
    for (const auto& [uri, prefixes] : counts.namespaces) {
      std::string list;
      for (const std::string& prefix : prefixes) {
        list += (list.empty() ? "" : ", ") + (prefix.empty() ? "the default" : prefix);
      }
      Put("", uri + " (" + list + ')');
    }
    Put("elements", counts.elements);
    Put("attributes", counts.attributes);
    Put("depth", counts.depth);
    Put("texts", std::to_string(counts.texts) + ", " + CountOctets(counts.textOctets));
    Put("CDATA sections", counts.sections);
    Put("comments", counts.comments);
    Put("instructions", counts.instructions);
    PutLosses(document.losses);
  }

  void PutLosses(const std::vector<CContentLoss>& losses) {
    const std::size_t told = std::min<std::size_t>(losses.size(), CNotices::kPlacesOfAKind);
    for (std::size_t i = 0; i < told; ++i) {
      const CContentElement* const element = losses[i].element;
      Put("beside", (element != nullptr ? element->GetPath() + ": " : "") + losses[i].message);
    }
    if (losses.size() > told) {
      Put("beside", std::to_string(losses.size() - told) + " more places");
    }
  }

  // ---- JSON ----

  void PutJson() {
    CJsonCounts counts;
    const CJsonValue value = ParseJson(m_input.octets, counts, m_progress);
    std::string root = "a plain value";
    if (value.kind == JsonKind::Array) {
      root = "an array of " + std::to_string(value.values.size()) + " items";
    } else if (value.kind == JsonKind::Object && value.names.size() == 1) {
      root = value.names[0];
    } else if (value.kind == JsonKind::Object) {
      root = "an object of " + std::to_string(value.names.size()) + " members";
    }
    Put("root", root);
    Put("objects", counts.objects);
    Put("members", counts.members);
    Put("arrays", counts.arrays);
    Put("depth", counts.depth);
    Put("strings", counts.strings);
    Put("numbers", counts.numbers);
    Put("booleans", counts.booleans);
    Put("nulls", counts.nulls);
    Put("comments", counts.comments.size());
  }

  // ---- Fast Infoset ----

  void PutFastInfoset() {
    try {
      CContentDocument document;
      CFastInfosetDecoder decoder(m_input.octets, document);
      decoder.AcceptUnknownAlgorithms();
      decoder.Run(m_progress);
      Put("declaration", decoder.GetDeclaration().empty() ? "none" : decoder.GetDeclaration());
      PutContent(document);
      PutTables(decoder.GetTables());
    } catch (const CDocumentFailure&) {
      PutOctets();  // as far as they mean something
      throw;
    }
    PutOctets();
  }

  void PutOctets() {
    if (!m_options.isOctets) return;
    m_out << '\n';
    const OctetRows rows = ListOctets(m_out);
    CContentDocument document;
    CFastInfosetDecoder decoder(m_input.octets, document, rows);
    decoder.AcceptUnknownAlgorithms();
    decoder.Run(m_progress);
  }

  void PutTables(const CFastInfosetTables& tables) {
    if (!tables.externalVocabulary.empty()) {
      Put("external vocabulary", tables.externalVocabulary);
    }
    PutTable("alphabets", tables.alphabets, 33);
    PutTable("algorithms", tables.algorithms, 33);
    PutTable("prefixes", tables.prefixes, 1);
    PutTable("namespace names", tables.namespaceNames, 1);
    PutTable("local names", tables.localNames, 1);
    PutTable("other names", tables.otherNames, 1);
    PutTable("other URIs", tables.otherUris, 1);
    PutTable("attribute values", tables.attributeValues, 1);
    PutTable("character chunks", tables.characterChunks, 1);
    PutTable("other strings", tables.otherStrings, 1);
    PutNames("element names", tables, tables.elementNames);
    PutNames("attribute names", tables, tables.attributeNames);
  }

  void PutTable(const char* what, const std::vector<std::string>& table, std::size_t first) {
    if (table.empty()) return;
    Put(what, table.size());
    for (std::size_t i = 0; i < table.size(); ++i) PutEntry(i + first, Shorten(table[i]));
  }

  void PutNames(const char* what, const CFastInfosetTables& tables,
                const std::vector<CFastInfosetTables::Name>& names) {
    if (names.empty()) return;
    const auto get = [](const std::vector<std::string>& table, std::uint32_t index) {
      return index == 0 || index > table.size() ? std::string() : table[index - 1];
    };
    Put(what, names.size());
    for (std::size_t i = 0; i < names.size(); ++i) {
      const std::string prefix = get(tables.prefixes, names[i].prefix);
      const std::string uri = get(tables.namespaceNames, names[i].namespaceName);
      PutEntry(i + 1, Printable((prefix.empty() ? "" : prefix + ':') +
                                get(tables.localNames, names[i].localName) +
                                (uri.empty() ? "" : " in " + uri)));
    }
  }

  void PutEntry(std::size_t index, const std::string& text) {
    m_out << FormatString("%8zu  ", index) << text << '\n';
  }

  const InspectOptions& m_options;
  std::ostream& m_out;
  CProgress m_progress;
  const CInput m_input;
};

}  // namespace

void AddInspectCommand(CCommandLine& line, CConsole& console) {
  const auto options = std::make_shared<InspectOptions>();
  CCommand command = line.AddCommand(
      "inspect", "Say what a document is: its format, names, counts, sizes and tables");
  command
      .AddOption("FILE", options->file, "The document, plain or within gzip; - for standard input")
      .Require()
      .SetTypeName("");
  command.AddFlag("--octets", options->isOctets,
                  "Of Fast Infoset, list every octet with what it means");
  command.SetWork([options, &console] { CInspection(*options, console).Run(); });
}

}  // namespace qztool
