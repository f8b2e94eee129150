#pragma once

#include "platform/instance/StartRequest.h"

class QWindow;

namespace vantrel {

/// Brings the window to the front, out of the task bar if it lies there. A desktop that lets no
/// window push itself forward does so for the word that it gave to the start. Thread: interface.
void activateWindow(QWindow &window, const StartRequest &request = {});

} // namespace vantrel
