#pragma once

#include "models/PersistedChatThread.h"

#include <QHash>
#include <QList>
#include <QString>

#include <optional>

namespace vantrel {

// The history as a list of threads, newest first: the same rules for what is stored and for what is
// held in memory.

/// Whether both are about the same hunk.
[[nodiscard]] bool isSamePair(const PersistedChatThread &thread, const QString &filePath,
                              const QString &diffText);

/// Puts the newest first; threads of the same moment keep their order.
[[nodiscard]] QList<PersistedChatThread> newestFirst(QList<PersistedChatThread> threads);

/// The first thread of this pair.
[[nodiscard]] std::optional<PersistedChatThread>
threadOfPair(const QList<PersistedChatThread> &threads, const QString &filePath,
             const QString &diffText);

/// The explanations of a file's threads by diff text. Where two share one, the later in the list
/// counts.
[[nodiscard]] QHash<QString, HunkExplanation>
explanationsOfFile(const QList<PersistedChatThread> &threads, const QString &filePath);

/// The list with `saved` at its front in place of every thread of the same pair, and cut to
/// `maxThreads`. Without an explanation `saved` keeps the one of the thread that it replaces.
[[nodiscard]] QList<PersistedChatThread> withSaved(QList<PersistedChatThread> threads,
                                                   PersistedChatThread saved, qsizetype maxThreads);

} // namespace vantrel
