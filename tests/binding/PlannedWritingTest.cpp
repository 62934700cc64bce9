#include <cstdint>
#include <iterator>
#include <limits>
#include <optional>
#include <string>

#include "qzxml/binding/BoundClass.h"
#include "qzxml/binding/BuiltInTypes.h"
#include "qzxml/binding/ObjectFactory.h"
#include "qzxml/collections/Attribute.h"
#include "qzxml/runtime/MemoryLeakHelp.h"
#include "qzxml/xml/XmlWriter.h"
#include "tests/binding/Kinds.h"
#include "tests/binding/Shop.h"
#include "tests/support/PlanTrial.h"

// Objects of bound classes are written by plans, which no document shows: it is the one that the
// walk writes.

using namespace QzXmlLib16;
using namespace qztest;
using namespace shop;

namespace {

constexpr char kUri[] = "urn:shop";

// An order with each form of member.
CSmartPtr<COrder> NewOrder() {
  CSmartPtr<COrder> order(new COrder);
  order->FromXml(
      "<order xmlns=\"urn:shop\" id=\"7\" currency=\"CHF\" xmlns:x=\"urn:x\" x:mark=\"m\">"
      "<customer><name>Ada</name></customer><note>n &amp; &lt;n&gt;</note>"
      "<card>With love</card>"
      "<item xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\" xsi:type=\"Book\" "
      "price=\"12.5\"><title>Sums</title></item>"
      "<item xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\" xsi:type=\"Disc\" "
      "price=\"9\"/>"
      "<tag>a</tag><tag> b </tag><size>38</size><colour>USD</colour><colour>EUR</colour>"
      "<comment>ok</comment>"
      "<pick>true</pick><pack>false</pack><pick>false</pick>"
      "<x:extra>more</x:extra></order>");
  return order;
}

void ExpectAsWalked(const CXmlObjectBase& object) { ExpectPlannedAsWalked(object, kUri); }

std::string Failure(const CXmlObjectBase& object) {
  return ByPlan(object, Form(), CSerializationContext()).failure;
}

}  // namespace

TEST(PlannedWriting, IsTheWalkForEachFormOfMember) {
  const CSmartPtr<COrder> order = NewOrder();
  ExpectAsWalked(*order);
  order->SetNote(std::nullopt);
  order->SetComment(std::nullopt);  // nil
  order->SetCurrency(Currency_EUR);
  order->SetVersion("1.0");
  order->GetTags().Clear();
  order->GetSizes().Clear();
  order->GetColours().Clear();
  order->GetSteps().Clear();
  order->GetAny().Clear();
  order->GetOtherAttributes().Clear();
  order->GetItems().Clear();
  ExpectAsWalked(*order);
}

TEST(PlannedWriting, IsTheWalkForAnyMemberOfAChoice) {
  const CSmartPtr<COrder> order = NewOrder();
  order->GetGift()->SetCard(std::nullopt);
  order->GetGift()->EnsureWrap()->SetName("paper");
  ExpectAsWalked(*order);
  order->GetGift()->SetWrap(nullptr);
  order->GetGift()->GetStamps().Add(3);
  ExpectAsWalked(*order);
  order->GetGift()->GetStamps().Clear();
  ExpectAsWalked(*order);  // fails unless the context lets it pass
  EXPECT_NE("", Failure(*order));
  CPayment payment;
  ExpectAsWalked(payment);
  payment.SetIban("AT61 1904");
  ExpectAsWalked(payment);
}

// Nobody has opened an element for it.
TEST(PlannedWriting, IsTheWalkForAGroupAlone) {
  COrder::CGift gift;
  ExpectAsWalked(gift);
  gift.SetCard("c");
  ExpectAsWalked(gift);
}

TEST(PlannedWriting, IsTheWalkForAnObjectThatIsNil) {
  const CSmartPtr<COrder> order = NewOrder();
  order->GetCustomer()->SetIsNil(true);
  ExpectAsWalked(*order);
  CCustomer customer;
  customer.SetIsNil(true);
  ExpectAsWalked(customer);
}

TEST(PlannedWriting, IsTheWalkForAnObjectOfAnotherNameOrType) {
  const CSmartPtr<COrder> order = NewOrder();
  order->GetCustomer()->TakeElementName("client");
  order->GetItems()[0]->TakeElementName("book");
  ExpectAsWalked(*order);
  order->BeRoot("urn:root");
  ExpectAsWalked(*order);
}

TEST(PlannedWriting, IsTheWalkForTextsThatAreNotPlain) {
  const CSmartPtr<COrder> order = NewOrder();
  const std::string texts[] = {"",
                               "<",
                               "<![CDATA[<as it stands>]]>",
                               "a\nb\n\"c\" & 'd' <e>",
                               "&&&&&&&&&&&&&&&&&&&&",
                               "\xC3\xA4\xE2\x82\xAC",
                               std::string("a\0b", 3),
                               std::string(15, 'x') + "&",
                               std::string(16, 'x') + ">",
                               std::string(33, 'x') + "\n" + std::string(40, 'y'),
                               std::string(4095, 'z'),
                               std::string(5000, 'z') + "&",
                               std::string(70000, '<')};
  for (const std::string& text : texts) {
    order->SetNote(text);
    order->GetCustomer()->SetName(text);
    for (const Form& form : Forms()) {
      const Written planned = ByPlan(*order, form, CSerializationContext());
      const Written walked = ByWalk(*order, form, CSerializationContext());
      ASSERT_EQ(walked.text, planned.text);
      ASSERT_EQ(walked.flushes, planned.flushes);
    }
    const CSerializationContext context;
    ASSERT_EQ(OctetsByWalk(*order, context).text, OctetsByPlan(*order, context).text);
  }
}

TEST(PlannedWriting, IsTheWalkForTheClassesOwnText) {
  CWeight weight;
  weight.SetUnit("kg \"net\" & <gross>\n");
  ExpectAsWalked(weight);
  weight.SetValue(CDecimal("12.50"));
  ExpectAsWalked(weight);
}

TEST(PlannedWriting, IsTheWalkForReals) {
  CPlace place;
  for (const double value : {0.0,
                             -0.0,
                             1.0,
                             -1.5,
                             0.1,
                             0.2,
                             1866.65,
                             89.999,
                             8.7,
                             999.999,
                             67.891,
                             0.0625,
                             0.001,
                             1e-5,
                             123456.125,
                             1e15,
                             1e16,
                             1e17,
                             1e300,
                             5e-324,
                             0.30000000000000004,
                             1.0 / 3,
                             2.0 / 3,
                             9007199254740993.0,
                             9.5367431640625e-07}) {
    place.SetX(value);
    place.SetBounded(value < 1 ? value : 0.7);
    place.SetShort(static_cast<float>(value));
    const Form form;
    const CSerializationContext context;
    ASSERT_EQ(ByWalk(place, form, context).text, ByPlan(place, form, context).text) << value;
    ASSERT_EQ(OctetsByWalk(place, context).text, OctetsByPlan(place, context).text) << value;
    CSerializationContext suggested;
    suggested.GetFIContext().SetSuggestedValues();
    ASSERT_EQ(OctetsByWalk(place, suggested).text, OctetsByPlan(place, suggested).text) << value;
  }
}

TEST(PlannedWriting, IsTheWalkForEachKind) {
  kinds::CKinds object;
  object.FromXml(kinds::kDocument);
  ExpectPlannedAsWalked(object, "urn:kinds");
}

namespace {

// Elements of many names and of several namespaces, one of which may take no prefix; an object of
// the same class inside another.
class CNames : public CBoundClass {
 public:
  CNames() : CBoundClass(s_binding) {}

  void Fill(int depth) {
    m_text = "a < b, \xC3\xA9 and more than sixteen octets";
    m_empty = "";
    m_int = depth;
    m_real = 12.25 + depth;
    m_date.emplace().ParseXSDDate("2004-02-29");
    m_flag = true;
    if (depth == 0) return;
    const CSmartPtr<CNames> inner(new CNames);
    inner->SetElementName("inner");
    inner->Fill(depth - 1);
    m_inner = inner;
    const CSmartPtr<CNames> outside(new CNames);
    outside->SetElementName("a23456789012345678901234567890123456789");
    outside->Fill(depth - 1);
    m_outside = outside;
  }

  // Objects inside each other with these numbers, of which some stand there as texts too.
  void FillWith(const std::int32_t* number, const std::int32_t* end) {
    m_int = *number;
    if (*number % 3 == 0) m_text = std::to_string(*number);
    if (++number == end) return;
    const CSmartPtr<CNames> inner(new CNames);
    inner->SetElementName("inner");
    inner->FillWith(number, end);
    m_inner = inner;
  }

 private:
  static const CMember s_members[];
  static CClassBinding s_binding;

  std::optional<std::string> m_text;
  std::optional<std::string> m_empty;
  std::optional<std::int32_t> m_int;
  std::optional<double> m_real;
  std::optional<CDateTime> m_date;
  std::optional<bool> m_flag;
  CObjectHandle m_inner;
  CObjectHandle m_outside;
};

const CMember CNames::s_members[] = {
    OptionalAttribute("int", "", &CNames::m_int, kXsdInt),
    OptionalAttribute("a234567890123456789012345678901234567890", "", &CNames::m_text, kXsdString),
    ValueElement("a2345678901", kUri, Optional, &CNames::m_text, kXsdString),
    ValueElement("a23456789012", kUri, Optional, &CNames::m_int, kXsdInt),
    ValueElement("a234567890123", "", Optional, &CNames::m_real, kXsdDouble),
    ValueElement("a2345678901234", "urn:other", Optional, &CNames::m_date, kXsdDate),
    ValueElement("a23456789012345", kUri, Optional, &CNames::m_flag, kXsdBoolean),
    ValueElement("a2345678901234567890123456789", kUri, Optional, &CNames::m_empty, kXsdString),
    ObjectElement("inner", kUri, Optional, &CNames::m_inner, &NewObject<CNames>),
    ValueElement("a23456789012345678901234567890", kUri, Optional, &CNames::m_text, kXsdString),
    ObjectElement("a23456789012345678901234567890123456789", "urn:other", Optional,
                  &CNames::m_outside, &NewObject<CNames>),
    ValueElement("a234567890123456789012345678901", "", Optional, &CNames::m_int, kXsdInt),
    ValueElement("a2345678901234567890123456789012", kUri, Optional, &CNames::m_real, kXsdDouble),
};

CClassBinding CNames::s_binding({"Names", kUri, "names", &NewObject<CNames>}, s_members);

}  // namespace

TEST(PlannedWriting, IsTheWalkForNamesOfAnyLengthAndNamespace) {
  for (const int depth : {0, 3}) {
    CNames names;
    names.Fill(depth);
    ExpectAsWalked(names);
    ExpectPlannedAsWalked(names, "urn:other");
  }
}

// Small and large ones, and those of which a text is known.
TEST(PlannedWriting, IsTheWalkForNumbersThatComeAgain) {
  constexpr std::int32_t kLeast = std::numeric_limits<std::int32_t>::min();
  constexpr std::int32_t kMost = std::numeric_limits<std::int32_t>::max();
  constexpr std::int32_t kNumbers[] = {0,  0,   128,   0,      256,    128,    -128,  0,    5,
                                       5,  133, 5,     -5,     123,    123,    -5,    9999, 99999,
                                       -1, 255, kMost, kMost,  kLeast, kLeast, 99999, 9999, 100000,
                                       3,  131, 3,     999999, 999999, -9999,  -9999, 12,   12};
  CNames names;
  names.FillWith(std::begin(kNumbers), std::end(kNumbers));
  for (int round = 0; round < 2; ++round) {
    for (const CSerializationContext& context : FastInfosetContexts(kUri)) {
      ExpectOctetsAsWalked(names, context);
      ASSERT_FALSE(HasFatalFailure());
    }
  }
}

TEST(PlannedWriting, FailsAsTheWalkDoes) {
  const CSmartPtr<COrder> order(new COrder);
  order->GetItems().Add(CSmartPtr<CItem>(new CBook));
  ExpectAsWalked(*order);  // no id, no name, no gift, no price
  EXPECT_NE("", Failure(*order));
  order->SetId(1);
  ExpectAsWalked(*order);
  order->GetCustomer()->SetName("A");
  ExpectAsWalked(*order);
  order->GetGift()->SetCard("c");
  ExpectAsWalked(*order);
  for (const char* tag : {"a", "b", "c", "d"}) order->GetTags().Add(tag);  // three at most
  order->SetComment("c");
  order->GetItems()[0]->SetPrice(CDecimal("1"));
  ExpectAsWalked(*order);
  EXPECT_NE("", Failure(*order));
}

namespace {

// A user's own class over a generated one.
class CLoudCustomer : public CCustomer {
 protected:
  void ToXml_Int(CXmlWriter* writer, bool, const char* namespaceUri, const CSerializationContext&,
                 bool) const override {
    writer->WriteStartElement("loud", namespaceUri);
    writer->WriteText(GetName() + "!", ItemType_string, false);
    writer->WriteEndElement();
  }
};

class CQuietCustomer : public CCustomer {
 protected:
  void AttributesToXml_Int(CXmlWriter* writer, const CSerializationContext&) const override {
    writer->WriteAttribute("volume", "", "0", ItemType_string);
  }
};

}  // namespace

TEST(PlannedWriting, AsksAClassThatSomebodyHasDerived) {
  const CSmartPtr<COrder> order = NewOrder();
  const CSmartPtr<CLoudCustomer> loud(new CLoudCustomer);
  loud->SetName("Ada");
  order->SetCustomer(loud);
  ExpectAsWalked(*order);
  EXPECT_NE(std::string::npos, order->ToXml().find("Ada!"));
  const CSmartPtr<CQuietCustomer> quiet(new CQuietCustomer);
  quiet->SetName("Ada");
  order->SetCustomer(quiet);
  ExpectAsWalked(*order);
  EXPECT_NE(std::string::npos, order->ToXml().find("volume=\"0\""));
}

namespace {

constexpr const char* kElements[] = {"order", "customer", "name", "note", "card", "tag", "size"};
constexpr const char* kAttributes[] = {"id", "currency", "version"};

// A vocabulary in which so many entries of each table come before those of an order, or all but
// those of its attributes.
CSerializationContext ContextBehind(int entries, const char* alias) {
  CSerializationContext context;
  if (*alias == '\0') context.SetDefaultNamespaceURI(kUri);
  if (*alias != '\0') context.GetNamespaceAliases().Add(alias, kUri);
  context.GetFIContext().SetUseGeneratedVocabulary(true);
  CFIVocabulary& vocabulary = *context.GetFIContext().GetVocabulary();
  for (int i = 0; i < entries; ++i) {
    const std::string text = "_" + std::to_string(i);
    vocabulary.AddElement("", "", text);
    vocabulary.AddAttribute("", "", text);
    vocabulary.AddElementValue(text);
    vocabulary.AddAttributeValue(text);
  }
  for (const char* name : kElements) vocabulary.AddElement(alias, kUri, name);
  for (const char* name : kAttributes) vocabulary.AddAttribute("", "", name);
  return context;
}

}  // namespace

// Each of the forms of an index, of names and of values, and the steps between them.
TEST(PlannedWriting, IsTheWalkForAnyIndex) {
  const CSmartPtr<COrder> order = NewOrder();
  order->GetItems().Clear();
  order->SetNote("CHF");
  order->GetCustomer()->SetName("CHF");
  for (const int entries :
       {0,  8,    12,   13,   14,   15,   16,   26,   29,   30,   31,   32,   59,   61,   62,  63,
        64, 1037, 1039, 1040, 1041, 2074, 2077, 2079, 2080, 2081, 8252, 8254, 8255, 8256, 8257}) {
    for (const char* alias : {"", "q"}) {
      CSerializationContext context = ContextBehind(entries, alias);
      for (const bool suggested : {false, true}) {
        if (suggested) context.GetFIContext().SetSuggestedValues();
        ExpectOctetsAsWalked(*order, context);
        ASSERT_FALSE(HasFatalFailure()) << entries;
      }
    }
  }
}

// What comes then is written in full each time.
TEST(PlannedWriting, IsTheWalkWhenATableIsFull) {
  constexpr int kMost = 0x100000;
  const CSmartPtr<COrder> order = NewOrder();
  order->SetNote("CHF");
  order->GetCustomer()->SetName("CHF");
  CSerializationContext values;
  values.GetFIContext().SetUseGeneratedVocabulary(true);
  CFIVocabulary& ofValues = *values.GetFIContext().GetVocabulary();
  for (int i = 0; i < kMost; ++i) ofValues.AddElementValue(std::to_string(i) + "_");
  ExpectOctetsAsWalked(*order, values);
  CSerializationContext names;
  names.SetDefaultNamespaceURI(kUri);
  names.GetFIContext().SetUseGeneratedVocabulary(true);
  CFIVocabulary& ofNames = *names.GetFIContext().GetVocabulary();
  for (int i = 0; i < kMost - 4; ++i) ofNames.AddElement("", "", "_" + std::to_string(i));
  ExpectOctetsAsWalked(*order, names);
}

// What is written stands in pieces of some 64 KiB, which may have to grow: one ends at each place
// of a document.
TEST(PlannedWriting, IsTheWalkWhereverThePieceEnds) {
  const CSmartPtr<COrder> order = NewOrder();
  CSerializationContext context;
  context.SetDefaultNamespaceURI(kUri);
  const auto expect = [&](std::size_t size) {
    order->SetNote(std::string(size, 'n'));
    order->GetCustomer()->SetName(std::string(size / 3, 'm'));
    ExpectOctetsAsWalked(*order, context);
  };
  for (std::size_t size = 45700; size < 49300 && !HasFatalFailure(); size += 7) expect(size);
  for (std::size_t size = 60500; size < 65700 && !HasFatalFailure(); size += 7) expect(size);
  for (std::size_t size = 10000; size < 300000 && !HasFatalFailure(); size += 7919) expect(size);
}

// Each of the forms of a length, with a zero byte in the text and without.
TEST(PlannedWriting, IsTheWalkForEachLengthOfAText) {
  const CSmartPtr<COrder> order = NewOrder();
  CWeight weight;
  weight.SetValue(CDecimal("12.50"));
  CSerializationContext context;
  context.SetDefaultNamespaceURI(kUri);
  context.GetFIContext().SetElementMaxAddLength(20);
  context.GetFIContext().SetAttributeMaxAddLength(12);
  for (std::size_t size = 1; size < 330; ++size) {
    const std::string text(size, static_cast<char>('a' + size % 26));
    order->SetNote(text);
    order->GetCustomer()->SetName(text);
    weight.SetUnit(text);
    ExpectOctetsAsWalked(*order, context);
    ExpectOctetsAsWalked(weight, context);
    for (std::size_t i = 0; i < size && size < 18; ++i) {  // a zero byte
      std::string cut = text;
      cut[i] = '\0';
      order->SetNote(cut);
      weight.SetUnit(cut);
      ExpectOctetsAsWalked(*order, context);
      ExpectOctetsAsWalked(weight, context);
    }
    ASSERT_FALSE(HasFatalFailure()) << size;
  }
}

// The counts of the instance monitor do not show how a document was written.
TEST(PlannedWriting, CountsTheElements) {
  const CSmartPtr<COrder> order = NewOrder();
  const auto counts = [&order](auto write) {
    const std::string before = CInstanceMonitor::DumpState();
    write(*order, Form(), CSerializationContext());
    const std::string name = "CXmlWriterContext = ";
    const auto total = [&name](const std::string& dump) {
      const std::size_t at = dump.find(name);
      if (at == std::string::npos) return 0;
      return std::stoi(dump.substr(dump.find('/', at) + 1));
    };
    return total(CInstanceMonitor::DumpState()) - total(before);
  };
  EXPECT_EQ(counts(&ByWalk), counts(&ByPlan));
}
