#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

namespace vantrel {

/// One message of a request. Roles: "system", "user", "assistant".
struct ChatMessagePayload
{
    QString role{};
    QStringList content{}; ///< The text in pieces, so that a huge diff is not copied for it.

    bool operator==(const ChatMessagePayload &) const = default;
};

/// A request of the OpenAI chat-completions protocol: these three keys and no others.
struct ChatCompletionRequest
{
    QString model{};
    QList<ChatMessagePayload> messages{};
    bool stream = false;

    bool operator==(const ChatCompletionRequest &) const = default;
};

/// The JSON body of a request.
[[nodiscard]] QByteArray encodeRequest(const ChatCompletionRequest &request);

/// The first choice's message of a whole reply; nothing when it is not of that form or holds no
/// choice. Unknown keys do not matter.
[[nodiscard]] std::optional<QString> decodeResponseContent(const QByteArray &body);

/// The first choice's delta of one chunk of a streamed reply; nothing when the chunk is not of that
/// form or says nothing.
[[nodiscard]] std::optional<QString> decodeChunkContent(QByteArrayView json);

} // namespace vantrel
