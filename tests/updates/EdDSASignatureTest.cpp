#include "updates/EdDSASignature.h"

#include <gtest/gtest.h>

namespace vantrel::test {
namespace {

// The second test of RFC 8032, section 7.1.
const QByteArray publicKey =
    QByteArray::fromHex("3d4017c3e843895a92b70aa74d1b7ebc9c982ccf2ec4968cc0cd55f12af4660c");
const QByteArray message = QByteArray::fromHex("72");
const QByteArray signature =
    QByteArray::fromHex("92a009a9f0d4cab8720e820b5f642540a2b27b5416503f8fb3762223ebdb69da"
                        "085ac1e43e15996e458f3613d0f11d8c387b2eaeb4302aeeb00d291612bb0c00");

TEST(EdDSASignature, OfTheStandardHolds)
{
    EXPECT_TRUE(isSignedWithEd25519(publicKey, signature, message));
}

TEST(EdDSASignature, OfAnEmptyMessageHolds)
{
    // The first test of the same section.
    const QByteArray key =
        QByteArray::fromHex("d75a980182b10ab7d54bfed3c964073a0ee172f3daa62325af021a68f707511a");
    const QByteArray ofNothing =
        QByteArray::fromHex("e5564300c360ac729086e2cc806e828a84877f1eb8e5d974d873e06522490155"
                            "5fb8821590a33bacc61e39701cf9b46bd25bf5f0595bbe24655141438e7a100b");

    EXPECT_TRUE(isSignedWithEd25519(key, ofNothing, QByteArrayView()));
}

TEST(EdDSASignature, HoldsForNoOtherMessage)
{
    EXPECT_FALSE(isSignedWithEd25519(publicKey, signature, QByteArrayView("s")));
    EXPECT_FALSE(isSignedWithEd25519(publicKey, signature, QByteArrayView()));
}

TEST(EdDSASignature, HoldsWithNoBitChanged)
{
    for (const qsizetype place : {0, 31, 32, 63}) {
        QByteArray changed = signature;
        changed[place] = char(changed.at(place) ^ 1);

        EXPECT_FALSE(isSignedWithEd25519(publicKey, changed, message)) << place;
    }
}

TEST(EdDSASignature, HoldsForNoOtherKey)
{
    QByteArray otherKey = publicKey;
    otherKey[0] = char(otherKey.at(0) ^ 1);

    EXPECT_FALSE(isSignedWithEd25519(otherKey, signature, message));
}

TEST(EdDSASignature, OfAWrongLengthIsNone)
{
    EXPECT_FALSE(isSignedWithEd25519(publicKey, signature.chopped(1), message));
    EXPECT_FALSE(isSignedWithEd25519(publicKey, signature + '\0', message));
    EXPECT_FALSE(isSignedWithEd25519(publicKey, {}, message));
    EXPECT_FALSE(isSignedWithEd25519(publicKey.chopped(1), signature, message));
    EXPECT_FALSE(isSignedWithEd25519({}, signature, message));
}

} // namespace
} // namespace vantrel::test
