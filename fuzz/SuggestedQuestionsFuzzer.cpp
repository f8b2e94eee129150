// Whatever a model answers, the questions in it are trimmed, each is there once, and together they
// are no longer than the answer. Written as an answer again they are read as the same, and what a
// model puts around its array changes nothing.

#include "FuzzCheck.h"

#include "ai/SuggestedQuestions.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QSet>

#include <algorithm>

namespace {

using vantrel::fuzz::check;

void checkQuestions(const QStringList &questions, qsizetype maxLength)
{
    check(std::all_of(questions.cbegin(), questions.cend(),
                      [](const QString &question) {
                          return !question.isEmpty() && question == question.trimmed();
                      }),
          "a question is trimmed and says something");
    check(QSet<QString>(questions.cbegin(), questions.cend()).size() == questions.size(),
          "each question is there once");
    check(questions.join(QString()).size() <= maxLength, "questions are no longer than the answer");
}

} // namespace

void vantrel::fuzz::tryInput(QByteArrayView input)
{
    const QString reply = QString::fromUtf8(input);

    const QStringList questions = parseSuggestedQuestions(reply);

    checkQuestions(questions, input.size());
    const QByteArray json = QJsonDocument(QJsonArray::fromStringList(questions)).toJson();
    check(parseSuggestedQuestions(QString::fromUtf8(json)) == questions,
          "questions written as an array are read as the same");
    const qsizetype opening = reply.indexOf(u'[');
    if (!reply.contains(u'`') && opening >= 0 && reply.lastIndexOf(u']') > opening) {
        check(parseSuggestedQuestions(QStringLiteral("```json\n") + reply +
                                      QStringLiteral("\n```")) == questions,
              "a fence changes nothing");
        check(parseSuggestedQuestions(QStringLiteral("Here: ") + reply +
                                      QStringLiteral(" Done.")) == questions,
              "words around the array change nothing");
    }
}
