#pragma once

#include "git/ProcessRunner.h"
#include "git/RepositoryPrograms.h"

#include <QUrl>

namespace vantrel {

/// Asks git for the programs that reading the repository at `root` runs, those of its submodules'
/// configurations included. Blocks; fails as git does. Cost: one process; where there are
/// submodules two more and one in each.
[[nodiscard]] Result<RepositoryPrograms, ProcessFailure>
inspectRepository(const ProcessRunner &runner, const QUrl &root);

} // namespace vantrel
