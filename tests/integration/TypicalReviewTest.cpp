// A review from the first look to the last step, in the application's own window: what is asked of
// the provider, how often and with which words.

#include "ReviewWalkFixture.h"
#include "ai/AIPrompts.h"
#include "ai/AIResultCache.h"
#include "models/DiffText.h"
#include "models/DisplayedHunks.h"
#include "views/MainWindow.h"
#include "views/SystemAppearance.h"

#include <QGuiApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QMap>
#include <QQuickWindow>

namespace vantrel::test {
namespace {

const QString tokenStore = u"src/auth/token_store.cpp"_s;

QJsonObject message(const QString &role, const QString &content)
{
    return {{u"role"_s, role}, {u"content"_s, content}};
}

QJsonObject body(const QJsonArray &messages, bool isStreamed)
{
    return {{u"model"_s, u"sample"_s}, {u"messages"_s, messages}, {u"stream"_s, isStreamed}};
}

QJsonObject single(const QString &system, const QString &user)
{
    return body({message(u"system"_s, system), message(u"user"_s, user)}, false);
}

QJsonObject summaryRequest(const FileChange &file)
{
    return single(prompts::fileSummary(),
                  prompts::fileSummaryMessage(file.path, fileDiffText(file)).join(QString()));
}

/// The request for one hunk of the file.
QJsonObject explanationRequest(const FileChange &file, int hunkIndex, const QString &fullPicture)
{
    const Hunk hunk = displayedHunks(file.hunks).at(hunkIndex);
    return body({message(u"system"_s, prompts::hunkExplanation()),
                 message(u"user"_s,
                         prompts::hunkExplanationMessage(file.path, hunkDiffText(hunk), fullPicture)
                             .join(QString()))},
                true);
}

/// What stands for a file that is not summarised yet: its first 40 lines.
QString beginning(const QString &diffText)
{
    const QStringList lines = diffText.split(u'\n');
    return lines.size() <= 40 ? diffText : lines.first(40).join(u'\n') + u"\n… (truncated)"_s;
}

/// The request for the narrative when these files were summarised before.
QJsonObject narrativeRequest(const QList<FileChange> &files, const QStringList &summarised)
{
    QList<ChangesetEntry> entries;
    for (const FileChange &file : files) {
        if (!file.hunks.isEmpty()) {
            entries.append({file.path, summarised.contains(file.path)
                                           ? *file.summaryState.value()
                                           : beginning(fileDiffText(file))});
        }
    }
    return single(prompts::fullPicture(), prompts::fullPictureMessage(entries));
}

/// How often each body was sent.
QMap<QByteArray, int> counted(const QList<QJsonObject> &bodies)
{
    QMap<QByteArray, int> counts;
    for (const QJsonObject &sent : bodies) {
        ++counts[QJsonDocument(sent).toJson(QJsonDocument::Compact)];
    }
    return counts;
}

class TypicalReview : public ReviewWalkFixture
{
protected:
    void startInWindow()
    {
        start(m_provider.baseURL());
        showWindow();
    }

    void showWindow()
    {
        m_appearance.emplace(m_app->appearanceController());
        m_window.emplace(root(), *m_appearance, true);
        ASSERT_NE(m_window->window(), nullptr);
    }

    /// Ends the application, as closing its window does, and starts it anew.
    void restart()
    {
        m_window.reset();
        m_appearance.reset();
        m_app.reset();
        m_app.emplace(places());
        showWindow();
    }

    /// Opens the repository through the picker and waits until everything that the list asks for is
    /// there.
    void openList()
    {
        root().openFolder(QUrl::fromLocalFile(m_repository));
        spinUntil(
            [this] { return root().fileList() != nullptr && root().fileList()->hasLoaded(); });
        spinUntil([this] { return isListComplete(); });
    }

    [[nodiscard]] bool isListComplete()
    {
        FileListViewModel &list = *root().fileList();
        return !list.narrative().isEmpty() &&
               std::all_of(list.files().cbegin(), list.files().cend(), [](const FileChange &file) {
                   return file.hunks.isEmpty() || file.summaryState.isLoaded();
               });
    }

    void openFileInWindow(const QString &path)
    {
        root().fileList()->openFile(rowOf(path));
        awaitHunks();
    }

    [[nodiscard]] AIResultCache &cache() { return *root().coordinator()->aiResultCache(); }

    void awaitHunks()
    {
        spinUntil([this] { return root().diff() != nullptr && root().diff()->hunkCount() > 0; });
    }

    void awaitAllExplanations()
    {
        spinUntil([this] {
            const QList<Hunk> &hunks = root().diff()->hunks();
            return std::all_of(hunks.cbegin(), hunks.cend(),
                               [](const Hunk &hunk) { return hunk.explanationState.isLoaded(); });
        });
    }

    /// Waits for this many requests since the last call, and gives their bodies.
    QList<QJsonObject> newBodies(qsizetype count)
    {
        spinUntil([&] { return m_provider.requests().size() >= m_seen + count; });
        return bodiesSinceLastCall();
    }

    QList<QJsonObject> bodiesSinceLastCall()
    {
        const QList<QJsonObject> all = m_provider.requests();
        QList<QJsonObject> bodies;
        for (const QJsonObject &request : all.mid(m_seen)) {
            EXPECT_EQ(request["path"_L1].toString(), u"/v1/chat/completions"_s);
            EXPECT_FALSE(request["hasAuthorization"_L1].toBool());
            bodies.append(request["body"_L1].toObject());
        }
        m_seen = all.size();
        return bodies;
    }

    SampleProvider m_provider{};
    std::optional<SystemAppearance> m_appearance{};
    std::optional<MainWindow> m_window{};
    qsizetype m_seen = 0;
};

TEST_F(TypicalReview, AsksForEachThingOnceWithTheExpectedWords)
{
    startInWindow();

    // The list: a summary for each file that has text, the narrative once, the first hunk.
    openList();
    const QList<FileChange> files = root().fileList()->files();
    const QString fullPicture = root().fileList()->narrative();
    QList<QJsonObject> expected;
    for (const FileChange &file : files) {
        if (!file.hunks.isEmpty()) {
            expected.append(summaryRequest(file));
        }
    }
    const int summaryCount = int(expected.size());
    EXPECT_EQ(summaryCount, 11);
    expected.append(explanationRequest(files.first(), 0, fullPicture));
    const QList<QJsonObject> bodies = newBodies(summaryCount + 2);
    QMap<QByteArray, int> sent = counted(bodies);
    // The narrative is told of the summaries that were there when it was asked for, which come in
    // the order of their requests.
    QStringList summarised;
    int narrativeCount = int(sent.take(counted({narrativeRequest(files, {})}).firstKey()));
    for (const QJsonObject &asked : bodies) {
        for (const FileChange &file : files) {
            if (!file.hunks.isEmpty() && asked == summaryRequest(file)) {
                summarised.append(file.path);
                narrativeCount +=
                    sent.take(counted({narrativeRequest(files, summarised)}).firstKey());
            }
        }
    }
    EXPECT_EQ(narrativeCount, 1);
    EXPECT_EQ(sent, counted(expected));

    // The first hunk is there when its file opens.
    const QString firstText = hunkDiffText(displayedHunks(files.first().hunks).first());
    spinUntil([&] { return cache().hunkExplanation({files.first().path, firstText}).has_value(); });
    openFileInWindow(files.first().path);
    ASSERT_EQ(root().diff()->hunkCount(), 1);
    EXPECT_TRUE(root().diff()->hunks().first().explanationState.isLoaded());

    // Going back asks for nothing that is known; the prefetch takes the next file's first hunk.
    root().diff()->goBack();
    spinUntil([this] { return root().fileList() != nullptr && root().fileList()->hasLoaded(); });
    EXPECT_EQ(root().fileList()->narrative(), fullPicture);
    EXPECT_TRUE(isListComplete());
    EXPECT_EQ(counted(newBodies(1)), counted({explanationRequest(files.at(1), 0, fullPicture)}));

    // Of another file the selected hunk is explained first, and then one after another.
    openFileInWindow(tokenStore);
    ASSERT_EQ(root().diff()->hunkCount(), 3);
    awaitAllExplanations();
    const FileChange store = root().diff()->file();
    const QList<QJsonObject> explanations = newBodies(3);
    EXPECT_EQ(counted(explanations.first(2)), counted({explanationRequest(store, 0, fullPicture),
                                                       explanationRequest(store, 1, fullPicture)}));
    EXPECT_EQ(explanations.mid(2), QList{explanationRequest(store, 2, fullPicture)});

    // A question is answered, and new questions are suggested.
    const QString hunkText = hunkDiffText(root().diff()->hunks().first());
    ChatThreadViewModel &chat = *root().diff()->chatViewModel(0);
    EXPECT_EQ(chat.suggestedQuestions(),
              (QStringList{u"What could break?"_s, u"How is it tested?"_s}));
    chat.setDraft(u" Why so early? "_s);
    chat.send();
    spinUntil([&] { return !chat.isReplyInProgress() && !chat.isRefreshingSuggestions(); });
    const QList<ChatMessage> conversation = chat.messages();
    ASSERT_EQ(conversation.size(), 2);
    EXPECT_TRUE(conversation.at(1).text.contains(u"You asked: Why so early?"_s));
    EXPECT_EQ(chat.suggestedQuestions(),
              (QStringList{u"What could break?"_s, u"Who calls this?"_s}));
    const QList<QJsonObject> expectedChat{
        body({message(u"system"_s, prompts::followUp(tokenStore, hunkText).join(QString())),
              message(u"user"_s, u"Why so early?"_s)},
             true),
        single(prompts::suggestions(),
               prompts::suggestionsMessage(tokenStore, hunkText, conversation).join(QString()))};
    EXPECT_EQ(newBodies(2), expectedChat);

    // Stepping crosses the files in both directions.
    root().diff()->goNext();
    root().diff()->goNext();
    root().diff()->goNext();
    awaitHunks();
    EXPECT_EQ(root().diff()->file().path, u"src/http/client.cpp"_s);
    EXPECT_EQ(root().diff()->selectedHunkIndex(), 0);
    awaitAllExplanations();
    root().diff()->goPrevious();
    awaitHunks();
    EXPECT_EQ(root().diff()->file().path, tokenStore);
    EXPECT_EQ(root().diff()->selectedHunkIndex(), 2);
    EXPECT_TRUE(root().diff()->selectedHunk()->explanationState.isLoaded());
    EXPECT_EQ(root().diff()->chatViewModel(0)->messages(), conversation);
}

TEST_F(TypicalReview, AConversationAndItsExplanationSurviveARestart)
{
    startInWindow();
    openList();
    openFileInWindow(tokenStore);
    awaitAllExplanations();
    ChatThreadViewModel &chat = *root().diff()->chatViewModel(1);
    chat.setDraft(u"Why?"_s);
    chat.send();
    spinUntil([&] { return !chat.isReplyInProgress() && !chat.isRefreshingSuggestions(); });
    const QList<ChatMessage> conversation = chat.messages();
    const QStringList questions = chat.suggestedQuestions();
    const HunkExplanation explanation = *root().diff()->hunks().at(1).explanationState.value();

    restart();
    openList();
    const QJsonObject asked = explanationRequest(root().fileList()->files().at(rowOf(tokenStore)),
                                                 1, root().fileList()->narrative());
    bodiesSinceLastCall();
    openFileInWindow(tokenStore);
    awaitAllExplanations();

    EXPECT_EQ(root().diff()->chatViewModel(1)->messages(), conversation);
    EXPECT_EQ(root().diff()->chatViewModel(1)->suggestedQuestions(), questions);
    EXPECT_EQ(*root().diff()->hunks().at(1).explanationState.value(), explanation);
    EXPECT_FALSE(bodiesSinceLastCall().contains(asked));
}

TEST_F(TypicalReview, ClosingTheMainWindowEndsTheApplication)
{
    startInWindow();

    QMetaObject::invokeMethod(m_window->window(), "close", Qt::QueuedConnection);

    EXPECT_EQ(QGuiApplication::exec(), 0);
}

} // namespace
} // namespace vantrel::test
