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
class CColListener : public IEventSink {
 public:
  using TextOf = std::string (*)(const void* value);

  CColListener(CXmlCollectionBase& collection, TextOf textOf);
  virtual ~CColListener();
  CColListener(const CColListener&) = delete;
  CColListener& operator=(const CColListener&) = delete;

  std::vector<std::string> log;
  std::function<void(MsgType type, void* data)> onEvent;

  void OnEvent(CXmlObjectBase* sender, MsgType type, void* data) override;

 private:
  std::string Describe(MsgType type, void* data) const;

  CXmlCollectionBase& m_collection;
  const TextOf m_textOf;
};

// The text of a value of the kind, where it is one of its samples.
template <typename Kind>
std::string TextOfValue(const void* value) {
  for (const Sample<typename Kind::Value>& sample : Kind::Samples()) {
    if (sample.value == *static_cast<const typename Kind::Value*>(value)) return sample.text;
  }
  return "(another value)";
}

template <typename Kind>
class CValueListener final : public CColListener {
 public:
  explicit CValueListener(CXmlCollectionBase& collection)
      : CColListener(collection, &TextOfValue<Kind>) {}
};

using Lines = std::vector<std::string>;

}  // namespace qztest
