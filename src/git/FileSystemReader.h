#pragma once

#include "git/FileReading.h"

namespace vantrel {

/// Reads real files. Stateless. Thread: any but the interface's.
class FileSystemReader final : public FileReading
{
public:
    [[nodiscard]] Result<QByteArray, PlatformError> read(const QUrl &file,
                                                         std::int64_t maxBytes) const override;
};

} // namespace vantrel
