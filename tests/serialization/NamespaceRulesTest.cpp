#include "qzxml/serialization/NamespaceRules.h"
#include "qzxml/serialization/SerializationContext.h"
#include "qzxml/xml/XmlDocument.h"
#include "tests/serialization/Note.h"
#include "tests/support/QzTest.h"

namespace QzXmlLib16 {
namespace {

using qztest::CNote;

struct RestrictionCase {
  const char* namespaceUri;
  const char* restrictions;
  const char* targetNamespace;
  bool meets;
};

// Four forms by what an XML Schema wildcard may say, and what follows from looking at the first
// token of a list alone.
const RestrictionCase kRestrictions[] = {
    // ##any: whatever there is, the empty namespace included.
    {"", "##any", "", true},
    {"", "##any", "urn:t", true},
    {"urn:t", "##any", "urn:t", true},
    {"urn:x", "##any", "", true},
    // ##other: anything but the target namespace, the empty one included.
    {"urn:x", "##other", "urn:t", true},
    {"", "##other", "urn:t", true},
    {"urn:t", "##other", "urn:t", false},
    {"", "##other", "", false},
    {"urn:x", "##other", "", true},
    // ##local: the empty namespace alone.
    {"", "##local", "urn:t", true},
    {"", "##local", "", true},
    {"urn:t", "##local", "urn:t", false},
    {"##local", "##local", "", false},
    // ##targetNamespace: that one alone.
    {"urn:t", "##targetNamespace", "urn:t", true},
    {"", "##targetNamespace", "", true},
    {"", "##targetNamespace", "urn:t", false},
    {"urn:x", "##targetNamespace", "urn:t", false},
    // One URI: that one, and the empty namespace.
    {"urn:x", "urn:x", "urn:t", true},
    {"", "urn:x", "urn:t", true},
    {"urn:t", "urn:x", "urn:t", false},
    {"urn:x:y", "urn:x", "", false},
    {"urn", "urn:x", "", false},
    {"URN:X", "urn:x", "", false},
    // No restriction at all, and texts that are nearly a token.
    {"", "", "", true},
    {"urn:x", "", "urn:x", false},
    {"urn:x", "##Any", "", false},
    {"##Any", "##Any", "", true},
    {"urn:x", "##anything", "", false},
    {"urn:x", "#any", "", false},
    {"urn:x", "##any\turn:y", "", false},
    // Lists: the first token decides where it passes.
    {"urn:x", "##any urn:y", "", true},
    {"", "##any urn:y", "", true},
    {"urn:x", "##other urn:y", "urn:t", true},
    {"urn:t", "##targetNamespace urn:y", "urn:t", true},
    {"", "##local urn:y", "", true},
    // Lists: what stands behind the first token is never seen.
    {"urn:y", "##local urn:y", "", false},
    {"urn:x", "urn:x urn:y", "", false},
    {"urn:y", "urn:x urn:y", "", false},
    {"urn:x", "urn:y ##any", "", false},
    {"urn:t", "##local ##targetNamespace", "urn:t", false},
    {"urn:t", "##other urn:t", "urn:t", false},
    // Lists: the empty namespace and the text of the whole list pass on the second look.
    {"", "urn:x urn:y", "urn:t", true},
    {"", "##targetNamespace urn:y", "urn:t", true},
    {"", "##other urn:y", "", true},
    {"urn:x urn:y", "urn:x urn:y", "", true},
    {"##local urn:y", "##local urn:y", "", true},
    // Blanks at the ends make a list too.
    {"urn:x", " urn:x", "", false},
    {" urn:x", " urn:x", "", true},
    {"urn:x", " ##any", "", false},
    {"urn:x", "##any ", "", true},
    {"urn:x", "urn:x ", "", false},
    {"urn:x", " ", "", false},
    {" ", " ", "", true},
    {"", " ", "urn:t", true},
};

std::ostream& operator<<(std::ostream& out, const RestrictionCase& c) {
  return out << "[" << c.namespaceUri << "] in [" << c.restrictions << "] with ["
             << c.targetNamespace << "]";
}

TEST(NamespaceRules, OneAnswerForEachWildcardInEveryEntry) {
  const CNote note;
  for (const RestrictionCase& c : kRestrictions) {
    EXPECT_EQ(c.meets, IsNamespaceInRestrictions(c.namespaceUri, c.restrictions, c.targetNamespace))
        << c;
    EXPECT_EQ(c.meets, note.IsNamespaceValid(c.namespaceUri, c.restrictions, c.targetNamespace))
        << c;
    if (c.meets) {
      EXPECT_NO_THROW(
          CheckNamespaceAgainstRestrictions(c.namespaceUri, c.restrictions, c.targetNamespace))
          << c;
      EXPECT_NO_THROW(note.TestNamespace(c.namespaceUri, c.restrictions, c.targetNamespace)) << c;
      continue;
    }
    const std::string text = "Invalid namespace [" + std::string(c.namespaceUri) +
                             "]. The namespace must be one of [" + c.restrictions +
                             "] where the target namespace is [" + c.targetNamespace + "].";
    EXPECT_QZ_THROW_FULL(
        CQzInvalidNamespaceException, text, "",
        CheckNamespaceAgainstRestrictions(c.namespaceUri, c.restrictions, c.targetNamespace));
    EXPECT_QZ_THROW_FULL(CQzInvalidNamespaceException, text, "",
                         note.TestNamespace(c.namespaceUri, c.restrictions, c.targetNamespace));
  }
}

TEST(NamespaceRules, TheTextOfARefusalNamesAllThree) {
  EXPECT_QZ_THROW_FULL(
      CQzInvalidNamespaceException,
      "Invalid namespace [urn:t]. The namespace must be one of [##other] where the "
      "target namespace is [urn:t].",
      "", CheckNamespaceAgainstRestrictions("urn:t", "##other", "urn:t"));
}

TEST(NamespaceRules, AListThatNeverMatchesEndsWithNo) {
  std::string list = "##local";
  for (int i = 0; i < 10000; ++i) list += " urn:" + std::to_string(i);
  EXPECT_FALSE(IsNamespaceInRestrictions("urn:5000", list, ""));
  EXPECT_FALSE(IsNamespaceInRestrictions("urn:absent", list, ""));
  EXPECT_TRUE(IsNamespaceInRestrictions(list, list, ""));
}

TEST(NamespaceRules, AVeryLongNamespaceIsNamedWhole) {
  const std::string uri = "urn:" + std::string(100000, 'x');
  EXPECT_QZ_THROW(CQzInvalidNamespaceException,
                  "Invalid namespace [" + uri +
                      "]. The namespace must be one of [##local] where the target namespace is [].",
                  CheckNamespaceAgainstRestrictions(uri, "##local", ""));
}

TEST(NamespaceRules, TheMembersTakeNullForTheEmptyText) {
  const CNote note;
  EXPECT_TRUE(note.IsNamespaceValid(nullptr, "##local", nullptr));
  EXPECT_TRUE(note.IsNamespaceValid(nullptr, nullptr, nullptr));
  EXPECT_FALSE(note.IsNamespaceValid("urn:x", nullptr, nullptr));
  EXPECT_QZ_THROW(CQzInvalidNamespaceException,
                  "Invalid namespace []. The namespace must be one of [##other] where the target "
                  "namespace is [].",
                  note.TestNamespace(nullptr, "##other", nullptr));
}

// --- Names of elements

constexpr char kNamed[] = "<p:item xmlns:p='urn:items'/>";

bool BothSay(const CSerializationContext& context, const char* name, const char* uri) {
  CXmlDocument document(context);
  document.LoadXml(kNamed);
  const CXmlElement* const element = document.GetDocumentElement();
  const bool answer = IsElementNameEqual(context, element, name, uri);
  EXPECT_EQ(answer, CNote().DoesElementNameMatch(context, element, name, uri)) << name << uri;
  return answer;
}

TEST(NamespaceRules, AnElementMatchesByNameAndNamespace) {
  const CSerializationContext context;
  EXPECT_TRUE(BothSay(context, "item", "urn:items"));
  EXPECT_FALSE(BothSay(context, "item", ""));
  EXPECT_FALSE(BothSay(context, "item", "urn:Items"));
  EXPECT_FALSE(BothSay(context, "Item", "urn:items"));
  EXPECT_FALSE(BothSay(context, "p:item", "urn:items"));
  EXPECT_FALSE(BothSay(context, "", ""));
}

TEST(NamespaceRules, AnElementMatchesByNameAloneWhereNamespacesAreIgnored) {
  CSerializationContext context;
  context.SetIgnoreNamespaces(true);
  EXPECT_TRUE(BothSay(context, "item", "urn:items"));
  EXPECT_TRUE(BothSay(context, "item", "urn:other"));
  EXPECT_FALSE(BothSay(context, "items", "urn:items"));
}

TEST(NamespaceRules, AnElementMatchesByItsWholeNameWithoutNamespaceProcessing) {
  CSerializationContext context;
  context.SetSchemaType(SchemaType_NoNamespaces);
  context.SetIgnoreNamespaces(false);
  EXPECT_TRUE(BothSay(context, "p:item", "urn:other"));
  EXPECT_FALSE(BothSay(context, "item", "urn:items"));
}

TEST(NamespaceRules, NoElementMatchesNothing) {
  CSerializationContext context;
  EXPECT_FALSE(IsElementNameEqual(context, nullptr, "", ""));
  context.SetSchemaType(SchemaType_NoNamespaces);
  EXPECT_FALSE(IsElementNameEqual(context, nullptr, "", ""));
  EXPECT_FALSE(CNote().DoesElementNameMatch(context, nullptr, nullptr, nullptr));
}

}  // namespace
}  // namespace QzXmlLib16
