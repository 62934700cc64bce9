#include "qzxml/collections/Element.h"
#include "qzxml/collections/ElementCol.h"
#include "qzxml/serialization/ElementInfoSeq.h"
#include "tests/support/MemberTrial.h"
#include "tests/support/QzTest.h"

// Collections of a sequence: the collection takes what suits it, the member minds the count.

using namespace QzXmlLib16;
using namespace QzXmlLib16Data;
using namespace qztest;

namespace {

const std::string kTooFew =
    "CQzValidationException: The Minimum number of [a] elements allowed in this collection is 2";
const std::string kTooMany =
    "CQzValidationException: The Maximum number of [a] elements allowed in this collection is 3";

// All members that leave the reading to the collection.
struct Kind {
  const char* name;
  CElementInfo* (*make)(const char* uri);
} const kKinds[] = {
    {"Col", [](const char* uri) -> CElementInfo* { return new CElementInfoSeqCol("a", uri, 0); }},
    {"ClsCol",
     [](const char* uri) -> CElementInfo* {
       return new CElementInfoSeqClsCol("a", uri, 0, kReal);
     }},
    {"AbsClsCol",
     [](const char* uri) -> CElementInfo* {
       return new CElementInfoSeqAbsClsCol("a", uri, 0, kReal);
     }},
    {"EnumCol",
     [](const char* uri) -> CElementInfo* { return new CElementInfoSeqEnumCol("a", uri, 0); }},
    {"PrimCol",
     [](const char* uri) -> CElementInfo* { return new CElementInfoSeqPrimCol("a", uri, 0); }},
};

// Texts under the name a; two or three unless told otherwise.
Unset::Make Texts(int minOccurs = 2, int maxOccurs = 3, const char* uri = "") {
  return Unset::Collection(
      [=]() -> CXmlCollectionBase* { return new CTextCol("a", uri, minOccurs, maxOccurs); });
}

CTextCol& TextsIn(CTrial& trial) {
  CXmlCollectionBase* const collection = trial.value().GetXmlCollection();
  return static_cast<CTextCol&>(*collection);
}

// Texts that note which of their counts was asked for.
class CAskedCol : public CTextCol {
 public:
  CAskedCol() : CTextCol("a", "", 0, -1) {}
  mutable std::string asked;
  void ValidateCount(const CSerializationContext&) const override { asked += "validate "; }
  bool IsValidCount(const CSerializationContext&) const override {
    asked += "valid? ";
    return false;
  }
};

// Open elements, for a member of that name.
Unset::Make Elements(int minOccurs, int maxOccurs) {
  return Unset::Collection([=]() -> CXmlCollectionBase* {
    return new CElementCol("", "##any", "", minOccurs, maxOccurs);
  });
}

CElementInfo* Untyped(const char* name) { return new CElementInfoSeqUntpdCol(name, "", 0); }

}  // namespace

// --- Reading

TEST(ElementInfoSeqCol, RunOfElementsIsReadAndCountedInARealParent) {
  for (const Kind& kind : kKinds) {
    SCOPED_TRACE(kind.name);
    CTrial(kind.make(""), Texts())
        .Expect({{"<a>1</a><a>2</a><b/>", kReal, kNoFlag, "true, at b, <r><a>1</a><a>2</a></r>"},
                 {"<a>1</a><a>2</a><a>3</a>", kReal, kNoFlag,
                  "true, at end, <r><a>1</a><a>2</a><a>3</a></r>"},
                 {"", kReal, kNoFlag, kTooFew},
                 {"<b/>", kReal, kNoFlag, kTooFew},
                 {"<a>1</a>", kReal, kNoFlag, kTooFew},
                 {"<b/><a>1</a><a>2</a>", kReal, kNoFlag, kTooFew},
                 {"<a>1</a><b/><a>2</a>", kReal, kNoFlag, kTooFew},
                 {"<o:a>1</o:a><o:a>2</o:a>", kReal, kNoFlag, kTooFew},
                 {"<a>1</a><a>2</a><a>3</a><a>4</a>", kReal, kNoFlag, kTooMany}});
  }
}

TEST(ElementInfoSeqCol, WrongCountIsTheDecisionOfTheWalkInAPseudoParent) {
  for (const Kind& kind : kKinds) {
    SCOPED_TRACE(kind.name);
    CTrial(kind.make(""), Texts())
        .Expect({{"<a>1</a><a>2</a><b/>", kPseudo, kNoFlag, "true, at b, <r><a>1</a><a>2</a></r>"},
                 {"", kPseudo, kNoFlag, "false, at end, <r/>"},
                 {"<b/>", kPseudo, kNoFlag, "false, at b, <r/>"},
                 {"<a>1</a><b/>", kPseudo, kNoFlag, "false, at b, <r><a>1</a></r>"},
                 {"<a>1</a><a>2</a><a>3</a><a>4</a><b/>", kPseudo, kNoFlag,
                  "false, at b, <r><a>1</a><a>2</a><a>3</a><a>4</a></r>"}});
  }
}

TEST(ElementInfoSeqCol, CountIsNotMindedWhereTheContextSaysSo) {
  for (const Kind& kind : kKinds) {
    SCOPED_TRACE(kind.name);
    for (const XmlElementType parent : {kReal, kPseudo}) {
      CTrial(kind.make(""), Texts())
          .Expect({{"", parent, kCollectionCounts, "true, at end, <r/>"},
                   {"<a>1</a><b/>", parent, kCollectionCounts, "true, at b, <r><a>1</a></r>"},
                   {"<a>1</a><a>2</a><a>3</a><a>4</a>", parent, kCollectionCounts,
                    "true, at end, <r><a>1</a><a>2</a><a>3</a><a>4</a></r>"}});
    }
  }
}

TEST(ElementInfoSeqCol, NoOtherFlagChangesTheCountOrSkipsElements) {
  for (const Kind& kind : kKinds) {
    for (const Flag flag : {kUnknownElements, kMissingMandatory, kMissingChoice}) {
      CTrial(kind.make(""), Texts())
          .Expect({{"<b/><a>1</a><a>2</a>", kReal, flag, kTooFew},
                   {"<b/><a>1</a><a>2</a>", kPseudo, flag, "false, at b, <r/>"}});
    }
    CTrial(kind.make(""), Texts())
        .Expect({{"<o:a>1</o:a><a>2</a>", kReal, kNamespaces,
                  "true, at end, <r><a>1</a><a>2</a></r>"}});
  }
}

TEST(ElementInfoSeqCol, CollectionWithoutLimitsMayBeEmptyOrAsLongAsItLikes) {
  for (const Kind& kind : kKinds) {
    CTrial(kind.make(""), Texts(0, -1))
        .Expect({{"", kReal, kNoFlag, "true, at end, <r/>"},
                 {"<b/>", kReal, kNoFlag, "true, at b, <r/>"},
                 {"<a>1</a><a>2</a><a>3</a><a>4</a>", kReal, kNoFlag,
                  "true, at end, <r><a>1</a><a>2</a><a>3</a><a>4</a></r>"}});
  }
}

TEST(ElementInfoSeqCol, ItemsOfAClassAreReadAndWritten) {
  CTables item;
  item.Add(Prim<CElementInfoSeqPrimMnd>("v", 0), Unset::Value);
  const auto items = Unset::Collection(
      [&item]() -> CXmlCollectionBase* { return new CTableCol(item, "a", "", 1, 2); });
  for (CElementInfo* member :
       {static_cast<CElementInfo*>(new CElementInfoSeqClsCol("a", "", 0, kReal)),
        static_cast<CElementInfo*>(new CElementInfoSeqAbsClsCol("a", "", 0, kReal))}) {
    CTrial(member, items)
        .Expect({{"<a><v>1</v></a><a><v>2</v></a><b/>", kReal, kNoFlag,
                  "true, at b, <r><a><v>1</v></a><a><v>2</v></a></r>"},
                 {"<a/>", kReal, kNoFlag,
                  "CQzException: Failed to find the required child element [v].\nPath: /r/a"}});
  }
}

TEST(ElementInfoSeqCol, VerdictIsThatOfTheCollection) {
  for (const Kind& kind : kKinds) {
    const CSmartPtr<CAskedCol> collection(new CAskedCol());
    const auto held = Unset::Collection([&]() -> CXmlCollectionBase* { return collection; });
    const struct {
      XmlElementType parent;
      Flag flag;
      const char* outcome;
      const char* asked;
    } cases[] = {{kReal, kNoFlag, "true, at end, <r/>", "validate "},
                 {kReal, kCollectionCounts, "true, at end, <r/>", "validate "},
                 {kPseudo, kNoFlag, "false, at end, <r/>", "valid? "},
                 {kPseudo, kCollectionCounts, "false, at end, <r/>", "valid? "}};
    for (const auto& c : cases) {
      collection->asked.clear();
      CTrial trial(kind.make(""), held);
      EXPECT_EQ(c.outcome, trial.Take("", c.parent, Flagged(c.flag)));
      EXPECT_EQ(c.asked, collection->asked) << kind.name << " with " << NameOf(c.flag);
    }
  }
}

// --- Reading open content

TEST(ElementInfoSeqUntpdCol, NameAnyElementTakesElementsOfEveryName) {
  for (const XmlElementType parent : {kReal, kPseudo}) {
    CTrial(Untyped("AnyElement"), Elements(1, 3))
        .Expect({{"<a>1</a><b x='2'/><o:c/>", parent, kNoFlag,
                  "true, at end, <r><a>1</a><b x=\"2\"/><AA:c xmlns:AA=\"urn:o\"/></r>"},
                 {"<a/><a/>", parent, kNoFlag, "true, at end, <r><a/><a/></r>"}});
  }
}

TEST(ElementInfoSeqUntpdCol, LockedNameTakesElementsOfTheNamespaceOfTheFirst) {
  for (const XmlElementType parent : {kReal, kPseudo}) {
    CTrial(Untyped("a"), Elements(1, 3))
        .Expect(
            {{"<a>1</a><a>2</a><b/>", parent, kNoFlag, "true, at b, <r><a>1</a><a>2</a></r>"},
             {"<a/><o:a/>", parent, kNoFlag, "true, at o:a, <r><a/></r>"},
             {"<o:a/><a/>", parent, kNoFlag, "true, at a, <r><AA:a xmlns:AA=\"urn:o\"/></r>"},
             // The namespaces of the context's flag are another matter.
             {"<o:a/><a/>", parent, kNamespaces, "true, at a, <r><AA:a xmlns:AA=\"urn:o\"/></r>"}});
  }
  CTrial(Untyped("a"), Elements(0, 3))
      .Expect({{"", kReal, kNoFlag, "true, at end, <r/>"},
               {"<b/><a/>", kReal, kNoFlag, "true, at b, <r/>"},
               {"<b/><a/>", kReal, kUnknownElements, "true, at b, <r/>"}});
}

TEST(ElementInfoSeqUntpdCol, CountIsMindedByTheParent) {
  // A collection of open elements has no name of its own.
  const std::string tooFew =
      "CQzValidationException: The Minimum number of [] elements allowed in this collection is 1";
  const std::string tooMany =
      "CQzValidationException: The Maximum number of [] elements allowed in this collection is 2";
  for (const char* name : {"AnyElement", "a"}) {
    CTrial(Untyped(name), Elements(1, 2))
        .Expect({{"", kReal, kNoFlag, tooFew},
                 {"", kPseudo, kNoFlag, "false, at end, <r/>"},
                 {"", kReal, kCollectionCounts, "true, at end, <r/>"},
                 {"", kPseudo, kCollectionCounts, "true, at end, <r/>"},
                 {"<a/><a/><a/>", kReal, kNoFlag, tooMany},
                 {"<a/><a/><a/>", kPseudo, kNoFlag, "false, at end, <r><a/><a/><a/></r>"},
                 {"<a/><a/><a/>", kReal, kCollectionCounts, "true, at end, <r><a/><a/><a/></r>"}});
  }
}

// --- Writing

TEST(ElementInfoSeqCol, CountIsCheckedBeforeAnythingIsWritten) {
  for (const Kind& kind : kKinds) {
    CTrial trial(kind.make(""), Texts());
    EXPECT_QZ_THROW_FULL(CQzValidationException,
                         "The Minimum number of [a] elements allowed in this collection is 2", "",
                         trial.GiveOrThrow());
    TextsIn(trial).texts = {"1"};
    CRecordingWriter writer;
    EXPECT_QZ_THROW_FULL(CQzValidationException,
                         "The Minimum number of [a] elements allowed in this collection is 2", "",
                         trial.member().ElementToXml({}, &trial.object(), &writer));
    EXPECT_EQ(std::vector<std::string>(), writer.calls);
    EXPECT_EQ("true, <r><a>1</a></r>", trial.Give(Flagged(kCollectionCounts)));
    TextsIn(trial).texts = {"1", "2", "3", "4"};
    EXPECT_QZ_THROW_FULL(CQzValidationException,
                         "The Maximum number of [a] elements allowed in this collection is 3", "",
                         trial.GiveOrThrow());
    TextsIn(trial).texts = {"1", "2", "3"};
    EXPECT_EQ("true, <r><a>1</a><a>2</a><a>3</a></r>", trial.Give());
  }
}

TEST(ElementInfoSeqCol, CountIsNotAskedForOnWritingWhereItIsNotMinded) {
  for (const Kind& kind : kKinds) {
    const CSmartPtr<CAskedCol> collection(new CAskedCol());
    CTrial trial(kind.make(""),
                 Unset::Collection([&]() -> CXmlCollectionBase* { return collection; }));
    EXPECT_EQ("false, <r/>", trial.Give(Flagged(kCollectionCounts)));
    EXPECT_EQ("", collection->asked);
    EXPECT_EQ("false, <r/>", trial.Give());
    EXPECT_EQ("validate ", collection->asked);
  }
}

TEST(ElementInfoSeqCol, EmptyCollectionWritesNothingAndLeavesTheWriterAlone) {
  for (const Kind& kind : kKinds) {
    CTrial trial(kind.make(""), Texts(0, -1));
    EXPECT_EQ("false, <r/>", trial.Give());
    EXPECT_EQ((std::vector<std::string>{"start r", "end"}), trial.GiveCalls());
    CTrial counted(kind.make(""), Texts());
    EXPECT_EQ("false, <r/>", counted.Give(Flagged(kCollectionCounts)));
  }
}

TEST(ElementInfoSeqCol, WriterIsToldWhereTheItemsBeginAndEnd) {
  for (const Kind& kind : kKinds) {
    CTrial trial(kind.make("urn:o"), Texts(0, -1));
    TextsIn(trial).texts = {"1", "2"};
    EXPECT_EQ((std::vector<std::string>{"start r", "[1] start a urn:o", "text 1 23", "end",
                                        "[1] start a urn:o", "text 2 23", "end", "[3] end"}),
              trial.GiveCalls());
    EXPECT_EQ("true, <r><AA:a xmlns:AA=\"urn:o\">1</AA:a><AA:a xmlns:AA=\"urn:o\">2</AA:a></r>",
              trial.Give());
  }
}

TEST(ElementInfoSeqCol, OpenElementsAreWrittenUnderTheirOwnNames) {
  CTrial trial(Untyped("AnyElement"), Elements(1, 2));
  EXPECT_EQ(
      "CQzValidationException: The Minimum number of [] elements allowed in this collection is 1",
      trial.Give());
  CXmlCollectionBase* const collection = trial.value().GetXmlCollection();
  CElementCol& elements = static_cast<CElementCol&>(*collection);
  elements.Add("b", "");
  elements.Add("c", "urn:o");
  EXPECT_EQ("true, <r><b/><AA:c xmlns:AA=\"urn:o\"/></r>", trial.Give());
}

#if defined(QZXML_ASSERTIONS)
TEST(ElementInfoSeqCol, CollectionThatTheClassHasNotMadeAsserts) {
  const char kOfTheValue[] = "m_type == ItemType_XmlCollection && m_pXmlCol != 0";
  for (const Kind& kind : kKinds) {
    CTrial trial(kind.make(""), [] {
      QzVariant value;
      value.SetXmlCollection(nullptr);
      return value;
    });
    EXPECT_QZ_ASSERT(kOfTheValue, trial.GiveOrThrow());
    EXPECT_QZ_ASSERT(kOfTheValue, trial.TakeOrThrow("<a/>"));
    const AssertionRecorder recorder;
    trial.Give(Flagged(kCollectionCounts));
    EXPECT_EQ((std::vector<std::string>{kOfTheValue, "spCol != 0"}), recorder.conditions());
  }
}
#endif

TEST(ElementInfoSeqCol, PropertyThatGivesNothingFailsWithTheNameOfTheMember) {
  const char kText[] = "Failed to get the property value for [a].\nNot now.";
  for (const Kind& kind : kKinds) {
    CTrial trial(kind.make(""), Texts(0, -1));
    trial.object().failsToGive = "Not now.";
    EXPECT_QZ_THROW_FULL(CQzValidationException, kText, "", trial.GiveOrThrow());
    trial.failsToGive = "Not now.";
    EXPECT_QZ_THROW_FULL(CQzValidationException, kText, "", trial.TakeOrThrow("<a/>"));
  }
}

// --- Its failures, as a document reports them

TEST(ElementInfoSeqCol, FailuresReachTheCallerWithPathAndChain) {
  for (const Kind& kind : kKinds) {
    CTables tables;
    tables.Add(kind.make(""), Texts());
    CSmartPtr<CTableObject> object(new CTableObject(tables));
    EXPECT_QZ_THROW_FULL(CQzValidationException,
                         "Failed to process the element.\nPath: /r\nThe Minimum number of [a] "
                         "elements allowed in this collection is 2",
                         "/r", object->FromXml("<r><a>1</a></r>"));
    EXPECT_QZ_THROW_FULL(CQzValidationException,
                         "Failed to convert the element [r] to XML\nThe Minimum number of [a] "
                         "elements allowed in this collection is 2",
                         "", Text(*object));
  }
}
