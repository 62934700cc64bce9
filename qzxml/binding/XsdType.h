#pragma once

namespace QzXmlLib16 {

// The built-in types of XML Schema, by their names there. The order groups them; a number means
// nothing outside a program.
// Source: XML Schema 1.0 part 2, second edition, section 3.
enum XsdType : int {
  XsdType_anySimpleType,
  XsdType_string,
  XsdType_normalizedString,
  XsdType_token,
  XsdType_language,
  XsdType_Name,
  XsdType_NCName,
  XsdType_NMTOKEN,
  XsdType_NMTOKENS,
  XsdType_ID,
  XsdType_IDREF,
  XsdType_IDREFS,
  XsdType_ENTITY,
  XsdType_ENTITIES,
  XsdType_QName,
  XsdType_NOTATION,
  XsdType_anyURI,
  XsdType_boolean,
  XsdType_decimal,
  XsdType_integer,
  XsdType_nonPositiveInteger,
  XsdType_negativeInteger,
  XsdType_long,
  XsdType_int,
  XsdType_short,
  XsdType_byte,
  XsdType_nonNegativeInteger,
  XsdType_unsignedLong,
  XsdType_unsignedInt,
  XsdType_unsignedShort,
  XsdType_unsignedByte,
  XsdType_positiveInteger,
  XsdType_float,
  XsdType_double,
  XsdType_duration,
  XsdType_dateTime,
  XsdType_time,
  XsdType_date,
  XsdType_gYearMonth,
  XsdType_gYear,
  XsdType_gMonthDay,
  XsdType_gDay,
  XsdType_gMonth,
  XsdType_hexBinary,
  XsdType_base64Binary,
};

}  // namespace QzXmlLib16
