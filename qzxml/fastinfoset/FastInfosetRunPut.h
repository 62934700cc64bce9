#pragma once

#include "qzxml/fastinfoset/FastInfosetRun.h"
#include "qzxml/fastinfoset/SmallAlphabets.h"

// The parts of a run that each element and each value takes: inline, for those who write them.
namespace QzXmlLib16::detail {

// ---- Values ----

// Of one to seven bytes. Words may overlap.
inline bool FastInfosetRun::HasZero(std::string_view text) {
  const char* const bytes = text.data();
  const std::size_t size = text.size();
  if (size >= 4) {
    const std::uint64_t first = LoadWord<std::uint32_t>(bytes);
    const std::uint64_t word = first << 32 | LoadWord<std::uint32_t>(bytes + size - 4);
    return ((word - 0x0101010101010101) & ~word & 0x8080808080808080) != 0;
  }
  return bytes[0] == '\0' || bytes[size / 2] == '\0' || bytes[size - 1] == '\0';
}

inline char* FastInfosetRun::PutOctets(char* out, const Octets& octets) {
  const std::uint64_t first = octets.bits << (64 - 8 * octets.size);
  for (std::size_t i = 0; i < 8; ++i) out[i] = static_cast<char>(first >> (56 - 8 * i) & 0xFF);
  return out + octets.size;
}

// A value in full in an alphabet; null under any other encoding, and for a character that is not in
// the alphabet.
template <typename Form>
inline char* FastInfosetRun::PutInAlphabet(char* out, std::string_view text, Encoding as,
                                           bool add) {
  if (as.m_dwType != kFIRestrictedAlphabet || as.m_dwIndex - 1 >= 2) return nullptr;
  const auto size = static_cast<std::uint32_t>(text.size());
  out = WriteValueHead<Form>(out, add, kFIRestrictedAlphabet, as.m_dwIndex, (size + 1) / 2);
  return SmallAlphabet::Get(as.m_dwIndex).Write(out, text);
}

// The same as text or in an alphabet. Null also for a text with a zero byte.
template <typename Form>
[[gnu::always_inline]] inline char* FastInfosetRun::PutInFull(char* out, std::string_view text,
                                                              Encoding as, bool add) const {
  if (as.m_dwType != kFIText || !m_writesUtf8) return PutInAlphabet<Form>(out, text, as, add);
  const auto size = static_cast<std::uint32_t>(text.size());
  out = WriteValueHead<Form>(out, add, kFIText, 0, size);
  if (text.size() >= 8) return CopyWithoutZero(out, text.data(), text.size());
  return HasZero(text) ? nullptr : CopyShort(out, text.data(), text.size());
}

template <typename Form>
[[gnu::always_inline]] inline char* FastInfosetRun::PutText(char* out, std::string_view text,
                                                            ItemType type) {
  const Table& table = GetTable<Form>();
  const Encoding as = m_encodings[type];
  if (text.size() >= table.maxAddLength) return PutInFull<Form>(out, text, as, false);
  const std::uint64_t key = CFITextIndexes::KeyOf(text);
  const CFITextIndexes::Place place = text.size() <= CFITextIndexes::kShort
                                          ? table.texts->LookShort(key)
                                          : table.texts->Look(text, key);
  if (place.index != 0) return Form::WriteIndex(out, place.index);
  out = PutInFull<Form>(out, text, as, true);
  if (out != nullptr) AddValue(*table.texts, place, text, key);
  return out;
}

// The same for the text of a printed value, which is copied in one step.
template <typename Form>
inline char* FastInfosetRun::PutPrintedInFull(char* out, std::string_view text, Encoding as,
                                              bool add) const {
  constexpr std::size_t kStep = 32;
  if (as.m_dwType != kFIText) return PutInAlphabet<Form>(out, text, as, add);
  if (!m_writesUtf8 || text.size() > kStep) return nullptr;
  const auto size = static_cast<std::uint32_t>(text.size());
  out = WriteValueHead<Form>(out, add, kFIText, 0, size);
  std::memcpy(out, text.data(), kStep);
  return out + size;
}

// A printed value that is not in the table.
template <typename Form, typename GetOctets>
[[gnu::always_inline]] inline char* FastInfosetRun::PutNewPrinted(char* out, std::string_view text,
                                                                  Encoding as, GetOctets octets,
                                                                  bool add) const {
  if (as.m_dwType != kFIAlgorithm) return PutPrintedInFull<Form>(out, text, as, add);
  const Octets found = octets(as.m_dwIndex);
  if (found.size == 0) return nullptr;
  return PutOctets(WriteValueHead<Form>(out, add, kFIAlgorithm, as.m_dwIndex, found.size), found);
}

// Meant: also a value under an algorithm is looked for by its text.
template <typename Form, typename GetOctets>
[[gnu::always_inline]] inline char* FastInfosetRun::PutPrinted(char* out, std::string_view text,
                                                               ItemType type, GetOctets octets,
                                                               std::uint32_t* index) {
  const Table& table = GetTable<Form>();
  const Encoding as = m_encodings[type];
  if (text.size() >= table.maxAddLength) return PutNewPrinted<Form>(out, text, as, octets, false);
  const std::uint64_t key = CFITextIndexes::KeyOfRoomy(text);
  const CFITextIndexes::Place place = text.size() <= CFITextIndexes::kShort
                                          ? table.texts->LookShort(key)
                                          : table.texts->Look(text, key);
  if (index != nullptr) *index = place.index;
  if (place.index != 0) return Form::WriteIndex(out, place.index);
  out = PutNewPrinted<Form>(out, text, as, octets, true);
  if (out == nullptr) return nullptr;
  const std::uint32_t added = AddValue(*table.texts, place, text, key);
  if (index != nullptr) *index = added;
  return out;
}

template <typename Form, typename Print, typename GetOctets>
inline char* FastInfosetRun::PutInteger(char* out, std::int32_t number, Print print,
                                        GetOctets octets) {
  CFIKnownIntegers& integers = *m_parts.integers;
  CFIKnownIntegers::Known* const known =
      CFIKnownIntegers::IsSmall(number) ? &integers.Of<Form>(number) : nullptr;
  if (known != nullptr && integers.Is(*known)) return known->octets.Write(out);
  char text[kPrintedRoom];
  const char* const end = print(text);
  std::uint32_t index = 0;
  out = PutPrinted<Form>(out, std::string_view(text, static_cast<std::size_t>(end - text)),
                         ItemType_i4, octets, &index);
  if (out != nullptr && index != 0 && known != nullptr) {
    CFIKnownOctets of;
    of.SetValue<Form>(index);
    integers.Keep(*known, of);
  }
  return out;
}

// ---- Elements ----

// The end that may have to stand in front of a child of the innermost element.
inline char* FastInfosetRun::Open(char* out) const {
  out[0] = kTerminator;
  return out + GetOpenSize();
}

inline void FastInfosetRun::Enter(Element& element, const FastInfosetName& name) {
  m_state = State::Begun;
  m_innermost->m_inner = &element;
  element.m_outer = m_innermost;
  element.m_name = &name;
  m_innermost = &element;
}

inline void FastInfosetRun::BeginElement(Element& element, const FastInfosetName& name) {
  const CFIKnownNames::ById& known = m_parts.names->ElementOf(name.GetId());
  if (!known.Is(name.GetId(), m_namespaceState) || !HasRoom(kElementRoom)) {
    return BeginOtherElement(element, name);
  }
  m_head = Open(m_place.out);
  m_place.out = known.octets.Write(m_head);
  Enter(element, name);
}

inline void FastInfosetRun::EndElement(Element& element) {
  if (element.m_context != nullptr || !HasRoom(1)) return EndInWriter(element);
  const bool isSecond = m_state == State::HalfEnded;
  *m_place.out = isSecond ? kTwoTerminators : kTerminator;
  m_place.out += GetOpenSize();
  m_state = isSecond ? State::Content : State::HalfEnded;
  m_innermost = element.m_outer;
  ++m_elements;
}

// An element with nothing but a content: where that goes, with so much room, or null. EndValue
// makes the element of it; null there stands for a content that can not be put.
[[gnu::always_inline]] inline char* FastInfosetRun::BeginValue(const FastInfosetName& name,
                                                               std::size_t room) {
  const CFIKnownNames::ById& known = m_parts.names->ElementOf(name.GetId());
  if (!known.Is(name.GetId(), m_namespaceState)) {
    return PutOtherElementName(name, kValueRoom + room);
  }
  if (!HasRoom(kElementRoom + kValueRoom + room)) return nullptr;
  return known.octets.Write(Open(m_place.out));
}

[[gnu::always_inline]] inline bool FastInfosetRun::EndValue(const FastInfosetName& name,
                                                            char* out) {
  if (out == nullptr) return ForgetElement(name);
  m_place.out = out;
  m_state = State::HalfEnded;
  ++m_elements;
  return true;
}

// An attribute, likewise.
[[gnu::always_inline]] inline char* FastInfosetRun::BeginAttribute(const FastInfosetName& name,
                                                                   std::size_t room) {
  const CFIKnownNames::ById& known = m_parts.names->AttributeOf(name.GetId());
  if (!known.Is(name.GetId(), m_attributeState)) {
    return PutOtherAttributeName(name, kValueRoom + room);
  }
  if (m_state != State::Begun && m_state != State::Attributes) return nullptr;
  if (!HasRoom(CFIKnownNames::kRoom + kValueRoom + room)) return nullptr;
  return known.octets.Write(m_place.out);
}

[[gnu::always_inline]] inline bool FastInfosetRun::EndAttribute(const FastInfosetName& name,
                                                                char* out) {
  constexpr unsigned char kHasAttributes = 0x40;
  if (out == nullptr) return ForgetAttribute(name);
  if (m_state == State::Begun) {
    *m_head = static_cast<char>(static_cast<unsigned char>(*m_head) | kHasAttributes);
    m_state = State::Attributes;
  }
  m_place.out = out;
  return true;
}

inline bool FastInfosetRun::PutTextElement(const FastInfosetName& name, std::string_view text,
                                           ItemType type) {
  char* const out = BeginValue(name, text.size());
  if (out == nullptr) return false;
  return EndValue(name, text.empty() ? out : PutText<CFIChunkForm>(out, text, type));
}

template <typename GetOctets>
[[gnu::always_inline]] inline bool FastInfosetRun::PutPrintedElement(const FastInfosetName& name,
                                                                     std::string_view text,
                                                                     ItemType type,
                                                                     GetOctets octets) {
  char* const out = BeginValue(name, kPrintedRoom);
  if (out == nullptr) return false;
  return EndValue(name, PutPrinted<CFIChunkForm>(out, text, type, octets));
}

inline bool FastInfosetRun::PutTextAttribute(const FastInfosetName& name, std::string_view text,
                                             ItemType type) {
  char* const out = BeginAttribute(name, text.size());
  if (out == nullptr) return false;
  return EndAttribute(name, PutText<CFIAttributeForm>(out, text, type));
}

template <typename GetOctets>
inline bool FastInfosetRun::PutPrintedAttribute(const FastInfosetName& name, std::string_view text,
                                                ItemType type, GetOctets octets) {
  char* const out = BeginAttribute(name, kPrintedRoom);
  if (out == nullptr) return false;
  return EndAttribute(name, PutPrinted<CFIAttributeForm>(out, text, type, octets));
}

template <typename Print, typename GetOctets>
[[gnu::always_inline]] inline bool FastInfosetRun::PutIntegerElement(const FastInfosetName& name,
                                                                     std::int32_t number,
                                                                     Print print,
                                                                     GetOctets octets) {
  char* const out = BeginValue(name, kPrintedRoom);
  if (out == nullptr) return false;
  return EndValue(name, PutInteger<CFIChunkForm>(out, number, print, octets));
}

template <typename Print, typename GetOctets>
inline bool FastInfosetRun::PutIntegerAttribute(const FastInfosetName& name, std::int32_t number,
                                                Print print, GetOctets octets) {
  char* const out = BeginAttribute(name, kPrintedRoom);
  if (out == nullptr) return false;
  return EndAttribute(name, PutInteger<CFIAttributeForm>(out, number, print, octets));
}

// Meant: the end of an element that still has to be written comes behind this.
inline bool FastInfosetRun::PutOwnText(std::string_view text, ItemType type) {
  if (m_state == State::Pending) WritePending(false);
  if (!HasRoom(1 + kValueRoom + text.size())) return false;
  char* out = m_place.out;
  if (m_state == State::Attributes) *out++ = kTerminator;
  out = PutText<CFIChunkForm>(out, text, type);
  if (out == nullptr) return false;
  m_place.out = out;
  if (m_state != State::HalfEnded) m_state = State::Content;
  return true;
}

}  // namespace QzXmlLib16::detail
