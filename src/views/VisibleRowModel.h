#pragma once

#include "app/DiffViewModel.h"
#include "views/PanesSizes.h"
#include "views/WindowedListModel.h"

#include <QPointer>

namespace vantrel {

/// What a screen reader says of a row: the line on both sides, with what has become of it.
/// Characters that are drawn as marks are named by these.
[[nodiscard]] QString accessibleRowName(const DiffRow &row);

/// The rows of one hunk's card that are in view, for screen readers: what is seen of them is drawn.
class VisibleRowModel final : public WindowedListModel
{
    Q_OBJECT

public:
    enum Role {
        TopRole = Qt::UserRole + 1, ///< qreal, within the card
        AccessibleNameRole,         ///< QString
    };

    VisibleRowModel(DiffViewModel &diff, int hunkIndex, const PanesSizes &sizes, QObject *parent);

    /// Holds the rows from `first` to before `end`.
    void setWindow(int first, int end) { moveWindow(first, end); }

    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

private:
    QPointer<DiffViewModel> m_diff;
    int m_hunkIndex;
    PanesSizes m_sizes;
};

} // namespace vantrel
