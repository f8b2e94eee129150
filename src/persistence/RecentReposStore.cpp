#include "persistence/RecentReposStore.h"

#include "models/RecentRepoCoding.h"
#include "persistence/StoredRecords.h"

#include <QFileInfo>

#include <algorithm>
#include <utility>

namespace vantrel {

using namespace Qt::Literals::StringLiterals;

namespace {

QList<RecentRepo> reposIn(const QByteArray &stored)
{
    QList<RecentRepo> repos = recordsFromStoredForm(stored, recentRepoFromJson);
    std::stable_sort(repos.begin(), repos.end(),
                     [](const RecentRepo &left, const RecentRepo &right) {
                         return left.lastOpened > right.lastOpened;
                     });
    return repos;
}

} // namespace

RecentReposStore::RecentReposStore(UserDefaults defaults, QString storageKey, qsizetype maxEntries,
                                   std::function<QDateTime()> now)
    : m_defaults(std::move(defaults))
    , m_storageKey(std::move(storageKey))
    , m_maxEntries(maxEntries)
    , m_now(std::move(now))
{}

QList<RecentRepo> RecentReposStore::load() const
{
    return reposIn(m_defaults.bytes(m_storageKey).value_or(QByteArray()));
}

void RecentReposStore::record(const QString &name, const QString &path)
{
    const std::lock_guard lock(m_recording);
    // Where that fails, the repository opens nevertheless; the log tells of it.
    m_defaults.changeBytes(m_storageKey, [&](const QByteArray &stored) {
        QList<RecentRepo> repos = reposIn(stored);
        repos.removeIf([&path](const RecentRepo &repo) { return repo.path == path; });
        repos.prepend(RecentRepo{QUuid::createUuid(), name, path, m_now()});
        if (repos.size() > m_maxEntries) {
            repos.resize(m_maxEntries);
        }
        return storedForm(repos);
    });
}

bool RecentReposStore::isRepository(const QString &path) const
{
    return QFileInfo::exists(path + u"/.git"_s);
}

} // namespace vantrel
