#pragma once

#include "app/DiffViewModel.h"
#include "views/PanesLayout.h"
#include "views/VisibleRowModel.h"
#include "views/WindowedListModel.h"

#include <QHash>
#include <QPointer>

namespace vantrel {

/// The hunk cards that are in view, a row each, for what lies over the drawn panes: heads to click,
/// tags, names for screen readers. Signals exactly the cards that come, go or change.
///
/// The rows of these cards are listed only while a screen reader is there. Thread: interface.
class VisibleCardModel final : public WindowedListModel
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
        RowsRole, ///< VisibleRowModel *: null while no screen reader is there
    };

    using WindowedListModel::WindowedListModel;

    void setDiff(DiffViewModel *diff);

    /// Shows the cards, and their rows, that reach into the `height` pixels below `top`.
    void setWindow(const PanesLayout &layout, qreal top, qreal height);

    void setHasReader(bool hasReader);

    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

private:
    void forget();
    void showRows();
    void announce(int hunkIndex, const QList<int> &roles);

    QPointer<DiffViewModel> m_diff{};
    PanesLayout m_layout{};
    qreal m_top = 0;
    qreal m_height = 0;
    bool m_hasReader = false;
    QHash<int, VisibleRowModel *> m_rows{}; ///< By card; each is a child of this.
    int m_selected = 0;
};

} // namespace vantrel
