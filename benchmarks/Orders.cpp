#include "benchmarks/Orders.h"

using namespace QzXmlLib16;
using namespace QzXmlLib16Data;

namespace orders {
namespace {

constexpr char kNamespace[] = "urn:example:orders";

CParentElementInfo* NewSequenceInfo(const char* name, const char* elementNamespace) {
  return new CParentElementInfo(XmlElementGroupType_Sequence, XmlElementType_Element, name,
                                elementNamespace, true, false, -1, ItemType_None, nullptr, false);
}

}  // namespace

std::string COrderClass::GetTargetNamespace() const { return kNamespace; }
std::string COrderClass::GetNamespace() const { return kNamespace; }

// CAddress

CAddress::CAddress() { SetElementName("Address"); }

CSmartPtr<CXmlObjectBase> CAddress::Create(int, const char* elementName) {
  CSmartPtr<CXmlObjectBase> object(new CAddress);
  SetElementName(object, elementName);
  return object;
}

void CAddress::AccessProperty(int index, bool read, QzVariant& value) const {
  CAddress& self = const_cast<CAddress&>(*this);
  switch (index) {
    case Property_Street:
      return AccessValue<ItemType_string>(read, value, self.m_street);
    case Property_City:
      return AccessValue<ItemType_string>(read, value, self.m_city);
    case Property_PostCode:
      return AccessValue<ItemType_string>(read, value, self.m_postCode);
    case Property_Country:
      return AccessValue<ItemType_string>(read, value, self.m_country);
    default:
      return;
  }
}

void CAddress::Init() {
  m_street.reset();
  m_city.reset();
  m_postCode.reset();
  m_country.reset();
}

const CAddress::CTables& CAddress::GetTables() const {
  static CTables tables;
  return BuildOnce(tables, [](CTables& made) {
    made.SetInfo(NewSequenceInfo("Address", kNamespace));
    made.SetElements(
        {new CElementInfoSeqPrimMnd("Street", kNamespace, Property_Street, false, ItemType_string,
                                    nullptr, CWhitespaceUtils::WhitespaceRule_None,
                                    CPrimitiveRestrictions(), nullptr),
         new CElementInfoSeqPrimMnd("City", kNamespace, Property_City, false, ItemType_string,
                                    nullptr, CWhitespaceUtils::WhitespaceRule_None,
                                    CPrimitiveRestrictions(), nullptr),
         new CElementInfoSeqPrimMnd("PostCode", kNamespace, Property_PostCode, false,
                                    ItemType_string, nullptr, CWhitespaceUtils::WhitespaceRule_None,
                                    CPrimitiveRestrictions(), nullptr),
         new CElementInfoSeqPrimMnd("Country", kNamespace, Property_Country, false, ItemType_string,
                                    nullptr, CWhitespaceUtils::WhitespaceRule_None,
                                    CPrimitiveRestrictions(), nullptr)});
  });
}

// CCustomer

CCustomer::CCustomer() : m_address(new CAddress) {
  SetElementName("Customer");
  SetElementName(m_address, "Address");
}

CSmartPtr<CXmlObjectBase> CCustomer::Create(int, const char* elementName) {
  CSmartPtr<CXmlObjectBase> object(new CCustomer);
  SetElementName(object, elementName);
  return object;
}

void CCustomer::AccessProperty(int index, bool read, QzVariant& value) const {
  CCustomer& self = const_cast<CCustomer&>(*this);
  switch (index) {
    case Property_Number:
      return AccessValue<ItemType_i4>(read, value, self.m_number);
    case Property_Name:
      return AccessValue<ItemType_string>(read, value, self.m_name);
    case Property_Address:
      return AccessObject(read, value, self.m_address);
    default:
      return;
  }
}

void CCustomer::Init() {
  m_number.reset();
  m_name.reset();
  m_address = CSmartPtr<CAddress>(new CAddress);
  SetElementName(m_address, "Address");
}

const CCustomer::CTables& CCustomer::GetTables() const {
  static CTables tables;
  return BuildOnce(tables, [](CTables& made) {
    made.SetInfo(NewSequenceInfo("Customer", kNamespace));
    made.SetElements(
        {new CElementInfoSeqPrimMnd("Name", kNamespace, Property_Name, false, ItemType_string,
                                    nullptr, CWhitespaceUtils::WhitespaceRule_None,
                                    CPrimitiveRestrictions(), nullptr),
         new CElementInfoSeqClsMnd("Address", kNamespace, Property_Address, XmlElementType_Element,
                                   &CAddress::Create, 0, false)});
    made.SetAttributes({new CAttributeInfoPrimitive(
        "number", "", Property_Number, false, ItemType_i4, nullptr,
        CWhitespaceUtils::WhitespaceRule_None, CPrimitiveRestrictions(), nullptr)});
  });
}

// CItem

CItem::CItem() { SetElementName("Item"); }

CSmartPtr<CXmlObjectBase> CItem::Create(int, const char* elementName) {
  CSmartPtr<CXmlObjectBase> object(new CItem);
  SetElementName(object, elementName);
  return object;
}

void CItem::AccessProperty(int index, bool read, QzVariant& value) const {
  CItem& self = const_cast<CItem&>(*this);
  switch (index) {
    case Property_Line:
      return AccessValue<ItemType_i4>(read, value, self.m_line);
    case Property_Sku:
      return AccessValue<ItemType_string>(read, value, self.m_sku);
    case Property_Description:
      return AccessValue<ItemType_string>(read, value, self.m_description);
    case Property_Quantity:
      return AccessValue<ItemType_i4>(read, value, self.m_quantity);
    case Property_UnitPrice:
      return AccessValue<ItemType_r8>(read, value, self.m_unitPrice);
    case Property_Weight:
      return AccessValue<ItemType_r8>(read, value, self.m_weight);
    case Property_ShipDate:
      return AccessValue<ItemType_string>(read, value, self.m_shipDate);
    case Property_Backordered:
      return AccessValue<ItemType_boolean>(read, value, self.m_backordered);
    case Property_Note:
      return AccessValue<ItemType_string>(read, value, self.m_note);
    default:
      return;
  }
}

void CItem::Init() {
  m_line.reset();
  m_sku.reset();
  m_description.reset();
  m_quantity.reset();
  m_unitPrice.reset();
  m_weight.reset();
  m_shipDate.reset();
  m_backordered.reset();
  m_note.reset();
}

const CItem::CTables& CItem::GetTables() const {
  static CTables tables;
  return BuildOnce(tables, [](CTables& made) {
    made.SetInfo(NewSequenceInfo("Item", kNamespace));
    made.SetElements(
        {new CElementInfoSeqPrimMnd("Description", kNamespace, Property_Description, false,
                                    ItemType_string, nullptr, CWhitespaceUtils::WhitespaceRule_None,
                                    CPrimitiveRestrictions(), nullptr),
         new CElementInfoSeqPrimMnd("Quantity", kNamespace, Property_Quantity, false, ItemType_i4,
                                    nullptr, CWhitespaceUtils::WhitespaceRule_None,
                                    CPrimitiveRestrictions(), nullptr),
         new CElementInfoSeqPrimMnd("UnitPrice", kNamespace, Property_UnitPrice, false, ItemType_r8,
                                    nullptr, CWhitespaceUtils::WhitespaceRule_None,
                                    CPrimitiveRestrictions(), nullptr),
         new CElementInfoSeqPrimOpt("Weight", kNamespace, Property_Weight, false, ItemType_r8,
                                    nullptr, CWhitespaceUtils::WhitespaceRule_None,
                                    CPrimitiveRestrictions(), nullptr),
         new CElementInfoSeqPrimMnd("ShipDate", kNamespace, Property_ShipDate, false,
                                    ItemType_string, nullptr, CWhitespaceUtils::WhitespaceRule_None,
                                    CPrimitiveRestrictions(), nullptr),
         new CElementInfoSeqPrimOpt(
             "Backordered", kNamespace, Property_Backordered, false, ItemType_boolean, nullptr,
             CWhitespaceUtils::WhitespaceRule_None, CPrimitiveRestrictions(), nullptr),
         new CElementInfoSeqPrimOpt("Note", kNamespace, Property_Note, false, ItemType_string,
                                    nullptr, CWhitespaceUtils::WhitespaceRule_None,
                                    CPrimitiveRestrictions(), nullptr)});
    made.SetAttributes({new CAttributeInfoPrimitive("line", "", Property_Line, false, ItemType_i4,
                                                    nullptr, CWhitespaceUtils::WhitespaceRule_None,
                                                    CPrimitiveRestrictions(), nullptr),
                        new CAttributeInfoPrimitive("sku", "", Property_Sku, false, ItemType_string,
                                                    nullptr, CWhitespaceUtils::WhitespaceRule_None,
                                                    CPrimitiveRestrictions(), nullptr)});
  });
}

// CItems

CItems::CItems() : m_items(new CItemCol("Item", kNamespace, 0, -1, &CItem::Create, 0)) {
  SetElementName("Items");
}

CSmartPtr<CXmlObjectBase> CItems::Create(int, const char* elementName) {
  CSmartPtr<CXmlObjectBase> object(new CItems);
  SetElementName(object, elementName);
  return object;
}

void CItems::AccessProperty(int index, bool read, QzVariant& value) const {
  switch (index) {
    case Property_Items:
      return AccessCollection(read, value, m_items);
    default:
      return;
  }
}

void CItems::Init() { m_items->Clear(); }

const CItems::CTables& CItems::GetTables() const {
  static CTables tables;
  return BuildOnce(tables, [](CTables& made) {
    made.SetInfo(NewSequenceInfo("Items", kNamespace));
    made.SetElements(
        {new CElementInfoSeqClsCol("Item", kNamespace, Property_Items, XmlElementType_Element)});
  });
}

// COrder

COrder::COrder() : m_customer(new CCustomer), m_items(new CItems) {
  SetElementName("Order");
  SetElementName(m_customer, "Customer");
  SetElementName(m_items, "Items");
}

CSmartPtr<CXmlObjectBase> COrder::Create(int, const char* elementName) {
  CSmartPtr<CXmlObjectBase> object(new COrder);
  SetElementName(object, elementName);
  return object;
}

void COrder::AccessProperty(int index, bool read, QzVariant& value) const {
  COrder& self = const_cast<COrder&>(*this);
  switch (index) {
    case Property_Id:
      return AccessValue<ItemType_i4>(read, value, self.m_id);
    case Property_Currency:
      return AccessValue<ItemType_string>(read, value, self.m_currency);
    case Property_Reference:
      return AccessValue<ItemType_string>(read, value, self.m_reference);
    case Property_OrderDate:
      return AccessValue<ItemType_string>(read, value, self.m_orderDate);
    case Property_Customer:
      return AccessObject(read, value, self.m_customer);
    case Property_Items:
      return AccessObject(read, value, self.m_items);
    default:
      return;
  }
}

void COrder::Init() {
  m_id.reset();
  m_currency.reset();
  m_reference.reset();
  m_orderDate.reset();
  m_customer = CSmartPtr<CCustomer>(new CCustomer);
  SetElementName(m_customer, "Customer");
  m_items = CSmartPtr<CItems>(new CItems);
  SetElementName(m_items, "Items");
}

const COrder::CTables& COrder::GetTables() const {
  static CTables tables;
  return BuildOnce(tables, [](CTables& made) {
    made.SetInfo(NewSequenceInfo("Order", kNamespace));
    made.SetElements(
        {new CElementInfoSeqPrimMnd("OrderDate", kNamespace, Property_OrderDate, false,
                                    ItemType_string, nullptr, CWhitespaceUtils::WhitespaceRule_None,
                                    CPrimitiveRestrictions(), nullptr),
         new CElementInfoSeqClsMnd("Customer", kNamespace, Property_Customer,
                                   XmlElementType_Element, &CCustomer::Create, 0, false),
         new CElementInfoSeqClsMnd("Items", kNamespace, Property_Items, XmlElementType_Element,
                                   &CItems::Create, 0, false)});
    made.SetAttributes(
        {new CAttributeInfoPrimitive("id", "", Property_Id, false, ItemType_i4, nullptr,
                                     CWhitespaceUtils::WhitespaceRule_None,
                                     CPrimitiveRestrictions(), nullptr),
         new CAttributeInfoPrimitive("currency", "", Property_Currency, false, ItemType_string,
                                     nullptr, CWhitespaceUtils::WhitespaceRule_None,
                                     CPrimitiveRestrictions(), nullptr),
         new CAttributeInfoPrimitive("reference", "", Property_Reference, true, ItemType_string,
                                     nullptr, CWhitespaceUtils::WhitespaceRule_None,
                                     CPrimitiveRestrictions(), nullptr)});
  });
}

// COrders

COrders::COrders() : m_orders(new COrderCol("Order", kNamespace, 0, -1, &COrder::Create, 0)) {
  SetElementName("Orders");
}

void COrders::AccessProperty(int index, bool read, QzVariant& value) const {
  COrders& self = const_cast<COrders&>(*this);
  switch (index) {
    case Property_Created:
      return AccessValue<ItemType_string>(read, value, self.m_created);
    case Property_Orders:
      return AccessCollection(read, value, m_orders);
    default:
      return;
  }
}

void COrders::Init() {
  m_created.reset();
  m_orders->Clear();
}

const COrders::CTables& COrders::GetTables() const {
  static CTables tables;
  return BuildOnce(tables, [](CTables& made) {
    made.SetInfo(NewSequenceInfo("Orders", kNamespace));
    made.SetElements(
        {new CElementInfoSeqClsCol("Order", kNamespace, Property_Orders, XmlElementType_Element)});
    made.SetAttributes({new CAttributeInfoPrimitive(
        "created", "", Property_Created, false, ItemType_string, nullptr,
        CWhitespaceUtils::WhitespaceRule_None, CPrimitiveRestrictions(), nullptr)});
  });
}

}  // namespace orders
