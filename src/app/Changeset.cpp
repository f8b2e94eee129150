#include "app/Changeset.h"

#include "models/FileChange.h"

namespace vantrel {

Changeset::Changeset(const QList<FileChange> &files)
    : entries(changesetEntries(files))
    , key(entries)
{}

} // namespace vantrel
