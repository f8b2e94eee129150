#pragma once

#include <QString>
#include <QStringList>

namespace vantrel {

/// What the model says of one hunk.
struct HunkExplanation
{
    QString tag{}; ///< The one-word category of the change.
    QString explanation{};
    QStringList points{};
    QStringList suggestedQuestions{};

    bool operator==(const HunkExplanation &) const = default;
};

} // namespace vantrel
