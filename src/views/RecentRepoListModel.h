#pragma once

#include "app/PickerViewModel.h"

#include <QAbstractListModel>
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

    QPointer<PickerViewModel> m_source{};
    QList<RecentRepo> m_repos{};
};

} // namespace vantrel
