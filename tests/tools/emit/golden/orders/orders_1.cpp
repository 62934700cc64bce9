// Made by qzxml generate from order.xsd.

#include "orders/Address.h"
#include "orders/Enumerations.h"
#include "orders/Item.h"
#include "orders/Namespace.h"
#include "orders/Order.h"
#include "orders/Roots.h"
#include "orders/SimpleTypes.h"
#include "orders/USAddress.h"
#include "qzxml/binding/BuiltInTypes.h"
#include "qzxml/binding/EnumerationInfo.h"
#include "qzxml/binding/ObjectCol.h"
#include "qzxml/binding/ObjectFactory.h"
#include "qzxml/binding/ValueCol.h"

namespace orders {

using namespace QzXmlLib16;

// --- Currency

namespace {
constexpr const char* kCurrencyTexts[] = {"EUR", "USD", "none of these"};
const CEnumerationInfo kCurrencyInfo(kCurrencyTexts, CWhitespaceUtils::WhitespaceRule_Collapse);
}  // namespace

const char* CurrencyToString(int value) { return kCurrencyInfo.ToText(value); }
Currency StringToCurrency(const char* text) {
  return static_cast<Currency>(kCurrencyInfo.FromText(text));
}

const CSimpleTypeInfo kCurrencyType(&CurrencyToString,
                                    [](const char* text) -> int { return StringToCurrency(text); });

const CSimpleTypeInfo kQuantityType(
    ItemType_ui4, CWhitespaceUtils::WhitespaceRule_Collapse,
    CSimpleTypeInfo::CFacets().MinInclusive("1").MaxInclusive("1000"));

namespace {
const CPatternStep kSkuTypeRulesPatterns[] = {"[0-9]{3}-[A-Z]{2}"};
const CTextRules kSkuTypeRules =
    CTextRules(XsdType_token).Patterns(kSkuTypeRulesPatterns).MaxLength(6);
}  // namespace
const CSimpleTypeInfo kSkuType(ItemType_string, CWhitespaceUtils::WhitespaceRule_Collapse,
                               kSkuTypeRules);

// --- COrder

const CMember COrder::s_members[] = {
    RequiredAttribute("id", "", &COrder::m_id, kXsdUnsignedInt),
    OptionalAttribute("date", "", &COrder::m_date, kXsdDate),
    OptionalAttribute("currency", "", &COrder::m_currency, kCurrencyType).WithDefault("EUR"),
    ObjectElement("shipTo", kNamespace, Once, &COrder::m_shipTo, &NewObject<CAddress>)
        .ByType(&CAddress::NewByType),
    ObjectElement("billTo", kNamespace, Optional, &COrder::m_billTo, &NewObject<CAddress>)
        .ByType(&CAddress::NewByType),
    ObjectElement("item", kNamespace, Repeated(1), &COrder::m_items, &NewObject<CItem>,
                  &NewObjectCol<CItem>),
    Group("payment", Once, &COrder::m_payment, &NewObject<COrder::CPayment>).RequiresContent(),
    ValueElement("tag", kNamespace, Repeated(0, 5), &COrder::m_tags, kSkuType,
                 &NewValueCol<ItemType_string>),
    AnyElement(kNamespace, "##other", Repeated(), &COrder::m_elements),
};

CClassBinding COrder::s_binding{
    CClassTraits{"Order", kNamespace, "order", &NewObject<COrder>},
    s_members,
};

COrder::COrder() : CBoundClass(s_binding) {}
COrder::~COrder() = default;

CSmartPtr<CAddress> COrder::GetShipTo() const {
  return GetObject<CAddress>(Property_ShipTo, m_shipTo);
}

void COrder::SetShipTo(CAddress* value) { SetObject(Property_ShipTo, m_shipTo, value); }

CSmartPtr<CAddress> COrder::GetBillTo() const {
  return GetObject<CAddress>(Property_BillTo, m_billTo);
}

CSmartPtr<CAddress> COrder::EnsureBillTo() {
  return EnsureObject<CAddress>(Property_BillTo, m_billTo);
}

void COrder::SetBillTo(CAddress* value) { SetObject(Property_BillTo, m_billTo, value); }

CObjectCol<CItem>& COrder::GetItems() const {
  return GetCollection<CObjectCol<CItem>>(Property_Items, m_items);
}

CSmartPtr<COrder::CPayment> COrder::GetPayment() const {
  return GetObject<COrder::CPayment>(Property_Payment, m_payment);
}

void COrder::SetPayment(COrder::CPayment* value) { SetObject(Property_Payment, m_payment, value); }

CValueCol<ItemType_string>& COrder::GetTags() const {
  return GetCollection<CValueCol<ItemType_string>>(Property_Tags, m_tags);
}

CWildcardCol& COrder::GetElements() const {
  return GetCollection<CWildcardCol>(Property_Elements, m_elements);
}

// --- COrder::CPayment

const CMember COrder::CPayment::s_members[] = {
    ValueElement("card", kNamespace, Once, &COrder::CPayment::m_card, kXsdString),
    ObjectElement("invoice", kNamespace, Once, &COrder::CPayment::m_invoice, &NewObject<CAddress>)
        .ByType(&CAddress::NewByType),
};

CClassBinding COrder::CPayment::s_binding{
    CClassTraits{"", kNamespace, "payment", &NewObject<COrder::CPayment>}
        .AsChoice()
        .AsGroup()
        .RequiresContent(),
    s_members,
};

COrder::CPayment::CPayment() : CBoundClass(s_binding) {}
COrder::CPayment::~CPayment() = default;

CSmartPtr<CAddress> COrder::CPayment::GetInvoice() const {
  return GetObject<CAddress>(Property_Invoice, m_invoice);
}

CSmartPtr<CAddress> COrder::CPayment::EnsureInvoice() {
  return EnsureObject<CAddress>(Property_Invoice, m_invoice);
}

void COrder::CPayment::SetInvoice(CAddress* value) {
  SetObject(Property_Invoice, m_invoice, value);
}

// --- CItem

const CMember CItem::s_members[] = {
    RequiredAttribute("sku", "", &CItem::m_sku, kSkuType),
    OptionalAttribute("unit", "", &CItem::m_unit, kCurrencyType),
    ValueElement("quantity", kNamespace, Once, &CItem::m_quantity, kQuantityType),
    ValueElement("price", kNamespace, Once, &CItem::m_price, kXsdDecimal),
    ValueElement("note", kNamespace, Optional, &CItem::m_note, kXsdString),
};

CClassBinding CItem::s_binding{
    CClassTraits{"Item", kNamespace, "item", &NewObject<CItem>},
    s_members,
};

CItem::CItem() : CBoundClass(s_binding) {}
CItem::~CItem() = default;

// --- CAddress

const CMember CAddress::s_members[] = {
    OptionalAttribute("version", "", &CAddress::m_version, kXsdString).WithFixed("1.0"),
    AnyAttribute(kNamespace, "##other", &CAddress::m_attributes),
    ValueElement("name", kNamespace, Once, &CAddress::m_name, kXsdString),
    ValueElement("line", kNamespace, Repeated(1, 3), &CAddress::m_lines, kXsdString,
                 &NewValueCol<ItemType_string>),
};

CClassBinding CAddress::s_binding{
    CClassTraits{"Address", kNamespace, "shipTo", &NewObject<CAddress>}.Derived(),
    s_members,
};

CAddress::CAddress() : CBoundClass(s_binding) {}
CAddress::~CAddress() = default;

CObjectHandle CAddress::NewByType(CXmlElement* element) {
  static constexpr CNamedType kTypes[] = {
      {kNamespace, "Address", &NewObject<CAddress>},
      {kNamespace, "USAddress", &NewObject<CUSAddress>},
  };
  return NewObjectByType(element, &NewObject<CAddress>, kTypes);
}

CAttributeCol& CAddress::GetAttributes() const {
  return GetCollection<CAttributeCol>(Property_Attributes, m_attributes);
}

CValueCol<ItemType_string>& CAddress::GetLines() const {
  return GetCollection<CValueCol<ItemType_string>>(Property_Lines, m_lines);
}

// --- CUSAddress

const CMember CUSAddress::s_members[] = {
    ValueElement("zip", kNamespace, Once, &CUSAddress::m_zip, kXsdInt),
};

CClassBinding CUSAddress::s_binding{
    CClassTraits{"USAddress", kNamespace, "usAddress", &NewObject<CUSAddress>}.Derived(),
    s_members,
    &CAddress::s_binding,
    4,
};

CUSAddress::CUSAddress() : CAddress(s_binding) {}
CUSAddress::~CUSAddress() = default;

// --- Roots

CObjectHandle NewRoot(CXmlElement* element) {
  static constexpr CNamedElement kElements[] = {
      {kNamespace, "order", &NewObject<COrder>, nullptr},
  };
  return NewRootObject(element, kElements);
}

CSmartPtr<COrder> NewOrder() { return NewElement<COrder>("order"); }

}  // namespace orders
