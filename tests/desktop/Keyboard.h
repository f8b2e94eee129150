#pragma once

#include <QString>

namespace vantrel::test {

/// Gives the keyboard to the window of this title, as a window manager would.
void activateWindow(const QString &title);

/// Presses one key, alone or with others held, in the window that has the keyboard: "Return",
/// "alt+Left".
void pressKey(const QString &combination);

/// Types letters of ASCII.
void typeText(const QString &text);

} // namespace vantrel::test
