#pragma once

#include "persistence/RecentReposStoring.h"
#include "platform/UserDefaults.h"

#include <QDateTime>

#include <functional>
#include <mutex>

namespace vantrel {

/// The recently opened repositories as the preferences hold them: one JSON array, newest first.
/// What cannot be read stays as it is until the next `record`.
class RecentReposStore final : public RecentReposStoring
{
public:
    /// Keeps the `maxEntries` newest under `storageKey`. It has its own handle on the preferences,
    /// since a call that a slow disk holds up may outlive the application's. `now` tells the time
    /// of an opening, on the thread that records it.
    RecentReposStore(UserDefaults defaults, QString storageKey, qsizetype maxEntries,
                     std::function<QDateTime()> now = &QDateTime::currentDateTimeUtc);

    [[nodiscard]] QList<RecentRepo> load() const override;
    void record(const QString &name, const QString &path) override;
    [[nodiscard]] bool isRepository(const QString &path) const override;

private:
    UserDefaults m_defaults;
    QString m_storageKey;
    qsizetype m_maxEntries;
    std::function<QDateTime()> m_now;

    /// Held through a whole `record`, so that of two at once none undoes the other. Only threads
    /// that wait for the disk anyway take it.
    std::mutex m_recording{};
};

} // namespace vantrel
