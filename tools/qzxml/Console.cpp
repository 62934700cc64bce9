#include "tools/qzxml/Console.h"

#include <ostream>

#include "tools/qzxml/XmlCharacters.h"

namespace qztool {

CNotices::CNotices(CConsole& console, const std::string& file)
    : m_console(console), m_file(Printable(file)) {}

bool CNotices::IsTold(const std::string& message) {
  ++m_count;
  return ++m_kinds[message.substr(0, message.find_first_of("\"("))] <= kPlacesOfAKind;
}

void CNotices::Tell(const std::string& path, const std::string& message) {
  m_console.err << m_file << ": " << Printable(path) << ": " << Printable(message) << '\n';
}

void CNotices::Finish() {
  for (const auto& [kind, count] : m_kinds) {
    if (count <= kPlacesOfAKind) continue;
    m_console.err << m_file << ": " << count - kPlacesOfAKind << " more places: " << kind
                  << (kind.back() == ' ' ? "..." : "") << '\n';
  }
}

std::string Printable(const std::string& text) {
  static constexpr char kDigits[] = "0123456789abcdef";
  std::string result;
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t length = GetCharacterLength(text, at);
    const auto octet = static_cast<unsigned char>(text[at]);
    if (length == 0 || octet < 0x20 || octet == 0x7F) {
      result += "\\x";
      result += kDigits[octet >> 4];
      result += kDigits[octet & 0x0F];
      ++at;
    } else {
      result.append(text, at, length);
      at += length;
    }
  }
  return result;
}

std::string CountOctets(std::uint64_t count) {
  return std::to_string(count) + (count == 1 ? " octet" : " octets");
}

}  // namespace qztool
