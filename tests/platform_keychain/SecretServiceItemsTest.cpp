#include "persistence/KeychainStore.h"
#include "platform_keychain/KeyringTest.h"

namespace vantrel {
namespace {

using namespace Qt::Literals::StringLiterals;
using test::digestLine;
using test::ProcessRun;
using test::run;

const QString service = u"com.orbisk.apikeys"_s;

using Match = std::pair<std::int32_t, QByteArray>;

class SecretServiceItemsTest : public test::KeyringTest
{
protected:
    [[nodiscard]] Match match(const QString &account)
    {
        const SecretItems::Match found = items->copyMatching(service, account);
        return {found.status, found.secret};
    }

    [[nodiscard]] std::int32_t add(const QString &account, const QByteArray &secret)
    {
        return items->add(service, account, secret);
    }
};

TEST_F(SecretServiceItemsTest, GivesBackWhatWasAdded)
{
    ASSERT_EQ(add(u"openAI"_s, "sk-1"), secretStatus::success);

    EXPECT_EQ(match(u"openAI"_s), Match(secretStatus::success, "sk-1"));
}

TEST_F(SecretServiceItemsTest, FindsNothingWhereNothingWasAdded)
{
    EXPECT_EQ(match(u"openAI"_s), Match(secretStatus::itemNotFound, ""));
}

TEST_F(SecretServiceItemsTest, RemovesAnItem)
{
    ASSERT_EQ(add(u"openAI"_s, "sk-1"), secretStatus::success);

    EXPECT_EQ(items->remove(service, u"openAI"_s), secretStatus::success);

    EXPECT_EQ(match(u"openAI"_s), Match(secretStatus::itemNotFound, ""));
    EXPECT_EQ(foundItems(), QStringList());
}

TEST_F(SecretServiceItemsTest, HasNothingToRemoveWhereNothingWasAdded)
{
    EXPECT_EQ(items->remove(service, u"openAI"_s), secretStatus::itemNotFound);
}

TEST_F(SecretServiceItemsTest, KeepsAccountsAndServicesApart)
{
    ASSERT_EQ(add(u"openAI"_s, "sk-1"), secretStatus::success);
    ASSERT_EQ(add(u"openRouter"_s, "sk-2"), secretStatus::success);

    EXPECT_EQ(items->remove(service, u"openAI"_s), secretStatus::success);

    EXPECT_EQ(match(u"openAI"_s), Match(secretStatus::itemNotFound, ""));
    EXPECT_EQ(match(u"openRouter"_s), Match(secretStatus::success, "sk-2"));
    EXPECT_EQ(items->copyMatching(u"com.example"_s, u"openRouter"_s).status,
              secretStatus::itemNotFound);
}

TEST_F(SecretServiceItemsTest, LaysAnItemDownWithOurSchemaAndNothingElse)
{
    ASSERT_EQ(add(u"openRouter"_s, "sk-1"), secretStatus::success);

    const QStringList expected = {
        u"[item]"_s,
        u"attribute.account = openRouter"_s,
        u"attribute.service = com.orbisk.apikeys"_s,
        u"label = com.orbisk.apikeys"_s,
        u"schema = com.orbisk.apikeys"_s,
        u"secret = sk-1"_s,
    };
    EXPECT_EQ(foundItems(), expected);
}

TEST_F(SecretServiceItemsTest, KeepsEveryByteOfASecret)
{
    const QByteArray bytes("a\0b\r\n\xFF\xC3\xA9 ", 9);
    ASSERT_EQ(add(u"openAI"_s, bytes), secretStatus::success);

    EXPECT_EQ(match(u"openAI"_s), Match(secretStatus::success, bytes));
}

TEST_F(SecretServiceItemsTest, KeepsAnEmptySecret)
{
    ASSERT_EQ(add(u"openAI"_s, ""), secretStatus::success);

    EXPECT_EQ(match(u"openAI"_s), Match(secretStatus::success, ""));
}

TEST_F(SecretServiceItemsTest, KeepsALongSecretOutsideAscii)
{
    const QByteArray secret = QString(10'000, u'é').toUtf8();
    ASSERT_EQ(add(u"openAI"_s, secret), secretStatus::success);

    EXPECT_EQ(match(u"openAI"_s), Match(secretStatus::success, secret));
}

TEST_F(SecretServiceItemsTest, LeavesAnotherProgramsItemAlone)
{
    const ProcessRun stored =
        run(u"secret-tool"_s,
            {u"store"_s, u"--label=theirs"_s, u"service"_s, service, u"account"_s, u"openAI"_s},
            "their secret");
    ASSERT_EQ(stored.exitCode, 0);

    EXPECT_EQ(match(u"openAI"_s), Match(secretStatus::itemNotFound, ""));
    EXPECT_EQ(items->remove(service, u"openAI"_s), secretStatus::itemNotFound);
    EXPECT_TRUE(foundItems().contains(u"secret = their secret"_s));
}

TEST_F(SecretServiceItemsTest, IsFoundByAnotherProcess)
{
    ASSERT_EQ(add(u"openAI"_s, "sk-1"), secretStatus::success);

    EXPECT_EQ(probe({u"read"_s, u"openAI"_s}).output, digestLine("sk-1"));
}

TEST_F(SecretServiceItemsTest, FindsWhatAnEarlierProcessSaved)
{
    ASSERT_EQ(probe({u"save"_s, u"openAI"_s}, "sk-1").output, "status 0\n");

    EXPECT_EQ(match(u"openAI"_s), Match(secretStatus::success, "sk-1"));
}

TEST_F(SecretServiceItemsTest, SeesWhatAnotherProcessReplacedAndDeleted)
{
    ASSERT_EQ(add(u"openAI"_s, "sk-1"), secretStatus::success);

    ASSERT_EQ(probe({u"save"_s, u"openAI"_s}, "sk-2").output, "status 0\n");
    EXPECT_EQ(match(u"openAI"_s), Match(secretStatus::success, "sk-2"));

    ASSERT_EQ(probe({u"delete"_s, u"openAI"_s}).output, "status 0\n");
    EXPECT_EQ(match(u"openAI"_s), Match(secretStatus::itemNotFound, ""));
}

class KeychainStoreInTheKeyringTest : public test::KeyringTest
{
protected:
    KeychainStore store{service, systemSecretItems()};
};

TEST_F(KeychainStoreInTheKeyringTest, SavingTwiceLeavesOneItemWithTheSecondKey)
{
    ASSERT_TRUE(store.saveAPIKey(u"sk-1"_s, AIProvider::openAI).has_value());

    ASSERT_TRUE(store.saveAPIKey(u"sk-2"_s, AIProvider::openAI).has_value());

    const QStringList expected = {
        u"[item]"_s,
        u"attribute.account = openAI"_s,
        u"attribute.service = com.orbisk.apikeys"_s,
        u"label = com.orbisk.apikeys"_s,
        u"schema = com.orbisk.apikeys"_s,
        u"secret = sk-2"_s,
    };
    EXPECT_EQ(foundItems(), expected);
    EXPECT_EQ(store.apiKey(AIProvider::openAI), u"sk-2"_s);
}

TEST_F(KeychainStoreInTheKeyringTest, EveryProviderHasAKeyOfItsOwn)
{
    ASSERT_TRUE(store.saveAPIKey(u"sk-1"_s, AIProvider::openRouter).has_value());
    ASSERT_TRUE(store.saveAPIKey(u"sk-2"_s, AIProvider::openAI).has_value());

    ASSERT_TRUE(store.deleteAPIKey(AIProvider::openRouter).has_value());

    EXPECT_EQ(store.apiKey(AIProvider::openRouter), std::nullopt);
    EXPECT_EQ(store.apiKey(AIProvider::openAI), u"sk-2"_s);
    EXPECT_EQ(store.apiKey(AIProvider::custom), std::nullopt);
}

TEST_F(KeychainStoreInTheKeyringTest, DeletingAKeyThatWasNeverSavedSucceeds)
{
    EXPECT_TRUE(store.deleteAPIKey(AIProvider::custom).has_value());
}

TEST_F(KeychainStoreInTheKeyringTest, ALongKeyOutsideAsciiComesBackAsItWas)
{
    const QString key = u" \uFEFF密钥🔑"_s.repeated(2'000);
    ASSERT_TRUE(store.saveAPIKey(key, AIProvider::custom).has_value());

    EXPECT_EQ(store.apiKey(AIProvider::custom), key);
}

} // namespace
} // namespace vantrel
