#include <cstdint>
#include <optional>
#include <string>

#include "qzxml/binding/BoundClass.h"
#include "qzxml/binding/BuiltInTypes.h"
#include "qzxml/binding/ObjectFactory.h"
#include "qzxml/binding/TypeOfElement.h"
#include "tests/support/QzTest.h"
#include "tests/support/Refusal.h"

// What an xsi:type names, by the classes of a schema with two namespaces, urn:a and urn:b, that
// have types of the same names. Tables are written here in either order of their rows.
//
// XML Schema 1.0 part 1, section 3.15.3 (QName resolution), takes a name without a prefix for one
// of the default namespace, and knows no other; that one of the element's own namespace is taken
// where there is none is this library's.

namespace QzXmlLib16 {
namespace {

constexpr char kA[] = "urn:a";
constexpr char kB[] = "urn:b";
constexpr auto kCollapse = CWhitespaceUtils::WhitespaceRule_Collapse;
using Facets = CSimpleTypeInfo::CFacets;

// Level: up to 100; Low of urn:a up to 10, that of urn:b up to 20, and that of no namespace up
// to 5. So a text tells which of them it was held against.
const CSimpleTypeInfo kLevel(ItemType_i4, kCollapse, Facets().MaxInclusive("100"));
const CSimpleTypeInfo kLowOfA(ItemType_i4, kCollapse, Facets().MaxInclusive("10"));
const CSimpleTypeInfo kLowOfB(ItemType_i4, kCollapse, Facets().MaxInclusive("20"));
const CSimpleTypeInfo kLowOfNone(ItemType_i4, kCollapse, Facets().MaxInclusive("5"));
const CSimpleTypeInfo kByteOfB(ItemType_i4, kCollapse, Facets().MaxInclusive("30"));
const CNamedSimpleType kAThenB_Named[] = {
    {kB, "Level", &kLevel}, {kA, "Low", &kLowOfA}, {kB, "Low", &kLowOfB}, {}};
const CNamedSimpleType kBThenA_Named[] = {
    {kB, "Level", &kLevel}, {kB, "Low", &kLowOfB}, {kA, "Low", &kLowOfA}, {}};
const CNamedSimpleType kNone_Named[] = {
    {kB, "Level", &kLevel}, {kB, "Low", &kLowOfB}, {"", "Low", &kLowOfNone}, {}};
const CNamedSimpleType kOnlyB_Named[] = {{kB, "Level", &kLevel}, {kB, "Low", &kLowOfB}, {}};
const CNamedSimpleType kXsdInt_Named[] = {{kB, "byte", &kByteOfB}, {kB, "string", &kByteOfB}, {}};
const CNamedSimpleType kDerivedFirst_Named[] = {{kB, "Low", &kLowOfB}, {}};
constexpr CSimpleTypeFamily kAThenB{kLevel, kAThenB_Named};
constexpr CSimpleTypeFamily kBThenA{kLevel, kBThenA_Named};
constexpr CSimpleTypeFamily kNone{kLevel, kNone_Named};
constexpr CSimpleTypeFamily kOnlyB{kLevel, kOnlyB_Named};
constexpr CSimpleTypeFamily kXsdInt_Types{kXsdInt, kXsdInt_Named};
constexpr CSimpleTypeFamily kDerivedFirst{kXsdInt, kDerivedFirst_Named};

// Elements of urn:b, one of which stands in a document.
class CLevels : public CBoundClass {
 public:
  CLevels() : CBoundClass(s_binding) {}

 private:
  static const CMember s_members[];
  static CClassBinding s_binding;

  std::optional<std::int32_t> m_aThenB;
  std::optional<std::int32_t> m_bThenA;
  std::optional<std::int32_t> m_none;
  std::optional<std::int32_t> m_onlyB;
  std::optional<std::int32_t> m_number;
  std::optional<std::int32_t> m_own;
  std::optional<std::int32_t> m_ownNumber;
};

const CMember CLevels::s_members[] = {
    ValueElement("aThenB", kB, Optional, &CLevels::m_aThenB, kAThenB),
    ValueElement("bThenA", kB, Optional, &CLevels::m_bThenA, kBThenA),
    ValueElement("none", kB, Optional, &CLevels::m_none, kNone),
    ValueElement("onlyB", kB, Optional, &CLevels::m_onlyB, kOnlyB),
    ValueElement("number", kB, Optional, &CLevels::m_number, kXsdInt_Types),
    ValueElement("own", kB, Optional, &CLevels::m_own, kBThenA).OwnTypeOnly(),
    ValueElement("ownNumber", kB, Optional, &CLevels::m_ownNumber, kDerivedFirst).OwnTypeOnly(),
};

CClassBinding CLevels::s_binding({"Levels", kB, "levels", &NewObject<CLevels>}, s_members);

// Place of urn:b, and the types that are derived from it: Town in either namespace, Hill in urn:b.
class CPlace : public CBoundClass {
 public:
  CPlace() : CBoundClass(s_binding) {}
  const std::string& GetName() const { return ValueOrEmpty(m_name); }

 protected:
  explicit CPlace(CClassBinding& binding) : CBoundClass(binding) {}
  static const CMember s_members[];
  static CClassBinding s_binding;

 private:
  std::optional<std::string> m_name;
};

const CMember CPlace::s_members[] = {
    OptionalAttribute("name", "", &CPlace::m_name, kXsdString),
};

CClassBinding CPlace::s_binding({"Place", kB, "place", &NewObject<CPlace>}, s_members);

constexpr CClassTraits kDerived[] = {
    {"Town", kA, "place", nullptr}, {"Town", kB, "place", nullptr}, {"Hill", kB, "place", nullptr}};

template <int index>
class CDerivedPlace : public CPlace {
 public:
  CDerivedPlace() : CPlace(s_binding) {}

 private:
  static CClassBinding s_binding;
};
template <int index>
CClassBinding CDerivedPlace<index>::s_binding(kDerived[index].Derived(), {}, &CPlace::s_binding, 1);

using CTownOfA = CDerivedPlace<0>;
using CTownOfB = CDerivedPlace<1>;
using CHill = CDerivedPlace<2>;

CObjectHandle AThenB(CXmlElement* element) {
  static constexpr CNamedType kTypes[] = {{kB, "Place", &NewObject<CPlace>},
                                          {kA, "Town", &NewObject<CTownOfA>},
                                          {kB, "Town", &NewObject<CTownOfB>}};
  return NewObjectByType(element, &NewObject<CPlace>, kTypes);
}

CObjectHandle BThenA(CXmlElement* element) {
  static constexpr CNamedType kTypes[] = {{kB, "Town", &NewObject<CTownOfB>},
                                          {kA, "Town", &NewObject<CTownOfA>},
                                          {kB, "Hill", &NewObject<CHill>},
                                          {kB, "Place", &NewObject<CPlace>}};
  return NewObjectByType(element, &NewObject<CPlace>, kTypes);
}

class CTrip : public CBoundClass {
 public:
  CTrip() : CBoundClass(s_binding) {}
  // The class of the place that was read.
  std::string GetPlaceClass() const {
    for (const CObjectHandle* const place : {&m_aThenB, &m_bThenA, &m_own}) {
      if (*place == nullptr) continue;
      CXmlObjectBase* const object = &**place;
      if (dynamic_cast<CTownOfA*>(object) != nullptr) return "Town of a";
      if (dynamic_cast<CTownOfB*>(object) != nullptr) return "Town of b";
      if (dynamic_cast<CHill*>(object) != nullptr) return "Hill";
      return "Place";
    }
    return "none";
  }

 private:
  static const CMember s_members[];
  static CClassBinding s_binding;

  CObjectHandle m_aThenB;
  CObjectHandle m_bThenA;
  CObjectHandle m_own;
};

const CMember CTrip::s_members[] = {
    ObjectElement("aThenB", kB, Optional, &CTrip::m_aThenB, &NewObject<CPlace>).ByType(&AThenB),
    ObjectElement("bThenA", kB, Optional, &CTrip::m_bThenA, &NewObject<CPlace>).ByType(&BThenA),
    ObjectElement("own", kB, Optional, &CTrip::m_own, &NewObject<CPlace>),
};

CClassBinding CTrip::s_binding({"Trip", kB, "trip", &NewObject<CTrip>}, s_members);

// A document of urn:b with one element in it, with that default namespace; null for none.
std::string Document(const std::string& root, const char* defaultUri, const std::string& element,
                     const std::string& type, const std::string& text) {
  const std::string declared =
      defaultUri == nullptr ? "" : " xmlns='" + std::string(defaultUri) + "'";
  return "<b:" + root + declared +
         " xmlns:a='urn:a' xmlns:b='urn:b' xmlns:xs='http://www.w3.org/2001/XMLSchema'"
         " xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance'><b:" +
         element + " xsi:type='" + type + "'>" + text + "</b:" + element + "></b:" + root + ">";
}

std::string Refusal(CBoundClass& object, const std::string& document) {
  return qztest::RefusalOf([&] { object.FromXml(document.c_str()); });
}

std::string Unsuitable(const std::string& type, const std::string& element) {
  return "The type [" + type + "] that xsi:type names cannot stand in the element [" + element +
         "].";
}

enum class Verdict { kTaken, kInvalid, kNoType };
using V = Verdict;

struct SimpleCase {
  const char* defaultUri;
  const char* element;
  const char* type;
  const char* text;
  Verdict verdict;
};

template <std::size_t count>
void Expect(const SimpleCase (&cases)[count]) {
  for (const SimpleCase& c : cases) {
    const std::string type = c.type;
    const std::string name = type.substr(type.find(':') + 1);
    const std::string expected =
        c.verdict == V::kTaken ? ""
        : c.verdict == V::kNoType
            ? Unsuitable(name, c.element)
            : "Invalid Value for " + std::string(c.element) + " [" + c.text + "].";
    CLevels levels;
    EXPECT_EQ(expected, Refusal(levels, Document("levels", c.defaultUri, c.element, type, c.text)))
        << (c.defaultUri == nullptr ? "none" : c.defaultUri) << " " << c.element << " " << type
        << " " << c.text;
  }
}

constexpr char kXs[] = "http://www.w3.org/2001/XMLSchema";

TEST(TypeOfElement, TheDefaultNamespaceGoesBeforeThatOfTheElementWhateverTheOrderOfTheRows) {
  Expect({
      {kA, "aThenB", "Low", "10", V::kTaken},
      {kA, "aThenB", "Low", "15", V::kInvalid},
      {kA, "bThenA", "Low", "10", V::kTaken},
      {kA, "bThenA", "Low", "15", V::kInvalid},
      {kB, "aThenB", "Low", "20", V::kTaken},
      {kB, "aThenB", "Low", "25", V::kInvalid},
      {kB, "bThenA", "Low", "20", V::kTaken},
      {kB, "bThenA", "Low", "25", V::kInvalid},
  });
}

TEST(TypeOfElement, TheNamespaceOfTheElementCountsWhereTheDefaultOneHasNoSuchType) {
  Expect({
      {kA, "onlyB", "Low", "20", V::kTaken},
      {kA, "onlyB", "Low", "25", V::kInvalid},
      {kA, "aThenB", "Level", "100", V::kTaken},
      {"urn:c", "aThenB", "Low", "20", V::kTaken},
      {"urn:c", "aThenB", "Low", "25", V::kInvalid},
      {nullptr, "aThenB", "Low", "20", V::kTaken},
      {nullptr, "aThenB", "Low", "25", V::kInvalid},
      {kXs, "bThenA", "Low", "20", V::kTaken},
      {kA, "aThenB", "Nothing", "5", V::kNoType},
  });
}

TEST(TypeOfElement, WithoutADefaultNamespaceTheTypeIsFirstOneOfNone) {
  Expect({
      {nullptr, "none", "Low", "5", V::kTaken},
      {nullptr, "none", "Low", "7", V::kInvalid},
      {kB, "none", "Low", "7", V::kTaken},
      {kB, "none", "Low", "25", V::kInvalid},
      {kA, "none", "Low", "7", V::kTaken},
  });
}

TEST(TypeOfElement, APrefixNamesOneNamespace) {
  Expect({
      {kB, "aThenB", "a:Low", "15", V::kInvalid},
      {kB, "bThenA", "a:Low", "15", V::kInvalid},
      {kA, "aThenB", "b:Low", "15", V::kTaken},
      {kA, "bThenA", "b:Low", "25", V::kInvalid},
      {kB, "onlyB", "a:Low", "5", V::kNoType},
      // One that is not declared stands for the element's.
      {kA, "aThenB", "c:Low", "15", V::kTaken},
      {kA, "aThenB", "c:Low", "25", V::kInvalid},
  });
}

TEST(TypeOfElement, BuiltInTypesAreThoseOfTheNamespaceOfXmlSchema) {
  Expect({
      {kXs, "number", "byte", "100", V::kTaken},
      {kXs, "number", "byte", "200", V::kInvalid},
      {kB, "number", "byte", "30", V::kTaken},
      {kB, "number", "byte", "100", V::kInvalid},
      {nullptr, "number", "byte", "100", V::kInvalid},
      {kB, "number", "xs:byte", "100", V::kTaken},
      {kB, "number", "string", "30", V::kTaken},
      // The type that is named is known, and no other one is meant.
      {kXs, "number", "string", "30", V::kNoType},
  });
}

TEST(TypeOfElement, WhereOnlyTheOwnTypeMayStandTheOtherOnesAreKnownAndRefused) {
  Expect({
      {kA, "own", "Level", "50", V::kTaken},
      {kB, "own", "Level", "50", V::kTaken},
      {kA, "own", "Low", "5", V::kNoType},
      {kB, "own", "Low", "5", V::kNoType},
      {kB, "ownNumber", "xs:int", "5", V::kTaken},
      {kXs, "ownNumber", "int", "5", V::kTaken},
      {kB, "ownNumber", "xs:byte", "5", V::kNoType},
      {kB, "ownNumber", "Low", "5", V::kNoType},
  });
}

TEST(TypeOfElement, AnObjectIsOfTheClassThatTheDefaultNamespaceHas) {
  const struct {
    const char* defaultUri;
    const char* element;
    const char* type;
    const char* madeClass;
  } cases[] = {
      {kA, "aThenB", "Town", "Town of a"},
      {kA, "bThenA", "Town", "Town of a"},
      {kB, "aThenB", "Town", "Town of b"},
      {kB, "bThenA", "Town", "Town of b"},
      {nullptr, "aThenB", "Town", "Town of b"},
      {"urn:c", "bThenA", "Town", "Town of b"},
      {kA, "aThenB", "Place", "Place"},
      {kA, "bThenA", "Hill", "Hill"},
      {kB, "aThenB", "a:Town", "Town of a"},
      {kB, "bThenA", "a:Town", "Town of a"},
      {kA, "aThenB", "b:Town", "Town of b"},
      {kA, "bThenA", "c:Town", "Town of b"},
      {kA, "own", "Place", "Place"},
      {nullptr, "own", "Place", "Place"},
  };
  for (const auto& c : cases) {
    CTrip trip;
    EXPECT_EQ("", Refusal(trip, Document("trip", c.defaultUri, c.element, c.type, ""))) << c.type;
    EXPECT_EQ(c.madeClass, trip.GetPlaceClass()) << c.element << " " << c.type;
  }
}

// --- What is no qualified name. Source: Namespaces in XML 1.0, section 4, productions 7 to 9.

constexpr const char* kNoNames[] = {
    "",       " ",    ":",       "b:",        ":Low",   ":Place",  "b::Low", "b :Low",
    "b: Low", "Lo w", "b:Low:x", "b:b:Place", "1b:Low", "-:Place", "b:1Low", "b:Low b:Low",
};

std::string Trimmed(const std::string& text) { return text == " " ? "" : text; }

TEST(TypeOfElement, WhatIsNoQualifiedNameNamesNoTypeOfAValue) {
  for (const char* const type : kNoNames) {
    for (const char* const defaultUri : {kA, kB, static_cast<const char*>(nullptr)}) {
      CLevels levels;
      EXPECT_EQ(Unsuitable(Trimmed(type), "aThenB"),
                Refusal(levels, Document("levels", defaultUri, "aThenB", type, "5")));
    }
  }
}

TEST(TypeOfElement, WhatIsNoQualifiedNameNamesNoClass) {
  for (const char* const type : kNoNames) {
    CTrip trip;
    EXPECT_EQ(
        "Failed read all the elements held within the element [trip]. The unexpected element "
        "[aThenB] remains un processed",
        Refusal(trip, Document("trip", kB, "aThenB", type, "")))
        << type;
    EXPECT_EQ(Unsuitable(Trimmed(type), "own"),
              Refusal(trip, Document("trip", kB, "own", type, "")))
        << type;
  }
}

TEST(TypeOfElement, WhiteSpaceAroundANameIsNoneOfIt) {
  Expect({{kA, "aThenB", "b:Low", "20", V::kTaken}});
  for (const char* const type : {" b:Low", "b:Low\n", "\t b:Low \r\n"}) {
    CLevels levels;
    EXPECT_EQ("", Refusal(levels, Document("levels", kA, "aThenB", type, "20"))) << type;
  }
}

// What the schema machinery has beside it is no xsi:type.
TEST(TypeOfElement, AnAttributeOfThatNameInAnotherNamespaceIsNone) {
  CXmlDocument document;
  document.LoadXml(
      "<b:place xmlns:b='urn:b' xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance' type='Town'"
      " b:type='b:Town' xsi:schemaLocation='urn:b b.xsd'/>");
  const CObjectHandle place = AThenB(document.GetDocumentElement());
  EXPECT_NE(nullptr, dynamic_cast<CPlace*>(&*place));
  EXPECT_EQ(nullptr, dynamic_cast<CTownOfB*>(&*place));
}

}  // namespace
}  // namespace QzXmlLib16
