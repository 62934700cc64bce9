#pragma once

#include <atomic>
#include <cstddef>
#include <initializer_list>

#include "qzxml/platform/Export.h"
#include "qzxml/runtime/CriticalSection.h"
#include "qzxml/serialization/XmlGeneratedClass.h"

namespace QzXmlLib16 {

// A generated class whose tables are made at their first use, once for the class:
//
//   class CItem : public CTabledClass { ... const CTables& GetTables() const override; };
//
//   const CItem::CTables& CItem::GetTables() const {
//     static CTables tables;
//     return BuildOnce(tables, [](CTables& made) {
//       made.SetInfo(new CParentElementInfo(...));
//       made.SetElements({new CElementInfoSeqPrimMnd(...), new CElementInfoSeqClsOpt(...)});
//       made.SetAttributes({new CAttributeInfoPrimitive(...)});
//     });
//   }
//
// Any number of threads may be the first to use a class; one of them makes the tables under
// m_csInit, the others wait. Once they are made nobody takes a lock.
class QZXML_API CTabledClass : public CXmlGeneratedClass {
 public:
  ~CTabledClass() override;

  // The tables of a class, empty at first. To be held in a static variable, which needs no
  // initialisation: the entries live as long as the process, so that objects that are destroyed
  // at its end still have them.
  class QZXML_API CTables {
   public:
    constexpr CTables() = default;
    CTables(const CTables&) = delete;
    CTables& operator=(const CTables&) = delete;

    // Take the entries over. Each is called once: asserts that it was not, and then frees what was
    // there. What is not set is an empty table.
    void SetInfo(CParentElementInfo* info);
    void SetElements(std::initializer_list<CElementInfo*> entries);
    void SetAttributes(std::initializer_list<CAttributeInfo*> entries);
    void SetElements(CElementInfo* const* entries, std::size_t count);
    void SetAttributes(CAttributeInfo* const* entries, std::size_t count);

    CParentElementInfo* GetInfo() const { return m_pInfo; }
    // Ended by a null entry.
    CElementInfo** GetElements() const { return m_pElements; }
    CAttributeInfo** GetAttributes() const { return m_pAttributes; }

   private:
    friend class CTabledClass;

    std::atomic<bool> m_isBuilt{false};
    CParentElementInfo* m_pInfo = nullptr;
    CElementInfo** m_pElements = nullptr;
    CAttributeInfo** m_pAttributes = nullptr;
  };

 protected:
  CTabledClass() = default;
  CTabledClass(const CTabledClass&) = default;
  CTabledClass& operator=(const CTabledClass&) = default;

  // Answers the tables, which build(tables) has filled. What build throws goes through; the tables
  // are empty then, and the next call builds again.
  template <typename Build>
  static const CTables& BuildOnce(CTables& tables, Build build) {
    if (!tables.m_isBuilt.load(std::memory_order_acquire)) {
      const detail::CriticalSectionGuard guard(m_csInit);
      if (!tables.m_isBuilt.load(std::memory_order_relaxed)) BuildNow(tables, build);
    }
    return tables;
  }

  // Frees the entries of the tables, which the next BuildOnce makes anew. No object of the class
  // may be in use.
  static void Clean(CTables& tables);

  // The tables of the class.
  virtual const CTables& GetTables() const = 0;

  CParentElementInfo* GetClassInfo() const override { return GetTables().GetInfo(); }
  CElementInfo** GetClassElementInfo() const override { return GetTables().GetElements(); }
  CAttributeInfo** GetClassAttributeInfo() const override { return GetTables().GetAttributes(); }

 private:
  template <typename Build>
  static void BuildNow(CTables& tables, Build& build) {
    try {
      build(tables);
      if (tables.m_pElements == nullptr) tables.SetElements({});
      if (tables.m_pAttributes == nullptr) tables.SetAttributes({});
    } catch (...) {
      Clean(tables);
      throw;
    }
    tables.m_isBuilt.store(true, std::memory_order_release);
  }
};

}  // namespace QzXmlLib16
