#pragma once

#include <cstddef>
#include <limits>
#include <vector>

#include "qzxml/platform/Export.h"
#include "qzxml/xml/XmlDocumentNodes.h"

// How elements of a document are used up while it loads. Not for others.
namespace QzXmlLib16::detail {

// What a document is read into.
class QZXML_API IItemReader {
 public:
  // What an element is to the reader, which makes them and keeps them.
  struct Role {
    bool isItem;  // may be read as soon as it ends
  };

  // The role of the children of that name in an element of a role; null for those that are none of
  // the reader's.
  virtual const Role* FindRole(const Role& parent, const XmlName& name) = 0;

  // How many runs of items have been read and not been taken by what was read around them.
  virtual std::size_t GetRunCount() const = 0;

  // Reads siblings that have ended, from the first to the last. The runs from firstRun on are of
  // items in them, which they have to take. If they continue the last run before these, they are
  // going as if they had not been there; otherwise the first one stays, empty, for a run that
  // begins with it. False, and what is thrown, ends the load.
  virtual bool ReadItems(const Role& role, CXmlElement* first, CXmlElement* last,
                         std::size_t firstRun, bool continuesRun) = 0;

 protected:
  IItemReader() = default;
  ~IItemReader() = default;
};

// Watches one load of a document for elements that its reader reads when they have ended. They
// leave the tree, and their memory is used again: of a row of such siblings one empty element
// stays, so that the others keep their order. A batch of siblings is read together, as parsing and
// reading in turn would drive each other out of the processor's memory.
//
// Only the children of elements that grow large are watched, the document element first: what is
// small is read together with what is around it. The roles of open elements are kept down to the
// innermost one that may be read or has children that may be, a frame for each.
class QZXML_API CItemWatch {
 public:
  // Watches the next load of the document. So many octets of the tree make an element large, and
  // are a batch. The others must outlive it, the document's content included.
  CItemWatch(CXmlDocument& document, IItemReader& reader, const IItemReader::Role& root,
             std::size_t octets);
  CItemWatch(const CItemWatch&) = delete;
  CItemWatch& operator=(const CItemWatch&) = delete;
  ~CItemWatch();

  // The reader of the document of an element; null for none.
  static IItemReader* ReaderOf(const CXmlElement& element);

  // Whether something was read, so that the tree is not that of the document any more.
  bool HasRead() const { return m_hasRead; }
  // Whether the load failed because of what was read.
  bool HasFailed() const { return m_hasFailed; }

  // --- For the document

  // As CXmlDocument::OpenElement, whose checks have been made, and behind CloseElement: for those
  // that the document was told of.
  CXmlElement* Open(const XmlName* name);
  void Close();

  // Somebody asks for the meaning of an alias; and it is about to change, which ends the load where
  // what was read has asked.
  void TellOfLookup() { m_isNamespaceUsed = true; }
  void ChangeNamespaces();

 private:
  static constexpr std::size_t kNone = std::numeric_limits<std::size_t>::max();

  // An open element with a role.
  struct Frame {
    const IItemReader::Role* role;
    std::size_t depth;               // of the element; the root has 1
    std::size_t limit;               // of the tree, from which on the children are watched
    bool isRead = false;             // belongs to the batch of the frame around it
    std::size_t childDepth = kNone;  // the depth, if they are

    // The last children, if they are items: a run, and the part of it that is still to be read.
    const IItemReader::Role* runRole = nullptr;  // null for none
    CXmlElement* standIn = nullptr;              // the first one of the run, which stays
    bool hasBatch = false;
    bool isNewRun = false;     // the batch begins with the run
    std::size_t firstRun = 0;  // of what was read in them
    CXmlNodes::Mark mark{};    // in front of the batch, but behind the element that stays
    CNodeText text{};          // of the element, when the batch began
  };

  CXmlElement* OpenChild(const XmlName* name);
  void WatchChildren();
  void BeginBatch(Frame& frame);
  void EndRun(Frame& frame);
  void ReadBatch(Frame& frame);
  void RemoveBatch(const Frame& frame, CXmlElement* parent);
  void PushFrame(const IItemReader::Role* role, bool isRead);
  void TellDocument();

  CXmlDocument& m_document;
  CXmlNodes& m_nodes;
  IItemReader& m_reader;
  const IItemReader::Role& m_root;
  const std::size_t m_octets;
  std::vector<Frame> m_frames;  // innermost last
  bool m_hasRead = false;
  bool m_hasFailed = false;
  bool m_isNamespaceUsed = false;
};

}  // namespace QzXmlLib16::detail
