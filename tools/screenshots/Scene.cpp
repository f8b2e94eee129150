#include "Scene.h"

#include "SampleChanges.h"

#include "ai/OpenAICompatibleAIService.h"
#include "models/DiffText.h"
#include "models/DisplayedHunks.h"
#include "platform/jobs/RunQueue.h"
#include "views/CodePanesItem.h"

#include <QCoreApplication>
#include <QCursor>
#include <QEventLoop>
#include <QGuiApplication>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QStyleHints>

#include <utility>

namespace vantrel::screenshots {

using namespace Qt::Literals::StringLiterals;

namespace {

const QString releaseNotes =
    u"**Calmer on large change sets.** A file of 100,000 changed lines opens at once, and "
    "summaries appear while the list is still being read.\n\n"
    "- The explanation of a hunk can be copied with `Ctrl+C`.\n"
    "- Branch names of any length leave room for the repository's.\n"
    "- Sign-in ends by itself when the browser is closed.\n\n"
    "Fixed: a repository on a slow disk no longer holds up the window."_s;

constexpr auto acknowledgedKey = "keychainAccessNotice.hasAcknowledged";
constexpr auto shownSettingsNoticeKey = "settings.hasShownKeychainNotice";

ProcessFailure gitFailure(const QString &message)
{
    ProcessRunnerError error;
    error.status = 128;
    error.message = message;
    return error;
}

SampleAIService::Explanation completed(int hunkIndex)
{
    SampleAIService::Explanation scripted;
    scripted.explanation = sampleExplanations().at(hunkIndex);
    return scripted;
}

SampleAIService::Explanation halfWritten()
{
    const QString prose = sampleExplanations().at(1).explanation;
    const QString lastWords = u"leaves with"_s;
    SampleAIService::Explanation scripted;
    scripted.prose = prose.first(prose.indexOf(lastWords) + lastWords.size());
    return scripted;
}

AIServiceError serviceError(AIServiceError::Case kind)
{
    AIServiceError error;
    error.kind = kind;
    return error;
}

SampleAIService::Explanation withoutKey()
{
    SampleAIService::Explanation scripted;
    scripted.error = serviceError(AIServiceError::Case::missingAPIKey);
    return scripted;
}

SampleAIService::Answer wholeAnswer()
{
    SampleAIService::Answer answer;
    answer.text = u"`HttpClient::send` does. It lets the exception pass after one retry, and the "
                  "session screen turns it into the sign-in page. The background sync does not "
                  "catch it yet, so a revoked token ends that thread."_s;
    answer.isComplete = true;
    return answer;
}

SampleAIService::Answer answerInMarkdown()
{
    SampleAIService::Answer answer;
    answer.text = u"Test **both** ways out of `refresh()`:\n\n"
                  "1. two callers at once get *one* request\n"
                  "2. a 400 reply throws `SignInRequired`\n\n"
                  "```cpp\n"
                  "EXPECT_THROW(store.refresh(\"old\"),\n"
                  "             SignInRequired);\n"
                  "```\n"
                  "See [the gate](docs/token-refresh.md) for &lt;T&gt; and <b>others</b>."_s;
    answer.isComplete = true;
    return answer;
}

SampleAIService::Answer withoutCredits()
{
    SampleAIService::Answer answer;
    answer.error = errorForStatus(402);
    return answer;
}

/// Every file's summary, but for one that failed for each kind of reason.
QHash<QString, SampleAIService::Summary> mixedSummaries()
{
    QHash<QString, SampleAIService::Summary> summaries;
    const QHash<QString, QString> sentences = sampleSummaries();
    for (auto entry = sentences.cbegin(); entry != sentences.cend(); ++entry) {
        summaries.insert(entry.key(), entry.value());
    }
    summaries.insert(u"src/http/legacy_retry.cpp"_s,
                     failure(AIFailure(serviceError(AIServiceError::Case::invalidAPIKey))));
    summaries.insert(u"src/http/retry_policy.cpp"_s, failure(AIFailure(errorForStatus(429))));
    return summaries;
}

} // namespace

/// A name on the command line and the way there.
struct Scene::State
{
    QString name{};
    std::function<void(Scene &)> show{};
};

QStringList Scene::states()
{
    QStringList names;
    for (const State &state : all()) {
        names.append(state.name);
    }
    return names;
}

Scene::Scene(AppAppearance appearance)
    : m_defaults(m_folder.path())
    , m_settings(m_defaults)
    , m_appearanceController(m_settings)
    , m_appearance(m_appearanceController)
    , m_gitWorker(m_git)
    , m_aiWorker(m_ai)
    , m_chatHistory(m_defaults)
    , m_keychain(std::make_shared<SampleKeychain>(), m_clock)
    , m_keyPresence(m_defaults)
{
    m_appearanceController.setAppearance(appearance);
}

Scene::~Scene()
{
    m_git.letGo();
}

QQuickWindow *Scene::show(const QString &state, QSize size)
{
    if (state != u"keychain-notice"_s) {
        const auto written = m_defaults.setBoolean(QString::fromLatin1(acknowledgedKey), true);
        if (!written) {
            return nullptr;
        }
    }
    m_settings.saveAIConfig({AIProvider::openRouter, defaultBaseURL(AIProvider::openRouter),
                             u"google/gemini-3.8-flash"_s});
    // Whether a cursor that blinks is seen is a matter of the moment.
    QGuiApplication::styleHints()->setCursorFlashTime(0);
    // The pointer would else rest on the first button.
    QCursor::setPos(-100, -100);
    m_notice = std::make_unique<KeychainAccessNotice>(m_defaults);
    m_settingsViewModel = std::make_unique<SettingsViewModel>(
        SettingsViewModel::Services{m_settings, m_keychain, *m_notice, m_appearanceController,
                                    m_keyPresence, m_defaults, m_notificationCenter});
    m_setupPresenter = std::make_unique<AISetupPresenter>(AISetupPresenter::Services{
        m_settings, m_keyPresence, m_setupSession, m_notificationCenter});
    m_setupSheet = std::make_unique<AISetupSheet>(
        *m_setupPresenter,
        AISetupViewModel::Services{m_settings, m_keychain, *m_notice, m_keyPresence, m_signIn,
                                   m_localDetector, m_defaults, m_notificationCenter, [] {},
                                   [](const QUrl &) { return true; }});
    m_updater = std::make_unique<FeedSoftwareUpdater>(FeedSoftwareUpdater::Services{
        m_updateServer, m_updateServer.configuration(), u"0.1.0"_s, m_folder.filePath(u"updates"_s),
        [](const QUrl &) { return true; }});
    m_rootViewModel = std::make_unique<RootViewModel>(
        ReviewServices{m_gitWorker, m_aiWorker, *m_notice, m_chatHistory, m_coordinator,
                       m_notificationCenter},
        m_recentRepos, m_repositoryGuard, *m_settingsViewModel, *m_setupSheet, m_updater.get());
    m_mainWindow = std::make_unique<MainWindow>(*m_rootViewModel, m_appearance, true);
    m_window = m_mainWindow->window();
    if (m_window == nullptr) {
        return nullptr;
    }
    m_window->resize(size);
    wait([this, size] { return m_window->contentItem()->size().toSize() == size; });

    for (const State &known : all()) {
        if (known.name == state) {
            known.show(*this);
        }
    }
    // Whatever else was under way comes to its end, or the picture would depend on the moment.
    RunQueue::interfaceThread().runUntilIdle();
    return m_window;
}

QImage Scene::picture(const QString &state, QSize size)
{
    QQuickWindow *const window = show(state, size);
    return window == nullptr ? QImage() : window->grabWindow();
}

const QList<Scene::State> &Scene::all()
{
    static const QList<State> states = {
        {u"picker"_s, [](Scene &scene) { scene.showPicker(); }},
        {u"picker-recents"_s, [](Scene &scene) { scene.showRecents(); }},
        {u"picker-missing"_s, [](Scene &scene) { scene.showMissingRecent(); }},
        {u"picker-refused"_s, [](Scene &scene) { scene.showRefusal(); }},
        {u"picker-programs"_s, [](Scene &scene) { scene.showProgramsQuestion(); }},
        {u"files-loading"_s, [](Scene &scene) { scene.showLoadingFiles(); }},
        {u"files-summaries"_s, [](Scene &scene) { scene.showFirstSummary(); }},
        {u"files-loaded"_s, [](Scene &scene) { scene.showSummaries(); }},
        {u"files-clean"_s, [](Scene &scene) { scene.showFiles(QList<FileChange>()); }},
        {u"files-git-error"_s,
         [](Scene &scene) {
             scene.showFiles(failure(gitFailure(
                 u"fatal: not a git repository (or any of the parent directories): .git"_s)));
         }},
        {u"diff-loading"_s, [](Scene &scene) { scene.showTokenStore({}); }},
        {u"diff-streaming"_s, [](Scene &scene) { scene.showTokenStore(halfWritten()); }},
        {u"diff-loaded"_s, [](Scene &scene) { scene.showLoadedTokenStore(); }},
        {u"diff-scrolled-right"_s,
         [](Scene &scene) {
             scene.showLoadedTokenStore();
             auto *const panes = scene.m_window->findChild<CodePanesItem *>();
             panes->setContentX(panes->maximumContentX());
         }},
        {u"diff-selection"_s, [](Scene &scene) { scene.showSelection(); }},
        {u"diff-failed"_s, [](Scene &scene) { scene.showTokenStore(withoutKey()); }},
        {u"diff-no-changes"_s,
         [](Scene &scene) { scene.showFile(static_cast<int>(SampleRow::withoutText)); }},
        {u"diff-git-error"_s, [](Scene &scene) { scene.showGitErrorOfDiff(); }},
        {u"diff-thinking"_s, [](Scene &scene) { scene.showQuestion({}); }},
        {u"diff-chat"_s, [](Scene &scene) { scene.showQuestion(wholeAnswer()); }},
        {u"diff-chat-markdown"_s, [](Scene &scene) { scene.showQuestion(answerInMarkdown()); }},
        {u"diff-chat-error"_s, [](Scene &scene) { scene.showFailedQuestion(); }},
        {u"keychain-notice"_s, [](Scene &scene) { scene.showNotice(); }},
        {u"settings-no-key"_s, [](Scene &scene) { scene.showSettings(); }},
        {u"settings-key-saved"_s, [](Scene &scene) { scene.showSavedKey(); }},
        {u"settings-custom-model"_s, [](Scene &scene) { scene.showRemovedKey(); }},
        {u"settings-custom-error"_s, [](Scene &scene) { scene.showRefusedBaseURL(); }},
        {u"settings-model-menu"_s, [](Scene &scene) { scene.showModelMenu(); }},
        {u"settings-remove"_s, [](Scene &scene) { scene.showRemovalQuestion(); }},
        {u"settings-keychain"_s, [](Scene &scene) { scene.showSettingsNotice(); }},
        {u"setup-choose"_s, [](Scene &scene) { scene.showSetup(); }},
        {u"setup-choose-error"_s,
         [](Scene &scene) {
             scene.showSignIn(failure(OpenRouterSignInError{
                 OpenRouterSignInError::Case::couldNotOpenBrowser, std::nullopt, 0}));
         }},
        {u"setup-signing-in"_s, [](Scene &scene) { scene.showSignIn(std::nullopt); }},
        {u"setup-paste-openrouter"_s,
         [](Scene &scene) { scene.showPastedKey(AIProvider::openRouter); }},
        {u"setup-paste-openai"_s, [](Scene &scene) { scene.showUnknownModel(); }},
        {u"setup-keychain"_s,
         [](Scene &scene) {
             scene.showPastedKey(AIProvider::openRouter);
             scene.m_setupSheet->viewModel()->savePastedKey();
         }},
        {u"setup-local-checking"_s, [](Scene &scene) { scene.showLocalServers(std::nullopt); }},
        {u"setup-local-found"_s,
         [](Scene &scene) {
             scene.showLocalServers(LocalModelServerStatuses{
                 {LocalModelServer::ollama,
                  LocalModelServerStatus::running(
                      {u"qwen3-coder:30b"_s, u"llama3.2"_s, u"gpt-oss:20b"_s})},
                 {LocalModelServer::lmStudio, LocalModelServerStatus::notRunning()}});
         }},
        {u"setup-local-no-models"_s,
         [](Scene &scene) {
             scene.showLocalServers(LocalModelServerStatuses{
                 {LocalModelServer::ollama, LocalModelServerStatus::running({})},
                 {LocalModelServer::lmStudio, LocalModelServerStatus::notRunning()}});
         }},
        {u"setup-local-none"_s,
         [](Scene &scene) {
             scene.showLocalServers(LocalModelServerStatuses{
                 {LocalModelServer::ollama, LocalModelServerStatus::notRunning()},
                 {LocalModelServer::lmStudio, LocalModelServerStatus::notRunning()}});
         }},
        {u"setup-done"_s,
         [](Scene &scene) {
             scene.recordShownNotice();
             scene.showSignIn(u"sample"_s);
         }},
        {u"setup-done-local"_s, [](Scene &scene) { scene.showLocalSetup(); }},
        {u"update-menu"_s, [](Scene &scene) { scene.showUpdateMenu(); }},
        {u"update-checking"_s, [](Scene &scene) { scene.checkForUpdates(); }},
        {u"update-none"_s, [](Scene &scene) { scene.showOffer(u"0.1.0"_s); }},
        {u"update-available"_s, [](Scene &scene) { scene.showOffer(u"0.2.0"_s); }},
        {u"update-downloading"_s, [](Scene &scene) { scene.showDownload(0.4); }},
        {u"update-ready"_s, [](Scene &scene) { scene.showDownload(1); }},
        {u"update-failed"_s,
         [](Scene &scene) {
             scene.m_updateServer.refuse(404);
             scene.checkForUpdates();
         }},
    };
    return states;
}

void Scene::showPicker() {}

void Scene::showRecents()
{
    // Days whose names do not change with the day on which the picture is made.
    const QDate today = QDate::currentDate();
    const QList<std::pair<QString, QDateTime>> opened{
        {u"src/ledger-api"_s, QDateTime(today, QTime(9, 42))},
        {u"src/paper-trail"_s, QDateTime(today, QTime(8, 15))},
        {u"work/platform/infra"_s, QDateTime(today.addDays(-1), QTime(17, 3))},
        {u"work/clients/northwind/mobile-client"_s, QDateTime(QDate(2024, 11, 16), QTime(9, 0))},
        {u".dotfiles"_s, QDateTime(QDate(2024, 11, 14), QTime(9, 0))},
        {u"Documents/thesis"_s, QDateTime(QDate(2024, 11, 2), QTime(9, 0))},
    };
    QList<RecentRepo> repos;
    for (const auto &[path, time] : opened) {
        repos.append({QUuid::createUuid(), path.section(u'/', -1), sampleHome() + path, time});
    }
    m_recentRepos->setRepos(std::move(repos));
    m_rootViewModel->picker()->reloadRecents();
    wait([this] { return !m_rootViewModel->picker()->recentRepos().isEmpty(); });
}

void Scene::showMissingRecent()
{
    const QString path = sampleHome() + u"work/platform/infra"_s;
    m_recentRepos->setMissing(path);
    showRecents();
    wait([this, path] { return m_rootViewModel->picker()->isMissing(path); });
}

void Scene::showRefusal()
{
    m_rootViewModel->openFolder(QUrl::fromLocalFile(m_folder.path()));
    wait([this] { return !m_rootViewModel->picker()->isOpening(); });
}

void Scene::showProgramsQuestion()
{
    m_repositoryGuard->setPrograms(
        {{{},
          u"filter.notebooks.clean"_s,
          u"\"/usr/bin/python3\" -m nbclean --keep-metadata=kernelspec --indent 1 -- %f"_s},
         {u"vendor/fonts"_s, u"filter.sealed.clean"_s, u"tools/seal clean"_s}});
    showRecents();
    m_rootViewModel->openFolder(QUrl::fromLocalFile(sampleHome() + u"src/paper-trail"_s));
    wait([this] { return m_rootViewModel->picker()->isAsking(); });
}

void Scene::showFileList()
{
    m_coordinator.openRepository(sampleRepository());
    wait([this] { return m_rootViewModel->fileList()->hasLoaded(); });
}

void Scene::showFiles(SampleGitService::Listing listing)
{
    m_git.setListing(std::move(listing));
    showFileList();
}

void Scene::showLoadingFiles()
{
    m_git.setListing(std::nullopt);
    m_coordinator.openRepository(sampleRepository());
    auto *const skeleton = m_window->findChild<QQuickItem *>(u"skeleton"_s);
    wait([skeleton] { return skeleton->isVisible(); });
}

void Scene::showNotice()
{
    showFile(static_cast<int>(SampleRow::tokenStore));
    wait([this] { return m_notice->isShowingNotice(); });
}

void Scene::showFile(int row)
{
    showFiles(sampleFiles());
    m_rootViewModel->fileList()->openFile(row);
    wait([this] { return !m_rootViewModel->diff()->isLoading(); });
    if (m_rootViewModel->diff()->hunkCount() > 0) {
        waitForLines();
    }
}

void Scene::showFirstSummary()
{
    const QString path = sampleFiles().first().path;
    m_ai.setSummaries({{path, sampleSummaries().value(path)}});
    showFiles(sampleFiles());
    const FileListViewModel &list = *m_rootViewModel->fileList();
    wait([&list] { return list.files().first().summaryState.isLoaded(); });
}

void Scene::showSummaries()
{
    m_ai.setSummaries(mixedSummaries());
    m_ai.setNarrative(sampleNarrative());
    showFiles(sampleFiles());
    const FileListViewModel &list = *m_rootViewModel->fileList();
    wait([&list] { return !list.narrative().isEmpty(); });
}

void Scene::showTokenStore(const SampleAIService::Explanation &second)
{
    m_ai.setSummaries(mixedSummaries());
    m_ai.setNarrative(sampleNarrative());
    const QList<Hunk> hunks =
        displayedHunks(sampleFiles().at(static_cast<int>(SampleRow::tokenStore)).hunks);
    for (int index = 0; index < int(hunks.size()); ++index) {
        m_ai.setExplanation(hunkDiffText(hunks.at(index)), index == 1 ? second : completed(index));
    }
    showFile(static_cast<int>(SampleRow::tokenStore));
    DiffViewModel &diff = *m_rootViewModel->diff();
    // Whether the background run goes on after a failure depends on what is selected by then.
    wait([&diff] { return diff.hunks().first().explanationState.isLoaded(); });
    RunQueue::interfaceThread().runUntilIdle();
    diff.select(1);
    wait([&] {
        const LoadableState<HunkExplanation> &state = diff.selectedHunk()->explanationState;
        const QString prose = diff.streamingExplanationText(1).value_or(QString());
        return state.isLoaded() || state.isFailed() || (state.isLoading() && prose == second.prose);
    });
}

void Scene::showLoadedTokenStore()
{
    showTokenStore(completed(1));
    const DiffViewModel &diff = *m_rootViewModel->diff();
    wait([&diff] { return diff.hunks().last().explanationState.isLoaded(); });
}

void Scene::showSelection()
{
    showLoadedTokenStore();
    auto *const panes = m_window->findChild<CodePanesItem *>();
    for (int i = 0; i < 3; ++i) {
        panes->takeSelectionKey(Qt::Key_Down, int(Qt::ShiftModifier));
    }
    panes->takeSelectionKey(Qt::Key_End, int(Qt::ShiftModifier));
}

void Scene::showQuestion(const SampleAIService::Answer &answer)
{
    m_ai.setAnswers({answer});
    m_ai.setQuestions({u"Is that new with this change?"_s, u"How would I test it?"_s});
    showLoadedTokenStore();
    ask(u"Who catches SignInRequired?"_s);
    if (answer.isComplete) {
        const ChatThreadViewModel &chat = *m_rootViewModel->diff()->chatViewModel(1);
        wait([&chat] { return !chat.isReplyInProgress() && !chat.isRefreshingSuggestions(); });
        m_rootViewModel->diff()->chatViewModel(1)->setDraft(
            u"Does the 30 second margin break short-lived test tokens?"_s);
    }
}

void Scene::showFailedQuestion()
{
    m_ai.setAnswers({wholeAnswer(), withoutCredits()});
    m_ai.setQuestions({u"What should I test?"_s, u"Why 30 seconds?"_s});
    showLoadedTokenStore();
    ask(u"Who catches SignInRequired?"_s);
    const ChatThreadViewModel &chat = *m_rootViewModel->diff()->chatViewModel(1);
    wait([&chat] { return !chat.isReplyInProgress() && !chat.isRefreshingSuggestions(); });
    ask(u"Is that new with this change?"_s);
    wait([&chat] { return !chat.errorMessage().isEmpty(); });
}

void Scene::ask(const QString &question)
{
    ChatThreadViewModel &chat = *m_rootViewModel->diff()->chatViewModel(1);
    chat.setDraft(question);
    chat.send();
}

void Scene::showGitErrorOfDiff()
{
    m_git.setRawHunks(failure(gitFailure(u"fatal: unable to read tree (8c1f0b2)"_s)));
    showFile(static_cast<int>(SampleRow::withoutText));
}

void Scene::makeWindow(const QString &type, const QVariantMap &properties)
{
    QQmlComponent component(qmlEngine(m_window), QUrl(u"qrc:/qt/qml/Vantrel/"_s + type));
    m_ownWindow.reset(
        qobject_cast<QQuickWindow *>(component.createWithInitialProperties(properties)));
    m_window = m_ownWindow.get();
}

void Scene::showSettings()
{
    makeWindow(u"SettingsWindow.qml"_s,
               {{u"viewModel"_s, QVariant::fromValue(m_settingsViewModel.get())}});
    QMetaObject::invokeMethod(m_window, "showSettings");
    wait([this] { return m_settingsViewModel->isKeyStateKnown(); });
}

void Scene::recordShownNotice()
{
    const bool isRecorded =
        m_defaults.setBoolean(QString::fromLatin1(shownSettingsNoticeKey), true).has_value();
    Q_ASSERT(isRecorded);
}

void Scene::saveKey()
{
    recordShownNotice();
    m_settingsViewModel->setApiKeyDraft(u"sample"_s);
    m_settingsViewModel->save();
    wait([this] { return !m_settingsViewModel->isChangingKey(); });
}

void Scene::showSavedKey()
{
    showSettings();
    saveKey();
}

void Scene::showRemovedKey()
{
    showSavedKey();
    m_settingsViewModel->removeKey();
    wait([this] { return !m_settingsViewModel->isChangingKey(); });
    m_settingsViewModel->selectCustomModel(QString());
}

void Scene::showRefusedBaseURL()
{
    showSettings();
    m_settingsViewModel->setProvider(AIProvider::custom);
    m_settingsViewModel->setBaseURL(u"localhost:8080/v1"_s);
    wait([this] { return m_settingsViewModel->isKeyStateKnown(); });
    m_settingsViewModel->save();
}

void Scene::showModelMenu()
{
    showSettings();
    const auto *const menu = m_window->findChild<QQuickItem *>(u"modelMenu"_s);
    QMetaObject::invokeMethod(menu->property("popup").value<QObject *>(), "open");
}

void Scene::showRemovalQuestion()
{
    showSavedKey();
    m_window->findChild<QQuickItem *>(u"settings"_s)->setProperty("isConfirmingRemoval", true);
}

void Scene::showSettingsNotice()
{
    showSettings();
    m_settingsViewModel->setApiKeyDraft(u"sample"_s);
    m_settingsViewModel->save();
}

void Scene::showSetup()
{
    showFirstSummary();
    m_setupSheet->open();
}

void Scene::showSignIn(std::optional<SampleSignIn::Outcome> outcome)
{
    const bool isEnding = outcome.has_value();
    if (isEnding) {
        m_signIn.setOutcome(*std::move(outcome));
    }
    showSetup();
    const AISetupViewModel &setup = *m_setupSheet->viewModel();
    m_setupSheet->viewModel()->startSignIn();
    wait([&setup, isEnding] {
        return isEnding == (setup.step() != AISetupViewModel::Step::signingIn);
    });
}

void Scene::showPastedKey(AIProvider provider)
{
    showSetup();
    AISetupViewModel &setup = *m_setupSheet->viewModel();
    setup.choosePasteKey();
    setup.setPasteProvider(provider);
    setup.setApiKeyDraft(u"sample-key-of-22-signs"_s);
}

void Scene::showUnknownModel()
{
    showPastedKey(AIProvider::openAI);
    AISetupViewModel &setup = *m_setupSheet->viewModel();
    setup.selectCustomModel(QString());
    setup.savePastedKey();
}

void Scene::showLocalServers(std::optional<LocalModelServerStatuses> statuses)
{
    const bool isEnding = statuses.has_value();
    if (isEnding) {
        m_localDetector.setStatuses(*std::move(statuses));
    }
    showSetup();
    const AISetupViewModel &setup = *m_setupSheet->viewModel();
    m_setupSheet->viewModel()->chooseLocalModel();
    wait([&setup, isEnding] { return setup.isCheckingLocalServers() != isEnding; });
}

void Scene::showLocalSetup()
{
    showLocalServers(LocalModelServerStatuses{
        {LocalModelServer::ollama, LocalModelServerStatus::running({u"qwen3-coder:30b"_s})},
        {LocalModelServer::lmStudio, LocalModelServerStatus::notRunning()}});
    m_setupSheet->viewModel()->useLocalModel();
}

void Scene::checkForUpdates()
{
    makeWindow(u"UpdateWindow.qml"_s, {{u"updater"_s, QVariant::fromValue(m_updater.get())}});
    m_updater->checkForUpdates();
    wait([this] { return m_window->isExposed(); });
    RunQueue::interfaceThread().runUntilIdle();
}

void Scene::showOffer(const QString &version)
{
    m_updateServer.offer(version, releaseNotes);
    checkForUpdates();
}

void Scene::showDownload(double part)
{
    m_updateServer.setPackagePart(part);
    showOffer(u"0.2.0"_s);
    m_updater->download();
    wait([this, part] { return part < 1 ? m_updater->progress() >= part : m_updater->isReady(); });
}

void Scene::showUpdateMenu()
{
    QMetaObject::invokeMethod(m_window->findChild<QQuickItem *>(u"titleBar"_s), "openMenu");
}

void Scene::wait(const std::function<bool()> &isReached)
{
    while (!isReached()) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
}

void Scene::waitForLines()
{
    auto *const panes = m_window->findChild<CodePanesItem *>();
    wait([panes] { return panes->longestLine() > 0; });
}

} // namespace vantrel::screenshots
