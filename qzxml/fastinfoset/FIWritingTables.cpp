#include "qzxml/fastinfoset/FIWritingTables.h"

#include "qzxml/runtime/SpareStore.h"

namespace QzXmlLib16::detail {
namespace {

constexpr std::size_t kKeptKey = 4096;

// Each of some 2 MiB at most.
using CStore = CSpareStore<CFIWritingTables, 4>;

CStore& Store() {
  static auto* const store = new CStore();
  return *store;
}

void Empty(CFIWritingTables& tables) {
  tables.maps.Clear();
  tables.names.Forget();
  tables.integers.Forget();
  if (tables.key.size() > kKeptKey) tables.key = std::string();
  tables.pieces.Clear();
}

}  // namespace

std::unique_ptr<CFIWritingTables, CFIGiveTables> TakeFIWritingTables() {
  CFIWritingTables* const spare = Store().Take();
  return std::unique_ptr<CFIWritingTables, CFIGiveTables>(
      spare != nullptr ? spare : new CFIWritingTables());
}

void CFIGiveTables::operator()(CFIWritingTables* tables) const noexcept {
  Empty(*tables);
  if (!Store().Give(tables)) delete tables;
}

}  // namespace QzXmlLib16::detail
