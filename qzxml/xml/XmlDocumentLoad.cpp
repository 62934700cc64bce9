#include <atomic>
#include <cstddef>
#include <cstring>
#include <limits>
#include <memory>
#include <string>
#include <utility>

#include "qzxml/fastinfoset/FastInfosetReader.h"
#include "qzxml/platform/File.h"
#include "qzxml/runtime/Encoder.h"
#include "qzxml/runtime/Functions.h"
#include "qzxml/runtime/QzException.h"
#include "qzxml/runtime/QzZip.h"
#include "qzxml/serialization/SerializationContext.h"
#include "qzxml/values/BinaryData.h"
#include "qzxml/xml/ExpatReader.h"
#include "qzxml/xml/InputFile.h"
#include "qzxml/xml/Messages.h"
#include "qzxml/xml/XmlDocument.h"
#include "qzxml/xml/XmlDocumentNodes.h"

// The ways into a CXmlDocument. Input is parsed where it stands, the caller's own bytes included,
// and nothing of it is kept behind the load.

namespace QzXmlLib16 {
namespace {

constexpr std::size_t kChunk = 0x20000;

std::atomic<bool> g_asyncFromXmlFile{false};

// Input is measured in 32 bits.
std::uint32_t CheckLength(std::uint64_t length) {
  if (length > std::numeric_limits<std::uint32_t>::max()) {
    throw CQzException("An XML text of 4 GiB or more is not supported.");
  }
  return static_cast<std::uint32_t>(length);
}

// A file read chunk by chunk. While one is parsed, the system reads the next.
class CChunks {
 public:
  explicit CChunks(const char* path) : m_file(detail::OpenForReading(path)) {}

  // The next octets of the file, which stay until the next call; fewer than kChunk are the last.
  // Throws CQzException "Failed to read the contents of the file. Error [0x%08x]".
  std::size_t Read() {
    std::size_t done = 0;
    const int error = m_file->Read(m_position, m_buffer.get(), kChunk, done);
    if (error != 0) {
      throw CQzException(FormatString(Messages::kChunkNotRead, static_cast<unsigned int>(error)));
    }
    m_position += done;
    if (done == kChunk) m_file->ReadAhead(m_position, kChunk);
    return done;
  }

  const unsigned char* GetBytes() const { return m_buffer.get(); }

 private:
  const std::unique_ptr<detail::IFile> m_file;
  const std::unique_ptr<unsigned char[]> m_buffer{new unsigned char[kChunk]};
  std::uint64_t m_position = 0;
};

}  // namespace

void AsyncFromXmlFile(bool async) { g_asyncFromXmlFile.store(async, std::memory_order_relaxed); }

// One load: begins with an empty document and sets the bounds of its context; ends without input.
class CXmlDocument::CLoadScope {
 public:
  explicit CLoadScope(CXmlDocument& document) : m_document(document) {
    if (document.m_bLoading) {
      throw CQzInvalidStateException(Messages::kLoadFromCallback);
    }
    document.Cleanup();
    document.CXmlDocument::Cleanup();  // a derived class may have left something
    document.m_pNodes->SetBounds(*document.m_pContext);
    document.m_bLoading = true;
  }
  CLoadScope(const CLoadScope&) = delete;
  CLoadScope& operator=(const CLoadScope&) = delete;
  ~CLoadScope() {
    SetInput(nullptr, 0);
    m_document.m_bLoading = false;
    m_document.m_pNodes->ClearBounds();
  }

  void SetInput(const void* data, std::uint32_t length) {
    m_document.m_pInput = static_cast<const unsigned char*>(data);
    m_document.m_dwInputLength = length;
  }

 private:
  CXmlDocument& m_document;
};

void CXmlDocument::Load(const char* path) {
  const std::string file(detail::ViewOf(path));  // the path may be a text of the tree that goes
  CLoadScope scope(*this);
  if (g_asyncFromXmlFile.load(std::memory_order_relaxed)) {
    LoadFileInChunks(scope, file.c_str());
  } else {
    LoadWholeFile(scope, file.c_str());
  }
}

void CXmlDocument::LoadWholeFile(CLoadScope& scope, const char* path) {
  const detail::WholeFile file = detail::ReadWholeFile(path);
  scope.SetInput(file.octets.get(), file.length);
  Parse();
}

void CXmlDocument::LoadFileInChunks(CLoadScope& scope, const char* path) {
  CChunks chunks(path);
  std::size_t length = chunks.Read();
  CExpatReader reader(*this);
  reader.Init();
  for (; length == kChunk; length = chunks.Read()) {
    scope.SetInput(chunks.GetBytes(), static_cast<std::uint32_t>(length));
    reader.Parse(false);
  }
  scope.SetInput(chunks.GetBytes(), static_cast<std::uint32_t>(length));
  reader.Parse(true);
  if (m_pDocElement == nullptr) throw CQzException(Messages::kEmptyDocument);
}

void CXmlDocument::LoadXmlStream(const unsigned char* data, std::uint32_t length) {
  CLoadScope scope(*this);
  if (data == nullptr || length == 0) throw CQzException("XML Stream is empty!");
  scope.SetInput(data, length);
  Parse();
}

void CXmlDocument::LoadXml(const char* text) {
  CLoadScope scope(*this);
  const std::string_view bytes = detail::ViewOf(text);
  if (bytes.empty()) throw CQzException("XML String is empty!");
  scope.SetInput(bytes.data(), CheckLength(bytes.size()));
  ParseText();
}

// A byte-order mark in front tells the parser that the units are UTF-16, little endian.
void CXmlDocument::LoadXml(const char16_t* text) {
  CLoadScope scope(*this);
  const std::u16string_view units =
      text != nullptr ? std::u16string_view(text) : std::u16string_view();
  const std::uint32_t length = CheckLength((std::uint64_t{units.size()} + 1) * 2);
  const std::unique_ptr<unsigned char[]> buffer(new unsigned char[length]);
  unsigned char* out = buffer.get();
  *out++ = 0xFF;
  *out++ = 0xFE;
  for (const char16_t unit : units) {
    *out++ = static_cast<unsigned char>(unit & 0xFF);
    *out++ = static_cast<unsigned char>(unit >> 8);
  }
  scope.SetInput(buffer.get(), length);
  ParseText();
}

void CXmlDocument::LoadXml(const wchar_t* text) {
  LoadXml(text != nullptr ? WideToUtf16(text).c_str() : u"");
}

// Input that may be compressed, and may be Fast Infoset, which its bytes tell.
void CXmlDocument::Parse() {
  CBinaryData expanded;
  if (CQzZip::Decompress(m_pInput, m_dwInputLength, expanded)) {
    m_pInput = expanded.GetData();
    m_dwInputLength = expanded.GetLength();
  }
  if (!CFastInfosetReader::IsFastInfoset(m_pInput, m_dwInputLength)) {
    ParseText();
    return;
  }
  CFastInfosetReader(&m_pContext->GetFIContext(), this).Parse();
  if (m_pDocElement == nullptr) throw CQzException(Messages::kEmptyDocument);
}

void CXmlDocument::ParseText() {
  CExpatReader reader(*this);
  reader.Init();
  reader.Parse(true);
}

}  // namespace QzXmlLib16
