#pragma once

#include "SampleAnswers.h"

#include <QByteArray>
#include <QString>
#include <QTcpServer>

#include <functional>

class QTcpSocket;

namespace vantrel::test {

/// A provider on the loopback interface whose answers a test writes itself, to fail in a way of its
/// own. Thread: its own event loop's.
class OwnProvider
{
public:
    /// Answers one whole request: its connection, its bytes, and what it asks.
    using Answer =
        std::function<void(QTcpSocket *, const QByteArray &, const sample::SampleQuestion &)>;

    explicit OwnProvider(Answer answer);

    [[nodiscard]] QString baseURL() const;

    /// What the sample provider would answer, to the end of the connection.
    static void answerAsSample(QTcpSocket *socket, const sample::SampleQuestion &question);

    /// The first chunk of a streamed reply.
    [[nodiscard]] static QByteArray chunk(const QString &content);

private:
    void takeConnection();

    Answer m_answer;
    QTcpServer m_server{};
};

} // namespace vantrel::test
