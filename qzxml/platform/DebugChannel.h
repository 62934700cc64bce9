#pragma once

#include <atomic>
#include <cstddef>

#include "qzxml/platform/Export.h"

// The debug channel: one sink for the whole process that takes diagnostic texts. It is null until
// somebody listens, and while it is null nothing is formatted at all.
//
// Set it before work starts; any thread may send.

namespace QzXmlLib16 {

// Receives each piece of text, zero-terminated; line ends are part of the text.
using DebugChannel = void (*)(const char* text);

// Installs a sink; null closes the channel.
QZXML_API void SetDebugChannel(DebugChannel channel);

namespace detail {

extern QZXML_API std::atomic<DebugChannel> g_debugChannel;

// The sink, or null: one relaxed load, so that callers can ask before they format.
inline DebugChannel GetDebugChannel() { return g_debugChannel.load(std::memory_order_relaxed); }

// Sends a text in pieces of 128 bytes; does nothing while nobody listens.
QZXML_API void SendToDebugChannel(const char* text, std::size_t length);

}  // namespace detail

}  // namespace QzXmlLib16
