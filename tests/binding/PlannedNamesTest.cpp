#include <optional>
#include <string>
#include <vector>

#include "qzxml/binding/BoundClass.h"
#include "qzxml/binding/BuiltInTypes.h"
#include "qzxml/binding/ClassBinding.h"
#include "qzxml/binding/ObjectCol.h"
#include "qzxml/binding/ObjectFactory.h"
#include "tests/support/PlanTrial.h"

// Names that a document meets for the first time where something else is the matter too.

using namespace QzXmlLib16;
using namespace qztest;

namespace {

constexpr char kUri[] = "urn:tree";

// Its first attribute is left to the walk, as it has a namespace.
class CLeaf : public CBoundClass {
 public:
  CLeaf() : CBoundClass(s_binding) {}
  explicit CLeaf(const char* mark) : CLeaf() { m_mark = mark; }

  std::optional<std::string> m_mark;
  std::optional<std::string> m_name;
  std::optional<std::string> m_colour;
  std::optional<double> m_size;

 private:
  static const CMember s_members[];
  static CClassBinding s_binding;
};

const CMember CLeaf::s_members[] = {
    OptionalAttribute("mark", "urn:mark", &CLeaf::m_mark, kXsdString),
    OptionalAttribute("name", "", &CLeaf::m_name, kXsdString),
    ValueElement("colour", kUri, Optional, &CLeaf::m_colour, kXsdString),
    ValueElement("size", kUri, Optional, &CLeaf::m_size, kXsdDouble),
};

CClassBinding CLeaf::s_binding({"Leaf", kUri, "leaf", &NewObject<CLeaf>}, s_members);

// Names that elements and attributes share, and one of a second namespace.
class CBranch : public CBoundClass {
 public:
  CBranch() : CBoundClass(s_binding) {}

  CObjectCol<CLeaf>& GetLeaves() const {
    return static_cast<CObjectCol<CLeaf>&>(GetCollection(0, m_leaves));
  }
  void AddLeaf(CLeaf* leaf) { GetLeaves().Add(CSmartPtr<CLeaf>(leaf)); }
  void SetBlossom(CLeaf* leaf) { m_blossom = CObjectHandle(leaf); }

  CCollectionHandle m_leaves;
  std::optional<std::string> m_colour;
  std::optional<std::string> m_name;
  CObjectHandle m_blossom;
  std::optional<std::string> m_foreign;

 private:
  static const CMember s_members[];
  static CClassBinding s_binding;
};

const CMember CBranch::s_members[] = {
    ObjectElement("leaf", kUri, Repeated(), &CBranch::m_leaves, &NewObject<CLeaf>,
                  &NewObjectCol<CLeaf>),
    OptionalAttribute("colour", "", &CBranch::m_colour, kXsdString),
    ValueElement("name", kUri, Optional, &CBranch::m_name, kXsdString),
    ObjectElement("blossom", kUri, Optional, &CBranch::m_blossom, &NewObject<CLeaf>),
    ValueElement("name", "urn:other", Optional, &CBranch::m_foreign, kXsdString),
};

CClassBinding CBranch::s_binding({"Branch", kUri, "branch", &NewObject<CBranch>}, s_members);

void ExpectAsWalked(const CBranch& branch) { ExpectPlannedAsWalked(branch, kUri); }

}  // namespace

TEST(PlannedNames, ANewElementWaitsForAnAttributeThatTheWalkWrites) {
  CBranch branch;
  branch.AddLeaf(new CLeaf("first"));
  branch.AddLeaf(new CLeaf("second"));
  ExpectAsWalked(branch);
  CBranch plainFirst;
  plainFirst.AddLeaf(new CLeaf);
  plainFirst.AddLeaf(new CLeaf("second"));
  plainFirst.SetBlossom(new CLeaf("third"));
  ExpectAsWalked(plainFirst);
}

TEST(PlannedNames, ElementsAndAttributesShareTheirLocalNames) {
  CBranch branch;
  branch.m_colour = "green";
  branch.m_name = "b";
  for (const char* name : {"a", "b"}) {
    auto* const leaf = new CLeaf;
    leaf->m_name = name;
    leaf->m_colour = "red";
    leaf->m_size = 1.5;
    branch.AddLeaf(leaf);
  }
  branch.m_foreign = "f";
  ExpectAsWalked(branch);
}

// The name is then new for what is written next, too.
TEST(PlannedNames, ANewNameIsForgottenWithItsValue) {
  const std::string zero("r\0d", 3);
  const std::string longZero("the colour of \0 leaves", 22);
  for (const std::string& text : {zero, longZero, std::string()}) {
    CBranch branch;
    branch.m_colour = text;
    branch.m_name = text;
    for (const std::string& colour : {text, std::string("red"), text}) {
      auto* const leaf = new CLeaf;
      leaf->m_name = colour;
      leaf->m_colour = colour;
      branch.AddLeaf(leaf);
    }
    ExpectAsWalked(branch);
  }
  CBranch branch;
  auto* const leaf = new CLeaf;
  leaf->m_size = -0.0;
  branch.AddLeaf(leaf);
  ExpectAsWalked(branch);
}

// Long enough for the room to end at each place of the names.
TEST(PlannedNames, ANewNameMayComeWhereTheRoomEnds) {
  std::vector<CSerializationContext> contexts(2);  // without prefixes, and with them
  contexts[0].SetDefaultNamespaceURI(kUri);
  for (const CSerializationContext& context : contexts) {
    for (std::size_t size = 65200; size < 65600; ++size) {
      CBranch branch;
      branch.m_colour = std::string(size, 'g');
      auto* const leaf = new CLeaf;
      leaf->m_name = "a";
      leaf->m_colour = "red";
      branch.AddLeaf(leaf);
      branch.SetBlossom(new CLeaf("m"));
      ExpectOctetsAsWalked(branch, context);
      ASSERT_FALSE(HasFatalFailure()) << size;
    }
  }
}

// An element of no namespace takes no prefix, and one of a second namespace one that is made for
// it.
TEST(PlannedNames, NewNamesMayHavePrefixes) {
  std::vector<CSerializationContext> contexts(3);
  contexts[1].GetNamespaceAliases().Add("q", kUri);
  contexts[2].GetNamespaceAliases().Add("q", kUri);
  contexts[2].GetNamespaceAliases().Add("other", "urn:other");
  CBranch branch;
  for (const char* colour : {"red", "a long text of red", "red"}) {
    auto* const leaf = new CLeaf(colour);
    leaf->m_colour = colour;
    branch.AddLeaf(leaf);
    branch.AddLeaf(new CLeaf);
  }
  auto* const blossom = new CLeaf;
  blossom->m_colour = std::string("r\0d", 3);
  branch.SetBlossom(blossom);
  branch.m_name = "n";
  branch.m_foreign = "f";
  for (const CSerializationContext& context : contexts) ExpectOctetsAsWalked(branch, context);
}

// The element has got no attribute yet, and its name is taken back for the walk to put it again.
TEST(PlannedNames, ANewPrefixGoesWithItsName) {
  std::vector<CSerializationContext> contexts(3);
  contexts[1].GetNamespaceAliases().Add("other", "urn:other");
  contexts[2].SetDefaultNamespaceURI(kUri);
  contexts[2].GetNamespaceAliases().Add("other", "urn:other");
  for (const CSerializationContext& context : contexts) {
    CBranch branch;
    branch.m_foreign = std::string("f\0", 2);
    ExpectOctetsAsWalked(branch, context);
    branch.AddLeaf(new CLeaf("first"));
    ExpectOctetsAsWalked(branch, context);
    branch.m_foreign = "f";
    ExpectOctetsAsWalked(branch, context);
  }
}
