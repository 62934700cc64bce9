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
      m_attributeValues{&m_parts.maps->attributeValues,
                        m_parts.options->GetAttributeMaxAddLength()},
      m_chunks{&m_parts.maps->characterChunks, m_parts.options->GetElementMaxAddLength()},
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
  // While the element is pending, no name is known to those who put one, so that they write it.
  const bool isKnown = context != nullptr && !m_place.isPending;
  m_attributeState = isKnown ? m_parts.names->Marked(0) : CFIKnownNames::kNever;
  m_namespaceState =
      isKnown ? m_parts.names->Marked(context->GetNamespaceState()) : CFIKnownNames::kNever;
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

// Another piece leaves all as it is but the place. An element whose head may change has to stay.
[[gnu::noinline]] bool FastInfosetRun::MakeRoom(std::size_t size) {
  if (m_place.out == nullptr || m_state == State::Begun) return false;
  GiveBack();
  m_host.NextPiece();
  m_place = m_host.Lend();
  m_newAt = nullptr;
  ++m_pieces;
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
  if (&name.GetUri() == m_plainNamespace || name.GetUri().empty()) return false;
  if (!AreEqual(name.GetUri(), m_place.innermost->GetDefaultNamespace())) return true;
  m_plainNamespace = &name.GetUri();
  return false;
}

// The prefix of elements of that name, null for none. False where the writer has to make one.
inline bool FastInfosetRun::FindPrefix(const FastInfosetName& name, const std::string*& prefix) {
  prefix = nullptr;
  if (!TakesPrefix(name)) return true;
  const std::string* const alias = m_place.innermost->FindAlias(name.GetUri());
  if (alias != nullptr && !alias->empty()) prefix = alias;
  return alias != nullptr;
}

// The key of the name in the tables, which stays until the next one is asked for.
FastInfosetRun::Key FastInfosetRun::WholeOf(const FastInfosetName& name,
                                            const std::string* prefix) {
  if (prefix == nullptr) return {name.GetWhole().text, name.GetWhole().key};
  const std::string_view text = m_host.FormKey(*prefix, name);
  return {text, CFITextIndexes::KeyOf(text)};
}

namespace {

// The index of a part of a name, or for 0 the part itself.
char* PutPart(char* out, const std::string& part, std::uint32_t index) {
  if (index != 0) return WriteIndexOnSecondBit(out, 0x80, index);
  const auto size = static_cast<std::uint32_t>(part.size());
  return CopyShort(WriteLengthOnSecondBit(out, 0x00, size), part.data(), size);
}

}  // namespace

// The same of the local part, which is at hand unless it is long.
inline char* FastInfosetRun::PutLocalName(char* out, const FastInfosetName& name,
                                          std::uint32_t index) {
  if (index != 0 || name.GetLiteral().View().empty()) return PutPart(out, name.GetName(), index);
  return name.GetLiteral().Put(out);
}

CFITextIndexes::Place FastInfosetRun::Look(CFITextIndexes& table,
                                           const FastInfosetName::Text& part) {
  return table.Look(part.text, part.key);
}

// The index of the namespace of a name, or 0 with the place where it may be added.
inline std::uint32_t FastInfosetRun::FindNamespace(const FastInfosetName& name) {
  if (&name.GetUri() == m_indexedNamespace) return m_namespaceIndex;
  m_new.namespaceName = m_parts.maps->namespaceNames.Look(name.GetUri(), name.GetUriKey());
  m_indexedNamespace = m_new.namespaceName.index != 0 ? &name.GetUri() : nullptr;
  return m_namespaceIndex = m_new.namespaceName.index;
}

// A new name, the mark with the bits of the parts that are there.
char* FastInfosetRun::PutNameInFull(char* out, unsigned mark, const FastInfosetName& name,
                                    const std::string* prefix) {
  m_new.local = Look(m_parts.maps->localNames, name.GetLocal());
  if (name.GetUri().empty()) {
    out = WriteOctet(out, mark);
  } else {
    const std::uint32_t index = FindNamespace(name);
    out = WriteOctet(out, mark | (prefix != nullptr ? 3u : 1u));
    if (prefix != nullptr) {
      m_new.prefix = m_parts.maps->prefixNames.Look(*prefix, CFITextIndexes::KeyOf(*prefix));
      out = PutPart(out, *prefix, m_new.prefix.index);
    }
    out = PutPart(out, name.GetUri(), index);
  }
  return PutLocalName(out, name, m_new.local.index);
}

// A name without a prefix that an earlier document had, and this one has not had: its texts still
// stand in their places. Null for any other.
inline char* FastInfosetRun::PutNameAgain(char* out, const FastInfosetName& name,
                                          const Names& names) {
  CFITextIndexes& locals = m_parts.maps->localNames;
  const CFIKnownNames::Places& places = names.places;
  if (!places.Are(name.GetId(), names.table, locals)) return nullptr;
  if (names.table.GetIndexAt(places.whole) != 0) return nullptr;
  const std::uint32_t index = GetNextIndex(names.table);
  const std::uint32_t local = locals.GetIndexAt(places.local);
  const std::uint32_t newLocal = local == 0 ? GetNextIndex(locals) : 0;
  if (index == 0 || (local | newLocal) == 0) return nullptr;
  const bool hasUri = !name.GetUri().empty();
  if (hasUri && &name.GetUri() != m_indexedNamespace) return nullptr;
  out = WriteOctet(out, names.literal | (hasUri ? 1u : 0u));
  if (hasUri) out = WriteIndexOnSecondBit(out, 0x80, m_namespaceIndex);
  out = PutLocalName(out, name, local);
  names.table.AddAgainAt(places.whole, index);
  if (local == 0) locals.AddAgainAt(places.local, newLocal);
  m_newAt = m_place.out;
  m_added = {false, false, local == 0, true};
  return out;
}

// Adds the parts that were not found, at the places where they were looked for. Answers the index
// that the name has now; 0 where the table is full.
std::uint32_t FastInfosetRun::Learn(const FastInfosetName& name, const std::string* prefix,
                                    const Key& whole, CFITextIndexes& names) {
  const auto add = [this](CFITextIndexes& table, std::string_view text, std::uint64_t key,
                          const CFITextIndexes::Place& place) {
    return place.index == 0 ? AddName(table, place, text, key) : 0;
  };
  m_newAt = m_place.out;
  m_added = {};
  if (prefix != nullptr) {
    m_added.prefix =
        add(m_parts.maps->prefixNames, *prefix, CFITextIndexes::KeyOf(*prefix), m_new.prefix) != 0;
  }
  const std::string& uri = name.GetUri();
  if (!uri.empty() && &uri != m_indexedNamespace) {
    m_added.namespaceName =
        add(m_parts.maps->namespaceNames, uri, name.GetUriKey(), m_new.namespaceName) != 0;
  }
  const FastInfosetName::Text& local = name.GetLocal();
  m_added.local = add(m_parts.maps->localNames, local.text, local.key, m_new.local) != 0;
  const std::uint32_t index = add(names, whole.text, whole.key, m_new.whole);
  m_added.whole = index != 0;
  return index;
}

// Nothing was learned behind that name.
void FastInfosetRun::Unlearn(const FastInfosetName& name, const std::string* prefix,
                             const Added& added, CFITextIndexes& names) {
  m_newAt = nullptr;
  if (added.prefix) m_parts.maps->prefixNames.RemoveLast(*prefix, CFITextIndexes::KeyOf(*prefix));
  if (added.namespaceName) {
    m_parts.maps->namespaceNames.RemoveLast(name.GetUri(), name.GetUriKey());
    m_indexedNamespace = nullptr;
  }
  if (added.local) m_parts.maps->localNames.RemoveLast(name.GetName(), name.GetLocal().key);
  if (!added.whole) return;
  const Key whole = WholeOf(name, prefix);
  names.RemoveLast(whole.text, whole.key);
}

void FastInfosetRun::UnlearnElement(const FastInfosetName& name, const Added& added) {
  const std::string* prefix = nullptr;
  FindPrefix(name, prefix);
  Unlearn(name, prefix, added, m_parts.maps->elementNames);
  if (added.whole) m_parts.names->ElementOf(name.GetId()) = {};
}

// A value that can not be put takes its name away with it, if that came just now.
[[gnu::noinline]] bool FastInfosetRun::ForgetElement(const FastInfosetName& name) {
  if (m_newAt != nullptr && m_newAt == m_place.out) UnlearnElement(name, m_added);
  return false;
}

[[gnu::noinline]] bool FastInfosetRun::ForgetAttribute(const FastInfosetName& name) {
  if (m_newAt == nullptr || m_newAt != m_place.out) return false;
  Unlearn(name, nullptr, m_added, m_parts.maps->attributeNames);
  if (m_added.whole) m_parts.names->AttributeOf(name.GetId()) = {};
  return false;
}

// Writes a name in full, unless it has an index. Answers its end, which without a name in full is
// its beginning, and the index that it has now: 0 where the table is full. Null for an empty name.
inline char* FastInfosetRun::PutUnknownName(char* out, const FastInfosetName& name,
                                            const std::string* prefix, const Names& names,
                                            std::uint32_t& index) {
  CFITextIndexes& table = names.table;
  if (prefix == nullptr) {
    char* const end = PutNameAgain(out, name, names);
    if (end != nullptr) {
      index = static_cast<std::uint32_t>(table.GetCount());
      return end;
    }
  }
  const Key whole = WholeOf(name, prefix);
  m_new.whole = table.Look(whole.text, whole.key);
  index = m_new.whole.index;
  if (index != 0) return out;
  if (name.GetName().empty()) return nullptr;
  out = PutNameInFull(out, names.literal, name, prefix);
  index = Learn(name, prefix, whole, table);
  if (prefix == nullptr && name.GetId() != 0 && index != 0) {
    const CFITextIndexes& locals = m_parts.maps->localNames;
    names.places = {name.GetId(), table.GetArrangement(), locals.GetArrangement(), m_new.whole.at,
                    m_new.local.at};
  }
  return out;
}

// Where the content of an element goes that begins here, with so much room; null where the run can
// not write its name. A new name is learned before its content is known, and may have to be
// forgotten.
[[gnu::noinline]] char* FastInfosetRun::PutOtherElementName(const FastInfosetName& name,
                                                            std::size_t room) {
  if (m_state == State::Pending) WritePending(false);
  m_newAt = nullptr;
  const std::string* prefix = nullptr;
  if (m_place.out == nullptr || !m_isLocalUtf8 || !FindPrefix(name, prefix)) return nullptr;
  const std::size_t prefixRoom = prefix != nullptr ? kFormSize + prefix->size() : 0;
  if (!HasRoom(kElementRoom + prefixRoom + name.GetRoom() + room)) return nullptr;
  const Names names{kLiteralElement, m_parts.maps->elementNames,
                    m_parts.names->PlacesOfElement(name.GetId())};
  std::uint32_t index = 0;
  char* const out = PutUnknownName(Open(m_place.out), name, prefix, names, index);
  if (out == nullptr || index == 0) return out;
  CFIKnownOctets octets;
  octets.SetElement(index);
  m_parts.names->KeepElement(name.GetId(), m_namespaceState, octets);
  return m_newAt != nullptr ? out : octets.Write(out);
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
  if (m_state == State::Pending) WritePending(true);
  m_newAt = nullptr;
  if (m_state != State::Begun && m_state != State::Attributes) return nullptr;
  if (!m_isLocalUtf8 || !HasRoom(CFIKnownNames::kRoom + name.GetRoom() + room)) return nullptr;
  const Names names{kLiteralAttribute, m_parts.maps->attributeNames,
                    m_parts.names->PlacesOfAttribute(name.GetId())};
  std::uint32_t index = 0;
  char* const out = PutUnknownName(m_place.out, name, nullptr, names, index);
  if (out == nullptr || index == 0) return out;
  CFIKnownOctets octets;
  octets.SetAttribute(index);
  m_parts.names->KeepAttribute(name.GetId(), m_attributeState, octets);
  return m_newAt != nullptr ? out : octets.Write(out);
}

}  // namespace QzXmlLib16::detail
