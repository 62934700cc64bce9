#include <algorithm>
#include <set>

#include "qzxml/xml/XmlNamespaces.h"
#include "tools/generator/schema/SchemaBuilder.h"

// Attribute declarations, their uses, attribute groups and wildcards.
// Source: XML Schema 1.0 part 1, sections 3.2, 3.5, 3.6 and 3.10.

namespace qzxml::generator {

namespace {

const SimpleType* FindAttributeType(BuildState& state, const SchemaNode& node) {
  const SimpleType* const none = state.storage.builtIns[BuiltIn_anySimpleType];
  const std::string* const written = node.Find("type");
  const SchemaNode* const child = node.FindChild("simpleType");
  if (written != nullptr && child != nullptr) {
    state.Error(node, "There are both the attribute 'type' and a simpleType (src-attribute.4).");
  }
  if (child != nullptr) return static_cast<const SimpleType*>(child->component);
  if (written == nullptr) return none;
  const Type* const type = ResolveType(state, node, *written);
  if (type == nullptr) return none;
  if (!type->IsSimple()) {
    state.Error(node, "The " + Describe(*type) +
                          " is complex, where a simple type is needed (src-resolve).");
    return none;
  }
  return type->AsSimple();
}

void ResolveAttribute(BuildState& state, const SchemaNode& node, AttributeDecl& attribute) {
  attribute.type = FindAttributeType(state, node);
  CheckNotationType(state, node, attribute.type);
  if (attribute.name.localName == "xmlns") {
    state.Error(node, "No attribute is declared that is called 'xmlns' (no-xmlns).");
  }
  if (attribute.name.namespaceUri == QzXmlLib16::kXmlSchemaInstanceNamespace) {
    state.Error(node, "No attribute is declared in the namespace of schema instances (no-xsi).");
  }
  if (attribute.isGlobal) attribute.value = ReadValueConstraint(state, node, attribute.type);
}

// ---- Uses ----

class CAttributeReader {
 public:
  explicit CAttributeReader(BuildState& state) : m_state(state) {}

  AttributeSet Read(SchemaNode& node) {
    for (const auto& child : node.children) {
      if (child->Is("attribute")) {
        ReadUse(*child);
      } else if (child->Is("attributeGroup")) {
        ReadGroup(*child);
      } else if (child->Is("anyAttribute")) {
        m_own = MakeWildcard(m_state, *child);
      }
    }
    m_set.wildcard = MergeWildcards(node);
    return std::move(m_set);
  }

 private:
  void ReadUse(SchemaNode& node) {
    AttributeUse use;
    use.location = node.GetLocation();
    use.documentation = GetDocumentation(node);
    use.isReference = node.Find("ref") != nullptr;
    const std::string kind = node.Get("use");
    if (kind == "required") use.use = UseKind_Required;
    if (kind == "prohibited") use.use = UseKind_Prohibited;
    if (use.isReference == (node.Find("name") != nullptr)) {
      m_state.Error(node, "An attribute has either a name or a ref (src-attribute.3.1).");
      return;
    }
    if (use.isReference) {
      CheckReference(node);
      use.attribute = static_cast<const AttributeDecl*>(
          ResolveName(m_state, node, *node.Find("ref"), SymbolSpace_Attribute));
    } else {
      use.attribute = static_cast<const AttributeDecl*>(node.component);
    }
    if (use.attribute == nullptr) return;
    if (node.Find("default") != nullptr && use.use != UseKind_Optional) {
      m_state.Error(node, "An attribute that has a default value is optional (src-attribute.2).");
    }
    SetValue(node, use);
    if (use.documentation.empty()) use.documentation = use.attribute->documentation;
    m_set.uses.push_back(std::move(use));
  }

  void CheckReference(const SchemaNode& node) {
    if (node.Find("type") != nullptr || node.Find("form") != nullptr ||
        node.FindChild("simpleType") != nullptr) {
      m_state.Error(node,
                    "A reference to an attribute has no type and no form "
                    "(src-attribute.3.2).");
    }
  }

  void SetValue(const SchemaNode& node, AttributeUse& use) {
    const ValueConstraint& declared = use.attribute->value;
    use.value = ReadValueConstraint(m_state, node, use.attribute->type);
    if (!use.isReference) return;
    if (use.value.IsEmpty()) {
      use.value = declared;
    } else if (declared.fixedValue &&
               (!use.value.fixedValue ||
                !m_state.values.AreEqual(*use.attribute->type, *declared.fixedValue,
                                         *use.value.fixedValue))) {
      m_state.Error(node, "The attribute is declared with the fixed value [" +
                              *declared.fixedValue + "], which a use keeps (au-props-correct.2).");
    }
  }

  void ReadGroup(SchemaNode& node) {
    Component* const found =
        ResolveName(m_state, node, *node.Find("ref"), SymbolSpace_AttributeGroup, true);
    if (found == nullptr) return;
    auto& group = *static_cast<AttributeGroup*>(found);
    FinishGroup(m_state, node, group);
    m_set.uses.insert(m_set.uses.end(), group.uses.begin(), group.uses.end());
    if (group.wildcard != nullptr) m_fromGroups.push_back(group.wildcard);
  }

  // The own one decides what is done with what it lets pass; what it lets pass, all of them.
  const Wildcard* MergeWildcards(const SchemaNode& node) {
    const Wildcard* const first =
        m_own != nullptr || m_fromGroups.empty() ? m_own : m_fromGroups.front();
    if (first == nullptr || m_fromGroups.empty()) return first;
    std::optional<NamespaceConstraint> all = first->constraint;
    for (const Wildcard* const wildcard : m_fromGroups) {
      if (all) all = NamespaceConstraint::Intersect(*all, wildcard->constraint);
    }
    if (all) return MakeMergedWildcard(m_state, *first, *all);
    m_state.Error(node,
                  "The intersection of the wildcards for attributes can not be expressed "
                  "(src-ct.4).");
    return first;
  }

 public:
  static void FinishGroup(BuildState& state, const SchemaNode& from, AttributeGroup& group) {
    Progress& progress = state.progress[&group];
    if (progress == Progress_Done) return;
    if (progress == Progress_InWork) {
      state.Error(from, "The attribute group '" + group.name.ToString() +
                            "' refers to itself (src-attribute_group.3).");
      return;
    }
    const CDepthGuard guard(state, from);
    if (guard.IsTooDeep()) return;
    progress = Progress_InWork;
    SchemaNode& node = *state.nodes.at(&group);
    AttributeSet set = CAttributeReader(state).Read(node);
    CheckAttributeSet(state, node, set.uses);
    for (AttributeUse& use : set.uses) {
      if (use.use != UseKind_Prohibited) group.uses.push_back(std::move(use));
    }
    group.wildcard = set.wildcard;
    state.progress[&group] = Progress_Done;
  }

 private:
  BuildState& m_state;
  AttributeSet m_set;
  const Wildcard* m_own = nullptr;
  std::vector<const Wildcard*> m_fromGroups;
};

// A group that redefines holds the former one, or restricts it.
void CheckRedefinedGroup(BuildState& state, const SchemaNode& node, const AttributeGroup& group) {
  const auto original = state.originals.find(&group);
  if (original == state.originals.end()) return;
  const auto& former = *static_cast<const AttributeGroup*>(original->second);
  std::size_t count = 0;
  for (const auto& child : node.children) {
    if (child->Is("attributeGroup") &&
        ResolveQName(state, *child, *child->Find("ref")) == group.name) {
      ++count;
    }
  }
  if (count > 1) {
    state.Error(node,
                "A redefined attribute group refers to itself once at most "
                "(src-redefine.7.1).");
  } else if (count == 0) {
    CheckAttributeRestriction(state, node, group.uses, group.wildcard, former.uses,
                              former.wildcard);
  }
}

NamespaceConstraint ReadConstraint(const SchemaNode& node, const std::string& text,
                                   const std::string& target) {
  NamespaceConstraint constraint;
  if (text == "##any") return constraint;
  if (text == "##other") return {NamespaceConstraint::Kind_Not, {target}};
  constraint.kind = NamespaceConstraint::Kind_List;
  for (const std::string& word : SplitWords(node.Get("namespace"))) {
    std::string name = word == "##targetNamespace" ? target : word;
    if (word == "##local") name.clear();
    auto& names = constraint.namespaces;
    if (std::find(names.begin(), names.end(), name) == names.end()) names.push_back(name);
  }
  return constraint;
}

}  // namespace

void ResolveAttributes(BuildState& state) {
  for (const Made<AttributeDecl>& made : state.attributes) {
    ResolveAttribute(state, *made.node, *made.component);
  }
}

void ResolveAttributeGroups(BuildState& state) {
  for (const Made<AttributeGroup>& made : state.attributeGroups) {
    CAttributeReader::FinishGroup(state, *made.node, *made.component);
  }
  for (const Made<AttributeGroup>& made : state.attributeGroups) {
    CheckRedefinedGroup(state, *made.node, *made.component);
  }
}

AttributeSet ReadAttributes(BuildState& state, SchemaNode& node) {
  return CAttributeReader(state).Read(node);
}

bool IsIdType(const SimpleType* type) {
  for (; type != nullptr; type = type->base) {
    if (type->builtIn == BuiltIn_ID) return true;
  }
  return false;
}

void CheckAttributeSet(BuildState& state, const SchemaNode& node, std::vector<AttributeUse>& uses) {
  std::set<QName> names;
  const AttributeDecl* idAttribute = nullptr;
  std::vector<AttributeUse> kept;
  for (AttributeUse& use : uses) {
    const AttributeDecl& attribute = *use.attribute;
    if (!names.insert(attribute.name).second) {
      state.Error(node, "The attribute '" + attribute.name.ToString() +
                            "' is there twice (ct-props-correct.4).");
      continue;
    }
    if (use.use != UseKind_Prohibited && IsIdType(attribute.type)) {
      if (idAttribute != nullptr) {
        state.Error(node, "The attributes '" + idAttribute->name.ToString() + "' and '" +
                              attribute.name.ToString() +
                              "' are both of the type ID (ct-props-correct.5).");
      }
      idAttribute = &attribute;
    }
    kept.push_back(std::move(use));
  }
  uses = std::move(kept);
}

ValueConstraint ReadValueConstraint(BuildState& state, const SchemaNode& node,
                                    const SimpleType* type) {
  ValueConstraint value;
  const std::string* const defaultText = node.Find("default");
  const std::string* const fixedText = node.Find("fixed");
  if (defaultText == nullptr && fixedText == nullptr) return value;
  if (defaultText != nullptr && fixedText != nullptr) {
    state.Error(node,
                "There are both a default and a fixed value (" +
                    std::string(node.Is("element") ? "src-element.1)." : "src-attribute.1)."));
  }
  const std::string& text = defaultText != nullptr ? *defaultText : *fixedText;
  std::optional<std::string>& target =
      defaultText != nullptr ? value.defaultValue : value.fixedValue;
  target = text;
  if (type == nullptr) return value;
  target = ApplyWhiteSpace(type->GetWhiteSpace(), text);
  const BuiltIn primitive = type->GetPrimitive();
  if (primitive == BuiltIn_QName || primitive == BuiltIn_NOTATION) value.namespaces = *node.scope;
  if (!state.values.IsValid(*type, text, *node.scope)) {
    state.Error(node, "The value [" + text + "] is not of the " + Describe(*type) +
                          " (cos-valid-default).");
  }
  if (IsIdType(type)) {
    state.Error(
        node, "What is of the type ID has neither a default nor a fixed value (" +
                  std::string(node.Is("element") ? "e-props-correct.5)." : "a-props-correct.3)."));
  }
  return value;
}

void CheckNotationType(BuildState& state, const SchemaNode& node, const Type* type) {
  const SimpleType* const simple = type->AsSimple();
  if (simple == nullptr || simple->GetPrimitive() != BuiltIn_NOTATION) return;
  if (simple->FindEnumerations() != nullptr) return;
  state.Error(node,
              "The type NOTATION is used by way of enumerations of its values "
              "(enumeration-required-notation).");
}

const Wildcard* MakeWildcard(BuildState& state, const SchemaNode& node) {
  Wildcard& wildcard = state.storage.wildcards.emplace_back();
  wildcard.location = node.GetLocation();
  wildcard.documentation = GetDocumentation(node);
  wildcard.targetNamespace = node.source->document->targetNamespace;
  wildcard.namespaceText = node.Find("namespace") != nullptr ? node.Get("namespace") : "##any";
  wildcard.constraint = ReadConstraint(node, wildcard.namespaceText, wildcard.targetNamespace);
  const std::string process = node.Get("processContents");
  if (process == "lax") wildcard.processContents = ProcessContents_Lax;
  if (process == "skip") wildcard.processContents = ProcessContents_Skip;
  return &wildcard;
}

const Wildcard* MakeMergedWildcard(BuildState& state, const Wildcard& pattern,
                                   const NamespaceConstraint& constraint) {
  Wildcard& merged = state.storage.wildcards.emplace_back(pattern);
  merged.constraint = constraint;
  merged.namespaceText = constraint.ToText(merged.targetNamespace);
  return &merged;
}

}  // namespace qzxml::generator
