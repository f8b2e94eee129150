#include "views/MomentText.h"

#include <gtest/gtest.h>

#include <QTimeZone>

namespace vantrel::test {
namespace {

using namespace Qt::Literals::StringLiterals;

struct Example
{
    QString moment{};
    QString text{};
};

class MomentText : public testing::TestWithParam<Example>
{};

TEST_P(MomentText, TellsAMomentApartInFewWords)
{
    const QTimeZone zone("Europe/Berlin");
    const auto at = [&zone](const QString &text) {
        QDateTime time = QDateTime::fromString(text, Qt::ISODate);
        time.setTimeZone(zone);
        return time;
    };

    // A Thursday.
    EXPECT_EQ(momentText(at(GetParam().moment), at(u"2026-11-19T10:00:00"_s)), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(All, MomentText,
                         testing::Values(Example{u"2026-11-19T09:42:00"_s, u"Today, 09:42"_s},
                                         Example{u"2026-11-19T00:00:00"_s, u"Today, 00:00"_s},
                                         Example{u"2026-11-18T23:59:59"_s, u"Yesterday"_s},
                                         Example{u"2026-11-17T12:00:00"_s, u"Tuesday"_s},
                                         Example{u"2026-11-13T12:00:00"_s, u"Friday"_s},
                                         Example{u"2026-11-12T12:00:00"_s, u"12 November"_s},
                                         Example{u"2026-01-02T12:00:00"_s, u"2 January"_s},
                                         Example{u"2025-11-14T12:00:00"_s, u"14 November 2025"_s},
                                         Example{u"2025-12-31T23:00:00"_s, u"31 December 2025"_s},
                                         // A clock that was set back.
                                         Example{u"2026-11-19T10:30:00"_s, u"Today, 10:30"_s},
                                         Example{u"2026-11-21T10:00:00"_s, u"21 November"_s}));

TEST(MomentTextZones, AMomentIsReadInTheZoneOfNow)
{
    const QDateTime moment(QDate(2026, 11, 18), QTime(23, 30), Qt::UTC);
    const QDateTime now(QDate(2026, 11, 19), QTime(10, 0), QTimeZone("Europe/Berlin"));

    EXPECT_EQ(momentText(moment, now), u"Today, 00:30"_s);
}

} // namespace
} // namespace vantrel::test
