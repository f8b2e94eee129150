#pragma once

#include <QByteArray>
#include <QStringList>

namespace vantrel {

/// What git's own diff does with files that a configured program makes readable before they are
/// compared (`diff.<driver>.textconv`).
enum class Conversions { run, ignore };

/// A shell command for git to call where a program is configured for its diffs (`diff.external`,
/// `diff.<driver>.command`): it prints what git prints where none is. `arguments` are those of the
/// `git diff` that will call it, which ends in "--" and paths.
[[nodiscard]] QByteArray ownDiffCommand(const QStringList &arguments, Conversions conversions);

} // namespace vantrel
