#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <vector>

#include "tools/generator/model/Model.h"

namespace qzxml::generator {

// One particle of a content model in the form that classes have: what can be dissolved is
// dissolved, and the language is the same.
//
// - A choice is never emptiable by itself: where one of its branches may be empty, the choice
// stands
//   0 times instead and the branch once.
// - A group has two children at least, unless it is the content of a type.
struct ContentNode {
  enum Kind { Kind_Element, Kind_Wildcard, Kind_Group };

  Kind kind = Kind_Element;
  std::int32_t minOccurs = 1;
  std::int32_t maxOccurs = 1;  // -1 unbounded
  const Particle* particle = nullptr;
  const ElementDecl* element = nullptr;  // of Element
  const Wildcard* wildcard = nullptr;    // of Wildcard
  BoundGroupType type = BoundGroupType::Sequence;
  const GroupDefinition* definition = nullptr;  // of a Group that is a named one
  const ElementDecl* head = nullptr;            // of a Group that is a substitution group
  std::vector<std::shared_ptr<const ContentNode>> children;  // of Group; shared, never changed

  bool IsRepeated() const { return maxOccurs != 1; }
  // Whether what stands once may be empty.
  bool IsEmptiable() const;
};

using ContentPointer = std::shared_ptr<const ContentNode>;

// Makes the contents of the types of one schema set.
class CContentBuilder {
 public:
  // Where diagnostics go. Not owned.
  explicit CContentBuilder(std::vector<Diagnostic>& diagnostics) : m_diagnostics(diagnostics) {}

  // Null for nothing, also for a null particle.
  ContentPointer Build(const Particle* particle);

  // The choice that stands for a reference to the head of a substitution group.
  ContentPointer GetSubstitutionGroup(const ElementDecl* head);
  // The content of a named group, once.
  ContentPointer GetNamedGroup(const GroupDefinition* definition);

 private:
  ContentPointer BuildElement(const Particle& particle);
  ContentPointer BuildGroup(const Particle& particle);
  std::shared_ptr<ContentNode> BuildChildren(const ModelGroup& group);
  void AddToSequence(ContentNode& group, ContentPointer child) const;
  void AddToChoice(ContentNode& group, ContentPointer child) const;
  static void SimplifyRepeatedChoice(ContentNode& group);
  static ContentPointer Occurring(const ContentPointer& node, std::int32_t minOccurs,
                                  std::int32_t maxOccurs);

  std::vector<Diagnostic>& m_diagnostics;
  std::map<const ElementDecl*, ContentPointer> m_substitutionGroups;
  std::map<const GroupDefinition*, ContentPointer> m_namedGroups;
};

// A warning about something of a schema.
Diagnostic MakeWarning(const Location& location, std::string message);

}  // namespace qzxml::generator
