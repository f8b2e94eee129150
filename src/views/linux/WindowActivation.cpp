#include "views/WindowActivation.h"

#include "views/linux/X11Activation.h"

#include <QGuiApplication>
#include <QWindow>

namespace vantrel {

using namespace Qt::Literals::StringLiterals;

void activateWindow(QWindow &window, const StartRequest &request)
{
    if (!request.activationToken.isEmpty() &&
        QGuiApplication::platformName().startsWith("wayland"_L1)) {
        // Where Qt looks for it, and takes it away.
        qputenv("XDG_ACTIVATION_TOKEN", request.activationToken.toLatin1());
    }
    window.setWindowStates(window.windowStates() & ~Qt::WindowMinimized);
    window.raise();
    window.requestActivate();
    activateX11Window(window, request.startupId.toLatin1());
}

} // namespace vantrel
