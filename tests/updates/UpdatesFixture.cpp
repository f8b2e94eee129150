#include "updates/UpdatesFixture.h"

#include <QDir>

namespace vantrel::test {

using namespace Qt::Literals::StringLiterals;

void UpdatesTest::answer(const QByteArray &body)
{
    server.answer(ServerScript().send(httpAnswer(200, body)));
}

void UpdatesTest::redirect(const QByteArray &location, int status)
{
    server.answer(ServerScript().send(httpAnswer(status, {}, "Location: " + location + "\r\n")));
}

SampleItem UpdatesTest::sampleItem(const QString &version) const
{
    SampleItem item;
    item.version = version;
    item.packageURL = server.url(u"/vantrel.deb"_s);
    item.package = package;
    return item;
}

QByteArray UpdatesTest::signedFeed(const QList<SampleItem> &items) const
{
    return maker.signedFeed(maker.feed(items));
}

QStringList UpdatesTest::keptFiles() const
{
    return QDir(packageFolder)
        .entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
}

QList<QByteArray> UpdatesTest::askedFor() const
{
    QList<QByteArray> targets;
    for (const ReceivedRequest &request : server.requests()) {
        targets.append(request.target);
    }
    return targets;
}

} // namespace vantrel::test
