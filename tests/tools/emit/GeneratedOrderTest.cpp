#include "orders/orders.h"
#include "qzxml/QzXml.h"
#include "tests/support/QzTest.h"

// What the classes of golden/order.xsd do. That they compile without a warning is shown by this
// program being built.

using namespace QzXmlLib16;
using namespace orders;

namespace {

constexpr char kDocument[] =
    "<order xmlns=\"urn:example:order\" id=\"7\" currency=\"none of these\">"
    "<shipTo version=\"1.0\"><name>Ada</name><line>1 High Street</line></shipTo>"
    "<billTo xmlns:i=\"http://www.w3.org/2001/XMLSchema-instance\" i:type=\"USAddress\">"
    "<name>Bob</name><line>2 Low Street</line><zip>12345</zip></billTo>"
    "<item sku=\"123-AB\"><quantity>3</quantity><price>1.50</price></item>"
    "<item sku=\"456-CD\" "
    "unit=\"USD\"><quantity>1</quantity><price>2</price><note>red</note></item>"
    "<invoice><name>Cy</name><line>3 Mid Street</line></invoice>"
    "<tag>999-ZZ</tag>"
    "<x:more xmlns:x=\"urn:x\">y</x:more>"
    "</order>";

CSmartPtr<COrder> ReadOrder() {
  CSmartPtr<COrder> order = NewOrder();
  order->FromXml(kDocument);
  return order;
}

}  // namespace

TEST(GeneratedOrder, ReadsADocument) {
  const CSmartPtr<COrder> order = ReadOrder();
  EXPECT_EQ(7u, order->GetId());
  EXPECT_EQ(Currency_none_of_these, order->GetCurrency());
  EXPECT_FALSE(order->GetDate().has_value());
  EXPECT_EQ("Ada", order->GetShipTo()->GetName());
  EXPECT_EQ("1 High Street", order->GetShipTo()->GetLines()[0]);
  ASSERT_NE(nullptr, order->GetBillTo());
  CAddress* const billTo = order->GetBillTo();
  const CUSAddress* const usAddress = dynamic_cast<CUSAddress*>(billTo);
  ASSERT_NE(nullptr, usAddress);
  EXPECT_EQ(12345, usAddress->GetZip());
  ASSERT_EQ(2, order->GetItems().size());
  EXPECT_EQ("123-AB", order->GetItems()[0]->GetSku());
  EXPECT_EQ("1.5", order->GetItems()[0]->GetPrice().ToString());
  EXPECT_EQ(std::nullopt, order->GetItems()[0]->GetUnit());
  EXPECT_EQ(Currency_USD, order->GetItems()[1]->GetUnit());
  EXPECT_EQ("red", order->GetItems()[1]->GetNote());
  EXPECT_EQ(COrder::CCardOrInvoice::Selected_Invoice, order->GetCardOrInvoice()->GetSelected());
  EXPECT_EQ("Cy", order->GetCardOrInvoice()->GetInvoice()->GetName());
  EXPECT_EQ("999-ZZ", order->GetTags()[0]);
  EXPECT_EQ(1, order->GetAnyElements().size());
}

TEST(GeneratedOrder, WritesWhatItHasRead) {
  const CSmartPtr<COrder> order = ReadOrder();
  const std::string text = order->ToXml();
  const CSmartPtr<COrder> again = NewOrder();
  again->FromXml(text.c_str());
  EXPECT_EQ(text, again->ToXml());
  EXPECT_NE(std::string::npos, text.find(":type=\"AA:USAddress\"")) << text;
}

TEST(GeneratedOrder, MakesTheRootOfADocument) {
  const CSerializationContext context;
  CXmlDocument document(context);
  document.LoadXml(kDocument);
  const CObjectHandle root = NewRoot(document.GetDocumentElement());
  CXmlObjectBase* const object = root;
  EXPECT_NE(nullptr, dynamic_cast<COrder*>(object));
  document.LoadXml("<other/>");
  EXPECT_EQ(nullptr, NewRoot(document.GetDocumentElement()));
}

TEST(GeneratedOrder, SettersHoldValuesAgainstTheSchema) {
  const CSmartPtr<CItem> item(new CItem);
  item->SetSku("123-AB");
  EXPECT_QZ_THROW(CQzException, "Invalid Value for sku [123].", item->SetSku("123"));
  EXPECT_EQ("123-AB", item->GetSku());
  EXPECT_QZ_THROW(CQzException, "Invalid Value for quantity [0]", item->SetQuantity(0));
  EXPECT_QZ_THROW(CQzException, "Invalid Value for quantity [1001]", item->SetQuantity(1001));
  EXPECT_FALSE(item->IsSetQuantity());
  EXPECT_EQ(0u, item->GetQuantity());
  const CSmartPtr<COrder> order = NewOrder();
  EXPECT_QZ_THROW(CQzException, "Invalid Value for tag [x].", order->GetTags().Add("x"));
}

TEST(GeneratedOrder, DefaultsAreAnsweredAndFixedValuesAreKept) {
  const CSmartPtr<COrder> order = NewOrder();
  EXPECT_EQ(Currency_EUR, order->GetCurrency());
  EXPECT_FALSE(order->IsSetCurrency());
  order->SetCurrency(Currency_USD);
  EXPECT_EQ(Currency_USD, order->GetCurrency());
  order->SetCurrency(std::nullopt);
  EXPECT_EQ(Currency_EUR, order->GetCurrency());

  const CSmartPtr<CAddress> address = order->GetShipTo();
  EXPECT_EQ("1.0", address->GetVersion());
  address->SetVersion("1.0");
  EXPECT_QZ_THROW(CQzInvalidValueException,
                  "The value [2.0] of version is not the fixed value [1.0]",
                  address->SetVersion("2.0"));
}

TEST(GeneratedOrder, MandatoryObjectsAreThereAndOptionalOnesAreMadeOrTakenAway) {
  const CSmartPtr<COrder> order = NewOrder();
  EXPECT_NE(nullptr, order->GetShipTo());
  EXPECT_EQ(nullptr, order->GetBillTo());
  order->EnsureBillTo()->SetName("Bob");
  EXPECT_EQ("Bob", order->GetBillTo()->GetName());
  order->SetBillTo(nullptr);
  EXPECT_EQ(nullptr, order->GetBillTo());
  EXPECT_QZ_THROW(CQzInvalidParamException,
                  "The Property [shipTo] is mandatory, it may node be NULL",
                  order->SetShipTo(nullptr));
}

TEST(GeneratedOrder, AChoiceTakesOneMember) {
  const CSmartPtr<COrder> order = NewOrder();
  const CSmartPtr<COrder::CCardOrInvoice> payment = order->GetCardOrInvoice();
  EXPECT_EQ(COrder::CCardOrInvoice::Selected_None, payment->GetSelected());
  payment->SetCard("4711");
  EXPECT_EQ(COrder::CCardOrInvoice::Selected_Card, payment->GetSelected());
  EXPECT_QZ_THROW(CQzInvalidStateException,
                  "The Property [card] is already set. Only one element within this class bay be "
                  "set at a time",
                  payment->EnsureInvoice());
  payment->SetCard(std::nullopt);
  payment->EnsureInvoice();
  EXPECT_EQ(COrder::CCardOrInvoice::Selected_Invoice, payment->GetSelected());
}

TEST(GeneratedOrder, EnumerationsTurnIntoTextsAndBack) {
  EXPECT_STREQ("none of these", CurrencyToString(Currency_none_of_these));
  EXPECT_EQ(Currency_none_of_these, StringToCurrency(" none of  these"));
  EXPECT_QZ_THROW(CQzInvalidValueException, "The value [JPY] is not one of EUR, USD, none of these",
                  StringToCurrency("JPY"));
  EXPECT_QZ_THROW(CQzInvalidValueException, "The value [3] is not one of EUR, USD, none of these",
                  CurrencyToString(3));
}

TEST(GeneratedOrder, SimpleTypesCanBeAsked) {
  EXPECT_TRUE(kSku.Accepts(" 123-AB "));
  EXPECT_FALSE(kSku.Accepts("123-ab"));
  EXPECT_TRUE(kQuantity.Accepts("1000"));
  EXPECT_FALSE(kQuantity.Accepts("1001"));
}
