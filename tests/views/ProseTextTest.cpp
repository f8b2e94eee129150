#include "support/Spin.h"

#include <gtest/gtest.h>

#include <QClipboard>
#include <QGuiApplication>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQmlProperty>
#include <QQuickItem>
#include <QQuickTextDocument>
#include <QQuickWindow>
#include <QTcpServer>
#include <QTextBlock>
#include <QTextDocument>

#include <cmath>
#include <memory>

namespace vantrel::test {
namespace {

using namespace Qt::Literals::StringLiterals;

/// A window of one item, of an engine that may fetch whatever it likes.
class Shown
{
public:
    explicit Shown(const QString &type)
    {
        m_engine.addImportPath(u"qrc:/qt/qml"_s);
        QQmlComponent component(&m_engine);
        component.setData("import QtQuick\nimport Vantrel\n" + type.toUtf8(), QUrl());
        m_item.reset(qobject_cast<QQuickItem *>(component.create()));
        EXPECT_NE(m_item, nullptr) << component.errorString().toStdString();
        m_item->setParentItem(m_window.contentItem());
        m_item->setWidth(300);
        m_window.resize(300, 300);
    }

    [[nodiscard]] QQuickItem &item() { return *m_item; }
    void setSource(const QString &source) { m_item->setProperty("source", source); }
    [[nodiscard]] QString text() const { return m_item->property("text").toString(); }
    [[nodiscard]] QImage picture() { return m_window.grabWindow(); }

    [[nodiscard]] QTextDocument &document()
    {
        return *m_item->property("textDocument").value<QQuickTextDocument *>()->textDocument();
    }

    /// The look of the character at `position`.
    [[nodiscard]] QTextCharFormat lookAt(int position)
    {
        QTextCursor cursor(&document());
        cursor.setPosition(position + 1);
        return cursor.charFormat();
    }

private:
    QQuickWindow m_window{};
    QQmlEngine m_engine{};
    std::unique_ptr<QQuickItem> m_item{};
};

TEST(ProseText, ShowsLooksInPlaceOfMarks)
{
    Shown shown(u"ProseText {}"_s);

    shown.setSource(u"a *b* **c** `d`"_s);

    EXPECT_EQ(shown.text(), u"a b c d"_s);
    EXPECT_EQ(shown.item().property("textFormat").toInt(), int(Qt::PlainText));
    EXPECT_FALSE(shown.lookAt(0).fontItalic());
    EXPECT_TRUE(shown.lookAt(2).fontItalic());
    EXPECT_GT(shown.lookAt(4).fontWeight(), int(QFont::Normal));
    EXPECT_EQ(shown.lookAt(6).fontFamilies().toStringList(), QStringList{u"monospace"_s});
    EXPECT_EQ(shown.lookAt(6).property(QTextFormat::FontPixelSize), 12);
}

TEST(ProseText, AVeryLongTextComesInOverSeveralFrames)
{
    const QString whole = u"A line of **some** length.\n"_s.repeated(4'000);
    const QString read = u"A line of some length.\n"_s.repeated(4'000);
    Shown shown(u"ProseText {}"_s);

    shown.setSource(whole);
    EXPECT_LT(shown.text().size(), read.size() / 2);
    EXPECT_TRUE(read.startsWith(shown.text()));
    spinUntil([&] { return shown.text().size() >= read.size(); });

    EXPECT_EQ(shown.text(), read);
    EXPECT_GT(shown.lookAt(10).fontWeight(), int(QFont::Normal));
    EXPECT_GT(shown.lookAt(int(read.size()) - 13).fontWeight(), int(QFont::Normal));
    EXPECT_EQ(shown.lookAt(int(read.size()) - 8).fontWeight(), int(QFont::Normal));

    shown.setSource(whole);
    shown.setSource(u"short"_s);
    EXPECT_EQ(shown.text(), u"short"_s);
}

/// The text item's own measure, for which it lays out all lines again.
TEST(ProseText, IsAsWideAsItsWidestLineWhateverItGrewFrom)
{
    const QString whole = u"one\n**a strong line** of some length\n\n`code` and *so*\nWAVE Ta"_s;
    Shown grown(u"ProseText {}"_s);

    for (qsizetype length = 1; length <= whole.size(); ++length) {
        grown.setSource(whole.first(length));
        EXPECT_EQ(std::ceil(grown.item().property("naturalWidth").toReal()),
                  std::ceil(grown.item().implicitWidth()))
            << length;
    }
    for (const QString &other : {u"one\ntwo"_s, u"**one\ntwo**"_s, QString()}) {
        grown.setSource(other);
        EXPECT_EQ(std::ceil(grown.item().property("naturalWidth").toReal()),
                  std::ceil(grown.item().implicitWidth()))
            << other.toStdString();
    }
}

TEST(ProseText, ShowsATextThatItIsMadeWith)
{
    Shown shown(u"ProseText { source: 'a *b* `c`' }"_s);

    EXPECT_EQ(shown.text(), u"a b c"_s);
    EXPECT_TRUE(shown.lookAt(2).fontItalic());
    EXPECT_EQ(shown.lookAt(4).property(QTextFormat::FontPixelSize), 12);
    EXPECT_EQ(QQmlProperty::read(&shown.item(), u"Accessible.name"_s, qmlContext(&shown.item()))
                  .toString(),
              u"a b c"_s);
}

TEST(ProseText, ShowsWhatAPersonTypedAsItIs)
{
    Shown shown(u"ProseText { isMarkdown: false }"_s);

    shown.setSource(u"a *b* `d`"_s);

    EXPECT_EQ(shown.text(), u"a *b* `d`"_s);
    EXPECT_FALSE(shown.lookAt(3).fontItalic());
}

TEST(ProseText, ShowsTheSameHoweverATextHasCome)
{
    const QString whole =
        u"First *words* and **more**.\n\n- `code` here\n- [a](b)\n```\nint x;\n```\r\nLast."_s;
    Shown grown(u"ProseText {}"_s);
    Shown atOnce(u"ProseText {}"_s);

    for (qsizetype length = 0; length <= whole.size(); ++length) {
        grown.setSource(whole.first(length));
        atOnce.setSource(QString());
        atOnce.setSource(whole.first(length));
        ASSERT_EQ(grown.text(), atOnce.text());
        ASSERT_EQ(grown.document().toHtml(), atOnce.document().toHtml()) << length;
        ASSERT_EQ(grown.item().height(), atOnce.item().height()) << length;
    }
    EXPECT_EQ(grown.picture(), atOnce.picture());
}

TEST(ProseText, ASelectionStaysWhileTheTextGrows)
{
    Shown shown(u"ProseText {}"_s);
    shown.setSource(u"Some *words* and **mo"_s);
    QMetaObject::invokeMethod(&shown.item(), "select", Q_ARG(int, 5), Q_ARG(int, 10));
    EXPECT_EQ(shown.item().property("selectedText"), u"words"_s);

    shown.setSource(u"Some *words* and **more** of them"_s);

    EXPECT_EQ(shown.item().property("selectedText"), u"words"_s);
    EXPECT_EQ(shown.text(), u"Some words and more of them"_s);
}

TEST(ProseText, CopiesWhatIsRead)
{
    Shown shown(u"ProseText {}"_s);
    shown.setSource(u"a *b*\n`c`"_s);

    QMetaObject::invokeMethod(&shown.item(), "selectAll");
    QMetaObject::invokeMethod(&shown.item(), "copy");

    EXPECT_EQ(QGuiApplication::clipboard()->text(), u"a b\nc"_s);
}

TEST(ProseText, EveryLineHasTheHeightOfTheTheme)
{
    Shown shown(u"ProseText {}"_s);

    shown.setSource(u"a\n**b** `c`\n```\nd\n```\n漢字 😀"_s);

    EXPECT_EQ(shown.item().height(), 4 * 20);
}

TEST(ProseText, LineSeparatorsOfAnyKindAreLines)
{
    Shown shown(u"ProseText {}"_s);

    shown.setSource(u"a\u2029*b*\r*c*\r\n*d*"_s);

    EXPECT_EQ(shown.text(), u"a\nb\nc\nd"_s);
    EXPECT_TRUE(shown.lookAt(6).fontItalic());
}

/// Forms that text items are known to follow.
QString tempting(const QTcpServer &server)
{
    const QString address = u"http://127.0.0.1:%1/a.png"_s.arg(server.serverPort());
    return u"<img src=\"@\"> <p style=\"background-image:url(@)\">x</p> ![a](@) [![b](@)](@) "
           "[c](@) <@> @ <link rel=stylesheet href=\"@\"> <a href='@'>d</a> "
           "<style>@import url(@);</style> <object data='@'></object>\n\n![e][f]\n\n[f]: @\n"_s
               .replace(u'@', address);
}

/// Draws the item, which is when pictures are fetched, and lets everything happen that is due.
void draw(Shown &shown)
{
    for (int i = 0; i < 10; ++i) {
        (void)shown.picture();
        QCoreApplication::processEvents();
    }
}

TEST(ProseText, FetchesNothingEvenWhereTheEngineCould)
{
    QTcpServer server;
    ASSERT_TRUE(server.listen(QHostAddress::LocalHost));
    Shown markdown(u"ProseText {}"_s);
    Shown plain(u"ProseText { isMarkdown: false }"_s);

    markdown.setSource(tempting(server));
    plain.setSource(tempting(server));

    draw(markdown);
    draw(plain);
    EXPECT_FALSE(server.hasPendingConnections());

    Shown obeying(u"Text { property string source; text: source }"_s);
    obeying.setSource(u"<img src=\"http://127.0.0.1:%1/a.png\">"_s.arg(server.serverPort()));
    draw(obeying);
    spinUntil([&server] { return server.hasPendingConnections(); });
    EXPECT_TRUE(server.hasPendingConnections()) << "the server would have been asked";
}

} // namespace
} // namespace vantrel::test
