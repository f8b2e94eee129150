#include "ai/ExplanationReply.h"

#include "ai/ReplyCleaning.h"
#include "platform/JsonDocument.h"

#include <QJsonArray>
#include <QJsonObject>

#include <algorithm>

namespace vantrel {

using namespace Qt::Literals::StringLiterals;

namespace {

const QString defaultTag = QStringLiteral("Change");

bool isAbsent(const QJsonValue &value)
{
    return value.isUndefined() || value.isNull();
}

bool isStringList(const QJsonValue &value)
{
    const QJsonArray array = value.toArray();
    return value.isArray() && std::all_of(array.cbegin(), array.cend(),
                                          [](const QJsonValue &item) { return item.isString(); });
}

QStringList stringList(const QJsonValue &value)
{
    QStringList list;
    const QJsonArray array = value.toArray();
    for (const auto &item : array) {
        list.append(item.toString());
    }
    return list;
}

/// The metadata object, whose keys may all be missing; nothing when a key has the wrong type.
std::optional<QJsonObject> decodeMetadata(const QString &text)
{
    const QString json = outermost(withoutCodeFence(text), u'{', u'}');
    const QJsonDocument document = documentFromJson(json.toUtf8());
    const QJsonObject object = document.object();
    const auto isStringOrAbsent = [](const QJsonValue &value) {
        return isAbsent(value) || value.isString();
    };
    const auto isListOrAbsent = [](const QJsonValue &value) {
        return isAbsent(value) || isStringList(value);
    };
    const bool isMetadata = document.isObject() && isStringOrAbsent(object["tag"_L1]) &&
                            isStringOrAbsent(object["explanation"_L1]) &&
                            isListOrAbsent(object["points"_L1]) &&
                            isListOrAbsent(object["suggestedQuestions"_L1]);
    return isMetadata ? std::optional(object) : std::nullopt;
}

HunkExplanation fromMetadata(const QString &prose, const QString &metadataText)
{
    const QJsonObject metadata = decodeMetadata(metadataText).value_or(QJsonObject());
    HunkExplanation explanation;
    const QString tag = metadata["tag"_L1].toString().trimmed();
    explanation.tag = tag.isEmpty() ? defaultTag : tag;
    explanation.explanation = prose.isEmpty() ? metadata["explanation"_L1].toString() : prose;
    explanation.points = stringList(metadata["points"_L1]);
    explanation.suggestedQuestions = stringList(metadata["suggestedQuestions"_L1]);
    return explanation;
}

/// A whole reply of the older form, one JSON object with nothing around it but a code fence.
std::optional<HunkExplanation> decodeLegacy(const QString &prose)
{
    const QString json = withoutCodeFence(prose);
    if (!json.startsWith(u'{')) {
        return std::nullopt;
    }
    const QJsonObject object = documentFromJson(json.toUtf8()).object();
    const QJsonValue questions = object["suggestedQuestions"_L1];
    if (!object["tag"_L1].isString() || !object["explanation"_L1].isString() ||
        !isStringList(object["points"_L1]) || !(isAbsent(questions) || isStringList(questions))) {
        return std::nullopt;
    }
    HunkExplanation explanation;
    explanation.tag = object["tag"_L1].toString();
    explanation.explanation = object["explanation"_L1].toString();
    explanation.points = stringList(object["points"_L1]);
    explanation.suggestedQuestions = stringList(questions);
    return explanation;
}

} // namespace

HunkExplanation explanationFromReply(const QString &prose,
                                     const std::optional<QString> &metadataText)
{
    const QString trimmed = prose.trimmed();
    if (metadataText) {
        return fromMetadata(trimmed, *metadataText);
    }
    if (const auto legacy = decodeLegacy(trimmed)) {
        return *legacy;
    }
    HunkExplanation explanation;
    explanation.tag = defaultTag;
    explanation.explanation = trimmed;
    return explanation;
}

} // namespace vantrel
