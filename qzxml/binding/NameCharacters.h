#pragma once

#include <cstdint>

// The characters of XML names. XML Schema 1.0 speaks of the second edition of XML, whose long
// tables the fifth gave up for a few ranges that hold them; a name that any edition takes is one
// here. Source: XML 1.0, fifth edition, section 2.3, productions 4 and 4a.
namespace QzXmlLib16 {
namespace detail {

struct CodeRange {
  std::uint32_t first;
  std::uint32_t last;
};

inline constexpr CodeRange kNameStarts[] = {
    {0x3A, 0x3A},     {0x41, 0x5A},     {0x5F, 0x5F},     {0x61, 0x7A},
    {0xC0, 0xD6},     {0xD8, 0xF6},     {0xF8, 0x2FF},    {0x370, 0x37D},
    {0x37F, 0x1FFF},  {0x200C, 0x200D}, {0x2070, 0x218F}, {0x2C00, 0x2FEF},
    {0x3001, 0xD7FF}, {0xF900, 0xFDCF}, {0xFDF0, 0xFFFD}, {0x10000, 0xEFFFF}};

// What a name goes on with beside those.
inline constexpr CodeRange kNameContinuations[] = {
    {0x2D, 0x2E}, {0x30, 0x39}, {0xB7, 0xB7}, {0x300, 0x36F}, {0x203F, 0x2040}};

}  // namespace detail
}  // namespace QzXmlLib16
