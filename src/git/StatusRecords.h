#pragma once

#include "models/FileChange.h"
#include "models/TextSlice.h"

#include <QList>

namespace vantrel {

/// The files in the output of `git status --porcelain=v1 -z --no-renames`, in git's order, without
/// hunks and counts. A path that git lists twice (taken out of the index and still there) keeps its
/// first record.
[[nodiscard]] QList<FileChange> parseStatusRecords(const TextSlice &output);

} // namespace vantrel
