#include "views/CodePanesItem.h"

#include "views/CodeText.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>
#include <utility>

namespace vantrel {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr qreal sideMargin = 12;
constexpr qreal borderWidth = PanesLayout::border;
constexpr qreal cornerRadius = 8;
constexpr qreal signWidth = 18;
constexpr qreal textIndent = 3;
constexpr qreal cutMarkRoom = 14;
constexpr QPointF cutMarkArm(2.5, 2.75);
constexpr qreal cutMarkMargin = 7.5;
constexpr qreal gutterMinimum = 44;
constexpr int gutterMinimumDigits = 5;
constexpr qreal gutterDigitWidth = 7;
constexpr qreal numberMargin = 8;

std::int64_t largestNumber(const QList<Hunk> &hunks)
{
    // Numbers grow down the file, so those of the last rows are the largest.
    std::int64_t largest = 0;
    for (const Hunk &hunk : hunks) {
        if (!hunk.rows.isEmpty()) {
            const std::int64_t rows = hunk.rows.size();
            const DiffRow &first = hunk.rows.first();
            largest = std::max({largest, first.left.number.value_or(0) + rows,
                                first.right.number.value_or(0) + rows});
        }
    }
    return largest;
}

qsizetype longestOf(const QList<Hunk> &hunks, const WorkControl &control)
{
    qsizetype longest = 0;
    for (const Hunk &hunk : hunks) {
        if (control.isAbandoned()) {
            break;
        }
        for (const DiffRow &row : hunk.rows) {
            longest = std::max({longest, codeColumns(row.left.text), codeColumns(row.right.text)});
        }
    }
    return longest;
}

std::size_t indexOf(DiffLineKind kind)
{
    return static_cast<std::size_t>(kind);
}

} // namespace

/// One side of a row, where it lies and how it looks.
struct CodePanesItem::Cell
{
    const DiffLine &line;
    QRectF rectangle{};
    bool isSelected = false;
};

CodePanesItem::CodePanesItem(QQuickItem *parent)
    : QQuickPaintedItem(parent)
{
    setOpaquePainting(false);
    setFlag(ItemClipsChildrenToShape);
}

void CodePanesItem::setDiff(DiffViewModel *diff)
{
    if (diff == m_diff) {
        return;
    }
    if (m_diff) {
        m_diff->disconnect(this);
    }
    m_diff = diff;
    m_visibleCards.setDiff(diff);
    if (diff != nullptr) {
        connect(diff, &DiffViewModel::hunksChanged, this, &CodePanesItem::takeHunks);
        connect(diff, &DiffViewModel::selectedHunkIndexChanged, this, [this] { update(); });
    }
    takeHunks();
    Q_EMIT diffChanged();
}

void CodePanesItem::setTheme(QObject *theme)
{
    if (theme != m_theme) {
        m_theme = theme;
        readTheme();
    }
}

void CodePanesItem::setIsDark(bool isDark)
{
    if (isDark != m_isDark) {
        m_isDark = isDark;
        readTheme();
    }
}

void CodePanesItem::setContentX(qreal x)
{
    if (x != m_contentX) {
        m_contentX = x;
        update();
        Q_EMIT contentXChanged();
    }
}

void CodePanesItem::setContentY(qreal y)
{
    if (y != m_contentY) {
        m_contentY = y;
        updateVisibleCards();
        update();
        Q_EMIT contentYChanged();
    }
}

qreal CodePanesItem::maximumContentX() const
{
    const qreal longest = std::ceil(qreal(m_longestLine) * m_columnWidth);
    const qreal room = paneTextWidth() - cutMarkRoom;
    return longest <= room ? 0 : longest - room;
}

qreal CodePanesItem::contentYShowing(int hunkIndex) const
{
    if (hunkIndex < 0 || hunkIndex >= m_layout.cardCount()) {
        return m_contentY;
    }
    const qreal top = m_layout.cardTop(hunkIndex) - PanesLayout::gap;
    const qreal bottom = m_layout.cardBottom(hunkIndex) + PanesLayout::gap;
    const qreal lowest = std::max<qreal>(0, contentHeight() - height());
    const bool isHigher = bottom - top > height();
    qreal y = m_contentY;
    if (isHigher || top < y) {
        y = top;
    } else if (bottom > y + height()) {
        y = bottom - height();
    }
    return std::min(y, lowest);
}

void CodePanesItem::paint(QPainter *painter)
{
    if (!m_diff) {
        return;
    }
    painter->setRenderHint(QPainter::Antialiasing);
    const int end = m_layout.cardCount();
    for (int card = m_layout.firstCardBelow(m_contentY); card < end; ++card) {
        if (m_layout.cardTop(card) >= m_contentY + height()) {
            break;
        }
        paintCard(*painter, card);
    }
}

void CodePanesItem::geometryChange(const QRectF &newGeometry, const QRectF &oldGeometry)
{
    QQuickPaintedItem::geometryChange(newGeometry, oldGeometry);
    updateVisibleCards();
    update();
    if (newGeometry.width() != oldGeometry.width()) {
        Q_EMIT rangeChanged();
    }
}

void CodePanesItem::readTheme()
{
    if (!m_theme) {
        return;
    }
    const auto color = [this](const char *name) { return m_theme->property(name).value<QColor>(); };
    m_colors.gutterInk = color("inkTertiary");
    m_colors.ink = color("ink");
    m_colors.line = color("line");
    m_colors.selectedLine = color("accent");
    m_colors.card = color("card");
    m_colors.head = color("diffContextGutter");
    m_colors.selectedHead = color("accentSoft");
    m_colors.mark = color("inkTertiary");
    m_colors.cell = {color("diffContext"), color("diffAdded"), color("diffDeleted"),
                     color("diffFiller")};
    m_colors.gutter = {color("diffContextGutter"), color("diffAddedGutter"),
                       color("diffDeletedGutter"), color("diffFillerGutter")};
    m_colors.number = {color("inkTertiary"), color("diffAddedInk"), color("diffDeletedInk"),
                       color("inkTertiary")};
    m_colors.selectedCell = color("diffSelected");
    m_colors.selectedGutter = color("diffSelectedGutter");
    m_codeFont = m_theme->property("codeFont").value<QFont>();
    m_numberFont = m_theme->property("codeNumberFont").value<QFont>();
    const QFontMetricsF metrics(m_codeFont);
    m_columnWidth = metrics.horizontalAdvance(u'0');
    m_baseline = std::round((PanesLayout::rowHeight + metrics.ascent() - metrics.descent()) / 2);
    update();
    Q_EMIT themeChanged();
    Q_EMIT rangeChanged();
}

void CodePanesItem::takeHunks()
{
    static const QList<Hunk> none;
    const QList<Hunk> &hunks = m_diff ? m_diff->hunks() : none;
    m_layout = PanesLayout(hunks);
    const int digits = int(QString::number(largestNumber(hunks)).size());
    m_gutterWidth = gutterMinimum + gutterDigitWidth * std::max(0, digits - gutterMinimumDigits);
    m_longestLine = 0;
    m_measureTask = Job(measureLines(hunks));
    updateVisibleCards();
    update();
    Q_EMIT layoutChanged();
    Q_EMIT rangeChanged();
}

void CodePanesItem::updateVisibleCards()
{
    const int first = m_layout.firstCardBelow(m_contentY);
    int end = first;
    while (end < m_layout.cardCount() && m_layout.cardTop(end) < m_contentY + height()) {
        ++end;
    }
    m_visibleCards.setWindow(m_layout, first, end);
}

Task<> CodePanesItem::measureLines(QList<Hunk> hunks)
{
    auto measure = [hunks](const WorkControl &control) { return longestOf(hunks, control); };
    auto measured = m_measureWorker.run(std::move(measure));
    m_longestLine = co_await std::move(measured);
    Q_EMIT rangeChanged();
}

qreal CodePanesItem::paneTextWidth() const
{
    const qreal inner = width() - 2 * sideMargin - 2 * borderWidth;
    return std::floor(inner / 2) - m_gutterWidth - signWidth - textIndent;
}

void CodePanesItem::paintCard(QPainter &painter, int card) const
{
    const Hunk &hunk = m_diff->hunks().at(card);
    const bool isSelected = card == m_diff->selectedHunkIndex();
    const qreal top = m_layout.cardTop(card) - m_contentY;
    const QRectF frame(sideMargin, top, width() - 2 * sideMargin,
                       m_layout.cardBottom(card) - m_layout.cardTop(card));

    const qreal rowsTop = m_layout.rowsTop(card) - m_contentY;

    painter.setPen(Qt::NoPen);
    painter.setBrush(m_colors.card);
    painter.drawRoundedRect(frame, cornerRadius, cornerRadius);
    // A head taller than itself by its corners, whose lower part the rows cover.
    painter.setBrush(isSelected ? m_colors.selectedHead : m_colors.head);
    QPainterPath headCorners;
    headCorners.addRoundedRect(frame, cornerRadius, cornerRadius);
    painter.save();
    painter.setClipRect(QRectF(frame.left(), top, frame.width(), rowsTop - top), Qt::IntersectClip);
    painter.drawPath(headCorners);
    painter.restore();
    painter.fillRect(QRectF(frame.left(), rowsTop - borderWidth, frame.width(), borderWidth),
                     m_colors.line);

    const auto rows = hunk.rows.size();
    const auto first = std::max<qsizetype>(0, qsizetype(-rowsTop / PanesLayout::rowHeight));
    for (qsizetype i = first; i < rows; ++i) {
        const qreal rowTop = rowsTop + qreal(i) * PanesLayout::rowHeight;
        if (rowTop >= height()) {
            break;
        }
        paintRow(painter, hunk.rows.at(i), rowTop, isSelected);
    }

    const qreal border = isSelected ? 2 * borderWidth : borderWidth;
    painter.setPen(QPen(isSelected ? m_colors.selectedLine : m_colors.line, border));
    painter.setBrush(Qt::NoBrush);
    const qreal inset = border / 2;
    painter.drawRoundedRect(frame.adjusted(inset, inset, -inset, -inset), cornerRadius - inset,
                            cornerRadius - inset);
}

void CodePanesItem::paintRow(QPainter &painter, const DiffRow &row, qreal top,
                             bool isSelected) const
{
    const qreal left = sideMargin + borderWidth;
    const qreal inner = width() - 2 * left;
    const qreal half = std::floor(inner / 2);
    const qreal rowHeight = PanesLayout::rowHeight;
    paintCell(painter, Cell{row.left, QRectF(left, top, half, rowHeight), isSelected});
    paintCell(painter,
              Cell{row.right, QRectF(left + half, top, inner - half, rowHeight), isSelected});
    painter.fillRect(QRectF(left + half - borderWidth, top, borderWidth, rowHeight), m_colors.line);
}

void CodePanesItem::paintCell(QPainter &painter, const Cell &cell) const
{
    const QRectF &area = cell.rectangle;
    const DiffLine &line = cell.line;
    const std::size_t kind = indexOf(line.kind);
    const bool isSelectedContext = cell.isSelected && line.kind == DiffLineKind::context;
    painter.fillRect(area, isSelectedContext ? m_colors.selectedCell : m_colors.cell.at(kind));
    painter.fillRect(QRectF(area.left(), area.top(), m_gutterWidth, area.height()),
                     isSelectedContext ? m_colors.selectedGutter : m_colors.gutter.at(kind));
    if (line.kind == DiffLineKind::filler) {
        return;
    }

    painter.setPen(m_colors.number.at(kind));
    if (line.number) {
        painter.setFont(m_numberFont);
        painter.drawText(
            QRectF(area.left(), area.top(), m_gutterWidth - numberMargin, area.height()),
            Qt::AlignRight | Qt::AlignVCenter, QString::number(*line.number));
    }
    painter.setFont(m_codeFont);
    const qreal signLeft = area.left() + m_gutterWidth;
    if (line.kind != DiffLineKind::context) {
        painter.drawText(QRectF(signLeft, area.top(), signWidth, area.height()), Qt::AlignCenter,
                         line.kind == DiffLineKind::addition ? u"+"_s : u"−"_s);
    }
    if (line.text.isEmpty()) {
        return;
    }

    // Only the columns in view are turned into text and laid out.
    const qreal textLeft = signLeft + signWidth + textIndent;
    const qreal room = area.right() - textLeft - cutMarkRoom;
    const auto firstColumn = qsizetype(m_contentX / m_columnWidth);
    const auto columns = qsizetype(std::max<qreal>(0, room) / m_columnWidth) + 2;
    const QString text = visibleCode(line.text, firstColumn, columns + 1);
    const qreal textX = textLeft - (m_contentX - qreal(firstColumn) * m_columnWidth);
    painter.save();
    painter.setClipRect(QRectF(textLeft, area.top(), room, area.height()), Qt::IntersectClip);
    painter.setPen(m_colors.ink);
    painter.drawText(QPointF(textX, area.top() + m_baseline), text);
    painter.restore();

    if (textX + qreal(text.size()) * m_columnWidth > textLeft + room + 1) {
        painter.setPen(QPen(m_colors.mark, borderWidth));
        const QPointF tip(area.right() - cutMarkMargin, area.center().y());
        painter.drawPolyline(
            QPolygonF{tip - cutMarkArm, tip, tip + QPointF(-cutMarkArm.x(), cutMarkArm.y())});
    }
}

} // namespace vantrel
