#include "examples/Gpx.h"

#include <cstring>
using namespace QzXmlLib16;
using namespace QzXmlLib16Data;

namespace gpx {
namespace {

constexpr char kNamespace[] = "http://www.topografix.com/GPX/1/1";
constexpr const char* kFixes[] = {"none", "2d", "3d", "dgps", "pps"};

CParentElementInfo* NewSequenceInfo(const char* name, const char* elementNamespace) {
  return new CParentElementInfo(XmlElementGroupType_Sequence, XmlElementType_Element, name,
                                elementNamespace, true, false, -1, ItemType_None, nullptr, false);
}

CPrimitiveRestrictions Bounds(const char* minInclusive, const char* maxInclusive,
                              const char* maxExclusive) {
  return CPrimitiveRestrictions("", -1, -1, minInclusive, maxInclusive, "", maxExclusive, -1, -1,
                                -1);
}
CPrimitiveRestrictions Latitude() { return Bounds("-90.0", "90.0", ""); }
CPrimitiveRestrictions Longitude() { return Bounds("-180.0", "", "180.0"); }
CPrimitiveRestrictions Degrees() { return Bounds("0.0", "", "360.0"); }
CPrimitiveRestrictions DgpsStation() { return Bounds("0", "1023", ""); }

// Holds a value against the facets that its entry of the table carries.
template <ItemType kind, typename Value>
void Check(const CElementInfo* info, const Value& value) {
  QzVariant variant;
  VariantKind<kind>::Set(variant, value);
  info->CheckRestriction(variant);
}
template <ItemType kind, typename Value>
void Check(const CAttributeInfo* info, const Value& value) {
  QzVariant variant;
  VariantKind<kind>::Set(variant, value);
  static_cast<const CAttributeInfoPrimitive*>(info)->CheckRestriction(variant);
}

}  // namespace

const char* FixToString(int value) { return kFixes[value]; }

int StringToFix(const char* text) {
  for (int i = 0; i < 5; ++i) {
    if (std::strcmp(kFixes[i], text) == 0) return i;
  }
  throw CQzInvalidValueException(
      FormatString("The value [%s] is not one of none, 2d, 3d, dgps, pps", text));
}

std::string CGpxClass::GetTargetNamespace() const { return kNamespace; }
std::string CGpxClass::GetNamespace() const { return kNamespace; }

// CLink

CLink::CLink() { SetElementName("link"); }

CSmartPtr<CXmlObjectBase> CLink::Create(int, const char* elementName) {
  CSmartPtr<CXmlObjectBase> object(new CLink);
  SetElementName(object, elementName);
  return object;
}

void CLink::AccessProperty(int index, bool read, QzVariant& value) const {
  CLink& self = const_cast<CLink&>(*this);
  switch (index) {
    case Property_Href:
      return AccessValue<ItemType_string>(read, value, self.m_href);
    case Property_Text:
      return AccessValue<ItemType_string>(read, value, self.m_text);
    case Property_Type:
      return AccessValue<ItemType_string>(read, value, self.m_type);
    default:
      return;
  }
}

void CLink::Init() {
  m_href.reset();
  m_text.reset();
  m_type.reset();
}

const CLink::CTables& CLink::GetTables() const {
  static CTables tables;
  return BuildOnce(tables, [](CTables& made) {
    made.SetInfo(NewSequenceInfo("link", kNamespace));
    made.SetElements(
        {new CElementInfoSeqPrimOpt("text", kNamespace, Property_Text, false, ItemType_string,
                                    nullptr, CWhitespaceUtils::WhitespaceRule_None,
                                    CPrimitiveRestrictions(), nullptr),
         new CElementInfoSeqPrimOpt("type", kNamespace, Property_Type, false, ItemType_string,
                                    nullptr, CWhitespaceUtils::WhitespaceRule_None,
                                    CPrimitiveRestrictions(), nullptr)});
    made.SetAttributes({new CAttributeInfoPrimitive(
        "href", "", Property_Href, false, ItemType_string, nullptr,
        CWhitespaceUtils::WhitespaceRule_Collapse, CPrimitiveRestrictions(), nullptr)});
  });
}

// CEmail

CEmail::CEmail() { SetElementName("email"); }

CSmartPtr<CXmlObjectBase> CEmail::Create(int, const char* elementName) {
  CSmartPtr<CXmlObjectBase> object(new CEmail);
  SetElementName(object, elementName);
  return object;
}

void CEmail::AccessProperty(int index, bool read, QzVariant& value) const {
  CEmail& self = const_cast<CEmail&>(*this);
  switch (index) {
    case Property_Id:
      return AccessValue<ItemType_string>(read, value, self.m_id);
    case Property_Domain:
      return AccessValue<ItemType_string>(read, value, self.m_domain);
    default:
      return;
  }
}

void CEmail::Init() {
  m_id.reset();
  m_domain.reset();
}

const CEmail::CTables& CEmail::GetTables() const {
  static CTables tables;
  return BuildOnce(tables, [](CTables& made) {
    made.SetInfo(NewSequenceInfo("email", kNamespace));
    made.SetAttributes(
        {new CAttributeInfoPrimitive("id", "", Property_Id, false, ItemType_string, nullptr,
                                     CWhitespaceUtils::WhitespaceRule_None,
                                     CPrimitiveRestrictions(), nullptr),
         new CAttributeInfoPrimitive("domain", "", Property_Domain, false, ItemType_string, nullptr,
                                     CWhitespaceUtils::WhitespaceRule_None,
                                     CPrimitiveRestrictions(), nullptr)});
  });
}

// CPerson

CPerson::CPerson() { SetElementName("author"); }

CSmartPtr<CXmlObjectBase> CPerson::Create(int, const char* elementName) {
  CSmartPtr<CXmlObjectBase> object(new CPerson);
  SetElementName(object, elementName);
  return object;
}

void CPerson::SetEmail(CEmail* value) {
  if (value != nullptr) SetElementName(value, "email");
  m_email = CSmartPtr<CEmail>(value);
}

void CPerson::SetLink(CLink* value) {
  if (value != nullptr) SetElementName(value, "link");
  m_link = CSmartPtr<CLink>(value);
}

void CPerson::AccessProperty(int index, bool read, QzVariant& value) const {
  CPerson& self = const_cast<CPerson&>(*this);
  switch (index) {
    case Property_Name:
      return AccessValue<ItemType_string>(read, value, self.m_name);
    case Property_Email:
      return AccessObject(read, value, self.m_email);
    case Property_Link:
      return AccessObject(read, value, self.m_link);
    default:
      return;
  }
}

void CPerson::Init() {
  m_name.reset();
  m_email = nullptr;
  m_link = nullptr;
}

const CPerson::CTables& CPerson::GetTables() const {
  static CTables tables;
  return BuildOnce(tables, [](CTables& made) {
    made.SetInfo(NewSequenceInfo("author", kNamespace));
    made.SetElements({new CElementInfoSeqPrimOpt(
                          "name", kNamespace, Property_Name, false, ItemType_string, nullptr,
                          CWhitespaceUtils::WhitespaceRule_None, CPrimitiveRestrictions(), nullptr),
                      new CElementInfoSeqClsOpt("email", kNamespace, Property_Email,
                                                XmlElementType_Element, &CEmail::Create, 0),
                      new CElementInfoSeqClsOpt("link", kNamespace, Property_Link,
                                                XmlElementType_Element, &CLink::Create, 0)});
  });
}

// CCopyright

CCopyright::CCopyright() { SetElementName("copyright"); }

CSmartPtr<CXmlObjectBase> CCopyright::Create(int, const char* elementName) {
  CSmartPtr<CXmlObjectBase> object(new CCopyright);
  SetElementName(object, elementName);
  return object;
}

void CCopyright::AccessProperty(int index, bool read, QzVariant& value) const {
  CCopyright& self = const_cast<CCopyright&>(*this);
  switch (index) {
    case Property_Author:
      return AccessValue<ItemType_string>(read, value, self.m_author);
    case Property_Year:
      return AccessValue<ItemType_year>(read, value, self.m_year);
    case Property_License:
      return AccessValue<ItemType_string>(read, value, self.m_license);
    default:
      return;
  }
}

void CCopyright::Init() {
  m_author.reset();
  m_year.reset();
  m_license.reset();
}

const CCopyright::CTables& CCopyright::GetTables() const {
  static CTables tables;
  return BuildOnce(tables, [](CTables& made) {
    made.SetInfo(NewSequenceInfo("copyright", kNamespace));
    made.SetElements(
        {new CElementInfoSeqPrimOpt("year", kNamespace, Property_Year, false, ItemType_year,
                                    nullptr, CWhitespaceUtils::WhitespaceRule_Collapse,
                                    CPrimitiveRestrictions(), nullptr),
         new CElementInfoSeqPrimOpt("license", kNamespace, Property_License, false, ItemType_string,
                                    nullptr, CWhitespaceUtils::WhitespaceRule_Collapse,
                                    CPrimitiveRestrictions(), nullptr)});
    made.SetAttributes({new CAttributeInfoPrimitive(
        "author", "", Property_Author, false, ItemType_string, nullptr,
        CWhitespaceUtils::WhitespaceRule_None, CPrimitiveRestrictions(), nullptr)});
  });
}

// CBounds

CBounds::CBounds() { SetElementName("bounds"); }

CSmartPtr<CXmlObjectBase> CBounds::Create(int, const char* elementName) {
  CSmartPtr<CXmlObjectBase> object(new CBounds);
  SetElementName(object, elementName);
  return object;
}

void CBounds::SetMinlat(const CDecimal& value) {
  Check<ItemType_decimal>(GetTables().GetAttributes()[0], value);
  m_minlat = value;
}

void CBounds::SetMinlon(const CDecimal& value) {
  Check<ItemType_decimal>(GetTables().GetAttributes()[1], value);
  m_minlon = value;
}

void CBounds::SetMaxlat(const CDecimal& value) {
  Check<ItemType_decimal>(GetTables().GetAttributes()[2], value);
  m_maxlat = value;
}

void CBounds::SetMaxlon(const CDecimal& value) {
  Check<ItemType_decimal>(GetTables().GetAttributes()[3], value);
  m_maxlon = value;
}

void CBounds::AccessProperty(int index, bool read, QzVariant& value) const {
  CBounds& self = const_cast<CBounds&>(*this);
  switch (index) {
    case Property_Minlat:
      if (!read) return self.SetMinlat(value.TakeDecimal());
      return AccessValue<ItemType_decimal>(true, value, self.m_minlat);
    case Property_Minlon:
      if (!read) return self.SetMinlon(value.TakeDecimal());
      return AccessValue<ItemType_decimal>(true, value, self.m_minlon);
    case Property_Maxlat:
      if (!read) return self.SetMaxlat(value.TakeDecimal());
      return AccessValue<ItemType_decimal>(true, value, self.m_maxlat);
    case Property_Maxlon:
      if (!read) return self.SetMaxlon(value.TakeDecimal());
      return AccessValue<ItemType_decimal>(true, value, self.m_maxlon);
    default:
      return;
  }
}

void CBounds::Init() {
  m_minlat.reset();
  m_minlon.reset();
  m_maxlat.reset();
  m_maxlon.reset();
}

const CBounds::CTables& CBounds::GetTables() const {
  static CTables tables;
  return BuildOnce(tables, [](CTables& made) {
    made.SetInfo(NewSequenceInfo("bounds", kNamespace));
    made.SetAttributes({new CAttributeInfoPrimitive(
                            "minlat", "", Property_Minlat, false, ItemType_decimal, nullptr,
                            CWhitespaceUtils::WhitespaceRule_Collapse, Latitude(), nullptr),
                        new CAttributeInfoPrimitive(
                            "minlon", "", Property_Minlon, false, ItemType_decimal, nullptr,
                            CWhitespaceUtils::WhitespaceRule_Collapse, Longitude(), nullptr),
                        new CAttributeInfoPrimitive(
                            "maxlat", "", Property_Maxlat, false, ItemType_decimal, nullptr,
                            CWhitespaceUtils::WhitespaceRule_Collapse, Latitude(), nullptr),
                        new CAttributeInfoPrimitive(
                            "maxlon", "", Property_Maxlon, false, ItemType_decimal, nullptr,
                            CWhitespaceUtils::WhitespaceRule_Collapse, Longitude(), nullptr)});
  });
}

// CExtensions

CExtensions::CExtensions() : m_elements(new CElementCol("", "##other", kNamespace, 0, -1)) {
  SetElementName("extensions");
}

CSmartPtr<CXmlObjectBase> CExtensions::Create(int, const char* elementName) {
  CSmartPtr<CXmlObjectBase> object(new CExtensions);
  SetElementName(object, elementName);
  return object;
}

void CExtensions::AccessProperty(int index, bool read, QzVariant& value) const {
  switch (index) {
    case Property_Elements:
      return AccessCollection(read, value, m_elements);
    default:
      return;
  }
}

void CExtensions::Init() { m_elements->Clear(); }

const CExtensions::CTables& CExtensions::GetTables() const {
  static CTables tables;
  return BuildOnce(tables, [](CTables& made) {
    made.SetInfo(NewSequenceInfo("extensions", kNamespace));
    made.SetElements({new CElementInfoSeqUntpdCol("AnyElement", kNamespace, Property_Elements)});
  });
}

// CMetadata

CMetadata::CMetadata() : m_links(new CLinkCol("link", kNamespace, 0, -1, &CLink::Create, 0)) {
  SetElementName("metadata");
}

CSmartPtr<CXmlObjectBase> CMetadata::Create(int, const char* elementName) {
  CSmartPtr<CXmlObjectBase> object(new CMetadata);
  SetElementName(object, elementName);
  return object;
}

void CMetadata::SetAuthor(CPerson* value) {
  if (value != nullptr) SetElementName(value, "author");
  m_author = CSmartPtr<CPerson>(value);
}

void CMetadata::SetCopyright(CCopyright* value) {
  if (value != nullptr) SetElementName(value, "copyright");
  m_copyright = CSmartPtr<CCopyright>(value);
}

void CMetadata::SetBounds(CBounds* value) {
  if (value != nullptr) SetElementName(value, "bounds");
  m_bounds = CSmartPtr<CBounds>(value);
}

void CMetadata::SetExtensions(CExtensions* value) {
  if (value != nullptr) SetElementName(value, "extensions");
  m_extensions = CSmartPtr<CExtensions>(value);
}

void CMetadata::AccessProperty(int index, bool read, QzVariant& value) const {
  CMetadata& self = const_cast<CMetadata&>(*this);
  switch (index) {
    case Property_Name:
      return AccessValue<ItemType_string>(read, value, self.m_name);
    case Property_Desc:
      return AccessValue<ItemType_string>(read, value, self.m_desc);
    case Property_Author:
      return AccessObject(read, value, self.m_author);
    case Property_Copyright:
      return AccessObject(read, value, self.m_copyright);
    case Property_Links:
      return AccessCollection(read, value, m_links);
    case Property_Time:
      return AccessValue<ItemType_datetime>(read, value, self.m_time);
    case Property_Keywords:
      return AccessValue<ItemType_string>(read, value, self.m_keywords);
    case Property_Bounds:
      return AccessObject(read, value, self.m_bounds);
    case Property_Extensions:
      return AccessObject(read, value, self.m_extensions);
    default:
      return;
  }
}

void CMetadata::Init() {
  m_name.reset();
  m_desc.reset();
  m_author = nullptr;
  m_copyright = nullptr;
  m_links->Clear();
  m_time.reset();
  m_keywords.reset();
  m_bounds = nullptr;
  m_extensions = nullptr;
}

const CMetadata::CTables& CMetadata::GetTables() const {
  static CTables tables;
  return BuildOnce(tables, [](CTables& made) {
    made.SetInfo(NewSequenceInfo("metadata", kNamespace));
    made.SetElements(
        {new CElementInfoSeqPrimOpt("name", kNamespace, Property_Name, false, ItemType_string,
                                    nullptr, CWhitespaceUtils::WhitespaceRule_None,
                                    CPrimitiveRestrictions(), nullptr),
         new CElementInfoSeqPrimOpt("desc", kNamespace, Property_Desc, false, ItemType_string,
                                    nullptr, CWhitespaceUtils::WhitespaceRule_None,
                                    CPrimitiveRestrictions(), nullptr),
         new CElementInfoSeqClsOpt("author", kNamespace, Property_Author, XmlElementType_Element,
                                   &CPerson::Create, 0),
         new CElementInfoSeqClsOpt("copyright", kNamespace, Property_Copyright,
                                   XmlElementType_Element, &CCopyright::Create, 0),
         new CElementInfoSeqClsCol("link", kNamespace, Property_Links, XmlElementType_Element),
         new CElementInfoSeqPrimOpt("time", kNamespace, Property_Time, false, ItemType_datetime,
                                    nullptr, CWhitespaceUtils::WhitespaceRule_Collapse,
                                    CPrimitiveRestrictions(), nullptr),
         new CElementInfoSeqPrimOpt("keywords", kNamespace, Property_Keywords, false,
                                    ItemType_string, nullptr, CWhitespaceUtils::WhitespaceRule_None,
                                    CPrimitiveRestrictions(), nullptr),
         new CElementInfoSeqClsOpt("bounds", kNamespace, Property_Bounds, XmlElementType_Element,
                                   &CBounds::Create, 0),
         new CElementInfoSeqClsOpt("extensions", kNamespace, Property_Extensions,
                                   XmlElementType_Element, &CExtensions::Create, 0)});
  });
}

// CWpt

CWpt::CWpt() : m_links(new CLinkCol("link", kNamespace, 0, -1, &CLink::Create, 0)) {
  SetElementName("wpt");
}

CSmartPtr<CXmlObjectBase> CWpt::Create(int, const char* elementName) {
  CSmartPtr<CXmlObjectBase> object(new CWpt);
  SetElementName(object, elementName);
  return object;
}

void CWpt::SetLat(const CDecimal& value) {
  Check<ItemType_decimal>(GetTables().GetAttributes()[0], value);
  m_lat = value;
}

void CWpt::SetLon(const CDecimal& value) {
  Check<ItemType_decimal>(GetTables().GetAttributes()[1], value);
  m_lon = value;
}

void CWpt::SetMagvar(const std::optional<CDecimal>& value) {
  if (value) Check<ItemType_decimal>(GetTables().GetElements()[2], *value);
  m_magvar = value;
}

void CWpt::SetDgpsid(const std::optional<std::uint16_t>& value) {
  if (value) Check<ItemType_ui2>(GetTables().GetElements()[17], *value);
  m_dgpsid = value;
}

void CWpt::SetExtensions(CExtensions* value) {
  if (value != nullptr) SetElementName(value, "extensions");
  m_extensions = CSmartPtr<CExtensions>(value);
}

void CWpt::AccessProperty(int index, bool read, QzVariant& value) const {
  CWpt& self = const_cast<CWpt&>(*this);
  switch (index) {
    case Property_Lat:
      if (!read) return self.SetLat(value.TakeDecimal());
      return AccessValue<ItemType_decimal>(true, value, self.m_lat);
    case Property_Lon:
      if (!read) return self.SetLon(value.TakeDecimal());
      return AccessValue<ItemType_decimal>(true, value, self.m_lon);
    case Property_Ele:
      return AccessValue<ItemType_decimal>(read, value, self.m_ele);
    case Property_Time:
      return AccessValue<ItemType_datetime>(read, value, self.m_time);
    case Property_Magvar:
      if (!read) return self.SetMagvar(value.TakeDecimal());
      return AccessValue<ItemType_decimal>(true, value, self.m_magvar);
    case Property_Geoidheight:
      return AccessValue<ItemType_decimal>(read, value, self.m_geoidheight);
    case Property_Name:
      return AccessValue<ItemType_string>(read, value, self.m_name);
    case Property_Cmt:
      return AccessValue<ItemType_string>(read, value, self.m_cmt);
    case Property_Desc:
      return AccessValue<ItemType_string>(read, value, self.m_desc);
    case Property_Src:
      return AccessValue<ItemType_string>(read, value, self.m_src);
    case Property_Links:
      return AccessCollection(read, value, m_links);
    case Property_Sym:
      return AccessValue<ItemType_string>(read, value, self.m_sym);
    case Property_Type:
      return AccessValue<ItemType_string>(read, value, self.m_type);
    case Property_Fix:
      return AccessEnum(read, value, self.m_fix);
    case Property_Sat:
      return AccessValue<ItemType_ui4>(read, value, self.m_sat);
    case Property_Hdop:
      return AccessValue<ItemType_decimal>(read, value, self.m_hdop);
    case Property_Vdop:
      return AccessValue<ItemType_decimal>(read, value, self.m_vdop);
    case Property_Pdop:
      return AccessValue<ItemType_decimal>(read, value, self.m_pdop);
    case Property_Ageofdgpsdata:
      return AccessValue<ItemType_decimal>(read, value, self.m_ageofdgpsdata);
    case Property_Dgpsid:
      if (!read) return self.SetDgpsid(value.GetUI2());
      return AccessValue<ItemType_ui2>(true, value, self.m_dgpsid);
    case Property_Extensions:
      return AccessObject(read, value, self.m_extensions);
    default:
      return;
  }
}

void CWpt::Init() {
  m_lat.reset();
  m_lon.reset();
  m_ele.reset();
  m_time.reset();
  m_magvar.reset();
  m_geoidheight.reset();
  m_name.reset();
  m_cmt.reset();
  m_desc.reset();
  m_src.reset();
  m_links->Clear();
  m_sym.reset();
  m_type.reset();
  m_fix.reset();
  m_sat.reset();
  m_hdop.reset();
  m_vdop.reset();
  m_pdop.reset();
  m_ageofdgpsdata.reset();
  m_dgpsid.reset();
  m_extensions = nullptr;
}

const CWpt::CTables& CWpt::GetTables() const {
  static CTables tables;
  return BuildOnce(tables, [](CTables& made) {
    made.SetInfo(NewSequenceInfo("wpt", kNamespace));
    made.SetElements(
        {new CElementInfoSeqPrimOpt("ele", kNamespace, Property_Ele, false, ItemType_decimal,
                                    nullptr, CWhitespaceUtils::WhitespaceRule_Collapse,
                                    CPrimitiveRestrictions(), nullptr),
         new CElementInfoSeqPrimOpt("time", kNamespace, Property_Time, false, ItemType_datetime,
                                    nullptr, CWhitespaceUtils::WhitespaceRule_Collapse,
                                    CPrimitiveRestrictions(), nullptr),
         new CElementInfoSeqPrimOpt("magvar", kNamespace, Property_Magvar, false, ItemType_decimal,
                                    nullptr, CWhitespaceUtils::WhitespaceRule_Collapse, Degrees(),
                                    nullptr),
         new CElementInfoSeqPrimOpt(
             "geoidheight", kNamespace, Property_Geoidheight, false, ItemType_decimal, nullptr,
             CWhitespaceUtils::WhitespaceRule_Collapse, CPrimitiveRestrictions(), nullptr),
         new CElementInfoSeqPrimOpt("name", kNamespace, Property_Name, false, ItemType_string,
                                    nullptr, CWhitespaceUtils::WhitespaceRule_None,
                                    CPrimitiveRestrictions(), nullptr),
         new CElementInfoSeqPrimOpt("cmt", kNamespace, Property_Cmt, false, ItemType_string,
                                    nullptr, CWhitespaceUtils::WhitespaceRule_None,
                                    CPrimitiveRestrictions(), nullptr),
         new CElementInfoSeqPrimOpt("desc", kNamespace, Property_Desc, false, ItemType_string,
                                    nullptr, CWhitespaceUtils::WhitespaceRule_None,
                                    CPrimitiveRestrictions(), nullptr),
         new CElementInfoSeqPrimOpt("src", kNamespace, Property_Src, false, ItemType_string,
                                    nullptr, CWhitespaceUtils::WhitespaceRule_None,
                                    CPrimitiveRestrictions(), nullptr),
         new CElementInfoSeqClsCol("link", kNamespace, Property_Links, XmlElementType_Element),
         new CElementInfoSeqPrimOpt("sym", kNamespace, Property_Sym, false, ItemType_string,
                                    nullptr, CWhitespaceUtils::WhitespaceRule_None,
                                    CPrimitiveRestrictions(), nullptr),
         new CElementInfoSeqPrimOpt("type", kNamespace, Property_Type, false, ItemType_string,
                                    nullptr, CWhitespaceUtils::WhitespaceRule_None,
                                    CPrimitiveRestrictions(), nullptr),
         new CElementInfoSeqEnumOpt("fix", kNamespace, Property_Fix, false, &FixToString,
                                    &StringToFix, nullptr),
         new CElementInfoSeqPrimOpt("sat", kNamespace, Property_Sat, false, ItemType_ui4, nullptr,
                                    CWhitespaceUtils::WhitespaceRule_Collapse,
                                    CPrimitiveRestrictions(), nullptr),
         new CElementInfoSeqPrimOpt("hdop", kNamespace, Property_Hdop, false, ItemType_decimal,
                                    nullptr, CWhitespaceUtils::WhitespaceRule_Collapse,
                                    CPrimitiveRestrictions(), nullptr),
         new CElementInfoSeqPrimOpt("vdop", kNamespace, Property_Vdop, false, ItemType_decimal,
                                    nullptr, CWhitespaceUtils::WhitespaceRule_Collapse,
                                    CPrimitiveRestrictions(), nullptr),
         new CElementInfoSeqPrimOpt("pdop", kNamespace, Property_Pdop, false, ItemType_decimal,
                                    nullptr, CWhitespaceUtils::WhitespaceRule_Collapse,
                                    CPrimitiveRestrictions(), nullptr),
         new CElementInfoSeqPrimOpt(
             "ageofdgpsdata", kNamespace, Property_Ageofdgpsdata, false, ItemType_decimal, nullptr,
             CWhitespaceUtils::WhitespaceRule_Collapse, CPrimitiveRestrictions(), nullptr),
         new CElementInfoSeqPrimOpt("dgpsid", kNamespace, Property_Dgpsid, false, ItemType_ui2,
                                    nullptr, CWhitespaceUtils::WhitespaceRule_Collapse,
                                    DgpsStation(), nullptr),
         new CElementInfoSeqClsOpt("extensions", kNamespace, Property_Extensions,
                                   XmlElementType_Element, &CExtensions::Create, 0)});
    made.SetAttributes({new CAttributeInfoPrimitive(
                            "lat", "", Property_Lat, false, ItemType_decimal, nullptr,
                            CWhitespaceUtils::WhitespaceRule_Collapse, Latitude(), nullptr),
                        new CAttributeInfoPrimitive(
                            "lon", "", Property_Lon, false, ItemType_decimal, nullptr,
                            CWhitespaceUtils::WhitespaceRule_Collapse, Longitude(), nullptr)});
  });
}

// CRte

CRte::CRte()
    : m_links(new CLinkCol("link", kNamespace, 0, -1, &CLink::Create, 0)),
      m_rtepts(new CWptCol("rtept", kNamespace, 0, -1, &CWpt::Create, 0)) {
  SetElementName("rte");
}

CSmartPtr<CXmlObjectBase> CRte::Create(int, const char* elementName) {
  CSmartPtr<CXmlObjectBase> object(new CRte);
  SetElementName(object, elementName);
  return object;
}

void CRte::SetExtensions(CExtensions* value) {
  if (value != nullptr) SetElementName(value, "extensions");
  m_extensions = CSmartPtr<CExtensions>(value);
}

void CRte::AccessProperty(int index, bool read, QzVariant& value) const {
  CRte& self = const_cast<CRte&>(*this);
  switch (index) {
    case Property_Name:
      return AccessValue<ItemType_string>(read, value, self.m_name);
    case Property_Cmt:
      return AccessValue<ItemType_string>(read, value, self.m_cmt);
    case Property_Desc:
      return AccessValue<ItemType_string>(read, value, self.m_desc);
    case Property_Src:
      return AccessValue<ItemType_string>(read, value, self.m_src);
    case Property_Links:
      return AccessCollection(read, value, m_links);
    case Property_Number:
      return AccessValue<ItemType_ui4>(read, value, self.m_number);
    case Property_Type:
      return AccessValue<ItemType_string>(read, value, self.m_type);
    case Property_Extensions:
      return AccessObject(read, value, self.m_extensions);
    case Property_Rtepts:
      return AccessCollection(read, value, m_rtepts);
    default:
      return;
  }
}

void CRte::Init() {
  m_name.reset();
  m_cmt.reset();
  m_desc.reset();
  m_src.reset();
  m_links->Clear();
  m_number.reset();
  m_type.reset();
  m_extensions = nullptr;
  m_rtepts->Clear();
}

const CRte::CTables& CRte::GetTables() const {
  static CTables tables;
  return BuildOnce(tables, [](CTables& made) {
    made.SetInfo(NewSequenceInfo("rte", kNamespace));
    made.SetElements(
        {new CElementInfoSeqPrimOpt("name", kNamespace, Property_Name, false, ItemType_string,
                                    nullptr, CWhitespaceUtils::WhitespaceRule_None,
                                    CPrimitiveRestrictions(), nullptr),
         new CElementInfoSeqPrimOpt("cmt", kNamespace, Property_Cmt, false, ItemType_string,
                                    nullptr, CWhitespaceUtils::WhitespaceRule_None,
                                    CPrimitiveRestrictions(), nullptr),
         new CElementInfoSeqPrimOpt("desc", kNamespace, Property_Desc, false, ItemType_string,
                                    nullptr, CWhitespaceUtils::WhitespaceRule_None,
                                    CPrimitiveRestrictions(), nullptr),
         new CElementInfoSeqPrimOpt("src", kNamespace, Property_Src, false, ItemType_string,
                                    nullptr, CWhitespaceUtils::WhitespaceRule_None,
                                    CPrimitiveRestrictions(), nullptr),
         new CElementInfoSeqClsCol("link", kNamespace, Property_Links, XmlElementType_Element),
         new CElementInfoSeqPrimOpt("number", kNamespace, Property_Number, false, ItemType_ui4,
                                    nullptr, CWhitespaceUtils::WhitespaceRule_Collapse,
                                    CPrimitiveRestrictions(), nullptr),
         new CElementInfoSeqPrimOpt("type", kNamespace, Property_Type, false, ItemType_string,
                                    nullptr, CWhitespaceUtils::WhitespaceRule_None,
                                    CPrimitiveRestrictions(), nullptr),
         new CElementInfoSeqClsOpt("extensions", kNamespace, Property_Extensions,
                                   XmlElementType_Element, &CExtensions::Create, 0),
         new CElementInfoSeqClsCol("rtept", kNamespace, Property_Rtepts, XmlElementType_Element)});
  });
}

// CTrkseg

CTrkseg::CTrkseg() : m_trkpts(new CWptCol("trkpt", kNamespace, 0, -1, &CWpt::Create, 0)) {
  SetElementName("trkseg");
}

CSmartPtr<CXmlObjectBase> CTrkseg::Create(int, const char* elementName) {
  CSmartPtr<CXmlObjectBase> object(new CTrkseg);
  SetElementName(object, elementName);
  return object;
}

void CTrkseg::SetExtensions(CExtensions* value) {
  if (value != nullptr) SetElementName(value, "extensions");
  m_extensions = CSmartPtr<CExtensions>(value);
}

void CTrkseg::AccessProperty(int index, bool read, QzVariant& value) const {
  CTrkseg& self = const_cast<CTrkseg&>(*this);
  switch (index) {
    case Property_Trkpts:
      return AccessCollection(read, value, m_trkpts);
    case Property_Extensions:
      return AccessObject(read, value, self.m_extensions);
    default:
      return;
  }
}

void CTrkseg::Init() {
  m_trkpts->Clear();
  m_extensions = nullptr;
}

const CTrkseg::CTables& CTrkseg::GetTables() const {
  static CTables tables;
  return BuildOnce(tables, [](CTables& made) {
    made.SetInfo(NewSequenceInfo("trkseg", kNamespace));
    made.SetElements(
        {new CElementInfoSeqClsCol("trkpt", kNamespace, Property_Trkpts, XmlElementType_Element),
         new CElementInfoSeqClsOpt("extensions", kNamespace, Property_Extensions,
                                   XmlElementType_Element, &CExtensions::Create, 0)});
  });
}

// CTrk

CTrk::CTrk()
    : m_links(new CLinkCol("link", kNamespace, 0, -1, &CLink::Create, 0)),
      m_trksegs(new CTrksegCol("trkseg", kNamespace, 0, -1, &CTrkseg::Create, 0)) {
  SetElementName("trk");
}

CSmartPtr<CXmlObjectBase> CTrk::Create(int, const char* elementName) {
  CSmartPtr<CXmlObjectBase> object(new CTrk);
  SetElementName(object, elementName);
  return object;
}

void CTrk::SetExtensions(CExtensions* value) {
  if (value != nullptr) SetElementName(value, "extensions");
  m_extensions = CSmartPtr<CExtensions>(value);
}

void CTrk::AccessProperty(int index, bool read, QzVariant& value) const {
  CTrk& self = const_cast<CTrk&>(*this);
  switch (index) {
    case Property_Name:
      return AccessValue<ItemType_string>(read, value, self.m_name);
    case Property_Cmt:
      return AccessValue<ItemType_string>(read, value, self.m_cmt);
    case Property_Desc:
      return AccessValue<ItemType_string>(read, value, self.m_desc);
    case Property_Src:
      return AccessValue<ItemType_string>(read, value, self.m_src);
    case Property_Links:
      return AccessCollection(read, value, m_links);
    case Property_Number:
      return AccessValue<ItemType_ui4>(read, value, self.m_number);
    case Property_Type:
      return AccessValue<ItemType_string>(read, value, self.m_type);
    case Property_Extensions:
      return AccessObject(read, value, self.m_extensions);
    case Property_Trksegs:
      return AccessCollection(read, value, m_trksegs);
    default:
      return;
  }
}

void CTrk::Init() {
  m_name.reset();
  m_cmt.reset();
  m_desc.reset();
  m_src.reset();
  m_links->Clear();
  m_number.reset();
  m_type.reset();
  m_extensions = nullptr;
  m_trksegs->Clear();
}

const CTrk::CTables& CTrk::GetTables() const {
  static CTables tables;
  return BuildOnce(tables, [](CTables& made) {
    made.SetInfo(NewSequenceInfo("trk", kNamespace));
    made.SetElements(
        {new CElementInfoSeqPrimOpt("name", kNamespace, Property_Name, false, ItemType_string,
                                    nullptr, CWhitespaceUtils::WhitespaceRule_None,
                                    CPrimitiveRestrictions(), nullptr),
         new CElementInfoSeqPrimOpt("cmt", kNamespace, Property_Cmt, false, ItemType_string,
                                    nullptr, CWhitespaceUtils::WhitespaceRule_None,
                                    CPrimitiveRestrictions(), nullptr),
         new CElementInfoSeqPrimOpt("desc", kNamespace, Property_Desc, false, ItemType_string,
                                    nullptr, CWhitespaceUtils::WhitespaceRule_None,
                                    CPrimitiveRestrictions(), nullptr),
         new CElementInfoSeqPrimOpt("src", kNamespace, Property_Src, false, ItemType_string,
                                    nullptr, CWhitespaceUtils::WhitespaceRule_None,
                                    CPrimitiveRestrictions(), nullptr),
         new CElementInfoSeqClsCol("link", kNamespace, Property_Links, XmlElementType_Element),
         new CElementInfoSeqPrimOpt("number", kNamespace, Property_Number, false, ItemType_ui4,
                                    nullptr, CWhitespaceUtils::WhitespaceRule_Collapse,
                                    CPrimitiveRestrictions(), nullptr),
         new CElementInfoSeqPrimOpt("type", kNamespace, Property_Type, false, ItemType_string,
                                    nullptr, CWhitespaceUtils::WhitespaceRule_None,
                                    CPrimitiveRestrictions(), nullptr),
         new CElementInfoSeqClsOpt("extensions", kNamespace, Property_Extensions,
                                   XmlElementType_Element, &CExtensions::Create, 0),
         new CElementInfoSeqClsCol("trkseg", kNamespace, Property_Trksegs,
                                   XmlElementType_Element)});
  });
}

// CGpx

CGpx::CGpx()
    : m_wpts(new CWptCol("wpt", kNamespace, 0, -1, &CWpt::Create, 0)),
      m_rtes(new CRteCol("rte", kNamespace, 0, -1, &CRte::Create, 0)),
      m_trks(new CTrkCol("trk", kNamespace, 0, -1, &CTrk::Create, 0)) {
  SetElementName("gpx");
}

void CGpx::SetMetadata(CMetadata* value) {
  if (value != nullptr) SetElementName(value, "metadata");
  m_metadata = CSmartPtr<CMetadata>(value);
}

void CGpx::SetExtensions(CExtensions* value) {
  if (value != nullptr) SetElementName(value, "extensions");
  m_extensions = CSmartPtr<CExtensions>(value);
}

void CGpx::AccessProperty(int index, bool read, QzVariant& value) const {
  CGpx& self = const_cast<CGpx&>(*this);
  switch (index) {
    case Property_Version:
      return AccessValue<ItemType_string>(read, value, self.m_version);
    case Property_Creator:
      return AccessValue<ItemType_string>(read, value, self.m_creator);
    case Property_Metadata:
      return AccessObject(read, value, self.m_metadata);
    case Property_Wpts:
      return AccessCollection(read, value, m_wpts);
    case Property_Rtes:
      return AccessCollection(read, value, m_rtes);
    case Property_Trks:
      return AccessCollection(read, value, m_trks);
    case Property_Extensions:
      return AccessObject(read, value, self.m_extensions);
    default:
      return;
  }
}

void CGpx::Init() {
  m_version.reset();
  m_creator.reset();
  m_metadata = nullptr;
  m_wpts->Clear();
  m_rtes->Clear();
  m_trks->Clear();
  m_extensions = nullptr;
}

const CGpx::CTables& CGpx::GetTables() const {
  static CTables tables;
  return BuildOnce(tables, [](CTables& made) {
    made.SetInfo(NewSequenceInfo("gpx", kNamespace));
    made.SetElements(
        {new CElementInfoSeqClsOpt("metadata", kNamespace, Property_Metadata,
                                   XmlElementType_Element, &CMetadata::Create, 0),
         new CElementInfoSeqClsCol("wpt", kNamespace, Property_Wpts, XmlElementType_Element),
         new CElementInfoSeqClsCol("rte", kNamespace, Property_Rtes, XmlElementType_Element),
         new CElementInfoSeqClsCol("trk", kNamespace, Property_Trks, XmlElementType_Element),
         new CElementInfoSeqClsOpt("extensions", kNamespace, Property_Extensions,
                                   XmlElementType_Element, &CExtensions::Create, 0)});
    made.SetAttributes(
        {new CAttributeInfoPrimitive("version", "", Property_Version, false, ItemType_string,
                                     nullptr, CWhitespaceUtils::WhitespaceRule_None,
                                     CPrimitiveRestrictions(), nullptr),
         new CAttributeInfoPrimitive("creator", "", Property_Creator, false, ItemType_string,
                                     nullptr, CWhitespaceUtils::WhitespaceRule_None,
                                     CPrimitiveRestrictions(), nullptr)});
  });
}

}  // namespace gpx
