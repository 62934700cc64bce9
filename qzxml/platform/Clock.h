#pragma once

#include <ctime>

#include "qzxml/platform/Export.h"
#include "qzxml/platform/SystemTime.h"

// The system's clock and its broken-down times, without the shared buffers of the C functions.
namespace QzXmlLib16::detail {

// The fields of a count of seconds since 1970-01-01T00:00:00Z, in UTC and in the process's time
// zone (TZ is looked at each time). False where the system has no fields for it; they are zero
// then.
QZXML_API bool GetUtcFields(long long time, std::tm& fields);
QZXML_API bool GetLocalFields(long long time, std::tm& fields);

// The count for fields in the process's time zone, as by mktime: fields out of range carry over,
// and tm_isdst says whether they tell summer time. -1 where the system has no count for them.
QZXML_API long long GetTimeOfLocalFields(std::tm fields);

// Now, in the process's time zone.
QZXML_API _SYSTEMTIME GetLocalSystemTime();

// The fields in UTC. False for counts from 2^63 on, which the systems that made them refuse as
// well.
QZXML_API bool FileTimeToFields(const _FILETIME& fileTime, _SYSTEMTIME& fields);

}  // namespace QzXmlLib16::detail
