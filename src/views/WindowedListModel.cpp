#include "views/WindowedListModel.h"

namespace vantrel {

int WindowedListModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_end - m_first;
}

void WindowedListModel::moveWindow(int first, int end)
{
    if (first >= m_end || end <= m_first) {
        closeWindow(); // Nothing of the former window stays in view.
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

void WindowedListModel::closeWindow()
{
    if (m_end > m_first) {
        beginRemoveRows({}, 0, m_end - m_first - 1);
        m_first = 0;
        m_end = 0;
        endRemoveRows();
    }
}

} // namespace vantrel
