#pragma once

#include "models/TextSlice.h"

#include <cstdint>
#include <optional>

namespace vantrel {

/// `filler` is the empty cell opposite a line that has no partner on the other side.
enum class DiffLineKind : std::uint8_t { context, addition, deletion, filler };

/// One cell of a side-by-side row.
struct DiffLine
{
    std::optional<std::int64_t> number{}; ///< The line's number on its side; none for a filler.
    TextSlice text{};                     ///< Empty for a filler.
    DiffLineKind kind = DiffLineKind::context;

    bool operator==(const DiffLine &) const = default;
};

/// One row of a hunk: the old side on the left, the new side on the right.
struct DiffRow
{
    std::int64_t id = 0; ///< Position within its hunk, from 0; identifies the row.
    DiffLine left{};
    DiffLine right{};

    bool operator==(const DiffRow &) const = default;
};

} // namespace vantrel

Q_DECLARE_TYPEINFO(vantrel::DiffLine, Q_RELOCATABLE_TYPE);
Q_DECLARE_TYPEINFO(vantrel::DiffRow, Q_RELOCATABLE_TYPE);
