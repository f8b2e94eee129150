// Reads the diffs that git itself prints for thousands of random pairs of files. From the rows of a
// pair each file must come out again: one side's cells, with the other file's lines between the
// hunks.

#include "RecordMakers.h"
#include "models/DiffParser.h"
#include "models/DisplayedHunks.h"

#include <QDir>
#include <QFile>
#include <QMap>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <array>
#include <memory>
#include <random>

namespace vantrel {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int pairCount = 3500;

using Lines = QByteArrayList;

struct FilePair
{
    QByteArray oldText{};
    QByteArray newText{};
};

class PairMaker
{
public:
    FilePair make()
    {
        Lines oldLines = randomLines(draw(12) == 0 ? 0 : draw(60));
        Lines newLines = draw(10) == 0 ? randomLines(draw(20)) : edited(oldLines);
        return FilePair{text(oldLines), text(newLines)};
    }

private:
    int draw(int bound) { return int(m_random() % unsigned(bound)); }

    QByteArray randomLine()
    {
        static const std::array<const char *, 20> lines{
            "",
            " ",
            "{",
            "}",
            "return value;",
            "    int count = 0;",
            "\tindented",
            "+ plus",
            "- minus",
            "++ b/file",
            "-- a/file",
            "@@ -1,2 +3,4 @@",
            "@@",
            "\\ No newline at end of file",
            "diff --git a/x b/x",
            "größer als 日本 👍",
            "\xef\xbb\xbfmark",
            "lone\rreturn",
            "u\xcc\x88 combined",
            "trailing ",
        };
        QByteArray line = draw(3) == 0 ? "line " + QByteArray::number(draw(1000))
                                       : QByteArray(lines[size_t(draw(int(lines.size())))]);
        return m_hasCarriageReturns ? line + '\r' : line;
    }

    Lines randomLines(int count)
    {
        m_hasCarriageReturns = draw(5) == 0;
        Lines lines;
        while (lines.size() < count) {
            lines.append(randomLine());
        }
        return lines;
    }

    Lines edited(Lines lines)
    {
        for (int edits = draw(6); edits > 0; --edits) {
            const qsizetype position = draw(int(lines.size()) + 1);
            const int action = draw(4);
            for (int i = draw(5); i >= 0; --i) {
                if (action == 0) {
                    lines.insert(position, randomLine());
                } else if (position < lines.size() && action == 1) {
                    lines.removeAt(position);
                } else if (position + i < lines.size()) {
                    lines[position + i] = randomLine();
                }
            }
        }
        return lines;
    }

    QByteArray text(const Lines &lines)
    {
        QByteArray text = lines.join('\n');
        if (!lines.isEmpty() && draw(3) != 0) {
            text += '\n';
        }
        return text;
    }

    std::mt19937 m_random{20240517};
    bool m_hasCarriageReturns = false;
};

QList<FilePair> makePairs()
{
    PairMaker maker;
    QList<FilePair> pairs;
    for (int i = 0; i < pairCount; ++i) {
        pairs.append(maker.make());
    }
    return pairs;
}

bool write(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

bool write(const QDir &folder, const QList<FilePair> &pairs)
{
    bool isWritten = folder.mkdir(u"old"_s) && folder.mkdir(u"new"_s);
    for (qsizetype i = 0; i < pairs.size(); ++i) {
        const QString name = QString::number(i);
        isWritten = isWritten && write(folder.filePath(u"old/"_s + name), pairs[i].oldText) &&
                    write(folder.filePath(u"new/"_s + name), pairs[i].newText);
    }
    return isWritten;
}

/// What git prints, with the configuration that the application pins and `context` lines of
/// context.
QByteArray gitDiff(const QDir &folder, int context)
{
    const QList<std::pair<QString, QString>> configuration{
        {u"color.ui"_s, u"never"_s},
        {u"color.diff"_s, u"never"_s},
        {u"diff.context"_s, QString::number(context)},
        {u"diff.interHunkContext"_s, u"0"_s},
        {u"diff.suppressBlankEmpty"_s, u"false"_s},
    };
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"GIT_CONFIG_COUNT"_s, QString::number(configuration.size()));
    for (qsizetype i = 0; i < configuration.size(); ++i) {
        environment.insert(u"GIT_CONFIG_KEY_%1"_s.arg(i), configuration[i].first);
        environment.insert(u"GIT_CONFIG_VALUE_%1"_s.arg(i), configuration[i].second);
    }
    QProcess git;
    git.setProcessEnvironment(environment);
    git.setWorkingDirectory(folder.path());
    git.start(u"git"_s, {u"diff"_s, u"--no-index"_s, u"--no-renames"_s, u"old"_s, u"new"_s});
    EXPECT_TRUE(git.waitForFinished(120'000)) << qPrintable(git.errorString());
    EXPECT_EQ(git.exitCode(), 1) << git.readAllStandardError().constData();
    return git.readAllStandardOutput();
}

/// The text of each path, by the number that is its name.
QMap<qsizetype, QByteArray> splitByPath(const QByteArray &output)
{
    const QByteArray opening = "diff --git a/old/";
    QMap<qsizetype, QByteArray> texts;
    for (qsizetype begin = 0; begin < output.size();) {
        const qsizetype next = output.indexOf('\n' + opening, begin);
        const qsizetype end = next < 0 ? output.size() : next + 1;
        const QByteArray text = output.mid(begin, end - begin);
        const qsizetype number =
            text.mid(opening.size(), text.indexOf(' ', opening.size()) - opening.size())
                .toLongLong();
        texts.insert(number, text);
        begin = end;
    }
    return texts;
}

/// The lines of a file, whether or not the last one ends in a line feed.
Lines linesOf(const QByteArray &text)
{
    Lines lines = text.split('\n');
    if (lines.last().isEmpty()) {
        lines.removeLast();
    }
    return lines;
}

/// One side of a hunk: its numbered cells.
struct Side
{
    std::int64_t start = 0; ///< Of the hunk.
    QList<std::int64_t> numbers{};
    Lines lines{};

    /// Lines of the file that stand before the hunk. Git names the line before an empty range.
    [[nodiscard]] qsizetype linesBefore() const { return lines.isEmpty() ? start : start - 1; }
};

Side sideOf(const RawHunk &raw, const Hunk &hunk, DiffLine DiffRow::*cell)
{
    Side side;
    side.start = cell == &DiffRow::left ? raw.oldStart : raw.newStart;
    for (const DiffRow &row : hunk.rows) {
        if ((row.*cell).number) {
            side.numbers.append(*(row.*cell).number);
            side.lines.append((row.*cell).text.utf8().toByteArray());
        }
    }
    return side;
}

QList<std::int64_t> consecutive(std::int64_t start, qsizetype count)
{
    QList<std::int64_t> numbers;
    while (numbers.size() < count) {
        numbers.append(start + numbers.size());
    }
    return numbers;
}

void expectSoundHunk(const Hunk &hunk, const Side &left, const Side &right)
{
    QList<std::int64_t> ids;
    for (const DiffRow &row : hunk.rows) {
        ids.append(row.id);
        EXPECT_TRUE(row.left.number || row.right.number);
    }
    EXPECT_EQ(ids, consecutive(0, hunk.rows.size()));
    EXPECT_EQ(left.numbers, consecutive(left.start, left.lines.size()));
    EXPECT_EQ(right.numbers, consecutive(right.start, right.lines.size()));
}

void expectRoundTrip(const FilePair &pair, const QByteArray &diff)
{
    const QList<RawHunk> rawHunks = parseUnifiedDiff(TextSlice::fromUtf8(diff));
    const QList<Hunk> hunks = displayedHunks(rawHunks);
    const Lines oldLines = linesOf(pair.oldText);
    const Lines newLines = linesOf(pair.newText);

    Lines rebuiltOld;
    Lines rebuiltNew;
    for (qsizetype i = 0; i < hunks.size(); ++i) {
        const Side left = sideOf(rawHunks[i], hunks[i], &DiffRow::left);
        const Side right = sideOf(rawHunks[i], hunks[i], &DiffRow::right);
        expectSoundHunk(hunks[i], left, right);
        // What lies before the hunk comes from the other file.
        const qsizetype untouched = left.linesBefore() - rebuiltOld.size();
        EXPECT_EQ(untouched, right.linesBefore() - rebuiltNew.size());
        const Lines oldBefore = oldLines.mid(rebuiltOld.size(), untouched);
        rebuiltOld += newLines.mid(rebuiltNew.size(), untouched) + left.lines;
        rebuiltNew += oldBefore + right.lines;
    }
    const Lines oldRest = oldLines.mid(rebuiltOld.size());
    rebuiltOld += newLines.mid(rebuiltNew.size());
    rebuiltNew += oldRest;

    EXPECT_EQ(rebuiltOld, oldLines);
    EXPECT_EQ(rebuiltNew, newLines);
}

/// The pairs of files, written once for all tests.
class GitDiffRoundTrip : public testing::Test
{
protected:
    static void SetUpTestSuite()
    {
        folder = std::make_unique<QTemporaryDir>();
        pairs = makePairs();
        ASSERT_TRUE(write(QDir(folder->path()), pairs));
    }

    static void TearDownTestSuite()
    {
        folder.reset();
        pairs.clear();
    }

    static void expectRoundTrips(int context)
    {
        const auto diffs = splitByPath(gitDiff(QDir(folder->path()), context));

        for (qsizetype i = 0; i < pairs.size(); ++i) {
            ASSERT_EQ(diffs.contains(i), pairs[i].oldText != pairs[i].newText) << i;
            expectRoundTrip(pairs[i], diffs[i]);
            if (HasFailure()) {
                FAIL() << "pair " << i << ":\n" << diffs[i].constData();
            }
        }
    }

private:
    static inline std::unique_ptr<QTemporaryDir> folder{};
    static inline QList<FilePair> pairs{};
};

} // namespace

TEST_F(GitDiffRoundTrip, TheRowsRebuildBothFiles)
{
    expectRoundTrips(3);
}

TEST_F(GitDiffRoundTrip, TheRowsRebuildBothFilesWithoutContext)
{
    expectRoundTrips(0);
}

} // namespace vantrel
