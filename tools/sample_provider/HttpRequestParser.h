#pragma once

#include <QByteArray>

#include <optional>

namespace vantrel::sample {

/// One request as it arrived.
struct ReceivedRequest
{
    QByteArray method{};
    QByteArray path{};
    bool hasAuthorization = false; ///< Whether a key was sent; never which.
    QByteArray body{};

    bool operator==(const ReceivedRequest &) const = default;
};

/// Takes HTTP/1.1 requests with a Content-Length out of a connection's bytes, however they are
/// split.
class HttpRequestParser
{
public:
    enum class Outcome { incomplete, complete, invalid };

    void feed(const QByteArray &bytes) { m_buffer.append(bytes); }

    /// Takes the next request. After `invalid` the connection is of no more use.
    [[nodiscard]] Outcome next(ReceivedRequest &request);

private:
    QByteArray m_buffer{};
};

} // namespace vantrel::sample
