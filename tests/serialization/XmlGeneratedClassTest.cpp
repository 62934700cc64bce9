#include "qzxml/collections/AttributeCol.h"
#include "qzxml/collections/Element.h"
#include "qzxml/serialization/ElementInfoAll.h"
#include "qzxml/serialization/ElementInfoChoice.h"
#include "qzxml/serialization/ElementInfoSeq.h"
#include "qzxml/serialization/XmlGeneratedClass.h"
#include "qzxml/xml/XmlDocument.h"
#include "qzxml/xml/XmlElement.h"
#include "tests/support/GeneratedTable.h"
#include "tests/support/QzTest.h"

using namespace QzXmlLib16;
using namespace QzXmlLib16Data;
using namespace qztest;

namespace {

using Context = CSerializationContext;
using Object = CSmartPtr<CTableObject>;

const char kXsi[] = "http://www.w3.org/2001/XMLSchema-instance";

Object New(const CTables& tables, const char* name = "r") {
  return Object(new CTableObject(tables, name));
}

CAttributeInfo* Attribute(const char* name, int index, bool optional = true) {
  return new CAttributeInfoPrimitive(name, "", index, optional, ItemType_string, nullptr,
                                     CWhitespaceUtils::WhitespaceRule_None,
                                     CPrimitiveRestrictions(), nullptr);
}

// A sequence of optional texts with these names, at the indexes from 0 on.
void AddTexts(CTables& tables, const std::vector<const char*>& names) {
  int index = 0;
  for (const char* name : names) {
    tables.Add(Prim<CElementInfoSeqPrimOpt>(name, index++), Unset::Value);
  }
}

Unset::Make Texts(const char* name, int minOccurs, int maxOccurs) {
  return Unset::Collection(
      [=]() -> CXmlCollectionBase* { return new CTextCol(name, "", minOccurs, maxOccurs); });
}

CTextCol& TextsIn(CTableObject& object, std::size_t index) {
  CXmlCollectionBase* const collection = object[index].GetXmlCollection();
  return static_cast<CTextCol&>(*collection);
}

const char kNothingSet[] =
    "This element is a choice, and as such must have at one (and only one) valid item, currently "
    "there are none set";

}  // namespace

// --- Tables

TEST(XmlGeneratedClass, CleanMetaDataDoesNothingWithNullPointers) {
  CParentElementInfo* parent = nullptr;
  CElementInfo** elements = nullptr;
  CAttributeInfo** attributes = nullptr;
  CTableObject::CleanMetaData(parent, elements, attributes);
  EXPECT_EQ(nullptr, parent);
  EXPECT_EQ(nullptr, elements);
  EXPECT_EQ(nullptr, attributes);
}

TEST(XmlGeneratedClass, CleanMetaDataFreesTablesWithoutEntries) {
  CParentElementInfo* parent = nullptr;
  CElementInfo** elements = new CElementInfo* [1] { nullptr };
  CAttributeInfo** attributes = new CAttributeInfo* [1] { nullptr };
  CTableObject::CleanMetaData(parent, elements, attributes);
  EXPECT_EQ(nullptr, elements);
  EXPECT_EQ(nullptr, attributes);
}

TEST(XmlGeneratedClass, CleanMetaDataDeletesEveryEntry) {
  static int deleted;
  struct CCounted : CElementInfoSeqPrimOpt {
    explicit CCounted(const char* name)
        : CElementInfoSeqPrimOpt(name, "", 0, false, ItemType_string, nullptr,
                                 CWhitespaceUtils::WhitespaceRule_None, CPrimitiveRestrictions(),
                                 nullptr) {}
    ~CCounted() override { ++deleted; }
  };
  deleted = 0;
  CParentElementInfo* parent =
      new CParentElementInfo(XmlElementGroupType_All, XmlElementType_Element, "a", "", true, false,
                             -1, ItemType_None, nullptr, false);
  CElementInfo** elements = new CElementInfo* [3] { new CCounted("a"), new CCounted("b"), nullptr };
  CAttributeInfo** attributes = new CAttributeInfo* [2] { Attribute("c", 0), nullptr };
  CTableObject::CleanMetaData(parent, elements, attributes);
  EXPECT_EQ(2, deleted);
  EXPECT_EQ(nullptr, parent);
  EXPECT_EQ(nullptr, elements);
  EXPECT_EQ(nullptr, attributes);
}

TEST(XmlGeneratedClass, TheLockOfTheTablesLetsItsThreadInAgain) {
  CTableObject::m_csInit.Enter();
  CTableObject::m_csInit.Enter();
  CTableObject::m_csInit.Leave();
  CTableObject::m_csInit.Leave();
}

TEST(XmlGeneratedClass, ElementIsInListWhenAMemberHasItsName) {
  CTables tables;
  AddTexts(tables, {"a", "b"});
  const Object object = New(tables);
  CXmlDocument document;
  document.LoadXml("<r><b/><c/><b xmlns='urn:x'/></r>");
  CXmlElement* const b = document.GetDocumentElement()->GetFirstElement();
  CXmlElement* const c = b->GetNextSiblingElement();
  CXmlElement* const other = c->GetNextSiblingElement();
  EXPECT_TRUE(object->IsElementInList(Context(), b));
  EXPECT_FALSE(object->IsElementInList(Context(), c));
  EXPECT_FALSE(object->IsElementInList(Context(), other));
  EXPECT_TRUE(object->IsElementInList(Ignoring(&Context::SetIgnoreNamespaces), other));
  EXPECT_FALSE(object->IsElementInList(Context(), nullptr));
}

TEST(XmlGeneratedClass, ReadPropertyPassesTheFailureOfTheClassOn) {
  CTables tables;
  AddTexts(tables, {"a"});
  const Object object = New(tables);
  object->Set(0, "x");
  QzVariant value;
  object->ReadProperty(0, value);
  EXPECT_EQ("x", value.GetString());
  object->failsToGive = "Out of order.";
  EXPECT_QZ_THROW_FULL(CQzException, "Out of order.", "", object->ReadProperty(0, value));
}

// --- Writing: the start of a document

TEST(XmlGeneratedClass, RootIsWrittenPieceByPieceInOrder) {
  CTables group(XmlElementGroupType_Sequence, XmlElementType_PseudoElement);
  group.Add(Attribute("inGroup", 0), Unset::Value);
  group.AddProperty(Unset::Value);
  CTables tables;
  tables.uri = "urn:t";
  tables.hasBaseClasses = true;
  tables.name = "Type";
  tables.textIndex = 3;
  tables.textType = ItemType_string;
  tables.Add(Attribute("own", 0), Unset::Value);
  tables.Add(new CElementInfoSeqClsOpt("g", "", 1, XmlElementType_PseudoElement, &MakeTableObject,
                                       group.id()),
             Unset::Object);
  tables.Add(Prim<CElementInfoSeqPrimOpt>("child", 2), Unset::Value);
  tables.AddProperty(Unset::Value);

  const Object object = New(tables, "r");
  const Object inGroup = New(group);
  inGroup->Set(0, "1");
  object->Set(0, "2");
  object->Set(1, inGroup);
  object->Set(2, "3");
  object->Set(3, "4");

  Context context;
  context.GetProcessingInstructions().push_back("<?first?>");
  context.GetProcessingInstructions().push_back("<?second?>");
  context.GetNamespaceAliases().Add("i", kXsi);
  context.GetNamespaceAliases().Add("e", "urn:e");
  context.SetDefaultNamespaceURI("urn:t");
  context.GetAdditionalRootAttributes()->Add("added", "0", "");
  context.SetInLineSchema("schema='5'");
  EXPECT_EQ(
      "<?first?>\n\n<?second?>\n\n"
      "<r xmlns=\"urn:t\" xmlns:i=\"http://www.w3.org/2001/XMLSchema-instance\" xmlns:e=\"urn:e\""
      " added=\"0\" i:type=\"Type\" own=\"2\" inGroup=\"1\" \nschema='5'\n"
      "><child>3</child>4</r>",
      Text(*object, context));
}

TEST(XmlGeneratedClass, OnlyTheRootWritesWhatTheContextAdds) {
  CTables child;
  CTables tables;
  tables.Add(
      new CElementInfoSeqClsOpt("c", "", 0, XmlElementType_Element, &MakeTableObject, child.id()),
      Unset::Object);
  const Object object = New(tables);
  object->Set(0, New(child, "c"));
  Context context;
  context.GetProcessingInstructions().push_back("<?once?>");
  context.GetAdditionalRootAttributes()->Add("once", "1", "");
  context.SetInLineSchema("schema='1'");
  EXPECT_EQ("<?once?>\n\n<r once=\"1\" \nschema='1'\n><c/></r>", Text(*object, context));
}

TEST(XmlGeneratedClass, ChildHasItsOwnNameAndTheNamespaceOfTheMember) {
  CTables child;
  child.name = "Declared";
  child.uri = "urn:declared";
  CTables tables;
  tables.Add(new CElementInfoSeqClsOpt("member", "urn:m", 0, XmlElementType_Element,
                                       &MakeTableObject, child.id()),
             Unset::Object);
  const Object object = New(tables);
  object->Set(0, New(child, "own"));
  EXPECT_EQ("<r><AA:own xmlns:AA=\"urn:m\"/></r>", Text(*object));
}

TEST(XmlGeneratedClass, TypeIsWrittenUnderAnotherNameOfAClassThatTakesPartInDerivation) {
  struct Case {
    bool writeType;
    bool hasBaseClasses;
    const char* name;
    bool written;
  };
  const Case cases[] = {{true, true, "other", true},
                        {true, true, "Declared", false},
                        {true, false, "other", false},
                        {false, true, "other", false}};
  for (const Case& c : cases) {
    CTables tables;
    tables.name = "Declared";
    tables.hasBaseClasses = c.hasBaseClasses;
    const Context context = With([&](Context& it) {
      it.SetWriteTypeAttribute(c.writeType);
      it.GetNamespaceAliases().Add("i", kXsi);
    });
    const std::string text = Text(*New(tables, c.name), context);
    EXPECT_EQ(c.written, text.find(" i:type=\"Declared\"/>") != std::string::npos) << text;
  }
}

// --- Writing: nil, content and text

TEST(XmlGeneratedClass, NilObjectWritesAttributesNilAndEndTagAndNothingElse) {
  CTables tables;
  tables.textIndex = 2;
  tables.textType = ItemType_string;
  tables.Add(Attribute("a", 0), Unset::Value);
  tables.Add(Prim<CElementInfoSeqPrimMnd>("b", 1), Unset::Value);
  tables.AddProperty(Unset::Value);
  const CSmartPtr<CNillableTableObject> object(new CNillableTableObject(tables));
  object->Set(0, "1");
  object->Set(1, "2");
  object->Set(2, "3");
  const Context context = With([](Context& it) { it.GetNamespaceAliases().Add("i", kXsi); });
  EXPECT_EQ(std::string("<r xmlns:i=\"") + kXsi + "\" a=\"1\"><b>2</b>3</r>",
            Text(*object, context));
  object->SetIsNil(true);
  EXPECT_EQ(std::string("<r xmlns:i=\"") + kXsi + "\" a=\"1\" i:nil=\"true\"/>",
            Text(*object, context));
}

TEST(XmlGeneratedClass, SequenceAndAllWriteInTheOrderOfTheTable) {
  for (const XmlElementGroupType group : {XmlElementGroupType_Sequence, XmlElementGroupType_All}) {
    CTables tables(group);
    AddTexts(tables, {"a", "b", "c"});
    const Object object = New(tables);
    object->Set(2, "3");
    object->Set(0, "1");
    EXPECT_EQ("<r><a>1</a><c>3</c></r>", Text(*object));
  }
}

TEST(XmlGeneratedClass, ChoiceWritesTheFirstMemberThatIsSet) {
  CTables tables(XmlElementGroupType_Choice);
  for (int i = 0; i < 3; ++i) {
    tables.Add(
        Prim<CElementInfoChoicePrimOpt>(std::string(1, static_cast<char>('a' + i)).c_str(), i),
        Unset::Value);
  }
  const Object object = New(tables);
  object->Set(1, "2");
  object->Set(2, "3");
  EXPECT_EQ("<r><b>2</b></r>", Text(*object));
}

TEST(XmlGeneratedClass, UnknownGroupTypeIsRefusedBothWays) {
  CTables tables(static_cast<XmlElementGroupType>(3));
  const Object object = New(tables);
  EXPECT_QZ_THROW_FULL(CQzValidationException,
                       "Failed to convert the element [r] to XML\nUnknown XML Group Type", "",
                       Text(*object));
  EXPECT_QZ_THROW_FULL(CQzValidationException,
                       "Failed to process the element.\nPath: /r\nUnknown Group Type", "/r",
                       object->FromXml("<r/>"));
}

TEST(XmlGeneratedClass, EmptyChoiceFailsAtEachLevelOfTheDocument) {
  CTables choice(XmlElementGroupType_Choice);
  choice.Add(new CElementInfoChoicePrimCol("a", "", 0), Texts("a", 1, -1));
  CTables outer;
  outer.Add(
      new CElementInfoSeqClsOpt("c", "", 0, XmlElementType_Element, &MakeTableObject, choice.id()),
      Unset::Object);
  const Object object = New(outer);
  object->Set(0, New(choice, "c"));
  EXPECT_QZ_THROW_FULL(CQzValidationException,
                       std::string("Failed to convert the element [r] to XML\n"
                                   "Failed to convert the element [c] to XML\n") +
                           kNothingSet,
                       "", Text(*object));
  EXPECT_EQ("<r><c/></r>", Text(*object, Ignoring(&Context::SetIgnoreMissingChoice)));
  TextsIn(*object->ObjectAt(0), 0).texts = {"1", "2"};
  EXPECT_EQ("<r><c><a>1</a><a>2</a></c></r>", Text(*object));
}

TEST(XmlGeneratedClass, ChoiceMayBeEmptyWhereAMemberMayBe) {
  const auto isOptional = [](CElementInfo* member, const Unset::Make& unset) {
    CTables tables(XmlElementGroupType_Choice);
    tables.Add(member, unset);
    return New(tables)->DoesElementContainOptionalElements();
  };
  const Unset::Make none = Texts("a", 0, -1);
  const Unset::Make one = Texts("a", 1, -1);
  const XmlElementType element = XmlElementType_Element;
  EXPECT_TRUE(isOptional(Prim<CElementInfoChoicePrimOpt>("a", 0), Unset::Value));
  EXPECT_TRUE(isOptional(Enum<CElementInfoChoiceEnumOpt>("a", 0), Unset::Value));
  EXPECT_TRUE(
      isOptional(new CElementInfoChoiceClsOpt("a", "", 0, element, nullptr, 0), Unset::Object));
  EXPECT_TRUE(
      isOptional(new CElementInfoChoiceAbsClsOpt("a", "", 0, element, nullptr), Unset::Object));
  EXPECT_TRUE(isOptional(new CElementInfoChoiceUntpdOpt("a", "", 0, "##any", ""), Unset::Object));
  EXPECT_TRUE(isOptional(new CElementInfoChoicePrimCol("a", "", 0), none));
  EXPECT_TRUE(isOptional(new CElementInfoChoiceEnumCol("a", "", 0), none));
  EXPECT_TRUE(isOptional(new CElementInfoChoiceClsCol("a", "", 0, element), none));
  EXPECT_TRUE(isOptional(new CElementInfoChoiceAbsClsCol("a", "", 0, element), none));
  EXPECT_TRUE(isOptional(new CElementInfoChoiceUntpdCol("a", "", 0), none));

  EXPECT_FALSE(isOptional(new CElementInfoChoicePrimCol("a", "", 0), one));
  EXPECT_FALSE(isOptional(new CElementInfoChoiceUntpdCol("a", "", 0), one));
  EXPECT_FALSE(isOptional(new CElementInfoChoiceCol("a", "", 0), none));
  EXPECT_FALSE(isOptional(Prim<CElementInfoSeqPrimOpt>("a", 0), Unset::Value));
  EXPECT_FALSE(isOptional(Prim<CElementInfoAllPrimOpt>("a", 0), Unset::Value));
  EXPECT_FALSE(isOptional(new CElementInfoSeqPrimCol("a", "", 0), none));
}

TEST(XmlGeneratedClass, OwnTextIsWrittenBehindTheChildrenWithItsFormat) {
  CTables tables;
  tables.textIndex = 0;
  tables.textType = ItemType_r8;
  tables.textFormat = "%.2f";
  tables.AddProperty(Unset::Value);
  tables.Add(Prim<CElementInfoSeqPrimOpt>("a", 1), Unset::Value);
  const Object object = New(tables);
  (*object)[0].SetR8(0.5);
  object->Set(1, "x");
  EXPECT_EQ("<r><a>x</a>0.50</r>", Text(*object));
}

TEST(XmlGeneratedClass, OwnTextThatIsNilIsWrittenAsNil) {
  CTables tables;
  tables.textIndex = 0;
  tables.textType = ItemType_string;
  tables.AddProperty(Unset::Value);
  const Object object = New(tables);
  (*object)[0].SetNil();
  EXPECT_EQ(std::string("<r xmlns:AA=\"") + kXsi + "\" AA:nil=\"true\"/>", Text(*object));
}

TEST(XmlGeneratedClass, OwnTextThatIsNotSetFailsWithTheTextOfTheVariant) {
  CTables tables;
  tables.textIndex = 0;
  tables.textType = ItemType_string;
  tables.AddProperty(Unset::Value);
  EXPECT_QZ_THROW_FULL(
      CQzValidationException,
      "Failed to convert the element [r] to XML\nInvalid Type 0 to convert to string", "",
      Text(*New(tables)));
}

TEST(XmlGeneratedClass, OwnTextNeedsBothAnIndexAndAType) {
  for (const bool withIndex : {false, true}) {
    CTables tables;
    tables.textIndex = withIndex ? 0 : -1;
    tables.textType = withIndex ? ItemType_None : ItemType_string;
    tables.AddProperty(Unset::Value);
    const Object object = New(tables);
    object->Set(0, "text");
    EXPECT_EQ("<r/>", Text(*object));
    object->FromXml("<r>text</r>");
    EXPECT_EQ("(unset)", object->TextOf(0));
  }
}

TEST(XmlGeneratedClass, FailureOfAnAttributeIsWrappedTwice) {
  CTables tables;
  tables.Add(Attribute("a", 0, false), Unset::Value);
  EXPECT_QZ_THROW_FULL(CQzValidationException,
                       "Failed to convert the element [r] to XML\n"
                       "Failed to convert attributes to XML\n"
                       "Invalid Type 0 to convert to string",
                       "", Text(*New(tables)));
}

TEST(XmlGeneratedClass, FailureOfAGroupsAttributeIsWrappedByEachClass) {
  CTables group(XmlElementGroupType_Sequence, XmlElementType_PseudoElement);
  group.Add(Attribute("a", 0, false), Unset::Value);
  CTables tables;
  tables.Add(new CElementInfoSeqClsOpt("g", "", 0, XmlElementType_PseudoElement, &MakeTableObject,
                                       group.id()),
             Unset::Object);
  const Object object = New(tables);
  object->Set(0, New(group));
  EXPECT_QZ_THROW_FULL(CQzValidationException,
                       "Failed to convert the element [r] to XML\n"
                       "Failed to convert attributes to XML\n"
                       "Failed to convert attributes to XML\n"
                       "Invalid Type 0 to convert to string",
                       "", Text(*object));
}

// --- Reading: names and attributes

TEST(XmlGeneratedClass, ObjectTakesTheNameOfTheDocumentAndWritesIt) {
  CTables tables;
  AddTexts(tables, {"a"});
  const Object object = New(tables, "before");
  object->FromXml("<after><a>1</a></after>");
  EXPECT_EQ("<after><a>1</a></after>", Text(*object));
}

TEST(XmlGeneratedClass, GroupKeepsItsName) {
  CTables group(XmlElementGroupType_Sequence, XmlElementType_PseudoElement);
  const Object object = New(group, "before");
  object->FromXml("<after/>");
  EXPECT_EQ("before", object->GetElementName());
}

TEST(XmlGeneratedClass, ReadingEmptiesTheObjectFirst) {
  CTables tables;
  AddTexts(tables, {"a", "b"});
  const Object object = New(tables);
  object->Set(0, "old");
  object->FromXml("<r><b>new</b></r>");
  EXPECT_EQ("(unset)", object->TextOf(0));
  EXPECT_EQ("new", object->TextOf(1));
  EXPECT_EQ(1, object->initCalls);
}

TEST(XmlGeneratedClass, AttributesGoToTheFirstEntryThatTakesThem) {
  CTables tables;
  tables.Add(Attribute("a", 0), Unset::Value);
  tables.Add(Attribute("b", 1), Unset::Value);
  tables.Add(Attribute("a", 2), Unset::Value);
  const Object object = New(tables);
  object->FromXml("<r b='2' a='1'/>");
  EXPECT_EQ("1", object->TextOf(0));
  EXPECT_EQ("2", object->TextOf(1));
  EXPECT_EQ("(unset)", object->TextOf(2));
}

TEST(XmlGeneratedClass, UnknownAttributeFailsWithItsPath) {
  CTables tables;
  const Object object = New(tables);
  EXPECT_QZ_THROW_FULL(CQzException, "Unexpected Attribute found.\nPath: /r/@x", "/r/@x",
                       object->FromXml("<r x='1'/>"));
  object->FromXml("<r x='1'/>", Ignoring(&Context::SetIgnoreUnknownAttributes));
}

TEST(XmlGeneratedClass, ClassThatDoesNotMindUnknownAttributesDropsThem) {
  CTables tables;
  tables.failIfAttributeUnknown = false;
  New(tables)->FromXml("<r x='1'/>");
}

TEST(XmlGeneratedClass, AttributesOfTheSchemaMachineryAreNeverUnknown) {
  CTables tables;
  New(tables)->FromXml((std::string("<r xmlns:i='") + kXsi +
                        "' i:type='x' i:schemaLocation='a b' i:noNamespaceSchemaLocation='c' "
                        "xmlns:unused='urn:u'/>")
                           .c_str());
}

TEST(XmlGeneratedClass, MissingRequiredAttributeFailsBehindAllAttributes) {
  CTables tables;
  tables.Add(Attribute("a", 0, false), Unset::Value);
  tables.Add(Attribute("b", 1, false), Unset::Value);
  tables.Add(Attribute("c", 2), Unset::Value);
  const Object object = New(tables);
  EXPECT_QZ_THROW_FULL(CQzValidationException,
                       "Failed to process the element.\nPath: /r\n"
                       "Failed to find the required Attribute [b].",
                       "/r", object->FromXml("<r c='3' a='1'/>"));
  EXPECT_EQ("3", object->TextOf(2));
  EXPECT_EQ("1", object->TextOf(0));
  // What is unknown is met first.
  EXPECT_QZ_THROW_FULL(CQzException, "Unexpected Attribute found.\nPath: /r/@d", "/r/@d",
                       object->FromXml("<r a='1' d='4'/>"));
}

TEST(XmlGeneratedClass, MoreAttributesThanAWordHasBitsAreAllFound) {
  CTables tables;
  std::string document = "<r";
  std::vector<std::string> names;
  for (int i = 0; i < 130; ++i) names.push_back("a" + std::to_string(i));
  for (int i = 0; i < 130; ++i) {
    tables.Add(Attribute(names[static_cast<std::size_t>(i)].c_str(), i, false), Unset::Value);
    if (i != 129) document += " " + names[static_cast<std::size_t>(i)] + "='1'";
  }
  const Object object = New(tables);
  object->FromXml((document + " a129='1'/>").c_str());
  EXPECT_EQ("1", object->TextOf(129));
  EXPECT_QZ_THROW_FULL(CQzValidationException,
                       "Failed to process the element.\nPath: /r\n"
                       "Failed to find the required Attribute [a129].",
                       "/r", object->FromXml((document + "/>").c_str()));
}

// --- Reading: nil

namespace {

std::string WithNil(const char* value) {
  return std::string("<r xmlns:i='") + kXsi + "' i:nil='" + value + "'><a>1</a></r>";
}

}  // namespace

TEST(XmlGeneratedClass, NilIsReadWithoutRegardToCase) {
  struct Case {
    const char* value;
    bool isNil;
  };
  const Case cases[] = {{"true", true},   {"TRUE", true},   {"True", true},   {"1", true},
                        {"false", false}, {"FALSE", false}, {"fAlSe", false}, {"0", false}};
  CTables tables;
  AddTexts(tables, {"a"});
  for (const Case& c : cases) {
    const CSmartPtr<CNillableTableObject> object(new CNillableTableObject(tables));
    object->FromXml(WithNil(c.value).c_str());
    EXPECT_EQ(c.isNil, object->GetIsNil()) << c.value;
    EXPECT_EQ(c.isNil ? "(unset)" : "1", object->TextOf(0)) << c.value;
  }
}

TEST(XmlGeneratedClass, AnyOtherValueOfNilIsRefused) {
  CTables tables;
  AddTexts(tables, {"a"});
  for (const char* value : {"yes", "", " true", "truee", "tru", "2", "01"}) {
    const CSmartPtr<CNillableTableObject> object(new CNillableTableObject(tables));
    EXPECT_QZ_THROW_FULL(
        CQzException,
        std::string("Unexpected Value [") + value + "] for 'nil' Attribute found.\nPath: /r/i:@nil",
        "/r/i:@nil", object->FromXml(WithNil(value).c_str()));
  }
}

TEST(XmlGeneratedClass, NilOnAClassThatCannotBeNilFailsWhateverItSays) {
  CTables tables;
  AddTexts(tables, {"a"});
  const Object object = New(tables);
  for (const char* value : {"1", "false", "yes"}) {
    for (const bool ignore : {false, true}) {
      const Context context = With([=](Context& it) { it.SetIgnoreUnknownAttributes(ignore); });
      EXPECT_QZ_THROW_FULL(CQzException,
                           "Invalid use of 'nil' attribute in non-nillable element.\nPath: /r",
                           "/r", object->FromXml(WithNil(value).c_str(), context));
    }
  }
}

TEST(XmlGeneratedClass, NilObjectLeavesTheCursorWhereItWas) {
  CTables tables;
  const CSmartPtr<CNillableTableObject> object(new CNillableTableObject(tables));
  CXmlDocument document;
  document.LoadXml(WithNil("true").c_str());
  CXmlElement* const root = document.GetDocumentElement();
  EXPECT_EQ(root->GetFirstElement(),
            object->FromXml_Int(root, root->GetFirstElement(), Context(), false));
}

TEST(XmlGeneratedClass, AClassLearnsToBeNillableByDerivation) {
  // The same tables serve a class that cannot be nil and one that can.
  CTables tables;
  AddTexts(tables, {"a"});
  const Object plain = New(tables);
  const CSmartPtr<CNillableTableObject> nillable(new CNillableTableObject(tables));
  for (int i = 0; i < 2; ++i) {
    plain->FromXml("<r><a>1</a></r>");
    nillable->FromXml(WithNil("true").c_str());
    EXPECT_TRUE(nillable->GetIsNil());
    EXPECT_THROW(plain->FromXml(WithNil("true").c_str()), CQzException);
  }
}
