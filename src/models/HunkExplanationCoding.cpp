#include "models/HunkExplanationCoding.h"

#include "models/JsonFields.h"

#include <QJsonArray>

#include <utility>

namespace vantrel {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr auto tagKey = "tag"_L1;
constexpr auto explanationKey = "explanation"_L1;
constexpr auto pointsKey = "points"_L1;
constexpr auto suggestedQuestionsKey = "suggestedQuestions"_L1;

} // namespace

QJsonObject toJson(const HunkExplanation &explanation)
{
    return {
        {tagKey, explanation.tag},
        {explanationKey, explanation.explanation},
        {pointsKey, QJsonArray::fromStringList(explanation.points)},
        {suggestedQuestionsKey, QJsonArray::fromStringList(explanation.suggestedQuestions)},
    };
}

tl::expected<HunkExplanation, CodingError> hunkExplanationFromJson(const QJsonValue &value)
{
    JsonFields fields(value);
    HunkExplanation explanation;
    explanation.tag = fields.text(tagKey);
    explanation.explanation = fields.text(explanationKey);
    explanation.points = fields.texts(pointsKey);
    explanation.suggestedQuestions = fields.texts(suggestedQuestionsKey);
    return fields.decoded(std::move(explanation));
}

} // namespace vantrel
