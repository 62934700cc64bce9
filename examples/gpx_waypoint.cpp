// Adds a waypoint to a GPX file and prints the document.
//
// usage: gpx_waypoint FILE
#include <iostream>

#include "gpx/gpx.h"
#include "qzxml/QzXml.h"

int main(int argc, char** argv) {
  if (argc != 2) return 2;
  gpx::CGpxType document;
  try {
    document.FromXmlFile(argv[1]);  // checks elements, attributes, types and facets
    const CSmartPtr<gpx::CWptType> summit = document.GetWpts().Add();
    summit->SetLat(48.1);
    summit->SetLon(14.9);
    summit->SetName("Summit");
    std::cout << document.ToXml();  // indented, with declaration
  } catch (const QzXmlLib16::CQzException& e) {
    std::cerr << e.GetFullMessage() << '\n';  // what was wrong, and where
    return 1;
  }
}
