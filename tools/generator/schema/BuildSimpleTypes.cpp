#include "tools/generator/schema/SchemaBuilder.h"

// Simple types, each behind what it is made of.
// Source: XML Schema 1.0 part 1, section 3.14.

namespace qzxml::generator {

namespace {

// Unions of unions of unions multiply; nobody means more than this.
constexpr std::size_t kMaxMembers = 10'000;

class CSimpleTypeFinisher {
 public:
  CSimpleTypeFinisher(BuildState& state, SchemaNode& node, SimpleType& type)
      : m_state(state), m_node(node), m_type(type) {}

  void Finish() {
    m_type.base = m_state.storage.builtIns[BuiltIn_anySimpleType];
    if (const SchemaNode* const restriction = m_node.FindChild("restriction")) {
      FinishRestriction(*restriction);
    } else if (const SchemaNode* const list = m_node.FindChild("list")) {
      FinishList(*list);
    } else if (const SchemaNode* const node = m_node.FindChild("union")) {
      FinishUnion(*node);
    }
  }

 private:
  // The simple type that the attribute names, or the one within the node; finished. Null where
  // there is none, which is told.
  const SimpleType* FindPart(const SchemaNode& node, const char* attribute, const char* rule,
                             bool isBase) {
    const std::string* const written = node.Find(attribute);
    SchemaNode* const child = node.FindChild("simpleType");
    if ((written != nullptr) == (child != nullptr)) {
      m_state.Error(node, std::string("There has to be either the attribute '") + attribute +
                              "' or a simpleType (" + rule + ").");
      return nullptr;
    }
    if (child != nullptr) return Use(node, static_cast<const SimpleType*>(child->component));
    return UseNamed(node, *written, isBase);
  }

  const SimpleType* UseNamed(const SchemaNode& node, const std::string& name, bool isBase) {
    const Type* const type = ResolveType(m_state, node, name, isBase);
    if (type == nullptr) return nullptr;
    if (!type->IsSimple()) {
      m_state.Error(node, "The " + Describe(*type) +
                              " is complex, where a simple type is needed (src-resolve).");
      return nullptr;
    }
    return Use(node, type->AsSimple());
  }

  const SimpleType* Use(const SchemaNode& node, const SimpleType* type) {
    if (m_state.progress[type] == Progress_InWork) {
      m_state.Error(
          node, "The " + Describe(*type) + " is defined by means of itself (st-props-correct.2).");
      return nullptr;
    }
    if (m_state.progress[type] == Progress_None) {
      FinishSimpleType(m_state, *static_cast<SimpleType*>(m_state.nodes.at(type)->component));
    }
    return type;
  }

  void CheckFinal(const SchemaNode& node, const SimpleType& part, Derivation derivation,
                  const char* rule) {
    if ((part.finalSet & derivation) == 0) return;
    m_state.Error(
        node, "The " + Describe(part) + " is final for this kind of derivation (" + rule + ").");
  }

  void FinishRestriction(const SchemaNode& node) {
    const SimpleType* base = FindPart(node, "base", "src-restriction-base-or-simpleType", true);
    if (base != nullptr && base->builtIn == BuiltIn_anySimpleType) {
      m_state.Error(node,
                    "The type 'anySimpleType' is not restricted by schemas "
                    "(cos-st-restricts.1.1).");
      base = nullptr;
    }
    const bool isKnown = base != nullptr;
    if (!isKnown) base = m_state.storage.builtIns[BuiltIn_string];
    CheckFinal(node, *base, Derivation_Restriction, "st-props-correct.3");
    m_type.base = base;
    m_type.variety = base->variety;
    m_type.itemType = base->itemType;
    m_type.memberTypes = base->memberTypes;
    if (isKnown) BuildFacets(m_state, node, m_type);
  }

  static bool HoldsList(const SimpleType& type) {
    if (type.variety == Variety_List) return true;
    for (const SimpleType* const member : type.memberTypes) {
      if (HoldsList(*member)) return true;
    }
    return false;
  }

  void FinishList(const SchemaNode& node) {
    m_type.variety = Variety_List;
    m_type.itemType = FindPart(node, "itemType", "src-list-itemType-or-simpleType", false);
    if (m_type.itemType == nullptr) {
      m_type.itemType = m_state.storage.builtIns[BuiltIn_string];
      return;
    }
    if (HoldsList(*m_type.itemType)) {
      m_state.Error(node, "The items of a list are no lists (cos-st-restricts.2.1).");
      m_type.itemType = m_state.storage.builtIns[BuiltIn_string];
    }
    CheckFinal(node, *m_type.itemType, Derivation_List, "cos-st-restricts.2.3.1.1");
  }

  // It and, of a union, all that its members hold.
  std::size_t CountMembers(const SimpleType& type) const {
    const auto found = m_state.memberCounts.find(&type);
    return found != m_state.memberCounts.end() ? found->second + 1 : 1;
  }

  void FinishUnion(const SchemaNode& node) {
    m_type.variety = Variety_Union;
    for (const std::string& name : SplitWords(node.Get("memberTypes"))) {
      AddMember(node, UseNamed(node, name, true));
    }
    for (const auto& child : node.children) {
      if (child->Is("simpleType")) {
        AddMember(node, Use(node, static_cast<const SimpleType*>(child->component)));
      }
    }
    if (!m_type.memberTypes.empty()) return;
    m_type.memberTypes.push_back(m_state.storage.builtIns[BuiltIn_string]);
    if (SplitWords(node.Get("memberTypes")).empty()) {
      m_state.Error(node, "A union has member types (src-union-memberTypes-or-simpleTypes).");
    }
  }

  void AddMember(const SchemaNode& node, const SimpleType* member) {
    if (member == nullptr) return;
    std::size_t& count = m_state.memberCounts[&m_type];
    count += CountMembers(*member);
    if (count > kMaxMembers) {
      m_state.Error(node, "The union has more than " + std::to_string(kMaxMembers) +
                              " member types, those of its members included.");
      return;
    }
    CheckFinal(node, *member, Derivation_Union, "cos-st-restricts.3.3.1.1");
    m_type.memberTypes.push_back(member);
  }

  BuildState& m_state;
  SchemaNode& m_node;
  SimpleType& m_type;
};

}  // namespace

void FinishSimpleType(BuildState& state, SimpleType& type) {
  if (state.progress[&type] != Progress_None) return;
  SchemaNode& node = *state.nodes.at(&type);
  const CDepthGuard guard(state, node);
  if (guard.IsTooDeep()) {
    type.base = state.storage.builtIns[BuiltIn_anySimpleType];
  } else {
    state.progress[&type] = Progress_InWork;
    CSimpleTypeFinisher(state, node, type).Finish();
    std::vector<const void*> parts(type.memberTypes.begin(), type.memberTypes.end());
    parts.insert(parts.end(), {type.base, type.itemType});
    if (!NoteDepth(state, node, &type, parts)) {
      type.base = state.storage.builtIns[BuiltIn_string];
      type.variety = Variety_Atomic;
      type.itemType = nullptr;
      type.memberTypes.clear();
    }
  }
  state.progress[&type] = Progress_Done;
}

void ResolveSimpleTypes(BuildState& state) {
  for (const Made<SimpleType>& made : state.simpleTypes) FinishSimpleType(state, *made.component);
}

std::string Describe(const Type& type) {
  return type.name.IsEmpty() ? "anonymous type" : "type '" + type.name.ToString() + "'";
}

}  // namespace qzxml::generator
