// A reply's prose and metadata become an explanation that says no more than they do. Written as a
// reply again it is read as the same, and what a model puts around an object changes nothing.

#include "FuzzCheck.h"

#include "ai/ExplanationReply.h"
#include "models/HunkExplanationCoding.h"

#include <QJsonDocument>

#include <optional>

namespace {

using vantrel::HunkExplanation;
using vantrel::fuzz::check;

const QString defaultTag = QStringLiteral("Change");

qsizetype lengthOf(const HunkExplanation &explanation)
{
    qsizetype length = explanation.tag == defaultTag ? 0 : explanation.tag.size();
    length += explanation.explanation.size();
    length += explanation.points.join(QString()).size();
    return length + explanation.suggestedQuestions.join(QString()).size();
}

void checkWrittenAgain(const HunkExplanation &explanation)
{
    const QByteArray json = QJsonDocument(toJson(explanation)).toJson(QJsonDocument::Compact);
    const QString text = QString::fromUtf8(json);
    check(vantrel::explanationFromReply(text, std::nullopt) == explanation,
          "an explanation written as one object is read as the same");
}

void checkSurroundings(const QString &prose, const QString &metadata, const HunkExplanation &whole)
{
    if (metadata.contains(u'`')) {
        return; // Its own fence would be another.
    }
    const QString fenced = QStringLiteral(" ```json\n") + metadata + QStringLiteral("\n```\n");
    check(vantrel::explanationFromReply(prose, fenced) == whole, "a fence changes nothing");
    const QString described = QStringLiteral("Here: ") + metadata + QStringLiteral(" Done.");
    const qsizetype opening = metadata.indexOf(u'{');
    if (opening >= 0 && metadata.lastIndexOf(u'}') > opening) {
        check(vantrel::explanationFromReply(prose, described) == whole,
              "words around the object change nothing");
    }
}

} // namespace

/// The prose, and behind the first null character, if there is one, the metadata.
void vantrel::fuzz::tryInput(QByteArrayView input)
{
    const qsizetype end = input.indexOf('\0');
    const QString prose = QString::fromUtf8(end < 0 ? input : input.first(end));
    std::optional<QString> metadata;
    if (end >= 0) {
        metadata = QString::fromUtf8(input.sliced(end + 1));
    }

    const HunkExplanation explanation = explanationFromReply(prose, metadata);

    check(lengthOf(explanation) <= input.size(), "an explanation is no longer than its reply");
    checkWrittenAgain(explanation);
    if (metadata) {
        const QString trimmed = prose.trimmed();
        check(explanation.explanation == trimmed || trimmed.isEmpty(),
              "the prose is the explanation");
        check(!explanation.tag.isEmpty() && explanation.tag == explanation.tag.trimmed(),
              "a tag is trimmed and says something");
        checkSurroundings(prose, *metadata, explanation);
    }
}
