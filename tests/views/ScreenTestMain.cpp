#include "ScreenDriver.h"

#include "platform/jobs/RunQueue.h"
#include "views/DenyingNetworkAccess.h"
#include "views/IconProvider.h"

#include <QQmlContext>
#include <QQmlEngine>
#include <QQmlExtensionPlugin>
#include <QQuickWindow>
#include <QtQuickTest>

Q_IMPORT_QML_PLUGIN(VantrelPlugin)

namespace vantrel::test {

using namespace Qt::Literals::StringLiterals;

/// Gives each test file's engine what the application gives its own, and the driver.
class ScreenTestSetup : public QObject
{
    Q_OBJECT

public Q_SLOTS:
    void applicationAvailable()
    {
        QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
        RunQueue::interfaceThread();
    }

    void qmlEngineAvailable(QQmlEngine *engine)
    {
        engine->addImportPath(u"qrc:/qt/qml"_s);
        engine->addImageProvider(u"icon"_s, new IconProvider);
        engine->setNetworkAccessManagerFactory(&m_networkAccess);
        engine->rootContext()->setContextProperty(u"driver"_s, new ScreenDriver(engine));
    }

private:
    DenyingNetworkAccess m_networkAccess{};
};

} // namespace vantrel::test

QUICK_TEST_MAIN_WITH_SETUP(vantrel_screens, vantrel::test::ScreenTestSetup)

#include "ScreenTestMain.moc"
