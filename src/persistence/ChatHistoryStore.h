#pragma once

#include "models/PersistedChatThread.h"

#include <QDateTime>
#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>

#include <functional>
#include <optional>

namespace vantrel {

class UserDefaults;

/// The conversations about hunks as the preferences hold them: one JSON array, newest first. Every
/// operation reads the whole array and a save writes it anew, so that two running instances do not
/// undo each other's saves. Nothing reports an error: what cannot be read reads as no history and
/// stays as it is until the next save.
/// Thread: any one at a time; every call blocks for the disk.
class ChatHistoryStore final
{
public:
    /// A save drops the least recently saved threads beyond this many.
    static constexpr qsizetype maxPersistedThreads = 50;

    /// `defaults` must outlive the store. `now` tells the time of a save.
    explicit ChatHistoryStore(UserDefaults &defaults,
                              std::function<QDateTime()> now = &QDateTime::currentDateTimeUtc);

    /// Everything that is stored, newest first.
    [[nodiscard]] QList<PersistedChatThread> threads() const;

    [[nodiscard]] std::optional<PersistedChatThread> thread(const QString &filePath,
                                                            const QString &diffText) const;

    /// The explanations of a file's hunks by diff text, of those threads that have one.
    [[nodiscard]] QHash<QString, HunkExplanation> explanations(const QString &filePath) const;

    /// Makes the thread of this pair the newest. Without an explanation the one that is stored
    /// already is kept.
    void save(const QString &filePath, const QString &diffText, const QList<ChatMessage> &messages,
              const QStringList &suggestedQuestions,
              const std::optional<HunkExplanation> &explanation);

    /// The same for a thread that was saved at its `lastUpdated` and is written only now.
    void save(const PersistedChatThread &saved);

private:
    UserDefaults &m_defaults;
    std::function<QDateTime()> m_now;
};

} // namespace vantrel
