// Whole documents whose tables grow past each limit at which an index takes another form, and past
// what a table takes: the octets of the writer, worked out from the layouts, and what is read back.
#include <string>
#include <vector>

#include "qzxml/fastinfoset/FastInfosetContext.h"
#include "qzxml/fastinfoset/FastInfosetWriter.h"
#include "qzxml/runtime/BinaryStream.h"
#include "tests/fastinfoset/FIDocument.h"
#include "tests/support/QzTest.h"

namespace QzXmlLib16 {
namespace {

using qztest::LoadOctets;
using qztest::Octets;

constexpr std::uint32_t kFullTable = 0x100000;

struct IndexCase {
  std::uint32_t index;
  const char* hex;
};

// Different for each number and shorter than what goes into the tables.
std::string Short(std::uint32_t number) {
  constexpr char kDigits[] = "0123456789ABCDEF";
  std::string text;
  for (int shift = 16; shift >= 0; shift -= 4) text += kDigits[number >> shift & 0x0F];
  return text;
}

// Short with as many digits as fit into five bytes gives 2^20 texts, from 0; the one of index n.
std::string Entry(std::uint32_t index) { return Short(index - 1); }

template <typename Calls>
std::string Write(Calls calls) {
  CFastInfosetContext context;
  CBinaryStream stream;
  CFastInfosetWriter writer(&context, &stream);
  writer.StartDocument();
  writer.WriteHeader(FInfoDecl_None);
  calls(writer);
  writer.WriteDocumentEnd();
  writer.EndDocument();
  const CBinaryData bytes = stream.GetData();
  return std::string(reinterpret_cast<const char*>(bytes.GetData()), bytes.GetLength());
}

std::string Tail(const std::string& octets, const std::string& expected) {
  return octets.substr(octets.size() - std::min(octets.size(), expected.size()));
}

void Text(CFastInfosetWriter& w, const std::string& text) {
  w.WriteText(text, ItemType_string, false);
}

// The texts of the children of the root, in their order.
std::vector<std::string> ChildTexts(const std::string& octets) {
  CXmlDocument document;
  LoadOctets(document, octets);
  std::vector<std::string> texts;
  for (const CXmlElement* child = document.GetDocumentElement()->GetFirstElement();
       child != nullptr; child = child->GetNextSiblingElement()) {
    texts.push_back(child->GetText());
  }
  return texts;
}

TEST(FastInfosetLargeTables, TextsAreFoundAgainPastEachLimit) {
  const IndexCase cases[] = {{1, "A0"},
                             {16, "AF"},
                             {17, "B0 00"},
                             {1040, "B3 FF"},
                             {1041, "B4 00 00"},
                             {66577, "B5 00 00"},
                             {263184, "B7 FF FF"},
                             {263185, "B8 00 00 00"},
                             {263186, "B8 00 00 01"},
                             {270000, "B8 00 1A 9F"}};
  const std::string octets = Write([&](CFastInfosetWriter& w) {
    w.WriteStartElement("a", "");
    for (std::uint32_t index = 1; index <= 270000; ++index) Text(w, Entry(index));
    for (const IndexCase& c : cases) {
      w.WriteStartElement("a", "");
      Text(w, Entry(c.index));
      w.WriteEndElement();
    }
    w.WriteEndElement();
  });
  // Each child: its name by index, its text, and its end, which the next child completes.
  std::string tail = Octets("92 02") + Entry(270000);
  std::vector<std::string> texts;
  for (const IndexCase& c : cases) {
    tail += Octets("00") + Octets(c.hex) + Octets("F0");
    texts.push_back(Entry(c.index));
  }
  tail.pop_back();
  tail += Octets("FF F0");
  EXPECT_EQ(tail, Tail(octets, tail));
  EXPECT_EQ(texts, ChildTexts(octets));
}

TEST(FastInfosetLargeTables, ValuesAreFoundAgainPastEachLimit) {
  const IndexCase cases[] = {{1, "80"},           {64, "BF"},           {65, "C0 00"},
                             {8256, "DF FF"},     {8257, "E0 00 00"},   {8258, "E0 00 01"},
                             {73793, "E1 00 00"}, {263185, "E3 E3 D0"}, {270000, "E3 FE 6F"}};
  const std::string octets = Write([&](CFastInfosetWriter& w) {
    w.WriteStartElement("a", "");
    for (std::uint32_t index = 1; index <= 270000; ++index) {
      w.WriteAttribute("k", "", Entry(index), ItemType_string);
    }
    for (const IndexCase& c : cases) w.WriteAttribute("k", "", Entry(c.index), ItemType_string);
    w.WriteEndElement();
  });
  std::string tail = Octets("00 44") + Entry(270000);
  for (const IndexCase& c : cases) tail += Octets("00") + Octets(c.hex);
  tail += Octets("F0 FF");
  EXPECT_EQ(tail, Tail(octets, tail));

  CXmlDocument document;
  LoadOctets(document, octets);
  const auto& attributes = document.GetDocumentElement()->GetAttributes();
  ASSERT_EQ(270000 + std::size(cases), attributes.size());
  std::vector<std::string> values;
  std::vector<std::string> expected;
  std::size_t place = 0;
  for (const CXmlAttribute* attribute : attributes) {
    if (place++ >= 270000) values.push_back(attribute->GetValue());
  }
  for (const IndexCase& c : cases) expected.push_back(Entry(c.index));
  EXPECT_EQ(expected, values);
}

// Meant: from 526369 on the index that is written stands for the next name.
TEST(FastInfosetLargeTables, NamesOfElementsAreFoundAgainPastEachLimit) {
  struct Case {
    std::uint32_t index;
    const char* hex;
    std::uint32_t read;
  };
  const Case cases[] = {{1, "00", 1},
                        {32, "1F", 32},
                        {33, "20 00", 33},
                        {2080, "27 FF", 2080},
                        {2081, "28 00 00", 2081},
                        {67617, "29 00 00", 67617},
                        {526368, "2F FF FF", 526368},
                        {526369, "30 00 00 01", 526370},
                        {526370, "30 00 00 02", 526371}};
  constexpr std::uint32_t kLast = 526372;
  const auto name = [](std::uint32_t index) { return "n" + Entry(index); };
  const std::string octets = Write([&](CFastInfosetWriter& w) {
    w.WriteStartElement(name(1), "");
    for (std::uint32_t index = 2; index <= kLast; ++index) {
      w.WriteStartElement(name(index), "");
      w.WriteEndElement();
    }
    for (const Case& c : cases) {
      w.WriteStartElement(name(c.index), "");
      w.WriteEndElement();
    }
    w.WriteEndElement();
  });
  std::string tail = Octets("3C 05") + name(kLast) + Octets("F0");
  for (const Case& c : cases) tail += Octets(c.hex) + Octets("F0");
  tail.pop_back();
  tail += Octets("FF F0");
  EXPECT_EQ(tail, Tail(octets, tail));

  CXmlDocument document;
  LoadOctets(document, octets);
  std::vector<std::string> names;
  std::uint32_t place = 2;
  for (const CXmlElement* child = document.GetDocumentElement()->GetFirstElement();
       child != nullptr; child = child->GetNextSiblingElement(), ++place) {
    if (place > kLast) names.push_back(child->GetLocalName());
  }
  std::vector<std::string> expected;
  for (const Case& c : cases) expected.push_back(name(c.read));
  EXPECT_EQ(expected, names);
}

// A full table: what is in it goes by its index, what is not goes in full each time.
TEST(FastInfosetLargeTables, ATextThatAFullTableDoesNotTakeIsWrittenInFullEachTime) {
  const std::string octets = Write([](CFastInfosetWriter& w) {
    w.WriteStartElement("a", "");
    for (std::uint32_t index = 1; index <= kFullTable; ++index) Text(w, Entry(index));
    for (const std::string& text : {Entry(kFullTable), std::string("new"), std::string("new")}) {
      w.WriteStartElement("a", "");
      Text(w, text);
      w.WriteEndElement();
    }
    w.WriteEndElement();
  });
  const std::string tail = Octets("92 02") + Entry(kFullTable) +
                           Octets("00 B8 0B FB EF F0 00 92 00 6E 65 77 F0 00 92 00 6E 65 77 FF F0");
  EXPECT_EQ(tail, Tail(octets, tail));
  EXPECT_EQ((std::vector<std::string>{Entry(kFullTable), "new", "new"}), ChildTexts(octets));
}

TEST(FastInfosetLargeTables, AVocabularyTakes2To20NamesOfElements) {
  CFastInfosetContext context;
  CFIVocabulary& vocabulary = *context.GetVocabulary();
  for (std::uint32_t index = 1; index <= kFullTable; ++index) {
    vocabulary.AddElement("", "", Entry(index));
  }
  vocabulary.AddElement("", "", "new");
  const auto& names = vocabulary.GetElementNamesTable().m_table;
  ASSERT_EQ(kFullTable, names.size());
  EXPECT_EQ(kFullTable, names.back().m_dwLocalNameIndex);
  std::uint32_t index = 0;
  EXPECT_FALSE(vocabulary.FindLocalNameIndex("new", index));

  // A document that starts from it writes such a name in full, each time.
  context.SetUseGeneratedVocabulary(true);
  context.SetExternalVocabularyURI("u");
  CBinaryStream stream;
  CFastInfosetWriter writer(&context, &stream);
  writer.WriteHeader(FInfoDecl_None);
  writer.WriteStartElement("new", "");
  writer.WriteStartElement("new", "");
  writer.WriteStartElement(Entry(kFullTable), "");
  for (int i = 0; i < 3; ++i) writer.WriteEndElement();
  writer.WriteDocumentEnd();
  const std::string expected =
      Octets("E0 00 00 01 20 10 00 00 75 38 F0 3C 02 6E 65 77 3C 02 6E 65 77 30 07 F7 E0 FF FF");
  const CBinaryData bytes = stream.GetData();
  EXPECT_EQ(expected,
            std::string(reinterpret_cast<const char*>(bytes.GetData()), bytes.GetLength()));
}

}  // namespace
}  // namespace QzXmlLib16
