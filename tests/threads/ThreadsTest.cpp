// Threads that work on different objects of the same classes at once. Run under ThreadSanitizer as
// well as in the ordinary builds.
#include <atomic>
#include <functional>
#include <thread>

#include "gpx/gpx.h"
#include "qzxml/QzXml.h"
#include "tests/support/QzTest.h"

using namespace QzXmlLib16;

namespace {

constexpr int kThreads = 4;

// Starts the function on several threads at once and waits for them.
void OnThreads(const std::function<void(int)>& function) {
  std::atomic<int> waiting{kThreads};
  std::vector<std::thread> threads;
  for (int i = 0; i < kThreads; ++i) {
    threads.emplace_back([&, i] {
      --waiting;
      while (waiting > 0) std::this_thread::yield();
      function(i);
    });
  }
  for (std::thread& thread : threads) thread.join();
}

std::string Document(int number) {
  return "<gpx xmlns=\"http://www.topografix.com/GPX/1/1\" version=\"1.1\" creator=\"thread\">"
         "<wpt lat=\"" +
         std::to_string(number) +
         "\" lon=\"7\"><ele>1.5</ele><name>a &amp; b</name>"
         "<fix>3d</fix><extensions><e:x xmlns:e=\"urn:e\" "
         "y=\"z\">text</e:x></extensions></wpt></gpx>";
}

TEST(Threads, ReadAndWriteObjectsOfTheSameClassesAtOnce) {
  OnThreads([](int thread) {
    for (int i = 0; i < 50; ++i) {
      gpx::CGpxType object;
      object.FromXml(Document(thread).c_str());
      EXPECT_EQ(std::to_string(thread), object.GetWpts().Item(0)->GetLat().ToString());
      gpx::CGpxType again;
      again.FromXml(object.ToXml().c_str());
      EXPECT_EQ(object.ToXml(), again.ToXml());
    }
  });
}

TEST(Threads, ShareOneContextThatNobodyChanges) {
  CSerializationContext context;
  context.GetNamespaceAliases().Add("e", "urn:e");
  context.SetDefaultNamespaceURI("http://www.topografix.com/GPX/1/1");
  OnThreads([&](int thread) {
    for (int i = 0; i < 50; ++i) {
      gpx::CGpxType object;
      object.FromXml(Document(thread).c_str(), context);
      EXPECT_NE(std::string::npos, object.ToXml(true, true, EOLType_LF, context).find("<e:x y="));
    }
  });
}

TEST(Threads, ReadJsonInOneContextThatNobodyChanges) {
  const CSerializationContext context;  // its options of JSON are made by whoever is first
  OnThreads([&](int thread) {
    const std::string json =
        "{\"gpx\":{\"@xmlns\":\"http://www.topografix.com/GPX/1/"
        "1\",\"@version\":\"1.1\",\"@creator\":"
        "\"thread\",\"wpt\":[{\"@lat\":" +
        std::to_string(thread) + ",\"@lon\":7,\"name\":\"a\"}]}}";
    for (int i = 0; i < 20; ++i) {
      gpx::CGpxType object;
      object.FromJson(json.c_str(), context);
      EXPECT_EQ(std::to_string(thread), object.GetWpts().Item(0)->GetLat().ToString());
    }
  });
}

TEST(Threads, WriteAndReadFastInfosetInOneContextThatNobodyChanges) {
  const CSerializationContext context;  // its options of Fast Infoset are made by whoever is first
  CSerializationContext withVocabulary;
  CFastInfosetContext& options = withVocabulary.GetFIContext();
  options.SetSuggestedValues();
  options.SetUseGeneratedVocabulary(true);
  options.GetVocabulary()->AddElement("", "", "name");
  OnThreads([&](int thread) {
    for (int i = 0; i < 20; ++i) {
      gpx::CGpxType object;
      object.FromXml(Document(thread).c_str(), context);
      for (const CSerializationContext* shared :
           {&context, static_cast<const CSerializationContext*>(&withVocabulary)}) {
        gpx::CGpxType again;
        again.FromXmlStream(object.ToFastInfosetStream(FInfoDecl_None, *shared), *shared);
        EXPECT_EQ(object.ToXml(), again.ToXml());
      }
    }
  });
  EXPECT_EQ(1u, options.GetVocabulary()->GetElementNamesTable().m_table.size());
}

TEST(Threads, FailAtOnce) {
  OnThreads([](int) {
    for (int i = 0; i < 50; ++i) {
      gpx::CGpxType object;
      EXPECT_THROW(object.FromXml(Document(91).c_str()), CQzException);
    }
  });
}

TEST(Threads, CheckOnePatternAtOnce) {
  const CPrimitiveRestrictions restrictions("[a-c]{3}\\d+", -1, -1, "", "", "", "", -1, -1, -1);
  OnThreads([&](int thread) {
    QzVariant good;
    good.SetString("abc" + std::to_string(thread));
    QzVariant bad;
    bad.SetString("abd");
    for (int i = 0; i < 100; ++i) {
      CheckPrimitiveRestriction("code", good, ItemType_string, restrictions);
      EXPECT_THROW(CheckPrimitiveRestriction("code", bad, ItemType_string, restrictions),
                   CQzException);
    }
  });
}

TEST(Threads, ShareBinaryDataThatEachChangesForItself) {
  const CBinaryData shared("shared");
  OnThreads([&](int thread) {
    for (int i = 0; i < 200; ++i) {
      CBinaryData own(shared);
      own.Append(static_cast<char>('a' + thread));
      EXPECT_EQ(7u, own.GetLength());
    }
  });
  EXPECT_EQ(6u, shared.GetLength());
}

TEST(Threads, HoldOneObjectByManyHandles) {
  const CSmartPtr<gpx::CGpxType> object(new gpx::CGpxType);
  OnThreads([&](int) {
    for (int i = 0; i < 1000; ++i) {
      const CSmartPtr<CXmlObjectBase> handle(object);
      EXPECT_TRUE(handle != nullptr);
    }
  });
  EXPECT_EQ(2, object->AddRef());
  EXPECT_EQ(1, object->Release());
}

}  // namespace
