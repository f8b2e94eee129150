#pragma once

#include "git/GitOverrides.h"
#include "git/RepositoryProgram.h"

#include <QByteArray>
#include <QList>

namespace vantrel {

/// The programs that a repository's configuration names for its reading: those that have to run,
/// since the changes would be others without them, and what stands in the place of the rest.
struct RepositoryPrograms
{
    QList<RepositoryProgram> needed{};
    GitOverrides overrides{};

    bool operator==(const RepositoryPrograms &) const = default;
};

/// Finds them in the output of `git config --list --null --show-scope`, in the repository whose
/// files lie in `folder`. The person's own programs are trusted and stay, but for those that would
/// replace git's diffs or write to the repository.
[[nodiscard]] RepositoryPrograms configuredPrograms(const QByteArray &configuration,
                                                    const QByteArray &folder);

} // namespace vantrel
