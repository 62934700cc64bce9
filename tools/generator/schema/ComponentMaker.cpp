#include <algorithm>
#include <set>

#include "tools/generator/schema/BuiltIns.h"
#include "tools/generator/schema/SchemaBuilder.h"

// Makes a component, still empty, of each node that stands for one, and enters the global ones by
// their names.

namespace qzxml::generator {

namespace {

class CComponentMaker {
 public:
  explicit CComponentMaker(BuildState& state) : m_state(state), m_storage(state.storage) {}

  void MakeDocument(SchemaSource& source) {
    m_document = source.document;
    m_document->documentation = GetDocumentation(*source.root);
    for (const auto& child : source.root->children) {
      if (child->Is("redefine")) {
        for (const auto& inner : child->children) MakeGlobal(*inner);
      } else {
        MakeGlobal(*child);
      }
    }
  }

  // Which schemas redefine which; the redefined one has been made then.
  void SetRedefined(const SchemaNode* redefine, const SchemaSource* source) {
    m_redefined[redefine] = source;
  }

 private:
  // ---- Components as such ----

  template <typename T>
  T& Start(SchemaNode& node, std::deque<T>& store, const Component* context) {
    T& component = store.emplace_back();
    component.context = context;
    component.isGlobal = context == nullptr;
    component.name = {node.source->document->targetNamespace, node.Get("name")};
    component.documentation = GetDocumentation(node);
    component.location = node.GetLocation();
    node.component = &component;
    m_state.nodes[&component] = &node;
    return component;
  }

  // What XML Schema has built in stays what it is, also when its own schema is read.
  bool IsBuiltIn(const SchemaNode& node) const {
    if (m_document->targetNamespace != kSchemaNamespace) return false;
    if (!node.Is("simpleType") && !node.Is("complexType")) return false;
    const std::string name = node.Get("name");
    return name == "anyType" || FindBuiltIn(name) != BuiltIn_None;
  }

  void MakeGlobal(SchemaNode& node) {
    if (IsBuiltIn(node)) return;
    if (node.Is("simpleType")) {
      SimpleType& type = MakeSimpleType(node, nullptr);
      Enter(node, type, SymbolSpace_Type);
      m_document->simpleTypes.push_back(&type);
      m_document->types.push_back(&type);
    } else if (node.Is("complexType")) {
      ComplexType& type = MakeComplexType(node, nullptr);
      Enter(node, type, SymbolSpace_Type);
      m_document->complexTypes.push_back(&type);
      m_document->types.push_back(&type);
    } else if (node.Is("element")) {
      ElementDecl& element = MakeElement(node, nullptr);
      Enter(node, element, SymbolSpace_Element);
      m_document->elements.push_back(&element);
    } else if (node.Is("attribute")) {
      AttributeDecl& attribute = MakeAttribute(node, nullptr);
      Enter(node, attribute, SymbolSpace_Attribute);
      m_document->attributes.push_back(&attribute);
    } else if (node.Is("group")) {
      GroupDefinition& group = Start(node, m_storage.groups, nullptr);
      m_state.groups.push_back({&node, &group});
      Enter(node, group, SymbolSpace_Group);
      MakeParticles(node, &group);
      m_document->groups.push_back(&group);
    } else if (node.Is("attributeGroup")) {
      AttributeGroup& group = Start(node, m_storage.attributeGroups, nullptr);
      m_state.attributeGroups.push_back({&node, &group});
      Enter(node, group, SymbolSpace_AttributeGroup);
      MakeAttributes(node, &group);
      m_document->attributeGroups.push_back(&group);
    } else if (node.Is("notation")) {
      MakeNotation(node);
    }
  }

  void Enter(SchemaNode& node, Component& component, SymbolSpace space) {
    auto& names = m_state.names[space];
    if (node.parent->Is("redefine")) {
      EnterRedefining(node, component, space);
      return;
    }
    const auto [entry, isNew] = names.emplace(component.name, &component);
    if (isNew) return;
    m_state.Error(node, "There are two of the name '" + component.name.ToString() +
                            "' (sch-props-correct.2).");
  }

  void EnterRedefining(SchemaNode& node, Component& component, SymbolSpace space) {
    auto& names = m_state.names[space];
    const auto original = names.find(component.name);
    if (m_redefined.count(node.parent) == 0) return;  // no file was found, which is told
    if (original == names.end() || original->second->kind != component.kind) {
      m_state.Error(node, "There is no '" + component.name.ToString() +
                              "' in the schema that is redefined (src-redefine).");
      names.emplace(component.name, &component);
      return;
    }
    if (original->second->location.document == component.location.document) {
      m_state.Error(
          node, "'" + component.name.ToString() + "' is redefined twice (sch-props-correct.2).");
    }
    original->second->isRedefined = true;
    m_state.originals[&component] = original->second;
    original->second = &component;
  }

  void MakeNotation(SchemaNode& node) {
    Notation& notation = Start(node, m_storage.notations, nullptr);
    notation.publicId = node.Get("public");
    notation.systemId = node.Get("system");
    Enter(node, notation, SymbolSpace_Notation);
    m_document->notations.push_back(&notation);
    if (node.Find("public") == nullptr && node.Find("system") == nullptr) {
      m_state.Error(node, "A notation has a public or a system identifier.");
    }
    m_state.diagnostics.Warning(
        node, "Notations are not bound: nothing is made of '" + notation.name.ToString() + "'.");
  }

  // ---- Types ----

  SimpleType& MakeSimpleType(SchemaNode& node, const Component* context) {
    SimpleType& type = Start(node, m_storage.simpleTypes, context);
    m_state.simpleTypes.push_back({&node, &type});
    m_state.allTypes.push_back(&type);
    type.finalSet = ReadDerivationSet(
        node, "final", "finalDefault",
        Derivation_Extension | Derivation_Restriction | Derivation_List | Derivation_Union);
    for (const auto& child : node.children) {
      for (const auto& inner : child->children) {
        if (inner->Is("simpleType")) MakeSimpleType(*inner, &type);
      }
    }
    return type;
  }

  ComplexType& MakeComplexType(SchemaNode& node, const Component* context) {
    ComplexType& type = Start(node, m_storage.complexTypes, context);
    m_state.complexTypes.push_back({&node, &type});
    m_state.allTypes.push_back(&type);
    constexpr unsigned kBoth = Derivation_Extension | Derivation_Restriction;
    type.isAbstract = node.IsTrue("abstract");
    type.finalSet = ReadDerivationSet(node, "final", "finalDefault", kBoth);
    type.blockSet = ReadDerivationSet(node, "block", "blockDefault", kBoth);
    SchemaNode* content = &node;
    for (const char* name : {"simpleContent", "complexContent"}) {
      if (SchemaNode* const child = node.FindChild(name)) {
        content = child->FindChild("restriction");
        if (content == nullptr) content = child->FindChild("extension");
        break;
      }
    }
    if (SchemaNode* const inner = content->FindChild("simpleType")) MakeSimpleType(*inner, &type);
    MakeParticles(*content, &type);
    MakeAttributes(*content, &type);
    return type;
  }

  void MakeTypeWithin(SchemaNode& node, const Component* context) {
    for (const auto& child : node.children) {
      if (child->Is("simpleType")) MakeSimpleType(*child, context);
      if (child->Is("complexType")) MakeComplexType(*child, context);
    }
  }

  // ---- Declarations ----

  // A local one is qualified as its form says, or as the schema says for all of its kind.
  static void SetForm(const SchemaNode& node, Component& component, const char* defaultAttribute) {
    if (component.isGlobal) return;
    const SchemaNode* schema = &node;
    while (schema->parent != nullptr) schema = schema->parent;
    const std::string form =
        node.Find("form") != nullptr ? node.Get("form") : schema->Get(defaultAttribute);
    if (form != "qualified") component.name.namespaceUri.clear();
  }

  ElementDecl& MakeElement(SchemaNode& node, const Component* context) {
    ElementDecl& element = Start(node, m_storage.elements, context);
    m_state.elements.push_back({&node, &element});
    SetForm(node, element, "elementFormDefault");
    element.isNillable = node.IsTrue("nillable");
    element.isAbstract = node.IsTrue("abstract");
    constexpr unsigned kBoth = Derivation_Extension | Derivation_Restriction;
    element.blockSet =
        ReadDerivationSet(node, "block", "blockDefault", kBoth | Derivation_Substitution);
    element.finalSet = ReadDerivationSet(node, "final", "finalDefault", kBoth);
    MakeTypeWithin(node, &element);
    for (const auto& child : node.children) MakeIdentityConstraint(*child, element);
    return element;
  }

  AttributeDecl& MakeAttribute(SchemaNode& node, const Component* context) {
    AttributeDecl& attribute = Start(node, m_storage.attributes, context);
    m_state.attributes.push_back({&node, &attribute});
    SetForm(node, attribute, "attributeFormDefault");
    MakeTypeWithin(node, &attribute);
    return attribute;
  }

  void MakeAttributes(SchemaNode& node, const Component* context) {
    for (const auto& child : node.children) {
      if (child->Is("attribute") && child->Find("ref") == nullptr) MakeAttribute(*child, context);
    }
  }

  void MakeIdentityConstraint(SchemaNode& node, ElementDecl& element) {
    IdentityKind kind = IdentityKind_Unique;
    if (node.Is("key")) {
      kind = IdentityKind_Key;
    } else if (node.Is("keyref")) {
      kind = IdentityKind_Keyref;
    } else if (!node.Is("unique")) {
      return;
    }
    IdentityConstraint& constraint = Start(node, m_storage.identityConstraints, &element);
    constraint.identityKind = kind;
    if (const SchemaNode* const selector = node.FindChild("selector")) {
      constraint.selector = selector->Get("xpath");
    }
    for (const auto& child : node.children) {
      if (child->Is("field")) constraint.fields.push_back(child->Get("xpath"));
    }
    m_state.identityConstraints.push_back({&node, &constraint});
    element.identityConstraints.push_back(&constraint);
    Enter(node, constraint, SymbolSpace_Identity);
  }

  // ---- Content ----

  void MakeParticles(SchemaNode& node, const Component* context) {
    for (const auto& child : node.children) {
      if (IsParticle(*child)) MakeParticle(*child, context);
    }
  }

  static bool IsParticle(const SchemaNode& node) {
    static const char* const names[] = {"element", "any", "group", "sequence", "choice", "all"};
    return std::any_of(std::begin(names), std::end(names),
                       [&](const char* name) { return node.Is(name); });
  }

  void MakeParticle(SchemaNode& node, const Component* context) {
    Particle& particle = m_storage.particles.emplace_back();
    node.particle = &particle;
    particle.location = node.GetLocation();
    particle.documentation = GetDocumentation(node);
    particle.isReference = node.Find("ref") != nullptr;
    m_state.particles.push_back({&node, &particle});
    if (node.Is("any") || node.Is("group")) return;
    if (node.Is("element")) {
      if (!particle.isReference) MakeElement(node, context);
      return;
    }
    ModelGroup& group = m_storage.modelGroups.emplace_back();
    node.modelGroup = &group;
    group.location = node.GetLocation();
    group.documentation = particle.documentation;
    group.compositor = node.Is("sequence") ? Compositor_Sequence
                       : node.Is("choice") ? Compositor_Choice
                                           : Compositor_All;
    m_state.modelGroups.push_back({&node, &group});
    MakeParticles(node, context);
  }

  BuildState& m_state;
  SchemaStorage& m_storage;
  SchemaDocument* m_document = nullptr;
  std::map<const SchemaNode*, const SchemaSource*> m_redefined;
};

}  // namespace

void MakeComponents(BuildState& state, const CSchemaLoader& loader) {
  MakeBuiltIns(state.storage);
  for (SimpleType& type : state.storage.simpleTypes) {
    state.names[SymbolSpace_Type][type.name] = &type;
    state.progress[&type] = Progress_Done;
  }
  state.names[SymbolSpace_Type][state.storage.anyType->name] = state.storage.anyType;
  state.progress[state.storage.anyType] = Progress_Done;
  CComponentMaker maker(state);
  for (const Redefinition& r : loader.GetRedefinitions()) maker.SetRedefined(r.node, r.redefined);
  for (SchemaSource* const source : loader.GetSources()) {
    state.targetNamespaces.insert(source->document->targetNamespace);
    maker.MakeDocument(*source);
  }
}

unsigned ReadDerivationSet(const SchemaNode& node, const char* attribute,
                           const char* defaultAttribute, unsigned allowed) {
  static const std::pair<const char*, unsigned> words[] = {
      {"extension", Derivation_Extension},
      {"restriction", Derivation_Restriction},
      {"substitution", Derivation_Substitution},
      {"list", Derivation_List},
      {"union", Derivation_Union},
  };
  const SchemaNode* schema = &node;
  while (schema->parent != nullptr) schema = schema->parent;
  const bool isOwn = node.Find(attribute) != nullptr;
  const std::string text = isOwn ? node.Get(attribute) : schema->Get(defaultAttribute);
  if (text == "#all") return allowed;
  unsigned set = Derivation_None;
  for (const std::string& word : SplitWords(text)) {
    for (const auto& [name, derivation] : words) {
      if (word == name) set |= derivation;
    }
  }
  return set & allowed;
}

}  // namespace qzxml::generator
