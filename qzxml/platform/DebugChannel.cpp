#include "qzxml/platform/DebugChannel.h"

namespace QzXmlLib16 {

namespace detail {

// Constant-initialised: it can be used from the static initialisers of any other file.
std::atomic<DebugChannel> g_debugChannel{nullptr};

}  // namespace detail

void SetDebugChannel(DebugChannel channel) {
  detail::g_debugChannel.store(channel, std::memory_order_relaxed);
}

}  // namespace QzXmlLib16
