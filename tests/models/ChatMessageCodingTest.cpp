#include "models/ChatMessageCoding.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <gtest/gtest.h>

namespace vantrel {

using namespace Qt::Literals::StringLiterals;

namespace {

const QString canonicalId = u"8C9B2F7E-3A1D-4F60-9A57-0B1C2D3E4F5A"_s;

ChatMessage message(ChatMessage::Role role)
{
    return ChatMessage{QUuid::fromString(canonicalId), role, u"Warum \"so\"?\n👍"_s, true};
}

QJsonObject stored()
{
    return toJson(message(ChatMessage::Role::user));
}

QJsonObject withField(QJsonObject object, const QString &key, const QJsonValue &value)
{
    object[key] = value;
    return object;
}

QJsonObject withRole(const QByteArray &role)
{
    return withField(stored(), u"role"_s, QJsonDocument::fromJson(role).object());
}

CodingError errorOf(const QJsonValue &value)
{
    const auto decoded = chatMessageFromJson(value);
    return decoded ? CodingError{CodingError::Case::invalidValue, u"nothing failed"_s}
                   : decoded.error();
}

using Case = CodingError::Case;

} // namespace

TEST(ChatMessageCoding, AMessageOfTheUserHasTheStoredForm)
{
    const QByteArray json =
        QJsonDocument(toJson(message(ChatMessage::Role::user))).toJson(QJsonDocument::Compact);

    EXPECT_EQ(json, QByteArray("{\"id\":\"8C9B2F7E-3A1D-4F60-9A57-0B1C2D3E4F5A\","
                               "\"isStreaming\":true,\"role\":{\"user\":{}},"
                               "\"text\":\"Warum \\\"so\\\"?\\n👍\"}"));
}

TEST(ChatMessageCoding, AMessageOfTheAssistantHasItsRoleAsTheOneKey)
{
    const QJsonObject role = toJson(message(ChatMessage::Role::assistant))[u"role"_s].toObject();

    EXPECT_EQ(role, QJsonObject({{u"assistant"_s, QJsonObject()}}));
}

TEST(ChatMessageCoding, AMessageSurvivesEncodingAndDecoding)
{
    const ChatMessage user = message(ChatMessage::Role::user);
    const ChatMessage assistant = message(ChatMessage::Role::assistant);

    EXPECT_EQ(chatMessageFromJson(toJson(user)), user);
    EXPECT_EQ(chatMessageFromJson(toJson(assistant)), assistant);
}

TEST(ChatMessageCoding, ARoleWithoutAKeyFails)
{
    const auto decoded = chatMessageFromJson(withRole("{}"));

    ASSERT_FALSE(decoded);
    EXPECT_EQ(decoded.error().description(), u"Invalid number of keys found, expected one."_s);
}

TEST(ChatMessageCoding, ARoleWithTwoKeysFails)
{
    const auto decoded = chatMessageFromJson(withRole(R"({"user":{},"assistant":{}})"));

    ASSERT_FALSE(decoded);
    EXPECT_EQ(decoded.error().description(), u"Invalid number of keys found, expected one."_s);
}

TEST(ChatMessageCoding, AnUnknownRoleFails)
{
    EXPECT_EQ(errorOf(withRole(R"({"system":{}})")), (CodingError{Case::invalidValue, u"role"_s}));
    EXPECT_EQ(errorOf(withRole(R"({"User":{}})")), (CodingError{Case::invalidValue, u"role"_s}));
}

TEST(ChatMessageCoding, ARoleWhoseValueIsNoObjectFails)
{
    EXPECT_EQ(errorOf(withRole(R"({"user":true})")), (CodingError{Case::invalidValue, u"role"_s}));
    EXPECT_EQ(errorOf(withField(stored(), u"role"_s, u"user"_s)),
              (CodingError{Case::wrongType, u"role"_s}));
}

TEST(ChatMessageCoding, EachKeyIsRequired)
{
    for (const QString &key : {u"id"_s, u"role"_s, u"text"_s, u"isStreaming"_s}) {
        QJsonObject object = stored();
        object.remove(key);

        EXPECT_EQ(errorOf(object), (CodingError{Case::missingKey, key}));
    }
}

TEST(ChatMessageCoding, AValueOfAnotherTypeFails)
{
    for (const QString &key : {u"id"_s, u"role"_s, u"text"_s, u"isStreaming"_s}) {
        EXPECT_EQ(errorOf(withField(stored(), key, 1)), (CodingError{Case::wrongType, key}));
        EXPECT_EQ(errorOf(withField(stored(), key, QJsonValue::Null)),
                  (CodingError{Case::wrongType, key}));
    }
}

TEST(ChatMessageCoding, AnIdInSmallLettersIsRead)
{
    EXPECT_EQ(chatMessageFromJson(withField(stored(), u"id"_s, canonicalId.toLower())),
              message(ChatMessage::Role::user));
}

TEST(ChatMessageCoding, AnIdThatIsNotCanonicalFails)
{
    const CodingError expected{Case::invalidValue, u"id"_s};

    EXPECT_EQ(errorOf(withField(stored(), u"id"_s, QString())), expected);
    EXPECT_EQ(errorOf(withField(stored(), u"id"_s, u"7"_s)), expected);
    EXPECT_EQ(errorOf(withField(stored(), u"id"_s, u"{%1}"_s.arg(canonicalId))), expected);
    EXPECT_EQ(errorOf(withField(stored(), u"id"_s, canonicalId + u'0')), expected);
    EXPECT_EQ(errorOf(withField(stored(), u"id"_s, canonicalId.chopped(1) + u'G')), expected);
}

TEST(ChatMessageCoding, UnknownKeysAreIgnored)
{
    EXPECT_EQ(chatMessageFromJson(withField(stored(), u"later"_s, 1)),
              message(ChatMessage::Role::user));
}

TEST(ChatMessageCoding, WhatIsNoObjectFails)
{
    EXPECT_EQ(errorOf(QJsonArray()), (CodingError{Case::notAnObject, QString()}));
    EXPECT_EQ(errorOf(QJsonValue()), (CodingError{Case::notAnObject, QString()}));
}

TEST(CodingError, EachCaseHasItsSentence)
{
    EXPECT_EQ((CodingError{Case::notAnObject, QString()}).description(),
              u"The value is no object."_s);
    EXPECT_EQ((CodingError{Case::missingKey, u"id"_s}).description(),
              u"The key \"id\" is missing."_s);
    EXPECT_EQ((CodingError{Case::wrongType, u"id"_s}).description(),
              u"The value of \"id\" has the wrong type."_s);
    EXPECT_EQ((CodingError{Case::invalidValue, u"id"_s}).description(),
              u"The value of \"id\" is not valid."_s);
    EXPECT_EQ((CodingError{Case::invalidKeyCount, u"id"_s}).description(),
              u"Invalid number of keys found, expected one."_s);
}

} // namespace vantrel
