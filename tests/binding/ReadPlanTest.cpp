// The plan of a class reads what the walk over its tables reads: the same documents, and the same
// failures with the same objects behind them. Documents come from good ones with one thing changed
// at each place.
#include <functional>
#include <memory>
#include <string>
#include <typeinfo>
#include <utility>
#include <vector>

#include "qzxml/binding/ReadPlan.h"
#include "qzxml/serialization/SerializationContext.h"
#include "qzxml/xml/XmlDocument.h"
#include "tests/binding/Kinds.h"
#include "tests/binding/Shop.h"
#include "tests/support/QzTest.h"

using namespace QzXmlLib16;

namespace {

constexpr char kInstance[] = "http://www.w3.org/2001/XMLSchema-instance";

// --- Documents that can be changed

struct Node {
  std::string name;
  std::string namespaceUri;
  struct Attribute {
    std::string name;
    std::string namespaceUri;
    std::string value;
  };
  std::vector<Attribute> attributes;
  std::string text;
  std::vector<Node> children;
};

Node NodeOf(const CXmlElement& element) {
  Node node{element.GetLocalName(), element.GetNamespaceURI(), {}, element.GetText(), {}};
  for (const CXmlAttribute* attribute : element.GetAttributeRange()) {
    node.attributes.push_back(
        {attribute->GetLocalName(), attribute->GetNamespaceURI(), attribute->GetValue()});
  }
  for (const CXmlElement* child = element.GetFirstElement(); child != nullptr;
       child = child->GetNextSiblingElement()) {
    node.children.push_back(NodeOf(*child));
  }
  return node;
}

std::string Escape(const std::string& text) {
  std::string escaped;
  for (const char c : text) {
    if (c == '&' || c == '<' || c == '"' || c < ' ') {
      escaped += "&#" + std::to_string(static_cast<int>(c)) + ";";
    } else {
      escaped += c;
    }
  }
  return escaped;
}

std::string TextOf(const Node& node) {
  std::string text = "<" + node.name + " xmlns=\"" + Escape(node.namespaceUri) + "\"";
  int prefix = 0;
  for (const Node::Attribute& attribute : node.attributes) {
    std::string name = attribute.name;
    if (!attribute.namespaceUri.empty()) {
      const std::string alias = "p" + std::to_string(prefix++);
      text += " xmlns:" + alias + "=\"" + Escape(attribute.namespaceUri) + "\"";
      name.insert(0, alias + ":");
    }
    text += " " + name + "=\"" + Escape(attribute.value) + "\"";
  }
  text += ">" + Escape(node.text);
  for (const Node& child : node.children) text += TextOf(child);
  return text + "</" + node.name + ">";
}

// Texts that some kind of value takes, that need white space to be taken away, and that none takes.
const char* const kTexts[] = {
    "",
    " ",
    "\n\t ",
    "x",
    "a  b",
    " 1 ",
    "1",
    "0",
    "-1",
    "+1",
    "007",
    "9",
    "10",
    "60",
    "128",
    "-128",
    "-129",
    "255",
    "256",
    "32768",
    "65536",
    "2147483647",
    "2147483648",
    "4294967295",
    "-2147483649",
    "1 2",
    "1.50",
    "-0",
    "-0.0",
    ".5",
    "5.",
    ".",
    "-",
    "1.2.3",
    "1e3",
    "12345.678",
    "true",
    "TRUE",
    "false",
    " true ",
    "INF",
    "NaN",
    "EUR",
    " CHF ",
    "eur",
    "ab x",
    "AB-12",
    "AB-12345",
    "de",
    "1\r2",
    "2004-02-29",
    "2004-02-30",
    "1999-12-31",
    "2004-02",
    "--02-29",
    "2004",
    "2004+01:00",
    "-004-02-29",
    "2004-02-29T12:00:00",
    "2004-02-29T12:00:00Z",
    "2004-02-29T12:00:00x",
    "2004-02-29ZT12:00:00",
    "2004-02-29T24:00:00",
    "-2004-02-29T12:00:00",
    "2100-02-29",
    "2004-04-31",
    "0000-01-01",
    "-0004-02-29",
    "2004-02-29Z",
    "2004-02-29+01:00",
    "12:00:00",
    "24:00:00",
    "2004-02-29T12:00:00.5Z",
    "2004-02-29T12:00:00 ",
    "P1D",
    "PT0S",
    "P",
    "1.0",
    "0aF",
    "QUJD",
    "QU!",
    "\xC3\xA9",
    "18446744073709551615",
    "18446744073709551614",
    "999999999999999999999999999999999999999999999999999999999999999999999999999999"};

using Change = std::function<void(Node& node)>;

// What is changed at an element.
std::vector<Change> ChangesAt(const Node& at) {
  std::vector<Change> changes;
  for (const char* const text : kTexts) {
    changes.push_back([text](Node& node) { node.text = text; });
  }
  for (const char* const value : {"true", "false", "1", "0", "maybe"}) {
    changes.push_back([value](Node& node) {
      node.attributes.push_back({"nil", kInstance, value});
    });
  }
  for (const char* const value :
       {"Book", "x", "Code", "ShortCode", "Bounded", "Few", " Few ", "int"}) {
    changes.push_back([value](Node& node) {
      node.attributes.push_back({"type", kInstance, value});
    });
  }
  changes.push_back([](Node& node) { node.name += "x"; });
  changes.push_back([](Node& node) { node.namespaceUri = "urn:other"; });
  changes.push_back([](Node& node) { node.attributes.push_back({"more", "", "1"}); });
  changes.push_back([](Node& node) { node.attributes.push_back({"more", "urn:other", "1"}); });
  changes.push_back([](Node& node) {
    node.children.insert(node.children.begin(), {"more", node.namespaceUri, {}, "", {}});
  });
  changes.push_back([](Node& node) {
    node.children.push_back({"more", "urn:other", {}, "x", {}});
  });
  for (std::size_t i = 0; i < at.attributes.size(); ++i) {
    const auto offset = static_cast<std::ptrdiff_t>(i);
    changes.push_back(
        [offset](Node& node) { node.attributes.erase(node.attributes.begin() + offset); });
    changes.push_back([i](Node& node) { node.attributes[i].name += "x"; });
    changes.push_back([i](Node& node) { node.attributes[i].namespaceUri = "urn:other"; });
    changes.push_back([i](Node& node) { std::swap(node.attributes[i], node.attributes.back()); });
    for (const char* const text : kTexts) {
      changes.push_back([i, text](Node& node) { node.attributes[i].value = text; });
    }
  }
  for (std::size_t i = 0; i < at.children.size(); ++i) {
    const auto offset = static_cast<std::ptrdiff_t>(i);
    changes.push_back(
        [offset](Node& node) { node.children.erase(node.children.begin() + offset); });
    changes.push_back([i](Node& node) { node.children.push_back(node.children[i]); });
    changes.push_back([offset](Node& node) {
      const Node twin = node.children[static_cast<std::size_t>(offset)];
      node.children.insert(node.children.begin() + offset, twin);
    });
    changes.push_back([i](Node& node) { std::swap(node.children[i], node.children.back()); });
    changes.push_back([i](Node& node) { std::swap(node.children[i], node.children.front()); });
  }
  return changes;
}

// Meant: the build with sanitizers, which is slow, tries every seventh document.
#if defined(QZXML_ASSERTIONS)
constexpr int kEvery = 7;
#else
constexpr int kEvery = 1;
#endif

// Calls visit with each document that differs from this one in one thing, or in none.
void ForEachChanged(Node& root, Node& at, const std::function<void(const std::string&)>& visit) {
  visit(TextOf(root));
  for (const Change& change : ChangesAt(at)) {
    const Node before = at;
    change(at);
    visit(TextOf(root));
    at = before;
  }
  for (std::size_t i = 0; i < at.children.size(); ++i) {
    ForEachChanged(root, at.children[i], visit);
  }
}

// --- What comes of a document

std::string Describe(const CQzException& failure) {
  std::string text;
  for (const CQzException* e = &failure; e != nullptr; e = e->GetInnerException()) {
    text +=
        std::string(typeid(*e).name()) + " [" + e->GetMessage() + "] at [" + e->GetPath() + "]\n";
  }
  return text;
}

std::string Written(const CBoundClass& object) {
  try {
    CSerializationContext context;
    context.SetIgnoreInvalidCollectionCounts(true);
    context.SetIgnoreMissingChoice(true);
    return object.ToXml(false, false, EOLType_LF, context);
  } catch (const CQzException& e) {
    return "not to be written: " + Describe(e);
  } catch (const qztest::AssertionFailed& e) {
    return "asserted: " + e.condition;
  }
}

using NewRoot = CBoundClass* (*)();

// The object that was read, or the failure and the object that it left; and what a good document
// makes of that object then.
std::string Outcome(NewRoot newRoot, const std::string& document, const std::string& good,
                    const CSerializationContext& context) {
  const CSmartPtr<CBoundClass> object(newRoot());
  std::string outcome;
  try {
    object->FromXml(document.c_str(), context);
  } catch (const CQzException& e) {
    outcome = Describe(e);
  }
  outcome += Written(*object);
  object->FromXml(good.c_str());
  return outcome + "\n" + Written(*object);
}

class CByWalk {
 public:
  CByWalk() { detail::ReadByPlans(false); }
  ~CByWalk() { detail::ReadByPlans(true); }
  CByWalk(const CByWalk&) = delete;
  CByWalk& operator=(const CByWalk&) = delete;
};

std::vector<CSerializationContext> Contexts() {
  std::vector<CSerializationContext> contexts(7);
  contexts[1].SetIgnoreUnknownElements(true);
  contexts[2].SetIgnoreMissingMandatoryElements(true);
  contexts[3].SetIgnoreUnknownAttributes(true);
  contexts[4].SetIgnoreNamespaces(true);
  contexts[5].SetIgnoreInvalidCollectionCounts(true);
  contexts[6].SetIgnoreMissingChoice(true);
  return contexts;
}

// Each document in the ordinary context and in one of the others in turn.
void ExpectSameByPlanAndWalk(NewRoot newRoot, const std::string& good) {
  const std::vector<CSerializationContext> contexts = Contexts();
  CXmlDocument document;
  document.LoadXml(good.c_str());
  Node root = NodeOf(*document.GetDocumentElement());
  int count = 0;
  int failures = 0;
  ForEachChanged(root, root, [&](const std::string& text) {
    for (std::size_t i = 0; i < contexts.size(); ++i) {
      const bool isTried =
          i == 0 || static_cast<std::size_t>(count / kEvery) % contexts.size() == i;
      if (!isTried || count % kEvery != 0 || failures > 5) continue;
      const std::string byPlan = Outcome(newRoot, text, good, contexts[i]);
      const CByWalk byWalkNow;
      const std::string byWalk = Outcome(newRoot, text, good, contexts[i]);
      EXPECT_EQ(byPlan, byWalk) << text << "\n in context " << i;
      if (byPlan != byWalk) ++failures;
    }
    ++count;
  });
  EXPECT_GT(count, 100);
}

template <typename Object>
CBoundClass* New() {
  return new Object;
}

}  // namespace

TEST(ReadPlan, ReadsValuesOfEachKindAsTheWalkDoes) {
  ExpectSameByPlanAndWalk(&New<kinds::CKinds>, kinds::kDocument);
}

TEST(ReadPlan, ReadsMembersOfEachFormAsTheWalkDoes) {
  ExpectSameByPlanAndWalk(
      &New<shop::COrder>,
      "<order xmlns='urn:shop' id='7' currency='CHF' version='1.0' xmlns:x='urn:x' x:mark='m'"
      " xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance'>"
      "<customer><name>Ada</name></customer><note>n</note><card>With love</card>"
      "<item xsi:type='Book' price='12.5'><title>Sums</title></item>"
      "<item xsi:type='Disc' price='9'/><tag>a</tag><tag> b </tag><size>38</size>"
      "<colour>USD</colour><colour>EUR</colour><comment>ok</comment>"
      "<pick>true</pick><pack>false</pack><pick>false</pick><x:extra>more</x:extra></order>");
}

TEST(ReadPlan, ReadsChoicesTextsAndDerivedClassesAsTheWalkDoes) {
  ExpectSameByPlanAndWalk(&New<shop::CPayment>,
                          "<payment xmlns='urn:shop'><card>1</card></payment>");
  ExpectSameByPlanAndWalk(&New<shop::CWeight>, "<weight xmlns='urn:shop' unit='kg'>1.5</weight>");
  ExpectSameByPlanAndWalk(&New<shop::CBook>,
                          "<item xmlns='urn:shop' price='1'><title>Sums</title></item>");
  ExpectSameByPlanAndWalk(&New<shop::CDisc>, "<item xmlns='urn:shop' price='1'/>");
  ExpectSameByPlanAndWalk(&New<shop::CCustomer>,
                          "<customer xmlns='urn:shop'><name>A</name></customer>");
}

TEST(ReadPlan, StepsAsideInEveryContextThatChangesTheWalk) {
  EXPECT_TRUE(detail::CReadPlan::Serves(CSerializationContext()));
  const std::vector<CSerializationContext> contexts = Contexts();
  EXPECT_FALSE(detail::CReadPlan::Serves(contexts[1]));
  EXPECT_FALSE(detail::CReadPlan::Serves(contexts[2]));
  EXPECT_TRUE(detail::CReadPlan::Serves(contexts[3]));
  EXPECT_FALSE(detail::CReadPlan::Serves(contexts[4]));
  const CByWalk byWalk;
  EXPECT_FALSE(detail::CReadPlan::Serves(CSerializationContext()));
}
