#pragma once

#include <string>

#include "qzxml/platform/Export.h"

namespace QzXmlLib16 {

// How much of XML is kept in JSON.
//
//                       None          Marked        Full
//   element             local name    local name    alias:name outside the default namespace
//   attribute           local name    @name         @alias:name in a namespace, @name in none
//   text beside these   ""            #text         #text
//   namespaces          dropped       dropped       members @xmlns and @xmlns:alias
enum JsonRoundTrip : int {
  JsonRoundTrip_None = 0,
  JsonRoundTrip_Marked = 1,
  JsonRoundTrip_Full = 2,
};

// The options of JSON, which CSerializationContext::GetJsonContext gives.
//
//   CSerializationContext context;
//   context.GetJsonContext().SetRootElementName("orders");
//   orders->FromJson("[{\"id\": 7}, {\"id\": 8}]", context);
//
// A plain value: copy it freely; threads may read one that nobody changes.
class QZXML_API CJsonContext {
 public:
  CJsonContext();
  CJsonContext(const CJsonContext& other);
  CJsonContext& operator=(const CJsonContext& other);
  virtual ~CJsonContext();

  // How much of XML is written, and what the names that are read mean. JsonRoundTrip_Full.
  JsonRoundTrip GetSupportRoundtrip() const { return m_roundTrip; }
  void SetSupportRoundtrip(JsonRoundTrip roundTrip) { m_roundTrip = roundTrip; }

  // An element around all that is read, when not empty. "". Null is taken as the empty text.
  std::string GetRootElementName() const { return m_strRootElementName; }
  void SetRootElementName(const char* name);

  // Whether comments are skipped on reading. True.
  // Meant: both are named GetAllowComments, and the one with an argument is the setter; callers
  // know it so.
  bool GetAllowComments() const { return m_bAllowComments; }
  void GetAllowComments(bool allow) { m_bAllowComments = allow; }

 private:
  JsonRoundTrip m_roundTrip = JsonRoundTrip_Full;
  std::string m_strRootElementName;
  bool m_bAllowComments = true;
};

}  // namespace QzXmlLib16
