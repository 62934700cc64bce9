#pragma once

#include <string_view>
#include <vector>

#include "qzxml/binding/ReadPlan.h"

namespace QzXmlLib16 {
namespace detail {

// What the plan knows of the data members: how their values are made of ordinary texts.
class CReadValues {
 public:
  // Finds the way of a value, and of an object or a collection under a name of its own, and the
  // data member, which the class that declares the member names.
  static void Prepare(const CMember& declared, ReadMember& member);
  static void PrepareObject(const CMember& declared, ReadMember& member);

  // Whether the text is an ordinary one of a value, which the object then holds. False leaves the
  // object as it was.
  static bool Take(CBoundClass& object, const ReadMember& member, std::string_view text);

  // How the data members of a class are emptied, those of the most derived class first.
  static std::vector<MemberReset> ListResets(const CClassBinding& binding);

  // Whether all data members of an object are empty, and whether somebody hears of its collections.
  static bool IsEmpty(const CBoundClass& object);
  static bool HasListeners(const CBoundClass& object);

  // The data members.
  static CObjectHandle& Object(CBoundClass& object, const ReadMember& member);
  static CCollectionHandle& Collection(CBoundClass& object, const ReadMember& member);

  // The object that a mandatory member holds; null when there can be none.
  static CObjectHandle HeldObject(CBoundClass& object, const ReadMember& member);
};

}  // namespace detail
}  // namespace QzXmlLib16
