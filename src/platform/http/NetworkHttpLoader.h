#pragma once

#include "platform/http/HttpLoading.h"
#include "platform/jobs/Clock.h"

#include <memory>

class QNetworkAccessManager;

namespace vantrel {

/// HTTP over Qt's network stack: no cookies, no cache, no redirects, a User-Agent of its own, and
/// no proxy for this machine's own addresses. A header with control characters is refused, since it
/// could smuggle in another header. Thread: interface.
class NetworkHttpLoader final : public HttpLoading
{
public:
    /// `clock` measures a server's silence and must outlive the loader.
    explicit NetworkHttpLoader(Clock &clock);
    ~NetworkHttpLoader() override;

    Task<Result<HttpResponse, PlatformError>> load(HttpRequest request) override;

private:
    Clock &m_clock;
    std::unique_ptr<QNetworkAccessManager> m_network;
};

} // namespace vantrel
