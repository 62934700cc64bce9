#pragma once

#include <string>

#include "qzxml/json/JsonContext.h"
#include "tools/qzxml/Console.h"
#include "tools/qzxml/Content.h"
#include "tools/qzxml/Progress.h"

// A document as octets, in each of the formats. What a format does not keep is left out here in
// silence; TellLosses says it.
namespace qztool {

struct CLayout {
  bool isKept = false;  // XML: the white space stands as it stood, and none is added
  int indent = 2;       // else blanks for each level; 0 for a document in one line
};

// In UTF-8, with a declaration. Comments, processing instructions, CDATA sections, the document
// type and the places of texts are kept; only elements without text of their own are laid out.
std::string WriteXml(const CContentDocument& document, const CLayout& layout, CProgress& progress);

// By the mapping that JsonReader tells of, which is the library's: what its classes write they read
// here, and the other way round. It is JSON in every case, with strings that any reader takes; for
// the sake of those who read into objects, a text is the last member of its object, the items of an
// array are objects, and an element with attributes alone has an empty text. With
// JsonRoundTrip_None items are plain, as nothing can be read back there.
std::string WriteJson(const CContentDocument& document, const CLayout& layout,
                      QzXmlLib16::JsonRoundTrip roundTrip, CProgress& progress);

// By the library's writer. All namespaces are declared by the root; texts stand in front of the
// elements beside them.
std::string WriteFastInfoset(const CContentDocument& document, CProgress& progress);

// The texts of an element, one behind the other; "" where they are only layout.
std::string GetJoinedText(const CContentElement& element);

}  // namespace qztool
