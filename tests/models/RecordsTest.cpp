#include "RecordMakers.h"
#include "models/ChatMessage.h"
#include "models/FileChange.h"
#include "models/Hunk.h"
#include "models/HunkExplanation.h"
#include "models/RecentRepo.h"
#include "models/Repo.h"

#include <gtest/gtest.h>

namespace vantrel {

using namespace Qt::Literals::StringLiterals;
using namespace test;

namespace {

/// The same record with one field changed.
template<typename Record, typename Value>
Record with(Record record, Value Record::*field, const Value &value)
{
    record.*field = value;
    return record;
}

const QUuid firstId = QUuid::fromString(u"8c9b2f7e-3a1d-4f60-9a57-0b1c2d3e4f50"_s);
const QUuid secondId = QUuid::fromString(u"8c9b2f7e-3a1d-4f60-9a57-0b1c2d3e4f51"_s);
const QDateTime noon(QDate(2024, 5, 17), QTime(12, 0), Qt::UTC);

Repo repo()
{
    return Repo{firstId, QUrl(u"file:///home/ada/engine"_s), u"engine"_s};
}

RecentRepo recentRepo()
{
    return RecentRepo{firstId, u"engine"_s, u"/home/ada/engine"_s, noon};
}

RawHunk rawHunk()
{
    return RawHunk{slice("@@ -1 +1 @@"), 1, 1, {deletion("a"), addition("b")}};
}

FileChange fileChange()
{
    FileChange file;
    file.path = u"src/engine.cpp"_s;
    file.additions = 1;
    file.deletions = 1;
    file.hunks = {rawHunk()};
    return file;
}

DiffRow row()
{
    return DiffRow{0, deletionCell(1, "a"), additionCell(1, "b")};
}

Hunk hunk()
{
    Hunk hunk;
    hunk.header = slice("@@ -1 +1 @@");
    hunk.rows = {row()};
    return hunk;
}

HunkExplanation explanation()
{
    return HunkExplanation{u"Bug fix"_s, u"Counts from one."_s, {u"point"_s}, {u"Why?"_s}};
}

ChatMessage message()
{
    return ChatMessage{firstId, ChatMessage::Role::assistant, u"Because."_s, true};
}

} // namespace

TEST(Repo, EqualityCoversEachField)
{
    EXPECT_EQ(repo(), repo());
    EXPECT_NE(repo(), with(repo(), &Repo::id, secondId));
    EXPECT_NE(repo(), with(repo(), &Repo::url, QUrl(u"file:///home/ada/engine2"_s)));
    EXPECT_NE(repo(), with(repo(), &Repo::name, u"Engine"_s));
}

TEST(RecentRepo, EqualityCoversEachField)
{
    EXPECT_EQ(recentRepo(), recentRepo());
    EXPECT_NE(recentRepo(), with(recentRepo(), &RecentRepo::id, secondId));
    EXPECT_NE(recentRepo(), with(recentRepo(), &RecentRepo::name, u"Engine"_s));
    EXPECT_NE(recentRepo(), with(recentRepo(), &RecentRepo::path, u"/home/ada/engine/"_s));
    EXPECT_NE(recentRepo(), with(recentRepo(), &RecentRepo::lastOpened, noon.addMSecs(1)));
}

TEST(RecentRepo, HashingCoversEachField)
{
    EXPECT_EQ(qHash(recentRepo()), qHash(recentRepo()));
    EXPECT_NE(qHash(recentRepo()), qHash(with(recentRepo(), &RecentRepo::id, secondId)));
    EXPECT_NE(qHash(recentRepo()), qHash(with(recentRepo(), &RecentRepo::name, u"Engine"_s)));
    EXPECT_NE(qHash(recentRepo()), qHash(with(recentRepo(), &RecentRepo::path, u"/home/ada"_s)));
    EXPECT_NE(qHash(recentRepo()),
              qHash(with(recentRepo(), &RecentRepo::lastOpened, noon.addMSecs(1))));
}

TEST(RawDiffLine, EqualityCoversKindAndText)
{
    EXPECT_EQ(context("a"), context("a"));
    EXPECT_NE(context("a"), context("b"));
    EXPECT_NE(context("a"), addition("a"));
    EXPECT_NE(deletion("a"), addition("a"));
}

TEST(RawHunk, EqualityCoversEachField)
{
    const QList<RawDiffLine> otherLines{deletion("a")};

    EXPECT_EQ(rawHunk(), rawHunk());
    EXPECT_NE(rawHunk(), with(rawHunk(), &RawHunk::header, slice("@@ -1 +1 @@ main")));
    EXPECT_NE(rawHunk(), with(rawHunk(), &RawHunk::oldStart, std::int64_t(2)));
    EXPECT_NE(rawHunk(), with(rawHunk(), &RawHunk::newStart, std::int64_t(2)));
    EXPECT_NE(rawHunk(), with(rawHunk(), &RawHunk::lines, otherLines));
}

TEST(FileChange, EqualityCoversEachField)
{
    const QList<RawHunk> otherHunks{with(rawHunk(), &RawHunk::newStart, std::int64_t(2))};

    EXPECT_EQ(fileChange(), fileChange());
    EXPECT_NE(fileChange(), with(fileChange(), &FileChange::path, u"src/engine.h"_s));
    EXPECT_NE(fileChange(), with(fileChange(), &FileChange::status, ChangeStatus::added));
    EXPECT_NE(fileChange(), with(fileChange(), &FileChange::isUntracked, true));
    EXPECT_NE(fileChange(), with(fileChange(), &FileChange::additions, std::int64_t(2)));
    EXPECT_NE(fileChange(), with(fileChange(), &FileChange::deletions, std::int64_t(2)));
    EXPECT_NE(fileChange(), with(fileChange(), &FileChange::hunks, otherHunks));
}

TEST(FileChange, ADifferentSummaryStateMakesItUnequal)
{
    EXPECT_NE(fileChange(),
              with(fileChange(), &FileChange::summaryState, LoadableState<QString>::loading()));
}

TEST(FileChange, BeginsWithoutASummary)
{
    EXPECT_EQ(FileChange().summaryState, LoadableState<QString>::idle());
}

TEST(DiffLine, AFillerHasNoNumberAndNoText)
{
    const DiffLine filler = fillerCell();

    EXPECT_EQ(filler.number, std::nullopt);
    EXPECT_TRUE(filler.text.isEmpty());
    EXPECT_EQ(filler.kind, DiffLineKind::filler);
}

TEST(DiffLine, EqualityCoversEachField)
{
    EXPECT_EQ(contextCell(1, "a"), contextCell(1, "a"));
    EXPECT_NE(contextCell(1, "a"), contextCell(2, "a"));
    EXPECT_NE(contextCell(1, "a"), contextCell(1, "b"));
    EXPECT_NE(contextCell(1, "a"), additionCell(1, "a"));
    EXPECT_NE(contextCell(0, ""), with(contextCell(0, ""), &DiffLine::number, {}));
}

TEST(DiffRow, EqualityCoversEachField)
{
    EXPECT_EQ(row(), row());
    EXPECT_NE(row(), with(row(), &DiffRow::id, std::int64_t(1)));
    EXPECT_NE(row(), with(row(), &DiffRow::left, fillerCell()));
    EXPECT_NE(row(), with(row(), &DiffRow::right, fillerCell()));
}

TEST(Hunk, EqualityCoversEachField)
{
    EXPECT_EQ(hunk(), hunk());
    EXPECT_NE(hunk(), with(hunk(), &Hunk::index, std::int64_t(1)));
    EXPECT_NE(hunk(), with(hunk(), &Hunk::header, slice("@@ -2 +2 @@")));
    EXPECT_NE(hunk(), with(hunk(), &Hunk::rows, {}));
    EXPECT_NE(hunk(), with(hunk(), &Hunk::explanationState,
                           LoadableState<HunkExplanation>::loaded(explanation())));
}

TEST(Hunk, BeginsUnexplained)
{
    EXPECT_EQ(Hunk().explanationState, LoadableState<HunkExplanation>::idle());
}

TEST(HunkExplanation, EqualityCoversEachField)
{
    EXPECT_EQ(explanation(), explanation());
    EXPECT_NE(explanation(), with(explanation(), &HunkExplanation::tag, u"Change"_s));
    EXPECT_NE(explanation(), with(explanation(), &HunkExplanation::explanation, QString()));
    EXPECT_NE(explanation(), with(explanation(), &HunkExplanation::points, QStringList()));
    EXPECT_NE(explanation(),
              with(explanation(), &HunkExplanation::suggestedQuestions, QStringList()));
}

TEST(ChatMessage, EqualityCoversEachField)
{
    EXPECT_EQ(message(), message());
    EXPECT_NE(message(), with(message(), &ChatMessage::id, secondId));
    EXPECT_NE(message(), with(message(), &ChatMessage::role, ChatMessage::Role::user));
    EXPECT_NE(message(), with(message(), &ChatMessage::text, u"Because"_s));
    EXPECT_NE(message(), with(message(), &ChatMessage::isStreaming, false));
}

} // namespace vantrel
