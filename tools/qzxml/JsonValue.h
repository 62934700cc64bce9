#pragma once

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "tools/qzxml/Progress.h"

namespace qztool {

enum class JsonKind : unsigned char { Object, Array, String, Number, Boolean, Null };

// A value of JSON. Names may come twice, and everything is in the order of the text.
struct CJsonValue {
  JsonKind kind = JsonKind::Null;
  std::string text;                // of a string, escapes resolved; of a number as it stood;
                                   // "true" or "false"
  std::vector<std::string> names;  // of an object, one for each value
  std::vector<CJsonValue> values;  // of an object or an array

  bool IsPlain() const { return kind != JsonKind::Object && kind != JsonKind::Array; }
};

// What a text holds, for those who only look at it.
struct CJsonCounts {
  std::size_t objects = 0;
  std::size_t arrays = 0;
  std::size_t members = 0;
  std::size_t strings = 0;
  std::size_t numbers = 0;
  std::size_t booleans = 0;
  std::size_t nulls = 0;
  std::size_t depth = 0;
  std::vector<std::size_t> comments;  // the lines in which they begin
};

// Reads a whole text. The grammar is that of RFC 8259; besides, comments ("//" to the end of the
// line, "/*" to "*/") are taken for white space, and line ends and tabs may stand in strings as
// they are, since the library writes them so. CJsonTextReader is not used here: it keeps the
// escapes and line feeds of strings in the way that its callers know, which is not what they mean.
// Throws CDocumentFailure "... at line %d, column %d".
CJsonValue ParseJson(const std::string& text, CJsonCounts& counts, CProgress& progress);

}  // namespace qztool
