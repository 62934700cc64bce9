#pragma once

#include <string>

#include "qzxml/json/JsonReaderHandler.h"
#include "qzxml/json/JsonTextReader.h"

namespace qztest {

// Writes down the events of a JSON text, a blank in front of each: "(" and ")" for the document,
// "{", "}", "[" and "]", "name:", "\"text\"", "#number", "true", "false", "null".
class CEvents : public QzXmlLib16::IJsonReaderHandler {
 public:
  explicit CEvents(std::string& events) : m_events(events) {}

  void StartDocument() override { m_events += " ("; }
  void EndDocument() override { m_events += " )"; }
  void Name(const std::string& name) override { m_events += " " + name + ":"; }
  void String(const std::string& value) override { m_events += " \"" + value + "\""; }
  void Number(const std::string& value) override { m_events += " #" + value; }
  void StartObject() override { m_events += " {"; }
  void EndObject() override { m_events += " }"; }
  void StartArray() override { m_events += " ["; }
  void EndArray() override { m_events += " ]"; }
  void Bool(bool value) override { m_events += value ? " true" : " false"; }
  void Null() override { m_events += " null"; }

 private:
  std::string& m_events;
};

// The events of a text, with what it fails with in the place of the rest of it.
struct Reading {
  bool allowComments = false;
  std::string root;

  std::string operator()(const std::string& text) const {
    std::string events;
    QzXmlLib16::CJsonTextReader reader(text);
    reader.SetHandler(new CEvents(events));
    reader.SetAllowComments(allowComments);
    reader.SetRootElementName(root.c_str());
    reader.Parse();
    return events.substr(1);
  }
};

}  // namespace qztest
