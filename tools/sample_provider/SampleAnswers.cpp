#include "SampleAnswers.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QStringList>

namespace vantrel::sample {

using namespace Qt::Literals::StringLiterals;

namespace {

const QString notice = QStringLiteral("This is a sample answer; no model was asked.");

struct Counts
{
    int added = 0;
    int removed = 0;
    QString firstChange{};
};

/// The text behind the last "Hunk:" or "Diff:" label.
QString diffIn(const QString &message)
{
    const qsizetype hunk = message.lastIndexOf("\n\nHunk:\n"_L1);
    const qsizetype diff = message.lastIndexOf("\n\nDiff:\n"_L1);
    const qsizetype label = qMax(hunk, diff);
    return label < 0 ? QString() : message.sliced(label + 8);
}

QString pathIn(const QString &message)
{
    static const QRegularExpression label(u"(?:^|\\n)File: ([^\\n]*)"_s);
    return label.match(message).captured(1);
}

Counts count(const QString &diff)
{
    static const QRegularExpression word(u"[A-Za-z_][A-Za-z0-9_]{3,}"_s);
    Counts counts;
    const QStringList lines = diff.split(u'\n');
    for (const QString &line : lines) {
        const bool isAdded = line.startsWith(u'+');
        const bool isRemoved = line.startsWith(u'-');
        counts.added += isAdded ? 1 : 0;
        counts.removed += isRemoved ? 1 : 0;
        if ((isAdded || isRemoved) && counts.firstChange.isEmpty()) {
            counts.firstChange = word.match(line).captured(0);
        }
    }
    return counts;
}

QString lines(int number)
{
    return number == 1 ? u"1 line"_s : QString::number(number) + u" lines"_s;
}

QString tagOf(const Counts &counts, const QString &path)
{
    if (path.contains("test"_L1)) {
        return u"Test"_s;
    }
    if (counts.removed == 0) {
        return u"New code"_s;
    }
    return counts.added == 0 ? u"Deleted"_s : u"Behaviour"_s;
}

QString explanation(const QString &message)
{
    const Counts counts = count(diffIn(message));
    const QString path = pathIn(message);
    QString prose = notice + u" The hunk in `"_s + path + u"` adds "_s + lines(counts.added) +
                    u" and removes "_s + lines(counts.removed) + u"."_s;
    if (!counts.firstChange.isEmpty()) {
        prose += u" Its first changed word is `"_s + counts.firstChange + u"`."_s;
    }
    const QJsonObject metadata{
        {u"tag"_s, tagOf(counts, path)},
        {u"points"_s,
         QJsonArray{lines(counts.added) + u" added, "_s + lines(counts.removed) + u" removed."_s,
                    u"Made by fixed rules."_s}},
        {u"suggestedQuestions"_s, QJsonArray{u"What could break?"_s, u"How is it tested?"_s}},
    };
    return prose + u"\n---META---\n"_s +
           QString::fromUtf8(QJsonDocument(metadata).toJson(QJsonDocument::Compact));
}

} // namespace

std::optional<SampleQuestion> readQuestion(const QByteArray &body)
{
    const QJsonObject request = QJsonDocument::fromJson(body).object();
    const QJsonArray messages = request["messages"_L1].toArray();
    if (messages.isEmpty() || !request["model"_L1].isString()) {
        return std::nullopt;
    }
    SampleQuestion question;
    question.isStreamed = request["stream"_L1].toBool();
    if (messages.first()["role"_L1].toString() == "system"_L1) {
        question.systemPrompt = messages.first()["content"_L1].toString();
    }
    question.lastMessage = messages.last()["content"_L1].toString();
    return question;
}

QString answerTo(const SampleQuestion &question)
{
    const QString &prompt = question.systemPrompt;
    const QString &message = question.lastMessage;
    if (prompt.startsWith("You summarise a single file"_L1)) {
        const Counts counts = count(diffIn(message));
        return u"Sample summary: adds "_s + lines(counts.added) + u", removes "_s +
               lines(counts.removed) + u"."_s;
    }
    if (prompt.startsWith("You look at every changed file"_L1)) {
        const int files = int(message.count("\n\n---\n\n"_L1)) + 1;
        return notice + u" The change touches "_s + QString::number(files) +
               (files == 1 ? u" file."_s : u" files."_s);
    }
    if (prompt.startsWith("You explain one hunk"_L1)) {
        return explanation(message);
    }
    if (prompt.startsWith("You suggest follow-up questions"_L1)) {
        return u"[\"What could break?\", \"Who calls this?\"]"_s;
    }
    const Counts counts = count(diffIn(prompt));
    return notice + u" You asked: "_s + message + u" The hunk adds "_s + lines(counts.added) +
           u" and removes "_s + lines(counts.removed) + u"."_s;
}

} // namespace vantrel::sample
