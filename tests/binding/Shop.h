#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "qzxml/binding/BoundClass.h"
#include "qzxml/binding/ObjectCol.h"
#include "qzxml/binding/ObjectFactory.h"
#include "qzxml/binding/ValueCol.h"
#include "qzxml/collections/AttributeCol.h"

// Classes as the generator writes them, with one member of each form: the schema is
//
//   order: id, currency (default EUR), anyAttribute; customer, note?, (card | wrap | stamps+),
//          item* (abstract; book or disc by xsi:type), tag{0,3}, size*, colour*, comment
//          (nillable), step* = (pick | pack)*, any ##other *
namespace shop {

using QzXmlLib16::CAttributeCol;
using QzXmlLib16::CBoundClass;
using QzXmlLib16::CClassBinding;
using QzXmlLib16::CCollectionHandle;
using QzXmlLib16::CDecimal;
using QzXmlLib16::CEnumCol;
using QzXmlLib16::CMember;
using QzXmlLib16::CObjectCol;
using QzXmlLib16::CObjectHandle;
using QzXmlLib16::CValueCol;
using QzXmlLib16::CWildcardCol;
using QzXmlLib16::CXmlElement;

enum Currency : int { Currency_EUR, Currency_CHF, Currency_USD };

// An address; it may be nil.
class CCustomer : public CBoundClass, public QzXmlLib16::CNillableState {
 public:
  CCustomer();
  const std::string& GetName() const { return ValueOrEmpty(m_name); }
  bool IsSetName() const { return m_name.has_value(); }
  void SetName(const std::string& value) { SetValue(Property_Name, m_name, value); }

 private:
  enum Property : int { Property_Name };
  static const CMember s_members[];
  static CClassBinding s_binding;

  std::optional<std::string> m_name;
};

// An abstract type.
class CItem : public CBoundClass {
 public:
  const CDecimal& GetPrice() const { return ValueOrEmpty(m_price); }
  void SetPrice(const CDecimal& value) { SetValue(Property_Price, m_price, value); }
  static CObjectHandle NewByType(CXmlElement* element);

 protected:
  explicit CItem(CClassBinding& binding);
  enum Property : int { Property_Price, Property_Count };
  static const CMember s_members[];
  static CClassBinding s_binding;

 private:
  std::optional<CDecimal> m_price;
};

class CBook : public CItem {
 public:
  CBook();
  const std::string& GetTitle() const { return ValueOrEmpty(m_title); }
  void SetTitle(const std::string& value) { SetValue(Property_Title, m_title, value); }

 private:
  enum Property : int { Property_Title = CItem::Property_Count };
  static const CMember s_members[];
  static CClassBinding s_binding;

  std::optional<std::string> m_title;
};

// A restriction: the price is 10 at most.
class CDisc : public CItem {
 public:
  CDisc();

 private:
  static CClassBinding s_binding;
};

class COrder : public CBoundClass {
 public:
  // What goes with it: one of three.
  class CGift : public CBoundClass {
   public:
    enum Selected : int {
      Selected_None = -1,
      Selected_Card,
      Selected_Wrap,
      Selected_Stamps,
    };

    CGift();
    Selected GetSelected() const { return static_cast<Selected>(GetSelectedMember()); }
    const std::optional<std::string>& GetCard() const { return m_card; }
    void SetCard(const std::optional<std::string>& value) {
      SetValue(Property_Card, m_card, value);
    }
    CSmartPtr<CCustomer> GetWrap() const;
    CSmartPtr<CCustomer> EnsureWrap();
    void SetWrap(CCustomer* value);
    CValueCol<QzXmlLib16::ItemType_i4>& GetStamps() const;

   private:
    enum Property : int { Property_Card, Property_Wrap, Property_Stamps };
    static const CMember s_members[];
    static CClassBinding s_binding;

    std::optional<std::string> m_card;
    CObjectHandle m_wrap;
    CCollectionHandle m_stamps;
  };

  // A step: one of two.
  class CStep : public CBoundClass {
   public:
    CStep();
    const std::optional<bool>& GetPick() const { return m_pick; }
    void SetPick(const std::optional<bool>& value) { SetValue(Property_Pick, m_pick, value); }
    const std::optional<bool>& GetPack() const { return m_pack; }
    void SetPack(const std::optional<bool>& value) { SetValue(Property_Pack, m_pack, value); }

   private:
    enum Property : int { Property_Pick, Property_Pack };
    static const CMember s_members[];
    static CClassBinding s_binding;

    std::optional<bool> m_pick;
    std::optional<bool> m_pack;
  };

  COrder();

  std::int32_t GetId() const { return ValueOrEmpty(m_id); }
  bool IsSetId() const { return m_id.has_value(); }
  void SetId(std::int32_t value) { SetValue(Property_Id, m_id, value); }
  Currency GetCurrency() const {
    return static_cast<Currency>(EnumOrDefault(Property_Currency, m_currency));
  }
  bool IsSetCurrency() const { return m_currency.has_value(); }
  void SetCurrency(std::optional<Currency> value) { SetEnum(Property_Currency, m_currency, value); }
  std::string GetVersion() const { return ValueOrDefault(Property_Version, m_version); }
  void SetVersion(const std::optional<std::string>& value) {
    SetValue(Property_Version, m_version, value);
  }
  CAttributeCol& GetOtherAttributes() const;
  CSmartPtr<CCustomer> GetCustomer() const;
  void SetCustomer(CCustomer* value);
  const std::optional<std::string>& GetNote() const { return m_note; }
  void SetNote(const std::optional<std::string>& value) { SetValue(Property_Note, m_note, value); }
  CSmartPtr<CGift> GetGift() const;
  CObjectCol<CItem>& GetItems() const;
  CValueCol<QzXmlLib16::ItemType_string>& GetTags() const;
  CValueCol<QzXmlLib16::ItemType_i4>& GetSizes() const;
  CEnumCol<Currency>& GetColours() const;
  const std::string& GetComment() const { return ValueOrEmpty(m_comment); }
  void SetComment(const std::optional<std::string>& value) {
    SetValue(Property_Comment, m_comment, value);
  }
  CObjectCol<CStep>& GetSteps() const;
  CWildcardCol& GetAny() const;

 private:
  enum Property : int {
    Property_Id,
    Property_Currency,
    Property_Version,
    Property_OtherAttributes,
    Property_Customer,
    Property_Note,
    Property_Gift,
    Property_Items,
    Property_Tags,
    Property_Sizes,
    Property_Colours,
    Property_Comment,
    Property_Steps,
    Property_Any,
  };
  static const CMember s_members[];
  static CClassBinding s_binding;

  std::optional<std::int32_t> m_id;
  std::optional<std::int32_t> m_currency;
  std::optional<std::string> m_version;
  CCollectionHandle m_otherAttributes;
  CObjectHandle m_customer;
  std::optional<std::string> m_note;
  CObjectHandle m_gift;
  CCollectionHandle m_items;
  CCollectionHandle m_tags;
  CCollectionHandle m_sizes;
  CCollectionHandle m_colours;
  std::optional<std::string> m_comment;
  CCollectionHandle m_steps;
  CCollectionHandle m_any;
};

// A class whose content is a choice, with a text of its own in no other class: a weight.
class CWeight : public CBoundClass {
 public:
  CWeight();
  const CDecimal& GetValue() const { return ValueOrEmpty(m_value); }
  void SetValue(const CDecimal& value) { CBoundClass::SetValue(Property_Value, m_value, value); }
  const std::string& GetUnit() const { return ValueOrEmpty(m_unit); }
  void SetUnit(const std::string& value) { CBoundClass::SetValue(Property_Unit, m_unit, value); }

 private:
  enum Property : int { Property_Unit, Property_Value };
  static const CMember s_members[];
  static CClassBinding s_binding;

  std::optional<std::string> m_unit;
  std::optional<CDecimal> m_value;
};

// Reals, one of them with a bound.
class CPlace : public CBoundClass {
 public:
  CPlace();
  const std::optional<double>& GetX() const { return m_x; }
  void SetX(std::optional<double> value) { SetValue(Property_X, m_x, value); }
  const std::optional<double>& GetBounded() const { return m_bounded; }
  void SetBounded(std::optional<double> value) { SetValue(Property_Bounded, m_bounded, value); }
  const std::optional<float>& GetShort() const { return m_short; }
  void SetShort(std::optional<float> value) { SetValue(Property_Short, m_short, value); }

 private:
  enum Property : int { Property_X, Property_Bounded, Property_Short };
  static const CMember s_members[];
  static CClassBinding s_binding;

  std::optional<double> m_x;
  std::optional<double> m_bounded;
  std::optional<float> m_short;
};

class CPayment : public CBoundClass {
 public:
  CPayment();
  const std::optional<std::string>& GetCard() const { return m_card; }
  void SetCard(const std::optional<std::string>& value) { SetValue(Property_Card, m_card, value); }
  const std::optional<std::string>& GetIban() const { return m_iban; }
  void SetIban(const std::optional<std::string>& value) { SetValue(Property_Iban, m_iban, value); }

 private:
  enum Property : int { Property_Card, Property_Iban };
  static const CMember s_members[];
  static CClassBinding s_binding;

  std::optional<std::string> m_card;
  std::optional<std::string> m_iban;
};

// The root of a document.
CObjectHandle NewRoot(CXmlElement* element);

}  // namespace shop
