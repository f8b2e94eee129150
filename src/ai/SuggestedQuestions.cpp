#include "ai/SuggestedQuestions.h"

#include "ai/ReplyCleaning.h"

#include <QJsonArray>
#include <QJsonDocument>

namespace vantrel {

QStringList parseSuggestedQuestions(const QString &reply)
{
    const QString json = outermost(withoutCodeFence(reply), u'[', u']');
    const QJsonArray array = QJsonDocument::fromJson(json.toUtf8()).array();
    QStringList questions;
    for (const QJsonValue &item : array) {
        if (!item.isString()) {
            return {};
        }
        const QString question = item.toString().trimmed();
        if (!question.isEmpty() && !questions.contains(question)) {
            questions.append(question);
        }
    }
    return questions;
}

} // namespace vantrel
