#pragma once

#include "platform/http/HttpLoading.h"
#include "platform/jobs/Clock.h"
#include "platform/jobs/SerialWorker.h"

namespace vantrel {

/// HTTP/1.1 over Qt's network stack: no cookies, no cache, no redirects, one connection and one
/// sending for each request, a User-Agent of its own, and no proxy for this
/// machine's own addresses. A header with control characters is refused, since it could smuggle in
/// another header. Thread: interface.
class NetworkHttpLoader final : public HttpLoading
{
public:
    /// `clock` measures a server's silence and must outlive the loader and every body.
    explicit NetworkHttpLoader(Clock &clock);

    Task<Result<HttpResponse, PlatformError>> load(HttpRequest request) override;

private:
    Clock &m_clock;
    SerialWorker m_proxyWorker; ///< Asks the system for proxies.
};

} // namespace vantrel
