#include "models/ChatMessageCoding.h"

#include "models/JsonFields.h"

#include <utility>

namespace vantrel {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr auto idKey = "id"_L1;
constexpr auto roleKey = "role"_L1;
constexpr auto textKey = "text"_L1;
constexpr auto isStreamingKey = "isStreaming"_L1;

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

ChatMessage::Role readRole(JsonFields &fields)
{
    const QJsonObject object = fields.object(roleKey);
    if (object.size() != 1) {
        fields.fail(CodingError::Case::invalidKeyCount, roleKey);
        return {};
    }
    for (const auto role : {ChatMessage::Role::user, ChatMessage::Role::assistant}) {
        if (object[roleName(role)].isObject()) {
            return role;
        }
    }
    fields.fail(CodingError::Case::invalidValue, roleKey);
    return {};
}

} // namespace

QJsonObject toJson(const ChatMessage &message)
{
    return {
        {idKey, encodedUuid(message.id)},
        {roleKey, QJsonObject{{roleName(message.role), QJsonObject()}}},
        {textKey, message.text},
        {isStreamingKey, message.isStreaming},
    };
}

tl::expected<ChatMessage, CodingError> chatMessageFromJson(const QJsonValue &value)
{
    JsonFields fields(value);
    ChatMessage message;
    message.id = fields.uuid(idKey);
    message.role = readRole(fields);
    message.text = fields.text(textKey);
    message.isStreaming = fields.boolean(isStreamingKey);
    return fields.decoded(std::move(message));
}

} // namespace vantrel
