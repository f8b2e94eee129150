#pragma once

#include <QString>
#include <QStringList>

namespace vantrel {

/// The questions in a model's reply, which ought to be a JSON array of strings: trimmed, without
/// blank ones and exact repeats, in their order. A reply of another form holds none.
[[nodiscard]] QStringList parseSuggestedQuestions(const QString &reply);

} // namespace vantrel
