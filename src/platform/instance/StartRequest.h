#pragma once

#include <QString>
#include <QUrl>

namespace vantrel {

/// What a start of the application, or the desktop in its place, asks for.
struct StartRequest
{
    QUrl folder{}; ///< To be opened; empty when only the window is asked for.

    /// By which the desktop lets the window come to the front, under Wayland and under X11. Empty
    /// when the start came from a terminal, say.
    QString activationToken{};
    QString startupId{};

    bool operator==(const StartRequest &) const = default;
};

} // namespace vantrel
