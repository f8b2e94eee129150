#pragma once

#include "models/ChatMessage.h"
#include "models/HunkExplanation.h"

#include <QDateTime>
#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

namespace vantrel {

/// The conversation about one hunk as it outlives the application, with what was said of the hunk.
/// The pair of path and diff text identifies it: a hunk whose text changes is a new thread.
struct PersistedChatThread
{
    QString filePath{};               ///< As listed by git.
    QString diffText{};               ///< The hunk's, see `hunkDiffText`.
    QList<ChatMessage> messages{};    ///< Oldest first.
    QStringList suggestedQuestions{}; ///< Those shown last.
    QDateTime lastUpdated{};
    std::optional<HunkExplanation> explanation{};

    bool operator==(const PersistedChatThread &) const = default;
};

} // namespace vantrel
