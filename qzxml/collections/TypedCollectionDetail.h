#pragma once

#include <string>
#include <utility>

#include "qzxml/collections/Messages.h"
#include "qzxml/collections/TypedCollection.h"
#include "qzxml/runtime/Functions.h"
#include "qzxml/runtime/QzException.h"
#include "qzxml/serialization/PrimitiveRestrictions.h"
#include "qzxml/values/ConversionsDetail.h"
#include "qzxml/xml/KeptTags.h"
#include "qzxml/xml/XmlWriter.h"

// The bodies of the collections of values. They are compiled once for each kind, by the source that
// says in a row of kKind what the kind is made of.
namespace QzXmlLib16 {

// --- Values of one C++ type

template <typename Value>
CValueCollection<Value>::~CValueCollection() = default;

template <typename Value>
int CValueCollection<Value>::GetCount() const {
  return static_cast<int>(m_values.size());
}

template <typename Value>
void CValueCollection<Value>::Clear() {
  while (!m_values.empty()) Remove(0);
}

template <typename Value>
void CValueCollection<Value>::Remove(int index) {
  // Meant: also an index that is then refused is told.
  FireOnCollectionRemove(index);
  RequireItem(index);
  m_values.Erase(static_cast<std::size_t>(index));
  FireOnCollectionRemoveComplete(index);
  FireOnCollectionChange();
}

template <typename Value>
Value CValueCollection<Value>::ValueAt(int index) const {
  RequireItem(index);
  return m_values.begin()[index];
}

template <typename Value>
void CValueCollection<Value>::RequireItem(int index) const {
  const int count = static_cast<int>(m_values.size());
  if (index >= 0 && index < count) return;
  throw CQzInvalidParamException(FormatString(Messages::kIndexNotInCollection, index, count));
}

template <typename Value>
void CValueCollection<Value>::RequirePlace(int index) const {
  if (index >= 0 && index <= static_cast<int>(m_values.size())) return;
  throw CQzInvalidParamException(Messages::kInsertionIndex);
}

template <typename Value>
void CValueCollection<Value>::Insert(int index, Value& value) {
  const std::size_t place = static_cast<std::size_t>(index);
  m_values.Insert(place, HasEventListeners() ? Value(value) : Value(std::move(value)));
  FireOnCollectionAddComplete(&value);
  FireOnCollectionChange();
}

// --- Values of one kind

namespace detail {

// What a kind is made of.
template <typename Value, typename FromString, typename Check>
struct CCollectionKind {
  const char* className;  // for the instance monitor
  FromString fromString;  // called with the text, which it may use up, and the rule of white space
  Check check;            // called with the element name, the value and the facets
  // The text to write; it may lie in scratch.
  const std::string& (*textOf)(const Value& value, const std::string& format, std::string& scratch);
};
template <typename Value, typename FromString, typename Check>
CCollectionKind(const char*, FromString, Check,
                const std::string& (*)(const Value&, const std::string&, std::string&))
    -> CCollectionKind<Value, FromString, Check>;

// One for each kind, in the source of its collection.
template <ItemType kType>
inline constexpr int kKind = 0;

template <ItemType kType>
CInstanceClass collectionClass(kKind<kType>.className);

// --- Texts of the kinds

// By what CConversions returns.
template <typename Value, std::string (*kToString)(const Value&)>
const std::string& ConvertedText(const Value& value, const std::string&, std::string& scratch) {
  return scratch = kToString(value);
}

// By what writes into a buffer of kNumberSize.
template <typename Value, char* (*kWrite)(char*, Value)>
const std::string& WrittenText(const Value& value, const std::string&, std::string& scratch) {
  char buffer[kNumberSize];
  scratch.assign(buffer, kWrite(buffer, value));
  return scratch;
}

}  // namespace detail

template <ItemType kType, typename Value>
CTypedCollection<kType, Value>::CTypedCollection(
    const char* elementName, const char* namespaceUri, int minOccurs, int maxOccurs,
    const char* pattern, std::int32_t minLength, std::int32_t maxLength, const char* minInclusive,
    const char* maxInclusive, const char* minExclusive, const char* maxExclusive,
    std::int32_t length, std::int32_t totalDigits, std::int32_t fractionDigits,
    CWhitespaceUtils::WhitespaceRule whitespaceRule, const char* format)
    : CValueCollection<Value>(kType, elementName, namespaceUri, minOccurs, maxOccurs, pattern,
                              minLength, maxLength, minInclusive, maxInclusive, minExclusive,
                              maxExclusive, length, totalDigits, fractionDigits, whitespaceRule,
                              format),
      CInstanceMonitor(detail::collectionClass<kType>) {}

template <ItemType kType, typename Value>
CTypedCollection<kType, Value>::~CTypedCollection() = default;

template <ItemType kType, typename Value>
void CTypedCollection<kType, Value>::Add(Value value) {
  AddAt(this->GetCount(), std::move(value));
}

template <ItemType kType, typename Value>
void CTypedCollection<kType, Value>::AddAt(int index, Value value) {
  // Meant: listeners hear of a value also where it, or its place, is then refused.
  this->FireOnCollectionAdd(&value);
  this->RequirePlace(index);
  if (this->HasFacets()) {
    detail::kKind<kType>.check(this->ElementName().c_str(), value, this->GetRestrictions());
  }
  this->Insert(index, value);
}

template <ItemType kType, typename Value>
Value CTypedCollection<kType, Value>::Item(int index) const {
  return this->ValueAt(index);
}

template <ItemType kType, typename Value>
void CTypedCollection<kType, Value>::ToXml_Int(CXmlWriter* writer, bool, const char*,
                                               const CSerializationContext& context, bool) const {
  this->ValidateCount(context);
  const std::string& uri = this->Namespace().str();
  const detail::CKeptTags name(this->ElementName(), uri);
  const std::string& format = this->GetFormat();
  std::string& scratch = writer->GetScratch().text;
  for (const Value& value : *this) {
    const std::string& text = detail::kKind<kType>.textOf(value, format, scratch);
    writer->WriteTextElement(name, uri, text, kType, false);
  }
}

template <ItemType kType, typename Value>
void CTypedCollection<kType, Value>::AddFromString(std::string text) {
  Add(detail::kKind<kType>.fromString(text, this->GetWhitespaceRule()));
}

}  // namespace QzXmlLib16
