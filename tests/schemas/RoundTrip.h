#pragma once

#include <vector>

#include "qzxml/serialization/ClassfactoryBase.h"

namespace qztest {

// The main program of classes that were generated for a test: reads each document that it is named,
// through the root that the first of the makers has for it, and writes it again.
//
//   program [--formats] FILE...
//
// Gives a line for each file, with a tab between the columns: file, verdict, detail. Verdicts:
//
//   same       accepted, and what was written holds the same elements, attributes and values
//   reordered  the same, but not in the same order: the children of an xs:all come in the schema's
//   differs    accepted, and the detail is the first line that is not the same
//   refused    the detail is the whole failure, in one line
//   no root    no maker has a root for it
//
// With --formats a document that is the same goes on through Fast Infoset, without and with
// suggested encodings, and through JSON; a line "fastinfoset" or "json" instead of "file" says what
// became of it where it is not the same. One with text beside elements does not: these formats move
// such text, which a line "formats" says.
int RunRoundTrip(int argc, char** argv,
                 const std::vector<QzXmlLib16::AbstractClassFactory>& makers);

}  // namespace qztest
