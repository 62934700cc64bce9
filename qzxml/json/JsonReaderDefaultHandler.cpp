#include "qzxml/json/JsonReaderDefaultHandler.h"

#include <utility>

#include "qzxml/platform/DebugChannel.h"
#include "qzxml/runtime/Functions.h"

// How the place is known. What is open lies on a stack; a container takes the name of the member
// whose value it is from it. The outermost container has no name and is not on the stack, so that a
// stack with nothing on it stands for it.

namespace QzXmlLib16 {
namespace {

// A trace takes texts below 32 KiB; the beginning of a longer value will do.
constexpr int kLongestTraced = 1024 * 32 - 32;

void TraceText(const char* text) {
  if (detail::GetDebugChannel() != nullptr) DebugTrace("%s", text);
}

void TraceValue(const char* event, const char* value) {
  if (detail::GetDebugChannel() != nullptr) {
    DebugTrace("%s%.*s\n", event, kLongestTraced, value);
  }
}

}  // namespace

CJsonReaderDefaultHandler::CJsonReaderDefaultHandler() = default;

CJsonReaderDefaultHandler::~CJsonReaderDefaultHandler() = default;

void CJsonReaderDefaultHandler::SetHandler(IJsonReaderHandler* handler) {
  if (handler != m_pHandler.get()) m_pHandler.reset(handler);
}

// ---- The place

std::string CJsonReaderDefaultHandler::GetErrorPath() {
  std::string path = "$";
  for (std::size_t i = m_stack.size(); i > 0; --i) {
    if (m_stack[i - 1].kind == ItemKind_Array) continue;
    path += '.';
    AppendName(i - 1, path);
  }
  return path;
}

// The name of an object in an array is made here: as long as the array lies below it, it can be,
// and an object costs no copy of a name that is of any length.
void CJsonReaderDefaultHandler::AppendName(std::size_t position, std::string& path) const {
  const StackItem& item = m_stack[position];
  if (item.kind != ItemKind_Object || item.index < 0) {
    path += item.name;
    return;
  }
  path += m_stack[position - 1].name;
  path += '[';
  path += static_cast<char>(item.index);
  path += ']';
}

// The name of the member whose value begins, which leaves the stack; empty when there is none.
std::string CJsonReaderDefaultHandler::TakeTopName() {
  if (!IsTop(ItemKind_Name)) return std::string();
  std::string name = std::move(m_stack.back().name);
  m_stack.pop_back();
  return name;
}

// Takes off what lies on the innermost item of this kind, and that item.
void CJsonReaderDefaultHandler::PopUntil(ItemKind kind) {
  bool found = false;
  while (!found && !m_stack.empty()) {
    found = IsTop(kind);
    m_stack.pop_back();
  }
}

// ---- The events

void CJsonReaderDefaultHandler::StartDocument() {
  TraceText("StartDocument\n");
  if (m_pHandler != nullptr) m_pHandler->StartDocument();
}

void CJsonReaderDefaultHandler::EndDocument() {
  TraceText("EndDocument\n");
  if (m_pHandler != nullptr) m_pHandler->EndDocument();
}

void CJsonReaderDefaultHandler::Name(const std::string& name) {
  TraceValue("Name: ", name.c_str());
  if (IsTop(ItemKind_Name)) m_stack.pop_back();
  m_stack.push_back({name, -1, ItemKind_Name});
  if (m_pHandler != nullptr) m_pHandler->Name(name);
}

void CJsonReaderDefaultHandler::String(const std::string& value) {
  TraceValue("String: ", value.c_str());
  if (m_pHandler != nullptr) m_pHandler->String(value);
}

void CJsonReaderDefaultHandler::Number(const std::string& value) {
  TraceValue("Number: ", value.c_str());
  if (m_pHandler != nullptr) m_pHandler->Number(value);
}

void CJsonReaderDefaultHandler::StartObject() {
  TraceText("StartObject\n");
  if (!m_stack.empty()) {
    const std::int32_t index = IsTop(ItemKind_Array) ? ++m_stack.back().index : -1;
    m_stack.push_back({TakeTopName(), index, ItemKind_Object});
  }
  if (m_pHandler != nullptr) m_pHandler->StartObject();
}

void CJsonReaderDefaultHandler::EndObject() {
  TraceText("EndObject\n");
  PopUntil(ItemKind_Object);
  if (m_pHandler != nullptr) m_pHandler->EndObject();
}

void CJsonReaderDefaultHandler::StartArray() {
  TraceText("StartArray\n");
  if (!m_stack.empty()) m_stack.push_back({TakeTopName(), -1, ItemKind_Array});
  if (m_pHandler != nullptr) m_pHandler->StartArray();
}

void CJsonReaderDefaultHandler::EndArray() {
  TraceText("EndArray\n");
  PopUntil(ItemKind_Array);
  if (m_pHandler != nullptr) m_pHandler->EndArray();
}

void CJsonReaderDefaultHandler::Bool(bool value) {
  TraceValue("Bool: ", value ? "true" : "false");
  if (m_pHandler != nullptr) m_pHandler->Bool(value);
}

void CJsonReaderDefaultHandler::Null() {
  TraceText("Null\n");
  if (m_pHandler != nullptr) m_pHandler->Null();
}

}  // namespace QzXmlLib16
