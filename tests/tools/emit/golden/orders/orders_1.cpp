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
constexpr const char* kCurrency_Texts[] = {"EUR", "USD", "none of these"};
const CEnumerationInfo kCurrency_Info(kCurrency_Texts, CWhitespaceUtils::WhitespaceRule_Collapse);
}  // namespace

const char* CurrencyToString(int value) { return kCurrency_Info.ToText(value); }
Currency StringToCurrency(const char* text) {
  return static_cast<Currency>(kCurrency_Info.FromText(text));
}

const CSimpleTypeInfo kCurrency(&CurrencyToString, &EnumNumber<&StringToCurrency>);

const CSimpleTypeInfo kQuantity(ItemType_ui4, CWhitespaceUtils::WhitespaceRule_Collapse,
                                CSimpleTypeInfo::CFacets().MinInclusive("1").MaxInclusive("1000"));

namespace {
const CPatternStep kSku_RulesPatterns[] = {"[0-9]{3}-[A-Z]{2}"};
const CTextRules kSku_Rules = CTextRules(XsdType_token).Patterns(kSku_RulesPatterns).MaxLength(6);
}  // namespace
const CSimpleTypeInfo kSku(ItemType_string, CWhitespaceUtils::WhitespaceRule_Collapse, kSku_Rules);

const CNamedSimpleType kSku_Named[] = {
    {kNamespace, "Sku", &kSku},
    {},
};

const CNamedSimpleType kQuantity_Named[] = {
    {kNamespace, "Quantity", &kQuantity},
    {},
};

const CNamedSimpleType kXsdDecimal_Named[] = {
    {kNamespace, "Quantity", &kQuantity},
    {},
};

const CNamedSimpleType kXsdString_Named[] = {
    {kNamespace, "Currency", &kCurrency},
    {kNamespace, "Sku", &kSku},
    {},
};

// --- COrder

const CMember COrder::s_members[] = {
    RequiredAttribute("id", "", &COrder::m_id, kXsdUnsignedInt),
    OptionalAttribute("date", "", &COrder::m_date, kXsdDate),
    OptionalAttribute("currency", "", &COrder::m_currency, kCurrency).WithDefault("EUR"),
    ObjectElement("shipTo", kNamespace, Once, &COrder::m_shipTo, &NewObject<CAddress>)
        .ByType(&CAddress::NewByType),
    ObjectElement("billTo", kNamespace, Optional, &COrder::m_billTo, &NewObject<CAddress>)
        .ByType(&CAddress::NewByType),
    ObjectElement("item", kNamespace, Repeated(1), &COrder::m_items, &NewObject<CItem>,
                  &NewObjectCol<CItem>),
    Group("cardOrInvoice", Once, &COrder::m_cardOrInvoice, &NewObject<COrder::CCardOrInvoice>)
        .RequiresContent(),
    ValueElement("tag", kNamespace, Repeated(0, 5), &COrder::m_tags, kSku_Types,
                 &NewValueCol<ItemType_string>),
    AnyElement(kNamespace, "##other", Repeated(), &COrder::m_anyElements),
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

CSmartPtr<COrder::CCardOrInvoice> COrder::GetCardOrInvoice() const {
  return GetObject<COrder::CCardOrInvoice>(Property_CardOrInvoice, m_cardOrInvoice);
}

void COrder::SetCardOrInvoice(COrder::CCardOrInvoice* value) {
  SetObject(Property_CardOrInvoice, m_cardOrInvoice, value);
}

CValueCol<ItemType_string>& COrder::GetTags() const {
  return GetCollection<CValueCol<ItemType_string>>(Property_Tags, m_tags);
}

CWildcardCol& COrder::GetAnyElements() const {
  return GetCollection<CWildcardCol>(Property_AnyElements, m_anyElements);
}

// --- COrder::CCardOrInvoice

const CMember COrder::CCardOrInvoice::s_members[] = {
    ValueElement("card", kNamespace, Optional, &COrder::CCardOrInvoice::m_card, kXsdString_Types),
    ObjectElement("invoice", kNamespace, Optional, &COrder::CCardOrInvoice::m_invoice,
                  &NewObject<CAddress>)
        .ByType(&CAddress::NewByType),
};

CClassBinding COrder::CCardOrInvoice::s_binding{
    CClassTraits{"", kNamespace, "cardOrInvoice", &NewObject<COrder::CCardOrInvoice>}
        .AsChoice()
        .AsGroup()
        .RequiresContent(),
    s_members,
};

COrder::CCardOrInvoice::CCardOrInvoice() : CBoundClass(s_binding) {}
COrder::CCardOrInvoice::~CCardOrInvoice() = default;

CSmartPtr<CAddress> COrder::CCardOrInvoice::GetInvoice() const {
  return GetObject<CAddress>(Property_Invoice, m_invoice);
}

CSmartPtr<CAddress> COrder::CCardOrInvoice::EnsureInvoice() {
  return EnsureObject<CAddress>(Property_Invoice, m_invoice);
}

void COrder::CCardOrInvoice::SetInvoice(CAddress* value) {
  SetObject(Property_Invoice, m_invoice, value);
}

// --- CItem

const CMember CItem::s_members[] = {
    RequiredAttribute("sku", "", &CItem::m_sku, kSku),
    OptionalAttribute("unit", "", &CItem::m_unit, kCurrency),
    ValueElement("quantity", kNamespace, Once, &CItem::m_quantity, kQuantity_Types),
    ValueElement("price", kNamespace, Once, &CItem::m_price, kXsdDecimal_Types),
    ValueElement("note", kNamespace, Optional, &CItem::m_note, kXsdString_Types),
};

CClassBinding CItem::s_binding{
    CClassTraits{"Item", kNamespace, "Item", &NewObject<CItem>},
    s_members,
};

CItem::CItem() : CBoundClass(s_binding) {}
CItem::~CItem() = default;

// --- CAddress

const CMember CAddress::s_members[] = {
    OptionalAttribute("version", "", &CAddress::m_version, kXsdString).WithFixed("1.0"),
    AnyAttribute(kNamespace, "##other", &CAddress::m_anyAttributes),
    ValueElement("name", kNamespace, Once, &CAddress::m_name, kXsdString_Types),
    ValueElement("line", kNamespace, Repeated(1, 3), &CAddress::m_lines, kXsdString_Types,
                 &NewValueCol<ItemType_string>),
};

CClassBinding CAddress::s_binding{
    CClassTraits{"Address", kNamespace, "Address", &NewObject<CAddress>}.Derived(),
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

CAttributeCol& CAddress::GetAnyAttributes() const {
  return GetCollection<CAttributeCol>(Property_AnyAttributes, m_anyAttributes);
}

CValueCol<ItemType_string>& CAddress::GetLines() const {
  return GetCollection<CValueCol<ItemType_string>>(Property_Lines, m_lines);
}

// --- CUSAddress

const CMember CUSAddress::s_members[] = {
    ValueElement("zip", kNamespace, Once, &CUSAddress::m_zip, kXsdInt),
};

CClassBinding CUSAddress::s_binding{
    CClassTraits{"USAddress", kNamespace, "USAddress", &NewObject<CUSAddress>}.Derived(),
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
