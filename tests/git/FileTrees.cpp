#include "FileTrees.h"

#include <QDir>
#include <QFile>

#include <cstring>
#include <stdexcept>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

namespace vantrel::test {

namespace {

void require(bool isDone, const char *step)
{
    if (!isDone) {
        throw std::runtime_error(step);
    }
}

} // namespace

void makePipe(const QString &path)
{
    require(::mkfifo(QFile::encodeName(path).constData(), 0600) == 0, "mkfifo");
}

void makeSocket(const QString &path)
{
    const QByteArray name = QFile::encodeName(path);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    require(name.size() < qsizetype(sizeof address.sun_path), "a shorter path");
    std::memcpy(address.sun_path, name.constData(), size_t(name.size()));
    const int descriptor = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const int bound =
        ::bind(descriptor, reinterpret_cast<const sockaddr *>(&address), sizeof address);
    ::close(descriptor);
    require(bound == 0, "bind");
}

void makeSparseFile(const QString &path, std::int64_t bytes)
{
    QFile file(path);
    require(file.open(QFile::WriteOnly) && file.resize(bytes), "truncate");
}

std::int64_t bytesReadSoFar()
{
    QFile file(QStringLiteral("/proc/self/io"));
    require(file.open(QFile::ReadOnly), "/proc/self/io");
    const QByteArray line = file.readLine();
    require(line.startsWith("rchar: "), "rchar");
    return line.sliced(7).trimmed().toLongLong();
}

} // namespace vantrel::test
