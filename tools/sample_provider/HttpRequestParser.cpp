#include "HttpRequestParser.h"

#include <QList>

namespace vantrel::sample {

namespace {

constexpr qsizetype maxHeadBytes = qsizetype(64) * 1024;
constexpr qsizetype maxBodyBytes = qsizetype(64) * 1024 * 1024;

} // namespace

HttpRequestParser::Outcome HttpRequestParser::next(ReceivedRequest &request)
{
    const qsizetype headEnd = m_buffer.indexOf("\r\n\r\n");
    if (headEnd < 0) {
        return m_buffer.size() > maxHeadBytes ? Outcome::invalid : Outcome::incomplete;
    }
    const QList<QByteArray> lines = m_buffer.first(headEnd).split('\n');
    const QList<QByteArray> requestLine = lines.first().trimmed().split(' ');
    if (requestLine.size() != 3 || !requestLine.at(2).startsWith("HTTP/1.")) {
        return Outcome::invalid;
    }
    ReceivedRequest received;
    received.method = requestLine.at(0);
    received.path = requestLine.at(1);
    qsizetype bodyBytes = 0;
    for (qsizetype i = 1; i < lines.size(); ++i) {
        const QByteArray line = lines.at(i).trimmed();
        const qsizetype colon = line.indexOf(':');
        const QByteArray name = line.first(qMax<qsizetype>(colon, 0)).toLower();
        if (name == "authorization") {
            received.hasAuthorization = true;
        } else if (name == "content-length") {
            bool isNumber = false;
            bodyBytes = line.sliced(colon + 1).trimmed().toLongLong(&isNumber);
            if (!isNumber || bodyBytes < 0 || bodyBytes > maxBodyBytes) {
                return Outcome::invalid;
            }
        }
    }
    const qsizetype bodyBegin = headEnd + 4;
    if (m_buffer.size() < bodyBegin + bodyBytes) {
        return Outcome::incomplete;
    }
    received.body = m_buffer.sliced(bodyBegin, bodyBytes);
    m_buffer.remove(0, bodyBegin + bodyBytes);
    request = received;
    return Outcome::complete;
}

} // namespace vantrel::sample
