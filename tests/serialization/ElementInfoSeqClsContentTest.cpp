#include "qzxml/serialization/ElementInfoSeq.h"
#include "tests/support/MemberTrial.h"
#include "tests/support/QzTest.h"

// Classes of a sequence: how the object of a child is written, what it may say of itself (nil, an
// empty choice), and how its failures come up.

using namespace QzXmlLib16;
using namespace QzXmlLib16Data;
using namespace qztest;

namespace {

using Mnd = CElementInfoSeqClsMnd;
using Opt = CElementInfoSeqClsOpt;

const std::string kLeftOver =
    "Failed read all the elements held within the element [item]. The unexpected element [x] "
    "remains un processed\nPath: /r/item";

Unset::Make HeldOf(const CTables& tables) {
  return Unset::Held([&tables] { return new CTableObject(tables, "item"); });
}

CElementInfo* MndOf(const CTables& tables, const char* uri) {
  return new Mnd("item", uri, 0, kReal, &MakeTableObject, tables.id(), false);
}
CElementInfo* OptOf(const CTables& tables, const char* uri) {
  return new Opt("item", uri, 0, kReal, &MakeTableObject, tables.id());
}

// The mandatory and the optional member, which write alike and fail alike inside the child.
struct Occurrence {
  const char* name;
  CElementInfo* (*make)(const CTables& tables, const char* uri);
} const kBoth[] = {{"mandatory", &MndOf}, {"optional", &OptOf}};

}  // namespace

// --- Writing

TEST(ElementInfoSeqClsContent, MissingObjectIsAFailureOfTheMandatoryMemberAlone) {
  const CTables item;
  for (const XmlElementType type : {kReal, kPseudo}) {
    CTrial mandatory(new Mnd("item", "", 0, type, &MakeTableObject, item.id(), false),
                     Unset::Object);
    EXPECT_QZ_THROW_FULL(CQzInvalidParamException,
                         "The Property [item] is mandatory, it may not be NULL", "",
                         mandatory.GiveOrThrow());
    CTrial optional(new Opt("item", "", 0, type, &MakeTableObject, item.id()), Unset::Object);
    EXPECT_EQ("false, <r/>", optional.Give());
  }
}

TEST(ElementInfoSeqClsContent, TagHasTheNameOfTheObjectAndTheNamespaceOfTheMember) {
  CTables item;
  item.uri = "urn:item";
  for (const Occurrence& member : kBoth) {
    CTrial trial(member.make(item, "urn:o"), Unset::Object);
    const CSmartPtr<CTableObject> child(new CTableObject(item, "other"));
    trial.value().SetXmlObject(child);
    EXPECT_EQ("true, <r><AA:other xmlns:AA=\"urn:o\"/></r>", trial.Give()) << member.name;
    EXPECT_EQ((std::vector<std::string>{"start r", "start other urn:o", "end", "end"}),
              trial.GiveCalls());
  }
}

TEST(ElementInfoSeqClsContent, GroupIsWrittenBetweenTheTagsOfItsParent) {
  CTables group(XmlElementGroupType_Sequence, kPseudo);
  group.Add(Prim<CElementInfoSeqPrimOpt>("v", 0), Unset::Value);
  CTrial trial(new Opt("item", "urn:o", 0, kPseudo, &MakeTableObject, group.id()), Unset::Object);
  const CSmartPtr<CTableObject> child(new CTableObject(group));
  trial.value().SetXmlObject(child);
  EXPECT_EQ("true, <r/>", trial.Give());
  child->Set(0, "1");
  EXPECT_EQ("true, <r><v>1</v></r>", trial.Give());
}

TEST(ElementInfoSeqClsContent, PropertyThatGivesNothingFailsWithTheNameOfTheMember) {
  const CTables item;
  for (const Occurrence& member : kBoth) {
    CTrial trial(member.make(item, ""), Unset::Object);
    trial.object().failsToGive = "Not now.";
    EXPECT_QZ_THROW_FULL(CQzValidationException,
                         "Failed to get the property value for [item].\nNot now.", "",
                         trial.GiveOrThrow());
  }
}

TEST(ElementInfoSeqClsContent, FailureInsideTheChildNamesEveryLevel) {
  CTables item;
  item.Add(Prim<CElementInfoSeqPrimMnd>("v", 0), Unset::Value);
  for (const Occurrence& member : kBoth) {
    CTables tables;
    tables.Add(member.make(item, ""), Unset::Object);
    CSmartPtr<CTableObject> object(new CTableObject(tables));
    CSmartPtr<CTableObject> child(new CTableObject(item, "item"));
    object->Set(0, child);
    EXPECT_QZ_THROW_FULL(CQzValidationException,
                         "Failed to convert the element [r] to XML\n"
                         "Failed to convert the element [item] to XML\n"
                         "The Property [v] is mandatory, it may not be NULL",
                         "", Text(*object));
  }
}

// --- What the object is told, and says

TEST(ElementInfoSeqClsContent, ChoiceInsideTheChildMayNotBeEmpty) {
  CTables choice(XmlElementGroupType_Choice);
  for (const Occurrence& member : kBoth) {
    CTrial trial(member.make(choice, ""), HeldOf(choice));
    trial.value().SetXmlObject(CSmartPtr<CTableObject>(new CTableObject(choice, "item")));
    EXPECT_EQ(
        "CQzValidationException: Failed to convert the element [item] to XML\n"
        "This element is a choice, and as such must have at one (and only one) valid item, "
        "currently there are none set",
        trial.Give());
    EXPECT_EQ("true, <r><item/></r>", trial.Give(Flagged(kMissingChoice)));
    trial.Expect({{"<item/>", kReal, kNoFlag,
                   "CQzException: No child elements within the element [item] were populated. The "
                   "element represents a choice, so one and only one element should be populated. "
                   "The element contained no sutable child elements\nPath: /r/item"},
                  {"<item/>", kReal, kMissingChoice, "true, at end, <r><item/></r>"}});
  }
}

TEST(ElementInfoSeqClsContent, NilIsTheBusinessOfTheChild) {
  CTables item;
  item.Add(Prim<CElementInfoSeqPrimMnd>("v", 0), Unset::Value);
  CTrial trial(MndOf(item, ""),
               Unset::Held([&item] { return new CNillableTableObject(item, "item"); }));
  trial.Expect(
      {{"<item xsi:nil='true'/><b/>", kReal, kNoFlag,
        "true, at b, <r><item xmlns:AA=\"" + std::string(kXsi) + "\" AA:nil=\"true\"/></r>"},
       {"<item xsi:nil='true'><x/></item>", kReal, kNoFlag,
        "true, at end, <r><item xmlns:AA=\"" + std::string(kXsi) + "\" AA:nil=\"true\"/></r>"},
       {"<item xsi:nil='0'><v>1</v></item>", kReal, kNoFlag,
        "true, at end, <r><item><v>1</v></item></r>"},
       {"<item xsi:nil='yes'/>", kReal, kNoFlag,
        "CQzException: Unexpected Value [yes] for 'nil' Attribute found.\nPath: "
        "/r/item/xsi:@nil"}});
  CTrial other(MndOf(item, ""), HeldOf(item));
  other.Expect({{"<item xsi:nil='true'/>", kReal, kUnknownAttributes,
                 "CQzException: Invalid use of 'nil' attribute in non-nillable element.\nPath: "
                 "/r/item"}});
}

TEST(ElementInfoSeqClsContent, AttributesOfTheSchemaMachineryAreNotUnknownOnAClass) {
  const CTables item;
  for (const Occurrence& member : kBoth) {
    CTrial(member.make(item, ""), HeldOf(item))
        .Expect({{"<item xmlns:p='urn:p' xsi:type='p:t' xsi:schemaLocation='a b'/>", kReal, kNoFlag,
                  "true, at end, <r><item/></r>"},
                 {"<item x='1'/>", kReal, kNoFlag,
                  "CQzException: Unexpected Attribute found.\nPath: /r/item/@x"},
                 {"<item x='1'/>", kReal, kUnknownAttributes, "true, at end, <r><item/></r>"}});
  }
}

// --- Failures of reading

TEST(ElementInfoSeqClsContent, FailureInsideTheChildHasThePathOfTheChild) {
  const CTables item;
  for (const Occurrence& member : kBoth) {
    for (const XmlElementType parent : {kReal, kPseudo}) {
      CTrial(member.make(item, ""), HeldOf(item))
          .Expect({{"<item><x/></item>", parent, kNoFlag, "CQzException: " + kLeftOver}});
    }
  }
}

TEST(ElementInfoSeqClsContent, PropertyThatRefusesTheObjectFailsWithThePathOfTheParent) {
  CTables item;
  CTables group(XmlElementGroupType_Sequence, kPseudo);
  group.Add(Prim<CElementInfoSeqPrimOpt>("v", 0), Unset::Value);
  group.failIfAttributeUnknown = false;
  CTrial real(OptOf(item, ""), Unset::Object);
  real.failsToTake = "No room.";
  EXPECT_QZ_THROW_FULL(CQzValidationException,
                       "Failed to set the property value.\nPath: /r\nNo room.", "/r",
                       real.TakeOrThrow("<item/>"));
  CTrial pseudo(new Opt("item", "", 0, kPseudo, &MakeTableObject, group.id()), Unset::Object);
  pseudo.failsToTake = "No room.";
  EXPECT_QZ_THROW_FULL(CQzValidationException,
                       "Failed to set the property value.\nPath: /r\nNo room.", "/r",
                       pseudo.TakeOrThrow("<v>1</v>"));
}

TEST(ElementInfoSeqClsContent, PropertyThatDoesNotGiveTheMandatoryObjectFailsWithTheMember) {
  const CTables item;
  CTrial trial(MndOf(item, ""), HeldOf(item));
  trial.failsToGive = "Not now.";
  EXPECT_QZ_THROW_FULL(CQzValidationException,
                       "Failed to get the property value for [item].\nNot now.", "",
                       trial.TakeOrThrow("<item/>"));
}

TEST(ElementInfoSeqClsContent, MandatoryObjectThatTheClassHasNotMadeAsserts) {
  const CTables item;
  CTrial trial(MndOf(item, ""), Unset::Object);
  EXPECT_QZ_ASSERT("p != 0", trial.TakeOrThrow("<item/>"));
}

TEST(ElementInfoSeqClsContent, FailuresOfReadingReachTheCallerWithPathAndChain) {
  CTables item;
  PrimOptions number;
  number.type = ItemType_i4;
  item.Add(Prim<CElementInfoSeqPrimOpt>("v", 0, number), Unset::Value);
  CTables tables;
  tables.Add(MndOf(item, ""), HeldOf(item));
  CSmartPtr<CTableObject> object(new CTableObject(tables));
  EXPECT_QZ_THROW_FULL(CQzException, "Failed to find the required child element [item].\nPath: /r",
                       "/r", object->FromXml("<r/>"));
  EXPECT_QZ_THROW_FULL(CQzException, kLeftOver, "/r/item",
                       object->FromXml("<r><item><x/></item></r>"));
  EXPECT_QZ_THROW_FULL(CQzException,
                       "Failed to process the element.\nPath: /r/item\n"
                       "The value [one] can not be converted to a i4",
                       "/r/item", object->FromXml("<r><item><v>one</v></item></r>"));
}
