#pragma once

#include "app/DiffViewModel.h"
#include "views/PanesLayout.h"

#include <QAbstractListModel>
#include <QPointer>

namespace vantrel {

/// The hunk cards that are in view, a row each, for what lies over the drawn panes: heads to click,
/// tags, names for screen readers. Signals exactly the cards that come, go or change.
class VisibleCardModel final : public QAbstractListModel
{
    Q_OBJECT

public:
    enum Role {
        HunkIndexRole = Qt::UserRole + 1, ///< int
        TopRole,                          ///< qreal, within the whole content
        HeightRole,                       ///< qreal
        RangeRole,                        ///< QString: the header up to and with its closing marker
        SectionRole,                      ///< QString: the header's rest
        TagRole,                          ///< QString: empty until the hunk is explained
        IsExplainingRole,                 ///< bool
        IsSelectedRole,                   ///< bool
        AccessibleNameRole,               ///< QString
    };

    using QAbstractListModel::QAbstractListModel;

    void setDiff(DiffViewModel *diff);

    /// Shows the cards from `first` to before `end`.
    void setWindow(const PanesLayout &layout, int first, int end);

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

private:
    void forget();
    void announce(int hunkIndex, const QList<int> &roles);

    QPointer<DiffViewModel> m_diff{};
    PanesLayout m_layout{};
    int m_first = 0;
    int m_end = 0;
    int m_selected = 0;
};

} // namespace vantrel
