// Made by qzxml generate from order.xsd.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>

#include "qzxml/binding/BoundClass.h"
#include "qzxml/binding/ObjectCol.h"
#include "qzxml/binding/ValueCol.h"

namespace orders {

class CAddress;
class CItem;
enum Currency : int;

// An order of one customer, with everything that has to be delivered to one address, and how it is
// paid.
class COrder : public QzXmlLib16::CBoundClass {
 public:
  // One of card, invoice.
  class CCardOrInvoice : public QzXmlLib16::CBoundClass {
   public:
    enum Selected : int { Selected_None = -1, Selected_Card = 0, Selected_Invoice = 1 };

    CCardOrInvoice();
    ~CCardOrInvoice() override;

    // Which one is there.
    Selected GetSelected() const { return static_cast<Selected>(GetSelectedMember()); }

    const std::optional<std::string>& GetCard() const { return m_card; }
    void SetCard(std::optional<std::string> value) {
      SetValue(Property_Card, m_card, std::move(value));
    }
    CSmartPtr<CAddress> GetInvoice() const;
    CSmartPtr<CAddress> EnsureInvoice();
    void SetInvoice(CAddress* value);

   private:
    enum Property : int { Property_Card, Property_Invoice };

    static const QzXmlLib16::CMember s_members[];
    static QzXmlLib16::CClassBinding s_binding;

    std::optional<std::string> m_card;
    QzXmlLib16::CObjectHandle m_invoice;
  };

  COrder();
  ~COrder() override;

  std::uint32_t GetId() const { return ValueOrEmpty(m_id); }
  bool IsSetId() const { return m_id.has_value(); }
  void SetId(std::uint32_t value) { SetValue(Property_Id, m_id, value); }
  const std::optional<QzXmlLib16::CDateTime>& GetDate() const { return m_date; }
  void SetDate(std::optional<QzXmlLib16::CDateTime> value) {
    SetValue(Property_Date, m_date, std::move(value));
  }

  // Default "EUR".
  Currency GetCurrency() const {
    return static_cast<Currency>(EnumOrDefault(Property_Currency, m_currency));
  }
  bool IsSetCurrency() const { return m_currency.has_value(); }
  void SetCurrency(std::optional<Currency> value) { SetEnum(Property_Currency, m_currency, value); }

  CSmartPtr<CAddress> GetShipTo() const;
  void SetShipTo(CAddress* value);
  CSmartPtr<CAddress> GetBillTo() const;
  CSmartPtr<CAddress> EnsureBillTo();
  void SetBillTo(CAddress* value);

  // 1 or more.
  QzXmlLib16::CObjectCol<CItem>& GetItems() const;

  CSmartPtr<CCardOrInvoice> GetCardOrInvoice() const;
  void SetCardOrInvoice(CCardOrInvoice* value);

  // Up to 5.
  QzXmlLib16::CValueCol<QzXmlLib16::ItemType_string>& GetTags() const;

  // Elements of other names.
  QzXmlLib16::CWildcardCol& GetAnyElements() const;

 private:
  enum Property : int {
    Property_Id,
    Property_Date,
    Property_Currency,
    Property_ShipTo,
    Property_BillTo,
    Property_Items,
    Property_CardOrInvoice,
    Property_Tags,
    Property_AnyElements
  };

  static const QzXmlLib16::CMember s_members[];
  static QzXmlLib16::CClassBinding s_binding;

  std::optional<std::uint32_t> m_id;
  std::optional<QzXmlLib16::CDateTime> m_date;
  std::optional<std::int32_t> m_currency;
  QzXmlLib16::CObjectHandle m_shipTo;
  QzXmlLib16::CObjectHandle m_billTo;
  QzXmlLib16::CCollectionHandle m_items;
  QzXmlLib16::CObjectHandle m_cardOrInvoice;
  QzXmlLib16::CCollectionHandle m_tags;
  QzXmlLib16::CCollectionHandle m_anyElements;
};

}  // namespace orders
