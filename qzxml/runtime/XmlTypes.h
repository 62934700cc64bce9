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

// The XML declaration in front of a Fast Infoset document (ITU-T Rec. X.891, clause 12.3), with its
// version, if any, and what it says of standalone.
enum FInfoDecl : int {
  FInfoDecl_None = 0,  // no declaration
  FInfoDecl_Encoding = 1,
  FInfoDecl_EncodingStandaloneYes = 2,
  FInfoDecl_EncodingStandaloneNo = 3,
  FInfoDecl_V10 = 4,
  FInfoDecl_V10StandaloneYes = 5,
  FInfoDecl_V10StandaloneNo = 6,
  FInfoDecl_V11 = 7,
  FInfoDecl_V11StandaloneYes = 8,
  FInfoDecl_V11StandaloneNo = 9,
};

// How documents treat namespaces. The value 1 is accepted and behaves like 0.
enum SchemaType : int {
  SchemaType_Default = 0,
  SchemaType_NoNamespaces = 2,  // no namespace processing: prefixes stay in the names
};

}  // namespace QzXmlLib16
