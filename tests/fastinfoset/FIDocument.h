#pragma once

#include <cstdint>
#include <string>

#include "qzxml/serialization/SerializationContext.h"
#include "qzxml/xml/XmlDocument.h"
#include "tests/xml/TreeShape.h"

// Fast Infoset documents octet by octet, and what the reader makes of them.
namespace qztest {

// "3C 00 61" as three octets; blanks do not count.
inline std::string Octets(const std::string& hex) {
  const auto digit = [](char c) { return c <= '9' ? c - '0' : c - 'A' + 10; };
  std::string octets;
  for (std::size_t i = 0; i < hex.size();) {
    if (hex[i] == ' ') {
      ++i;
      continue;
    }
    octets += static_cast<char>(digit(hex[i]) << 4 | digit(hex[i + 1]));
    i += 2;
  }
  return octets;
}

// A document: identification, a head without components, and these octets.
inline std::string Finf(const std::string& body) { return Octets("E0 00 00 01 00") + body; }
inline std::string FinfOf(const std::string& hex) { return Finf(Octets(hex)); }

inline std::string Times(std::size_t count, const std::string& text) {
  std::string all;
  all.reserve(count * text.size());
  for (std::size_t i = 0; i < count; ++i) all += text;
  return all;
}

inline void LoadOctets(QzXmlLib16::CXmlDocument& document, const std::string& octets) {
  document.LoadXmlStream(reinterpret_cast<const unsigned char*>(octets.data()),
                         static_cast<std::uint32_t>(octets.size()));
}

// The tree of a document, see Shape.
inline std::string ShapeOf(const std::string& octets,
                           const QzXmlLib16::CSerializationContext& context =
                               QzXmlLib16::CSerializationContext::GetDefaultContext()) {
  QzXmlLib16::CXmlDocument document(context);
  LoadOctets(document, octets);
  return Shape(document);
}

}  // namespace qztest
