#include "views/CodePanesItem.h"

#include "views/CodeText.h"

#include <QAccessible>
#include <QClipboard>
#include <QFontMetricsF>
#include <QGuiApplication>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QStyleHints>
#include <QTimerEvent>

#include <algorithm>
#include <cmath>
#include <utility>

namespace vantrel {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int fewDigits = 5;           // Of a line number, for which the gutter has room.
constexpr qreal dragScrollShare = 0.5; // Of the distance beyond the edge, at each interval.

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

std::optional<SelectionStep> stepOf(int key)
{
    switch (key) {
    case Qt::Key_Left:
        return SelectionStep::left;
    case Qt::Key_Right:
        return SelectionStep::right;
    case Qt::Key_Up:
        return SelectionStep::up;
    case Qt::Key_Down:
        return SelectionStep::down;
    case Qt::Key_Home:
        return SelectionStep::lineStart;
    case Qt::Key_End:
        return SelectionStep::lineEnd;
    case Qt::Key_PageUp:
        return SelectionStep::pageUp;
    case Qt::Key_PageDown:
        return SelectionStep::pageDown;
    default:
        return std::nullopt;
    }
}

} // namespace

/// One side of a row, where it lies and how it looks.
struct CodePanesItem::Cell
{
    CodeSide side = CodeSide::before;
    PaneRow place{};
    const DiffLine &line;
    QRectF rectangle{};
    bool isSelected = false; ///< The card, that is.
};

CodePanesItem::CodePanesItem(QQuickItem *parent)
    : QQuickPaintedItem(parent)
{
    setOpaquePainting(false);
    setFlag(ItemClipsChildrenToShape);
    setAcceptedMouseButtons(Qt::LeftButton);
    QAccessible::installActivationObserver(this);
    m_visibleCards.setHasReader(QAccessible::isActive());
}

CodePanesItem::~CodePanesItem()
{
    QAccessible::removeActivationObserver(this);
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
    return columns().maximumContentX(m_longestLine);
}

qreal CodePanesItem::contentYShowing(int hunkIndex) const
{
    if (hunkIndex < 0 || hunkIndex >= m_layout.cardCount()) {
        return m_contentY;
    }
    const qreal gap = m_looks.sizes.gap;
    const qreal top = m_layout.cardTop(hunkIndex) - gap;
    const qreal bottom = m_layout.cardBottom(hunkIndex) + gap;
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

void CodePanesItem::accessibilityActiveChanged(bool isActive)
{
    m_visibleCards.setHasReader(isActive);
}

void CodePanesItem::geometryChange(const QRectF &newGeometry, const QRectF &oldGeometry)
{
    QQuickPaintedItem::geometryChange(newGeometry, oldGeometry);
    updateVisibleCards();
    update();
    if (newGeometry.width() != oldGeometry.width()) {
        Q_EMIT rangeChanged();
    }
    if (newGeometry.height() < oldGeometry.height()) {
        keepSelectedCard(oldGeometry.height());
    }
}

void CodePanesItem::keepSelectedCard(qreal formerHeight)
{
    const int card = m_diff ? m_diff->selectedHunkIndex() : -1;
    if (card < 0 || card >= m_layout.cardCount()) {
        return;
    }
    const qreal bottom = m_layout.cardBottom(card) - m_contentY;
    const qreal top = m_layout.cardTop(card) - m_contentY;
    const bool wasWhole = top >= 0 && bottom <= formerHeight;
    const bool wasThere = bottom > 0 && top < formerHeight;
    if ((wasWhole && bottom > height()) || (wasThere && top >= height())) {
        Q_EMIT scrollRequested(m_contentX, contentYShowing(card));
    }
}

void CodePanesItem::readTheme()
{
    if (!m_theme) {
        return;
    }
    m_looks = PanesTheme::of(*m_theme);
    const QFontMetricsF metrics(m_looks.codeFont);
    m_columnWidth = metrics.horizontalAdvance(u'0');
    m_baseline = std::round((m_looks.sizes.rowHeight + metrics.ascent() - metrics.descent()) / 2);
    Q_EMIT themeChanged();
    layOut();
}

void CodePanesItem::takeHunks()
{
    endDrag();
    m_selection.clear();
    m_longestLine = 0;
    m_measureTask = Job(measureLines(hunks()));
    layOut();
}

void CodePanesItem::layOut()
{
    const PanesSizes &sizes = m_looks.sizes;
    m_layout = PanesLayout(hunks(), sizes);
    const int digits = int(QString::number(largestNumber(hunks())).size());
    m_gutterWidth = sizes.gutterWidth + sizes.gutterDigitWidth * std::max(0, digits - fewDigits);
    updateVisibleCards();
    update();
    Q_EMIT layoutChanged();
    Q_EMIT rangeChanged();
}

void CodePanesItem::updateVisibleCards()
{
    m_visibleCards.setWindow(m_layout, m_contentY, height());
}

Task<> CodePanesItem::measureLines(QList<Hunk> hunks)
{
    auto measure = [hunks](const WorkControl &control) { return longestOf(hunks, control); };
    auto measured = m_worker.run(std::move(measure));
    m_longestLine = co_await std::move(measured);
    Q_EMIT rangeChanged();
}

bool CodePanesItem::takeSelectionKey(int key, int modifiers)
{
    const auto held = Qt::KeyboardModifiers::fromInt(modifiers) & ~Qt::KeypadModifier;
    const auto step = stepOf(key);
    if (held == Qt::ShiftModifier && step) {
        moveSelection(*step);
        return true;
    }
    if (held == Qt::ControlModifier && key == Qt::Key_A) {
        if (m_diff && m_diff->selectedHunk() != nullptr) {
            m_selection.selectCard(hunks(), m_diff->selectedHunkIndex());
            update();
        }
        return true;
    }
    if (held == Qt::ControlModifier && key == Qt::Key_C) {
        copySelection();
        return true;
    }
    if (held == Qt::NoModifier && key == Qt::Key_Escape && !m_selection.isEmpty()) {
        m_selection.clear();
        update();
        return true;
    }
    return false;
}

void CodePanesItem::mousePressEvent(QMouseEvent *event)
{
    const auto *const hints = QGuiApplication::styleHints();
    const quint64 interval = event->timestamp() - std::exchange(m_doubleClickTime, 0);
    const QPointF distance = event->position() - m_dragStart;
    const bool isThird = interval < quint64(hints->mouseDoubleClickInterval()) &&
                         distance.manhattanLength() < hints->mouseDoubleClickDistance();
    event->setAccepted(
        beginDrag(event->position(), isThird ? SelectionUnit::line : SelectionUnit::character));
}

void CodePanesItem::mouseDoubleClickEvent(QMouseEvent *event)
{
    m_doubleClickTime = event->timestamp();
    event->setAccepted(beginDrag(event->position(), SelectionUnit::word));
}

void CodePanesItem::mouseMoveEvent(QMouseEvent *event)
{
    if (!m_isDragging) {
        return;
    }
    m_dragPoint = event->position();
    if (m_isDraggingLines && m_selection.isEmpty()) {
        // A click in the gutter selects no line: the pointer has to leave its place first.
        if (isClick(m_dragPoint)) {
            return;
        }
        const CodeSide side = m_selection.side();
        m_selection.begin(hunks(), side, positionAt(m_dragStart, side), SelectionUnit::line);
    }
    extendDrag();
    const bool isOutside = !distanceOutside(m_dragPoint).isNull();
    if (isOutside && !m_dragScroll.isActive()) {
        m_dragScroll.start(m_looks.dragScrollInterval, this);
    } else if (!isOutside) {
        m_dragScroll.stop();
    }
}

void CodePanesItem::mouseReleaseEvent(QMouseEvent *event)
{
    const auto card = m_pressedCard;
    endDrag();
    if (card && isClick(event->position())) {
        Q_EMIT cardClicked(*card);
    }
}

void CodePanesItem::mouseUngrabEvent()
{
    endDrag();
}

void CodePanesItem::timerEvent(QTimerEvent *)
{
    const QPointF distance = distanceOutside(m_dragPoint) * dragScrollShare;
    Q_EMIT scrollRequested(m_contentX + distance.x(), m_contentY + distance.y());
    extendDrag();
}

bool CodePanesItem::beginDrag(QPointF point, SelectionUnit unit)
{
    const qreal y = m_contentY + point.y();
    const int card = m_layout.firstCardBelow(y);
    const qreal sideMargin = m_looks.sizes.sideMargin;
    if (card == m_layout.cardCount() || y < m_layout.cardTop(card) || point.x() < sideMargin ||
        point.x() >= width() - sideMargin) {
        return false;
    }
    m_pressedCard = card;
    m_dragStart = point;
    m_dragPoint = point;
    m_isDragging = m_layout.rowAt(y).has_value();
    if (m_isDragging) {
        const PanesColumns columns = this->columns();
        const CodeSide side = columns.sideAt(point.x());
        m_isDraggingLines = columns.isGutter(side, point.x());
        m_selection.begin(hunks(), side, positionAt(point, side),
                          m_isDraggingLines ? SelectionUnit::character : unit);
        update();
    }
    Q_EMIT pressed();
    return true;
}

bool CodePanesItem::isClick(QPointF point) const
{
    const QPointF distance = point - m_dragStart;
    return distance.manhattanLength() < QGuiApplication::styleHints()->startDragDistance();
}

void CodePanesItem::extendDrag()
{
    m_selection.extendTo(hunks(), positionAt(m_dragPoint, m_selection.side()));
    update();
}

void CodePanesItem::endDrag()
{
    m_pressedCard.reset();
    m_isDragging = false;
    m_dragScroll.stop();
}

CodePosition CodePanesItem::positionAt(QPointF point, CodeSide side) const
{
    const qreal y = std::clamp<qreal>(point.y(), 0, std::max<qreal>(0, height() - 1));
    const auto row = m_layout.nearestRow(m_contentY + y);
    if (!row) {
        return {};
    }
    const DiffLine &line = lineOn(hunks().at(row->card).rows.at(row->row), side);
    const PanesColumns columns = this->columns();
    const qreal x = std::min(point.x(), columns.cell(side, 0).right());
    return {row->card, row->row, codeOffsetAt(line.text, columns.columnAt(side, x))};
}

QPointF CodePanesItem::distanceOutside(QPointF point) const
{
    const auto outside = [](qreal value, qreal low, qreal high) {
        return value < low ? value - low : std::max<qreal>(0, value - high);
    };
    const PanesColumns columns = this->columns();
    const CodeSide side = m_selection.side();
    const qreal x = m_isDraggingLines
                        ? 0
                        : outside(point.x(), columns.textLeft(side), columns.cell(side, 0).right());
    return {x, outside(point.y(), 0, height())};
}

void CodePanesItem::moveSelection(SelectionStep step)
{
    const int card = m_diff ? m_diff->selectedHunkIndex() : -1;
    if (card < 0 || card >= m_layout.cardCount() || m_layout.rowCount(card) == 0) {
        return;
    }
    const qreal above = m_contentY - m_layout.rowsTop(card);
    const int firstVisible =
        std::clamp(int(std::ceil(above / m_looks.sizes.rowHeight)), 0, m_layout.rowCount(card) - 1);
    const int pageRows = std::max(1, int(height() / m_looks.sizes.rowHeight) - 2);
    m_selection.move(hunks(), step, CodePosition{card, firstVisible, 0}, pageRows);
    update();
    revealSelection();
}

void CodePanesItem::revealSelection()
{
    const CodePosition focus = m_selection.focus();
    const CodeSide side = m_selection.side();
    const TextSlice &text = lineOn(hunks().at(focus.card).rows.at(focus.row), side).text;
    const qreal top = m_layout.rowTop(PaneRow{focus.card, focus.row});
    const qreal left = qreal(codeColumnAt(text, focus.offset)) * m_columnWidth;
    const auto shifted = [](qreal scrolled, qreal low, qreal high, qreal extent) {
        return std::min(low, std::max(scrolled, high - extent));
    };
    Q_EMIT scrollRequested(
        shifted(m_contentX, left, left + m_columnWidth, columns().textWidth(side)),
        shifted(m_contentY, top, top + m_looks.sizes.rowHeight, height()));
}

void CodePanesItem::copySelection()
{
    if (!m_selection.isEmpty()) {
        m_copyTask = Job(copy(hunks(), m_selection));
    }
}

Task<> CodePanesItem::copy(QList<Hunk> hunks, CodeSelection selection)
{
    auto build = [hunks, selection](const WorkControl &control) {
        return selectedText(hunks, selection, [&control] { return control.isAbandoned(); });
    };
    auto built = m_worker.run(std::move(build));
    const QString text = co_await std::move(built);
    QGuiApplication::clipboard()->setText(text);
}

const QList<Hunk> &CodePanesItem::hunks() const
{
    static const QList<Hunk> none;
    return m_diff ? m_diff->hunks() : none;
}

PanesColumns CodePanesItem::columns() const
{
    return {m_looks.sizes, width(), m_gutterWidth, m_columnWidth, m_contentX};
}

void CodePanesItem::paintCard(QPainter &painter, int card) const
{
    const Hunk &hunk = m_diff->hunks().at(card);
    const bool isSelected = card == m_diff->selectedHunkIndex();
    const PanesSizes &sizes = m_looks.sizes;
    const qreal top = m_layout.cardTop(card) - m_contentY;
    const QRectF frame(sizes.sideMargin, top, width() - 2 * sizes.sideMargin,
                       m_layout.cardBottom(card) - m_layout.cardTop(card));

    const qreal rowsTop = m_layout.rowsTop(card) - m_contentY;

    painter.setPen(Qt::NoPen);
    painter.setBrush(m_looks.card);
    painter.drawRoundedRect(frame, sizes.cornerRadius, sizes.cornerRadius);
    // A head taller than itself by its corners, whose lower part the rows cover.
    painter.setBrush(isSelected ? m_looks.selectedHead : m_looks.head);
    QPainterPath headCorners;
    headCorners.addRoundedRect(frame, sizes.cornerRadius, sizes.cornerRadius);
    painter.save();
    painter.setClipRect(QRectF(frame.left(), top, frame.width(), rowsTop - top), Qt::IntersectClip);
    painter.drawPath(headCorners);
    painter.restore();
    painter.fillRect(QRectF(frame.left(), rowsTop - sizes.border, frame.width(), sizes.border),
                     m_looks.line);

    const auto rows = hunk.rows.size();
    const auto first = std::max<qsizetype>(0, qsizetype(-rowsTop / sizes.rowHeight));
    for (qsizetype i = first; i < rows; ++i) {
        const qreal rowTop = rowsTop + qreal(i) * sizes.rowHeight;
        if (rowTop >= height()) {
            break;
        }
        paintRow(painter, PaneRow{card, int(i)}, rowTop);
    }

    const qreal border = isSelected ? 2 * sizes.border : sizes.border;
    painter.setPen(QPen(isSelected ? m_looks.selectedLine : m_looks.line, border));
    painter.setBrush(Qt::NoBrush);
    const qreal inset = border / 2;
    painter.drawRoundedRect(frame.adjusted(inset, inset, -inset, -inset),
                            sizes.cornerRadius - inset, sizes.cornerRadius - inset);
}

void CodePanesItem::paintRow(QPainter &painter, PaneRow place, qreal top) const
{
    const DiffRow &row = hunks().at(place.card).rows.at(place.row);
    const bool isSelected = place.card == m_diff->selectedHunkIndex();
    const PanesColumns columns = this->columns();
    for (const CodeSide side : {CodeSide::before, CodeSide::after}) {
        const QRectF area = columns.cell(side, top);
        paintCell(painter, Cell{side, place, lineOn(row, side), area, isSelected});
    }
    const qreal middle = columns.cell(CodeSide::after, top).left();
    const PanesSizes &sizes = m_looks.sizes;
    painter.fillRect(QRectF(middle - sizes.border, top, sizes.border, sizes.rowHeight),
                     m_looks.line);
}

void CodePanesItem::paintCell(QPainter &painter, const Cell &cell) const
{
    const QRectF &area = cell.rectangle;
    const DiffLine &line = cell.line;
    const std::size_t kind = indexOf(line.kind);
    const bool isSelectedContext = cell.isSelected && line.kind == DiffLineKind::context;
    painter.fillRect(area, isSelectedContext ? m_looks.selectedCell : m_looks.cell.at(kind));
    painter.fillRect(QRectF(area.left(), area.top(), m_gutterWidth, area.height()),
                     isSelectedContext ? m_looks.selectedGutter : m_looks.gutter.at(kind));
    if (line.kind == DiffLineKind::filler) {
        return;
    }

    painter.setPen(m_looks.number.at(kind));
    if (line.number) {
        painter.setFont(m_looks.numberFont);
        painter.drawText(QRectF(area.left(), area.top(), m_gutterWidth - m_looks.sizes.numberMargin,
                                area.height()),
                         Qt::AlignRight | Qt::AlignVCenter, QString::number(*line.number));
    }
    painter.setFont(m_looks.codeFont);
    const qreal signLeft = area.left() + m_gutterWidth;
    if (line.kind != DiffLineKind::context) {
        painter.drawText(QRectF(signLeft, area.top(), m_looks.sizes.signWidth, area.height()),
                         Qt::AlignCenter, line.kind == DiffLineKind::addition ? u"+"_s : u"−"_s);
    }
    paintSelection(painter, cell);
    if (!line.text.isEmpty()) {
        paintText(painter, cell);
    }
}

void CodePanesItem::paintText(QPainter &painter, const Cell &cell) const
{
    // Only the columns in view are turned into text and laid out.
    const QRectF &area = cell.rectangle;
    const PanesColumns columns = this->columns();
    const qreal textLeft = columns.textLeft(cell.side);
    const qreal room = columns.textWidth(cell.side);
    const auto first = qsizetype(m_contentX / m_columnWidth);
    const auto count = qsizetype(room / m_columnWidth) + 3;
    const QList<CodeRun> runs = codeRuns(cell.line.text, first, count);

    painter.save();
    painter.setClipRect(QRectF(textLeft, area.top(), room, area.height()), Qt::IntersectClip);
    painter.setPen(m_looks.ink);
    for (const CodeRun &run : runs) {
        painter.drawText(
            QPointF(columns.columnLeft(cell.side, qreal(run.column)), area.top() + m_baseline),
            run.text);
    }
    painter.restore();

    const qsizetype end = runs.isEmpty() ? 0 : runs.last().endColumn;
    if (columns.columnLeft(cell.side, qreal(end)) > textLeft + room + 1) {
        const PanesSizes &sizes = m_looks.sizes;
        painter.setPen(QPen(m_looks.mark, sizes.border));
        const QPointF tip(area.right() - sizes.cutMarkMargin, area.center().y());
        const QPointF arm(sizes.cutMarkWidth, sizes.cutMarkHeight);
        painter.drawPolyline(QPolygonF{tip - arm, tip, tip + QPointF(-arm.x(), arm.y())});
    }
}

void CodePanesItem::paintSelection(QPainter &painter, const Cell &cell) const
{
    if (cell.side != m_selection.side()) {
        return;
    }
    const auto span = m_selection.spanIn(hunks(), cell.place.card, cell.place.row);
    if (!span) {
        return;
    }
    const PanesColumns columns = this->columns();
    const auto leftOf = [&](qsizetype offset) {
        return columns.columnLeft(cell.side, qreal(codeColumnAt(cell.line.text, offset)));
    };
    const qreal end = cell.rectangle.right();
    const qreal left = std::max(columns.textLeft(cell.side), leftOf(span->start));
    // A line feed that is selected shows as the rest of the row.
    const bool isWhole = m_selection.goesOnBehind(cell.place.card, cell.place.row);
    const qreal right = isWhole ? end : std::min(end, leftOf(span->end));
    if (right > left) {
        painter.fillRect(QRectF(left, cell.rectangle.top(), right - left, cell.rectangle.height()),
                         m_looks.selection);
    }
}

} // namespace vantrel
