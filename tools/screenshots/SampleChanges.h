#pragma once

#include "models/FileChange.h"
#include "models/HunkExplanation.h"
#include "models/Repo.h"

#include <QHash>
#include <QList>
#include <QString>

namespace vantrel::screenshots {

/// The folder of the person in the pictures, with a slash at its end. It need not exist.
[[nodiscard]] QString sampleHome();

/// The repository that every picture shows. It exists nowhere.
[[nodiscard]] Repo sampleRepository();

/// Its ten changed files, in the order of a listing.
[[nodiscard]] QList<FileChange> sampleFiles();

/// The rows of `sampleFiles()` that the pictures open.
enum class SampleRow { withoutText = 1, tokenStore = 5 };

/// What the model says of each file that has text, by path.
[[nodiscard]] QHash<QString, QString> sampleSummaries();

/// And of all of them.
[[nodiscard]] QString sampleNarrative();

/// What the model says of the hunks of the file at `SampleRow::tokenStore`, in their order.
[[nodiscard]] QList<HunkExplanation> sampleExplanations();

} // namespace vantrel::screenshots
