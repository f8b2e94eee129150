#include "views/VisibleRowModel.h"

#include "views/CodeText.h"

namespace vantrel {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Nobody listens to more of a line.
constexpr qsizetype maxColumns = 500;

QString spoken(const DiffLine &line)
{
    const QString start = visibleCode(line.text, 0, maxColumns + 1);
    return start.size() <= maxColumns ? start : start.first(maxColumns) + u'…';
}

QString number(const DiffLine &line)
{
    return line.number ? QString::number(*line.number) : QString();
}

} // namespace

QString accessibleRowName(const DiffRow &row)
{
    if (row.left.kind == DiffLineKind::context) {
        return VisibleRowModel::tr("Before %1, after %2: %3")
            .arg(number(row.left), number(row.right), spoken(row.left));
    }
    QStringList sides;
    if (row.left.kind != DiffLineKind::filler) {
        sides.append(
            VisibleRowModel::tr("Before %1, deleted: %2").arg(number(row.left), spoken(row.left)));
    }
    if (row.right.kind != DiffLineKind::filler) {
        sides.append(
            VisibleRowModel::tr("After %1, added: %2").arg(number(row.right), spoken(row.right)));
    }
    return sides.join(u' ');
}

VisibleRowModel::VisibleRowModel(DiffViewModel &diff, int hunkIndex, const PanesSizes &sizes,
                                 QObject *parent)
    : WindowedListModel(parent)
    , m_diff(&diff)
    , m_hunkIndex(hunkIndex)
    , m_sizes(sizes)
{}

QVariant VisibleRowModel::data(const QModelIndex &index, int role) const
{
    if (!m_diff || !checkIndex(index, CheckIndexOption::IndexIsValid)) {
        return {};
    }
    const int row = firstShown() + index.row();
    switch (role) {
    case TopRole:
        return m_sizes.border + m_sizes.headHeight + qreal(row) * m_sizes.rowHeight;
    case AccessibleNameRole:
        return accessibleRowName(m_diff->hunks().at(m_hunkIndex).rows.at(row));
    default:
        return {};
    }
}

QHash<int, QByteArray> VisibleRowModel::roleNames() const
{
    return {{TopRole, "rowTop"}, {AccessibleNameRole, "accessibleName"}};
}

} // namespace vantrel
