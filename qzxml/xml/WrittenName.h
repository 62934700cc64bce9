#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <utility>

#include "qzxml/platform/Export.h"

// The names of tables, put together once with the marks that XML text has around them.
namespace QzXmlLib16::detail {

// A text that is copied in whole steps: that costs less than to look at its size, but needs room
// for a step more behind it, here as well as where it goes.
class SteppedText {
 public:
  static constexpr std::size_t kStep = 16;

  explicit SteppedText(std::string text) : m_size(text.size()), m_text(std::move(text)) {
    m_text.resize(m_size + kStep);
  }

  std::string_view View() const { return {m_text.data(), m_size}; }

  // What Put takes where it puts the text.
  std::size_t GetRoom() const { return m_size + kStep; }
  char* Put(char* out) const {
    const char* const in = m_text.data();
    std::memcpy(out, in, kStep);
    for (std::size_t at = kStep; at < m_size; at += kStep) std::memcpy(out + at, in + at, kStep);
    return out + m_size;
  }

 private:
  std::size_t m_size;
  std::string m_text;
};

// A number that no other name of this process has had, from 1 and below kNameIds; 0 when there are
// no more.
inline constexpr std::uint64_t kNameIds = std::uint64_t{1} << 24;
QZXML_API std::uint64_t NextNameId();

// The name of an element, with its tags. Any name will do where one is asked for, but whoever
// writes many elements of a name makes this once.
class ElementTags {
 public:
  // A name whose namespace may be another one each time.
  ElementTags(std::string name)
      : m_name(std::move(name)), m_start("<" + m_name + ">"), m_end("</" + m_name + ">") {}
  ElementTags(const char* name) : ElementTags(std::string(name)) {}

  // A name that is always given together with the same namespace, so that a writer may know both by
  // the number.
  static ElementTags InOneNamespace(std::string name) {
    ElementTags tags(std::move(name));
    tags.m_id = NextNameId();
    return tags;
  }

  const std::string& GetName() const { return m_name; }
  const SteppedText& GetStart() const { return m_start; }  // "<name>"
  const SteppedText& GetEnd() const { return m_end; }      // "</name>"
  std::uint64_t GetId() const { return m_id; }             // 0 for none

 private:
  std::uint64_t m_id = 0;
  std::string m_name;
  SteppedText m_start;
  SteppedText m_end;
};

// The name of an attribute, with what stands around it.
class AttributeTag {
 public:
  AttributeTag(std::string name)
      : m_id(NextNameId()), m_name(std::move(name)), m_start(" " + m_name + "=\"") {}
  AttributeTag(const char* name) : AttributeTag(std::string(name)) {}

  const std::string& GetName() const { return m_name; }
  const SteppedText& GetStart() const { return m_start; }  // " name=\""
  std::uint64_t GetId() const { return m_id; }             // 0 for none

 private:
  std::uint64_t m_id;
  std::string m_name;
  SteppedText m_start;
};

}  // namespace QzXmlLib16::detail
