#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "qzxml/binding/BoundClass.h"
#include "qzxml/binding/ObjectCol.h"
#include "qzxml/binding/ObjectFactory.h"
#include "qzxml/binding/ValueCol.h"
#include "qzxml/collections/AttributeCol.h"

// Classes as the generator writes them, with collections of objects at several depths: the schema
// is
//
//   depot: code?; title?, parcel*, office = (name, clerk*), crate{0,3}, day*, any ##other *
//   parcel: id; label, piece*, note?           crate: (piece* | seal), nillable
//   piece: size, anyAttribute; word?, any ##other *         clerk: name
namespace depot {

using QzXmlLib16::CAttributeCol;
using QzXmlLib16::CBoundClass;
using QzXmlLib16::CClassBinding;
using QzXmlLib16::CCollectionHandle;
using QzXmlLib16::CMember;
using QzXmlLib16::CObjectCol;
using QzXmlLib16::CObjectHandle;
using QzXmlLib16::CValueCol;
using QzXmlLib16::CWildcardCol;

class CPiece : public CBoundClass {
 public:
  CPiece();
  std::int32_t GetSize() const { return ValueOrEmpty(m_size); }
  void SetSize(std::int32_t value) { SetValue(Property_Size, m_size, value); }
  const std::string& GetWord() const { return ValueOrEmpty(m_word); }

 private:
  enum Property : int { Property_Size, Property_OtherAttributes, Property_Word, Property_Any };
  static const CMember s_members[];
  static CClassBinding s_binding;

  std::optional<std::int32_t> m_size;
  CCollectionHandle m_otherAttributes;
  std::optional<std::string> m_word;
  CCollectionHandle m_any;
};

class CParcel : public CBoundClass {
 public:
  CParcel();
  std::int32_t GetId() const { return ValueOrEmpty(m_id); }
  const std::string& GetLabel() const { return ValueOrEmpty(m_label); }
  CObjectCol<CPiece>& GetPieces() const;

 private:
  enum Property : int { Property_Id, Property_Label, Property_Pieces, Property_Note };
  static const CMember s_members[];
  static CClassBinding s_binding;

  std::optional<std::int32_t> m_id;
  std::optional<std::string> m_label;
  CCollectionHandle m_pieces;
  std::optional<std::string> m_note;
};

class CClerk : public CBoundClass {
 public:
  CClerk();

 private:
  enum Property : int { Property_Name };
  static const CMember s_members[];
  static CClassBinding s_binding;

  std::optional<std::string> m_name;
};

class COffice : public CBoundClass {
 public:
  COffice();
  CObjectCol<CClerk>& GetClerks() const;

 private:
  enum Property : int { Property_Name, Property_Clerks };
  static const CMember s_members[];
  static CClassBinding s_binding;

  std::optional<std::string> m_name;
  CCollectionHandle m_clerks;
};

class CCrate : public CBoundClass, public QzXmlLib16::CNillableState {
 public:
  CCrate();

 private:
  enum Property : int { Property_Pieces, Property_Seal };
  static const CMember s_members[];
  static CClassBinding s_binding;

  CCollectionHandle m_pieces;
  std::optional<std::string> m_seal;
};

class CDepot : public CBoundClass {
 public:
  CDepot();
  const std::string& GetTitle() const { return ValueOrEmpty(m_title); }
  void SetTitle(const std::string& value) { SetValue(Property_Title, m_title, value); }
  CObjectCol<CParcel>& GetParcels() const;
  CSmartPtr<COffice> GetOffice() const;
  CObjectCol<CCrate>& GetCrates() const;

 private:
  enum Property : int {
    Property_Code,
    Property_Title,
    Property_Parcels,
    Property_Office,
    Property_Crates,
    Property_Days,
    Property_Any,
  };
  static const CMember s_members[];
  static CClassBinding s_binding;

  std::optional<std::string> m_code;
  std::optional<std::string> m_title;
  CCollectionHandle m_parcels;
  CObjectHandle m_office;
  CCollectionHandle m_crates;
  CCollectionHandle m_days;
  CCollectionHandle m_any;
};

// Called whenever a piece is made; null for nothing.
extern void (*g_onPiece)();

}  // namespace depot
