#include "updates/PackageDownloader.h"

#include "updates/HttpsLoading.h"
#include "updates/IncompletePackage.h"

#include <memory>
#include <utility>

namespace vantrel {

using namespace Qt::Literals::StringLiterals;

namespace {

using Case = SoftwareUpdateError::Case;
using Package = std::shared_ptr<IncompletePackage>;

SoftwareUpdateError notKept(const PlatformError &error)
{
    return {Case::packageNotKept, error.description(), 0};
}

/// Of the version's number, not its name: no text of the feed becomes a path.
QString fileName(const AppcastItem &item)
{
    return u"vantrel-"_s + item.version.text() + u".deb"_s;
}

/// The last steps of a package that has the announced length.
Result<QString, SoftwareUpdateError> keepIfSigned(IncompletePackage &package,
                                                  const AppcastItem &item,
                                                  const QByteArray &publicKey,
                                                  const WorkControl &control)
{
    const auto isSigned = package.isSigned(publicKey, item.packageSignature);
    if (!isSigned) {
        return failure(notKept(isSigned.error()));
    }
    if (!*isSigned) {
        return failure(SoftwareUpdateError{Case::packageNotSigned, {}, 0});
    }
    if (control.isAbandoned()) {
        return failure(notKept(PlatformError{u"Nobody waits for it any more"_s}));
    }
    auto path = package.keepAs(fileName(item));
    if (!path) {
        return failure(notKept(path.error()));
    }
    return std::move(*path);
}

} // namespace

PackageDownloader::PackageDownloader(HttpLoading &session, QString folder, QByteArray publicKey)
    : m_session(session)
    , m_folder(std::move(folder))
    , m_publicKey(std::move(publicKey))
{}

Task<Result<QString, SoftwareUpdateError>> PackageDownloader::download(AppcastItem item,
                                                                       Progress progress)
{
    auto body = co_await loadOverHttps(&m_session, item.packageURL);
    if (!body) {
        co_return failure(body.error());
    }
    auto begin = [folder = m_folder](const WorkControl &) {
        return IncompletePackage::begin(folder);
    };
    auto beginning = m_worker.run(std::move(begin));
    auto begun = co_await std::move(beginning);
    if (!begun) {
        SoftwareUpdateError refused = notKept(begun.error());
        co_return failure(std::move(refused));
    }
    const Package package = std::move(*begun);
    std::int64_t received = 0;
    while (auto part = co_await body->next()) {
        if (!*part) {
            SoftwareUpdateError lost = unreachable(part->error());
            co_return failure(std::move(lost));
        }
        received += (*part)->size();
        if (received > item.packageLength) {
            break;
        }
        auto append = [package, bytes = **part](const WorkControl &) {
            return package->append(bytes);
        };
        auto appending = m_worker.run(std::move(append));
        const auto appended = co_await std::move(appending);
        if (!appended) {
            SoftwareUpdateError refused = notKept(appended.error());
            co_return failure(std::move(refused));
        }
        progress(received);
    }
    if (received != item.packageLength) {
        SoftwareUpdateError otherLength{Case::packageOfOtherLength, {}, 0};
        co_return failure(std::move(otherLength));
    }
    auto keep = [package, item, publicKey = m_publicKey](const WorkControl &control) {
        return keepIfSigned(*package, item, publicKey, control);
    };
    auto keeping = m_worker.run(std::move(keep));
    co_return co_await std::move(keeping);
}

} // namespace vantrel
