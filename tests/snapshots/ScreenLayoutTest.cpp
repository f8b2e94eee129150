// Every state of every screen fits from the smallest window to a large one. The scale factor is
// that of the environment.

#include "LayoutFaults.h"
#include "screenshots/Scene.h"
#include "support/Spin.h"

#include <gtest/gtest.h>

#include <QQuickItem>
#include <QQuickWindow>

#include <array>

namespace vantrel::test {
namespace {

using screenshots::Scene;

constexpr std::array sizes{QSize(900, 600), QSize(1280, 824), QSize(2560, 1440)};

class ScreenLayout : public testing::TestWithParam<QString>
{};

/// What a person can make of the window.
QSize possibleSize(const QQuickWindow &window, QSize size)
{
    return size.expandedTo(window.minimumSize()).boundedTo(window.maximumSize());
}

void draw(QQuickWindow &window)
{
    bool isDrawn = false;
    const QMetaObject::Connection swapped = QObject::connect(
        &window, &QQuickWindow::frameSwapped, &window, [&isDrawn] { isDrawn = true; });
    window.update();
    spinUntil([&isDrawn] { return isDrawn; });
    QObject::disconnect(swapped);
}

TEST_P(ScreenLayout, FitsInEveryWindow)
{
    Scene scene(AppAppearance::light);
    QQuickWindow *const window = scene.show(GetParam(), sizes.front());
    ASSERT_NE(window, nullptr);
    ASSERT_EQ(window->effectiveDevicePixelRatio(),
              qEnvironmentVariable("QT_SCALE_FACTOR").toDouble());

    for (const QSize &wanted : sizes) {
        const QSize size = possibleSize(*window, wanted);
        window->resize(size);
        spinUntil([&] { return window->contentItem()->size().toSize() == size; });
        // Lists take their places when they are drawn, and follow their ends after that.
        draw(*window);
        draw(*window);

        for (const QString &fault : layoutFaults(*window)) {
            ADD_FAILURE() << size.width() << " × " << size.height() << ", scaled by "
                          << window->effectiveDevicePixelRatio() << ": " << qPrintable(fault);
        }
    }
}

std::string nameOf(const testing::TestParamInfo<QString> &parameter)
{
    QString name = parameter.param;
    return name.replace(u'-', u'_').toStdString();
}

INSTANTIATE_TEST_SUITE_P(All, ScreenLayout, testing::ValuesIn(Scene::states()), nameOf);

} // namespace
} // namespace vantrel::test
