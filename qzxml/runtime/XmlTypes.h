#pragma once

#include <cstdint>

// The short names of two unsigned types, and the enumerations that cross the library's boundary.
// Their numbers are part of the interface: generated code passes them.
namespace QzXmlLib16 {

using BYTE = unsigned char;
using DWORD = std::uint32_t;

// The form of a document's bytes.
enum XmlEncoding : int {
  XmlEncoding_Default = 0,      // text in the local encoding; no encoding in the declaration
  XmlEncoding_UTF8 = 1,         // encoding="UTF-8"
  XmlEncoding_UTF16 = 2,        // encoding="UTF-16"; a file begins with FF FE
  XmlEncoding_UTF16NoDecl = 3,  // as 2, without an encoding in the declaration
};

// The line end that a writer puts out.
enum EOLType : int {
  EOLType_CRLF = 0,
  EOLType_LF = 1,
};

// What the bytes of a document are packed with.
enum CompressionType : int {
  CompressionType_None = 0,
  CompressionType_GZip = 1,  // RFC 1952, level 1
  CompressionType_ZLib = 2,  // RFC 1950, level 1; not for files
};

// How documents treat namespaces. The value 1 is accepted and behaves like 0.
enum SchemaType : int {
  SchemaType_Default = 0,
  SchemaType_NoNamespaces = 2,  // no namespace processing: prefixes stay in the names
};

}  // namespace QzXmlLib16
