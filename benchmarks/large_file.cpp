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

#include "benchmarks/Orders.h"

using namespace QzXmlLib16;

namespace {

// The orders of a document, over and over, under numbers of their own. There is one order at a
// time: it gets its number when its turn has come.
class CEndlessOrders : public CXmlCollectionBase {
 public:
  CEndlessOrders(orders::COrderCol& pattern, int count)
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

// The document class, with such a collection in the place of its own.
class CEndlessDocument : public orders::COrders {
 public:
  CEndlessDocument(orders::COrderCol& pattern, int count)
      : m_orders(new CEndlessOrders(pattern, count)) {}

 protected:
  void AccessProperty(int index, bool read, QzVariant& value) const override {
    orders::COrders::AccessProperty(index, read, value);
    if (read && value.GetTypeAsEnum() == ItemType_XmlCollection) value.SetXmlCollection(m_orders);
  }

 private:
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
  CEndlessDocument document(pattern.GetOrders(), CountFor(text, pattern, std::atof(octets)));
  document.SetCreated(pattern.GetCreated());
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
