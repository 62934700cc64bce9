#include "qzxml/binding/WritePlan.h"

#include <limits>
#include <memory>

#include "qzxml/binding/BoundClass.h"
#include "qzxml/binding/ObjectCol.h"
#include "qzxml/serialization/PropertyAccess.h"
#include "qzxml/values/ConversionsDetail.h"
#include "qzxml/values/DateTimeDetail.h"
#include "qzxml/values/QzVariant.h"

namespace QzXmlLib16::detail {

using namespace QzXmlLib16Data;

static_assert(CPlannedValue::kRoom >= kDateTimeSize && CPlannedValue::kRoom >= kNumberSize);

// --- Values

CPlannedValue::CPlannedValue(const CMember& member, const CMember& declared)
    : m_property(declared.property) {
  const CSimpleTypeInfo& type = *member.type;
  m_kind = type.IsEnumeration() ? ItemType_i4 : type.GetKind();
  m_enumToString = type.GetEnumToString();
  if (member.defaultValue != nullptr) m_defaultText = member.defaultValue;
  if (type.IsEnumeration()) {
    m_form = Form::Enumeration;
    return;
  }
  switch (m_kind) {
    case ItemType_i1:
    case ItemType_i2:
    case ItemType_i4:
    case ItemType_i8:
    case ItemType_ui1:
    case ItemType_ui2:
    case ItemType_ui4:
    case ItemType_ui8:
    case ItemType_r8:
    case ItemType_year:
    case ItemType_month:
    case ItemType_day:
    case ItemType_boolean:
      m_form = Form::Scalar;
      break;
    case ItemType_yearMonth:
    case ItemType_monthDay:
    case ItemType_date:
    case ItemType_datetime:
    case ItemType_time:
      m_form = Form::Date;
      break;
    case ItemType_string:
      m_form = Form::Text;
      break;
    case ItemType_hexBinary:
    case ItemType_base64Binary:
    case ItemType_duration:
    case ItemType_decimal:
    case ItemType_integer:
      m_form = Form::Composed;
      break;
    default:
      break;
  }
}

namespace {

template <typename T>
const void* PlaceOf(const std::optional<T>& value) {
  return value ? &*value : nullptr;
}

template <typename T>
const T& As(const void* value) {
  return *static_cast<const T*>(value);
}

template <ItemType kind>
void AppendTextOf(const void* value, std::string& out) {
  QzVariant variant;
  VariantKind<kind>::Set(variant, As<typename VariantKind<kind>::Value>(value));
  AppendText(variant, std::string_view(), out);
}

}  // namespace

const void* CPlannedValue::Find(const CBoundClass& object) const {
  switch (m_kind) {
    case ItemType_string:
      return PlaceOf(object.*m_property.m_string);
    case ItemType_i4:
      return PlaceOf(object.*m_property.m_i4);
    case ItemType_boolean:
      return PlaceOf(object.*m_property.m_boolean);
    case ItemType_i1:
      return PlaceOf(object.*m_property.m_i1);
    case ItemType_i2:
      return PlaceOf(object.*m_property.m_i2);
    case ItemType_i8:
      return PlaceOf(object.*m_property.m_i8);
    case ItemType_ui1:
    case ItemType_month:
    case ItemType_day:
      return PlaceOf(object.*m_property.m_ui1);
    case ItemType_ui2:
    case ItemType_year:
      return PlaceOf(object.*m_property.m_ui2);
    case ItemType_ui4:
      return PlaceOf(object.*m_property.m_ui4);
    case ItemType_ui8:
      return PlaceOf(object.*m_property.m_ui8);
    case ItemType_r8:
      return PlaceOf(object.*m_property.m_r8);
    case ItemType_yearMonth:
    case ItemType_monthDay:
    case ItemType_date:
    case ItemType_datetime:
    case ItemType_time:
      return PlaceOf(object.*m_property.m_dateTime);
    case ItemType_duration:
      return PlaceOf(object.*m_property.m_duration);
    case ItemType_decimal:
      return PlaceOf(object.*m_property.m_decimal);
    case ItemType_integer:
      return PlaceOf(object.*m_property.m_integer);
    case ItemType_hexBinary:
    case ItemType_base64Binary:
      return PlaceOf(object.*m_property.m_binary);
    default:
      return nullptr;
  }
}

std::string_view CPlannedValue::GetText(const void* value, std::string& scratch) const {
  if (m_form == Form::Text) return As<std::string>(value);
  if (m_form == Form::Enumeration) {
    const char* const text = m_enumToString(As<std::int32_t>(value));
    return text != nullptr ? text : std::string_view();
  }
  scratch.clear();
  switch (m_kind) {
    case ItemType_hexBinary:
      AppendTextOf<ItemType_hexBinary>(value, scratch);
      break;
    case ItemType_base64Binary:
      AppendTextOf<ItemType_base64Binary>(value, scratch);
      break;
    case ItemType_duration:
      AppendTextOf<ItemType_duration>(value, scratch);
      break;
    case ItemType_decimal:
      AppendTextOf<ItemType_decimal>(value, scratch);
      break;
    default:
      AppendTextOf<ItemType_integer>(value, scratch);
      break;
  }
  return scratch;
}

char* CPlannedValue::Write(const void* value, char* out) const {
  if (m_form == Form::Date) return WriteDateTime(As<CDateTime>(value), out);
  switch (m_kind) {
    case ItemType_i1:
      return WriteInteger(out, static_cast<signed char>(As<char>(value)));
    case ItemType_i2:
      return WriteInteger(out, As<std::int16_t>(value));
    case ItemType_i4:
      return WriteInteger(out, As<std::int32_t>(value));
    case ItemType_i8:
      return WriteInteger(out, As<std::int64_t>(value));
    case ItemType_ui1:
      return WriteInteger(out, As<std::uint8_t>(value));
    case ItemType_ui2:
      return WriteInteger(out, As<std::uint16_t>(value));
    case ItemType_ui4:
      return WriteInteger(out, As<std::uint32_t>(value));
    case ItemType_ui8:
      return WriteInteger(out, As<std::uint64_t>(value));
    case ItemType_r8: {
      // A text that reads back as the value has all its digits (KeepEveryDigit).
      double readBack = std::numeric_limits<double>::quiet_NaN();
      char* const end = WriteR8(out, As<double>(value), readBack);
      return readBack == As<double>(value) ? end : nullptr;
    }
    case ItemType_year:
      return WriteYear(out, As<std::uint16_t>(value));
    case ItemType_month:
      return WriteMonth(out, As<std::uint8_t>(value));
    case ItemType_day:
      return WriteDay(out, As<std::uint8_t>(value));
    default:
      return WriteText(out, As<bool>(value) ? "true" : "false");
  }
}

// --- Members

namespace {

// The class of the objects that a member declares; null for one that is abstract or no bound class.
const std::type_info* GetDeclaredClass(const CMember& member) {
  if (member.newObject == nullptr) return nullptr;
  const CObjectHandle sample = member.newObject(0, member.name);
  const CXmlObjectBase* const object = sample;
  const CBoundClass* const bound = dynamic_cast<const CBoundClass*>(object);
  return bound == nullptr ? nullptr : &typeid(*bound);
}

bool HoldsBoundObjects(const CMember& member) {
  const CCollectionHandle sample(member.newCollection(member));
  const CXmlCollectionBase* const collection = sample;
  return dynamic_cast<const CBoundObjectCol*>(collection) != nullptr;
}

}  // namespace

CWritePlan::CChild::CChild(const CMember& member, const CElementInfo* childEntry)
    : entry(childEntry), tags(ElementTags::InOneNamespace(member.name)), uri(member.namespaceUri) {}

CWritePlan::CAttribute::CAttribute(const CMember& member, const CAttributeInfo* attributeEntry)
    : isOptional(member.occurs.min == 0), entry(attributeEntry), tag(member.name) {}

void CWritePlan::AddChild(const CMember& member, const CMember& declared,
                          const CElementInfo* entry) {
  CChild& child = m_children.emplace_back(member, entry);
  const bool isObject = member.form == MemberForm::Object;
  child.property = declared.property;
  child.isNeeded = member.occurs.min > 0 && !m_isChoice;
  if (isObject) child.itemClass = GetDeclaredClass(member);
  if (member.IsCollection()) {
    const bool isPlanned = isObject && child.itemClass != nullptr && HoldsBoundObjects(member);
    child.way = isPlanned ? Way::Collection : Way::WalkCollection;
  } else if (member.form == MemberForm::Value) {
    child.value = CPlannedValue(member, declared);
    if (child.value.IsPlanned()) child.way = Way::Value;
    // An absent value may stand for nil.
    child.isNeeded = child.isNeeded || (member.isNillable && member.occurs.min > 0);
  } else {
    child.way = child.itemClass != nullptr ? Way::Object : Way::WalkObject;
    child.optionalChoice = m_isChoice && member.newObjectByType == nullptr;
    // The attributes of a group belong to the class around it.
    if (member.form == MemberForm::Group) m_hasTag = false;
  }
  if (member.form == MemberForm::Group) m_hasTag = false;
}

void CWritePlan::AddAttribute(const CMember& member, const CMember& declared,
                              const CAttributeInfo* entry) {
  CAttribute& attribute = m_attributes.emplace_back(member, entry);
  attribute.property = declared.property;
  if (member.IsCollection()) {
    attribute.way = Way::WalkCollection;
  } else if (*member.namespaceUri == '\0') {
    attribute.value = CPlannedValue(member, declared);
    if (attribute.value.IsPlanned()) attribute.way = Way::Value;
  }
}

// --- Plans

// The members are visited as BuildTables visits them, so that entries and members go together.
CWritePlan::CWritePlan(const CClassBinding& binding, const CTabledClass::CTables& tables)
    : m_hasTag(binding.GetTraits().elementType == XmlElementType_Element),
      m_isChoice(binding.GetTraits().group == XmlElementGroupType_Choice),
      m_isNillable(binding.GetTraits().isNillable) {
  const ClassFactory newObject = binding.GetTraits().newObject;
  if (newObject != nullptr) {
    const CObjectHandle sample = newObject(0, nullptr);
    const CXmlObjectBase& object = *sample;
    m_class = &typeid(object);
  }
  CElementInfo* const* element = tables.GetElements();
  CAttributeInfo* const* attribute = tables.GetAttributes();
  int wildcard = -1;
  for (int i = 0; i < binding.GetMemberCount(); ++i) {
    const CMember& member = binding.GetMember(i);
    if (member.occurs.max == 0) continue;
    const CMember& declared = binding.GetDeclaredMember(i);
    if (member.form == MemberForm::AnyAttribute) {
      wildcard = i;
    } else if (member.form == MemberForm::Attribute) {
      AddAttribute(member, declared, *attribute++);
    } else if (member.form == MemberForm::Text) {
      m_text = CPlannedValue(member, declared);
      m_hasText = true;
    } else {
      AddChild(member, declared, *element++);
    }
  }
  if (wildcard != -1) {
    AddAttribute(binding.GetMember(wildcard), binding.GetDeclaredMember(wildcard), *attribute);
  }
}

void CWritePlan::Build(CClassBinding& binding, const CTabledClass::CTables& tables) {
  const std::unique_ptr<const CWritePlan> before(binding.m_writePlan.exchange(nullptr));
  binding.m_writePlan.store(new CWritePlan(binding, tables), std::memory_order_release);
}

const CWritePlan* CWritePlan::For(const CBoundClass& object) {
  const CWritePlan* plan = object.m_binding->m_writePlan.load(std::memory_order_acquire);
  if (plan == nullptr) {
    object.GetTables();
    plan = object.m_binding->m_writePlan.load(std::memory_order_acquire);
  }
  return plan != nullptr && plan->m_class == &typeid(object) ? plan : nullptr;
}

}  // namespace QzXmlLib16::detail
