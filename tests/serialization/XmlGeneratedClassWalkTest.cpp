#include "qzxml/serialization/ElementInfoAll.h"
#include "qzxml/serialization/ElementInfoChoice.h"
#include "qzxml/serialization/ElementInfoSeq.h"
#include "qzxml/serialization/XmlGeneratedClass.h"
#include "qzxml/xml/XmlDocument.h"
#include "qzxml/xml/XmlElement.h"
#include "tests/support/GeneratedTable.h"
#include "tests/support/QzTest.h"

// The three ways of reading the children of an element, what they do with what is left over, and
// what goes around a failure.

using namespace QzXmlLib16;
using namespace QzXmlLib16Data;
using namespace qztest;

namespace {

using Context = CSerializationContext;
using Object = CSmartPtr<CTableObject>;

Object New(const CTables& tables, const char* name = "r") {
  return Object(new CTableObject(tables, name));
}

PrimOptions OfType(ItemType type) {
  PrimOptions options;
  options.type = type;
  return options;
}

const Context& IgnoringUnknown() {
  static const Context s_context = Ignoring(&Context::SetIgnoreUnknownElements);
  return s_context;
}

// A document whose root the class reads, and where its cursor stood behind that.
class Reading {
 public:
  explicit Reading(const char* text) { m_document.LoadXml(text); }

  // The name of the element where the walk stopped, with its place; "(end)" for null.
  std::string Walk(CTableObject& object, const Context& context = Context(),
                   bool optionalChoice = false) {
    CXmlElement* const root = m_document.GetDocumentElement();
    const CXmlElement* const cursor =
        object.FromXml_Int(root, root->GetFirstElement(), context, optionalChoice);
    return cursor != nullptr ? cursor->GetXPath() : "(end)";
  }

 private:
  CXmlDocument m_document;
};

std::string LeftOver(const char* element) {
  return std::string(
             "Failed read all the elements held within the element [r]. The unexpected "
             "element [") +
         element + "] remains un processed\nPath: /r";
}

const char kNothingChosen[] =
    "No child elements within the element [r] were populated. The element represents a choice, so "
    "one and only one element should be populated. The element contained no sutable child "
    "elements\nPath: /r";

template <typename Member>
void AddPrims(CTables& tables, const std::vector<const char*>& names) {
  int index = 0;
  for (const char* name : names) tables.Add(Prim<Member>(name, index++), Unset::Value);
}

Unset::Make Texts(const char* name, int minOccurs, int maxOccurs) {
  return Unset::Collection(
      [=]() -> CXmlCollectionBase* { return new CTextCol(name, "", minOccurs, maxOccurs); });
}

std::vector<std::string> TextsIn(CTableObject& object, std::size_t index) {
  CXmlCollectionBase* const collection = object[index].GetXmlCollection();
  return static_cast<CTextCol*>(collection)->texts;
}

// A member that notes what the walk hands to it, and takes the element of its name.
class CSpy : public CElementInfo {
 public:
  explicit CSpy(const char* name) : CElementInfo(name, "", 0) {}
  bool ElementToXml(const CSerializationContext&, const CXmlGeneratedClass*,
                    CXmlWriter*) const override {
    return false;
  }
  bool ElementFromXml(const CSerializationContext& context, CXmlGeneratedClass*, CXmlElement*,
                      CXmlElement** current, const char* parentNamespace,
                      XmlElementType parentType) override {
    ++calls;
    itsNamespace = parentNamespace;
    itsType = parentType;
    if (!IsThisElement(context, *current)) return false;
    *current = (*current)->GetNextSiblingElement();
    return true;
  }
  int calls = 0;
  std::string itsNamespace = "(none)";
  XmlElementType itsType = XmlElementType_Element;
};

}  // namespace

// --- Sequence

TEST(XmlGeneratedClassSeq, ReadsTheMembersInTheOrderOfTheTable) {
  CTables tables;
  AddPrims<CElementInfoSeqPrimMnd>(tables, {"a", "b"});
  const Object object = New(tables);
  EXPECT_EQ("(end)", Reading("<r><a>1</a><b>2</b></r>").Walk(*object));
  EXPECT_EQ("1", object->TextOf(0));
  EXPECT_EQ("2", object->TextOf(1));
  EXPECT_QZ_THROW_FULL(CQzException, "Failed to find the required child element [a].\nPath: /r",
                       "/r", object->FromXml("<r><b>2</b><a>1</a></r>"));
}

TEST(XmlGeneratedClassSeq, ElementLeftOverFails) {
  CTables tables;
  AddPrims<CElementInfoSeqPrimOpt>(tables, {"a", "b"});
  const Object object = New(tables);
  EXPECT_QZ_THROW_FULL(CQzException, LeftOver("x"), "/r",
                       object->FromXml("<r><a>1</a><x/><b>2</b></r>"));
  EXPECT_EQ("1", object->TextOf(0));  // what was read stays
  EXPECT_QZ_THROW_FULL(CQzException, LeftOver("a"), "/r", object->FromXml("<r><b/><a/></r>"));
  EXPECT_QZ_THROW_FULL(CQzException, LeftOver("b"), "/r", object->FromXml("<r><b/><b/></r>"));
}

TEST(XmlGeneratedClassSeq, UnknownElementsBehindTheLastMemberAreSkipped) {
  CTables tables;
  AddPrims<CElementInfoSeqPrimOpt>(tables, {"a", "b"});
  for (const char* text : {"<r><a>1</a><b>2</b><x/></r>", "<r><a>1</a><b>2</b><x/><y/><z/></r>"}) {
    const Object object = New(tables);
    EXPECT_EQ("(end)", Reading(text).Walk(*object, IgnoringUnknown())) << text;
    EXPECT_EQ("1", object->TextOf(0));
    EXPECT_EQ("2", object->TextOf(1));
  }
}

TEST(XmlGeneratedClassSeq, UnknownElementsInFrontOfAMandatoryMemberAreSkipped) {
  CTables tables;
  AddPrims<CElementInfoSeqPrimMnd>(tables, {"a", "b"});
  const Object object = New(tables);
  EXPECT_EQ("(end)",
            Reading("<r><x/><y/><a>1</a><x/><b>2</b><z/></r>").Walk(*object, IgnoringUnknown()));
  EXPECT_EQ("1", object->TextOf(0));
  EXPECT_EQ("2", object->TextOf(1));
  EXPECT_QZ_THROW_FULL(CQzException, "Failed to find the required child element [b].\nPath: /r",
                       "/r", object->FromXml("<r><a>1</a><x/></r>", IgnoringUnknown()));
}

TEST(XmlGeneratedClassSeq, LastMemberIsAskedAgainBehindUnknownElements) {
  CTables tables;
  tables.Add(Prim<CElementInfoSeqPrimOpt>("a", 0), Unset::Value);
  tables.Add(new CElementInfoSeqPrimCol("b", "", 1), Texts("b", 0, -1));
  const Object object = New(tables);
  EXPECT_EQ("(end)", Reading("<r><a>1</a><b>1</b><x/><b>2</b><b>3</b><a>2</a><y/><b>4</b></r>")
                         .Walk(*object, IgnoringUnknown()));
  EXPECT_EQ("1", object->TextOf(0));
  EXPECT_EQ((std::vector<std::string>{"1", "2", "3", "4"}), TextsIn(*object, 1));
}

TEST(XmlGeneratedClassSeq, MandatoryLastMemberThatIsAskedAgainMustBeThereAgain) {
  CTables tables;
  AddPrims<CElementInfoSeqPrimMnd>(tables, {"a"});
  const Object object = New(tables);
  // One element behind it ends the document; with two, the member looks for itself once more.
  EXPECT_EQ("(end)", Reading("<r><a>1</a><x/></r>").Walk(*object, IgnoringUnknown()));
  EXPECT_EQ("(end)", Reading("<r><a>1</a><x/><y/><a>2</a></r>").Walk(*object, IgnoringUnknown()));
  EXPECT_EQ("2", object->TextOf(0));
  EXPECT_QZ_THROW_FULL(CQzException, "Failed to find the required child element [a].\nPath: /r",
                       "/r", object->FromXml("<r><a>1</a><x/><y/></r>", IgnoringUnknown()));
}

TEST(XmlGeneratedClassSeq, ClassWithoutMembersTakesNothing) {
  CTables tables;
  const Object object = New(tables);
  EXPECT_EQ("(end)", Reading("<r/>").Walk(*object));
  EXPECT_QZ_THROW_FULL(CQzException, LeftOver("x"), "/r", object->FromXml("<r><x/></r>"));
  EXPECT_EQ("(end)", Reading("<r><x/><y/></r>").Walk(*object, IgnoringUnknown()));
}

TEST(XmlGeneratedClassSeq, MemberThatDoesNotMatchSendsTheWalkBack) {
  CTables group(XmlElementGroupType_Sequence, XmlElementType_PseudoElement);
  AddPrims<CElementInfoSeqPrimMnd>(group, {"a", "b"});
  const Object object = New(group);
  EXPECT_EQ("/r/a", Reading("<r><a>1</a><x/></r>").Walk(*object));
  EXPECT_EQ("/r/a", Reading("<r><a>1</a></r>").Walk(*object));
  EXPECT_EQ("/r/a", Reading("<r><a>1</a><x/></r>").Walk(*object, IgnoringUnknown()));
  EXPECT_EQ("/r/c", Reading("<r><a>1</a><b>2</b><c/></r>").Walk(*object));
  EXPECT_EQ("(end)", Reading("<r><x/><a>1</a><x/><b>2</b></r>").Walk(*object, IgnoringUnknown()));
}

TEST(XmlGeneratedClassSeq, WalkSkipsUnknownElementsForAMemberThatLeavesItToTheWalk) {
  CTables tables;
  CSpy* const spy = new CSpy("a");
  tables.Add(spy, Unset::Value);
  const Object object = New(tables);
  EXPECT_EQ("(end)", Reading("<r><x/><y/><a/></r>").Walk(*object, IgnoringUnknown()));
  EXPECT_EQ(3, spy->calls);
  EXPECT_EQ("/r/x", Reading("<r><x/><y/></r>").Walk(*object, IgnoringUnknown()));
  EXPECT_EQ("/r/x", Reading("<r><x/><a/></r>").Walk(*object));
}

// --- All

TEST(XmlGeneratedClassAll, ReadsMembersInAnyOrderAndWritesThemInTheOrderOfTheTable) {
  CTables tables(XmlElementGroupType_All);
  AddPrims<CElementInfoAllPrimMnd>(tables, {"a", "b", "c"});
  for (const char* text : {"<r><a>1</a><b>2</b><c>3</c></r>", "<r><c>3</c><b>2</b><a>1</a></r>",
                           "<r><b>2</b><c>3</c><a>1</a></r>", "<r><c>3</c><a>1</a><b>2</b></r>"}) {
    const Object object = New(tables);
    EXPECT_EQ("(end)", Reading(text).Walk(*object)) << text;
    EXPECT_EQ("<r><a>1</a><b>2</b><c>3</c></r>", Text(*object)) << text;
  }
}

TEST(XmlGeneratedClassAll, EveryMemberIsValidatedWhenAllChildrenAreTaken) {
  CTables tables(XmlElementGroupType_All);
  AddPrims<CElementInfoAllPrimMnd>(tables, {"a", "b"});
  const Object object = New(tables);
  EXPECT_QZ_THROW_FULL(CQzValidationException,
                       "Failed to process the element.\nPath: /r\n"
                       "Failed to find the mandatory element [b].",
                       "/r", object->FromXml("<r><a>1</a></r>"));
  EXPECT_QZ_THROW_FULL(CQzValidationException,
                       "Failed to process the element.\nPath: /r\n"
                       "Failed to find the mandatory element [a].",
                       "/r", object->FromXml("<r/>"));
  // The context lets a sequence do without, not this one.
  EXPECT_THROW(object->FromXml("<r/>", Ignoring(&Context::SetIgnoreMissingMandatoryElements)),
               CQzValidationException);
}

TEST(XmlGeneratedClassAll, ElementLeftOverFailsOrIsIgnored) {
  CTables tables(XmlElementGroupType_All);
  AddPrims<CElementInfoAllPrimOpt>(tables, {"a", "b"});
  const Object object = New(tables);
  EXPECT_QZ_THROW_FULL(CQzException, LeftOver("x"), "/r",
                       object->FromXml("<r><b>2</b><x/><a>1</a></r>"));
  EXPECT_QZ_THROW_FULL(CQzException, LeftOver("a"), "/r", object->FromXml("<r><a/><a/></r>"));
  // Meant: an unknown element ends the reading, it is not skipped.
  EXPECT_EQ("/r/x", Reading("<r><b>2</b><x/><a>1</a></r>").Walk(*object, IgnoringUnknown()));
  EXPECT_EQ("(unset)", object->TextOf(0));
  EXPECT_EQ("2", object->TextOf(1));
}

TEST(XmlGeneratedClassAll, GroupWithoutAMandatoryMemberGivesTheCursorBack) {
  CTables group(XmlElementGroupType_All, XmlElementType_PseudoElement);
  group.Add(Prim<CElementInfoAllPrimOpt>("a", 0), Unset::Value);
  group.Add(Prim<CElementInfoAllPrimMnd>("b", 1), Unset::Value);
  const Object object = New(group);
  EXPECT_EQ("/r/a", Reading("<r><a>1</a><x/></r>").Walk(*object));
  EXPECT_EQ("/r/x", Reading("<r><b>2</b><a>1</a><x/></r>").Walk(*object));
}

TEST(XmlGeneratedClassAll, MoreMembersThanAWordHasBitsAreAllFound) {
  CTables tables(XmlElementGroupType_All);
  std::string document = "<r>";
  for (int i = 0; i < 100; ++i) {
    const std::string name = "e" + std::to_string(i);
    tables.Add(Prim<CElementInfoAllPrimMnd>(name.c_str(), i), Unset::Value);
    document += "<e" + std::to_string(99 - i) + ">" + std::to_string(i) + "</e" +
                std::to_string(99 - i) + ">";
  }
  const Object object = New(tables);
  object->FromXml((document + "</r>").c_str());
  for (int i = 0; i < 100; ++i) {
    EXPECT_EQ(std::to_string(99 - i), object->TextOf(static_cast<std::size_t>(i)));
  }
}

TEST(XmlGeneratedClassAll, CollectionCannotBeRead) {
  CTables tables(XmlElementGroupType_All);
  tables.Add(new CElementInfoAllPrimCol("a", "", 0), Texts("a", 0, -1));
  const Object object = New(tables);
  EXPECT_QZ_THROW_FULL(CQzValidationException,
                       "Failed to process the element.\nPath: /r\n"
                       "Not implemented, should never be called",
                       "/r", object->FromXml("<r><a>1</a></r>"));
  EXPECT_EQ("<r><a>1</a></r>", Text(*object));
}

// --- Choice

TEST(XmlGeneratedClassChoice, ReadsTheFirstMemberThatMatches) {
  CTables tables(XmlElementGroupType_Choice);
  AddPrims<CElementInfoChoicePrimOpt>(tables, {"a", "b"});
  const Object object = New(tables);
  EXPECT_EQ("(end)", Reading("<r><b>2</b></r>").Walk(*object));
  EXPECT_EQ("(unset)", object->TextOf(0));
  EXPECT_EQ("2", object->TextOf(1));
}

TEST(XmlGeneratedClassChoice, SecondElementFailsOrIsIgnored) {
  CTables tables(XmlElementGroupType_Choice);
  AddPrims<CElementInfoChoicePrimOpt>(tables, {"a", "b"});
  const Object object = New(tables);
  EXPECT_QZ_THROW_FULL(CQzException, LeftOver("b"), "/r",
                       object->FromXml("<r><a>1</a><b>2</b></r>"));
  EXPECT_EQ("/r/b", Reading("<r><a>1</a><b>2</b></r>").Walk(*object, IgnoringUnknown()));
  EXPECT_EQ("(unset)", object->TextOf(1));
}

TEST(XmlGeneratedClassChoice, UnknownElementsInFrontAreSkipped) {
  CTables tables(XmlElementGroupType_Choice);
  AddPrims<CElementInfoChoicePrimOpt>(tables, {"a"});
  const Object object = New(tables);
  EXPECT_QZ_THROW_FULL(CQzException, LeftOver("x"), "/r", object->FromXml("<r><x/><a>1</a></r>"));
  EXPECT_EQ("/r/y", Reading("<r><x/><x/><a>1</a><y/></r>").Walk(*object, IgnoringUnknown()));
  EXPECT_EQ("1", object->TextOf(0));
  EXPECT_EQ("(end)", Reading("<r><x/><x/></r>").Walk(*object, IgnoringUnknown()));
}

TEST(XmlGeneratedClassChoice, NothingChosenFailsUnlessItMayBe) {
  CTables tables(XmlElementGroupType_Choice);
  tables.Add(new CElementInfoChoicePrimCol("a", "", 0), Texts("a", 1, -1));
  const Object object = New(tables);
  EXPECT_QZ_THROW_FULL(CQzException, kNothingChosen, "/r", object->FromXml("<r/>"));
  EXPECT_QZ_THROW_FULL(CQzException, kNothingChosen, "/r", object->FromXml("<r><x/></r>"));
  EXPECT_EQ("(end)", Reading("<r/>").Walk(*object, Ignoring(&Context::SetIgnoreMissingChoice)));
  EXPECT_EQ("(end)", Reading("<r/>").Walk(*object, Context(), true));
  EXPECT_QZ_THROW_FULL(CQzException, LeftOver("x"), "/r",
                       object->FromXml("<r><x/></r>", Ignoring(&Context::SetIgnoreMissingChoice)));
}

TEST(XmlGeneratedClassChoice, NothingChosenPassesWithAnOptionalMember) {
  CTables tables(XmlElementGroupType_Choice);
  tables.Add(new CElementInfoChoicePrimCol("a", "", 0), Texts("a", 0, -1));
  const Object object = New(tables);
  EXPECT_EQ("(end)", Reading("<r/>").Walk(*object));
  EXPECT_EQ("<r/>", Text(*object));
}

TEST(XmlGeneratedClassChoice, GroupWithNothingChosenGivesTheCursorBack) {
  CTables group(XmlElementGroupType_Choice, XmlElementType_PseudoElement);
  group.Add(new CElementInfoChoicePrimCol("a", "", 0), Texts("a", 1, -1));
  const Object object = New(group);
  EXPECT_EQ("/r/x", Reading("<r><x/><a>1</a></r>").Walk(*object));
  EXPECT_EQ("/r/x", Reading("<r><x/><a>1</a></r>").Walk(*object, IgnoringUnknown()));
  EXPECT_EQ("/r/x", Reading("<r><a>1</a><x/></r>").Walk(*object));
  EXPECT_EQ("(end)", Reading("<r/>").Walk(*object));
}

// --- What members are given

TEST(XmlGeneratedClassWalk, MembersGetTheNamespaceOfTheObjectAndTheTypeOfItsClass) {
  for (const XmlElementType type : {XmlElementType_Element, XmlElementType_PseudoElement}) {
    CTables tables(XmlElementGroupType_Sequence, type);
    tables.uri = "urn:t";
    CSpy* const first = new CSpy("a");
    CSpy* const second = new CSpy("b");
    tables.Add(first, Unset::Value).Add(second, Unset::Value);
    const Object object = New(tables);
    Reading("<r><a/><b/></r>").Walk(*object);
    EXPECT_EQ("urn:t", second->itsNamespace);
    EXPECT_EQ(type, second->itsType);
    EXPECT_EQ(1, object->namespaceCalls);
  }
}

TEST(XmlGeneratedClassWalk, NamespaceIsNotAskedForWhenNoMemberReadsIt) {
  CTables tables;
  AddPrims<CElementInfoSeqPrimOpt>(tables, {"a", "b"});
  const Object object = New(tables);
  for (int i = 0; i < 2; ++i) Reading("<r><a>1</a><b>2</b></r>").Walk(*object);
  EXPECT_EQ(0, object->namespaceCalls);
}

// --- Text

TEST(XmlGeneratedClassWalk, OwnTextIsConvertedByItsType) {
  CTables tables;
  tables.textIndex = 0;
  tables.textType = ItemType_i4;
  tables.AddProperty(Unset::Value);
  const Object object = New(tables);
  object->FromXml("<r>42</r>");
  EXPECT_EQ(ItemType_i4, (*object)[0].GetTypeAsEnum());
  EXPECT_EQ(42, (*object)[0].GetI4());
  EXPECT_QZ_THROW_FULL(CQzValidationException,
                       "Failed to process the element.\nPath: /r\n"
                       "The value [x] can not be converted to a i4",
                       "/r", object->FromXml("<r>x</r>"));
}

TEST(XmlGeneratedClassWalk, OwnTextIsKeptAsItStandsForATextProperty) {
  CTables tables;
  tables.textIndex = 0;
  tables.textType = ItemType_i4;
  tables.textAsText = true;
  tables.AddProperty(Unset::Value);
  const Object object = New(tables);
  object->FromXml("<r> forty two </r>");
  EXPECT_EQ(ItemType_string, (*object)[0].GetTypeAsEnum());
  EXPECT_EQ(" forty two ", object->TextOf(0));
  EXPECT_EQ("<r> forty two </r>", Text(*object));
}

TEST(XmlGeneratedClassWalk, PropertyThatRefusesTheOwnTextIsNotWrappedByItself) {
  CTables tables;
  tables.textIndex = 0;
  tables.textType = ItemType_string;
  tables.AddProperty(Unset::Value);
  const Object object = New(tables);
  object->failsToTake = "Out of order.";
  EXPECT_QZ_THROW_FULL(CQzValidationException,
                       "Failed to process the element.\nPath: /r\nOut of order.", "/r",
                       object->FromXml("<r>text</r>"));
}

// --- Failures on their way up

namespace {

// Three classes inside each other; the innermost has a mandatory number "n".
struct Nested {
  Nested() {
    inner.Add(Prim<CElementInfoSeqPrimMnd>("n", 0, OfType(ItemType_i4)), Unset::Value);
    middle.Add(Child("inner", inner), Unset::Object);
    outer.Add(Child("middle", middle), Unset::Object);
  }
  static CElementInfo* Child(const char* name, const CTables& tables) {
    return new CElementInfoSeqClsOpt(name, "", 0, XmlElementType_Element, &MakeTableObject,
                                     tables.id());
  }
  CTables inner, middle, outer;
};

}  // namespace

TEST(XmlGeneratedClassWalk, FailureGetsThePathOfItsElementAndLosesItsKindOnTheWayUp) {
  const Nested classes;
  const Object inner = New(classes.inner);
  const char kText[] = "The value [x] can not be converted to a i4";
  EXPECT_QZ_THROW_FULL(CQzValidationException,
                       std::string("Failed to process the element.\nPath: /r\n") + kText, "/r",
                       inner->FromXml("<r><n>x</n></r>"));
  const Object outer = New(classes.outer);
  const std::string document = "<r><middle><inner><n>x</n></inner></middle></r>";
  EXPECT_QZ_THROW_FULL(
      CQzException, std::string("Failed to process the element.\nPath: /r/middle/inner\n") + kText,
      "/r/middle/inner", outer->FromXml(document.c_str()));
  try {
    outer->FromXml(document.c_str());
    FAIL();
  } catch (const CQzException& e) {
    ASSERT_NE(nullptr, e.GetInnerException());
    EXPECT_EQ(typeid(CQzInvalidValueException), typeid(*e.GetInnerException()));
    EXPECT_EQ(kText, e.GetInnerException()->GetMessage());
    EXPECT_EQ(nullptr, e.GetInnerException()->GetInnerException());
  }
}

TEST(XmlGeneratedClassWalk, FailureWithAPathIsNotWrapped) {
  const Nested classes;
  EXPECT_QZ_THROW_FULL(
      CQzException, "Failed to find the required child element [n].\nPath: /r/middle/inner",
      "/r/middle/inner", New(classes.outer)->FromXml("<r><middle><inner/></middle></r>"));
}

TEST(XmlGeneratedClassWalk, EachLevelOfTheDocumentIsNamedWhenWritingFails) {
  const Nested classes;
  const Object object = New(classes.outer);
  object->FromXml("<r><middle><inner><n>1</n></inner></middle></r>");
  CTableObject* const inner = object->ObjectAt(0)->ObjectAt(0);
  (*inner)[0].SetInvalid();
  EXPECT_QZ_THROW_FULL(CQzValidationException,
                       "Failed to convert the element [r] to XML\n"
                       "Failed to convert the element [middle] to XML\n"
                       "Failed to convert the element [inner] to XML\n"
                       "The Property [n] is mandatory, it may not be NULL",
                       "", Text(*object));
}

// --- What a document can make the walks cost

TEST(XmlGeneratedClassWalk, UnknownElementsCostOneStepEach) {
  CTables tables;
  CSpy* const spy = new CSpy("a");
  tables.Add(Prim<CElementInfoSeqPrimOpt>("o", 1), Unset::Value);
  tables.Add(spy, Unset::Value);
  tables.AddProperty(Unset::Value);
  std::string document = "<r>";
  for (int i = 0; i < 10000; ++i) document += "<x/>";
  document += "<a/>";
  for (int i = 0; i < 10000; ++i) document += "<x/>";
  const Object object = New(tables);
  EXPECT_EQ("/r/x[1]", Reading((document + "</r>").c_str()).Walk(*object, IgnoringUnknown()));
  EXPECT_LE(spy->calls, 20002);
}
