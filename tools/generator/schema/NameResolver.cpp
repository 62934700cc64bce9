#include <algorithm>

#include "qzxml/xml/XmlNamespaces.h"
#include "tools/generator/schema/SchemaBuilder.h"

namespace qzxml::generator {

namespace {

const char* const kSpaceNames[] = {
    "type", "element", "attribute", "group", "attribute group", "notation", "identity constraint"};

constexpr int kMaxDepth = 1000;
constexpr char kTooDeep[] = "Components refer to one another too deep.";

bool Contains(const std::vector<std::string>& list, const std::string& text) {
  return std::find(list.begin(), list.end(), text) != list.end();
}

std::string DescribeNamespace(const std::string& namespaceUri) {
  return namespaceUri.empty() ? "What has no namespace" : "The namespace '" + namespaceUri + "'";
}

// A document sees its own namespace and those that it imports.
bool IsVisible(const SchemaSource& source, const QName& name, SymbolSpace space) {
  const std::string& uri = name.namespaceUri;
  if (uri == source.document->targetNamespace) return true;
  if (uri == kSchemaNamespace && space == SymbolSpace_Type) return true;
  return Contains(source.imported, uri);
}

// The component of the schema's child that the node stands in.
const Component* GetGlobalAround(const SchemaNode& node, bool& isInRedefine) {
  const SchemaNode* n = &node;
  while (n->parent != nullptr && !n->parent->Is("schema") && !n->parent->Is("redefine")) {
    n = n->parent;
  }
  isInRedefine = n->parent != nullptr && n->parent->Is("redefine");
  return n->component;
}

// Whether the component is there because it redefines, and the other one is it or a former one that
// redefines too.
bool IsOneOfItsOriginals(const BuildState& state, const Component* component,
                         const Component* other) {
  for (auto entry = state.originals.find(component); entry != state.originals.end();
       entry = state.originals.find(entry->second)) {
    if (entry->first == other) return true;
  }
  return false;
}

}  // namespace

CDepthGuard::CDepthGuard(BuildState& state, const SchemaNode& node)
    : m_state(state), m_isTooDeep(++state.depth > kMaxDepth) {
  if (m_isTooDeep) state.Error(node, kTooDeep);
}

bool NoteDepth(BuildState& state, const SchemaNode& node, const void* made,
               const std::vector<const void*>& parts) {
  int deepest = 0;
  for (const void* const part : parts) {
    const auto found = state.depths.find(part);
    if (found != state.depths.end()) deepest = std::max(deepest, found->second);
  }
  if (deepest >= kMaxDepth) {
    state.Error(node, kTooDeep);
    return false;
  }
  state.depths[made] = deepest + 1;
  return true;
}

QName ResolveQName(BuildState& state, const SchemaNode& node, const std::string& written) {
  const std::string text = Trim(written);
  const std::size_t colon = text.find(':');
  const std::string prefix = colon == std::string::npos ? std::string() : text.substr(0, colon);
  QName name{{}, colon == std::string::npos ? text : text.substr(colon + 1)};
  const auto found = node.scope->find(prefix);
  if (found != node.scope->end()) {
    name.namespaceUri = found->second;
  } else if (!prefix.empty()) {
    state.Error(node, "The prefix '" + prefix + "' of '" + text + "' is not declared (src-qname).");
    return {};
  }
  if (name.namespaceUri.empty() && node.source->isChameleon) {
    name.namespaceUri = node.source->document->targetNamespace;
  }
  return name;
}

Component* ResolveName(BuildState& state, const SchemaNode& node, const std::string& written,
                       SymbolSpace space, bool mayBeOriginal) {
  const QName name = ResolveQName(state, node, written);
  if (name.IsEmpty()) return nullptr;
  const auto found = state.names[space].find(name);
  if (found == state.names[space].end()) {
    std::string message = std::string("There is no ") + kSpaceNames[space] + " '" +
                          name.ToString() + "' (src-resolve).";
    if (Contains(node.source->imported, name.namespaceUri) &&
        state.targetNamespaces.count(name.namespaceUri) == 0) {
      message += " No schema of its namespace was read: no file is where it is imported from.";
    }
    state.Error(node, std::move(message));
    return nullptr;
  }
  if (!IsVisible(*node.source, name, space)) {
    state.Error(node, DescribeNamespace(name.namespaceUri) + " is not imported, but '" +
                          name.ToString() + "' is referred to (src-resolve.4).");
    return nullptr;
  }
  if (mayBeOriginal) {
    bool isInRedefine = false;
    const Component* const around = GetGlobalAround(node, isInRedefine);
    if (isInRedefine && IsOneOfItsOriginals(state, found->second, around)) {
      return state.originals.at(around);
    }
  }
  return found->second;
}

const Type* ResolveType(BuildState& state, const SchemaNode& node, const std::string& written,
                        bool isBase) {
  return static_cast<const Type*>(ResolveName(state, node, written, SymbolSpace_Type, isBase));
}

}  // namespace qzxml::generator
