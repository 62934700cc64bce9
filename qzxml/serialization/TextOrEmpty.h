#pragma once

namespace QzXmlLib16 {
namespace detail {

// A caller's text; null is the empty text.
inline const char* TextOrEmpty(const char* text) { return text != nullptr ? text : ""; }

}  // namespace detail
}  // namespace QzXmlLib16
