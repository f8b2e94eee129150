#pragma once

#include "models/PersistedChatThread.h"

#include <iosfwd>

// How failed comparisons show the records.
namespace vantrel {

void PrintTo(const PersistedChatThread &thread, std::ostream *stream);

} // namespace vantrel

namespace vantrel::test {

/// A question, with an id of its own for each text.
[[nodiscard]] ChatMessage question(const QString &text);

/// As `question`, by the assistant.
[[nodiscard]] ChatMessage answer(const QString &text);

[[nodiscard]] HunkExplanation explanationSaying(const QString &text);

/// This many seconds after 2001-01-01 00:00:00 UTC.
[[nodiscard]] QDateTime second(int seconds);

} // namespace vantrel::test
