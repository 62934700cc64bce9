// Made by qzxml generate from order.xsd.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>

#include "qzxml/binding/BoundClass.h"

namespace orders {

enum Currency : int;

class CItem : public QzXmlLib16::CBoundClass {
 public:
  CItem();
  ~CItem() override;

  const std::string& GetSku() const { return ValueOrEmpty(m_sku); }
  bool IsSetSku() const { return m_sku.has_value(); }
  void SetSku(std::string value) { SetValue(Property_Sku, m_sku, std::move(value)); }
  std::optional<Currency> GetUnit() const { return AsEnum<Currency>(m_unit); }
  void SetUnit(std::optional<Currency> value) { SetEnum(Property_Unit, m_unit, value); }
  std::uint32_t GetQuantity() const { return ValueOrEmpty(m_quantity); }
  bool IsSetQuantity() const { return m_quantity.has_value(); }
  void SetQuantity(std::uint32_t value) { SetValue(Property_Quantity, m_quantity, value); }

  // Of one piece.
  const QzXmlLib16::CDecimal& GetPrice() const { return ValueOrEmpty(m_price); }
  bool IsSetPrice() const { return m_price.has_value(); }
  void SetPrice(QzXmlLib16::CDecimal value) { SetValue(Property_Price, m_price, std::move(value)); }

  const std::optional<std::string>& GetNote() const { return m_note; }
  void SetNote(std::optional<std::string> value) {
    SetValue(Property_Note, m_note, std::move(value));
  }

 private:
  enum Property : int {
    Property_Sku,
    Property_Unit,
    Property_Quantity,
    Property_Price,
    Property_Note
  };

  static const QzXmlLib16::CMember s_members[];
  static QzXmlLib16::CClassBinding s_binding;

  std::optional<std::string> m_sku;
  std::optional<std::int32_t> m_unit;
  std::optional<std::uint32_t> m_quantity;
  std::optional<QzXmlLib16::CDecimal> m_price;
  std::optional<std::string> m_note;
};

}  // namespace orders
