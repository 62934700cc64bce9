#pragma once

#include <vector>

#include "tools/generator/model/ClassBinder.h"

namespace qzxml::generator {

// Lays the restriction of a complex type over the members of its base: an element or attribute that
// the restriction has in fewer places, with another default or with a narrower type, becomes an
// entry of restricted; one that it does not have is prohibited.
class CRestrictionBinder {
 public:
  using Nodes = std::vector<ContentPointer>;

  // The class has its base, whose members are filled.
  CRestrictionBinder(CClassBinder& binder, BoundClass& bound, const ComplexType& type);

  // Of an extension too, whose wildcard may be wider than the base's. Answers the attributes that
  // the base does not have.
  std::vector<const AttributeUse*> LayAttributes();
  // The whole content. What cannot be laid over the base's is warned of, and the base's is taken.
  // Answers what stands behind all members of the base that stay, in place of a wildcard there, and
  // so is the class's own.
  Nodes LayContent();
  void LayText();

 private:
  void Tighten(const EffectiveMember& base, const BoundMember& tightened);
  void Prohibit(const EffectiveMember& base);
  void Keep();    // the entries so far
  void Forget();  // these
  void LayAttribute(const EffectiveMember& base, const AttributeUse& use);
  void LayAnyAttribute(const EffectiveMember& base);
  const BoundSimpleType* Narrow(const EffectiveMember& base, const SimpleType& type,
                                const Location& location);
  bool IsGroupOfBase(const ContentNode& content);
  bool LayNodes(const Nodes& nodes, BoundGroupType type);
  void LayNode(const EffectiveMember& base, const ContentNode& node, BoundGroupType within);
  std::vector<const EffectiveMember*>::iterator FindBase(std::vector<const EffectiveMember*>& rest,
                                                         const ContentNode& node,
                                                         const EffectiveMember* last);
  bool CanBeOwn(const Nodes& nodes, std::size_t first);
  bool Holds(const BoundMember& member, const ContentNode& node);
  bool IsSame(const BoundMember& member, const ContentNode& node);
  bool IsSameGroup(const BoundClass& group, const ContentNode& node);
  void NarrowType(const ContentNode& node, BoundMember& member);

  CClassBinder& m_binder;
  BoundClass& m_bound;
  const ComplexType& m_type;
  std::vector<EffectiveMember> m_base;
  std::vector<BoundRestriction> m_entries;
  Nodes m_own;
  bool m_isLooser = false;  // something of the restriction is not kept
};

}  // namespace qzxml::generator
