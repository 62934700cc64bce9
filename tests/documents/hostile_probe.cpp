// Loads one file the way a program would that does not trust it, and says what came of it:
//
//   loads            a tree, which open content could take over and write back
//   fails TEXT       an exception of the library's family, with its message
//   refused TEXT     a tree, which open content or writing refused with such an exception
//
// Ends with 0 in each of these cases; anything else is a fault of the library.
//
// usage: hostile_probe FILE
#include <cstdio>
#include <fstream>
#include <iterator>
#include <string>

#include "qzxml/QzXml.h"

using namespace QzXmlLib16;

int main(int argc, char** argv) {
  if (argc != 2) return 2;
  std::ifstream file(argv[1], std::ios::binary);
  std::string bytes{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
  const auto* data = reinterpret_cast<const unsigned char*>(bytes.data());
  const auto length = static_cast<std::uint32_t>(bytes.size());
  try {
    CXmlDocument document;
    document.LoadXmlStream(data, length);
  } catch (const CQzException& e) {
    std::printf("fails %s\n", e.GetMessage().c_str());
    return 0;
  }
  try {
    CElement element("none");
    if (CFastInfosetReader::IsFastInfoset(data, length)) {
      element.FromXmlStream(data, length);
    } else {
      element.FromXml(bytes.c_str());
    }
    const std::string text = element.ToXml();
    CXmlDocument again;
    again.LoadXml(text.c_str());
  } catch (const CQzException& e) {
    std::printf("refused %s\n", e.GetMessage().c_str());
    return 0;
  }
  std::printf("loads\n");
  return 0;
}
