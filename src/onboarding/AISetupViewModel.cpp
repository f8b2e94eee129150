#include "onboarding/AISetupViewModel.h"

#include "ai/config/AIModelPreset.h"
#include "ai/config/AINotifications.h"
#include "ai/config/SettingsStoring.h"
#include "onboarding/OpenRouterSigningIn.h"
#include "onboarding/VendorPages.h"
#include "persistence/APIKeyPresenceStore.h"
#include "persistence/KeySavingNotice.h"
#include "persistence/KeychainAccessNotice.h"
#include "persistence/KeychainWorker.h"
#include "platform/NotificationCenter.h"
#include "platform/StateStep.h"
#include "platform/jobs/RunQueue.h"

#include <algorithm>
#include <array>
#include <utility>

namespace vantrel {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Whose keys the sheet offers to paste. A custom provider is set up in the settings, where it has
/// an address.
constexpr std::array pasteProviders{AIProvider::openRouter, AIProvider::openAI};

template<typename Choices>
bool isPlaceIn(const Choices &all, int index)
{
    return index >= 0 && index < int(all.size());
}

QString defaultModel(AIProvider provider)
{
    const QList<AIModelPreset> models = presets(provider);
    return models.isEmpty() ? QString() : models.first().id;
}

std::optional<QString> firstOfModels(const QList<QString> &models)
{
    return models.isEmpty() ? std::nullopt : std::optional(models.first());
}

} // namespace

AISetupViewModel::AISetupViewModel(Services services, QObject *parent)
    : QObject(parent)
    , m_services(std::move(services))
    , m_pasteModel(defaultModel(m_pasteProvider))
{}

AISetupViewModel::~AISetupViewModel() = default;

QList<QString> AISetupViewModel::pasteProviderNames() const
{
    QList<QString> names;
    for (const AIProvider provider : pasteProviders) {
        names.append(displayName(provider));
    }
    return names;
}

int AISetupViewModel::pasteProviderIndex() const
{
    const auto *const found =
        std::find(pasteProviders.begin(), pasteProviders.end(), m_pasteProvider);
    return found == pasteProviders.end() ? -1 : int(found - pasteProviders.begin());
}

QString AISetupViewModel::pasteProviderName() const
{
    return displayName(m_pasteProvider);
}

QList<QString> AISetupViewModel::localServerNames() const
{
    QList<QString> names;
    for (const LocalModelServer server : allLocalModelServers) {
        names.append(displayName(server));
    }
    return names;
}

QList<QString> AISetupViewModel::localServerStatusTexts() const
{
    QList<QString> texts;
    for (const LocalModelServer server : allLocalModelServers) {
        const auto found = m_localServerStatuses.constFind(server);
        texts.append(statusText(found == m_localServerStatuses.cend() ? std::nullopt
                                                                      : std::optional(*found)));
    }
    return texts;
}

QList<bool> AISetupViewModel::localServersRunning() const
{
    QList<bool> running;
    for (const LocalModelServer server : allLocalModelServers) {
        running.append(statusOf(server).isRunning());
    }
    return running;
}

QList<bool> AISetupViewModel::localServersUsable() const
{
    QList<bool> usable;
    for (const LocalModelServer server : allLocalModelServers) {
        usable.append(!statusOf(server).models().isEmpty());
    }
    return usable;
}

QList<bool> AISetupViewModel::localServersMissing() const
{
    QList<bool> missing;
    for (const LocalModelServer server : allLocalModelServers) {
        missing.append(m_localServerStatuses.contains(server) && !statusOf(server).isRunning());
    }
    return missing;
}

int AISetupViewModel::selectedLocalServerIndex() const
{
    const auto *const found =
        std::find(allLocalModelServers.begin(), allLocalModelServers.end(), m_selectedLocalServer);
    return found == allLocalModelServers.end() ? -1 : int(found - allLocalModelServers.begin());
}

int AISetupViewModel::selectedLocalModelIndex() const
{
    return m_selectedLocalModel ? int(m_localModels.indexOf(*m_selectedLocalModel)) : -1;
}

QString AISetupViewModel::selectedLocalModelName() const
{
    return m_selectedLocalModel.value_or(QString());
}

void AISetupViewModel::openKeyPage()
{
    openPage(VendorPages::keys(m_pasteProvider));
}

void AISetupViewModel::openCreditsPage()
{
    openPage(VendorPages::openRouterCredits());
}

void AISetupViewModel::openDownloadPage(int index)
{
    if (isPlaceIn(allLocalModelServers, index)) {
        openPage(VendorPages::download(allLocalModelServers.at(std::size_t(index))));
    }
}

void AISetupViewModel::startSignIn()
{
    VANTREL_ASSERT_UI_THREAD();
    if (m_step != Step::choose) {
        return;
    }
    m_signInTask = Job(runSignIn());
    StateStep step(*this);
    show(Step::signingIn, step);
    step.set(m_isSigningIn, true, &AISetupViewModel::isSigningInChanged);
    step.publish();
}

void AISetupViewModel::choosePasteKey()
{
    VANTREL_ASSERT_UI_THREAD();
    if (m_step != Step::choose) {
        return;
    }
    StateStep step(*this);
    show(Step::pasteKey, step);
    step.publish();
}

void AISetupViewModel::chooseLocalModel()
{
    VANTREL_ASSERT_UI_THREAD();
    if (m_step != Step::choose) {
        return;
    }
    StateStep step(*this);
    show(Step::localModel, step);
    beginDetection(step);
    step.publish();
}

void AISetupViewModel::back()
{
    VANTREL_ASSERT_UI_THREAD();
    if (m_step == Step::choose || m_step == Step::done) {
        return;
    }
    StateStep step(*this);
    endJobs(step);
    show(Step::choose, step);
    step.publish();
}

void AISetupViewModel::setPasteProvider(AIProvider provider)
{
    VANTREL_ASSERT_UI_THREAD();
    if (provider == m_pasteProvider) {
        return;
    }
    StateStep step(*this);
    step.set(m_pasteProvider, provider, &AISetupViewModel::pasteProviderChanged);
    step.set(m_isPasteModelCustom, presets(provider).isEmpty(),
             &AISetupViewModel::isPasteModelCustomChanged);
    step.set(m_pasteModel, defaultModel(provider), &AISetupViewModel::pasteModelChanged);
    showError(std::nullopt, step);
    step.publish();
}

void AISetupViewModel::choosePasteProvider(int index)
{
    if (isPlaceIn(pasteProviders, index)) {
        setPasteProvider(pasteProviders.at(std::size_t(index)));
    }
}

void AISetupViewModel::setApiKeyDraft(const QString &draft)
{
    VANTREL_ASSERT_UI_THREAD();
    StateStep step(*this);
    step.set(m_apiKeyDraft, draft, &AISetupViewModel::apiKeyDraftChanged);
    step.publish();
}

void AISetupViewModel::setPasteModel(const QString &model)
{
    VANTREL_ASSERT_UI_THREAD();
    StateStep step(*this);
    step.set(m_pasteModel, model, &AISetupViewModel::pasteModelChanged);
    step.publish();
}

void AISetupViewModel::selectPreset(const QString &id)
{
    VANTREL_ASSERT_UI_THREAD();
    StateStep step(*this);
    step.set(m_isPasteModelCustom, false, &AISetupViewModel::isPasteModelCustomChanged);
    step.set(m_pasteModel, id, &AISetupViewModel::pasteModelChanged);
    step.publish();
}

void AISetupViewModel::selectCustomModel(const QString &text)
{
    VANTREL_ASSERT_UI_THREAD();
    StateStep step(*this);
    step.set(m_isPasteModelCustom, true, &AISetupViewModel::isPasteModelCustomChanged);
    step.set(m_pasteModel, text, &AISetupViewModel::pasteModelChanged);
    step.publish();
}

void AISetupViewModel::savePastedKey()
{
    VANTREL_ASSERT_UI_THREAD();
    if (m_step != Step::pasteKey || m_isSavingKey || m_isShowingKeychainNotice) {
        return;
    }
    PendingKeySave pending;
    pending.apiKey = m_apiKeyDraft.trimmed();
    pending.providerName = displayName(m_pasteProvider);
    if (pending.apiKey.isEmpty()) {
        refuse(u"Paste your "_s + pending.providerName + u" API key."_s);
        return;
    }
    pending.config =
        AIProviderConfig{m_pasteProvider, defaultBaseURL(m_pasteProvider), m_pasteModel.trimmed()};
    if (pending.config.model.isEmpty()) {
        refuse(u"Enter a model ID."_s);
        return;
    }
    StateStep step(*this);
    requestKeySave(pending, step);
    step.publish();
}

void AISetupViewModel::saveKeyAgain()
{
    VANTREL_ASSERT_UI_THREAD();
    if (!m_canSaveKeyAgain) {
        return;
    }
    StateStep step(*this);
    performKeySave(step);
    step.publish();
}

void AISetupViewModel::confirmKeychainNotice()
{
    VANTREL_ASSERT_UI_THREAD();
    if (!m_isShowingKeychainNotice) {
        return;
    }
    recordShownKeySavingNotice(m_services.defaults);
    // Before the notice releases whoever waits for it, lest they find this step half done.
    StateStep step(*this);
    step.set(m_isShowingKeychainNotice, false, &AISetupViewModel::isShowingKeychainNoticeChanged);
    performKeySave(step);
    m_services.keychainAccessNotice.acknowledge();
    step.publish();
}

void AISetupViewModel::checkLocalServers()
{
    VANTREL_ASSERT_UI_THREAD();
    if (m_step != Step::localModel || m_isCheckingLocalServers) {
        return;
    }
    StateStep step(*this);
    showError(std::nullopt, step);
    beginDetection(step);
    step.publish();
}

void AISetupViewModel::selectLocalServer(LocalModelServer server)
{
    VANTREL_ASSERT_UI_THREAD();
    if (server == m_selectedLocalServer || !statusOf(server).isRunning()) {
        return;
    }
    StateStep step(*this);
    selectServer(server, step);
    selectModel(firstOfModels(m_localModels), step);
    showError(std::nullopt, step);
    step.publish();
}

void AISetupViewModel::chooseLocalServer(int index)
{
    if (isPlaceIn(allLocalModelServers, index)) {
        selectLocalServer(allLocalModelServers.at(std::size_t(index)));
    }
}

void AISetupViewModel::stepLocalServer(int by)
{
    const QList<bool> usable = localServersUsable();
    const int step = by < 0 ? -1 : 1;
    for (int index = selectedLocalServerIndex() + step; isPlaceIn(usable, index); index += step) {
        if (usable.at(index)) {
            chooseLocalServer(index);
            return;
        }
    }
}

void AISetupViewModel::chooseLocalModelAt(int index)
{
    VANTREL_ASSERT_UI_THREAD();
    if (!isPlaceIn(m_localModels, index)) {
        return;
    }
    StateStep step(*this);
    selectModel(m_localModels.at(index), step);
    showError(std::nullopt, step);
    step.publish();
}

void AISetupViewModel::useLocalModel()
{
    VANTREL_ASSERT_UI_THREAD();
    if (m_step != Step::localModel) {
        return;
    }
    if (!m_selectedLocalServer || !m_selectedLocalModel) {
        refuse(u"Choose a model first."_s);
        return;
    }
    const AIProviderConfig config{AIProvider::custom, baseURL(*m_selectedLocalServer),
                                  *m_selectedLocalModel};
    StateStep step(*this);
    endJobs(step);
    complete(config, displayName(*m_selectedLocalServer), step);
    step.publish();
}

void AISetupViewModel::close()
{
    VANTREL_ASSERT_UI_THREAD();
    StateStep step(*this);
    endJobs(step);
    step.set(m_apiKeyDraft, QString(), &AISetupViewModel::apiKeyDraftChanged);
    step.publish();
    if (std::exchange(m_hasUnannouncedConfigurationChange, false)) {
        m_services.notificationCenter.post(aiConfigurationDidChange);
    }
}

void AISetupViewModel::showError(const std::optional<QString> &message, StateStep &step)
{
    step.set(m_errorMessage, message, &AISetupViewModel::errorMessageChanged);
}

void AISetupViewModel::openPage(const QUrl &page)
{
    VANTREL_ASSERT_UI_THREAD();
    if (!m_services.openURL(page)) {
        refuse(u"Couldn't open your browser. The page is "_s + page.toString());
    }
}

void AISetupViewModel::refuse(const QString &message)
{
    StateStep step(*this);
    showError(message, step);
    step.publish();
}

void AISetupViewModel::show(Step page, StateStep &step)
{
    step.set(m_step, page, &AISetupViewModel::stepChanged);
    showError(std::nullopt, step);
}

void AISetupViewModel::endJobs(StateStep &step)
{
    m_signInTask.cancel();
    m_keySaveTask.cancel();
    m_detectionTask.cancel();
    m_pendingKeySave.reset();
    step.set(m_isSigningIn, false, &AISetupViewModel::isSigningInChanged);
    step.set(m_isSavingKey, false, &AISetupViewModel::isSavingKeyChanged);
    step.set(m_canSaveKeyAgain, false, &AISetupViewModel::canSaveKeyAgainChanged);
    step.set(m_isShowingKeychainNotice, false, &AISetupViewModel::isShowingKeychainNoticeChanged);
    step.set(m_isCheckingLocalServers, false, &AISetupViewModel::isCheckingLocalServersChanged);
}

void AISetupViewModel::requestKeySave(const PendingKeySave &pending, StateStep &step)
{
    m_pendingKeySave = pending;
    showError(std::nullopt, step);
    if (hasShownKeySavingNotice(m_services.defaults) &&
        m_services.keychainAccessNotice.hasAcknowledged()) {
        performKeySave(step);
    } else {
        step.set(m_isShowingKeychainNotice, true,
                 &AISetupViewModel::isShowingKeychainNoticeChanged);
    }
}

void AISetupViewModel::performKeySave(StateStep &step)
{
    if (!m_pendingKeySave) {
        return;
    }
    m_keySaveTask = Job(runKeySave(*m_pendingKeySave));
    step.set(m_isSavingKey, true, &AISetupViewModel::isSavingKeyChanged);
    step.set(m_canSaveKeyAgain, false, &AISetupViewModel::canSaveKeyAgainChanged);
    showError(std::nullopt, step);
}

void AISetupViewModel::complete(const AIProviderConfig &config, const QString &providerName,
                                StateStep &step)
{
    m_services.settingsStore.saveAIConfig(config);
    m_hasUnannouncedConfigurationChange = true;
    m_readyMessage = u"Ready: using "_s + modelDisplayName(config.model, config.provider) +
                     u" via "_s + providerName;
    step.set(m_completedProvider, std::optional(config.provider),
             &AISetupViewModel::completedProviderChanged);
    step.set(m_hasCompletedSetup, true, &AISetupViewModel::hasCompletedSetupChanged);
    show(Step::done, step);
}

void AISetupViewModel::selectServer(std::optional<LocalModelServer> server, StateStep &step)
{
    const QList<QString> models = server ? statusOf(*server).models() : QList<QString>();
    step.set(m_selectedLocalServer, server, &AISetupViewModel::selectedLocalServerChanged);
    if (models != m_localModels) {
        m_localModels = models;
        step.announce(&AISetupViewModel::localModelsChanged);
        // The same model may have another place now.
        step.announce(&AISetupViewModel::selectedLocalModelChanged);
    }
}

void AISetupViewModel::selectModel(const std::optional<QString> &model, StateStep &step)
{
    step.set(m_selectedLocalModel, model, &AISetupViewModel::selectedLocalModelChanged);
}

void AISetupViewModel::takeDetection(const LocalModelServerStatuses &statuses, StateStep &step)
{
    step.set(m_localServerStatuses, statuses, &AISetupViewModel::localServerStatusesChanged);
    const auto hasModels = [this](LocalModelServer server) {
        return !statusOf(server).models().isEmpty();
    };
    const auto *const first =
        std::find_if(allLocalModelServers.begin(), allLocalModelServers.end(), hasModels);
    const bool isNothingFound = first == allLocalModelServers.end();
    step.set(m_isNoLocalModelFound, isNothingFound, &AISetupViewModel::isNoLocalModelFoundChanged);

    std::optional<LocalModelServer> server = m_selectedLocalServer;
    if (!server || !hasModels(*server)) {
        server.reset();
        if (!isNothingFound) {
            server = *first;
        }
    }
    selectServer(server, step);
    if (!m_selectedLocalModel || !m_localModels.contains(*m_selectedLocalModel)) {
        selectModel(firstOfModels(m_localModels), step);
    }
}

void AISetupViewModel::beginDetection(StateStep &step)
{
    m_detectionTask = Job(runDetection());
    step.set(m_isCheckingLocalServers, true, &AISetupViewModel::isCheckingLocalServersChanged);
    step.set(m_isNoLocalModelFound, false, &AISetupViewModel::isNoLocalModelFoundChanged);
}

LocalModelServerStatus AISetupViewModel::statusOf(LocalModelServer server) const
{
    return m_localServerStatuses.value(server, LocalModelServerStatus::notRunning());
}

Task<> AISetupViewModel::runSignIn()
{
    auto obtaining = m_services.signIn.obtainAPIKey();
    const auto key = co_await std::move(obtaining);
    StateStep step(*this);
    step.set(m_isSigningIn, false, &AISetupViewModel::isSigningInChanged);
    if (!key) {
        show(Step::choose, step);
        showError(key.error().description(), step);
        step.publish();
        co_return;
    }
    // The person is still in front of the browser.
    m_services.activateApp();
    constexpr AIProvider provider = AIProvider::openRouter;
    PendingKeySave pending;
    pending.apiKey = *key;
    pending.config = AIProviderConfig{provider, defaultBaseURL(provider), defaultModel(provider)};
    pending.providerName = displayName(provider);
    requestKeySave(pending, step);
    step.publish();
}

Task<> AISetupViewModel::runKeySave(PendingKeySave pending)
{
    const AIProvider provider = pending.config.provider;
    auto saving = m_services.keychainStore.saveAPIKey(pending.apiKey, provider);
    const auto saved = co_await std::move(saving);
    StateStep step(*this);
    step.set(m_isSavingKey, false, &AISetupViewModel::isSavingKeyChanged);
    if (!saved) {
        showError(u"Couldn't save the API key: "_s + saved.error().description(), step);
        // A pasted key is still in its field, where it can be mended.
        const bool isFromSignIn = m_step == Step::signingIn;
        if (!isFromSignIn) {
            m_pendingKeySave.reset();
        }
        step.set(m_canSaveKeyAgain, isFromSignIn, &AISetupViewModel::canSaveKeyAgainChanged);
        step.publish();
        co_return;
    }
    m_pendingKeySave.reset();
    m_services.keyPresenceStore.markSaved(provider);
    step.set(m_apiKeyDraft, QString(), &AISetupViewModel::apiKeyDraftChanged);
    complete(pending.config, pending.providerName, step);
    step.publish();
}

Task<> AISetupViewModel::runDetection()
{
    auto detecting = m_services.localDetector.detectAll();
    const LocalModelServerStatuses statuses = co_await std::move(detecting);
    StateStep step(*this);
    step.set(m_isCheckingLocalServers, false, &AISetupViewModel::isCheckingLocalServersChanged);
    takeDetection(statuses, step);
    step.publish();
}

} // namespace vantrel
