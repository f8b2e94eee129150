#pragma once

#include <QDateTime>
#include <QString>
#include <QUuid>

namespace vantrel {

/// One entry of the list of recently opened repositories.
struct RecentRepo
{
    QUuid id{};
    QString name{};
    QString path{};
    QDateTime lastOpened{};

    bool operator==(const RecentRepo &) const = default;
};

[[nodiscard]] inline size_t qHash(const RecentRepo &repo, size_t seed = 0)
{
    return qHashMulti(seed, repo.id, repo.name, repo.path, repo.lastOpened);
}

} // namespace vantrel
