#pragma once

#include <QByteArray>
#include <QFile>
#include <QList>
#include <QString>

namespace vantrel::test {

/// A time in which the interface thread took no event, in milliseconds.
struct Stretch
{
    double wall = 0;
    double processor = 0; ///< In which the thread ran.
    double queued = 0;    ///< In which it waited for a processor, which is not its fault.
    QString stack{};

    [[nodiscard]] double own() const { return wall - queued; }
};

/// What the application's own watchdog writes.
class WatchdogLog
{
public:
    explicit WatchdogLog(const QString &file);

    /// Takes what has come since the last call.
    void read();

    /// All so far.
    [[nodiscard]] const QList<Stretch> &stretches() const { return m_stretches; }

    /// In bytes: what is allocated; and how often that was told.
    [[nodiscard]] qint64 heap() const { return m_heap; }
    [[nodiscard]] int heapCount() const { return m_heapCount; }

    /// The signal and the stack of a crash; empty while there was none.
    [[nodiscard]] const QString &crash() const { return m_crash; }

private:
    void take(const QString &line);

    QFile m_file;
    QByteArray m_partOfLine{};
    QList<Stretch> m_stretches{};
    QString m_stack{};
    qint64 m_heap = 0;
    int m_heapCount = 0;
    QString m_crash{};
};

} // namespace vantrel::test
