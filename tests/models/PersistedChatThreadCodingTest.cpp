#include "models/PersistedChatThreadCoding.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <gtest/gtest.h>

namespace vantrel {

using namespace Qt::Literals::StringLiterals;

namespace {

using Case = CodingError::Case;

const QStringList requiredKeys{u"filePath"_s, u"diffText"_s, u"messages"_s, u"suggestedQuestions"_s,
                               u"lastUpdated"_s};

ChatMessage message(const QString &id, ChatMessage::Role role, const QString &text)
{
    return ChatMessage{QUuid::fromString(id), role, text, false};
}

PersistedChatThread sample()
{
    PersistedChatThread thread;
    thread.filePath = u"src/größe.cpp"_s;
    thread.diffText = u"-old\n+\"new\""_s;
    thread.messages = {
        message(u"8C9B2F7E-3A1D-4F60-9A57-0B1C2D3E4F5A"_s, ChatMessage::Role::user, u"Why?"_s),
        message(u"1B2C3D4E-5F60-4718-8293-A4B5C6D7E8F9"_s, ChatMessage::Role::assistant,
                u"Because. 👍"_s),
    };
    thread.suggestedQuestions = {u"What else?"_s, u"Since when?"_s};
    thread.lastUpdated = QDateTime(QDate(2001, 1, 2), QTime(0, 0, 1, 250), Qt::UTC);
    thread.explanation = HunkExplanation{u"fix"_s, u"It mends."_s, {u"One"_s}, {u"Two?"_s}};
    return thread;
}

PersistedChatThread sampleWithoutExplanation()
{
    PersistedChatThread thread = sample();
    thread.explanation.reset();
    return thread;
}

QJsonObject withField(const QString &key, const QJsonValue &value)
{
    QJsonObject object = toJson(sample());
    object[key] = value;
    return object;
}

CodingError errorOf(const QJsonValue &value)
{
    const auto decoded = persistedChatThreadFromJson(value);
    return decoded ? CodingError{Case::invalidValue, u"nothing failed"_s} : decoded.error();
}

} // namespace

TEST(PersistedChatThreadCoding, AThreadHasTheStoredForm)
{
    const QByteArray json = QJsonDocument(toJson(sample())).toJson(QJsonDocument::Compact);

    EXPECT_EQ(json, QByteArray("{\"diffText\":\"-old\\n+\\\"new\\\"\","
                               "\"explanation\":{\"explanation\":\"It mends.\","
                               "\"points\":[\"One\"],\"suggestedQuestions\":[\"Two?\"],"
                               "\"tag\":\"fix\"},"
                               "\"filePath\":\"src/größe.cpp\","
                               "\"lastUpdated\":86401.25,"
                               "\"messages\":["
                               "{\"id\":\"8C9B2F7E-3A1D-4F60-9A57-0B1C2D3E4F5A\","
                               "\"isStreaming\":false,\"role\":{\"user\":{}},\"text\":\"Why?\"},"
                               "{\"id\":\"1B2C3D4E-5F60-4718-8293-A4B5C6D7E8F9\","
                               "\"isStreaming\":false,\"role\":{\"assistant\":{}},"
                               "\"text\":\"Because. 👍\"}],"
                               "\"suggestedQuestions\":[\"What else?\",\"Since when?\"]}"));
}

TEST(PersistedChatThreadCoding, WithoutAnExplanationItsKeyIsLeftOut)
{
    EXPECT_EQ(toJson(sampleWithoutExplanation()).keys(),
              QStringList({u"diffText"_s, u"filePath"_s, u"lastUpdated"_s, u"messages"_s,
                           u"suggestedQuestions"_s}));
}

TEST(PersistedChatThreadCoding, AThreadSurvivesEncodingAndDecoding)
{
    EXPECT_EQ(persistedChatThreadFromJson(toJson(sample())), sample());
    EXPECT_EQ(persistedChatThreadFromJson(toJson(sampleWithoutExplanation())),
              sampleWithoutExplanation());
}

TEST(PersistedChatThreadCoding, AThreadWithoutMessagesAndQuestionsSurvives)
{
    PersistedChatThread thread = sample();
    thread.messages.clear();
    thread.suggestedQuestions.clear();

    EXPECT_EQ(persistedChatThreadFromJson(toJson(thread)), thread);
}

TEST(PersistedChatThreadCoding, AnExplanationOfNullIsNone)
{
    EXPECT_EQ(persistedChatThreadFromJson(withField(u"explanation"_s, QJsonValue::Null)),
              sampleWithoutExplanation());
}

TEST(PersistedChatThreadCoding, EachOtherKeyIsRequired)
{
    for (const QString &key : requiredKeys) {
        QJsonObject object = toJson(sample());
        object.remove(key);

        EXPECT_EQ(errorOf(object), (CodingError{Case::missingKey, key}));
    }
}

TEST(PersistedChatThreadCoding, AValueOfAnotherTypeFails)
{
    for (const QString &key : requiredKeys + QStringList{u"explanation"_s}) {
        EXPECT_EQ(errorOf(withField(key, true)), (CodingError{Case::wrongType, key}));
    }
}

TEST(PersistedChatThreadCoding, ANullForARequiredKeyFails)
{
    for (const QString &key : requiredKeys) {
        EXPECT_EQ(errorOf(withField(key, QJsonValue::Null)), (CodingError{Case::wrongType, key}));
    }
}

TEST(PersistedChatThreadCoding, OneMessageThatCannotBeReadFailsTheThread)
{
    QJsonArray messages = toJson(sample())[u"messages"_s].toArray();
    messages.append(QJsonObject{{u"text"_s, u"No id"_s}});

    EXPECT_EQ(errorOf(withField(u"messages"_s, messages)),
              (CodingError{Case::missingKey, u"messages"_s}));
}

TEST(PersistedChatThreadCoding, AQuestionThatIsNoTextFails)
{
    EXPECT_EQ(errorOf(withField(u"suggestedQuestions"_s, QJsonArray{u"Why?"_s, 7})),
              (CodingError{Case::wrongType, u"suggestedQuestions"_s}));
}

TEST(PersistedChatThreadCoding, AnExplanationThatLacksAKeyFails)
{
    QJsonObject explanation = toJson(sample())[u"explanation"_s].toObject();
    explanation.remove(u"points"_s);

    EXPECT_EQ(errorOf(withField(u"explanation"_s, explanation)),
              (CodingError{Case::missingKey, u"explanation"_s}));
}

TEST(PersistedChatThreadCoding, UnknownKeysAreIgnored)
{
    EXPECT_EQ(persistedChatThreadFromJson(withField(u"later"_s, QJsonArray{1})), sample());
}

TEST(PersistedChatThreadCoding, WhatIsNoObjectFails)
{
    EXPECT_EQ(errorOf(7), (CodingError{Case::notAnObject, QString()}));
    EXPECT_EQ(errorOf(QJsonArray()), (CodingError{Case::notAnObject, QString()}));
}

} // namespace vantrel
