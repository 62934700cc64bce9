#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "qzxml/xml/ShortText.h"
#include "qzxml/xml/XmlTextScan.h"

using namespace QzXmlLib16::detail;

namespace {

// Bytes without a neighbour: the sanitizer tells of each access outside of them.
std::vector<char> Bytes(std::size_t size, char filling) {
  std::vector<char> bytes(size, filling);
  bytes.shrink_to_fit();
  return bytes;
}

}  // namespace

TEST(ShortText, ComparesEveryByteOfTextsOfAnyLength) {
  for (std::size_t size = 0; size < 120; ++size) {
    const std::vector<char> one = Bytes(size, 'x');
    std::vector<char> other = Bytes(size, 'x');
    EXPECT_TRUE(AreEqual(one.data(), other.data(), size)) << size;
    for (std::size_t at = 0; at < size; ++at) {
      other[at] = 'y';
      EXPECT_FALSE(AreEqual(one.data(), other.data(), size)) << size << " " << at;
      other[at] = 'x';
    }
  }
}

TEST(ShortText, CopiesTextsOfAnyLength) {
  for (std::size_t size = 0; size < 120; ++size) {
    const std::vector<char> in = Bytes(size, 'x');
    std::vector<char> out = Bytes(size, '-');
    EXPECT_EQ(out.data() + size, CopyShort(out.data(), in.data(), size));
    EXPECT_EQ(in, out);
  }
}

// ---- Copying up to the next byte that has to be escaped ----

TEST(XmlTextScan, CopiesUpToTheFirstEscapedByteWhereverItStands) {
  for (std::size_t size = 1; size < 70; ++size) {
    for (std::size_t at = 0; at < size; ++at) {
      for (int value = 0; value < 256; ++value) {
        const char c = static_cast<char>(value);
        const bool inText = std::string("\n\r&<>\0", 6).find(c) != std::string::npos;
        const bool inAttribute = inText || c == '"';
        std::vector<char> in = Bytes(size, 'x');
        in[at] = c;
        std::vector<char> out = Bytes(size, '-');
        const std::size_t text = CopyClean<false>(in.data(), size, out.data());
        ASSERT_EQ(inText ? at : size, text) << size << " " << at << " " << value;
        ASSERT_TRUE(
            std::equal(out.begin(), out.begin() + static_cast<std::ptrdiff_t>(text), in.begin()));
        const std::size_t attribute = CopyClean<true>(in.data(), size, out.data());
        ASSERT_EQ(inAttribute ? at : size, attribute) << size << " " << at << " " << value;
      }
    }
  }
}

// A tab looks like one to the quick test, and is none.
TEST(XmlTextScan, FindsTheFirstOfSeveralBehindBytesThatLookLikeOne) {
  for (std::size_t size = 2; size < 70; ++size) {
    for (std::size_t at = 1; at < size; ++at) {
      std::vector<char> in = Bytes(size, '\t');
      in[at] = '&';
      in[size - 1] = '<';
      std::vector<char> out = Bytes(size, '-');
      ASSERT_EQ(at, CopyClean<false>(in.data(), size, out.data())) << size;
      ASSERT_EQ(at, CopyClean<true>(in.data(), size, out.data())) << size;
    }
  }
}
