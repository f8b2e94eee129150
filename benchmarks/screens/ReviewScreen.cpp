#include "screens/ReviewScreen.h"

#include "Samples.h"
#include "views/CodePanesItem.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QQuickWindow>

#include <stdexcept>

namespace vantrel::bench {

using namespace Qt::Literals::StringLiterals;

ReviewScreen::ReviewScreen(const MeteredApplication &application, const FileChange &file,
                           Motion motion)
{
    m_services.notice.acknowledge();
    m_services.settingsStore.saveAIConfig(
        {AIProvider::custom, QStringLiteral("http://localhost/v1"), QStringLiteral("sample")});
    m_services.knowNarrative({file}, QString());
    AppCoordinator::DiffRoute route;
    route.repo = test::sampleRepo(u"repo"_s);
    route.file = file;
    route.allFiles = {file};
    route.changeset = Changeset(route.allFiles);
    m_services.coordinator.setRoute(route);
    m_root = std::make_unique<RootViewModel>(m_services.review, m_services.recentRepos,
                                             m_services.repositoryGuard, m_services.settings,
                                             m_services.setup);
    m_mainWindow = std::make_unique<MainWindow>(*m_root, m_appearance, motion == Motion::reduced);
    QQuickWindow *const window = m_mainWindow->window();
    if (window == nullptr) {
        throw std::runtime_error("the window could not be made");
    }
    m_meter = std::make_unique<FrameMeter>(application, *window);
    m_panes = window->findChild<CodePanesItem *>();
    runUntil([this] { return !diff().isLoading() && m_panes->longestLine() > 0; });
    window->requestActivate();
    runUntil([this, window] { return window->isActive() && m_meter->frames().size() > 1; });
}

ReviewScreen::~ReviewScreen() = default;

void ReviewScreen::pressPageDown()
{
    const qreal before = m_panes->contentY();
    const bool isAtEnd = before + m_panes->height() >= m_panes->contentHeight();
    const Qt::Key key = isAtEnd ? Qt::Key_Home : Qt::Key_PageDown;
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        QKeyEvent event(type, key, Qt::NoModifier);
        QCoreApplication::sendEvent(m_mainWindow->window(), &event);
    }
    if (m_panes->contentY() == before) {
        throw std::runtime_error("the page did not move");
    }
}

void ReviewScreen::awaitFrame()
{
    const qsizetype before = m_meter->frames().size();
    runUntil([this, before] { return m_meter->frames().size() > before; });
}

test::ExplanationChannel &ReviewScreen::explanation()
{
    auto &explanations = m_services.ai.explanations;
    runUntil([&explanations] { return !explanations.empty(); });
    return explanations.front();
}

Channel<QString, AIFailure> &ReviewScreen::ask(const QString &question)
{
    ChatThreadViewModel &chat = *diff().chatViewModel(diff().selectedHunkIndex());
    chat.setDraft(question);
    chat.send();
    auto &chats = m_services.ai.chats;
    runUntil([&chats] { return !chats.empty(); });
    return chats.back();
}

void ReviewScreen::runUntil(const std::function<bool()> &isDone)
{
    while (!isDone()) {
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
    }
}

} // namespace vantrel::bench
