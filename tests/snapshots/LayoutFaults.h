#pragma once

#include <QString>
#include <QStringList>

class QQuickWindow;

namespace vantrel::test {

/// What does not fit in a window, one sentence for each fault, which names the item:
///
/// - a text that is cut without an ellipsis: it needs more room than it has, and neither elides nor
///   wraps into it;
/// - words, buttons or fields that lie over each other, unless one is a part of the other or
/// belongs
///   to a dialog, menu or tool tip, which lie over others by their nature;
/// - words, buttons or fields that reach out of the window, or sideways out of a view that scrolls
///   only up and down.
///
/// The window must have been drawn since its last change.
[[nodiscard]] QStringList layoutFaults(const QQuickWindow &window);

} // namespace vantrel::test
