#include "views/IconProvider.h"

#include <gtest/gtest.h>

#include <QImage>
#include <QPixmap>

namespace vantrel::test {
namespace {

using namespace Qt::Literals::StringLiterals;

TEST(IconProvider, DrawsAnIconInTheAskedColourAndSize)
{
    IconProvider provider;
    QSize size;

    const QImage icon = provider.requestPixmap(u"check/ff0000"_s, &size, QSize(32, 32)).toImage();

    EXPECT_EQ(size, QSize(32, 32));
    int drawn = 0;
    for (int y = 0; y < icon.height(); ++y) {
        for (int x = 0; x < icon.width(); ++x) {
            const QColor color = icon.pixelColor(x, y);
            drawn += color.alpha() == 255 ? 1 : 0;
            EXPECT_TRUE(color.alpha() == 0 || (color.red() > 250 && color.green() < 5));
        }
    }
    EXPECT_GT(drawn, 20);
}

} // namespace
} // namespace vantrel::test
