#include "qzxml/fastinfoset/FastInfosetRun.h"

#include "qzxml/fastinfoset/FastInfosetRunPut.h"
#include "qzxml/runtime/Encoder.h"
#include "qzxml/xml/XmlWriterContext.h"

namespace QzXmlLib16::detail {

FastInfosetRun::FastInfosetRun(FastInfosetRunHost& host)
    : m_host(host),
      m_parts(host.GetParts()),
      m_encodings(m_parts.options->m_encodings.data()),
      m_isLocalUtf8(IsLocalUtf8()),
      m_writesUtf8(m_parts.options->GetDefaultStringEncoding() != 1 && m_isLocalUtf8),
      m_attributeValues{m_parts.attributeValues, m_parts.options->GetAttributeMaxAddLength()},
      m_chunks{m_parts.chunks, m_parts.options->GetElementMaxAddLength()},
      m_innermost(&m_base) {
  Resume();
}

// Tells a context what has happened to its element here.
void FastInfosetRun::Settle(CXmlWriter::CXmlWriterContext& context, State state) {
  if (state == State::Attributes) context.SetHasAttributes(true);
  if (state == State::Content || state == State::HalfEnded) context.SetStartTagOpen(false);
}

void FastInfosetRun::Interrupt() {
  const bool isBegun = m_state == State::Begun;
  if (isBegun) {
    m_place.out = m_head;
    UnlearnElement(*m_innermost->m_name, m_innermost->m_added);
  }
  GiveBack();
  Element* element = m_innermost;
  while (element->m_context == nullptr && element->m_outer != nullptr) element = element->m_outer;
  if (element->m_context == nullptr) return;  // no element is open
  if (m_elements != 0) element->m_context->CountElements(m_elements);
  m_elements = 0;
  while (element != m_innermost) {
    Settle(*element->m_context, State::Content);
    element = element->m_inner;
    element->m_context = m_host.OpenElement(element->m_name->GetName(), element->m_name->GetUri(),
                                            isBegun && element == m_innermost);
  }
  Settle(*element->m_context, m_state);
}

void FastInfosetRun::Resume() {
  m_place = m_host.Lend();
  Element& element = *m_innermost;
  const CXmlWriter::CXmlWriterContext* const context = m_place.innermost;
  element.m_context = m_place.innermost;
  m_attributeState = m_parts.names->Marked(0);
  m_namespaceState = m_parts.names->Marked(context == nullptr ? 0 : context->GetNamespaceState());
  m_plainNamespace = nullptr;
  m_newAt = nullptr;
  if (m_place.isPending) {
    m_state = State::Pending;
  } else if (context == nullptr || !context->IsStartTagOpen()) {
    m_state = m_place.isHalfPending ? State::HalfEnded : State::Content;
  } else {
    m_state = context->HasAttributes() ? State::Attributes : State::Headed;
  }
}

// The flush leaves all as it is but the place. An element whose head may change has to stay.
[[gnu::noinline]] bool FastInfosetRun::MakeRoom(std::size_t size) {
  if (m_place.out == nullptr || m_state == State::Begun) return false;
  GiveBack();
  m_host.Flush();
  m_place = m_host.Lend();
  m_newAt = nullptr;
  ++m_flushes;
  return GetRoom() >= size;
}

// Gives the name an alias where it has none, so that other namespaces may be in force behind it.
[[gnu::noinline]] void FastInfosetRun::WritePending(bool hasAttributes) {
  GiveBack();
  m_host.WritePending(hasAttributes);
  Resume();
}

// An element of whose name nothing is known, or without room.
void FastInfosetRun::BeginInWriter(Element& element, const FastInfosetName& name) {
  Interrupt();
  m_host.StartElement(name.GetName(), name.GetUri());
  Enter(element, name);
  Resume();
}

// The end of an element that has a context, or gets one as its end has no room.
[[gnu::noinline]] void FastInfosetRun::EndInWriter(const Element& element) {
  Interrupt();
  m_host.EndElement();
  m_innermost = element.m_outer;
  Resume();
}

// ---- Names that are not known by their id ----

// As the writer has it.
inline bool FastInfosetRun::TakesPrefix(const FastInfosetName& name) {
  if (&name.GetNamespace() == m_plainNamespace || name.GetUri().empty()) return false;
  if (!AreEqual(name.GetUri(), m_place.innermost->GetDefaultNamespace())) return true;
  m_plainNamespace = &name.GetNamespace();
  return false;
}

// Null for a name that is new to the document. What is answered stands among the known names.
const CFIKnownOctets* FastInfosetRun::FindElement(const FastInfosetName& name) {
  CFIKnownNames::ById& known = m_parts.names->ElementOf(name.GetId());
  if (TakesPrefix(name)) return m_host.FindElement(name) ? &known.octets : nullptr;
  m_new.whole = Look(*m_parts.elementNames, name.GetWhole());
  if (m_new.whole.index == 0) return nullptr;
  known = {name.GetId(), m_namespaceState, CFIKnownOctets()};
  known.octets.SetElement(m_new.whole.index);
  return &known.octets;
}

namespace {

// The index of a part of a name, or for 0 the part itself.
char* PutPart(char* out, const FastInfosetName::Text& part, std::uint32_t index) {
  if (index != 0) return WriteIndexOnSecondBit(out, 0x80, index);
  const auto size = static_cast<std::uint32_t>(part.text.size());
  return CopyShort(WriteLengthOnSecondBit(out, 0x00, size), part.text.data(), size);
}

}  // namespace

CFITextIndexes::Place FastInfosetRun::Look(CFITextIndexes& table,
                                           const FastInfosetName::Text& part) {
  return table.Look(part.text, part.key);
}

// The index of the namespace of a name, or 0 with the place where it may be added.
inline std::uint32_t FastInfosetRun::FindNamespace(const FastInfosetName& name) {
  if (&name.GetNamespace() == m_indexedNamespace) return m_namespaceIndex;
  m_new.namespaceName = Look(*m_parts.namespaceNames, name.GetNamespace());
  m_indexedNamespace = m_new.namespaceName.index != 0 ? &name.GetNamespace() : nullptr;
  return m_namespaceIndex = m_new.namespaceName.index;
}

// A new name without a prefix.
char* FastInfosetRun::PutNameInFull(char* out, unsigned mark, const FastInfosetName& name) {
  m_new.local = Look(*m_parts.localNames, name.GetLocal());
  if (name.GetUri().empty()) {
    out = WriteOctet(out, mark);
  } else {
    const std::uint32_t index = FindNamespace(name);
    out = PutPart(WriteOctet(out, mark | 1), name.GetNamespace(), index);
  }
  return PutPart(out, name.GetLocal(), m_new.local.index);
}

// Adds the parts that were not found, at the places where they were looked for. Answers the index
// that the name has now; 0 where the table is full.
std::uint32_t FastInfosetRun::Learn(const FastInfosetName& name, CFITextIndexes& names) {
  const auto add = [this](CFITextIndexes& table, const FastInfosetName::Text& part,
                          const CFITextIndexes::Place& place) {
    return place.index == 0 ? AddAt(table, place, part.text, part.key) : 0;
  };
  m_newAt = m_place.out;
  m_added.namespaceName = false;
  if (!name.GetUri().empty() && &name.GetNamespace() != m_indexedNamespace) {
    m_added.namespaceName =
        add(*m_parts.namespaceNames, name.GetNamespace(), m_new.namespaceName) != 0;
  }
  m_added.local = add(*m_parts.localNames, name.GetLocal(), m_new.local) != 0;
  const std::uint32_t index = add(names, name.GetWhole(), m_new.whole);
  m_added.whole = index != 0;
  return index;
}

// Nothing was learned behind that name.
void FastInfosetRun::Unlearn(const FastInfosetName& name, const Added& added,
                             CFITextIndexes& names) {
  const auto remove = [](CFITextIndexes& table, const FastInfosetName::Text& part) {
    table.RemoveLast(part.text, part.key);
  };
  if (added.namespaceName) {
    remove(*m_parts.namespaceNames, name.GetNamespace());
    m_indexedNamespace = nullptr;
  }
  if (added.local) remove(*m_parts.localNames, name.GetLocal());
  if (added.whole) remove(names, name.GetWhole());
  m_newAt = nullptr;
}

void FastInfosetRun::UnlearnElement(const FastInfosetName& name, const Added& added) {
  Unlearn(name, added, *m_parts.elementNames);
  if (added.whole) m_parts.names->ElementOf(name.GetId()) = {};
}

// A value that can not be put takes its name away with it, if that came just now.
[[gnu::noinline]] bool FastInfosetRun::ForgetElement(const FastInfosetName& name) {
  if (m_newAt != nullptr && m_newAt == m_place.out) UnlearnElement(name, m_added);
  return false;
}

[[gnu::noinline]] bool FastInfosetRun::ForgetAttribute(const FastInfosetName& name) {
  if (m_newAt == nullptr || m_newAt != m_place.out) return false;
  Unlearn(name, m_added, *m_parts.attributeNames);
  if (m_added.whole) m_parts.names->AttributeOf(name.GetId()) = {};
  return false;
}

// Where the content of an element goes that begins here, with so much room; null where the run can
// not write its name. A new name is learned before its content is known, and may have to be
// forgotten.
[[gnu::noinline]] char* FastInfosetRun::PutOtherElementName(const FastInfosetName& name,
                                                            std::size_t room) {
  m_newAt = nullptr;
  if (m_place.out == nullptr || !m_isLocalUtf8) return nullptr;
  if (!HasRoom(kElementRoom + name.GetRoom() + room)) return nullptr;
  const CFIKnownOctets* const octets = FindElement(name);
  if (octets != nullptr) return octets->Write(Open(m_place.out));
  if (TakesPrefix(name) || name.GetName().empty()) return nullptr;
  char* const out = PutNameInFull(Open(m_place.out), kLiteralElement, name);
  const std::uint32_t index = Learn(name, *m_parts.elementNames);
  if (index == 0) return out;
  CFIKnownNames::ById& known = m_parts.names->ElementOf(name.GetId());
  known = {name.GetId(), m_namespaceState, CFIKnownOctets()};
  known.octets.SetElement(index);
  return out;
}

[[gnu::noinline]] void FastInfosetRun::BeginOtherElement(Element& element,
                                                         const FastInfosetName& name) {
  char* const out = PutOtherElementName(name, 0);
  if (out == nullptr) return BeginInWriter(element, name);
  m_head = m_place.out + GetOpenSize();
  if (m_newAt != nullptr) element.m_added = m_added;
  m_place.out = out;
  Enter(element, name);
}

// The same for an attribute in no namespace.
[[gnu::noinline]] char* FastInfosetRun::PutOtherAttributeName(const FastInfosetName& name,
                                                              std::size_t room) {
  m_newAt = nullptr;
  if (!m_isLocalUtf8 || !HasRoom(CFIKnownNames::kRoom + name.GetRoom() + room)) return nullptr;
  CFIKnownNames::ById& known = m_parts.names->AttributeOf(name.GetId());
  m_new.whole = Look(*m_parts.attributeNames, name.GetWhole());
  std::uint32_t index = m_new.whole.index;
  char* out = m_place.out;
  if (index == 0) {
    if (name.GetName().empty()) return nullptr;
    out = PutNameInFull(out, kLiteralAttribute, name);
    index = Learn(name, *m_parts.attributeNames);
    if (index == 0) return out;
  }
  known = {name.GetId(), m_attributeState, CFIKnownOctets()};
  known.octets.SetAttribute(index);
  return m_newAt != nullptr ? out : known.octets.Write(out);
}

}  // namespace QzXmlLib16::detail
