#include "qzxml/runtime/MemoryLeakHelp.h"

#include <deque>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "qzxml/platform/DebugChannel.h"
#include "qzxml/platform/InitOrder.h"
#include "qzxml/runtime/CriticalSection.h"
#include "qzxml/runtime/Functions.h"

using QzXmlLib16::FormatString;
using QzXmlLib16::detail::CriticalSectionGuard;
using QzXmlLib16::detail::InstanceRecord;

namespace {

// The records. Made on first use and never destroyed: static objects of any file may be counted
// before this file's own are built and after they are gone.
struct Registry {
  CQZCriticalSection section;
  std::deque<InstanceRecord> storage;                            // every record there ever was
  std::vector<InstanceRecord*> records;                          // in order of first appearance
  std::unordered_map<std::string_view, InstanceRecord*> byName;  // the same, to be found
};

Registry& GetRegistry() {
  static Registry& registry = *new Registry;
  return registry;
}

void SendText(const std::string& text) {
  QzXmlLib16::detail::SendToDebugChannel(text.data(), text.size());
}

// Sends the first line when the library is loaded and the dump when it is unloaded.
struct Tracking {
  Tracking() { QzXmlLib16::detail::StartInstanceTracking(); }
  Tracking(const Tracking&) = delete;
  Tracking& operator=(const Tracking&) = delete;
  ~Tracking() { QzXmlLib16::detail::StopInstanceTracking(); }
};

QZXML_INIT_ORDER(QzXmlLib16::detail::InitOrder_InstanceTracking) const Tracking g_tracking;

}  // namespace

namespace QzXmlLib16::detail {

InstanceRecord* FindInstanceRecord(const char* className) {
  Registry& registry = GetRegistry();
  const CriticalSectionGuard guard(registry.section);
  const auto found = registry.byName.find(className);
  if (found != registry.byName.end()) return found->second;
  InstanceRecord& record = registry.storage.emplace_back(className);
  registry.records.push_back(&record);
  registry.byName.emplace(record.GetName(), &record);
  return &record;
}

void StartInstanceTracking() {
  if (GetDebugChannel() != nullptr) SendText("Starting to track Class instances\n");
}

void StopInstanceTracking() {
  if (GetDebugChannel() != nullptr) {
    SendText("Dumping Class instances\n");
    SendText(CInstanceMonitor::DumpState());
    SendText("\n");
  }
  CInstanceMonitor::Cleanup();
}

}  // namespace QzXmlLib16::detail

CInstanceMonitor::CInstanceMonitor(const char* className)
    : m_pct(QzXmlLib16::detail::FindInstanceRecord(className)) {
  m_pct->CountIn();
}

std::string CInstanceMonitor::DumpState() {
  Registry& registry = GetRegistry();
  const CriticalSectionGuard guard(registry.section);
  std::string text = "Instances of classes still in existence/Total Number of instances created\n";
  const char* separator = "";
  for (const InstanceRecord* record : registry.records) {
    const std::int32_t alive = record->GetAlive();
    text += separator;
    text += FormatString(alive >= 1 ? "--> %s = %d/%d" : "    %s = %d/%d",
                         record->GetName().c_str(), alive, record->GetTotal());
    separator = "\n";
  }
  return text;
}

void CInstanceMonitor::Cleanup() {
  Registry& registry = GetRegistry();
  const CriticalSectionGuard guard(registry.section);
  for (InstanceRecord* record : registry.records) record->TakeOffList();
  registry.records.clear();
  registry.byName.clear();
}
