#pragma once

#include "git/ChildCommand.h"
#include "git/OwnDiff.h"

#include <QByteArray>
#include <QMap>
#include <QStringList>

namespace vantrel {

/// What stands in the place of the programs that a repository's configuration names. Git takes it
/// from its environment, where it wins over every file.
struct GitOverrides
{
    QMap<QByteArray, QByteArray> values{};    ///< By key.
    QMap<QByteArray, Conversions> ownDiffs{}; ///< The keys whose command is git's own diff.
    QByteArray workTree{}; ///< The folder with the files; empty for where git finds it.

    bool operator==(const GitOverrides &) const = default;
};

/// The variables of a git that is run with `arguments`, in addition to those of this process.
[[nodiscard]] QList<EnvironmentVariable> environmentVariables(const GitOverrides &overrides,
                                                              const QStringList &arguments);

} // namespace vantrel
