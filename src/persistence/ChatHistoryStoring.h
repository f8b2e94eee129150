#pragma once

#include "models/PersistedChatThread.h"
#include "platform/jobs/Task.h"

#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

namespace vantrel {

/// The conversations about hunks, kept across runs of the application. Nothing here reports an
/// error: what cannot be read reads as no history. Thread: interface; nothing here blocks.
class ChatHistoryStoring
{
public:
    ChatHistoryStoring() = default;
    ChatHistoryStoring(const ChatHistoryStoring &) = delete;
    ChatHistoryStoring &operator=(const ChatHistoryStoring &) = delete;
    virtual ~ChatHistoryStoring() = default;

    /// Ends once what was stored is there to be asked for. Whoever asks waits for it first.
    virtual Task<> whenLoaded() = 0;

    [[nodiscard]] virtual std::optional<PersistedChatThread>
    thread(const QString &filePath, const QString &diffText) const = 0;

    /// The explanations of a file's hunks by diff text, of those threads that have one.
    [[nodiscard]] virtual QHash<QString, HunkExplanation>
    explanations(const QString &filePath) const = 0;

    /// Makes the thread of this pair the newest. Without an explanation the one that is stored
    /// already is kept. The least recently saved threads beyond the store's limit are dropped.
    virtual void save(const QString &filePath, const QString &diffText,
                      const QList<ChatMessage> &messages, const QStringList &suggestedQuestions,
                      const std::optional<HunkExplanation> &explanation) = 0;
};

} // namespace vantrel
