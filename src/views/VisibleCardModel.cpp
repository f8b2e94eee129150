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

void VisibleCardModel::setWindow(const PanesLayout &layout, int first, int end)
{
    m_layout = layout;
    if (first >= m_end || end <= m_first) {
        forget(); // Nothing of the former window stays in view.
        m_first = first;
        m_end = first;
    }
    if (first > m_first) {
        beginRemoveRows({}, 0, first - m_first - 1);
        m_first = first;
        endRemoveRows();
    }
    if (end < m_end) {
        beginRemoveRows({}, end - m_first, m_end - m_first - 1);
        m_end = end;
        endRemoveRows();
    }
    if (first < m_first) {
        beginInsertRows({}, 0, m_first - first - 1);
        m_first = first;
        endInsertRows();
    }
    if (end > m_end) {
        beginInsertRows({}, m_end - m_first, end - m_first - 1);
        m_end = end;
        endInsertRows();
    }
}

int VisibleCardModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_end - m_first;
}

QVariant VisibleCardModel::data(const QModelIndex &index, int role) const
{
    if (!m_diff || !checkIndex(index, CheckIndexOption::IndexIsValid)) {
        return {};
    }
    const int hunkIndex = m_first + index.row();
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
            {AccessibleNameRole, "accessibleName"}};
}

void VisibleCardModel::forget()
{
    if (m_end > m_first) {
        beginRemoveRows({}, 0, m_end - m_first - 1);
        m_first = 0;
        m_end = 0;
        endRemoveRows();
    }
}

void VisibleCardModel::announce(int hunkIndex, const QList<int> &roles)
{
    if (hunkIndex >= m_first && hunkIndex < m_end) {
        const QModelIndex changed = index(hunkIndex - m_first);
        Q_EMIT dataChanged(changed, changed, roles);
    }
}

} // namespace vantrel
