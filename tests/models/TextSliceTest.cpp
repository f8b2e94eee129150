#include "models/TextSlice.h"
#include "RecordMakers.h"

#include <QHash>
#include <QList>

#include <gtest/gtest.h>

namespace vantrel {

using namespace Qt::Literals::StringLiterals;
using test::slice;

TEST(TextSlice, IsEmptyAtFirst)
{
    const TextSlice text;

    EXPECT_TRUE(text.isEmpty());
    EXPECT_EQ(text.size(), 0);
    EXPECT_EQ(text.toString(), QString());
    EXPECT_EQ(text, slice(""));
}

TEST(TextSlice, GivesBackItsTextInBothForms)
{
    const TextSlice text = TextSlice::fromString(u"größer 👍"_s);

    EXPECT_EQ(text.utf8().toByteArray(), u"größer 👍"_s.toUtf8());
    EXPECT_EQ(text.toString(), u"größer 👍"_s);
    EXPECT_EQ(text.size(), 13);
}

TEST(TextSlice, APartIsCutOutByBytes)
{
    const TextSlice text = slice("größer als");

    EXPECT_EQ(text.slice(2, 4), slice("öß"));
    EXPECT_EQ(text.slice(9, 3), slice("als"));
    EXPECT_EQ(text.slice(12, 0), slice(""));
}

TEST(TextSlice, APartOfAPartCountsFromThePart)
{
    const TextSlice text = slice("one two three");

    EXPECT_EQ(text.slice(4, 9).slice(4, 5), slice("three"));
}

TEST(TextSlice, APartSharesTheBytesAndOutlivesTheWhole)
{
    TextSlice text = slice("kept alive by its parts");
    const char *const bytes = text.utf8().data();
    const TextSlice part = text.slice(5, 5);

    text = TextSlice();

    EXPECT_EQ(part.utf8().data(), bytes + 5);
    EXPECT_EQ(part, slice("alive"));
}

TEST(TextSlice, LaterChangesToTheGivenBytesDoNotReachIt)
{
    QByteArray bytes = "before";
    const TextSlice text = TextSlice::fromUtf8(bytes);

    bytes[0] = 'B';

    EXPECT_EQ(text, slice("before"));
}

TEST(TextSlice, EqualityAndHashingGoByContent)
{
    const TextSlice whole = slice("abc abc");

    EXPECT_EQ(whole.slice(0, 3), whole.slice(4, 3));
    EXPECT_EQ(qHash(whole.slice(0, 3)), qHash(whole.slice(4, 3)));
    EXPECT_EQ(qHash(TextSlice()), qHash(slice("")));
    EXPECT_NE(whole.slice(0, 3), whole.slice(1, 3));
    EXPECT_NE(whole.slice(0, 3), whole.slice(0, 2));
}

TEST(TextSlice, ServesAsAKey)
{
    QHash<TextSlice, int> numbers;
    numbers.insert(slice("one"), 1);

    EXPECT_EQ(numbers.value(slice("one two").slice(0, 3)), 1);
}

TEST(TextSlice, AByteOrderMarkAtItsStartIsKept)
{
    EXPECT_EQ(slice("\xef\xbb\xbfint").toString(), u"\uFEFFint"_s);
    EXPECT_EQ(TextSlice::fromString(u"\uFEFFint"_s), slice("\xef\xbb\xbfint"));
}

TEST(TextSlice, EachByteOrderMarkIsKeptHoweverTheTextIsCut)
{
    const TextSlice text = slice("\xef\xbb\xbf\xef\xbb\xbfint");

    EXPECT_EQ(text.toString(), u"\uFEFF\uFEFFint"_s);
    EXPECT_EQ(text.slice(3, 6).toString(), u"\uFEFFint"_s);
    EXPECT_EQ(text.slice(0, 6).toString(), u"\uFEFF\uFEFF"_s);
}

TEST(TextSlice, ANullCharacterIsText)
{
    const QByteArray bytes("a\0b", 3);

    EXPECT_EQ(slice(bytes).toString(), QString(u"a\0b"_s));
    EXPECT_EQ(slice(bytes).size(), 3);
}

TEST(TextSliceCutter, CutsTheSamePartsAsSlice)
{
    const TextSlice text = slice("one two three");
    TextSliceCutter cutter(text);

    EXPECT_EQ(cutter.cut(0, 3), text.slice(0, 3));
    EXPECT_EQ(cutter.cut(4, 3).utf8().data(), text.utf8().data() + 4);
    EXPECT_EQ(cutter.cut(13, 0), text.slice(13, 0));
}

TEST(TextSliceCutter, ItsPartsOutliveItAndTheWhole)
{
    QList<TextSlice> parts;
    {
        const TextSlice text = slice(QByteArray("line").repeated(1000));
        TextSliceCutter cutter(text);
        for (int i = 0; i < 1000; ++i) {
            parts.append(cutter.cut(4 * i, 4));
        }
    }

    EXPECT_EQ(parts, QList<TextSlice>(1000, slice("line")));
}

TEST(TextSliceCutter, CutsNothingOutOfNothing)
{
    TextSliceCutter cutter{TextSlice()};

    EXPECT_EQ(cutter.cut(0, 0), TextSlice());
}

} // namespace vantrel
