#include "qzxml/binding/ValueCol.h"

#include <utility>

#include "qzxml/binding/BindingTables.h"
#include "qzxml/binding/SimpleElement.h"
#include "qzxml/collections/Messages.h"
#include "qzxml/runtime/Functions.h"
#include "qzxml/runtime/QzException.h"
#include "qzxml/xml/KeptTags.h"
#include "qzxml/xml/XmlElement.h"
#include "qzxml/xml/XmlWriter.h"

namespace QzXmlLib16 {

// The facets that the base class could check are among those of the type.
template <ItemType kind>
CValueCol<kind>::CValueCol(const CMember& member)
    : Base(member.name, member.namespaceUri, member.occurs.min, member.occurs.max, nullptr, -1, -1,
           nullptr, nullptr, nullptr, nullptr, -1, -1, -1, member.type->GetWhitespaceRule(),
           nullptr),
      m_member(member) {}

template <ItemType kind>
CValueCol<kind>::~CValueCol() = default;

template <ItemType kind>
void CValueCol<kind>::Add(Argument value) {
  if constexpr (kHoldsDates) {
    AddAt(this->GetCount(), value);
  } else {
    Check(value);
    Base::Add(std::move(value));
  }
}

template <ItemType kind>
void CValueCol<kind>::AddAt(int index, Argument value) {
  Check(value);
  Base::AddAt(index, std::forward<Argument>(value));
}

template <ItemType kind>
void CValueCol<kind>::AddFromString(std::string text) {
  QzVariant value;
  value.FromString(text, kind, m_member.type->GetWhitespaceRule());
  Add(VariantKind<kind>::Take(value));
}

template <ItemType kind>
CXmlElement* CValueCol<kind>::FromXml_Int(CXmlElement*, CXmlElement* cursor,
                                          const CSerializationContext& context, bool) {
  while (cursor != nullptr && CXmlObjectBase::DoesElementNameMatch(context, cursor, m_member.name,
                                                                   m_member.namespaceUri)) {
    AddFromString(detail::ReadSimpleElement(m_member, context, *cursor));
    cursor = cursor->GetNextSiblingElement();
  }
  return cursor;
}

// Only reals and durations have texts that do not read back as the same value.
template <ItemType kind>
void CValueCol<kind>::ToXml_Int(CXmlWriter* writer, bool root, const char* namespaceUri,
                                const CSerializationContext& context, bool optionalChoice) const {
  if constexpr (kind != ItemType_r4 && kind != ItemType_r8 && kind != ItemType_duration) {
    Base::ToXml_Int(writer, root, namespaceUri, context, optionalChoice);
  } else {
    this->ValidateCount(context);
    const std::string uri = m_member.namespaceUri;
    const detail::CKeptTags name(this->ElementName(), uri);
    for (const auto& item : *this) {
      QzVariant value;
      VariantKind<kind>::Set(value, item);
      detail::KeepEveryDigit(value);
      const ItemType written = value.GetTypeAsEnum();
      writer->WriteTextElement(name, uri, value.ToString(nullptr), written, false);
    }
  }
}

template <ItemType kind>
void CValueCol<kind>::Check(const Value& value) const {
  QzVariant variant;
  VariantKind<kind>::Set(variant, value);
  m_member.type->Check(m_member.name, variant);
  if (m_member.isFixed) detail::CheckFixed(m_member, variant);
}

template <ItemType kind>
void CValueCol<kind>::CopyItems(const CXmlCollectionBase& from) {
  for (const auto& value : dynamic_cast<const CValueCol<kind>&>(from)) {
    if constexpr (kHoldsDates) {
      Base::AddAt(this->GetCount(), value);
    } else {
      Base::Add(value);
    }
  }
}

template class CValueCol<ItemType_hexBinary>;
template class CValueCol<ItemType_base64Binary>;
template class CValueCol<ItemType_i1>;
template class CValueCol<ItemType_i2>;
template class CValueCol<ItemType_i4>;
template class CValueCol<ItemType_i8>;
template class CValueCol<ItemType_ui1>;
template class CValueCol<ItemType_ui2>;
template class CValueCol<ItemType_ui4>;
template class CValueCol<ItemType_ui8>;
template class CValueCol<ItemType_r4>;
template class CValueCol<ItemType_r8>;
template class CValueCol<ItemType_duration>;
template class CValueCol<ItemType_yearMonth>;
template class CValueCol<ItemType_monthDay>;
template class CValueCol<ItemType_year>;
template class CValueCol<ItemType_month>;
template class CValueCol<ItemType_day>;
template class CValueCol<ItemType_date>;
template class CValueCol<ItemType_datetime>;
template class CValueCol<ItemType_time>;
template class CValueCol<ItemType_string>;
template class CValueCol<ItemType_boolean>;
template class CValueCol<ItemType_decimal>;
template class CValueCol<ItemType_integer>;

// --- CEnumColBase

CEnumColBase::CEnumColBase(const CMember& member)
    : CXmlCollectionBase(member.name, member.namespaceUri, member.occurs.min, member.occurs.max),
      m_member(member) {}

CEnumColBase::~CEnumColBase() = default;

void CEnumColBase::Clear() {
  while (!m_values.empty()) Remove(size() - 1);
}

void CEnumColBase::Remove(int index) {
  NumberAt(index);
  FireOnCollectionRemove(index);
  m_values.erase(m_values.begin() + index);
  FireOnCollectionRemoveComplete(index);
  FireOnCollectionChange();
}

void CEnumColBase::AddNumberAt(int index, std::int32_t value) {
  if (index < 0 || index > size()) throw CQzInvalidParamException(Messages::kInsertionIndex);
  m_member.type->GetEnumToString()(value);  // refuses what is no enumerator
  if (m_member.isFixed) {
    QzVariant variant;
    variant.SetI4(value);
    detail::CheckFixed(m_member, variant);
  }
  FireOnCollectionAdd(&value);
  m_values.insert(m_values.begin() + index, value);
  FireOnCollectionAddComplete(&value);
  FireOnCollectionChange();
}

std::int32_t CEnumColBase::NumberAt(int index) const {
  if (index < 0 || index >= size()) {
    throw CQzInvalidParamException(
        FormatString(Messages::kIndexNotInCollection, index, GetCount()));
  }
  return m_values[static_cast<std::size_t>(index)];
}

void CEnumColBase::CopyItems(const CXmlCollectionBase& from) {
  for (const std::int32_t value : dynamic_cast<const CEnumColBase&>(from).m_values) {
    AddNumberAt(size(), value);
  }
}

void CEnumColBase::ToXml_Int(CXmlWriter* writer, bool, const char* namespaceUri,
                             const CSerializationContext& context, bool) const {
  ValidateCount(context);
  for (const std::int32_t value : m_values) {
    writer->WriteStartElement(ElementName(), namespaceUri);
    writer->WriteText(m_member.type->GetEnumToString()(value), ItemType_string, false);
    writer->WriteEndElement();
  }
}

CXmlElement* CEnumColBase::FromXml_Int(CXmlElement*, CXmlElement* cursor,
                                       const CSerializationContext& context, bool) {
  while (cursor != nullptr &&
         DoesElementNameMatch(context, cursor, m_member.name, m_member.namespaceUri)) {
    const std::string text = detail::ReadSimpleElement(m_member, context, *cursor);
    AddNumberAt(size(), m_member.type->GetStringToEnum()(text.c_str()));
    cursor = cursor->GetNextSiblingElement();
  }
  return cursor;
}

}  // namespace QzXmlLib16
