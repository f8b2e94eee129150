#include "ProcessReading.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSet>

#include <unistd.h>

namespace vantrel::test {

using namespace Qt::Literals::StringLiterals;

namespace {

QByteArray contents(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// The inodes of all sockets over TCP that the process may see.
QSet<QByteArray> tcpInodes(const QString &folder)
{
    QSet<QByteArray> inodes;
    for (const QString &table : {u"tcp"_s, u"tcp6"_s}) {
        for (const QByteArray &line : contents(folder + u"/net/"_s + table).split('\n')) {
            inodes.insert(line.simplified().split(' ').value(9));
        }
    }
    return inodes;
}

/// The number after the colon of such a line of `/proc/PID/status`.
qint64 statusNumber(const QByteArray &status, const QByteArray &label)
{
    for (const QByteArray &line : status.split('\n')) {
        if (line.startsWith(label + ':')) {
            return line.simplified().split(' ').value(1).toLongLong();
        }
    }
    return 0;
}

QStringList childrenOf(pid_t process)
{
    QStringList names;
    for (const QString &entry : QDir(u"/proc"_s).entryList(QDir::Dirs)) {
        const QByteArray stat = contents(u"/proc/"_s + entry + u"/stat"_s);
        const qsizetype nameEnd = stat.lastIndexOf(')');
        if (nameEnd > 0 && stat.sliced(nameEnd + 2).split(' ').value(1).toInt() == process) {
            names.append(QString::fromUtf8(stat.first(nameEnd).sliced(stat.indexOf('(') + 1)));
        }
    }
    return names;
}

} // namespace

ProcessReading readProcess(pid_t process)
{
    static const QRegularExpression numbers(u"\\[\\d+\\]|(?<=/proc/)\\d+"_s);
    const QString folder = u"/proc/%1"_s.arg(process);
    const QByteArray status = contents(folder + u"/status"_s);
    ProcessReading reading;
    reading.residentBytes = statusNumber(status, "VmRSS") * 1024;
    reading.threads = int(statusNumber(status, "Threads"));
    reading.children = childrenOf(process);
    const QSet<QByteArray> tcp = tcpInodes(folder);
    for (const QFileInfo &entry : QDir(folder + u"/fd"_s)
                                      .entryInfoList(QDir::System | QDir::Files | QDir::Dirs |
                                                     QDir::NoDotAndDotDot | QDir::Hidden)) {
        QByteArray target(4096, '\0');
        target.resize(qMax<qsizetype>(::readlink(QFile::encodeName(entry.filePath()).constData(),
                                                 target.data(), std::size_t(target.size())),
                                      0));
        const bool isSocket = target.startsWith("socket:[");
        if (isSocket && tcp.contains(target.sliced(8).chopped(1))) {
            ++reading.connections;
        } else if (!target.isEmpty()) {
            reading.descriptors.append(QString::fromUtf8(target).remove(numbers));
        }
    }
    reading.descriptors.sort();
    return reading;
}

} // namespace vantrel::test
