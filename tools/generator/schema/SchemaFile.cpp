#include "tools/generator/schema/SchemaFile.h"

#include "qzxml/runtime/QzException.h"
#include "qzxml/serialization/SerializationContext.h"
#include "tools/generator/schema/Diagnostics.h"
#include "tools/generator/schema/XmlCatalog.h"

namespace qzxml::generator {

using QzXmlLib16::CQzException;
using QzXmlLib16::CSerializationContext;
using QzXmlLib16::CXmlDocument;

namespace {

// Names are kept as they are written; the tree of nodes resolves them.
const CSerializationContext& GetReadingContext() {
  static const CSerializationContext context = [] {
    CSerializationContext made;
    made.SetSchemaType(QzXmlLib16::SchemaType_NoNamespaces);
    return made;
  }();
  return context;
}

}  // namespace

bool LoadSchemaFile(const std::string& file, SchemaSource& source, CDiagnostics& diagnostics) {
  if (!IsFile(file)) {
    diagnostics.Error(file, "There is no such file.");
    return false;
  }
  source.xml = std::make_unique<CXmlDocument>(GetReadingContext());
  try {
    source.xml->Load(file.c_str());
  } catch (const CQzException& failure) {
    diagnostics.Error(file, failure.GetMessage());
    return false;
  }
  source.root = MakeSchemaTree(&source, diagnostics);
  return true;
}

void LoadSchemaText(const char* text, SchemaSource& source, CDiagnostics& diagnostics) {
  source.xml = std::make_unique<CXmlDocument>(GetReadingContext());
  source.xml->LoadXml(text);
  source.root = MakeSchemaTree(&source, diagnostics);
}

}  // namespace qzxml::generator
