#pragma once

#include "ai/config/AIProviderConfig.h"
#include "onboarding/LocalModelServerDetecting.h"
#include "platform/jobs/Job.h"
#include "platform/jobs/Task.h"

#include <QList>
#include <QObject>
#include <QString>
#include <QUrl>

#include <functional>
#include <optional>

namespace vantrel {

class APIKeyPresenceStore;
class KeychainAccessNotice;
class KeychainWorker;
class NotificationCenter;
class OpenRouterSigningIn;
class SettingsStoring;
class UserDefaults;
template<typename Object>
class StateStep;

/// The setup of a provider, page by page: a sign-in with OpenRouter in the browser, a pasted key,
/// or a model server on this machine. Made anew for each time that the sheet is shown. Destroying
/// it ends what is under way; a key that the keychain is saving at that moment may then be saved
/// without being used. Thread: interface.
class AISetupViewModel final : public QObject
{
    Q_OBJECT
    Q_PROPERTY(Step step READ step NOTIFY stepChanged)
    Q_PROPERTY(QString readyMessage READ readyMessage NOTIFY stepChanged)
    Q_PROPERTY(QString errorMessage READ errorMessage NOTIFY errorMessageChanged)
    Q_PROPERTY(bool isShowingKeychainNotice READ isShowingKeychainNotice NOTIFY
                   isShowingKeychainNoticeChanged)
    Q_PROPERTY(bool hasCompletedSetup READ hasCompletedSetup NOTIFY hasCompletedSetupChanged)
    Q_PROPERTY(bool isOpenRouterSetUp READ isOpenRouterSetUp NOTIFY completedProviderChanged)
    Q_PROPERTY(bool isSigningIn READ isSigningIn NOTIFY isSigningInChanged)
    Q_PROPERTY(bool isSavingKey READ isSavingKey NOTIFY isSavingKeyChanged)
    Q_PROPERTY(bool canSaveKeyAgain READ canSaveKeyAgain NOTIFY canSaveKeyAgainChanged)

    Q_PROPERTY(QList<QString> pasteProviderNames READ pasteProviderNames CONSTANT)
    Q_PROPERTY(int pasteProviderIndex READ pasteProviderIndex NOTIFY pasteProviderChanged)
    Q_PROPERTY(QString pasteProviderName READ pasteProviderName NOTIFY pasteProviderChanged)
    Q_PROPERTY(bool isPrepaidCreditNeeded READ isPrepaidCreditNeeded NOTIFY pasteProviderChanged)
    Q_PROPERTY(QString apiKeyDraft READ apiKeyDraft WRITE setApiKeyDraft NOTIFY apiKeyDraftChanged)
    Q_PROPERTY(QString pasteModel READ pasteModel WRITE setPasteModel NOTIFY pasteModelChanged)
    Q_PROPERTY(bool isPasteModelCustom READ isPasteModelCustom NOTIFY isPasteModelCustomChanged)

    Q_PROPERTY(bool isCheckingLocalServers READ isCheckingLocalServers NOTIFY
                   isCheckingLocalServersChanged)
    Q_PROPERTY(bool isNoLocalModelFound READ isNoLocalModelFound NOTIFY isNoLocalModelFoundChanged)
    Q_PROPERTY(QList<QString> localServerNames READ localServerNames CONSTANT)
    Q_PROPERTY(QList<QString> localServerStatusTexts READ localServerStatusTexts NOTIFY
                   localServerStatusesChanged)
    Q_PROPERTY(
        QList<bool> localServersRunning READ localServersRunning NOTIFY localServerStatusesChanged)
    Q_PROPERTY(
        QList<bool> localServersUsable READ localServersUsable NOTIFY localServerStatusesChanged)
    Q_PROPERTY(
        QList<bool> localServersMissing READ localServersMissing NOTIFY localServerStatusesChanged)
    Q_PROPERTY(int selectedLocalServerIndex READ selectedLocalServerIndex NOTIFY
                   selectedLocalServerChanged)
    Q_PROPERTY(QList<QString> localModels READ localModels NOTIFY localModelsChanged)
    Q_PROPERTY(
        int selectedLocalModelIndex READ selectedLocalModelIndex NOTIFY selectedLocalModelChanged)
    Q_PROPERTY(
        QString selectedLocalModelName READ selectedLocalModelName NOTIFY selectedLocalModelChanged)

public:
    enum class Step { choose, signingIn, pasteKey, localModel, done };
    Q_ENUM(Step)

    /// All of it must outlive the view model.
    struct Services
    {
        SettingsStoring &settingsStore;
        KeychainWorker &keychainStore;
        KeychainAccessNotice &keychainAccessNotice;
        APIKeyPresenceStore &keyPresenceStore;
        OpenRouterSigningIn &signIn;
        LocalModelServerDetecting &localDetector;
        UserDefaults &defaults;
        NotificationCenter &notificationCenter;
        std::function<void()> activateApp; ///< Brings the application to the front.

        /// Opens a page in the person's browser and tells whether it did.
        std::function<bool(const QUrl &page)> openURL;
    };

    explicit AISetupViewModel(Services services, QObject *parent = nullptr);
    ~AISetupViewModel() override;

    [[nodiscard]] Step step() const { return m_step; }

    /// What was set up, for the last page; empty before.
    [[nodiscard]] const QString &readyMessage() const { return m_readyMessage; }

    /// The sentence under the current page, or empty.
    [[nodiscard]] QString errorMessage() const { return m_errorMessage.value_or(QString()); }

    /// The explanation before a key is saved for the first time.
    [[nodiscard]] bool isShowingKeychainNotice() const { return m_isShowingKeychainNotice; }

    [[nodiscard]] bool hasCompletedSetup() const { return m_hasCompletedSetup; }
    [[nodiscard]] std::optional<AIProvider> completedProvider() const
    {
        return m_completedProvider;
    }
    [[nodiscard]] bool isOpenRouterSetUp() const
    {
        return m_completedProvider == AIProvider::openRouter;
    }

    /// The browser is awaited, or the key that it brought.
    [[nodiscard]] bool isSigningIn() const { return m_isSigningIn; }

    /// The keychain has not answered yet.
    [[nodiscard]] bool isSavingKey() const { return m_isSavingKey; }

    /// The key of a sign-in could not be saved. It has no field from which it could be saved again.
    [[nodiscard]] bool canSaveKeyAgain() const { return m_canSaveKeyAgain; }

    [[nodiscard]] AIProvider pasteProvider() const { return m_pasteProvider; }
    [[nodiscard]] QList<QString> pasteProviderNames() const;
    [[nodiscard]] int pasteProviderIndex() const;
    [[nodiscard]] QString pasteProviderName() const;
    /// The provider's keys work only once its account has been paid into.
    [[nodiscard]] bool isPrepaidCreditNeeded() const
    {
        return m_pasteProvider == AIProvider::openAI;
    }
    [[nodiscard]] const QString &apiKeyDraft() const { return m_apiKeyDraft; }
    [[nodiscard]] const QString &pasteModel() const { return m_pasteModel; }
    [[nodiscard]] bool isPasteModelCustom() const { return m_isPasteModelCustom; }

    [[nodiscard]] bool isCheckingLocalServers() const { return m_isCheckingLocalServers; }

    /// The last detection; empty before the first.
    [[nodiscard]] const LocalModelServerStatuses &localServerStatuses() const
    {
        return m_localServerStatuses;
    }

    /// A detection has ended and found no server with a model.
    [[nodiscard]] bool isNoLocalModelFound() const { return m_isNoLocalModelFound; }

    /// Of every server, in the order of `allLocalModelServers`.
    [[nodiscard]] QList<QString> localServerNames() const;
    [[nodiscard]] QList<QString> localServerStatusTexts() const;
    [[nodiscard]] QList<bool> localServersRunning() const;
    [[nodiscard]] QList<bool> localServersUsable() const; ///< They have a model.

    /// They are known not to run; none is before the first detection.
    [[nodiscard]] QList<bool> localServersMissing() const;

    [[nodiscard]] std::optional<LocalModelServer> selectedLocalServer() const
    {
        return m_selectedLocalServer;
    }
    [[nodiscard]] std::optional<QString> selectedLocalModel() const { return m_selectedLocalModel; }

    /// The models of the selected server.
    [[nodiscard]] const QList<QString> &localModels() const { return m_localModels; }

    /// The places of the selections, -1 for none.
    [[nodiscard]] int selectedLocalServerIndex() const;
    [[nodiscard]] int selectedLocalModelIndex() const;

    [[nodiscard]] QString selectedLocalModelName() const; ///< Empty for none.

    /// Open the vendors' pages in the browser: for a key of the provider of the paste page, for
    /// credits, and for the server at this place. One that does not open is named in the error.
    Q_INVOKABLE void openKeyPage();
    Q_INVOKABLE void openCreditsPage();
    Q_INVOKABLE void openDownloadPage(int index);

    /// The three paths; each goes from the first page only.
    Q_INVOKABLE void startSignIn();
    Q_INVOKABLE void choosePasteKey();
    Q_INVOKABLE void chooseLocalModel();

    /// Goes from any page but the last to the first one and ends what is under way.
    Q_INVOKABLE void back();

    /// The same, from the page of the sign-in.
    Q_INVOKABLE void cancelSignIn() { back(); }

    /// Takes another provider with its default model.
    void setPasteProvider(AIProvider provider);
    Q_INVOKABLE void choosePasteProvider(int index);
    void setApiKeyDraft(const QString &draft);
    void setPasteModel(const QString &model);
    Q_INVOKABLE void selectPreset(const QString &id);
    Q_INVOKABLE void selectCustomModel(const QString &text);

    /// Saves the pasted key, or shows why not.
    Q_INVOKABLE void savePastedKey();

    /// Tries once more to save the key of a sign-in.
    Q_INVOKABLE void saveKeyAgain();

    /// Goes on behind the explanation.
    Q_INVOKABLE void confirmKeychainNotice();

    Q_INVOKABLE void checkLocalServers();

    /// Takes a running server with its first model.
    void selectLocalServer(LocalModelServer server);
    Q_INVOKABLE void chooseLocalServer(int index);

    /// Takes the next usable server behind the selected one, or before it for a negative `by`.
    Q_INVOKABLE void stepLocalServer(int by);
    Q_INVOKABLE void chooseLocalModelAt(int index);
    Q_INVOKABLE void useLocalModel();

    /// For the end of the sheet, whichever way it is left. Ends what is under way, and announces
    /// the changed configuration if there is one.
    Q_INVOKABLE void close();

Q_SIGNALS:
    void stepChanged();
    void errorMessageChanged();
    void isShowingKeychainNoticeChanged();
    void hasCompletedSetupChanged();
    void completedProviderChanged();
    void isSigningInChanged();
    void isSavingKeyChanged();
    void canSaveKeyAgainChanged();
    void pasteProviderChanged();
    void apiKeyDraftChanged();
    void pasteModelChanged();
    void isPasteModelCustomChanged();
    void isCheckingLocalServersChanged();
    void isNoLocalModelFoundChanged();
    void localServerStatusesChanged();
    void selectedLocalServerChanged();
    void localModelsChanged();
    void selectedLocalModelChanged();

private:
    using StateStep = vantrel::StateStep<AISetupViewModel>;

    /// A key that is being saved, or waits to be: behind the explanation, or after a refusal.
    struct PendingKeySave
    {
        QString apiKey{};
        AIProviderConfig config{};
        QString providerName{};
    };

    void showError(const std::optional<QString> &message, StateStep &step);

    void openPage(const QUrl &page);

    /// Publishes an error alone.
    void refuse(const QString &message);
    void show(Step page, StateStep &step);

    /// Ends every job, with all that tells of one.
    void endJobs(StateStep &step);

    /// Explains first if that has not been done.
    void requestKeySave(const PendingKeySave &pending, StateStep &step);
    void performKeySave(StateStep &step);
    void complete(const AIProviderConfig &config, const QString &providerName, StateStep &step);

    void selectServer(std::optional<LocalModelServer> server, StateStep &step);
    void selectModel(const std::optional<QString> &model, StateStep &step);
    void takeDetection(const LocalModelServerStatuses &statuses, StateStep &step);
    void beginDetection(StateStep &step);
    [[nodiscard]] LocalModelServerStatus statusOf(LocalModelServer server) const;

    Task<> runSignIn();
    Task<> runKeySave(PendingKeySave pending);
    Task<> runDetection();

    Services m_services;
    Step m_step = Step::choose;
    QString m_readyMessage{};
    std::optional<QString> m_errorMessage{};
    bool m_isShowingKeychainNotice = false;
    bool m_hasCompletedSetup = false;
    bool m_hasUnannouncedConfigurationChange = false;
    std::optional<AIProvider> m_completedProvider{};
    bool m_isSigningIn = false;
    bool m_isSavingKey = false;
    bool m_canSaveKeyAgain = false;
    std::optional<PendingKeySave> m_pendingKeySave{};

    AIProvider m_pasteProvider = AIProvider::openRouter;
    QString m_apiKeyDraft{};
    QString m_pasteModel{};
    bool m_isPasteModelCustom = false;

    bool m_isCheckingLocalServers = false;
    bool m_isNoLocalModelFound = false;
    LocalModelServerStatuses m_localServerStatuses{};
    std::optional<LocalModelServer> m_selectedLocalServer{};
    QList<QString> m_localModels{};
    std::optional<QString> m_selectedLocalModel{};

    Job m_signInTask{};
    Job m_keySaveTask{};
    Job m_detectionTask{};
};

} // namespace vantrel
