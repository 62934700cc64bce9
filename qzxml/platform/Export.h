#pragma once

// QZXML_API marks what the shared library exports; everything else in it is hidden.
#if defined(QZXML_STATIC)
#define QZXML_API
#elif defined(__GNUC__)
#define QZXML_API __attribute__((visibility("default")))
#else
#define QZXML_API
#endif
