#pragma once

#include <string>

#include "qzxml/platform/Export.h"
#include "qzxml/runtime/MemoryLeakHelp.h"

namespace QzXmlLib16 {

// Tells where in a JSON text its reader is.
class QZXML_API IErrorPathProvider {
 public:
  // "$" and, innermost first, "." and the name of each member and object that is open.
  virtual std::string GetErrorPath() = 0;

 protected:
  IErrorPathProvider() = default;
  IErrorPathProvider(const IErrorPathProvider&) = default;
  IErrorPathProvider& operator=(const IErrorPathProvider&) = default;
  ~IErrorPathProvider() = default;
};

// Takes the events of CJsonTextReader, in the order of the text. Whatever it throws ends the
// reading and passes on.
class QZXML_API IJsonReaderHandler : public CInstanceMonitor {
 public:
  ~IJsonReaderHandler() override;
  IJsonReaderHandler(const IJsonReaderHandler&) = delete;
  IJsonReaderHandler& operator=(const IJsonReaderHandler&) = delete;

  // Around all other events. A text with nothing but white space gives these two alone.
  virtual void StartDocument() = 0;
  virtual void EndDocument() = 0;

  // The name of a member; its value follows. It may be empty, and come twice in one object.
  virtual void Name(const std::string& name) = 0;

  // The values. Texts are those of the document, escapes resolved; a number is as it was written.
  virtual void String(const std::string& value) = 0;
  virtual void Number(const std::string& value) = 0;
  virtual void StartObject() = 0;
  virtual void EndObject() = 0;
  virtual void StartArray() = 0;
  virtual void EndArray() = 0;
  virtual void Bool(bool value) = 0;
  virtual void Null() = 0;

 protected:
  IJsonReaderHandler();
};

}  // namespace QzXmlLib16
