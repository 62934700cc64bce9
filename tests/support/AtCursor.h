#pragma once

#include <functional>
#include <string>

#include "qzxml/serialization/ElementInfo.h"
#include "tests/support/MemberTrial.h"

namespace qztest {

// What holds for members of an xs:all and of an xs:choice alike: they look at the element at the
// cursor and nowhere else, answer whether they took it, and leave the verdict on a missing child to
// the walk, whatever the context ignores and however the class stands in the document.

using MakeMember = std::function<QzXmlLib16Data::CElementInfo*()>;

// The flags that could make a member look further, or be content with less.
constexpr Flag kFlagsForMissing[] = {kNoFlag,           kUnknownElements,
                                     kMissingMandatory, kUnknownAttributes,
                                     kMissingChoice,    kCollectionCounts};

// For a member "a" without a namespace. taken is what it then holds of <a>green</a>, unset what it
// holds before; both as CTrial tells them.
void ExpectTakesAtCursorAlone(const MakeMember& make, const Unset::Make& property,
                              const std::string& taken, const std::string& unset);

// How a primitive and an enumeration read and write; for both families and both occurrences.
template <typename Member>
void ExpectPrimitive(bool mandatory);
template <typename Member>
void ExpectEnumeration(bool mandatory);

// Open content that is made when it is met: which namespaces the restriction lets in, and what
// happens without any.
using MakeOpenMember = std::function<QzXmlLib16Data::CElementInfo*(
    const char* name, const char* restriction, const char* target)>;
void ExpectOpenContent(const MakeOpenMember& make);

// --- Details of the templates

struct ValueMember {
  std::function<QzXmlLib16Data::CElementInfo*(bool nillable, const char* defaultValue)> make;
  std::function<void(QzVariant& value)> setGreen;
  std::string heldGreen;
  bool mandatory;
};
void ExpectValueMember(const ValueMember& member);
void ExpectFacetsOfPrimitive(const MakeMember& makeAtLeastTen);

template <typename Member>
void ExpectPrimitive(bool mandatory) {
  ValueMember member;
  member.make = [](bool nillable, const char* defaultValue) {
    PrimOptions options;
    options.nillable = nillable;
    options.defaultValue = defaultValue;
    return Prim<Member>("a", 0, options);
  };
  member.setGreen = [](QzVariant& value) { value.SetString("green"); };
  member.heldGreen = "green";
  member.mandatory = mandatory;
  ExpectValueMember(member);
  ExpectFacetsOfPrimitive([] {
    PrimOptions options;
    options.type = QzXmlLib16::ItemType_i4;
    options.defaultValue = "9";
    options.restrictions = QzXmlLib16::CPrimitiveRestrictions(nullptr, -1, -1, "10", nullptr,
                                                              nullptr, nullptr, -1, -1, -1);
    return Prim<Member>("a", 0, options);
  });
}

template <typename Member>
void ExpectEnumeration(bool mandatory) {
  ValueMember member;
  member.make = [](bool nillable, const char* defaultValue) {
    return Enum<Member>("a", 0, nillable, defaultValue);
  };
  member.setGreen = [](QzVariant& value) { value.SetI4(1); };
  member.heldGreen = "1";
  member.mandatory = mandatory;
  ExpectValueMember(member);
}

}  // namespace qztest
