// That each kind of fault is found, and that what only looks like one is not.

#include "LayoutFaults.h"

#include <gtest/gtest.h>

#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickWindow>

#include <memory>

namespace vantrel::test {
namespace {

using namespace Qt::Literals::StringLiterals;

/// The faults of a window of 200 × 100 with this content.
QStringList faultsOf(const QByteArray &content)
{
    QQmlEngine engine;
    QQmlComponent component(&engine);
    component.setData("import QtQuick\nimport QtQuick.Templates as T\nWindow { width: 200; height: "
                      "100; visible: true; " +
                          content + " }",
                      QUrl());
    const std::unique_ptr<QObject> object(component.create());
    auto *const window = qobject_cast<QQuickWindow *>(object.get());
    if (window == nullptr) {
        return {component.errorString()};
    }
    static_cast<void>(window->grabWindow());
    return layoutFaults(*window);
}

/// The one fault that is expected, or all of them for the message.
QString faultOf(const QByteArray &content)
{
    return faultsOf(content).join(u'\n');
}

TEST(LayoutFaults, ATextWithoutRoomIsCut)
{
    const QString fault = faultOf("Text { width: 20; text: 'Working changes' }");

    EXPECT_TRUE(fault.startsWith(u"\"Working changes\" () is cut: it needs "_s))
        << qPrintable(fault);
}

TEST(LayoutFaults, AnEllipsisOrABreakMakesRoom)
{
    EXPECT_EQ(faultOf("Text { width: 60; text: 'Working changes'; elide: Text.ElideRight }"),
              QString());
    EXPECT_EQ(faultOf("Text { width: 90; text: 'Working changes'; wrapMode: Text.Wrap }"),
              QString());
}

TEST(LayoutFaults, AWrappedTextInALowBoxIsCut)
{
    const QString fault = faultOf(
        "Text { width: 60; height: 16; text: 'Working changes of today'; wrapMode: Text.Wrap }");

    EXPECT_TRUE(fault.contains(u" is cut: it needs "_s)) << qPrintable(fault);
}

TEST(LayoutFaults, ButtonsOverEachOtherAreFound)
{
    const QString fault = faultOf("T.Button { width: 80; height: 30; text: 'One' }"
                                  "T.Button { x: 70; width: 80; height: 30; text: 'Two' }");

    EXPECT_EQ(fault,
              u"\"One\" () and \"Two\" () lie over each other: 10.0 × 30.0 at (70.0, 0.0)"_s);
}

TEST(LayoutFaults, WordsOverWordsAreFound)
{
    const QString fault = faultOf("Text { text: 'Before' }  Text { x: 5; text: 'After' }");

    EXPECT_TRUE(fault.startsWith(u"\"Before\" () and \"After\" () lie over each other: "_s))
        << qPrintable(fault);
}

TEST(LayoutFaults, RoomThatIsKeptButNotPaintedMayBeShared)
{
    EXPECT_EQ(faultOf("Text { width: 200; text: 'a' }"
                      "Text { width: 200; text: 'b'; horizontalAlignment: Text.AlignRight }"
                      "Text { width: 200; text: 'c'; horizontalAlignment: Text.AlignHCenter }"),
              QString());
}

TEST(LayoutFaults, AButtonHoldsItsWords)
{
    EXPECT_EQ(faultOf("T.Button { width: 80; height: 30; contentItem: Text { text: 'Send' } }"),
              QString());
}

TEST(LayoutFaults, ADialogLiesOverOthers)
{
    EXPECT_EQ(faultOf("Text { text: 'Before' }"
                      "Rectangle { width: 90; height: 50; Accessible.role: Accessible.Dialog;"
                      "            Text { text: 'Continue?' } }"),
              QString());
}

TEST(LayoutFaults, PartsOfADialogMayNotLieOverEachOther)
{
    EXPECT_NE(faultOf("Rectangle { width: 90; height: 50; Accessible.role: Accessible.Dialog;"
                      "            Text { text: 'Continue?' } Text { text: 'Cancel' } }"),
              QString());
}

TEST(LayoutFaults, AHintStandsInItsEmptyFieldOnly)
{
    const QByteArray fieldWith = "Text { x: 4; y: 4; text: 'Ask' }"
                                 "TextEdit { width: 150; height: 40; text: ";

    EXPECT_EQ(faultOf(fieldWith + "'' }"), QString());
    EXPECT_NE(faultOf(fieldWith + "'Why?' }"), QString());
}

TEST(LayoutFaults, WhatReachesOutOfTheWindowIsFound)
{
    const QString fault = faultOf("T.Button { x: 150; width: 80; height: 30; text: 'Send' }");

    EXPECT_EQ(fault, u"\"Send\" () reaches out of the window: it is 80.0 × 30.0 at (150.0, 0.0), "
                     "and that is 200.0 × 100.0 at (0.0, 0.0)"_s);
}

TEST(LayoutFaults, WhatIsNotShownIsNotAFault)
{
    EXPECT_EQ(faultOf("T.Button { x: 150; width: 80; height: 30; text: 'Send'; visible: false }"
                      "Item { opacity: 0; Text { x: 190; text: 'Working changes' } }"),
              QString());
}

TEST(LayoutFaults, RowsMayBeScrolledOut)
{
    EXPECT_EQ(faultOf("ListView { width: 200; height: 50; model: 9; delegate: Text {"
                      "           height: 20; text: 'Row' } }"),
              QString());
}

TEST(LayoutFaults, RowsThatAListKeepsForLaterAreNotShown)
{
    // Back at the third row, the list shows it with the item of the second, the one kept longest.
    EXPECT_EQ(faultOf("ListView { width: 200; height: 90; model: 90; reuseItems: true;"
                      "           cacheBuffer: 0; delegate: Text { height: 20; text: 'Row' }"
                      "           Component.onCompleted: {"
                      "               forceLayout(); contentY = 70; forceLayout();"
                      "               contentY = 50; forceLayout(); } }"),
              QString());
}

TEST(LayoutFaults, ARowWiderThanItsListIsFound)
{
    const QString fault = faultOf("ListView { width: 30; height: 50; model: 1; delegate: Text {"
                                  "           text: 'Working changes' } }");

    EXPECT_TRUE(fault.contains(u" reaches out of the view around it: "_s)) << qPrintable(fault);
}

} // namespace
} // namespace vantrel::test
