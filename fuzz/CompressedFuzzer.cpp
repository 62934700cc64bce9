// Any bytes as a document that may be compressed. What expands is read as the plain bytes that it
// expands to, tree or failure; what does not is plain itself; and what was expanded comes back from
// both kinds of compression. A failure is one of the library's family.
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "qzxml/QzXml.h"
#include "tests/support/TreeText.h"

using namespace QzXmlLib16;

namespace {

// Small, so that a bomb is met by a small input.
constexpr std::uint32_t kMostExpanded = 128 * 1024;

[[noreturn]] void Fail(const char* what) {
  std::fprintf(stderr, "%s\n", what);
  std::abort();
}

CSerializationContext Context() {
  CSerializationContext context;
  context.SetMaxDepth(100);
  return context;
}

// The tree of the bytes, or the text of the failure.
std::string Read(const unsigned char* data, std::uint32_t length) {
  const CSerializationContext context = Context();
  CXmlDocument document(context);
  try {
    document.LoadXmlStream(data, length);
    return qztest::TreeText(document.GetDocumentElement());
  } catch (const CQzException& e) {
    return e.GetFullMessage();
  }
}

bool IsSame(const CBinaryData& one, const CBinaryData& other) {
  return one.GetLength() == other.GetLength() &&
         (one.GetLength() == 0 ||
          std::memcmp(one.GetData(), other.GetData(), one.GetLength()) == 0);
}

bool Expands(const CBinaryData& bytes) {
  CBinaryData ignored;
  try {
    return CQzZip::Decompress(bytes.GetData(), bytes.GetLength(), ignored);
  } catch (const CQzException&) {
    return true;
  }
}

// How much a document may grow is told by the size of what was given, which differs here.
bool IsOfItsSize(const std::string& result) {
  return result.compare(0, 18, "The document grows") == 0;
}

void CheckExpanded(const std::string& result, const CBinaryData& expanded) {
  // What is compressed twice is expanded once, and no bytes have a text of their own.
  if (!Expands(expanded) && expanded.GetLength() != 0) {
    const std::string plain = Read(expanded.GetData(), expanded.GetLength());
    if (plain != result && !IsOfItsSize(result) && !IsOfItsSize(plain)) {
      std::fprintf(stderr, "compressed: %s\nplain: %s\n", result.c_str(), plain.c_str());
      Fail("A compressed document is not read as the plain one.");
    }
  }
  for (const CompressionType type : {CompressionType_GZip, CompressionType_ZLib}) {
    CBinaryData packed = expanded;
    try {
      CQzZip::Compress(packed, type);
    } catch (const CQzException&) {  // it would not get smaller
      if (!IsSame(packed, expanded)) Fail("A refused compression changed its data.");
      continue;
    }
    if (packed.GetLength() == 0) continue;
    CBinaryData again;
    if (!CQzZip::Decompress(packed.GetData(), packed.GetLength(), again) ||
        !IsSame(again, expanded)) {
      Fail("What was compressed does not come back.");
    }
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  CQzZip::SetMaxDecompressedSize(kMostExpanded);
  const auto length = static_cast<std::uint32_t>(size);
  const std::string result = Read(data, length);
  try {
    CBinaryData expanded;
    if (CQzZip::Decompress(data, length, expanded)) {
      if (expanded.GetLength() > kMostExpanded) Fail("The limit was passed.");
      CheckExpanded(result, expanded);
    }
  } catch (const CQzException& e) {
    if (e.GetFullMessage() != result) Fail("The limit is not what the reader fails with.");
  }
  try {
    CElement element("none");
    element.FromXmlStream(data, length, Context());
  } catch (const CQzException&) {
  }
  return 0;
}
