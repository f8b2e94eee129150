#include "ai/AIPrompts.h"

#include "ai/HunkExplanationStreamParser.h"

namespace vantrel::prompts {

using namespace Qt::Literals::StringLiterals;

QString fullPicture()
{
    return u"You look at every changed file in a code review at once and write a short (2-4 "
           "sentence) narrative describing what this overall set of changes is doing and "
           "how the pieces relate to each other. Plain and direct, no marketing language. "
           "Reply with only the narrative, no quotes, no preamble."_s;
}

QString fileSummary()
{
    return u"You summarise a single file's git diff in one short sentence (under 20 words) "
           "describing what the change serves, not what it literally does line by line. "
           "Reply with only the sentence, no quotes, no preamble."_s;
}

QString hunkExplanation()
{
    const QString beforeDelimiter =
        u"You explain one hunk of a git diff to a reviewer, who may also have been given "
        "a short narrative describing the full picture of everything that changed in "
        "this review. Reply in exactly two sections, in this order, with nothing before "
        "or after them:\n"
        "1. The explanation: 3-5 sentences on what this hunk does and why, as plain "
        "prose (inline Markdown is fine). No heading, no label, no JSON, no markdown "
        "fences.\n"
        "2. A line containing only "_s;
    const QString afterDelimiter =
        u", then ONLY a JSON object, no markdown fences, no prose after it, matching "
        "exactly this shape:\n"
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
        "characters."_s;
    return beforeDelimiter + explanationDelimiter + afterDelimiter;
}

QString suggestions()
{
    return u"You suggest follow-up questions a reviewer might ask next about one specific "
           "hunk of a git diff, given the conversation so far. Reply with ONLY a JSON array "
           "of strings, no markdown fences, no prose, matching exactly this shape:\n"
           "[\"short question\", \"short question\"]\n"
           "The array must contain exactly two short, specific, hunk-relevant follow-up "
           "questions, each under 5 words / 30 characters, that build on the conversation "
           "so far rather than repeating what's already been asked or answered."_s;
}

QStringList followUp(const QString &path, const QString &hunkText)
{
    const QString prompt =
        u"You are answering follow-up questions about one specific hunk of a git diff. "
        "Stay focused on this hunk's intent, risk, and testing. Answer in 2-4 sentences "
        "by default; only go longer if the user explicitly asks for more detail, a list, "
        "or code, or the question genuinely needs it. Skip preamble and don't restate "
        "the question.\n"
        "\n"
        "File: "_s;
    return {prompt + path + u"\n\nHunk:\n"_s, hunkText};
}

QStringList fileSummaryMessage(const QString &path, const QString &diffText)
{
    return {u"File: "_s + path + u"\n\nDiff:\n"_s, diffText};
}

QString fullPictureMessage(const QList<ChangesetEntry> &entries)
{
    QStringList files;
    for (const ChangesetEntry &entry : entries) {
        files.append(u"File: "_s + entry.path + u"\n\n"_s + entry.text);
    }
    return u"Here are all the changed files in this review:\n\n"_s + files.join(u"\n\n---\n\n"_s);
}

QStringList hunkExplanationMessage(const QString &path, const QString &hunkText,
                                   const QString &fullPicture)
{
    const QString hunk = u"File: "_s + path + u"\n\nHunk:\n"_s;
    if (fullPicture.isEmpty()) {
        return {hunk, hunkText};
    }
    return {u"Full picture of this review:\n"_s + fullPicture + u"\n\n"_s + hunk, hunkText};
}

QStringList suggestionsMessage(const QString &path, const QString &hunkText,
                               const QList<ChatMessage> &conversation)
{
    const QString hunk = u"File: "_s + path + u"\n\nHunk:\n"_s;
    if (conversation.isEmpty()) {
        return {hunk, hunkText};
    }
    QStringList lines;
    for (const ChatMessage &message : conversation) {
        lines.append(roleName(message.role) + u": "_s + message.text);
    }
    return {hunk, hunkText, u"\n\nConversation so far:\n"_s + lines.join(u'\n')};
}

QString roleName(ChatMessage::Role role)
{
    switch (role) {
    case ChatMessage::Role::user:
        return u"user"_s;
    case ChatMessage::Role::assistant:
        return u"assistant"_s;
    }
    Q_UNREACHABLE();
}

} // namespace vantrel::prompts
