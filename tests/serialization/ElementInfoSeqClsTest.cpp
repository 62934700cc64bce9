#include "qzxml/serialization/ElementInfoSeq.h"
#include "tests/support/MemberTrial.h"
#include "tests/support/QzTest.h"

// Classes of a sequence. The mandatory child is there already and is filled in place; the optional
// one comes from the factory when it is met. A child without a tag reads in the element around it.

using namespace QzXmlLib16;
using namespace QzXmlLib16Data;
using namespace qztest;

namespace {

using Mnd = CElementInfoSeqClsMnd;
using Opt = CElementInfoSeqClsOpt;

const std::string kMissing =
    "CQzValidationException: Failed to find the required child element [item].\nPath: /r";

// What the factory was last called with, "(nothing)" at first, and how often.
struct FactoryCalls {
  std::string last = "(nothing)";
  int count = 0;
} g_factory;

CSmartPtr<CXmlObjectBase> Record(int classId, const char* elementName) {
  g_factory.last = elementName;
  ++g_factory.count;
  return MakeTableObject(classId, elementName);
}

// <item><v/><w/></item> with an attribute id; v and w are optional texts.
class Item : public CTables {
 public:
  explicit Item(XmlElementType type) : CTables(XmlElementGroupType_Sequence, type) {
    name = "item";
    failIfAttributeUnknown = type == kReal;
    Add(Prim<CElementInfoSeqPrimOpt>("v", 0), Unset::Value);
    Add(Prim<CElementInfoSeqPrimOpt>("w", 1), Unset::Value);
    Add(new CAttributeInfoPrimitive("id", "", 2, true, ItemType_string, nullptr,
                                    CWhitespaceUtils::WhitespaceRule_None, CPrimitiveRestrictions(),
                                    nullptr),
        Unset::Value);
  }
};

// A group v, w of which both are mandatory.
class Pair : public CTables {
 public:
  Pair() : CTables(XmlElementGroupType_Sequence, kPseudo) {
    failIfAttributeUnknown = false;
    Add(Prim<CElementInfoSeqPrimMnd>("v", 0), Unset::Value);
    Add(Prim<CElementInfoSeqPrimMnd>("w", 1), Unset::Value);
  }
};

Unset::Make HeldOf(const CTables& tables) {
  return Unset::Held([&tables] { return new CTableObject(tables, "item"); });
}

Mnd* MndOf(const CTables& tables, XmlElementType type, bool requiresContent = false,
           const char* uri = "") {
  return new Mnd("item", uri, 0, type, &Record, tables.id(), requiresContent);
}

Opt* OptOf(const CTables& tables, XmlElementType type, const char* uri = "") {
  return new Opt("item", uri, 0, type, &Record, tables.id());
}

class ElementInfoSeqCls : public ::testing::Test {
 protected:
  ElementInfoSeqCls() { g_factory = FactoryCalls(); }

  const Item m_item{kReal};
  const Item m_group{kPseudo};
  const Pair m_pair;
};

}  // namespace

// --- Mandatory, with a tag

TEST_F(ElementInfoSeqCls, MandatoryChildMustStandAtTheCursorInARealParent) {
  CTrial(MndOf(m_item, kReal), HeldOf(m_item))
      .Expect({{"<item><v>1</v></item><b/>", kReal, kNoFlag,
                "true, at b, <r><item><v>1</v></item></r>"},
               {"<item id='7'/>", kReal, kNoFlag, "true, at end, <r><item id=\"7\"/></r>"},
               {"<item><v>1</v></item><item><v>2</v></item>", kReal, kNoFlag,
                "true, at item[2], <r><item><v>1</v></item></r>"},
               {"", kReal, kNoFlag, kMissing},
               {"<b/>", kReal, kNoFlag, kMissing},
               {"<b/><item/>", kReal, kNoFlag, kMissing},
               {"<o:item/>", kReal, kNoFlag, kMissing},
               {"<o:item><v>1</v></o:item>", kReal, kNamespaces,
                "true, at end, <r><item><v>1</v></item></r>"}});
}

TEST_F(ElementInfoSeqCls, MandatoryChildInAPseudoParentIsLookedForAtTheCursorAlone) {
  for (const Flag flag : {kNoFlag, kUnknownElements, kMissingMandatory}) {
    CTrial(MndOf(m_item, kReal), HeldOf(m_item))
        .Expect({{"<item><v>1</v></item><b/>", kPseudo, flag,
                  "true, at b, <r><item><v>1</v></item></r>"},
                 {"<item/><item/>", kPseudo, flag, "true, at item[2], <r><item/></r>"},
                 {"", kPseudo, flag, "false, at end, <r><item/></r>"},
                 {"<b/>", kPseudo, flag, "false, at b, <r><item/></r>"},
                 {"<b/><item><v>1</v></item>", kPseudo, flag, "false, at b, <r><item/></r>"},
                 {"<o:item/>", kPseudo, flag, "false, at o:item, <r><item/></r>"}});
  }
}

TEST_F(ElementInfoSeqCls, MandatoryChildIsReachedPastUnknownElementsInARealParent) {
  CTrial(MndOf(m_item, kReal), HeldOf(m_item))
      .Expect({{"<b/><c/><item><v>1</v></item><d/>", kReal, kUnknownElements,
                "true, at d, <r><item><v>1</v></item></r>"},
               {"<b/><c/>", kReal, kUnknownElements, kMissing},
               {"", kReal, kUnknownElements, kMissing}});
}

TEST_F(ElementInfoSeqCls, MandatoryChildMayBeMissingWhereTheContextSaysSo) {
  CTrial(MndOf(m_item, kReal), HeldOf(m_item))
      .Expect(
          {{"", kReal, kMissingMandatory, "true, at end, <r><item/></r>"},
           {"<b/>", kReal, kMissingMandatory, "true, at b, <r><item/></r>"},
           {"<b/><item><v>1</v></item>", kReal, kMissingMandatory, "true, at b, <r><item/></r>"},
           {"<item><v>1</v></item>", kReal, kMissingMandatory,
            "true, at end, <r><item><v>1</v></item></r>"}});
}

TEST_F(ElementInfoSeqCls, RequiredContentIsForGroupsAlone) {
  CTrial(MndOf(m_item, kReal, true), HeldOf(m_item))
      .Expect({{"<item/><b/>", kReal, kNoFlag, "true, at b, <r><item/></r>"},
               {"<b/>", kPseudo, kNoFlag, "false, at b, <r><item/></r>"},
               {"<b/>", kReal, kMissingMandatory, "true, at b, <r><item/></r>"}});
}

TEST_F(ElementInfoSeqCls, OtherFlagsDoNotMakeTheMandatoryChildOptional) {
  for (const Flag flag : {kUnknownAttributes, kMissingChoice, kCollectionCounts, kNamespaces}) {
    CTrial(MndOf(m_item, kReal), HeldOf(m_item)).Expect({{"<b/>", kReal, flag, kMissing}});
  }
}

TEST_F(ElementInfoSeqCls, MandatoryChildIsFilledInPlaceAndNeverMade) {
  const CSmartPtr<CTableObject> child(new CTableObject(m_item, "item"));
  child->Set(0, "former");
  child->Set(1, "former");
  CTrial trial(MndOf(m_item, kReal), Unset::Held([&]() -> CXmlObjectBase* { return child; }));
  EXPECT_EQ("true, at end, <r><item><v>1</v></item></r>", trial.Take("<item><v>1</v></item>"));
  EXPECT_EQ(child, trial.object().ObjectAt(0));
  EXPECT_EQ(1, child->initCalls);
  EXPECT_EQ(0, g_factory.count);
}

TEST_F(ElementInfoSeqCls, MissingChildStaysAsInitLeftItAndTheWalkGoesOnAtTheSameCursor) {
  CTables tables;
  tables.Add(MndOf(m_item, kReal), HeldOf(m_item));
  tables.Add(Prim<CElementInfoSeqPrimMnd>("b", 1), Unset::Value);
  CSmartPtr<CTableObject> object(new CTableObject(tables));
  object->ObjectAt(0)->Set(0, "former");
  object->FromXml("<r><b>1</b></r>", Flagged(kMissingMandatory));
  EXPECT_EQ("<r><item/><b>1</b></r>", Text(*object));
}

// --- Mandatory, without a tag

TEST_F(ElementInfoSeqCls, GroupThatRequiresContentMustTakeSomethingInARealParent) {
  CTrial trial(MndOf(m_group, kPseudo, true), HeldOf(m_group));
  trial.Expect({{"<v>1</v><w>2</w><b/>", kReal, kNoFlag, "true, at b, <r><v>1</v><w>2</w></r>"},
                {"<w>2</w>", kReal, kNoFlag, "true, at end, <r><w>2</w></r>"},
                {"<w>2</w><v>1</v>", kReal, kNoFlag, "true, at v, <r><w>2</w></r>"},
                {"<v>1</v><v>2</v>", kReal, kNoFlag, "true, at v[2], <r><v>1</v></r>"},
                {"<o:v>1</o:v>", kReal, kNoFlag, kMissing},
                {"<o:v>1</o:v>", kReal, kNamespaces, "true, at end, <r><v>1</v></r>"},
                {"<b/><v>1</v>", kReal, kNoFlag, kMissing},
                {"<b/>", kReal, kNoFlag, kMissing},
                {"", kReal, kNoFlag, kMissing},
                // No flag makes the group optional, or looks for it.
                {"<b/><v>1</v>", kReal, kUnknownElements, kMissing},
                {"<b/>", kReal, kMissingMandatory, kMissing},
                {"", kReal, kMissingMandatory, kMissing}});
}

TEST_F(ElementInfoSeqCls, GroupThatRequiresContentSaysNoInAPseudoParent) {
  for (const Flag flag : {kNoFlag, kUnknownElements, kMissingMandatory}) {
    CTrial(MndOf(m_group, kPseudo, true), HeldOf(m_group))
        .Expect({{"<v>1</v><b/>", kPseudo, flag, "true, at b, <r><v>1</v></r>"},
                 {"<b/><v>1</v>", kPseudo, flag, "false, at b, <r/>"},
                 {"", kPseudo, flag, "false, at end, <r/>"}});
  }
}

TEST_F(ElementInfoSeqCls, GroupThatMayBeEmptyIsReadEvenBehindTheLastChild) {
  CTrial trial(MndOf(m_group, kPseudo, false), HeldOf(m_group));
  trial.rootAttributes = " id='7'";
  for (const XmlElementType parent : {kReal, kPseudo}) {
    trial.Expect({{"<v>1</v><b/>", parent, kNoFlag, "true, at b, <r id=\"7\"><v>1</v></r>"},
                  {"<v>1</v><v>2</v>", parent, kNoFlag, "true, at v[2], <r id=\"7\"><v>1</v></r>"},
                  {"<b/><v>1</v>", parent, kNoFlag, "true, at b, <r id=\"7\"/>"},
                  {"<o:v>1</o:v>", parent, kNoFlag, "true, at o:v, <r id=\"7\"/>"},
                  {"", parent, kNoFlag, "true, at end, <r id=\"7\"/>"},
                  {"", parent, kUnknownElements, "true, at end, <r id=\"7\"/>"},
                  {"<b/>", parent, kMissingMandatory, "true, at b, <r id=\"7\"/>"}});
  }
}

TEST_F(ElementInfoSeqCls, GroupThatTookNothingAsksTheWalkToSkipAnUnknownElement) {
  CTrial(MndOf(m_group, kPseudo, false), HeldOf(m_group))
      .Expect({{"<b/><v>1</v>", kReal, kUnknownElements, "false, at b, <r/>"},
               {"<b/><v>1</v>", kPseudo, kUnknownElements, "true, at b, <r/>"},
               {"<v>1</v><b/>", kReal, kUnknownElements, "true, at b, <r><v>1</v></r>"}});
  CTables tables;
  tables.Add(MndOf(m_group, kPseudo, false), HeldOf(m_group));
  CSmartPtr<CTableObject> object(new CTableObject(tables));
  object->FromXml("<r><b/><c/><v>1</v></r>", Flagged(kUnknownElements));
  EXPECT_EQ("<r><v>1</v></r>", Text(*object));
}

TEST_F(ElementInfoSeqCls, GroupThatCanNotBeFinishedGivesBackWhatItTook) {
  for (const bool requiresContent : {true, false}) {
    CTrial trial(MndOf(m_pair, kPseudo, requiresContent), HeldOf(m_pair));
    EXPECT_EQ("true, at b, <r><v>1</v><w>2</w></r>", trial.Take("<v>1</v><w>2</w><b/>"));
  }
  CTrial requiring(MndOf(m_pair, kPseudo, true), HeldOf(m_pair));
  EXPECT_EQ(kMissing, requiring.Take("<v>1</v><b/>"));
  CTables tables;
  tables.Add(MndOf(m_pair, kPseudo, false), HeldOf(m_pair));
  CSmartPtr<CTableObject> object(new CTableObject(tables));
  EXPECT_QZ_THROW_FULL(CQzException,
                       "Failed read all the elements held within the element [r]. The unexpected "
                       "element [v] remains un processed\nPath: /r",
                       "/r", object->FromXml("<r><v>1</v><b/></r>"));
}

TEST_F(ElementInfoSeqCls, MembersOfAGroupPassUnknownElementsThemselves) {
  CTrial(MndOf(m_pair, kPseudo, true), HeldOf(m_pair))
      .Expect({{"<b/><v>1</v><c/><w>2</w><d/>", kReal, kUnknownElements,
                "true, at d, <r><v>1</v><w>2</w></r>"},
               {"<b/><v>1</v><c/>", kReal, kUnknownElements, kMissing},
               {"<b/><v>1</v><c/><w>2</w>", kPseudo, kUnknownElements,
                "true, at end, <r><v>1</v><w>2</w></r>"}});
}

// --- Optional

TEST_F(ElementInfoSeqCls, OptionalChildMayBeMissingInEitherParent) {
  for (const XmlElementType parent : {kReal, kPseudo}) {
    CTrial(OptOf(m_item, kReal), Unset::Object)
        .Expect({{"<item><v>1</v></item><b/>", parent, kNoFlag,
                  "true, at b, <r><item><v>1</v></item></r>"},
                 {"<item/><item/>", parent, kNoFlag, "true, at item[2], <r><item/></r>"},
                 {"", parent, kNoFlag, "true, at end, (null)"},
                 {"<b/>", parent, kNoFlag, "true, at b, (null)"},
                 {"<b/><item/>", parent, kNoFlag, "true, at b, (null)"},
                 {"<o:item/>", parent, kNoFlag, "true, at o:item, (null)"},
                 {"<o:item/>", parent, kNamespaces, "true, at end, <r><item/></r>"},
                 {"<b/><item/>", parent, kUnknownElements, "true, at b, (null)"},
                 {"<b/><item/>", parent, kMissingMandatory, "true, at b, (null)"}});
  }
}

TEST_F(ElementInfoSeqCls, OptionalChildIsMadeUnderTheNameOfTheMemberWhenItIsMet) {
  CTrial trial(OptOf(m_item, kReal), Unset::Object);
  EXPECT_EQ("true, at b, (null)", trial.Take("<b/>"));
  EXPECT_EQ(0, g_factory.count);
  EXPECT_EQ("true, at end, <r><item/></r>", trial.Take("<item/>"));
  EXPECT_EQ(1, g_factory.count);
  EXPECT_EQ("item", g_factory.last);
}

TEST_F(ElementInfoSeqCls, OptionalGroupIsKeptWhenItTookSomething) {
  for (const XmlElementType parent : {kReal, kPseudo}) {
    for (const Flag flag : {kNoFlag, kUnknownElements, kMissingMandatory}) {
      CTrial(OptOf(m_group, kPseudo), Unset::Object)
          .Expect({{"<v>1</v><w>2</w><b/>", parent, flag, "true, at b, <r><v>1</v><w>2</w></r>"},
                   {"<v>1</v><v>2</v>", parent, flag, "true, at v[2], <r><v>1</v></r>"},
                   {"<b/><v>1</v>", parent, flag, "true, at b, (null)"},
                   {"<o:v/>", parent, flag, "true, at o:v, (null)"},
                   {"", parent, flag, "true, at end, (null)"}});
    }
  }
}

TEST_F(ElementInfoSeqCls, OptionalGroupIsMadeForEveryChildThatIsOfferedToIt) {
  CTrial trial(OptOf(m_group, kPseudo), Unset::Object);
  EXPECT_EQ("true, at end, (null)", trial.Take(""));
  EXPECT_EQ(0, g_factory.count);
  EXPECT_EQ("true, at b, (null)", trial.Take("<b/>"));
  EXPECT_EQ(1, g_factory.count);
}

TEST_F(ElementInfoSeqCls, AttributesAloneDoNotKeepAnOptionalGroup) {
  CTrial trial(OptOf(m_group, kPseudo), Unset::Object);
  trial.rootAttributes = " id='7'";
  EXPECT_EQ("true, at b, (null)", trial.Take("<b/>"));
  EXPECT_EQ("true, at b, <r id=\"7\"><v>1</v></r>", trial.Take("<v>1</v><b/>"));
}

TEST_F(ElementInfoSeqCls, OptionalGroupThatCanNotBeFinishedGivesBackWhatItTook) {
  CTrial(OptOf(m_pair, kPseudo), Unset::Object)
      .Expect({{"<v>1</v><w>2</w>", kReal, kNoFlag, "true, at end, <r><v>1</v><w>2</w></r>"},
               {"<v>1</v><b/>", kReal, kNoFlag, "true, at v, (null)"},
               {"<v>1</v>", kPseudo, kNoFlag, "true, at v, (null)"},
               {"<b/><v>1</v>", kReal, kUnknownElements, "true, at b, (null)"}});
}
