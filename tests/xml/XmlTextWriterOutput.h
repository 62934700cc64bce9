#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "qzxml/runtime/QzException.h"
#include "qzxml/runtime/TextStream.h"
#include "qzxml/xml/XmlTextWriter.h"

// What the tests of the text writer write to.
namespace qztest {

using namespace QzXmlLib16;

inline constexpr ItemType kString = ItemType_string;

// A writer on a stream in memory.
struct Output {
  Output() = default;
  explicit Output(XmlEncoding encoding) : stream(encoding) {}
  explicit Output(bool formatted) { writer.SetFormatted(formatted); }

  std::string text() { return stream.GetBuffer(); }

  void Start(const char* name, const char* uri = "") { writer.WriteStartElement(name, uri); }
  void Text(const std::string& text) { writer.WriteText(text, kString, false); }
  void Attribute(const char* name, const std::string& value, const char* uri = "") {
    writer.WriteAttribute(name, uri, value, kString);
  }
  void End(int count = 1) {
    while (count-- > 0) writer.WriteEndElement();
  }

  CTextStream stream;
  CXmlTextWriter writer{&stream};
};

// Keeps what is asked of a stream, in order.
class RecordingStream : public CTextStream {
 public:
  void Start() override { calls += "Start "; }
  void End() override { calls += "End "; }
  void Flush() override { calls += "Flush(" + std::to_string(GetLength()) + ") "; }
  std::string calls;
};

// Gives everything on at each flush, as a file does.
class EmptyingStream : public CTextStream {
 public:
  void Flush() override {
    flushed += GetBuffer();
    m_buffer.Reset();
    sizes.push_back(flushed.size());
  }
  std::string flushed;
  std::vector<std::size_t> sizes;  // of what had been flushed after each flush
};

class FailingStream : public CTextStream {
 public:
  void Flush() override {
    if (fails) throw CQzException("the disk is full");
  }
  bool fails = true;
};

// A writer that is no plain one, and so never takes the short way for a text element.
class LongWayWriter : public CXmlTextWriter {
 public:
  using CXmlTextWriter::CXmlTextWriter;
};

inline std::string Repeated(const std::string& unit, std::size_t count) {
  std::string text;
  while (count-- > 0) text += unit;
  return text;
}

}  // namespace qztest
