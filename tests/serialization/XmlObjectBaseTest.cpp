#include <cstring>
#include <thread>
#include <type_traits>

#include "qzxml/collections/XmlCollectionBase.h"
#include "qzxml/runtime/TextStream.h"
#include "qzxml/serialization/XmlObjectBase.h"
#include "qzxml/xml/XmlDocument.h"
#include "qzxml/xml/XmlTextWriter.h"
#include "tests/serialization/Note.h"
#include "tests/support/QzTest.h"

namespace QzXmlLib16 {
namespace {

using qztest::CNote;

// --- Lifetime

TEST(XmlObjectBase, CountsItsReferences) {
  CNote note;
  EXPECT_EQ(1, note.AddRef());
  EXPECT_EQ(2, note.AddRef());
  EXPECT_EQ(1, note.Release());
  EXPECT_EQ(2, note.AddRef());
}

TEST(XmlObjectBase, TheLastReleaseDeletesTheObjectAndGivesZero) {
  bool deleted = false;
  CXmlObjectBase* const note = new CNote(&deleted);
  note->AddRef();
  note->AddRef();
  EXPECT_EQ(1, note->Release());
  EXPECT_FALSE(deleted);
  EXPECT_EQ(0, note->Release());
  EXPECT_TRUE(deleted);
}

TEST(XmlObjectBase, AHandleHoldsTheObject) {
  bool deleted = false;
  {
    CSmartPtr<CNote> first(new CNote(&deleted));
    const CSmartPtr<CXmlObjectBase> second(first);
    first = nullptr;
    EXPECT_FALSE(deleted);
  }
  EXPECT_TRUE(deleted);
}

TEST(XmlObjectBase, ReferencesAreCountedFromEveryThread) {
  constexpr int kTurns = 10000;
  bool deleted = false;
  CNote* const note = new CNote(&deleted);
  note->AddRef();
  const auto use = [note] {
    for (int i = 0; i < kTurns; ++i) note->AddRef();
    for (int i = 0; i < kTurns; ++i) note->Release();
  };
  std::thread first(use);
  std::thread second(use);
  first.join();
  second.join();
  EXPECT_FALSE(deleted);
  EXPECT_EQ(0, note->Release());
  EXPECT_TRUE(deleted);
}

TEST(XmlObjectBase, ACopyTakesOverNameAndCountAsTheyStand) {
  CNote source;
  source.SetElementName("memo");
  source.AddRef();
  source.AddRef();
  CNote copy(source);
  EXPECT_EQ("memo", copy.GetElementName());
  EXPECT_EQ(3, copy.AddRef());
  EXPECT_EQ(3, source.AddRef());
}

TEST(XmlObjectBase, AssignmentTakesOverTheNameAndKeepsTheCount) {
  CNote source;
  source.SetElementName("memo");
  source.AddRef();
  source.AddRef();
  const CSmartPtr<CNote> target(new CNote);
  *target = source;
  EXPECT_EQ("memo", target->GetElementName());
  EXPECT_EQ(2, target->AddRef());
  EXPECT_EQ(1, target->Release());
}

// --- What an object is called, and its base

// Names itself nothing.
class CNameless : public CNote {
 public:
  CNameless() { SetElementName(nullptr); }
  CXmlObjectBase* GetBase() override { return &other; }
  CNote other;
};

class CUnnamed : public CXmlObjectBase {
 public:
  CXmlObjectBase* GetBase() override { return this; }
  std::string GetTargetNamespace() const override { return std::string(); }
  std::string GetNamespace() const override { return std::string(); }
  using CXmlObjectBase::GetElementName;

 protected:
  void ToXml_Int(CXmlWriter* writer, bool, const char* namespaceUri,
                 const CSerializationContext& context, bool) const override {
    writer->WriteStartElement("unnamed", namespaceUri);
    AttributesToXml_Int(writer, context);
    writer->WriteEndElement();
  }
  CXmlElement* FromXml_Int(CXmlElement*, CXmlElement*, const CSerializationContext&,
                           bool) override {
    return nullptr;
  }
};

TEST(XmlObjectBase, BeginsWithoutAName) {
  CUnnamed object;
  EXPECT_EQ("", object.GetElementName());
  EXPECT_EQ(1, object.AddRef());
}

TEST(XmlObjectBase, TheNameIsSetFromInsideAndFromOutside) {
  CNote note;
  note.SetElementName("memo");
  EXPECT_EQ("memo", note.GetElementName());
  CNote::SetElementName(&note, "letter");
  EXPECT_EQ("letter", note.GetElementName());
  CNote::SetElementName(&note, nullptr);
  EXPECT_EQ("", note.GetElementName());
  EXPECT_EQ("", CNameless().GetElementName());
}

TEST(XmlObjectBase, TheBaseOfAConstantObjectIsThatOfTheObject) {
  const CNameless object;
  EXPECT_EQ(&object.other, static_cast<const CXmlObjectBase&>(object).GetBase());
  const CNote note;
  EXPECT_EQ(&note, note.GetBase());
}

TEST(XmlObjectBase, AnEventIsOfNoConcernToAPlainObject) {
  CNote note;
  note.to = "Ann";
  const std::string before = note.ToXml();
  IEventSink& sink = note;
  sink.OnEvent(nullptr, IEventSink::MsgType_CollectionChange, nullptr);
  EXPECT_EQ(before, note.ToXml());
}

TEST(XmlObjectBase, APlainObjectHasNoAttributes) {
  EXPECT_EQ("<unnamed/>\n", CUnnamed().ToXml(false));
}

// --- From class to class

TEST(XmlObjectBase, TheStaticsReachTheProtectedOperationsOfAnotherObject) {
  const CSerializationContext context;
  CTextStream stream;
  CXmlTextWriter writer(&stream);
  writer.StartDocument();
  writer.WriteStartElement("outer", "");
  CNote note;
  note.to = "Ann";
  CNote::WriteAttributesOf(&note, &writer, context);
  EXPECT_EQ(1, note.attributeCalls);
  CNote::Write(&note, &writer, false, "urn:given", context, true);
  EXPECT_FALSE(note.call.root);
  EXPECT_TRUE(note.call.optionalChoice);
  EXPECT_EQ("urn:given", note.call.namespaceUri);
  EXPECT_EQ(&context, note.call.context);
  writer.WriteEndElement();
  writer.EndDocument();
  EXPECT_STREQ("<outer to=\"Ann\">\n\t<AA:note xmlns:AA=\"urn:given\" to=\"Ann\"/>\n</outer>\n",
               stream.GetBuffer());

  CXmlDocument document;
  document.LoadXml("<memo xmlns='urn:notes' to='Bob'><line>Milk</line></memo>");
  CXmlElement* const root = document.GetDocumentElement();
  EXPECT_EQ(nullptr, CNote::Read(&note, root, root->GetFirstElement(), context));
  EXPECT_FALSE(note.call.optionalChoice);
  EXPECT_EQ(root->GetFirstElement(), note.call.cursor);
  EXPECT_EQ(&context, note.call.context);
  EXPECT_EQ("memo", note.GetElementName());
  EXPECT_EQ("Bob", note.to);
  EXPECT_EQ(std::vector<std::string>{"Milk"}, note.lines);
}

// --- Writing

CNote Shopping() {
  CNote note;
  note.to = "Ann";
  note.lines = {"Milk", "Bread\n& <salt>"};
  return note;
}

TEST(XmlObjectBase, WritesTheWholeDocumentInEveryForm) {
  const struct {
    bool declaration;
    bool formatted;
    EOLType eol;
    const char* text;
  } cases[] = {
      {true, true, EOLType_LF,
       "<?xml version=\"1.0\"?>\n"
       "<AA:note xmlns:AA=\"urn:notes\" to=\"Ann\">\n"
       "\t<AA:line>Milk</AA:line>\n"
       "\t<AA:line>Bread\n&amp; &lt;salt&gt;</AA:line>\n"
       "</AA:note>\n"},
      {true, true, EOLType_CRLF,
       "<?xml version=\"1.0\"?>\r\n"
       "<AA:note xmlns:AA=\"urn:notes\" to=\"Ann\">\r\n"
       "\t<AA:line>Milk</AA:line>\r\n"
       "\t<AA:line>Bread\r\n&amp; &lt;salt&gt;</AA:line>\r\n"
       "</AA:note>\r\n"},
      {true, false, EOLType_CRLF,
       "<?xml version=\"1.0\"?>\r\n"
       "<AA:note xmlns:AA=\"urn:notes\" to=\"Ann\">"
       "<AA:line>Milk</AA:line>"
       "<AA:line>Bread\r\n&amp; &lt;salt&gt;</AA:line>"
       "</AA:note>"},
      {false, false, EOLType_LF,
       "<AA:note xmlns:AA=\"urn:notes\" to=\"Ann\">"
       "<AA:line>Milk</AA:line>"
       "<AA:line>Bread\n&amp; &lt;salt&gt;</AA:line>"
       "</AA:note>"},
  };
  const CNote note = Shopping();
  for (const auto& c : cases) EXPECT_EQ(c.text, note.ToXml(c.declaration, c.formatted, c.eol));
}

TEST(XmlObjectBase, WritesWithDeclarationFormattedAndLineFeedsWhenNothingIsSaid) {
  const CNote note = Shopping();
  EXPECT_EQ(note.ToXml(true, true, EOLType_LF, CSerializationContext::GetDefaultContext()),
            note.ToXml());
}

TEST(XmlObjectBase, WritesTheObjectAsTheRootInItsTargetNamespace) {
  const CNote note = Shopping();
  const CSerializationContext context;
  note.ToXml(true, true, EOLType_LF, context);
  EXPECT_TRUE(note.call.root);
  EXPECT_FALSE(note.call.optionalChoice);
  EXPECT_EQ("urn:notes", note.call.namespaceUri);
  EXPECT_EQ(&context, note.call.context);
}

TEST(XmlObjectBase, WritesWithTheIndentAndTheDefaultValuesOfTheContext) {
  CNote note;
  note.lines = {"(none)"};
  CSerializationContext context;
  context.SetDefaultNamespaceURI("urn:notes");
  context.SetIndentChars(" \t");
  EXPECT_EQ("<note xmlns=\"urn:notes\" to=\"\">\n \t<line/>\n</note>\n",
            note.ToXml(false, true, EOLType_LF, context));
  context.SetWriteDefaultElementValues(true);
  context.SetIndentChars(nullptr);
  EXPECT_EQ("<note xmlns=\"urn:notes\" to=\"\">\n<line>(none)</line>\n</note>\n",
            note.ToXml(false, true, EOLType_LF, context));
}

TEST(XmlObjectBase, WritesADocumentOfAnySize) {
  CNote note;
  std::string expected = "<AA:note xmlns:AA=\"urn:notes\" to=\"\">";
  for (int i = 0; i < 2000; ++i) {
    note.lines.push_back(std::string(static_cast<std::size_t>(i), 'x'));
    expected += i == 0 ? "<AA:line/>" : "<AA:line>" + note.lines.back() + "</AA:line>";
  }
  expected += "</AA:note>";
  EXPECT_EQ(expected, note.ToXml(false, false));
}

TEST(XmlObjectBase, AnElementLeftOpenIsRefused) {
  CNote note;
  note.to = "left open";
  EXPECT_QZ_THROW_FULL(CQzException, "An Element has not been closed.", "", note.ToXml());
}

TEST(XmlObjectBase, AnUnknownLineEndIsRefused) {
  CNote note;
  for (const int eol : {-1, 2}) {
    EXPECT_QZ_THROW_FULL(CQzException, "Invalid EOL type.", "",
                         note.ToXml(true, true, static_cast<EOLType>(eol)));
  }
}

TEST(XmlObjectBase, AFailureOfTheObjectComesOutAsItIs) {
  CNote note;
  note.to = "nobody";
  EXPECT_QZ_THROW_FULL(CQzException, "A note is to somebody.", "", note.ToXml());
  note.to = "Ann";
  EXPECT_EQ("<AA:note xmlns:AA=\"urn:notes\" to=\"Ann\"/>\n", note.ToXml(false));
}

// --- Events

// A collection whose CXmlObjectBase part is elsewhere.
class CSender : public CXmlCollectionBase {
 public:
  CXmlObjectBase* GetBase() override { return &base; }
  int GetCount() const override { return 0; }
  void Clear() override {}
  void Remove(int) override {}
  CNote base;

 protected:
  void ToXml_Int(CXmlWriter*, bool, const char*, const CSerializationContext&,
                 bool) const override {}
  CXmlElement* FromXml_Int(CXmlElement*, CXmlElement*, const CSerializationContext&,
                           bool) override {
    return nullptr;
  }
};

// Keeps the last event.
class CListener final : public IEventSink {
 public:
  void OnEvent(CXmlObjectBase* sender, MsgType type, void* data) override {
    ++events;
    lastSender = sender;
    lastType = type;
    lastData = data;
    const bool removal =
        type == MsgType_CollectionRemove || type == MsgType_CollectionRemoveComplete;
    if (removal && data != nullptr) lastIndex = *static_cast<std::int32_t*>(data);
  }

  int events = 0;
  CXmlObjectBase* lastSender = nullptr;
  MsgType lastType = MsgType_CollectionChange;
  void* lastData = nullptr;
  std::int32_t lastIndex = -99;
};

TEST(XmlObjectBase, EventsCarryTheBaseOfTheCollectionTheTypeAndTheItem) {
  CSender sender;
  int item = 0;
  CListener listener;
  const auto expect = [&](int events, IEventSink::MsgType type, void* data) {
    EXPECT_EQ(events, listener.events);
    EXPECT_EQ(&sender.base, listener.lastSender);
    EXPECT_EQ(type, listener.lastType);
    EXPECT_EQ(data, listener.lastData);
  };
  CNote::FireOnCollectionAddEvent(&listener, &sender, &item);
  expect(1, IEventSink::MsgType_CollectionAdd, &item);
  CNote::FireOnCollectionAddCompleteEvent(&listener, &sender, &item);
  expect(2, IEventSink::MsgType_CollectionAddComplete, &item);
  CNote::FireOnCollectionChangeEvent(&listener, &sender);
  expect(3, IEventSink::MsgType_CollectionChange, nullptr);
  CNote::FireOnCollectionAddEvent(&listener, &sender, nullptr);
  expect(4, IEventSink::MsgType_CollectionAdd, nullptr);
}

TEST(XmlObjectBase, ARemovalCarriesTheIndexAndNothingForMinusOne) {
  CSender sender;
  for (const int index : {0, 1, 2147483647, -2}) {
    CListener listener;
    CNote::FireOnCollectionRemoveEvent(&listener, &sender, index);
    EXPECT_EQ(IEventSink::MsgType_CollectionRemove, listener.lastType);
    EXPECT_EQ(index, listener.lastIndex);
    listener.lastIndex = -99;
    CNote::FireOnCollectionRemoveCompleteEvent(&listener, &sender, index);
    EXPECT_EQ(IEventSink::MsgType_CollectionRemoveComplete, listener.lastType);
    EXPECT_EQ(index, listener.lastIndex);
    EXPECT_EQ(&sender.base, listener.lastSender);
  }
  CListener listener;
  listener.lastData = &sender;
  CNote::FireOnCollectionRemoveEvent(&listener, &sender, -1);
  EXPECT_EQ(IEventSink::MsgType_CollectionRemove, listener.lastType);
  EXPECT_EQ(nullptr, listener.lastData);
  listener.lastData = &sender;
  CNote::FireOnCollectionRemoveCompleteEvent(&listener, &sender, -1);
  EXPECT_EQ(IEventSink::MsgType_CollectionRemoveComplete, listener.lastType);
  EXPECT_EQ(nullptr, listener.lastData);
  EXPECT_EQ(2, listener.events);
}

TEST(XmlObjectBase, TheNumbersOfEventsAreFixed) {
  EXPECT_EQ(0, IEventSink::MsgType_CollectionChange);
  EXPECT_EQ(1, IEventSink::MsgType_CollectionAdd);
  EXPECT_EQ(2, IEventSink::MsgType_CollectionAddComplete);
  EXPECT_EQ(3, IEventSink::MsgType_CollectionRemove);
  EXPECT_EQ(4, IEventSink::MsgType_CollectionRemoveComplete);
}

// --- The shape that generated code is compiled against

TEST(XmlObjectBase, TheClassIsAnAbstractListenerWithAVirtualDestructor) {
  EXPECT_TRUE((std::is_base_of<IEventSink, CXmlObjectBase>::value));
  EXPECT_TRUE(std::is_abstract<CXmlObjectBase>::value);
  EXPECT_TRUE(std::has_virtual_destructor<CXmlObjectBase>::value);
  EXPECT_TRUE(std::is_abstract<INillable>::value);
}

#if defined(__x86_64__) && defined(__GNUC__)
// Where a pointer to a virtual member keeps one plus the offset of the slot (Itanium C++ ABI, 2.3).
template <typename Member>
std::ptrdiff_t Slot(Member member) {
  std::ptrdiff_t offset = 0;
  std::memcpy(&offset, &member, sizeof offset);
  return (offset - 1) / static_cast<std::ptrdiff_t>(sizeof(void*));
}

class CSlots : public CNote {
 public:
  using B = CXmlObjectBase;
  using Context = const CSerializationContext&;
  static std::vector<std::ptrdiff_t> InOrder() {
    return {
        Slot(&B::OnEvent),
        Slot(static_cast<B* (B::*)()>(&B::GetBase)),
        Slot(&B::ToXmlFile),
        Slot(&B::ToFastInfosetFile),
        Slot(&B::ToJsonFile),
        Slot(&B::ToXml),
        Slot(&B::ToJson),
        Slot(&B::ToXmlStream),
        Slot(&B::ToFastInfosetStream),
        Slot(&B::ToJsonStream),
        Slot(&B::FromXmlFile),
        Slot(&B::FromJsonFile),
        Slot(static_cast<void (B::*)(const wchar_t*, Context)>(&B::FromXml)),
        Slot(static_cast<void (B::*)(const char*, Context)>(&B::FromXml)),
        Slot(static_cast<void (B::*)(const wchar_t*, Context)>(&B::FromJson)),
        Slot(static_cast<void (B::*)(const char*, Context)>(&B::FromJson)),
        Slot(static_cast<void (B::*)(const CBinaryData&, Context)>(&B::FromXmlStream)),
        Slot(static_cast<void (B::*)(const BYTE*, DWORD, Context)>(&B::FromXmlStream)),
        Slot(static_cast<void (B::*)(const CBinaryData&, Context)>(&B::FromJsonStream)),
        Slot(static_cast<void (B::*)(const BYTE*, DWORD, Context)>(&B::FromJsonStream)),
        Slot(static_cast<void (B::*)(const CElement*, Context)>(&B::FromXmlElement)),
        Slot(static_cast<void (B::*)(const CXmlElement*, Context)>(&B::FromXmlElement)),
        // here the two slots of the destructor
        Slot(&B::GetTargetNamespace) - 2,
        Slot(&B::GetNamespace) - 2,
        Slot(static_cast<void (CNote::*)(CXmlWriter*, Context) const>(
            &CSlots::AttributesToXml_Int)) -
            2,
        Slot(static_cast<void (CNote::*)(CXmlWriter*, bool, const char*, Context, bool) const>(
            &CSlots::ToXml_Int)) -
            2,
        Slot(static_cast<CXmlElement* (CNote::*)(CXmlElement*, CXmlElement*, Context, bool)>(
            &CSlots::FromXml_Int)) -
            2,
    };
  }
};

TEST(XmlObjectBase, TheVirtualOperationsKeepTheirOrder) {
  const std::vector<std::ptrdiff_t> slots = CSlots::InOrder();
  for (std::size_t i = 0; i < slots.size(); ++i) {
    EXPECT_EQ(static_cast<std::ptrdiff_t>(i), slots[i]);
  }
}
#endif

}  // namespace
}  // namespace QzXmlLib16
