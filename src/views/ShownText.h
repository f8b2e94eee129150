#pragma once

#include <QString>
#include <QStringView>

namespace vantrel {

/// What a view shows of a text that may be of any size: its first 20,000 characters, and an
/// ellipsis when there are more. A run of characters that offers no place to break gets one
/// (a zero-width space) every 200 characters, since the layout of such a run takes quadratic time.
[[nodiscard]] QString shownText(QStringView text);

} // namespace vantrel
