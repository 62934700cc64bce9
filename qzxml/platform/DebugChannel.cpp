#include "qzxml/platform/DebugChannel.h"

#include <algorithm>
#include <cstring>

namespace QzXmlLib16 {

namespace detail {

// Constant-initialised: it can be used from the static initialisers of any other file.
std::atomic<DebugChannel> g_debugChannel{nullptr};

void SendToDebugChannel(const char* text, std::size_t length) {
  constexpr std::size_t kPieceSize = 128;
  const DebugChannel channel = GetDebugChannel();
  if (channel == nullptr) return;
  while (length > 0) {
    const std::size_t size = std::min(length, kPieceSize);
    char piece[kPieceSize + 1];
    std::memcpy(piece, text, size);
    piece[size] = '\0';
    channel(piece);
    text += size;
    length -= size;
  }
}

}  // namespace detail

void SetDebugChannel(DebugChannel channel) {
  detail::g_debugChannel.store(channel, std::memory_order_relaxed);
}

}  // namespace QzXmlLib16
