#pragma once

#include "Chance.h"
#include "ChangingRepository.h"
#include "ProcessReading.h"
#include "WatchdogLog.h"
#include "desktop/Desktop.h"
#include "integration/SampleProcesses.h"

#include <QDeadlineTimer>
#include <QElapsedTimer>
#include <QFile>
#include <QMap>
#include <QTcpServer>

#include <memory>
#include <optional>

namespace vantrel::test {

/// What the application held when nothing was under way: on the picker, with no window, question,
/// child process or connection left.
struct QuietPoint
{
    int step = 0;
    double seconds = 0;
    qint64 heap = 0;          ///< Bytes.
    qint64 conversations = 0; ///< Bytes of it that hold the conversations which are kept.
    ProcessReading reading{};
};

/// A walk at random through the whole application, by the accessibility bus and the keyboard, while
/// its provider misbehaves and its repositories change. What it chooses follows from the seed; what
/// there is to choose from depends on how far the application is, so a repeated walk is like the
/// first one, but not the same.
class Walk
{
public:
    struct Settings
    {
        std::uint32_t seed = 1;
        double minutes = 0; ///< Ends after this time,
        int steps = 0;      ///< or after these steps when there are any.
        int stepsBetweenQuietPoints = 40;
        QString logFolder{};
    };

    explicit Walk(const Settings &settings);
    Walk(const Walk &) = delete;
    Walk &operator=(const Walk &) = delete;
    ~Walk();

    /// Walks, and quits the application.
    void run();

    /// What was not as it must be; empty after a good walk.
    [[nodiscard]] const QStringList &findings() const { return m_findings; }

    /// What was done and seen, as a table.
    [[nodiscard]] QString report() const;

private:
    using Items = QList<ShownItem>;

    void start();
    void step();
    bool checkApplication();
    void judgeQuietPoints();
    void judgeEnd(const ProcessRun &ended);

    void useControl();
    void pressRandomKey();
    void typeIntoField();
    void resizeWindow();
    void changeRepository();
    void restartProvider();
    void openSettings();
    void chooseSampleAgain();
    void openRecent();
    void askQuestion();

    /// Goes to the picker and waits until nothing is under way.
    void beQuiet();
    bool goHome();
    bool takeStepHome(const Items &items);
    void escapeFrom(const Items &items, qsizetype place);

    std::optional<Items> read();
    [[nodiscard]] std::optional<Items> readUntil(const std::function<bool(const Items &)> &isSo);
    bool tryPress(const Items &items, const QString &role, const QString &name);
    void fill(const ShownItem &field, const QString &text);
    void activateSomeWindow(const Items &items);
    void noteScreen(const Items &items);
    void find(const QString &finding);
    void log(const QString &line);
    [[nodiscard]] bool isOver() const;
    [[nodiscard]] double seconds() const { return double(m_time.elapsed()) / 1000; }

    Settings m_settings;
    Chance m_chance;
    QTemporaryDir m_folder{};
    QFile m_log{};
    QElapsedTimer m_time{};
    QList<std::shared_ptr<ChangingRepository>> m_repositories{};
    QTcpServer m_signInSite{};
    std::optional<SampleProvider> m_provider{};
    QString m_watchdogFile{};
    WatchdogLog m_watchdog;
    Desktop m_desktop{};

    int m_step = 0;
    bool m_hasEnded = false;
    std::uint32_t m_providerCount = 0;
    qsizetype m_errorsRead = 0;
    qsizetype m_stretchesRead = 0;
    QStringList m_findings{};
    QMap<QString, int> m_stepCounts{};
    QMap<QString, int> m_screens{};
    QMap<QString, int> m_served{};
    QMap<QString, int> m_errorLines{};
    QList<QuietPoint> m_quietPoints{};
};

} // namespace vantrel::test
