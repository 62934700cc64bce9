#pragma once

// The texts of failures that more than one place in fastinfoset/ raises.
namespace QzXmlLib16::Messages {

inline constexpr char kFIIndexOutsideTable[] =
    "Failed to parse FastInfoset. The index %u is outside a table of %u entries.";
inline constexpr char kFIUnknownByteEncoding[] = "Unknown byte encoding.";

}  // namespace QzXmlLib16::Messages
