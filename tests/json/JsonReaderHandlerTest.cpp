#include <gtest/gtest.h>

#include <cstddef>
#include <cstring>
#include <type_traits>

#include "qzxml/json/JsonReaderHandler.h"

namespace QzXmlLib16 {
namespace {

static_assert(std::is_base_of_v<CInstanceMonitor, IJsonReaderHandler>);
static_assert(std::has_virtual_destructor_v<IJsonReaderHandler>);
static_assert(std::is_abstract_v<IJsonReaderHandler>);
static_assert(!std::is_copy_constructible_v<IJsonReaderHandler>);
static_assert(std::is_abstract_v<IErrorPathProvider>);

#if defined(__x86_64__) && defined(__GNUC__)
// Where a pointer to a virtual member keeps one plus the offset of the slot (Itanium C++ ABI, 2.3).
template <typename Member>
std::ptrdiff_t Slot(Member member) {
  std::ptrdiff_t offset = 0;
  std::memcpy(&offset, &member, sizeof offset);
  return (offset - 1) / static_cast<std::ptrdiff_t>(sizeof(void*));
}

TEST(JsonReaderHandler, TheVirtualOperationsKeepTheirOrder) {
  using H = IJsonReaderHandler;
  const std::ptrdiff_t slots[] = {
      Slot(&H::StartDocument), Slot(&H::EndDocument), Slot(&H::Name),      Slot(&H::String),
      Slot(&H::Number),        Slot(&H::StartObject), Slot(&H::EndObject), Slot(&H::StartArray),
      Slot(&H::EndArray),      Slot(&H::Bool),        Slot(&H::Null)};
  std::ptrdiff_t expected = 2;  // behind the two of the destructor
  for (const std::ptrdiff_t slot : slots) EXPECT_EQ(expected++, slot);
  EXPECT_EQ(0, Slot(&IErrorPathProvider::GetErrorPath));
}
#endif

}  // namespace
}  // namespace QzXmlLib16
