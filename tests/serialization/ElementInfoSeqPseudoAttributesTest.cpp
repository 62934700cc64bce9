#include "qzxml/collections/Element.h"
#include "qzxml/collections/ElementCol.h"
#include "qzxml/serialization/AttributeInfo.h"
#include "qzxml/serialization/ElementInfoSeq.h"
#include "tests/support/MemberTrial.h"
#include "tests/support/QzTest.h"

// Attributes of children without a tag: they land on the start tag of the element around them,
// behind its own, in the order of the members.

using namespace QzXmlLib16;
using namespace QzXmlLib16Data;
using namespace qztest;

namespace {

using Object = CSmartPtr<CTableObject>;

CAttributeInfo* Attribute(const char* name, int index) {
  return new CAttributeInfoPrimitive(name, "", index, true, ItemType_string, nullptr,
                                     CWhitespaceUtils::WhitespaceRule_None,
                                     CPrimitiveRestrictions(), nullptr);
}

// A class with an attribute at index 0.
class Attributed : public CTables {
 public:
  Attributed(const char* attribute, XmlElementType type = kPseudo)
      : CTables(XmlElementGroupType_Sequence, type) {
    failIfAttributeUnknown = type == kReal;
    Add(Attribute(attribute, 0), Unset::Value);
  }
  Object New(const char* value) const {
    Object object(new CTableObject(*this, "g"));
    object->Set(0, value);
    return object;
  }
};

// The members that may have a child without a tag, of a class and of a collection of it.
template <typename Member>
CElementInfo* Cls(const CTables& of, XmlElementType type, int index = 0) {
  return new Member("g", "", index, type, &MakeTableObject, of.id());
}
template <>
CElementInfo* Cls<CElementInfoSeqClsMnd>(const CTables& of, XmlElementType type, int index) {
  return new CElementInfoSeqClsMnd("g", "", index, type, &MakeTableObject, of.id(), false);
}
template <typename Member>
CElementInfo* AbsCls(const CTables&, XmlElementType type, int index = 0) {
  return new Member("g", "", index, type, &MakeTableObjectByType);
}
template <typename Member>
CElementInfo* Col(const CTables&, XmlElementType type, int index = 0) {
  return new Member("g", "", index, type);
}

struct Kind {
  const char* name;
  CElementInfo* (*make)(const CTables& of, XmlElementType type, int index);
};
const Kind kClasses[] = {{"ClsMnd", &Cls<CElementInfoSeqClsMnd>},
                         {"ClsOpt", &Cls<CElementInfoSeqClsOpt>},
                         {"AbsClsMnd", &AbsCls<CElementInfoSeqAbsClsMnd>},
                         {"AbsClsOpt", &AbsCls<CElementInfoSeqAbsClsOpt>}};
const Kind kCollections[] = {{"ClsCol", &Col<CElementInfoSeqClsCol>},
                             {"AbsClsCol", &Col<CElementInfoSeqAbsClsCol>}};

// What a member calls of the writer for the attributes of its child.
std::vector<std::string> Calls(const CElementInfo& member, const CTableObject& object) {
  CRecordingWriter writer;
  writer.WriteStartElement("r", "");
  writer.calls.clear();
  member.PseudoChildAttributeToXml({}, &object, &writer);
  const std::vector<std::string> calls = writer.calls;
  writer.WriteEndElement();
  return calls;
}

const std::vector<std::string> kNoCalls;

}  // namespace

TEST(ElementInfoSeqPseudoAttributes, AreThoseOfAChildWithoutATagAlone) {
  const Attributed group("id");
  for (const Kind& kind : kClasses) {
    const struct {
      XmlElementType type;
      std::vector<std::string> calls;
    } cases[] = {{kPseudo, {"attribute id 7"}},
                 {kReal, kNoCalls},
                 {static_cast<XmlElementType>(2), kNoCalls}};
    for (const auto& c : cases) {
      CTrial trial(kind.make(group, c.type, 0), Unset::Object);
      trial.value().SetXmlObject(group.New("7"));
      EXPECT_EQ(c.calls, Calls(trial.member(), trial.object())) << kind.name << " " << c.type;
    }
  }
}

TEST(ElementInfoSeqPseudoAttributes, ChildThatIsNotThereHasNone) {
  const Attributed group("id");
  for (const Kind& kind : kClasses) {
    CTrial trial(kind.make(group, kPseudo, 0), Unset::Object);
    EXPECT_EQ(kNoCalls, Calls(trial.member(), trial.object())) << kind.name;
  }
}

TEST(ElementInfoSeqPseudoAttributes, CollectionGivesThoseOfEachItem) {
  const Attributed group("id");
  const auto items = Unset::Collection(
      [&group]() -> CXmlCollectionBase* { return new CTableCol(group, "g", "", 0, -1); });
  for (const Kind& kind : kCollections) {
    for (const XmlElementType type : {kPseudo, kReal, static_cast<XmlElementType>(2)}) {
      CTrial trial(kind.make(group, type, 0), items);
      EXPECT_EQ(kNoCalls, Calls(trial.member(), trial.object())) << kind.name;
      CXmlCollectionBase* const collection = trial.value().GetXmlCollection();
      for (const char* id : {"7", "8"}) static_cast<CTableCol*>(collection)->Add()->Set(0, id);
      EXPECT_EQ(type == kPseudo ? (std::vector<std::string>{"attribute id 7", "attribute id 8"})
                                : kNoCalls,
                Calls(trial.member(), trial.object()))
          << kind.name << " " << type;
    }
  }
}

TEST(ElementInfoSeqPseudoAttributes, OtherMembersNeverReadTheirPropertyForThem) {
  CElementInfo* const members[] = {
      Prim<CElementInfoSeqPrimMnd>("g", 0),
      Prim<CElementInfoSeqPrimOpt>("g", 0),
      Enum<CElementInfoSeqEnumMnd>("g", 0),
      Enum<CElementInfoSeqEnumOpt>("g", 0),
      new CElementInfoSeqUntpdMnd("g", "", 0, "##any", ""),
      new CElementInfoSeqUntpdOpt("g", "", 0, "##any", ""),
      new CElementInfoSeqCol("g", "", 0),
      new CElementInfoSeqEnumCol("g", "", 0),
      new CElementInfoSeqPrimCol("g", "", 0),
      new CElementInfoSeqUntpdCol("g", "", 0),
  };
  for (CElementInfo* const member : members) {
    CTrial trial(member, Unset::Value);
    trial.object().failsToGive = "Nobody asks.";
    EXPECT_EQ(kNoCalls, Calls(trial.member(), trial.object()));
  }
}

TEST(ElementInfoSeqPseudoAttributes, PropertyThatGivesNothingFailsWithTheNameOfTheMember) {
  const Attributed group("id");
  for (const Kind& kind : kClasses) {
    CTables tables;
    tables.Add(kind.make(group, kPseudo, 0), Unset::Object);
    Object object(new CTableObject(tables));
    object->failsToGive = "Not now.";
    EXPECT_QZ_THROW_FULL(CQzValidationException,
                         "Failed to convert the element [r] to XML\n"
                         "Failed to convert attributes to XML\n"
                         "Failed to get the property value for [g].\nNot now.",
                         "", Text(*object));
  }
}

TEST(ElementInfoSeqPseudoAttributes, FailureOfAnAttributeIsWrappedByTheChildToo) {
  CTables group(XmlElementGroupType_Sequence, kPseudo);
  group.Add(
      new CAttributeInfoPrimitive(
          "id", "", 0, true, ItemType_i4, nullptr, CWhitespaceUtils::WhitespaceRule_None,
          CPrimitiveRestrictions(nullptr, -1, -1, "10", nullptr, nullptr, nullptr, -1, -1, -1),
          nullptr),
      Unset::Value);
  CTables tables;
  tables.Add(Cls<CElementInfoSeqClsOpt>(group, kPseudo), Unset::Object);
  Object object(new CTableObject(tables));
  Object child(new CTableObject(group));
  (*child)[0].SetI4(9);
  object->Set(0, child);
  EXPECT_QZ_THROW_FULL(CQzValidationException,
                       "Failed to convert the element [r] to XML\n"
                       "Failed to convert attributes to XML\n"
                       "Failed to convert attributes to XML\n"
                       "Invalid Value for id [9]",
                       "", Text(*object));
}

// --- On the start tag of the element around them

TEST(ElementInfoSeqPseudoAttributes, StandBehindTheClassesOwnInTheOrderOfTheMembers) {
  const Attributed innermost("inner");
  Attributed middle("middle");
  middle.Add(Cls<CElementInfoSeqClsOpt>(innermost, kPseudo, 1), Unset::Object);
  const Attributed real("real", kReal);
  const Attributed last("last");

  CTables tables;
  tables.failIfAttributeUnknown = false;
  tables.Add(Cls<CElementInfoSeqClsMnd>(middle, kPseudo, 0), Unset::Object);
  tables.Add(Cls<CElementInfoSeqClsOpt>(real, kReal, 1), Unset::Object);
  tables.Add(Prim<CElementInfoSeqPrimOpt>("p", 2), Unset::Value);
  tables.Add(Cls<CElementInfoSeqClsOpt>(last, kPseudo, 3), Unset::Object);
  tables.Add(Attribute("first", 4), Unset::Value);
  tables.Add(Attribute("second", 5), Unset::Value);

  Object object(new CTableObject(tables));
  const Object child = middle.New("3");
  child->Set(1, innermost.New("4"));
  object->Set(0, child);
  object->Set(1, real.New("x"));
  object->Set(2, "text");
  object->Set(3, last.New("5"));
  object->Set(4, "1");
  object->Set(5, "2");
  EXPECT_EQ(
      "<r first=\"1\" second=\"2\" middle=\"3\" inner=\"4\" last=\"5\"><g real=\"x\"/>"
      "<p>text</p></r>",
      Text(*object));
}

TEST(ElementInfoSeqPseudoAttributes, AreReadBackFromTheElementAroundThem) {
  Attributed group("id");
  group.Add(Prim<CElementInfoSeqPrimOpt>("v", 1), Unset::Value);
  CTables tables;
  tables.failIfAttributeUnknown = false;
  tables.Add(Cls<CElementInfoSeqClsMnd>(group, kPseudo),
             Unset::Held([&group] { return new CTableObject(group, "g"); }));
  Object object(new CTableObject(tables));
  for (const char* document : {"<r id=\"7\"><v>1</v></r>", "<r id=\"7\"/>", "<r><v>1</v></r>"}) {
    object->FromXml(document);
    EXPECT_EQ(document, Text(*object));
  }
}

TEST(ElementInfoSeqPseudoAttributes, TypeOfADerivedGroupIsAmongThem) {
  Attributed group("id");
  group.name = "Group";
  group.hasBaseClasses = true;
  CTables tables;
  tables.Add(Cls<CElementInfoSeqClsOpt>(group, kPseudo), Unset::Object);
  Object object(new CTableObject(tables));
  object->Set(0, group.New("7"));
  EXPECT_EQ("<r xmlns:AA=\"" + std::string(kXsi) + "\" AA:type=\"Group\" id=\"7\"/>",
            Text(*object));
}
