#include <ctime>
#include <string>
#include <vector>

#include "qzxml/serialization/ElementInfoChoice.h"
#include "qzxml/serialization/ElementInfoSeq.h"
#include "qzxml/serialization/XmlGeneratedClass.h"
#include "qzxml/xml/XmlDocument.h"
#include "qzxml/xml/XmlElement.h"
#include "tests/support/GeneratedTable.h"
#include "tests/support/QzTest.h"

// Groups that look for their members among many unknown elements: what it costs, and that the
// result is that of looking each time.

using namespace QzXmlLib16;
using namespace QzXmlLib16Data;
using namespace qztest;

namespace {

using Context = CSerializationContext;
using Object = CSmartPtr<CTableObject>;
constexpr XmlElementType kNoTag = XmlElementType_PseudoElement;

// The same members under another class, about which the library knows nothing: a walk over them
// looks for each member each time.
template <typename Member>
struct Unknown : Member {
  using Member::Member;
};
template <typename Member>
struct Known {
  using Type = Member;
};
template <typename Member>
struct Forgotten {
  using Type = Unknown<Member>;
};

// How often the group that is asked has been emptied, which happens once for each time it is asked.
int s_asked;
// How often a text or an enumerator of its members has been read.
int s_read;

QzVariant CountedValue() {
  ++s_asked;
  return QzVariant();
}

const char* NameOf(int colour) { return ColourToString(colour); }

int CountedColour(const char* text) {
  ++s_read;
  return StringToColour(text);
}

class CCountedCol : public CTextCol {
 public:
  using CTextCol::CTextCol;

 protected:
  void AddFromString(std::string text) override {
    ++s_read;
    CTextCol::AddFromString(text);
  }
};

// A collection of groups.
class CGroupCol : public CXmlCollection {
 public:
  CGroupCol(const CTables& group, int minOccurs, int maxOccurs)
      : CXmlCollection("item", "", minOccurs, maxOccurs), m_group(group) {}

 protected:
  void ToXml_Int(CXmlWriter* writer, bool, const char* uri, const CSerializationContext& context,
                 bool) const override {
    for (const CNode* node = GetFirstNode(); node != nullptr; node = node->next) {
      CXmlObjectBase::ToXml_Int(node->item, writer, false, uri, context, false);
    }
  }
  CXmlElement* FromXml_Int(CXmlElement* parent, CXmlElement* cursor,
                           const CSerializationContext& context, bool) override {
    while (cursor != nullptr) {
      const CSmartPtr<CTableObject> item(new CTableObject(m_group, "item"));
      CXmlElement* const behind = item->FromXml_Int(parent, cursor, context, false);
      if (behind == cursor) break;
      AppendItem(item);
      cursor = behind;
    }
    return cursor;
  }

 private:
  const CTables& m_group;
};

// A real element "r" around a group around a group, in several shapes.
enum Shape {
  Shape_Sequences,
  Shape_ChoiceInside,
  Shape_Held,
  Shape_Choice,
  Shape_OptionalInFront,
  Shape_OneOrTwo,
  Shape_TwoOrMore,
  Shape_TwoOrThree,
  Shape_TwoGroups,
  Shape_OneOrTwoGroups,
  Shape_GroupsAndMore,
  Shape_NoneOrOne,
  Shape_NoneOrOneGroup,
  Shape_ChoiceOfTexts,
  Shape_Count
};

template <template <typename> class As>
class Groups {
 public:
  explicit Groups(Shape shape)
      : m_real(shape == Shape_Choice ? XmlElementGroupType_Choice : XmlElementGroupType_Sequence),
        m_outer(XmlElementGroupType_Sequence, kNoTag),
        m_inner(shape == Shape_ChoiceInside || shape == Shape_ChoiceOfTexts
                    ? XmlElementGroupType_Choice
                    : XmlElementGroupType_Sequence,
                kNoTag),
        m_item(XmlElementGroupType_Sequence, kNoTag) {
    AddInner(shape);
    const auto held =
        Unset::Held([this]() -> CXmlObjectBase* { return new CTableObject(m_inner, "inner"); });
    m_outer.Add(Member<CElementInfoSeqClsMnd>("inner", 0, m_inner, true), held);
    m_outer.Add(Prim<Is<CElementInfoSeqPrimOpt>>("c", 1), Unset::Value);
    if (shape == Shape_Choice) {
      m_real.Add(Member<CElementInfoChoiceClsOpt>("outer", 0, m_outer), Unset::Object);
    } else if (shape == Shape_Held) {
      m_real.Add(
          Member<CElementInfoSeqClsMnd>("outer", 0, m_outer, false),
          Unset::Held([this]() -> CXmlObjectBase* { return new CTableObject(m_outer, "outer"); }));
    } else {
      m_real.Add(Member<CElementInfoSeqClsOpt>("outer", 0, m_outer), Unset::Object);
    }
  }

  // A new one, of the same tables.
  Object NewObject() const { return Object(new CTableObject(m_real)); }

 private:
  template <typename Type>
  using Is = typename As<Type>::Type;

  template <typename Type, typename... More>
  static CElementInfo* Member(const char* name, int index, const CTables& tables, More... more) {
    return new Is<Type>(name, "", index, kNoTag, &MakeTableObject, tables.id(), more...);
  }

  static CElementInfo* Colour(const char* name, int index) {
    return new Is<CElementInfoSeqEnumMnd>(name, "", index, false, &NameOf, &CountedColour, nullptr);
  }

  static Unset::Make Texts(int minOccurs, int maxOccurs) {
    return Unset::Collection([=]() -> CXmlCollectionBase* {
      ++s_asked;
      return new CCountedCol("a", "", minOccurs, maxOccurs);
    });
  }

  void AddTexts(int minOccurs, int maxOccurs) {
    m_inner.Add(new Is<CElementInfoSeqPrimCol>("a", "", 0), Texts(minOccurs, maxOccurs));
    m_inner.Add(Colour("b", 1), Unset::Value);
  }

  void AddGroups(int minOccurs, int maxOccurs, int index = 0) {
    m_item.Add(Prim<Is<CElementInfoSeqPrimMnd>>("a", 0), Unset::Value);
    m_item.Add(Colour("b", 1), Unset::Value);
    m_inner.Add(new Is<CElementInfoSeqClsCol>("item", "", index, kNoTag),
                Unset::Collection([=]() -> CXmlCollectionBase* {
                  ++s_asked;
                  return new CGroupCol(m_item, minOccurs, maxOccurs);
                }));
  }

  void AddInner(Shape shape) {
    if (shape == Shape_OneOrTwo) return AddTexts(1, 2);
    if (shape == Shape_TwoOrMore) return AddTexts(2, -1);
    if (shape == Shape_TwoOrThree) return AddTexts(2, 3);
    if (shape == Shape_ChoiceInside) {
      m_inner.Add(Prim<Is<CElementInfoChoicePrimOpt>>("a", 0), CountedValue);
      m_inner.Add(Prim<Is<CElementInfoChoicePrimOpt>>("b", 1), Unset::Value);
      return;
    }
    if (shape == Shape_ChoiceOfTexts) {
      m_inner.Add(new Is<CElementInfoChoicePrimCol>("a", "", 0), Texts(1, 2));
      m_inner.Add(Prim<Is<CElementInfoChoicePrimOpt>>("b", 1), Unset::Value);
      return;
    }
    if (shape == Shape_TwoGroups) return AddGroups(2, 2);
    if (shape == Shape_OneOrTwoGroups) {
      AddGroups(1, 2);
      m_inner.Add(Prim<Is<CElementInfoSeqPrimMnd>>("c", 1), Unset::Value);
      return;
    }
    if (shape == Shape_GroupsAndMore) {
      AddGroups(1, -1);
      m_inner.Add(Prim<Is<CElementInfoSeqPrimMnd>>("c", 1), Unset::Value);
      return;
    }
    if (shape == Shape_NoneOrOne) {
      m_inner.Add(Colour("b", 0), Unset::Value);
      m_inner.Add(new Is<CElementInfoSeqPrimCol>("a", "", 1), Texts(0, 1));
      return;
    }
    if (shape == Shape_NoneOrOneGroup) {
      m_inner.Add(Prim<Is<CElementInfoSeqPrimMnd>>("c", 0), Unset::Value);
      return AddGroups(0, 1, 1);
    }
    const int first = shape == Shape_OptionalInFront ? 1 : 0;
    if (first != 0) m_inner.Add(Prim<Is<CElementInfoSeqPrimOpt>>("c", 0), Unset::Value);
    m_inner.Add(Prim<Is<CElementInfoSeqPrimMnd>>("a", first), CountedValue);
    m_inner.Add(Colour("b", first + 1), Unset::Value);
  }

  CTables m_real, m_outer, m_inner, m_item;
};

// Everything that reading a document gives.
template <template <typename> class As>
std::string Outcome(const Groups<As>& groups, CXmlElement* root, const Context& context) {
  const Object object = groups.NewObject();
  std::string outcome;
  try {
    const CXmlElement* const cursor =
        object->FromXml_Int(root, root->GetFirstElement(), context, false);
    outcome = cursor != nullptr ? cursor->GetXPath() : "(end)";
  } catch (const CQzException& e) {
    outcome = e.GetFullMessage();
  }
  try {
    return outcome + " " + Text(*object);
  } catch (const CQzException& e) {
    return outcome + " " + e.GetFullMessage();
  }
}

template <template <typename> class As>
std::string Outcome(Shape shape, const std::string& document, const Context& context) {
  CXmlDocument loaded;
  loaded.LoadXml(document.c_str());
  return Outcome(Groups<As>(shape), loaded.GetDocumentElement(), context);
}

// The children of "r" that the digits of a number choose.
std::string DocumentOf(int number, int children) {
  static const char* const kChildren[] = {"<x/>", "<a>1</a>", "<b>red</b>", "<b>pink</b>",
                                          "<c>2</c>"};
  std::string text = "<r>";
  for (int i = 0; i < children; ++i, number /= 5) text += kChildren[number % 5];
  return text + "</r>";
}

}  // namespace

TEST(SoughtMembers, GroupsReadWhatTheyWouldReadByLookingEachTime) {
  const Context context = Ignoring(&Context::SetIgnoreUnknownElements);
  for (int shape = 0; shape < Shape_Count; ++shape) {
    const Groups<Forgotten> forgotten(static_cast<Shape>(shape));
    const Groups<Known> known(static_cast<Shape>(shape));
    for (int children = 0, count = 1; children <= 4; ++children, count *= 5) {
      for (int number = 0; number < count; ++number) {
        const std::string document = DocumentOf(number, children);
        CXmlDocument loaded;
        loaded.LoadXml(document.c_str());
        CXmlElement* const root = loaded.GetDocumentElement();
        ASSERT_EQ(Outcome(forgotten, root, context), Outcome(known, root, context))
            << "shape " << shape << ": " << document;
      }
    }
  }
}

// Children that bring a walk back again and again: parts, of which all but the last of a document
// repeat.
TEST(SoughtMembers, ElementsAreReadAFewTimesAtMost) {
  const Context context = Ignoring(&Context::SetIgnoreUnknownElements);
  const std::vector<std::vector<std::string>> documents = {
      {"<x/>"},
      {"<x/>", "<a>1</a>"},
      {"<a>1</a>"},
      {"<a>1</a>", "<x/>", "<b>red</b>"},
      {"<a>1</a>", "<b>red</b>"},
      {"<a>1</a><x/>"},
      {"<a>1</a><b>red</b>"},
      {"<a>1</a><b>red</b>", "<x/>"},
      {"<a>1</a><a>1</a><x/>"},
      {"<c>1</c>", "<a>1</a>"},
      {"<x/><b>red</b>", "<a>1</a>", "<x/><b>red</b>"},
      {"<a>1</a>", "<b>red</b>", "<a>1</a>"},
      {"<b>red</b>"},
  };
  constexpr int kTimes = 150;
  for (int shape = 0; shape < Shape_Count; ++shape) {
    for (const std::vector<std::string>& parts : documents) {
      std::string document = "<r>";
      for (const std::string& part : parts) {
        const bool isLast = parts.size() > 1 && &part == &parts.back() && part.size() < 12;
        for (int i = 0; i < (isLast ? 1 : kTimes); ++i) document += part;
      }
      document += "</r>";
      s_asked = s_read = 0;
      Outcome<Known>(static_cast<Shape>(shape), document, context);
      const int children = static_cast<int>(parts.size()) * 3 * kTimes;
      EXPECT_LE(s_asked, 4 * children) << "shape " << shape << ": " << parts[0] << parts.back();
      EXPECT_LE(s_read, 4 * children) << "shape " << shape << ": " << parts[0] << parts.back();
    }
  }
}

TEST(SoughtMembers, WithoutAMemoryTheCostIsTheSquareOfTheChildren) {
  const Context context = Ignoring(&Context::SetIgnoreUnknownElements);
  constexpr int kChildren = 300;
  std::string document = "<r>";
  for (int i = 0; i < kChildren; ++i) document += "<a>1</a>";
  document += "</r>";
  s_asked = s_read = 0;
  Outcome<Forgotten>(Shape_TwoOrMore, document, context);
  EXPECT_GE(s_asked + s_read, kChildren * kChildren / 4);
}

// What is looked through and not read costs a comparison each: the square of this number takes
// minutes.
TEST(SoughtMembers, AMemberAtTheEndIsNotLookedForFromEachElement) {
  const Context context = Ignoring(&Context::SetIgnoreUnknownElements);
  std::string document = "<r>";
  for (int i = 0; i < 200000; ++i) document += "<x/>";
  document += "<a>1</a></r>";
  const std::clock_t begin = std::clock();
  Outcome<Known>(Shape_Sequences, document, context);
  EXPECT_LT(static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC, 30.0);
}
