#include "views/WindowActivation.h"

#include <QWindow>

namespace vantrel {

void activateWindow(QWindow &window, const StartRequest &)
{
    window.setWindowStates(window.windowStates() & ~Qt::WindowMinimized);
    window.raise();
    window.requestActivate();
}

} // namespace vantrel
