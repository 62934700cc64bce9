#include "tools/generator/model/Content.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace qzxml::generator {

namespace {

constexpr std::int64_t kLargest = std::numeric_limits<std::int32_t>::max();

// What an int cannot hold is unbounded, or so large that no document gets there.
std::int32_t ToMax(std::int64_t count) {
  return count < 0 || count > kLargest ? -1 : static_cast<std::int32_t>(count);
}
std::int32_t ToMin(std::int64_t count) {
  return static_cast<std::int32_t>(std::min(count, kLargest));
}

bool IsGroup(const ContentNode& node, BoundGroupType type) {
  return node.kind == ContentNode::Kind_Group && node.type == type && node.head == nullptr;
}

// An abstract element without any that could stand for it.
bool IsImpossible(const ContentNode& node) {
  return node.kind == ContentNode::Kind_Group && node.children.empty();
}

struct Occurrence {
  std::int32_t min;
  std::int32_t max;
};

// How often a child stands in all of its group's repetitions; false where that is no range: twice
// or not at all.
bool Multiply(const ContentNode& group, const ContentNode& child, Occurrence& product) {
  const std::int64_t m = group.minOccurs, n = group.maxOccurs;
  const std::int64_t a = child.minOccurs, b = child.maxOccurs;
  // With k repetitions there are k*a to k*b children; the ranges of m and m+1 have to touch.
  if (m != n && b >= 0 && m * b + 1 < (m + 1) * a) return false;
  if (m != n && b < 0 && m == 0 && a > 1) return false;
  product.min = ToMin(m * a);
  product.max = n < 0 || b < 0 ? -1 : ToMax(n * b);
  return true;
}

}  // namespace

Diagnostic MakeWarning(const Location& location, std::string message) {
  Diagnostic warning;
  warning.severity = Severity_Warning;
  warning.file = location.GetFile();
  warning.path = location.GetPath();
  warning.message = std::move(message);
  return warning;
}

bool ContentNode::IsEmptiable() const {
  if (kind != Kind_Group || type == BoundGroupType::Choice) return false;
  return std::all_of(children.begin(), children.end(), [](const ContentPointer& child) {
    return child->minOccurs == 0 || child->IsEmptiable();
  });
}

ContentPointer CContentBuilder::Occurring(const ContentPointer& node, std::int32_t minOccurs,
                                          std::int32_t maxOccurs) {
  if (node->minOccurs == minOccurs && node->maxOccurs == maxOccurs) return node;
  const auto changed = std::make_shared<ContentNode>(*node);
  changed->minOccurs = minOccurs;
  changed->maxOccurs = maxOccurs;
  return changed;
}

ContentPointer CContentBuilder::Build(const Particle* particle) {
  if (particle == nullptr || particle->maxOccurs == 0) return nullptr;
  if (particle->element != nullptr) return BuildElement(*particle);
  if (particle->group != nullptr) return BuildGroup(*particle);
  const auto node = std::make_shared<ContentNode>();
  node->kind = ContentNode::Kind_Wildcard;
  node->minOccurs = ToMin(particle->minOccurs);
  node->maxOccurs = ToMax(particle->maxOccurs);
  node->particle = particle;
  node->wildcard = particle->wildcard;
  return node;
}

ContentPointer CContentBuilder::BuildElement(const Particle& particle) {
  const ElementDecl* const element = particle.element;
  std::shared_ptr<ContentNode> node;
  if (particle.isReference && (element->isAbstract || !element->substitutes.empty())) {
    node = std::make_shared<ContentNode>(*GetSubstitutionGroup(element));
    if (node->children.empty()) {
      m_diagnostics.push_back(MakeWarning(
          particle.location, "No element can stand for the abstract " + element->name.ToString() +
                                 (particle.minOccurs == 0 ? ", it is left out" : "")));
      if (particle.minOccurs == 0) return nullptr;
    }
  } else {
    node = std::make_shared<ContentNode>();
    node->element = element;
  }
  node->minOccurs = ToMin(particle.minOccurs);
  node->maxOccurs = ToMax(particle.maxOccurs);
  node->particle = &particle;
  return node;
}

ContentPointer CContentBuilder::GetSubstitutionGroup(const ElementDecl* head) {
  ContentPointer& group = m_substitutionGroups[head];
  if (group != nullptr) return group;
  const auto node = std::make_shared<ContentNode>();
  node->kind = ContentNode::Kind_Group;
  node->type = BoundGroupType::Choice;
  node->head = head;
  const auto add = [&node](const ElementDecl* element) {
    const auto child = std::make_shared<ContentNode>();
    child->element = element;
    node->children.push_back(child);
  };
  if (!head->isAbstract) add(head);
  for (const ElementDecl* substitute : head->substitutes) add(substitute);
  group = node;
  return group;
}

ContentPointer CContentBuilder::GetNamedGroup(const GroupDefinition* definition) {
  const auto found = m_namedGroups.find(definition);
  if (found != m_namedGroups.end()) return found->second;
  const std::shared_ptr<ContentNode> node = BuildChildren(*definition->group);
  node->definition = definition;
  return m_namedGroups[definition] = node;
}

ContentPointer CContentBuilder::BuildGroup(const Particle& particle) {
  const ModelGroup& group = *particle.group;
  std::shared_ptr<ContentNode> node;
  if (group.definition != nullptr) {
    node = std::make_shared<ContentNode>(*GetNamedGroup(group.definition));
  } else {
    node = BuildChildren(group);
  }
  if (node->children.empty()) return nullptr;
  node->particle = &particle;
  node->minOccurs = node->minOccurs == 0 ? 0 : ToMin(particle.minOccurs);
  node->maxOccurs = ToMax(particle.maxOccurs);
  if (node->type == BoundGroupType::Choice) SimplifyRepeatedChoice(*node);
  if (node->children.size() == 1) {
    Occurrence product{};
    if (Multiply(*node, *node->children[0], product)) {
      return Occurring(node->children[0], product.min, product.max);
    }
  }
  // What may be empty may as well stand.
  if (node->IsEmptiable()) node->minOccurs = node->IsRepeated() ? 0 : 1;
  return node;
}

// The group once; 0 times at least where it is a choice with a branch that may be empty.
std::shared_ptr<ContentNode> CContentBuilder::BuildChildren(const ModelGroup& group) {
  const auto node = std::make_shared<ContentNode>();
  node->kind = ContentNode::Kind_Group;
  node->type = group.compositor == Compositor_Choice ? BoundGroupType::Choice
               : group.compositor == Compositor_All  ? BoundGroupType::All
                                                     : BoundGroupType::Sequence;
  ContentPointer impossible;
  for (const Particle* particle : group.particles) {
    ContentPointer child = Build(particle);
    if (child != nullptr && IsImpossible(*child) && node->type == BoundGroupType::Choice) {
      impossible = child;
    } else if (node->type == BoundGroupType::Choice) {
      AddToChoice(*node, std::move(child));
    } else if (child != nullptr && node->type == BoundGroupType::Sequence) {
      AddToSequence(*node, std::move(child));
    } else if (child != nullptr) {
      node->children.push_back(std::move(child));
    }
  }
  if (node->children.empty() && impossible != nullptr) node->children.push_back(impossible);
  return node;
}

void CContentBuilder::AddToSequence(ContentNode& group, ContentPointer child) const {
  if (IsGroup(*child, BoundGroupType::Sequence) && !child->IsRepeated() && child->minOccurs == 1) {
    for (const ContentPointer& grandchild : child->children) AddToSequence(group, grandchild);
    return;
  }
  // A collection takes all elements of its name that follow each other, and so has to be one.
  if (!group.children.empty()) {
    const ContentPointer last = group.children.back();
    if (child->element != nullptr && last->element != nullptr && last->IsRepeated() &&
        child->element->name == last->element->name) {
      const std::int64_t least = std::int64_t{last->minOccurs} + child->minOccurs;
      const bool isBounded = last->maxOccurs >= 0 && child->maxOccurs >= 0;
      group.children.back() =
          Occurring(last, ToMin(least),
                    isBounded ? ToMax(std::int64_t{last->maxOccurs} + child->maxOccurs) : -1);
      return;
    }
  }
  group.children.push_back(std::move(child));
}

void CContentBuilder::AddToChoice(ContentNode& group, ContentPointer child) const {
  if (child == nullptr) {
    group.minOccurs = 0;
    return;
  }
  if (child->minOccurs == 0 || child->IsEmptiable()) group.minOccurs = 0;
  if (IsGroup(*child, BoundGroupType::Choice) && !child->IsRepeated()) {
    for (const ContentPointer& grandchild : child->children) group.children.push_back(grandchild);
    return;
  }
  group.children.push_back(Occurring(child, std::max(child->minOccurs, 1), child->maxOccurs));
}

// Where the choice may be made again without end, nothing in it has to be repeated.
void CContentBuilder::SimplifyRepeatedChoice(ContentNode& group) {
  if (group.maxOccurs != -1) return;
  std::vector<ContentPointer> children;
  for (const ContentPointer& child : group.children) {
    const ContentPointer once = child->minOccurs <= 1 ? Occurring(child, 1, 1) : child;
    if (IsGroup(*once, BoundGroupType::Choice) && !once->IsRepeated()) {
      children.insert(children.end(), once->children.begin(), once->children.end());
    } else {
      children.push_back(once);
    }
  }
  group.children = std::move(children);
}

}  // namespace qzxml::generator
