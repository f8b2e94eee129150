#include "git/RepositoryInspection.h"

#include "git/GitPrefix.h"
#include "git/Gitlinks.h"
#include "models/Utf8.h"

#include <QFile>

#include <filesystem>
#include <set>
#include <system_error>

namespace vantrel {

namespace {

/// A repository that git reads.
struct Place
{
    QByteArray folder{};
    QString submodule{}; ///< Its path in the repository that was opened, if it is a submodule.
};

using Output = Result<QByteArray, ProcessFailure>;

Output git(const ProcessRunner &runner, const Place &place, const QByteArrayList &arguments)
{
    ChildCommand command;
    command.words.append("git");
    for (const QString &word : gitPrefix()) {
        command.words.append(word.toUtf8());
    }
    command.words += arguments;
    command.folder = place.folder;
    command.variables.append(EnvironmentVariable{"GIT_LITERAL_PATHSPECS", "0"});
    if (!place.submodule.isEmpty()) {
        // As git itself goes into a submodule.
        command.variables.append(EnvironmentVariable{"GIT_DIR", ".git"});
    }
    return runner.capture(command);
}

/// Git goes into a folder with a `.git` entry, and not through a link to one.
bool isPopulated(const std::filesystem::path &folder)
{
    std::error_code error;
    return std::filesystem::symlink_status(folder, error).type() ==
               std::filesystem::file_type::directory &&
           std::filesystem::exists(std::filesystem::symlink_status(folder / ".git", error));
}

Result<QList<Place>, ProcessFailure> submodulesOf(const ProcessRunner &runner, const Place &place)
{
    if (!mayHoldGitlinks(place.folder)) {
        return QList<Place>();
    }
    Output top = git(runner, place, {"rev-parse", "--show-toplevel"});
    if (!top) {
        return failure(top.error());
    }
    top->chop(1); // The line feed.
    // The whole index, whatever folder of the repository this is.
    const Output files =
        git(runner, place, {"ls-files", "--stage", "-z", "--full-name", "--", ":/"});
    if (!files) {
        return failure(files.error());
    }
    QList<Place> submodules;
    for (const QByteArray &path : gitlinkPaths(*files)) {
        const QByteArray folder = *top + '/' + path;
        if (isPopulated(folder.toStdString())) {
            const QString outer = place.submodule.isEmpty() ? QString() : place.submodule + u'/';
            submodules.append({folder, outer + textFromUtf8(path)});
        }
    }
    return submodules;
}

} // namespace

Result<RepositoryPrograms, ProcessFailure> inspectRepository(const ProcessRunner &runner,
                                                             const QUrl &root)
{
    RepositoryPrograms programs;
    QList<Place> places{{QFile::encodeName(root.toLocalFile()), {}}};
    std::set<std::filesystem::path> seen; // Links can make a folder its own submodule.
    while (!places.isEmpty()) {
        const Place place = places.takeFirst();
        std::error_code error;
        if (!seen.insert(std::filesystem::canonical(place.folder.toStdString(), error)).second) {
            continue;
        }
        const Output configuration =
            git(runner, place, {"config", "--list", "--null", "--show-scope"});
        if (!configuration) {
            return failure(configuration.error());
        }
        RepositoryPrograms found = configuredPrograms(*configuration, place.folder);
        const auto submodules = submodulesOf(runner, place);
        if (!submodules) {
            return failure(submodules.error());
        }
        places += *submodules;
        for (RepositoryProgram &program : found.needed) {
            program.submodule = place.submodule;
            programs.needed.append(program);
        }
        if (place.submodule.isEmpty()) {
            programs.overrides = found.overrides;
        }
    }
    return programs;
}

} // namespace vantrel
