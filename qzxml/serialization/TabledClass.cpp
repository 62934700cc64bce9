#include "qzxml/serialization/TabledClass.h"

#include <algorithm>

#include "qzxml/platform/Assert.h"

namespace QzXmlLib16 {
namespace {

// The entries with a null entry behind them, as a table is handed on.
template <typename Entry>
Entry** MakeTable(std::initializer_list<Entry*> entries) {
  Entry** const table = new Entry* [entries.size() + 1] {};
  std::copy(entries.begin(), entries.end(), table);
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
  QZ_ASSERT_TEXT(m_pElements == nullptr, "m_pElements == 0");
  CParentElementInfo* noInfo = nullptr;
  CAttributeInfo** noAttributes = nullptr;
  CleanMetaData(noInfo, m_pElements, noAttributes);
  m_pElements = MakeTable(entries);
}

void CTabledClass::CTables::SetAttributes(std::initializer_list<CAttributeInfo*> entries) {
  QZ_ASSERT_TEXT(m_pAttributes == nullptr, "m_pAttributes == 0");
  CParentElementInfo* noInfo = nullptr;
  CElementInfo** noElements = nullptr;
  CleanMetaData(noInfo, noElements, m_pAttributes);
  m_pAttributes = MakeTable(entries);
}

void CTabledClass::Clean(CTables& tables) {
  const detail::CriticalSectionGuard guard(m_csInit);
  tables.m_isBuilt.store(false, std::memory_order_release);
  CleanMetaData(tables.m_pInfo, tables.m_pElements, tables.m_pAttributes);
}

}  // namespace QzXmlLib16
