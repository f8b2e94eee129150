#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace vantrel::sample {

/// A chat-completions request, as far as the sample looks at it.
struct SampleQuestion
{
    QString systemPrompt{};
    QString lastMessage{}; ///< The user's newest words.
    bool isStreamed = false;
};

/// The question in a request's body; nothing when the body is none.
[[nodiscard]] std::optional<SampleQuestion> readQuestion(const QByteArray &body);

/// The answer by fixed rules: it counts lines, names the first changed word, and says that no model
/// was asked. The kind of request is told by the words of its system prompt.
[[nodiscard]] QString answerTo(const SampleQuestion &question);

} // namespace vantrel::sample
