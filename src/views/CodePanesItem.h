#pragma once

#include "app/DiffViewModel.h"
#include "platform/jobs/Job.h"
#include "platform/jobs/SerialWorker.h"
#include "views/CodeSelection.h"
#include "views/PanesColumns.h"
#include "views/PanesLayout.h"
#include "views/PanesTheme.h"
#include "views/VisibleCardModel.h"

#include <QAccessible>
#include <QBasicTimer>
#include <QPointer>
#include <QQuickPaintedItem>

#include <optional>

namespace vantrel {

/// Draws the part of a file's hunk cards that is in view: both panes, one card per hunk.
///
/// The item is as large as the viewport and draws only the rows and columns that it shows, so a
/// file of any length costs the same. What must be met by pointers and screen readers (card heads,
/// tags) lies over it as items made from `visibleCards`. Thread: interface.
class CodePanesItem : public QQuickPaintedItem, private QAccessible::ActivationObserver
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(vantrel::DiffViewModel *diff READ diff WRITE setDiff NOTIFY diffChanged REQUIRED)
    Q_PROPERTY(QObject *theme READ theme WRITE setTheme NOTIFY themeChanged REQUIRED)
    Q_PROPERTY(bool isDark READ isDark WRITE setIsDark NOTIFY themeChanged)
    Q_PROPERTY(qreal contentX READ contentX WRITE setContentX NOTIFY contentXChanged)
    Q_PROPERTY(qreal contentY READ contentY WRITE setContentY NOTIFY contentYChanged)
    Q_PROPERTY(qreal contentHeight READ contentHeight NOTIFY layoutChanged)
    Q_PROPERTY(qreal maximumContentX READ maximumContentX NOTIFY rangeChanged)
    Q_PROPERTY(int longestLine READ longestLine NOTIFY rangeChanged)
    Q_PROPERTY(qreal columnWidth READ columnWidth NOTIFY themeChanged)
    Q_PROPERTY(QAbstractListModel *visibleCards READ visibleCards CONSTANT)

public:
    explicit CodePanesItem(QQuickItem *parent = nullptr);
    Q_DISABLE_COPY_MOVE(CodePanesItem)
    ~CodePanesItem() override;

    [[nodiscard]] DiffViewModel *diff() const { return m_diff; }
    void setDiff(DiffViewModel *diff);
    [[nodiscard]] QObject *theme() const { return m_theme; }
    void setTheme(QObject *theme);
    [[nodiscard]] bool isDark() const { return m_isDark; }
    void setIsDark(bool isDark);
    [[nodiscard]] qreal contentX() const { return m_contentX; }
    void setContentX(qreal x);
    [[nodiscard]] qreal contentY() const { return m_contentY; }
    void setContentY(qreal y);
    [[nodiscard]] qreal contentHeight() const { return m_layout.contentHeight(); }
    [[nodiscard]] qreal maximumContentX() const;
    /// In columns; 0 until all lines are measured, which for large files takes a while.
    [[nodiscard]] int longestLine() const { return int(m_longestLine); }
    [[nodiscard]] qreal columnWidth() const { return m_columnWidth; }
    [[nodiscard]] QAbstractListModel *visibleCards() { return &m_visibleCards; }

    /// Where to scroll so that the card of this hunk is in view, from `contentY`: by the least
    /// amount, or to its head when the card is higher than the viewport.
    Q_INVOKABLE [[nodiscard]] qreal contentYShowing(int hunkIndex) const;

    /// Takes a key that concerns the selection: Shift with a key that moves extends it, Ctrl+A
    /// selects one side of the selected card, Ctrl+C copies, Escape clears. Answers whether it did.
    Q_INVOKABLE bool takeSelectionKey(int key, int modifiers);

    [[nodiscard]] const CodeSelection &selection() const { return m_selection; }

    void paint(QPainter *painter) override;

Q_SIGNALS:
    /// The pointer went down on a card, and up again in the same place.
    void pressed();
    void cardClicked(int card);
    /// What is selected is to come, or to stay, in view.
    void scrollRequested(qreal x, qreal y);
    void diffChanged();
    void themeChanged();
    void contentXChanged();
    void contentYChanged();
    void layoutChanged();
    void rangeChanged();

protected:
    void geometryChange(const QRectF &newGeometry, const QRectF &oldGeometry) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void mouseUngrabEvent() override;
    void timerEvent(QTimerEvent *event) override;

private:
    struct Cell;

    void accessibilityActiveChanged(bool isActive) override;

    /// Of a card that was in view when the item was so high.
    void keepSelectedCard(qreal formerHeight);
    void readTheme();
    void takeHunks();
    void layOut();
    void updateVisibleCards();
    Task<> measureLines(QList<Hunk> hunks);
    [[nodiscard]] const QList<Hunk> &hunks() const;
    [[nodiscard]] PanesColumns columns() const;
    void paintCard(QPainter &painter, int card) const;
    void paintRow(QPainter &painter, PaneRow place, qreal top) const;
    void paintCell(QPainter &painter, const Cell &cell) const;
    void paintText(QPainter &painter, const Cell &cell) const;
    void paintSelection(QPainter &painter, const Cell &cell) const;

    /// Answers whether the point is on a card. Selects only where it is on a row.
    [[nodiscard]] bool beginDrag(QPointF point, SelectionUnit unit);
    [[nodiscard]] bool isClick(QPointF point) const;
    void extendDrag();
    void endDrag();
    [[nodiscard]] CodePosition positionAt(QPointF point, CodeSide side) const;
    /// How far a dragged pointer is beyond the edges of what is selected.
    [[nodiscard]] QPointF distanceOutside(QPointF point) const;
    void moveSelection(SelectionStep step);
    void revealSelection();
    void copySelection();
    Task<> copy(QList<Hunk> hunks, CodeSelection selection);

    QPointer<DiffViewModel> m_diff{};
    QPointer<QObject> m_theme{};
    bool m_isDark = false;
    PanesTheme m_looks{};
    qreal m_columnWidth = 1;
    qreal m_baseline = 0;
    qreal m_contentX = 0;
    qreal m_contentY = 0;
    PanesLayout m_layout{};
    qreal m_gutterWidth = 0;
    qsizetype m_longestLine = 0;
    VisibleCardModel m_visibleCards{};
    CodeSelection m_selection{};
    std::optional<int> m_pressedCard{};
    bool m_isDragging = false;
    bool m_isDraggingLines = false; ///< It began in the gutter.
    QPointF m_dragStart{};
    QPointF m_dragPoint{};
    QBasicTimer m_dragScroll{};    ///< Runs while the pointer is beyond an edge.
    quint64 m_doubleClickTime = 0; ///< In the milliseconds of events.
    SerialWorker m_worker{};       ///< Measures lines and gathers what is copied.
    Job m_measureTask{};
    Job m_copyTask{};
};

} // namespace vantrel
