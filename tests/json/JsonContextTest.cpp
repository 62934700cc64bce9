#include <array>
#include <atomic>
#include <thread>
#include <type_traits>

#include "qzxml/json/JsonContext.h"
#include "qzxml/serialization/SerializationContext.h"
#include "tests/support/QzTest.h"

namespace QzXmlLib16 {
namespace {

static_assert(std::is_same_v<decltype(std::declval<const CJsonContext&>().GetRootElementName()),
                             std::string>);
static_assert(std::has_virtual_destructor_v<CJsonContext>);

TEST(JsonContext, BeginsWithTheDefaults) {
  const CJsonContext context;
  EXPECT_EQ(JsonRoundTrip_Full, context.GetSupportRoundtrip());
  EXPECT_EQ("", context.GetRootElementName());
  EXPECT_TRUE(context.GetAllowComments());
}

TEST(JsonContext, TheModesHaveFixedNumbers) {
  EXPECT_EQ(0, JsonRoundTrip_None);
  EXPECT_EQ(1, JsonRoundTrip_Marked);
  EXPECT_EQ(2, JsonRoundTrip_Full);
  EXPECT_EQ(4u, sizeof(JsonRoundTrip));
}

TEST(JsonContext, OptionsAreTakenAsGiven) {
  CJsonContext context;
  for (const JsonRoundTrip mode : {JsonRoundTrip_None, JsonRoundTrip_Marked, JsonRoundTrip_Full}) {
    context.SetSupportRoundtrip(mode);
    EXPECT_EQ(mode, context.GetSupportRoundtrip());
  }
  context.SetRootElementName("no name < at all");
  EXPECT_EQ("no name < at all", context.GetRootElementName());
  context.SetRootElementName(nullptr);
  EXPECT_EQ("", context.GetRootElementName());
}

TEST(JsonContext, TheOneNameForCommentsGetsAndSets) {
  CJsonContext context;
  context.GetAllowComments(false);
  EXPECT_FALSE(context.GetAllowComments());
  context.GetAllowComments(true);
  EXPECT_TRUE(context.GetAllowComments());
}

TEST(JsonContext, ACopyTakesEveryOptionAndIsItsOwn) {
  CJsonContext source;
  source.SetSupportRoundtrip(JsonRoundTrip_Marked);
  source.SetRootElementName("r");
  source.GetAllowComments(false);
  const CJsonContext copy(source);
  CJsonContext assigned;
  assigned = source;
  source = CJsonContext();
  for (const CJsonContext& context : {copy, assigned}) {
    EXPECT_EQ(JsonRoundTrip_Marked, context.GetSupportRoundtrip());
    EXPECT_EQ("r", context.GetRootElementName());
    EXPECT_FALSE(context.GetAllowComments());
  }
}

// --- The options of JSON in a CSerializationContext

TEST(JsonContext, AContextMakesItsOptionsOnTheFirstCallAndKeepsThem) {
  const CSerializationContext context;
  CJsonContext& options = context.GetJsonContext();
  EXPECT_EQ(JsonRoundTrip_Full, options.GetSupportRoundtrip());
  options.SetRootElementName("r");
  EXPECT_EQ(&options, &context.GetJsonContext());
  EXPECT_EQ("r", context.GetJsonContext().GetRootElementName());
}

TEST(JsonContext, CopiesOfAContextShareItsOptionsOnceTheyAreThere) {
  CSerializationContext source;
  const CSerializationContext early(source);
  CJsonContext& options = source.GetJsonContext();
  const CSerializationContext copy(source);
  CSerializationContext assigned;
  EXPECT_NE(&options, &assigned.GetJsonContext());
  assigned = source;
  EXPECT_NE(&options, &early.GetJsonContext());
  EXPECT_EQ(&options, &copy.GetJsonContext());
  EXPECT_EQ(&options, &assigned.GetJsonContext());
  assigned = early;
  EXPECT_EQ(&early.GetJsonContext(), &assigned.GetJsonContext());
}

TEST(JsonContext, TheOptionsOutliveTheContextThatMadeThem) {
  CSerializationContext copy;
  {
    CSerializationContext source;
    source.GetJsonContext().SetRootElementName("r");
    copy = source;
  }
  EXPECT_EQ("r", copy.GetJsonContext().GetRootElementName());
}

TEST(JsonContext, AssigningAContextToItselfKeepsItsOptions) {
  CSerializationContext context;
  context.GetJsonContext().SetRootElementName("r");
  const CSerializationContext& same = context;
  context = same;
  EXPECT_EQ("r", context.GetJsonContext().GetRootElementName());
}

TEST(JsonContext, ThreadsThatAskAContextFirstGetTheSameOptions) {
  for (int round = 0; round < 50; ++round) {
    const CSerializationContext context;
    std::atomic<int> waiting{4};
    std::array<CJsonContext*, 4> seen{};
    std::array<std::thread, 4> threads;
    for (std::size_t i = 0; i < threads.size(); ++i) {
      threads[i] = std::thread([&, i] {
        --waiting;
        while (waiting > 0) std::this_thread::yield();
        seen[i] = &context.GetJsonContext();
      });
    }
    for (std::thread& thread : threads) thread.join();
    for (const CJsonContext* options : seen) EXPECT_EQ(seen[0], options);
    EXPECT_EQ(seen[0], &context.GetJsonContext());
  }
}

}  // namespace
}  // namespace QzXmlLib16
