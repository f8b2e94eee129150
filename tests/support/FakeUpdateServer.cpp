#include "support/FakeUpdateServer.h"

#include <utility>

namespace vantrel::test {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int success = 200;

QUrl feedURL()
{
    return QUrl(u"https://updates.test/appcast.xml"_s);
}

HttpBody bodyOf(QByteArray bytes)
{
    HttpBody::Item item = std::move(bytes);
    co_yield std::move(item);
}

} // namespace

UpdaterConfiguration FakeUpdateServer::configuration() const
{
    return m_maker.configuration(feedURL());
}

void FakeUpdateServer::offer(const QString &version, const QString &notes)
{
    m_version = version;
    m_notes = notes;
    m_refusal.reset();
    m_changed.wakeAll();
}

void FakeUpdateServer::refuse(int status)
{
    m_refusal = status;
    m_changed.wakeAll();
}

void FakeUpdateServer::setPackagePart(double part)
{
    m_packagePart = part;
    m_changed.wakeAll();
}

Task<Result<HttpResponse, PlatformError>> FakeUpdateServer::load(HttpRequest request)
{
    while (!m_version && !m_refusal) {
        co_await m_changed.wait();
    }
    if (m_refusal) {
        HttpResponse refusal{*m_refusal, bodyOf({}), {}};
        co_return std::move(refusal);
    }
    if (request.url == feedURL()) {
        HttpResponse answer{success, bodyOf(feed()), {}};
        co_return std::move(answer);
    }
    HttpResponse answer{success, packageBody(), {}};
    co_return std::move(answer);
}

QByteArray FakeUpdateServer::feed() const
{
    SampleItem item;
    item.version = m_version.value_or(QString());
    item.notes = m_notes;
    item.packageURL = QUrl(u"https://updates.test/vantrel.deb"_s);
    item.package = m_package;
    return m_maker.signedFeed(m_maker.feed({item}));
}

HttpBody FakeUpdateServer::packageBody()
{
    qsizetype sent = 0;
    while (sent < m_package.size()) {
        const auto end = qsizetype(m_packagePart * double(m_package.size()));
        if (end > sent) {
            HttpBody::Item part = m_package.sliced(sent, end - sent);
            sent = end;
            co_yield std::move(part);
        } else {
            co_await m_changed.wait();
        }
    }
}

} // namespace vantrel::test
