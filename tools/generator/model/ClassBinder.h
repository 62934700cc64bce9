#pragma once

#include <string>
#include <utility>
#include <vector>

#include "tools/generator/model/ClassRegistry.h"
#include "tools/generator/model/MemberNames.h"
#include "tools/generator/model/SimpleTypeBinder.h"

namespace qzxml::generator {

// A property of a class or of its bases, as the class has it.
struct EffectiveMember {
  std::int32_t propertyIndex = 0;
  const BoundClass* owner = nullptr;
  const BoundMember* declared = nullptr;
  BoundMember member;  // with what restrictions on the way changed
};

// In the order of their indexes.
std::vector<EffectiveMember> GetEffectiveMembers(const BoundClass& bound);

// Attributes of which kind a wildcard may take, as a member says it.
void SetWildcard(const Wildcard& wildcard, BoundMember& member);

// Fills the members of classes.
class CClassBinder {
 public:
  // All outlive the object.
  CClassBinder(Model& model, const CSchemaSet& schemas, CClassRegistry& classes,
               CSimpleTypeBinder& simpleTypes);

  // The members of all classes that are declared, and of those that they need.
  void FillAll();

  // Whether xsi:type has to tell, or may tell, the class of an element.
  static bool IsByType(const ElementDecl& element);
  // By which steps such a class may not derive from that of the element's type.
  static unsigned GetBlocked(const ElementDecl& element);
  // Whether xsi:type may not name a simple type that is derived from that of the element.
  static bool IsOwnTypeOnly(const ElementDecl& element);
  // Warns of a default or fixed value of an element that is an object, unless it is that of its
  // text: of a type that no other element has.
  void CheckValue(const ElementDecl& element);

  // --- For the restrictions of one class (RestrictionBinder).
  BoundMember MakeElement(const ContentNode& node, BoundGroupType within, const BoundClass& user);
  BoundMember MakeAttribute(const AttributeUse& use);
  ContentPointer BuildContent(const Particle* particle) { return m_contents.Build(particle); }
  CClassRegistry& GetClasses() { return m_classes; }
  CSimpleTypeBinder& GetSimpleTypes() { return m_simpleTypes; }
  const BoundSimpleType& GetMixedText();
  void Warn(const Location& location, std::string message);

 private:
  struct Members {
    std::vector<BoundMember> attributes;
    std::vector<std::pair<BoundMember, std::string>> children;  // with the name for one
    std::vector<BoundMember> text;
  };

  void FillType(BoundClass& bound, const ComplexType& type);
  void FillContent(BoundClass& bound, const ComplexType& type, Members& members);
  void FillSimple(BoundClass& bound, const SimpleType& type, bool isOwnTypeOnly,
                  const ValueConstraint* value);
  void FillAny(BoundClass& bound);
  void AddChildren(BoundClass& bound, BoundClass& outer,
                   const std::vector<ContentPointer>& children, Members& members);
  void AddGroup(BoundClass& bound, BoundClass& outer, const ContentNode& group, Members& members);
  BoundMember MakeWildcard(const ContentNode& node) const;
  void FillGroup(BoundClass& bound, BoundClass& outer, const ContentNode& group);
  void AddAttributes(BoundClass& bound, const ComplexType& type, Members& members);
  void AddText(BoundClass& bound, const ComplexType& type, Members& members);
  void SetValue(const ValueConstraint& value, BoundMember& member) const;
  bool NeedsGroup(const ComplexType& type);
  static void Finish(BoundClass& bound, Members& members);

  const CSchemaSet& m_schemas;
  Model& m_model;
  CClassRegistry& m_classes;
  CSimpleTypeBinder& m_simpleTypes;
  CContentBuilder m_contents;
};

}  // namespace qzxml::generator
