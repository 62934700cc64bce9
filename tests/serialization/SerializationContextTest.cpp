#include <array>
#include <atomic>
#include <thread>
#include <type_traits>

#include "qzxml/collections/AttributeCol.h"
#include "qzxml/serialization/SerializationContext.h"
#include "tests/serialization/Note.h"
#include "tests/support/QzTest.h"

namespace QzXmlLib16 {
namespace {

constexpr char kBothIgnored[] =
    "The parser can only ignore additional elements, or ignore the fact that some required ones "
    "are "
    "missing, you can not ignore both\nSet IgnoreMissingMandatoryElements to false before setting "
    "IgnoreUnknownElements to true";

// Every flag that is a plain value.
struct Flag {
  const char* name;
  bool (CSerializationContext::*get)() const;
  void (CSerializationContext::*set)(bool);
  bool byDefault;
};

using C = CSerializationContext;

const Flag kFlags[] = {
    {"WriteTypeAttribute", &C::GetWriteTypeAttribute, &C::SetWriteTypeAttribute, true},
    {"IgnoreInvalidCollectionCounts", &C::GetIgnoreInvalidCollectionCounts,
     &C::SetIgnoreInvalidCollectionCounts, false},
    {"IgnoreMissingChoice", &C::GetIgnoreMissingChoice, &C::SetIgnoreMissingChoice, false},
    {"IgnoreMissingMandatoryElements", &C::GetIgnoreMissingMandatoryElements,
     &C::SetIgnoreMissingMandatoryElements, false},
    {"IgnoreUnknownElements", &C::GetIgnoreUnknownElements, &C::SetIgnoreUnknownElements, false},
    {"IgnoreUnknownAttributes", &C::GetIgnoreUnknownAttributes, &C::SetIgnoreUnknownAttributes,
     false},
    {"IgnoreNamespaces", &C::GetIgnoreNamespaces, &C::SetIgnoreNamespaces, false},
    {"NoOptionalAttributeDefaultOutput", &C::GetNoOptionalAttributeDefaultOutput,
     &C::SetNoOptionalAttributeDefaultOutput, false},
    {"WriteDefaultElementValues", &C::GetWriteDefaultElementValues,
     &C::SetWriteDefaultElementValues, false},
    {"StripCDATA", &C::GetStripCDATA, &C::SetStripCDATA, true},
};

TEST(SerializationContext, BeginsWithTheDefaults) {
  const CSerializationContext context;
  for (const Flag& flag : kFlags) EXPECT_EQ(flag.byDefault, (context.*flag.get)()) << flag.name;
  EXPECT_EQ("", context.GetDefaultNamespaceURI());
  EXPECT_TRUE(context.GetProcessingInstructions().empty());
  EXPECT_EQ("", context.GetInLineSchema());
  EXPECT_EQ("\t", context.GetIndentChars());
  EXPECT_EQ(SchemaType_Default, context.GetSchemaType());
  EXPECT_EQ(0, context.GetNamespaceAliases().GetNamespaceCount());
  EXPECT_EQ(0, context.GetAdditionalRootAttributes()->GetCount());
  EXPECT_EQ(1024u, context.GetMaxDepth());
  EXPECT_EQ(100u, context.GetMaxAmplification());
}

TEST(SerializationContext, AFlagIsSetAndClearedWithoutTheOthers) {
  for (const Flag& flag : kFlags) {
    CSerializationContext context;
    for (const bool value : {!flag.byDefault, !flag.byDefault, flag.byDefault}) {
      (context.*flag.set)(value);
      for (const Flag& other : kFlags) {
        const bool expected = &other == &flag ? value : other.byDefault;
        EXPECT_EQ(expected, (context.*other.get)()) << flag.name << " on " << other.name;
      }
    }
  }
}

TEST(SerializationContext, OtherOptionsAreTakenAsGiven) {
  CSerializationContext context;
  context.SetDefaultNamespaceURI("urn:a b<>\"&");
  EXPECT_EQ("urn:a b<>\"&", context.GetDefaultNamespaceURI());
  context.SetInLineSchema(" no schema at all");
  EXPECT_EQ(" no schema at all", context.GetInLineSchema());
  context.SetMaxDepth(0);
  EXPECT_EQ(0u, context.GetMaxDepth());
  context.SetMaxAmplification(4294967295u);
  EXPECT_EQ(4294967295u, context.GetMaxAmplification());
  context.GetProcessingInstructions().push_back("<?b?>");
  context.GetProcessingInstructions().push_back("<?a?>");
  const CSerializationContext& same = context;
  EXPECT_EQ((std::vector<std::string>{"<?b?>", "<?a?>"}), same.GetProcessingInstructions());
  context.GetNamespaceAliases().Add("o", "urn:orders");
  EXPECT_EQ("urn:orders", same.GetNamespaceAliases().GetNamespaceFromAlias("o"));
}

TEST(SerializationContext, NullIsTheEmptyText) {
  CSerializationContext context;
  context.SetDefaultNamespaceURI("urn:a");
  context.SetDefaultNamespaceURI(nullptr);
  EXPECT_EQ("", context.GetDefaultNamespaceURI());
  context.SetInLineSchema("a");
  context.SetInLineSchema(nullptr);
  EXPECT_EQ("", context.GetInLineSchema());
}

TEST(SerializationContext, IndentsWithBlanksAndTabs) {
  CSerializationContext context;
  for (const char* unit : {" \t", "  ", "\t\t\t", ""}) {
    context.SetIndentChars(unit);
    EXPECT_EQ(unit, context.GetIndentChars());
  }
  context.SetIndentChars(" ");
  context.SetIndentChars(nullptr);
  EXPECT_EQ("", context.GetIndentChars());
}

TEST(SerializationContext, IndentsWithNothingElseAndKeepsTheOldUnit) {
  CSerializationContext context;
  context.SetIndentChars("  ");
  for (const char* unit : {"a", " a", "\ta\t", "\n", "\r", " \v", "\xC2\xA0", "\\t"}) {
    EXPECT_QZ_THROW_FULL(CQzInvalidParamException,
                         "IndentChars can only contain Whitespace characters, i.e. \\t or spaces",
                         "", context.SetIndentChars(unit));
    EXPECT_EQ("  ", context.GetIndentChars()) << unit;
  }
}

TEST(SerializationContext, UnknownAndMissingElementsAreNotIgnoredTogether) {
  CSerializationContext context;
  context.SetIgnoreMissingMandatoryElements(true);
  EXPECT_QZ_THROW_FULL(CQzInvalidStateException, kBothIgnored, "",
                       context.SetIgnoreUnknownElements(true));
  EXPECT_FALSE(context.GetIgnoreUnknownElements());
  EXPECT_NO_THROW(context.SetIgnoreUnknownElements(false));
  EXPECT_NO_THROW(context.SetIgnoreMissingMandatoryElements(true));
  EXPECT_NO_THROW(context.SetIgnoreMissingMandatoryElements(false));

  EXPECT_NO_THROW(context.SetIgnoreUnknownElements(true));
  EXPECT_QZ_THROW_FULL(CQzInvalidStateException, kBothIgnored, "",
                       context.SetIgnoreMissingMandatoryElements(true));
  EXPECT_FALSE(context.GetIgnoreMissingMandatoryElements());
  EXPECT_TRUE(context.GetIgnoreUnknownElements());
  EXPECT_NO_THROW(context.SetIgnoreMissingMandatoryElements(false));
}

TEST(SerializationContext, WithoutNamespaceProcessingNamespacesAreIgnoredWhateverTheFlag) {
  CSerializationContext context;
  context.SetSchemaType(SchemaType_NoNamespaces);
  context.SetIgnoreNamespaces(false);
  EXPECT_TRUE(context.GetIgnoreNamespaces());
  EXPECT_EQ(SchemaType_NoNamespaces, context.GetSchemaType());
  context.SetSchemaType(static_cast<SchemaType>(1));
  EXPECT_FALSE(context.GetIgnoreNamespaces());
  EXPECT_EQ(1, context.GetSchemaType());
  context.SetIgnoreNamespaces(true);
  EXPECT_TRUE(context.GetIgnoreNamespaces());
}

// --- The default context

// A static of a program, built before main in an order that nobody knows.
struct EarlyUser {
  EarlyUser() : indent(CSerializationContext::GetDefaultContext().GetIndentChars()) {}
  std::string indent;
};
const EarlyUser g_earlyUser;

TEST(SerializationContext, TheDefaultContextIsThereForStaticObjects) {
  EXPECT_EQ("\t", g_earlyUser.indent);
}

TEST(SerializationContext, TheDefaultContextIsOneForAll) {
  CSerializationContext& context = CSerializationContext::GetDefaultContext();
  EXPECT_EQ(&context, &CSerializationContext::GetDefaultContext());
  for (const Flag& flag : kFlags) EXPECT_EQ(flag.byDefault, (context.*flag.get)()) << flag.name;

  qztest::CNote note;
  note.ToXml();
  EXPECT_EQ(&context, note.call.context);

  const CSerializationContext before = context;
  context.SetIndentChars("     ");
  EXPECT_EQ("     ", CSerializationContext::GetDefaultContext().GetIndentChars());
  note.lines = {"Milk"};
  EXPECT_EQ("<AA:note xmlns:AA=\"urn:notes\" to=\"\">\n     <AA:line>Milk</AA:line>\n</AA:note>\n",
            note.ToXml(false));
  context = before;
  EXPECT_EQ("\t", CSerializationContext::GetDefaultContext().GetIndentChars());
}

// --- Copies

CSerializationContext Filled() {
  CSerializationContext context;
  context.SetDefaultNamespaceURI("urn:default");
  context.SetInLineSchema("schema");
  context.SetIndentChars("   ");
  context.SetSchemaType(SchemaType_NoNamespaces);
  context.SetMaxDepth(7);
  context.SetMaxAmplification(8);
  context.GetProcessingInstructions().push_back("<?a?>");
  context.GetNamespaceAliases().Add("o", "urn:orders");
  context.GetAdditionalRootAttributes()->Add("lang", "en", "");
  return context;
}

void ExpectFilled(const CSerializationContext& context) {
  EXPECT_EQ("urn:default", context.GetDefaultNamespaceURI());
  EXPECT_EQ("schema", context.GetInLineSchema());
  EXPECT_EQ("   ", context.GetIndentChars());
  EXPECT_EQ(SchemaType_NoNamespaces, context.GetSchemaType());
  EXPECT_EQ(7u, context.GetMaxDepth());
  EXPECT_EQ(8u, context.GetMaxAmplification());
  EXPECT_EQ(std::vector<std::string>{"<?a?>"}, context.GetProcessingInstructions());
  EXPECT_EQ(1, context.GetNamespaceAliases().GetNamespaceCount());
  EXPECT_TRUE(context.GetNamespaceAliases().DoesAliasExist("o"));
  EXPECT_EQ(1, context.GetAdditionalRootAttributes()->GetCount());
}

TEST(SerializationContext, ACopyTakesEveryFlag) {
  for (const Flag& flag : kFlags) {
    CSerializationContext source;
    (source.*flag.set)(!flag.byDefault);
    const CSerializationContext copy(source);
    CSerializationContext assigned;
    assigned = source;
    for (const Flag& other : kFlags) {
      const bool expected = (&other == &flag) != other.byDefault;
      EXPECT_EQ(expected, (copy.*other.get)()) << flag.name << " on " << other.name;
      EXPECT_EQ(expected, (assigned.*other.get)()) << flag.name << " on " << other.name;
    }
  }
}

TEST(SerializationContext, ACopyTakesEveryOtherOption) {
  const CSerializationContext source = Filled();
  const CSerializationContext copy(source);
  CSerializationContext assigned;
  assigned.GetNamespaceAliases().Add("x", "urn:former");
  assigned.GetProcessingInstructions().push_back("<?former?>");
  assigned.GetAdditionalRootAttributes()->Add("former", "1", "");
  assigned = source;
  ExpectFilled(source);
  ExpectFilled(copy);
  ExpectFilled(assigned);
}

TEST(SerializationContext, ACopyHasItsOwnTextsAndLists) {
  CSerializationContext source = Filled();
  const CSerializationContext copy(source);
  CSerializationContext assigned;
  assigned = source;
  source.SetDefaultNamespaceURI("");
  source.SetInLineSchema("");
  source.SetIndentChars("");
  source.SetSchemaType(SchemaType_Default);
  source.SetMaxDepth(1);
  source.SetMaxAmplification(1);
  source.GetProcessingInstructions().clear();
  source.GetNamespaceAliases().RemoveNamespace("urn:orders");
  ExpectFilled(copy);
  ExpectFilled(assigned);
}

TEST(SerializationContext, ACopyOutlivesItsSource) {
  CSerializationContext copy;
  {
    const CSerializationContext source = Filled();
    copy = source;
  }
  ExpectFilled(copy);
}

TEST(SerializationContext, AssigningAContextToItselfKeepsIt) {
  CSerializationContext context = Filled();
  const CSerializationContext& same = context;
  context = same;
  ExpectFilled(context);
}

TEST(SerializationContext, TheDestructorIsTheOneVirtualOperation) {
  EXPECT_TRUE(std::has_virtual_destructor<CSerializationContext>::value);
}

// --- Additional attributes of the root

TEST(SerializationContext, TheAttributesOfTheRootAreMadeOnTheFirstCallAndStay) {
  const CSerializationContext context;
  const CSmartPtr<CAttributeCol> first = context.GetAdditionalRootAttributes();
  ASSERT_TRUE(first != nullptr);
  EXPECT_EQ(0, first->GetCount());
  EXPECT_EQ(first, context.GetAdditionalRootAttributes());
  first->Add("a", "1", "urn:any");
  first->Add("b", "2", "");
  first->Add("c", "3");
  EXPECT_EQ("", first->Item(2)->GetNamespace());
  EXPECT_EQ(3, context.GetAdditionalRootAttributes()->GetCount());
}

TEST(SerializationContext, CopiesShareTheAttributesOfTheRootOnceTheyAreThere) {
  CSerializationContext source;
  const CSerializationContext early(source);
  const CSmartPtr<CAttributeCol> attributes = source.GetAdditionalRootAttributes();
  const CSerializationContext late(source);
  CSerializationContext assigned;
  assigned = source;
  EXPECT_NE(attributes, early.GetAdditionalRootAttributes());
  EXPECT_EQ(attributes, late.GetAdditionalRootAttributes());
  EXPECT_EQ(attributes, assigned.GetAdditionalRootAttributes());
  late.GetAdditionalRootAttributes()->Add("a", "1", "");
  EXPECT_EQ(1, source.GetAdditionalRootAttributes()->GetCount());
  EXPECT_EQ(0, early.GetAdditionalRootAttributes()->GetCount());
}

TEST(SerializationContext, AssigningAContextWithoutAttributesGivesThemUp) {
  CSerializationContext context = Filled();
  const CSmartPtr<CAttributeCol> former = context.GetAdditionalRootAttributes();
  context = CSerializationContext();
  EXPECT_NE(former, context.GetAdditionalRootAttributes());
  EXPECT_EQ(0, context.GetAdditionalRootAttributes()->GetCount());
  EXPECT_EQ(1, former->GetCount());
}

TEST(SerializationContext, TheAttributesOfTheRootOutliveTheContext) {
  CSmartPtr<CAttributeCol> attributes;
  {
    const CSerializationContext context = Filled();
    attributes = context.GetAdditionalRootAttributes();
  }
  ASSERT_EQ(1, attributes->GetCount());
  EXPECT_EQ("en", attributes->Item(0)->GetValue());
}

// --- Threads

// Runs one function on several threads that begin together.
template <typename Function>
void Together(Function function) {
  constexpr int kThreads = 4;
  std::atomic<int> waiting{kThreads};
  std::array<std::thread, kThreads> threads;
  for (int i = 0; i < kThreads; ++i) {
    threads[static_cast<std::size_t>(i)] = std::thread([&waiting, &function, i] {
      --waiting;
      while (waiting > 0) std::this_thread::yield();
      function(static_cast<std::size_t>(i));
    });
  }
  for (std::thread& thread : threads) thread.join();
}

TEST(SerializationContext, ThreadsThatReadOneContextGetOneCollection) {
  for (int turn = 0; turn < 50; ++turn) {
    const CSerializationContext context;
    std::array<CSmartPtr<CAttributeCol>, 4> seen;
    Together([&](std::size_t i) { seen[i] = context.GetAdditionalRootAttributes(); });
    for (const CSmartPtr<CAttributeCol>& attributes : seen) {
      EXPECT_EQ(context.GetAdditionalRootAttributes(), attributes);
    }
  }
}

TEST(SerializationContext, ThreadsMayCopyAContextWhileOthersReadIt) {
  for (int turn = 0; turn < 50; ++turn) {
    const CSerializationContext context;
    std::array<std::string, 4> indents;
    Together([&](std::size_t i) {
      const CSerializationContext copy(context);
      copy.GetAdditionalRootAttributes();
      context.GetAdditionalRootAttributes();
      indents[i] = copy.GetIndentChars();
    });
    for (const std::string& indent : indents) EXPECT_EQ("\t", indent);
  }
}

TEST(SerializationContext, ThreadsMayWriteAndReadWithOneContext) {
  CSerializationContext context;
  context.SetIndentChars(" ");
  context.GetNamespaceAliases().Add("n", "urn:notes");
  context.GetAdditionalRootAttributes()->Add("lang", "en", "");
  std::array<std::string, 4> texts;
  Together([&](std::size_t i) {
    for (int turn = 0; turn < 20; ++turn) {
      qztest::CNote note;
      note.to = "Ann";
      note.lines = {"Milk"};
      const std::string text = note.ToXml(false, true, EOLType_LF, context);
      qztest::CNote read;
      read.FromXml(text.c_str(), context);
      texts[i] = read.ToXml(false, true, EOLType_LF, context);
    }
  });
  for (const std::string& text : texts) {
    EXPECT_EQ(
        "<n:note xmlns:n=\"urn:notes\" lang=\"en\" to=\"Ann\">\n"
        " <n:line>Milk</n:line>\n"
        "</n:note>\n",
        text);
  }
}

}  // namespace
}  // namespace QzXmlLib16
