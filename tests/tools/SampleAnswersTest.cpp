#include "SampleAnswers.h"

#include <gtest/gtest.h>

namespace vantrel::sample {
namespace {

using namespace Qt::Literals::StringLiterals;

SampleQuestion question(const QString &system, const QString &message)
{
    SampleQuestion asked;
    asked.systemPrompt = system;
    asked.lastMessage = message;
    return asked;
}

TEST(SampleAnswers, ExplainAHunkByCountingAndSayThatNoModelWasAsked)
{
    const SampleQuestion asked =
        question(u"You explain one hunk of a git diff"_s,
                 u"File: src/a.cpp\n\nHunk:\n const x\n-int old;\n+int fresh;\n+more"_s);

    EXPECT_EQ(answerTo(asked),
              u"This is a sample answer; no model was asked. The hunk in `src/a.cpp` adds 2 lines "
              "and removes 1 line. Its first changed word is `fresh`.\n---META---\n"
              "{\"points\":[\"2 lines added, 1 line removed.\",\"Made by fixed rules.\"],"
              "\"suggestedQuestions\":[\"What could break?\",\"How is it tested?\"],"
              "\"tag\":\"Behaviour\"}"_s);
}

struct TagRow
{
    const char16_t *message;
    const char16_t *tag;
};

class SampleTag : public testing::TestWithParam<TagRow>
{};

TEST_P(SampleTag, FollowsFromTheLinesAndThePath)
{
    const QString answer = answerTo(
        question(u"You explain one hunk of a git diff"_s, QString::fromUtf16(GetParam().message)));

    EXPECT_TRUE(answer.contains(u"\"tag\":\""_s + QString::fromUtf16(GetParam().tag) + u'"'))
        << qPrintable(answer);
}

INSTANTIATE_TEST_SUITE_P(All, SampleTag,
                         testing::Values(TagRow{u"File: a\n\nHunk:\n+x", u"New code"},
                                         TagRow{u"File: a\n\nHunk:\n-x", u"Deleted"},
                                         TagRow{u"File: a\n\nHunk:\n-x\n+y", u"Behaviour"},
                                         TagRow{u"File: test/a\n\nHunk:\n-x\n+y", u"Test"}));

TEST(SampleAnswers, SummariseAFile)
{
    EXPECT_EQ(answerTo(question(u"You summarise a single file's git diff"_s,
                                u"File: a\n\nDiff:\n+x\n y"_s)),
              u"Sample summary: adds 1 line, removes 0 lines."_s);
}

TEST(SampleAnswers, CountTheFilesOfTheFullPicture)
{
    EXPECT_EQ(answerTo(question(u"You look at every changed file"_s,
                                u"File: a\n\nx\n\n---\n\nFile: b\n\ny"_s)),
              u"This is a sample answer; no model was asked. The change touches 2 files."_s);
}

TEST(SampleAnswers, SuggestTwoQuestions)
{
    EXPECT_EQ(answerTo(question(u"You suggest follow-up questions"_s, u"x"_s)),
              u"[\"What could break?\", \"Who calls this?\"]"_s);
}

TEST(SampleAnswers, RepeatAFollowUpQuestion)
{
    EXPECT_EQ(answerTo(question(u"You are answering\n\nFile: a\n\nHunk:\n+x"_s, u"Why?"_s)),
              u"This is a sample answer; no model was asked. You asked: Why? The hunk adds 1 line "
              "and removes 0 lines."_s);
}

TEST(SampleAnswers, ReadTheQuestionOfARequest)
{
    const auto asked =
        readQuestion(R"({"model":"m","stream":true,"messages":[{"role":"system","content":"s"},)"
                     R"({"role":"user","content":"u"}]})");

    ASSERT_TRUE(asked.has_value());
    EXPECT_EQ(asked->systemPrompt, u"s"_s);
    EXPECT_EQ(asked->lastMessage, u"u"_s);
    EXPECT_TRUE(asked->isStreamed);
}

TEST(SampleAnswers, ReadNoQuestionOutOfAnythingElse)
{
    for (const char *const body :
         {"", "[]", "{}", R"({"model":"m","messages":[]})", R"({"messages":[{"role":"user"}]})"}) {
        EXPECT_FALSE(readQuestion(body).has_value()) << body;
    }
}

} // namespace
} // namespace vantrel::sample
