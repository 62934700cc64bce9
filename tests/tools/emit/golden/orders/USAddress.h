// Made by qzxml generate from order.xsd.
#pragma once

#include <cstdint>
#include <optional>

#include "orders/Address.h"

namespace orders {

class CUSAddress : public CAddress {
 public:
  CUSAddress();
  ~CUSAddress() override;

  std::int32_t GetZip() const { return ValueOrEmpty(m_zip); }
  bool IsSetZip() const { return m_zip.has_value(); }
  void SetZip(std::int32_t value) { SetValue(Property_Zip, m_zip, value); }

 private:
  enum Property : int { Property_Zip = 4 };

  static const QzXmlLib16::CMember s_members[];
  static QzXmlLib16::CClassBinding s_binding;

  std::optional<std::int32_t> m_zip;
};

}  // namespace orders
