#include "onboarding/LocalModelServerDetector.h"

#include "onboarding/LocalModelListParser.h"
#include "platform/http/HttpLoading.h"
#include "platform/jobs/AllOf.h"
#include "platform/jobs/Clock.h"
#include "platform/jobs/FirstOf.h"

#include <chrono>
#include <utility>
#include <variant>
#include <vector>

namespace vantrel {

using namespace Qt::Literals::StringLiterals;

namespace {

using namespace std::chrono_literals;

constexpr auto probeTimeout = 2s;
constexpr qsizetype maxListingBytes = 1 << 20; ///< Several thousand models.
constexpr int firstSuccess = 200;
constexpr int lastSuccess = 299;

Task<LocalModelServerStatus> askForModels(HttpLoading *session, QUrl address)
{
    HttpRequest request;
    request.url = std::move(address);
    request.timeout = probeTimeout;
    auto response = co_await session->load(std::move(request));
    if (!response || response->status < 0) {
        co_return LocalModelServerStatus::notRunning();
    }
    const LocalModelServerStatus withoutModels = LocalModelServerStatus::running({});
    if (response->status < firstSuccess || response->status > lastSuccess) {
        co_return withoutModels;
    }
    QByteArray body;
    while (const auto part = co_await response->body.next()) {
        if (!*part) {
            co_return LocalModelServerStatus::notRunning();
        }
        body.append(**part);
        if (body.size() > maxListingBytes) {
            co_return withoutModels;
        }
    }
    const auto models = LocalModelListParser::parse(body);
    co_return models ? LocalModelServerStatus::running(*models) : withoutModels;
}

Task<std::monostate> timeUp(Clock *clock)
{
    co_await clock->sleep(probeTimeout);
    co_return std::monostate();
}

Task<LocalModelServerStatus> probe(HttpLoading *session, Clock *clock, QUrl address)
{
    // The request's own limit is one of silence, which a server that trickles never reaches.
    auto race = firstOf(askForModels(session, std::move(address)), timeUp(clock));
    auto first = co_await race;
    if (auto *const status = std::get_if<0>(&first)) {
        co_return std::move(*status);
    }
    co_return LocalModelServerStatus::notRunning();
}

} // namespace

LocalModelServerDetector::BaseURLs LocalModelServerDetector::usualBaseURLs()
{
    BaseURLs urls;
    for (const LocalModelServer server : allLocalModelServers) {
        urls.insert(server, baseURL(server));
    }
    return urls;
}

LocalModelServerDetector::LocalModelServerDetector(HttpLoading &session, Clock &clock,
                                                   BaseURLs baseURLs)
    : m_session(session)
    , m_clock(clock)
    , m_baseURLs(std::move(baseURLs))
{}

Task<LocalModelServerStatuses> LocalModelServerDetector::detectAll()
{
    std::vector<Task<LocalModelServerStatus>> probes;
    for (const LocalModelServer server : allLocalModelServers) {
        const QUrl address(m_baseURLs.value(server) + u"/models"_s);
        probes.push_back(probe(&m_session, &m_clock, address));
    }
    auto all = allOf(std::move(probes));
    const std::vector<LocalModelServerStatus> found = co_await all;
    LocalModelServerStatuses statuses;
    for (std::size_t place = 0; place < found.size(); ++place) {
        statuses.insert(allLocalModelServers.at(place), found.at(place));
    }
    co_return statuses;
}

} // namespace vantrel
