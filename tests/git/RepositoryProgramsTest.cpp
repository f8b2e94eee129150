#include "git/RepositoryPrograms.h"

#include <gtest/gtest.h>

namespace vantrel {
namespace {

using namespace Qt::Literals::StringLiterals;

/// As git lists it: a scope, then the key and the value.
QByteArray setting(const QByteArray &scope, const QByteArray &key, const QByteArray &value)
{
    return scope + '\0' + key + '\n' + value + '\0';
}

RepositoryPrograms found(const QByteArray &configuration)
{
    return configuredPrograms(configuration, "/r");
}

RepositoryPrograms needed(const QString &key, const QString &command)
{
    RepositoryPrograms programs;
    programs.needed.append({{}, key, command});
    return programs;
}

RepositoryPrograms replaced(const GitOverrides &overrides)
{
    RepositoryPrograms programs;
    programs.overrides = overrides;
    return programs;
}

RepositoryPrograms ownDiff(const QByteArray &key)
{
    GitOverrides overrides;
    overrides.ownDiffs.insert(key, Conversions::run);
    return replaced(overrides);
}

RepositoryPrograms overridden(const QByteArray &key, const QByteArray &value)
{
    GitOverrides overrides;
    overrides.values.insert(key, value);
    return replaced(overrides);
}

TEST(RepositoryPrograms, AreNoneInAnEmptyConfiguration)
{
    EXPECT_EQ(found({}), RepositoryPrograms());
}

TEST(RepositoryPrograms, AreNoneAmongOtherSettings)
{
    EXPECT_EQ(found(setting("local", "core.bare", "false") +
                    setting("local", "diff.images.xfuncname", "^f") +
                    setting("local", "diff.command", "x") + setting("local", "filter.clean", "x") +
                    setting("local", "filter.images.required", "true") +
                    setting("local", "remote.filter.clean.url", "x")),
              RepositoryPrograms());
}

TEST(RepositoryPrograms, AFilterIsNeeded)
{
    EXPECT_EQ(found(setting("local", "filter.images.clean", "png -s %f")),
              needed(u"filter.images.clean"_s, u"png -s %f"_s));
    EXPECT_EQ(found(setting("local", "filter.images.process", "png")),
              needed(u"filter.images.process"_s, u"png"_s));
}

TEST(RepositoryPrograms, AFilterOfTheWorkingTreesConfigurationIsNeeded)
{
    EXPECT_EQ(found(setting("worktree", "filter.images.clean", "png")),
              needed(u"filter.images.clean"_s, u"png"_s));
}

TEST(RepositoryPrograms, AFilterWithAnOddNameIsNeeded)
{
    EXPECT_EQ(found(setting("local", "filter.a.b = c.clean", "png")),
              needed(u"filter.a.b = c.clean"_s, u"png"_s));
    EXPECT_EQ(found(setting("local", "filter..clean", "png")),
              needed(u"filter..clean"_s, u"png"_s));
}

TEST(RepositoryPrograms, ACommandKeepsItsByteOrderMark)
{
    EXPECT_EQ(found(setting("local", "filter.images.clean", "\xef\xbb\xbfpng")),
              needed(u"filter.images.clean"_s, u"\uFEFFpng"_s));
}

TEST(RepositoryPrograms, ACommandKeepsItsLines)
{
    EXPECT_EQ(found(setting("local", "filter.images.clean", "a\nb")),
              needed(u"filter.images.clean"_s, u"a\nb"_s));
}

TEST(RepositoryPrograms, AnEmptyFilterIsNone)
{
    EXPECT_EQ(found(setting("local", "filter.images.clean", {}) +
                    QByteArray("local\0filter.images.process\0", 28)),
              RepositoryPrograms());
}

TEST(RepositoryPrograms, AFilterOfThePersonIsTrusted)
{
    EXPECT_EQ(found(setting("system", "filter.a.clean", "x") +
                    setting("global", "filter.b.clean", "x") +
                    setting("command", "filter.c.clean", "x")),
              RepositoryPrograms());
}

TEST(RepositoryPrograms, AScopeThatIsNotKnownIsTheRepositorys)
{
    EXPECT_EQ(found(setting("unknown", "filter.images.clean", "png")),
              needed(u"filter.images.clean"_s, u"png"_s));
}

TEST(RepositoryPrograms, TheLastSettingOfAKeyCounts)
{
    EXPECT_EQ(found(setting("global", "filter.images.clean", "a") +
                    setting("local", "filter.images.clean", "b") +
                    setting("local", "filter.images.clean", "c")),
              needed(u"filter.images.clean"_s, u"c"_s));
    EXPECT_EQ(found(setting("local", "filter.images.clean", "a") +
                    setting("command", "filter.images.clean", "b")),
              RepositoryPrograms());
}

TEST(RepositoryPrograms, AnExtensionOfLfsIsNeeded)
{
    EXPECT_EQ(found(setting("local", "lfs.Extension.images.clean", "png")),
              needed(u"lfs.Extension.images.clean"_s, u"png"_s));
}

TEST(RepositoryPrograms, GitsOwnDiffStandsInThePlaceOfAnother)
{
    EXPECT_EQ(found(setting("local", "diff.external", "x")), ownDiff("diff.external"));
    EXPECT_EQ(found(setting("global", "diff.external", "x")), ownDiff("diff.external"));
    EXPECT_EQ(found(setting("local", "diff.images.command", "x")), ownDiff("diff.images.command"));
    EXPECT_EQ(found(setting("global", "diff.images.command", "x")), ownDiff("diff.images.command"));
}

TEST(RepositoryPrograms, AConversionOfTheRepositoryIsNotMade)
{
    GitOverrides overrides;
    overrides.ownDiffs.insert("diff.images.command", Conversions::ignore);
    overrides.values.insert("diff.images.textconv", "cat");

    EXPECT_EQ(found(setting("local", "diff.images.textconv", "x")), replaced(overrides));
    EXPECT_EQ(found(setting("local", "diff.images.textconv", "x") +
                    setting("local", "diff.images.command", "y")),
              replaced(overrides));
}

TEST(RepositoryPrograms, AConversionOfThePersonIsMade)
{
    EXPECT_EQ(found(setting("global", "diff.images.textconv", "x")), RepositoryPrograms());
}

TEST(RepositoryPrograms, ConversionsAreNotKeptInTheRepository)
{
    EXPECT_EQ(found(setting("global", "diff.images.cachetextconv", "true")),
              overridden("diff.images.cachetextconv", "false"));
}

TEST(RepositoryPrograms, FilesForDiffProgramsAreNotFiltered)
{
    EXPECT_EQ(found(setting("local", "filter.images.smudge", "x")),
              overridden("filter.images.smudge", "cat"));
}

TEST(RepositoryPrograms, AWorkingTreeElsewhereIsOverridden)
{
    GitOverrides overrides;
    overrides.workTree = "/r";

    EXPECT_EQ(found(setting("local", "core.worktree", "/home")), replaced(overrides));
    EXPECT_EQ(found(setting("global", "core.worktree", "/home")), RepositoryPrograms());
}

} // namespace
} // namespace vantrel
