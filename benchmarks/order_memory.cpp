// Prints the highest resident size that one way of reading a file needs above an idle process, in
// octets for each octet of the file. One way a process, as the high-water mark only rises.
//
// usage: order_memory (document|objects|write) FILE
#include <sys/resource.h>

#include <cstdio>
#include <cstring>
#include <filesystem>

#include "orders/orders.h"
#include "qzxml/QzXml.h"

namespace {

double PeakOctets() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  return static_cast<double>(usage.ru_maxrss) * 1024;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) {
    std::fprintf(stderr, "usage: order_memory (document|objects|write) FILE\n");
    return 2;
  }
  orders::COrders warmUp;
  warmUp.FromXml("<Orders xmlns='urn:example:orders' created='2026-01-01'/>");
  const double idle = PeakOctets();
  if (std::strcmp(argv[1], "document") == 0) {
    QzXmlLib16::CXmlDocument document;
    document.Load(argv[2]);
  } else {
    orders::COrders object;
    object.FromXmlFile(argv[2]);
    if (std::strcmp(argv[1], "write") == 0) std::printf("%zu octets\n", object.ToXml().size());
  }
  std::printf("%.2f\n",
              (PeakOctets() - idle) / static_cast<double>(std::filesystem::file_size(argv[2])));
  return 0;
}
