#include "persistence/KeychainStore.h"

#include "persistence/FakeSecretItems.h"

#include <gtest/gtest.h>

namespace vantrel {
namespace {

using namespace Qt::Literals::StringLiterals;
using test::FakeSecretItems;
using test::SecretItemsScript;

SecretItems::Match found(const QByteArray &secret)
{
    SecretItems::Match match;
    match.status = secretStatus::success;
    match.secret = secret;
    return match;
}

SecretItems::Match refused(std::int32_t status)
{
    SecretItems::Match match;
    match.status = status;
    match.secret = "not to be used";
    return match;
}

/// The status of an outcome, 0 for a success.
std::int32_t statusOf(const Result<void, KeychainError> &outcome)
{
    return outcome ? secretStatus::success : outcome.error().status;
}

class KeychainStoreTest : public testing::Test
{
protected:
    SecretItemsScript script{};
    KeychainStore store{u"com.orbisk.apikeys"_s, std::make_unique<FakeSecretItems>(script)};
};

TEST_F(KeychainStoreTest, ReadsTheItemOfTheProvider)
{
    script.matches = {found("sk-1")};

    const auto key = store.apiKey(AIProvider::openRouter);

    EXPECT_EQ(key, u"sk-1"_s);
    EXPECT_EQ(script.calls, QStringList{u"copyMatching com.orbisk.apikeys openRouter"_s});
}

TEST_F(KeychainStoreTest, NamesEveryProviderByItsRawValue)
{
    script.matches = {refused(-25300), refused(-25300), refused(-25300)};

    for (const AIProvider provider : allAIProviders) {
        (void)store.apiKey(provider);
    }

    const QStringList expected = {
        u"copyMatching com.orbisk.apikeys openRouter"_s,
        u"copyMatching com.orbisk.apikeys openAI"_s,
        u"copyMatching com.orbisk.apikeys custom"_s,
    };
    EXPECT_EQ(script.calls, expected);
}

TEST_F(KeychainStoreTest, ReadsAKeyAsItWasStored)
{
    script.matches = {found(" sk-é\n"), found("\xEF\xBB\xBFsk"), found("")};

    EXPECT_EQ(store.apiKey(AIProvider::openAI), u" sk-é\n"_s);
    EXPECT_EQ(store.apiKey(AIProvider::openAI), u"\uFEFFsk"_s);
    EXPECT_EQ(store.apiKey(AIProvider::openAI), QString());
}

TEST_F(KeychainStoreTest, ReadsNoKeyWhereThereIsNone)
{
    script.matches = {refused(secretStatus::itemNotFound)};

    EXPECT_EQ(store.apiKey(AIProvider::openAI), std::nullopt);
}

TEST_F(KeychainStoreTest, ReadsNoKeyAndNoErrorWhenTheAccessIsDenied)
{
    script.matches = {refused(secretStatus::interactionNotAllowed)};

    EXPECT_EQ(store.apiKey(AIProvider::openAI), std::nullopt);
}

TEST_F(KeychainStoreTest, ReadsNoKeyFromAKeychainThatIsNotThere)
{
    script.matches = {refused(secretStatus::notAvailable)};

    EXPECT_EQ(store.apiKey(AIProvider::openAI), std::nullopt);
}

TEST_F(KeychainStoreTest, ReadsNoKeyFromBytesThatAreNotUtf8)
{
    script.matches = {found("sk-\xFF"), found("sk-\xC3"), found("\xED\xA0\x80")};

    EXPECT_EQ(store.apiKey(AIProvider::openAI), std::nullopt);
    EXPECT_EQ(store.apiKey(AIProvider::openAI), std::nullopt);
    EXPECT_EQ(store.apiKey(AIProvider::openAI), std::nullopt);
}

TEST_F(KeychainStoreTest, SavesByDeletingAndThenAddingTheBytes)
{
    script.removeStatuses = {secretStatus::success};
    script.addStatuses = {secretStatus::success};

    const auto saved = store.saveAPIKey(u" sk-é "_s, AIProvider::openAI);

    EXPECT_EQ(statusOf(saved), secretStatus::success);
    const QStringList expected = {
        u"remove com.orbisk.apikeys openAI"_s,
        u"add com.orbisk.apikeys openAI"_s,
    };
    EXPECT_EQ(script.calls, expected);
    EXPECT_EQ(script.secrets, QList<QByteArray>{" sk-é "});
}

TEST_F(KeychainStoreTest, SavesWhateverTheDeleteAnswers)
{
    script.removeStatuses = {secretStatus::itemNotFound, secretStatus::ioError};
    script.addStatuses = {secretStatus::success, secretStatus::success};

    EXPECT_EQ(statusOf(store.saveAPIKey(u"a"_s, AIProvider::openAI)), secretStatus::success);
    EXPECT_EQ(statusOf(store.saveAPIKey(u"b"_s, AIProvider::openAI)), secretStatus::success);
}

TEST_F(KeychainStoreTest, FailsToSaveWithTheStatusOfTheAdd)
{
    script.removeStatuses = {secretStatus::success};
    script.addStatuses = {-25299};

    EXPECT_EQ(statusOf(store.saveAPIKey(u"sk"_s, AIProvider::openAI)), -25299);
}

TEST_F(KeychainStoreTest, FailsToSaveEvenWhenTheAddFindsNoItem)
{
    script.removeStatuses = {secretStatus::success};
    script.addStatuses = {secretStatus::itemNotFound};

    EXPECT_EQ(statusOf(store.saveAPIKey(u"sk"_s, AIProvider::openAI)), -25300);
}

TEST_F(KeychainStoreTest, DeletesTheItemOfTheProvider)
{
    script.removeStatuses = {secretStatus::success};

    EXPECT_EQ(statusOf(store.deleteAPIKey(AIProvider::custom)), secretStatus::success);
    EXPECT_EQ(script.calls, QStringList{u"remove com.orbisk.apikeys custom"_s});
}

TEST_F(KeychainStoreTest, DeletingAKeyThatWasNeverSavedSucceeds)
{
    script.removeStatuses = {-25300};

    EXPECT_EQ(statusOf(store.deleteAPIKey(AIProvider::openAI)), secretStatus::success);
}

TEST_F(KeychainStoreTest, FailsToDeleteWithAnyOtherStatus)
{
    script.removeStatuses = {secretStatus::interactionNotAllowed, secretStatus::notAvailable};

    EXPECT_EQ(statusOf(store.deleteAPIKey(AIProvider::openAI)), -25308);
    EXPECT_EQ(statusOf(store.deleteAPIKey(AIProvider::openAI)), -25291);
}

TEST_F(KeychainStoreTest, UsesTheServiceItWasGiven)
{
    script.removeStatuses = {secretStatus::success};
    KeychainStore other(u"another.service"_s, std::make_unique<FakeSecretItems>(script));

    (void)other.deleteAPIKey(AIProvider::openAI);

    EXPECT_EQ(script.calls, QStringList{u"remove another.service openAI"_s});
}

} // namespace
} // namespace vantrel
