#include "persistence/RecentReposStore.h"

#include "models/RecentRepoCoding.h"
#include "persistence/StoredRecords.h"

#include <QDebug>
#include <QFileInfo>

#include <algorithm>
#include <utility>

namespace vantrel {

using namespace Qt::Literals::StringLiterals;

RecentReposStore::RecentReposStore(UserDefaults defaults, QString storageKey, qsizetype maxEntries,
                                   std::function<QDateTime()> now)
    : m_defaults(std::move(defaults))
    , m_storageKey(std::move(storageKey))
    , m_maxEntries(maxEntries)
    , m_now(std::move(now))
{}

QList<RecentRepo> RecentReposStore::load() const
{
    const QByteArray stored = m_defaults.bytes(m_storageKey).value_or(QByteArray());
    QList<RecentRepo> repos = recordsFromStoredForm(stored, recentRepoFromJson);
    std::stable_sort(repos.begin(), repos.end(),
                     [](const RecentRepo &left, const RecentRepo &right) {
                         return left.lastOpened > right.lastOpened;
                     });
    return repos;
}

void RecentReposStore::record(const QString &name, const QString &path)
{
    const std::lock_guard lock(m_recording);
    QList<RecentRepo> repos = load();
    repos.removeIf([&path](const RecentRepo &repo) { return repo.path == path; });
    repos.prepend(RecentRepo{QUuid::createUuid(), name, path, m_now()});
    if (repos.size() > m_maxEntries) {
        repos.resize(m_maxEntries);
    }
    // The repository opens without being remembered, which the person can see and repair.
    if (const auto written = m_defaults.setBytes(m_storageKey, storedForm(repos)); !written) {
        qWarning("the recent repositories could not be saved: %s",
                 qPrintable(written.error().description()));
    }
}

bool RecentReposStore::isRepository(const QString &path) const
{
    return QFileInfo::exists(path + u"/.git"_s);
}

} // namespace vantrel
