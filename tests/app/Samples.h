#pragma once

#include "models/FileChange.h"
#include "models/RawHunk.h"
#include "models/Repo.h"

#include <QList>
#include <QString>

namespace vantrel::test {

/// A repository at "/" + `name`, the same one at each call.
[[nodiscard]] Repo sampleRepo(const QString &name);

/// A hunk in which line `line` of `old` became `now`. Its diff text is "-old\n+now".
[[nodiscard]] RawHunk changedLine(int line, const QString &old, const QString &now);

/// A modified file with these hunks.
[[nodiscard]] FileChange changedFile(const QString &path, const QList<RawHunk> &hunks);

/// A modified file with this many hunks; hunk n has the diff text "-old n\n+new n".
[[nodiscard]] FileChange changedFile(const QString &path, int hunkCount);

} // namespace vantrel::test
