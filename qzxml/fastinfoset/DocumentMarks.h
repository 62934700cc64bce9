#pragma once

#include <string_view>

// What a Fast Infoset document begins with.
// Source: ITU-T Rec. X.891 | ISO/IEC 24824-1, clause 12.
namespace QzXmlLib16::detail {

// The identification and version 1.
inline constexpr unsigned char kFIIdentification[] = {0xE0, 0x00, 0x00, 0x01};

// The declarations that may stand in front of it, by FInfoDecl from 1.
inline constexpr std::string_view kFIDeclarations[] = {
    "<?xml encoding='finf'?>",
    "<?xml encoding='finf' standalone='yes'?>",
    "<?xml encoding='finf' standalone='no'?>",
    "<?xml version='1.0' encoding='finf'?>",
    "<?xml version='1.0' encoding='finf' standalone='yes'?>",
    "<?xml version='1.0' encoding='finf' standalone='no'?>",
    "<?xml version='1.1' encoding='finf'?>",
    "<?xml version='1.1' encoding='finf' standalone='yes'?>",
    "<?xml version='1.1' encoding='finf' standalone='no'?>",
};

}  // namespace QzXmlLib16::detail
