#pragma once

#include "app/FileListViewModel.h"

#include <QAbstractListModel>
#include <QPointer>
#include <qqml.h>

namespace vantrel {

/// The changed files for the list view, and their totals. Thread: interface.
class FileListModel : public QAbstractListModel
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(vantrel::FileListViewModel *source READ source WRITE setSource NOTIFY sourceChanged)
    Q_PROPERTY(int count READ count NOTIFY totalsChanged)
    Q_PROPERTY(int additions READ additions NOTIFY totalsChanged)
    Q_PROPERTY(int deletions READ deletions NOTIFY totalsChanged)
    Q_PROPERTY(int modifiedCount READ modifiedCount NOTIFY totalsChanged)
    Q_PROPERTY(int addedCount READ addedCount NOTIFY totalsChanged)
    Q_PROPERTY(int deletedCount READ deletedCount NOTIFY totalsChanged)
    Q_PROPERTY(QString narrative READ narrative NOTIFY narrativeChanged)

public:
    enum Role {
        FolderRole = Qt::UserRole + 1, ///< QString: the path up to and with its last slash
        NameRole,                      ///< QString: the rest of the path
        PathRole,                      ///< QString
        StatusRole,                    ///< QString: "M", "A" or "D"
        AdditionsRole,                 ///< int
        DeletionsRole,                 ///< int
        HasHunksRole,                  ///< bool
        SummaryStateRole,              ///< SummaryState
        SummaryRole,                   ///< QString: the sentence or the failure, in one line
        RecoveryLabelRole,             ///< QString: the words that lead to a failure's remedy
        AccessibleNameRole,            ///< QString
        AccessibleDescriptionRole,     ///< QString: what is known of the summary
    };

    /// What stands below a file's path.
    enum SummaryState { Idle, Loading, Loaded, Failed };
    Q_ENUM(SummaryState)

    using QAbstractListModel::QAbstractListModel;

    [[nodiscard]] FileListViewModel *source() const { return m_source; }
    void setSource(FileListViewModel *source);
    [[nodiscard]] int count() const { return int(m_files.size()); }
    [[nodiscard]] int additions() const { return m_additions; }
    [[nodiscard]] int deletions() const { return m_deletions; }

    [[nodiscard]] int modifiedCount() const { return count(ChangeStatus::modified); }
    [[nodiscard]] int addedCount() const { return count(ChangeStatus::added); }
    [[nodiscard]] int deletedCount() const { return count(ChangeStatus::deleted); }

    /// The narrative of the whole, as it is shown; empty while there is none.
    [[nodiscard]] QString narrative() const;

    /// The row of the file at `path`, or -1.
    Q_INVOKABLE [[nodiscard]] int rowOf(const QString &path) const;

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

Q_SIGNALS:
    void sourceChanged();
    void totalsChanged();
    void narrativeChanged();

private:
    [[nodiscard]] int count(ChangeStatus status) const;
    void takeFiles();
    void takeSummary(int row);

    QPointer<FileListViewModel> m_source{};
    QList<FileChange> m_files{};
    int m_additions = 0;
    int m_deletions = 0;
};

} // namespace vantrel
