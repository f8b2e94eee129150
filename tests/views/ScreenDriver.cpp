#include "ScreenDriver.h"

#include "Samples.h"

#include <QAccessible>
#include <QClipboard>
#include <QCoreApplication>
#include <QDir>
#include <QDragEnterEvent>
#include <QFileInfo>
#include <QGuiApplication>
#include <QMimeData>
#include <QQuickWindow>

#include <algorithm>

namespace vantrel::test {

using namespace Qt::Literals::StringLiterals;

namespace {

AIFailure missingKey()
{
    AIServiceError error;
    error.kind = AIServiceError::Case::missingAPIKey;
    return error;
}

/// What a drag from another program carries, and where it is.
struct Drag
{
    explicit Drag(QQuickItem *item, const QList<QUrl> &urls)
        : window(item->window())
        , position(window->width() / 2, window->height() / 2)
    {
        data.setUrls(urls);
    }

    QQuickWindow *window;
    QPoint position;
    QMimeData data{};
};

void collectSpokenTexts(QAccessibleInterface *interface, QStringList &texts)
{
    if (interface == nullptr) {
        return;
    }
    for (const QAccessible::Text kind :
         {QAccessible::Name, QAccessible::Description, QAccessible::Value}) {
        texts.append(interface->text(kind));
    }
    if (QAccessibleTextInterface *const text = interface->textInterface()) {
        texts.append(text->text(0, text->characterCount()));
    }
    for (int child = 0; child < interface->childCount(); ++child) {
        collectSpokenTexts(interface->child(child), texts);
    }
}

bool isRead(const ExplanationChannel &explanation)
{
    return !explanation.isTerminated();
}

} // namespace

ScreenDriver::~ScreenDriver() = default;

void ScreenDriver::start(bool hasAcknowledgedNotice)
{
    m_isNarrativeKnown = true;
    m_root.reset();
    m_folder.emplace();
    m_services = std::make_unique<ScreenServices>();
    if (hasAcknowledgedNotice) {
        m_services->notice.acknowledge();
    }
    m_updater.reset();
    m_updateServer = std::make_unique<FakeUpdateServer>();
    m_openedFiles.clear();
    m_opensFiles = true;
    if (m_isUpdatable) {
        m_updater = std::make_unique<FeedSoftwareUpdater>(FeedSoftwareUpdater::Services{
            *m_updateServer, m_updateServer->configuration(), u"0.1.0"_s,
            m_folder->filePath(u"updates"_s), [this](const QUrl &file) {
                m_openedFiles.append(QFileInfo(file.toLocalFile()).fileName());
                return m_opensFiles;
            }});
    }
    m_root = std::make_unique<RootViewModel>(m_services->review, m_services->recentRepos,
                                             m_services->repositoryGuard, m_services->settings,
                                             m_services->setup, m_updater.get());
    Q_EMIT started();
}

void ScreenDriver::offerUpdate(const QString &version, const QString &notes)
{
    m_updateServer->offer(version, notes);
}

void ScreenDriver::refuseUpdates(int status)
{
    m_updateServer->refuse(status);
}

void ScreenDriver::setPackagePart(double part)
{
    m_updateServer->setPackagePart(part);
}

void ScreenDriver::addRecentRepository(const QString &name)
{
    m_services->recentRepos->record(name, makeRepository(name).toLocalFile());
    m_root->picker()->reloadRecents();
}

void ScreenDriver::addMissingRepository(const QString &name)
{
    m_services->recentRepos->record(name, m_folder->filePath(name));
    m_root->picker()->reloadRecents();
}

bool ScreenDriver::dragOver(QQuickItem *item, const QList<QUrl> &urls)
{
    const Drag drag(item, urls);
    QDragEnterEvent enter(drag.position, Qt::CopyAction, &drag.data, Qt::LeftButton,
                          Qt::NoModifier);
    QCoreApplication::sendEvent(drag.window, &enter);
    QDragMoveEvent move(drag.position, Qt::CopyAction, &drag.data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(drag.window, &move);
    return move.isAccepted();
}

void ScreenDriver::dragAway(QQuickItem *item)
{
    QDragLeaveEvent leave;
    QCoreApplication::sendEvent(item->window(), &leave);
}

bool ScreenDriver::dropOn(QQuickItem *item, const QList<QUrl> &urls)
{
    const Drag drag(item, urls);
    QDropEvent drop(drag.position, Qt::CopyAction, &drag.data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(drag.window, &drop);
    return drop.isAccepted();
}

QUrl ScreenDriver::makeFolder(const QString &name)
{
    const QString path = m_folder->filePath(name);
    QDir().mkpath(path);
    return QUrl::fromLocalFile(path);
}

QUrl ScreenDriver::makeRepository(const QString &name)
{
    const QUrl folder = makeFolder(name);
    makeFolder(name + u"/.git"_s);
    return folder;
}

void ScreenDriver::removeRepositories()
{
    m_folder.reset();
}

void ScreenDriver::nameProgram(const QString &command)
{
    m_services->repositoryGuard->setPrograms(
        QList<RepositoryProgram>{{{}, u"filter.images.clean"_s, command}});
}

int ScreenDriver::allowedCount() const
{
    return int(m_services->repositoryGuard->allowed().size());
}

void ScreenDriver::openRepository()
{
    m_services->coordinator.openRepository(sampleRepo(u"repo"_s));
}

void ScreenDriver::answerFiles(const QList<int> &hunkCounts)
{
    QList<FileChange> files;
    for (qsizetype i = 0; i < hunkCounts.size(); ++i) {
        files.append(changedFile(u"src/file%1.cpp"_s.arg(i), hunkCounts.at(i)));
    }
    answerListing(files);
}

void ScreenDriver::answerFileOfLine(const QString &line)
{
    answerListing({changedFile(u"src/file0.cpp"_s, {changedLine(1, u"old"_s, line)})});
}

void ScreenDriver::answerListing(const QList<FileChange> &files)
{
    if (m_isNarrativeKnown) {
        m_services->knowNarrative(files, QString());
    }
    m_services->git.answerChangedFiles(files);
    m_services->git.answerCurrentBranch(std::optional(u"main"_s));
}

void ScreenDriver::failListing(const QString &message)
{
    PlatformError error;
    error.message = message;
    m_services->git.answerChangedFiles(failure(ProcessFailure(error)));
}

void ScreenDriver::answerNoHunks()
{
    m_services->git.answerRawHunks(QList<RawHunk>());
}

int ScreenDriver::explanationCount() const
{
    const auto &explanations = m_services->ai.explanations;
    return int(std::count_if(explanations.cbegin(), explanations.cend(), isRead));
}

void ScreenDriver::pushProse(const QString &text)
{
    openExplanation().push(ProseDelta{text});
}

void ScreenDriver::complete(const QString &tag, const QString &prose, const QStringList &points)
{
    HunkExplanation explanation;
    explanation.tag = tag;
    explanation.explanation = prose;
    explanation.points = points;
    openExplanation().push(ExplanationCompleted{explanation});
}

void ScreenDriver::failForMissingKey()
{
    openExplanation().fail(missingKey());
}

int ScreenDriver::summaryCount() const
{
    return int(m_services->ai.summaries.size());
}

void ScreenDriver::answerSummary(const QString &summary)
{
    m_services->ai.summaries.back().push(summary);
}

void ScreenDriver::failSummaryForMissingKey()
{
    m_services->ai.summaries.back().fail(missingKey());
}

int ScreenDriver::narrativeCount() const
{
    return int(m_services->ai.completions.size());
}

void ScreenDriver::answerNarrative(const QString &narrative)
{
    m_services->ai.completions.back().push(narrative);
}

int ScreenDriver::answerCount() const
{
    return int(m_services->ai.chats.size());
}

void ScreenDriver::pushAnswer(const QString &text)
{
    m_services->ai.chats.back().push(text);
}

void ScreenDriver::finishAnswer()
{
    m_services->ai.chats.back().finish();
}

void ScreenDriver::failAnswer(const QString &message)
{
    PlatformError error;
    error.message = message;
    m_services->ai.chats.back().fail(error);
}

void ScreenDriver::answerQuestions(const QStringList &questions)
{
    m_services->ai.suggestions.back().push(questions);
}

void ScreenDriver::storeKey(const QString &provider, const QString &key)
{
    m_services->keychain->store(key, aiProviderFromRawValue(provider).value());
}

QString ScreenDriver::storedKey(const QString &provider) const
{
    const AIProvider known = aiProviderFromRawValue(provider).value();
    return m_services->keychain->storedKey(known).value_or(QString());
}

void ScreenDriver::hangKeychain()
{
    m_services->keychain->hangNext();
}

void ScreenDriver::letKeychainGo()
{
    m_services->keychain->letGo();
}

void ScreenDriver::refuseKeyChange()
{
    constexpr std::int32_t lockedStatus = -25308;
    m_services->keychain->refuseNext(lockedStatus);
}

void ScreenDriver::recordShownKeychainNotice()
{
    const QString key = u"settings.hasShownKeychainNotice"_s;
    if (!m_services->defaults.setBoolean(key, true)) {
        qWarning("the preference could not be written");
    }
}

void ScreenDriver::storeConfiguration(const QString &provider, const QString &baseURL,
                                      const QString &model)
{
    m_services->settingsStore.saveAIConfig(
        {aiProviderFromRawValue(provider).value(), baseURL, model});
}

int ScreenDriver::signInCount() const
{
    return m_services->signIn.runningCount();
}

void ScreenDriver::finishSignIn(const QString &key)
{
    m_services->signIn.finish(key);
}

void ScreenDriver::failSignIn()
{
    OpenRouterSignInError error;
    error.kind = OpenRouterSignInError::Case::couldNotOpenBrowser;
    m_services->signIn.finish(failure(error));
}

QStringList ScreenDriver::openedPages() const
{
    QStringList pages;
    for (const QUrl &page : std::as_const(m_services->openedPages)) {
        pages.append(page.toString());
    }
    return pages;
}

void ScreenDriver::answerLocalServers(const QVariantMap &models)
{
    LocalModelServerStatuses statuses;
    for (const LocalModelServer server : allLocalModelServers) {
        const auto found = models.constFind(rawValue(server));
        statuses.insert(server, found == models.cend()
                                    ? LocalModelServerStatus::notRunning()
                                    : LocalModelServerStatus::running(found->toStringList()));
    }
    m_services->localDetector.finish(statuses);
}

QStringList ScreenDriver::spokenTexts(QQuickItem *item) const
{
    QAccessible::setActive(true);
    QStringList texts;
    collectSpokenTexts(QAccessible::queryAccessibleInterface(item->window()), texts);
    return texts;
}

QString ScreenDriver::temptingAddress()
{
    if (!m_server.isListening()) {
        m_server.listen(QHostAddress::LocalHost);
    }
    return u"http://127.0.0.1:%1/a.png"_s.arg(m_server.serverPort());
}

QString ScreenDriver::clipboard() const
{
    return QGuiApplication::clipboard()->text();
}

ExplanationChannel &ScreenDriver::openExplanation()
{
    auto &explanations = m_services->ai.explanations;
    return *std::find_if(explanations.begin(), explanations.end(), isRead);
}

} // namespace vantrel::test
