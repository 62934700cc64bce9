#pragma once

#include <map>
#include <string>

#include "tools/generator/model/Content.h"
#include "tools/generator/model/Identifiers.h"
#include "tools/generator/model/Model.h"

namespace qzxml::generator {

// Gives the members of one class their names. They are unlike those of its bases and unlike what
// the library's own classes have. Elements are to be named first: of an element and an attribute of
// one name the element has it plain.
class CMemberNames {
 public:
  // owner has its base, and no members of its own yet.
  explicit CMemberNames(const BoundClass& owner);

  // Fills name and variable: the name, its plural for a collection; with "Attribute", "Element" or
  // "Text" behind it where something of another kind has it already, else with a number.
  void Give(BoundMember& member, const std::string& singular);

 private:
  enum Kind { Kind_Library, Kind_Attribute, Kind_Text, Kind_Element };
  static Kind GetKind(const BoundMember& member);
  void AddBase(const BoundClass* base);

  std::map<std::string, Kind> m_taken;
  CNameScope m_variables;
};

// What a group is called: after the named group or the head of the substitution group that it is,
// else after its members where these are two or three elements ("KeyAndValue", "EmailOrPhone"),
// else "Choice", "Sequence" or "All".
std::string GetGroupStem(const ContentNode& group);

}  // namespace qzxml::generator
