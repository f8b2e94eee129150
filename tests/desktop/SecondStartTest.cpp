// The application is started where one runs already.

#include "DesktopFixture.h"
#include "Keyboard.h"
#include "StartupMessages.h"
#include "platform/UserDefaults.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDir>

#include <algorithm>

namespace vantrel::test {
namespace {

using namespace Qt::Literals::StringLiterals;

const Sought setupSheet = named(u"dialog"_s, u"Set Up AI"_s);
const Sought keychainAlert = named(u"dialog"_s, u"Vantrel Needs Keychain Access"_s);
const Sought listOfChanges = named(u"heading"_s, u"Working changes"_s);

Sought active(const QString &frame)
{
    return {u"the active window \""_s + frame + u'"', [=](const ShownItem &item) {
                return item.role == u"frame"_s && item.name == frame && item.isActive();
            }};
}

Sought title(const QString &words)
{
    return named(u"title bar"_s, words);
}

class SecondStart : public DesktopFixture
{
protected:
    void SetUp() override
    {
        // No trial's, so the applications are those of the session.
        m_environment.insert(u"VANTREL_KEYCHAIN_SERVICE"_s, QString());
        QDir(folder()).mkpath(u"elsewhere/second"_s);
        m_repository = makeDemoRepository(folder() + u"/elsewhere"_s);
    }

    void startWithProvider(const QStringList &arguments)
    {
        writePreferences(m_provider.baseURL());
        start(arguments, m_environment);
    }

    /// Starts it again, with preferences where nothing may be, in the folder of the repository.
    ProcessRun startAgain(const QStringList &arguments)
    {
        QProcessEnvironment environment = onDisplay(m_environment);
        environment.insert(u"XDG_CONFIG_HOME"_s, untouched());
        return run(u"env"_s,
                   QStringList{u"-C"_s, folder() + u"/elsewhere"_s, QString::fromUtf8(VANTREL)} +
                       arguments,
                   {}, environment);
    }

    static void expectHandedOver(const ProcessRun &second)
    {
        EXPECT_EQ(second.exitCode, 0);
        EXPECT_EQ(second.output, "");
        EXPECT_EQ(second.errors, "");
    }

    QString makeSecondRepository() const
    {
        const QString made = makeDemoRepository(folder());
        const QString repository = folder() + u"/second-api"_s;
        EXPECT_TRUE(QDir().rename(made, repository));
        return repository;
    }

    [[nodiscard]] QString untouched() const { return folder() + u"/untouched"_s; }
    [[nodiscard]] QString repository() const { return m_repository; }

    SampleProvider m_provider{};
    QProcessEnvironment m_environment = QProcessEnvironment::systemEnvironment();

private:
    QString m_repository{};
};

TEST_F(SecondStart, OpensItsFolderInTheWindowThatIsThere)
{
    startWithProvider({});
    await({named(u"push button"_s, u"Choose Folder…"_s)});

    expectHandedOver(startAgain({u"ledger-api"_s}));

    const QList<ShownItem> shown = await({listOfChanges, named(u"label"_s, u"13 files"_s)});
    const auto isFrame = [](const ShownItem &item) { return item.role == u"frame"_s; };
    EXPECT_EQ(std::count_if(shown.cbegin(), shown.cend(), isFrame), 1);
    EXPECT_FALSE(QDir(untouched()).exists());
}

TEST_F(SecondStart, BringsTheWindowToTheFront)
{
    startWithProvider({repository()});
    await({active(u"Reviewer"_s)});
    pressKey(u"F1"_s);
    activateWindow(u"Keyboard Shortcuts"_s);
    // Without a window manager, Qt gets the focus back as of the last key only.
    pressKey(u"End"_s);
    await({active(u"Keyboard Shortcuts"_s),
           named(u"list item"_s, u"Left, Right: Scroll the code sideways"_s)});

    expectHandedOver(startAgain({}));

    await({active(u"Reviewer"_s), listOfChanges});
}

TEST_F(SecondStart, TellsWindowManagerAndLauncherOfTheClick)
{
    startWithProvider({});
    StartupMessages messages;
    m_environment.insert(u"DESKTOP_STARTUP_ID"_s, u"panel-\"1\"-machine_TIME123456"_s);

    expectHandedOver(startAgain({}));

    awaitThat(u"the end of the start"_s, [&messages] {
        messages.read();
        return !messages.texts().isEmpty();
    });
    EXPECT_EQ(messages.texts(),
              QList<QByteArray>{R"(remove: ID="panel-\"1\"-machine_TIME123456")"});
    EXPECT_TRUE(messages.times().contains(123'456));
}

TEST_F(SecondStart, WithoutAClickAsksForTheFrontAsOfNow)
{
    startWithProvider({});
    StartupMessages messages;

    expectHandedOver(startAgain({}));
    expectHandedOver(startAgain({}));

    awaitThat(u"two questions for the front"_s, [&messages] {
        messages.read();
        return messages.times().size() == 2;
    });
    EXPECT_GT(messages.times().first(), 0U);
    EXPECT_GT(messages.times().last(), messages.times().first());
    EXPECT_EQ(messages.texts(), QList<QByteArray>());
}

TEST_F(SecondStart, TakesThePlaceOfTheRepositoryThatIsOpen)
{
    startWithProvider({repository()});
    press(beginning(u"list item"_s, u"src/auth/token_store.cpp, "_s));
    await({named(u"label"_s, u"Change 1 of 3"_s)});

    expectHandedOver(startAgain({makeSecondRepository()}));

    await({listOfChanges, title(u"Reviewer, second-api, feature/token-refresh"_s)});
}

TEST_F(SecondStart, OfAFolderWithoutARepositoryLeavesTheScreenAndSaysSo)
{
    startWithProvider({repository()});
    await({listOfChanges});

    expectHandedOver(startAgain({u"second"_s}));

    await({listOfChanges,
           named(u"alert message"_s, u"That folder doesn't contain a .git directory."_s)});
}

TEST_F(SecondStart, OpensItsFolderAfterTheSetup)
{
    start({}, m_environment);
    await({setupSheet});

    expectHandedOver(startAgain({u"ledger-api"_s}));

    await({setupSheet, title(u"Reviewer"_s)});
    press(named(u"push button"_s, u"Not Now"_s));
    await({listOfChanges, title(u"Reviewer, ledger-api, feature/token-refresh"_s)});
}

TEST_F(SecondStart, OpensItsFolderAfterAnAlert)
{
    writePreferences(m_provider.baseURL());
    ASSERT_TRUE(UserDefaults(folder() + u"/com.orbisk.app"_s)
                    .remove(u"keychainAccessNotice.hasAcknowledged"_s));
    start({makeSecondRepository()}, m_environment);
    await({keychainAlert});

    expectHandedOver(startAgain({repository()}));

    await({keychainAlert, title(u"Reviewer, second-api, feature/token-refresh"_s)});
    press(named(u"push button"_s, u"Continue"_s));
    await({title(u"Reviewer, ledger-api, feature/token-refresh"_s),
           focused(beginning(u"list item"_s, u"CMakeLists.txt, "_s)),
           beginning(u"paragraph"_s, u"This is a sample answer"_s)});
}

TEST_F(SecondStart, OfTwoAtOnceOneShowsTheWindow)
{
    writePreferences(m_provider.baseURL());
    const QProcessEnvironment environment = onDisplay(m_environment);
    ChildProcess one(QString::fromUtf8(VANTREL), {repository()}, environment);
    ChildProcess another(QString::fromUtf8(VANTREL), {repository()}, environment);

    awaitThat(u"the end of one of two"_s, [&] { return one.hasEnded() || another.hasEnded(); });

    // Either may be the first.
    ChildProcess &first = one.hasEnded() ? another : one;
    ChildProcess &second = one.hasEnded() ? one : another;
    await({listOfChanges});
    EXPECT_FALSE(first.hasEnded());
    activateWindow(u"Reviewer"_s);
    pressKey(u"ctrl+q"_s);
    EXPECT_EQ(first.waitForEnd().exitCode, 0);
    expectHandedOver(second.waitForEnd());
}

TEST_F(SecondStart, BesideOneThatDoesNotAnswerFailsInOneLine)
{
    // The name, and nothing that takes a request.
    QDBusConnection bus = QDBusConnection::sessionBus();
    ASSERT_TRUE(bus.registerService(u"com.orbisk.app"_s));

    const ProcessRun second = startAgain({u"ledger-api"_s});

    ASSERT_TRUE(bus.unregisterService(u"com.orbisk.app"_s));
    EXPECT_EQ(second.exitCode, 1);
    EXPECT_EQ(second.errors, "vantrel: the application runs already, but does not answer\n");
    EXPECT_FALSE(QDir(untouched()).exists());
}

using Trial = ReviewFixture;

TEST_F(Trial, IsNotTheApplicationOfTheSession)
{
    await({listOfChanges});

    EXPECT_FALSE(
        QDBusConnection::sessionBus().interface()->isServiceRegistered(u"com.orbisk.app"_s));
}

} // namespace
} // namespace vantrel::test
