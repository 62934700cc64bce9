// Any text as a value of any kind: the first octet chooses the kind, the second the white space
// rule, the rest is the text. What is read is written, and reading that gives the same text again.
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "qzxml/QzXml.h"

using namespace QzXmlLib16;

namespace {

constexpr ItemType kKinds[] = {
    ItemType_hexBinary, ItemType_base64Binary, ItemType_i1,      ItemType_i2,    ItemType_i4,
    ItemType_i8,        ItemType_ui1,          ItemType_ui2,     ItemType_ui4,   ItemType_ui8,
    ItemType_r4,        ItemType_r8,           ItemType_boolean, ItemType_string};
constexpr std::size_t kKindCount = sizeof(kKinds) / sizeof(kKinds[0]);

// A base64 text with a foreign character leaves binary data without octets, whose next use asserts;
// that is how it is meant to be, and what comes behind the assertion is looked at here.
void OnAssertion(const char* condition, const char* file, int line) {
  if (std::strcmp(condition, "m_dwLen > 0") == 0) return;
  std::fprintf(stderr, "%s:%d: %s\n", file, line, condition);
  std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  SetAssertionHandler(&OnAssertion);
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size < 2) return 0;
  const ItemType kind = kKinds[data[0] % kKindCount];
  const auto rule = static_cast<CWhitespaceUtils::WhitespaceRule>(data[1] % 4);
  const std::string text(reinterpret_cast<const char*>(data) + 2, size - 2);
  std::string written;
  try {
    QzVariant value;
    value.FromString(text, kind, rule);
    written = value.ToString(nullptr);
  } catch (const CQzException&) {
    return 0;
  }
  try {
    QzVariant again;
    again.FromString(written, kind, rule);
    // Reals are written with fewer digits than a value may need to come back the same.
    const bool isReal = kind == ItemType_r4 || kind == ItemType_r8;
    if (!isReal && again.ToString(nullptr) != written) {
      std::fprintf(stderr, "%s became %s\n", written.c_str(), again.ToString(nullptr).c_str());
      std::abort();
    }
  } catch (const CQzException& e) {
    std::fprintf(stderr, "%s was written, and refused: %s\n", written.c_str(),
                 e.GetMessage().c_str());
    std::abort();
  }
  return 0;
}
