#include "updates/SoftwareUpdateError.h"

#include <gtest/gtest.h>

namespace vantrel::test {
namespace {

using namespace Qt::Literals::StringLiterals;

using Case = SoftwareUpdateError::Case;

QString sentence(Case kind, const QString &detail = {}, int status = 0)
{
    return SoftwareUpdateError{kind, detail, status}.description();
}

TEST(SoftwareUpdateError, HasASentenceForEachCase)
{
    EXPECT_EQ(
        sentence(Case::unreachable, u"Connection refused"_s),
        u"Couldn't reach the update server (Connection refused). Check your connection and try again."_s);
    EXPECT_EQ(sentence(Case::refused, {}, 404),
              u"The update server had nothing to give (status 404). Try again later."_s);
    EXPECT_EQ(sentence(Case::insecureRedirect),
              u"The update server led to an address that isn't https, so Vantrel didn't follow."_s);
    EXPECT_EQ(sentence(Case::tooManyRedirects),
              u"The update server led from one address to the next without an end."_s);
    EXPECT_EQ(sentence(Case::feedTooLarge),
              u"The list of updates is larger than any real one, so Vantrel stopped reading it."_s);
    EXPECT_EQ(sentence(Case::feedNotSigned),
              u"The list of updates isn't signed by the makers of Vantrel, so it was ignored."_s);
    EXPECT_EQ(sentence(Case::feedMalformed),
              u"The list of updates couldn't be read. Try again later."_s);
    EXPECT_EQ(
        sentence(Case::feedDowngraded, u"0.0.9"_s),
        u"The newest version offered is 0.0.9, which is older than yours, so nothing was downloaded."_s);
    EXPECT_EQ(sentence(Case::feedWithoutPackage),
              u"The list of updates has no package for this system."_s);
    EXPECT_EQ(sentence(Case::packageOfOtherLength),
              u"The download doesn't have the announced length, so it was deleted. Try again."_s);
    EXPECT_EQ(sentence(Case::packageNotSigned),
              u"The download isn't signed by the makers of Vantrel, so it was deleted."_s);
    EXPECT_EQ(sentence(Case::packageNotKept, u"No space left on device"_s),
              u"Couldn't save the download (No space left on device)."_s);
}

} // namespace
} // namespace vantrel::test
