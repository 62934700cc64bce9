#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "qzxml/QzXml.h"

// The classes of the order document that the benchmarks read and write, as a generator makes them
// from a schema: tables of metadata for each class, and an index for each property.
namespace orders {

// What all classes of this schema share: the namespace.
class COrderClass : public QzXmlLib16::CTabledClass {
 public:
  std::string GetTargetNamespace() const override;
  std::string GetNamespace() const override;
};

// <Address> of a customer.
class CAddress : public COrderClass {
 public:
  CAddress();
  static CSmartPtr<QzXmlLib16::CXmlObjectBase> Create(int classId, const char* elementName);

  std::string GetStreet() const { return m_street.value_or(""); }
  bool IsSetStreet() const { return m_street.has_value(); }
  void SetStreet(const std::string& value) { m_street = value; }
  std::string GetCity() const { return m_city.value_or(""); }
  bool IsSetCity() const { return m_city.has_value(); }
  void SetCity(const std::string& value) { m_city = value; }
  std::string GetPostCode() const { return m_postCode.value_or(""); }
  bool IsSetPostCode() const { return m_postCode.has_value(); }
  void SetPostCode(const std::string& value) { m_postCode = value; }
  std::string GetCountry() const { return m_country.value_or(""); }
  bool IsSetCountry() const { return m_country.has_value(); }
  void SetCountry(const std::string& value) { m_country = value; }

 protected:
  void AccessProperty(int index, bool read, QzXmlLib16::QzVariant& value) const override;
  void Init() override;
  const CTables& GetTables() const override;

 private:
  enum Property : int { Property_Street, Property_City, Property_PostCode, Property_Country };

  std::optional<std::string> m_street;
  std::optional<std::string> m_city;
  std::optional<std::string> m_postCode;
  std::optional<std::string> m_country;
};

// <Customer>: who ordered.
class CCustomer : public COrderClass {
 public:
  CCustomer();
  static CSmartPtr<QzXmlLib16::CXmlObjectBase> Create(int classId, const char* elementName);

  std::int32_t GetNumber() const { return m_number.value_or(std::int32_t{}); }
  bool IsSetNumber() const { return m_number.has_value(); }
  void SetNumber(std::int32_t value) { m_number = value; }
  std::string GetName() const { return m_name.value_or(""); }
  bool IsSetName() const { return m_name.has_value(); }
  void SetName(const std::string& value) { m_name = value; }
  CAddress& GetAddress() const { return *m_address; }

 protected:
  void AccessProperty(int index, bool read, QzXmlLib16::QzVariant& value) const override;
  void Init() override;
  const CTables& GetTables() const override;

 private:
  enum Property : int { Property_Number, Property_Name, Property_Address };

  std::optional<std::int32_t> m_number;
  std::optional<std::string> m_name;
  CSmartPtr<CAddress> m_address;  // always there
};

// <Item>: one line of an order.
class CItem : public COrderClass {
 public:
  CItem();
  static CSmartPtr<QzXmlLib16::CXmlObjectBase> Create(int classId, const char* elementName);

  std::int32_t GetLine() const { return m_line.value_or(std::int32_t{}); }
  bool IsSetLine() const { return m_line.has_value(); }
  void SetLine(std::int32_t value) { m_line = value; }
  std::string GetSku() const { return m_sku.value_or(""); }
  bool IsSetSku() const { return m_sku.has_value(); }
  void SetSku(const std::string& value) { m_sku = value; }
  std::string GetDescription() const { return m_description.value_or(""); }
  bool IsSetDescription() const { return m_description.has_value(); }
  void SetDescription(const std::string& value) { m_description = value; }
  std::int32_t GetQuantity() const { return m_quantity.value_or(std::int32_t{}); }
  bool IsSetQuantity() const { return m_quantity.has_value(); }
  void SetQuantity(std::int32_t value) { m_quantity = value; }
  double GetUnitPrice() const { return m_unitPrice.value_or(double{}); }
  bool IsSetUnitPrice() const { return m_unitPrice.has_value(); }
  void SetUnitPrice(double value) { m_unitPrice = value; }
  const std::optional<double>& GetWeight() const { return m_weight; }
  void SetWeight(const std::optional<double>& value) { m_weight = value; }
  std::string GetShipDate() const { return m_shipDate.value_or(""); }
  bool IsSetShipDate() const { return m_shipDate.has_value(); }
  void SetShipDate(const std::string& value) { m_shipDate = value; }
  const std::optional<bool>& GetBackordered() const { return m_backordered; }
  void SetBackordered(const std::optional<bool>& value) { m_backordered = value; }
  const std::optional<std::string>& GetNote() const { return m_note; }
  void SetNote(const std::optional<std::string>& value) { m_note = value; }

 protected:
  void AccessProperty(int index, bool read, QzXmlLib16::QzVariant& value) const override;
  void Init() override;
  const CTables& GetTables() const override;

 private:
  enum Property : int {
    Property_Line,
    Property_Sku,
    Property_Description,
    Property_Quantity,
    Property_UnitPrice,
    Property_Weight,
    Property_ShipDate,
    Property_Backordered,
    Property_Note
  };

  std::optional<std::int32_t> m_line;
  std::optional<std::string> m_sku;
  std::optional<std::string> m_description;
  std::optional<std::int32_t> m_quantity;
  std::optional<double> m_unitPrice;
  std::optional<double> m_weight;
  std::optional<std::string> m_shipDate;
  std::optional<bool> m_backordered;
  std::optional<std::string> m_note;
};
using CItemCol = QzXmlLib16::CXmlObjectCol<CItem>;

// <Items> of an order.
class CItems : public COrderClass {
 public:
  CItems();
  static CSmartPtr<QzXmlLib16::CXmlObjectBase> Create(int classId, const char* elementName);

  CItemCol& GetItems() const { return *m_items; }

 protected:
  void AccessProperty(int index, bool read, QzXmlLib16::QzVariant& value) const override;
  void Init() override;
  const CTables& GetTables() const override;

 private:
  enum Property : int { Property_Items };

  CSmartPtr<CItemCol> m_items;
};

// <Order>: what a customer orders at a time.
class COrder : public COrderClass {
 public:
  COrder();
  static CSmartPtr<QzXmlLib16::CXmlObjectBase> Create(int classId, const char* elementName);

  std::int32_t GetId() const { return m_id.value_or(std::int32_t{}); }
  bool IsSetId() const { return m_id.has_value(); }
  void SetId(std::int32_t value) { m_id = value; }
  std::string GetCurrency() const { return m_currency.value_or(""); }
  bool IsSetCurrency() const { return m_currency.has_value(); }
  void SetCurrency(const std::string& value) { m_currency = value; }
  const std::optional<std::string>& GetReference() const { return m_reference; }
  void SetReference(const std::optional<std::string>& value) { m_reference = value; }
  std::string GetOrderDate() const { return m_orderDate.value_or(""); }
  bool IsSetOrderDate() const { return m_orderDate.has_value(); }
  void SetOrderDate(const std::string& value) { m_orderDate = value; }
  CCustomer& GetCustomer() const { return *m_customer; }
  CItems& GetItems() const { return *m_items; }

 protected:
  void AccessProperty(int index, bool read, QzXmlLib16::QzVariant& value) const override;
  void Init() override;
  const CTables& GetTables() const override;

 private:
  enum Property : int {
    Property_Id,
    Property_Currency,
    Property_Reference,
    Property_OrderDate,
    Property_Customer,
    Property_Items
  };

  std::optional<std::int32_t> m_id;
  std::optional<std::string> m_currency;
  std::optional<std::string> m_reference;
  std::optional<std::string> m_orderDate;
  CSmartPtr<CCustomer> m_customer;  // always there
  CSmartPtr<CItems> m_items;        // always there
};
using COrderCol = QzXmlLib16::CXmlObjectCol<COrder>;

// <Orders>: the document.
class COrders : public COrderClass {
 public:
  COrders();

  std::string GetCreated() const { return m_created.value_or(""); }
  bool IsSetCreated() const { return m_created.has_value(); }
  void SetCreated(const std::string& value) { m_created = value; }
  COrderCol& GetOrders() const { return *m_orders; }

 protected:
  void AccessProperty(int index, bool read, QzXmlLib16::QzVariant& value) const override;
  void Init() override;
  const CTables& GetTables() const override;

 private:
  enum Property : int { Property_Created, Property_Orders };

  std::optional<std::string> m_created;
  CSmartPtr<COrderCol> m_orders;
};

}  // namespace orders
