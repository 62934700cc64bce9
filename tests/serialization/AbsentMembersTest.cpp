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

QzVariant CountedValue() {
  ++s_asked;
  return QzVariant();
}

// A real element "r" around a group around a group, in several shapes.
template <template <typename> class As>
class Groups {
 public:
  enum Shape { Shape_Sequences, Shape_ChoiceInside, Shape_Collection, Shape_Held, Shape_Choice };

  explicit Groups(Shape shape)
      : m_real(shape == Shape_Choice ? XmlElementGroupType_Choice : XmlElementGroupType_Sequence),
        m_outer(XmlElementGroupType_Sequence, kNoTag),
        m_inner(
            shape == Shape_ChoiceInside ? XmlElementGroupType_Choice : XmlElementGroupType_Sequence,
            kNoTag) {
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
    object = Object(new CTableObject(m_real));
  }

  Object object;

 private:
  template <typename Type>
  using Is = typename As<Type>::Type;

  template <typename Type, typename... More>
  static CElementInfo* Member(const char* name, int index, const CTables& tables, More... more) {
    return new Is<Type>(name, "", index, kNoTag, &MakeTableObject, tables.id(), more...);
  }

  void AddInner(Shape shape) {
    if (shape == Shape_ChoiceInside) {
      m_inner.Add(Prim<Is<CElementInfoChoicePrimOpt>>("a", 0), CountedValue);
      m_inner.Add(Prim<Is<CElementInfoChoicePrimOpt>>("b", 1), Unset::Value);
      return;
    }
    if (shape == Shape_Collection) {
      m_inner.Add(new Is<CElementInfoSeqPrimCol>("a", "", 0),
                  Unset::Collection([]() -> CXmlCollectionBase* {
                    ++s_asked;
                    return new CTextCol("a", "", 1, 2);
                  }));
    } else {
      m_inner.Add(Prim<Is<CElementInfoSeqPrimMnd>>("a", 0), CountedValue);
    }
    m_inner.Add(Enum<Is<CElementInfoSeqEnumMnd>>("b", 1), Unset::Value);
  }

  CTables m_real, m_outer, m_inner;
};

constexpr int kShapes = 5;

// Everything that reading a document gives.
template <template <typename> class As>
std::string Outcome(int shape, const std::string& document, const Context& context) {
  const Groups<As> groups(static_cast<typename Groups<As>::Shape>(shape));
  CXmlDocument loaded;
  loaded.LoadXml(document.c_str());
  CXmlElement* const root = loaded.GetDocumentElement();
  std::string outcome;
  try {
    const CXmlElement* const cursor =
        groups.object->FromXml_Int(root, root->GetFirstElement(), context, false);
    outcome = cursor != nullptr ? cursor->GetXPath() : "(end)";
  } catch (const CQzException& e) {
    outcome = e.GetFullMessage();
  }
  try {
    return outcome + " " + Text(*groups.object);
  } catch (const CQzException& e) {
    return outcome + " " + e.GetFullMessage();
  }
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

TEST(AbsentMembers, GroupsReadWhatTheyWouldReadByLookingEachTime) {
  const Context context = Ignoring(&Context::SetIgnoreUnknownElements);
  for (int shape = 0; shape < kShapes; ++shape) {
    for (int children = 0, count = 1; children <= 4; ++children, count *= 5) {
      for (int number = 0; number < count; ++number) {
        const std::string document = DocumentOf(number, children);
        ASSERT_EQ(Outcome<Forgotten>(shape, document, context),
                  Outcome<Known>(shape, document, context))
            << "shape " << shape << ": " << document;
      }
    }
  }
}

TEST(AbsentMembers, UnknownElementsAreLookedThroughAFewTimes) {
  const Context context = Ignoring(&Context::SetIgnoreUnknownElements);
  constexpr int kChildren = 300;
  std::string document = "<r>";
  for (int i = 0; i < kChildren; ++i) document += "<x/>";
  document += "</r>";
  for (int shape = 0; shape < kShapes; ++shape) {
    s_asked = 0;
    Outcome<Known>(shape, document, context);
    EXPECT_LE(s_asked, 5 * kChildren) << "shape " << shape;
  }
  // Without a memory it is a matter of their square.
  s_asked = 0;
  Outcome<Forgotten>(0, document, context);
  EXPECT_GE(s_asked, kChildren * kChildren / 4);
}
