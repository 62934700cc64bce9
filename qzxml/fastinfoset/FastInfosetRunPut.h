#pragma once

#include "qzxml/fastinfoset/FastInfosetRun.h"
#include "qzxml/fastinfoset/SmallAlphabets.h"

// The parts of a run that each element and each value takes: inline, for those who write them.
namespace QzXmlLib16::detail {

// ---- Values ----

// Not for an empty text. Words may overlap.
inline bool FastInfosetRun::HasZero(std::string_view text) {
  const char* const bytes = text.data();
  const std::size_t size = text.size();
  constexpr std::uint64_t kHighBits = 0x8080808080808080;
  const auto zeros = [](std::uint64_t word) { return (word - 0x0101010101010101) & ~word; };
  if (size >= 8) {
    std::uint64_t found = zeros(LoadWord<std::uint64_t>(bytes + size - 8));
    for (std::size_t at = 0; at + 8 < size; at += 8) {
      found |= zeros(LoadWord<std::uint64_t>(bytes + at));
    }
    return (found & kHighBits) != 0;
  }
  if (size >= 4) {
    const std::uint64_t first = LoadWord<std::uint32_t>(bytes);
    const std::uint64_t last = LoadWord<std::uint32_t>(bytes + size - 4);
    return (zeros(first << 32 | last) & kHighBits) != 0;
  }
  return bytes[0] == '\0' || bytes[size / 2] == '\0' || bytes[size - 1] == '\0';
}

inline char* FastInfosetRun::PutOctets(char* out, const Octets& octets) {
  const std::uint64_t first = octets.bits << (64 - 8 * octets.size);
  for (std::size_t i = 0; i < 8; ++i) out[i] = static_cast<char>(first >> (56 - 8 * i) & 0xFF);
  return out + octets.size;
}

// A value in full, which has no zero byte; null under any encoding but text and alphabets, and for
// a character that is not in the alphabet.
template <typename Form>
inline char* FastInfosetRun::PutLiteral(char* out, std::string_view text,
                                        CFastInfosetContext::EncodedCharacterString as,
                                        bool add) const {
  const auto size = static_cast<std::uint32_t>(text.size());
  if (as.m_dwType == kFIText && m_writesUtf8) {
    return CopyShort(WriteValueHead<Form>(out, add, kFIText, 0, size), text.data(), text.size());
  }
  if (as.m_dwType == kFIRestrictedAlphabet && as.m_dwIndex - 1 < 2) {
    out = WriteValueHead<Form>(out, add, kFIRestrictedAlphabet, as.m_dwIndex, (size + 1) / 2);
    return SmallAlphabet::Get(as.m_dwIndex).Write(out, text);
  }
  return nullptr;
}

template <typename Form>
inline char* FastInfosetRun::PutText(char* out, std::string_view text, ItemType type) {
  const Table& table = GetTable<Form>();
  if (text.size() >= table.maxAddLength) {
    return HasZero(text) ? nullptr
                         : PutLiteral<Form>(out, text, m_parts.options->GetEncoding(type), false);
  }
  const std::uint64_t key = CFITextIndexes::KeyOf(text);
  const CFITextIndexes::Place place = table.texts->Look(text, key);
  if (place.index != 0) return Form::WriteIndex(out, place.index);
  if (HasZero(text)) return nullptr;
  out = PutLiteral<Form>(out, text, m_parts.options->GetEncoding(type), true);
  if (out != nullptr) AddAt(*table.texts, place, text, key);
  return out;
}

// Meant: also a value under an algorithm is looked for by its text.
template <typename Form, typename GetOctets>
inline char* FastInfosetRun::PutPrinted(char* out, std::string_view text, ItemType type,
                                        GetOctets octets) {
  const Table& table = GetTable<Form>();
  const bool add = text.size() < table.maxAddLength;
  std::uint64_t key = 0;
  CFITextIndexes::Place place = {0, 0};
  if (add) {
    key = CFITextIndexes::KeyOf(text);
    place = table.texts->Look(text, key);
    if (place.index != 0) return Form::WriteIndex(out, place.index);
  }
  const auto as = m_parts.options->GetEncoding(type);
  if (as.m_dwType == kFIAlgorithm) {
    const Octets found = octets(as.m_dwIndex);
    if (found.size == 0) return nullptr;
    out = WriteValueHead<Form>(out, add, kFIAlgorithm, as.m_dwIndex, found.size);
    out = PutOctets(out, found);
  } else {
    out = PutLiteral<Form>(out, text, as, add);
    if (out == nullptr) return nullptr;
  }
  if (add) AddAt(*table.texts, place, text, key);
  return out;
}

// ---- Elements ----

// The ends that have to stand in front of a child of the innermost element.
inline char* FastInfosetRun::Open(char* out) const {
  if (m_place.isHalfPending) *out++ = kTerminator;
  if (m_innermost->m_state == State::Attributes) *out++ = kTerminator;
  return out;
}

inline void FastInfosetRun::Enter(Element& element, const FastInfosetName& name) {
  m_place.isHalfPending = false;
  m_innermost->m_state = State::Content;
  m_innermost->m_inner = &element;
  element.m_outer = m_innermost;
  element.m_name = &name;
  m_innermost = &element;
}

inline void FastInfosetRun::BeginElement(Element& element, const FastInfosetName& name) {
  if (m_innermost->m_state == State::Pending) WritePending(false);
  const CFIKnownNames::ById& known = m_parts.names->ElementOf(name.GetId());
  if (!known.Is(name.GetId(), m_namespaceState) || GetRoom() < kElementRoom) {
    return BeginOtherElement(element, name);
  }
  m_head = Open(m_place.out);
  m_place.out = known.octets.Write(m_head);
  Enter(element, name);
}

inline void FastInfosetRun::EndElement(Element& element) {
  if (element.m_context != nullptr || GetRoom() < 2) return EndInWriter(element);
  if (element.m_state == State::Attributes) *m_place.out++ = kTerminator;
  if (m_place.isHalfPending) *m_place.out++ = kTwoTerminators;
  m_place.isHalfPending = !m_place.isHalfPending;
  m_innermost = element.m_outer;
  ++m_elements;
  FlushWhenDue();
}

// An element with nothing but a content: put(out) writes it and answers its end, or null.
template <typename PutContent>
inline bool FastInfosetRun::PutElement(const FastInfosetName& name, std::size_t room,
                                       PutContent put) {
  if (m_innermost->m_state == State::Pending) WritePending(false);
  const CFIKnownNames::ById& known = m_parts.names->ElementOf(name.GetId());
  const bool isKnown = known.Is(name.GetId(), m_namespaceState);
  char* out;
  if (isKnown) {
    if (GetRoom() < kElementRoom + kValueRoom + room) return false;
    out = known.octets.Write(Open(m_place.out));
  } else {
    out = PutOtherElementName(name, kValueRoom + room);
    if (out == nullptr) return false;
  }
  out = put(out);
  if (out == nullptr) return false;
  if (!isKnown && m_isInFull) LearnElement(name);
  m_place.out = out;
  m_place.isHalfPending = true;
  m_innermost->m_state = State::Content;
  ++m_elements;
  FlushWhenDue();
  return true;
}

template <typename PutContent>
inline bool FastInfosetRun::PutAttribute(const FastInfosetName& name, std::size_t room,
                                         PutContent put) {
  constexpr unsigned char kHasAttributes = 0x40;
  if (m_innermost->m_state == State::Pending) WritePending(true);
  const State state = m_innermost->m_state;
  if (state != State::Begun && state != State::Attributes) return false;
  const CFIKnownNames::ById& known = m_parts.names->AttributeOf(name.GetId());
  const bool isKnown = known.Is(name.GetId(), 0);
  char* out;
  if (isKnown) {
    if (GetRoom() < CFIKnownNames::kRoom + kValueRoom + room) return false;
    out = known.octets.Write(m_place.out);
  } else {
    out = PutOtherAttributeName(name, kValueRoom + room);
    if (out == nullptr) return false;
  }
  out = put(out);
  if (out == nullptr) return false;
  if (!isKnown && m_isInFull) LearnAttribute(name);
  if (state == State::Begun) {
    *m_head = static_cast<char>(static_cast<unsigned char>(*m_head) | kHasAttributes);
    m_innermost->m_state = State::Attributes;
  }
  m_place.out = out;
  FlushWhenDue();
  return true;
}

inline bool FastInfosetRun::PutTextElement(const FastInfosetName& name, std::string_view text,
                                           ItemType type) {
  return PutElement(name, text.size(), [&](char* out) {
    return text.empty() ? out : PutText<CFIChunkForm>(out, text, type);
  });
}

template <typename GetOctets>
inline bool FastInfosetRun::PutPrintedElement(const FastInfosetName& name, std::string_view text,
                                              ItemType type, GetOctets octets) {
  return PutElement(name, text.size(),
                    [&](char* out) { return PutPrinted<CFIChunkForm>(out, text, type, octets); });
}

inline bool FastInfosetRun::PutTextAttribute(const FastInfosetName& name, std::string_view text,
                                             ItemType type) {
  return PutAttribute(name, text.size(),
                      [&](char* out) { return PutText<CFIAttributeForm>(out, text, type); });
}

template <typename GetOctets>
inline bool FastInfosetRun::PutPrintedAttribute(const FastInfosetName& name, std::string_view text,
                                                ItemType type, GetOctets octets) {
  return PutAttribute(name, text.size(), [&](char* out) {
    return PutPrinted<CFIAttributeForm>(out, text, type, octets);
  });
}

// Meant: the end of an element that still has to be written comes behind this.
inline bool FastInfosetRun::PutOwnText(std::string_view text, ItemType type) {
  if (m_innermost->m_state == State::Pending) WritePending(false);
  if (GetRoom() < 1 + kValueRoom + text.size()) return false;
  char* out = m_place.out;
  if (m_innermost->m_state == State::Attributes) *out++ = kTerminator;
  out = PutText<CFIChunkForm>(out, text, type);
  if (out == nullptr) return false;
  m_place.out = out;
  m_innermost->m_state = State::Content;
  FlushWhenDue();
  return true;
}

}  // namespace QzXmlLib16::detail
