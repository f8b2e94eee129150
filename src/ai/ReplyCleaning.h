#pragma once

#include <QChar>
#include <QString>

namespace vantrel {

/// The trimmed text without the Markdown code fence that a model may put around JSON.
[[nodiscard]] QString withoutCodeFence(const QString &text);

/// The part from the first `opening` through the last `closing` character; the whole text when
/// there is no such part.
[[nodiscard]] QString outermost(const QString &text, QChar opening, QChar closing);

} // namespace vantrel
