#include "views/FileListModel.h"

#include "ai/AIServiceError.h"
#include "views/ShownText.h"

#include <algorithm>

namespace vantrel {

using namespace Qt::Literals::StringLiterals;

namespace {

QString statusName(ChangeStatus status)
{
    switch (status) {
    case ChangeStatus::modified:
        return FileListModel::tr("Modified");
    case ChangeStatus::added:
        return FileListModel::tr("Added");
    case ChangeStatus::deleted:
        return FileListModel::tr("Deleted");
    }
    Q_UNREACHABLE();
}

QString accessibleName(const FileChange &file)
{
    QString name = file.path + u", "_s + statusName(file.status);
    if (file.additions > 0) {
        name += u", "_s + (file.additions == 1
                               ? FileListModel::tr("1 line added")
                               : FileListModel::tr("%1 lines added").arg(file.additions));
    }
    if (file.deletions > 0) {
        name += u", "_s + (file.deletions == 1
                               ? FileListModel::tr("1 line deleted")
                               : FileListModel::tr("%1 lines deleted").arg(file.deletions));
    }
    return name;
}

FileListModel::SummaryState summaryState(const LoadableState<QString> &state)
{
    if (state.isLoading()) {
        return FileListModel::Loading;
    }
    if (state.isFailed()) {
        return FileListModel::Failed;
    }
    return state.isLoaded() ? FileListModel::Loaded : FileListModel::Idle;
}

QString summaryText(const LoadableState<QString> &state)
{
    const QString *const text = state.isFailed() ? state.message() : state.value();
    return text == nullptr ? QString() : shownText(*text).simplified();
}

QString accessibleDescription(const LoadableState<QString> &state)
{
    return state.isLoading() ? FileListModel::tr("Summarising") : summaryText(state);
}

} // namespace

void FileListModel::setSource(FileListViewModel *source)
{
    if (source == m_source) {
        return;
    }
    if (m_source) {
        m_source->disconnect(this);
    }
    m_source = source;
    if (source != nullptr) {
        connect(source, &FileListViewModel::filesChanged, this, &FileListModel::takeFiles);
        connect(source, &FileListViewModel::summaryChanged, this, &FileListModel::takeSummary);
        connect(source, &FileListViewModel::narrativeChanged, this,
                &FileListModel::narrativeChanged);
    }
    takeFiles();
    Q_EMIT sourceChanged();
    Q_EMIT narrativeChanged();
}

QString FileListModel::narrative() const
{
    return m_source ? shownText(m_source->narrative()) : QString();
}

int FileListModel::rowOf(const QString &path) const
{
    const auto found = std::find_if(m_files.cbegin(), m_files.cend(),
                                    [&path](const FileChange &file) { return file.path == path; });
    return found == m_files.cend() ? -1 : int(found - m_files.cbegin());
}

int FileListModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : count();
}

QVariant FileListModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid)) {
        return {};
    }
    const FileChange &file = m_files.at(index.row());
    const qsizetype nameBegin = file.path.lastIndexOf(u'/') + 1;
    switch (role) {
    case FolderRole:
        return file.path.first(nameBegin);
    case NameRole:
        return file.path.sliced(nameBegin);
    case PathRole:
        return file.path;
    case StatusRole:
        return rawValue(file.status);
    case AdditionsRole:
        return int(file.additions);
    case DeletionsRole:
        return int(file.deletions);
    case HasHunksRole:
        return !file.hunks.isEmpty();
    case SummaryStateRole:
        return summaryState(file.summaryState);
    case SummaryRole:
        return summaryText(file.summaryState);
    case RecoveryLabelRole:
        return file.summaryState.isFailed()
                   ? recoveryLabel(*file.summaryState.message()).value_or(QString())
                   : QString();
    case AccessibleNameRole:
        return accessibleName(file);
    case AccessibleDescriptionRole:
        return accessibleDescription(file.summaryState);
    default:
        return {};
    }
}

QHash<int, QByteArray> FileListModel::roleNames() const
{
    return {{FolderRole, "folder"},
            {NameRole, "name"},
            {PathRole, "path"},
            {StatusRole, "status"},
            {AdditionsRole, "additions"},
            {DeletionsRole, "deletions"},
            {HasHunksRole, "hasHunks"},
            {SummaryStateRole, "summaryState"},
            {SummaryRole, "summary"},
            {RecoveryLabelRole, "recoveryLabel"},
            {AccessibleNameRole, "accessibleName"},
            {AccessibleDescriptionRole, "accessibleDescription"}};
}

void FileListModel::takeFiles()
{
    beginResetModel();
    m_files = m_source ? m_source->files() : QList<FileChange>();
    m_additions = 0;
    m_deletions = 0;
    for (const FileChange &file : std::as_const(m_files)) {
        m_additions += int(file.additions);
        m_deletions += int(file.deletions);
    }
    endResetModel();
    Q_EMIT totalsChanged();
}

int FileListModel::count(ChangeStatus status) const
{
    return int(std::count_if(m_files.cbegin(), m_files.cend(),
                             [status](const FileChange &file) { return file.status == status; }));
}

void FileListModel::takeSummary(int row)
{
    m_files[row].summaryState = m_source->files().at(row).summaryState;
    Q_EMIT dataChanged(
        index(row), index(row),
        {SummaryStateRole, SummaryRole, RecoveryLabelRole, AccessibleDescriptionRole});
}

} // namespace vantrel
