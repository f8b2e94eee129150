#include "updates/UpdateFeed.h"

#include "updates/HttpsLoading.h"
#include "updates/SignedFeed.h"

#include <QSysInfo>

#include <algorithm>
#include <utility>

namespace vantrel {

using namespace Qt::Literals::StringLiterals;

namespace {

using Case = SoftwareUpdateError::Case;

constexpr qsizetype maxFeedBytes = 1 << 20; ///< Hundreds of versions with their notes.

/// The names of this system in a feed: with any processor, and with ours.
QStringList thisSystem()
{
    return {u"linux"_s, u"linux-"_s + QSysInfo::buildCpuArchitecture()};
}

Result<std::optional<AppcastItem>, SoftwareUpdateError>
choose(const QByteArray &feed, const UpdaterConfiguration &configuration,
       const UpdateVersion &running)
{
    const auto content = verifiedFeedContent(feed, configuration.publicKey);
    if (!content) {
        return failure(SoftwareUpdateError{Case::feedNotSigned, {}, 0});
    }
    const auto items = parseAppcast(*content, thisSystem());
    if (!items) {
        return failure(SoftwareUpdateError{Case::feedMalformed, {}, 0});
    }
    const auto newest =
        std::max_element(items->cbegin(), items->cend(), [](const auto &one, const auto &other) {
            return one.version < other.version;
        });
    if (newest == items->cend()) {
        return failure(SoftwareUpdateError{Case::feedWithoutPackage, {}, 0});
    }
    if (newest->version < running) {
        return failure(SoftwareUpdateError{Case::feedDowngraded, newest->versionName, 0});
    }
    return newest->version == running ? std::nullopt : std::optional(*newest);
}

} // namespace

Task<Result<std::optional<AppcastItem>, SoftwareUpdateError>>
newestUpdate(HttpLoading *session, UpdaterConfiguration configuration, UpdateVersion running)
{
    auto body = co_await loadOverHttps(session, configuration.feedURL);
    if (!body) {
        co_return failure(body.error());
    }
    QByteArray feed;
    while (const auto part = co_await body->next()) {
        if (!*part) {
            SoftwareUpdateError lost = unreachable(part->error());
            co_return failure(std::move(lost));
        }
        feed.append(**part);
        if (feed.size() > maxFeedBytes) {
            SoftwareUpdateError tooLarge{Case::feedTooLarge, {}, 0};
            co_return failure(std::move(tooLarge));
        }
    }
    co_return choose(feed, configuration, running);
}

} // namespace vantrel
