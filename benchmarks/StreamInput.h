#pragma once

#include <QByteArray>

namespace vantrel::bench {

/// Chunks of the event stream.
inline constexpr int chunkCount = 200'000;

/// The event stream of a long answer: chunks of 1 to 20 characters with all that a provider writes
/// around them, and a comment now and then that keeps the connection alive. The same on every run.
[[nodiscard]] QByteArray eventStream();

} // namespace vantrel::bench
