#include "tools/generator/model/ModelNames.h"

#include <algorithm>
#include <cctype>
#include <iterator>
#include <utility>

namespace qzxml::generator {

namespace {

// What generated code names of the library, and so no class and enumeration may be called.
constexpr const char* kLibraryNames[] = {"AbstractClassFactory",
                                         "AnyAttribute",
                                         "AnyElement",
                                         "CAttribute",
                                         "CAttributeCol",
                                         "CBigInteger",
                                         "CBinaryData",
                                         "CBoundClass",
                                         "CBoundObjectCol",
                                         "CClassBinding",
                                         "CClassTraits",
                                         "CCollectionHandle",
                                         "CDateTime",
                                         "CDateTimeSpan",
                                         "CDecimal",
                                         "CElement",
                                         "CElementCol",
                                         "CEnumCol",
                                         "CEnumerationInfo",
                                         "CMember",
                                         "CMemberList",
                                         "CNamedElement",
                                         "CNamedType",
                                         "CNillableState",
                                         "CObjectCol",
                                         "CObjectHandle",
                                         "COccurs",
                                         "CPatternStep",
                                         "CProperty",
                                         "CRestrictedList",
                                         "CRestrictedMember",
                                         "CSerializationContext",
                                         "CSimpleTypeInfo",
                                         "CSmartPtr",
                                         "CTabledClass",
                                         "CTextRules",
                                         "CValueCol",
                                         "CWhitespaceUtils",
                                         "CWildcardCol",
                                         "CXmlAttribute",
                                         "CXmlCollection",
                                         "CXmlCollectionBase",
                                         "CXmlDocument",
                                         "CXmlElement",
                                         "CXmlGeneratedClass",
                                         "CXmlObjectBase",
                                         "CXmlWriter",
                                         "ClassFactory",
                                         "CollectionFactory",
                                         "CompressionType",
                                         "EOLType",
                                         "EnumToString",
                                         "Group",
                                         "ItemType",
                                         "MemberForm",
                                         "NewObject",
                                         "NewObjectByType",
                                         "NewObjectCol",
                                         "NewRootObject",
                                         "ObjectElement",
                                         "Once",
                                         "Optional",
                                         "OptionalAttribute",
                                         "QzVariant",
                                         "QzXmlLib16",
                                         "QzXmlLib16Data",
                                         "Repeated",
                                         "RequiredAttribute",
                                         "SchemaType",
                                         "StringToEnum",
                                         "Text",
                                         "UntypedElement",
                                         "ValueElement",
                                         "XmlEncoding",
                                         "XsdType",
                                         "kNamespace"};

// Files that are no class's: those of the whole namespace, and names that a system keeps.
constexpr const char* kOtherFiles[] = {
    "types", "enums",     "enumerations", "simpletypes", "forward", "fwd",  "namespace", "roots",
    "all",   "documents", "con",          "prn",         "aux",     "nul",  "com1",      "com2",
    "com3",  "com4",      "com5",         "com6",        "com7",    "com8", "com9",      "lpt1",
    "lpt2",  "lpt3",      "lpt4",         "lpt5",        "lpt6",    "lpt7", "lpt8",      "lpt9"};

bool IsVersion(const std::string& word) {
  const std::size_t start = !word.empty() && (word[0] == 'v' || word[0] == 'V') ? 1 : 0;
  return start < word.size() && std::isdigit(static_cast<unsigned char>(word[start])) != 0 &&
         word.find_first_not_of("0123456789.-_", start) == std::string::npos;
}

bool TellsNothing(const std::string& prefix) {
  for (const char* name : {"", "tns", "this", "self", "target", "s", "xs", "xsd", "t"}) {
    if (prefix == name) return true;
  }
  const std::size_t letters = prefix.compare(0, 2, "ns") == 0 ? 2 : 1;
  return prefix[0] == 'n' && prefix.find_first_not_of("0123456789", letters) == std::string::npos;
}

std::string GetFileName(const std::string& file) {
  const std::string name = file.substr(file.find_last_of("/\\") + 1);
  const std::size_t dot = name.find_last_of('.');
  return dot == std::string::npos || dot == 0 ? name : name.substr(0, dot);
}

std::vector<std::string> SplitUri(const std::string& uri) {
  std::vector<std::string> parts(1);
  for (const char c : uri) {
    if (std::string("/:#?=&").find(c) == std::string::npos) {
      parts.back() += c;
    } else if (!parts.back().empty()) {
      parts.emplace_back();
    }
  }
  return parts;
}

std::string WithoutEnd(const std::string& text, const std::string& end) {
  if (text.size() <= end.size()) return text;
  const std::size_t rest = text.size() - end.size();
  return text.compare(rest, end.size(), end) == 0 ? text.substr(0, rest) : text;
}

bool IsLibraryName(const std::string& name) {
  return std::find(std::begin(kLibraryNames), std::end(kLibraryNames), name) !=
             std::end(kLibraryNames) ||
         name.compare(0, 4, "kXsd") == 0;
}

// The stems that do not end up at a name of the library; "Type" goes behind those.
std::vector<std::string> MakeFree(const std::string& front, std::vector<std::string> stems) {
  for (std::string& stem : stems) {
    if (IsLibraryName(front + stem)) stem += "Type";
  }
  return stems;
}

std::vector<std::string> Prepend(const std::string& front, const std::vector<std::string>& stems) {
  std::vector<std::string> names;
  for (const std::string& stem : MakeFree(front, stems)) names.push_back(front + stem);
  return names;
}

}  // namespace

std::string DeriveNamespaceName(const std::string& uri, const std::string& prefix,
                                const std::string& file) {
  if (!TellsNothing(prefix)) return ToNamespaceName(prefix);
  const std::vector<std::string> parts = SplitUri(uri);
  for (auto part = parts.rbegin(); part != parts.rend(); ++part) {
    const std::string word = WithoutEnd(*part, ".xsd");
    if (word.empty() || IsVersion(word)) continue;
    if (part + 1 == parts.rend() && parts.size() > 1) break;  // "http", "urn"
    return ToNamespaceName(word);
  }
  return ToNamespaceName(GetFileName(file));
}

CModelNames::CModelNames(Model& model, const CSchemaSet& schemas, const ModelOptions& options)
    : m_model(model) {
  std::map<std::string, std::string> firstFiles;
  std::string givenUri;
  bool isGivenFound = false;
  for (const SchemaDocument* document : schemas.GetDocuments()) {
    firstFiles.emplace(document->targetNamespace, document->file);
    if (document->isGiven && !isGivenFound) givenUri = document->targetNamespace;
    isGivenFound = isGivenFound || document->isGiven;
  }
  for (const TargetNamespace& target : schemas.GetTargetNamespaces()) {
    MakeNamespace(target, firstFiles[target.uri], options, givenUri);
  }
}

void CModelNames::MakeNamespace(const TargetNamespace& target, const std::string& firstFile,
                                const ModelOptions& options, const std::string& givenUri) {
  auto made = std::make_unique<BoundNamespace>();
  BoundNamespace& where = *made;
  m_model.namespaces.push_back(std::move(made));
  m_namespaces[target.uri] = &where;
  where.uri = target.uri;
  const auto mapped = options.cppNamespaces.find(target.uri);
  if (mapped != options.cppNamespaces.end()) {
    where.cppName = mapped->second;
  } else if (target.uri == givenUri && !options.cppNamespace.empty()) {
    where.cppName = options.cppNamespace;
  } else {
    const std::string derived = DeriveNamespaceName(target.uri, target.prefix, firstFile);
    where.cppName = derived;
    for (int number = 2; m_scopes.count(where.cppName) != 0; ++number) {
      where.cppName = WithNumber(derived, number);
    }
  }
  std::string folder = where.cppName;
  for (std::size_t at; (at = folder.find("::")) != std::string::npos;) folder.replace(at, 2, "_");
  where.fileStem = m_folders.TakeFirst({ToFileStem(folder)});

  std::unique_ptr<CNameScope>& scope = m_scopes[where.cppName];
  if (scope == nullptr) scope = std::make_unique<CNameScope>();
  where.constant = scope->TakeFirst({where.constant});
  CNameScope& files =
      m_files.emplace(&where, CNameScope(CNameScope::Case_Insensitive)).first->second;
  files.Take(where.fileStem);
  for (const char* name : kOtherFiles) files.Take(name);
}

BoundNamespace& CModelNames::GetNamespace(const std::string& uri) {
  const auto found = m_namespaces.find(uri);
  if (found != m_namespaces.end()) return *found->second;
  // A set without a document of that namespace, as the one of an empty schema.
  MakeNamespace({uri, ""}, "", {}, "");
  return *m_namespaces[uri];
}

CNameScope& CModelNames::GetScope(const BoundNamespace& where) const {
  return *m_scopes.at(where.cppName);
}

std::vector<std::string> CModelNames::GetStems(const Component& component) const {
  if (!component.name.IsEmpty()) return {ToUpperCamel(component.name.localName)};
  const Component* named = component.context;
  while (named != nullptr && named->name.IsEmpty()) named = named->context;
  if (named == nullptr) return {"Anonymous"};
  std::string stem = ToUpperCamel(named->name.localName);
  if (component.context->kind == ComponentKind_ComplexType) stem += "Value";
  for (const Component* outer = named->context; outer != nullptr; outer = outer->context) {
    const auto known = m_stems.find(outer);
    if (known == m_stems.end() && outer->name.IsEmpty()) continue;
    const std::string front =
        known != m_stems.end() ? known->second : ToUpperCamel(outer->name.localName);
    return {stem, WithoutEnd(front, "Type") + stem};
  }
  return {stem};
}

std::string CModelNames::TakeClass(const BoundNamespace& where,
                                   const std::vector<std::string>& stems) {
  return GetScope(where).TakeFirst(Prepend("C", stems));
}

std::string CModelNames::TakeConstant(const BoundNamespace& where,
                                      const std::vector<std::string>& stems) {
  return GetScope(where).TakeFirst(Prepend("k", stems));
}

std::string CModelNames::TakeEnumeration(const BoundNamespace& where,
                                         const std::vector<std::string>& stems) {
  CNameScope& scope = GetScope(where);
  const auto isFree = [&scope](const std::string& stem) {
    return scope.IsFree(stem) && scope.IsFree("k" + stem);
  };
  const std::vector<std::string> candidates = MakeFree("k", MakeFree("", stems));
  std::string name;
  for (const std::string& stem : candidates) {
    if (name.empty() && isFree(stem)) name = stem;
  }
  for (int number = 2; name.empty(); ++number) {
    const std::string numbered = WithNumber(candidates.back(), number);
    if (isFree(numbered)) name = numbered;
  }
  scope.Take(name);
  scope.Take("k" + name);
  return name;
}

std::string CModelNames::TakeEnumerator(const BoundNamespace& where,
                                        const std::vector<std::string>& names) {
  return GetScope(where).TakeFirst(names);
}

std::string CModelNames::TakeFileStem(const BoundNamespace& where, const std::string& className) {
  const std::string stem = ToFileStem(className.substr(1));
  CNameScope& files = m_files.at(&where);
  return files.TakeFirst({stem, stem + "Class"});
}

bool CModelNames::IsFree(const BoundNamespace& where, const std::string& name) const {
  return GetScope(where).IsFree(name);
}

}  // namespace qzxml::generator
