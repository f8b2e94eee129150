#include "app/SettingsViewModel.h"

#include "ai/config/AIModelPreset.h"
#include "ai/config/AINotifications.h"
#include "ai/config/AppearanceController.h"
#include "ai/config/SettingsStoring.h"
#include "persistence/APIKeyPresenceStore.h"
#include "persistence/KeySavingNotice.h"
#include "persistence/KeychainAccessNotice.h"
#include "persistence/KeychainWorker.h"
#include "platform/NotificationCenter.h"
#include "platform/StateStep.h"
#include "platform/jobs/RunQueue.h"

#include <algorithm>
#include <utility>

namespace vantrel {

using namespace Qt::Literals::StringLiterals;

namespace {

template<typename Choices, typename Choice>
int placeOf(Choice choice, const Choices &all)
{
    return int(std::find(all.begin(), all.end(), choice) - all.begin());
}

template<typename Choices>
bool isPlaceIn(const Choices &all, int index)
{
    return index >= 0 && index < int(all.size());
}

} // namespace

SettingsViewModel::SettingsViewModel(const Services &services, QObject *parent)
    : QObject(parent)
    , m_services(services)
{
    connect(&services.appearanceController, &AppearanceController::appearanceChanged, this,
            &SettingsViewModel::appearanceChanged);
    Step step(*this);
    show(services.settingsStore.loadAIConfig(), step);
}

SettingsViewModel::~SettingsViewModel() = default;

AppAppearance SettingsViewModel::appearance() const
{
    return m_services.appearanceController.appearance();
}

QString SettingsViewModel::statusMessage() const
{
    return m_statusMessage.value_or(QString());
}

int SettingsViewModel::providerIndex() const
{
    return placeOf(m_provider, allAIProviders);
}

int SettingsViewModel::appearanceIndex() const
{
    return placeOf(appearance(), allAppAppearances);
}

QList<QString> SettingsViewModel::providerNames() const
{
    QList<QString> names;
    for (const AIProvider provider : allAIProviders) {
        names.append(displayName(provider));
    }
    return names;
}

QString SettingsViewModel::providerName() const
{
    return displayName(m_provider);
}

bool SettingsViewModel::reloadIfChanged()
{
    VANTREL_ASSERT_UI_THREAD();
    const AIProviderConfig stored = m_services.settingsStore.loadAIConfig();
    if (stored == m_lastLoadedConfig) {
        return false;
    }
    Step step(*this);
    show(stored, step);
    step.publish();
    return true;
}

void SettingsViewModel::checkSavedKey()
{
    VANTREL_ASSERT_UI_THREAD();
    m_keyCheckTask = Job(runKeyCheck(m_provider));
}

void SettingsViewModel::setProvider(AIProvider provider)
{
    VANTREL_ASSERT_UI_THREAD();
    if (provider == m_provider) {
        return;
    }
    const QString defaultURL = defaultBaseURL(provider);
    const QList<AIModelPreset> models = presets(provider);
    Step step(*this);
    step.set(m_provider, provider, &SettingsViewModel::providerChanged);
    if (!defaultURL.isEmpty()) {
        step.set(m_baseURL, defaultURL, &SettingsViewModel::baseURLChanged);
    }
    step.set(m_isUsingCustomModel, models.isEmpty(), &SettingsViewModel::isUsingCustomModelChanged);
    step.set(m_model, models.isEmpty() ? QString() : models.first().id,
             &SettingsViewModel::modelChanged);
    showStatus(std::nullopt, step);
    setKeyState(false, false, step);
    checkSavedKey();
    step.publish();
}

void SettingsViewModel::chooseProvider(int index)
{
    if (isPlaceIn(allAIProviders, index)) {
        setProvider(allAIProviders.at(std::size_t(index)));
    }
}

void SettingsViewModel::setBaseURL(const QString &baseURL)
{
    VANTREL_ASSERT_UI_THREAD();
    Step step(*this);
    step.set(m_baseURL, baseURL, &SettingsViewModel::baseURLChanged);
    step.publish();
}

void SettingsViewModel::setModel(const QString &model)
{
    VANTREL_ASSERT_UI_THREAD();
    Step step(*this);
    step.set(m_model, model, &SettingsViewModel::modelChanged);
    step.publish();
}

void SettingsViewModel::selectPreset(const QString &id)
{
    VANTREL_ASSERT_UI_THREAD();
    Step step(*this);
    step.set(m_isUsingCustomModel, false, &SettingsViewModel::isUsingCustomModelChanged);
    step.set(m_model, id, &SettingsViewModel::modelChanged);
    step.publish();
}

void SettingsViewModel::selectCustomModel(const QString &text)
{
    VANTREL_ASSERT_UI_THREAD();
    Step step(*this);
    step.set(m_isUsingCustomModel, true, &SettingsViewModel::isUsingCustomModelChanged);
    step.set(m_model, text, &SettingsViewModel::modelChanged);
    step.publish();
}

void SettingsViewModel::setApiKeyDraft(const QString &draft)
{
    VANTREL_ASSERT_UI_THREAD();
    Step step(*this);
    step.set(m_apiKeyDraft, draft, &SettingsViewModel::apiKeyDraftChanged);
    step.publish();
}

void SettingsViewModel::setAppearance(AppAppearance appearance)
{
    VANTREL_ASSERT_UI_THREAD();
    m_services.appearanceController.setAppearance(appearance);
}

void SettingsViewModel::chooseAppearance(int index)
{
    if (isPlaceIn(allAppAppearances, index)) {
        setAppearance(allAppAppearances.at(std::size_t(index)));
    }
}

void SettingsViewModel::save()
{
    VANTREL_ASSERT_UI_THREAD();
    if (m_isChangingKey) {
        return;
    }
    if (!AIProviderConfig::validatedBaseURL(m_baseURL)) {
        refuse(u"Enter a valid base URL (starting with http:// or https://)."_s,
               FormField::baseURL);
        return;
    }
    if (m_model.trimmed().isEmpty()) {
        refuse(u"Enter a model name."_s, FormField::model);
        return;
    }
    if (!m_apiKeyDraft.trimmed().isEmpty() && !hasShownKeySavingNotice(m_services.defaults)) {
        Step step(*this);
        step.set(m_isShowingKeychainNotice, true,
                 &SettingsViewModel::isShowingKeychainNoticeChanged);
        step.publish();
        return;
    }
    performSave();
}

void SettingsViewModel::confirmKeychainNotice()
{
    VANTREL_ASSERT_UI_THREAD();
    if (!m_isShowingKeychainNotice) {
        return;
    }
    recordShownKeySavingNotice(m_services.defaults);
    Step step(*this);
    step.set(m_isShowingKeychainNotice, false, &SettingsViewModel::isShowingKeychainNoticeChanged);
    step.publish();
    performSave();
}

void SettingsViewModel::removeKey()
{
    VANTREL_ASSERT_UI_THREAD();
    if (m_isChangingKey || m_isShowingKeychainNotice) {
        return;
    }
    m_keyChangeTask = Job(runKeyRemoval(m_provider));
    Step step(*this);
    step.set(m_isChangingKey, true, &SettingsViewModel::isChangingKeyChanged);
    showStatus(std::nullopt, step);
    step.publish();
}

void SettingsViewModel::show(const AIProviderConfig &config, Step &step)
{
    m_lastLoadedConfig = config;
    if (config.provider != m_provider) {
        m_keyCheckTask.cancel();
        setKeyState(false, false, step);
    }
    const std::optional<QString> preset = presetID(config.model, config.provider);
    step.set(m_provider, config.provider, &SettingsViewModel::providerChanged);
    step.set(m_baseURL, config.baseURL, &SettingsViewModel::baseURLChanged);
    step.set(m_isUsingCustomModel, !preset, &SettingsViewModel::isUsingCustomModelChanged);
    step.set(m_model, preset.value_or(config.model), &SettingsViewModel::modelChanged);
    step.set(m_apiKeyDraft, QString(), &SettingsViewModel::apiKeyDraftChanged);
    showStatus(std::nullopt, step);
}

void SettingsViewModel::setKeyState(bool isKnown, bool hasKey, Step &step)
{
    step.set(m_isKeyStateKnown, isKnown, &SettingsViewModel::isKeyStateKnownChanged);
    step.set(m_hasSavedKey, hasKey, &SettingsViewModel::hasSavedKeyChanged);
}

void SettingsViewModel::showStatus(const std::optional<QString> &message, Step &step)
{
    setStatus(message, false, std::nullopt, step);
}

void SettingsViewModel::showError(const QString &message, std::optional<FormField> field,
                                  Step &step)
{
    setStatus(message, true, field, step);
}

void SettingsViewModel::setStatus(const std::optional<QString> &message, bool isError,
                                  std::optional<FormField> field, Step &step)
{
    step.set(m_statusMessage, message, &SettingsViewModel::statusMessageChanged);
    step.set(m_statusIsError, isError, &SettingsViewModel::statusIsErrorChanged);
    step.set(m_refusedField, field, &SettingsViewModel::refusedFieldChanged);
    // The provider may have changed in the same step.
    const bool isShown = m_provider == AIProvider::custom || isBaseURLRefused();
    step.set(m_isBaseURLShown, isShown, &SettingsViewModel::isBaseURLShownChanged);
}

void SettingsViewModel::refuse(const QString &message, FormField field)
{
    Step step(*this);
    showError(message, field, step);
    step.publish();
}

void SettingsViewModel::performSave()
{
    const AIProviderConfig config{m_provider, m_baseURL.trimmed(), m_model.trimmed()};
    const QString key = m_apiKeyDraft.trimmed();
    m_services.settingsStore.saveAIConfig(config);
    m_lastLoadedConfig = config;
    if (!key.isEmpty()) {
        m_keyChangeTask = Job(runKeySave(key, config.provider));
    }

    Step step(*this);
    step.set(m_baseURL, config.baseURL, &SettingsViewModel::baseURLChanged);
    step.set(m_model, config.model, &SettingsViewModel::modelChanged);
    step.set(m_isChangingKey, !key.isEmpty(), &SettingsViewModel::isChangingKeyChanged);
    showStatus(key.isEmpty() ? std::optional(u"Saved."_s) : std::nullopt, step);
    step.publish();
    if (key.isEmpty()) {
        m_services.notificationCenter.post(aiConfigurationDidChange);
    }
}

Task<bool> SettingsViewModel::keychainHasKey(AIProvider provider)
{
    // Of the key itself nothing is kept.
    auto reading = m_services.keychainStore.apiKey(provider);
    const std::optional<QString> key = co_await std::move(reading);
    co_return key.has_value();
}

Task<> SettingsViewModel::runKeyCheck(AIProvider provider)
{
    auto notice = m_services.keychainAccessNotice.showIfNeededAndWait();
    co_await std::move(notice);
    auto asking = keychainHasKey(provider);
    const bool hasKey = co_await std::move(asking);
    if (hasKey) {
        m_services.keyPresenceStore.markSaved(provider);
    }
    Step step(*this);
    setKeyState(true, hasKey, step);
    step.publish();
}

Task<> SettingsViewModel::runKeySave(QString key, AIProvider provider)
{
    auto saving = m_services.keychainStore.saveAPIKey(key, provider);
    const auto saved = co_await std::move(saving);
    Step step(*this);
    step.set(m_isChangingKey, false, &SettingsViewModel::isChangingKeyChanged);
    if (!saved) {
        showError(u"Couldn't save the API key: "_s + saved.error().description(), FormField::apiKey,
                  step);
        step.publish();
        co_return;
    }
    m_services.keyPresenceStore.markSaved(provider);
    if (m_apiKeyDraft.trimmed() == key) {
        step.set(m_apiKeyDraft, QString(), &SettingsViewModel::apiKeyDraftChanged);
    }
    if (m_provider == provider) {
        m_keyCheckTask.cancel();
        setKeyState(true, true, step);
    }
    showStatus(u"Saved."_s, step);
    step.publish();
    m_services.notificationCenter.post(aiConfigurationDidChange);
}

Task<> SettingsViewModel::runKeyRemoval(AIProvider provider)
{
    auto removing = m_services.keychainStore.deleteAPIKey(provider);
    const auto removed = co_await std::move(removing);
    Step step(*this);
    step.set(m_isChangingKey, false, &SettingsViewModel::isChangingKeyChanged);
    if (!removed) {
        showError(u"Couldn't remove the API key: "_s + removed.error().description(), std::nullopt,
                  step);
        step.publish();
        co_return;
    }
    m_services.keyPresenceStore.markRemoved(provider);
    if (m_provider == provider) {
        m_keyCheckTask.cancel();
        setKeyState(true, false, step);
    }
    showStatus(u"API key removed."_s, step);
    step.publish();
}

} // namespace vantrel
