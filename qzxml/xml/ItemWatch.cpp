#include "qzxml/xml/ItemWatch.h"

namespace QzXmlLib16::detail {
namespace {

// Ends a load that has to be done anew; who set the watch up catches it.
struct LoadEnded {};

}  // namespace

CItemWatch::CItemWatch(CXmlDocument& document, IItemReader& reader, const IItemReader::Role& root,
                       std::size_t octets)
    : m_document(document),
      m_nodes(*document.m_pNodes),
      m_reader(reader),
      m_root(root),
      m_octets(octets) {
  document.m_pItemWatch = this;
  document.m_bWatched = true;
  document.m_watch = {};
}

CItemWatch::~CItemWatch() {
  m_document.m_pItemWatch = nullptr;
  m_document.m_bWatched = m_document.m_pElementCallback != nullptr;
  m_document.m_watch = {};
}

IItemReader* CItemWatch::ReaderOf(const CXmlElement& element) {
  const CItemWatch* const watch = element.GetDocument()->m_pItemWatch;
  return watch != nullptr && watch->m_hasRead ? &watch->m_reader : nullptr;
}

void CItemWatch::ChangeNamespaces() {
  if (!m_hasRead || !m_isNamespaceUsed) return;
  m_hasFailed = true;
  throw LoadEnded();
}

// --- Elements

CXmlElement* CItemWatch::Open(const XmlName* name) {
  const std::size_t open = m_document.m_pElementStack.size();
  if (open == 0) {
    CXmlElement* const root = m_document.PutElement(name);
    m_frames.clear();
    m_frames.push_back({&m_root, 1, m_octets});
    TellDocument();
    return root;
  }
  if (m_nodes.GetUsedOctets() >= m_frames.back().limit) WatchChildren();
  return m_frames.back().childDepth == open ? OpenChild(name) : m_document.PutElement(name);
}

void CItemWatch::Close() {
  const bool isRead = m_frames.back().isRead;
  m_frames.pop_back();
  if (isRead) {
    Frame& outer = m_frames.back();
    if (m_nodes.GetUsedOctets() - outer.mark.usedOctets >= m_octets) ReadBatch(outer);
  }
  TellDocument();
}

// From now on the children of the innermost element with a role are watched. One that is open
// already is too late to be read itself, but its own children may come to be watched.
void CItemWatch::WatchChildren() {
  if (m_frames.size() == 1) m_nodes.StopSharingTexts();
  Frame& frame = m_frames.back();
  frame.limit = kNone;
  frame.childDepth = frame.depth;
  if (m_document.m_pElementStack.size() > frame.depth) {
    const CXmlElement* const child = m_document.m_pElementStack[frame.depth];
    const IItemReader::Role* const role = m_reader.FindRole(*frame.role, *child->m_pName);
    if (role != nullptr) PushFrame(role, false);
  }
  TellDocument();
}

// A child of the innermost element with a role.
CXmlElement* CItemWatch::OpenChild(const XmlName* name) {
  Frame& outer = m_frames.back();
  const IItemReader::Role* const role = m_reader.FindRole(*outer.role, *name);
  if (outer.runRole != nullptr && outer.runRole != role) EndRun(outer);
  if (role == nullptr) return m_document.PutElement(name);
  const bool isNewRun = role->isItem && outer.runRole == nullptr;
  if (role->isItem && !outer.hasBatch && !isNewRun) BeginBatch(outer);
  CXmlElement* const element = m_document.PutElement(name);
  if (isNewRun) {
    outer.runRole = role;
    outer.standIn = element;
    BeginBatch(outer);
    outer.isNewRun = true;
  }
  PushFrame(role, role->isItem);
  return element;
}

void CItemWatch::PushFrame(const IItemReader::Role* role, bool isRead) {
  const std::size_t limit = m_nodes.GetUsedOctets() + m_octets;
  m_frames.push_back({role, m_frames.back().depth + 1, limit, isRead});
  TellDocument();
}

void CItemWatch::TellDocument() {
  auto& watch = m_document.m_watch;
  if (m_frames.empty()) {
    watch = {};
    return;
  }
  watch.openDepth = m_frames.back().childDepth;
  watch.openOctets = m_frames.back().limit;
  watch.closeDepth = m_frames.back().depth;
}

// --- Batches

void CItemWatch::BeginBatch(Frame& frame) {
  frame.hasBatch = true;
  frame.isNewRun = false;
  frame.firstRun = m_reader.GetRunCount();
  frame.mark = m_nodes.SetMark();
  frame.text = m_document.m_pElementStack[frame.depth - 1]->m_text;
}

// Behind it comes a child that is none of them.
void CItemWatch::EndRun(Frame& frame) {
  if (frame.hasBatch) ReadBatch(frame);
  frame.runRole = nullptr;
}

void CItemWatch::ReadBatch(Frame& frame) {
  CXmlElement* const parent = m_document.m_pElementStack[frame.depth - 1];
  CXmlElement* const first = frame.isNewRun ? frame.standIn : frame.standIn->m_pNextSibling;
  m_hasRead = true;
  m_hasFailed = true;
  if (!m_reader.ReadItems(*frame.runRole, first, parent->m_pLastChild, frame.firstRun,
                          !frame.isNewRun)) {
    throw LoadEnded();
  }
  m_hasFailed = false;
  RemoveBatch(frame, parent);
  frame.hasBatch = false;
}

// Since the mark there have been the elements of the batch and what is in them, and perhaps text of
// the element around them.
void CItemWatch::RemoveBatch(const Frame& frame, CXmlElement* parent) {
  CXmlElement* const standIn = frame.standIn;
  CXmlElement* const last = parent->m_pLastChild;
  CXmlElement* removed = standIn != last ? standIn->m_pNextSibling : nullptr;
  standIn->m_pNextSibling = last->m_pNextSibling;
  parent->m_pLastChild = standIn;
  if (!parent->m_text.IsSameAs(frame.text)) m_nodes.OwnString(parent->m_text);
  if (m_nodes.Rewind(frame.mark, parent->m_text.GetString())) {
    standIn->m_pLastChild = nullptr;
    standIn->m_attributes = CNodeAttributes();
    standIn->m_text = CNodeText();
    return;
  }
  while (removed != nullptr) {
    CXmlElement* const next = removed != last ? removed->m_pNextSibling : nullptr;
    m_nodes.Destroy(removed);
    removed = next;
  }
  m_nodes.Empty(standIn);
}

}  // namespace QzXmlLib16::detail
