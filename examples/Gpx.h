#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "qzxml/QzXml.h"

// GPX 1.1, the format in which receivers and maps exchange waypoints, routes and tracks, bound as a
// generator binds it: one class for each type of the schema, with a typed accessor for each
// attribute and child. What the schema makes optional is a std::optional or a null handle; what may
// repeat is a collection. A setter throws CQzException "Invalid Value for %s [%s]." (or "[%d]", for
// dgpsid) for what a facet of the schema forbids, and leaves the property as it was.
//
// Degrees, heights and the like are exact decimals: 45.30 comes back as 45.3, and no digit changes.
// Source: GPX 1.1 schema, http://www.topografix.com/GPX/1/1/gpx.xsd
namespace gpx {

// How a receiver came to its position.
enum Fix : int { Fix_none, Fix_2d, Fix_3d, Fix_dgps, Fix_pps };
const char* FixToString(int value);
// Throws CQzInvalidValueException "The value [%s] is not one of none, 2d, 3d, dgps, pps".
int StringToFix(const char* text);

// What all classes of this schema share: the namespace.
class CGpxClass : public QzXmlLib16::CTabledClass {
 public:
  std::string GetTargetNamespace() const override;
  std::string GetNamespace() const override;
};

// <link>: an external resource, with what it is called and its media type.
class CLink : public CGpxClass {
 public:
  CLink();
  static CSmartPtr<QzXmlLib16::CXmlObjectBase> Create(int classId, const char* elementName);

  std::string GetHref() const { return m_href.value_or(""); }
  bool IsSetHref() const { return m_href.has_value(); }
  void SetHref(const std::string& value) { m_href = value; }
  const std::optional<std::string>& GetText() const { return m_text; }
  void SetText(const std::optional<std::string>& value) { m_text = value; }
  const std::optional<std::string>& GetType() const { return m_type; }
  void SetType(const std::optional<std::string>& value) { m_type = value; }

 protected:
  void AccessProperty(int index, bool read, QzXmlLib16::QzVariant& value) const override;
  void Init() override;
  const CTables& GetTables() const override;

 private:
  enum Property : int { Property_Href, Property_Text, Property_Type };

  std::optional<std::string> m_href;
  std::optional<std::string> m_text;
  std::optional<std::string> m_type;
};
using CLinkCol = QzXmlLib16::CXmlObjectCol<CLink>;

// <email>: an address in two parts, which keeps it from harvesters.
class CEmail : public CGpxClass {
 public:
  CEmail();
  static CSmartPtr<QzXmlLib16::CXmlObjectBase> Create(int classId, const char* elementName);

  std::string GetId() const { return m_id.value_or(""); }
  bool IsSetId() const { return m_id.has_value(); }
  void SetId(const std::string& value) { m_id = value; }
  std::string GetDomain() const { return m_domain.value_or(""); }
  bool IsSetDomain() const { return m_domain.has_value(); }
  void SetDomain(const std::string& value) { m_domain = value; }

 protected:
  void AccessProperty(int index, bool read, QzXmlLib16::QzVariant& value) const override;
  void Init() override;
  const CTables& GetTables() const override;

 private:
  enum Property : int { Property_Id, Property_Domain };

  std::optional<std::string> m_id;
  std::optional<std::string> m_domain;
};

// <author>: a person or an organisation.
class CPerson : public CGpxClass {
 public:
  CPerson();
  static CSmartPtr<QzXmlLib16::CXmlObjectBase> Create(int classId, const char* elementName);

  const std::optional<std::string>& GetName() const { return m_name; }
  void SetName(const std::optional<std::string>& value) { m_name = value; }
  const CSmartPtr<CEmail>& GetEmail() const { return m_email; }
  void SetEmail(CEmail* value);
  const CSmartPtr<CLink>& GetLink() const { return m_link; }
  void SetLink(CLink* value);

 protected:
  void AccessProperty(int index, bool read, QzXmlLib16::QzVariant& value) const override;
  void Init() override;
  const CTables& GetTables() const override;

 private:
  enum Property : int { Property_Name, Property_Email, Property_Link };

  std::optional<std::string> m_name;
  CSmartPtr<CEmail> m_email;
  CSmartPtr<CLink> m_link;
};

// <copyright>: the holder, and where the licence stands.
class CCopyright : public CGpxClass {
 public:
  CCopyright();
  static CSmartPtr<QzXmlLib16::CXmlObjectBase> Create(int classId, const char* elementName);

  std::string GetAuthor() const { return m_author.value_or(""); }
  bool IsSetAuthor() const { return m_author.has_value(); }
  void SetAuthor(const std::string& value) { m_author = value; }
  const std::optional<std::uint16_t>& GetYear() const { return m_year; }
  void SetYear(const std::optional<std::uint16_t>& value) { m_year = value; }
  const std::optional<std::string>& GetLicense() const { return m_license; }
  void SetLicense(const std::optional<std::string>& value) { m_license = value; }

 protected:
  void AccessProperty(int index, bool read, QzXmlLib16::QzVariant& value) const override;
  void Init() override;
  const CTables& GetTables() const override;

 private:
  enum Property : int { Property_Author, Property_Year, Property_License };

  std::optional<std::string> m_author;
  std::optional<std::uint16_t> m_year;
  std::optional<std::string> m_license;
};

// <bounds>: the corners that enclose all points, in degrees.
class CBounds : public CGpxClass {
 public:
  CBounds();
  static CSmartPtr<QzXmlLib16::CXmlObjectBase> Create(int classId, const char* elementName);

  QzXmlLib16::CDecimal GetMinlat() const { return m_minlat.value_or(QzXmlLib16::CDecimal()); }
  bool IsSetMinlat() const { return m_minlat.has_value(); }
  void SetMinlat(const QzXmlLib16::CDecimal& value);
  QzXmlLib16::CDecimal GetMinlon() const { return m_minlon.value_or(QzXmlLib16::CDecimal()); }
  bool IsSetMinlon() const { return m_minlon.has_value(); }
  void SetMinlon(const QzXmlLib16::CDecimal& value);
  QzXmlLib16::CDecimal GetMaxlat() const { return m_maxlat.value_or(QzXmlLib16::CDecimal()); }
  bool IsSetMaxlat() const { return m_maxlat.has_value(); }
  void SetMaxlat(const QzXmlLib16::CDecimal& value);
  QzXmlLib16::CDecimal GetMaxlon() const { return m_maxlon.value_or(QzXmlLib16::CDecimal()); }
  bool IsSetMaxlon() const { return m_maxlon.has_value(); }
  void SetMaxlon(const QzXmlLib16::CDecimal& value);

 protected:
  void AccessProperty(int index, bool read, QzXmlLib16::QzVariant& value) const override;
  void Init() override;
  const CTables& GetTables() const override;

 private:
  enum Property : int { Property_Minlat, Property_Minlon, Property_Maxlat, Property_Maxlon };

  std::optional<QzXmlLib16::CDecimal> m_minlat;
  std::optional<QzXmlLib16::CDecimal> m_minlon;
  std::optional<QzXmlLib16::CDecimal> m_maxlat;
  std::optional<QzXmlLib16::CDecimal> m_maxlon;
};

// <extensions>: elements of any other namespace.
class CExtensions : public CGpxClass {
 public:
  CExtensions();
  static CSmartPtr<QzXmlLib16::CXmlObjectBase> Create(int classId, const char* elementName);

  QzXmlLib16::CElementCol& GetElements() const { return *m_elements; }

 protected:
  void AccessProperty(int index, bool read, QzXmlLib16::QzVariant& value) const override;
  void Init() override;
  const CTables& GetTables() const override;

 private:
  enum Property : int { Property_Elements };

  CSmartPtr<QzXmlLib16::CElementCol> m_elements;
};

// <metadata>: what the file is, whose it is, and what it covers.
class CMetadata : public CGpxClass {
 public:
  CMetadata();
  static CSmartPtr<QzXmlLib16::CXmlObjectBase> Create(int classId, const char* elementName);

  const std::optional<std::string>& GetName() const { return m_name; }
  void SetName(const std::optional<std::string>& value) { m_name = value; }
  const std::optional<std::string>& GetDesc() const { return m_desc; }
  void SetDesc(const std::optional<std::string>& value) { m_desc = value; }
  const CSmartPtr<CPerson>& GetAuthor() const { return m_author; }
  void SetAuthor(CPerson* value);
  const CSmartPtr<CCopyright>& GetCopyright() const { return m_copyright; }
  void SetCopyright(CCopyright* value);
  CLinkCol& GetLinks() const { return *m_links; }
  const std::optional<QzXmlLib16::CDateTime>& GetTime() const { return m_time; }
  void SetTime(const std::optional<QzXmlLib16::CDateTime>& value) { m_time = value; }
  const std::optional<std::string>& GetKeywords() const { return m_keywords; }
  void SetKeywords(const std::optional<std::string>& value) { m_keywords = value; }
  const CSmartPtr<CBounds>& GetBounds() const { return m_bounds; }
  void SetBounds(CBounds* value);
  const CSmartPtr<CExtensions>& GetExtensions() const { return m_extensions; }
  void SetExtensions(CExtensions* value);

 protected:
  void AccessProperty(int index, bool read, QzXmlLib16::QzVariant& value) const override;
  void Init() override;
  const CTables& GetTables() const override;

 private:
  enum Property : int {
    Property_Name,
    Property_Desc,
    Property_Author,
    Property_Copyright,
    Property_Links,
    Property_Time,
    Property_Keywords,
    Property_Bounds,
    Property_Extensions
  };

  std::optional<std::string> m_name;
  std::optional<std::string> m_desc;
  CSmartPtr<CPerson> m_author;
  CSmartPtr<CCopyright> m_copyright;
  CSmartPtr<CLinkCol> m_links;
  std::optional<QzXmlLib16::CDateTime> m_time;
  std::optional<std::string> m_keywords;
  CSmartPtr<CBounds> m_bounds;
  CSmartPtr<CExtensions> m_extensions;
};

// <wpt>, <rtept>, <trkpt>: a waypoint, or a point of a route or of a track.
class CWpt : public CGpxClass {
 public:
  CWpt();
  static CSmartPtr<QzXmlLib16::CXmlObjectBase> Create(int classId, const char* elementName);

  QzXmlLib16::CDecimal GetLat() const { return m_lat.value_or(QzXmlLib16::CDecimal()); }
  bool IsSetLat() const { return m_lat.has_value(); }
  void SetLat(const QzXmlLib16::CDecimal& value);
  QzXmlLib16::CDecimal GetLon() const { return m_lon.value_or(QzXmlLib16::CDecimal()); }
  bool IsSetLon() const { return m_lon.has_value(); }
  void SetLon(const QzXmlLib16::CDecimal& value);
  const std::optional<QzXmlLib16::CDecimal>& GetEle() const { return m_ele; }
  void SetEle(const std::optional<QzXmlLib16::CDecimal>& value) { m_ele = value; }
  const std::optional<QzXmlLib16::CDateTime>& GetTime() const { return m_time; }
  void SetTime(const std::optional<QzXmlLib16::CDateTime>& value) { m_time = value; }
  const std::optional<QzXmlLib16::CDecimal>& GetMagvar() const { return m_magvar; }
  void SetMagvar(const std::optional<QzXmlLib16::CDecimal>& value);
  const std::optional<QzXmlLib16::CDecimal>& GetGeoidheight() const { return m_geoidheight; }
  void SetGeoidheight(const std::optional<QzXmlLib16::CDecimal>& value) { m_geoidheight = value; }
  const std::optional<std::string>& GetName() const { return m_name; }
  void SetName(const std::optional<std::string>& value) { m_name = value; }
  const std::optional<std::string>& GetCmt() const { return m_cmt; }
  void SetCmt(const std::optional<std::string>& value) { m_cmt = value; }
  const std::optional<std::string>& GetDesc() const { return m_desc; }
  void SetDesc(const std::optional<std::string>& value) { m_desc = value; }
  const std::optional<std::string>& GetSrc() const { return m_src; }
  void SetSrc(const std::optional<std::string>& value) { m_src = value; }
  CLinkCol& GetLinks() const { return *m_links; }
  const std::optional<std::string>& GetSym() const { return m_sym; }
  void SetSym(const std::optional<std::string>& value) { m_sym = value; }
  const std::optional<std::string>& GetType() const { return m_type; }
  void SetType(const std::optional<std::string>& value) { m_type = value; }
  const std::optional<Fix>& GetFix() const { return m_fix; }
  void SetFix(const std::optional<Fix>& value) { m_fix = value; }
  const std::optional<std::uint32_t>& GetSat() const { return m_sat; }
  void SetSat(const std::optional<std::uint32_t>& value) { m_sat = value; }
  const std::optional<QzXmlLib16::CDecimal>& GetHdop() const { return m_hdop; }
  void SetHdop(const std::optional<QzXmlLib16::CDecimal>& value) { m_hdop = value; }
  const std::optional<QzXmlLib16::CDecimal>& GetVdop() const { return m_vdop; }
  void SetVdop(const std::optional<QzXmlLib16::CDecimal>& value) { m_vdop = value; }
  const std::optional<QzXmlLib16::CDecimal>& GetPdop() const { return m_pdop; }
  void SetPdop(const std::optional<QzXmlLib16::CDecimal>& value) { m_pdop = value; }
  const std::optional<QzXmlLib16::CDecimal>& GetAgeofdgpsdata() const { return m_ageofdgpsdata; }
  void SetAgeofdgpsdata(const std::optional<QzXmlLib16::CDecimal>& value) {
    m_ageofdgpsdata = value;
  }
  const std::optional<std::uint16_t>& GetDgpsid() const { return m_dgpsid; }
  void SetDgpsid(const std::optional<std::uint16_t>& value);
  const CSmartPtr<CExtensions>& GetExtensions() const { return m_extensions; }
  void SetExtensions(CExtensions* value);

 protected:
  void AccessProperty(int index, bool read, QzXmlLib16::QzVariant& value) const override;
  void Init() override;
  const CTables& GetTables() const override;

 private:
  enum Property : int {
    Property_Lat,
    Property_Lon,
    Property_Ele,
    Property_Time,
    Property_Magvar,
    Property_Geoidheight,
    Property_Name,
    Property_Cmt,
    Property_Desc,
    Property_Src,
    Property_Links,
    Property_Sym,
    Property_Type,
    Property_Fix,
    Property_Sat,
    Property_Hdop,
    Property_Vdop,
    Property_Pdop,
    Property_Ageofdgpsdata,
    Property_Dgpsid,
    Property_Extensions
  };

  std::optional<QzXmlLib16::CDecimal> m_lat;
  std::optional<QzXmlLib16::CDecimal> m_lon;
  std::optional<QzXmlLib16::CDecimal> m_ele;
  std::optional<QzXmlLib16::CDateTime> m_time;
  std::optional<QzXmlLib16::CDecimal> m_magvar;
  std::optional<QzXmlLib16::CDecimal> m_geoidheight;
  std::optional<std::string> m_name;
  std::optional<std::string> m_cmt;
  std::optional<std::string> m_desc;
  std::optional<std::string> m_src;
  CSmartPtr<CLinkCol> m_links;
  std::optional<std::string> m_sym;
  std::optional<std::string> m_type;
  std::optional<Fix> m_fix;
  std::optional<std::uint32_t> m_sat;
  std::optional<QzXmlLib16::CDecimal> m_hdop;
  std::optional<QzXmlLib16::CDecimal> m_vdop;
  std::optional<QzXmlLib16::CDecimal> m_pdop;
  std::optional<QzXmlLib16::CDecimal> m_ageofdgpsdata;
  std::optional<std::uint16_t> m_dgpsid;
  CSmartPtr<CExtensions> m_extensions;
};
using CWptCol = QzXmlLib16::CXmlObjectCol<CWpt>;

// <rte>: a route, the points that lead to a destination.
class CRte : public CGpxClass {
 public:
  CRte();
  static CSmartPtr<QzXmlLib16::CXmlObjectBase> Create(int classId, const char* elementName);

  const std::optional<std::string>& GetName() const { return m_name; }
  void SetName(const std::optional<std::string>& value) { m_name = value; }
  const std::optional<std::string>& GetCmt() const { return m_cmt; }
  void SetCmt(const std::optional<std::string>& value) { m_cmt = value; }
  const std::optional<std::string>& GetDesc() const { return m_desc; }
  void SetDesc(const std::optional<std::string>& value) { m_desc = value; }
  const std::optional<std::string>& GetSrc() const { return m_src; }
  void SetSrc(const std::optional<std::string>& value) { m_src = value; }
  CLinkCol& GetLinks() const { return *m_links; }
  const std::optional<std::uint32_t>& GetNumber() const { return m_number; }
  void SetNumber(const std::optional<std::uint32_t>& value) { m_number = value; }
  const std::optional<std::string>& GetType() const { return m_type; }
  void SetType(const std::optional<std::string>& value) { m_type = value; }
  const CSmartPtr<CExtensions>& GetExtensions() const { return m_extensions; }
  void SetExtensions(CExtensions* value);
  CWptCol& GetRtepts() const { return *m_rtepts; }

 protected:
  void AccessProperty(int index, bool read, QzXmlLib16::QzVariant& value) const override;
  void Init() override;
  const CTables& GetTables() const override;

 private:
  enum Property : int {
    Property_Name,
    Property_Cmt,
    Property_Desc,
    Property_Src,
    Property_Links,
    Property_Number,
    Property_Type,
    Property_Extensions,
    Property_Rtepts
  };

  std::optional<std::string> m_name;
  std::optional<std::string> m_cmt;
  std::optional<std::string> m_desc;
  std::optional<std::string> m_src;
  CSmartPtr<CLinkCol> m_links;
  std::optional<std::uint32_t> m_number;
  std::optional<std::string> m_type;
  CSmartPtr<CExtensions> m_extensions;
  CSmartPtr<CWptCol> m_rtepts;
};
using CRteCol = QzXmlLib16::CXmlObjectCol<CRte>;

// <trkseg>: the points of a track while reception held.
class CTrkseg : public CGpxClass {
 public:
  CTrkseg();
  static CSmartPtr<QzXmlLib16::CXmlObjectBase> Create(int classId, const char* elementName);

  CWptCol& GetTrkpts() const { return *m_trkpts; }
  const CSmartPtr<CExtensions>& GetExtensions() const { return m_extensions; }
  void SetExtensions(CExtensions* value);

 protected:
  void AccessProperty(int index, bool read, QzXmlLib16::QzVariant& value) const override;
  void Init() override;
  const CTables& GetTables() const override;

 private:
  enum Property : int { Property_Trkpts, Property_Extensions };

  CSmartPtr<CWptCol> m_trkpts;
  CSmartPtr<CExtensions> m_extensions;
};
using CTrksegCol = QzXmlLib16::CXmlObjectCol<CTrkseg>;

// <trk>: a track, the points that were passed.
class CTrk : public CGpxClass {
 public:
  CTrk();
  static CSmartPtr<QzXmlLib16::CXmlObjectBase> Create(int classId, const char* elementName);

  const std::optional<std::string>& GetName() const { return m_name; }
  void SetName(const std::optional<std::string>& value) { m_name = value; }
  const std::optional<std::string>& GetCmt() const { return m_cmt; }
  void SetCmt(const std::optional<std::string>& value) { m_cmt = value; }
  const std::optional<std::string>& GetDesc() const { return m_desc; }
  void SetDesc(const std::optional<std::string>& value) { m_desc = value; }
  const std::optional<std::string>& GetSrc() const { return m_src; }
  void SetSrc(const std::optional<std::string>& value) { m_src = value; }
  CLinkCol& GetLinks() const { return *m_links; }
  const std::optional<std::uint32_t>& GetNumber() const { return m_number; }
  void SetNumber(const std::optional<std::uint32_t>& value) { m_number = value; }
  const std::optional<std::string>& GetType() const { return m_type; }
  void SetType(const std::optional<std::string>& value) { m_type = value; }
  const CSmartPtr<CExtensions>& GetExtensions() const { return m_extensions; }
  void SetExtensions(CExtensions* value);
  CTrksegCol& GetTrksegs() const { return *m_trksegs; }

 protected:
  void AccessProperty(int index, bool read, QzXmlLib16::QzVariant& value) const override;
  void Init() override;
  const CTables& GetTables() const override;

 private:
  enum Property : int {
    Property_Name,
    Property_Cmt,
    Property_Desc,
    Property_Src,
    Property_Links,
    Property_Number,
    Property_Type,
    Property_Extensions,
    Property_Trksegs
  };

  std::optional<std::string> m_name;
  std::optional<std::string> m_cmt;
  std::optional<std::string> m_desc;
  std::optional<std::string> m_src;
  CSmartPtr<CLinkCol> m_links;
  std::optional<std::uint32_t> m_number;
  std::optional<std::string> m_type;
  CSmartPtr<CExtensions> m_extensions;
  CSmartPtr<CTrksegCol> m_trksegs;
};
using CTrkCol = QzXmlLib16::CXmlObjectCol<CTrk>;

// <gpx>: the document.
class CGpx : public CGpxClass {
 public:
  CGpx();

  std::string GetVersion() const { return m_version.value_or(""); }
  bool IsSetVersion() const { return m_version.has_value(); }
  void SetVersion(const std::string& value) { m_version = value; }
  std::string GetCreator() const { return m_creator.value_or(""); }
  bool IsSetCreator() const { return m_creator.has_value(); }
  void SetCreator(const std::string& value) { m_creator = value; }
  const CSmartPtr<CMetadata>& GetMetadata() const { return m_metadata; }
  void SetMetadata(CMetadata* value);
  CWptCol& GetWpts() const { return *m_wpts; }
  CRteCol& GetRtes() const { return *m_rtes; }
  CTrkCol& GetTrks() const { return *m_trks; }
  const CSmartPtr<CExtensions>& GetExtensions() const { return m_extensions; }
  void SetExtensions(CExtensions* value);

 protected:
  void AccessProperty(int index, bool read, QzXmlLib16::QzVariant& value) const override;
  void Init() override;
  const CTables& GetTables() const override;

 private:
  enum Property : int {
    Property_Version,
    Property_Creator,
    Property_Metadata,
    Property_Wpts,
    Property_Rtes,
    Property_Trks,
    Property_Extensions
  };

  std::optional<std::string> m_version;
  std::optional<std::string> m_creator;
  CSmartPtr<CMetadata> m_metadata;
  CSmartPtr<CWptCol> m_wpts;
  CSmartPtr<CRteCol> m_rtes;
  CSmartPtr<CTrkCol> m_trks;
  CSmartPtr<CExtensions> m_extensions;
};

}  // namespace gpx
