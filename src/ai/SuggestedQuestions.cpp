#include "ai/SuggestedQuestions.h"

#include "ai/ReplyCleaning.h"
#include "platform/JsonDocument.h"

#include <QJsonArray>
#include <QSet>

namespace vantrel {

QStringList parseSuggestedQuestions(const QString &reply)
{
    const QString json = outermost(withoutCodeFence(reply), u'[', u']');
    const QJsonArray array = documentFromJson(json.toUtf8()).array();
    QStringList questions;
    QSet<QString> seen;
    for (const auto &item : array) {
        if (!item.isString()) {
            return {};
        }
        const QString question = item.toString().trimmed();
        if (!question.isEmpty() && !seen.contains(question)) {
            seen.insert(question);
            questions.append(question);
        }
    }
    return questions;
}

} // namespace vantrel
