#include "platform/watchdog/linux/InterfaceWatchdog.h"
#include "platform/watchdog/linux/ThreadStack.h"
#include "support/Spin.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>
#include <QTimer>

#include <array>
#include <csignal>
#include <fcntl.h>
#include <poll.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace vantrel::test {
namespace {

using namespace Qt::Literals::StringLiterals;

/// What a watchdog writes, read as it comes.
class InterfaceWatchdogTest : public testing::Test
{
protected:
    InterfaceWatchdogTest() { EXPECT_EQ(::pipe2(m_pipe.data(), O_CLOEXEC), 0); }

    ~InterfaceWatchdogTest() override
    {
        ::close(m_pipe[0]);
        ::close(m_pipe[1]);
    }

    [[nodiscard]] QString file() const { return u"/proc/self/fd/%1"_s.arg(m_pipe[1]); }

    /// Blocks until a line that begins like this has come, and gives it; those before it are kept
    /// in `lines`.
    QByteArray readTo(const QByteArray &beginning)
    {
        QByteArray line;
        do {
            line.clear();
            char character = 0;
            while (::read(m_pipe[0], &character, 1) == 1 && character != '\n') {
                line.append(character);
            }
            lines.append(line);
        } while (!line.startsWith(beginning));
        return line;
    }

    [[nodiscard]] bool hasCome() const
    {
        pollfd end{m_pipe[0], POLLIN, 0};
        return ::poll(&end, 1, 0) == 1;
    }

    /// Runs `work` on this thread, between two events.
    static void runAsEvent(const std::function<void()> &work)
    {
        bool isDone = false;
        QTimer::singleShot(0, [&] {
            work();
            isDone = true;
        });
        spinUntil([&] { return isDone; });
    }

    QByteArrayList lines{};

private:
    std::array<int, 2> m_pipe{};
};

struct Stretch
{
    qint64 wall = 0;
    qint64 processor = 0;
    qint64 queued = 0;
};

Stretch stretchIn(const QByteArray &line)
{
    const QByteArrayList words = line.split(' ');
    EXPECT_EQ(words.size(), 4) << line.toStdString();
    return {words.value(1).toLongLong(), words.value(2).toLongLong(), words.value(3).toLongLong()};
}

TEST_F(InterfaceWatchdogTest, NotesWhereAThreadWaitsAndThatItDidNotRun)
{
#ifdef __SANITIZE_THREAD__
    GTEST_SKIP() << "the sanitizer keeps signals until the thread that waits goes on";
#endif
    const InterfaceWatchdog watchdog(file());
    std::array<int, 2> wait{};
    ASSERT_EQ(::pipe2(wait.data(), O_CLOEXEC), 0);
    std::thread reader([&] {
        readTo("begun");
        lines.clear();
        while (!readTo("/").contains("__libc_start_main")) {
        }
        ::close(wait[1]);
    });

    runAsEvent([&] {
        char ignored = 0;
        EXPECT_EQ(::read(wait[0], &ignored, 1), 0);
    });
    reader.join();
    runAsEvent([] {}); // Behind the event that was waited for.
    const Stretch stretch = stretchIn(readTo("stretch"));

    EXPECT_TRUE(lines.join('\n').contains("/libc.so.6(read+")) << lines.join('\n').toStdString();
    EXPECT_GT(stretch.wall, 100'000);
    EXPECT_LT(stretch.processor, stretch.wall);
    ::close(wait[0]);
}

TEST_F(InterfaceWatchdogTest, NotesHowLongAThreadComputed)
{
    const InterfaceWatchdog watchdog(file());
    const pid_t thread = ::gettid();
    const auto begun = timesOfThread(thread);

    runAsEvent([&] {
        while (timesOfThread(thread).processor - begun.processor < std::chrono::milliseconds(300)) {
        }
    });
    runAsEvent([] {});
    const Stretch stretch = stretchIn(readTo("stretch"));

    EXPECT_GT(stretch.processor, 100'000);
    EXPECT_GT(stretch.wall, 100'000);
}

TEST_F(InterfaceWatchdogTest, NotesTheHeapAsItGrows)
{
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    GTEST_SKIP() << "a sanitizer has an allocator of its own";
#endif
    constexpr qint64 size = qint64(64) * 1024 * 1024;
    const InterfaceWatchdog watchdog(file());
    const qint64 before = readTo("heap ").sliced(5).toLongLong();

    const QByteArray held(size, 'x');
    qint64 after = before;
    spinUntil([&] {
        // Only what has come: a thread that waits for a line takes no event.
        after = hasCome() ? readTo("heap ").sliced(5).toLongLong() : before;
        return after > before + size / 2;
    });

    EXPECT_LT(after, before + 2 * held.size());
}

TEST_F(InterfaceWatchdogTest, NotesTheStackOfACrashAndLetsItBe)
{
    const pid_t child = ::fork();
    if (child == 0) {
        writeStackAtCrash(::open(file().toUtf8().constData(), O_WRONLY));
        std::raise(SIGSEGV);
    }
    int status = 0;
    ::waitpid(child, &status, 0);

    EXPECT_TRUE(WIFSIGNALED(status));
    EXPECT_EQ(WTERMSIG(status), SIGSEGV);
    EXPECT_EQ(readTo("crash"), "crash 11");
    while (hasCome()) {
        readTo({});
    }
    EXPECT_TRUE(lines.join('\n').contains("vantrel_platform_tests("))
        << lines.join('\n').toStdString();
}

} // namespace
} // namespace vantrel::test
