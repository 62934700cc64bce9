#include <optional>
#include <string>

#include "qzxml/binding/BoundClass.h"
#include "qzxml/binding/BuiltInTypes.h"
#include "qzxml/binding/ClassBinding.h"
#include "qzxml/binding/ObjectFactory.h"
#include "tests/support/PlanTrial.h"

// Documents of more namespaces than a run has prefixes of at hand, whose prefixes come and go.

using namespace QzXmlLib16;
using namespace qztest;

namespace {

constexpr int kCount = 12;
constexpr const char* kUris[kCount] = {"urn:0", "urn:1", "urn:2", "urn:3", "urn:4",  "urn:5",
                                       "urn:6", "urn:7", "urn:8", "urn:9", "urn:10", ""};
constexpr char kLongName[] =
    "a1234567890123456789012345678901234567890123456789012345678901234567890123456789"
    "0123456789012345678901234567890123456789012345678901234567890123456789012345678901234567890"
    "12345678901234567890123456789";
static_assert(sizeof(kLongName) == 201);

constexpr int After(int place, int steps) { return (place + steps) % kCount; }

// The class of elements in the namespace at that place, with a child in the next one, one in a
// namespace whose number is the same modulo 8, and values in its own and in others.
template <int place>
class CNode : public CBoundClass {
 public:
  CNode() : CNode(s_binding) {}

  void Fill(int depth) {
    m_own = "o";
    m_next = "n & n";
    m_long = depth % 2 == 0 ? "" : "l";
    m_behind = "b";
    if (depth == 0) return;
    const CSmartPtr<CNode<After(place, 1)>> child(new CNode<After(place, 1)>);
    child->TakeElementName("child");
    child->Fill(depth - 1);
    m_child = child;
    const CSmartPtr<CNode<After(place, 8)>> far(new CNode<After(place, 8)>);
    far->TakeElementName("far");
    if (depth % 3 != 0) far->Fill(0);
    m_far = far;
  }

  // With an attribute that the walk writes, which has a prefix declared until the end of the
  // element, and with values in its namespace there and behind the end of the element inside.
  void Mark(int depth) {
    m_mark = "m";
    m_marked = "i";
    m_late = "l";
    if (depth == 0) return;
    static_cast<CNode<After(place, 1)>&>(*m_child).Mark(depth - 1);
  }

  void SetChild(CBoundClass* child) {
    child->TakeElementName("child");
    m_child = CObjectHandle(child);
  }

 protected:
  explicit CNode(CClassBinding& binding) : CBoundClass(binding) {}

 private:
  static const CMember s_members[];
  static CClassBinding s_binding;

  std::optional<std::string> m_mark;
  std::optional<std::string> m_marked;
  std::optional<std::string> m_own;
  std::optional<std::string> m_next;
  std::optional<std::string> m_long;
  std::optional<std::string> m_late;
  std::optional<std::string> m_behind;
  CObjectHandle m_child;
  CObjectHandle m_far;
};

template <int place>
const CMember CNode<place>::s_members[] = {
    OptionalAttribute("mark", kUris[After(place, 3)], &CNode::m_mark, kXsdString),
    ValueElement("marked", kUris[After(place, 3)], Optional, &CNode::m_marked, kXsdString),
    ValueElement("own", kUris[place], Optional, &CNode::m_own, kXsdString),
    ValueElement("next", kUris[After(place, 1)], Optional, &CNode::m_next, kXsdString),
    ObjectElement("child", kUris[After(place, 1)], Optional, &CNode::m_child,
                  &NewObject<CNode<After(place, 1)>>),
    ObjectElement("far", kUris[After(place, 8)], Optional, &CNode::m_far,
                  &NewObject<CNode<After(place, 8)>>),
    ValueElement("late", kUris[After(place, 4)], Optional, &CNode::m_late, kXsdString),
    ValueElement(kLongName, kUris[After(place, 5)], Optional, &CNode::m_long, kXsdString),
    ValueElement("behind", kUris[place], Optional, &CNode::m_behind, kXsdString),
};

template <int place>
CClassBinding CNode<place>::s_binding({"Node", kUris[place], "node", &NewObject<CNode<place>>},
                                      s_members);

// A context in which prefixes of that size are declared for every step-th namespace, from the
// first on.
CSerializationContext ContextWith(std::size_t size, int step) {
  CSerializationContext context;
  for (int i = 0; i < kCount - 1; i += step) {
    std::string prefix(size, static_cast<char>('a' + i));
    context.GetNamespaceAliases().Add(prefix.c_str(), kUris[i]);
  }
  return context;
}

std::string TextOf(const CXmlObjectBase& object, const CSerializationContext& context) {
  const Form form{false, EOLType_LF, 65536, false};
  ExpectPlannedAsWalked(object, form, context);
  return ByPlan(object, form, context).text;
}

void ExpectAsWalked(const CXmlObjectBase& object, const CSerializationContext& context) {
  for (const Form& form : Forms()) {
    ExpectPlannedAsWalked(object, form, context);
    if (::testing::Test::HasFatalFailure()) return;
  }
  ExpectOctetsAsWalked(object, context);
}

}  // namespace

TEST(PlannedPrefixes, EachNamespaceHasItsOwn) {
  CNode<0> node;
  node.Fill(1);
  CSerializationContext context = ContextWith(1, 1);
  const std::string name = kLongName;
  EXPECT_EQ(
      "<a:node xmlns:a=\"urn:0\" xmlns:b=\"urn:1\" xmlns:k=\"urn:10\" xmlns:c=\"urn:2\" "
      "xmlns:d=\"urn:3\" xmlns:e=\"urn:4\" xmlns:f=\"urn:5\" xmlns:g=\"urn:6\" "
      "xmlns:h=\"urn:7\" xmlns:i=\"urn:8\" xmlns:j=\"urn:9\">"
      "<a:own>o</a:own><b:next>n &amp; n</b:next>"
      "<b:child><b:own>o</b:own><c:next>n &amp; n</c:next><g:" +
          name + "/><b:behind>b</b:behind></b:child>" +
          "<i:far><i:own>o</i:own><j:next>n &amp; n</j:next><b:" + name +
          "/><i:behind>b</i:behind></i:far>" + "<f:" + name + ">l</f:" + name +
          "><a:behind>b</a:behind></a:node>",
      TextOf(node, context));
}

TEST(PlannedPrefixes, ThereMayBeMoreThanAreAtHand) {
  CNode<0> node;
  node.Fill(14);
  ExpectPlannedAsWalked(node, kUris[0]);
  ExpectPlannedAsWalked(node, kUris[8]);
  for (const int step : {1, 2, 3}) ExpectAsWalked(node, ContextWith(2, step));
}

TEST(PlannedPrefixes, OneThatAnAttributeBringsEndsWithItsElement) {
  CNode<0> node;
  node.Fill(1);
  node.Mark(1);
  CSerializationContext context;
  context.SetDefaultNamespaceURI(kUris[0]);
  const std::string text = TextOf(node, context);
  EXPECT_NE(std::string::npos,
            text.find("<AB:child xmlns:AB=\"urn:1\" xmlns:AC=\"urn:4\" AC:mark=\"m\">"
                      "<AC:marked>i</AC:marked><AB:own>o</AB:own>"))
      << text;
  EXPECT_NE(std::string::npos, text.find("<AB:late xmlns:AB=\"urn:4\">l</AB:late>")) << text;
  CNode<0> deep;
  deep.Fill(12);
  deep.Mark(12);
  ExpectPlannedAsWalked(deep, kUris[0]);
  ExpectPlannedAsWalked(deep, kUris[9]);
  for (const int step : {1, 2, 3}) ExpectAsWalked(deep, ContextWith(2, step));
}

TEST(PlannedPrefixes, MayHaveAnyLength) {
  CNode<3> node;
  node.Fill(3);
  for (const std::size_t size : {1U, 2U, 5U, 11U, 12U, 13U, 14U, 15U, 16U, 17U, 31U, 32U, 100U}) {
    SCOPED_TRACE(size);
    ExpectAsWalked(node, ContextWith(size, 1));
    if (HasFatalFailure()) return;
  }
}

TEST(PlannedPrefixes, TwoNamespacesMayHaveNone) {
  CNode<10> node;  // its next is no namespace
  node.Fill(3);
  for (const int place : {10, 11, 0, 7}) {
    CSerializationContext context = ContextWith(1, 2);
    context.SetDefaultNamespaceURI(kUris[place]);
    ExpectAsWalked(node, context);
  }
  CSerializationContext context;
  context.SetDefaultNamespaceURI(kUris[10]);
  CNode<10> outer;
  outer.Fill(1);
  const std::string name = kLongName;
  EXPECT_EQ(
      "<node xmlns=\"urn:10\"><own>o</own><next>n &amp; n</next>"
      "<child><own>o</own><AA:next xmlns:AA=\"urn:0\">n &amp; n</AA:next>"
      "<AA:" +
          name +
          " xmlns:AA=\"urn:4\"/><behind>b</behind></child>"
          "<AA:far xmlns:AA=\"urn:6\"><AA:own>o</AA:own>"
          "<AB:next xmlns:AB=\"urn:7\">n &amp; n</AB:next><" +
          name +
          "/><AA:behind>b</AA:behind></AA:far>"
          "<AA:" +
          name + " xmlns:AA=\"urn:3\">l</AA:" + name + "><behind>b</behind></node>",
      TextOf(outer, context));
}

// --- A prefix that stands for another namespace further in

namespace {

// A user's own class, which declares prefixes of its own: that of one namespace for another, or no
// prefix for it.
template <int place>
class CRebinding : public CNode<place> {
 public:
  explicit CRebinding(const char* prefix, int uri) : m_prefix(prefix), m_uri(kUris[uri]) {}

 protected:
  void AttributesToXml_Int(CXmlWriter* writer,
                           const CSerializationContext& context) const override {
    if (m_prefix.empty()) {
      writer->WriteAttribute("xmlns", "", m_uri, ItemType_string);
      writer->SetDefaultNamespace(m_uri);
    } else {
      writer->WriteAttribute("xmlns:" + m_prefix, "", m_uri, ItemType_string);
      writer->AddNamespaceMapping(m_prefix, m_uri);
    }
    CNode<place>::AttributesToXml_Int(writer, context);
  }

 private:
  const std::string m_prefix;
  const std::string m_uri;
};

}  // namespace

TEST(PlannedPrefixes, MayStandForAnotherNamespaceFurtherIn) {
  CSerializationContext context = ContextWith(1, 1);
  for (const char* const prefix : {"x", "c", "e", "", "aprefixofmorethansixteen"}) {
    for (const int uri : {0, 2, 3, 8, 10}) {
      SCOPED_TRACE(std::string(prefix) + " " + kUris[uri]);
      CNode<0> root;
      root.Fill(2);
      auto* const rebinding = new CRebinding<1>(prefix, uri);
      rebinding->Fill(4);
      root.SetChild(rebinding);
      ExpectAsWalked(root, context);
      ExpectAsWalked(root, CSerializationContext());
      if (HasFatalFailure()) return;
    }
  }
}

TEST(PlannedPrefixes, WhatIsDeclaredFurtherInEndsThere) {
  CNode<0> root;
  root.Fill(1);
  auto* const rebinding = new CRebinding<1>("y", 2);
  rebinding->Fill(1);
  root.SetChild(rebinding);
  CSerializationContext context = ContextWith(1, 1);
  const std::string text = TextOf(root, context);
  EXPECT_NE(std::string::npos, text.find("<b:child xmlns:y=\"urn:2\"><b:own>o</b:own>"
                                         "<y:next>n &amp; n</y:next><y:child><y:own>o</y:own>"))
      << text;
  EXPECT_NE(std::string::npos, text.find("<y:behind>b</y:behind></y:child>")) << text;
  EXPECT_NE(std::string::npos, text.find("<b:behind>b</b:behind></b:child><i:far>")) << text;
}
