#pragma once

#include "platform/Result.h"
#include "platform/jobs/SerialWorker.h"
#include "platform/jobs/Task.h"
#include "updates/Appcast.h"
#include "updates/SoftwareUpdateError.h"

#include <QByteArray>
#include <QString>

#include <cstdint>
#include <functional>

namespace vantrel {

class HttpLoading;

/// Downloads packages into a folder of its own, where only one that is whole and signed stays,
/// until the next download begins. Nothing here runs or installs it. Thread: interface; the disk
/// and the check of the signature are a worker's.
class PackageDownloader final
{
public:
    /// Told how many bytes have come so far.
    using Progress = std::function<void(std::int64_t receivedBytes)>;

    /// `session` must outlive the downloader, and the downloader its tasks.
    PackageDownloader(HttpLoading &session, QString folder, QByteArray publicKey);

    /// Gives the path of the package. Dropping the task ends the download and leaves nothing.
    [[nodiscard]] Task<Result<QString, SoftwareUpdateError>> download(AppcastItem item,
                                                                      Progress progress);

private:
    HttpLoading &m_session;
    QString m_folder;
    QByteArray m_publicKey;
    SerialWorker m_worker;
};

} // namespace vantrel
