#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "qzxml/xml/ShortWays.h"
#include "qzxml/xml/XmlWriter.h"

namespace QzXmlLib16 {
class CFastInfosetContext;
}  // namespace QzXmlLib16

namespace QzXmlLib16::detail {

class CFIKnownIntegers;
class CFIKnownNames;
struct CFIIndexMaps;
class FastInfosetName;

// What a Fast Infoset writer is for its runs (FastInfosetRun). It is what the writer offers as its
// short ways, which are those of the writer itself. Lives as long as the writer.
class FastInfosetRunHost : public CShortWays {
 public:
  using Context = CXmlWriter::CXmlWriterContext;

  // What stays the same for a document.
  struct Parts {
    const CFastInfosetContext* options;
    CFIKnownNames* names;
    CFIKnownIntegers* integers;
    CFIIndexMaps* maps;
    std::size_t maxEntries;  // of a table
  };

  // Where the writer stands. The two addresses are null while a run has to stay away.
  struct Place {
    char* out = nullptr;
    char* limit = nullptr;
    bool isHalfPending = false;    // the end of an element still has to be written
    Context* innermost = nullptr;  // the pending element if there is one; null for none at all
    bool isPending = false;
  };

  virtual ~FastInfosetRunHost() = default;

  virtual Parts GetParts() = 0;

  // The place as the writer has it, and the other way round.
  virtual Place Lend() = 0;
  virtual void TakeBack(const Place& place) = 0;

  // ---- The writer's own, behind TakeBack ----

  virtual void NextPiece() = 0;
  virtual void WritePending(bool hasAttributes) = 0;
  virtual void StartElement(const std::string& name, const std::string& uri) = 0;
  virtual void EndElement() = 0;

  // A context for an element whose head a run has written, or which is to be the pending one.
  virtual Context* OpenElement(const std::string& name, const std::string& uri, bool isPending) = 0;

  // ---- At any time ----

  // The key of a name with a prefix in the tables; stays until the next call.
  virtual std::string_view FormKey(const std::string& prefix, const FastInfosetName& name) = 0;
};

}  // namespace QzXmlLib16::detail
