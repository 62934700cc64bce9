#pragma once

#include <array>
#include <deque>

#include "tools/generator/schema/SchemaSet.h"
#include "tools/generator/schema/SchemaTree.h"

namespace qzxml::generator {

// All that a set of schemas is made of, at places that do not change.
struct SchemaStorage {
  std::deque<SchemaDocument> documents;
  std::deque<SchemaSource> sources;
  std::deque<SimpleType> simpleTypes;
  std::deque<ComplexType> complexTypes;
  std::deque<ElementDecl> elements;
  std::deque<AttributeDecl> attributes;
  std::deque<GroupDefinition> groups;
  std::deque<AttributeGroup> attributeGroups;
  std::deque<Notation> notations;
  std::deque<IdentityConstraint> identityConstraints;
  std::deque<Wildcard> wildcards;
  std::deque<Particle> particles;
  std::deque<ModelGroup> modelGroups;
  std::array<SimpleType*, BuiltIn_Count> builtIns{};
  ComplexType* anyType = nullptr;
};

}  // namespace qzxml::generator
