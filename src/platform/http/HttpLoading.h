#pragma once

#include "platform/PlatformError.h"
#include "platform/Result.h"
#include "platform/jobs/Stream.h"
#include "platform/jobs/Task.h"

#include <QByteArray>
#include <QList>
#include <QUrl>

#include <chrono>
#include <utility>

namespace vantrel {

/// One HTTP request.
struct HttpRequest
{
    QUrl url{};
    QByteArray method{"GET"};
    QList<std::pair<QByteArray, QByteArray>> headers{};
    QByteArray body{};
    std::chrono::milliseconds timeout = std::chrono::seconds(60); ///< Of silence, not in all.
};

using HttpBody = Stream<QByteArray, PlatformError>;

/// The head of a response, and its body as it arrives.
struct HttpResponse
{
    int status = -1; ///< -1 when what answered does not speak HTTP.
    HttpBody body;
    QByteArray location{}; ///< Where a redirect leads, as the server wrote it; else empty.
};

/// Loads over HTTP. Redirects are answers like any other and never followed, so that nothing of a
/// request reaches another host. Destroying a task or a body closes the connection at once.
/// Thread: interface; nothing here blocks.
class HttpLoading
{
public:
    HttpLoading() = default;
    HttpLoading(const HttpLoading &) = delete;
    HttpLoading &operator=(const HttpLoading &) = delete;
    virtual ~HttpLoading() = default;

    /// Sends the request and waits for the head of the response. Fails with the platform's sentence
    /// when there is no connection, no answer in time, or a header that cannot be sent.
    virtual Task<Result<HttpResponse, PlatformError>> load(HttpRequest request) = 0;
};

} // namespace vantrel
