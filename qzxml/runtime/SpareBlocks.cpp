#include "qzxml/runtime/SpareBlocks.h"

#include <new>

#include "qzxml/runtime/SpareStore.h"

namespace QzXmlLib16::detail {
namespace {

using CStore = CSpareStore<void, 128>;  // 8 MiB

CStore& Store() {
  static auto* const store = new CStore();
  return *store;
}

}  // namespace

void* CSpareBlocks::Take() {
  void* const spare = Store().Take();
  return spare != nullptr ? spare : ::operator new(kSize);
}

void CSpareBlocks::Give(void* block) noexcept {
  if (!Store().Give(block)) ::operator delete(block);
}

}  // namespace QzXmlLib16::detail
