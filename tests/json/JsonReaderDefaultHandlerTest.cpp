#include "qzxml/json/JsonReaderDefaultHandler.h"
#include "qzxml/json/JsonTextReader.h"
#include "qzxml/platform/DebugChannel.h"
#include "qzxml/runtime/MemoryLeakHelp.h"
#include "qzxml/runtime/QzException.h"
#include "tests/json/Events.h"
#include "tests/support/QzTest.h"

namespace QzXmlLib16 {
namespace {

using qztest::CEvents;

// --- The place in the text

// The path at the byte "?", where every text fails.
std::string PathOf(const std::string& text) {
  CJsonTextReader reader(text);
  try {
    reader.Parse();
  } catch (const CQzValidationException& e) {
    EXPECT_EQ(reader.GetErrorPathProvider()->GetErrorPath(), e.GetPath());
    return e.GetPath();
  }
  return "no failure";
}

std::string Raw(const std::string& before, int code, const std::string& behind) {
  return before + static_cast<char>(code) + behind;
}

TEST(JsonReaderDefaultHandler, ThePathBeginsWithTheInnermostName) {
  EXPECT_EQ("$", PathOf("?"));
  EXPECT_EQ("$", PathOf("{?"));
  EXPECT_EQ("$.a", PathOf("{\"a\":?"));
  EXPECT_EQ("$.b.a", PathOf("{\"a\":{\"b\":?"));
  EXPECT_EQ("$.c.b.a", PathOf("{\"a\":{\"b\":{\"c\":1?"));
  EXPECT_EQ("$.b", PathOf("{\"a\":1,\"b\":?"));
  EXPECT_EQ("$.a", PathOf("{\"a\":1,?"));
  EXPECT_EQ("$.", PathOf("{\"\":?"));
}

TEST(JsonReaderDefaultHandler, AnObjectThatHasEndedIsNotInThePath) {
  EXPECT_EQ("$", PathOf("{\"a\":{\"b\":1}?"));
  EXPECT_EQ("$.c", PathOf("{\"a\":{\"b\":1},\"c\":?"));
  EXPECT_EQ("$.c.x", PathOf("{\"x\":{\"a\":{\"b\":1},\"c\":?"));
}

TEST(JsonReaderDefaultHandler, AnArrayIsNotInThePath) {
  EXPECT_EQ("$", PathOf("[?"));
  EXPECT_EQ("$", PathOf("{\"a\":[?"));
  EXPECT_EQ("$.a", PathOf("{\"a\":{\"b\":[1,?"));
  EXPECT_EQ("$", PathOf("{\"a\":[1,2]?"));
}

TEST(JsonReaderDefaultHandler, AnObjectInAnArrayHasItsNumberAsOneRawCharacter) {
  EXPECT_EQ(Raw("$.a[", 0, "]"), PathOf("{\"a\":[{?"));
  EXPECT_EQ(Raw("$.b.a[", 0, "]"), PathOf("{\"a\":[{\"b\":?"));
  EXPECT_EQ(Raw("$.b.a[", 2, "]"), PathOf("{\"a\":[{},7,{},[],{\"b\":?"));
  std::string many = "{\"a\":[";
  for (int i = 0; i < 0x41; ++i) many += "{},";
  EXPECT_EQ("$.a[A]", PathOf(many + "{?"));
  for (int i = 0; i < 256; ++i) many += "{},";
  EXPECT_EQ("$.a[A]", PathOf(many + "{?"));
}

TEST(JsonReaderDefaultHandler, TheNumbersOfOneArrayDoNotCountInAnother) {
  EXPECT_EQ(Raw("$.c[", 0, Raw("].a[", 1, "]")), PathOf("{\"a\":[{},{\"c\":[{?"));
  EXPECT_EQ(Raw("$.b[", 0, "]"), PathOf("{\"a\":[{},{}],\"b\":[{?"));
}

TEST(JsonReaderDefaultHandler, AnArrayInAnArrayHasNoName) {
  EXPECT_EQ(Raw("$.[", 0, "]"), PathOf("{\"a\":[[{?"));
  EXPECT_EQ(Raw("$.[", 0, "]"), PathOf("{\"a\":[[{}],[{?"));
  EXPECT_EQ(Raw("$.a[", 0, "]"), PathOf("{\"a\":[[{}],{?"));
}

TEST(JsonReaderDefaultHandler, TheOutermostContainerIsNotInThePath) {
  EXPECT_EQ("$.b", PathOf("[{\"b\":?"));
  EXPECT_EQ("$.b", PathOf("[1,{\"a\":1},{\"b\":?"));
  EXPECT_EQ("$", PathOf("[[{?"));
}

TEST(JsonReaderDefaultHandler, TheRootElementThatWasAddedIsInThePath) {
  const std::string text = "{\"a\":[{\"b\":?";
  CJsonTextReader reader(text);
  reader.SetRootElementName("r");
  EXPECT_THROW(reader.Parse(), CQzValidationException);
  EXPECT_EQ(Raw("$.b.a[", 0, "].r"), reader.GetErrorPathProvider()->GetErrorPath());
}

TEST(JsonReaderDefaultHandler, AMessageEndsWithTheWholePath) {
  const std::string text = "{\"a\":[{},{\"b\":?";
  CJsonTextReader reader(text);
  EXPECT_QZ_THROW(CQzValidationException,
                  Raw("Expected Value '{', '[', '\"', '0-9', '-', 'true', 'false' or 'null', found "
                      "'?' at line 1, position 15.\nPath: $.b.a[",
                      1, "]"),
                  reader.Parse());
}

// --- The debug channel

std::string g_traced;

class CTraced {
 public:
  CTraced() {
    g_traced.clear();
    SetDebugChannel([](const char* text) { g_traced += text; });
  }
  ~CTraced() { SetDebugChannel(nullptr); }
};

TEST(JsonReaderDefaultHandler, SendsALineForEachEventToTheDebugChannel) {
  const std::string text = "{\"a\":[1.50,\"x y\",true,false,null,{}]}";
  CJsonTextReader reader(text);
  const CTraced traced;
  reader.Parse();
  EXPECT_EQ(
      "StartDocument\nStartObject\nName: a\nStartArray\nNumber: 1.50\nString: x y\nBool: true\n"
      "Bool: false\nNull\nStartObject\nEndObject\nEndArray\nEndObject\nEndDocument\n",
      g_traced);
}

TEST(JsonReaderDefaultHandler, TracesAnEventBeforeItPassesItOn) {
  class CSeesTrace : public CEvents {
   public:
    using CEvents::CEvents;
    void Name(const std::string&) override { seen = g_traced; }
    std::string seen;
  };
  std::string events;
  auto* const handler = new CSeesTrace(events);
  const std::string text = "{\"a\":1}";
  CJsonTextReader reader(text);
  reader.SetHandler(handler);
  const CTraced traced;
  reader.Parse();
  EXPECT_EQ("StartDocument\nStartObject\nName: a\n", handler->seen);
}

// A trace has room for 32 KiB, and asserts that a caller keeps to it.
TEST(JsonReaderDefaultHandler, ALongValueIsTracedInPart) {
  const std::string text = "{\"a\":\"" + std::string(100000, 'x') + "\"}";
  CJsonTextReader reader(text);
  const CTraced traced;
  EXPECT_NO_THROW(reader.Parse());
  const std::string beginning = "StartDocument\nStartObject\nName: a\nString: xxx";
  EXPECT_EQ(beginning, g_traced.substr(0, beginning.size()));
  EXPECT_GT(g_traced.size(), 30000u);
  const std::string end = "xxx\nEndObject\nEndDocument\n";
  EXPECT_EQ(end, g_traced.substr(g_traced.size() - end.size()));
}

// --- The handler behind it

TEST(JsonReaderDefaultHandler, TracksBeforeItPassesAnEventOn) {
  class CSeesPath : public CEvents {
   public:
    using CEvents::CEvents;
    IErrorPathProvider* provider = nullptr;
    std::string paths;
    void StartObject() override { paths += provider->GetErrorPath() + " "; }
    void EndObject() override { paths += provider->GetErrorPath() + " "; }
    void Name(const std::string&) override { paths += provider->GetErrorPath() + " "; }
  };
  std::string events;
  auto* const handler = new CSeesPath(events);
  const std::string text = "{\"a\":{\"b\":{}}}";
  CJsonTextReader reader(text);
  handler->provider = reader.GetErrorPathProvider();
  reader.SetHandler(handler);
  reader.Parse();
  EXPECT_EQ("$ $.a $.a $.b.a $.b.a $.a $ $ ", handler->paths);
}

struct CCounted : public CEvents {
  explicit CCounted(int& deleted) : CEvents(text), m_deleted(deleted) {}
  ~CCounted() override { ++m_deleted; }
  std::string text;
  int& m_deleted;
};

TEST(JsonReaderDefaultHandler, OwnsTheHandlerBehindIt) {
  int deleted = 0;
  {
    CJsonReaderDefaultHandler handler;
    handler.SetHandler(new CCounted(deleted));
    EXPECT_EQ(0, deleted);
    auto* const second = new CCounted(deleted);
    handler.SetHandler(second);
    EXPECT_EQ(1, deleted);
    handler.SetHandler(second);
    EXPECT_EQ(1, deleted);
  }
  EXPECT_EQ(2, deleted);
  CJsonReaderDefaultHandler handler;
  handler.SetHandler(new CCounted(deleted));
  handler.SetHandler(nullptr);
  EXPECT_EQ(3, deleted);
  EXPECT_NO_THROW(handler.Null());
}

TEST(JsonReaderDefaultHandler, PassesEachEventOn) {
  std::string events;
  CJsonReaderDefaultHandler handler;
  handler.SetHandler(new CEvents(events));
  handler.StartDocument();
  handler.StartObject();
  handler.Name("a");
  handler.StartArray();
  handler.String("x");
  handler.Number("1");
  handler.Bool(true);
  handler.Bool(false);
  handler.Null();
  handler.EndArray();
  handler.EndObject();
  handler.EndDocument();
  EXPECT_EQ(" ( { a: [ \"x\" #1 true false null ] } )", events);
}

// Events in an order that no reader gives leave the path in some state, and nothing worse.
TEST(JsonReaderDefaultHandler, EndsThatNothingBeganEmptyThePath) {
  CJsonReaderDefaultHandler handler;
  handler.EndObject();
  handler.EndArray();
  handler.Name("a");
  handler.Name("b");
  EXPECT_EQ("$.b", handler.GetErrorPath());
  handler.EndArray();
  EXPECT_EQ("$", handler.GetErrorPath());
}

TEST(JsonReaderDefaultHandler, AllHandlersCountUnderTheNameOfTheirInterface) {
  const CJsonReaderDefaultHandler handler;
  EXPECT_NE(std::string::npos, CInstanceMonitor::DumpState().find("--> IJsonReaderHandler = 1/"));
}

}  // namespace
}  // namespace QzXmlLib16
