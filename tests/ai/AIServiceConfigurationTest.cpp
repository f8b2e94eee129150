#include "ai/AIServiceFixture.h"
#include "ai/config/AINotifications.h"
#include "platform/jobs/RunQueue.h"

#include <thread>
#include <utility>

namespace vantrel::test {
namespace {

using namespace Qt::Literals::StringLiterals;

using Case = AIServiceError::Case;
using Resolved = Result<ResolvedConfig, AIServiceError>;

class AIServiceConfigurationTest : public AIServiceFixture
{
protected:
    Resolved resolve() { return waitFor(m_service.resolveConfig()); }

    Resolved resolved(const QString &url, const std::optional<QString> &key = std::nullopt)
    {
        ResolvedConfig config;
        config.url = QUrl(url);
        config.model = m_settings.config.model;
        config.apiKey = key;
        return config;
    }

    Resolved resolvedAtServer(const std::optional<QString> &key = std::nullopt)
    {
        return resolved(m_server.url(u"/v1/chat/completions"_s).toString(), key);
    }

    static Resolved failedWith(Case kind) { return failure(error(kind)); }
};

TEST_F(AIServiceConfigurationTest, TheEndpointIsBelowTheBaseUrl)
{
    const QList<std::pair<QString, QString>> endpoints{
        {u"http://localhost:11434/v1"_s, u"http://localhost:11434/v1/chat/completions"_s},
        {u"http://localhost:11434/v1/"_s, u"http://localhost:11434/v1/chat/completions"_s},
        {u"http://localhost:11434/v1//"_s, u"http://localhost:11434/v1/chat/completions"_s},
        {u"http://localhost:11434"_s, u"http://localhost:11434/chat/completions"_s},
        {u"http://localhost:11434/"_s, u"http://localhost:11434/chat/completions"_s},
        {u"  HTTPS://example.com/api/v1 \n"_s, u"https://example.com/api/v1/chat/completions"_s},
        {u"https://example.com/a%2Fb%20c/"_s, u"https://example.com/a%2Fb%20c/chat/completions"_s},
        {u"https://example.com/v1?api=2"_s, u"https://example.com/v1/chat/completions?api=2"_s},
    };

    for (const auto &[baseURL, endpoint] : endpoints) {
        m_settings.config.baseURL = baseURL;
        EXPECT_EQ(resolve(), resolved(endpoint)) << qPrintable(baseURL);
    }
}

TEST_F(AIServiceConfigurationTest, TheModelIsPassedOnAsStored)
{
    m_settings.config.model = u" gpt-6-luna "_s;

    const Resolved config = resolve();

    ASSERT_TRUE(config.has_value());
    EXPECT_EQ(config->model, u" gpt-6-luna "_s);
}

TEST_F(AIServiceConfigurationTest, AKeyIsUsedAsReadUntrimmed)
{
    useKey(AIProvider::openAI, u" sk-1 "_s);

    EXPECT_EQ(resolve(), resolvedAtServer(u" sk-1 "_s));
    EXPECT_EQ(resolve(), resolvedAtServer(u" sk-1 "_s));
}

TEST_F(AIServiceConfigurationTest, AMissingKeyAsksForTheSetup)
{
    for (const AIProvider provider : {AIProvider::openRouter, AIProvider::openAI}) {
        useProvider(provider);
        m_setupRequiredCount = 0;
        EXPECT_EQ(resolve(), failedWith(Case::missingAPIKey));
        EXPECT_EQ(m_setupRequiredCount, 1);
    }
}

TEST_F(AIServiceConfigurationTest, AKeyOfBlanksIsMissing)
{
    useKey(AIProvider::openAI, u" \n\t "_s);

    EXPECT_EQ(resolve(), failedWith(Case::missingAPIKey));
    EXPECT_EQ(m_setupRequiredCount, 1);
}

TEST_F(AIServiceConfigurationTest, CustomNeedsNoKeyButUsesOne)
{
    EXPECT_EQ(resolve(), resolvedAtServer());
    m_center.post(aiConfigurationDidChange);
    useKey(AIProvider::custom, u" "_s);
    EXPECT_EQ(resolve(), resolvedAtServer());
    m_center.post(aiConfigurationDidChange);
    useKey(AIProvider::custom, u"local"_s);
    EXPECT_EQ(resolve(), resolvedAtServer(u"local"_s));
    EXPECT_EQ(m_setupRequiredCount, 0);
}

TEST_F(AIServiceConfigurationTest, AMissingKeyIsToldBeforeABlankModel)
{
    useProvider(AIProvider::openAI);
    m_settings.config.model = u" "_s;
    m_settings.config.baseURL = u"nonsense"_s;

    EXPECT_EQ(resolve(), failedWith(Case::missingAPIKey));
    EXPECT_EQ(m_setupRequiredCount, 1);
}

TEST_F(AIServiceConfigurationTest, ABlankModelIsToldBeforeABadBaseUrl)
{
    m_settings.config.model = u" \n"_s;
    m_settings.config.baseURL = u"nonsense"_s;

    EXPECT_EQ(resolve(), failedWith(Case::blankModel));
    EXPECT_EQ(m_setupRequiredCount, 1);
}

TEST_F(AIServiceConfigurationTest, ABadBaseUrlDoesNotAskForTheSetup)
{
    for (const QString &baseURL : {QString(), u"localhost:1234"_s, u"ftp://example.com/v1"_s}) {
        m_settings.config.baseURL = baseURL;
        EXPECT_EQ(resolve(), failedWith(Case::invalidBaseURL));
    }
    EXPECT_EQ(m_setupRequiredCount, 0);
}

TEST_F(AIServiceConfigurationTest, SettingsAreReadForEachRequest)
{
    EXPECT_EQ(resolve(), resolvedAtServer());

    m_settings.config.baseURL = u"http://localhost:1/v2"_s;

    EXPECT_EQ(resolve(), resolved(u"http://localhost:1/v2/chat/completions"_s));
}

TEST_F(AIServiceConfigurationTest, AKeyIsReadOncePerProvider)
{
    useKey(AIProvider::openRouter, u"sk-or"_s);
    resolve();
    resolve();
    useKey(AIProvider::openAI, u"sk-oa"_s);
    resolve();
    resolve();
    useProvider(AIProvider::openRouter);

    EXPECT_EQ(resolve(), resolvedAtServer(u"sk-or"_s));
    EXPECT_EQ(m_keychain->log().entries(), (QStringList{u"read openRouter"_s, u"read openAI"_s}));
}

TEST_F(AIServiceConfigurationTest, ThatCustomHasNoKeyIsRemembered)
{
    resolve();
    resolve();

    EXPECT_EQ(m_keychain->log().entries(), QStringList{u"read custom"_s});
}

TEST_F(AIServiceConfigurationTest, ARequiredKeyThatIsMissingIsLookedForAgain)
{
    useProvider(AIProvider::openAI);
    EXPECT_EQ(resolve(), failedWith(Case::missingAPIKey));

    m_keychain->setKey(AIProvider::openAI, u"sk-1"_s);

    EXPECT_EQ(resolve(), resolvedAtServer(u"sk-1"_s));
    EXPECT_EQ(m_keychain->log().entries(), (QStringList{u"read openAI"_s, u"read openAI"_s}));
}

TEST_F(AIServiceConfigurationTest, AChangeOfTheConfigurationForgetsTheKeys)
{
    useKey(AIProvider::openAI, u"old"_s);
    resolve();
    m_keychain->setKey(AIProvider::openAI, u"new"_s);
    EXPECT_EQ(resolve(), resolvedAtServer(u"old"_s));

    m_center.post(aiConfigurationDidChange);

    EXPECT_EQ(resolve(), resolvedAtServer(u"new"_s));
}

TEST_F(AIServiceConfigurationTest, AChangeMayBePostedOnAnyThread)
{
    useKey(AIProvider::openAI, u"old"_s);
    resolve();
    m_keychain->setKey(AIProvider::openAI, u"new"_s);

    std::thread([this] { m_center.post(aiConfigurationDidChange); }).join();

    EXPECT_EQ(resolve(), resolvedAtServer(u"new"_s));
}

TEST_F(AIServiceConfigurationTest, OtherNotificationsForgetNothing)
{
    useKey(AIProvider::openAI, u"old"_s);
    resolve();

    m_center.post(aiSetupRequired);
    resolve();

    EXPECT_EQ(m_keychain->log().entries(), QStringList{u"read openAI"_s});
}

TEST_F(AIServiceConfigurationTest, RequestsThatStartTogetherReadTheKeyOnce)
{
    useKey(AIProvider::openAI, u"sk-1"_s);
    m_keychain->holdReads();
    std::optional<Resolved> first;
    std::optional<Resolved> second;
    const Job firstJob(keep(m_service.resolveConfig(), &first));
    const Job secondJob(keep(m_service.resolveConfig(), &second));
    RunQueue::interfaceThread().runUntilIdle();
    m_keychain->log().waitFor(u"read openAI"_s);

    m_keychain->releaseReads();
    spinUntil([&] { return first && second; });

    EXPECT_EQ(first.value(), resolvedAtServer(u"sk-1"_s));
    EXPECT_EQ(second.value(), resolvedAtServer(u"sk-1"_s));
    EXPECT_EQ(resolve(), resolvedAtServer(u"sk-1"_s));
    EXPECT_EQ(m_keychain->log().entries(), QStringList{u"read openAI"_s});
}

TEST_F(AIServiceConfigurationTest, ARequestThatIsCancelledLeavesTheReadToTheNext)
{
    useKey(AIProvider::openAI, u"sk-1"_s);
    m_keychain->holdReads();
    std::optional<Resolved> first;
    Job firstJob(keep(m_service.resolveConfig(), &first));
    RunQueue::interfaceThread().runUntilIdle();
    m_keychain->log().waitFor(u"read openAI"_s);

    firstJob.cancel();
    std::optional<Resolved> second;
    const Job secondJob(keep(m_service.resolveConfig(), &second));
    RunQueue::interfaceThread().runUntilIdle();
    m_keychain->releaseReads();
    spinUntil([&] { return second.has_value(); });

    EXPECT_EQ(second.value(), resolvedAtServer(u"sk-1"_s));
    EXPECT_FALSE(first.has_value());
    EXPECT_EQ(m_keychain->log().entries(), QStringList{u"read openAI"_s});
}

TEST_F(AIServiceConfigurationTest, AKeyReadBeforeAChangeIsNotKept)
{
    useKey(AIProvider::openAI, u"old"_s);
    m_keychain->holdReads();
    std::optional<Resolved> first;
    const Job firstJob(keep(m_service.resolveConfig(), &first));
    RunQueue::interfaceThread().runUntilIdle();
    m_keychain->log().waitFor(u"read openAI"_s);

    m_center.post(aiConfigurationDidChange);
    m_keychain->releaseReads();
    spinUntil([&] { return first.has_value(); });
    m_keychain->setKey(AIProvider::openAI, u"new"_s);

    EXPECT_EQ(first.value(), resolvedAtServer(u"old"_s));
    EXPECT_EQ(resolve(), resolvedAtServer(u"new"_s));
}

TEST_F(AIServiceConfigurationTest, ARequestAfterAChangeDoesNotWaitForTheReadBeforeIt)
{
    useKey(AIProvider::openAI, u"old"_s);
    m_keychain->holdReads();
    std::optional<Resolved> first;
    const Job firstJob(keep(m_service.resolveConfig(), &first));
    RunQueue::interfaceThread().runUntilIdle();
    m_keychain->log().waitFor(u"read openAI"_s);

    m_center.post(aiConfigurationDidChange);
    std::optional<Resolved> second;
    const Job secondJob(keep(m_service.resolveConfig(), &second));
    RunQueue::interfaceThread().runUntilIdle();
    m_keychain->releaseReads();
    spinUntil([&] { return first && second; });

    EXPECT_EQ(m_keychain->log().entries(), (QStringList{u"read openAI"_s, u"read openAI"_s}));
}

TEST_F(AIServiceConfigurationTest, ThatAKeyIsMissingBeforeAChangeIsNotRemembered)
{
    m_keychain->holdReads();
    std::optional<Resolved> first;
    const Job firstJob(keep(m_service.resolveConfig(), &first));
    RunQueue::interfaceThread().runUntilIdle();
    m_keychain->log().waitFor(u"read custom"_s);

    m_center.post(aiConfigurationDidChange);
    m_keychain->releaseReads();
    spinUntil([&] { return first.has_value(); });
    m_keychain->setKey(AIProvider::custom, u"new"_s);

    EXPECT_EQ(resolve(), resolvedAtServer(u"new"_s));
}

TEST_F(AIServiceConfigurationTest, AFrozenKeychainCountsAsNoKey)
{
    useKey(AIProvider::openAI, u"sk-1"_s);
    m_keychain->holdReads();
    std::optional<Resolved> first;
    const Job firstJob(keep(m_service.resolveConfig(), &first));
    RunQueue::interfaceThread().runUntilIdle();
    m_keychain->log().waitFor(u"read openAI"_s);

    m_clock.advance(KeychainWorker::answerTime);
    spinUntil([&] { return first.has_value(); });
    m_keychain->releaseReads();

    EXPECT_EQ(first.value(), failedWith(Case::missingAPIKey));
    EXPECT_EQ(m_setupRequiredCount, 1);
}

TEST_F(AIServiceConfigurationTest, AChangeAfterTheServiceHasGoneDoesNothing)
{
    {
        const OpenAICompatibleAIService other(m_loader, m_settings, m_keychainWorker, m_center);
    }

    m_center.post(aiConfigurationDidChange);

    EXPECT_EQ(resolve(), resolvedAtServer());
}

} // namespace
} // namespace vantrel::test
