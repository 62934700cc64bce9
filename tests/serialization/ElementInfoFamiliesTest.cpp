#include "qzxml/collections/Element.h"
#include "qzxml/collections/ElementCol.h"
#include "qzxml/serialization/ElementInfoAll.h"
#include "qzxml/serialization/ElementInfoChoice.h"
#include "qzxml/serialization/ElementInfoSeq.h"
#include "tests/support/GeneratedTable.h"
#include "tests/support/QzTest.h"

// Every class of members once: read, written, and what it says when its element is not there.

using namespace QzXmlLib16;
using namespace QzXmlLib16Data;
using namespace qztest;

namespace {

using Object = CSmartPtr<CTableObject>;

const char kXsi[] = "http://www.w3.org/2001/XMLSchema-instance";
constexpr XmlElementType kTag = XmlElementType_Element;
constexpr XmlElementType kNoTag = XmlElementType_PseudoElement;

// The classes that members of all families are about: a child with one text "t", a group of one
// text "t", and a derived class "D" of an abstract one, with one text "t".
struct Children {
  Children() : group(XmlElementGroupType_Sequence, kNoTag) {
    for (CTables* tables : {&child, &group, &derived}) {
      tables->Add(Prim<CElementInfoSeqPrimMnd>("t", 0), Unset::Value);
    }
    derived.name = "D";
    derived.hasBaseClasses = true;
  }
  Unset::Make HeldChild() const {
    return Unset::Held([this]() -> CXmlObjectBase* { return new CTableObject(child, "a"); });
  }
  Unset::Make HeldGroup() const {
    return Unset::Held([this]() -> CXmlObjectBase* { return new CTableObject(group, "g"); });
  }
  Unset::Make ChildCol() const {
    return Unset::Collection(
        [this]() -> CXmlCollectionBase* { return new CTableCol(child, "a", "", 1, -1); });
  }
  CTables child, group, derived;
};

Unset::Make HeldElement() {
  return Unset::Held([]() -> CXmlObjectBase* { return new CElement("a"); });
}
Unset::Make TextCol() {
  return Unset::Collection([]() -> CXmlCollectionBase* { return new CTextCol("a", "", 1, -1); });
}
Unset::Make ElementCol() {
  return Unset::Collection(
      []() -> CXmlCollectionBase* { return new CElementCol("", "##any", "", 1, -1); });
}

struct Member {
  const char* name;
  CElementInfo* info;
  Unset::Make unset;
  const char* content;  // of the root, as it is read and written
};

const char kText[] = "<a>x</a>";
const char kColour[] = "<a>red</a>";
const char kChild[] = "<a><t>x</t></a>";
const char kGroup[] = "<t>x</t>";
const char kDerived[] = "<a i:type=\"D\"><t>x</t></a>";
const char kOpen[] = "<a b=\"1\"><c/>x</a>";

// The members that every family has. The family's classes are named by their template argument.
template <typename ClsOpt, typename AbsClsOpt, typename PrimOpt, typename EnumOpt,
          typename UntpdOpt>
std::vector<Member> Optional(const Children& of) {
  return {{"ClsOpt", new ClsOpt("a", "", 0, kTag, &MakeTableObject, of.child.id()), Unset::Object,
           kChild},
          {"ClsOpt without a tag", new ClsOpt("g", "", 0, kNoTag, &MakeTableObject, of.group.id()),
           Unset::Object, kGroup},
          {"AbsClsOpt", new AbsClsOpt("a", "", 0, kTag, &MakeTableObjectByType), Unset::Object,
           kDerived},
          {"PrimOpt", Prim<PrimOpt>("a", 0), Unset::Value, kText},
          {"EnumOpt", Enum<EnumOpt>("a", 0), Unset::Value, kColour},
          {"UntpdOpt", new UntpdOpt("a", "", 0, "##any", ""), Unset::Object, kOpen},
          {"UntpdOpt of any name", new UntpdOpt("AnyElement", "", 0, "##any", ""), Unset::Object,
           kOpen}};
}

template <typename ClsMnd, typename AbsClsMnd, typename PrimMnd, typename EnumMnd,
          typename UntpdMnd>
std::vector<Member> Mandatory(const Children& of) {
  return {{"ClsMnd", new ClsMnd("a", "", 0, kTag, &MakeTableObject, of.child.id(), true),
           of.HeldChild(), kChild},
          {"ClsMnd without a tag",
           new ClsMnd("g", "", 0, kNoTag, &MakeTableObject, of.group.id(), true), of.HeldGroup(),
           kGroup},
          {"AbsClsMnd", new AbsClsMnd("a", "", 0, kTag, &MakeTableObjectByType), Unset::Object,
           kDerived},
          {"PrimMnd", Prim<PrimMnd>("a", 0), Unset::Value, kText},
          {"EnumMnd", Enum<EnumMnd>("a", 0), Unset::Value, kColour},
          {"UntpdMnd", new UntpdMnd("a", "urn:m", 0, "##any", ""), HeldElement(), kOpen}};
}

template <typename Col, typename ClsCol, typename AbsClsCol, typename PrimCol, typename UntpdCol>
std::vector<Member> Collections(const Children& of) {
  return {{"Col", new Col("a", "", 0), TextCol(), "<a>x</a><a>y</a>"},
          {"ClsCol", new ClsCol("a", "", 0, kTag), of.ChildCol(), "<a><t>x</t></a><a><t>y</t></a>"},
          {"AbsClsCol", new AbsClsCol("a", "", 0, kTag), of.ChildCol(),
           "<a><t>x</t></a><a><t>y</t></a>"},
          {"PrimCol", new PrimCol("a", "", 0), TextCol(), "<a>x</a><a>y</a>"},
          {"UntpdCol", new UntpdCol("a", "", 0), ElementCol(), "<a b=\"1\"/><a>x</a>"},
          {"UntpdCol of any name", new UntpdCol("AnyElement", "", 0), ElementCol(),
           "<a b=\"1\"/><b>x</b>"}};
}

// The class of one member, and the document of its content.
struct One {
  One(XmlElementGroupType group, const Member& member) : tables(group) {
    tables.Add(member.info, member.unset);
    object = Object(new CTableObject(tables));
    document = std::string("<r xmlns:i=\"") + kXsi + "\">" + member.content + "</r>";
  }
  CTables tables;
  Object object;
  std::string document;
};

CSerializationContext DeclaringXsi() {
  return With([](CSerializationContext& it) { it.GetNamespaceAliases().Add("i", kXsi); });
}

void ExpectRoundTrip(XmlElementGroupType group, const std::vector<Member>& members) {
  const CSerializationContext context = DeclaringXsi();
  for (const Member& member : members) {
    SCOPED_TRACE(member.name);
    const One one(group, member);
    one.object->FromXml(one.document.c_str());
    EXPECT_EQ(one.document, Text(*one.object, context));
  }
}

void ExpectOnlyWritten(XmlElementGroupType group, const std::vector<Member>& members) {
  for (const Member& member : members) {
    SCOPED_TRACE(member.name);
    const One one(group, member);
    EXPECT_QZ_THROW_FULL(CQzValidationException,
                         "Failed to process the element.\nPath: /r\n"
                         "Not implemented, should never be called",
                         "/r", one.object->FromXml(one.document.c_str()));
    EXPECT_EQ(one.document, Text(*one.object, DeclaringXsi()));
  }
}

// The document has no child; no failures means that each member may be missing.
void ExpectMissing(XmlElementGroupType group, const std::vector<Member>& members,
                   const std::vector<std::string>& failures) {
  if (!failures.empty()) {
    ASSERT_EQ(members.size(), failures.size());
  }
  for (std::size_t i = 0; i < members.size(); ++i) {
    SCOPED_TRACE(members[i].name);
    const One one(group, members[i]);
    if (failures.empty()) {
      one.object->FromXml("<r/>");
      continue;
    }
    try {
      one.object->FromXml("<r/>");
      ADD_FAILURE() << "threw nothing";
    } catch (const CQzException& e) {
      EXPECT_EQ(failures[i], e.GetFullMessage());
      EXPECT_EQ("/r", e.GetPath());
    }
  }
}

std::vector<Member> SeqMandatory(const Children& of) {
  return Mandatory<CElementInfoSeqClsMnd, CElementInfoSeqAbsClsMnd, CElementInfoSeqPrimMnd,
                   CElementInfoSeqEnumMnd, CElementInfoSeqUntpdMnd>(of);
}
std::vector<Member> AllMandatory(const Children& of) {
  return Mandatory<CElementInfoAllClsMnd, CElementInfoAllAbsClsMnd, CElementInfoAllPrimMnd,
                   CElementInfoAllEnumMnd, CElementInfoAllUntpdMnd>(of);
}
std::vector<Member> SeqOptional(const Children& of) {
  return Optional<CElementInfoSeqClsOpt, CElementInfoSeqAbsClsOpt, CElementInfoSeqPrimOpt,
                  CElementInfoSeqEnumOpt, CElementInfoSeqUntpdOpt>(of);
}
std::vector<Member> AllOptional(const Children& of) {
  return Optional<CElementInfoAllClsOpt, CElementInfoAllAbsClsOpt, CElementInfoAllPrimOpt,
                  CElementInfoAllEnumOpt, CElementInfoAllUntpdOpt>(of);
}
std::vector<Member> ChoiceOptional(const Children& of) {
  return Optional<CElementInfoChoiceClsOpt, CElementInfoChoiceAbsClsOpt, CElementInfoChoicePrimOpt,
                  CElementInfoChoiceEnumOpt, CElementInfoChoiceUntpdOpt>(of);
}

std::string MissingChild(const char* name) {
  return std::string("Failed to find the required child element [") + name + "].\nPath: /r";
}
std::string NotFound(const char* name) {
  return std::string("Failed to process the element.\nPath: /r\n") +
         "Failed to find the mandatory element [" + name + "].";
}

}  // namespace

TEST(ElementInfoFamilies, MembersOfASequenceAreReadAndWritten) {
  const Children of;
  ExpectRoundTrip(XmlElementGroupType_Sequence, SeqMandatory(of));
  ExpectRoundTrip(XmlElementGroupType_Sequence, SeqOptional(of));
  ExpectRoundTrip(XmlElementGroupType_Sequence,
                  Collections<CElementInfoSeqCol, CElementInfoSeqClsCol, CElementInfoSeqAbsClsCol,
                              CElementInfoSeqPrimCol, CElementInfoSeqUntpdCol>(of));
  ExpectRoundTrip(XmlElementGroupType_Sequence,
                  {{"EnumCol", new CElementInfoSeqEnumCol("a", "", 0), TextCol(), kColour}});
}

TEST(ElementInfoFamilies, MembersOfAnAllAreReadAndWritten) {
  const Children of;
  ExpectRoundTrip(XmlElementGroupType_All, AllMandatory(of));
  ExpectRoundTrip(XmlElementGroupType_All, AllOptional(of));
  ExpectRoundTrip(XmlElementGroupType_All,
                  {{"AbsClsMnd without a tag",
                    new CElementInfoAllAbsClsMnd("g", "", 0, kNoTag,
                                                 [](CXmlElement*) {
                                                   static const Children s_of;
                                                   return MakeTableObject(s_of.group.id(), "g");
                                                 }),
                    Unset::Object, kGroup}});
}

TEST(ElementInfoFamilies, CollectionsOfAnAllAreOnlyWritten) {
  const Children of;
  // What the failed reading took is there to be written.
  ExpectOnlyWritten(XmlElementGroupType_All,
                    Collections<CElementInfoAllCol, CElementInfoAllClsCol, CElementInfoAllAbsClsCol,
                                CElementInfoAllPrimCol, CElementInfoAllUntpdCol>(of));
}

TEST(ElementInfoFamilies, MembersOfAChoiceAreReadAndWritten) {
  const Children of;
  ExpectRoundTrip(XmlElementGroupType_Choice, ChoiceOptional(of));
  ExpectRoundTrip(
      XmlElementGroupType_Choice,
      Collections<CElementInfoChoiceCol, CElementInfoChoiceClsCol, CElementInfoChoiceAbsClsCol,
                  CElementInfoChoicePrimCol, CElementInfoChoiceUntpdCol>(of));
  ExpectRoundTrip(XmlElementGroupType_Choice,
                  {{"EnumCol", new CElementInfoChoiceEnumCol("a", "", 0), TextCol(), kColour}});
}

TEST(ElementInfoFamilies, MissingMembersOfASequence) {
  const Children of;
  ExpectMissing(XmlElementGroupType_Sequence, SeqMandatory(of),
                {MissingChild("a"), MissingChild("g"),
                 "Failed to find a suitable substitution element for [a].\nPath: /r",
                 MissingChild("a"), MissingChild("a"), MissingChild("a")});
  ExpectMissing(XmlElementGroupType_Sequence, SeqOptional(of), {});
}

TEST(ElementInfoFamilies, MissingMembersOfAnAll) {
  const Children of;
  ExpectMissing(
      XmlElementGroupType_All, AllMandatory(of),
      {NotFound("a"), NotFound("g"), NotFound("a"), NotFound("a"), NotFound("a"), NotFound("a")});
  ExpectMissing(XmlElementGroupType_All, AllOptional(of), {});
}

TEST(ElementInfoFamilies, MissingMembersOfAChoice) {
  const Children of;
  ExpectMissing(XmlElementGroupType_Choice, ChoiceOptional(of), {});
}

TEST(ElementInfoFamilies, ElementFromAnotherNamespaceThanTheOpenElementAllows) {
  const One one(
      XmlElementGroupType_Sequence,
      {"UntpdMnd", new CElementInfoSeqUntpdMnd("a", "urn:m", 0, "##local", ""),
       Unset::Held([]() -> CXmlObjectBase* { return new CElement("a", "", "##local", ""); }), ""});
  EXPECT_QZ_THROW_FULL(CQzException,
                       "Failed to find the required element from namespace [urn:m].\nPath: /r",
                       "/r", one.object->FromXml("<r><a xmlns='urn:other'/></r>"));
  EXPECT_QZ_THROW_FULL(CQzException,
                       "Failed to find the required element from namespace [urn:m].\nPath: /r",
                       "/r", one.object->FromXml("<r><b/></r>"));
}

TEST(ElementInfoFamilies, MandatoryMembersThatAreNotSetAreNotWritten) {
  const Children of;
  const auto expectFailure = [](XmlElementGroupType group, CElementInfo* info,
                                const Unset::Make& unset) {
    const One one(group, {"", info, unset, ""});
    EXPECT_QZ_THROW_FULL(CQzValidationException,
                         "Failed to convert the element [r] to XML\n"
                         "The Property [a] is mandatory, it may not be NULL",
                         "", Text(*one.object));
  };
  const XmlElementGroupType seq = XmlElementGroupType_Sequence;
  const XmlElementGroupType all = XmlElementGroupType_All;
  expectFailure(seq, new CElementInfoSeqClsMnd("a", "", 0, kTag, nullptr, 0, true), Unset::Object);
  expectFailure(seq, new CElementInfoSeqAbsClsMnd("a", "", 0, kTag, nullptr), Unset::Object);
  expectFailure(seq, Prim<CElementInfoSeqPrimMnd>("a", 0), Unset::Value);
  expectFailure(seq, Enum<CElementInfoSeqEnumMnd>("a", 0), Unset::Value);
  expectFailure(seq, new CElementInfoSeqUntpdMnd("a", "", 0, "##any", ""), Unset::Object);
  expectFailure(all, new CElementInfoAllClsMnd("a", "", 0, kTag, nullptr, 0, true), Unset::Object);
  expectFailure(all, new CElementInfoAllAbsClsMnd("a", "", 0, kTag, nullptr), Unset::Object);
  expectFailure(all, Prim<CElementInfoAllPrimMnd>("a", 0), Unset::Value);
  expectFailure(all, Enum<CElementInfoAllEnumMnd>("a", 0), Unset::Value);
  expectFailure(all, new CElementInfoAllUntpdMnd("a", "", 0, "##any", ""), Unset::Object);
}

// A factory that finds no class for an element.
TEST(ElementInfoFamilies, ElementThatSuitsNoClass) {
  const char kUnknown[] =
      "<r xmlns:i='http://www.w3.org/2001/XMLSchema-instance'><a i:type='Unknown'/></r>";
  const std::string leftOver =
      "Failed read all the elements held within the element [r]. The unexpected element [a] "
      "remains un processed\nPath: /r";
  const auto expectFailure = [&](XmlElementGroupType group, CElementInfo* info,
                                 const std::string& expected) {
    const One one(group, {"", info, Unset::Object, ""});
    try {
      one.object->FromXml(kUnknown);
      ADD_FAILURE() << "threw nothing: " << expected;
    } catch (const CQzException& e) {
      EXPECT_EQ(expected, e.GetFullMessage());
    }
  };
  expectFailure(XmlElementGroupType_Sequence,
                new CElementInfoSeqAbsClsMnd("a", "", 0, kTag, &MakeTableObjectByType),
                "Failed to find a suitable substitution element for [a].\nPath: /r");
  expectFailure(XmlElementGroupType_Sequence,
                new CElementInfoSeqAbsClsOpt("a", "", 0, kTag, &MakeTableObjectByType), leftOver);
  expectFailure(XmlElementGroupType_All,
                new CElementInfoAllAbsClsMnd("a", "", 0, kTag, &MakeTableObjectByType),
                NotFound("a"));
  expectFailure(XmlElementGroupType_All,
                new CElementInfoAllAbsClsOpt("a", "", 0, kTag, &MakeTableObjectByType), leftOver);
  expectFailure(XmlElementGroupType_Choice,
                new CElementInfoChoiceAbsClsOpt("a", "", 0, kTag, &MakeTableObjectByType),
                leftOver);
}
