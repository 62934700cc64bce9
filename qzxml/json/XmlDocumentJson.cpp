#include <cstdint>
#include <cstring>
#include <limits>
#include <string>
#include <string_view>

#include "qzxml/json/JsonReaderToXmlHandler.h"
#include "qzxml/json/Messages.h"
#include "qzxml/runtime/Encoder.h"
#include "qzxml/runtime/QzException.h"
#include "qzxml/runtime/QzZip.h"
#include "qzxml/serialization/TextOrEmpty.h"
#include "qzxml/values/BinaryData.h"
#include "qzxml/xml/InputFile.h"
#include "qzxml/xml/Messages.h"
#include "qzxml/xml/XmlDocument.h"

// The ways of JSON into a CXmlDocument, which only turn it into XML text.

namespace QzXmlLib16 {
namespace {

// Octets of UTF-8 as local text, without a byte-order mark in front.
std::string GetPlainText(const unsigned char* data, std::uint32_t length) {
  constexpr unsigned char mark[] = {0xEF, 0xBB, 0xBF};
  if (length >= sizeof mark && std::memcmp(data, mark, sizeof mark) == 0) {
    data += sizeof mark;
    length -= static_cast<std::uint32_t>(sizeof mark);
  }
  if (length == 0) return std::string();
  return Utf8ToLocal(reinterpret_cast<const char*>(data), length);
}

// The same of octets that may be compressed.
std::string GetText(const unsigned char* data, std::uint32_t length) {
  CBinaryData expanded;
  if (!CQzZip::Decompress(data, length, expanded)) return GetPlainText(data, length);
  return GetPlainText(expanded.GetData(), expanded.GetLength());
}

// The octets go before the text is parsed.
std::string ReadFile(const char* path) {
  const detail::WholeFile file = detail::ReadWholeFile(path);
  return GetText(file.octets.get(), file.length);
}

}  // namespace

void CXmlDocument::InitForJson() {
  if (m_bLoading) throw CQzInvalidStateException(Messages::kLoadFromCallback);
  Cleanup();
  CXmlDocument::Cleanup();  // a derived class may have left something
}

CBinaryData CXmlDocument::LoadJsonFile(const char* path) {
  const std::string file = detail::TextOrEmpty(path);  // it may be a text of the tree that goes
  InitForJson();
  return JsonToXml(ReadFile(file.c_str()), *m_pContext);
}

CBinaryData CXmlDocument::LoadJsonStream(const unsigned char* data, std::uint32_t length) {
  InitForJson();
  if (data == nullptr || length == 0) throw CQzException("JSON Stream is empty!");
  return JsonToXml(GetText(data, length), *m_pContext);
}

// The texts are copied before the document is emptied, whose own they may be.

void CXmlDocument::CheckJsonLength(std::uint64_t length) {
  if (length <= std::numeric_limits<std::uint32_t>::max()) return;
  InitForJson();
  throw CQzException(Messages::kJsonTooLong);
}

CBinaryData CXmlDocument::LoadJson(const char* text) {
  const std::string_view bytes = detail::TextOrEmpty(text);
  CheckJsonLength(bytes.size());
  const std::string copy(bytes);
  InitForJson();
  return ParseJsonText(copy);
}

CBinaryData CXmlDocument::LoadJson(const char16_t* text) {
  const std::u16string_view units = text != nullptr ? text : u"";
  CheckJsonLength(std::uint64_t{units.size()} * 2);
  std::string bytes;
  bytes.reserve(units.size() * 2);
  for (const char16_t unit : units) {
    bytes += static_cast<char>(unit & 0xFF);
    bytes += static_cast<char>(unit >> 8);
  }
  InitForJson();
  return ParseJsonText(bytes);
}

CBinaryData CXmlDocument::LoadJson(const wchar_t* text) {
  return LoadJson(text != nullptr ? WideToUtf16(text).c_str() : u"");
}

CBinaryData CXmlDocument::ParseJsonText(const std::string& text) const {
  if (text.empty()) throw CQzException("JSON String is empty!");
  return JsonToXml(text, *m_pContext);
}

}  // namespace QzXmlLib16
