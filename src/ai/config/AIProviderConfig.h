#pragma once

#include "ai/config/AIProvider.h"

#include <QString>
#include <QUrl>

#include <optional>

namespace vantrel {

/// Which provider is asked, where, and for which model.
struct AIProviderConfig
{
    AIProvider provider = AIProvider::openRouter;
    QString baseURL{}; ///< As the person typed it.
    QString model{};   ///< A model identifier; may be empty.

    /// The trimmed text as a URL when it has the scheme http or https, else nothing.
    [[nodiscard]] static std::optional<QUrl> validatedBaseURL(const QString &text);

    /// Whether the first-run setup must be offered. `keyMissing`: true when the key is known to be
    /// missing, false when it is known to be there, nothing when nothing is known.
    [[nodiscard]] bool needsSetup(std::optional<bool> keyMissing) const;

    bool operator==(const AIProviderConfig &) const = default;
};

} // namespace vantrel
