#include "qzxml/runtime/CriticalSection.h"

CQZCriticalSection::CQZCriticalSection() = default;
CQZCriticalSection::~CQZCriticalSection() = default;
