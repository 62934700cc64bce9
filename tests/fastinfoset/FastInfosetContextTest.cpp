#include "qzxml/fastinfoset/FastInfosetContext.h"
#include "qzxml/serialization/SerializationContext.h"
#include "tests/support/QzTest.h"

namespace QzXmlLib16 {
namespace {

using Encoding = CFastInfosetContext::EncodedCharacterString;
using TypeAndIndex = std::pair<std::uint32_t, std::uint32_t>;

TypeAndIndex EncodingOf(const CFastInfosetContext& context, int itemType) {
  const Encoding encoding = context.GetEncoding(static_cast<ItemType>(itemType));
  return {encoding.m_dwType, encoding.m_dwIndex};
}

TEST(FastInfosetContext, BeginsWithTextForEveryKindAndValuesBelowSixBytesInTheTables) {
  const CFastInfosetContext context;
  for (int type = 0; type < 29; ++type) EXPECT_EQ(0u, EncodingOf(context, type).first) << type;
  EXPECT_EQ(0, context.GetDefaultStringEncoding());
  EXPECT_EQ(6u, context.GetAttributeMaxAddLength());
  EXPECT_EQ(6u, context.GetElementMaxAddLength());
  EXPECT_FALSE(context.GetUseGeneratedVocabulary());
  EXPECT_EQ("", context.GetExternalVocabularyURI());
  EXPECT_EQ(1u, context.GetVocabulary()->GetPrefixNamesTable().m_table.size());
}

TEST(FastInfosetContext, KeepsWhatIsSet) {
  CFastInfosetContext context;
  context.SetAttributeMaxAddLength(0);
  context.SetElementMaxAddLength(0xFFFFFFFF);
  context.SetUseGeneratedVocabulary(true);
  context.SetExternalVocabularyURI("urn:v");
  context.SetEncoding(ItemType_string, Encoding(1, 2));
  context.GetVocabulary()->AddLocalName("a");
  EXPECT_EQ(0u, context.GetAttributeMaxAddLength());
  EXPECT_EQ(0xFFFFFFFFu, context.GetElementMaxAddLength());
  EXPECT_TRUE(context.GetUseGeneratedVocabulary());
  EXPECT_EQ("urn:v", context.GetExternalVocabularyURI());
  EXPECT_EQ(TypeAndIndex(1, 2), EncodingOf(context, ItemType_string));

  CFastInfosetContext copy(context);
  copy.GetVocabulary()->AddLocalName("b");
  EXPECT_EQ("urn:v", copy.GetExternalVocabularyURI());
  EXPECT_EQ(1u, context.GetVocabulary()->GetLocalNamesTable().m_table.size());
  copy.SetExternalVocabularyURI(nullptr);
  EXPECT_EQ("", copy.GetExternalVocabularyURI());
  EXPECT_EQ("urn:v", context.GetExternalVocabularyURI());
  context = copy;
  EXPECT_EQ(2u, context.GetVocabulary()->GetLocalNamesTable().m_table.size());
}

TEST(FastInfosetContext, SuggestsAnEncodingForEveryKindButText) {
  CFastInfosetContext context;
  // What is not suggested stays.
  for (int type = 0; type < 29; ++type) {
    context.SetEncoding(static_cast<ItemType>(type), Encoding(7, static_cast<std::uint32_t>(type)));
  }
  context.SetSuggestedValues();
  const TypeAndIndex expected[29] = {
      {7, 0},                    // none
      {2, 1},  {2, 2},           // hexBinary, base64Binary
      {2, 3},  {2, 3},           // i1, i2
      {2, 4},  {2, 5},           // i4, i8
      {2, 3},  {2, 4},           // ui1, ui2
      {2, 5},  {2, 5},           // ui4, ui8
      {2, 7},  {2, 8},           // r4, r8
      {0, 0},                    // duration
      {1, 2},  {1, 2},           // yearMonth, monthDay
      {1, 2},  {1, 2},  {1, 2},  // year, month, day
      {1, 2},  {1, 2},  {1, 2},  // date, datetime, time
      {7, 22}, {7, 23},          // char, string
      {2, 6},                    // boolean
      {1, 1},  {1, 1},           // decimal, integer
      {7, 27}, {7, 28},          // objects, collections
  };
  for (int type = 0; type < 29; ++type) {
    EXPECT_EQ(expected[type], EncodingOf(context, type)) << type;
  }
}

TEST(FastInfosetContext, ANumberThatIsNoKindAssertsAndIsText) {
  CFastInfosetContext context;
  for (const int type : {-1, 29}) {
    EXPECT_QZ_ASSERT("itemType >= 0 && itemType < 29",
                     context.SetEncoding(static_cast<ItemType>(type), Encoding(1, 1)));
    EXPECT_QZ_ASSERT("itemType >= 0 && itemType < 29",
                     context.GetEncoding(static_cast<ItemType>(type)));
#if !defined(QZXML_ASSERTIONS)
    context.SetEncoding(static_cast<ItemType>(type), Encoding(1, 1));
    EXPECT_EQ(TypeAndIndex(0, 0), EncodingOf(context, type));
#endif
  }
}

TEST(FastInfosetContext, ASerializationContextMakesItOnceAndSharesItWithCopies) {
  const CSerializationContext context;
  CFastInfosetContext& options = context.GetFIContext();
  EXPECT_EQ(&options, &context.GetFIContext());
  options.SetElementMaxAddLength(9);
  const CSerializationContext copy(context);
  EXPECT_EQ(&options, &copy.GetFIContext());
  CSerializationContext assigned;
  EXPECT_EQ(6u, assigned.GetFIContext().GetElementMaxAddLength());
  assigned = context;
  EXPECT_EQ(&options, &assigned.GetFIContext());
}

}  // namespace
}  // namespace QzXmlLib16
