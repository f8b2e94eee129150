#include "git/GitService.h"

#include "git/GitPrefix.h"
#include "git/StatusRecords.h"
#include "models/DiffParser.h"

#include <algorithm>

namespace vantrel {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Stands for the content of an untracked file that is not shown. Its line is an addition, so that
/// the file never looks unchanged.
RawHunk placeholderHunk()
{
    RawHunk hunk;
    hunk.header = TextSlice::fromUtf8("@@ -0,0 +1,0 @@");
    hunk.newStart = 1;
    hunk.lines.append(RawDiffLine{RawLineKind::addition,
                                  TextSlice::fromUtf8("(file too large or binary to display)")});
    return hunk;
}

std::int64_t lineCount(const QList<RawHunk> &hunks, RawLineKind kind)
{
    std::int64_t count = 0;
    for (const RawHunk &hunk : hunks) {
        count += std::count_if(hunk.lines.cbegin(), hunk.lines.cend(),
                               [kind](const RawDiffLine &line) { return line.kind == kind; });
    }
    return count;
}

bool isCancelled(const ListingControl &control)
{
    return control.isCancelled && control.isCancelled();
}

void report(const ListingControl &control, const ListingProgress &progress)
{
    if (control.report) {
        control.report(progress);
    }
}

} // namespace

GitService::GitService(const ProcessRunning &runner, const FileReading &fileReader,
                       std::int64_t maxFileBytes)
    : m_runner(runner)
    , m_fileReader(fileReader)
    , m_maxFileBytes(maxFileBytes)
{}

Result<QList<FileChange>, ProcessFailure> GitService::changedFiles(const QUrl &repositoryRoot,
                                                                   const ListingControl &control)
{
    if (isCancelled(control)) {
        return QList<FileChange>();
    }
    const auto status = git(
        {u"status"_s, u"--porcelain=v1"_s, u"-z"_s, u"--untracked-files=all"_s, u"--no-renames"_s},
        repositoryRoot);
    if (!status) {
        return failure(status.error());
    }
    QList<FileChange> files = parseStatusRecords(*status);
    ListingProgress progress{0, files.size()};
    report(control, progress);
    for (FileChange &file : files) {
        if (isCancelled(control)) {
            break;
        }
        auto found = hunks(file, repositoryRoot, control);
        if (!found) {
            return failure(found.error());
        }
        file.additions = lineCount(*found, RawLineKind::addition);
        file.deletions = lineCount(*found, RawLineKind::deletion);
        file.hunks = std::move(*found);
        ++progress.finishedFiles;
        report(control, progress);
    }
    return files;
}

Result<QList<RawHunk>, ProcessFailure> GitService::rawHunks(const FileChange &file,
                                                            const QUrl &repositoryRoot)
{
    return hunks(file, repositoryRoot, ListingControl());
}

Result<std::optional<QString>, ProcessFailure> GitService::currentBranch(const QUrl &repositoryRoot)
{
    const auto output = git({u"rev-parse"_s, u"--abbrev-ref"_s, u"HEAD"_s}, repositoryRoot);
    if (!output) {
        return failure(output.error());
    }
    const QString branch = output->toString().trimmed();
    return branch.isEmpty() ? std::nullopt : std::optional(branch);
}

Result<TextSlice, ProcessFailure> GitService::git(const QStringList &arguments,
                                                  const QUrl &repositoryRoot) const
{
    return m_runner.run(u"git"_s, gitPrefix() + arguments, repositoryRoot);
}

Result<QList<RawHunk>, ProcessFailure> GitService::hunks(const FileChange &file,
                                                         const QUrl &repositoryRoot,
                                                         const ListingControl &control) const
{
    if (file.isUntracked) {
        return untrackedHunks(file.path, repositoryRoot);
    }
    return trackedHunks(file.path, repositoryRoot, control);
}

QList<RawHunk> GitService::untrackedHunks(const QString &path, const QUrl &repositoryRoot) const
{
    const QUrl file = QUrl::fromLocalFile(repositoryRoot.toLocalFile() + u'/' + path);
    auto bytes = m_fileReader.read(file, m_maxFileBytes);
    if (!bytes || bytes->size() > m_maxFileBytes || !bytes->isValidUtf8()) {
        return {placeholderHunk()};
    }
    return {untrackedHunk(TextSlice::fromUtf8(std::move(*bytes)))};
}

Result<QList<RawHunk>, ProcessFailure> GitService::trackedHunks(const QString &path,
                                                                const QUrl &repositoryRoot,
                                                                const ListingControl &control) const
{
    const auto combined =
        git({u"diff"_s, u"HEAD"_s, u"--no-renames"_s, u"--"_s, path}, repositoryRoot);
    if (combined) {
        return parseUnifiedDiff(*combined);
    }
    if (isCancelled(control)) {
        return QList<RawHunk>();
    }
    // Without a first commit there is no HEAD to compare with.
    const auto unstaged = git({u"diff"_s, u"--no-renames"_s, u"--"_s, path}, repositoryRoot);
    if (!unstaged) {
        return failure(unstaged.error());
    }
    if (isCancelled(control)) {
        return QList<RawHunk>();
    }
    const auto staged =
        git({u"diff"_s, u"--cached"_s, u"--no-renames"_s, u"--"_s, path}, repositoryRoot);
    if (!staged) {
        return failure(staged.error());
    }
    return parseUnifiedDiff(*unstaged) + parseUnifiedDiff(*staged);
}

} // namespace vantrel
