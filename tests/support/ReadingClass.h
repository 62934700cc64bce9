#pragma once

#include <initializer_list>
#include <string>

#include "qzxml/collections/Element.h"
#include "qzxml/serialization/AttributeInfo.h"
#include "qzxml/serialization/ElementInfoSeq.h"
#include "tests/support/MemberTrial.h"

// Classes put together member by member, and what comes of reading a document into one of their
// objects, in one line.
//
//   CReadingClass tables;
//   tables.AddPrim<CElementInfoSeqPrimMnd>("a").AddEnum<CElementInfoSeqEnumOpt>("e");
//   EXPECT_EQ("1 -", Read(tables, "<r><a>1</a></r>"));
namespace qztest {

// A class whose members are put in by kind and name, one property for each.
class CReadingClass : public CTables {
 public:
  using CTables::CTables;
  std::size_t propertyCount() const { return m_count; }

  template <typename Member>
  CReadingClass& AddPrim(const char* member, const char* memberUri = "") {
    PrimOptions options;
    options.uri = memberUri;
    return Put(Prim<Member>(member, Next(), options), Unset::Value);
  }
  template <typename Member>
  CReadingClass& AddEnum(const char* member) {
    return Put(Enum<Member>(member, Next()), Unset::Value);
  }
  template <typename Member>
  CReadingClass& AddTexts(int minOccurs, int maxOccurs) {
    return Put(new Member("c", "", Next()), Unset::Collection([=]() -> CXmlCollectionBase* {
                 return new CTextCol("c", "", minOccurs, maxOccurs);
               }));
  }
  template <typename Member>
  CReadingClass& AddOptional(const char* member, XmlElementType type, const CTables& of) {
    return Put(new Member(member, "", Next(), type, &MakeTableObject, of.id()), Unset::Object);
  }
  CReadingClass& AddMandatory(const char* member, XmlElementType type, const CTables& of,
                              bool requiresContent = false) {
    return Put(new QzXmlLib16Data::CElementInfoSeqClsMnd(member, "", Next(), type, &MakeTableObject,
                                                         of.id(), requiresContent),
               Unset::Held([&of, member] { return new CTableObject(of, member); }));
  }
  CReadingClass& AddAbstract(const char* member) {
    return Put(new QzXmlLib16Data::CElementInfoSeqAbsClsMnd(member, "", Next(), kReal,
                                                            &MakeTableObjectByType),
               Unset::Object);
  }
  CReadingClass& AddOpen(const char* member) {
    return Put(new QzXmlLib16Data::CElementInfoSeqUntpdMnd(member, "urn:n", Next(), "##any", ""),
               Unset::Held([] { return new QzXmlLib16::CElement("(none)"); }));
  }
  CReadingClass& AddAttribute(const char* member, bool optional = true) {
    return Put(new QzXmlLib16Data::CAttributeInfoPrimitive(
                   member, "", Next(), optional, QzXmlLib16::ItemType_string, nullptr,
                   QzXmlLib16::CWhitespaceUtils::WhitespaceRule_None,
                   QzXmlLib16::CPrimitiveRestrictions(), nullptr),
               Unset::Value);
  }
  CReadingClass& AddEnumAttribute(const char* member) {
    return Put(new QzXmlLib16Data::CAttributeInfoEnum(member, "", Next(), true, &ColourToString,
                                                      &StringToColour, nullptr),
               Unset::Value);
  }

 private:
  int Next() const { return static_cast<int>(m_count); }
  template <typename Info>
  CReadingClass& Put(Info* info, Unset::Make unset) {
    Add(info, unset);
    ++m_count;
    return *this;
  }

  std::size_t m_count = 0;
};

// A class without a tag; attributes of the element around it are not its business.
class CReadingGroup : public CReadingClass {
 public:
  explicit CReadingGroup(XmlElementGroupType group = QzXmlLib16Data::XmlElementGroupType_Sequence)
      : CReadingClass(group, kPseudo) {
    failIfAttributeUnknown = false;
  }
};

// Reads a document into a new object of the class; its root <r> also declares xsi, and o for
// "urn:o". Its properties in their order: a text, "-" while unset, a class by its first property in
// braces, "(null)", open content by its name, a collection of texts by its items in brackets. Or
// the failure as Outcome gives it.
std::string Read(const CReadingClass& tables, const std::string& document,
                 const CSerializationContext& context);
std::string Read(const CReadingClass& tables, const std::string& document, Flag flag = kNoFlag);

// A document, and what comes of it with a flag clear and set.
struct Column {
  const char* document;
  std::string clear;
  std::string set;
};
void ExpectColumns(const CReadingClass& tables, Flag flag, std::initializer_list<Column> columns);

}  // namespace qztest
