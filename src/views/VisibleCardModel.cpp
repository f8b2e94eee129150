#include "views/VisibleCardModel.h"

#include "views/ShownText.h"

#include <algorithm>

namespace vantrel {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Where the header's section begins: behind the closing marker.
qsizetype sectionPosition(const QString &header)
{
    const qsizetype closing = header.indexOf("@@"_L1, 2);
    return closing < 0 ? header.size() : closing + 2;
}

} // namespace

void VisibleCardModel::setDiff(DiffViewModel *diff)
{
    if (m_diff) {
        m_diff->disconnect(this);
    }
    forget();
    m_diff = diff;
    if (diff == nullptr) {
        return;
    }
    m_selected = diff->selectedHunkIndex();
    connect(diff, &DiffViewModel::hunksChanged, this, &VisibleCardModel::forget);
    connect(diff, &DiffViewModel::explanationChanged, this, [this](int hunkIndex) {
        announce(hunkIndex, {TagRole, IsExplainingRole, AccessibleNameRole});
    });
    connect(diff, &DiffViewModel::selectedHunkIndexChanged, this, [this] {
        const int former = std::exchange(m_selected, m_diff->selectedHunkIndex());
        announce(former, {IsSelectedRole});
        announce(m_selected, {IsSelectedRole});
    });
}

void VisibleCardModel::setWindow(const PanesLayout &layout, qreal top, qreal height)
{
    m_layout = layout;
    m_top = top;
    m_height = height;
    const int first = layout.firstCardBelow(top);
    int end = first;
    while (end < layout.cardCount() && layout.cardTop(end) < top + height) {
        ++end;
    }
    moveWindow(first, end);
    showRows();
}

void VisibleCardModel::setHasReader(bool hasReader)
{
    if (hasReader != m_hasReader) {
        m_hasReader = hasReader;
        showRows();
    }
}

QVariant VisibleCardModel::data(const QModelIndex &index, int role) const
{
    if (!m_diff || !checkIndex(index, CheckIndexOption::IndexIsValid)) {
        return {};
    }
    const int hunkIndex = firstShown() + index.row();
    const Hunk &hunk = m_diff->hunks().at(hunkIndex);
    const HunkExplanation *const explanation = hunk.explanationState.value();
    const QString header = hunk.header.toString();
    switch (role) {
    case HunkIndexRole:
        return hunkIndex;
    case TopRole:
        return m_layout.cardTop(hunkIndex);
    case HeightRole:
        return m_layout.cardBottom(hunkIndex) - m_layout.cardTop(hunkIndex);
    case RangeRole:
        return header.first(sectionPosition(header));
    case SectionRole:
        return header.sliced(sectionPosition(header)).trimmed();
    case TagRole:
        return explanation == nullptr ? QString() : shownText(explanation->tag);
    case IsExplainingRole:
        return hunk.explanationState.isLoading();
    case IsSelectedRole:
        return hunkIndex == m_selected;
    case AccessibleNameRole: {
        const QString position = tr("Change %1 of %2").arg(hunkIndex + 1).arg(m_diff->hunkCount());
        return explanation == nullptr
                   ? position + u", "_s + header
                   : position + u", "_s + shownText(explanation->tag) + u", "_s + header;
    }
    case RowsRole:
        return QVariant::fromValue<QAbstractItemModel *>(m_rows.value(hunkIndex));
    default:
        return {};
    }
}

QHash<int, QByteArray> VisibleCardModel::roleNames() const
{
    return {{HunkIndexRole, "hunkIndex"},
            {TopRole, "cardTop"},
            {HeightRole, "cardHeight"},
            {RangeRole, "range"},
            {SectionRole, "section"},
            {TagRole, "tag"},
            {IsExplainingRole, "isExplaining"},
            {IsSelectedRole, "isSelected"},
            {AccessibleNameRole, "accessibleName"},
            {RowsRole, "rows"}};
}

void VisibleCardModel::forget()
{
    closeWindow();
    showRows();
}

void VisibleCardModel::showRows()
{
    for (auto entry = m_rows.begin(); entry != m_rows.end();) {
        if (m_hasReader && isShown(entry.key())) {
            ++entry;
            continue;
        }
        // Views may still hold it in this turn.
        VisibleRowModel *const rows = entry.value();
        const int card = entry.key();
        entry = m_rows.erase(entry);
        announce(card, {RowsRole});
        rows->deleteLater();
    }
    if (!m_hasReader || !m_diff) {
        return;
    }
    for (int card = firstShown(); isShown(card); ++card) {
        const bool isNew = !m_rows.contains(card);
        if (isNew) {
            m_rows.insert(card, new VisibleRowModel(*m_diff, card, m_layout.sizes(), this));
        }
        const qreal rowHeight = m_layout.sizes().rowHeight;
        const qreal above = m_top - m_layout.rowsTop(card);
        const auto row = [&](qreal y) {
            return std::clamp(int(y / rowHeight), 0, m_layout.rowCount(card));
        };
        m_rows.value(card)->setWindow(row(above), row(above + m_height + rowHeight - 1));
        if (isNew) {
            announce(card, {RowsRole});
        }
    }
}

void VisibleCardModel::announce(int hunkIndex, const QList<int> &roles)
{
    if (isShown(hunkIndex)) {
        const QModelIndex changed = index(hunkIndex - firstShown());
        Q_EMIT dataChanged(changed, changed, roles);
    }
}

} // namespace vantrel
