#include "tools/generator/model/SimpleTypeKind.h"

#include <algorithm>
#include <cstdlib>
#include <set>

namespace qzxml::generator {

using QzXmlLib16::CBigInteger;

namespace {

struct KindRow {
  BuiltIn type;
  const char* kind;
  const char* cppType;
  bool isPassedByValue;
  const char* lowest;  // of integers of a fixed size
  const char* highest;
};

// Built-in types that a kind holds; every other one is a text. A type has the row of the first of
// its ancestors that has one.
constexpr KindRow kKinds[] = {
    {BuiltIn_long, "ItemType_i8", "std::int64_t", true, "-9223372036854775808",
     "9223372036854775807"},
    {BuiltIn_int, "ItemType_i4", "std::int32_t", true, "-2147483648", "2147483647"},
    {BuiltIn_short, "ItemType_i2", "std::int16_t", true, "-32768", "32767"},
    {BuiltIn_byte, "ItemType_i1", "char", true, "-128", "127"},
    {BuiltIn_unsignedLong, "ItemType_ui8", "std::uint64_t", true, "0", "18446744073709551615"},
    {BuiltIn_unsignedInt, "ItemType_ui4", "std::uint32_t", true, "0", "4294967295"},
    {BuiltIn_unsignedShort, "ItemType_ui2", "std::uint16_t", true, "0", "65535"},
    {BuiltIn_unsignedByte, "ItemType_ui1", "std::uint8_t", true, "0", "255"},
    {BuiltIn_integer, "ItemType_integer", "CBigInteger", false, nullptr, nullptr},
    {BuiltIn_nonPositiveInteger, "ItemType_integer", "CBigInteger", false, nullptr, nullptr},
    {BuiltIn_negativeInteger, "ItemType_integer", "CBigInteger", false, nullptr, nullptr},
    {BuiltIn_nonNegativeInteger, "ItemType_integer", "CBigInteger", false, nullptr, nullptr},
    {BuiltIn_positiveInteger, "ItemType_integer", "CBigInteger", false, nullptr, nullptr},
    {BuiltIn_decimal, "ItemType_decimal", "CDecimal", false, nullptr, nullptr},
    {BuiltIn_boolean, "ItemType_boolean", "bool", true, nullptr, nullptr},
    {BuiltIn_float, "ItemType_r4", "float", true, nullptr, nullptr},
    {BuiltIn_double, "ItemType_r8", "double", true, nullptr, nullptr},
    {BuiltIn_duration, "ItemType_duration", "CDateTimeSpan", false, nullptr, nullptr},
    {BuiltIn_dateTime, "ItemType_datetime", "CDateTime", false, nullptr, nullptr},
    {BuiltIn_time, "ItemType_time", "CDateTime", false, nullptr, nullptr},
    {BuiltIn_date, "ItemType_date", "CDateTime", false, nullptr, nullptr},
    {BuiltIn_gYearMonth, "ItemType_yearMonth", "CDateTime", false, nullptr, nullptr},
    {BuiltIn_gMonthDay, "ItemType_monthDay", "CDateTime", false, nullptr, nullptr},
    {BuiltIn_hexBinary, "ItemType_hexBinary", "CBinaryData", false, nullptr, nullptr},
    {BuiltIn_base64Binary, "ItemType_base64Binary", "CBinaryData", false, nullptr, nullptr},
};

const KindRow* FindRow(BuiltIn type) {
  const auto row = std::find_if(std::begin(kKinds), std::end(kKinds),
                                [type](const KindRow& entry) { return entry.type == type; });
  return row == std::end(kKinds) ? nullptr : &*row;
}

// The steps that a schema wrote, down to the built-in type.
std::vector<const SimpleType*> GetOwnSteps(const SimpleType& type) {
  std::vector<const SimpleType*> steps;
  for (const SimpleType* step = &type; step != nullptr && step->builtIn == BuiltIn_None;
       step = step->base) {
    steps.push_back(step);
  }
  return steps;
}

bool HasPattern(const SimpleType& type) {
  const auto steps = GetOwnSteps(type);
  return std::any_of(steps.begin(), steps.end(),
                     [](const SimpleType* step) { return !step->facets.patterns.empty(); });
}

bool HasEnumeration(const SimpleType& type) {
  const auto steps = GetOwnSteps(type);
  return std::any_of(steps.begin(), steps.end(),
                     [](const SimpleType* step) { return !step->facets.enumerations.empty(); });
}

// The facet of a schema's own step; those of built-in types are known to the library.
const Facet* FindOwnFacet(const SimpleType& type, FacetKind kind) {
  for (const SimpleType* step : GetOwnSteps(type)) {
    if (const Facet* facet = step->facets.Find(kind)) return facet;
  }
  return nullptr;
}

// Whether any facet but white space restricts the type.
bool IsRestricted(const SimpleType& type) {
  if (HasPattern(type) || HasEnumeration(type)) return true;
  for (int kind = 0; kind < FacetKind_Count; ++kind) {
    if (kind != FacetKind_whiteSpace && FindOwnFacet(type, static_cast<FacetKind>(kind))) {
      return true;
    }
  }
  return false;
}

std::string Quote(const std::string& text) { return "\"" + text + "\""; }

void AddBound(const SimpleType& type, FacetKind kind, const char* function,
              BoundSimpleType& bound) {
  if (const Facet* facet = FindOwnFacet(type, kind)) {
    bound.facets.emplace_back(function, Quote(facet->value));
  }
}

// Bounds where the nearest step that has one decides, inclusive or exclusive.
void AddBounds(const SimpleType& type, BoundSimpleType& bound) {
  const SimpleType::Bound lower = type.FindLowerBound();
  if (lower.facet != nullptr) {
    AddBound(type, lower.isExclusive ? FacetKind_minExclusive : FacetKind_minInclusive,
             lower.isExclusive ? "MinExclusive" : "MinInclusive", bound);
  }
  const SimpleType::Bound upper = type.FindUpperBound();
  if (upper.facet != nullptr) {
    AddBound(type, upper.isExclusive ? FacetKind_maxExclusive : FacetKind_maxInclusive,
             upper.isExclusive ? "MaxExclusive" : "MaxInclusive", bound);
  }
}

// A count that goes to a facet as a number; one that is too large for it to rules.
void AddCount(const SimpleType& type, FacetKind kind, const char* function,
              BoundSimpleType& bound) {
  const Facet* const facet = FindOwnFacet(type, kind);
  if (facet == nullptr) return;
  const CBigInteger count(facet->value.c_str());
  if (count > CBigInteger::MAX_LONG) {
    bound.needsRules = true;
  } else {
    bound.facets.emplace_back(function, count.ToString());
  }
}

void DecideText(const SimpleType& type, BoundSimpleType& bound) {
  bound.kind = "ItemType_string";
  bound.cppType = "std::string";
  bound.isPassedByValue = false;
  bound.facets.clear();
  const BuiltIn nearest = type.GetNearestBuiltIn();
  const bool isFree = type.variety != Variety_List && type.variety != Variety_Union &&
                      (nearest == BuiltIn_anySimpleType || nearest == BuiltIn_string ||
                       nearest == BuiltIn_normalizedString || nearest == BuiltIn_token);
  bound.needsRules = !isFree || IsRestricted(type);
}

void TakeRow(const KindRow& row, BoundSimpleType& bound) {
  bound.kind = row.kind;
  bound.cppType = row.cppType;
  bound.isPassedByValue = row.isPassedByValue;
}

bool Fits(const IntegerRange& range, const KindRow& row) {
  return range.lowest && range.highest && *range.lowest >= CBigInteger(row.lowest) &&
         *range.highest <= CBigInteger(row.highest);
}

void DecideInteger(const SimpleType& type, const KindRow& own, BoundSimpleType& bound) {
  const IntegerRange range = GetIntegerRange(type);
  const KindRow* row = &own;
  if (own.lowest == nullptr) {
    for (const BuiltIn smaller : {BuiltIn_unsignedLong, BuiltIn_long, BuiltIn_int}) {
      if (Fits(range, *FindRow(smaller))) row = FindRow(smaller);
    }
  }
  TakeRow(*row, bound);
  if (range.lowest && (row->lowest == nullptr || *range.lowest != CBigInteger(row->lowest))) {
    bound.facets.emplace_back("MinInclusive", Quote(range.lowest->ToString()));
  }
  if (range.highest && (row->highest == nullptr || *range.highest != CBigInteger(row->highest))) {
    bound.facets.emplace_back("MaxInclusive", Quote(range.highest->ToString()));
  }
}

std::size_t CountCharacters(const std::string& text) {
  return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), [](char c) {
    return (static_cast<unsigned char>(c) & 0xC0) != 0x80;
  }));
}

bool KeepsLengths(const SimpleType& type, const std::string& text) {
  const CBigInteger length(static_cast<unsigned long long>(CountCharacters(text)));
  const auto limit = [&type](FacetKind kind) -> std::optional<CBigInteger> {
    const Facet* const facet = FindOwnFacet(type, kind);
    if (facet == nullptr) return std::nullopt;
    return CBigInteger(facet->value.c_str());
  };
  const auto exact = limit(FacetKind_length);
  const auto least = limit(FacetKind_minLength);
  const auto most = limit(FacetKind_maxLength);
  return !(exact && length != *exact) && !(least && length < *least) && !(most && length > *most);
}

}  // namespace

std::string GetWhitespaceRule(const SimpleType& type) {
  switch (type.GetWhiteSpace()) {
    case WhiteSpace_Preserve:
      return "WhitespaceRule_None";
    case WhiteSpace_Replace:
      return "WhitespaceRule_Replace";
    case WhiteSpace_Collapse:
      break;
  }
  return "WhitespaceRule_Collapse";
}

IntegerRange GetIntegerRange(const SimpleType& type) {
  IntegerRange range;
  const SimpleType::Bound lower = type.FindLowerBound();
  if (lower.facet != nullptr) {
    range.lowest = CBigInteger(lower.facet->value.c_str());
    if (lower.isExclusive) *range.lowest += CBigInteger(1);
  }
  const SimpleType::Bound upper = type.FindUpperBound();
  if (upper.facet != nullptr) {
    range.highest = CBigInteger(upper.facet->value.c_str());
    if (upper.isExclusive) *range.highest -= CBigInteger(1);
  }
  if (const Facet* digits = FindOwnFacet(type, FacetKind_totalDigits)) {
    const unsigned long count = std::strtoul(digits->value.c_str(), nullptr, 10);
    if (count <= 1000) {
      const CBigInteger most =
          CBigInteger::Pow10(static_cast<unsigned int>(count)) - CBigInteger(1);
      if (!range.highest || *range.highest > most) range.highest = most;
      if (!range.lowest || *range.lowest < most.GetNegative()) range.lowest = most.GetNegative();
    }
  }
  return range;
}

std::vector<const Enumeration*> GetEnumeratedTexts(const SimpleType& type) {
  std::vector<const Enumeration*> texts;
  const std::vector<Enumeration>* const all = type.FindEnumerations();
  if (type.variety != Variety_Atomic || type.GetPrimitive() != BuiltIn_string || all == nullptr ||
      HasPattern(type)) {
    return texts;
  }
  std::set<std::string> seen;
  for (const Enumeration& entry : *all) {
    if (KeepsLengths(type, entry.text) && seen.insert(entry.text).second) texts.push_back(&entry);
  }
  return texts;
}

void DecideKind(const SimpleType& type, BoundSimpleType& bound) {
  bound.whitespace = GetWhitespaceRule(type);
  const KindRow* const row =
      type.variety == Variety_Atomic ? FindRow(type.GetNearestBuiltIn()) : nullptr;
  if (row == nullptr || HasPattern(type) || HasEnumeration(type)) return DecideText(type, bound);
  switch (type.GetPrimitive()) {
    case BuiltIn_decimal:
      if (row->type != BuiltIn_decimal) return DecideInteger(type, *row, bound);
      TakeRow(*row, bound);
      AddBounds(type, bound);
      AddCount(type, FacetKind_totalDigits, "TotalDigits", bound);
      AddCount(type, FacetKind_fractionDigits, "FractionDigits", bound);
      return;
    case BuiltIn_float:
    case BuiltIn_double:
      TakeRow(*row, bound);
      return AddBounds(type, bound);
    case BuiltIn_hexBinary:
    case BuiltIn_base64Binary:
      TakeRow(*row, bound);
      AddCount(type, FacetKind_minLength, "MinLength", bound);
      AddCount(type, FacetKind_maxLength, "MaxLength", bound);
      return AddCount(type, FacetKind_length, "Length", bound);
    default:
      TakeRow(*row, bound);
      bound.needsRules = IsRestricted(type);
  }
}

}  // namespace qzxml::generator
