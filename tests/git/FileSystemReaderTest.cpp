#include "git/FileSystemReader.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <cstring>

namespace vantrel {
namespace {

using namespace Qt::Literals::StringLiterals;

constexpr std::int64_t limit = 1000;

class FileSystemReaderTest : public testing::Test
{
protected:
    [[nodiscard]] QString path(const QString &name) const { return m_folder.filePath(name); }
    [[nodiscard]] Result<QByteArray, PlatformError> read(const QString &name) const
    {
        return FileSystemReader().read(QUrl::fromLocalFile(path(name)), limit);
    }
    void write(const QString &name, const QByteArray &content) const
    {
        QFile file(path(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    }

    QTemporaryDir m_folder{};
};

std::int64_t bytesReadByThisProcess()
{
    QFile io(u"/proc/self/io"_s);
    EXPECT_TRUE(io.open(QIODevice::ReadOnly));
    return io.readLine().trimmed().sliced(7).toLongLong(); // "rchar: N"
}

TEST_F(FileSystemReaderTest, ReadsAWholeFile)
{
    write(u"a b é.txt"_s, "one\0two\n");

    EXPECT_EQ(read(u"a b é.txt"_s).value(), QByteArray("one\0two\n"));
}

TEST_F(FileSystemReaderTest, ReadsAnEmptyFile)
{
    write(u"empty"_s, "");

    EXPECT_EQ(read(u"empty"_s).value(), QByteArray());
}

TEST_F(FileSystemReaderTest, ReadsAFileOfExactlyTheLimit)
{
    write(u"f"_s, QByteArray(limit, 'x'));

    EXPECT_EQ(read(u"f"_s).value(), QByteArray(limit, 'x'));
}

TEST_F(FileSystemReaderTest, ReadsOneByteBeyondTheLimitAndNoMore)
{
    write(u"f"_s, QByteArray(limit * 3, 'x'));

    EXPECT_EQ(read(u"f"_s).value(), QByteArray(limit + 1, 'x'));
}

TEST_F(FileSystemReaderTest, ReadsNoneOfASparseFileOfTenGigabytesBeyondTheLimit)
{
    write(u"huge"_s, "");
    ASSERT_EQ(::truncate(path(u"huge"_s).toUtf8().constData(), 10'000'000'000), 0);
    const std::int64_t before = bytesReadByThisProcess();

    const auto bytes = read(u"huge"_s);

    EXPECT_EQ(bytes.value().size(), limit + 1);
    EXPECT_LT(bytesReadByThisProcess() - before, 100'000);
}

TEST_F(FileSystemReaderTest, GivesTheTargetOfALinkAndNeverItsContent)
{
    ASSERT_EQ(::symlink("/etc/hostname", path(u"link"_s).toUtf8().constData()), 0);

    EXPECT_EQ(read(u"link"_s).value(), QByteArray("/etc/hostname"));
}

TEST_F(FileSystemReaderTest, GivesTheTargetOfALinkToNothing)
{
    ASSERT_EQ(::symlink("gone", path(u"link"_s).toUtf8().constData()), 0);

    EXPECT_EQ(read(u"link"_s).value(), QByteArray("gone"));
}

TEST_F(FileSystemReaderTest, NeverOpensAPipe)
{
    ASSERT_EQ(::mkfifo(path(u"pipe"_s).toUtf8().constData(), 0600), 0);

    EXPECT_EQ(read(u"pipe"_s).error(), PlatformError{u"Not a regular file"_s});
}

TEST_F(FileSystemReaderTest, RefusesASocket)
{
    const int descriptor = ::socket(AF_UNIX, SOCK_STREAM, 0);
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    std::strncpy(address.sun_path, path(u"s"_s).toUtf8().constData(), sizeof address.sun_path - 1);
    ASSERT_EQ(::bind(descriptor, reinterpret_cast<sockaddr *>(&address), sizeof address), 0);
    ::close(descriptor);

    EXPECT_EQ(read(u"s"_s).error(), PlatformError{u"Not a regular file"_s});
}

TEST_F(FileSystemReaderTest, RefusesAFolder)
{
    EXPECT_EQ(read(u"."_s).error(), PlatformError{u"Not a regular file"_s});
}

TEST_F(FileSystemReaderTest, FailsWithThePlatformsSentenceForAMissingFile)
{
    EXPECT_EQ(read(u"none"_s).error(), PlatformError{u"No such file or directory"_s});
}

} // namespace
} // namespace vantrel
