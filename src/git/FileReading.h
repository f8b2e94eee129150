#pragma once

#include "platform/PlatformError.h"
#include "platform/Result.h"

#include <QByteArray>
#include <QUrl>

#include <cstdint>

namespace vantrel {

/// Reads files of the working tree. Thread: any but the interface's, since `read` blocks.
class FileReading
{
public:
    FileReading() = default;
    FileReading(const FileReading &) = delete;
    FileReading &operator=(const FileReading &) = delete;
    virtual ~FileReading() = default;

    /// The bytes of the regular file, or the target of the symbolic link, at `file`. Never reads
    /// more than `maxBytes` + 1 bytes, so that a result longer than `maxBytes` says "too large".
    /// Anything that is neither (a pipe, a device, a folder) fails without being opened.
    [[nodiscard]] virtual Result<QByteArray, PlatformError> read(const QUrl &file,
                                                                 std::int64_t maxBytes) const = 0;
};

} // namespace vantrel
