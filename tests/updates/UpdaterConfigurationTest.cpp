#include "updates/UpdaterConfiguration.h"

#include <gtest/gtest.h>

namespace vantrel {

void PrintTo(UpdaterConfigurationProblem problem, std::ostream *out)
{
    *out << description(problem).toStdString();
}

namespace test {
namespace {

using namespace Qt::Literals::StringLiterals;
using Problem = UpdaterConfigurationProblem;

const QString feed = u"https://updates.test/appcast.xml"_s;
const QByteArray keyBytes(32, 'k');
const QString key = QString::fromLatin1(keyBytes.toBase64());

QJsonObject bundle(const QJsonValue &feedURL, const QJsonValue &publicKey)
{
    QJsonObject information{{u"CFBundleName"_s, u"Vantrel"_s}};
    if (!feedURL.isUndefined()) {
        information.insert(u"SUFeedURL"_s, feedURL);
    }
    if (!publicKey.isUndefined()) {
        information.insert(u"SUPublicEDKey"_s, publicKey);
    }
    return information;
}

const QJsonValue absent = QJsonValue::Undefined;

Problem problemOf(const QJsonObject &information)
{
    const auto validated = UpdaterConfiguration::validated(information);
    EXPECT_FALSE(validated);
    return validated ? Problem::missingFeedURL : validated.error();
}

TEST(UpdaterConfigurationProblem, HasASentenceForEachCase)
{
    EXPECT_EQ(description(Problem::missingFeedURL), u"SUFeedURL is missing from Info.plist"_s);
    EXPECT_EQ(description(Problem::feedURLNotHTTPS), u"SUFeedURL is not an https URL"_s);
    EXPECT_EQ(description(Problem::missingPublicKey),
              u"SUPublicEDKey is missing from Info.plist"_s);
    EXPECT_EQ(
        description(Problem::placeholderPublicKey),
        u"SUPublicEDKey is still the placeholder; paste the key from Sparkle's generate_keys into project.yml"_s);
    EXPECT_EQ(description(Problem::malformedPublicKey),
              u"SUPublicEDKey is not a base64-encoded 32-byte EdDSA public key"_s);
}

TEST(UpdaterConfiguration, OfBothKeysIsValid)
{
    const auto validated = UpdaterConfiguration::validated(bundle(feed, key));

    EXPECT_EQ(validated, (UpdaterConfiguration{QUrl(feed), keyBytes}));
}

TEST(UpdaterConfiguration, IsTrimmed)
{
    const auto validated = UpdaterConfiguration::validated(
        bundle(u" \n"_s + feed + u"\t\n"_s, u"\n "_s + key + u"\r\n"_s));

    EXPECT_EQ(validated, (UpdaterConfiguration{QUrl(feed), keyBytes}));
}

TEST(UpdaterConfiguration, AcceptsASchemeInCapitals)
{
    EXPECT_TRUE(
        UpdaterConfiguration::validated(bundle(u"HTTPS://updates.test/appcast.xml"_s, key)));
}

TEST(UpdaterConfiguration, WithoutAFeedURLIsMissingIt)
{
    EXPECT_EQ(problemOf(bundle(absent, key)), Problem::missingFeedURL);
    EXPECT_EQ(problemOf(bundle(u""_s, key)), Problem::missingFeedURL);
    EXPECT_EQ(problemOf(bundle(u" \n\t"_s, key)), Problem::missingFeedURL);
    EXPECT_EQ(problemOf(bundle(7, key)), Problem::missingFeedURL);
    EXPECT_EQ(problemOf(bundle(QJsonValue::Null, key)), Problem::missingFeedURL);
}

TEST(UpdaterConfiguration, RefusesAFeedURLThatIsNotHttps)
{
    EXPECT_EQ(problemOf(bundle(u"http://updates.test/appcast.xml"_s, key)),
              Problem::feedURLNotHTTPS);
    EXPECT_EQ(problemOf(bundle(u"file:///appcast.xml"_s, key)), Problem::feedURLNotHTTPS);
    EXPECT_EQ(problemOf(bundle(u"updates.test/appcast.xml"_s, key)), Problem::feedURLNotHTTPS);
    EXPECT_EQ(problemOf(bundle(u"httpsx://updates.test"_s, key)), Problem::feedURLNotHTTPS);
}

TEST(UpdaterConfiguration, TakesATextThatFormsNoUrlForOneThatIsNotHttps)
{
    EXPECT_EQ(problemOf(bundle(u"https://updates test/appcast.xml"_s, key)),
              Problem::feedURLNotHTTPS);
    EXPECT_EQ(problemOf(bundle(u"https://[1::"_s, key)), Problem::feedURLNotHTTPS);
}

TEST(UpdaterConfiguration, WithoutAPublicKeyIsMissingIt)
{
    EXPECT_EQ(problemOf(bundle(feed, absent)), Problem::missingPublicKey);
    EXPECT_EQ(problemOf(bundle(feed, u""_s)), Problem::missingPublicKey);
    EXPECT_EQ(problemOf(bundle(feed, true)), Problem::missingPublicKey);
}

TEST(UpdaterConfiguration, TakesAKeyOfOnlySpacesForAMissingOne)
{
    EXPECT_EQ(problemOf(bundle(feed, u"   "_s)), Problem::missingPublicKey);
}

TEST(UpdaterConfiguration, RefusesThePlaceholder)
{
    EXPECT_EQ(problemOf(bundle(feed, u"REPLACE_WITH_SPARKLE_PUBLIC_ED_KEY"_s)),
              Problem::placeholderPublicKey);
    EXPECT_EQ(problemOf(bundle(feed, u" REPLACE_WITH_SPARKLE_PUBLIC_ED_KEY\n"_s)),
              Problem::placeholderPublicKey);
}

TEST(UpdaterConfiguration, TakesAnotherSpellingOfThePlaceholderForAMalformedKey)
{
    EXPECT_EQ(problemOf(bundle(feed, u"replace_with_sparkle_public_ed_key"_s)),
              Problem::malformedPublicKey);
}

TEST(UpdaterConfiguration, RefusesAKeyOfAnotherLength)
{
    const auto keyOf = [](qsizetype length) {
        return QString::fromLatin1(QByteArray(length, 'k').toBase64());
    };

    EXPECT_EQ(problemOf(bundle(feed, keyOf(31))), Problem::malformedPublicKey);
    EXPECT_EQ(problemOf(bundle(feed, keyOf(33))), Problem::malformedPublicKey);
    EXPECT_EQ(keyOf(32).size(), 44);
    EXPECT_TRUE(UpdaterConfiguration::validated(bundle(feed, keyOf(32))));
}

TEST(UpdaterConfiguration, RefusesAKeyThatIsNotStrictBase64)
{
    const QString withSpace = key.first(20) + u' ' + key.sliced(20);
    const QString withLineFeed = key.first(20) + u'\n' + key.sliced(20);
    const QString ofTheUrlAlphabet =
        QString::fromLatin1(QByteArray(32, '\xff').toBase64(QByteArray::Base64UrlEncoding));
    const QString withoutPadding = key.first(43);
    const QString withAnotherLetter = u"é"_s + key.sliced(1);

    for (const QString &malformed : {withSpace, withLineFeed, ofTheUrlAlphabet, withoutPadding,
                                     withAnotherLetter, u"!"_s + key.sliced(1), key + u"===="_s}) {
        EXPECT_EQ(problemOf(bundle(feed, malformed)), Problem::malformedPublicKey)
            << qPrintable(malformed);
    }
}

TEST(UpdaterConfiguration, WithoutBothIsMissingItsFeedURL)
{
    EXPECT_EQ(problemOf(QJsonObject()), Problem::missingFeedURL);
}

} // namespace
} // namespace test
} // namespace vantrel
