#pragma once

#include <atomic>
#include <cstdint>
#include <string>
#include <utility>

#include "qzxml/platform/Assert.h"
#include "qzxml/platform/Export.h"
#include "qzxml/platform/Threads.h"

// The instance monitor: counts the objects of each class by its name, alive and ever made, so that
// leaks of a long-running application can be seen. It has no effect on behaviour.

namespace QzXmlLib16::detail {

// The two counts of one class name. Records are never freed: an object may outlive Cleanup().
class InstanceRecord {
 public:
  explicit InstanceRecord(std::string name) : m_name(std::move(name)) {}

  const std::string& GetName() const { return m_name; }
  std::int32_t GetAlive() const { return AliveIn(m_counts.load(std::memory_order_relaxed)); }
  std::int32_t GetTotal() const { return TotalIn(m_counts.load(std::memory_order_relaxed)); }

  // Off the list after Cleanup(): its objects still count here, new ones in a new record.
  bool IsListed() const { return m_listed.load(std::memory_order_relaxed); }
  void TakeOffList() { m_listed.store(false, std::memory_order_relaxed); }

  void CountIn() { AddToCounter(m_counts, kOneMade + kOneAlive, std::memory_order_relaxed); }
  // Made and gone again.
  void CountMade(std::uint32_t count = 1) {
    AddToCounter(m_counts, kOneMade * count, std::memory_order_relaxed);
  }
  // Alive again, without being made anew.
  void CountBack() { AddToCounter(m_counts, kOneAlive, std::memory_order_relaxed); }
  // The objects still alive, below zero when copies of monitors have gone too.
  std::int32_t CountOut(std::uint32_t count = 1) {
    const std::uint64_t gone = kOneAlive * count;
    return AliveIn(AddToCounter(m_counts, 0 - gone, std::memory_order_relaxed) - gone);
  }

 private:
  // Both counts in one number, total * 2^32 + alive, so that one addition changes both. An alive
  // below zero borrows from the total, which TotalIn gives back; both wrap around at 32 bits.
  static constexpr std::uint64_t kOneAlive = 1;
  static constexpr std::uint64_t kOneMade = std::uint64_t{1} << 32;
  static std::int32_t AliveIn(std::uint64_t counts) { return static_cast<std::int32_t>(counts); }
  static std::int32_t TotalIn(std::uint64_t counts) {
    const auto alive = static_cast<std::uint64_t>(std::int64_t{AliveIn(counts)});
    return static_cast<std::int32_t>((counts - alive) >> 32);
  }

  std::string m_name;
  std::atomic<std::uint64_t> m_counts{0};
  std::atomic<bool> m_listed{true};
};

// The record of a name, made and put at the end of the list where there is none.
QZXML_API InstanceRecord* FindInstanceRecord(const char* className);

// What the library does when it is loaded and unloaded: sends a line to the debug channel, and the
// dump; then Cleanup().
QZXML_API void StartInstanceTracking();
QZXML_API void StopInstanceTracking();

}  // namespace QzXmlLib16::detail

// A class name that finds its record once; then counting is one addition, without lock or search.
// Make it a static: it is constant-initialised, so objects of static lifetime may use it.
//
//   static CInstanceClass s_class("CXmlElement");
//   CXmlElement::CXmlElement() : CInstanceMonitor(s_class) {}
class CInstanceClass {
 public:
  // The name is not copied: a literal.
  constexpr explicit CInstanceClass(const char* className) : m_className(className) {}
  CInstanceClass(const CInstanceClass&) = delete;
  CInstanceClass& operator=(const CInstanceClass&) = delete;

  QzXmlLib16::detail::InstanceRecord* GetRecord() {
    QzXmlLib16::detail::InstanceRecord* record = m_record.load(std::memory_order_acquire);
    if (record == nullptr || !record->IsListed()) {
      record = QzXmlLib16::detail::FindInstanceRecord(m_className);
      m_record.store(record, std::memory_order_release);
    }
    return record;
  }

 private:
  const char* m_className;
  std::atomic<QzXmlLib16::detail::InstanceRecord*> m_record{nullptr};
};

// The base of every heavy class of the library and of generated classes. Any thread may make and
// destroy objects.
class QZXML_API CInstanceMonitor {
 public:
  // Finds the record by its name, under a lock. Classes of one name share a record.
  explicit CInstanceMonitor(const char* className);
  explicit CInstanceMonitor(CInstanceClass& instanceClass) : m_pct(instanceClass.GetRecord()) {
    m_pct->CountIn();
  }

  // Meant: both take over the record and count nothing, while every destructor counts: the live
  // figure of a class whose objects are copied runs low, which those who read the dumps know.
  CInstanceMonitor(const CInstanceMonitor& other) = default;
  CInstanceMonitor& operator=(const CInstanceMonitor& other) = default;

  // Asserts "m_pct" and "m_pct->lInstanceCount >= 0".
  virtual ~CInstanceMonitor() {
    QZ_ASSERT_TEXT(m_pct != nullptr, "m_pct");
    [[maybe_unused]] const std::int32_t lInstanceCount = m_pct->CountOut();
    QZ_ASSERT_TEXT(lInstanceCount >= 0, "m_pct->lInstanceCount >= 0");
  }

  // "Instances of classes still in existence/Total Number of instances created\n" and a line for
  // each name in the order of first appearance: "--> CXmlDocument = 1/3" while objects live,
  // "    CXmlDocument = 0/3" otherwise.
  static std::string DumpState();

  // Empties the list. Objects that are alive go on counting, but in no dump. Call it at the end of
  // the process.
  static void Cleanup();

 protected:
  // For objects that wait in a pool between two lives, where they are not alive: BeginWait ends a
  // life, BeginLife begins the next one, which counts as an object made. EndWait comes before the
  // destructor of a waiting object, which is going to count it out.
  void BeginWait() { m_pct->CountOut(); }
  void BeginLife() { m_pct->CountIn(); }
  void EndWait() { m_pct->CountBack(); }

  // For who frees the memory of many objects without their destructors, and counts them out by
  // their record.
  QzXmlLib16::detail::InstanceRecord* GetRecord() const { return m_pct; }

  // Counts more objects of the class that were made and are gone.
  void CountPassing(std::uint32_t count = 1) { m_pct->CountMade(count); }

 private:
  QzXmlLib16::detail::InstanceRecord* m_pct;  // not owned
};
