// Items that are read while a document loads make the same objects, and the same failures with the
// same objects behind them, as reading from the whole tree does.
#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <limits>
#include <string>
#include <thread>
#include <vector>

#include "qzxml/binding/EarlyItems.h"
#include "qzxml/collections/XmlCollectionBase.h"
#include "qzxml/fastinfoset/FastInfosetContext.h"
#include "qzxml/platform/DebugChannel.h"
#include "qzxml/values/BinaryData.h"
#include "tests/binding/ChangedDocuments.h"
#include "tests/binding/Depot.h"
#include "tests/binding/Shop.h"
#include "tests/support/LiveCounts.h"
#include "tests/support/QzTest.h"

using namespace QzXmlLib16;
using namespace qztest;

namespace {

constexpr std::size_t kNever = std::numeric_limits<std::size_t>::max();

// While one lives, items are read ahead from trees of that size on.
class CFrom {
 public:
  explicit CFrom(std::size_t octets) { detail::ReadItemsEarly(octets); }
  ~CFrom() { detail::ReadItemsEarly(detail::kReadItemsFrom); }
  CFrom(const CFrom&) = delete;
  CFrom& operator=(const CFrom&) = delete;
};

// Each item as it ends, batches of a few, and of many.
constexpr std::size_t kSizes[] = {0, 700, 3000};

class EarlyItems : public NothingLeftBehind {};

const std::string kDepot =
    "<depot xmlns='urn:depot' xmlns:x='urn:x' code='K 7'>\n  <title>North</title>\n"
    "  <parcel id='1'><label> a  b </label><piece size='1'/><piece size='2' x:mark='m'/></parcel>\n"
    "  <parcel id='2'>\n    <label>c</label>\n    <piece size='3'><word>w &amp; v</word>"
    "<x:more y='1'>open</x:more></piece>\n    <note>n</note>\n  </parcel>\n"
    "  <parcel id='3'><label/></parcel>\n"
    "  <office><name>Main</name><clerk><name>Ada</name></clerk><clerk><name>Max</name></clerk>"
    "</office>\n  <crate><piece size='4'/><piece size='5'/></crate>\n  "
    "<crate><seal>s</seal></crate>\n"
    "  <day>2004-02-29</day>\n  <day>2004-03-01</day>\n  <x:extra>more</x:extra>\n</depot>\n";

std::string Read(const std::string& document, const CSerializationContext& context =
                                                  CSerializationContext::GetDefaultContext()) {
  return Outcome(&New<depot::CDepot>, document, kDepot, context);
}

// Answers what comes of it without reading ahead.
std::string ExpectSame(
    const std::string& document,
    const CSerializationContext& context = CSerializationContext::GetDefaultContext()) {
  const auto readFrom = [&](std::size_t octets) {
    const CFrom from(octets);
    return Read(document, context);
  };
  const std::string expected = readFrom(kNever);
  for (const std::size_t octets : kSizes) {
    EXPECT_EQ(expected, readFrom(octets)) << document.substr(0, 3000) << "\n from " << octets;
  }
  return expected;
}

// A depot with so many parcels; what stands in each in front of its end tag.
std::string Parcels(int count, const std::string& more = "",
                    const std::string& attributes = " xmlns:x='urn:x'") {
  std::string text = "<depot xmlns='urn:depot'" + attributes + ">\n";
  for (int i = 1; i <= count; ++i) {
    text += "<parcel id='" + std::to_string(i) + "'><label>parcel " + std::to_string(i) +
            "</label><piece size='1'/><piece size='2'><word>word</word></piece>" + more +
            "</parcel>\n";
  }
  return text;
}

const std::string kEnd = "<office><name>Main</name></office></depot>";

bool Fails(const std::string& outcome) { return outcome.find("] at [") != std::string::npos; }

std::int32_t LiveElements() {
  const auto counts = LiveCounts();
  const auto found = counts.find("CXmlElement");
  return found != counts.end() ? found->second : 0;
}

std::int32_t g_mostLiveElements;

}  // namespace

// --- The same

TEST_F(EarlyItems, AreTheSameInDocumentsWithOneThingChanged) {
  CXmlDocument document;
  document.LoadXml(kDepot.c_str());
  Node root = NodeOf(*document.GetDocumentElement());
  int count = 0;
  int failed = 0;
  ForEachChanged(root, root, [&](const std::string& text) {
    if (count++ % kEvery == 0 && Fails(ExpectSame(text))) ++failed;
  });
  EXPECT_GT(count, 1000);
  EXPECT_GT(failed, 50);
}

TEST_F(EarlyItems, AreTheSameInEachContext) {
  std::vector<CSerializationContext> contexts(9);
  contexts[0].SetIgnoreUnknownElements(true);
  contexts[1].SetIgnoreMissingMandatoryElements(true);
  contexts[2].SetIgnoreUnknownAttributes(true);
  contexts[3].SetIgnoreNamespaces(true);
  contexts[4].SetIgnoreInvalidCollectionCounts(true);
  contexts[5].SetIgnoreMissingChoice(true);
  contexts[6].SetSchemaType(SchemaType_NoNamespaces);
  contexts[7].SetMaxDepth(3);
  contexts[8].SetStripCDATA(true);
  for (const CSerializationContext& context : contexts) {
    for (const char* const more :
         {"", "<other/>", "<note><![CDATA[a<b]]></note>", "<piece size='61'/>"}) {
      ExpectSame(Parcels(5, more) + kEnd, context);
    }
  }
}

TEST_F(EarlyItems, AreTheSameInATruncatedDocument) {
  for (std::size_t size = 0; size < kDepot.size(); ++size) ExpectSame(kDepot.substr(0, size));
}

TEST_F(EarlyItems, AreTheSameInADamagedDocument) {
  for (std::size_t at = 0; at < kDepot.size(); at += 3) {
    for (const char c : {'<', '&', ' ', 'x', '\0', '\x80'}) {
      std::string damaged = kDepot;
      damaged[at] = c;
      ExpectSame(damaged);
    }
  }
}

TEST_F(EarlyItems, MayBeWrongAtEachPlace) {
  for (int wrong = 1; wrong <= 12; ++wrong) {
    std::string text = Parcels(12);
    const std::string label = "<label>parcel " + std::to_string(wrong) + "<";
    text.replace(text.find(label), label.size(), "<label/><wrong>x</wrong><label><");
    const std::string outcome = ExpectSame(text + kEnd);
    EXPECT_NE(outcome.find("at [/depot/parcel[" + std::to_string(wrong) + "]"), std::string::npos)
        << outcome;
  }
}

TEST_F(EarlyItems, MayStandAmongOtherThings) {
  const std::string parcel = "<parcel id='1'><label>a</label><piece size='1'/></parcel>";
  const std::string office = "<office><name>Main</name><clerk><name>Ada</name></clerk></office>";
  const std::string crate = "<crate><piece size='1'/></crate>";
  const std::string documents[] = {
      parcel + parcel + office + crate + crate + crate,
      parcel + office + crate + crate + crate + crate,   // one crate too many
      parcel + "<title>late</title>" + parcel + office,  // out of order
      office + parcel + parcel,                          // items that nobody takes
      parcel + parcel + office + parcel,                 // and behind others
      parcel + parcel + "<x:gap/>" + parcel + office,    // between
      parcel + crate + parcel + crate + office,          // in turn
      parcel + parcel,                                   // the office is missing
      "text" + parcel + "text" + parcel + office,        // text between
      office + crate + "<day>x</day>",                   // a wrong value behind
      office + crate + "<x:any/><day>2004-01-01</day>",
      parcel + "<parcel xmlns='urn:other'/>" + parcel + office,
      parcel + "<x:parcel id='1'/>" + office + crate,
      office + "<crate xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance' xsi:nil='true'/>",
      office + "<crate xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance' xsi:nil='1'>x</crate>",
      office + office,
      "<parcel id='1'><label>a</label></parcel>" + office +
          "<crate xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance' xsi:nil='x'/>"};
  for (const std::string& content : documents) {
    ExpectSame("<depot xmlns='urn:depot' xmlns:x='urn:x'>" + content + "</depot>");
  }
}

TEST_F(EarlyItems, MayNameTheirType) {
  const std::string xsi = " xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance'";
  for (const char* const type : {"Parcel", "d:Parcel", "x:Parcel", "Piece", "d:Crate", ""}) {
    for (const char* const late : {"", " xmlns:d='urn:x'", " xmlns:x='urn:depot'",
                                   " xmlns:q='urn:q'", " xmlns:d='urn:depot'"}) {
      std::string text = "<depot xmlns='urn:depot' xmlns:d='urn:depot' xmlns:x='urn:x'" + xsi + ">";
      for (int i = 1; i < 9; ++i) {
        text += "<parcel id='1' xsi:type='" + std::string(type) + "'><label>a</label></parcel>";
      }
      text += "<parcel id='9'" + std::string(late) + "><label>a</label></parcel>";
      ExpectSame(text + kEnd);
    }
  }
}

TEST_F(EarlyItems, MayDeclareTheirPrefixesEach) {
  std::string same = "<depot xmlns='urn:depot'>";
  std::string other = same;
  for (int i = 1; i < 30; ++i) {
    const std::string piece =
        "<parcel id='1'><label>a</label><piece size='1' p:x='1'><p:y p:z=''/>"
        "</piece></parcel>";
    std::string parcel = piece;
    parcel.insert(7, " xmlns:p='urn:p'");
    same += parcel;
    parcel = piece;
    parcel.insert(7, " xmlns:p='urn:p" + std::to_string(i) + "'");
    other += parcel;
  }
  EXPECT_FALSE(Fails(ExpectSame(same + kEnd)));
  EXPECT_FALSE(Fails(ExpectSame(other + kEnd)));
}

TEST_F(EarlyItems, MayHoldTextsOfEachKind) {
  const std::string longText(9000, 'l');
  const std::string dtd =
      "<!DOCTYPE depot [<!ENTITY e 'entity'><!ENTITY p \"<piece size='7'/>\">"
      "<!ATTLIST piece size CDATA '9'>]>";
  std::string text = dtd + Parcels(6, "&p;<piece/><note>&e; " + longText + "&#13;&#10;x</note>");
  const std::string outcome = ExpectSame(text + kEnd);
  EXPECT_FALSE(Fails(outcome));
  EXPECT_NE(outcome.find("entity " + longText), std::string::npos);
  // Text of the root between its items, more than is gathered at a time.
  text = Parcels(3);
  const std::string parcels = text.substr(text.find('\n'));
  for (int i = 0; i < 3; ++i) text += std::string(70000, ' ') + parcels;
  EXPECT_FALSE(Fails(ExpectSame(text + kEnd)));
  EXPECT_TRUE(Fails(ExpectSame(text + longText + kEnd)));
}

TEST_F(EarlyItems, MayLieDeep) {
  std::string parcel = "<parcel id='1'><label>a</label>\n";
  for (int i = 0; i < 200; ++i) parcel += "<piece size='" + std::to_string(i % 60) + "'/>\n";
  const std::string end = "</parcel>\n";
  std::string office = "<office><name>Main</name>";
  for (int i = 0; i < 100; ++i) office += "<clerk><name>Ada</name></clerk>";
  office += "</office>";
  for (const char* const wrong : {"", "<piece size='61'/>", "<note>n</note>", "<clerk/>"}) {
    std::string text = "<depot xmlns='urn:depot'>";
    for (int i = 0; i < 3; ++i) text += parcel + end;
    text += parcel + wrong + end + parcel + end + office + "<crate>";
    for (int i = 0; i < 100; ++i) text += "<piece size='1'/>";
    text += "</crate></depot>";
    ExpectSame(text);
  }
}

// --- Other input

// Writing makes a collection that the default context keeps.
TEST(EarlyItemsInput, AreTheSameFromFastInfoset) {
  depot::CDepot object;
  object.FromXml((Parcels(8) + kEnd).c_str());
  CBinaryData octets = object.ToFastInfosetStream();
  const auto read = [&octets](std::size_t from) {
    const CFrom now(from);
    std::string outcome;
    const CSmartPtr<depot::CDepot> target(new depot::CDepot);
    try {
      target->FromXmlStream(octets);
    } catch (const CQzException& e) {
      outcome = Describe(e);
    }
    return outcome + Written(*target);
  };
  const std::string whole = read(kNever);
  EXPECT_FALSE(Fails(whole));
  const std::vector<BYTE> good(octets.GetData(), octets.GetData() + octets.GetLength());
  for (std::size_t at = 0; at <= good.size(); ++at) {
    std::vector<BYTE> damaged = good;
    if (at < good.size()) damaged[at] ^= static_cast<BYTE>(1U << at % 8);
    octets = CBinaryData(damaged.data(), static_cast<DWORD>(damaged.size()));
    const std::string expected = read(kNever);
    for (const std::size_t from : kSizes) ASSERT_EQ(expected, read(from)) << at;
    octets = CBinaryData(good.data(), static_cast<DWORD>(at));
    const std::string cut = read(kNever);
    for (const std::size_t from : kSizes) ASSERT_EQ(cut, read(from)) << at;
  }
}

// Text between items, which the tree keeps as that of the root, comes in pieces here.
TEST_F(EarlyItems, MayStandBetweenTextsOfFastInfoset) {
  CElement root("depot");
  root.FromXml((Parcels(20) + kEnd).c_str());
  const CBinaryData octets = root.ToFastInfosetStream();
  for (const std::size_t from : kSizes) {
    const CFrom now(from);
    depot::CDepot object;
    object.FromXmlStream(octets);
    EXPECT_EQ(20, object.GetParcels().GetCount());
    EXPECT_EQ(20, object.GetParcels()[19]->GetId());
  }
}

TEST_F(EarlyItems, AreTheSameFromFilesAndWideTexts) {
  const std::string path =
      ::testing::TempDir() + "qzxml-early-items-" + std::to_string(getpid()) + ".xml";
  for (const char* const more : {"", "<piece size='61'/>"}) {
    const std::string text = Parcels(2000, more) + kEnd;
    std::ofstream(path, std::ios::binary) << text;
    const std::u16string wide(text.begin(), text.end());
    std::vector<std::string> outcomes;
    for (const std::size_t from : {kNever, std::size_t{0}, std::size_t{5000}}) {
      const CFrom now(from);
      for (const int way : {0, 1, 2}) {
        depot::CDepot object;
        object.SetTitle("before");
        std::string outcome;
        try {
          AsyncFromXmlFile(way == 1);
          if (way == 2) {
            object.FromXml(wide.c_str());
          } else {
            object.FromXmlFile(path.c_str());
          }
        } catch (const CQzException& e) {
          outcome = Describe(e);
        }
        AsyncFromXmlFile(false);
        outcomes.push_back(outcome + Written(object));
      }
    }
    for (const std::string& outcome : outcomes) EXPECT_EQ(outcomes.front(), outcome);
  }
  std::remove(path.c_str());
}

// --- The object

TEST_F(EarlyItems, LeaveTheObjectAsItWasWhenTheLoadFails) {
  const CFrom from(0);
  depot::CDepot object;
  object.FromXml(kDepot.c_str());
  const std::string before = Written(object);
  EXPECT_QZ_THROW(CQzException, "mismatched tag at line 8",
                  object.FromXml((Parcels(5) + "<office>\n</depot>").c_str()));
  EXPECT_EQ(before, Written(object));
  object.FromXml((Parcels(5) + kEnd).c_str());
  EXPECT_EQ(5, object.GetParcels().GetCount());
}

// The bytes of the document may be those of a value of the object that is read.
TEST_F(EarlyItems, MayComeFromATextOfTheObject) {
  for (const std::string& text :
       {Parcels(50) + kEnd, Parcels(50, "<wrong/>") + kEnd, Parcels(50)}) {
    std::string outcomes[2];
    for (const bool isEarly : {false, true}) {
      const CFrom from(isEarly ? 0 : kNever);
      depot::CDepot object;
      object.SetTitle(text);
      try {
        object.FromXml(object.GetTitle().c_str());
      } catch (const CQzException& e) {
        outcomes[isEarly] = Describe(e);
      }
      outcomes[isEarly] += Written(object);
    }
    EXPECT_EQ(outcomes[0], outcomes[1]);
  }
}

TEST_F(EarlyItems, AreToldOfToListenersAsEver) {
  class CListener final : public IEventSink {
   public:
    void OnEvent(CXmlObjectBase*, MsgType type, void*) override {
      events += std::to_string(static_cast<int>(type)) + " ";
    }
    std::string events;
  };
  for (const char* const more : {"", "<wrong/>"}) {
    std::string events[2];
    for (const bool isEarly : {false, true}) {
      const CFrom from(isEarly ? 0 : kNever);
      CListener listener;
      depot::CDepot object;
      object.GetParcels().AddEventListener(&listener);
      try {
        object.FromXml((Parcels(4, more) + kEnd).c_str());
      } catch (const CQzException&) {
      }
      events[isEarly] = listener.events;
      object.GetParcels().RemoveEventListener(&listener);
    }
    EXPECT_EQ(events[0], events[1]);
    if (*more == '\0') {
      EXPECT_NE("", events[0]);
    }
  }
}

// As above, the default context keeps a collection.
TEST(EarlyItemsInput, AreToldOfToTheDebugChannelAsEver) {
  static std::string heard;
  depot::CDepot object;
  object.FromXml((Parcels(4) + kEnd).c_str());
  object.GetParcels()[2]->GetPieces()[1]->SetSize(59);
  std::string octets;
  {
    const CBinaryData stream = object.ToFastInfosetStream();
    octets.assign(stream.GetData(), stream.GetData() + stream.GetLength());
  }
  octets[octets.rfind("59")] = 'x';  // a size that is none
  std::string lines[2];
  for (const bool isEarly : {false, true}) {
    const CFrom from(isEarly ? 0 : kNever);
    heard.clear();
    SetDebugChannel([](const char* text) { heard += text; });
    depot::CDepot target;
    try {
      target.FromXmlStream(reinterpret_cast<const BYTE*>(octets.data()),
                           static_cast<DWORD>(octets.size()));
      ADD_FAILURE() << "read";
    } catch (const CQzException&) {
    }
    SetDebugChannel(nullptr);
    lines[isEarly] = heard;
  }
  EXPECT_NE("", lines[0]);
  EXPECT_EQ(lines[0], lines[1]);
}

TEST_F(EarlyItems, AreNotForAClassThatSomebodyDerives) {
  class CMine : public depot::CDepot {
   public:
    int elements = 0;

   protected:
    CXmlElement* FromXml_Int(CXmlElement* parent, CXmlElement* cursor,
                             const CSerializationContext& context, bool optionalChoice) override {
      for (CXmlElement* e = cursor; e != nullptr; e = e->GetNextSiblingElement()) ++elements;
      return CDepot::FromXml_Int(parent, cursor, context, optionalChoice);
    }
  };
  const CFrom from(0);
  CMine object;
  object.FromXml((Parcels(40) + kEnd).c_str());
  EXPECT_EQ(41, object.elements);
  EXPECT_EQ(40, object.GetParcels().GetCount());
}

TEST_F(EarlyItems, MayBeOfTypesThatTheDocumentTells) {
  const auto readFrom = [](std::size_t octets, const std::string& items) {
    const CFrom from(octets);
    const std::string text =
        "<order xmlns='urn:shop' xmlns:s='urn:shop' xmlns:x='urn:x' id='7' "
        "xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance'>"
        "<customer><name>Ada</name></customer><card>c</card>";
    const std::string end = "<comment>ok</comment></order>";
    return Outcome(&New<shop::COrder>, text + items + end, text + end,
                   CSerializationContext::GetDefaultContext());
  };
  const std::string book = "<item xsi:type='Book' price='1'><title>Sums</title></item>";
  const std::string disc = "<item xsi:type='s:Disc' price='9'/>";
  const std::string lists[] = {
      book + disc + disc + book + book,
      disc + disc + "<item price='1'/>",
      disc + book + "<item xsi:type='Item' price='1'/>" + disc,
      disc + disc + "<item xsi:type='x:Disc' price='9'/>",
      disc + book + "<item xsi:type='s:Disc' xmlns:s='urn:x' price='9'/>" + disc,
      disc + book + "<item xsi:type='x:Disc' xmlns:x='urn:shop' price='9'/>" + disc,
      "<item xsi:type='x:Disc' price='9'/>" + disc + "<tag xmlns:x='urn:shop'>late</tag>",
      disc + disc + "<item xsi:type='s:Disc' price='11'/>",
      disc + disc + "<tag>a</tag>" + disc};
  for (const std::string& items : lists) {
    const std::string expected = readFrom(kNever, items);
    for (const std::size_t octets : kSizes) EXPECT_EQ(expected, readFrom(octets, items)) << items;
  }
  EXPECT_FALSE(Fails(readFrom(0, lists[0])));
}

// --- What it is for

TEST_F(EarlyItems, KeepTheTreeSmall) {
  const auto mostLiveElements = [](const std::string& text) {
    const auto note = [] { g_mostLiveElements = std::max(g_mostLiveElements, LiveElements()); };
    g_mostLiveElements = 0;
    depot::g_onPiece = note;
    depot::CDepot object;
    object.FromXml(text.c_str());
    depot::g_onPiece = nullptr;
    return g_mostLiveElements;
  };
  const int count = 3000;
  const std::string flat = Parcels(count) + kEnd;
  std::string deep = "<depot xmlns='urn:depot'><parcel id='1'><label>a</label>";
  for (int i = 0; i < 5 * count; ++i) deep += "<piece size='1'/>";
  deep += "</parcel>" + kEnd;
  EXPECT_LT(mostLiveElements(flat), 3000);
  EXPECT_LT(mostLiveElements(deep), 3000);
  const CFrom never(kNever);
  EXPECT_GT(mostLiveElements(flat), 5 * count);
  EXPECT_GT(mostLiveElements(deep), 5 * count);
}

TEST_F(EarlyItems, OfSmallDocumentsAreReadFromTheTree) {
  const auto live = [](std::size_t from) {
    const CFrom now(from);
    g_mostLiveElements = 0;
    depot::g_onPiece = [] { g_mostLiveElements = std::max(g_mostLiveElements, LiveElements()); };
    depot::CDepot object;
    object.FromXml(kDepot.c_str());
    depot::g_onPiece = nullptr;
    return g_mostLiveElements;
  };
  EXPECT_EQ(live(kNever), live(detail::kReadItemsFrom));
  EXPECT_LT(live(0), live(kNever));
}

TEST(EarlyItemsThreads, ReadEachDocumentOnItsOwn) {
  const CFrom from(0);
  const std::string good = Parcels(300) + kEnd;
  const std::string bad = Parcels(300, "<wrong/>") + kEnd;
  std::vector<std::thread> threads;
  std::vector<int> counts(4);
  for (int& count : counts) {
    threads.emplace_back([&count, &good, &bad] {
      for (int i = 0; i < 5; ++i) {
        depot::CDepot object;
        object.FromXml(good.c_str());
        count += object.GetParcels().GetCount();
        try {
          object.FromXml(bad.c_str());
        } catch (const CQzException&) {
          ++count;
        }
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  for (const int count : counts) EXPECT_EQ(5 * 301, count);
}
