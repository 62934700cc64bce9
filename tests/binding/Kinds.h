#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "qzxml/binding/BoundClass.h"

// A class with a value of each kind, with facets and without, as attributes and as elements.
namespace kinds {

// An element with attributes and a text: a bounded number.
class CAmount : public QzXmlLib16::CBoundClass {
 public:
  CAmount();

 private:
  static const QzXmlLib16::CMember s_members[];
  static QzXmlLib16::CClassBinding s_binding;

  std::optional<std::int32_t> m_currency;
  std::optional<QzXmlLib16::CDecimal> m_value;
};

// Text among the children, and members in any order.
class CRemark : public QzXmlLib16::CBoundClass {
 public:
  CRemark();

 private:
  static const QzXmlLib16::CMember s_members[];
  static QzXmlLib16::CClassBinding s_binding;

  std::optional<std::string> m_lang;
  std::optional<bool> m_bold;
  QzXmlLib16::CObjectHandle m_amount;
  std::optional<std::string> m_text;
};

class CKinds : public QzXmlLib16::CBoundClass {
 public:
  CKinds();

 private:
  static const QzXmlLib16::CMember s_members[];
  static QzXmlLib16::CClassBinding s_binding;

  std::optional<std::string> m_string;
  std::optional<std::string> m_token;
  std::optional<std::string> m_coded;
  std::optional<std::string> m_patterned;
  std::optional<std::string> m_year;
  std::optional<bool> m_boolean;
  std::optional<char> m_byte;
  std::optional<std::int16_t> m_short;
  std::optional<std::int32_t> m_int;
  std::optional<std::int64_t> m_long;
  std::optional<std::uint8_t> m_unsignedByte;
  std::optional<std::uint16_t> m_unsignedShort;
  std::optional<std::uint32_t> m_unsignedInt;
  std::optional<std::uint64_t> m_unsignedLong;
  std::optional<std::int32_t> m_bounded;
  std::optional<std::int32_t> m_open;
  std::optional<std::uint64_t> m_large;
  std::optional<std::int32_t> m_digits;
  std::optional<float> m_float;
  std::optional<double> m_double;
  std::optional<QzXmlLib16::CDecimal> m_decimal;
  std::optional<QzXmlLib16::CDecimal> m_price;
  std::optional<QzXmlLib16::CBigInteger> m_integer;
  std::optional<QzXmlLib16::CBigInteger> m_positive;
  std::optional<QzXmlLib16::CDateTime> m_date;
  std::optional<QzXmlLib16::CDateTime> m_recent;
  std::optional<QzXmlLib16::CDateTime> m_dateTime;
  std::optional<QzXmlLib16::CDateTime> m_time;
  std::optional<QzXmlLib16::CDateTime> m_yearMonth;
  std::optional<QzXmlLib16::CDateTime> m_monthDay;
  std::optional<QzXmlLib16::CDateTimeSpan> m_duration;
  std::optional<QzXmlLib16::CBinaryData> m_hex;
  std::optional<QzXmlLib16::CBinaryData> m_base64;
  std::optional<std::int32_t> m_currency;
  std::optional<std::string> m_fixed;
  std::optional<std::int32_t> m_defaulted;
  std::optional<std::int32_t> m_nillable;
  QzXmlLib16::CObjectHandle m_amount;
  QzXmlLib16::CObjectHandle m_fee;
  QzXmlLib16::CObjectHandle m_remark;
  QzXmlLib16::CCollectionHandle m_amounts;
  QzXmlLib16::CCollectionHandle m_numbers;
  QzXmlLib16::CCollectionHandle m_dates;
  QzXmlLib16::CObjectHandle m_open1;

  std::optional<std::string> m_aString;
  std::optional<std::int32_t> m_aInt;
  std::optional<std::int32_t> m_aCurrency;
  std::optional<QzXmlLib16::CDecimal> m_aPrice;
  std::optional<QzXmlLib16::CDateTime> m_aDate;
  std::optional<bool> m_aFlag;
};

// A value of each kind, as text.
constexpr char kDocument[] =
    "<kinds xmlns='urn:kinds' text='t' count='3' xmlns:l='urn:lang' l:currency='CHF' price='1.5'"
    " date='2004-02-29' flag='true'>"
    "<string> a  b </string><token> a  b </token><coded>ABC-123</coded><patterned>abx</patterned>"
    "<year>2004</year><boolean>true</boolean><byte>-12</byte><short>-1234</short><int>7</int>"
    "<long>-123456789012</long><unsignedByte>200</unsignedByte>"
    "<unsignedShort>60000</unsignedShort><unsignedInt>4000000000</unsignedInt>"
    "<unsignedLong>10000000000000000000</unsignedLong><bounded>9</bounded><open>0</open>"
    "<large>18446744073709551614</large><digits>-12</digits><float>0.1</float>"
    "<double>12.625</double><decimal>-0.50</decimal><price>123.45</price>"
    "<integer>123456789012345678901234567890</integer><positive>1</positive>"
    "<date>2004-02-29</date><recent>2004-02-29</recent>"
    "<dateTime>2004-02-29T12:00:00Z</dateTime><time>12:00:00</time>"
    "<yearMonth>2004-02</yearMonth><monthDay>--02-29</monthDay><duration>P1D</duration>"
    "<hex>0aFF</hex><base64>QUJD</base64><currency>USD</currency><fixed>1.0</fixed>"
    "<defaulted>6</defaulted><nillable>8</nillable><amount currency='EUR'>1.25</amount>"
    "<fee currency='CHF'>2</fee>"
    "<remark l:lang='de'>so <amount currency='USD'>3</amount><bold>1</bold></remark>"
    "<part currency='EUR'>4</part><part currency='EUR'>5</part><number>1</number>"
    "<number>2</number><day>2004-02-29</day><free><any/></free></kinds>";

}  // namespace kinds
