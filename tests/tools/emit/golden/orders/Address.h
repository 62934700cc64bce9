// Made by qzxml generate from order.xsd.
#pragma once

#include <optional>
#include <string>
#include <utility>

#include "qzxml/binding/BoundClass.h"
#include "qzxml/binding/ValueCol.h"
#include "qzxml/collections/AttributeCol.h"

namespace orders {

class CAddress : public QzXmlLib16::CBoundClass {
 public:
  CAddress();
  ~CAddress() override;

  // Makes the object for an element of this type: of the class that its xsi:type names, or of this
  // one.
  static QzXmlLib16::CObjectHandle NewByType(QzXmlLib16::CXmlElement* element);

  // Always "1.0".
  std::string GetVersion() const { return ValueOrDefault(Property_Version, m_version); }
  bool IsSetVersion() const { return m_version.has_value(); }
  void SetVersion(std::optional<std::string> value) {
    SetValue(Property_Version, m_version, std::move(value));
  }

  // Attributes of other names.
  QzXmlLib16::CAttributeCol& GetAnyAttributes() const;

  const std::string& GetName() const { return ValueOrEmpty(m_name); }
  bool IsSetName() const { return m_name.has_value(); }
  void SetName(std::string value) { SetValue(Property_Name, m_name, std::move(value)); }

  // 1 to 3.
  QzXmlLib16::CValueCol<QzXmlLib16::ItemType_string>& GetLines() const;

 protected:
  explicit CAddress(QzXmlLib16::CClassBinding& binding) : QzXmlLib16::CBoundClass(binding) {}

  static QzXmlLib16::CClassBinding s_binding;

 private:
  enum Property : int { Property_Version, Property_AnyAttributes, Property_Name, Property_Lines };

  static const QzXmlLib16::CMember s_members[];

  std::optional<std::string> m_version;
  QzXmlLib16::CCollectionHandle m_anyAttributes;
  std::optional<std::string> m_name;
  QzXmlLib16::CCollectionHandle m_lines;
};

}  // namespace orders
