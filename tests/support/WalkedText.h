#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "qzxml/fastinfoset/FastInfosetContext.h"
#include "qzxml/fastinfoset/FastInfosetWriter.h"
#include "qzxml/runtime/BinaryStream.h"
#include "qzxml/runtime/QzException.h"
#include "qzxml/runtime/TextStream.h"
#include "qzxml/serialization/SerializationContext.h"
#include "qzxml/serialization/XmlObjectBase.h"
#include "qzxml/values/BinaryData.h"
#include "qzxml/xml/XmlTextWriter.h"

// The text of an object as the walk over the tables of its class writes it, beside that of its
// plan.
namespace qztest {

using namespace QzXmlLib16;

// A text writer that is none of the library's own as far as objects can see: none of the ways are
// open to it that leave calls of CXmlWriter out.
class WalkedWriter : public CXmlTextWriter {
 public:
  using CXmlTextWriter::CXmlTextWriter;
};

class WalkedFastInfosetWriter : public CFastInfosetWriter {
 public:
  using CFastInfosetWriter::CFastInfosetWriter;
};

// How a document is written, and in pieces of which size.
struct Form {
  bool formatted = true;
  EOLType eol = EOLType_LF;
  std::uint32_t blockSize = 65536;
  bool flushes = false;  // whether the stream gives on what it has
};

// A stream with such blocks.
class PiecesStream : public CTextStream {
 public:
  explicit PiecesStream(const Form& form)
      : CTextStream(XmlEncoding_UTF8, form.blockSize), m_flushes(form.flushes) {}
  void Flush() override {
    if (!m_flushes) return;
    text += GetBuffer();
    m_buffer.Reset();
    flushes.push_back(text.size());
  }
  std::string text;
  std::vector<std::size_t> flushes;

 private:
  bool m_flushes;
};

// What came of it, with the failure or nothing.
struct Written {
  std::string text;
  std::vector<std::size_t> flushes;  // how much had been given on behind each flush
  std::string failure;
};

class Writing : public CXmlObjectBase {
 public:
  template <typename Writer>
  static Written By(const CXmlObjectBase& object, const Form& form,
                    const CSerializationContext& context) {
    PiecesStream stream(form);
    Written written;
    {
      Writer writer(&stream);
      try {
        writer.StartDocument();
        writer.SetFormatted(form.formatted);
        writer.SetIndentChars(context.GetIndentChars());
        writer.SetEOLType(form.eol);
        writer.SetWriteDefaultValues(context.GetWriteDefaultElementValues());
        CXmlObjectBase::ToXml_Int(&object, &writer, true, object.GetTargetNamespace().c_str(),
                                  context, false);
        writer.EndDocument();
      } catch (const CQzException& e) {
        written.failure = e.GetFullMessage();
      }
    }
    written.text = stream.text + stream.GetBuffer();
    written.flushes = stream.flushes;
    return written;
  }

  // The octets of Fast Infoset.
  template <typename Writer>
  static Written OctetsBy(const CXmlObjectBase& object, const CSerializationContext& context) {
    CBinaryStream stream;
    Written written;
    {
      Writer writer(&context.GetFIContext(), &stream);
      try {
        writer.StartDocument();
        writer.WriteHeader(FInfoDecl_None);
        CXmlObjectBase::ToXml_Int(&object, &writer, true, object.GetTargetNamespace().c_str(),
                                  context, false);
        writer.WriteDocumentEnd();
        writer.EndDocument();
      } catch (const CQzException& e) {
        written.failure = e.GetFullMessage();
        writer.WriteDocumentEnd();  // what was put until then
      }
    }
    const CBinaryData octets = stream.GetData();
    written.text.assign(reinterpret_cast<const char*>(octets.GetData()), octets.GetLength());
    return written;
  }
};

inline Written ByPlan(const CXmlObjectBase& object, const Form& form,
                      const CSerializationContext& context) {
  return Writing::By<CXmlTextWriter>(object, form, context);
}

inline Written ByWalk(const CXmlObjectBase& object, const Form& form,
                      const CSerializationContext& context) {
  return Writing::By<WalkedWriter>(object, form, context);
}

inline Written OctetsByPlan(const CXmlObjectBase& object, const CSerializationContext& context) {
  return Writing::OctetsBy<CFastInfosetWriter>(object, context);
}

inline Written OctetsByWalk(const CXmlObjectBase& object, const CSerializationContext& context) {
  return Writing::OctetsBy<WalkedFastInfosetWriter>(object, context);
}

}  // namespace qztest
