// The application, used at random: VANTREL_SOAK_MINUTES for how long, VANTREL_SOAK_SEED for what. A
// short walk without them, as a part of the tests.

#include "Walk.h"

#include <gtest/gtest.h>

#include <cstdio>

namespace vantrel::test {
namespace {

using namespace Qt::Literals::StringLiterals;

TEST(Soak, AWalkAtRandomFindsNothing)
{
    Walk::Settings settings;
    settings.logFolder = QStringLiteral(SOAK_FOLDER);
    settings.seed = qEnvironmentVariable("VANTREL_SOAK_SEED", u"1"_s).toUInt();
    settings.minutes = qEnvironmentVariable("VANTREL_SOAK_MINUTES").toDouble();
    if (settings.minutes <= 0) {
        settings.steps = 48;
        settings.stepsBetweenQuietPoints = 12;
    }
    Walk walk(settings);

    walk.run();

    std::fputs(qPrintable(walk.report()), stdout);
    EXPECT_TRUE(walk.findings().isEmpty()) << "repeat it with the seed " << settings.seed;
}

} // namespace
} // namespace vantrel::test
