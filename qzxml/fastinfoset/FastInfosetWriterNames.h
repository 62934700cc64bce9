#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <forward_list>
#include <string>
#include <string_view>

#include "qzxml/fastinfoset/FITextIndexesFind.h"
#include "qzxml/fastinfoset/OctetForms.h"
#include "qzxml/xml/ShortText.h"
#include "qzxml/xml/WrittenName.h"

namespace QzXmlLib16::detail {

// The octets of the index of a name, with nothing in the head.
struct CFIKnownOctets {
  char* Write(char* out) const {
    StoreWord(out, bytes);
    return out + size;
  }
  // 0 for no index leaves none.
  void SetElement(std::uint32_t index) {
    if (index != 0) SetWith([=](char* out) { return WriteIndexOnThirdBit(out, 0x00, index); });
  }
  void SetAttribute(std::uint32_t index) {
    if (index != 0) SetWith([=](char* out) { return WriteIndexOnSecondBit(out, 0x00, index); });
  }
  // The same of a value, in a place that Form tells.
  template <typename Form>
  void SetValue(std::uint32_t index) {
    SetWith([index](char* out) { return Form::WriteIndex(out, index); });
  }

  std::uint32_t bytes = 0;  // as they stand in memory
  std::uint32_t size = 0;

 private:
  template <typename Write>
  void SetWith(Write write) {
    char octets[kFormSize] = {};
    size = static_cast<std::uint32_t>(write(octets) - octets);
    bytes = LoadWord<std::uint32_t>(octets);
  }
};

// The octets for names that a document has met, found without putting the key of a name together.
//
// A name is known by its id, or by its bytes, and by the namespaces in force, on which its prefix
// depends; see CXmlWriterContext::GetNamespaceState. Each name has one place that it may share with
// others: what came last stands there. To forget all names is to change the mark that is part of
// every state here.
class CFIKnownNames {
 public:
  using Octets = CFIKnownOctets;
  static constexpr std::size_t kRoom = 4;  // that Octets::Write takes

  // What a state of the namespaces is here; that of an attribute is 0. Numbers that no document
  // comes to are known of no name.
  std::uint64_t Marked(std::uint64_t state) const {
    return state < kStates ? m_mark | state * kIds : kNever;
  }
  static constexpr std::uint64_t kNever = 0;
  // What no name has.
  static constexpr std::uint64_t kNone = ~std::uint64_t{0};

  // Where the texts of a name without a prefix stand in the tables, also when no name is known any
  // more; the numbers are those of their arrangements.
  struct Places {
    bool Are(std::uint64_t askedId, const CFITextIndexes& names,
             const CFITextIndexes& locals) const {
      return id == askedId && wholes == names.GetArrangement() && parts == locals.GetArrangement();
    }

    std::uint64_t id = 0;
    std::uint64_t wholes = 0;
    std::uint64_t parts = 0;
    std::size_t whole = 0;
    std::size_t local = 0;
  };

  // A name with an id.
  struct ById {
    // The state is a marked one.
    bool Is(std::uint64_t id, std::uint64_t state) const { return (id | state) == mark; }

    std::uint64_t mark = kNone;  // of both
    Octets octets;
  };
  ById& AttributeOf(std::uint64_t id) { return m_attributes[id % m_attributes.size()]; }
  ById& ElementOf(std::uint64_t id) { return m_elements[id % m_elements.size()]; }
  Places& PlacesOfAttribute(std::uint64_t id) {
    return m_attributePlaces[id % m_attributePlaces.size()];
  }
  Places& PlacesOfElement(std::uint64_t id) { return m_elementPlaces[id % m_elementPlaces.size()]; }
  // The state is a marked one.
  void KeepAttribute(std::uint64_t id, std::uint64_t state, const Octets& octets) {
    Keep(AttributeOf(id), id, state, octets);
  }
  void KeepElement(std::uint64_t id, std::uint64_t state, const Octets& octets) {
    Keep(ElementOf(id), id, state, octets);
  }

  // Any name of an element that is not too long.
  struct ByText {
    bool Is(std::string_view askedName, const std::string& askedUri,
            std::uint64_t askedState) const {
      return askedState != kNever && state == askedState && size == askedName.size() &&
             AreEqual(name, askedName.data(), size) && AreEqual(*uri, askedUri);
    }

    // False, and there is none then, for a name that is too long.
    bool SetName(std::string_view newName) {
      state = 0;
      if (newName.size() > sizeof name) return false;
      size = newName.size();
      CopyShort(name, newName.data(), size);
      return true;
    }

    char name[32] = {};
    std::size_t size = 0;
    const std::string* uri = nullptr;  // stored by StoreUri
    std::uint64_t state = 0;
    Octets octets;
  };
  ByText& ElementOf(std::string_view name) {
    std::size_t place = name.size();
    if (!name.empty()) {
      place += std::size_t{3} * static_cast<unsigned char>(name.front());
      place += std::size_t{5} * static_cast<unsigned char>(name.back());
    }
    return m_texts[place % m_texts.size()];
  }

  // Behind this no name is known.
  void Forget() {
    m_uris.clear();
    m_mark += kMark;
    if (m_mark != 0) return;
    m_attributes = {};
    m_elements = {};
    m_texts = {};
    m_mark = kMark;
  }

  // A copy that lives as long as this. Names that come one after the other mostly share it.
  const std::string* StoreUri(const std::string& uri) {
    if (m_uris.empty() || m_uris.front() != uri) m_uris.push_front(uri);
    return &m_uris.front();
  }

 private:
  static void Keep(ById& known, std::uint64_t id, std::uint64_t state, const Octets& octets) {
    if (id == 0 || id >= kIds || state == kNever) return;
    known.mark = id | state;
    known.octets = octets;
  }

  static constexpr std::uint64_t kIds = kNameIds;
  static constexpr std::uint64_t kStates = std::uint64_t{1} << 20;
  static constexpr std::uint64_t kMark = kIds * kStates;

  std::uint64_t m_mark = kMark;
  std::array<ById, 64> m_attributes = {};
  std::array<ById, 128> m_elements = {};
  std::array<Places, 64> m_attributePlaces = {};
  std::array<Places, 128> m_elementPlaces = {};
  std::array<ByText, 32> m_texts = {};
  std::forward_list<std::string> m_uris;
};

}  // namespace QzXmlLib16::detail
