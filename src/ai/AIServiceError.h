#pragma once

#include "platform/Failure.h"

#include <QString>

#include <optional>

namespace vantrel {

/// The error of every request to the model. Its description is the sentence that screens show.
struct AIServiceError
{
    enum class Case {
        requestFailed, ///< With a message of its own.
        missingAPIKey,
        invalidAPIKey,
        blankModel,
        invalidBaseURL,
        invalidResponse,
    };

    Case kind = Case::requestFailed;
    QString message{}; ///< Of `requestFailed`; empty for the others.

    [[nodiscard]] QString description() const;

    bool operator==(const AIServiceError &) const = default;
};

/// What a request can end in: the service's error, or the platform's failure to transport it.
using AIFailure = Failure<AIServiceError>;

/// The text of the link to the settings beneath a failure with this message; nothing when the
/// message is not one that the settings can mend. Screens keep only the message of a failure, so
/// the link is found from its text.
[[nodiscard]] std::optional<QString> recoveryLabel(const QString &message);

/// Whether `message` is one of the service's fixed sentences, and so of its configuration or reply
/// rather than of the network.
[[nodiscard]] bool isAIServiceErrorSentence(const QString &message);

} // namespace vantrel
