#pragma once

#include <map>
#include <string>
#include <utility>

#include "tools/generator/model/ModelNames.h"

namespace qzxml::generator {

// The C++ kind of a simple type. Kinds:
// - A type derived from xs:long and smaller has that type's kind. One derived from xs:integer and
//   its unbounded kin has the smallest of 32 bits, 64 bits and unsigned 64 bits that its bounds and
//   its totalDigits allow, else CBigInteger.
// - What counts as it is written is text with rules: lists, unions, numbers and dates with patterns
//   or enumerations, years, months and days alone.
// - An enumeration of texts is one in C++, unless a pattern restricts it once more.
class CSimpleTypeBinder {
 public:
  // Both outlive the object.
  CSimpleTypeBinder(Model& model, CModelNames& names) : m_model(model), m_names(names) {}

  // The same for each call. A restriction of an enumeration that allows as many values as that is
  // the same as it.
  const BoundSimpleType& Bind(const SimpleType& type);

  // For a property that is bound as base: a type that restricts its values to those of the other.
  // Null where the property is an enumeration and the other allows fewer.
  const BoundSimpleType* Narrow(const BoundSimpleType& base, const SimpleType& type,
                                const BoundNamespace& user);

 private:
  BoundSimpleType& Add(const SimpleType& type, const BoundNamespace& where,
                       const std::string& constant);
  const BoundSimpleType& BindBuiltIn(const SimpleType& type);
  const BoundSimpleType* BindEnumeration(const SimpleType& type);

  Model& m_model;
  CModelNames& m_names;
  std::map<const SimpleType*, const BoundSimpleType*> m_bound;
  std::map<std::pair<std::string, const SimpleType*>, const BoundSimpleType*> m_narrowed;
};

}  // namespace qzxml::generator
