#pragma once

#include <QAbstractListModel>

namespace vantrel {

/// A list that shows a window onto a longer one. Signals exactly the rows that come and go when the
/// window moves.
class WindowedListModel : public QAbstractListModel
{
    Q_OBJECT

public:
    using QAbstractListModel::QAbstractListModel;

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;

protected:
    /// Shows the entries from `first` to before `end`.
    void moveWindow(int first, int end);
    /// Shows nothing.
    void closeWindow();

    [[nodiscard]] int firstShown() const { return m_first; }
    [[nodiscard]] bool isShown(int entry) const { return entry >= m_first && entry < m_end; }

private:
    int m_first = 0;
    int m_end = 0;
};

} // namespace vantrel
