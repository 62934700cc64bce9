#pragma once

#include "qzxml/xml/XmlTextRun.h"

// The parts of a run that each element and each value takes: inline, for those who write them.
namespace QzXmlLib16::detail {

// What stands between the innermost element's last piece and its child.
inline char* XmlTextRun::PutGap() const {
  char* out = m_out;
  if (m_isStartTagOpen) {
    *out++ = '>';
    out = PutTagEol(out);
  }
  return PutIndent(out);
}

inline void XmlTextRun::EnterElement(Element& element, const Name& name) {
  m_isStartTagOpen = true;
  m_hasChildren = false;
  element.m_outer = m_innermost;
  element.m_name = &name;
  m_innermost = &element;
  m_indent += m_writer.m_indentUnit;
}

inline bool XmlTextRun::BeginElement(Element& element, const Name& name) {
  if (IsPlain(name)) {
    if (!HasRoom(name, 0)) return false;
    m_out = name.PutStart(PutGap()) - 1;  // the tag is open yet
    EnterElement(element, name);
    return true;
  }
  if (!HasPrefix(name)) return BeginOtherElement(element, name);
  if (!HasRoom(name, 0)) return false;
  m_out = name.PutStart(PutGap(), PrefixOf(name)) - 1;
  EnterElement(element, name);
  return true;
}

// A child of the innermost element has ended.
inline void XmlTextRun::LeaveElement(char* out) {
  m_out = PutTagEol(out);
  m_isStartTagOpen = false;
  m_hasChildren = true;
  ++m_elements;
}

template <typename PutEnd>
inline void XmlTextRun::PutElementEnd(const Element& element, PutEnd putEnd) {
  m_innermost = element.m_outer;
  m_indent -= m_writer.m_indentUnit;
  char* out = m_out;
  if (m_isStartTagOpen) {
    out = detail::PutText(out, "/>");
  } else {
    if (m_hasChildren) out = PutIndent(out);
    out = putEnd(out);
  }
  LeaveElement(out);
}

// What is in force is what was in force at its begin, as it has no context.
inline void XmlTextRun::EndElement(Element& element) {
  const Name& name = *element.m_name;
  if (element.m_context != nullptr || !HasRoom(name, 0)) return EndInWriter(element);
  if (IsPlain(name)) {
    PutElementEnd(element, [&](char* out) { return name.PutEnd(out); });
  } else if (HasPrefix(name)) {
    PutElementEnd(element, [&](char* out) { return name.PutEnd(out, PrefixOf(name)); });
  } else {
    EndOtherElement(element);
  }
}

inline char* XmlTextRun::BeginValue(Value& value, const Name& name, std::size_t room) {
  value.m_name = &name;
  if (IsPlain(name)) {
    value.m_prefix = nullptr;
    return HasRoom(name, room) ? name.PutStart(PutGap()) : nullptr;
  }
  if (!HasPrefix(name)) {
    value.m_prefix = &kOtherPrefix;
    return BeginOtherValue(name, room);
  }
  value.m_prefix = &PrefixOf(name);
  return HasRoom(name, room) ? name.PutStart(PutGap(), *value.m_prefix) : nullptr;
}

inline void XmlTextRun::EndValue(const Value& value, const char* text, char* end) {
  const Name& name = *value.m_name;
  if (end == text) {
    end[-1] = '/';
    *end++ = '>';
  } else if (value.m_prefix == nullptr) {
    end = name.PutEnd(end);
  } else if (value.m_prefix != &kOtherPrefix) {
    end = name.PutEnd(end, *value.m_prefix);
  } else {
    end = PutOtherEnd(end, name, m_otherPrefix);
  }
  LeaveElement(end);
}

inline char* XmlTextRun::BeginAttribute(const AttributeTag& tag, std::size_t room) {
  if (!m_isStartTagOpen) return nullptr;
  return tag.GetStart().GetRoom() + room + 1 <= GetRoom() ? tag.GetStart().Put(m_out) : nullptr;
}

inline char* XmlTextRun::BeginText(std::size_t room) {
  if (1 + room > GetRoom()) return nullptr;
  if (!m_isStartTagOpen) return m_out;
  *m_out = '>';
  return m_out + 1;
}

}  // namespace QzXmlLib16::detail
