// Downloads to disks that are full or read-only.

#include "support/Running.h"
#include "support/SmallDisk.h"
#include "support/Spin.h"
#include "updates/PackageDownloader.h"
#include "updates/UpdatesFixture.h"

namespace vantrel::test {
namespace {

using namespace Qt::Literals::StringLiterals;

using Case = SoftwareUpdateError::Case;
using Outcome = Result<QString, SoftwareUpdateError>;

class PackageDownloaderFaults : public UpdatesTest
{
protected:
    void SetUp() override
    {
        if (!disk.isThere()) {
            GTEST_SKIP() << "this process may not make a disk of its own";
        }
    }

    [[nodiscard]] AppcastItem item() const
    {
        AppcastItem item;
        item.version = UpdateVersion{{0, 2}};
        item.packageURL = server.url(u"/vantrel.deb"_s);
        item.packageLength = package.size();
        item.packageSignature = maker.signature(package);
        return item;
    }

    [[nodiscard]] Outcome download(const AppcastItem &of)
    {
        const Running<Outcome> downloading(downloader.download(of, [](std::int64_t) {}));
        spinUntil([&] { return downloading.isOver(); });
        return downloading.value().value_or(Outcome());
    }

    SmallDisk disk{packageFolder}; ///< Before the downloader's thread is there.
    PackageDownloader downloader{session, packageFolder, maker.publicKey()};
};

TEST_F(PackageDownloaderFaults, ADiskThatFillsUpFailsInItsWordsAndKeepsNothing)
{
    answer(package);

    const Outcome outcome = download(item());

    ASSERT_FALSE(outcome) << qPrintable(*outcome);
    EXPECT_EQ(outcome.error().description(),
              u"Couldn't save the download (No space left on device)."_s);
    EXPECT_EQ(keptFiles(), QStringList());
    spinUntil([this] { return server.openConnectionCount() == 0; });
}

TEST_F(PackageDownloaderFaults, AReadOnlyDiskFailsAndKeepsWhatIsThere)
{
    disk.fill();
    disk.setReadOnly(true);
    answer(package);

    EXPECT_EQ(download(item()),
              Outcome(failure(SoftwareUpdateError{Case::packageNotKept,
                                                  u"The folder for updates can't be made"_s, 0})));
    EXPECT_EQ(keptFiles(), QStringList{u"filling"_s});
}

} // namespace
} // namespace vantrel::test
