// Any bytes as calls of a writer: the options of the document, then elements with attributes,
// values of every kind, text and children. The Fast Infoset that is written is read, and the tree
// has what the calls said.
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "qzxml/QzXml.h"
#include "tests/xml/TreeShape.h"

using namespace QzXmlLib16;

namespace {

// The bytes that decide; zeros behind the last one.
class CInput {
 public:
  CInput(const std::uint8_t* data, std::size_t size) : m_next(data), m_end(data + size) {}
  bool IsAtEnd() const { return m_next == m_end; }
  std::uint8_t Take() { return IsAtEnd() ? std::uint8_t{0} : *m_next++; }
  std::uint64_t TakeNumber(int octets) {
    std::uint64_t number = 0;
    for (int i = 0; i < octets; ++i) number = number << 8 | Take();
    return number;
  }
  std::string TakeText() {
    std::string text;
    for (std::size_t length = Take(); length > 0 && !IsAtEnd(); --length) {
      text += static_cast<char>(Take());
    }
    return text;
  }

 private:
  const std::uint8_t* m_next;
  const std::uint8_t* const m_end;
};

// --- Values in the form in which they are written and come back

struct Value {
  ItemType type;
  std::string text;
};

std::string CharactersOf(CInput& input, const char* alphabet) {
  const std::size_t size = std::strlen(alphabet);
  std::string text;
  for (std::size_t length = input.Take() % 40; length > 0; --length) {
    text += alphabet[input.Take() % size];
  }
  return text;
}

std::string Binary(CInput& input, bool hexadecimal) {
  const std::string octets = input.TakeText();
  const CBinaryData data(reinterpret_cast<const unsigned char*>(octets.data()),
                         static_cast<std::uint32_t>(octets.size()));
  return hexadecimal ? data.GetAsHexString() : octets.empty() ? "" : data.GetAsBase64();
}

template <typename Real, typename Bits>
Real TakeReal(CInput& input) {
  const auto bits = static_cast<Bits>(input.TakeNumber(sizeof(Bits)));
  Real value;
  std::memcpy(&value, &bits, sizeof value);
  return value;
}

std::string TextOf(CInput& input, ItemType type) {
  switch (type) {
    case ItemType_hexBinary:
    case ItemType_base64Binary:
      return Binary(input, type == ItemType_hexBinary);
    case ItemType_i1:
    case ItemType_i2:
    case ItemType_ui1:
      return std::to_string(static_cast<std::int16_t>(input.TakeNumber(2)));
    case ItemType_i4:
    case ItemType_ui2:
      return std::to_string(static_cast<std::int32_t>(input.TakeNumber(4)));
    case ItemType_i8:
    case ItemType_ui4:
    case ItemType_ui8:
      return std::to_string(static_cast<std::int64_t>(input.TakeNumber(8)));
    case ItemType_r4:
      return CConversions::r4ToString(TakeReal<float, std::uint32_t>(input));
    case ItemType_r8:
      return CConversions::r8ToString(TakeReal<double, std::uint64_t>(input));
    case ItemType_yearMonth:
    case ItemType_monthDay:
    case ItemType_year:
    case ItemType_month:
    case ItemType_day:
    case ItemType_date:
    case ItemType_datetime:
    case ItemType_time:
      return CharactersOf(input, "0123456789-:TZ ");
    case ItemType_boolean:
      return input.Take() % 2 != 0 ? "true" : "false";
    case ItemType_decimal:
    case ItemType_integer:
      return CharactersOf(input, "0123456789-+.e ");
    default:
      return input.TakeText();
  }
}

Value TakeValue(CInput& input) {
  const auto type = static_cast<ItemType>(input.Take() % 29);
  return {type, TextOf(input, type)};
}

// A zero byte ends a text.
std::string Kept(const std::string& text) { return text.substr(0, text.find('\0')); }

std::string KeptOfText(const std::string& text) {
  std::string kept;
  for (const char c : Kept(text)) {
    if (c != '\r') kept += c;
  }
  return kept;
}

// --- Elements

constexpr const char* kUris[] = {"", "urn:x", "urn:y", "http://www.w3.org/XML/1998/namespace"};

// Writes what the bytes say, and says it in the form of Shape.
class CCalls {
 public:
  CCalls(CInput& input, CFastInfosetWriter& writer) : m_input(input), m_writer(writer) {}

  std::string WriteElement(int depth) {
    const std::string uri = kUris[m_input.Take() % 4];
    const std::string name = TakeName();
    return WriteElement(depth, uri, name);
  }

 private:
  std::string TakeName() {
    const unsigned number = m_input.Take();
    if (number < 0xF0) return "n" + std::to_string(number);
    return "n" + std::string(m_input.TakeNumber(2) % 600, 'n');
  }

  std::string WriteElement(int depth, const std::string& uri, const std::string& name) {
    m_writer.WriteStartElement(name, uri);
    std::string shape = qztest::Name(uri, name);
    for (int attributes = m_input.Take() % 4; attributes > 0; --attributes) {
      shape += ' ' + WriteAttribute();
    }
    const Value value = TakeValue(m_input);
    m_writer.WriteText(value.text, value.type, m_input.Take() % 2 != 0);
    const std::string text = KeptOfText(value.text);
    if (!text.empty()) shape += " \"" + text + '"';
    shape += WriteChildren(depth);
    m_writer.WriteEndElement();
    return shape;
  }

  std::string WriteAttribute() {
    const std::string uri = kUris[m_input.Take() % 4];
    const std::string name = TakeName();
    const Value value = TakeValue(m_input);
    m_writer.WriteAttribute(name, uri, value.text, value.type);
    return qztest::Name(uri, name) + "='" + Kept(value.text) + '\'';
  }

  // Some by the bytes, or a number of small ones with names and texts of their own.
  std::string WriteChildren(int depth) {
    std::string shape;
    const unsigned children = m_input.Take();
    if (children == 0xFF) {
      for (std::uint64_t i = m_input.TakeNumber(2) % 1100; i > 0 && m_many > 0; --i, --m_many) {
        const std::string text = std::to_string(i);
        m_writer.WriteStartElement("m" + text, "");
        m_writer.WriteText(text, ItemType_string, false);
        m_writer.WriteEndElement();
        shape += "[m" + text + " \"" + text + "\"]";
      }
      return shape;
    }
    for (unsigned i = children % 8; i > 0 && !m_input.IsAtEnd() && depth < 100; --i) {
      shape += '[' + WriteElement(depth + 1) + ']';
    }
    return shape;
  }

  CInput& m_input;
  CFastInfosetWriter& m_writer;
  int m_many = 2200;  // so many as make the third form of an index of a name
};

void SetOptions(CInput& input, CFastInfosetContext& options) {
  const unsigned bits = input.Take();
  if ((bits & 0x01) != 0) options.SetSuggestedValues();
  if ((bits & 0x02) != 0) {
    options.SetUseGeneratedVocabulary(true);
    options.SetExternalVocabularyURI(input.TakeText().c_str());
    CFIVocabulary& vocabulary = *options.GetVocabulary();
    for (const char* uri : kUris) {
      vocabulary.AddElement("", uri, "n0");
      vocabulary.AddAttribute("", uri, "n1");
    }
    vocabulary.AddElementValue("true");
    vocabulary.AddAttributeValue("0");
  }
  if ((bits & 0x04) != 0) options.SetAttributeMaxAddLength(input.Take());
  if ((bits & 0x08) != 0) options.SetElementMaxAddLength(input.Take());
}

void SetNamespaces(CInput& input, CFastInfosetWriter& writer) {
  const unsigned bits = input.Take();
  if ((bits & 0x01) != 0) writer.AddNamespaceMapping("p", "urn:x");
  if ((bits & 0x02) != 0) writer.AddNamespaceMapping("AA", "urn:z");
  if ((bits & 0x04) != 0) writer.SetDefaultNamespace("urn:y");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  CInput input(data, size);
  CSerializationContext context;
  SetOptions(input, context.GetFIContext());
  CBinaryStream stream;
  CFastInfosetWriter writer(&context.GetFIContext(), &stream);
  writer.StartDocument();
  writer.WriteHeader(static_cast<FInfoDecl>(input.Take() % 10));
  SetNamespaces(input, writer);
  const std::string expected = CCalls(input, writer).WriteElement(1);
  writer.WriteDocumentEnd();
  writer.EndDocument();

  CXmlDocument document(context);
  const CBinaryData bytes = stream.GetData();
  std::string actual;
  try {
    document.LoadXmlStream(bytes.GetData(), bytes.GetLength());
    actual = qztest::Shape(document);
  } catch (const CQzException& e) {
    actual = "failure: " + e.GetMessage();
  }
  if (expected == actual) return 0;
  std::fprintf(stderr, "Expected:\n%s\nbut it is:\n%s\n", expected.c_str(), actual.c_str());
  std::abort();
}
