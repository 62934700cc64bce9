#include <cstdint>
#include <limits>

#include "qzxml/collections/XmlCollectionBase.h"
#include "qzxml/xml/XmlDocument.h"
#include "tests/serialization/Note.h"
#include "tests/support/QzTest.h"

namespace QzXmlLib16 {
namespace {

using qztest::CNote;

constexpr char kOnlyOne[] =
    "] is already set. Only one element within this class bay be set at a time";

// What an operation makes of a selected member: the member afterwards, or a refusal.
struct ChoiceCase {
  const char* selected;
  int value;  // what is offered for the member "b": valid or not, null or not, a number of items
  const char* after;
  const char* refusal;  // null where it passes
};

template <typename Operation>
void ExpectChoices(const std::vector<ChoiceCase>& cases, Operation operation) {
  for (const ChoiceCase& c : cases) {
    std::string selected = c.selected;
    SCOPED_TRACE("selected [" + selected + "], offered " + std::to_string(c.value));
    if (c.refusal != nullptr) {
      EXPECT_QZ_THROW_FULL(CQzInvalidStateException, c.refusal, "", operation(c.value, selected));
    } else {
      EXPECT_NO_THROW(operation(c.value, selected));
    }
    EXPECT_EQ(c.after, selected);
  }
}

TEST(ChoiceRules, SetElementValidTakesTheSelectedMemberAlone) {
  CNote note;
  ExpectChoices(
      {
          {"", 0, "", nullptr},
          {"b", 0, "", nullptr},
          {"a", 0, "", nullptr},
          {"b", 1, "b", nullptr},
          {"a", 1, "a",
           "The Property a is already set. Only one element within this class bay be set at a "
           "time"},
          {"", 1, "",
           "The Property  is already set. Only one element within this class bay be set at a time"},
          {"B", 1, "B",
           "The Property B is already set. Only one element within this class bay be set at a "
           "time"},
          {"bb", 1, "bb",
           "The Property bb is already set. Only one element within this class bay be set at a "
           "time"},
      },
      [&note](int valid, std::string& selected) {
        note.Choice_SetElementValid(valid != 0, "b", selected);
      });
}

TEST(ChoiceRules, SelectElementKeepsOneMember) {
  CNote note;
  ExpectChoices(
      {
          {"b", 0, "", nullptr},
          {"b", 1, "b", nullptr},
          {"", 0, "b", nullptr},  // the setter goes on from there
          {"", 1, "b", nullptr},
          {"a", 0, "a", nullptr},
          {"a", 1, "a",
           "The Property [a] is already set. Only one element within this class bay be set at a "
           "time"},
      },
      [&note](int value, std::string& selected) {
        note.Choice_SelectElement("b", value != 0 ? &note : nullptr, selected);
      });
}

TEST(ChoiceRules, CollectionChangedKeepsOneMember) {
  CNote note;
  const std::string refusal = std::string("The Property [a") + kOnlyOne;
  ExpectChoices(
      {
          {"b", 0, "", nullptr},
          {"b", 1, "b", nullptr},
          {"b", -1, "b", nullptr},
          {"", 0, "", nullptr},
          {"", 1, "b", nullptr},
          {"", std::numeric_limits<std::int32_t>::max(), "b", nullptr},
          {"", -1, "", nullptr},
          {"a", 0, "a", nullptr},  // another member's empty collection
          {"a", 1, "a", refusal.c_str()},
          {"a", -1, "a", refusal.c_str()},
      },
      [&note](int count, std::string& selected) {
        note.Choice_CollectionChanged("b", count, selected);
      });
}

TEST(ChoiceRules, ASetterSelectsItsMemberAndGivesItUpAgain) {
  CNote note;
  std::string selected;
  note.Choice_SelectElement("a", nullptr, selected);  // cleared before it was ever set
  EXPECT_EQ("a", selected);
  note.Choice_SelectElement("a", nullptr, selected);
  EXPECT_EQ("", selected);
  note.Choice_SelectElement("a", &note, selected);
  note.Choice_SelectElement("b", nullptr, selected);
  EXPECT_EQ("a", selected);
  note.Choice_SelectElement("a", nullptr, selected);
  note.Choice_SelectElement("b", &note, selected);
  EXPECT_EQ("b", selected);
}

// --- Reading a collection once

// Takes as many "line" elements as it finds, and lets at most two be there.
class CLines : public CXmlCollectionBase {
 public:
  CLines() : CXmlCollectionBase("line", "", 0, 2) {}

  int GetCount() const override { return m_count; }
  void Clear() override { m_count = 0; }
  void Remove(int) override { --m_count; }

  int reads = 0;
  bool optionalChoice = true;
  CXmlElement* parent = nullptr;

 protected:
  void ToXml_Int(CXmlWriter*, bool, const char*, const CSerializationContext&,
                 bool) const override {}
  CXmlElement* FromXml_Int(CXmlElement* element, CXmlElement* cursor, const CSerializationContext&,
                           bool optional) override {
    ++reads;
    parent = element;
    optionalChoice = optional;
    for (; cursor != nullptr && cursor->GetLocalName() == "line";
         cursor = cursor->GetNextSiblingElement()) {
      ++m_count;
    }
    return cursor;
  }

 private:
  int m_count = 0;
};

class ChoiceReadCollection : public ::testing::Test {
 protected:
  void Load(const char* text) {
    document.LoadXml(text);
    parent = document.GetDocumentElement();
    cursor = parent->GetFirstElement();
  }
  void Read() { note.Choice_Read_Collection(&lines, parent, cursor, count, context); }

  CSerializationContext context;
  CXmlDocument document;
  CXmlElement* parent = nullptr;
  CXmlElement* cursor = nullptr;
  std::int32_t count = 0;
  CLines lines;
  CNote note;
};

TEST_F(ChoiceReadCollection, MovesTheCursorAndCountsOneReading) {
  Load("<note><line/><line/><end/></note>");
  CXmlElement* const end = cursor->GetNextSiblingElement()->GetNextSiblingElement();
  Read();
  EXPECT_EQ(1, lines.reads);
  EXPECT_EQ(parent, lines.parent);
  EXPECT_FALSE(lines.optionalChoice);
  EXPECT_EQ(2, lines.GetCount());
  EXPECT_EQ(end, cursor);
  EXPECT_EQ(1, count);
}

TEST_F(ChoiceReadCollection, ReadsOnceAlone) {
  Load("<note><line/></note>");
  CXmlElement* const first = cursor;
  Read();
  cursor = first;
  Read();
  EXPECT_EQ(1, lines.reads);
  EXPECT_EQ(first, cursor);
  EXPECT_EQ(1, count);
}

TEST_F(ChoiceReadCollection, NothingIsReadWhileTheCountIsAboveZero) {
  Load("<note><line/></note>");
  count = 1;
  Read();
  EXPECT_EQ(0, lines.reads);
  EXPECT_EQ(1, count);
  EXPECT_EQ(parent->GetFirstElement(), cursor);
}

TEST_F(ChoiceReadCollection, WhatTakesNothingIsNotCounted) {
  Load("<note><end/></note>");
  Read();
  EXPECT_EQ(1, lines.reads);
  EXPECT_EQ(0, count);
  EXPECT_EQ(parent->GetFirstElement(), cursor);
}

TEST_F(ChoiceReadCollection, AtTheEndOfTheChildrenNothingIsTaken) {
  Load("<note/>");
  Read();
  EXPECT_EQ(1, lines.reads);
  EXPECT_EQ(0, count);
  EXPECT_EQ(nullptr, cursor);
}

TEST_F(ChoiceReadCollection, TooManyItemsAreRefusedBehindThem) {
  Load("<note><line/><line/><line/><end/></note>");
  EXPECT_QZ_THROW_FULL(CQzValidationException,
                       "The Maximum number of [line] elements allowed in this collection is 2", "",
                       Read());
  EXPECT_EQ("end", cursor->GetLocalName());
  EXPECT_EQ(0, count);
}

TEST_F(ChoiceReadCollection, TheContextMayIgnoreCounts) {
  context.SetIgnoreInvalidCollectionCounts(true);
  Load("<note><line/><line/><line/></note>");
  Read();
  EXPECT_EQ(nullptr, cursor);
  EXPECT_EQ(1, count);
}

// --- What setters of class members refuse

TEST(ChoiceRules, AMandatoryPropertyRefusesNull) {
  CNote note;
  EXPECT_QZ_THROW_FULL(CQzInvalidParamException,
                       "The Property [Address] is mandatory, it may node be NULL", "",
                       note.Throw_IfPropertyIsNull(nullptr, "Address"));
  EXPECT_NO_THROW(note.Throw_IfPropertyIsNull(&note, "Address"));
}

TEST(ChoiceRules, AnElementOfAnotherNameIsRefused) {
  CNote note;
  CNote other;
  other.SetElementName("memo");
  EXPECT_QZ_THROW_FULL(CQzInvalidParamException,
                       "This property requires an element with the name note the element being set "
                       "has the element name memo",
                       "", note.Throw_IfElementNameDiffers(&other, "note"));
  EXPECT_QZ_THROW_FULL(CQzInvalidParamException,
                       "This property requires an element with the name Memo the element being set "
                       "has the element name memo",
                       "", note.Throw_IfElementNameDiffers(&other, "Memo"));
  EXPECT_NO_THROW(note.Throw_IfElementNameDiffers(&other, "memo"));
}

TEST(ChoiceRules, AnElementOfAnyNameMayBeTakenAway) {
  CNote note;
  EXPECT_NO_THROW(note.Throw_IfElementNameDiffers(nullptr, "note"));
}

// Has its CXmlObjectBase part elsewhere.
class CWrapped : public CNote {
 public:
  CXmlObjectBase* GetBase() override { return &inner; }
  CNote inner;
};

TEST(ChoiceRules, TheNameIsThatOfTheBaseOfTheValue) {
  CWrapped wrapped;
  wrapped.inner.SetElementName("inner");
  EXPECT_NO_THROW(wrapped.Throw_IfElementNameDiffers(&wrapped, "inner"));
  EXPECT_QZ_THROW(CQzInvalidParamException,
                  "This property requires an element with the name note the element being set has "
                  "the element name inner",
                  wrapped.Throw_IfElementNameDiffers(&wrapped, "note"));
}

}  // namespace
}  // namespace QzXmlLib16
