#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "qzxml/QzXml.h"

// What the tests of the collections of values share.
namespace qztest {

using namespace QzXmlLib16;

// The arguments of such a collection, with what tests rarely change.
struct ColOptions {
  const char* name = "v";
  const char* uri = "";
  int minOccurs = 0;
  int maxOccurs = -1;
  const char* pattern = nullptr;
  std::int32_t minLength = -1;
  std::int32_t maxLength = -1;
  const char* minInclusive = nullptr;
  const char* maxInclusive = nullptr;
  const char* minExclusive = nullptr;
  const char* maxExclusive = nullptr;
  std::int32_t length = -1;
  std::int32_t totalDigits = -1;
  std::int32_t fractionDigits = -1;
  CWhitespaceUtils::WhitespaceRule rule = CWhitespaceUtils::WhitespaceRule_Collapse;
  const char* format = nullptr;
};

// A collection with everything open.
template <typename Col>
class CMade : public Col {
 public:
  explicit CMade(const ColOptions& o = ColOptions())
      : Col(o.name, o.uri, o.minOccurs, o.maxOccurs, o.pattern, o.minLength, o.maxLength,
            o.minInclusive, o.maxInclusive, o.minExclusive, o.maxExclusive, o.length, o.totalDigits,
            o.fractionDigits, o.rule, o.format) {}
  using Col::AddFromString;
  using Col::FromXml_Int;
  using Col::GetElementName;
  using Col::GetFormat;
  using Col::GetItemType;
  using Col::GetRestrictions;
  using Col::GetWhitespaceRule;
  using Col::HasFacets;
  using Col::ToXml_Int;
};

// A value and its text.
template <typename Value>
struct Sample {
  Value value;
  const char* text;
};

// --- Listening

// Notes what it hears, one line an event: the event, the text of its value or its index, and how
// many items the collection has then. Then it does what it was told to do.
template <typename Kind>
class CValueListener final : public IEventSink {
 public:
  explicit CValueListener(CXmlCollectionBase& collection) : m_collection(collection) {
    collection.AddEventListener(this);
  }
  ~CValueListener() { m_collection.RemoveEventListener(this); }
  CValueListener(const CValueListener&) = delete;
  CValueListener& operator=(const CValueListener&) = delete;

  std::vector<std::string> log;
  std::function<void(MsgType type, void* data)> onEvent;

  void OnEvent(CXmlObjectBase* sender, MsgType type, void* data) override {
    if (sender != m_collection.GetBase()) log.push_back("of another sender:");
    log.push_back(Describe(type, data) + ", " + std::to_string(m_collection.GetCount()));
    if (onEvent) onEvent(type, data);
  }

 private:
  static std::string Describe(MsgType type, void* data) {
    switch (type) {
      case MsgType_CollectionChange:
        return data == nullptr ? "change" : "change with data";
      case MsgType_CollectionAdd:
        return "add " + TextOf(data);
      case MsgType_CollectionAddComplete:
        return "added " + TextOf(data);
      case MsgType_CollectionRemove:
        return "remove " + Index(data);
      case MsgType_CollectionRemoveComplete:
        return "removed " + Index(data);
    }
    return "unknown";
  }
  static std::string TextOf(void* data) {
    for (const Sample<typename Kind::Value>& sample : Kind::Samples()) {
      if (sample.value == *static_cast<typename Kind::Value*>(data)) return sample.text;
    }
    return "(another value)";
  }
  static std::string Index(void* data) {
    return data == nullptr ? "null" : std::to_string(*static_cast<std::int32_t*>(data));
  }

  CXmlCollectionBase& m_collection;
};

// --- For tests of a kind

using Lines = std::vector<std::string>;

// Has three values of the kind, and speaks of them by their texts.
template <typename Kind>
class TypedColOf : public testing::Test {
 protected:
  using Col = CMade<typename Kind::Col>;
  using Value = typename Kind::Value;

  TypedColOf() : samples(Kind::Samples()) {}

  Value value(std::size_t index) const { return samples[index].value; }
  std::string text(std::size_t index) const { return samples[index].text; }

  // Adds the samples with these indexes, one digit each.
  void Fill(Col& col, const char* indexes) const {
    for (; *indexes != '\0'; ++indexes) col.Add(value(static_cast<std::size_t>(*indexes - '0')));
  }
  // The texts of the values, by Item.
  Lines Texts(const Col& col) const {
    Lines texts;
    for (int i = 0; i < col.GetCount(); ++i) texts.push_back(TextOf(col.Item(i)));
    return texts;
  }
  Lines TextsOf(const char* indexes) const {
    Lines texts;
    for (; *indexes != '\0'; ++indexes)
      texts.push_back(text(static_cast<std::size_t>(*indexes - '0')));
    return texts;
  }
  std::string TextOf(const Value& value) const {
    for (const Sample<Value>& sample : samples) {
      if (sample.value == value) return sample.text;
    }
    return "(another value)";
  }

  const std::vector<Sample<Value>> samples;
};

}  // namespace qztest
