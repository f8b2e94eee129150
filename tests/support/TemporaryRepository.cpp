#include "support/TemporaryRepository.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QProcessEnvironment>

#include <stdexcept>
#include <unistd.h>

namespace vantrel::test {

using namespace Qt::Literals::StringLiterals;

namespace {

const QString rootName = QStringLiteral("the r\u00e9pository %41");

struct Outcome
{
    int status = 0;
    QByteArray output{};
    QByteArray errors{};
};

[[noreturn]] void fail(const QString &step, const QString &reason)
{
    throw std::runtime_error((step + u": "_s + reason).toStdString());
}

QProcessEnvironment environment(const QString &home)
{
    QProcessEnvironment variables;
    variables.insert(u"PATH"_s, qEnvironmentVariable("PATH"));
    variables.insert(u"HOME"_s, home);
    variables.insert(u"LC_ALL"_s, u"C.UTF-8"_s);
    variables.insert(u"GIT_CONFIG_NOSYSTEM"_s, u"1"_s);
    for (const QString &person : {u"AUTHOR"_s, u"COMMITTER"_s}) {
        variables.insert(u"GIT_%1_NAME"_s.arg(person), u"Somebody"_s);
        variables.insert(u"GIT_%1_EMAIL"_s.arg(person), u"somebody@example.com"_s);
        variables.insert(u"GIT_%1_DATE"_s.arg(person), u"2001-01-01T00:00:00Z"_s);
    }
    return variables;
}

Outcome runGit(const QStringList &arguments, const QString &folder, const QString &home)
{
    QProcess process;
    process.setWorkingDirectory(folder);
    process.setProcessEnvironment(environment(home));
    process.start(u"git"_s, arguments);
    process.closeWriteChannel();
    if (!process.waitForFinished(-1) || process.exitStatus() != QProcess::NormalExit) {
        fail(u"git "_s + arguments.join(u' '), process.errorString());
    }
    return {process.exitCode(), process.readAllStandardOutput(), process.readAllStandardError()};
}

} // namespace

TemporaryRepository::TemporaryRepository()
{
    if (!QDir(m_folder.path()).mkdir(rootName)) {
        fail(u"mkdir"_s, m_folder.errorString());
    }
    git({u"init"_s, u"--quiet"_s, u"--initial-branch=main"_s});
}

QUrl TemporaryRepository::root() const
{
    return QUrl::fromLocalFile(path());
}

QString TemporaryRepository::path(const QString &file) const
{
    const QString root = pathOutside(rootName);
    return file.isEmpty() ? root : root + u'/' + file;
}

QString TemporaryRepository::pathOutside(const QString &name) const
{
    return m_folder.filePath(name);
}

void TemporaryRepository::write(const QString &file, const QByteArray &content) const
{
    QDir().mkpath(QFileInfo(path(file)).path());
    QFile target(path(file));
    // Cut afterwards: some file systems write a file to the disk that was emptied first.
    if (!target.open(QFile::ReadWrite) || target.write(content) != content.size() ||
        !target.resize(content.size())) {
        fail(u"write "_s + file, target.errorString());
    }
}

void TemporaryRepository::remove(const QString &file) const
{
    QFile target(path(file));
    if (!target.remove()) {
        fail(u"remove "_s + file, target.errorString());
    }
}

void TemporaryRepository::link(const QString &file, const QByteArray &target) const
{
    const QByteArray place = QFile::encodeName(path(file));
    ::unlink(place.constData());
    if (::symlink(target.constData(), place.constData()) != 0) {
        fail(u"link "_s + file, qt_error_string());
    }
}

QByteArray TemporaryRepository::git(const QStringList &arguments) const
{
    const Outcome outcome = runGit(arguments, path(), m_folder.path());
    if (outcome.status != 0) {
        fail(u"git "_s + arguments.join(u' '), QString::fromUtf8(outcome.errors));
    }
    return outcome.output;
}

int TemporaryRepository::gitStatus(const QStringList &arguments) const
{
    return runGit(arguments, path(), m_folder.path()).status;
}

void TemporaryRepository::commitAll() const
{
    git({u"add"_s, u"--all"_s});
    git({u"commit"_s, u"--quiet"_s, u"--message=A step"_s});
}

} // namespace vantrel::test
