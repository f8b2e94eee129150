#pragma once

#include <QString>

#include <cstdint>

namespace vantrel::test {

/// Things in a folder that are no ordinary files. Each throws when it cannot be made.
void makePipe(const QString &path);
void makeSocket(const QString &path);

/// A file of `bytes` zero bytes that takes no room on the disk.
void makeSparseFile(const QString &path, std::int64_t bytes);

/// How many bytes this process and the children that it waited for have read so far.
[[nodiscard]] std::int64_t bytesReadSoFar();

} // namespace vantrel::test
