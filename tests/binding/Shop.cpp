#include "tests/binding/Shop.h"

#include "qzxml/binding/EnumerationInfo.h"

namespace shop {

using namespace QzXmlLib16;
using namespace QzXmlLib16Data;

namespace {

constexpr char kNamespace[] = "urn:shop";
constexpr auto kPreserve = CWhitespaceUtils::WhitespaceRule_None;
constexpr auto kCollapse = CWhitespaceUtils::WhitespaceRule_Collapse;

const char* const kCurrencyTexts[] = {"EUR", "CHF", "USD"};
const CEnumerationInfo kCurrencies(kCurrencyTexts, kCollapse);
const char* CurrencyToString(int value) { return kCurrencies.ToText(value); }
int StringToCurrency(const char* text) { return kCurrencies.FromText(text); }

const CSimpleTypeInfo kString(ItemType_string, kPreserve);
const CSimpleTypeInfo kToken(ItemType_string, kCollapse);
const CSimpleTypeInfo kBoolean(ItemType_boolean, kCollapse);
const CSimpleTypeInfo kDouble(ItemType_r8, kCollapse);
const CSimpleTypeInfo kBoundedDouble(ItemType_r8, kCollapse,
                                     CSimpleTypeInfo::CFacets().MaxInclusive("1"));
const CSimpleTypeInfo kFloat(ItemType_r4, kCollapse);
const CSimpleTypeInfo kId(ItemType_i4, kCollapse, CSimpleTypeInfo::CFacets().MinInclusive("1"));
const CSimpleTypeInfo kSize(ItemType_i4, kCollapse, CSimpleTypeInfo::CFacets().MaxInclusive("60"));
const CSimpleTypeInfo kPrice(ItemType_decimal, kCollapse,
                             CSimpleTypeInfo::CFacets().MinInclusive("0"));
const CSimpleTypeInfo kLowPrice(ItemType_decimal, kCollapse,
                                CSimpleTypeInfo::CFacets().MinInclusive("0").MaxInclusive("10"));
const CSimpleTypeInfo kCurrency(&CurrencyToString, &StringToCurrency);

}  // namespace

// CCustomer

const CMember CCustomer::s_members[] = {
    ValueElement("name", kNamespace, Once, &CCustomer::m_name, kString),
};

CClassBinding CCustomer::s_binding({"Customer", kNamespace, "customer", &NewObject<CCustomer>,
                                    XmlElementGroupType_Sequence, XmlElementType_Element, false,
                                    false, false, true},
                                   s_members);

CCustomer::CCustomer() : CBoundClass(s_binding) {}

// CItem

const CMember CItem::s_members[] = {
    RequiredAttribute("price", "", &CItem::m_price, kPrice),
};

CClassBinding CItem::s_binding({"Item", kNamespace, "item", nullptr}, s_members);

CItem::CItem(CClassBinding& binding) : CBoundClass(binding) {}

CObjectHandle CItem::NewByType(CXmlElement* element) {
  static constexpr CNamedType kTypes[] = {
      {kNamespace, "Book", &NewObject<CBook>},
      {kNamespace, "Disc", &NewObject<CDisc>},
  };
  return NewObjectByType(element, nullptr, kTypes);
}

// CBook

const CMember CBook::s_members[] = {
    ValueElement("title", kNamespace, Once, &CBook::m_title, kToken),
};

CClassBinding CBook::s_binding({"Book", kNamespace, "item", &NewObject<CBook>}, s_members,
                               &CItem::s_binding, CItem::Property_Count);

CBook::CBook() : CItem(s_binding) {}

// CDisc

namespace {
constexpr int kPriceIndex = 0;
}

CDisc::CDisc() : CItem(s_binding) {}

static const CRestrictedMember kDiscRestricted[] = {
    {kPriceIndex, RequiredAttribute("price", "", CProperty(), kLowPrice)},
};

CClassBinding CDisc::s_binding({"Disc", kNamespace, "item", &NewObject<CDisc>}, {},
                               &CItem::s_binding, CItem::Property_Count, kDiscRestricted);

// COrder::CGift

const CMember COrder::CGift::s_members[] = {
    ValueElement("card", kNamespace, Optional, &CGift::m_card, kString),
    ObjectElement("wrap", kNamespace, Optional, &CGift::m_wrap, &NewObject<CCustomer>),
    ValueElement("stamp", kNamespace, Repeated(1), &CGift::m_stamps, kSize,
                 &NewValueCol<ItemType_i4>),
};

CClassBinding COrder::CGift::s_binding({"", kNamespace, "gift", &NewObject<CGift>,
                                        XmlElementGroupType_Choice, XmlElementType_PseudoElement,
                                        false, true},
                                       s_members);

COrder::CGift::CGift() : CBoundClass(s_binding) {}

CSmartPtr<CCustomer> COrder::CGift::GetWrap() const {
  return As<CCustomer>(GetObject(Property_Wrap, m_wrap));
}
CSmartPtr<CCustomer> COrder::CGift::EnsureWrap() {
  return As<CCustomer>(EnsureObject(Property_Wrap, m_wrap));
}
void COrder::CGift::SetWrap(CCustomer* value) { SetObject(Property_Wrap, m_wrap, value); }
CValueCol<ItemType_i4>& COrder::CGift::GetStamps() const {
  return static_cast<CValueCol<ItemType_i4>&>(GetCollection(Property_Stamps, m_stamps));
}

// COrder::CStep

const CMember COrder::CStep::s_members[] = {
    ValueElement("pick", kNamespace, Optional, &CStep::m_pick, kBoolean),
    ValueElement("pack", kNamespace, Optional, &CStep::m_pack, kBoolean),
};

CClassBinding COrder::CStep::s_binding({"", kNamespace, "step", &NewObject<CStep>,
                                        XmlElementGroupType_Choice, XmlElementType_PseudoElement,
                                        false, true},
                                       s_members);

COrder::CStep::CStep() : CBoundClass(s_binding) {}

// COrder

const CMember COrder::s_members[] = {
    RequiredAttribute("id", "", &COrder::m_id, kId),
    OptionalAttribute("currency", "", &COrder::m_currency, kCurrency).WithDefault("EUR"),
    OptionalAttribute("version", "", &COrder::m_version, kToken).WithFixed("1.0"),
    AnyAttribute(kNamespace, "##other", &COrder::m_otherAttributes),
    ObjectElement("customer", kNamespace, Once, &COrder::m_customer, &NewObject<CCustomer>),
    ValueElement("note", kNamespace, Optional, &COrder::m_note, kString),
    Group("gift", Once, &COrder::m_gift, &NewObject<CGift>).RequiresContent(),
    ObjectElement("item", kNamespace, Repeated(), &COrder::m_items, nullptr, &NewObjectCol<CItem>)
        .ByType(&CItem::NewByType),
    ValueElement("tag", kNamespace, Repeated(0, 3), &COrder::m_tags, kToken,
                 &NewValueCol<ItemType_string>),
    ValueElement("size", kNamespace, Repeated(), &COrder::m_sizes, kSize,
                 &NewValueCol<ItemType_i4>),
    ValueElement("colour", kNamespace, Repeated(), &COrder::m_colours, kCurrency,
                 &NewEnumCol<Currency>),
    ValueElement("comment", kNamespace, Once, &COrder::m_comment, kString).Nillable(),
    Group("step", Repeated(), &COrder::m_steps, &NewObject<CStep>, &NewObjectCol<CStep>),
    AnyElement(kNamespace, "##other", Repeated(), &COrder::m_any),
};

CClassBinding COrder::s_binding({"Order", kNamespace, "order", &NewObject<COrder>}, s_members);

COrder::COrder() : CBoundClass(s_binding) {}

CAttributeCol& COrder::GetOtherAttributes() const {
  return static_cast<CAttributeCol&>(GetCollection(Property_OtherAttributes, m_otherAttributes));
}
CSmartPtr<CCustomer> COrder::GetCustomer() const {
  return As<CCustomer>(GetObject(Property_Customer, m_customer));
}
void COrder::SetCustomer(CCustomer* value) { SetObject(Property_Customer, m_customer, value); }
CSmartPtr<COrder::CGift> COrder::GetGift() const {
  return As<CGift>(GetObject(Property_Gift, m_gift));
}
CObjectCol<CItem>& COrder::GetItems() const {
  return static_cast<CObjectCol<CItem>&>(GetCollection(Property_Items, m_items));
}
CValueCol<ItemType_string>& COrder::GetTags() const {
  return static_cast<CValueCol<ItemType_string>&>(GetCollection(Property_Tags, m_tags));
}
CValueCol<ItemType_i4>& COrder::GetSizes() const {
  return static_cast<CValueCol<ItemType_i4>&>(GetCollection(Property_Sizes, m_sizes));
}
CEnumCol<Currency>& COrder::GetColours() const {
  return static_cast<CEnumCol<Currency>&>(GetCollection(Property_Colours, m_colours));
}
CObjectCol<COrder::CStep>& COrder::GetSteps() const {
  return static_cast<CObjectCol<CStep>&>(GetCollection(Property_Steps, m_steps));
}
CWildcardCol& COrder::GetAny() const {
  return static_cast<CWildcardCol&>(GetCollection(Property_Any, m_any));
}

// CWeight

const CMember CWeight::s_members[] = {
    RequiredAttribute("unit", "", &CWeight::m_unit, kToken),
    Text(&CWeight::m_value, kPrice),
};

CClassBinding CWeight::s_binding({"Weight", kNamespace, "weight", &NewObject<CWeight>}, s_members);

CWeight::CWeight() : CBoundClass(s_binding) {}

// CPlace

const CMember CPlace::s_members[] = {
    OptionalAttribute("x", "", &CPlace::m_x, kDouble),
    ValueElement("bounded", kNamespace, Optional, &CPlace::m_bounded, kBoundedDouble),
    ValueElement("short", kNamespace, Optional, &CPlace::m_short, kFloat),
};

CClassBinding CPlace::s_binding({"Place", kNamespace, "place", &NewObject<CPlace>}, s_members);

CPlace::CPlace() : CBoundClass(s_binding) {}

// CPayment

const CMember CPayment::s_members[] = {
    ValueElement("card", kNamespace, Optional, &CPayment::m_card, kString),
    ValueElement("iban", kNamespace, Optional, &CPayment::m_iban, kToken),
};

CClassBinding CPayment::s_binding({"Payment", kNamespace, "payment", &NewObject<CPayment>,
                                   XmlElementGroupType_Choice, XmlElementType_Element, false, true},
                                  s_members);

CPayment::CPayment() : CBoundClass(s_binding) {}

// Roots

CObjectHandle NewRoot(CXmlElement* element) {
  static constexpr CNamedElement kElements[] = {
      {kNamespace, "order", &NewObject<COrder>, nullptr},
      {kNamespace, "payment", &NewObject<CPayment>, nullptr},
      {kNamespace, "item", nullptr, &CItem::NewByType},
      {"urn:other", "weight", &NewObject<CWeight>, nullptr},
  };
  return NewRootObject(element, kElements);
}

}  // namespace shop
