#include "tests/tools/emit/OrderModel.h"

#include <utility>

using namespace qzxml::generator;

namespace {

constexpr char kUri[] = "urn:example:order";

// The library's constants.
BoundSimpleType* AddBuiltIn(Model& model, const char* constant, const char* kind,
                            const char* cppType, bool isPassedByValue) {
  model.builtIns.push_back(std::make_unique<BoundSimpleType>());
  BoundSimpleType& type = *model.builtIns.back();
  type.constant = constant;
  type.kind = kind;
  type.cppType = cppType;
  type.isPassedByValue = isPassedByValue;
  return &type;
}

BoundSimpleType* AddSimple(BoundNamespace& where, const char* constant, const char* kind,
                           const char* cppType) {
  where.simpleTypes.push_back(std::make_unique<BoundSimpleType>());
  BoundSimpleType& type = *where.simpleTypes.back();
  type.where = &where;
  type.constant = constant;
  type.kind = kind;
  type.cppType = cppType;
  type.whitespace = "WhitespaceRule_Collapse";
  return &type;
}

BoundClass* AddClass(BoundNamespace& where, const char* name, const char* elementName) {
  where.classes.push_back(std::make_unique<BoundClass>());
  BoundClass& made = *where.classes.back();
  made.where = &where;
  made.name = "C" + std::string(name);
  made.fileStem = name;
  made.typeName = name;
  made.elementName = elementName;
  return &made;
}

BoundMember Member(BoundForm form, const char* name, const char* xmlName, const char* uri,
                   std::int32_t minOccurs, std::int32_t maxOccurs) {
  BoundMember member;
  member.form = form;
  member.name = name;
  member.variable = "m_" + std::string(1, static_cast<char>(name[0] - 'A' + 'a')) + (name + 1);
  member.xmlName = xmlName;
  member.xmlNamespace = uri;
  member.minOccurs = minOccurs;
  member.maxOccurs = maxOccurs;
  return member;
}

BoundMember Attribute(const char* name, const char* xmlName, std::int32_t minOccurs,
                      const BoundSimpleType* type) {
  BoundMember member = Member(BoundForm::Attribute, name, xmlName, "", minOccurs, 1);
  member.simple = type;
  return member;
}

BoundMember Value(const char* name, const char* xmlName, std::int32_t minOccurs,
                  std::int32_t maxOccurs, const BoundSimpleType* type) {
  BoundMember member = Member(BoundForm::Value, name, xmlName, kUri, minOccurs, maxOccurs);
  member.simple = type;
  return member;
}

BoundMember Object(const char* name, const char* xmlName, std::int32_t minOccurs,
                   std::int32_t maxOccurs, const BoundClass* objectClass, bool isByType) {
  BoundMember member = Member(BoundForm::Object, name, xmlName, kUri, minOccurs, maxOccurs);
  member.objectClass = objectClass;
  member.isByType = isByType;
  return member;
}

// The types that an xsi:type may name for the type, which members with it get.
void AddFamily(BoundNamespace& where, const BoundSimpleType* declared,
               std::vector<BoundSimpleFamily::Named> names) {
  where.families.push_back(std::make_unique<BoundSimpleFamily>());
  BoundSimpleFamily& made = *where.families.back();
  made.where = &where;
  made.declared = declared;
  made.types = declared->constant + "_Types";
  made.named = declared->constant + "_Named";
  made.names = std::move(names);
  for (const auto& boundClass : where.classes) {
    for (BoundMember& member : boundClass->members) {
      if (member.form == BoundForm::Value && member.simple == declared) member.family = &made;
    }
  }
}

}  // namespace

OrderModel::OrderModel() {
  BoundSimpleType* const string =
      AddBuiltIn(model, "kXsdString", "ItemType_string", "std::string", false);
  BoundSimpleType* const unsignedInt =
      AddBuiltIn(model, "kXsdUnsignedInt", "ItemType_ui4", "std::uint32_t", true);
  BoundSimpleType* const xsInt = AddBuiltIn(model, "kXsdInt", "ItemType_i4", "std::int32_t", true);
  BoundSimpleType* const date = AddBuiltIn(model, "kXsdDate", "ItemType_date", "CDateTime", false);
  BoundSimpleType* const decimal =
      AddBuiltIn(model, "kXsdDecimal", "ItemType_decimal", "CDecimal", false);

  model.namespaces.push_back(std::make_unique<BoundNamespace>());
  BoundNamespace& orders = *model.namespaces.back();
  orders.cppName = "orders";
  orders.uri = kUri;
  orders.fileStem = "orders";

  orders.enums.push_back(std::make_unique<BoundEnum>());
  BoundEnum& currencies = *orders.enums.back();
  currencies.where = &orders;
  currencies.name = "Currency";
  currencies.whitespace = "WhitespaceRule_Collapse";
  currencies.enumerators = {{"Currency_EUR", "EUR", ""},
                            {"Currency_USD", "USD", ""},
                            {"Currency_none_of_these", "none of these", ""}};

  BoundSimpleType* const currency = AddSimple(orders, "kCurrency", "ItemType_i4", "Currency");
  currency->enumeration = &currencies;
  currency->isPassedByValue = true;

  BoundSimpleType* const quantity = AddSimple(orders, "kQuantity", "ItemType_ui4", "std::uint32_t");
  quantity->isPassedByValue = true;
  quantity->facets = {{"MinInclusive", "\"1\""}, {"MaxInclusive", "\"1000\""}};

  token.builtIn = BuiltIn_token;
  sku.base = &token;
  sku.facets.patterns.resize(1);
  sku.facets.patterns[0].text = "[0-9]{3}-[A-Z]{2}";
  sku.facets.single[FacetKind_maxLength].emplace().value = "6";
  BoundSimpleType* const skuType = AddSimple(orders, "kSku", "ItemType_string", "std::string");
  skuType->documentation = "Three digits and two capitals.";
  skuType->type = &sku;
  skuType->needsRules = true;

  BoundClass* const order = AddClass(orders, "Order", "order");
  BoundClass* const item = AddClass(orders, "Item", "Item");
  BoundClass* const address = AddClass(orders, "Address", "Address");
  BoundClass* const usAddress = AddClass(orders, "USAddress", "USAddress");
  BoundClass* const payment = AddClass(orders, "CardOrInvoice", "cardOrInvoice");

  order->documentation =
      "An order of one customer, with everything that has to be delivered to one address, and how "
      "it\n        is paid.";
  order->nested = {payment};
  order->members = {Attribute("Id", "id", 1, unsignedInt),
                    Attribute("Date", "date", 0, date),
                    Attribute("Currency", "currency", 0, currency),
                    Object("ShipTo", "shipTo", 1, 1, address, true),
                    Object("BillTo", "billTo", 0, 1, address, true),
                    Object("Items", "item", 1, -1, item, false),
                    Member(BoundForm::Group, "CardOrInvoice", "cardOrInvoice", "", 1, 1),
                    Value("Tags", "tag", 0, 5, skuType),
                    Member(BoundForm::Wildcard, "AnyElements", "", kUri, 0, -1)};
  order->members[2].defaultValue = "EUR";
  order->members[6].objectClass = payment;
  order->members[6].requiresContent = true;
  order->members[8].wildcard = "##other";

  payment->outer = order;
  payment->fileStem = "Order";
  payment->typeName = "";
  payment->isGroup = true;
  payment->groupType = BoundGroupType::Choice;
  payment->requiresContent = true;
  payment->members = {Value("Card", "card", 0, 1, string),
                      Object("Invoice", "invoice", 0, 1, address, true)};

  item->members = {Attribute("Sku", "sku", 1, skuType), Attribute("Unit", "unit", 0, currency),
                   Value("Quantity", "quantity", 1, 1, quantity),
                   Value("Price", "price", 1, 1, decimal), Value("Note", "note", 0, 1, string)};
  item->members[3].documentation = "Of one piece.";

  address->isDerived = true;
  address->derived = {usAddress};
  address->members = {Attribute("Version", "version", 0, string),
                      Member(BoundForm::AnyAttribute, "AnyAttributes", "", kUri, 0, -1),
                      Value("Name", "name", 1, 1, string), Value("Lines", "line", 1, 3, string)};
  address->members[0].defaultValue = "1.0";
  address->members[0].isFixed = true;
  address->members[1].wildcard = "##other";

  usAddress->isDerived = true;
  usAddress->base = address;
  usAddress->basePropertyCount = 4;
  usAddress->members = {Value("Zip", "zip", 1, 1, xsInt)};

  const BoundSimpleFamily::Named skuName = {{kUri, "Sku"}, skuType};
  const BoundSimpleFamily::Named quantityName = {{kUri, "Quantity"}, quantity};
  AddFamily(orders, skuType, {skuName});
  AddFamily(orders, quantity, {quantityName});
  AddFamily(orders, decimal, {quantityName});
  AddFamily(orders, string, {{{kUri, "Currency"}, currency}, skuName});

  orders.roots.push_back({"order", kUri, order, false, "What a shop is sent."});
}
