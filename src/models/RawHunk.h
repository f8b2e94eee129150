#pragma once

#include "models/TextSlice.h"

#include <QList>

#include <cstdint>

namespace vantrel {

enum class RawLineKind : std::uint8_t { context, addition, deletion };

/// One line of a hunk's body, without its one-character prefix.
struct RawDiffLine
{
    RawLineKind kind = RawLineKind::context;
    TextSlice text{};

    bool operator==(const RawDiffLine &) const = default;
};

static_assert(sizeof(RawDiffLine) <= 32, "a listing holds one for every changed line");

/// One hunk as parsed from git's unified diff text.
struct RawHunk
{
    TextSlice header{};        ///< The whole line that begins with "@@", verbatim.
    std::int64_t oldStart = 0; ///< First line number on the old side.
    std::int64_t newStart = 0; ///< First line number on the new side.
    QList<RawDiffLine> lines{};

    bool operator==(const RawHunk &) const = default;
};

} // namespace vantrel

Q_DECLARE_TYPEINFO(vantrel::RawDiffLine, Q_RELOCATABLE_TYPE);
Q_DECLARE_TYPEINFO(vantrel::RawHunk, Q_RELOCATABLE_TYPE);
