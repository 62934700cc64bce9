#include "qzxml/fastinfoset/FIWritingTables.h"

#include "qzxml/runtime/CriticalSection.h"

namespace QzXmlLib16::detail {
namespace {

// As for spare blocks: an AddressSanitizer is to see what happens behind the end of a writer.
#if defined(__SANITIZE_ADDRESS__)
constexpr bool kKeepsTables = false;
#else
constexpr bool kKeepsTables = true;
#endif

constexpr std::size_t kKeptPiece = 65536;  // what every writer begins with, and no more
constexpr std::size_t kKeptKey = 4096;

class CStore {
 public:
  CFIWritingTables* Take() {
    const CriticalSectionGuard guard(m_lock);
    return m_count != 0 ? m_tables[--m_count] : nullptr;
  }

  bool Give(CFIWritingTables* tables) {
    const CriticalSectionGuard guard(m_lock);
    if (m_count == kMost) return false;
    m_tables[m_count++] = tables;
    return true;
  }

  // Outlives every static writer.
  static CStore& Get() {
    static auto* const store = new CStore();
    return *store;
  }

 private:
  static constexpr std::size_t kMost = 8;  // each of some 1 MiB at most

  CQZCriticalSection m_lock;
  CFIWritingTables* m_tables[kMost] = {};
  std::size_t m_count = 0;
};

void Empty(CFIWritingTables& tables) {
  tables.maps.Clear();
  tables.names.Forget();
  if (tables.key.size() > kKeptKey) tables.key = std::string();
  if (tables.pieceRoom > kKeptPiece) {
    tables.piece = nullptr;
    tables.pieceRoom = 0;
  }
}

}  // namespace

std::unique_ptr<CFIWritingTables, CFIGiveTables> TakeFIWritingTables() {
  CFIWritingTables* const spare = kKeepsTables ? CStore::Get().Take() : nullptr;
  return std::unique_ptr<CFIWritingTables, CFIGiveTables>(
      spare != nullptr ? spare : new CFIWritingTables());
}

void CFIGiveTables::operator()(CFIWritingTables* tables) const noexcept {
  if (kKeepsTables) {
    Empty(*tables);
    if (CStore::Get().Give(tables)) return;
  }
  delete tables;
}

}  // namespace QzXmlLib16::detail
