#include "persistence/ChatHistoryStore.h"

#include "models/PersistedChatThreadCoding.h"
#include "persistence/ChatThreadMakers.h"
#include "persistence/StoredRecords.h"
#include "platform/UserDefaults.h"
#include "support/UnexpectedMessages.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

namespace vantrel {
namespace {

using namespace Qt::Literals::StringLiterals;
using test::answer;
using test::explanationSaying;
using test::question;
using test::second;

using Threads = QList<PersistedChatThread>;

/// Two threads as another program wrote them: in two files, the older one first.
constexpr auto handWrittenHistory = R"([
  {
    "filePath": "src/größe.cpp",
    "diffText": "-old\n+\"new\"",
    "messages": [],
    "suggestedQuestions": ["What else?", "Since when?"],
    "lastUpdated": 721692800
  },
  {
    "filePath": "src/a.cpp",
    "diffText": "@@ -1 +1 @@",
    "messages": [
      {"id": "8C9B2F7E-3A1D-4F60-9A57-0B1C2D3E4F5A", "role": {"user": {}},
       "text": "Why? \ud83d\udc4d", "isStreaming": false},
      {"id": "1B2C3D4E-5F60-4718-8293-A4B5C6D7E8F9", "role": {"assistant": {}},
       "text": "Because.", "isStreaming": true}
    ],
    "suggestedQuestions": [],
    "lastUpdated": 721692800.25,
    "explanation": {"tag": "fix", "explanation": "It mends.", "points": ["One"],
                    "suggestedQuestions": ["Two?"]}
  }
])";

Threads handWrittenThreads()
{
    PersistedChatThread older;
    older.filePath = u"src/größe.cpp"_s;
    older.diffText = u"-old\n+\"new\""_s;
    older.suggestedQuestions = {u"What else?"_s, u"Since when?"_s};
    older.lastUpdated = QDateTime(QDate(2023, 11, 14), QTime(22, 13, 20), Qt::UTC);
    PersistedChatThread newer;
    newer.filePath = u"src/a.cpp"_s;
    newer.diffText = u"@@ -1 +1 @@"_s;
    newer.messages = {
        ChatMessage{QUuid::fromString(u"8C9B2F7E-3A1D-4F60-9A57-0B1C2D3E4F5A"_s),
                    ChatMessage::Role::user, u"Why? 👍"_s, false},
        ChatMessage{QUuid::fromString(u"1B2C3D4E-5F60-4718-8293-A4B5C6D7E8F9"_s),
                    ChatMessage::Role::assistant, u"Because."_s, true},
    };
    newer.lastUpdated = older.lastUpdated.addMSecs(250);
    newer.explanation = HunkExplanation{u"fix"_s, u"It mends."_s, {u"One"_s}, {u"Two?"_s}};
    return {newer, older};
}

class ChatHistoryStoreTest : public testing::Test
{
protected:
    void store(const QByteArray &json) { ASSERT_TRUE(defaults.setBytes(u"chatHistory"_s, json)); }

    [[nodiscard]] QByteArray stored() const
    {
        return defaults.bytes(u"chatHistory"_s).value_or(QByteArray());
    }

    /// Saves at the given second, with one message.
    PersistedChatThread saveAt(int seconds, const QString &filePath, const QString &diffText,
                               const std::optional<HunkExplanation> &explanation = std::nullopt)
    {
        time = second(seconds);
        const PersistedChatThread thread{filePath,          diffText, {question(filePath)},
                                         {u"What else?"_s}, time,     explanation};
        history.save(filePath, diffText, thread.messages, thread.suggestedQuestions, explanation);
        return thread;
    }

    QTemporaryDir folder{};
    UserDefaults defaults{folder.path()};
    QDateTime time{};
    ChatHistoryStore history{defaults, [this] { return time; }};
};

TEST_F(ChatHistoryStoreTest, WithoutAnythingStoredThereIsNoHistory)
{
    EXPECT_EQ(history.threads(), Threads());
    EXPECT_EQ(history.thread(u"a.cpp"_s, u"-a"_s), std::nullopt);
    EXPECT_TRUE(history.explanations(u"a.cpp"_s).isEmpty());
}

TEST_F(ChatHistoryStoreTest, ASavedThreadReadsBack)
{
    time = second(7);
    const PersistedChatThread expected{
        u"a.cpp"_s,        u"-a\n+b"_s, {question(u"Why?"_s), answer(u"So."_s)},
        {u"What else?"_s}, time,        explanationSaying(u"It mends."_s)};

    history.save(expected.filePath, expected.diffText, expected.messages,
                 expected.suggestedQuestions, expected.explanation);

    EXPECT_EQ(ChatHistoryStore(defaults).thread(u"a.cpp"_s, u"-a\n+b"_s), expected);
}

TEST_F(ChatHistoryStoreTest, AThreadIsFoundByBothPathAndText)
{
    saveAt(1, u"a.cpp"_s, u"-a"_s);

    EXPECT_EQ(history.thread(u"a.cpp"_s, u"-b"_s), std::nullopt);
    EXPECT_EQ(history.thread(u"b.cpp"_s, u"-a"_s), std::nullopt);
}

TEST_F(ChatHistoryStoreTest, TwoHunksWithTheSameTextInDifferentFilesAreDifferentThreads)
{
    const auto first = saveAt(1, u"a.cpp"_s, u"-a"_s);
    const auto second = saveAt(2, u"b.cpp"_s, u"-a"_s);

    EXPECT_EQ(history.threads(), Threads({second, first}));
    EXPECT_EQ(history.thread(u"a.cpp"_s, u"-a"_s), first);
}

TEST_F(ChatHistoryStoreTest, TheFiftyFirstThreadDropsTheLeastRecentlySaved)
{
    Threads expected;
    for (int i = 0; i < 50; ++i) {
        expected.prepend(saveAt(i, u"file%1.cpp"_s.arg(i), u"-a"_s));
    }
    ASSERT_EQ(history.threads(), expected);

    expected.prepend(saveAt(50, u"file50.cpp"_s, u"-a"_s));

    expected.removeLast();
    EXPECT_EQ(history.threads(), expected);
    EXPECT_EQ(history.thread(u"file0.cpp"_s, u"-a"_s), std::nullopt);
}

TEST_F(ChatHistoryStoreTest, SavingOneOfFiftyAgainDropsNone)
{
    for (int i = 0; i < 50; ++i) {
        saveAt(i, u"file%1.cpp"_s.arg(i), u"-a"_s);
    }

    saveAt(50, u"file0.cpp"_s, u"-a"_s);

    EXPECT_EQ(history.threads().size(), 50);
    EXPECT_EQ(history.threads().last().filePath, u"file1.cpp"_s);
}

TEST_F(ChatHistoryStoreTest, SavingAThreadAgainMovesItToTheFrontAndRefreshesItsDate)
{
    saveAt(1, u"a.cpp"_s, u"-a"_s);
    const auto other = saveAt(2, u"b.cpp"_s, u"-b"_s);

    const auto again = saveAt(3, u"a.cpp"_s, u"-a"_s);

    EXPECT_EQ(again.lastUpdated, second(3));
    EXPECT_EQ(history.threads(), Threads({again, other}));
}

TEST_F(ChatHistoryStoreTest, SavingWithoutAnExplanationKeepsTheOneStored)
{
    saveAt(1, u"a.cpp"_s, u"-a"_s, explanationSaying(u"It mends."_s));

    PersistedChatThread expected = saveAt(2, u"a.cpp"_s, u"-a"_s);

    expected.explanation = explanationSaying(u"It mends."_s);
    EXPECT_EQ(history.threads(), Threads{expected});
}

TEST_F(ChatHistoryStoreTest, TheKeptExplanationIsThatOfThePairAlone)
{
    saveAt(1, u"a.cpp"_s, u"-a"_s, explanationSaying(u"It mends."_s));

    const auto expected = saveAt(2, u"a.cpp"_s, u"-b"_s);

    EXPECT_EQ(history.thread(u"a.cpp"_s, u"-b"_s), expected);
}

TEST_F(ChatHistoryStoreTest, SavingWithAnExplanationReplacesTheOneStored)
{
    saveAt(1, u"a.cpp"_s, u"-a"_s, explanationSaying(u"It mends."_s));

    const auto expected = saveAt(2, u"a.cpp"_s, u"-a"_s, explanationSaying(u"It breaks."_s));

    EXPECT_EQ(history.threads(), Threads{expected});
}

TEST_F(ChatHistoryStoreTest, TheExplanationsOfAFileAreThoseOfItsThreadsThatHaveOne)
{
    saveAt(1, u"a.cpp"_s, u"-a"_s, explanationSaying(u"One"_s));
    saveAt(2, u"a.cpp"_s, u"-b"_s);
    saveAt(3, u"b.cpp"_s, u"-c"_s, explanationSaying(u"Other"_s));
    saveAt(4, u"a.cpp"_s, u"-d"_s, explanationSaying(u"Two"_s));

    const QHash<QString, HunkExplanation> expected{{u"-a"_s, explanationSaying(u"One"_s)},
                                                   {u"-d"_s, explanationSaying(u"Two"_s)}};
    EXPECT_EQ(history.explanations(u"a.cpp"_s), expected);
}

TEST_F(ChatHistoryStoreTest, ASaveOfTheSameMomentIsTheNewer)
{
    const auto first = saveAt(1, u"a.cpp"_s, u"-a"_s);
    const auto second = saveAt(1, u"b.cpp"_s, u"-a"_s);

    EXPECT_EQ(history.threads(), Threads({second, first}));
}

TEST_F(ChatHistoryStoreTest, AHistoryWrittenByHandIsRead)
{
    store(handWrittenHistory);

    EXPECT_EQ(history.threads(), handWrittenThreads());
}

TEST_F(ChatHistoryStoreTest, AStoredThreadWithoutAnExplanationReadsBackWithNone)
{
    store(handWrittenHistory);

    const auto thread = history.thread(u"src/größe.cpp"_s, u"-old\n+\"new\""_s);

    ASSERT_NE(thread, std::nullopt);
    EXPECT_EQ(thread->explanation, std::nullopt);
}

TEST_F(ChatHistoryStoreTest, OneThreadWithoutSuggestedQuestionsMakesTheWholeHistoryEmpty)
{
    store(QByteArray(handWrittenHistory).replace("\"suggestedQuestions\": [],", ""));

    EXPECT_EQ(history.threads(), Threads());
}

TEST_F(ChatHistoryStoreTest, UnknownKeysAreIgnored)
{
    store(
        QByteArray(handWrittenHistory)
            .replace("\"filePath\": \"src/a.cpp\"", "\"pinned\": [1], \"filePath\": \"src/a.cpp\"")
            .replace("\"tag\": \"fix\"", "\"tag\": \"fix\", \"model\": null"));

    EXPECT_EQ(history.threads(), handWrittenThreads());
}

TEST_F(ChatHistoryStoreTest, ASaveHasTheStoredForm)
{
    time = second(86401).addMSecs(250);

    history.save(u"a.cpp"_s, u"-a"_s, {}, {u"Why?"_s}, std::nullopt);

    EXPECT_EQ(stored(), QByteArray("[{\"diffText\":\"-a\",\"filePath\":\"a.cpp\","
                                   "\"lastUpdated\":86401.25,\"messages\":[],"
                                   "\"suggestedQuestions\":[\"Why?\"]}]"));
}

TEST_F(ChatHistoryStoreTest, AThreadIsFoundByAPathThatBeginsWithAByteOrderMark)
{
    const auto saved = saveAt(1, u"\uFEFFa.cpp"_s, u"\uFEFF\uFEFF"_s);

    EXPECT_EQ(history.thread(u"\uFEFFa.cpp"_s, u"\uFEFF\uFEFF"_s), saved);
}

TEST_F(ChatHistoryStoreTest, HalfOfACharacterInATextHarmsNothing)
{
    QString text = u"cut 👍"_s;
    text.chop(1);

    const auto saved = saveAt(1, u"a.cpp"_s, text);

    EXPECT_EQ(history.threads(), Threads{saved});
}

TEST_F(ChatHistoryStoreTest, ADamagedHistoryIsEmptyAndStaysUntilTheNextSave)
{
    const QByteArray whole = handWrittenHistory;
    for (const QByteArray &damaged : {QByteArray(), QByteArray("null"), QByteArray("{}"),
                                      QByteArray("[1]"), whole.chopped(1), whole.sliced(1),
                                      QByteArray(whole).replace("größe", "gr\xF6\xDF"
                                                                         "e")}) {
        store(damaged);

        EXPECT_EQ(history.threads(), Threads()) << damaged.constData();
        EXPECT_EQ(stored(), damaged);
        const auto saved = saveAt(1, u"a.cpp"_s, u"-a"_s);
        EXPECT_EQ(history.threads(), Threads{saved}) << damaged.constData();
    }
}

TEST_F(ChatHistoryStoreTest, OfTwoStoredThreadsOfOnePairTheNewerIsFoundAndTheOlderExplains)
{
    // Files and texts alike: a history that no save of this application leaves.
    store(QByteArray(handWrittenHistory)
              .replace("src/größe.cpp", "src/a.cpp")
              .replace(R"(-old\n+\"new\")", "@@ -1 +1 @@")
              .replace("721692800\n", "721692800, \"explanation\": {\"tag\": \"old\","
                                      " \"explanation\": \"\", \"points\": [],"
                                      " \"suggestedQuestions\": []}\n"));

    EXPECT_EQ(history.thread(u"src/a.cpp"_s, u"@@ -1 +1 @@"_s), handWrittenThreads().first());
    const QHash<QString, HunkExplanation> expected{
        {u"@@ -1 +1 @@"_s, HunkExplanation{u"old"_s, QString(), {}, {}}}};
    EXPECT_EQ(history.explanations(u"src/a.cpp"_s), expected);
}

TEST_F(ChatHistoryStoreTest, ASaveReplacesEveryThreadOfItsPair)
{
    store(QByteArray(handWrittenHistory)
              .replace("src/größe.cpp", "src/a.cpp")
              .replace(R"(-old\n+\"new\")", "@@ -1 +1 @@"));

    PersistedChatThread expected = saveAt(900'000'000, u"src/a.cpp"_s, u"@@ -1 +1 @@"_s);

    expected.explanation = handWrittenThreads().first().explanation;
    EXPECT_EQ(history.threads(), Threads{expected});
}

TEST_F(ChatHistoryStoreTest, FiftyThreadsOfAMegabyteEachAreKept)
{
    Threads expected;
    for (int i = 0; i < 49; ++i) {
        PersistedChatThread thread;
        thread.filePath = u"file%1.cpp"_s.arg(i);
        thread.diffText = QString(500'000, u'-') + QString(500'000, QChar(u'0' + i % 10));
        thread.lastUpdated = second(49 - i);
        expected.append(thread);
    }
    store(storedForm(expected));

    const QString diffText(1'000'000, u'"'); // The longest form: each is written as two.
    expected.prepend(saveAt(50, u"file50.cpp"_s, diffText));

    EXPECT_TRUE(history.threads() == expected); // Not EXPECT_EQ, which would print them.
}

TEST_F(ChatHistoryStoreTest, TheHistoryIsReadableByItsOwnerAlone)
{
    saveAt(1, u"a.cpp"_s, u"-a"_s);

    const auto ownersAlone =
        QFile::ReadOwner | QFile::WriteOwner | QFile::ReadUser | QFile::WriteUser;
    EXPECT_EQ(QFile::permissions(folder.filePath(u"chatHistory"_s)), ownersAlone);
}

TEST_F(ChatHistoryStoreTest, FailedSavesAreLoggedOnceAndCountUntilTheEnd)
{
    QFile file(folder.filePath(u"no-folder"_s));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    UserDefaults unwritable(file.fileName());
    ChatHistoryStore lost(unwritable);
    test::expectOneMessage(
        u"the preferences could not be saved, and are kept until they can be: "_s);

    lost.save(u"a.cpp"_s, u"-a"_s, {}, {}, std::nullopt);
    lost.save(u"b.cpp"_s, u"-b"_s, {}, {}, std::nullopt);

    EXPECT_EQ(lost.threads().size(), 2);
}

} // namespace
} // namespace vantrel
