#include <string>
#include <vector>

#include "qzxml/binding/BoundClass.h"
#include "qzxml/collections/Attribute.h"
#include "qzxml/serialization/SerializationContext.h"
#include "qzxml/xml/XmlDocument.h"
#include "tests/binding/Shop.h"
#include "tests/support/QzTest.h"

using namespace QzXmlLib16;
using namespace shop;

namespace {

constexpr char kOrder[] =
    "<order xmlns=\"urn:shop\" id=\"7\" currency=\"CHF\" xmlns:x=\"urn:x\" x:mark=\"m\">"
    "<customer><name>Ada</name></customer>"
    "<card>With love</card>"
    "<item xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\" xsi:type=\"Book\" "
    "price=\"12.5\"><title>Sums</title></item>"
    "<item xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\" xsi:type=\"Disc\" price=\"9\"/>"
    "<tag>a</tag><tag> b </tag><size>38</size><colour>USD</colour><colour>EUR</colour>"
    "<comment>ok</comment>"
    "<pick>true</pick><pack>false</pack><pick>false</pick>"
    "<x:extra>more</x:extra></order>";

std::string Read(CBoundClass& object, const std::string& text) {
  object.FromXml(text.c_str());
  return object.ToXml(false, false);
}

// A document that COrder takes, with something in front of the gift, in its place and behind it.
std::string OrderWith(const std::string& attributes, const std::string& gift,
                      const std::string& rest = "") {
  return "<order xmlns=\"urn:shop\" id=\"1\"" + attributes +
         "><customer><name>A</name></customer>" + gift + rest + "<comment>c</comment></order>";
}

}  // namespace

TEST(BoundClass, ReadsEachFormOfMember) {
  COrder order;
  order.FromXml(kOrder);
  EXPECT_EQ(order.GetId(), 7);
  EXPECT_EQ(order.GetCurrency(), Currency_CHF);
  ASSERT_EQ(order.GetOtherAttributes().GetCount(), 1);
  EXPECT_EQ(order.GetOtherAttributes().Item(0)->GetValue(), "m");
  EXPECT_EQ(order.GetCustomer()->GetName(), "Ada");
  EXPECT_FALSE(order.GetNote().has_value());
  EXPECT_EQ(order.GetGift()->GetSelected(), COrder::CGift::Selected_Card);
  EXPECT_EQ(order.GetGift()->GetCard(), "With love");
  ASSERT_EQ(order.GetItems().size(), 2);
  EXPECT_EQ(order.GetItems()[0]->GetPrice().ToString(), "12.5");
  const CBook* const book =
      dynamic_cast<const CBook*>(static_cast<const CItem*>(order.GetItems()[0]));
  ASSERT_NE(book, nullptr);
  EXPECT_NE(dynamic_cast<const CDisc*>(static_cast<const CItem*>(order.GetItems()[1])), nullptr);
  ASSERT_EQ(order.GetTags().size(), 2);
  EXPECT_EQ(order.GetTags()[1], "b");
  EXPECT_EQ(order.GetSizes()[0], 38);
  std::vector<Currency> colours;
  for (const Currency colour : order.GetColours()) colours.push_back(colour);
  EXPECT_EQ(colours, (std::vector<Currency>{Currency_USD, Currency_EUR}));
  EXPECT_EQ(order.GetComment(), "ok");
  ASSERT_EQ(order.GetSteps().size(), 3);
  EXPECT_EQ(order.GetSteps()[1]->GetPack(), false);
  EXPECT_FALSE(order.GetSteps()[1]->GetPick().has_value());
  ASSERT_EQ(order.GetAny().size(), 1);
  EXPECT_EQ(order.GetAny()[0]->GetText(), "more");
}

TEST(BoundClass, WritesWhatItRead) {
  COrder order;
  EXPECT_EQ(Read(order, kOrder),
            "<AA:order xmlns:AA=\"urn:shop\" id=\"7\" currency=\"CHF\" xmlns:AB=\"urn:x\" "
            "AB:mark=\"m\"><AA:customer><AA:name>Ada</AA:name></AA:customer>"
            "<AA:card>With love</AA:card>"
            "<AA:item xmlns:AC=\"http://www.w3.org/2001/XMLSchema-instance\" AC:type=\"AA:Book\" "
            "price=\"12.5\"><AA:title>Sums</AA:title></AA:item>"
            "<AA:item xmlns:AC=\"http://www.w3.org/2001/XMLSchema-instance\" AC:type=\"AA:Disc\" "
            "price=\"9\"/>"
            "<AA:tag>a</AA:tag><AA:tag>b</AA:tag><AA:size>38</AA:size>"
            "<AA:colour>USD</AA:colour><AA:colour>EUR</AA:colour><AA:comment>ok</AA:comment>"
            "<AA:pick>true</AA:pick><AA:pack>false</AA:pack><AA:pick>false</AA:pick>"
            "<AB:extra>more</AB:extra></AA:order>");
}

TEST(BoundClass, IsEmptiedAheadOfReading) {
  COrder order;
  order.FromXml(kOrder);
  order.FromXml(OrderWith("", "<stamp>4</stamp>").c_str());
  EXPECT_FALSE(order.IsSetCurrency());
  EXPECT_EQ(order.GetItems().size(), 0);
  EXPECT_EQ(order.GetAny().size(), 0);
  EXPECT_EQ(order.GetSteps().size(), 0);
  EXPECT_EQ(order.GetOtherAttributes().GetCount(), 0);
  EXPECT_EQ(order.GetGift()->GetSelected(), COrder::CGift::Selected_Stamps);
}

// --- Values

TEST(BoundClass, AnswersAnEmptyValueForAMandatoryOneThatIsNotSet) {
  const COrder order;
  EXPECT_EQ(order.GetId(), 0);
  EXPECT_FALSE(order.IsSetId());
  EXPECT_EQ(order.GetCustomer()->GetName(), "");
}

TEST(BoundClass, AnswersTheDefaultOfAnAbsentValue) {
  COrder order;
  EXPECT_EQ(order.GetCurrency(), Currency_EUR);
  EXPECT_FALSE(order.IsSetCurrency());
  EXPECT_EQ(order.GetVersion(), "1.0");
  order.SetCurrency(Currency_USD);
  EXPECT_EQ(order.GetCurrency(), Currency_USD);
  order.SetCurrency(std::nullopt);
  EXPECT_EQ(order.GetCurrency(), Currency_EUR);
}

TEST(BoundClass, RefusesWhatAFacetForbidsAndKeepsWhatItHas) {
  COrder order;
  order.SetId(3);
  EXPECT_QZ_THROW(CQzException, "Invalid Value for id [0]", order.SetId(0));
  EXPECT_EQ(order.GetId(), 3);
}

TEST(BoundClass, RefusesAWrongValueOfADocumentWithItsPath) {
  COrder order;
  EXPECT_QZ_THROW_FULL(CQzException,
                       "Failed to set the property value [0].\nPath: /order/@id\nInvalid Value for "
                       "id [0]",
                       "/order/@id", order.FromXml("<order xmlns=\"urn:shop\" id=\"0\"/>"));
}

TEST(BoundClass, RefusesAnythingButAFixedValue) {
  COrder order;
  order.SetVersion("1.0");
  EXPECT_QZ_THROW(CQzInvalidValueException,
                  "The value [2.0] of version is not the fixed value [1.0]",
                  order.SetVersion("2.0"));
  EXPECT_QZ_THROW(CQzInvalidValueException, "The value [7] is not one of EUR, CHF, USD",
                  order.SetCurrency(static_cast<Currency>(7)));
}

TEST(BoundClass, ChecksEachValueOfACollection) {
  COrder order;
  order.GetSizes().Add(60);
  EXPECT_QZ_THROW(CQzException, "Invalid Value for size [61]", order.GetSizes().Add(61));
  EXPECT_QZ_THROW(CQzException, "Invalid Value for size [62]", order.GetSizes().AddAt(0, 62));
  EXPECT_EQ(order.GetSizes().size(), 1);
  EXPECT_QZ_THROW(CQzInvalidValueException, "The value [9] is not one of EUR, CHF, USD",
                  order.GetColours().Add(static_cast<Currency>(9)));
  EXPECT_TRUE(order.GetColours().empty());
}

TEST(BoundClass, AValueThatIsNotSetIsNilWhereItIsMandatoryAndNillable) {
  COrder order;
  const std::string nil =
      "<AA:order xmlns:AA=\"urn:shop\" id=\"1\"><AA:customer><AA:name>A</AA:name></AA:customer>"
      "<AA:card>x</AA:card><AA:comment xmlns:AB=\"http://www.w3.org/2001/XMLSchema-instance\" "
      "AB:nil=\"true\"/></AA:order>";
  EXPECT_EQ(Read(order, nil), nil);
  order.SetComment("");
  EXPECT_NE(order.ToXml(false, false).find("<AA:comment/>"), std::string::npos)
      << order.ToXml(false, false);
}

TEST(BoundClass, TakesItsOwnTextThroughTheKindOfItsType) {
  CWeight weight;
  EXPECT_EQ(Read(weight, "<weight xmlns=\"urn:shop\" unit=\"kg\"> 2.50 </weight>"),
            "<AA:weight xmlns:AA=\"urn:shop\" unit=\"kg\">2.5</AA:weight>");
  EXPECT_QZ_THROW(CQzException, "Invalid Value for  [-1].", weight.SetValue(CDecimal(-1)));
}

TEST(BoundClass, WritesEveryDigitOfAReal) {
  CPlace place;
  const std::string text =
      "<AA:place xmlns:AA=\"urn:shop\" x=\"12.804751171875008\">"
      "<AA:bounded>0.12345678901234568</AA:bounded><AA:short>16777.217</AA:short></AA:place>";
  EXPECT_EQ(Read(place, text), text);
  place.SetX(0.1);
  place.SetBounded(1e20 / 1e20);
  place.SetShort(0.1f);
  EXPECT_EQ(place.ToXml(false, false),
            "<AA:place xmlns:AA=\"urn:shop\" x=\"0.1\"><AA:bounded>1</AA:bounded>"
            "<AA:short>0.1</AA:short></AA:place>");
  EXPECT_QZ_THROW(CQzException, "Invalid Value for bounded [1.500000]", place.SetBounded(1.5));
  place.FromXmlStream((place.SetX(12.804751171875008), place.ToFastInfosetStream()));
  EXPECT_EQ(place.GetX(), 12.804751171875008);
}

// --- Objects

TEST(BoundClass, AMandatoryObjectIsThereAndNeverNull) {
  COrder order;
  order.GetCustomer()->SetName("Bo");
  EXPECT_EQ(order.GetCustomer()->GetName(), "Bo");
  EXPECT_QZ_THROW(CQzInvalidParamException,
                  "The Property [customer] is mandatory, it may node be NULL",
                  order.SetCustomer(nullptr));
  const CSmartPtr<CCustomer> other(new CCustomer);
  other->SetName("Cy");
  order.SetCustomer(other);
  EXPECT_EQ(order.GetCustomer()->GetName(), "Cy");
}

TEST(BoundClass, AnObjectTakesTheTagOfItsMember) {
  COrder order;
  const CSmartPtr<CCustomer> other(new CCustomer);
  other->TakeElementName("somebody");
  order.SetCustomer(other);
  EXPECT_EQ(other->GetElementName(), "customer");
  const CSmartPtr<CBook> book(new CBook);
  book->TakeElementName("novel");
  order.GetItems().Add(book);
  EXPECT_EQ(book->GetElementName(), "item");
}

TEST(BoundClass, ANilObjectKeepsOnlyItsAttributes) {
  COrder order;
  order.FromXml(kOrder);
  order.GetCustomer()->SetIsNil(true);
  EXPECT_NE(order.ToXml(false, false)
                .find("<AA:customer xmlns:AC=\"http://www.w3.org/2001/XMLSchema-instance\" "
                      "AC:nil=\"true\"/>"),
            std::string::npos)
      << order.ToXml(false, false);
  const std::string text = order.ToXml(false, false);
  COrder again;
  again.FromXml(text.c_str());
  EXPECT_TRUE(again.GetCustomer()->GetIsNil());
  again.FromXml(kOrder);
  EXPECT_FALSE(again.GetCustomer()->GetIsNil());
}

TEST(BoundClass, ANilObjectWithContentIsRefused) {
  COrder order;
  const auto orderWith = [](const std::string& content) {
    return "<order xmlns=\"urn:shop\" id=\"1\"><customer "
           "xmlns:i=\"http://www.w3.org/2001/XMLSchema-instance\" i:nil=\"true\">" +
           content + "</customer><card>c</card><comment>c</comment></order>";
  };
  EXPECT_QZ_THROW_FULL(CQzException,
                       "Failed read all the elements held within the element [customer]. The "
                       "unexpected element [name] remains un processed\nPath: /order/customer",
                       "/order/customer", order.FromXml(orderWith("<name>A</name>").c_str()));
  EXPECT_QZ_THROW_FULL(
      CQzException, "Unexpected text [A] found in the element [customer].\nPath: /order/customer",
      "/order/customer", order.FromXml(orderWith("A").c_str()));
  order.FromXml(orderWith(" <!-- nothing --> ").c_str());
  EXPECT_TRUE(order.GetCustomer()->GetIsNil());
  CSerializationContext lenient;
  lenient.SetIgnoreUnknownElements(true);
  order.FromXml(orderWith("<name>A</name>").c_str(), lenient);
  EXPECT_EQ(order.GetCustomer()->GetName(), "");
}

TEST(BoundClass, AnAbstractTypeNeedsAnObject) {
  COrder order;
  EXPECT_QZ_THROW(CQzInvalidStateException,
                  "The Property [item] has an abstract type, set an object",
                  order.GetItems().Add());
}

TEST(BoundClass, AnElementOfAnAbstractTypeNeedsAKnownType) {
  COrder order;
  for (const char* type :
       {"", " xsi:type=\"Item\"", " xsi:type=\"Book2\"", " xsi:type=\"x:Book\""}) {
    const std::string item =
        std::string(
            "<item xmlns:x=\"urn:x\" xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\""
            " price=\"1\"") +
        type + "/>";
    EXPECT_QZ_THROW(CQzException,
                    "Failed to find a suitable substitution element for [item].\nPath: /order",
                    order.FromXml(OrderWith("", "<card>c</card>", item).c_str()));
  }
}

TEST(BoundClass, ARestrictedMemberIsCheckedByTheDerivedClass) {
  CDisc disc;
  disc.SetPrice(CDecimal(10));
  EXPECT_QZ_THROW(CQzException, "Invalid Value for price [11].", disc.SetPrice(CDecimal(11)));
  CBook book;
  book.SetPrice(CDecimal(11));
  EXPECT_EQ(disc.GetPrice().ToString(), "10");
}

TEST(BoundClass, WritesItsTypeOnlyWhereAnotherOneIsDeclared) {
  CBook book;
  book.SetPrice(CDecimal(1));
  book.SetTitle("T");
  EXPECT_EQ(book.ToXml(false, false),
            "<AA:item xmlns:AA=\"urn:shop\" price=\"1\"><AA:title>T</AA:title></AA:item>");
}

// --- Copies

TEST(BoundClass, ACopyHoldsCopiesOfEverything) {
  COrder order;
  order.FromXml(kOrder);
  const CObjectHandle copied = order.NewCopy();
  COrder& copy = dynamic_cast<COrder&>(*copied);
  const std::string before = order.ToXml();
  EXPECT_EQ(copy.ToXml(), before);
  copy.SetId(99);
  copy.GetCustomer()->SetName("Zoe");
  copy.GetItems()[0]->SetPrice(CDecimal(1));
  copy.GetTags().Add("z");
  copy.GetColours().Remove(0);
  copy.GetAny()[0]->SetText("less");
  copy.GetOtherAttributes().Clear();
  copy.GetGift()->SetCard(std::nullopt);
  EXPECT_EQ(order.ToXml(), before);
  EXPECT_EQ(copy.GetGift()->GetSelected(), COrder::CGift::Selected_None);
}

TEST(BoundClass, ACopyOfANilObjectIsNil) {
  CCustomer customer;
  customer.SetIsNil(true);
  const CObjectHandle copied = customer.NewCopy();
  EXPECT_TRUE(dynamic_cast<CCustomer&>(*copied).GetIsNil());
}

TEST(BoundClass, ACopyOfAChoiceHearsOfItsCollection) {
  COrder::CGift gift;
  gift.GetStamps().Add(2);
  const CObjectHandle copied = gift.NewCopy();
  COrder::CGift& copy = dynamic_cast<COrder::CGift&>(*copied);
  EXPECT_EQ(copy.GetSelected(), COrder::CGift::Selected_Stamps);
  copy.GetStamps().Clear();
  copy.SetCard("c");
  EXPECT_EQ(gift.GetSelected(), COrder::CGift::Selected_Stamps);
}

// --- Choices

TEST(BoundClass, AChoiceTellsWhichMemberIsSelected) {
  const CSmartPtr<COrder::CGift> gift(new COrder::CGift);
  EXPECT_EQ(gift->GetSelected(), COrder::CGift::Selected_None);
  gift->SetCard("c");
  EXPECT_EQ(gift->GetSelected(), COrder::CGift::Selected_Card);
  gift->SetCard("d");
  gift->SetCard(std::nullopt);
  EXPECT_EQ(gift->GetSelected(), COrder::CGift::Selected_None);
  gift->EnsureWrap()->SetName("W");
  EXPECT_EQ(gift->GetSelected(), COrder::CGift::Selected_Wrap);
  gift->SetWrap(nullptr);
  gift->GetStamps().Add(3);
  EXPECT_EQ(gift->GetSelected(), COrder::CGift::Selected_Stamps);
  gift->GetStamps().Clear();
  EXPECT_EQ(gift->GetSelected(), COrder::CGift::Selected_None);
}

TEST(BoundClass, AChoiceRefusesASecondMember) {
  const char kRefusal[] =
      "The Property [card] is already set. Only one element within this class bay be set at a time";
  COrder::CGift gift;
  gift.SetCard("c");
  EXPECT_QZ_THROW(CQzInvalidStateException, kRefusal, gift.EnsureWrap());
  const CSmartPtr<CCustomer> customer(new CCustomer);
  EXPECT_QZ_THROW(CQzInvalidStateException, kRefusal, gift.SetWrap(customer));
  EXPECT_QZ_THROW(CQzInvalidStateException, kRefusal, gift.GetStamps().Add(1));
  EXPECT_EQ(gift.GetStamps().size(), 0);
  EXPECT_EQ(gift.GetWrap(), nullptr);
  gift.SetWrap(nullptr);  // is absent anyway
  EXPECT_EQ(gift.GetCard(), "c");
}

TEST(BoundClass, AChoiceWithoutAMemberIsNotWritten) {
  COrder order;
  order.SetId(1);
  order.GetCustomer()->SetName("A");
  order.SetComment("c");
  EXPECT_QZ_THROW_FULL(
      CQzValidationException,
      "Failed to convert the element [order] to XML\nFailed to convert the element [gift] to XML\n"
      "This element is a choice, and as such must have at one (and only one) valid item, currently "
      "there are none set",
      "", order.ToXml());
  CSerializationContext lenient;
  lenient.SetIgnoreMissingChoice(true);
  EXPECT_EQ(order.ToXml(false, false, EOLType_LF, lenient),
            "<AA:order xmlns:AA=\"urn:shop\" id=\"1\"><AA:customer><AA:name>A</AA:name>"
            "</AA:customer><AA:comment>c</AA:comment></AA:order>");
}

TEST(BoundClass, AChoiceWithoutAMemberIsNotRead) {
  CPayment payment;
  EXPECT_QZ_THROW_FULL(
      CQzValidationException,
      "No child elements within the element [payment] were populated. The element represents a "
      "choice, so one and only one element should be populated. The element contained no sutable "
      "child elements\nPath: /payment",
      "/payment", payment.FromXml("<payment xmlns=\"urn:shop\"/>"));
  CSerializationContext lenient;
  lenient.SetIgnoreMissingChoice(true);
  payment.FromXml("<payment xmlns=\"urn:shop\"/>", lenient);
  EXPECT_EQ(Read(payment, "<payment xmlns=\"urn:shop\"><iban>x</iban></payment>"),
            "<AA:payment xmlns:AA=\"urn:shop\"><AA:iban>x</AA:iban></AA:payment>");
}

TEST(BoundClass, AGroupThatRequiresContentIsMissed) {
  COrder order;
  EXPECT_QZ_THROW(CQzException, "Failed to find the required child element [gift].\nPath: /order",
                  order.FromXml(OrderWith("", "").c_str()));
}

// --- Wildcards

TEST(BoundClass, AWildcardTakesOnlyItsNamespaces) {
  COrder order;
  EXPECT_QZ_THROW(CQzException,
                  "Failed read all the elements held within the element [order]. The unexpected "
                  "element [more] remains un processed\nPath: /order",
                  order.FromXml("<order xmlns=\"urn:shop\" id=\"1\"><customer><name>A</name>"
                                "</customer><card>c</card><comment>c</comment><more/></order>"));
  EXPECT_QZ_THROW(CQzException, "Unexpected Attribute found.\nPath: /order/@other",
                  order.FromXml(OrderWith(" other=\"1\"", "<card>c</card>").c_str()));
}

// --- Text

TEST(BoundClass, TextBesideChildrenIsRefusedWhereTheTypeHasNone) {
  COrder order;
  const std::string text = OrderWith("", "<card>c</card>", " so what <!-- --> ");
  EXPECT_QZ_THROW_FULL(CQzValidationException,
                       "Unexpected text [so what  ] found in the element [order].\nPath: /order",
                       "/order", order.FromXml(text.c_str()));
  CSerializationContext lenient;
  lenient.SetIgnoreUnknownElements(true);
  order.FromXml(text.c_str(), lenient);
  EXPECT_EQ(order.GetGift()->GetCard(), "c");
  order.FromXml(OrderWith("", "<card>c</card>", " \n\t").c_str());
}

// --- Roots

TEST(BoundClass, ARootIsMadeForItsElement) {
  const CSerializationContext context;
  CXmlDocument document(context);
  document.LoadXml(kOrder);
  const CObjectHandle root = NewRoot(document.GetDocumentElement());
  ASSERT_NE(dynamic_cast<COrder*>(static_cast<CXmlObjectBase*>(root)), nullptr);
  root->FromXmlElement(document.GetDocumentElement());
  COrder direct;
  EXPECT_EQ(root->ToXml(), (direct.FromXml(kOrder), direct.ToXml()));
  document.LoadXml("<order/>");
  EXPECT_EQ(NewRoot(document.GetDocumentElement()), nullptr);
}

TEST(BoundClass, ARootMayHaveAnotherNamespaceThanItsType) {
  const CSerializationContext context;
  CXmlDocument document(context);
  document.LoadXml("<weight xmlns=\"urn:other\" unit=\"kg\">1</weight>");
  const CObjectHandle root = NewRoot(document.GetDocumentElement());
  root->FromXmlElement(document.GetDocumentElement());
  EXPECT_EQ(root->ToXml(false, false),
            "<AA:weight xmlns:AA=\"urn:other\" unit=\"kg\">1</AA:weight>");
  EXPECT_EQ(root->GetNamespace(), "urn:shop");
  const CSmartPtr<CWeight> made = NewElement<CWeight>("mass", "urn:third");
  made->SetUnit("g");
  made->SetValue(CDecimal(2));
  const char* const text = "<AA:mass xmlns:AA=\"urn:third\" unit=\"g\">2</AA:mass>";
  EXPECT_EQ(made->ToXml(false, false), text);
  EXPECT_EQ(made->NewCopy()->ToXml(false, false), text);
}

TEST(BoundClass, GoesThroughFastInfoset) {
  COrder order;
  order.FromXml(kOrder);
  COrder second;
  second.FromXmlStream(order.ToFastInfosetStream());
  EXPECT_EQ(second.ToXml(), order.ToXml());
}
