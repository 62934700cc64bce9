#include <cstring>
#include <limits>

#include "qzxml/fastinfoset/FastInfosetContext.h"
#include "qzxml/fastinfoset/FastInfosetWriter.h"
#include "qzxml/fastinfoset/FastInfosetWriterEntry.h"
#include "qzxml/fastinfoset/FastInfosetWriterForms.h"
#include "qzxml/fastinfoset/FastInfosetWriterNames.h"
#include "qzxml/fastinfoset/OctetForms.h"
#include "qzxml/fastinfoset/SmallAlphabets.h"
#include "qzxml/platform/DebugChannel.h"
#include "qzxml/runtime/Encoder.h"
#include "qzxml/values/ConversionsDetail.h"
#include "qzxml/values/QzVariant.h"
#include "qzxml/xml/ShortText.h"
#include "qzxml/xml/XmlWriterContext.h"

// The short ways of the Fast Infoset writer: an element or an attribute whose name the document has
// met already, with a value whose octets are made without a string between. What is put down counts
// when all of it stands there. Nothing here fails: what may fail, and what is rare, is left to the
// calls of CXmlWriter.

namespace QzXmlLib16 {

using namespace detail;

namespace {

constexpr char kTerminator = '\xF0';
constexpr unsigned kLiteralElement = 0x3C;

// What the three parts of a name take beside themselves, with what stands in front of it.
constexpr std::size_t kLiteralRoom = 2 + 1 + 3 * kFormSize;

// Null for a text that has a zero byte.
char* CopyText(char* out, std::string_view text) {
  if (text.size() >= 8) return CopyWithoutZero(out, text.data(), text.size());
  if (text.find('\0') != std::string_view::npos) return nullptr;
  return CopyShort(out, text.data(), text.size());
}

// The number that an integer is.
bool GetInteger(const QzVariant& value, std::int64_t& number) {
  switch (value.GetTypeAsEnum()) {
    case ItemType_i1:
      number = static_cast<signed char>(value.GetI1());
      return true;
    case ItemType_i2:
      number = value.GetI2();
      return true;
    case ItemType_i4:
      number = value.GetI4();
      return true;
    case ItemType_i8:
      number = value.GetI8();
      return true;
    case ItemType_ui1:
      number = value.GetUI1();
      return true;
    case ItemType_ui2:
      number = value.GetUI2();
      return true;
    case ItemType_ui4:
      number = value.GetUI4();
      return true;
    case ItemType_ui8:
      number = static_cast<std::int64_t>(value.GetUI8());
      return number >= 0;
    default:
      return false;
  }
}

template <typename Narrow>
bool Fits(std::int64_t number) {
  return number >= std::numeric_limits<Narrow>::min() &&
         number <= std::numeric_limits<Narrow>::max();
}

// The octets of a value under an algorithm, as many as it has, in the low end of a number.
struct NumberOctets {
  std::uint64_t number;
  std::uint32_t size;  // 0 for a value that is not written here

  // Takes the room of eight octets.
  char* Write(char* out) const {
    const std::uint64_t first = number << (64 - 8 * size);
    for (std::size_t i = 0; i < 8; ++i) out[i] = static_cast<char>(first >> (56 - 8 * i) & 0xFF);
    return out + size;
  }
};

constexpr NumberOctets kNoOctets = {0, 0};

NumberOctets OctetsOfInteger(const QzVariant& value, std::uint32_t algorithm) {
  std::int64_t number = 0;
  if (!GetInteger(value, number)) return kNoOctets;
  const auto bits = static_cast<std::uint64_t>(number);
  if (algorithm == 3) return Fits<std::int16_t>(number) ? NumberOctets{bits, 2} : kNoOctets;
  if (algorithm == 4) return Fits<std::int32_t>(number) ? NumberOctets{bits, 4} : kNoOctets;
  return {bits, 8};
}

// A value with its text.
class Number {
 public:
  explicit Number(const QzVariant& value) : m_value(value) {}

  // False for a value that is no number, and no boolean.
  bool Write(const std::string& format) {
    const char* const end = WriteText(format);
    if (end == nullptr) return false;
    m_size = static_cast<std::size_t>(end - m_text);
    return true;
  }

  const QzVariant& GetValue() const { return m_value; }
  std::string_view GetText() const { return {m_text, m_size}; }
  // What the text of a real says; not a number where that is not easily told.
  double GetReal() const { return m_real; }

 private:
  const char* WriteText(const std::string& format) {
    const ItemType type = m_value.GetTypeAsEnum();
    if (type == ItemType_char) return nullptr;  // may be a zero byte
    if (format.empty()) {
      if (type == ItemType_r8) return WriteR8(m_text, m_value.GetR8(), m_real);
      if (type == ItemType_r4) return WriteR4(m_text, m_value.GetR4(), m_real);
    }
    return WriteShortText(m_value, format, m_text);
  }

  const QzVariant& m_value;
  char m_text[kNumberSize];
  std::size_t m_size = 0;
  double m_real = std::numeric_limits<double>::quiet_NaN();
};

// Meant: the real that its text says, which has fewer digits than it takes to tell each real from
// the next, so that another one may come back.
NumberOctets OctetsOfReal(double real, std::uint32_t algorithm) {
  if (real != real) return kNoOctets;
  if (algorithm == 7) {
    std::uint32_t bits = 0;
    const auto narrow = static_cast<float>(real);
    std::memcpy(&bits, &narrow, sizeof bits);
    return {bits, 4};
  }
  std::uint64_t bits = 0;
  std::memcpy(&bits, &real, sizeof bits);
  return {bits, 8};
}

NumberOctets OctetsOf(const Number& number, std::uint32_t algorithm) {
  const QzVariant& value = number.GetValue();
  if (algorithm >= 3 && algorithm <= 5) return OctetsOfInteger(value, algorithm);
  if (algorithm == 7 || algorithm == 8) return OctetsOfReal(number.GetReal(), algorithm);
  const bool isBoolean = algorithm == 6 && value.GetTypeAsEnum() == ItemType_boolean;
  return isBoolean ? NumberOctets{value.GetBoolean() ? 0x38u : 0x30u, 1} : kNoOctets;
}

}  // namespace

// ---- Values ----

// A text that is not empty, as text up to its first zero byte or in an alphabet. Takes kFIValueHead
// more than its size; null for any other encoding, and for a text that can not be written so.
template <typename Form>
inline char* CFastInfosetWriter::PutShortText(char* out, std::string_view text, ItemType type) {
  CTableEntry entry(text, GetTable<Form>(), Form::GetMaxAddLength(*m_pOptions));
  if (const std::uint32_t index = entry.FindIndex()) return Form::WriteIndex(out, index);
  const auto encoding = m_pOptions->GetEncoding(type);
  if (encoding.m_dwType == kFIText) {
    if (m_pOptions->GetDefaultStringEncoding() == 1 || !IsLocalUtf8()) return nullptr;
    out = WriteValueHead<Form>(out, entry.IsToBeAdded(), kFIText, 0,
                               static_cast<std::uint32_t>(text.size()));
    out = CopyText(out, text);
    if (out == nullptr) return nullptr;
  } else if (encoding.m_dwType == kFIRestrictedAlphabet && encoding.m_dwIndex - 1 < 2) {
    out = WriteValueHead<Form>(out, entry.IsToBeAdded(), kFIRestrictedAlphabet, encoding.m_dwIndex,
                               static_cast<std::uint32_t>((text.size() + 1) / 2));
    out = SmallAlphabet::Get(encoding.m_dwIndex).Write(out, text);
    if (out == nullptr) return nullptr;
  } else {
    return nullptr;
  }
  entry.Add();
  return out;
}

// A number or a boolean with its text, likewise. Takes kFIValueHead more than kNumberSize.
template <typename Form, typename Number>
inline char* CFastInfosetWriter::PutNumber(char* out, const Number& number) {
  const ItemType type = number.GetValue().GetTypeAsEnum();
  const auto encoding = m_pOptions->GetEncoding(type);
  if (encoding.m_dwType != kFIAlgorithm) return PutShortText<Form>(out, number.GetText(), type);
  CTableEntry entry(number.GetText(), GetTable<Form>(), Form::GetMaxAddLength(*m_pOptions));
  if (const std::uint32_t index = entry.FindIndex()) return Form::WriteIndex(out, index);
  const NumberOctets octets = OctetsOf(number, encoding.m_dwIndex);
  if (octets.size == 0) return nullptr;
  out =
      WriteValueHead<Form>(out, entry.IsToBeAdded(), kFIAlgorithm, encoding.m_dwIndex, octets.size);
  entry.Add();
  return octets.Write(out);
}

// ---- Elements ----

// The ordinary case is an element around it, a namespace with an alias, and a content that takes no
// more than that room: put(out) writes it and answers its end, or null. It is called once.
template <typename PutContent>
inline bool CFastInfosetWriter::PutElement(const ElementTags& name, const std::string& uri,
                                           std::size_t room, PutContent put) {
  if (GetDebugChannel() != nullptr) return false;
  if (m_pPendingContext != nullptr) FlushPendingElement(false);
  CXmlWriterContext* const parent = m_pContext;
  if (parent == nullptr) return false;
  CFIKnownNames& names = m_pTables->names;
  const CFIKnownNames::ById& known = names.ElementOf(name.GetId());
  if (!known.Is(name.GetId(), names.Marked(parent->GetNamespaceState()))) {
    return PutOtherElement(name, uri, room, put);
  }
  char* const out = put(known.octets.Write(BeginElement(CFIKnownNames::kRoom + room)));
  if (out == nullptr) return false;
  EndElement(out);
  return true;
}

// The same for a name that may be new to the document. It is then written in full, which it can
// only be once its content is.
template <typename PutContent>
[[gnu::noinline]] bool CFastInfosetWriter::PutOtherElement(const ElementTags& name,
                                                           const std::string& uri, std::size_t room,
                                                           PutContent& put) {
  if (!IsLocalUtf8()) return false;  // names may get longer
  const bool isPrefixed = !uri.empty() && uri != m_pContext->GetDefaultNamespace();
  const std::string* const prefix = isPrefixed ? m_pContext->FindAlias(uri) : &m_strNone;
  if (prefix == nullptr) return false;
  CTableEntry entry(CFIVocabulary::FormKey(*prefix, uri, name.GetName(), m_pTables->key),
                    m_pTables->maps.elementNames);
  CFIKnownOctets octets;
  if (const std::uint32_t index = entry.FindIndex()) {
    octets.SetElement(index);
    KeepElement(name, octets);
    char* const out = put(octets.Write(BeginElement(CFIKnownNames::kRoom + room)));
    if (out == nullptr) return false;
    EndElement(out);
    return true;
  }
  const std::size_t nameRoom = kLiteralRoom + prefix->size() + uri.size() + name.GetName().size();
  const std::string_view content = PutAside(nameRoom, room, put);
  if (content.data() == nullptr) return false;
  EndPiece(BeginElement(0));
  PutLiteralName(kLiteralElement, *prefix, uri, name.GetName());
  octets.SetElement(entry.Add());
  KeepElement(name, octets);
  EndElement(TakeAside(content));
  return true;
}

// A place for an element, behind what had to be written before it.
inline char* CFastInfosetWriter::BeginElement(std::size_t room) {
  char* out = BeginPiece(2 + room);
  if (m_bHalfTerminatorPending) *out++ = kTerminator;
  if (m_pContext->IsStartTagOpen() && m_pContext->HasAttributes()) *out++ = kTerminator;
  return out;
}

inline void CFastInfosetWriter::EndElement(const char* end) {
  EndPiece(end);
  m_bHalfTerminatorPending = true;
  m_pContext->AddChild();
  m_pContext->SetStartTagOpen(false);
  m_pContext->CountElement();
  NextPieceWhenDue();
}

// A name without an index is new each time, as is one without an id.
void CFastInfosetWriter::KeepElement(const ElementTags& name, const CFIKnownOctets& octets) {
  if (name.GetId() == 0 || octets.size == 0) return;
  CFIKnownNames& names = m_pTables->names;
  names.KeepElement(name.GetId(), names.Marked(m_pContext->GetNamespaceState()), octets);
}

// The content, behind what a name takes that is written in full; no pointer where there is none. It
// stays there until the name is written.
template <typename PutContent>
inline std::string_view CFastInfosetWriter::PutAside(std::size_t nameRoom, std::size_t room,
                                                     PutContent& put) {
  char* const content = BeginPiece(nameRoom + room) + nameRoom;
  const char* const end = put(content);
  if (end == nullptr) return std::string_view();
  return {content, static_cast<std::size_t>(end - content)};
}

// Moves it to its place.
inline char* CFastInfosetWriter::TakeAside(std::string_view content) {
  char* const out = m_pPiece + m_pieceSize;
  std::memmove(out, content.data(), content.size());
  return out + content.size();
}

bool CFastInfosetWriter::PutTextElement(const ElementTags& name, const std::string& uri,
                                        const std::string& text, ItemType type) {
  return PutElement(name, uri, kFIValueHead + text.size(), [&](char* out) {
    return text.empty() ? out : PutShortText<CFIChunkForm>(out, text, type);
  });
}

bool CFastInfosetWriter::PutValueElement(const ElementTags& name, const std::string& uri,
                                         const QzVariant& value, const std::string& format) {
  const ItemType type = value.GetTypeAsEnum();
  if (type == ItemType_string) return PutTextElement(name, uri, value.GetStringReference(), type);
  Number number(value);
  if (!number.Write(format)) return false;
  return PutElement(name, uri, kFIValueHead + kNumberSize,
                    [&](char* out) { return PutNumber<CFIChunkForm>(out, number); });
}

// ---- Attributes ----

// The ordinary case is a start tag that may have attributes, and otherwise as above.
template <typename PutContent>
inline bool CFastInfosetWriter::PutAttribute(const AttributeTag& name, std::size_t room,
                                             PutContent put) {
  if (GetDebugChannel() != nullptr) return false;
  if (m_pPendingContext != nullptr) FlushPendingElement(true);
  if (m_pContext == nullptr || !m_pContext->IsStartTagOpen() || !m_pContext->HasAttributes()) {
    return false;
  }
  CFIKnownNames& names = m_pTables->names;
  const CFIKnownNames::ById& known = names.AttributeOf(name.GetId());
  if (!known.Is(name.GetId(), names.Marked(0))) return PutOtherAttribute(name, room, put);
  char* const out = put(known.octets.Write(BeginPiece(CFIKnownNames::kRoom + room)));
  if (out == nullptr) return false;
  EndPiece(out);
  NextPieceWhenDue();
  return true;
}

// The same for a name that may be new to the document.
template <typename PutContent>
[[gnu::noinline]] bool CFastInfosetWriter::PutOtherAttribute(const AttributeTag& name,
                                                             std::size_t room, PutContent& put) {
  if (!IsLocalUtf8()) return false;
  const std::string_view content = PutAside(kLiteralRoom + name.GetName().size(), room, put);
  if (content.data() == nullptr) return false;
  const std::uint32_t index = PutAttributeName(0x00, m_strNone, m_strNone, name.GetName());
  if (index != 0) {
    CFIKnownOctets octets;
    octets.SetAttribute(index);
    m_pTables->names.KeepAttribute(name.GetId(), m_pTables->names.Marked(0), octets);
  }
  EndPiece(TakeAside(content));
  NextPieceWhenDue();
  return true;
}

bool CFastInfosetWriter::PutValueAttribute(const AttributeTag& name, const QzVariant& value,
                                           const std::string& format) {
  const ItemType type = value.GetTypeAsEnum();
  if (type == ItemType_string) {
    const std::string& text = value.GetStringReference();
    return !text.empty() && PutAttribute(name, kFIValueHead + text.size(), [&](char* out) {
      return PutShortText<CFIAttributeForm>(out, text, type);
    });
  }
  Number number(value);
  if (!number.Write(format)) return false;
  return PutAttribute(name, kFIValueHead + kNumberSize,
                      [&](char* out) { return PutNumber<CFIAttributeForm>(out, number); });
}

}  // namespace QzXmlLib16
