#pragma once

#include "git/ProcessRunnerError.h"
#include "models/FileChange.h"
#include "platform/Result.h"

#include <QByteArrayList>

#include <iosfwd>

namespace vantrel {

/// How a failed comparison shows them.
void PrintTo(const RawHunk &hunk, std::ostream *stream);
void PrintTo(const FileChange &file, std::ostream *stream);
void PrintTo(const Result<QList<FileChange>, ProcessFailure> &listing, std::ostream *stream);

} // namespace vantrel

namespace vantrel::test {

/// A hunk whose lines are given as git prints them: " kept", "-gone", "+new".
[[nodiscard]] RawHunk rawHunk(const QByteArray &header, std::int64_t oldStart,
                              std::int64_t newStart, const QByteArrayList &lines);

/// The hunk of a file that is not shown.
[[nodiscard]] RawHunk placeholderHunk();

[[nodiscard]] FileChange trackedFile(const QString &path, ChangeStatus status,
                                     std::int64_t additions, std::int64_t deletions,
                                     const QList<RawHunk> &hunks);

[[nodiscard]] FileChange untrackedFile(const QString &path, std::int64_t additions,
                                       const QList<RawHunk> &hunks);

} // namespace vantrel::test
