#include "tests/binding/Depot.h"

namespace depot {

using namespace QzXmlLib16;
using namespace QzXmlLib16Data;

void (*g_onPiece)() = nullptr;

namespace {

constexpr char kNamespace[] = "urn:depot";
constexpr auto kPreserve = CWhitespaceUtils::WhitespaceRule_None;
constexpr auto kCollapse = CWhitespaceUtils::WhitespaceRule_Collapse;

const CSimpleTypeInfo kString(ItemType_string, kPreserve);
const CSimpleTypeInfo kToken(ItemType_string, kCollapse);
const CSimpleTypeInfo kId(ItemType_i4, kCollapse, CSimpleTypeInfo::CFacets().MinInclusive("1"));
const CSimpleTypeInfo kSize(ItemType_i4, kCollapse, CSimpleTypeInfo::CFacets().MaxInclusive("60"));
const CSimpleTypeInfo kDate(ItemType_date, kCollapse);

}  // namespace

// CPiece

const CMember CPiece::s_members[] = {
    RequiredAttribute("size", "", &CPiece::m_size, kSize),
    AnyAttribute(kNamespace, "##other", &CPiece::m_otherAttributes),
    ValueElement("word", kNamespace, Optional, &CPiece::m_word, kString),
    AnyElement(kNamespace, "##other", Repeated(), &CPiece::m_any),
};

CClassBinding CPiece::s_binding({"Piece", kNamespace, "piece", &NewObject<CPiece>}, s_members);

CPiece::CPiece() : CBoundClass(s_binding) {
  if (g_onPiece != nullptr) g_onPiece();
}

// CParcel

const CMember CParcel::s_members[] = {
    RequiredAttribute("id", "", &CParcel::m_id, kId),
    ValueElement("label", kNamespace, Once, &CParcel::m_label, kToken),
    ObjectElement("piece", kNamespace, Repeated(), &CParcel::m_pieces, &NewObject<CPiece>,
                  &NewObjectCol<CPiece>),
    ValueElement("note", kNamespace, Optional, &CParcel::m_note, kString),
};

CClassBinding CParcel::s_binding({"Parcel", kNamespace, "parcel", &NewObject<CParcel>}, s_members);

CParcel::CParcel() : CBoundClass(s_binding) {}

CObjectCol<CPiece>& CParcel::GetPieces() const {
  return GetCollection<CObjectCol<CPiece>>(Property_Pieces, m_pieces);
}

// CClerk

const CMember CClerk::s_members[] = {
    ValueElement("name", kNamespace, Once, &CClerk::m_name, kString),
};

CClassBinding CClerk::s_binding({"Clerk", kNamespace, "clerk", &NewObject<CClerk>}, s_members);

CClerk::CClerk() : CBoundClass(s_binding) {}

// COffice

const CMember COffice::s_members[] = {
    ValueElement("name", kNamespace, Once, &COffice::m_name, kString),
    ObjectElement("clerk", kNamespace, Repeated(), &COffice::m_clerks, &NewObject<CClerk>,
                  &NewObjectCol<CClerk>),
};

CClassBinding COffice::s_binding({"Office", kNamespace, "office", &NewObject<COffice>}, s_members);

COffice::COffice() : CBoundClass(s_binding) {}

CObjectCol<CClerk>& COffice::GetClerks() const {
  return GetCollection<CObjectCol<CClerk>>(Property_Clerks, m_clerks);
}

// CCrate

const CMember CCrate::s_members[] = {
    ObjectElement("piece", kNamespace, Repeated(), &CCrate::m_pieces, &NewObject<CPiece>,
                  &NewObjectCol<CPiece>),
    ValueElement("seal", kNamespace, Optional, &CCrate::m_seal, kString),
};

CClassBinding CCrate::s_binding(
    CClassTraits{"Crate", kNamespace, "crate", &NewObject<CCrate>}.AsChoice().Nillable(),
    s_members);

CCrate::CCrate() : CBoundClass(s_binding) {}

// CDepot

const CMember CDepot::s_members[] = {
    OptionalAttribute("code", "", &CDepot::m_code, kToken),
    ValueElement("title", kNamespace, Optional, &CDepot::m_title, kString),
    ObjectElement("parcel", kNamespace, Repeated(), &CDepot::m_parcels, &NewObject<CParcel>,
                  &NewObjectCol<CParcel>),
    ObjectElement("office", kNamespace, Once, &CDepot::m_office, &NewObject<COffice>),
    ObjectElement("crate", kNamespace, Repeated(0, 3), &CDepot::m_crates, &NewObject<CCrate>,
                  &NewObjectCol<CCrate>),
    ValueElement("day", kNamespace, Repeated(), &CDepot::m_days, kDate,
                 &NewValueCol<ItemType_date>),
    AnyElement(kNamespace, "##other", Repeated(), &CDepot::m_any),
};

CClassBinding CDepot::s_binding({"Depot", kNamespace, "depot", &NewObject<CDepot>}, s_members);

CDepot::CDepot() : CBoundClass(s_binding) {}

CObjectCol<CParcel>& CDepot::GetParcels() const {
  return GetCollection<CObjectCol<CParcel>>(Property_Parcels, m_parcels);
}

CSmartPtr<COffice> CDepot::GetOffice() const {
  return GetObject<COffice>(Property_Office, m_office);
}

CObjectCol<CCrate>& CDepot::GetCrates() const {
  return GetCollection<CObjectCol<CCrate>>(Property_Crates, m_crates);
}

}  // namespace depot
