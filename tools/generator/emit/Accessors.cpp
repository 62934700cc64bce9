#include "tools/generator/emit/Accessors.h"

namespace qzxml::generator {
namespace {

std::string Property(const BoundMember& member) { return "Property_" + member.name; }

// An operation of CBoundClass, by its whole name where an accessor hides it: the member Value has a
// SetValue of its own.
std::string Operation(const BoundClass& boundClass, const std::string& name) {
  for (const BoundClass* at = &boundClass; at != nullptr; at = at->base) {
    for (const BoundMember& member : at->members) {
      if (name == "Get" + member.name || name == "Set" + member.name ||
          name == "Ensure" + member.name) {
        return "CBoundClass::" + name;
      }
    }
  }
  return name;
}

// The class of a single object.
std::string ObjectType(const CScope& scope, const BoundMember& member) {
  return member.objectClass == nullptr ? scope.Library("CElement")
                                       : scope.Class(*member.objectClass);
}

// Whether the class itself can be made for the member.
bool IsMakeable(const BoundMember& member) {
  return member.objectClass == nullptr || !member.objectClass->isAbstract;
}

// What the schema says of the member beside its type.
std::string Facts(const BoundMember& member, Access access) {
  std::string facts;
  if (access == Access::Collection) {
    const std::string min = std::to_string(member.minOccurs);
    const std::string max = std::to_string(member.maxOccurs);
    if (member.form == BoundForm::AnyAttribute) {
      facts = "Attributes of other names.";
    } else if (member.maxOccurs < 0) {
      if (member.minOccurs > 0) facts = min + " or more.";
    } else if (member.minOccurs == member.maxOccurs) {
      facts = min + ".";
    } else {
      facts = member.minOccurs > 0 ? min + " to " + max + "." : "Up to " + max + ".";
    }
    if (member.form == BoundForm::Wildcard) {
      facts = "Elements of other names." + (facts.empty() ? "" : " " + facts);
    }
  } else if (member.defaultValue) {
    facts = (member.isFixed ? "Always \"" : "Default \"") + *member.defaultValue + "\".";
  }
  return facts;
}

// Whether there was something to say.
bool WriteComment(const BoundMember& member, Access access, CCodeWriter& writer) {
  const std::string facts = Facts(member, access);
  std::string comment = member.documentation;
  if (!comment.empty() && !facts.empty()) comment += "\n\n";
  comment += facts;
  if (comment.empty()) return false;
  writer.Gap();
  writer.Comment(comment);
  return true;
}

// --- Values

CallText SetterBody(const BoundClass& boundClass, const BoundMember& member) {
  const bool isMoved = !member.simple->isPassedByValue && !IsEnum(member);
  return {Operation(boundClass, IsEnum(member) ? "SetEnum" : "SetValue") + "(",
          {Property(member), member.variable, isMoved ? "std::move(value)" : "value"},
          ");",
          {}};
}

void WriteIsSet(const BoundMember& member, CCodeWriter& writer) {
  writer.Function("bool IsSet" + member.name + "() const",
                  {"return " + member.variable + ".has_value();", {}, {}, {}});
}

void WriteValueGetter(const CScope& scope, const BoundMember& member, Access access,
                      CCodeWriter& writer) {
  const std::string type = scope.Value(*member.simple);
  const std::string name = " Get" + member.name + "() const";
  if (access == Access::OptionalValue) {
    if (IsEnum(member)) {
      writer.Function("std::optional<" + type + ">" + name,
                      {"return AsEnum<" + type + ">(", {member.variable}, ");", {}});
    } else {
      writer.Function("const std::optional<" + type + ">&" + name,
                      {"return " + member.variable + ";", {}, {}, {}});
    }
  } else if (IsEnum(member)) {
    writer.Function(type + name,
                    {"return static_cast<" + type + ">(",
                     {"EnumOrDefault(" + Property(member) + ", " + member.variable + ")"},
                     ");",
                     {}});
  } else if (access == Access::DefaultValue) {
    writer.Function(type + name,
                    {"return ValueOrDefault(", {Property(member), member.variable}, ");", {}});
  } else {
    writer.Function((member.simple->isPassedByValue ? type : "const " + type + "&") + name,
                    {"return ValueOrEmpty(", {member.variable}, ");", {}});
  }
}

void WriteValueAccessors(const CScope& scope, const BoundClass& boundClass,
                         const BoundMember& member, Access access, CCodeWriter& writer) {
  WriteValueGetter(scope, member, access, writer);
  if (access != Access::OptionalValue) WriteIsSet(member, writer);
  const bool isOptional = access == Access::OptionalValue || !member.IsMandatory();
  const std::string type = scope.Value(*member.simple);
  writer.Function("void Set" + member.name + "(" +
                      (isOptional ? "std::optional<" + type + ">" : type) + " value)",
                  SetterBody(boundClass, member));
}

// --- Objects

void WriteObjectAccessors(const CScope& scope, const BoundMember& member, Access access,
                          CCodeWriter& writer) {
  const std::string type = ObjectType(scope, member);
  writer.Declaration(scope.SmartPtr(type) + " Get" + member.name + "() const");
  if (access == Access::OptionalObject && IsMakeable(member)) {
    writer.Declaration(scope.SmartPtr(type) + " Ensure" + member.name + "()");
  }
  writer.Declaration("void Set" + member.name + "(" + type + "* value)");
}

}  // namespace

Access GetAccess(const BoundClass& boundClass, const BoundMember& member) {
  if (member.IsCollection()) return Access::Collection;
  const bool isBranch =
      boundClass.groupType == BoundGroupType::Choice && member.form >= BoundForm::Value;
  const bool mayBeAbsent = isBranch || !member.IsMandatory();
  if (member.form > BoundForm::Value) {
    return mayBeAbsent ? Access::OptionalObject : Access::Object;
  }
  if (isBranch || (member.isNillable && member.form == BoundForm::Value)) {
    return Access::OptionalValue;
  }
  if (member.defaultValue) return Access::DefaultValue;
  return mayBeAbsent ? Access::OptionalValue : Access::Value;
}

bool IsEnum(const BoundMember& member) {
  return member.simple != nullptr && member.simple->enumeration != nullptr;
}

std::string GetDataType(const CScope& scope, const BoundMember& member) {
  if (member.IsCollection()) return scope.Library("CCollectionHandle");
  if (member.form > BoundForm::Value) return scope.Library("CObjectHandle");
  if (IsEnum(member)) return "std::optional<std::int32_t>";
  return "std::optional<" + scope.Value(*member.simple) + ">";
}

void WriteAccessors(const CScope& scope, const BoundClass& boundClass, const BoundMember& member,
                    CCodeWriter& writer) {
  const Access access = GetAccess(boundClass, member);
  const bool hasComment = WriteComment(member, access, writer);
  if (access == Access::Collection) {
    writer.Declaration(scope.Collection(member) + "& Get" + member.name + "() const");
  } else if (access == Access::Object || access == Access::OptionalObject) {
    WriteObjectAccessors(scope, member, access, writer);
  } else {
    WriteValueAccessors(scope, boundClass, member, access, writer);
  }
  if (hasComment) writer.Gap();  // so that the next one is not taken for its
}

void WriteAccessorDefinitions(const CScope& scope, const BoundClass& boundClass,
                              const BoundMember& member, CCodeWriter& writer) {
  const Access access = GetAccess(boundClass, member);
  const std::string name = scope.Class(boundClass) + "::";
  const std::vector<std::string> arguments = {Property(member), member.variable};
  if (access == Access::Collection) {
    const std::string type = scope.Collection(member);
    writer.Gap();
    writer.Function(type + "& " + name + "Get" + member.name + "() const",
                    {"return " + Operation(boundClass, "GetCollection") + "<" + type + ">(",
                     arguments,
                     ");",
                     {}});
    return;
  }
  if (access != Access::Object && access != Access::OptionalObject) return;
  const std::string type = ObjectType(scope, member);
  writer.Gap();
  writer.Function(
      scope.SmartPtr(type) + " " + name + "Get" + member.name + "() const",
      {"return " + Operation(boundClass, "GetObject") + "<" + type + ">(", arguments, ");", {}});
  if (access == Access::OptionalObject && IsMakeable(member)) {
    writer.Gap();
    writer.Function(scope.SmartPtr(type) + " " + name + "Ensure" + member.name + "()",
                    {"return " + Operation(boundClass, "EnsureObject") + "<" + type + ">(",
                     arguments,
                     ");",
                     {}});
  }
  writer.Gap();
  writer.Function("void " + name + "Set" + member.name + "(" + type + "* value)",
                  {Operation(boundClass, "SetObject") + "(",
                   {Property(member), member.variable, "value"},
                   ");",
                   {}});
}

}  // namespace qzxml::generator
