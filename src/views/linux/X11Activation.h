#pragma once

#include <QByteArray>

class QWindow;

namespace vantrel {

/// Asks an X window manager for the front, as of the person's click if `startupId` tells its time,
/// otherwise as of now: Qt would ask as of what the application saw last, and a window manager that
/// guards the front refuses what is older than the last key in another window. Also tells the
/// launcher that the start of this identifier, if there is one, is over. Does nothing where the
/// display is no X server's. Thread: interface.
void activateX11Window(const QWindow &window, const QByteArray &startupId);

} // namespace vantrel
