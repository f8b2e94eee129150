#pragma once

#include "app/PickerViewModel.h"

#include <QAbstractListModel>
#include <QDateTime>
#include <QPointer>
#include <qqml.h>

namespace vantrel {

/// The recent repositories for the picker's list. Thread: interface.
class RecentRepoListModel : public QAbstractListModel
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(vantrel::PickerViewModel *source READ source WRITE setSource NOTIFY sourceChanged)

public:
    enum Role {
        NameRole = Qt::UserRole + 1, ///< QString
        PathRole,                    ///< QString
        FolderRole,                  ///< QUrl: the folder at the path
        OpenedAtRole,                ///< QString: when it was opened, see `momentText`
        MissingRole,                 ///< bool: it is not there any more
    };

    using QAbstractListModel::QAbstractListModel;

    [[nodiscard]] PickerViewModel *source() const { return m_source; }
    void setSource(PickerViewModel *source);

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

Q_SIGNALS:
    void sourceChanged();

private:
    void takeRepos();
    void takeMissing();

    QPointer<PickerViewModel> m_source{};
    QList<RecentRepo> m_repos{};
    QDateTime m_now{}; ///< When the repositories were taken: what "today" means.
};

} // namespace vantrel
