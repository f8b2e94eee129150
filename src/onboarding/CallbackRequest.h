#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

#include <optional>

namespace vantrel {

/// A name of a query with its value, both decoded. A name may come without a value.
struct CallbackQueryItem
{
    QString name{};
    std::optional<QString> value{};

    bool operator==(const CallbackQueryItem &) const = default;
};

/// What matters of an HTTP request that a browser was sent here with.
struct CallbackRequest
{
    QString method{};
    QString path{}; ///< As it was sent.
    QList<CallbackQueryItem> query{};

    /// The value of the first item of this name; nothing when it is missing or has none.
    [[nodiscard]] std::optional<QString> firstValue(const QString &name) const;

    bool operator==(const CallbackRequest &) const = default;
};

/// What ends the head of a request.
inline constexpr QByteArrayView endOfHead = "\r\n\r\n";

/// Reads the request line of the bytes; headers and body are ignored. Nothing as long as the end of
/// the head is missing, and for a line that is no request.
[[nodiscard]] std::optional<CallbackRequest> parseCallbackRequest(QByteArrayView bytes);

} // namespace vantrel
