#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "qzxml/json/JsonReaderHandler.h"
#include "qzxml/platform/Export.h"

namespace QzXmlLib16 {

// What stands between a CJsonTextReader and the handler of its caller: sends a line for each event
// to the debug channel, while somebody listens there, knows the place in the text, and passes the
// event on.
class QZXML_API CJsonReaderDefaultHandler final : public IJsonReaderHandler,
                                                  public IErrorPathProvider {
 public:
  CJsonReaderDefaultHandler();
  ~CJsonReaderDefaultHandler() override;

  // Where events go. Takes ownership; one that was set before is deleted. Null for nowhere.
  void SetHandler(IJsonReaderHandler* handler);

  // Meant: an object in an array has the name of the array and, in brackets, its number as one raw
  // character of that code, so that the first one's ends the path for those who print it.
  std::string GetErrorPath() override;

  void StartDocument() override;
  void EndDocument() override;
  void Name(const std::string& name) override;
  void String(const std::string& value) override;
  void Number(const std::string& value) override;
  void StartObject() override;
  void EndObject() override;
  void StartArray() override;
  void EndArray() override;
  void Bool(bool value) override;
  void Null() override;

 private:
  enum ItemKind : std::int32_t {
    ItemKind_Array = 0,
    ItemKind_Name = 1,  // of a member whose value is no container, or has not begun
    ItemKind_Object = 2,
  };

  // Something open around the place in the text.
  struct StackItem {
    std::string name;
    // Of an array, the number of its last object; of an object in an array, its own number, and the
    // name is then that of the array below it. -1 for none.
    std::int32_t index;
    ItemKind kind;
  };

  bool IsTop(ItemKind kind) const { return !m_stack.empty() && m_stack.back().kind == kind; }
  std::string TakeTopName();
  void PopUntil(ItemKind kind);
  void AppendName(std::size_t position, std::string& path) const;

  std::vector<StackItem> m_stack;  // outermost first
  std::unique_ptr<IJsonReaderHandler> m_pHandler;
};

}  // namespace QzXmlLib16
