// Writes an order document of any size from a class that is filled while it is written, and prints
// the size of the file and the highest resident size of the process, both in octets.
//
// usage: large_file (pieces|whole) OCTETS ORDERS OUTPUT
//
// ORDERS is a small order document: its orders are written over and over. With "pieces" the file is
// written while the document grows, with "whole" the document is in memory first.
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "orders/orders.h"
#include "qzxml/QzXml.h"

using namespace QzXmlLib16;
using namespace QzXmlLib16Data;

namespace {

using OrderCol = CObjectCol<orders::COrder>;

// The orders of a document, over and over, under numbers of their own. There is one order at a
// time: it gets its number when its turn has come.
class CEndlessOrders : public CXmlCollectionBase {
 public:
  CEndlessOrders(OrderCol& pattern, int count)
      : CXmlCollectionBase("Order", pattern.GetNamespace().c_str(), 0, -1), m_count(count) {
    for (const CSmartPtr<orders::COrder>& order : pattern) m_pattern.push_back(order);
  }
  int GetCount() const override { return m_count; }
  void Clear() override { m_count = 0; }
  void Remove(int) override { --m_count; }

 protected:
  void ToXml_Int(CXmlWriter* writer, bool, const char* uri, const CSerializationContext& context,
                 bool) const override {
    for (int i = 0; i < m_count; ++i) {
      orders::COrder& order = *m_pattern[static_cast<std::size_t>(i) % m_pattern.size()];
      order.SetId(i + 1);
      CXmlObjectBase::ToXml_Int(&order, writer, false, uri, context, false);
    }
  }
  CXmlElement* FromXml_Int(CXmlElement*, CXmlElement* cursor, const CSerializationContext&,
                           bool) override {
    return cursor;
  }

 private:
  std::vector<CSmartPtr<orders::COrder>> m_pattern;
  int m_count;
};

// The document, with such a collection in the place of that of orders::COrders. Its tables are
// written by hand, as the collections of generated classes are of their own making.
class CEndlessDocument : public CTabledClass {
 public:
  CEndlessDocument(const orders::COrders& pattern, int count)
      : m_namespace(pattern.GetNamespace()),
        m_created(pattern.GetCreated()),
        m_orders(new CEndlessOrders(pattern.GetOrders(), count)) {
    SetElementName("Orders");
  }

  std::string GetTargetNamespace() const override { return m_namespace; }
  std::string GetNamespace() const override { return m_namespace; }

 protected:
  void AccessProperty(int index, bool read, QzVariant& value) const override {
    if (!read) return;
    if (index == Property_Created) value.LendDateTime(ItemType_date, m_created);
    if (index == Property_Orders) value.SetXmlCollection(m_orders);
  }
  void Init() override {}
  const CTables& GetTables() const override {
    static CTables tables;
    return BuildOnce(tables, [this](CTables& made) {
      const char* const uri = m_namespace.c_str();
      made.SetInfo(new CParentElementInfo(XmlElementGroupType_Sequence, XmlElementType_Element,
                                          "Orders", uri, true, false, -1, ItemType_None, nullptr,
                                          false));
      made.SetElements(
          {new CElementInfoSeqClsCol("Order", uri, Property_Orders, XmlElementType_Element)});
      made.SetAttributes({new CAttributeInfoPrimitive(
          "created", "", Property_Created, false, ItemType_date, nullptr,
          CWhitespaceUtils::WhitespaceRule_Collapse, CPrimitiveRestrictions(), nullptr)});
    });
  }

 private:
  enum Property : int { Property_Created, Property_Orders };

  std::string m_namespace;
  CDateTime m_created;
  CSmartPtr<CEndlessOrders> m_orders;
};

// How many orders make so many octets, when those of the pattern make up its text.
int CountFor(const std::string& text, const orders::COrders& pattern, double octets) {
  orders::COrders empty;
  empty.SetCreated(pattern.GetCreated());
  const auto ofOrders = static_cast<double>(text.size() - empty.ToXml().size());
  return static_cast<int>(octets / ofOrders * pattern.GetOrders().GetCount()) + 1;
}

// Since this program began; getrusage would count what called it as well.
double PeakOctets() {
  std::ifstream status("/proc/self/status");
  for (std::string word; status >> word;) {
    double kilobytes = 0;
    if (word == "VmHWM:" && status >> kilobytes) return kilobytes * 1024;
  }
  throw CQzException("The system does not tell the resident size.");
}

int Run(const char* way, const char* octets, const char* orders, const char* output) {
  orders::COrders pattern;
  pattern.FromXmlFile(orders);
  CSerializationContext context;
  context.SetDefaultNamespaceURI(pattern.GetNamespace().c_str());
  const std::string text = pattern.ToXml(true, true, EOLType_LF, context);
  CEndlessDocument document(pattern, CountFor(text, pattern, std::atof(octets)));
  AsyncToXmlFile(std::strcmp(way, "pieces") == 0);
  document.ToXmlFile(output, true, true, XmlEncoding_UTF8, EOLType_LF, context);
  std::printf("%.0f %.0f\n", static_cast<double>(std::filesystem::file_size(output)), PeakOctets());
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 5) {
    std::fprintf(stderr, "usage: large_file (pieces|whole) OCTETS ORDERS OUTPUT\n");
    return 2;
  }
  try {
    return Run(argv[1], argv[2], argv[3], argv[4]);
  } catch (const CQzException& e) {
    std::fprintf(stderr, "%s\n", e.GetFullMessage().c_str());
  } catch (const std::exception& e) {
    std::fprintf(stderr, "%s\n", e.what());
  }
  return 1;
}
