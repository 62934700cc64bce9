// The plan of a class reads what the walk over its tables reads: the same documents, and the same
// failures with the same objects behind them. Documents come from good ones with one thing changed
// at each place.
#include <cstddef>
#include <string>
#include <vector>

#include "qzxml/binding/ReadPlan.h"
#include "qzxml/serialization/SerializationContext.h"
#include "qzxml/xml/XmlDocument.h"
#include "tests/binding/ChangedDocuments.h"
#include "tests/binding/Kinds.h"
#include "tests/binding/Shop.h"
#include "tests/support/QzTest.h"

using namespace QzXmlLib16;
using namespace qztest;

namespace {

class CByWalk {
 public:
  CByWalk() { detail::ReadByPlans(false); }
  ~CByWalk() { detail::ReadByPlans(true); }
  CByWalk(const CByWalk&) = delete;
  CByWalk& operator=(const CByWalk&) = delete;
};

std::vector<CSerializationContext> Contexts() {
  std::vector<CSerializationContext> contexts(7);
  contexts[1].SetIgnoreUnknownElements(true);
  contexts[2].SetIgnoreMissingMandatoryElements(true);
  contexts[3].SetIgnoreUnknownAttributes(true);
  contexts[4].SetIgnoreNamespaces(true);
  contexts[5].SetIgnoreInvalidCollectionCounts(true);
  contexts[6].SetIgnoreMissingChoice(true);
  return contexts;
}

// Each document in the ordinary context and in one of the others in turn.
void ExpectSameByPlanAndWalk(NewRoot newRoot, const std::string& good) {
  const std::vector<CSerializationContext> contexts = Contexts();
  CXmlDocument document;
  document.LoadXml(good.c_str());
  Node root = NodeOf(*document.GetDocumentElement());
  int count = 0;
  int failures = 0;
  ForEachChanged(root, root, [&](const std::string& text) {
    for (std::size_t i = 0; i < contexts.size(); ++i) {
      const bool isTried =
          i == 0 || static_cast<std::size_t>(count / kEvery) % contexts.size() == i;
      if (!isTried || count % kEvery != 0 || failures > 5) continue;
      const std::string byPlan = Outcome(newRoot, text, good, contexts[i]);
      const CByWalk byWalkNow;
      const std::string byWalk = Outcome(newRoot, text, good, contexts[i]);
      EXPECT_EQ(byPlan, byWalk) << text << "\n in context " << i;
      if (byPlan != byWalk) ++failures;
    }
    ++count;
  });
  EXPECT_GT(count, 100);
}

}  // namespace

TEST(ReadPlan, ReadsValuesOfEachKindAsTheWalkDoes) {
  ExpectSameByPlanAndWalk(&New<kinds::CKinds>, kinds::kDocument);
}

TEST(ReadPlan, ReadsMembersOfEachFormAsTheWalkDoes) {
  ExpectSameByPlanAndWalk(
      &New<shop::COrder>,
      "<order xmlns='urn:shop' id='7' currency='CHF' version='1.0' xmlns:x='urn:x' x:mark='m'"
      " xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance'>"
      "<customer><name>Ada</name></customer><note>n</note><card>With love</card>"
      "<item xsi:type='Book' price='12.5'><title>Sums</title></item>"
      "<item xsi:type='Disc' price='9'/><tag>a</tag><tag> b </tag><size>38</size>"
      "<colour>USD</colour><colour>EUR</colour><comment>ok</comment>"
      "<pick>true</pick><pack>false</pack><pick>false</pick><x:extra>more</x:extra></order>");
}

TEST(ReadPlan, ReadsChoicesTextsAndDerivedClassesAsTheWalkDoes) {
  ExpectSameByPlanAndWalk(&New<shop::CPayment>,
                          "<payment xmlns='urn:shop'><card>1</card></payment>");
  ExpectSameByPlanAndWalk(&New<shop::CWeight>, "<weight xmlns='urn:shop' unit='kg'>1.5</weight>");
  ExpectSameByPlanAndWalk(&New<shop::CBook>,
                          "<item xmlns='urn:shop' price='1'><title>Sums</title></item>");
  ExpectSameByPlanAndWalk(&New<shop::CDisc>, "<item xmlns='urn:shop' price='1'/>");
  ExpectSameByPlanAndWalk(&New<shop::CCustomer>,
                          "<customer xmlns='urn:shop'><name>A</name></customer>");
}

TEST(ReadPlan, StepsAsideInEveryContextThatChangesTheWalk) {
  EXPECT_TRUE(detail::CReadPlan::Serves(CSerializationContext()));
  const std::vector<CSerializationContext> contexts = Contexts();
  EXPECT_FALSE(detail::CReadPlan::Serves(contexts[1]));
  EXPECT_FALSE(detail::CReadPlan::Serves(contexts[2]));
  EXPECT_TRUE(detail::CReadPlan::Serves(contexts[3]));
  EXPECT_FALSE(detail::CReadPlan::Serves(contexts[4]));
  const CByWalk byWalk;
  EXPECT_FALSE(detail::CReadPlan::Serves(CSerializationContext()));
}
