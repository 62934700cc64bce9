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

inline void XmlTextRun::SetIndent(std::size_t indent) {
  m_nearLimit -= indent - m_indent;
  m_indent = indent;
}

inline void XmlTextRun::EnterElement(Element& element, const Name& name) {
  m_isStartTagOpen = true;
  m_hasChildren = false;
  element.m_outer = m_innermost;
  element.m_name = &name;
  m_innermost = &element;
  SetIndent(m_indent + m_writer.m_indentUnit);
}

inline bool XmlTextRun::BeginElement(Element& element, const Name& name) {
  if (!HasRoomForShort(0)) return BeginOtherElement(element, name);
  char* end = nullptr;
  if (IsPlain(name)) {
    end = name.PutStart(PutGap());
  } else if (HasPrefix(name)) {
    end = name.PutStart(PutGap(), PrefixOf(name));
  } else {
    return BeginOtherElement(element, name);
  }
  m_out = end - 1;  // the tag is open yet
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
  SetIndent(m_indent - m_writer.m_indentUnit);
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
  if (element.m_context != nullptr || !HasRoomForShort(0)) {
    EndOtherElement(element);
  } else if (IsPlain(name)) {
    PutElementEnd(element, [&](char* out) { return name.PutEnd(out); });
  } else if (HasPrefix(name)) {
    PutElementEnd(element, [&](char* out) { return name.PutEnd(out, PrefixOf(name)); });
  } else {
    EndOtherElement(element);
  }
}

inline char* XmlTextRun::BeginValue(const Name& name, std::size_t room) {
  if (HasRoomForShort(room)) {
    if (IsPlain(name)) return name.PutStart(PutGap());
    if (HasPrefix(name)) return name.PutStart(PutGap(), PrefixOf(name));
  }
  return BeginOtherValue(name, room);
}

inline void XmlTextRun::EndValue(const Name& name, const char* text, char* end) {
  if (end == text) {
    end[-1] = '/';
    *end++ = '>';
  } else if (IsPlain(name)) {
    end = name.PutEnd(end);
  } else if (HasPrefix(name)) {
    end = name.PutEnd(end, PrefixOf(name));
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
