#pragma once

#include <cstdint>
#include <string>

#include "tools/qzxml/Console.h"
#include "tools/qzxml/Progress.h"
#include "tools/qzxml/TextEncoding.h"

namespace qztool {

enum class DocumentFormat { Xml, FastInfoset, Json };

// "XML", "Fast Infoset", "JSON".
const char* GetFormatName(DocumentFormat format);

// A document as it came, recognised by its content alone.
struct CInput {
  std::string name;                // as messages have it
  std::uint64_t size = 0;          // of the file
  std::string compression;         // "gzip", "zlib", or "" for none
  std::uint64_t expandedSize = 0;  // of the document in it
  DocumentFormat format = DocumentFormat::Xml;
  CTextEncoding encoding;  // of XML and JSON
  std::string octets;      // expanded, and in UTF-8 unless it is Fast Infoset
};

// Reads a file, or standard input for "-", expands it and finds out what it is. Throws CFailure:
// ExitCode_File as ReadInput, and ExitCode_Document for what is empty, damaged or none of the
// formats.
CInput ReadDocument(const std::string& name, CConsole& console, CProgress& progress);

}  // namespace qztool
