// Writes a GPX file as Fast Infoset in several ways, reads each back, and prints how large it is.
//
// usage: fast_infoset FILE
#include <cstdio>

#include "gpx/gpx.h"
#include "qzxml/QzXml.h"

using namespace QzXmlLib16;

namespace {

constexpr char kGpx[] = "http://www.topografix.com/GPX/1/1";

void PrintSize(const char* what, const CBinaryData& bytes) {
  std::printf("  %-40s%8u\n", what, bytes.GetLength());
}

// Throws unless the bytes give the same document again.
void Check(const gpx::CGpxType& document, const CBinaryData& bytes,
           const CSerializationContext& context) {
  gpx::CGpxType copy;
  copy.FromXmlStream(bytes, context);
  if (copy.ToXml() != document.ToXml()) throw CQzException("The document did not come back.");
}

void AsText(const gpx::CGpxType& document) {
  const CBinaryData bytes = document.ToFastInfosetStream();
  gpx::CGpxType copy;
  copy.FromXmlStream(bytes);  // XML or Fast Infoset, plain or compressed: the bytes decide
  PrintSize("Fast Infoset, values as text", bytes);
  Check(document, bytes, CSerializationContext::GetDefaultContext());
}

void Suggested(const gpx::CGpxType& document) {
  CSerializationContext context;
  CFastInfosetContext& options = context.GetFIContext();
  options.SetSuggestedValues();
  // GPS receivers write fractions of seconds, for which the suggested alphabet has no character.
  options.SetEncoding(ItemType_datetime, CFastInfosetContext::EncodedCharacterString());
  const CBinaryData bytes = document.ToFastInfosetStream(FInfoDecl_None, context);
  PrintSize("Fast Infoset, suggested values", bytes);
  Check(document, bytes, context);
}

void WithVocabulary(const gpx::CGpxType& document) {
  CSerializationContext context;
  context.SetDefaultNamespaceURI(kGpx);  // so that the names have no prefix
  CFastInfosetContext& options = context.GetFIContext();
  CFIVocabulary& vocabulary = *options.GetVocabulary();
  for (const char* name : {"gpx", "trk", "trkseg", "trkpt", "ele", "time"}) {
    vocabulary.AddElement("", kGpx, name);
  }
  for (const char* name : {"version", "creator", "lat", "lon"}) {
    vocabulary.AddAttribute("", "", name);
  }
  options.SetUseGeneratedVocabulary(true);
  options.SetExternalVocabularyURI("urn:example:gpx-names-1");
  const CBinaryData bytes = document.ToFastInfosetStream(FInfoDecl_None, context);
  PrintSize("Fast Infoset, names from a vocabulary", bytes);
  Check(document, bytes, context);  // with the same context: a reader needs the vocabulary too
}

void Compressed(const gpx::CGpxType& document) {
  const CSerializationContext context;
  const CBinaryData bytes =
      document.ToFastInfosetStream(FInfoDecl_None, context, CompressionType_GZip);
  Check(document, bytes, context);
}

// A document without any class.
void Order() {
  CFastInfosetContext options;
  CBinaryStream stream;
  CFastInfosetWriter writer(&options, &stream);
  writer.StartDocument();
  writer.WriteHeader(FInfoDecl_None);
  writer.WriteStartElement("order", "");
  writer.WriteAttribute("id", "", "7", ItemType_string);
  writer.WriteEndElement();
  writer.WriteDocumentEnd();
  writer.EndDocument();
  const CBinaryData bytes = stream.GetData();

  CXmlDocument tree;
  tree.LoadXmlStream(bytes.GetData(), bytes.GetLength());
  std::printf("%s: order %s\n", bytes.GetAsHexString().c_str(),
              tree.GetDocumentElement()->GetAttribute("id", "").c_str());
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) return 2;
  try {
    gpx::CGpxType document;
    document.FromXmlFile(argv[1]);
    std::printf("The track, in octets:\n");
    PrintSize("XML", document.ToXmlStream());
    AsText(document);
    Suggested(document);
    WithVocabulary(document);
    Compressed(document);
    Order();
  } catch (const CQzException& e) {
    std::fprintf(stderr, "%s\n", e.GetFullMessage().c_str());
    return 1;
  }
}
