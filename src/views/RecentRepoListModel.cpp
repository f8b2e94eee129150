#include "views/RecentRepoListModel.h"

#include "views/MomentText.h"

namespace vantrel {

void RecentRepoListModel::setSource(PickerViewModel *source)
{
    if (source == m_source) {
        return;
    }
    if (m_source) {
        m_source->disconnect(this);
    }
    m_source = source;
    if (source != nullptr) {
        connect(source, &PickerViewModel::recentReposChanged, this,
                &RecentRepoListModel::takeRepos);
        connect(source, &PickerViewModel::missingReposChanged, this,
                &RecentRepoListModel::takeMissing);
    }
    takeRepos();
    Q_EMIT sourceChanged();
}

int RecentRepoListModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_repos.size());
}

QVariant RecentRepoListModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid)) {
        return {};
    }
    const RecentRepo &repo = m_repos.at(index.row());
    switch (role) {
    case NameRole:
        return repo.name;
    case PathRole:
        return repo.path;
    case FolderRole:
        return QUrl::fromLocalFile(repo.path);
    case OpenedAtRole:
        return momentText(repo.lastOpened, m_now);
    case MissingRole:
        return m_source && m_source->isMissing(repo.path);
    default:
        return {};
    }
}

QHash<int, QByteArray> RecentRepoListModel::roleNames() const
{
    return {{NameRole, "name"},
            {PathRole, "path"},
            {FolderRole, "folder"},
            {OpenedAtRole, "openedAt"},
            {MissingRole, "isMissing"}};
}

void RecentRepoListModel::takeRepos()
{
    beginResetModel();
    m_repos = m_source ? m_source->recentRepos() : QList<RecentRepo>();
    m_now = QDateTime::currentDateTime();
    endResetModel();
}

void RecentRepoListModel::takeMissing()
{
    if (!m_repos.isEmpty()) {
        Q_EMIT dataChanged(index(0), index(int(m_repos.size()) - 1), {MissingRole});
    }
}

} // namespace vantrel
