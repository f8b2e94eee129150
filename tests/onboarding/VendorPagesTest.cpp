#include "onboarding/VendorPages.h"

#include <gtest/gtest.h>

#include <QString>

namespace vantrel::test {
namespace {

using namespace Qt::Literals::StringLiterals;

TEST(VendorPages, AreAllOpenedOverASecureConnection)
{
    QList<QUrl> pages{VendorPages::keys(AIProvider::openRouter),
                      VendorPages::keys(AIProvider::openAI), VendorPages::openRouterCredits()};
    for (const LocalModelServer server : allLocalModelServers) {
        pages.append(VendorPages::download(server));
    }

    for (const QUrl &page : pages) {
        EXPECT_TRUE(page.isValid());
        EXPECT_EQ(page.scheme(), u"https"_s);
        EXPECT_FALSE(page.host().isEmpty());
    }
}

TEST(VendorPages, ACustomProviderHasNone)
{
    EXPECT_EQ(VendorPages::keys(AIProvider::custom), QUrl());
}

} // namespace
} // namespace vantrel::test
