#include <functional>
#include <string>

#include "qzxml/values/BinaryData.h"
#include "qzxml/xml/XmlDocument.h"
#include "qzxml/xml/XmlElement.h"
#include "tests/json/JsonFile.h"
#include "tests/support/HugeText.h"
#include "tests/support/QzTest.h"

namespace QzXmlLib16 {
namespace {

using qztest::Bytes;
using qztest::CTemporaryFile;

TEST(XmlDocumentJson, ADocumentGivesTheXmlOfJsonAndStaysEmpty) {
  CXmlDocument document;
  document.LoadXml("<a xmlns:x='urn:x'/>");
  const CBinaryData xml = document.LoadJson("{\"b\":1}");
  EXPECT_EQ("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<b>1</b>\n",
            std::string(reinterpret_cast<const char*>(xml.GetData()), xml.GetLength()));
  EXPECT_EQ(nullptr, document.GetDocumentElement());
  EXPECT_EQ("", document.LookupNamespaceFromAlias("x"));
}

TEST(XmlDocumentJson, EveryEntryClearsADocumentFirstThroughItsVirtualOperation) {
  struct CCounting : CXmlDocument {
    void Cleanup() override {
      ++cleanups;
      CXmlDocument::Cleanup();
    }
    int cleanups = 0;
  };
  const CTemporaryFile file(Bytes("{\"b\":1}"));
  const BYTE byte = '?';
  const std::function<void(CCounting&)> good[] = {
      [](CCounting& d) { d.LoadJson("{\"b\":1}"); },
      [&](CCounting& d) { d.LoadJsonFile(file.path()); },
      [](CCounting& d) {
        const CBinaryData json = Bytes("{\"b\":1}");
        d.LoadJsonStream(json.GetData(), json.GetLength());
      }};
  const std::function<void(CCounting&)> bad[] = {
      [](CCounting& d) { d.LoadJson(""); },
      [](CCounting& d) { d.LoadJson(L""); },
      [](CCounting& d) { d.LoadJson(u"?"); },
      [](CCounting& d) { d.LoadJsonFile("/no/such/file.json"); },
      [](CCounting& d) { d.LoadJsonStream(nullptr, 0); },
      [&](CCounting& d) { d.LoadJsonStream(&byte, 1); }};
  const auto check = [](const std::function<void(CCounting&)>& load, bool fails) {
    CCounting document;
    document.LoadXml("<a/>");
    document.cleanups = 0;
    if (fails) {
      EXPECT_THROW(load(document), CQzException);
    } else {
      EXPECT_NO_THROW(load(document));
    }
    EXPECT_EQ(1, document.cleanups);
    EXPECT_EQ(nullptr, document.GetDocumentElement());
  };
  for (const auto& load : good) check(load, false);
  for (const auto& load : bad) check(load, true);
}

TEST(XmlDocumentJson, ADocumentIsEmptiedThoughItsDerivedClassDoesNot) {
  struct CKeeping : CXmlDocument {
    void Cleanup() override {}
  };
  CKeeping document;
  document.LoadXml("<a/>");
  document.LoadJson("{\"b\":1}");
  EXPECT_EQ(nullptr, document.GetDocumentElement());
}

// The tree goes first, its texts with it.
TEST(XmlDocumentJson, WhatIsLoadedMayBeATextOfTheTree) {
  const CTemporaryFile file(Bytes("{\"c\":2}"));
  CXmlDocument document;
  document.LoadXml("<a>{\"b\":1}</a>");
  EXPECT_EQ(CBinaryData("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<b>1</b>\n"),
            document.LoadJson(document.GetDocumentElement()->GetText().c_str()));
  document.LoadXml(("<a>" + std::string(file.path()) + "</a>").c_str());
  EXPECT_EQ(CBinaryData("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<c>2</c>\n"),
            document.LoadJsonFile(document.GetDocumentElement()->GetText().c_str()));
}

CXmlDocument* g_document = nullptr;

TEST(XmlDocumentJson, ADocumentIsNotLoadedFromItsElementCallback) {
  CXmlDocument document([](CXmlElement*) {
    g_document->LoadJson("{\"b\":1}");
    return false;
  });
  g_document = &document;
  EXPECT_QZ_THROW(CQzInvalidStateException,
                  "A document can not be loaded from its element callback.",
                  document.LoadXml("<a/>"));
}

TEST(XmlDocumentJson, ATextOf4GiBIsRefused) {
  const qztest::HugeText text(' ', std::size_t{1} << 32);
  CXmlDocument document;
  EXPECT_QZ_THROW(CQzException, "A JSON text of 4 GiB or more is not supported.",
                  document.LoadJson(text.c_str()));
}

}  // namespace
}  // namespace QzXmlLib16
