#include "ai/ChangesetKey.h"

#include "models/FileChange.h"

#include <gtest/gtest.h>

namespace vantrel::test {
namespace {

using namespace Qt::Literals::StringLiterals;

const ChangesetKey::Entry plum{u"plum.cpp"_s, u"+plum"_s};
const ChangesetKey::Entry pear{u"pear.cpp"_s, u"+pear"_s};
const ChangesetKey::Entry otherPear{u"pear.cpp"_s, u"+Pear"_s};

FileChange file(const QString &path, const QList<RawDiffLine> &lines)
{
    FileChange change;
    change.path = path;
    RawHunk hunk;
    hunk.lines = lines;
    change.hunks = {hunk};
    return change;
}

TEST(ChangesetKey, SortsItsEntriesByPathAndThenByText)
{
    const ChangesetKey key({plum, pear, otherPear});

    EXPECT_EQ(key.entries(), (QList<ChangesetKey::Entry>{otherPear, pear, plum}));
}

TEST(ChangesetKey, TheSameSetInAnotherOrderIsTheSameKey)
{
    EXPECT_EQ(ChangesetKey({plum, pear}), ChangesetKey({pear, plum}));
    EXPECT_EQ(qHash(ChangesetKey({plum, pear})), qHash(ChangesetKey({pear, plum})));
}

TEST(ChangesetKey, AnotherTextOrAnotherSetIsAnotherKey)
{
    EXPECT_NE(ChangesetKey({pear}), ChangesetKey({otherPear}));
    EXPECT_NE(ChangesetKey({pear}), ChangesetKey({pear, plum}));
    EXPECT_NE(ChangesetKey({pear}), ChangesetKey());
}

TEST(ChangesetKey, TheEntriesAreTheFilesThatHaveHunksInListOrder)
{
    FileChange picture;
    picture.path = u"logo.png"_s;
    const QList<FileChange> files{
        file(u"z.cpp"_s, {{RawLineKind::deletion, TextSlice::fromString(u"old")},
                          {RawLineKind::addition, TextSlice::fromString(u"new")}}),
        picture, file(u"a.cpp"_s, {{RawLineKind::context, TextSlice::fromString(u"same")}})};

    const QList<ChangesetKey::Entry> expected{{u"z.cpp"_s, u"-old\n+new"_s},
                                              {u"a.cpp"_s, u" same"_s}};
    EXPECT_EQ(changesetEntries(files), expected);
}

} // namespace
} // namespace vantrel::test
