// A program that logs, started in every way that the application is. It meets the real library of
// the journal; the journal's socket is the test's own, at its place in a mount namespace.

#include "platform_log/JournalSocket.h"
#include "support/ProcessRun.h"

#include <gtest/gtest.h>

#include <array>
#include <fcntl.h>
#include <unistd.h>

namespace vantrel::test {
namespace {

using namespace Qt::Literals::StringLiterals;

const QStringList inNamespace{u"unshare"_s, u"--user"_s, u"--map-root-user"_s, u"--mount"_s};

/// Runs "$@" where the journal's socket is that of $1, or where there is none if that is empty.
const QString withSocket = u"mount -t tmpfs none /run; mkdir -p /run/systemd/journal;"
                           " [ -z \"$1\" ] || ln -s \"$1\" /run/systemd/journal/socket;"
                           " shift; exec \"$@\""_s;

class SystemLogTest : public testing::Test
{
protected:
    void SetUp() override
    {
        if (run(inNamespace.first(), inNamespace.mid(1) + QStringList{u"true"_s}).exitCode != 0) {
            GTEST_SKIP() << "this machine lets no mount namespace be made";
        }
    }

    /// The words that run the probe with these steps and the journal.
    [[nodiscard]] QStringList withJournal(const QStringList &steps) const
    {
        return command(m_journal.path(), steps);
    }

    [[nodiscard]] static QStringList withoutJournal(const QStringList &steps)
    {
        return command(QString(), steps);
    }

    /// Runs it by a shell, whose words `how` begin and end the command "$@".
    static ProcessRun runByShell(const QString &how, const QStringList &words)
    {
        return run(u"sh"_s, QStringList{u"-c"_s, how, u"sh"_s} + words);
    }

    static ProcessRun runWords(const QStringList &words)
    {
        return run(words.first(), words.mid(1));
    }

    void expectMessages(const QList<QByteArray> &messages)
    {
        for (const QByteArray &message : messages) {
            EXPECT_EQ(m_journal.next().value_or(Fields()).value("MESSAGE"), message);
        }
        EXPECT_EQ(m_journal.next(), std::nullopt);
    }

    using Fields = JournalSocket::Fields;

    JournalSocket m_journal{};

private:
    static QStringList command(const QString &socket, const QStringList &steps)
    {
        return inNamespace + QStringList{u"sh"_s, u"-e"_s, u"-c"_s, withSocket, u"sh"_s, socket} +
               QStringList{QString::fromUtf8(LOG_PROBE)} + steps;
    }
};

TEST_F(SystemLogTest, AFileGetsALineAndTheJournalAnEntry)
{
    const ProcessRun ended = runWords(withJournal({u"info"_s, u"Größe"_s}));

    EXPECT_EQ(ended.exitCode, 0);
    EXPECT_EQ(ended.errors, "vantrel: Probe: Größe\n");
    EXPECT_EQ(ended.output, "");
    const Fields expected{
        {"MESSAGE", "Größe"},
        {"PRIORITY", "6"},
        {"SYSLOG_IDENTIFIER", "vantrel"},
        {"QT_CATEGORY", "com.orbisk.app.Probe"},
        {"VANTREL_SUBSYSTEM", "com.orbisk.app"},
        {"VANTREL_CATEGORY", "Probe"},
    };
    EXPECT_EQ(m_journal.next(), expected);
    EXPECT_EQ(m_journal.next(), std::nullopt);
}

TEST_F(SystemLogTest, APipeGetsTheLineTooAndTheJournalTheEntry)
{
    const ProcessRun ended =
        runByShell(u"\"$@\" 2>&1 >/dev/null | cat"_s, withJournal({u"info"_s, u"piped"_s}));

    EXPECT_EQ(ended.output, "vantrel: Probe: piped\n");
    expectMessages({"piped"});
}

TEST_F(SystemLogTest, WhereNobodyReadsStandardErrorTheJournalIsLeft)
{
    const ProcessRun ended =
        runByShell(u"\"$@\" 2>/dev/null"_s, withJournal({u"info"_s, u"kept"_s}));

    EXPECT_EQ(ended.exitCode, 0);
    expectMessages({"kept"});
}

TEST_F(SystemLogTest, APipeWithoutAReaderEndsNobody)
{
    std::array<int, 2> pipe{};
    ASSERT_EQ(::pipe2(pipe.data(), O_CLOEXEC), 0);
    ::close(pipe[0]);
    const QStringList toOutput{u"-c"_s, u"exec \"$@\" 2>&1"_s, u"sh"_s};

    ChildProcess probe(u"sh"_s, toOutput + withJournal({u"info"_s, u"unread"_s}),
                       QProcessEnvironment::systemEnvironment(), pipe[1]);
    ::close(pipe[1]);

    EXPECT_EQ(probe.waitForEnd().exitCode, 0);
    expectMessages({"unread"});
}

TEST_F(SystemLogTest, ATerminalGetsTheLineAndTheJournalNothing)
{
    const QString quoted = u"'"_s + withJournal({u"info"_s, u"seen"_s}).join(u"' '"_s) + u"'"_s;

    const ProcessRun ended =
        run(u"script"_s, {u"--quiet"_s, u"--return"_s, u"--command"_s, quoted, u"/dev/null"_s});

    EXPECT_EQ(ended.exitCode, 0);
    EXPECT_EQ(ended.output, "vantrel: Probe: seen\r\n");
    expectMessages({});
}

TEST_F(SystemLogTest, WhereStandardErrorIsTheJournalItGetsTheEntryOnly)
{
    const ProcessRun ended =
        runByShell(u"JOURNAL_STREAM=$(stat -L -c %d:%i /dev/fd/2) exec \"$@\""_s,
                   withJournal({u"warning"_s, u"structured"_s}));

    EXPECT_EQ(ended.errors, "");
    expectMessages({"structured"});
}

TEST_F(SystemLogTest, AStreamThatWasLeftForAnotherPlaceIsNotTheJournal)
{
    const ProcessRun ended =
        runByShell(u"JOURNAL_STREAM=$(stat -L -c %d:%i /dev/fd/1) exec \"$@\""_s,
                   withJournal({u"info"_s, u"both"_s}));

    EXPECT_EQ(ended.errors, "vantrel: Probe: both\n");
    expectMessages({"both"});
}

TEST_F(SystemLogTest, WithoutAJournalThereIsStandardError)
{
    const ProcessRun ended = runWords(withoutJournal({u"info"_s, u"alone"_s}));

    EXPECT_EQ(ended.exitCode, 0);
    EXPECT_EQ(ended.errors, "vantrel: Probe: alone\n");
}

TEST_F(SystemLogTest, TheTypeOfAMessageIsItsPriority)
{
    const ProcessRun ended = runWords(withJournal(
        {u"debug"_s, u"d"_s, u"info"_s, u"i"_s, u"warning"_s, u"w"_s, u"critical"_s, u"c"_s}));

    EXPECT_EQ(ended.exitCode, 0);
    for (const QByteArray priority : {"7", "6", "4", "3"}) {
        EXPECT_EQ(m_journal.next().value_or(Fields()).value("PRIORITY"), priority);
    }
}

TEST_F(SystemLogTest, AMessageOfAnotherHasNoCategoryOfTheApplication)
{
    const ProcessRun ended = runWords(withJournal({u"default"_s, u"plain"_s}));

    EXPECT_EQ(ended.errors, "vantrel: plain\n");
    const Fields expected{
        {"MESSAGE", "plain"},
        {"PRIORITY", "4"},
        {"SYSLOG_IDENTIFIER", "vantrel"},
        {"QT_CATEGORY", "default"},
    };
    EXPECT_EQ(m_journal.next(), expected);
}

TEST_F(SystemLogTest, AMessageForgesNoLineAndNoField)
{
    const QByteArray message = "one\\ntwo\\u{0}three\\u{1b}[31m\\u{d800}";

    const ProcessRun ended = runWords(withJournal({u"odd"_s, u"info"_s, u"x\nPRIORITY=0"_s}));

    EXPECT_EQ(ended.errors, "vantrel: Probe: " + message + "\nvantrel: Probe: x\\nPRIORITY=0\n");
    EXPECT_EQ(m_journal.next().value_or(Fields()).value("MESSAGE"), message);
    EXPECT_EQ(m_journal.next().value_or(Fields()).value("PRIORITY"), "6");
}

TEST_F(SystemLogTest, AFatalMessageIsWrittenBeforeTheProcessAborts)
{
    const ProcessRun ended = runByShell(u"\"$@\"; echo $?"_s, withJournal({u"fatal"_s, u"end"_s}));

    constexpr int aborted = 128 + 6;
    EXPECT_EQ(ended.output, QByteArray::number(aborted) + '\n');
    EXPECT_TRUE(ended.errors.startsWith("vantrel: end\n")) << ended.errors.toStdString();
    EXPECT_EQ(m_journal.next().value_or(Fields()).value("PRIORITY"), "2");
}

TEST_F(SystemLogTest, WhatWasLoggedBeforeAnExitIsWritten)
{
    const ProcessRun ended = runWords(withJournal({u"info"_s, u"last"_s, u"exit"_s}));

    EXPECT_EQ(ended.exitCode, 0);
    EXPECT_EQ(ended.errors, "vantrel: Probe: last\n");
    expectMessages({"last"});
}

TEST_F(SystemLogTest, AJournalThatReadsNothingHoldsNobodyUp)
{
    const ProcessRun ended = runWords(withJournal({u"flood"_s, u"5000"_s}));

    EXPECT_EQ(ended.exitCode, 0);
}

TEST_F(SystemLogTest, WhatAJournalCouldNotTakeInTimeIsCounted)
{
    constexpr int count = 5'000;
    std::array<int, 2> output{};
    ASSERT_EQ(::pipe2(output.data(), O_CLOEXEC), 0);
    const QStringList words = withJournal({u"flood"_s, QString::number(count), u"wait"_s});
    ChildProcess probe(words.first(), words.mid(1), QProcessEnvironment::systemEnvironment(),
                       output[1]);
    ::close(output[1]);
    char first = 0;
    ASSERT_EQ(::read(output[0], &first, 1), 1); // It has logged all of them.
    ::close(output[0]);

    int received = 0;
    int lost = 0;
    while (received + lost < count) {
        const Fields fields = m_journal.awaitNext().value_or(Fields());
        const QByteArray message = fields.value("MESSAGE");
        if (fields.value("VANTREL_CATEGORY") == "SystemLog") {
            lost += message.split(' ').first().toInt();
        } else {
            ++received;
            ASSERT_EQ(message, "message " + QByteArray::number(received + lost));
        }
    }

    EXPECT_GT(lost, 0);
    EXPECT_EQ(received + lost, count);
    probe.closeInput();
    EXPECT_EQ(probe.waitForEnd().exitCode, 0);
}

} // namespace
} // namespace vantrel::test
