#pragma once

#include <cstddef>
#include <cstring>
#include <string>
#include <string_view>
#include <utility>

#include "qzxml/xml/WrittenName.h"

namespace QzXmlLib16::detail {

// What the tags of a namespace begin with, at hand; nothing of it is set but by Set. Its size is a
// power of two, for the sake of those who look one up among others.
struct XmlTextPrefix {
  static constexpr std::size_t kRoom = 16;

  // Null for none. False, and nothing is set, for a prefix that is too long.
  bool Set(const std::string* prefix);

  const std::string* uri;  // as XmlTextName has it
  std::size_t size;        // of start; end has one byte more
  char start[kRoom];       // "<prefix:"
  char end[2 * kRoom];     // "</prefix:"
};

// The name of elements for an XmlTextRun, made once for many of them. Its tags are at hand in
// places that are copied as a whole.
class XmlTextName {
 public:
  static constexpr std::size_t kPrefixPlaces = 8;

  XmlTextName(const char* name, const char* uri) : XmlTextName(name, KeepUri(uri)) {}

  const std::string& GetName() const { return m_tags.GetName(); }
  const std::string& GetUri() const { return *m_uri; }
  const ElementTags& GetTags() const { return m_tags; }

  // The same string for all names of a namespace; null where a tag is too long for PutStart and
  // PutEnd.
  const std::string* GetShortUri() const { return m_shortUri; }
  // That of the prefix of its namespace among kPrefixPlaces; other namespaces may have it too.
  std::size_t GetPrefixPlace() const { return m_prefixPlace; }
  // What an element takes beside its indent, its text, and a prefix that is none of XmlTextPrefix.
  std::size_t GetRoom() const { return m_room; }
  static constexpr std::size_t kShortRoom = 192;  // at most, with a short URI

  // "<name>" and "</name>".
  char* PutStart(char* out) const { return m_start.Put(out); }
  char* PutEnd(char* out) const { return m_end.Put(out); }
  char* PutStart(char* out, const XmlTextPrefix& prefix) const {
    std::memcpy(out, prefix.start, XmlTextPrefix::kRoom);
    return m_end.Put<2>(out + prefix.size);
  }
  char* PutEnd(char* out, const XmlTextPrefix& prefix) const {
    std::memcpy(out, prefix.end, XmlTextPrefix::kRoom);
    return m_end.Put<2>(out + prefix.size + 1);
  }

 private:
  // The namespaces with their numbers, from 0. As plans, they are never freed.
  using Uri = std::pair<const std::string, std::size_t>;
  static const Uri& KeepUri(const char* uri);

  XmlTextName(const char* name, const Uri& uri);

  // A tag, cut off where it is too long.
  struct Tag {
    static constexpr std::size_t kRoom = 32;

    void Set(std::string_view tag) { size = tag.copy(text, kRoom); }
    // Without so many bytes at its begin.
    template <std::size_t mark = 0>
    char* Put(char* out) const {
      const char* const in = text + mark;
      std::memcpy(out, in, kRoom / 2);
      if (size > kRoom / 2 + mark) std::memcpy(out + kRoom / 2, in + kRoom / 2, kRoom / 2);
      return out + size - mark;
    }

    std::size_t size = 0;
    char text[kRoom + 2] = {};
  };

  const std::string* m_shortUri;
  std::size_t m_prefixPlace;
  std::size_t m_room;
  Tag m_start;
  Tag m_end;
  const std::string* m_uri;
  ElementTags m_tags;
};

}  // namespace QzXmlLib16::detail
