// Every state of every screen looks as it was kept. `script/snapshots` keeps them anew.

#include "ScreenSnapshots.h"

#include <gtest/gtest.h>

#include <QDir>

namespace vantrel::test {
namespace {

class ScreenSnapshots : public testing::TestWithParam<ScreenSnapshot>
{};

TEST_P(ScreenSnapshots, LooksAsItWasKept)
{
    const ScreenSnapshot &screen = GetParam();
    const QImage picture = takePicture(screen);
    ASSERT_FALSE(picture.isNull());

    EXPECT_EQ(compareWithKept(screen, picture).value_or(QString()).toStdString(), "");
}

std::string nameOf(const testing::TestParamInfo<ScreenSnapshot> &parameter)
{
    return parameter.param.name().replace(u'-', u'_').toStdString();
}

INSTANTIATE_TEST_SUITE_P(All, ScreenSnapshots, testing::ValuesIn(allScreenSnapshots()), nameOf);

TEST(KeptSnapshots, AreOfStatesThatAreThere)
{
    QStringList names;
    for (const ScreenSnapshot &screen : allScreenSnapshots()) {
        names.append(screen.fileName());
    }
    names.sort();

    EXPECT_EQ(keptFolder().entryList(QDir::Files, QDir::Name), names);
}

} // namespace
} // namespace vantrel::test
