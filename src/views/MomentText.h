#pragma once

#include <QDateTime>
#include <QString>

namespace vantrel {

/// A moment of the past in the fewest words that tell it apart: "Today, 09:42", "Yesterday", the
/// day of the week within six days, "14 November" within the year, else "14 November 2025". Both
/// times are read in the zone of `now`. A moment that is still to come, as after a clock was set
/// back, is told by its date.
[[nodiscard]] QString momentText(const QDateTime &moment, const QDateTime &now);

} // namespace vantrel
