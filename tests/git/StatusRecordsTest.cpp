#include "git/StatusRecords.h"

#include <gtest/gtest.h>

#include <QByteArrayList>
#include <QStringList>

namespace vantrel {
namespace {

using namespace Qt::Literals::StringLiterals;

QStringList described(const QByteArray &output)
{
    QStringList lines;
    const QList<FileChange> files = parseStatusRecords(TextSlice::fromUtf8(output));
    for (const FileChange &file : files) {
        lines.append(rawValue(file.status) + (file.isUntracked ? u"? "_s : u" "_s) + file.path);
    }
    return lines;
}

struct Row
{
    const char *letters;
    const char *expected;
};

class StatusLetters : public testing::TestWithParam<Row>
{};

TEST_P(StatusLetters, GiveTheStatus)
{
    const QByteArray output = GetParam().letters + QByteArray(" f") + '\0';

    EXPECT_EQ(described(output), QStringList{QString::fromLatin1(GetParam().expected)});
}

INSTANTIATE_TEST_SUITE_P(All, StatusLetters,
                         testing::Values(Row{"??", "A? f"}, Row{"?M", "A f"}, Row{"M?", "A f"},
                                         Row{" D", "D f"}, Row{"D ", "D f"}, Row{"AD", "D f"},
                                         Row{"MD", "D f"}, Row{"A ", "A f"}, Row{"AM", "A f"},
                                         Row{" M", "M f"}, Row{"M ", "M f"}, Row{"MM", "M f"},
                                         Row{"T ", "M f"}, Row{"UU", "M f"}, Row{"DU", "D f"},
                                         Row{"AA", "A f"}));

TEST(StatusRecords, KeepGitsOrderAndThePathsAsTheyAre)
{
    const QByteArrayList records{" M z \"q\"\n\t.txt", "?? sub/né w.txt", " M -x"};
    const QByteArray output = records.join('\0') + '\0';

    EXPECT_EQ(described(output),
              (QStringList{u"M z \"q\"\n\t.txt"_s, u"A? sub/né w.txt"_s, u"M -x"_s}));
}

TEST(StatusRecords, PassOverRecordsThatAreTooShort)
{
    EXPECT_EQ(described(QByteArray("M f\0 M\0 M f\0", 12)), QStringList{u"M f"_s});
}

TEST(StatusRecords, KeepTheFirstRecordOfAPathThatComesTwice)
{
    EXPECT_EQ(described(QByteArray("D  f\0?? f\0", 10)), QStringList{u"D f"_s});
}

TEST(StatusRecords, OfNoOutputAreNone)
{
    EXPECT_EQ(described({}), QStringList());
}

} // namespace
} // namespace vantrel
