#include "platform_keychain/BusLog.h"
#include "platform_keychain/KeyringTest.h"

#include <QDirIterator>
#include <QFile>

namespace vantrel {
namespace {

using namespace Qt::Literals::StringLiterals;
using test::BusLog;
using test::digestLine;
using test::ProcessRun;
using test::run;

// Nothing else can hold this by chance.
const QByteArray key = "sk-or-v1-63fe91c5a07d4b28";

/// Runs the probe with every log of the libraries switched on.
ProcessRun talkativeProbe(const QStringList &command)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"G_MESSAGES_DEBUG"_s, u"all"_s);
    environment.insert(u"QT_LOGGING_RULES"_s, u"*=true"_s);
    return run(command.first(), command.sliced(1), key, environment);
}

const QString probePath = QStringLiteral(KEYCHAIN_PROBE);
const QString withKeyring = QStringLiteral(WITH_KEYRING);

class KeychainSecrecyTest : public test::KeyringTest
{};

TEST_F(KeychainSecrecyTest, ASaveAndAReadPrintNoKey)
{
    const ProcessRun run =
        talkativeProbe({probePath, u"save"_s, u"openAI"_s, u"read"_s, u"openAI"_s});

    EXPECT_TRUE(run.output.contains("status 0\n"));
    EXPECT_TRUE(run.output.contains(digestLine(key)));
    EXPECT_TRUE(run.output.contains("DEBUG")) << "the logs were not on";
    EXPECT_FALSE(run.output.contains(key));
    EXPECT_FALSE(run.errors.contains(key));
}

TEST_F(KeychainSecrecyTest, ALockedKeyringPrintsNoKey)
{
    const ProcessRun run =
        talkativeProbe({withKeyring, probePath, u"lock"_s, u"save"_s, u"openAI"_s});

    EXPECT_TRUE(run.output.contains("status -25308\n"));
    EXPECT_FALSE(run.output.contains(key));
    EXPECT_FALSE(run.errors.contains(key));
}

TEST_F(KeychainSecrecyTest, AMissingDaemonPrintsNoKey)
{
    const ProcessRun run =
        talkativeProbe({withKeyring, u"--no-daemon"_s, probePath, u"save"_s, u"openAI"_s});

    EXPECT_TRUE(run.output.contains("status -25291\n"));
    EXPECT_FALSE(run.output.contains(key));
    EXPECT_FALSE(run.errors.contains(key));
}

TEST_F(KeychainSecrecyTest, TheKeyCrossesTheBusEncrypted)
{
    BusLog log;

    ASSERT_EQ(items->add(u"com.orbisk.apikeys"_s, u"openAI"_s, key), secretStatus::success);
    ASSERT_EQ(items->copyMatching(u"com.orbisk.apikeys"_s, u"openAI"_s).secret, key);

    const QByteArray bytes = log.bytes();
    EXPECT_TRUE(bytes.contains("CreateItem")) << "the save was not recorded";
    EXPECT_TRUE(bytes.contains("GetSecret")) << "the read was not recorded";
    EXPECT_FALSE(bytes.contains(key));
}

TEST_F(KeychainSecrecyTest, TheKeyLiesInNoFileInTheClear)
{
    ASSERT_EQ(items->add(u"com.orbisk.apikeys"_s, u"openAI"_s, key), secretStatus::success);
    QStringList read;
    QStringList withKey;

    QDirIterator files(qEnvironmentVariable("VANTREL_KEYRING_FOLDER"), QDir::Files | QDir::Hidden,
                       QDirIterator::Subdirectories);
    while (files.hasNext()) {
        QFile file(files.next());
        if (file.open(QIODevice::ReadOnly)) {
            read.append(files.fileName());
            if (file.readAll().contains(key)) {
                withKey.append(files.fileName());
            }
        }
    }

    EXPECT_TRUE(read.contains(u"login.keyring"_s));
    EXPECT_EQ(withKey, QStringList());
}

} // namespace
} // namespace vantrel
