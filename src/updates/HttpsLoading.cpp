#include "updates/HttpsLoading.h"

#include <utility>

namespace vantrel {

using namespace Qt::Literals::StringLiterals;

namespace {

using Case = SoftwareUpdateError::Case;

constexpr int success = 200;
constexpr int maxRedirects = 5;

bool isRedirect(const HttpResponse &response)
{
    constexpr int firstRedirect = 300;
    constexpr int lastRedirect = 399;
    return response.status >= firstRedirect && response.status <= lastRedirect &&
           !response.location.isEmpty();
}

bool isHttps(const QUrl &url)
{
    return url.isValid() && url.scheme() == "https"_L1;
}

} // namespace

SoftwareUpdateError unreachable(const PlatformError &error)
{
    return {Case::unreachable, error.description(), 0};
}

Task<Result<HttpBody, SoftwareUpdateError>> loadOverHttps(HttpLoading *session, QUrl url)
{
    for (int redirects = 0; redirects <= maxRedirects; ++redirects) {
        if (!isHttps(url)) {
            SoftwareUpdateError insecure{Case::insecureRedirect, {}, 0};
            co_return failure(std::move(insecure));
        }
        HttpRequest request;
        request.url = url;
        request.headers.emplaceBack("Accept-Encoding", "identity");
        // Otherwise Qt tells the person's.
        request.headers.emplaceBack("Accept-Language", "*");
        auto response = co_await session->load(std::move(request));
        if (!response) {
            SoftwareUpdateError lost = unreachable(response.error());
            co_return failure(std::move(lost));
        }
        if (response->status == success) {
            co_return std::move(response->body);
        }
        if (!isRedirect(*response)) {
            SoftwareUpdateError refused{Case::refused, {}, response->status};
            co_return failure(std::move(refused));
        }
        url = url.resolved(QUrl::fromEncoded(response->location));
    }
    SoftwareUpdateError endless{Case::tooManyRedirects, {}, 0};
    co_return failure(std::move(endless));
}

} // namespace vantrel
