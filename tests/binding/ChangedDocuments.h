#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <typeinfo>
#include <utility>
#include <vector>

#include "qzxml/binding/BoundClass.h"
#include "qzxml/serialization/SerializationContext.h"
#include "qzxml/xml/XmlDocument.h"
#include "tests/support/QzTest.h"

// Documents that differ from a good one in one thing, and what comes of them.
namespace qztest {

using QzXmlLib16::CBoundClass;
using QzXmlLib16::CQzException;
using QzXmlLib16::CSerializationContext;
using QzXmlLib16::CXmlAttribute;
using QzXmlLib16::CXmlDocument;
using QzXmlLib16::CXmlElement;

inline constexpr char kInstance[] = "http://www.w3.org/2001/XMLSchema-instance";

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

inline Node NodeOf(const CXmlElement& element) {
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

inline std::string Escape(const std::string& text) {
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

inline std::string TextOf(const Node& node) {
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
inline constexpr const char* kTexts[] = {
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
inline std::vector<Change> ChangesAt(const Node& at) {
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
inline constexpr int kEvery = 7;
#else
inline constexpr int kEvery = 1;
#endif

// Calls visit with each document that differs from this one in one thing, or in none.
inline void ForEachChanged(Node& root, Node& at,
                           const std::function<void(const std::string&)>& visit) {
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

inline std::string Describe(const CQzException& failure) {
  std::string text;
  for (const CQzException* e = &failure; e != nullptr; e = e->GetInnerException()) {
    text +=
        std::string(typeid(*e).name()) + " [" + e->GetMessage() + "] at [" + e->GetPath() + "]\n";
  }
  return text;
}

inline std::string Written(const CBoundClass& object) {
  try {
    CSerializationContext context;
    context.SetIgnoreInvalidCollectionCounts(true);
    context.SetIgnoreMissingChoice(true);
    return object.ToXml(false, false, QzXmlLib16::EOLType_LF, context);
  } catch (const CQzException& e) {
    return "not to be written: " + Describe(e);
  } catch (const AssertionFailed& e) {
    return "asserted: " + e.condition;
  }
}

using NewRoot = CBoundClass* (*)();

// The object that was read, or the failure and the object that it left; and what a good document
// makes of that object then.
inline std::string Outcome(NewRoot newRoot, const std::string& document, const std::string& good,
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

template <typename Object>
CBoundClass* New() {
  return new Object;
}

}  // namespace qztest
