#include "qzxml/serialization/FileOutput.h"

#include <atomic>

#include "qzxml/runtime/QzException.h"
#include "qzxml/serialization/XmlObjectBase.h"

namespace QzXmlLib16 {
namespace {

std::atomic<bool> g_asyncToXmlFile{false};

}  // namespace

void AsyncToXmlFile(bool async) { g_asyncToXmlFile.store(async, std::memory_order_relaxed); }

void detail::RequireFileCompression(CompressionType compression) {
  if (compression == CompressionType_ZLib) {
    throw CQzException("ZLIB Compression only available for To Stream methods.");
  }
}

bool detail::IsFileWrittenInPieces(CompressionType compression) {
  RequireFileCompression(compression);
  return compression == CompressionType_None && g_asyncToXmlFile.load(std::memory_order_relaxed);
}

}  // namespace QzXmlLib16
