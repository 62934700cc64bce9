#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

// What may stand in XML, for documents that come from somewhere else.
// Source: Extensible Markup Language (XML) 1.0, fifth edition, productions 2 and 4 to 5a;
// Namespaces in XML 1.0, production 4; RFC 3629.
namespace qztool {

// The number of octets of the UTF-8 character there; 0 for no character.
std::size_t GetCharacterLength(const std::string& text, std::size_t at);

// The character there, which GetCharacterLength knows.
std::uint32_t GetCharacter(const std::string& text, std::size_t at, std::size_t length);

// Appends a character as UTF-8.
void AppendCharacter(std::string& text, std::uint32_t character);

// The place of the first octet that is no character of XML, or npos when all are.
std::size_t FindNoXmlCharacter(const std::string& text);

// A name without a colon.
bool IsNCName(const std::string& name);

// Nothing but blanks, tabs and line ends; so is the empty text.
bool IsWhiteSpace(const std::string& text);

}  // namespace qztool
