#include "models/PersistedChatThreadCoding.h"

#include "models/ChatMessageCoding.h"
#include "models/HunkExplanationCoding.h"
#include "models/JsonFields.h"

#include <QJsonArray>

#include <utility>

namespace vantrel {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr auto filePathKey = "filePath"_L1;
constexpr auto diffTextKey = "diffText"_L1;
constexpr auto messagesKey = "messages"_L1;
constexpr auto suggestedQuestionsKey = "suggestedQuestions"_L1;
constexpr auto lastUpdatedKey = "lastUpdated"_L1;
constexpr auto explanationKey = "explanation"_L1;

QJsonArray encodedMessages(const QList<ChatMessage> &messages)
{
    QJsonArray array;
    for (const ChatMessage &message : messages) {
        array.append(toJson(message));
    }
    return array;
}

QList<ChatMessage> readMessages(JsonFields &fields)
{
    QList<ChatMessage> messages;
    const QJsonArray array = fields.array(messagesKey);
    for (const QJsonValue item : array) {
        auto message = chatMessageFromJson(item);
        if (!message) {
            fields.fail(message.error().kind, messagesKey);
            return {};
        }
        messages.append(*std::move(message));
    }
    return messages;
}

std::optional<HunkExplanation> readExplanation(JsonFields &fields)
{
    if (!fields.contains(explanationKey)) {
        return std::nullopt;
    }
    auto explanation = hunkExplanationFromJson(fields.object(explanationKey));
    if (!explanation) {
        fields.fail(explanation.error().kind, explanationKey);
        return std::nullopt;
    }
    return *std::move(explanation);
}

} // namespace

QJsonObject toJson(const PersistedChatThread &thread)
{
    QJsonObject object{
        {filePathKey, thread.filePath},
        {diffTextKey, thread.diffText},
        {messagesKey, encodedMessages(thread.messages)},
        {suggestedQuestionsKey, QJsonArray::fromStringList(thread.suggestedQuestions)},
        {lastUpdatedKey, encodedDate(thread.lastUpdated)},
    };
    if (thread.explanation) {
        object.insert(explanationKey, toJson(*thread.explanation));
    }
    return object;
}

tl::expected<PersistedChatThread, CodingError> persistedChatThreadFromJson(const QJsonValue &value)
{
    JsonFields fields(value);
    PersistedChatThread thread;
    thread.filePath = fields.text(filePathKey);
    thread.diffText = fields.text(diffTextKey);
    thread.messages = readMessages(fields);
    thread.suggestedQuestions = fields.texts(suggestedQuestionsKey);
    thread.lastUpdated = fields.date(lastUpdatedKey);
    thread.explanation = readExplanation(fields);
    return fields.decoded(std::move(thread));
}

} // namespace vantrel
