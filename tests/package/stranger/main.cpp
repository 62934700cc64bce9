// What a stranger does with the installed library: reads, changes and writes an object of a class
// with tables, reads open content, and catches failures by their class.

#include <cstdio>
#include <string>

#include "Item.h"

using namespace QzXmlLib16;

namespace {

int g_failures = 0;

void Expect(const std::string& expected, const std::string& actual) {
  if (expected == actual) return;
  std::printf("expected: %s\nactual:   %s\n", expected.c_str(), actual.c_str());
  ++g_failures;
}

void ReadsChangesAndWrites() {
  CSmartPtr<CItem> item(new CItem);
  item->FromXml("<item xmlns='urn:items' id='a1'><quantity> 7 </quantity></item>");
  Expect("a1", item->GetId());
  item->SetQuantity(item->GetQuantity() + 1);
  Expect("<AA:item xmlns:AA=\"urn:items\" id=\"a1\"><AA:quantity>8</AA:quantity></AA:item>",
         item->ToXml(false, false));
}

void CatchesFailures() {
  CSmartPtr<CItem> item(new CItem);
  try {
    item->FromXml("<item xmlns='urn:items' id='a1'/>");
    Expect("an exception", "none");
  } catch (const CQzException& e) {
    Expect("/item", e.GetPath());
  }
  try {
    QzVariant value;
    value.FromString("many", ItemType_i4, CWhitespaceUtils::WhitespaceRule_Collapse);
    Expect("an exception", "none");
  } catch (const CQzInvalidValueException& e) {
    Expect("The value [many] can not be converted to a i4", e.GetMessage());
  }
}

void ReadsOpenContent() {
  CSmartPtr<CElement> note(new CElement("note"));
  note->FromXml("<note lang=\"en\"><to>Ann</to></note>");
  Expect("<note lang=\"en\"><to>Ann</to></note>", note->ToXml(false, false));
}

// A build with assertions is used by headers with assertions.
bool g_asserted = false;
void Note(const char*, const char*, int) { g_asserted = true; }
struct Counted {
  int AddRef() { return 1; }
  int Release() { return 1; }
};
void AgreesAboutAssertions() {
  SetAssertionHandler(&Note);
  CSmartPtr<Counted> empty;
  empty.operator->();
  Expect(EXPECT_ASSERTIONS ? "asserted" : "went on", g_asserted ? "asserted" : "went on");
  SetAssertionHandler(nullptr);
}

}  // namespace

int main() {
  ReadsChangesAndWrites();
  CatchesFailures();
  ReadsOpenContent();
  AgreesAboutAssertions();
  CItem::DropMetaData();
  std::printf("%d failures\n", g_failures);
  return g_failures == 0 ? 0 : 1;
}
