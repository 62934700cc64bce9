#include "tests/support/ReadingClass.h"

#include <gtest/gtest.h>

namespace qztest {

using namespace QzXmlLib16;

namespace {

std::string Describe(const QzVariant& value) {
  if (value.IsNil()) return "(nil)";
  switch (value.GetTypeAsEnum()) {
    case ItemType_None:
      return "-";
    case ItemType_XmlObjectBase: {
      CXmlObjectBase* const object = value.GetXmlObject();
      if (object == nullptr) return "(null)";
      if (const auto* element = dynamic_cast<CElement*>(object)) return element->GetName();
      return "{" + Describe((*dynamic_cast<CTableObject*>(object))[0]) + "}";
    }
    case ItemType_XmlCollection: {
      CXmlCollectionBase* const collection = value.GetXmlCollection();
      std::string items;
      if (const auto* texts = dynamic_cast<CTextCol*>(collection)) {
        for (const std::string& text : texts->texts) items += text;
      }
      return "[" + items + "]";
    }
    default:
      return value.ToString(nullptr);
  }
}

}  // namespace

std::string Read(const CReadingClass& tables, const std::string& document,
                 const CSerializationContext& context) {
  return Outcome([&] {
    CSmartPtr<CTableObject> object(new CTableObject(tables));
    std::string text = document;
    text.insert(2, " xmlns:xsi='" + std::string(kXsi) + "' xmlns:o='urn:o'");
    object->FromXml(text.c_str(), context);
    std::string properties;
    for (std::size_t i = 0; i < tables.propertyCount(); ++i) {
      properties += (i == 0 ? "" : " ") + Describe((*object)[i]);
    }
    return properties;
  });
}

std::string Read(const CReadingClass& tables, const std::string& document, Flag flag) {
  return Read(tables, document, Flagged(flag));
}

void ExpectColumns(const CReadingClass& tables, Flag flag, std::initializer_list<Column> columns) {
  for (const Column& c : columns) {
    EXPECT_EQ(c.clear, Read(tables, c.document)) << c.document << " with no flag";
    EXPECT_EQ(c.set, Read(tables, c.document, flag)) << c.document << " with " << NameOf(flag);
  }
}

}  // namespace qztest
