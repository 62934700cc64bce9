#pragma once

#include <string>
#include <vector>

#include "qzxml/collections/XmlCollection.h"
#include "tests/support/GeneratedTable.h"

namespace qztest {

// Some children, and what comes of them.
struct Reading {
  const char* children;
  CSerializationContext context;
  std::string outcome;
};

// A class on trial: what an object of it makes of the children of an element <r>, and how it writes
// that. The root declares the prefixes xsi and o, the latter for "urn:o".
//
//   CClassTrial trial(tables);
//   EXPECT_EQ("at end, <r><a>1</a></r>", trial.Read("<a>1</a>"));
//   EXPECT_EQ("at b, <a>1</a>", CClassTrial(tablesOfAGroup).Read("<a>1</a><b/>"));
class CClassTrial {
 public:
  explicit CClassTrial(const CTables& tables) : m_tables(tables) {}

  // Attributes for the start tag of <r>, with a blank in front.
  std::string rootAttributes;

  // Reads into an object just made. Where the walk stopped ("end" behind the last child), and the
  // object as it is written now; or the class and the full text of the failure.
  std::string Read(const std::string& children, const CSerializationContext& context = {},
                   bool optionalChoice = false);

  // The object as it is written, or the class and the full text of the failure.
  std::string Write(const CSerializationContext& context = {}) const;

  void Expect(const std::vector<Reading>& readings);

  CTableObject& object() { return *m_object; }
  void Renew() { m_object = CSmartPtr<CTableObject>(new CTableObject(m_tables)); }

 private:
  const CTables& m_tables;
  CSmartPtr<CTableObject> m_object;
};

// The failures that such a trial meets, as it tells them.
std::string LeftOver(const char* element);            // "CQzException: Failed read all ..."
std::string MandatoryIsMissing(const char* element);  // of an xs:all
std::string NothingChosen(const char* parent, const char* path);  // of an xs:choice

// A text of a class, as an attribute without a namespace.
QzXmlLib16Data::CAttributeInfo* TextAttribute(const char* name, int index, bool optional = true);

// Objects without a tag in a row: one for each run of elements that such an object takes.
class CGroupCol : public QzXmlLib16::CXmlCollection {
 public:
  CGroupCol(const CTables& tables, int minOccurs, int maxOccurs)
      : CXmlCollection("g", "", minOccurs, maxOccurs), m_tables(tables) {}
  CTableObject* Add();

 protected:
  void ToXml_Int(QzXmlLib16::CXmlWriter* writer, bool, const char* uri,
                 const CSerializationContext& context, bool) const override;
  CXmlElement* FromXml_Int(CXmlElement* parent, CXmlElement* cursor,
                           const CSerializationContext& context, bool) override;

 private:
  const CTables& m_tables;
};

// --- Collections for properties

Unset::Make Texts(const char* name, int minOccurs, int maxOccurs, const char* uri = "");
Unset::Make Objects(const CTables& tables, const char* name, int minOccurs, int maxOccurs);
Unset::Make Groups(const CTables& tables, int minOccurs, int maxOccurs);
Unset::Make Elements(const char* restriction, int minOccurs, int maxOccurs);
Unset::Make HeldObject(const CTables& tables, const char* name);
Unset::Make HeldElement(const char* name, const char* restriction);

}  // namespace qztest
