#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "qzxml/fastinfoset/FIPieces.h"
#include "qzxml/runtime/BinaryStream.h"
#include "tests/fastinfoset/Written.h"

namespace QzXmlLib16::detail {
namespace {

std::string TextOf(const CBinaryStream& stream) {
  const CBinaryData bytes = stream.GetData();
  if (bytes.GetLength() == 0) return std::string();
  return std::string(reinterpret_cast<const char*>(bytes.GetData()), bytes.GetLength());
}

// Texts of a size, put as the writer does it, and the same in one string.
class CFilling {
 public:
  void Put(std::size_t size) {
    std::string text(size, '\0');
    for (char& c : text) c = static_cast<char>('a' + m_count++ % 26);
    if (m_pieces.GetRoom() - m_filled < size) {
      if (m_filled != 0 && m_count % 2 == 0) {
        m_pieces.Begin(m_filled);
        m_filled = 0;
      }
      if (m_pieces.GetRoom() - m_filled < size) m_pieces.Grow(m_filled, size);
    }
    std::memcpy(m_pieces.GetLast() + m_filled, text.data(), size);
    m_filled += size;
    m_all += text;
  }

  void ExpectPut(const std::string& before) {
    CBinaryStream stream;
    if (!before.empty()) stream.Put(before.data(), static_cast<std::uint32_t>(before.size()));
    m_pieces.PutInto(stream, m_filled);
    m_filled = 0;
    EXPECT_TRUE(before + m_all == TextOf(stream)) << m_all.size();
    m_pieces.PutInto(stream, 0);  // none are left
    EXPECT_EQ(before.size() + m_all.size(), stream.GetData().GetLength());
    m_all.clear();
  }

  void Clear() {
    m_pieces.Clear();
    m_filled = 0;
    m_all.clear();
  }

 private:
  CFIPieces m_pieces;
  std::size_t m_filled = 0;
  std::size_t m_count = 0;
  std::string m_all;
};

TEST(FIPieces, AllOctetsGoIntoTheStreamInTheirOrder) {
  CFilling filling;
  for (const std::size_t total :
       {0u, 1u, 100u, 65503u, 65504u, 65505u, 400000u, 4300000u, 14000000u}) {
    for (const std::size_t size : {std::size_t{1000}, std::size_t{70000}, std::size_t{300001}}) {
      for (std::size_t done = 0; done + size <= total; done += size) filling.Put(size);
      if (total % size != 0) filling.Put(total % size);
      filling.ExpectPut(size == 1000 ? "" : "before");
    }
  }
}

TEST(FIPieces, NothingIsThereBehindClear) {
  CFilling filling;
  for (const std::size_t size : {10u, 70000u, 9000000u}) {
    filling.Put(size);
    filling.Put(70000);
    filling.Clear();
    filling.Put(3);
    filling.ExpectPut("");
  }
}

// As a value of a document: longer than a piece, and behind octets that fill one.
TEST(FIPieces, AValueMayBeOfAnyLength) {
  for (const std::size_t size : {65000u, 65504u, 65536u, 1000000u, 10000000u}) {
    const std::string text(size, 't');
    const std::string octets = qztest::Written([&](CFastInfosetWriter& w) {
      w.WriteStartElement("a", "");
      w.WriteText(text, ItemType_string, false);
      w.WriteText(text, ItemType_string, false);
      w.WriteEndElement();
    });
    const std::string head = "E00000010038F03C0061";
    const std::string value = octets.substr(head.size(), octets.size() - head.size() - 2);
    EXPECT_EQ(head, octets.substr(0, head.size()));
    EXPECT_EQ("FF", octets.substr(octets.size() - 2));
    ASSERT_EQ(2 * (2 * size + 10), value.size());
    EXPECT_TRUE(value.substr(0, value.size() / 2) == value.substr(value.size() / 2));
  }
}

}  // namespace
}  // namespace QzXmlLib16::detail
