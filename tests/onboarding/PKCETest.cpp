#include "onboarding/PKCE.h"

#include <gtest/gtest.h>

#include <QRegularExpression>
#include <QSet>

namespace vantrel {
namespace {

using namespace Qt::Literals::StringLiterals;

TEST(PKCE, HasTheChallengeOfThePublishedExample)
{
    const PKCE pair = pkceOf(u"dBjftJeZ4CVP-mB92K27uhbUJU1p1r_wW1gFWFOEjXk"_s);

    EXPECT_EQ(pair.verifier, u"dBjftJeZ4CVP-mB92K27uhbUJU1p1r_wW1gFWFOEjXk"_s);
    EXPECT_EQ(pair.challenge, u"E9Melhoa2OwvFrEMTJguCHaoeK1t8URWbuGJSstw-cM"_s);
}

TEST(PKCE, ConsistsOfFortyThreeCharactersThatNeedNoEncoding)
{
    const QRegularExpression allowed(u"\\A[A-Za-z0-9_-]{43}\\z"_s);
    for (int round = 0; round < 200; ++round) {
        const PKCE pair = generatePKCE();

        EXPECT_TRUE(allowed.match(pair.verifier).hasMatch()) << qPrintable(pair.verifier);
        EXPECT_TRUE(allowed.match(pair.challenge).hasMatch()) << qPrintable(pair.challenge);
    }
}

TEST(PKCE, BelongsTogether)
{
    const PKCE pair = generatePKCE();

    EXPECT_EQ(pair, pkceOf(pair.verifier));
}

TEST(PKCE, IsAnotherOneEachTime)
{
    QSet<QString> verifiers;
    for (int round = 0; round < 100; ++round) {
        verifiers.insert(generatePKCE().verifier);
    }

    EXPECT_EQ(verifiers.size(), 100);
}

} // namespace
} // namespace vantrel
