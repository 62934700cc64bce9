#pragma once

#include <functional>
#include <string>
#include <vector>

#include "qzxml/values/QzVariant.h"

namespace QzXmlLib16 {

// Makes what no operation makes: a variant of a kind that has no meaning.
struct QzVariantTestAccess {
  static void SetType(QzVariant& value, int type) { value.m_type = static_cast<ItemType>(type); }
};

}  // namespace QzXmlLib16

// What the tests of variants share.
namespace qztest {

// One kind: its number, its name, a value set into a variant, and the text of that value.
struct Kind {
  int number;
  const char* name;
  std::function<void(QzXmlLib16::QzVariant&)> set;
  std::string text;
  std::function<void(const QzXmlLib16::QzVariant&)> get;
  const char* assertion;
};

// All kinds of values, but for objects and collections.
const std::vector<Kind>& GetKinds();

// A date, a time of any type, or a duration from its text.
QzXmlLib16::CDateTime MakeDate(const char* text);
QzXmlLib16::CDateTime MakeTime(const char* text);
QzXmlLib16::CDateTimeSpan MakeSpan(const char* text);

}  // namespace qztest
