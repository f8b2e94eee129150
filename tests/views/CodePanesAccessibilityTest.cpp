#include "views/CodePanesItem.h"
#include "views/IconProvider.h"

#include "OpenedFile.h"
#include "Samples.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>

#include <memory>

namespace vantrel::test {
namespace {

using namespace Qt::Literals::StringLiterals;

/// The panes in a window, as a screen reader finds them.
class ReadPanes
{
public:
    explicit ReadPanes(const FileChange &file)
        : m_file(file)
    {
        m_engine.addImportPath(u"qrc:/qt/qml"_s);
        m_engine.addImageProvider(u"icon"_s, new IconProvider);
        QQmlComponent component(&m_engine, QUrl(u"qrc:/qt/qml/Vantrel/CodePanesView.qml"_s));
        m_item.reset(qobject_cast<QQuickItem *>(component.createWithInitialProperties(
            {{u"viewModel"_s, QVariant::fromValue(&m_file.diff())}})));
        EXPECT_NE(m_item, nullptr) << component.errorString().toStdString();
        m_item->setParentItem(m_window.contentItem());
        m_window.resize(900, 400);
        m_item->setSize(m_window.size());
    }

    ~ReadPanes() { QAccessible::setActive(false); }

    void scrollTo(qreal y)
    {
        const auto *const painted = m_item->findChild<CodePanesItem *>();
        painted->parentItem()->parentItem()->setProperty("contentY", y);
    }

    /// The names of everything of this role, each behind the names of what holds it.
    [[nodiscard]] QStringList all(QAccessible::Role role)
    {
        QStringList found;
        collect(window(), role, QString(), found);
        return found;
    }

    [[nodiscard]] QAccessibleInterface *window()
    {
        return QAccessible::queryAccessibleInterface(&m_window);
    }

private:
    static void collect(QAccessibleInterface *from, QAccessible::Role role, const QString &holders,
                        QStringList &found)
    {
        for (int i = 0; i < from->childCount(); ++i) {
            QAccessibleInterface *const child = from->child(i);
            const QString name = holders + child->text(QAccessible::Name);
            if (child->role() == role) {
                found.append(name);
            }
            collect(child, role, name + u" > "_s, found);
        }
    }

    OpenedFile m_file;
    QQuickWindow m_window{};
    QQmlEngine m_engine{};
    std::unique_ptr<QQuickItem> m_item{};
};

TEST(CodePanesAccessibility, RowsLieWithinTheirCardsInTheList)
{
    ReadPanes panes(changedFile(u"a.cpp"_s, 2));

    QAccessible::setActive(true);

    EXPECT_EQ(panes.all(QAccessible::ListItem),
              (QStringList{u"Changes in a.cpp > Change 1 of 2, @@ -1 +1 @@"_s,
                           u"Changes in a.cpp > Change 2 of 2, @@ -11 +11 @@"_s}));
    EXPECT_EQ(panes.all(QAccessible::Row),
              (QStringList{u"Changes in a.cpp > Change 1 of 2, @@ -1 +1 @@ > "
                           "Before 1, deleted: old 0 After 1, added: new 0"_s,
                           u"Changes in a.cpp > Change 2 of 2, @@ -11 +11 @@ > "
                           "Before 11, deleted: old 1 After 11, added: new 1"_s}));
}

TEST(CodePanesAccessibility, NoRowsAreThereForNobody)
{
    ReadPanes panes(changedFile(u"a.cpp"_s, 2));
    EXPECT_EQ(panes.all(QAccessible::Row), QStringList());

    QAccessible::setActive(true);
    EXPECT_EQ(panes.all(QAccessible::Row).size(), 2);
    QAccessible::setActive(false);

    EXPECT_EQ(panes.all(QAccessible::Row), QStringList());
}

TEST(CodePanesAccessibility, OnlyRowsInViewAreThere)
{
    RawHunk hunk = changedLine(1, u"a"_s, u"b"_s);
    hunk.lines = QList<RawDiffLine>(
        10'000, RawDiffLine{RawLineKind::context, TextSlice::fromString(u"same"_s)});
    ReadPanes panes(changedFile(u"a.cpp"_s, {hunk}));
    QAccessible::setActive(true);
    EXPECT_LT(panes.all(QAccessible::Row).size(), 25);

    panes.scrollTo(12 + 33 + 5'000 * 20);

    const QStringList rows = panes.all(QAccessible::Row);
    EXPECT_LT(rows.size(), 25);
    EXPECT_TRUE(rows.first().endsWith(u"> Before 5001, after 5001: same"_s))
        << rows.first().toStdString();
}

QAccessibleInterface *firstRow(QAccessibleInterface *from)
{
    for (int i = 0; i < from->childCount(); ++i) {
        QAccessibleInterface *const child = from->child(i);
        QAccessibleInterface *const row =
            child->role() == QAccessible::Row ? child : firstRow(child);
        if (row != nullptr) {
            return row;
        }
    }
    return nullptr;
}

TEST(CodePanesAccessibility, ARowIsWhereItIsDrawn)
{
    ReadPanes panes(changedFile(u"a.cpp"_s, 1));
    QAccessible::setActive(true);

    const QAccessibleInterface *const row = firstRow(panes.window());

    ASSERT_NE(row, nullptr);
    EXPECT_EQ(row->rect(), QRect(12, 28 + 12 + 1 + 32, 900 - 2 * 12, 20));
}

} // namespace
} // namespace vantrel::test
