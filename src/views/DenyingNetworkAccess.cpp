#include "views/DenyingNetworkAccess.h"

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QTimer>

namespace vantrel {

using namespace Qt::Literals::StringLiterals;

namespace {

class DeniedReply final : public QNetworkReply
{
    Q_OBJECT

public:
    DeniedReply(QNetworkAccessManager::Operation operation, const QNetworkRequest &request,
                QObject *parent)
        : QNetworkReply(parent)
    {
        setRequest(request);
        setUrl(request.url());
        setOperation(operation);
        setError(ContentAccessDenied, u"Views fetch nothing."_s);
        setFinished(true);
        QTimer::singleShot(0, this, [this] {
            Q_EMIT errorOccurred(ContentAccessDenied);
            Q_EMIT finished();
        });
    }

    void abort() override {}

protected:
    qint64 readData(char *, qint64) override { return -1; }
};

class DenyingManager final : public QNetworkAccessManager
{
    Q_OBJECT

public:
    using QNetworkAccessManager::QNetworkAccessManager;

protected:
    QNetworkReply *createRequest(Operation operation, const QNetworkRequest &request,
                                 QIODevice *) override
    {
        return new DeniedReply(operation, request, this);
    }
};

} // namespace

QNetworkAccessManager *DenyingNetworkAccess::create(QObject *parent)
{
    return new DenyingManager(parent);
}

} // namespace vantrel

#include "DenyingNetworkAccess.moc"
