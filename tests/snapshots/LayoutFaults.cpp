#include "LayoutFaults.h"

#include <QAccessible>
#include <QQuickItem>
#include <QQuickWindow>
#include <QSet>

#include <algorithm>

namespace vantrel::test {

using namespace Qt::Literals::StringLiterals;

namespace {

/// What the rounding to whole pixels may add, at any scale factor.
constexpr qreal slack = 1.0;

/// Something to read or to use. Places are those of what is painted, in the window.
struct Element
{
    const QQuickItem *item = nullptr;
    QRectF place{};        ///< All of it.
    QRectF visiblePlace{}; ///< What the views that it scrolls in let show.
    const QQuickItem *layer = nullptr;
};

bool isText(const QQuickItem &item)
{
    return item.inherits("QQuickText");
}

bool isField(const QQuickItem &item)
{
    return item.inherits("QQuickTextInput") || item.inherits("QQuickTextEdit");
}

bool isElement(const QQuickItem &item)
{
    return isField(item) || item.inherits("QQuickAbstractButton") ||
           (isText(item) && !item.property("text").toString().isEmpty());
}

/// The item's words, and the files of ours that it lies in, from the inside out.
QString describe(const QQuickItem &item)
{
    QStringList types;
    for (const QQuickItem *part = &item; part != nullptr; part = part->parentItem()) {
        const QString type = QString::fromLatin1(part->metaObject()->className());
        const qsizetype suffix = type.indexOf(u"_QMLTYPE_"_s);
        if (suffix > 0) {
            types.append(type.first(suffix));
        }
    }
    const QString words = item.property("text").toString();
    const qsizetype enough = 40;
    return u'"' + (words.size() > enough ? words.first(enough) + u'…' : words) + u"\" ("_s +
           types.join(u" in "_s) + u')';
}

QString describe(const QRectF &place)
{
    return u"%1 × %2 at (%3, %4)"_s.arg(place.width(), 0, 'f', 1)
        .arg(place.height(), 0, 'f', 1)
        .arg(place.x(), 0, 'f', 1)
        .arg(place.y(), 0, 'f', 1);
}

QSizeF contentSize(const QQuickItem &item)
{
    return {item.property("contentWidth").toReal(), item.property("contentHeight").toReal()};
}

/// Where the item paints: words are often narrower than the room that is kept for them.
QRectF paintedPlace(const QQuickItem &item)
{
    QRectF painted(QPointF(), item.size());
    if (isText(item)) {
        const QRectF room = painted;
        painted.setSize(contentSize(item));
        const int horizontal = item.property("effectiveHorizontalAlignment").toInt();
        const int vertical = item.property("verticalAlignment").toInt();
        painted.moveCenter(
            {(horizontal & Qt::AlignHCenter) != 0 ? room.center().x() : painted.center().x(),
             (vertical & Qt::AlignVCenter) != 0 ? room.center().y() : painted.center().y()});
        if ((horizontal & Qt::AlignRight) != 0) {
            painted.moveRight(room.right());
        }
        if ((vertical & Qt::AlignBottom) != 0) {
            painted.moveBottom(room.bottom());
        }
    }
    return item.mapRectToScene(painted);
}

/// The dialog, menu or tool tip around the item, which lies over the rest by its nature.
const QQuickItem *layerOf(QQuickItem &item)
{
    for (QQuickItem *part = &item; part->parentItem() != nullptr; part = part->parentItem()) {
        QAccessibleInterface *const accessible = QAccessible::queryAccessibleInterface(part);
        if ((accessible != nullptr && accessible->role() == QAccessible::Dialog) ||
            part->parentItem()->inherits("QQuickOverlay")) {
            return part;
        }
    }
    return nullptr;
}

bool isAncestor(const QQuickItem &ancestor, const QQuickItem &item)
{
    return ancestor.isAncestorOf(&item);
}

/// A hint stands in its field while that is empty.
bool isHintIn(const Element &field, const Element &hint)
{
    return isField(*field.item) && isText(*hint.item) &&
           field.item->property("text").toString().isEmpty() && field.place.contains(hint.place);
}

/// The rows that the list of this content keeps for later, unseen where they last were. They are
/// the ones of the same type as its rows that belong to no index.
QSet<QQuickItem *> pooledRows(const QQuickItem &content)
{
    QQuickItem *const list = content.parentItem();
    if (list == nullptr || !list->inherits("QQuickItemView")) {
        return {};
    }
    QSet<QQuickItem *> rows;
    for (int index = 0; index < list->property("count").toInt(); ++index) {
        QQuickItem *row = nullptr;
        QMetaObject::invokeMethod(list, "itemAtIndex", Q_RETURN_ARG(QQuickItem *, row),
                                  Q_ARG(int, index));
        if (row != nullptr) {
            rows.insert(row);
        }
    }
    QSet<QQuickItem *> pooled;
    for (QQuickItem *const child : content.childItems()) {
        const bool isOfTheirType =
            std::any_of(rows.cbegin(), rows.cend(), [child](const QQuickItem *row) {
                return row->metaObject() == child->metaObject();
            });
        if (isOfTheirType && !rows.contains(child)) {
            pooled.insert(child);
        }
    }
    return pooled;
}

class Inspection
{
public:
    explicit Inspection(const QQuickWindow &window)
        : m_windowPlace(QPointF(), window.size())
    {
        visit(*window.contentItem());
        for (const Element &element : std::as_const(m_elements)) {
            checkCut(*element.item);
        }
        checkOverlaps();
    }

    [[nodiscard]] QStringList faults() const { return m_faults; }

private:
    void visit(QQuickItem &item)
    {
        if (!item.isVisible() || item.opacity() == 0) {
            return;
        }
        if (isElement(item)) {
            addElement(item);
        }
        const QSet<QQuickItem *> pooled = pooledRows(item);
        for (QQuickItem *const child : item.childItems()) {
            if (!pooled.contains(child)) {
                visit(*child);
            }
        }
    }

    void addElement(QQuickItem &item)
    {
        Element element{&item, paintedPlace(item), {}, layerOf(item)};
        element.visiblePlace = element.place;
        for (const QQuickItem *part = item.parentItem(); part != nullptr;
             part = part->parentItem()) {
            if (part->inherits("QQuickFlickable") || part->clip()) {
                leave(element, *part);
            }
        }
        if (!element.visiblePlace.isEmpty()) {
            checkInside(element, m_windowPlace, u"the window"_s);
            m_elements.append(element);
        }
    }

    /// Cuts off what has been scrolled out of the view. What a view cuts in a direction in which it
    /// does not scroll can never be seen.
    void leave(Element &element, const QQuickItem &view)
    {
        const QRectF frame = view.mapRectToScene(QRectF(QPointF(), view.size()));
        const auto property = [&view](const char *name) { return view.property(name).toReal(); };
        const bool isView = view.inherits("QQuickFlickable");
        const QSizeF content = contentSize(view);
        const qreal height = content.height() + property("topMargin") + property("bottomMargin");
        const qreal width = content.width() + property("leftMargin") + property("rightMargin");
        QRectF reachable = element.visiblePlace;
        if (isView && width > frame.width() + slack) {
            reachable.setLeft(std::max(reachable.left(), frame.left()));
            reachable.setRight(std::min(reachable.right(), frame.right()));
        }
        if (isView && height > frame.height() + slack) {
            reachable.setTop(std::max(reachable.top(), frame.top()));
            reachable.setBottom(std::min(reachable.bottom(), frame.bottom()));
        }
        if (reachable.width() <= 0 || reachable.height() <= 0) {
            element.visiblePlace = {};
            return;
        }
        element.visiblePlace = reachable;
        checkInside(element, frame, u"the view around it"_s);
        element.visiblePlace = reachable & frame;
    }

    void checkInside(const Element &element, const QRectF &frame, const QString &name)
    {
        if (!frame.adjusted(-slack, -slack, slack, slack).contains(element.visiblePlace)) {
            m_faults.append(u"%1 reaches out of %2: it is %3, and that is %4"_s.arg(
                describe(*element.item), name, describe(element.visiblePlace), describe(frame)));
        }
    }

    void checkCut(const QQuickItem &item)
    {
        if (!isText(item) && !item.inherits("QQuickTextEdit")) {
            return;
        }
        const QSizeF content = contentSize(item);
        const bool elides = isText(item) && item.property("elide").toInt() != Qt::ElideNone;
        if (content.height() > item.height() + slack ||
            (!elides && content.width() > item.width() + slack)) {
            m_faults.append(u"%1 is cut: it needs %2 × %3 and has %4 × %5"_s.arg(describe(item))
                                .arg(content.width(), 0, 'f', 1)
                                .arg(content.height(), 0, 'f', 1)
                                .arg(item.width(), 0, 'f', 1)
                                .arg(item.height(), 0, 'f', 1));
        }
    }

    void checkOverlaps()
    {
        for (qsizetype i = 0; i < m_elements.size(); ++i) {
            for (qsizetype j = 0; j < i; ++j) {
                checkOverlap(m_elements.at(j), m_elements.at(i));
            }
        }
    }

    void checkOverlap(const Element &first, const Element &second)
    {
        const QRectF common = first.visiblePlace & second.visiblePlace;
        if (common.width() > slack && common.height() > slack && first.layer == second.layer &&
            !isAncestor(*first.item, *second.item) && !isAncestor(*second.item, *first.item) &&
            !isHintIn(first, second) && !isHintIn(second, first)) {
            m_faults.append(u"%1 and %2 lie over each other: %3"_s.arg(
                describe(*first.item), describe(*second.item), describe(common)));
        }
    }

    QRectF m_windowPlace;
    QList<Element> m_elements{};
    QStringList m_faults{};
};

} // namespace

QStringList layoutFaults(const QQuickWindow &window)
{
    return Inspection(window).faults();
}

} // namespace vantrel::test
