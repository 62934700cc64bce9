#include "qzxml/serialization/TabledClass.h"

#include <algorithm>

#include "qzxml/platform/Assert.h"

namespace QzXmlLib16 {
namespace {

// The entries with a null entry behind them, as a table is handed on.
template <typename Entry>
Entry** MakeTable(Entry* const* entries, std::size_t count) {
  Entry** const table = new Entry* [count + 1] {};
  std::copy(entries, entries + count, table);
  return table;
}

}  // namespace

CTabledClass::~CTabledClass() = default;

void CTabledClass::CTables::SetInfo(CParentElementInfo* info) {
  QZ_ASSERT_TEXT(m_pInfo == nullptr, "m_pInfo == 0");
  delete m_pInfo;
  m_pInfo = info;
}

void CTabledClass::CTables::SetElements(std::initializer_list<CElementInfo*> entries) {
  SetElements(entries.begin(), entries.size());
}

void CTabledClass::CTables::SetElements(CElementInfo* const* entries, std::size_t count) {
  QZ_ASSERT_TEXT(m_pElements == nullptr, "m_pElements == 0");
  CParentElementInfo* noInfo = nullptr;
  CAttributeInfo** noAttributes = nullptr;
  CleanMetaData(noInfo, m_pElements, noAttributes);
  m_pElements = MakeTable(entries, count);
}

void CTabledClass::CTables::SetAttributes(std::initializer_list<CAttributeInfo*> entries) {
  SetAttributes(entries.begin(), entries.size());
}

void CTabledClass::CTables::SetAttributes(CAttributeInfo* const* entries, std::size_t count) {
  QZ_ASSERT_TEXT(m_pAttributes == nullptr, "m_pAttributes == 0");
  CParentElementInfo* noInfo = nullptr;
  CElementInfo** noElements = nullptr;
  CleanMetaData(noInfo, noElements, m_pAttributes);
  m_pAttributes = MakeTable(entries, count);
}

void CTabledClass::Clean(CTables& tables) {
  const detail::CriticalSectionGuard guard(m_csInit);
  tables.m_isBuilt.store(false, std::memory_order_release);
  CleanMetaData(tables.m_pInfo, tables.m_pElements, tables.m_pAttributes);
}

}  // namespace QzXmlLib16
