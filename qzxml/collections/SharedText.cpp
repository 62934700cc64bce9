#include "qzxml/collections/SharedText.h"

namespace QzXmlLib16 {
namespace detail {
namespace {

constexpr std::string_view kAny = "##any";

}  // namespace

// What is shared by the whole process is made on first use and stays, so that objects made before
// main() and destroyed behind it can use it.

CSharedText::CSharedText(std::string_view text) {
  if (text == kAny) {
    *this = Any();
  } else if (!text.empty()) {
    m_p = new Text{std::string(text), false, {1}};
  }
}

CSharedText CSharedText::Any() {
  static Text* const text = new Text{std::string(kAny), true, {0}};
  return CSharedText(text);
}

const std::string& CSharedText::Empty() {
  static const std::string* const text = new std::string;
  return *text;
}

}  // namespace detail
}  // namespace QzXmlLib16
