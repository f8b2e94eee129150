#include "app/ChatThreadViewModel.h"

#include "ScreenServices.h"
#include "support/UnexpectedMessages.h"

#include <gtest/gtest.h>

#include <memory>

namespace vantrel::test {
namespace {

using namespace Qt::Literals::StringLiterals;

const QString path = u"src/plum.cpp"_s;
const QString hunk = u"-old\n+new"_s;

AIFailure missingKey()
{
    AIServiceError error;
    error.kind = AIServiceError::Case::missingAPIKey;
    return error;
}

AIFailure networkFailure()
{
    PlatformError error;
    error.message = u"Connection refused"_s;
    return error;
}

HunkExplanation sampleExplanation()
{
    return {u"Bug fix"_s, u"Keeps the last plum."_s, {}, {u"Tested?"_s, u"Why now?"_s}};
}

/// A message without its id: "user: Why?", "assistant: Bec…" while it streams.
QString written(const ChatMessage &message)
{
    const QString role = message.role == ChatMessage::Role::user ? u"user: "_s : u"assistant: "_s;
    return role + message.text + (message.isStreaming ? u"…"_s : QString());
}

QStringList written(const QList<ChatMessage> &messages)
{
    QStringList all;
    for (const ChatMessage &message : messages) {
        all.append(written(message));
    }
    return all;
}

ChatMessage message(ChatMessage::Role role, const QString &text, bool isStreaming = false)
{
    return {QUuid::createUuid(), role, text, isStreaming};
}

/// A conversation over scripted services, with every signal in their log.
class ChatThreadViewModelTest : public testing::Test
{
protected:
    ChatThreadViewModelTest() { services.notice.acknowledge(); }

    void makeChat(const std::optional<HunkExplanation> &explanation = std::nullopt)
    {
        chat = std::make_unique<ChatThreadViewModel>(
            ChatThreadViewModel::Subject{u"/orchard"_s, path, hunk}, explanation, services.aiWorker,
            services.notice, services.chatHistory);
        const auto record = [this](auto signal, const QString &name) {
            QObject::connect(chat.get(), signal, [this, name] { services.log.append(name); });
        };
        record(&ChatThreadViewModel::isReplyInProgressChanged, u"isReplyInProgressChanged"_s);
        record(&ChatThreadViewModel::suggestedQuestionsChanged, u"suggestedQuestionsChanged"_s);
        record(&ChatThreadViewModel::isRefreshingSuggestionsChanged,
               u"isRefreshingSuggestionsChanged"_s);
        record(&ChatThreadViewModel::draftChanged, u"draftChanged"_s);
        record(&ChatThreadViewModel::errorMessageChanged, u"errorMessageChanged"_s);
        const auto recordIndex = [this](auto signal, const QString &name) {
            QObject::connect(chat.get(), signal, [this, name](int index) {
                services.log.append(name + u' ' + QString::number(index));
            });
        };
        recordIndex(&ChatThreadViewModel::messageAppended, u"messageAppended"_s);
        recordIndex(&ChatThreadViewModel::messageChanged, u"messageChanged"_s);
        recordIndex(&ChatThreadViewModel::messageRemoved, u"messageRemoved"_s);
    }

    void send(const QString &question)
    {
        chat->setDraft(question);
        chat->send();
    }

    /// Sends a question and waits until the model was asked for its `number`th answer.
    void ask(const QString &question, std::size_t number = 0)
    {
        send(question);
        runUntil([this, number] { return services.ai.chats.size() == number + 1; });
    }

    void pushDelta(std::size_t number, const QString &delta)
    {
        services.ai.chats.at(number).push(delta);
        runUntilIdle();
    }

    void finish(std::size_t number)
    {
        services.ai.chats.at(number).finish();
        runUntilIdle();
    }

    void fail(std::size_t number, const AIFailure &aiFailure)
    {
        services.ai.chats.at(number).fail(aiFailure);
        runUntilIdle();
    }

    /// A question with its whole answer, while the refresh of the questions waits.
    void converse()
    {
        ask(u"Why?"_s);
        pushDelta(0, u"Because."_s);
        finish(0);
        newEntries();
    }

    void store(const QList<ChatMessage> &messages,
               const std::optional<HunkExplanation> &explanation = std::nullopt)
    {
        PersistedChatThread thread;
        thread.filePath = path;
        thread.diffText = hunk;
        thread.messages = messages;
        thread.suggestedQuestions = {u"Stored?"_s};
        thread.explanation = explanation;
        services.chatHistory.store(thread);
    }

    [[nodiscard]] PersistedChatThread stored() const
    {
        return services.chatHistory.threads().value(0);
    }

    QStringList newEntries()
    {
        const QStringList all = services.log.entries();
        const QStringList entries = all.mid(seen);
        seen = all.size();
        return entries;
    }

    ScreenServices services{};
    std::unique_ptr<ChatThreadViewModel> chat{};
    qsizetype seen = 0;
};

// Beginning

TEST_F(ChatThreadViewModelTest, StartsEmptyWithTheQuestionsOfTheExplanation)
{
    makeChat(sampleExplanation());

    EXPECT_EQ(written(chat->messages()), QStringList());
    EXPECT_EQ(chat->suggestedQuestions(), (QStringList{u"Tested?"_s, u"Why now?"_s}));
    EXPECT_EQ(chat->draft(), QString());
    EXPECT_EQ(chat->errorMessage(), QString());
    EXPECT_FALSE(chat->isReplyInProgress());
    EXPECT_FALSE(chat->isRefreshingSuggestions());
}

TEST_F(ChatThreadViewModelTest, StartsWithoutQuestionsWhenThereIsNoExplanation)
{
    makeChat();

    EXPECT_EQ(chat->suggestedQuestions(), QStringList());
    EXPECT_EQ(chat->explanation(), std::nullopt);
}

TEST_F(ChatThreadViewModelTest, RestoresTheStoredConversationAndItsQuestions)
{
    const QList<ChatMessage> messages{message(ChatMessage::Role::user, u"Why?"_s),
                                      message(ChatMessage::Role::assistant, u"Because."_s)};
    store(messages, sampleExplanation());

    makeChat();

    EXPECT_EQ(chat->messages(), messages);
    EXPECT_EQ(chat->suggestedQuestions(), QStringList{u"Stored?"_s});
    EXPECT_EQ(chat->explanation(), sampleExplanation());
}

TEST_F(ChatThreadViewModelTest, TheExplanationThatIsGivenWinsOverTheStoredOne)
{
    store({}, HunkExplanation{u"Old"_s, u"Old."_s, {}, {}});

    makeChat(sampleExplanation());

    EXPECT_EQ(chat->explanation(), sampleExplanation());
}

TEST_F(ChatThreadViewModelTest, AnAnswerThatAnEarlierRunDidNotFinishEndsWhereItStood)
{
    store({message(ChatMessage::Role::user, u"Why?"_s),
           message(ChatMessage::Role::assistant, u"Becau"_s, true)});

    makeChat();

    EXPECT_EQ(written(chat->messages()), (QStringList{u"user: Why?"_s, u"assistant: Becau"_s}));
    EXPECT_FALSE(chat->isReplyInProgress());
}

TEST_F(ChatThreadViewModelTest, AnAnswerThatAnEarlierRunDidNotBeginIsLeftOut)
{
    store({message(ChatMessage::Role::user, u"Why?"_s),
           message(ChatMessage::Role::assistant, QString(), true)});

    makeChat();

    EXPECT_EQ(written(chat->messages()), QStringList{u"user: Why?"_s});
}

// The explanation

TEST_F(ChatThreadViewModelTest, AnExplanationThatComesLaterBringsItsQuestions)
{
    makeChat();

    chat->apply(sampleExplanation());

    EXPECT_EQ(chat->explanation(), sampleExplanation());
    EXPECT_EQ(services.log.entries(), QStringList{u"suggestedQuestionsChanged"_s});
}

TEST_F(ChatThreadViewModelTest, AHunkThatNobodyAskedAboutIsNotStored)
{
    makeChat();

    chat->apply(sampleExplanation());

    EXPECT_EQ(services.chatHistory.threads(), QList<PersistedChatThread>());
}

TEST_F(ChatThreadViewModelTest, AnExplanationThatComesAfterAQuestionIsStoredAndKeepsTheQuestions)
{
    makeChat();
    converse();

    chat->apply(sampleExplanation());

    EXPECT_EQ(chat->suggestedQuestions(), QStringList());
    EXPECT_EQ(stored().explanation, sampleExplanation());
    EXPECT_EQ(newEntries(), QStringList{u"save src/plum.cpp: 2 messages"_s});
}

TEST_F(ChatThreadViewModelTest, AnExplanationThatComesWhileAnAnswerStreamsIsStoredWithTheAnswer)
{
    makeChat();
    ask(u"Why?"_s);
    newEntries();

    chat->apply(sampleExplanation());
    EXPECT_EQ(newEntries(), QStringList());
    pushDelta(0, u"Because."_s);
    finish(0);

    EXPECT_EQ(stored().explanation, sampleExplanation());
}

TEST_F(ChatThreadViewModelTest, AnotherExplanationOfAConversationChangesNothing)
{
    makeChat(sampleExplanation());
    converse();

    chat->apply(HunkExplanation{u"Other"_s, u"Other."_s, {}, {u"Else?"_s}});

    EXPECT_EQ(chat->explanation(), sampleExplanation());
    EXPECT_EQ(newEntries(), QStringList());
}

TEST_F(ChatThreadViewModelTest, AnotherExplanationReplacesTheFirstWhileNothingWasSaid)
{
    makeChat(sampleExplanation());

    chat->apply(HunkExplanation{u"Other"_s, u"Other."_s, {}, {u"Else?"_s}});

    EXPECT_EQ(chat->suggestedQuestions(), QStringList{u"Else?"_s});
}

// Sending

TEST_F(ChatThreadViewModelTest, ADraftOfBlanksSendsNothingAndIsKept)
{
    makeChat();
    chat->setDraft(u" \n "_s);
    newEntries();

    chat->send();
    runUntilIdle();

    EXPECT_EQ(newEntries(), QStringList());
    EXPECT_EQ(chat->draft(), u" \n "_s);
}

TEST_F(ChatThreadViewModelTest, SendsTheTrimmedDraft)
{
    makeChat();
    chat->setDraft(u" Why?\n"_s);
    newEntries();

    chat->send();
    runUntil([this] { return services.ai.chats.size() == 1; });

    const QStringList expected{
        u"messageAppended 0"_s,        u"save src/plum.cpp: 1 messages"_s,
        u"messageAppended 1"_s,        u"draftChanged"_s,
        u"isReplyInProgressChanged"_s, u"chatAboutHunk src/plum.cpp | -old\n+new | user: Why?"_s};
    EXPECT_EQ(newEntries(), expected);
    EXPECT_EQ(written(chat->messages()), (QStringList{u"user: Why?"_s, u"assistant: …"_s}));
    EXPECT_EQ(written(stored().messages), QStringList{u"user: Why?"_s});
    EXPECT_EQ(chat->draft(), QString());
    EXPECT_TRUE(chat->isReplyInProgress());
}

TEST_F(ChatThreadViewModelTest, MessagesHaveIdsOfTheirOwn)
{
    makeChat();
    ask(u"Why?"_s);

    EXPECT_FALSE(chat->messages().at(0).id.isNull());
    EXPECT_FALSE(chat->messages().at(1).id.isNull());
    EXPECT_NE(chat->messages().at(0).id, chat->messages().at(1).id);
}

TEST_F(ChatThreadViewModelTest, TheAnswerGrowsInItsMessage)
{
    makeChat();
    ask(u"Why?"_s);
    newEntries();

    services.ai.chats.at(0).push(u"Be"_s);
    services.ai.chats.at(0).push(QString());
    services.ai.chats.at(0).push(u"cause."_s);
    runUntilIdle();

    EXPECT_EQ(newEntries(), (QStringList{u"messageChanged 1"_s, u"messageChanged 1"_s}));
    EXPECT_EQ(written(chat->messages()).last(), u"assistant: Because.…"_s);
}

TEST_F(ChatThreadViewModelTest, TheEndOfTheAnswerIsStoredAndAsksForNewQuestions)
{
    makeChat(sampleExplanation());
    ask(u"Why?"_s);
    pushDelta(0, u"Because."_s);
    newEntries();

    finish(0);

    const QStringList expected{
        u"save src/plum.cpp: 2 messages"_s,
        u"messageChanged 1"_s,
        u"isReplyInProgressChanged"_s,
        u"isRefreshingSuggestionsChanged"_s,
        u"chatAboutHunk 0 released"_s,
        u"suggestQuestions src/plum.cpp | -old\n+new | user: Why? / assistant: Because."_s};
    QStringList log = newEntries();
    EXPECT_EQ(log, expected);
    EXPECT_EQ(written(stored().messages), (QStringList{u"user: Why?"_s, u"assistant: Because."_s}));
    EXPECT_EQ(stored().explanation, sampleExplanation());
}

TEST_F(ChatThreadViewModelTest, TheNextQuestionCarriesTheConversation)
{
    makeChat();
    converse();

    ask(u"Really?"_s, 1);

    EXPECT_EQ(newEntries().last(),
              u"chatAboutHunk src/plum.cpp | -old\n+new | user: Why? / assistant: Because. / "
              "user: Really?"_s);
}

TEST_F(ChatThreadViewModelTest, AQuestionWaitsForTheKeychainNotice)
{
    ScreenServices fresh;
    ChatThreadViewModel waiting(ChatThreadViewModel::Subject{u"/orchard"_s, path, hunk},
                                std::nullopt, fresh.aiWorker, fresh.notice, fresh.chatHistory);
    waiting.setDraft(u"Why?"_s);
    waiting.send();
    runUntilIdle();
    EXPECT_TRUE(fresh.notice.isShowingNotice());
    EXPECT_EQ(fresh.ai.chats.size(), 0U);

    fresh.notice.acknowledge();
    runUntil([&] { return fresh.ai.chats.size() == 1; });

    EXPECT_TRUE(waiting.isReplyInProgress());
}

TEST_F(ChatThreadViewModelTest, AnAnswerOfTwoMegabytesTakesEachPieceOnce)
{
    makeChat();
    ask(u"Why?"_s);
    pushDelta(0, u"x"_s);
    int moves = 0;
    const QChar *data = chat->messages().last().text.constData();
    QObject::connect(chat.get(), &ChatThreadViewModel::messageChanged, chat.get(), [&] {
        const QChar *const now = chat->messages().last().text.constData();
        moves += now == data ? 0 : 1;
        data = now;
    });

    for (int piece = 0; piece < 4096; ++piece) {
        services.ai.chats.at(0).push(QString(256, u'x'));
    }
    finish(0);

    EXPECT_EQ(stored().messages.last().text.size(), 4096 * 256 + 1);
    EXPECT_LT(moves, 64); // A buffer that doubles moves 20 times, one that is copied 4096 times.
}

// Sending while an answer streams

TEST_F(ChatThreadViewModelTest, ASendWhileAnAnswerStreamsCutsItOffWhereItStands)
{
    makeChat();
    ask(u"Why?"_s);
    pushDelta(0, u"Becau"_s);
    newEntries();

    ask(u"Really?"_s, 1);
    services.ai.chats.at(0).push(u"se."_s);
    runUntilIdle();

    EXPECT_TRUE(services.ai.chats.at(0).isTerminated());
    EXPECT_EQ(written(chat->messages()), (QStringList{u"user: Why?"_s, u"assistant: Becau"_s,
                                                      u"user: Really?"_s, u"assistant: …"_s}));
    EXPECT_TRUE(chat->isReplyInProgress());
    EXPECT_FALSE(newEntries().contains(u"isReplyInProgressChanged"_s));
}

TEST_F(ChatThreadViewModelTest, ASendBeforeTheFirstWordDropsTheEmptyAnswer)
{
    makeChat();
    ask(u"Why?"_s);
    newEntries();

    ask(u"Really?"_s, 1);

    EXPECT_EQ(newEntries().filter(u"message "_s), QStringList());
    EXPECT_EQ(written(chat->messages()),
              (QStringList{u"user: Why?"_s, u"user: Really?"_s, u"assistant: …"_s}));
}

TEST_F(ChatThreadViewModelTest, ASendEndsTheRefreshOfTheQuestions)
{
    makeChat();
    converse();
    EXPECT_TRUE(chat->isRefreshingSuggestions());

    ask(u"Really?"_s, 1);

    EXPECT_FALSE(chat->isRefreshingSuggestions());
    EXPECT_TRUE(services.ai.suggestions.at(0).isTerminated());
}

// Failing

TEST_F(ChatThreadViewModelTest, AFailureBeforeTheFirstWordKeepsTheQuestionAlone)
{
    makeChat();
    ask(u"Why?"_s);
    newEntries();

    fail(0, missingKey());

    const QStringList expected{u"chatAboutHunk 0 released"_s, u"save src/plum.cpp: 1 messages"_s,
                               u"messageRemoved 1"_s, u"errorMessageChanged"_s,
                               u"isReplyInProgressChanged"_s};
    EXPECT_EQ(newEntries(), expected);
    EXPECT_EQ(chat->errorMessage(), u"Add an API key in Settings to use AI features."_s);
    EXPECT_EQ(written(stored().messages), QStringList{u"user: Why?"_s});
    EXPECT_EQ(services.ai.suggestions.size(), 0U);
}

TEST_F(ChatThreadViewModelTest, AFailureInMidAnswerKeepsWhatCame)
{
    makeChat();
    ask(u"Why?"_s);
    pushDelta(0, u"Becau"_s);

    fail(0, networkFailure());

    EXPECT_EQ(chat->errorMessage(), u"Connection refused"_s);
    EXPECT_EQ(written(stored().messages), (QStringList{u"user: Why?"_s, u"assistant: Becau"_s}));
    EXPECT_FALSE(chat->isReplyInProgress());
}

TEST_F(ChatThreadViewModelTest, TheNextSendClearsTheFailure)
{
    makeChat();
    ask(u"Why?"_s);
    fail(0, networkFailure());

    ask(u"Again?"_s, 1);

    EXPECT_EQ(chat->errorMessage(), QString());
    EXPECT_EQ(written(chat->messages()),
              (QStringList{u"user: Why?"_s, u"user: Again?"_s, u"assistant: …"_s}));
}

TEST_F(ChatThreadViewModelTest, AnAnswerOfBlanksIsNoReply)
{
    makeChat();
    ask(u"Why?"_s);
    pushDelta(0, u" \n"_s);

    finish(0);

    EXPECT_EQ(chat->errorMessage(), u"The AI provider returned an unexpected response."_s);
    EXPECT_EQ(written(chat->messages()), QStringList{u"user: Why?"_s});
    EXPECT_EQ(services.ai.suggestions.size(), 0U);
}

TEST_F(ChatThreadViewModelTest, AFailureOfTheConfigurationCanBeCleared)
{
    makeChat();
    ask(u"Why?"_s);
    fail(0, missingKey());

    chat->clearServiceError();

    EXPECT_EQ(chat->errorMessage(), QString());
}

TEST_F(ChatThreadViewModelTest, AFailureOfTheNetworkIsNotCleared)
{
    makeChat();
    ask(u"Why?"_s);
    fail(0, networkFailure());
    newEntries();

    chat->clearServiceError();

    EXPECT_EQ(chat->errorMessage(), u"Connection refused"_s);
    EXPECT_EQ(newEntries(), QStringList());
}

// New questions

TEST_F(ChatThreadViewModelTest, NewQuestionsReplaceTheOldAndAreStored)
{
    makeChat(sampleExplanation());
    converse();

    services.ai.suggestions.at(0).push(QStringList{u"Since when?"_s, u"And now?"_s});
    runUntilIdle();

    const QStringList expected{u"save src/plum.cpp: 2 messages"_s,
                               u"isRefreshingSuggestionsChanged"_s, u"suggestedQuestionsChanged"_s};
    QStringList log = newEntries();
    log.removeOne(u"suggestQuestions 0 released"_s);
    EXPECT_EQ(log, expected);
    EXPECT_EQ(chat->suggestedQuestions(), (QStringList{u"Since when?"_s, u"And now?"_s}));
    EXPECT_EQ(stored().suggestedQuestions, (QStringList{u"Since when?"_s, u"And now?"_s}));
}

TEST_F(ChatThreadViewModelTest, AReplyWithoutQuestionsKeepsTheOldAndIsLogged)
{
    expectMessage(
        u"Suggestion refresh returned no usable questions; keeping the previous chips."_s);
    makeChat(sampleExplanation());
    converse();

    services.ai.suggestions.at(0).push(QStringList());
    runUntilIdle();

    EXPECT_EQ(chat->suggestedQuestions(), sampleExplanation().suggestedQuestions);
    EXPECT_FALSE(chat->isRefreshingSuggestions());
    EXPECT_FALSE(newEntries().contains(u"save src/plum.cpp: 2 messages"_s));
}

TEST_F(ChatThreadViewModelTest, AFailedRefreshKeepsTheOldQuestionsAndIsOnlyLogged)
{
    expectMessage(u"Suggestion refresh failed; keeping the previous chips: Connection refused"_s);
    makeChat(sampleExplanation());
    converse();

    services.ai.suggestions.at(0).fail(networkFailure());
    runUntilIdle();

    EXPECT_EQ(chat->suggestedQuestions(), sampleExplanation().suggestedQuestions);
    EXPECT_FALSE(chat->isRefreshingSuggestions());
    EXPECT_EQ(chat->errorMessage(), QString());
}

// Leaving

TEST_F(ChatThreadViewModelTest, CancellingInMidAnswerKeepsAndStoresWhatCame)
{
    makeChat();
    ask(u"Why?"_s);
    pushDelta(0, u"Becau"_s);

    chat->cancelTasks();
    services.ai.chats.at(0).push(u"se."_s);
    runUntilIdle();

    EXPECT_EQ(written(stored().messages), (QStringList{u"user: Why?"_s, u"assistant: Becau"_s}));
    EXPECT_FALSE(chat->isReplyInProgress());
    EXPECT_EQ(services.ai.suggestions.size(), 0U) << "no questions after an answer that was cut";
}

TEST_F(ChatThreadViewModelTest, CancellingARefreshKeepsTheOldQuestions)
{
    makeChat(sampleExplanation());
    converse();

    chat->cancelTasks();

    EXPECT_FALSE(chat->isRefreshingSuggestions());
    EXPECT_EQ(chat->suggestedQuestions(), sampleExplanation().suggestedQuestions);
    EXPECT_TRUE(services.ai.suggestions.at(0).isTerminated());
}

TEST_F(ChatThreadViewModelTest, CancellingWhenNothingRunsDoesNothing)
{
    makeChat();

    chat->cancelTasks();

    EXPECT_EQ(services.log.entries(), QStringList());
}

TEST_F(ChatThreadViewModelTest, LeavingBeforeTheFirstTurnAsksNothing)
{
    makeChat();
    send(u"Why?"_s);

    chat.reset();
    runUntilIdle();

    EXPECT_EQ(services.ai.chats.size(), 0U);
}

TEST_F(ChatThreadViewModelTest, LeavingWhileTheNoticeShowsAsksNothing)
{
    ScreenServices fresh;
    auto waiting = std::make_unique<ChatThreadViewModel>(
        ChatThreadViewModel::Subject{u"/orchard"_s, path, hunk}, std::nullopt, fresh.aiWorker,
        fresh.notice, fresh.chatHistory);
    waiting->setDraft(u"Why?"_s);
    waiting->send();
    runUntilIdle();

    waiting.reset();
    fresh.notice.acknowledge();
    runUntilIdle();

    EXPECT_EQ(fresh.ai.chats.size(), 0U);
}

TEST_F(ChatThreadViewModelTest, LeavingInMidAnswerEndsTheRequestAndStoresWhatCame)
{
    makeChat();
    ask(u"Why?"_s);
    pushDelta(0, u"Becau"_s);
    newEntries();

    chat.reset();
    runUntilIdle();

    EXPECT_TRUE(services.ai.chats.at(0).isTerminated());
    EXPECT_EQ(written(stored().messages), (QStringList{u"user: Why?"_s, u"assistant: Becau"_s}));
    EXPECT_EQ(newEntries(),
              (QStringList{u"chatAboutHunk 0 released"_s, u"save src/plum.cpp: 2 messages"_s}));
}

TEST_F(ChatThreadViewModelTest, LeavingWhileQuestionsAreRefreshedEndsTheRequest)
{
    makeChat();
    converse();

    chat.reset();
    runUntilIdle();

    EXPECT_TRUE(services.ai.suggestions.at(0).isTerminated());
}

TEST_F(ChatThreadViewModelTest, CancellingFromTheSignalOfADeltaReadsNoFurther)
{
    makeChat();
    ask(u"Why?"_s);
    QObject::connect(chat.get(), &ChatThreadViewModel::messageChanged, chat.get(),
                     [this] { chat->cancelTasks(); });

    services.ai.chats.at(0).push(u"Be"_s);
    services.ai.chats.at(0).push(u"cause."_s);
    runUntilIdle();

    EXPECT_EQ(written(chat->messages()), (QStringList{u"user: Why?"_s, u"assistant: Be"_s}));
}

TEST_F(ChatThreadViewModelTest, SendingFromTheSignalThatEndsAnAnswerStartsTheNext)
{
    makeChat();
    ask(u"Why?"_s);
    pushDelta(0, u"Because."_s);
    bool hasSent = false;
    QObject::connect(chat.get(), &ChatThreadViewModel::isReplyInProgressChanged, chat.get(),
                     [this, &hasSent] {
                         if (!chat->isReplyInProgress() && !hasSent) {
                             hasSent = true;
                             send(u"Really?"_s);
                         }
                     });

    services.ai.chats.at(0).finish();
    runUntil([this] { return services.ai.chats.size() == 2; });

    EXPECT_TRUE(chat->isReplyInProgress());
    EXPECT_EQ(written(chat->messages()).last(), u"assistant: …"_s);
}

} // namespace
} // namespace vantrel::test
