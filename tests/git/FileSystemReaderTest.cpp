#include "git/FileSystemReader.h"

#include "FileTrees.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

#include <array>
#include <sys/inotify.h>
#include <unistd.h>

namespace vantrel {
namespace {

using namespace Qt::Literals::StringLiterals;

using Reading = Result<QByteArray, PlatformError>;

Reading failed(const QString &message)
{
    return failure(PlatformError{message});
}

/// Tells whether a file was opened since it was made.
class OpenWatch
{
public:
    explicit OpenWatch(const QString &path)
        : m_descriptor(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC))
    {
        EXPECT_GE(::inotify_add_watch(m_descriptor, QFile::encodeName(path).constData(), IN_OPEN),
                  0);
    }
    OpenWatch(const OpenWatch &) = delete;
    OpenWatch &operator=(const OpenWatch &) = delete;
    ~OpenWatch() { ::close(m_descriptor); }

    [[nodiscard]] bool wasOpened() const
    {
        std::array<char, 4096> events{};
        return ::read(m_descriptor, events.data(), events.size()) > 0;
    }

private:
    int m_descriptor;
};

class FileSystemReaderTest : public testing::Test
{
protected:
    [[nodiscard]] QString path(const QString &name) const { return m_folder.filePath(name); }

    void write(const QString &name, const QByteArray &content) const
    {
        QFile file(path(name));
        ASSERT_TRUE(file.open(QFile::WriteOnly));
        ASSERT_EQ(file.write(content), content.size());
    }

    void link(const QString &name, const QByteArray &target) const
    {
        ASSERT_EQ(::symlink(target.constData(), QFile::encodeName(path(name)).constData()), 0);
    }

    [[nodiscard]] Reading read(const QString &name, std::int64_t maxBytes = 100) const
    {
        return m_reader.read(QUrl::fromLocalFile(path(name)), maxBytes);
    }

    QTemporaryDir m_folder;
    FileSystemReader m_reader;
};

TEST_F(FileSystemReaderTest, ReadsAFileToItsEnd)
{
    write(u"f"_s, QByteArray("a\0b\n", 4));

    EXPECT_EQ(read(u"f"_s), Reading(QByteArray("a\0b\n", 4)));
}

TEST_F(FileSystemReaderTest, ReadsAnEmptyFile)
{
    write(u"f"_s, {});

    EXPECT_EQ(read(u"f"_s), Reading(QByteArray()));
}

TEST_F(FileSystemReaderTest, ReadsAFileOfExactlyTheLimit)
{
    write(u"f"_s, QByteArray(100, 'a'));

    EXPECT_EQ(read(u"f"_s), Reading(QByteArray(100, 'a')));
}

TEST_F(FileSystemReaderTest, ReadsOneByteBeyondTheLimitAndNoMore)
{
    write(u"one more"_s, QByteArray(101, 'a'));
    write(u"many more"_s, QByteArray(1000, 'a'));

    EXPECT_EQ(read(u"one more"_s), Reading(QByteArray(101, 'a')));
    EXPECT_EQ(read(u"many more"_s), Reading(QByteArray(101, 'a')));
}

TEST_F(FileSystemReaderTest, ALimitOfZeroReadsOneByte)
{
    write(u"f"_s, "ab");

    EXPECT_EQ(read(u"f"_s, 0), Reading(QByteArray("a")));
}

TEST_F(FileSystemReaderTest, ReadsAFileThatIsLongerThanItSays)
{
    const Reading reading =
        m_reader.read(QUrl::fromLocalFile(u"/proc/sys/kernel/ostype"_s), 2'000'000);

    EXPECT_EQ(reading, Reading(QByteArray("Linux\n")));
}

TEST_F(FileSystemReaderTest, ReadsNoMoreThanTheLimitOfAFileThatIsLongerThanItSays)
{
    const Reading reading = m_reader.read(QUrl::fromLocalFile(u"/proc/sys/kernel/ostype"_s), 2);

    EXPECT_EQ(reading, Reading(QByteArray("Lin")));
}

TEST_F(FileSystemReaderTest, ReadsLittleOfAHugeFile)
{
    test::makeSparseFile(path(u"f"_s), 10'000'000'000);
    const std::int64_t before = test::bytesReadSoFar();

    const Reading reading = read(u"f"_s, 2'000'000);

    EXPECT_LT(test::bytesReadSoFar() - before, 2'100'000);
    EXPECT_EQ(reading, Reading(QByteArray(2'000'001, '\0')));
}

TEST_F(FileSystemReaderTest, ANameIsNoPieceOfAnAddress)
{
    write(u"100%41 #?&\\:\n\".txt"_s, "x");

    EXPECT_EQ(read(u"100%41 #?&\\:\n\".txt"_s), Reading(QByteArray("x")));
}

TEST_F(FileSystemReaderTest, ALinkIsItsTargetsText)
{
    write(u"secret"_s, "content");
    link(u"link"_s, "secret");

    EXPECT_EQ(read(u"link"_s), Reading(QByteArray("secret")));
}

TEST_F(FileSystemReaderTest, ALinkThatLeadsNowhereIsItsTargetsText)
{
    link(u"link"_s, "../nowhere/\xc3\xa9");

    EXPECT_EQ(read(u"link"_s), Reading(QByteArray("../nowhere/\xc3\xa9")));
}

TEST_F(FileSystemReaderTest, ALinksTextEndsOneByteBeyondTheLimitToo)
{
    link(u"link"_s, "123456");

    EXPECT_EQ(read(u"link"_s, 4), Reading(QByteArray("12345")));
}

TEST_F(FileSystemReaderTest, AMissingFileFailsWithTheSystemsSentence)
{
    EXPECT_EQ(read(u"f"_s), failed(u"No such file or directory"_s));
}

TEST_F(FileSystemReaderTest, AFolderFails)
{
    EXPECT_EQ(read({}), failed(u"Not a regular file"_s));
}

TEST_F(FileSystemReaderTest, APipeFailsUnopened)
{
    test::makePipe(path(u"pipe"_s));
    const OpenWatch watch(path(u"pipe"_s));

    EXPECT_EQ(read(u"pipe"_s), failed(u"Not a regular file"_s));
    EXPECT_FALSE(watch.wasOpened());
}

TEST_F(FileSystemReaderTest, ASocketFails)
{
    test::makeSocket(path(u"socket"_s));

    EXPECT_EQ(read(u"socket"_s), failed(u"Not a regular file"_s));
}

TEST_F(FileSystemReaderTest, ADeviceFailsUnopened)
{
    const OpenWatch watch(u"/dev/full"_s);

    const Reading reading = m_reader.read(QUrl::fromLocalFile(u"/dev/full"_s), 100);

    EXPECT_EQ(reading, failed(u"Not a regular file"_s));
    EXPECT_FALSE(watch.wasOpened());
}

} // namespace
} // namespace vantrel
