#pragma once

#include "models/DiffRow.h"
#include "models/HunkExplanation.h"
#include "models/LoadableState.h"

#include <QList>

#include <cstdint>

namespace vantrel {

/// One displayed hunk.
struct Hunk
{
    std::int64_t index = 0; ///< Position within its file, from 0; identifies the hunk.
    TextSlice header{};     ///< As in the raw hunk.
    QList<DiffRow> rows{};
    LoadableState<HunkExplanation> explanationState{};

    bool operator==(const Hunk &) const = default;
};

} // namespace vantrel
