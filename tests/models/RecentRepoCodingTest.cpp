#include "models/RecentRepoCoding.h"

#include <QJsonDocument>

#include <gtest/gtest.h>

#include <random>

namespace vantrel {

using namespace Qt::Literals::StringLiterals;

namespace {

RecentRepo openedAt(const QDateTime &date)
{
    return RecentRepo{QUuid::fromString(u"8C9B2F7E-3A1D-4F60-9A57-0B1C2D3E4F5A"_s), u"engine"_s,
                      u"/home/ada/größe"_s, date};
}

QDateTime utc(int year, int month, int day, const QTime &time)
{
    return QDateTime(QDate(year, month, day), time, Qt::UTC);
}

RecentRepo sample()
{
    return openedAt(utc(2001, 1, 2, QTime(0, 0, 1, 250)));
}

/// Encodes to bytes and back, as a store does.
tl::expected<RecentRepo, CodingError> storedAndRead(const RecentRepo &repo)
{
    const QByteArray json = QJsonDocument(toJson(repo)).toJson();
    return recentRepoFromJson(QJsonDocument::fromJson(json).object());
}

CodingError errorOf(const QJsonValue &value)
{
    const auto decoded = recentRepoFromJson(value);
    return decoded ? CodingError{CodingError::Case::invalidValue, u"nothing failed"_s}
                   : decoded.error();
}

using Case = CodingError::Case;

} // namespace

TEST(RecentRepoCoding, AnEntryHasTheStoredForm)
{
    const QByteArray json = QJsonDocument(toJson(sample())).toJson(QJsonDocument::Compact);

    EXPECT_EQ(json, QByteArray("{\"id\":\"8C9B2F7E-3A1D-4F60-9A57-0B1C2D3E4F5A\","
                               "\"lastOpened\":86401.25,\"name\":\"engine\","
                               "\"path\":\"/home/ada/größe\"}"));
}

TEST(RecentRepoCoding, ADateIsCountedFromTheFirstOfJanuary2001)
{
    EXPECT_EQ(toJson(openedAt(utc(2001, 1, 1, QTime(0, 0))))[u"lastOpened"_s], QJsonValue(0));
    EXPECT_EQ(toJson(openedAt(utc(2000, 12, 31, QTime(23, 59, 59, 500))))[u"lastOpened"_s],
              QJsonValue(-0.5));
}

TEST(RecentRepoCoding, AnEntrySurvivesEncodingAndDecoding)
{
    EXPECT_EQ(storedAndRead(sample()), sample());
}

TEST(RecentRepoCoding, EveryMillisecondSurvives)
{
    std::mt19937_64 random(11);
    for (int i = 0; i < 10'000; ++i) {
        const auto milliseconds = std::int64_t(random() % 4'000'000'000'000);
        const RecentRepo repo = openedAt(QDateTime::fromMSecsSinceEpoch(milliseconds, Qt::UTC));

        ASSERT_EQ(storedAndRead(repo), repo) << milliseconds;
    }
}

TEST(RecentRepoCoding, ADateOfAnotherZoneKeepsItsInstant)
{
    const RecentRepo repo =
        openedAt(QDateTime(QDate(2024, 5, 17), QTime(14, 0), Qt::OffsetFromUTC, 7200));

    EXPECT_EQ(storedAndRead(repo), openedAt(utc(2024, 5, 17, QTime(12, 0))));
}

TEST(RecentRepoCoding, ADateFinerThanAMillisecondIsRounded)
{
    QJsonObject object = toJson(sample());
    object[u"lastOpened"_s] = 86401.2499996;

    EXPECT_EQ(recentRepoFromJson(object), sample());
}

TEST(RecentRepoCoding, ADateBeyondAllTimeFails)
{
    QJsonObject object = toJson(sample());
    const CodingError expected{Case::invalidValue, u"lastOpened"_s};

    object[u"lastOpened"_s] = 1e300;
    EXPECT_EQ(errorOf(object), expected);
    object[u"lastOpened"_s] = -1e13;
    EXPECT_EQ(errorOf(object), expected);
}

TEST(RecentRepoCoding, EachKeyIsRequired)
{
    for (const QString &key : {u"id"_s, u"name"_s, u"path"_s, u"lastOpened"_s}) {
        QJsonObject object = toJson(sample());
        object.remove(key);

        EXPECT_EQ(errorOf(object), (CodingError{Case::missingKey, key}));
    }
}

TEST(RecentRepoCoding, AValueOfAnotherTypeFails)
{
    for (const QString &key : {u"id"_s, u"name"_s, u"path"_s, u"lastOpened"_s}) {
        QJsonObject object = toJson(sample());
        object[key] = true;

        EXPECT_EQ(errorOf(object), (CodingError{Case::wrongType, key}));
    }
}

TEST(RecentRepoCoding, WhatIsNoObjectFails)
{
    EXPECT_EQ(errorOf(7), (CodingError{Case::notAnObject, QString()}));
}

} // namespace vantrel
