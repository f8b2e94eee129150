#pragma once

#include <QByteArray>
#include <QByteArrayList>

namespace vantrel {

/// Whether the repository with its `.git` entry in `folder` may have submodules: whether git may
/// find links to commits ("gitlinks") in its index. False is certain; true means that git has to be
/// asked, which costs two processes. Blocks for the disk.
[[nodiscard]] bool mayHoldGitlinks(const QByteArray &folder);

/// The paths of the gitlinks in the output of `git ls-files --stage -z`.
[[nodiscard]] QByteArrayList gitlinkPaths(const QByteArray &stagedFiles);

} // namespace vantrel
