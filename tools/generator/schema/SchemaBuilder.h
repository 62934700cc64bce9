#pragma once

#include <array>
#include <map>
#include <set>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "tools/generator/schema/Diagnostics.h"
#include "tools/generator/schema/SchemaLoader.h"
#include "tools/generator/schema/SchemaStorage.h"
#include "tools/generator/schema/ValueCheck.h"

// How components come of documents.
//
// First every component is made, empty, in the order of the documents (ComponentMaker.cpp); from
// then on each node knows what was made of it, global names are known, and pointers can be set in
// any order, circles included. Then references are resolved, and what needs its base finished is
// finished base first (Build...cpp); a circle is met there as a thing that is in work already.
// Last come the rules that look at whole types (Check...cpp).
//
// A step that fails tells its error and puts something harmless in place, so that one run tells as
// much as it can.

namespace qzxml::generator {

// What was made of a node; parts of it are still to come.
template <typename T>
struct Made {
  SchemaNode* node;
  T* component;
};

// How far something is that needs others finished first.
enum Progress { Progress_None, Progress_InWork, Progress_Done };

// The kinds of names that are looked up, each with its own space of names.
enum SymbolSpace {
  SymbolSpace_Type,
  SymbolSpace_Element,
  SymbolSpace_Attribute,
  SymbolSpace_Group,
  SymbolSpace_AttributeGroup,
  SymbolSpace_Notation,
  SymbolSpace_Identity,
  SymbolSpace_Count
};

// What all steps share.
struct BuildState {
  BuildState(SchemaStorage& theStorage, CDiagnostics& theDiagnostics)
      : storage(theStorage), diagnostics(theDiagnostics) {}

  SchemaStorage& storage;
  CDiagnostics& diagnostics;
  CValueCheck values;

  std::array<std::map<QName, Component*>, SymbolSpace_Count> names;
  std::set<std::string> targetNamespaces;                      // of the schemas that were read
  std::unordered_map<const Component*, Component*> originals;  // of what redefines them

  // In the order of the documents.
  std::vector<Made<SimpleType>> simpleTypes;
  std::vector<Made<ComplexType>> complexTypes;
  std::vector<Made<ElementDecl>> elements;
  std::vector<Made<AttributeDecl>> attributes;
  std::vector<Made<GroupDefinition>> groups;
  std::vector<Made<AttributeGroup>> attributeGroups;
  std::vector<Made<Particle>> particles;
  std::vector<Made<ModelGroup>> modelGroups;
  std::vector<Made<IdentityConstraint>> identityConstraints;
  std::vector<const Type*> allTypes;

  std::unordered_map<const void*, Progress> progress;
  std::unordered_map<const Component*, SchemaNode*> nodes;  // of types, groups and declarations
  std::unordered_map<const SimpleType*, std::size_t> memberCounts;  // of unions, all levels
  std::size_t contentSteps = 0;                 // spent on the ambiguity of content models
  std::size_t restrictionSteps = 0;             // spent on their restrictions
  std::unordered_map<const void*, int> depths;  // of what is made of others
  int depth = 0;                                // of what is in work

  void Error(const SchemaNode& node, std::string message) {
    diagnostics.Error(node, std::move(message));
  }
};

// Counts what is in work inside one another; too much of it is an error instead of an overflow.
class CDepthGuard {
 public:
  CDepthGuard(BuildState& state, const SchemaNode& node);
  ~CDepthGuard() { --m_state.depth; }
  CDepthGuard(const CDepthGuard&) = delete;
  CDepthGuard& operator=(const CDepthGuard&) = delete;

  bool IsTooDeep() const { return m_isTooDeep; }

 private:
  BuildState& m_state;
  bool m_isTooDeep;
};

// Notes how deep something is made of others: one more than the deepest of its parts, of which null
// and unknown ones count nothing. False and an error when that is too deep for the walks to come.
bool NoteDepth(BuildState& state, const SchemaNode& node, const void* made,
               const std::vector<const void*>& parts);

// ---- Names (NameResolver.cpp) ----

// What the value of an attribute means where it stands; none of an unknown prefix, which is told.
QName ResolveQName(BuildState& state, const SchemaNode& node, const std::string& written);

// The component that the value of the attribute names, or null, which is told. Within xs:redefine
// the name of what is redefined means the original, if this is one of the places where it does.
Component* ResolveName(BuildState& state, const SchemaNode& node, const std::string& written,
                       SymbolSpace space, bool mayBeOriginal = false);
const Type* ResolveType(BuildState& state, const SchemaNode& node, const std::string& written,
                        bool isBase = false);

// ---- The steps, in their order ----

void MakeComponents(BuildState& state, const CSchemaLoader& loader);
void ResolveSimpleTypes(BuildState& state);
void ResolveAttributes(BuildState& state);       // declarations
void ResolveAttributeGroups(BuildState& state);  // needs attributes
void ResolveContent(BuildState& state);          // particles, groups, elements' types
void CheckRedefinedGroups(BuildState& state);
void ResolveComplexTypes(BuildState& state);
void ResolveSubstitutions(BuildState& state);
void CheckElements(BuildState& state);       // values, substitution groups
void CheckContentModels(BuildState& state);  // ambiguity, consistency
void CheckDerivations(BuildState& state);    // of complex types
void CheckIdentityConstraints(BuildState& state);

// ---- Shared by steps ----

// Simple types are finished when somebody needs them; again is nothing.
void FinishSimpleType(BuildState& state, SimpleType& type);
// Reads the facets that are children of the node into the type, and checks them against its base,
// which is finished (BuildFacets.cpp).
void BuildFacets(BuildState& state, const SchemaNode& node, SimpleType& type);
// Reads default and fixed of the node for values of the type; null for none that is simple.
ValueConstraint ReadValueConstraint(BuildState& state, const SchemaNode& node,
                                    const SimpleType* type);

// The attributes of a type or an attribute group that its node writes: uses, and the wildcard.
struct AttributeSet {
  std::vector<AttributeUse> uses;
  const Wildcard* wildcard = nullptr;
};
AttributeSet ReadAttributes(BuildState& state, SchemaNode& node);
// Two uses of one name are an error, and the later one goes; two of type ID are an error.
void CheckAttributeSet(BuildState& state, const SchemaNode& node, std::vector<AttributeUse>& uses);
const Wildcard* MakeWildcard(BuildState& state, const SchemaNode& node);
const Wildcard* MakeMergedWildcard(BuildState& state, const Wildcard& pattern,
                                   const NamespaceConstraint& constraint);

// The set that an attribute such as block writes, or its default on xs:schema, as far as allowed.
unsigned ReadDerivationSet(const SchemaNode& node, const char* attribute,
                           const char* defaultAttribute, unsigned allowed);

// Whether the type is xs:ID or derives from it.
bool IsIdType(const SimpleType* type);
// Whether content may be empty (cos-group-emptiable); null is no content, which is empty.
bool IsEmptiable(const Particle* particle);
// That one set of attributes restricts another (derivation-ok-restriction.2 to 4).
void CheckAttributeRestriction(BuildState& state, const SchemaNode& node,
                               const std::vector<AttributeUse>& uses, const Wildcard* wildcard,
                               const std::vector<AttributeUse>& baseUses,
                               const Wildcard* baseWildcard);
// That one content restricts another (cos-particle-restrict); the reason why not, or an empty text.
std::string FindRestrictionFault(BuildState& state, const Particle* particle, const Particle* base);
// Whether the type is xs:NOTATION without an enumeration, which no value has; told as an error.
void CheckNotationType(BuildState& state, const SchemaNode& node, const Type* type);
// "type '{urn:x}A'", or "anonymous type".
std::string Describe(const Type& type);

}  // namespace qzxml::generator
