#include "Scene.h"

#include "SampleChanges.h"

#include "views/CodePanesItem.h"
#include "views/IconProvider.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QFontDatabase>
#include <QQuickWindow>

#include <utility>

namespace vantrel::screenshots {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr auto acknowledgedKey = "keychainAccessNotice.hasAcknowledged";

ProcessFailure gitFailure(const QString &message)
{
    ProcessRunnerError error;
    error.status = 128;
    error.message = message;
    return error;
}

SampleAIService::Reply completed(int hunkIndex)
{
    SampleAIService::Reply reply;
    reply.explanation = sampleExplanations().at(hunkIndex);
    return reply;
}

SampleAIService::Reply halfWritten()
{
    const QString prose = sampleExplanations().at(1).explanation;
    const QString lastWords = u"leaves with"_s;
    SampleAIService::Reply reply;
    reply.prose = prose.first(prose.indexOf(lastWords) + lastWords.size());
    return reply;
}

SampleAIService::Reply withoutKey()
{
    AIServiceError error;
    error.kind = AIServiceError::Case::missingAPIKey;
    SampleAIService::Reply reply;
    reply.error = error;
    return reply;
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
{
    m_appearanceController.setAppearance(appearance);
}

Scene::~Scene()
{
    m_git.letGo();
}

QImage Scene::picture(const QString &state, QSize size)
{
    if (state != u"keychain-notice"_s) {
        const auto written = m_defaults.setBoolean(QString::fromLatin1(acknowledgedKey), true);
        if (!written) {
            return {};
        }
    }
    m_notice = std::make_unique<KeychainAccessNotice>(m_defaults);
    m_rootViewModel = std::make_unique<RootViewModel>(m_coordinator, m_gitWorker, m_recentRepos,
                                                      m_aiWorker, *m_notice, m_notificationCenter);
    m_engine = std::make_unique<QQmlApplicationEngine>();
    m_engine->setNetworkAccessManagerFactory(&m_networkAccess);
    m_engine->addImageProvider(u"icon"_s, new IconProvider);
    m_engine->addImportPath(u"qrc:/qt/qml"_s);
    m_engine->setInitialProperties({
        {u"viewModel"_s, QVariant::fromValue(m_rootViewModel.get())},
        {u"appearance"_s, QVariant::fromValue(&m_appearance)},
        {u"uiFamily"_s, QFontDatabase::systemFont(QFontDatabase::GeneralFont).family()},
        {u"codeFamily"_s, QFontDatabase::systemFont(QFontDatabase::FixedFont).family()},
        {u"reducesMotion"_s, true},
    });
    m_engine->load(QUrl(u"qrc:/qt/qml/Vantrel/Main.qml"_s));
    m_window = qobject_cast<QQuickWindow *>(m_engine->rootObjects().value(0));
    if (m_window == nullptr) {
        return {};
    }
    m_window->resize(size);

    for (const State &known : all()) {
        if (known.name == state) {
            known.show(*this);
        }
    }
    return m_window->grabWindow();
}

const QList<Scene::State> &Scene::all()
{
    static const QList<State> states = {
        {u"picker"_s, [](Scene &scene) { scene.showPicker(); }},
        {u"picker-recents"_s, [](Scene &scene) { scene.showRecents(); }},
        {u"picker-refused"_s, [](Scene &scene) { scene.showRefusal(); }},
        {u"files-loading"_s, [](Scene &scene) { scene.showLoadingFiles(); }},
        {u"files-loaded"_s, [](Scene &scene) { scene.showFiles(sampleFiles()); }},
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
        {u"diff-failed"_s, [](Scene &scene) { scene.showTokenStore(withoutKey()); }},
        {u"diff-no-changes"_s,
         [](Scene &scene) { scene.showFile(static_cast<int>(SampleRow::withoutText)); }},
        {u"diff-git-error"_s, [](Scene &scene) { scene.showGitErrorOfDiff(); }},
        {u"keychain-notice"_s, [](Scene &scene) { scene.showNotice(); }},
    };
    return states;
}

void Scene::showPicker() {}

void Scene::showRecents()
{
    const QString home = u"/home/mira/"_s;
    for (const QString &path :
         {u"Documents/thesis"_s, u".dotfiles"_s, u"work/clients/northwind/mobile-client"_s,
          u"work/platform/infra"_s, u"src/paper-trail"_s, u"src/ledger-api"_s}) {
        m_recentRepos->record(path.section(u'/', -1), home + path);
    }
    m_rootViewModel->picker()->reloadRecents();
    wait([this] { return !m_rootViewModel->picker()->recentRepos().isEmpty(); });
}

void Scene::showRefusal()
{
    m_rootViewModel->openFolder(QUrl::fromLocalFile(m_folder.path()));
    wait([this] { return !m_rootViewModel->picker()->isOpening(); });
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
}

void Scene::showTokenStore(const SampleAIService::Reply &secondReply)
{
    m_ai.setReplies({completed(0), secondReply});
    showFile(static_cast<int>(SampleRow::tokenStore));
    DiffViewModel &diff = *m_rootViewModel->diff();
    wait([&diff] { return diff.selectedHunk()->explanationState.isLoaded(); });
    diff.select(1);
    wait([&] {
        return secondReply.error
                   ? diff.selectedHunk()->explanationState.isFailed()
                   : diff.streamingExplanationText(1).value_or(QString()) == secondReply.prose;
    });
    waitForLines();
}

void Scene::showLoadedTokenStore()
{
    m_ai.setReplies({completed(0), completed(2), completed(3), completed(1)});
    showFile(static_cast<int>(SampleRow::tokenStore));
    DiffViewModel &diff = *m_rootViewModel->diff();
    for (const int hunkIndex : {0, 2, 3, 0, 1}) {
        diff.select(hunkIndex);
        wait([&diff] { return diff.selectedHunk()->explanationState.isLoaded(); });
    }
    waitForLines();
}

void Scene::showGitErrorOfDiff()
{
    m_git.setRawHunks(failure(gitFailure(u"fatal: unable to read tree (8c1f0b2)"_s)));
    showFile(static_cast<int>(SampleRow::withoutText));
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
