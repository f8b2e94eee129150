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

public:
    enum Role {
        FolderRole = Qt::UserRole + 1, ///< QString: the path up to and with its last slash
        NameRole,                      ///< QString: the rest of the path
        PathRole,                      ///< QString
        StatusRole,                    ///< QString: "M", "A" or "D"
        AdditionsRole,                 ///< int
        DeletionsRole,                 ///< int
        HasHunksRole,                  ///< bool
        AccessibleNameRole,            ///< QString
    };

    using QAbstractListModel::QAbstractListModel;

    [[nodiscard]] FileListViewModel *source() const { return m_source; }
    void setSource(FileListViewModel *source);
    [[nodiscard]] int count() const { return int(m_files.size()); }
    [[nodiscard]] int additions() const { return m_additions; }
    [[nodiscard]] int deletions() const { return m_deletions; }

    /// The row of the file at `path`, or -1.
    Q_INVOKABLE [[nodiscard]] int rowOf(const QString &path) const;

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

Q_SIGNALS:
    void sourceChanged();
    void totalsChanged();

private:
    void takeFiles();

    QPointer<FileListViewModel> m_source{};
    QList<FileChange> m_files{};
    int m_additions = 0;
    int m_deletions = 0;
};

} // namespace vantrel
