// The application whose preferences, repository or provider fail it: one sentence each, and it can
// be used further.

#include "DesktopFixture.h"
#include "Keyboard.h"
#include "OwnProvider.h"
#include "persistence/RecentReposStore.h"
#include "platform/UserDefaults.h"
#include "support/SmallDisk.h"

#include <QDir>
#include <QFile>
#include <QTcpSocket>

#include <algorithm>
#include <memory>
#include <sys/socket.h>

namespace vantrel::test {
namespace {

using namespace Qt::Literals::StringLiterals;

const Sought listOfChanges = named(u"heading"_s, u"Working changes"_s);
const Sought picker = named(u"heading"_s, u"Open a repository to read its working changes."_s);
const QString repositoryName = u"ledger-api"_s;

Sought alert(const QString &sentence)
{
    return named(u"alert message"_s, sentence);
}

int alertsIn(const QList<ShownItem> &items)
{
    return int(std::count_if(items.cbegin(), items.cend(), [](const ShownItem &item) {
        return item.role == u"alert message"_s && item.isShowing();
    }));
}

/// The radio button of this name, when it is chosen.
Sought chosen(const QString &name)
{
    return {u"the choice \""_s + name + u'"', [=](const ShownItem &item) {
                constexpr int checked = 4;
                return item.role == u"radio button"_s && item.name == name &&
                       ((item.states >> checked) & 1) != 0;
            }};
}

class Faults : public DesktopFixture
{
protected:
    [[nodiscard]] QString preferences() const { return folder() + u"/com.orbisk.app"_s; }

    void writePreference(const QString &key, const QByteArray &content) const
    {
        ASSERT_TRUE(QDir().mkpath(preferences()));
        QFile file(preferences() + u'/' + key);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_EQ(file.write(content), content.size());
    }

    [[nodiscard]] QByteArray preference(const QString &key) const
    {
        QFile file(preferences() + u'/' + key);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    void startOn(const QString &repository)
    {
        start({repository}, QProcessEnvironment::systemEnvironment());
    }

    SampleProvider m_provider{};
};

TEST_F(Faults, PreferencesThatAreDamagedThroughoutAreAFirstStart)
{
    const QByteArray damage("\0\xff{[\n", 5);
    for (const QString &key :
         {u"aiProvider"_s, u"aiBaseURL"_s, u"aiModel"_s, u"appAppearance"_s, u"chatHistory"_s,
          u"recentRepos"_s, u"keychainAccessNotice.hasAcknowledged"_s,
          u"settings.hasShownKeychainNotice"_s, u"aiSetup.apiKeySaved.openRouter"_s}) {
        writePreference(key, damage);
    }
    const QString repository = makeDemoRepository(folder());

    start({}, QProcessEnvironment::systemEnvironment());
    press(named(u"push button"_s, u"Not Now"_s));

    const QList<ShownItem> shown = await({picker, named(u"push button"_s, u"Choose Folder…"_s)});
    EXPECT_EQ(alertsIn(shown), 0);
    EXPECT_EQ(preference(u"chatHistory"_s), damage);
}

TEST_F(Faults, AHistoryAndAListThatAreDamagedAreEmptyAndReplaced)
{
    writePreferences(m_provider.baseURL());
    writePreference(u"chatHistory"_s, "data\n[{\"filePath\": \"src/auth/tok");
    writePreference(u"recentRepos"_s, "data\n[{}]");

    startOn(makeDemoRepository(folder()));
    press(beginning(u"list item"_s, u"src/auth/token_store.cpp, "_s));
    press(named(u"push button"_s, u"What could break?"_s));

    await({beginning(u"list item"_s, u"Answer: This is a sample answer"_s)});
    awaitThat(u"the list of repositories"_s, [this] {
        return RecentReposStore(UserDefaults(preferences()), u"recentRepos"_s, 10).load().size() ==
               1;
    });
    awaitThat(u"the conversation on the disk"_s,
              [this] { return preference(u"chatHistory"_s).contains("What could break?"); });
}

TEST_F(Faults, WithReadOnlyPreferencesASettingCountsAndOneLineOfTheLogTells)
{
    SmallDisk disk(preferences());
    if (!disk.isThere()) {
        GTEST_SKIP() << "this process may not make a disk of its own";
    }
    writePreferences(m_provider.baseURL());
    disk.setReadOnly(true);

    startOn(makeDemoRepository(folder()));
    await({listOfChanges});
    pressKey(u"ctrl+comma"_s);
    press(named(u"radio button"_s, u"Dark"_s));
    await({chosen(u"Dark"_s)});
    awaitErrors("vantrel: the preferences could not be saved, and are kept until they can be: "
                "Read-only file system\n");
    activateWindow(u"Reviewer"_s);
    press(beginning(u"list item"_s, u"src/auth/token_store.cpp, "_s));
    press(named(u"push button"_s, u"What could break?"_s));
    EXPECT_EQ(alertsIn(await({beginning(u"list item"_s, u"Answer: This is a sample answer"_s)})),
              0);

    // What has been waiting goes with the next change.
    EXPECT_EQ(preference(u"appAppearance"_s), "");
    disk.setReadOnly(false);
    press(named(u"radio button"_s, u"Light"_s));
    awaitThat(u"the appearance, the repository and the conversation on the disk"_s, [this] {
        return preference(u"appAppearance"_s) == "text\nlight" &&
               preference(u"recentRepos"_s).contains("ledger-api") &&
               preference(u"chatHistory"_s).contains("What could break?");
    });
}

TEST_F(Faults, OfARepositoryThatIsDeletedWhatWasListedStaysUntilTheNextListing)
{
    writePreferences(m_provider.baseURL());
    const QString repository = makeDemoRepository(folder());
    startOn(repository);
    await({listOfChanges, beginning(u"list item"_s, u"src/auth/token_store.cpp, "_s)});

    ASSERT_TRUE(QDir(repository).removeRecursively());
    press(beginning(u"list item"_s, u"src/auth/token_store.cpp, "_s));
    EXPECT_EQ(alertsIn(await({named(u"label"_s, u"Change 1 of 3"_s),
                              beginning(u"paragraph"_s, u"This is a sample answer"_s)})),
              0);

    press(named(u"push button"_s, u"All files"_s));
    EXPECT_EQ(alertsIn(await({alert(u"Couldn't read git status: No such file or directory"_s)})),
              1);

    press(named(u"push button"_s, u"All projects"_s));
    press(named(u"list item"_s, repositoryName));
    EXPECT_EQ(alertsIn(await({picker, alert(u"That folder doesn't contain a .git directory."_s)})),
              1);

    ASSERT_EQ(makeDemoRepository(folder()), repository);
    press(named(u"list item"_s, repositoryName));
    EXPECT_EQ(alertsIn(await({listOfChanges, named(u"label"_s, u"13 files"_s)})), 0);
}

const QString lastQuestion = u"Will you stay?"_s;

/// A provider that answers as the sample does, but leaves in the middle of its answer to one
/// question.
class LeavingProvider
{
public:
    [[nodiscard]] QString baseURL() const { return m_provider.baseURL(); }

    /// Breaks off the connection of the answer that it is in the middle of.
    void leave()
    {
        ASSERT_NE(m_waiting, nullptr);
        const linger none{1, 0};
        ::setsockopt(int(m_waiting->socketDescriptor()), SOL_SOCKET, SO_LINGER, &none, sizeof none);
        m_waiting->abort();
    }

private:
    void answer(QTcpSocket *socket, const sample::SampleQuestion &question)
    {
        if (!question.isStreamed || question.lastMessage != lastQuestion) {
            OwnProvider::answerAsSample(socket, question);
            return;
        }
        // In chunks, as providers stream: the end of a body without a length is no failure.
        const QByteArray begun = OwnProvider::chunk(u"As long as"_s);
        socket->write("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n" +
                      QByteArray::number(begun.size(), 16) + "\r\n" + begun + "\r\n");
        m_waiting = socket;
    }

    QTcpSocket *m_waiting = nullptr; ///< The provider's server owns it.
    OwnProvider m_provider{
        [this](QTcpSocket *socket, const QByteArray &, const sample::SampleQuestion &question) {
            answer(socket, question);
        }};
};

class FaultsOfAProvider : public Faults
{
protected:
    LeavingProvider m_leaving{};
};

TEST_F(FaultsOfAProvider, AnAnswerWhoseProviderLeavesStaysAsFarAsItCame)
{
    writePreferences(m_leaving.baseURL());
    startOn(makeDemoRepository(folder()));
    press(beginning(u"list item"_s, u"src/auth/token_store.cpp, "_s));
    focus(named(u"text"_s, u"Ask a follow-up…"_s));
    await({focused(named(u"text"_s, u"Ask a follow-up…"_s)),
           named(u"push button"_s, u"What could break?"_s)});
    typeText(lastQuestion);
    awaitText(u"Ask a follow-up…"_s, lastQuestion);
    press(named(u"push button"_s, u"Send"_s));
    // An answer has its name once it is over, and until its first word that of its indicator.
    await({named(u"list item"_s, QString())});

    m_leaving.leave();

    const QList<ShownItem> shown =
        await({alert(u"Connection closed"_s), named(u"list item"_s, u"You: "_s + lastQuestion),
               beginning(u"list item"_s, u"Answer: As long as"_s)});
    EXPECT_EQ(alertsIn(shown), 1);
    awaitThat(u"the answer on the disk"_s,
              [this] { return preference(u"chatHistory"_s).contains("As long as"); });
    press(named(u"push button"_s, u"What could break?"_s));
    EXPECT_EQ(alertsIn(await({beginning(u"list item"_s, u"Answer: This is a sample answer"_s),
                              beginning(u"list item"_s, u"Answer: As long as"_s)})),
              0);
}

} // namespace
} // namespace vantrel::test
