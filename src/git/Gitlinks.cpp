// Git goes into submodules with configurations of their own wherever its index holds a gitlink.
// Hardly any repository has one, and asking git costs a process in each, so the index is searched
// for the mode of a gitlink first. It stands there as four bytes in every version of the format; an
// extension that keeps entries elsewhere counts as a find, and so does what only looks like one.
//
// That is worth nothing unless it is the index that git reads. Git passes over a `.git` folder that
// looks incomplete to it and goes on searching, so the folder has to be one that it takes for sure.

#include "git/Gitlinks.h"

#include <QByteArrayView>

#include <algorithm>
#include <array>
#include <cstdint>
#include <fstream>
#include <optional>
#include <sys/stat.h>
#include <unistd.h>

namespace vantrel {

namespace {

constexpr qsizetype hashLength = 40;
constexpr std::int64_t maxIndexBytes = 256'000'000;

/// The mode of a gitlink, and the extensions of an index that is split or leaves out whole folders.
constexpr std::array<QByteArrayView, 3> signsOfGitlinks{
    QByteArrayView("\0\0\xe0\0", 4), QByteArrayView("link"), QByteArrayView("sdir")};

bool exists(const QByteArray &path)
{
    struct stat status = {};
    return ::lstat(path.constData(), &status) == 0;
}

/// Nothing when it is no regular file or cannot be read.
std::optional<QByteArray> contentOf(const QByteArray &path)
{
    struct stat status = {};
    if (::lstat(path.constData(), &status) != 0 || !S_ISREG(status.st_mode) ||
        status.st_size > maxIndexBytes) {
        return std::nullopt;
    }
    QByteArray content(qsizetype(status.st_size), Qt::Uninitialized);
    std::ifstream file(path.constData(), std::ios::binary);
    file.read(content.data(), content.size());
    return file.gcount() == content.size() ? std::optional(content) : std::nullopt;
}

bool isHash(const QByteArray &text)
{
    return text.size() >= hashLength &&
           std::all_of(text.cbegin(), text.cbegin() + hashLength, [](char character) {
               return (character >= '0' && character <= '9') ||
                      (character >= 'a' && character <= 'f');
           });
}

/// Whether git is certain to take `folder` for a repository's own folder.
bool isGitFolder(const QByteArray &folder)
{
    const QByteArray head = contentOf(folder + "/HEAD").value_or(QByteArray());
    return (head.startsWith("ref: refs/") || isHash(head)) &&
           ::access((folder + "/objects").constData(), X_OK) == 0 &&
           ::access((folder + "/refs").constData(), X_OK) == 0 && !exists(folder + "/commondir");
}

/// The folder with the index of the repository in `folder`, where it is certain.
std::optional<QByteArray> gitFolderOf(const QByteArray &folder)
{
    const QByteArray entry = folder + "/.git";
    const QByteArray prefix = "gitdir: ";
    const std::optional<QByteArray> link = contentOf(entry);
    if (link && link->startsWith(prefix)) {
        QByteArray target = link->sliced(prefix.size());
        while (target.endsWith('\n') || target.endsWith('\r')) {
            target.chop(1);
        }
        return target.startsWith('/') ? target : folder + '/' + target;
    }
    return isGitFolder(entry) ? std::optional(entry) : std::nullopt;
}

} // namespace

bool mayHoldGitlinks(const QByteArray &folder)
{
    const std::optional<QByteArray> gitFolder = gitFolderOf(folder);
    if (!gitFolder) {
        return true;
    }
    const QByteArray index = *gitFolder + "/index";
    const std::optional<QByteArray> content = contentOf(index);
    if (!content) {
        return exists(index);
    }
    return std::any_of(signsOfGitlinks.begin(), signsOfGitlinks.end(),
                       [&content](QByteArrayView sign) { return content->contains(sign); });
}

QByteArrayList gitlinkPaths(const QByteArray &stagedFiles)
{
    QByteArrayList paths;
    for (const QByteArray &entry : stagedFiles.split('\0')) {
        if (entry.startsWith("160000 ")) {
            paths.append(entry.sliced(entry.indexOf('\t') + 1));
        }
    }
    return paths;
}

} // namespace vantrel
