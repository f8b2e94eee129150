#pragma once

#include "Faults.h"
#include "HttpRequestParser.h"
#include "SampleAnswers.h"

#include <QObject>
#include <QString>
#include <QTcpServer>

#include <functional>
#include <optional>
#include <vector>

class QTcpSocket;

namespace vantrel::sample {

/// The sample provider on the loopback interface. Thread: its own event loop's.
class SampleServer final : public QObject
{
    Q_OBJECT

public:
    struct Options
    {
        quint16 port = 0;  ///< 0: the system chooses.
        int delayMs = 15;  ///< Between two chunks of a streamed answer.
        int status = 0;    ///< Answers every request with this status; 0: answers it.
        QString logFile{}; ///< One line of JSON per request; empty: none.
        std::function<QString(const SampleQuestion &)> answer = answerTo;
        std::optional<Faults> faults{}; ///< Misbehaves by these; nothing: never.
    };

    explicit SampleServer(Options options, QObject *parent = nullptr);

    /// Listens on 127.0.0.1 and, where there is IPv6, on ::1 with the same port.
    [[nodiscard]] bool listen();
    [[nodiscard]] quint16 port() const { return m_ipv4.serverPort(); }
    [[nodiscard]] QString errorString() const { return m_ipv4.errorString(); }

private:
    void takeConnections(QTcpServer &server);
    void answer(QTcpSocket *socket, const ReceivedRequest &request);
    void log(const ReceivedRequest &request, Fault fault) const;

    Options m_options;
    QTcpServer m_ipv4{};
    QTcpServer m_ipv6{};
};

} // namespace vantrel::sample
