// A repository and a model that try everything to be fetched, opened or run: what they say is
// shown, and a server that all of it points at is never asked.

#include "SampleServer.h"
#include "ai/AIPrompts.h"
#include "app/OrbiskApp.h"
#include "git/GitEnvironment.h"
#include "support/Spin.h"
#include "support/TemporaryRepository.h"
#include "views/MainWindow.h"
#include "views/SystemAppearance.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QDir>
#include <QFileInfo>
#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QQmlComponent>
#include <QQuickItem>
#include <QQuickView>
#include <QQuickWindow>
#include <QTest>

#include <memory>
#include <optional>

namespace vantrel::test {
namespace {

using namespace Qt::Literals::StringLiterals;

/// Counts who comes.
class Trap
{
public:
    Trap() { EXPECT_TRUE(m_server.listen(QHostAddress::LocalHost)); }

    [[nodiscard]] QString address(const QString &name) const
    {
        return u"http://127.0.0.1:%1/"_s.arg(m_server.serverPort()) + name;
    }

    [[nodiscard]] bool isSprung() const { return m_server.hasPendingConnections(); }

private:
    QTcpServer m_server{};
};

/// Every form in which a text can name something to be fetched, by itself or when it is touched.
QString bait(const Trap &trap)
{
    const QString at = trap.address(QString());
    return QStringList{
               u"<img src='%1img'>"_s,
               u"![picture](%1markdown.png)"_s,
               u"![picture][reference]"_s,
               u"[link](%1link)"_s,
               u"<%1autolink>"_s,
               u"%1bare"_s,
               u"<a href='%1a'><img src='%1nested'></a>"_s,
               u"<form action='%1form' method='post'><input type='image' src='%1input'></form>"_s,
               u"<link rel='stylesheet' href='%1style.css'><style>@import url(%1import.css);</style>"_s,
               u"<p style='background-image: url(%1background)'>"_s,
               u"<body background='%1body'>"_s,
               u"<table background='%1table'><tr><td>"_s,
               u"<script src='%1script.js'></script><iframe src='%1frame'></iframe>"_s,
               u"<object data='%1object'></object><embed src='%1embed'><video src='%1video'>"_s,
               u"<svg><image href='%1svg'/></svg>"_s,
               u"<meta http-equiv='refresh' content='0;url=%1refresh'>"_s,
               u"<ul style='list-style-image: url(%1list)'><li>"_s,
           }
               .join(u' ')
               .arg(at) +
           u"\n[reference]: "_s + at + u"reference.png"_s;
}

/// A name of a file or a branch cannot hold two slashes in a row, but entities can stand for them.
QString baitInAName(const Trap &trap)
{
    return u"<img/src="_s +
           trap.address(u"name"_s).replace(u':', u"&#58;"_s).replace(u'/', u"&#47;"_s) + u">"_s;
}

QString metadata(const QString &text)
{
    const QJsonObject object{{u"tag"_s, text},
                             {u"points"_s, QJsonArray{text, text}},
                             {u"suggestedQuestions"_s, QJsonArray{text, u"Why? "_s + text}}};
    return QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Compact));
}

/// A text of the toolkit's own, which takes the bait.
std::unique_ptr<QQuickView> richText(const QString &text)
{
    auto view = std::make_unique<QQuickView>();
    QQmlComponent component(view->engine());
    component.setData("import QtQuick\nText { textFormat: Text.RichText }", QUrl());
    auto *const item = qobject_cast<QQuickItem *>(component.create());
    item->setProperty("text", text);
    view->setContent(QUrl(), nullptr, item);
    view->show();
    return view;
}

/// All that an assistive technology would be told.
void readAloud(QAccessibleInterface *interface)
{
    if (interface == nullptr) {
        return;
    }
    for (const auto kind : {QAccessible::Name, QAccessible::Description, QAccessible::Value}) {
        interface->text(kind);
    }
    for (int i = 0; i < interface->childCount(); ++i) {
        readAloud(interface->child(i));
    }
}

class TrapWalk : public testing::Test
{
protected:
    static void SetUpTestSuite() { pinGitEnvironment(); }

    TrapWalk()
    {
        sample::SampleServer::Options options;
        options.delayMs = 0;
        options.answer = [this](const sample::SampleQuestion &question) {
            ++answers;
            return answer(question);
        };
        provider.emplace(options);
        EXPECT_TRUE(provider->listen());
        makeRepository();
        configure();
        QAccessible::setActive(true);
    }

    [[nodiscard]] QString answer(const sample::SampleQuestion &question) const
    {
        if (question.systemPrompt == prompts::hunkExplanation()) {
            return text + u"\n---META---\n"_s + metadata(text);
        }
        if (question.systemPrompt == prompts::suggestions()) {
            return QString::fromUtf8(QJsonDocument(QJsonArray{text, u"Or: "_s + text}).toJson());
        }
        return text;
    }

    void makeRepository()
    {
        const QByteArray lines = text.toUtf8() + '\n';
        const QString name = baitInAName(trap);
        const QString command = u"$(touch %1) `touch %1` ; touch %1 #.txt"_s.arg(mark);
        repository.write(name, "old\n");
        repository.write(u"page.html"_s, "old\n");
        repository.write(u"a/--output=mark"_s, "old\n");
        repository.git({u"checkout"_s, u"-b"_s, name});
        repository.commitAll();
        repository.write(name, lines);
        repository.write(u"page.html"_s, lines + "<!-- -->\n" + lines);
        repository.write(u"a/--output=mark"_s, lines);
        repository.write(command, lines);
    }

    void configure()
    {
        UserDefaults defaults(places().preferencesFolder);
        const QString baseURL = u"http://127.0.0.1:%1/v1"_s.arg(provider->port());
        ASSERT_TRUE(defaults.setText(u"aiProvider"_s, u"custom"_s));
        ASSERT_TRUE(defaults.setText(u"aiBaseURL"_s, baseURL));
        ASSERT_TRUE(defaults.setText(u"aiModel"_s, text));
        ASSERT_TRUE(defaults.setBoolean(u"keychainAccessNotice.hasAcknowledged"_s, true));
    }

    [[nodiscard]] OrbiskApp::Places places() const
    {
        OrbiskApp::Places places;
        places.preferencesFolder = folder.filePath(u"preferences"_s);
        places.keychainService = u"com.orbisk.apikeys.tests"_s;
        return places;
    }

    void start()
    {
        OrbiskApp::Desktop desktop;
        desktop.openURL = [this](const QUrl &url) {
            opened.append(url);
            return true;
        };
        app.emplace(places(), desktop);
        appearance.emplace(app->appearanceController());
        window.emplace(app->rootViewModel(), *appearance, true);
    }

    RootViewModel &root() { return app->rootViewModel(); }

    /// Draws every window that is shown, twice, since a picture may be asked for late, and reads it
    /// aloud.
    void look()
    {
        for (QWindow *const shown : QGuiApplication::topLevelWindows()) {
            auto *const quick = qobject_cast<QQuickWindow *>(shown);
            if (quick != nullptr && quick->isVisible()) {
                EXPECT_FALSE(quick->grabWindow().isNull());
                EXPECT_FALSE(quick->grabWindow().isNull());
                readAloud(QAccessible::queryAccessibleInterface(quick));
            }
        }
    }

    /// Clicks on the middle of everything that shows the text of the model or of the repository and
    /// is no control.
    int touchTexts()
    {
        int touched = 0;
        touchTexts(window->window()->contentItem(), touched);
        return touched;
    }

    void touchTexts(QQuickItem *item, int &touched)
    {
        for (QQuickItem *const child : item->childItems()) {
            if (!child->isVisible()) {
                continue;
            }
            const QPoint middle =
                child->mapToScene(QPointF(child->width() / 2, child->height() / 2)).toPoint();
            if (child->inherits("QQuickTextEdit") &&
                child->property("text").toString().contains(u"src="_s) &&
                QRect(QPoint(), window->window()->size()).contains(middle)) {
                QTest::mouseClick(window->window(), Qt::LeftButton, {}, middle);
                ++touched;
            }
            touchTexts(child, touched);
        }
    }

    void openList()
    {
        root().openFolder(repository.root());
        spinUntil([this] {
            return root().fileList() != nullptr && root().fileList()->hasLoaded() &&
                   !root().fileList()->narrative().isEmpty();
        });
        spinUntil([this] {
            const QList<FileChange> &files = root().fileList()->files();
            return std::all_of(files.cbegin(), files.cend(),
                               [](const FileChange &file) { return file.summaryState.isLoaded(); });
        });
    }

    void openFile(int row)
    {
        root().fileList()->openFile(row);
        spinUntil([this] {
            const Hunk *const hunk =
                root().diff() == nullptr ? nullptr : root().diff()->selectedHunk();
            return hunk != nullptr && hunk->explanationState.isLoaded();
        });
    }

    Trap trap;
    const QString text = bait(trap);
    QTemporaryDir folder;
    const QString mark = u"mark-of-a-program"_s;
    TemporaryRepository repository;
    std::optional<sample::SampleServer> provider;
    int answers = 0;
    QList<QUrl> opened;
    std::optional<OrbiskApp> app;
    std::optional<SystemAppearance> appearance;
    std::optional<MainWindow> window;
};

TEST(Trap, IsSprungWhereTheBaitIsTaken)
{
    const Trap trap;

    const auto view = richText(bait(trap));

    spinUntil([&] { return trap.isSprung(); });
}

TEST_F(TrapWalk, SpringsNothing)
{
    start();
    openList();
    const int fileCount = int(root().fileList()->files().size());
    ASSERT_EQ(fileCount, 4);
    EXPECT_EQ(root().coordinator()->branchName(), baitInAName(trap));
    look();

    int touched = 0;
    for (int row = 0; row < fileCount; ++row) {
        openFile(row);
        look();
        touched += touchTexts();
        root().diff()->goBack();
        spinUntil(
            [this] { return root().fileList() != nullptr && root().fileList()->hasLoaded(); });
    }

    openFile(0);
    ChatThreadViewModel *const chat = root().diff()->chatViewModel(0);
    ASSERT_NE(chat, nullptr);
    chat->setDraft(text);
    chat->send();
    spinUntil([chat] { return !chat->isReplyInProgress() && !chat->isRefreshingSuggestions(); });
    look();
    touched += touchTexts();

    root().diff()->goBack();
    spinUntil([this] { return root().fileList() != nullptr && root().fileList()->hasLoaded(); });
    root().fileList()->goBack();
    spinUntil([this] { return root().fileList() == nullptr; });
    look();
    QTest::keyClick(window->window(), Qt::Key_Comma, Qt::ControlModifier);
    look();

    EXPECT_GT(touched, fileCount);
    EXPECT_GT(answers, 2 * fileCount);
    EXPECT_FALSE(trap.isSprung());
    EXPECT_EQ(opened, QList<QUrl>());
    for (const QString &place : {repository.path(mark), QDir::currentPath() + u'/' + mark,
                                 repository.path(u"mark"_s), QDir::currentPath() + u"/mark"_s}) {
        EXPECT_FALSE(QFileInfo::exists(place)) << qPrintable(place);
    }
}

} // namespace
} // namespace vantrel::test
