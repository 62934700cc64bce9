#pragma once

#include <string>

#include "tools/generator/emit/CodeWriter.h"
#include "tools/generator/emit/Names.h"

// The accessors of one member, which depend on what the member may be:
//
//   mandatory value    GetX  IsSetX  SetX        const CDecimal& or a small value; empty when not
//   set default value      GetX  IsSetX  SetX        the default when not set; std::nullopt takes
//   it away optional value     GetX  SetX                std::optional mandatory object   GetX SetX
//   always there, but for an abstract type optional object    GetX  EnsureX  SetX       null when
//   absent collection         GetX                      always there
namespace qzxml::generator {

enum class Access { Value, DefaultValue, OptionalValue, Object, OptionalObject, Collection };

Access GetAccess(const BoundClass& boundClass, const BoundMember& member);
bool IsEnum(const BoundMember& member);

// The type of the data member; in a header.
std::string GetDataType(const CScope& scope, const BoundMember& member);

// The declarations of a member in the class, with its comment; what is short is defined there.
void WriteAccessors(const CScope& scope, const BoundClass& boundClass, const BoundMember& member,
                    CCodeWriter& writer);

// The definitions of those that need to know the classes of objects.
void WriteAccessorDefinitions(const CScope& scope, const BoundClass& boundClass,
                              const BoundMember& member, CCodeWriter& writer);

}  // namespace qzxml::generator
