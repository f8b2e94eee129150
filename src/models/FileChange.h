#pragma once

#include "models/ChangeStatus.h"
#include "models/LoadableState.h"
#include "models/RawHunk.h"

#include <QList>
#include <QString>

#include <cstdint>

namespace vantrel {

/// One changed file of the working tree. Its path identifies it; a path occurs once in a listing.
struct FileChange
{
    QString
        path{}; ///< Relative to the repository root, as git prints it: forward slashes, unquoted.
    ChangeStatus status = ChangeStatus::modified;
    bool isUntracked = false;              ///< Not known to git.
    std::int64_t additions = 0;            ///< Lines of kind `addition` over all hunks.
    std::int64_t deletions = 0;            ///< Lines of kind `deletion` over all hunks.
    QList<RawHunk> hunks{};                ///< In diff order.
    LoadableState<QString> summaryState{}; ///< The one-sentence summary of this file.

    bool operator==(const FileChange &) const = default;
};

} // namespace vantrel
