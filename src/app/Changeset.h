#pragma once

#include "ai/ChangesetKey.h"

#include <QList>

namespace vantrel {

struct FileChange;

/// What a narrative is asked about. Making one writes every line of the change set, so it is made
/// on a worker and handed on; copies share the texts.
struct Changeset
{
    explicit Changeset(const QList<FileChange> &files);
    Changeset() = default;

    QList<ChangesetKey::Entry> entries{}; ///< In list order; files without hunks are none.
    ChangesetKey key{};

    bool operator==(const Changeset &) const = default;
};

} // namespace vantrel
