#pragma once

#include "ai/ChangesetKey.h"
#include "models/HunkExplanation.h"
#include "models/PersistedChatThread.h"
#include "platform/jobs/SharedJob.h"
#include "platform/jobs/Task.h"

#include <QHash>
#include <QString>

#include <optional>

namespace vantrel {

struct FileSummaryKey
{
    QString path{};
    QString diffText{}; ///< See `fileDiffText`.

    bool operator==(const FileSummaryKey &) const = default;
    friend size_t qHash(const FileSummaryKey &key, size_t seed = 0)
    {
        return qHashMulti(seed, key.path, key.diffText);
    }
};

struct HunkKey
{
    QString filePath{};
    QString diffText{}; ///< The hunk's own, see `hunkDiffText`.

    bool operator==(const HunkKey &) const = default;
    friend size_t qHash(const HunkKey &key, size_t seed = 0)
    {
        return qHashMulti(seed, key.filePath, key.diffText);
    }
};

/// What the model has said of the repository that is open. Everything is kept under the diff text
/// that it was made from, so a file that changes on disk misses by itself. Nothing is ever dropped:
/// each opening of a repository has a cache of its own. Thread: interface.
class AIResultCache final
{
public:
    AIResultCache() = default;
    AIResultCache(const AIResultCache &) = delete;
    AIResultCache &operator=(const AIResultCache &) = delete;

    [[nodiscard]] std::optional<QString> fileSummary(const FileSummaryKey &key) const;
    void setFileSummary(const FileSummaryKey &key, const QString &summary);

    [[nodiscard]] std::optional<HunkExplanation> hunkExplanation(const HunkKey &key) const;
    void setHunkExplanation(const HunkKey &key, const HunkExplanation &explanation);

    [[nodiscard]] std::optional<PersistedChatThread> chatThread(const HunkKey &key) const;
    void setChatThread(const HunkKey &key, const PersistedChatThread &thread);

    /// Whether the narrative of this change set was asked for, be it there or still being made.
    [[nodiscard]] bool hasChangesetSummary(const ChangesetKey &key) const;

    /// The narrative, once it is made; nothing before.
    [[nodiscard]] std::optional<QString> finishedChangesetSummary(const ChangesetKey &key) const;

    /// The narrative of the change set. The first call starts `producer`, which goes on without its
    /// callers; every later one shares its result and drops its own producer unstarted.
    Task<QString> changesetSummary(const ChangesetKey &key, Task<QString> producer);

    /// The text that stands for a file in the request for the narrative: its summary when there is
    /// one, else its diff text, cut after 40 lines.
    [[nodiscard]] QString promptText(const QString &path, const QString &diffText) const;

private:
    QHash<FileSummaryKey, QString> m_fileSummaries{};
    QHash<HunkKey, HunkExplanation> m_hunkExplanations{};
    QHash<HunkKey, PersistedChatThread> m_chatThreads{};
    QHash<ChangesetKey, SharedJob<QString>> m_changesetSummaries{};
};

} // namespace vantrel
