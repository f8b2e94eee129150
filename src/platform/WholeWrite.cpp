#include "platform/WholeWrite.h"

#include <QString>

#include <cerrno>
#include <unistd.h>

namespace vantrel {

Result<void, PlatformError> writeWholly(int descriptor, QByteArrayView bytes)
{
    while (!bytes.isEmpty()) {
        const ssize_t count = ::write(descriptor, bytes.data(), size_t(bytes.size()));
        if (count >= 0) {
            bytes = bytes.sliced(count);
        } else if (errno != EINTR) {
            return failure(PlatformError{qt_error_string(errno)});
        }
    }
    return {};
}

} // namespace vantrel
