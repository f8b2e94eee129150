#include "updates/FeedSoftwareUpdater.h"

#include "platform/StateStep.h"
#include "platform/jobs/RunQueue.h"
#include "updates/UpdateFeed.h"

#include <QFileInfo>
#include <QLocale>

#include <utility>

namespace vantrel {

using namespace Qt::Literals::StringLiterals;

namespace {

QString sizeText(std::int64_t bytes)
{
    return QLocale().formattedDataSize(bytes, 1, QLocale::DataSizeSIFormat);
}

} // namespace

FeedSoftwareUpdater::FeedSoftwareUpdater(Services services, QObject *parent)
    : SoftwareUpdating(parent)
    , m_services(std::move(services))
    , m_downloader(m_services.session, m_services.packageFolder, m_services.configuration.publicKey)
{}

FeedSoftwareUpdater::~FeedSoftwareUpdater() = default;

bool FeedSoftwareUpdater::canCheckForUpdates() const
{
    return !isChecking() && !isDownloading();
}

QString FeedSoftwareUpdater::headline() const
{
    switch (m_phase) {
    case Phase::idle:
        return {};
    case Phase::checking:
        return u"Checking for updates…"_s;
    case Phase::upToDate:
        return u"Vantrel is up to date"_s;
    case Phase::available:
        return u"Vantrel "_s + m_item.versionName + u" is available"_s;
    case Phase::downloading:
        return u"Downloading Vantrel "_s + m_item.versionName + u"…"_s;
    case Phase::ready:
        return u"Vantrel "_s + m_item.versionName + u" is ready to install"_s;
    case Phase::failed:
        return hasItem() ? u"Couldn't download the update"_s : u"Couldn't check for updates"_s;
    }
    Q_UNREACHABLE();
}

QString FeedSoftwareUpdater::explanation() const
{
    switch (m_phase) {
    case Phase::upToDate:
        return u"Version "_s + m_services.runningVersion + u" is the newest."_s;
    case Phase::available:
        return u"You have version "_s + m_services.runningVersion + u". The download is "_s +
               sizeText(m_item.packageLength) + u"."_s;
    case Phase::ready:
        return u"The package bears the signature of Vantrel's makers. Your system's installer "
               "takes it from here and may ask for your password. Then quit Vantrel and start it "
               "again."_s;
    case Phase::idle:
    case Phase::checking:
    case Phase::downloading:
    case Phase::failed:
        return {};
    }
    Q_UNREACHABLE();
}

QString FeedSoftwareUpdater::notes() const
{
    return isAvailable() ? m_item.notes : QString();
}

void FeedSoftwareUpdater::checkForUpdates()
{
    VANTREL_ASSERT_UI_THREAD();
    if (canCheckForUpdates()) {
        beginCheck();
    }
    Q_EMIT windowRequested();
}

void FeedSoftwareUpdater::download()
{
    VANTREL_ASSERT_UI_THREAD();
    if (!(isAvailable() || isFailed()) || !hasItem()) {
        return;
    }
    StateStep step(*this);
    show(Phase::downloading, step);
    showProgress(0, step);
    m_task = Job(runDownload());
    step.publish();
}

void FeedSoftwareUpdater::tryAgain()
{
    VANTREL_ASSERT_UI_THREAD();
    if (!isFailed()) {
        return;
    }
    if (!hasItem()) {
        beginCheck();
    } else {
        download();
    }
}

void FeedSoftwareUpdater::openInstaller()
{
    open(QUrl::fromLocalFile(m_packagePath), u"Couldn't open your system's installer."_s);
}

void FeedSoftwareUpdater::showInFolder()
{
    open(QUrl::fromLocalFile(QFileInfo(m_packagePath).path()),
         u"Couldn't open your file manager."_s);
}

void FeedSoftwareUpdater::dismiss()
{
    VANTREL_ASSERT_UI_THREAD();
    m_task.cancel();
    m_item = {};
    StateStep step(*this);
    show(Phase::idle, step);
    step.publish();
}

void FeedSoftwareUpdater::show(Phase phase, StateStep &step)
{
    const bool couldCheck = canCheckForUpdates();
    step.set(m_phase, phase, &FeedSoftwareUpdater::phaseChanged);
    step.set(m_errorMessage, QString(), &FeedSoftwareUpdater::errorMessageChanged);
    if (couldCheck != canCheckForUpdates()) {
        step.announce(&FeedSoftwareUpdater::canCheckForUpdatesChanged);
    }
}

void FeedSoftwareUpdater::fail(const QString &message)
{
    StateStep step(*this);
    show(Phase::failed, step);
    step.set(m_errorMessage, message, &FeedSoftwareUpdater::errorMessageChanged);
    step.publish();
}

void FeedSoftwareUpdater::beginCheck()
{
    m_item = {};
    StateStep step(*this);
    show(Phase::checking, step);
    m_task = Job(runCheck());
    step.publish();
}

void FeedSoftwareUpdater::showProgress(std::int64_t receivedBytes, StateStep &step)
{
    step.set(m_progress, double(receivedBytes) / double(m_item.packageLength),
             &FeedSoftwareUpdater::progressChanged);
    step.set(m_progressText, sizeText(receivedBytes) + u" of "_s + sizeText(m_item.packageLength),
             &FeedSoftwareUpdater::progressTextChanged);
}

void FeedSoftwareUpdater::open(const QUrl &url, const QString &refusal)
{
    VANTREL_ASSERT_UI_THREAD();
    if (!isReady()) {
        return;
    }
    StateStep step(*this);
    const QString message =
        m_services.openURL(url) ? QString() : refusal + u" The package is "_s + m_packagePath;
    step.set(m_errorMessage, message, &FeedSoftwareUpdater::errorMessageChanged);
    step.publish();
}

Task<> FeedSoftwareUpdater::runCheck()
{
    const UpdateVersion running = readVersion(m_services.runningVersion).value_or(UpdateVersion());
    auto asking = newestUpdate(&m_services.session, m_services.configuration, running);
    const auto found = co_await std::move(asking);
    if (!found) {
        fail(found.error().description());
        co_return;
    }
    const std::optional<AppcastItem> &newer = *found;
    m_item = newer.value_or(AppcastItem());
    StateStep step(*this);
    show(newer ? Phase::available : Phase::upToDate, step);
    step.publish();
}

Task<> FeedSoftwareUpdater::runDownload()
{
    PackageDownloader::Progress progress = [this](std::int64_t receivedBytes) {
        StateStep step(*this);
        showProgress(receivedBytes, step);
        step.publish();
    };
    auto downloading = m_downloader.download(m_item, std::move(progress));
    const auto path = co_await std::move(downloading);
    if (!path) {
        fail(path.error().description());
        co_return;
    }
    m_packagePath = *path;
    StateStep step(*this);
    show(Phase::ready, step);
    step.publish();
}

} // namespace vantrel
