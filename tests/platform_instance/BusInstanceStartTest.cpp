// Starts beside a running application, none, several at once, and one that does not behave.

#include "platform/instance/linux/BusInstance.h"
#include "platform_instance/NameOwner.h"
#include "support/ProcessRun.h"
#include "support/Spin.h"

#include <gtest/gtest.h>

#include <QDBusConnectionInterface>
#include <QFile>
#include <QMap>
#include <QSocketNotifier>
#include <QTemporaryDir>

#include <algorithm>
#include <array>
#include <fcntl.h>
#include <memory>
#include <unistd.h>
#include <vector>

namespace vantrel::test {
namespace {

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

using Start = ApplicationInstance::Start;

constexpr auto longLimit = 60s;
const QString patient = u"60000"_s;
const QString impatient = u"50"_s;

/// Starts of the probe, whose lines are read as they come.
class Probes
{
public:
    Probes() { EXPECT_EQ(::pipe2(m_output.data(), O_CLOEXEC), 0); }
    Probes(const Probes &) = delete;
    Probes &operator=(const Probes &) = delete;
    ~Probes()
    {
        ::close(m_output[0]);
        ::close(m_output[1]);
    }

    void start(const QStringList &arguments,
               const QProcessEnvironment &environment = QProcessEnvironment::systemEnvironment())
    {
        m_processes.push_back(std::make_unique<ChildProcess>(QString::fromUtf8(INSTANCE_PROBE),
                                                             arguments, environment, m_output[1]));
    }

    /// The next line that one of them prints.
    [[nodiscard]] QByteArray nextLine() const
    {
        QByteArray line;
        char character = 0;
        while (::read(m_output[0], &character, 1) == 1 && character != '\n') {
            line.append(character);
        }
        return line;
    }

    /// The same, while the event loop of this process runs.
    [[nodiscard]] QByteArray awaitLine() const
    {
        QByteArray line;
        QSocketNotifier coming(m_output[0], QSocketNotifier::Read);
        QObject::connect(&coming, &QSocketNotifier::activated, [&] { line = nextLine(); });
        spinUntil([&] { return !line.isEmpty(); });
        return line;
    }

    /// Ends those that run; all must end well.
    void end()
    {
        for (const auto &process : m_processes) {
            process->closeInput();
            EXPECT_EQ(process->waitForEnd().exitCode, 0);
        }
    }

private:
    std::array<int, 2> m_output{};
    std::vector<std::unique_ptr<ChildProcess>> m_processes{};
};

QString ownerOfName()
{
    return QDBusConnection::sessionBus().interface()->serviceOwner(u"com.orbisk.app"_s);
}

TEST(BusInstanceStart, TheFirstOwnsTheName)
{
    BusInstance instance(longLimit);

    EXPECT_EQ(instance.start({}), Start::first);

    EXPECT_EQ(ownerOfName(), QDBusConnection::sessionBus().baseService());
    QDBusConnection::sessionBus().unregisterService(u"com.orbisk.app"_s);
}

TEST(BusInstanceStart, ASecondHandsItsRequestOver)
{
    const QString folder = u"/tmp/a b%20c#d?e;f\nGröße"_s;
    Probes probes;
    probes.start({patient});
    EXPECT_EQ(probes.nextLine(), "first");

    probes.start({patient, folder});

    QByteArrayList lines{probes.nextLine(), probes.nextLine()};
    std::sort(lines.begin(), lines.end());
    EXPECT_EQ(lines, (QByteArrayList{"handed over",
                                     "request " + QUrl::fromLocalFile(folder).toEncoded()}));
    probes.end();
}

TEST(BusInstanceStart, ASecondWithoutAFolderAsksForTheWindow)
{
    Probes probes;
    probes.start({patient});
    EXPECT_EQ(probes.nextLine(), "first");

    probes.start({patient});

    QByteArrayList lines{probes.nextLine(), probes.nextLine()};
    std::sort(lines.begin(), lines.end());
    EXPECT_EQ(lines, (QByteArrayList{"handed over", "request "}));
    probes.end();
}

TEST(BusInstanceStart, OfManyAtOnceOneIsTheFirst)
{
    constexpr int count = 8;
    Probes probes;
    for (int i = 0; i < count; ++i) {
        probes.start({patient, u"/%1"_s.arg(i)});
    }

    QMap<QByteArray, int> lines;
    for (int i = 0; i < 2 * count - 1; ++i) {
        ++lines[probes.nextLine().split(' ').first()];
    }

    const QMap<QByteArray, int> expected{
        {"first", 1}, {"handed", count - 1}, {"request", count - 1}};
    EXPECT_EQ(lines, expected);
    probes.end();
}

TEST(BusInstanceStart, TheOneAfterTheFirstHasEndedIsTheFirst)
{
    Probes former;
    former.start({patient});
    EXPECT_EQ(former.nextLine(), "first");
    former.end();

    Probes probes;
    probes.start({patient});

    EXPECT_EQ(probes.nextLine(), "first");
    probes.end();
}

TEST(BusInstanceStart, WhoWaitsForOneThatDiesBecomesTheFirst)
{
    NameOwner dying(u"dying"_s, NameOwner::Manner::stayQuiet);
    dying.onRequest = [&dying] { dying.leave(); };
    Probes probes;

    probes.start({patient, u"/folder"_s});

    EXPECT_EQ(probes.awaitLine(), "first");
    EXPECT_EQ(dying.asked(), QStringList{u"file:///folder"_s});
    probes.end();
}

TEST(BusInstanceStart, WhoWaitsForOneThatDiesTurnsToTheNext)
{
    NameOwner dying(u"dying"_s, NameOwner::Manner::stayQuiet);
    NameOwner next(u"next"_s, NameOwner::Manner::answer);
    dying.onRequest = [&dying] { dying.leave(); };
    Probes probes;

    probes.start({patient, u"/folder"_s});

    EXPECT_EQ(probes.awaitLine(), "handed over");
    EXPECT_EQ(next.asked(), QStringList{u"file:///folder"_s});
    probes.end();
}

TEST(BusInstanceStart, OneThatStaysQuietIsGivenUp)
{
    const NameOwner quiet(u"quiet"_s, NameOwner::Manner::stayQuiet);
    Probes probes;

    probes.start({impatient, u"/folder"_s});

    EXPECT_EQ(probes.awaitLine(), "unanswered");
    probes.end();
}

TEST(BusInstanceStart, OneThatRefusesIsGivenUp)
{
    const NameOwner refusing(u"refusing"_s, NameOwner::Manner::refuse);
    Probes probes;

    probes.start({patient, u"/folder"_s});

    EXPECT_EQ(probes.awaitLine(), "unanswered");
    probes.end();
}

TEST(BusInstanceStart, WithoutABusEveryStartIsTheFirst)
{
    for (const QString &address : {u"disabled:"_s, u"unix:path=/nowhere"_s, u"nonsense"_s}) {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"DBUS_SESSION_BUS_ADDRESS"_s, address);

        const ProcessRun ended =
            run(QString::fromUtf8(INSTANCE_PROBE), {patient, u"/folder"_s}, {}, environment);

        EXPECT_EQ(ended.output, "first\n") << address.toStdString();
        EXPECT_EQ(ended.errors, "") << address.toStdString();
        EXPECT_EQ(ended.exitCode, 0) << address.toStdString();
    }
}

TEST(BusInstanceStart, OnABusThatRefusesTheNameEveryStartIsTheFirst)
{
    const QTemporaryDir folder;
    QFile config(folder.filePath(u"bus.conf"_s));
    ASSERT_TRUE(config.open(QIODevice::WriteOnly));
    config.write("<busconfig><type>session</type><listen>unix:dir=" + folder.path().toUtf8() +
                 "</listen><auth>EXTERNAL</auth>"
                 "<policy context=\"default\"><allow send_destination=\"*\"/>"
                 "<allow receive_sender=\"*\"/></policy></busconfig>");
    config.close();

    const ProcessRun ended =
        run(u"dbus-run-session"_s, {u"--config-file="_s + config.fileName(), u"--"_s,
                                    QString::fromUtf8(INSTANCE_PROBE), patient});

    EXPECT_EQ(ended.output, "first\n");
    EXPECT_EQ(ended.exitCode, 0);
}

} // namespace
} // namespace vantrel::test
