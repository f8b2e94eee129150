#pragma once

#include "app/DiffViewModel.h"
#include "platform/jobs/Job.h"
#include "platform/jobs/SerialWorker.h"
#include "views/PanesLayout.h"
#include "views/VisibleCardModel.h"

#include <QColor>
#include <QFont>
#include <QPointer>
#include <QQuickPaintedItem>

namespace vantrel {

/// Draws the part of a file's hunk cards that is in view: both panes, one card per hunk.
///
/// The item is as large as the viewport and draws only the rows and columns that it shows, so a
/// file of any length costs the same. What must be met by pointers and screen readers (card heads,
/// tags) lies over it as items made from `visibleCards`. Thread: interface.
class CodePanesItem : public QQuickPaintedItem
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

    void paint(QPainter *painter) override;

Q_SIGNALS:
    void diffChanged();
    void themeChanged();
    void contentXChanged();
    void contentYChanged();
    void layoutChanged();
    void rangeChanged();

protected:
    void geometryChange(const QRectF &newGeometry, const QRectF &oldGeometry) override;

private:
    struct Colors
    {
        QColor gutterInk{};
        QColor ink{};
        QColor line{};
        QColor selectedLine{};
        QColor card{};
        QColor head{};
        QColor selectedHead{};
        QColor mark{};
        // Each for the kinds of line in their order: context, addition, deletion, filler.
        std::array<QColor, 4> cell{};
        std::array<QColor, 4> gutter{};
        std::array<QColor, 4> number{};
        QColor selectedCell{};
        QColor selectedGutter{};
    };

    struct Cell;

    void readTheme();
    void takeHunks();
    void updateVisibleCards();
    Task<> measureLines(QList<Hunk> hunks);
    [[nodiscard]] qreal paneTextWidth() const;
    void paintCard(QPainter &painter, int card) const;
    void paintRow(QPainter &painter, const DiffRow &row, qreal top, bool isSelected) const;
    void paintCell(QPainter &painter, const Cell &cell) const;

    QPointer<DiffViewModel> m_diff{};
    QPointer<QObject> m_theme{};
    bool m_isDark = false;
    Colors m_colors{};
    QFont m_codeFont{};
    QFont m_numberFont{};
    qreal m_columnWidth = 7;
    qreal m_baseline = 14;
    qreal m_contentX = 0;
    qreal m_contentY = 0;
    PanesLayout m_layout{};
    qreal m_gutterWidth = 44;
    qsizetype m_longestLine = 0;
    VisibleCardModel m_visibleCards{};
    SerialWorker m_measureWorker{};
    Job m_measureTask{};
};

} // namespace vantrel
