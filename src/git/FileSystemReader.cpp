#include "git/FileSystemReader.h"

#include <QFile>

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace vantrel {

using namespace Qt::Literals::StringLiterals;

namespace {

class OpenFile
{
public:
    explicit OpenFile(const QByteArray &path)
        // A link is never followed, and a pipe put in the file's place never waits for a writer.
        : m_descriptor(::open(path.constData(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK))
    {}
    OpenFile(const OpenFile &) = delete;
    OpenFile &operator=(const OpenFile &) = delete;
    ~OpenFile()
    {
        if (m_descriptor >= 0) {
            ::close(m_descriptor);
        }
    }
    [[nodiscard]] int get() const { return m_descriptor; }

private:
    int m_descriptor;
};

auto lastError()
{
    return failure(PlatformError{qt_error_string(errno)});
}

auto notAFile()
{
    return failure(PlatformError{u"Not a regular file"_s});
}

/// The target of the link itself, which is what git stores as its content.
Result<QByteArray, PlatformError> readLink(const QByteArray &path, std::int64_t maxBytes)
{
    QByteArray target(qsizetype(maxBytes) + 1, Qt::Uninitialized);
    const ssize_t size = ::readlink(path.constData(), target.data(), size_t(target.size()));
    if (size < 0) {
        return lastError();
    }
    target.truncate(size);
    return target;
}

Result<QByteArray, PlatformError> readRegularFile(const QByteArray &path, std::int64_t maxBytes)
{
    const OpenFile file(path);
    struct stat status = {};
    if (file.get() < 0 || ::fstat(file.get(), &status) != 0) {
        return lastError();
    }
    if (!S_ISREG(status.st_mode)) {
        return notAFile();
    }
    // One byte beyond the limit tells that the file is larger; the rest is never read.
    QByteArray bytes(qsizetype(std::min<std::int64_t>(status.st_size, maxBytes)) + 1,
                     Qt::Uninitialized);
    qsizetype size = 0;
    for (;;) {
        if (size == bytes.size()) {
            if (size > maxBytes) {
                break;
            }
            bytes.resize(std::min<qsizetype>(size * 2, qsizetype(maxBytes) + 1));
        }
        const ssize_t count = ::read(file.get(), bytes.data() + size, size_t(bytes.size() - size));
        if (count < 0) {
            if (errno == EINTR) {
                continue;
            }
            return lastError();
        }
        if (count == 0) {
            break;
        }
        size += count;
    }
    bytes.truncate(size);
    return bytes;
}

} // namespace

Result<QByteArray, PlatformError> FileSystemReader::read(const QUrl &file,
                                                         std::int64_t maxBytes) const
{
    const QByteArray path = QFile::encodeName(file.toLocalFile());
    struct stat status = {};
    if (::lstat(path.constData(), &status) != 0) {
        return lastError();
    }
    if (S_ISLNK(status.st_mode)) {
        return readLink(path, maxBytes);
    }
    return S_ISREG(status.st_mode) ? readRegularFile(path, maxBytes) : notAFile();
}

} // namespace vantrel
