#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "qzxml/collections/Element.h"
#include "qzxml/platform/DebugChannel.h"
#include "qzxml/serialization/ClassfactoryBase.h"
#include "qzxml/serialization/PrimitiveRestrictions.h"
#include "qzxml/values/QzVariant.h"
#include "qzxml/xml/XmlDocument.h"
#include "tests/serialization/Note.h"

// A program whose static objects write, read and check before main and behind it, against those of
// the library in whatever order. It ends with 0 when all of them got what they were to get, and
// when nothing of the library's own was left alive at its end.

using namespace QzXmlLib16;

namespace {

void Expect(const char* place, const std::string& expected, const std::string& actual) {
  if (expected == actual) return;
  std::fprintf(stderr, "%s: expected\n%s\nbut got\n%s\n", place, expected.c_str(), actual.c_str());
  std::_Exit(1);
}

class CFactory : public CClassfactoryBase {
 public:
  using CClassfactoryBase::GetElementType;
};

void WriteAndRead(const char* place, const std::string& indent) {
  const std::string text = "<AA:note xmlns:AA=\"urn:notes\" to=\"Ann\">\n" + indent +
                           "<AA:line>Milk</AA:line>\n</AA:note>\n";
  qztest::CNote note;
  note.to = "Ann";
  note.lines = {"Milk"};
  Expect(place, text, note.ToXml(false));
  qztest::CNote read;
  read.FromXml(text.c_str());
  Expect(place, text, read.ToXml(false));

  CElement element("any");
  element.FromXml(note.ToXml(false, false).c_str());
  Expect(place, text, element.ToXml(false));
}

void CheckAndConvert(const char* place) {
  const CPrimitiveRestrictions digits("[0-9]+", -1, -1, "", "", "", "", -1, -1, -1);
  QzVariant value;
  value.FromString(" 12 ", ItemType_string, CWhitespaceUtils::WhitespaceRule_Collapse);
  CheckPrimitiveRestriction("name", value, ItemType_string, digits);
  value.SetR8(1e20);
  Expect(place, "1e+020", value.ToString(nullptr));
  try {
    value.SetString("x");
    CheckPrimitiveRestriction("name", value, ItemType_string, digits);
    Expect(place, "a failure", "none");
  } catch (const CQzException& e) {
    Expect(place, "Invalid Value for name [x].", e.GetMessage());
  }

  CXmlDocument document;
  document.LoadXml(
      "<a xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance' xsi:type='b:Circle'/>");
  Expect(place, "Circle", CFactory::GetElementType(document.GetDocumentElement()));
}

std::string MainIndent() { return std::string(40, ' '); }

// Built ahead of anything that the library makes on first use, and destroyed behind it.
struct CLast {
  ~CLast() {
    WriteAndRead("the last object", MainIndent());
    CheckAndConvert("the last object");
  }
};
const CLast g_last;

struct CFirst {
  CFirst() {
    WriteAndRead("before main", "\t");
    CheckAndConvert("before main");
  }
  ~CFirst() { WriteAndRead("behind main", MainIndent()); }
};
const CFirst g_first;

// The last text is the dump of what is alive.
void RefuseWhatIsAlive(const char* text) {
  if (std::strstr(text, "--> ") == nullptr) return;
  std::fputs(text, stderr);
  std::_Exit(1);
}

}  // namespace

int main() {
  SetDebugChannel(&RefuseWhatIsAlive);
  CSerializationContext::GetDefaultContext().SetIndentChars(MainIndent().c_str());
  WriteAndRead("main", MainIndent());
  CheckAndConvert("main");
  return 0;
}
