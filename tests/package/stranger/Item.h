#pragma once

#include <string>

#include "qzxml/QzXml.h"

// <item id="..."><quantity>...</quantity></item>, as the generator would write it.
class CItem : public QzXmlLib16::CXmlGeneratedClass {
 public:
  CItem() { SetElementName("item"); }

  std::string GetTargetNamespace() const override { return "urn:items"; }
  std::string GetNamespace() const override { return "urn:items"; }

  std::string GetId() const { return m_strId; }
  int GetQuantity() const { return m_lQuantity; }
  void SetQuantity(int quantity) {
    m_lQuantity = quantity;
    m_bQuantityValid = true;
  }

  static void DropMetaData() { CleanMetaData(m_pInfo, m_pElements, m_pAttributes); }

 protected:
  void AccessProperty(int index, bool read, QzXmlLib16::QzVariant& value) const override {
    CItem& self = const_cast<CItem&>(*this);
    if (index == 0 && read) {
      value.SetString(m_strId);
    } else if (index == 0) {
      self.m_strId = value.GetString();
    } else if (!read) {
      self.SetQuantity(value.GetI4());
    } else if (m_bQuantityValid) {
      value.SetI4(m_lQuantity);
    }
  }
  CParentElementInfo* GetClassInfo() const override { return MetaData(), m_pInfo; }
  CElementInfo** GetClassElementInfo() const override { return MetaData(), m_pElements; }
  CAttributeInfo** GetClassAttributeInfo() const override { return MetaData(), m_pAttributes; }
  void Init() override {
    m_strId.clear();
    m_bQuantityValid = false;
  }

 private:
  static void MetaData() {
    using QzXmlLib16::CPrimitiveRestrictions;
    using QzXmlLib16::CWhitespaceUtils;
    m_csInit.Enter();
    if (m_pInfo == nullptr) {
      m_pElements = new CElementInfo* [2] {
        new QzXmlLib16Data::CElementInfoSeqPrimMnd(
            "quantity", "urn:items", 1, false, QzXmlLib16::ItemType_i4, "",
            CWhitespaceUtils::WhitespaceRule_Collapse,
            CPrimitiveRestrictions("[0-9]+", -1, -1, "", "", "", "", -1, -1, -1), ""),
            nullptr
      };
      m_pAttributes = new CAttributeInfo* [2] {
        new QzXmlLib16Data::CAttributeInfoPrimitive("id", "", 0, false, QzXmlLib16::ItemType_string,
                                                    "", CWhitespaceUtils::WhitespaceRule_Collapse,
                                                    CPrimitiveRestrictions(), ""),
            nullptr
      };
      m_pInfo = new CParentElementInfo(QzXmlLib16Data::XmlElementGroupType_Sequence,
                                       QzXmlLib16Data::XmlElementType_Element, "item", "urn:items",
                                       true, false, -1, QzXmlLib16::ItemType_None, "", false);
    }
    m_csInit.Leave();
  }

  std::string m_strId;
  int m_lQuantity = 0;
  bool m_bQuantityValid = false;
  static inline CParentElementInfo* m_pInfo = nullptr;
  static inline CElementInfo** m_pElements = nullptr;
  static inline CAttributeInfo** m_pAttributes = nullptr;
};
