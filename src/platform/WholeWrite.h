#pragma once

#include "platform/PlatformError.h"
#include "platform/Result.h"

#include <QByteArrayView>

namespace vantrel {

/// Writes all of the bytes to an open file, and fails in the words of the system. A QFile has no
/// words for a disk that takes only some of them. Thread: any; blocks.
[[nodiscard]] Result<void, PlatformError> writeWholly(int descriptor, QByteArrayView bytes);

} // namespace vantrel
