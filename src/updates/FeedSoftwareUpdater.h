#pragma once

#include "platform/jobs/Job.h"
#include "platform/jobs/Task.h"
#include "updates/Appcast.h"
#include "updates/PackageDownloader.h"
#include "updates/SoftwareUpdating.h"
#include "updates/UpdaterConfiguration.h"

#include <QString>
#include <QUrl>

#include <cstdint>
#include <functional>

namespace vantrel {

class HttpLoading;
template<typename Object>
class StateStep;

/// Updates by a signed feed, for systems whose packages another program installs: asks the feed,
/// shows what is new, downloads and checks the package, and hands it to the system's installer. It
/// goes to the network only when a person asks, and runs nothing of what it downloads. What the
/// window shows is all here. Thread: interface.
class FeedSoftwareUpdater final : public vantrel::SoftwareUpdating
{
    Q_OBJECT
    Q_PROPERTY(bool isChecking READ isChecking NOTIFY phaseChanged)
    Q_PROPERTY(bool isAvailable READ isAvailable NOTIFY phaseChanged)
    Q_PROPERTY(bool isDownloading READ isDownloading NOTIFY phaseChanged)
    Q_PROPERTY(bool isReady READ isReady NOTIFY phaseChanged)
    Q_PROPERTY(bool isFailed READ isFailed NOTIFY phaseChanged)
    Q_PROPERTY(QString headline READ headline NOTIFY phaseChanged)
    Q_PROPERTY(QString explanation READ explanation NOTIFY phaseChanged)
    Q_PROPERTY(QString notes READ notes NOTIFY phaseChanged)
    Q_PROPERTY(QString errorMessage READ errorMessage NOTIFY errorMessageChanged)
    Q_PROPERTY(double progress READ progress NOTIFY progressChanged)
    Q_PROPERTY(QString progressText READ progressText NOTIFY progressTextChanged)

public:
    enum class Phase { idle, checking, upToDate, available, downloading, ready, failed };

    struct Services
    {
        HttpLoading &session; ///< Must outlive the updater.
        UpdaterConfiguration configuration;
        QString runningVersion; ///< As `readVersion` takes it.
        QString packageFolder;  ///< Where downloads lie; nothing else may.

        /// Opens a file or folder in the program that the system has for it, and tells whether it
        /// did.
        std::function<bool(const QUrl &url)> openURL;
    };

    explicit FeedSoftwareUpdater(Services services, QObject *parent = nullptr);
    ~FeedSoftwareUpdater() override;

    [[nodiscard]] bool canCheckForUpdates() const override;

    [[nodiscard]] Phase phase() const { return m_phase; }
    [[nodiscard]] bool isChecking() const { return m_phase == Phase::checking; }
    [[nodiscard]] bool isAvailable() const { return m_phase == Phase::available; }
    [[nodiscard]] bool isDownloading() const { return m_phase == Phase::downloading; }
    [[nodiscard]] bool isReady() const { return m_phase == Phase::ready; }
    [[nodiscard]] bool isFailed() const { return m_phase == Phase::failed; }

    [[nodiscard]] QString headline() const;
    [[nodiscard]] QString explanation() const;
    [[nodiscard]] QString notes() const; ///< Of the available version; may be empty.
    [[nodiscard]] const QString &errorMessage() const { return m_errorMessage; }
    [[nodiscard]] double progress() const { return m_progress; } ///< From 0 to 1.
    [[nodiscard]] const QString &progressText() const { return m_progressText; }

    /// Asks for the window, and checks unless something is under way.
    Q_INVOKABLE void checkForUpdates() override;

    /// Downloads the available version.
    Q_INVOKABLE void download();

    /// Does again what failed.
    Q_INVOKABLE void tryAgain();

    /// Hand the package over, or show where it lies.
    Q_INVOKABLE void openInstaller();
    Q_INVOKABLE void showInFolder();

    /// For the end of the window: ends what is under way. A package that is ready stays where it is
    /// until the next download.
    Q_INVOKABLE void dismiss();

Q_SIGNALS:
    void windowRequested();
    void phaseChanged();
    void errorMessageChanged();
    void progressChanged();
    void progressTextChanged();

private:
    using StateStep = vantrel::StateStep<FeedSoftwareUpdater>;

    [[nodiscard]] bool hasItem() const { return m_item.packageLength > 0; }

    void show(Phase phase, StateStep &step);
    void fail(const QString &message);
    void beginCheck();
    void showProgress(std::int64_t receivedBytes, StateStep &step);
    void open(const QUrl &url, const QString &refusal);

    Task<> runCheck();
    Task<> runDownload();

    Services m_services;
    PackageDownloader m_downloader;
    Phase m_phase = Phase::idle;
    AppcastItem m_item{};    ///< Of the phases from `available` on; without a package before.
    QString m_packagePath{}; ///< Of the phase `ready`.
    QString m_errorMessage{};
    double m_progress = 0;
    QString m_progressText{};
    Job m_task{};
};

} // namespace vantrel
