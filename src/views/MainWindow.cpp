#include "views/MainWindow.h"

#include "app/RootViewModel.h"
#include "views/IconProvider.h"
#include "views/SystemAppearance.h"

#include <QFontDatabase>
#include <QQuickWindow>

namespace vantrel {

using namespace Qt::Literals::StringLiterals;

MainWindow::MainWindow(RootViewModel &viewModel, SystemAppearance &appearance, bool reducesMotion)
{
    m_engine.setNetworkAccessManagerFactory(&m_networkAccess);
    m_engine.addImageProvider(u"icon"_s, new IconProvider);
    m_engine.addImportPath(u"qrc:/qt/qml"_s);
    QVariantMap properties{
        {u"viewModel"_s, QVariant::fromValue(&viewModel)},
        {u"appearance"_s, QVariant::fromValue(&appearance)},
        {u"uiFamily"_s, QFontDatabase::systemFont(QFontDatabase::GeneralFont).family()},
        {u"codeFamily"_s, QFontDatabase::systemFont(QFontDatabase::FixedFont).family()},
    };
    if (reducesMotion) {
        properties.insert(u"reducesMotion"_s, true);
    }
    m_engine.setInitialProperties(properties);
    m_engine.load(QUrl(u"qrc:/qt/qml/Vantrel/Main.qml"_s));
    m_window = qobject_cast<QQuickWindow *>(m_engine.rootObjects().value(0));
}

MainWindow::~MainWindow() = default;

} // namespace vantrel
