#include "ai/AIPrompts.h"

#include <gtest/gtest.h>

namespace vantrel {
namespace {

using namespace Qt::Literals::StringLiterals;

ChatMessage message(ChatMessage::Role role, const QString &text)
{
    ChatMessage message;
    message.role = role;
    message.text = text;
    return message;
}

TEST(AIPrompts, TheFullPicturePromptIsWordForWord)
{
    EXPECT_EQ(prompts::fullPicture().toUtf8(),
              "You look at every changed file in a code review at once and write a short (2-4 "
              "sentence) narrative describing what this overall set of changes is doing and "
              "how the pieces relate to each other. Plain and direct, no marketing language. "
              "Reply with only the narrative, no quotes, no preamble.");
}

TEST(AIPrompts, TheFileSummaryPromptIsWordForWord)
{
    EXPECT_EQ(prompts::fileSummary().toUtf8(),
              "You summarise a single file's git diff in one short sentence (under 20 words) "
              "describing what the change serves, not what it literally does line by line. "
              "Reply with only the sentence, no quotes, no preamble.");
}

TEST(AIPrompts, TheHunkExplanationPromptIsWordForWord)
{
    EXPECT_EQ(prompts::hunkExplanation().toUtf8(),
              "You explain one hunk of a git diff to a reviewer, who may also have been given "
              "a short narrative describing the full picture of everything that changed in "
              "this review. Reply in exactly two sections, in this order, with nothing before "
              "or after them:\n"
              "1. The explanation: 3-5 sentences on what this hunk does and why, as plain "
              "prose (inline Markdown is fine). No heading, no label, no JSON, no markdown "
              "fences.\n"
              "2. A line containing only ---META---, then ONLY a JSON object, no markdown "
              "fences, no prose after it, matching exactly this shape:\n"
              "{\"tag\": \"short category like Bug fix, New code, Security, Behaviour, "
              "Migration, Deleted\", \"points\": [\"short bullet\", \"short bullet\"], "
              "\"suggestedQuestions\": [\"short question\", \"short question\"]}\n"
              "When a full picture is given, structure the explanation in three parts, in "
              "order: (1) open by relating this hunk to the full picture, (2) explain what "
              "this hunk itself does and why it matters (risk, behavior change) — this is the "
              "bulk of the explanation, (3) close by tying this hunk back to the full picture. "
              "Keep each part tight, about one sentence, five sentences total at most — do not "
              "pad. When no full picture is given, skip the three-part structure and just "
              "explain the hunk directly in 1-3 sentences.\n"
              "\"points\" has at most 2 bullets, each under 12 words. Cut every word that "
              "doesn't add information; the reader should grasp this in a few seconds, not a "
              "paragraph.\n"
              "\"suggestedQuestions\" must contain exactly two short, specific follow-up "
              "questions a reviewer might ask about this hunk, each under 5 words / 30 "
              "characters.");
}

TEST(AIPrompts, TheFollowUpPromptIsWordForWordAndNamesTheHunk)
{
    EXPECT_EQ(prompts::followUp(u"src/a.cpp"_s, u"-a\n+b"_s).join(QString()).toUtf8(),
              "You are answering follow-up questions about one specific hunk of a git diff. "
              "Stay focused on this hunk's intent, risk, and testing. Answer in 2-4 sentences "
              "by default; only go longer if the user explicitly asks for more detail, a list, "
              "or code, or the question genuinely needs it. Skip preamble and don't restate "
              "the question.\n"
              "\n"
              "File: "
              "src/a.cpp\n\nHunk:\n-a\n+b");
}

TEST(AIPrompts, TheSuggestionPromptIsWordForWord)
{
    EXPECT_EQ(prompts::suggestions().toUtf8(),
              "You suggest follow-up questions a reviewer might ask next about one specific "
              "hunk of a git diff, given the conversation so far. Reply with ONLY a JSON array "
              "of strings, no markdown fences, no prose, matching exactly this shape:\n"
              "[\"short question\", \"short question\"]\n"
              "The array must contain exactly two short, specific, hunk-relevant follow-up "
              "questions, each under 5 words / 30 characters, that build on the conversation "
              "so far rather than repeating what's already been asked or answered.");
}

TEST(AIPrompts, TheFileSummaryMessageHoldsPathAndUnchangedDiff)
{
    EXPECT_EQ(prompts::fileSummaryMessage(u"src/ä b.cpp"_s, u"  -a\n+b \n"_s).join(QString()),
              u"File: src/ä b.cpp\n\nDiff:\n  -a\n+b \n"_s);
}

TEST(AIPrompts, TheFullPictureMessageJoinsTheEntriesInOrder)
{
    const QList<ChangesetEntry> entries{{u"b.cpp"_s, u"Second."_s}, {u"a.cpp"_s, u"-x\n+y"_s}};

    EXPECT_EQ(prompts::fullPictureMessage(entries),
              u"Here are all the changed files in this review:\n\nFile: b.cpp\n\nSecond."
              "\n\n---\n\nFile: a.cpp\n\n-x\n+y"_s);
}

TEST(AIPrompts, TheFullPictureMessageOfOneEntryHasNoSeparator)
{
    EXPECT_EQ(prompts::fullPictureMessage({{u"a.cpp"_s, u"One."_s}}),
              u"Here are all the changed files in this review:\n\nFile: a.cpp\n\nOne."_s);
}

TEST(AIPrompts, TheHunkExplanationMessageBeginsWithTheFullPicture)
{
    EXPECT_EQ(prompts::hunkExplanationMessage(u"a.cpp"_s, u"+b"_s, u"It adds b."_s).join(QString()),
              u"Full picture of this review:\nIt adds b.\n\nFile: a.cpp\n\nHunk:\n+b"_s);
}

TEST(AIPrompts, TheHunkExplanationMessageLeavesOutAnEmptyFullPicture)
{
    EXPECT_EQ(prompts::hunkExplanationMessage(u"a.cpp"_s, u"+b"_s, QString()).join(QString()),
              u"File: a.cpp\n\nHunk:\n+b"_s);
}

TEST(AIPrompts, AFullPictureOfBlanksCountsAsPresent)
{
    EXPECT_EQ(prompts::hunkExplanationMessage(u"a.cpp"_s, u"+b"_s, u"  "_s).join(QString()),
              u"Full picture of this review:\n  \n\nFile: a.cpp\n\nHunk:\n+b"_s);
}

TEST(AIPrompts, TheSuggestionsMessageWithoutAConversationIsTheHunk)
{
    EXPECT_EQ(prompts::suggestionsMessage(u"a.cpp"_s, u"+b"_s, {}).join(QString()),
              u"File: a.cpp\n\nHunk:\n+b"_s);
}

TEST(AIPrompts, TheSuggestionsMessageListsTheConversation)
{
    const QList<ChatMessage> conversation{message(ChatMessage::Role::user, u"Why?\nHow?"_s),
                                          message(ChatMessage::Role::assistant, u"Because."_s),
                                          message(ChatMessage::Role::user, QString())};

    EXPECT_EQ(prompts::suggestionsMessage(u"a.cpp"_s, u"+b"_s, conversation).join(QString()),
              u"File: a.cpp\n\nHunk:\n+b\n\nConversation so far:\nuser: Why?\nHow?\n"
              "assistant: Because.\nuser: "_s);
}

} // namespace
} // namespace vantrel
