#pragma once

#include <atomic>
#include <string>
#include <string_view>

#include "qzxml/platform/Export.h"

namespace QzXmlLib16 {
namespace detail {

// A text that is never changed and that many objects share: the namespaces and restrictions of open
// content, which are the same few for all elements of a document. A copy costs one count, and
// nothing for the empty text and for "##any". Threads may copy and drop one text at the same time.
class QZXML_API CSharedText {
 public:
  CSharedText() = default;  // ""
  explicit CSharedText(std::string_view text);
  CSharedText(const CSharedText& other) noexcept : m_p(other.m_p) {
    if (IsCounted()) m_p->count.fetch_add(1, std::memory_order_relaxed);
  }
  CSharedText(CSharedText&& other) noexcept : m_p(other.m_p) { other.m_p = nullptr; }
  CSharedText& operator=(CSharedText other) noexcept {
    Text* const text = m_p;
    m_p = other.m_p;
    other.m_p = text;
    return *this;
  }
  ~CSharedText() {
    if (IsCounted() && m_p->count.fetch_sub(1, std::memory_order_acq_rel) == 1) delete m_p;
  }

  // "##any", the restriction that lets every namespace pass.
  static CSharedText Any();
  bool IsAny() const { return m_p != nullptr && m_p->any; }

  // The text, shared with the likely one where that is the same text already.
  static CSharedText Like(const CSharedText& likely, std::string_view text) {
    return likely.str() == text ? likely : CSharedText(text);
  }

  bool empty() const { return m_p == nullptr; }
  const std::string& str() const { return m_p == nullptr ? Empty() : m_p->text; }

 private:
  struct Text {
    std::string text;
    bool any;  // the one object for "##any"; it is not counted and never goes
    std::atomic<int> count;
  };

  explicit CSharedText(Text* text) : m_p(text) {}
  bool IsCounted() const { return m_p != nullptr && !m_p->any; }
  static const std::string& Empty();

  Text* m_p = nullptr;  // null for the empty text
};

}  // namespace detail
}  // namespace QzXmlLib16
