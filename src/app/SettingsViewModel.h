#pragma once

#include "ai/config/AIProviderConfig.h"
#include "ai/config/AppAppearance.h"
#include "platform/jobs/Job.h"
#include "platform/jobs/Task.h"

#include <QList>
#include <QObject>
#include <QString>

#include <optional>

namespace vantrel {

class APIKeyPresenceStore;
class AppearanceController;
class KeychainAccessNotice;
class KeychainWorker;
class NotificationCenter;
class SettingsStoring;
class UserDefaults;
template<typename Object>
class StateStep;

/// The settings: shows and edits the provider, its address, model and key, and the appearance.
///
/// What the person edits is kept until it is saved or the stored configuration was changed from
/// elsewhere, also while the window is closed. A saved key is never read into a field. The keychain
/// answers later; meanwhile everything can be edited, and its answer concerns the provider for
/// which it was asked. Thread: interface.
class SettingsViewModel final : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QList<QString> providerNames READ providerNames CONSTANT)
    Q_PROPERTY(int providerIndex READ providerIndex NOTIFY providerChanged)
    Q_PROPERTY(QString providerName READ providerName NOTIFY providerChanged)
    Q_PROPERTY(QString baseURL READ baseURL WRITE setBaseURL NOTIFY baseURLChanged)
    Q_PROPERTY(bool isBaseURLShown READ isBaseURLShown NOTIFY isBaseURLShownChanged)
    Q_PROPERTY(QString model READ model WRITE setModel NOTIFY modelChanged)
    Q_PROPERTY(bool isUsingCustomModel READ isUsingCustomModel NOTIFY isUsingCustomModelChanged)
    Q_PROPERTY(int appearanceIndex READ appearanceIndex NOTIFY appearanceChanged)
    Q_PROPERTY(QString apiKeyDraft READ apiKeyDraft WRITE setApiKeyDraft NOTIFY apiKeyDraftChanged)
    Q_PROPERTY(bool hasSavedKey READ hasSavedKey NOTIFY hasSavedKeyChanged)
    Q_PROPERTY(bool isKeyStateKnown READ isKeyStateKnown NOTIFY isKeyStateKnownChanged)
    Q_PROPERTY(bool isChangingKey READ isChangingKey NOTIFY isChangingKeyChanged)
    Q_PROPERTY(QString statusMessage READ statusMessage NOTIFY statusMessageChanged)
    Q_PROPERTY(bool statusIsError READ statusIsError NOTIFY statusIsErrorChanged)
    Q_PROPERTY(bool isBaseURLRefused READ isBaseURLRefused NOTIFY refusedFieldChanged)
    Q_PROPERTY(bool isModelRefused READ isModelRefused NOTIFY refusedFieldChanged)
    Q_PROPERTY(bool isKeyRefused READ isKeyRefused NOTIFY refusedFieldChanged)
    Q_PROPERTY(bool isShowingKeychainNotice READ isShowingKeychainNotice NOTIFY
                   isShowingKeychainNoticeChanged)
    Q_PROPERTY(
        vantrel::KeychainAccessNotice *keychainAccessNotice READ keychainAccessNotice CONSTANT)

public:
    /// All of it must outlive the view model.
    struct Services
    {
        SettingsStoring &settingsStore;
        KeychainWorker &keychainStore;
        KeychainAccessNotice &keychainAccessNotice; ///< Awaited before the keychain is read.
        AppearanceController &appearanceController;
        APIKeyPresenceStore &keyPresenceStore;
        UserDefaults &defaults;
        NotificationCenter &notificationCenter;
    };

    /// Shows the stored configuration. The keychain is not asked yet.
    explicit SettingsViewModel(const Services &services, QObject *parent = nullptr);
    ~SettingsViewModel() override;

    [[nodiscard]] AIProvider provider() const { return m_provider; }
    [[nodiscard]] const QString &baseURL() const { return m_baseURL; }
    [[nodiscard]] const QString &model() const { return m_model; }

    /// The model is none of the provider's suggestions.
    [[nodiscard]] bool isUsingCustomModel() const { return m_isUsingCustomModel; }

    [[nodiscard]] AppAppearance appearance() const;

    /// A key that was typed and is not saved yet.
    [[nodiscard]] const QString &apiKeyDraft() const { return m_apiKeyDraft; }

    /// The keychain holds a key for the provider; false as long as it has not answered.
    [[nodiscard]] bool hasSavedKey() const { return m_hasSavedKey; }
    [[nodiscard]] bool isKeyStateKnown() const { return m_isKeyStateKnown; }

    /// The keychain is saving or removing a key; until it has answered, neither can be asked again.
    [[nodiscard]] bool isChangingKey() const { return m_isChangingKey; }

    /// What came of the last command, or empty.
    [[nodiscard]] QString statusMessage() const;
    [[nodiscard]] bool statusIsError() const { return m_statusIsError; }

    /// Whether the error is about this field.
    [[nodiscard]] bool isBaseURLRefused() const { return m_refusedField == FormField::baseURL; }
    [[nodiscard]] bool isModelRefused() const { return m_refusedField == FormField::model; }
    [[nodiscard]] bool isKeyRefused() const { return m_refusedField == FormField::apiKey; }

    /// Only a custom provider's address is a choice; another's shows when it has to be mended.
    [[nodiscard]] bool isBaseURLShown() const { return m_isBaseURLShown; }

    /// The explanation before the first key is saved from here.
    [[nodiscard]] bool isShowingKeychainNotice() const { return m_isShowingKeychainNotice; }

    /// The explanation before the first read of a key, which the key's state waits for.
    [[nodiscard]] KeychainAccessNotice *keychainAccessNotice() const
    {
        return &m_services.keychainAccessNotice;
    }

    /// What was last loaded from the store or saved to it.
    [[nodiscard]] const AIProviderConfig &lastLoadedConfig() const { return m_lastLoadedConfig; }

    /// The places of the choices in `allAIProviders` and `allAppAppearances`.
    [[nodiscard]] int providerIndex() const;
    [[nodiscard]] int appearanceIndex() const;
    [[nodiscard]] QList<QString> providerNames() const;
    [[nodiscard]] QString providerName() const;

    /// Shows the stored configuration if it is not the one last loaded or saved; what was being
    /// edited is dropped then. Returns whether it did. For each time that the window is shown.
    Q_INVOKABLE bool reloadIfChanged();

    /// Asks the keychain whether it holds a key for the provider. For each time that the window is
    /// shown.
    Q_INVOKABLE void checkSavedKey();

    /// Begins to edit another provider, with its address and its default model, and asks for its
    /// key's state. The one that is shown already, or no provider's place, does nothing.
    void setProvider(AIProvider provider);
    Q_INVOKABLE void chooseProvider(int index);

    void setBaseURL(const QString &baseURL);
    void setModel(const QString &model);

    /// Takes a suggested model.
    Q_INVOKABLE void selectPreset(const QString &id);

    /// Takes a model identifier that the person types; `text` is what they typed so far.
    Q_INVOKABLE void selectCustomModel(const QString &text);

    void setApiKeyDraft(const QString &draft);

    /// Applies and stores the appearance at once. No appearance's place does nothing.
    void setAppearance(AppAppearance appearance);
    Q_INVOKABLE void chooseAppearance(int index);

    /// Saves the configuration and a key that was typed, or shows why not. Before the first key it
    /// shows the keychain notice instead, and `confirmKeychainNotice` goes on.
    Q_INVOKABLE void save();
    Q_INVOKABLE void confirmKeychainNotice();

    /// Removes the provider's key from the keychain; not while a save waits for its notice.
    Q_INVOKABLE void removeKey();

Q_SIGNALS:
    void providerChanged();
    void baseURLChanged();
    void isBaseURLShownChanged();
    void modelChanged();
    void isUsingCustomModelChanged();
    void appearanceChanged();
    void apiKeyDraftChanged();
    void hasSavedKeyChanged();
    void isKeyStateKnownChanged();
    void isChangingKeyChanged();
    void statusMessageChanged();
    void statusIsErrorChanged();
    void refusedFieldChanged();
    void isShowingKeychainNoticeChanged();

private:
    using Step = StateStep<SettingsViewModel>;

    enum class FormField { baseURL, model, apiKey };

    /// Sets the fields of a loaded configuration.
    void show(const AIProviderConfig &config, Step &step);
    void setKeyState(bool isKnown, bool hasKey, Step &step);

    void showStatus(const std::optional<QString> &message, Step &step);
    void showError(const QString &message, std::optional<FormField> field, Step &step);
    void setStatus(const std::optional<QString> &message, bool isError,
                   std::optional<FormField> field, Step &step);

    /// Publishes an error alone.
    void refuse(const QString &message, FormField field);

    /// Saves the trimmed fields.
    void performSave();

    [[nodiscard]] Task<bool> keychainHasKey(AIProvider provider);
    Task<> runKeyCheck(AIProvider provider);
    Task<> runKeySave(QString key, AIProvider provider);
    Task<> runKeyRemoval(AIProvider provider);

    Services m_services;
    AIProviderConfig m_lastLoadedConfig{};
    AIProvider m_provider = AIProvider::openRouter;
    QString m_baseURL{};
    bool m_isBaseURLShown = false;
    QString m_model{};
    bool m_isUsingCustomModel = false;
    QString m_apiKeyDraft{};
    bool m_hasSavedKey = false;
    bool m_isKeyStateKnown = false;
    bool m_isChangingKey = false;
    std::optional<QString> m_statusMessage{};
    bool m_statusIsError = false;
    std::optional<FormField> m_refusedField{};
    bool m_isShowingKeychainNotice = false;
    Job m_keyCheckTask{};
    Job m_keyChangeTask{};
};

} // namespace vantrel
